# Generates a C++ source with the contents of files.
#   OUTPUT     the generated source
#   DIRECTORY  folder of the files
#   NAMES      their names, separated by "|"
string(REPLACE "|" ";" names "${NAMES}")
set(arrays "")
set(table "")
set(number 0)
foreach(name IN LISTS names)
    file(READ "${DIRECTORY}/${name}" hex HEX)
    string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${hex}")
    string(APPEND arrays "constexpr char FILE_${number}[] = {${bytes}};\n")
    string(APPEND table "    {\"${name}\", {FILE_${number}, sizeof FILE_${number}}},\n")
    math(EXPR number "${number} + 1")
endforeach()
file(WRITE "${OUTPUT}" "#include \"description/Files.h\"

namespace sim {
namespace {

${arrays}
constexpr EmbeddedFile FILES[] = {
${table}};

} // namespace

std::span<const EmbeddedFile> LabFiles() { return FILES; }

} // namespace sim
")
