/// @file
/// Lookup of options among a command's words, and reading their values. All comparisons are without regard to
/// case.
#pragma once

#include "CodeTable.h"
#include "CommandRows.h"
#include "TavuString.h"
#include "Texts.h"

class CmdLineParser {
public:
    /// Finds the first word that equals `shortName` or `longName` (an empty name equals nothing). When a
    /// word follows it, stores that word, whatever it is, in `value` and gives 1; else gives 0.
    static int GetCommandValueFromArgs(const TavuStringArray& args, const char* shortName, const char* longName,
                                       TavuString& value);

    /// The same for the option of a command's row: true when it is given.
    static bool GetOption(const TavuStringArray& args, const Argument& option, TavuString& value) {
        return GetCommandValueFromArgs(args, option.shortName, option.name, value) != 0;
    }
};

/// With a non-empty `option`: finds the first pair of `option` and `name` behind each other; an option
/// that is the last word ends the search. With an empty one: finds `name`. Gives 1 and the position in
/// `index`, or 0 and -1.
int IsCommandInArgs(const TavuStringArray& args, const char* option, const char* name, int& index);

/// Words of a flag, and of a flag of the inverted sense, "disable".
inline constexpr CodeText FLAG_WORDS[] = {{1, OUT_TRUE}, {0, OUT_FALSE}};
inline constexpr CodeText INVERTED_FLAG_WORDS[] = {{0, OUT_TRUE}, {1, OUT_FALSE}};

/// Number of a word, in any letter case. False for a word that isn't there.
bool FindWord(std::span<const CodeText> words, const char* value, VX_UINT32& number);

/// The number in a text as options and cache files take it: base 10, the low 32 bits. A text that is no
/// number reads as 0, and "-1" as the largest one: users rely on it, and no stricter parse is wanted.
VX_UINT32 ParseNumber(const char* text);
