/// @file
/// A command as a row, and a family as a row.
///
/// A family declares each command once. From its row follow the plain leaf, its `cli` twin, the place of `help`
/// between them, their ids, their usage and the names in their traces, and, outside of the program, the descriptor,
/// the manual page and the completion. Where a family is odd, its row says so.
#pragma once

#include "CodeTable.h"
#include "ResultCodes.h"
#include "Serializer.h"
#include "Texts.h"

#include <algorithm>
#include <array>
#include <string_view>

class MultipleCmdsProcessor;
struct FamilyDescription;

/// The whole of a command; `format` is what distinguishes a plain leaf from its `cli` twin.
using CommonFunction = ResultCode (*)(MultipleCmdsProcessor* self, TavuStringArray& args,
                                      Serializer::eOutputFormat format);

/// A literal as a template argument.
template <std::size_t Size> struct FixedText {
    char text[Size];
    consteval FixedText(const char (&literal)[Size]) { std::copy_n(literal, Size, text); } // NOLINT: a conversion
};
template <FixedText Text> inline constexpr auto LITERAL = Text;
template <FixedText First, FixedText Second>
inline constexpr auto JOINED = [] {
    std::array<char, sizeof First.text + sizeof Second.text - 1> joined{};
    std::copy_n(Second.text, sizeof Second.text, std::copy_n(First.text, sizeof First.text - 1, joined.begin()));
    return joined;
}();

/// The words of a command's two leaves, and its common function as traces name it, "CmdGetCommon". The command
/// functions of the leaves are traced as "CmdGet" and "CmdGetCli".
struct CommandNames {
    const char* plain;
    const char* twin;
    const char* function;
};
/// "get", "getcli" and "CmdGetCommon" of `Names<"get", "CmdGet">()`.
template <FixedText Word, FixedText Function> consteval CommandNames Names() {
    return {LITERAL<Word>.text, JOINED<Word, "cli">.data(), JOINED<Function, "Common">.data()};
}

/// What an argument is.
enum class ArgumentKind : VX_UINT8 {
    ADAPTER,     ///< an identifier, as `adapter list` prints it
    PORT,        ///< the same of `port list`
    TARGET,      ///< the same of `target list`
    LUN,         ///< the same of `lun list`
    INPUT_FILE,  ///< a path that is read
    OUTPUT_FILE, ///< a path that is written
    WORD,        ///< one of `words`
    NUMBER,      ///< decimal, from `minimum` to `maximum`
    WWPN,        ///< eight hexadecimal bytes with colons between them
    TEXT,
};

/// An argument of a command, by position or as an option. All comparisons are without regard to case.
struct Argument {
    const char* name;      ///< of an option with its dashes, "--frame-size"
    const char* shortName; ///< of an option, "-z"; null for an argument by position
    const char* description;
    ArgumentKind kind;
    bool isRequired = false;
    std::span<const CodeText> words = {};
    VX_UINT32 minimum = 0;
    VX_UINT32 maximum = 0;
    const char* unit = "";
};

/// The option of this name among a command's arguments; one that isn't there does not compile.
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

/// The shape of a command's document.
///
/// A list is one of structures with `fields`. Every other document is one structure with `fields`; a report has
/// beside them `listField`, a list of structures with `rowFields`. The list of a failure is empty.
struct DocumentRow {
    enum Shape : VX_UINT8 { FLAT, LIST, REPORT };
    Shape shape;
    const char* structure;
    std::span<const DocumentField> fields;
    const char* listField = "";
    const char* rowStructure = "";
    std::span<const DocumentField> rowFields = {};
};

/// Whether a `cli` twin has a usage function: without one a bad call prints nothing after its document.
enum class TwinUsage : VX_UINT8 { OWN, NONE };

struct Command {
    CommandNames names;
    const char* description;
    CommonFunction run;
    const char* usage; ///< of the twin; null for none
    std::span<const Argument> arguments;
    DocumentRow document;
    bool changes = false; ///< something on the adapter, the link or in a file

    // Oddities that clients may depend on
    VX_UINT32 id = ANY_ID;                 ///< of the plain leaf
    const char* twinDescription = nullptr; ///< where the twin words it differently
    TwinUsage twinUsage = TwinUsage::OWN;
    const FamilyDescription* usageFamily = nullptr; ///< whose usage function the twin carries instead

    static constexpr VX_UINT32 ANY_ID = ~VX_UINT32{0};
};

/// A leaf of a family, as the program keeps it.
struct Leaf {
    enum Kind : VX_UINT8 { PLAIN, HELP, TWIN };

    const char* word;
    const char* description;
    CommonFunction run;
    const char* function; ///< "CmdGetCommon"
    const char* usage;    ///< null for none
    const FamilyDescription* usageFamily;
    VX_UINT32 id;
    Kind kind;
    bool hasUsage;
};

/// The leaves of a family's commands: the plain ones, `help`, then the twins, with ids counted in this order.
template <std::size_t N>
consteval std::array<Leaf, 2 * N + 1> LeavesOf(const Command (&commands)[N], const char* helpDescription,
                                               VX_UINT32 helpId) {
    std::array<Leaf, 2 * N + 1> leaves{};
    leaves[N] = {"help", helpDescription, nullptr, nullptr, nullptr, nullptr, helpId, Leaf::HELP, true};
    for (VX_UINT32 at = 0; at < N; ++at) {
        const Command& row = commands[at];
        const VX_UINT32 id = row.id != Command::ANY_ID ? row.id : at;
        const char* const description = row.twinDescription != nullptr ? row.twinDescription : row.description;
        const bool hasUsage = row.twinUsage == TwinUsage::OWN;
        leaves[at] = {
            row.names.plain, row.description, row.run, row.names.function, nullptr, nullptr, id, Leaf::PLAIN, false};
        leaves[N + 1 + at] = {row.names.twin,  description, row.run, row.names.function, row.usage, row.usageFamily,
                              helpId + 1 + at, Leaf::TWIN,  hasUsage};
    }
    return leaves;
}

/// The same as a constant of the program, of a family's own table.
template <const auto& commands, FixedText HelpDescription = "list of available commands",
          VX_UINT32 helpId = std::size(commands)>
inline constexpr auto LEAVES_OF = LeavesOf(commands, LITERAL<HelpDescription>.text, helpId);

/// Names of a report's frame: the structure, the field in it, and the structures in the field's list.
struct ReportNames {
    const char* structure;
    const char* field;
    const char* list;
    const char* data = OUT_DATA; ///< field of a data-block report's text
};

/// What is particular to a family.
struct FamilyDescription {
    const char* className; ///< as the traces name it
    const char* helpWord;  ///< the family in the heading of its help
    std::span<const Leaf> leaves;
    std::span<const CodeText> resultTexts = {}; ///< "Message" of a result code, in this family's words
    ReportNames report = {};                    ///< of a family whose documents are reports
};

/// A family in the tree, by its option and name.
struct FamilyRow {
    const char* name;
    const char* option;
    const char* description;
    const FamilyDescription* family;
    const Command* commands; ///< half as many as there are leaves; null in the program, which needs the leaves alone
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
