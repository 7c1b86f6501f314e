/// @file
/// All commands with their rows, and values for their arguments.
#pragma once

#include "CommandTree.h"

#include <sstream>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

struct CommandPath {
    std::string words; ///< "-t port -s info"
    const FamilyRow* family;
    const Command* command;
};

inline void Gather(const std::string& words, std::span<const FamilyRow> rows, std::vector<CommandPath>& paths) {
    for (const FamilyRow& row : rows) {
        const std::string path = words + row.option + " " + row.name + " ";
        for (std::size_t at = 0; at < row.family->leaves.size() / 2; ++at) {
            paths.push_back({path, &row, &row.commands[at]});
        }
        Gather(path, row.subFamilies, paths);
    }
}

inline constexpr const char* PORT_NAMES[] = {"50:06:0e:80:12:4a:7c:10", "21:00:00:24:ff:0a:51:c4"};

/// An image of each kind that the simulated host takes.
inline constexpr std::pair<const char*, const char*> INPUT_FILES[] = {
    {"/tmp/rows-mbi", "ORFC-IMAGE MBI 2.10.15\n"},
    {"/tmp/rows-nvram", "ORFC-IMAGE NVRAM 1\nFrameSize 1024\n"},
    {"/tmp/rows-sfp", "ORFC-IMAGE SFP B\n"}};

/// Every value of an argument that its row names.
inline Words ValuesOf(const Argument& argument) {
    Words values;
    switch (argument.kind) {
    case ArgumentKind::WORD:
        for (const CodeText& word : argument.words) {
            values.emplace_back(word.text);
        }
        break;
    case ArgumentKind::NUMBER:
        for (const CodeText& word : argument.words) {
            values.emplace_back(word.text);
        }
        values.push_back(std::to_string(argument.minimum));
        values.push_back(std::to_string(argument.maximum));
        break;
    case ArgumentKind::WWPN:
        values.assign(std::begin(PORT_NAMES), std::end(PORT_NAMES));
        break;
    case ArgumentKind::INPUT_FILE:
        for (const auto& [path, content] : INPUT_FILES) {
            values.emplace_back(path);
        }
        break;
    case ArgumentKind::OUTPUT_FILE:
        values.emplace_back("/tmp/rows-output");
        break;
    default:
        values.emplace_back("sample");
        break;
    }
    return values;
}

inline bool IsIdentifier(const Argument& argument) {
    return argument.kind <= ArgumentKind::LUN;
}
inline bool IsOption(const Argument& argument) {
    return argument.shortName != nullptr;
}
