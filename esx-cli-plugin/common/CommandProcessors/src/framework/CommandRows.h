/// @file
/// Table rows of commands and families.
///
/// A family declares each command once. Its row yields the plain leaf, its `cli` twin, the position of `help`
/// between them, their ids, usage and trace names and, outside the program, the descriptor, the manual page and the
/// completion. The row of an irregular family states the irregularity.
#pragma once

#include "CodeTable.h"
#include "ResultCodes.h"
#include "Serializer.h"
#include "Texts.h"
#include "extensions.h"

#include <algorithm>
#include <array>
#include <string_view>

class MultipleCmdsProcessor;
struct FamilyDescription;

/// The implementation of a command; `format` distinguishes the plain leaf from its `cli` twin.
using CommonFunction = ResultCode (*)(MultipleCmdsProcessor* self, TavuStringArray& args,
                                      Serializer::eOutputFormat format);

/// A literal as a template argument.
template <std::size_t Size> struct FixedText {
    char text[Size];
    consteval FixedText(const char (&literal)[Size]) { std::copy_n(literal, Size, text); } // NOLINT: a conversion
};
template <FixedText Text> inline constexpr auto LITERAL = Text;
template <FixedText... Parts>
inline constexpr auto JOINED = [] {
    std::array<char, (sizeof Parts.text + ...) - sizeof...(Parts) + 1> joined{};
    auto end = joined.begin();
    ((end = std::copy_n(Parts.text, sizeof Parts.text - 1, end)), ...);
    return joined;
}();

/// The words of a command's two leaves, and the name of its common function in traces, "CmdGetCommon". The leaves'
/// own functions are traced as "CmdGet" and "CmdGetCli".
struct CommandNames {
    const char* plain;
    const char* twin;
    const char* function;
};
/// Makes "get", "getcli" and "CmdGetCommon" from `Names<"get", "CmdGet">()`.
template <FixedText Word, FixedText Function> consteval CommandNames Names() {
    return {LITERAL<Word>.text, JOINED<Word, "cli">.data(), JOINED<Function, "Common">.data()};
}

/// Kind of an argument.
enum class ArgumentKind : VX_UINT8 {
    ADAPTER,     ///< an identifier, as `adapter list` prints it
    PORT,        ///< same for `port list`
    TARGET,      ///< same for `target list`
    LUN,         ///< same for `lun list`
    INPUT_FILE,  ///< path of a file to read
    OUTPUT_FILE, ///< path of a file to write
    WORD,        ///< one of `words`
    NUMBER,      ///< decimal, from `minimum` to `maximum`
    WWPN,        ///< eight hexadecimal bytes separated by colons
    TEXT,
};

/// An argument of a command: positional, or an option. All comparisons ignore case.
struct Argument {
    const char* name;      ///< an option's includes the dashes, "--frame-size"
    const char* shortName; ///< "-z"; null for a positional argument
    const char* description;
    ArgumentKind kind;
    bool isRequired = false;
    std::span<const CodeText> words = {};
    VX_UINT32 minimum = 0;
    VX_UINT32 maximum = 0;
    const char* unit = "";
    /// Words of another argument with which this one applies; with any other word the command refuses or ignores it.
    /// Empty if it always applies. An option whose range depends on the word has a row for each range.
    std::span<const CodeText> appliesWith = {};

    constexpr Argument With(std::span<const CodeText> decidingWords) const {
        Argument limited = *this;
        limited.appliesWith = decidingWords;
        return limited;
    }
};

/// Finds an option of a command by name; an unknown name does not compile.
consteval const Argument& OptionOf(std::span<const Argument> arguments, std::string_view name) {
    for (const Argument& argument : arguments) {
        if (argument.name == name) {
            return argument;
        }
    }
    throw "no such option";
}

enum class FieldType : VX_UINT8 { TEXT, NUMBER, FLAG };
struct DocumentField {
    const char* name;
    FieldType type;
};
inline constexpr DocumentField MESSAGE_FIELD = {OUT_MESSAGE, FieldType::TEXT};
inline constexpr DocumentField REBOOT_FIELD = {OUT_REBOOT_REQUIRED, FieldType::FLAG};
inline constexpr DocumentField MESSAGE_ONLY[] = {MESSAGE_FIELD};
inline constexpr DocumentField MESSAGE_AND_REBOOT[] = {MESSAGE_FIELD, REBOOT_FIELD};
inline constexpr DocumentField DATA_BLOCK[] = {{OUT_DATA, FieldType::TEXT}};

/// The structure of a command's document.
///
/// A list consists of structures with `fields`. Any other document is one structure with `fields`; a report also
/// has `listField`, a list of structures with `rowFields`, which is empty on failure.
struct DocumentRow {
    enum Shape : VX_UINT8 { FLAT, LIST, REPORT };
    Shape shape;
    const char* structure;
    std::span<const DocumentField> fields;
    const char* listField = "";
    const char* rowStructure = "";
    std::span<const DocumentField> rowFields = {};
};

/// Whether a `cli` twin has a usage function. Without one, an invalid call prints nothing after its document.
enum class TwinUsage : VX_UINT8 { OWN, NONE };

struct Command {
    CommandNames names;
    const char* description;
    CommonFunction run;
    const char* usage; ///< of the twin; null for none
    std::span<const Argument> arguments;
    DocumentRow document;
    VX_UINT32 reads = VEXAPI_EXT_EVERYTHING; ///< parts of the host that it needs, of `VEXAPI_EXT_PARTS`
    bool changes = false;                    ///< the adapter, the link or a file

    // Irregularities that clients may depend on
    VX_UINT32 id = ANY_ID;                 ///< of the plain leaf
    const char* twinDescription = nullptr; ///< if it differs from the plain leaf's
    TwinUsage twinUsage = TwinUsage::OWN;
    const FamilyDescription* usageFamily = nullptr; ///< family whose usage function the twin uses instead

    static constexpr VX_UINT32 ANY_ID = ~VX_UINT32{0};
};

/// A leaf of a family, as stored in the program.
struct Leaf {
    enum Kind : VX_UINT8 { PLAIN, HELP, TWIN };

    const char* word;
    const char* description;
    CommonFunction run;
    const char* function; ///< "CmdGetCommon"
    const char* usage;    ///< null for none
    const FamilyDescription* usageFamily;
    VX_UINT32 id;
    VX_UINT32 reads; ///< as in `Command`
    Kind kind;
    bool hasUsage;
};

/// The leaves of a family: the plain ones, `help`, then the twins, with ids counted in this order.
template <std::size_t N>
consteval std::array<Leaf, 2 * N + 1> LeavesOf(const Command (&commands)[N], const char* helpDescription,
                                               VX_UINT32 helpId) {
    std::array<Leaf, 2 * N + 1> leaves{};
    leaves[N] = {"help", helpDescription, nullptr, nullptr, nullptr, nullptr, helpId, 0, Leaf::HELP, true};
    for (VX_UINT32 at = 0; at < N; ++at) {
        const Command& row = commands[at];
        const VX_UINT32 id = row.id != Command::ANY_ID ? row.id : at;
        const char* const description = row.twinDescription != nullptr ? row.twinDescription : row.description;
        const bool hasUsage = row.twinUsage == TwinUsage::OWN;
        leaves[at] = {row.names.plain, row.description, row.run, row.names.function, nullptr, nullptr, id,
                      row.reads,       Leaf::PLAIN,     false};
        leaves[N + 1 + at] = {row.names.twin,  description,     row.run,   row.names.function, row.usage,
                              row.usageFamily, helpId + 1 + at, row.reads, Leaf::TWIN,         hasUsage};
    }
    return leaves;
}

/// Same as a constant, for the `COMMANDS` of a family.
template <typename Family, FixedText HelpDescription = "list of available commands",
          VX_UINT32 helpId = std::size(Family::COMMANDS)>
inline constexpr auto LEAVES_OF = LeavesOf(Family::COMMANDS, LITERAL<HelpDescription>.text, helpId);

/// Names in a report's frame: the structure, its list field, and the structures in that list.
struct ReportNames {
    const char* structure;
    const char* field;
    const char* list;
    const char* data = OUT_DATA; ///< text field of a data-block report
};

/// Properties of a family.
struct FamilyDescription {
    const char* className; ///< in traces
    const char* helpWord;  ///< the family in the heading of its help
    std::span<const Leaf> leaves;
    std::span<const CodeText> resultTexts = {}; ///< the family's "Message" for each result code
    ReportNames report = {};                    ///< for families whose documents are reports
};

/// A family in the tree, by its option and name.
struct FamilyRow {
    const char* name;
    const char* option;
    const char* description;
    const FamilyDescription* family;
    const Command* commands; ///< one per two leaves; null in the program, which needs only the leaves
    std::span<const FamilyRow> subFamilies;
};

/// Documents of families with reports, as rows.
constexpr DocumentRow ReportDocument(const ReportNames& names, std::span<const DocumentField> rowFields = DATA_BLOCK,
                                     std::span<const DocumentField> fields = MESSAGE_ONLY) {
    return {DocumentRow::REPORT, names.structure, fields, names.field, names.list, rowFields};
}
constexpr DocumentRow FlatDocument(const char* structure, std::span<const DocumentField> fields = MESSAGE_ONLY) {
    return {DocumentRow::FLAT, structure, fields};
}
constexpr DocumentRow ListDocument(const char* structure, std::span<const DocumentField> fields) {
    return {DocumentRow::LIST, structure, fields};
}

/// Arguments that many commands take.
inline constexpr Argument ADAPTER_ARGUMENT = {"adapter", nullptr, "identifier of the adapter", ArgumentKind::ADAPTER,
                                              true};
inline constexpr Argument PORT_ARGUMENT = {"port", nullptr, "identifier of the port", ArgumentKind::PORT, true};
inline constexpr Argument TARGET_ARGUMENT = {"target", nullptr, "identifier of the target", ArgumentKind::TARGET, true};
inline constexpr Argument LUN_ARGUMENT = {"lun", nullptr, "identifier of the LUN or namespace", ArgumentKind::LUN,
                                          true};
inline constexpr Argument ONLY_ADAPTER[] = {ADAPTER_ARGUMENT};
inline constexpr Argument ONLY_PORT[] = {PORT_ARGUMENT};
inline constexpr Argument ONLY_TARGET[] = {TARGET_ARGUMENT};
inline constexpr Argument ONLY_LUN[] = {LUN_ARGUMENT};
