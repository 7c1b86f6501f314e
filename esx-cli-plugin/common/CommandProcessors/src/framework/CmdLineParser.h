/// @file
/// Option lookup and value parsing. All comparisons ignore case.
#pragma once

#include "CodeTable.h"
#include "CommandRows.h"
#include "TavuString.h"
#include "Texts.h"

class CmdLineParser {
public:
    /// Finds the first word equal to `shortName` or `longName` (an empty name matches nothing). If a word follows,
    /// stores it unconditionally in `value` and returns 1; else returns 0.
    static int GetCommandValueFromArgs(const TavuStringArray& args, const char* shortName, const char* longName,
                                       TavuString& value);

    /// Same for an option of a command's row. Returns true if it is given.
    static bool GetOption(const TavuStringArray& args, const Argument& option, TavuString& value) {
        return GetCommandValueFromArgs(args, option.shortName, option.name, value) != 0;
    }
};

/// With a non-empty `option`, finds the first `option` directly followed by `name`; an option that is the last word
/// ends the search. With an empty one, finds `name`. Returns 1 and the position in `index`, or 0 and -1.
int IsCommandInArgs(const TavuStringArray& args, const char* option, const char* name, int& index);

/// Words of a flag, and of a flag with inverted meaning ("disable").
inline constexpr CodeText FLAG_WORDS[] = {{1, OUT_TRUE}, {0, OUT_FALSE}};
inline constexpr CodeText INVERTED_FLAG_WORDS[] = {{0, OUT_TRUE}, {1, OUT_FALSE}};

/// Looks up the number of a word, ignoring case. Returns false if the word is unknown.
bool FindWord(std::span<const CodeText> words, const char* value, VX_UINT32& number);

/// Parses a number in options and cache files: base 10, low 32 bits. Required: text that is not a number yields 0,
/// and "-1" the largest number. Users rely on it; don't parse more strictly.
VX_UINT32 ParseNumber(const char* text);
