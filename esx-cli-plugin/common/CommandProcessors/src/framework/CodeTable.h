/// @file
/// Tables of codes and their texts.
#pragma once

#include "vexapi.h"

#include <span>

struct CodeText {
    VX_UINT32 code;
    const char* text;
};

/// Text of the first row with `code`, or `fallback`.
constexpr const char* TextOf(std::span<const CodeText> table, VX_UINT32 code, const char* fallback) {
    for (const CodeText& row : table) {
        if (row.code == code) {
            return row.text;
        }
    }
    return fallback;
}

/// Text of a result code in a family's table. A family's commands may also return codes that it does not list;
/// those read as unknown.
constexpr const char* ResultTextOf(std::span<const CodeText> table, VX_UINT32 code) {
    return TextOf(table, code, "Failed, Unknown");
}
