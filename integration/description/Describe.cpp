/// @file
/// Prints the description of every command as JSON, from the tree that the program runs. Everything that others
/// install or read is generated from it: `orfc-esxcli.schema.json` describes the format.
#include "CommandTree.h"
#include "Version.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string_view>

namespace {

using nlohmann::ordered_json;

/// The first number moves when a reader of the format must, the second with every other change.
constexpr int SCHEMA_VERSION[] = {1, 0};

const char* KindName(ArgumentKind kind) {
    switch (kind) {
    case ArgumentKind::ADAPTER:
        return "adapter";
    case ArgumentKind::PORT:
        return "port";
    case ArgumentKind::TARGET:
        return "target";
    case ArgumentKind::LUN:
        return "lun";
    case ArgumentKind::INPUT_FILE:
        return "input-file";
    case ArgumentKind::OUTPUT_FILE:
        return "output-file";
    case ArgumentKind::WORD:
        return "word";
    case ArgumentKind::NUMBER:
        return "number";
    case ArgumentKind::WWPN:
        return "wwpn";
    case ArgumentKind::TEXT:
        return "text";
    }
    return nullptr;
}

const char* TypeName(FieldType type) {
    return type == FieldType::TEXT ? "string" : type == FieldType::NUMBER ? "int" : "bool";
}

template <typename Rows, typename Describe> ordered_json ArrayOf(const Rows& rows, Describe describe) {
    ordered_json array = ordered_json::array();
    for (const auto& row : rows) {
        array.push_back(describe(row));
    }
    return array;
}

ordered_json DescribeText(const CodeText& row) {
    return {{"code", row.code}, {"text", row.text}};
}

/// The argument that decides whether another one of the command applies, and with which of its words it does.
ordered_json DescribeCondition(const Argument& argument, std::span<const Argument> all) {
    const auto applies = [&](const CodeText& word) {
        return std::any_of(argument.appliesWith.begin(), argument.appliesWith.end(),
                           [&](const CodeText& with) { return std::string_view(with.text) == word.text; });
    };
    for (const Argument& deciding : all) {
        ordered_json words = ordered_json::array();
        for (const CodeText& word : deciding.words) {
            if (applies(word)) {
                words.push_back(word.text);
            }
        }
        if (!words.empty()) {
            return {{"argument", deciding.name}, {"words", words}};
        }
    }
    std::fprintf(stderr, "orfc-describe: %s depends on words that no argument has\n", argument.name);
    std::exit(1);
}

ordered_json DescribeArgument(const Argument& argument, std::span<const Argument> all) {
    ordered_json described = {{"name", argument.name}};
    if (argument.shortName != nullptr) {
        described["short_name"] = argument.shortName;
    }
    described["description"] = argument.description;
    described["kind"] = KindName(argument.kind);
    described["required"] = argument.isRequired;
    if (!argument.words.empty()) {
        described["words"] = ArrayOf(argument.words, [](const CodeText& word) { return word.text; });
    }
    if (argument.kind == ArgumentKind::NUMBER) {
        described["minimum"] = argument.minimum;
        described["maximum"] = argument.maximum;
        described["unit"] = argument.unit;
    }
    if (!argument.appliesWith.empty()) {
        described["applies_with"] = DescribeCondition(argument, all);
    }
    return described;
}

ordered_json DescribeField(const DocumentField& field) {
    return {{"name", field.name}, {"type", TypeName(field.type)}};
}

ordered_json DescribeDocument(const DocumentRow& document) {
    static constexpr const char* SHAPES[] = {"flat", "list", "report"};
    ordered_json described = {{"shape", SHAPES[document.shape]},
                              {"structure", document.structure},
                              {"fields", ArrayOf(document.fields, DescribeField)}};
    if (document.shape == DocumentRow::REPORT) {
        described["list_field"] = document.listField;
        described["row_structure"] = document.rowStructure;
        described["row_fields"] = ArrayOf(document.rowFields, DescribeField);
    }
    return described;
}

ordered_json DescribeCommand(const Command& command) {
    const auto describe = [&](const Argument& argument) { return DescribeArgument(argument, command.arguments); };
    return {{"name", command.names.plain},
            {"text_name", command.names.twin},
            {"description", command.description},
            {"changes", command.changes},
            {"arguments", ArrayOf(command.arguments, describe)},
            {"document", DescribeDocument(command.document)}};
}

/// Appends the families below `path`, each before its own sub-families. `words` select `path` on a command line.
void DescribeFamilies(std::span<const FamilyRow> rows, const ordered_json& path, const ordered_json& words,
                      ordered_json& families) {
    for (const FamilyRow& row : rows) {
        ordered_json ownPath = path;
        ownPath.push_back(row.name);
        ordered_json ownWords = words;
        ownWords.push_back(row.option);
        ownWords.push_back(row.name);
        const std::span<const Command> commands(row.commands, row.family->leaves.size() / 2);
        families.push_back({{"path", ownPath},
                            {"words", ownWords},
                            {"description", row.description},
                            {"commands", ArrayOf(commands, DescribeCommand)},
                            {"result_texts", ArrayOf(row.family->resultTexts, DescribeText)}});
        DescribeFamilies(row.subFamilies, ownPath, ownWords, families);
    }
}

} // namespace

// An exception fails the build.
int main(int count, char*[]) { // NOLINT(bugprone-exception-escape)
    if (count != 1) {
        std::fputs("usage: orfc-describe\n", stderr);
        return 2;
    }
    ordered_json families = ordered_json::array();
    DescribeFamilies(CommandTree<DescribedRows>::ROOT, ordered_json::array(), ordered_json::array(), families);
    const ordered_json description = {{"schema_version", SCHEMA_VERSION},
                                      {"program", "orfc-esxcli"},
                                      {"version", TOOL_VERSION},
                                      {"families", families}};
    const bool isWritten = std::puts(description.dump(1).c_str()) >= 0 && std::fflush(stdout) == 0;
    if (!isWritten) {
        std::perror("orfc-describe");
    }
    return isWritten ? 0 : 1;
}
