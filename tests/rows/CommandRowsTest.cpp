/// @file
/// Holds the rows of all commands to what the commands do: the options that they look up, the arguments that they
/// take by position, and the documents that they write. Every command runs on simulated hosts with every value that
/// its row names.
#include "Rows.h"

#include "Capture.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>

using TextSet = std::set<std::string>;

/// The options that were looked up, "-z --frame-size", and the real parser.
static TextSet s_lookUps;
#define PARSER "_ZN13CmdLineParser23GetCommandValueFromArgsERKSt6vectorI11TavuStringTIcESaIS2_EEPKcS8_RS2_"
int RealParser(const TavuStringArray& args, const char* shortName, const char* longName,
               TavuString& value) asm("__real_" PARSER);
int RecordingParser(const TavuStringArray& args, const char* shortName, const char* longName,
                    TavuString& value) asm("__wrap_" PARSER);
int RecordingParser(const TavuStringArray& args, const char* shortName, const char* longName, TavuString& value) {
    s_lookUps.insert(std::string(shortName) + " " + longName);
    return RealParser(args, shortName, longName, value);
}

namespace {

const char* const HOSTS[] = {"",         "boot",     "congestion", "diagnostics",  "fec",
                             "refusals", "settings", "targets",    "transceivers", "vpd"};

/// The words of a command after its identifier, in every way that is tried: each argument with each of its values,
/// the other ones by position with their first; then all options at once.
std::vector<Words> CallsOf(const Command& command) {
    Words positions;
    Words options;
    for (const Argument& argument : command.arguments) {
        if (IsIdentifier(argument)) {
            continue;
        }
        if (IsOption(argument)) {
            options.insert(options.end(), {argument.name, ValuesOf(argument).front()});
        } else {
            positions.push_back(ValuesOf(argument).front());
        }
    }
    std::vector<Words> calls = {positions};
    std::size_t position = 0;
    for (const Argument& argument : command.arguments) {
        if (IsIdentifier(argument)) {
            continue;
        }
        for (const std::string& value : ValuesOf(argument)) {
            Words call = positions;
            if (IsOption(argument)) {
                call.insert(call.end(), {argument.name, value});
            } else {
                call[position] = value;
            }
            calls.push_back(call);
        }
        position += IsOption(argument) ? 0 : 1;
    }
    calls.push_back(positions);
    calls.back().insert(calls.back().end(), options.begin(), options.end());
    return calls;
}

/// A field of a document: its name, and "string", "int", "bool" or "list".
using Fields = std::set<std::pair<std::string, std::string>>;

/// What a document shows: its structures by nesting, each one's names and fields.
struct Shape {
    bool isList = false;
    TextSet structures[2];
    Fields fields[2];
};

/// Reads the lines of a document's XML.
Shape ReadDocument(const std::string& document) {
    Shape shape;
    std::size_t depth = 0;
    std::string field;
    std::istringstream stream(document);
    const auto nameIn = [](const std::string& line) {
        const std::size_t start = line.find('"') + 1;
        return line.substr(start, line.find('"', start) - start);
    };
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("<structure")) {
            shape.structures[std::min<std::size_t>(depth, 1)].insert(nameIn(line));
            ++depth;
        } else if (line == "</structure>") {
            --depth;
        } else if (line.starts_with("<field")) {
            field = nameIn(line);
        } else if (line.starts_with("<list") && depth == 0) {
            shape.isList = true;
        } else if (line.starts_with("<") && !line.starts_with("</") && depth != 0 && !field.empty()) {
            shape.fields[std::min<std::size_t>(depth - 1, 1)].insert(
                {field, line.substr(1, line.find_first_of("> ") - 1)});
            field.clear();
        }
    }
    return shape;
}

const char* TypeName(FieldType type) {
    return type == FieldType::TEXT ? "string" : type == FieldType::NUMBER ? "int" : "bool";
}
Fields FieldsOf(std::span<const DocumentField> rows) {
    Fields fields;
    for (const DocumentField& row : rows) {
        fields.insert({row.name, TypeName(row.type)});
    }
    return fields;
}

/// The shape that a row says.
Shape ShapeOf(const DocumentRow& row) {
    Shape shape;
    shape.isList = row.shape == DocumentRow::LIST;
    shape.structures[0] = {row.structure};
    shape.fields[0] = FieldsOf(row.fields);
    if (row.shape == DocumentRow::REPORT) {
        shape.fields[0].insert({row.listField, "list"});
        shape.structures[1] = {row.rowStructure};
        shape.fields[1] = FieldsOf(row.rowFields);
    }
    return shape;
}

template <typename Set> Set Without(const Set& all, const Set& some) {
    Set left;
    std::set_difference(all.begin(), all.end(), some.begin(), some.end(), std::inserter(left, left.end()));
    return left;
}
template <typename Set> void Add(Set& all, const Set& more) {
    all.insert(more.begin(), more.end());
}

/// What was seen of a command on all hosts.
struct Seen {
    TextSet options;
    Shape document;
    std::size_t successes = 0;
};

/// A session with the library, as the program's.
class Session {
public:
    Session() { MainCmdsProcessor::getMainCmdsProcessor()->Initialize(mNoWords); }
    ~Session() {
        MainCmdsProcessor::getMainCmdsProcessor()->Uninitialize(mNoWords);
        MainCmdsProcessor::destroyMainCmdsProcessor();
    }

private:
    TavuStringArray mNoWords;
};

class CommandRowsTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        setenv("VEXAPI_SIM_STATE", "", 1);
        for (const auto& [path, content] : INPUT_FILES) {
            std::ofstream(path) << content;
        }
        g_uFlags = FLAG_COMMAND_LINE;
        Gather("", CommandTree<DescribedRows>::ROOT, s_paths);
        for (const char* const host : HOSTS) {
            if (*host == '\0') {
                unsetenv("VEXAPI_SIM_HOST");
            } else {
                setenv("VEXAPI_SIM_HOST", (std::string(TEST_DATA "/") + host + ".json").c_str(), 1);
            }
            RunAll();
        }
    }

    /// All commands in one session.
    static void RunAll() {
        const Session session;
        std::map<std::string, Words> identifiers;
        for (const char* const kind : {"adapter", "port", "target", "lun"}) {
            identifiers[kind] = List(kind);
        }
        for (const CommandPath& path : s_paths) {
            const std::string kind = path.words.substr(3, path.words.find(' ', 3) - 3);
            const bool takesIdentifier = !path.command->arguments.empty() && IsIdentifier(path.command->arguments[0]);
            const Words& all = takesIdentifier ? identifiers[kind] : Words{""};
            const std::vector<Words> calls = CallsOf(*path.command);
            // Everywhere once; all values where the host lets the first ones pass.
            const auto accepts = [&](const std::string& identifier) { return Run(path, identifier, calls.front()); };
            Words accepting;
            std::copy_if(all.begin(), all.end(), std::back_inserter(accepting), accepts);
            accepting.resize(std::min<std::size_t>(accepting.size(), 1));
            for (const std::string& identifier : accepting.empty() ? all : accepting) {
                std::for_each(calls.begin(), calls.end(), [&](const Words& call) { Run(path, identifier, call); });
            }
        }
    }

    static Words List(const std::string& kind) {
        TavuStringArray words = {"-t", kind.c_str(), "list"};
        Capture capture;
        MainCmdsProcessor::getMainCmdsProcessor()->DoCmd(words);
        const std::string output = capture.Stop();
        Words identifiers;
        for (std::size_t at = output.find("<string>"); at != std::string::npos; at = output.find("<string>", at + 1)) {
            identifiers.push_back(output.substr(at + 8, output.find("</string>", at) - at - 8));
        }
        return identifiers;
    }

    /// True when the command succeeds.
    static bool Run(const CommandPath& path, const std::string& identifier, const Words& call) {
        TavuStringArray words;
        std::istringstream stream(path.words + path.command->names.plain);
        for (std::string word; stream >> word;) {
            words.emplace_back(word);
        }
        if (!identifier.empty()) {
            words.emplace_back(identifier);
        }
        words.insert(words.end(), call.begin(), call.end());
        s_lookUps.clear();
        Capture capture;
        const VX_UINT32 code = MainCmdsProcessor::getMainCmdsProcessor()->DoCmd(words);
        Seen& command = s_seen[path.command];
        command.successes += code == RC_SUCCESS ? 1 : 0;
        Add(command.options, s_lookUps);
        const Shape shape = ReadDocument(capture.Stop());
        command.document.isList = shape.isList;
        for (std::size_t depth = 0; depth < 2; ++depth) {
            Add(command.document.structures[depth], shape.structures[depth]);
            Add(command.document.fields[depth], shape.fields[depth]);
        }
        return code == RC_SUCCESS;
    }

    static std::vector<CommandPath> s_paths;
    static std::map<const Command*, Seen> s_seen;
};
std::vector<CommandPath> CommandRowsTest::s_paths;
std::map<const Command*, Seen> CommandRowsTest::s_seen;

TEST_F(CommandRowsTest, AreTriedWithSuccess) {
    EXPECT_EQ(s_paths.size(), 57u);
    for (const CommandPath& path : s_paths) {
        EXPECT_NE(s_seen[path.command].successes, 0u) << path.words << path.command->names.plain;
    }
}

TEST_F(CommandRowsTest, NameTheOptionsThatAreLookedUp) {
    for (const CommandPath& path : s_paths) {
        TextSet named;
        for (const Argument& argument : path.command->arguments) {
            if (IsOption(argument)) {
                named.insert(std::string(argument.shortName) + " " + argument.name);
            }
        }
        EXPECT_EQ(s_seen[path.command].options, named) << path.words << path.command->names.plain;
    }
}

TEST_F(CommandRowsTest, DescribeTheDocumentsThatAreWritten) {
    for (const CommandPath& path : s_paths) {
        SCOPED_TRACE(path.words + path.command->names.plain);
        const Shape& written = s_seen[path.command].document;
        const Shape described = ShapeOf(path.command->document);
        EXPECT_EQ(written.isList, described.isList);
        for (std::size_t depth = 0; depth < 2; ++depth) {
            EXPECT_EQ(written.structures[depth], described.structures[depth]);
            EXPECT_EQ(Without(written.fields[depth], described.fields[depth]), Fields{}) << "written, not described";
            EXPECT_EQ(Without(described.fields[depth], written.fields[depth]), Fields{}) << "described, not written";
        }
    }
}

} // namespace
