/// @file
/// Lookup of options among a command's words. All comparisons are without regard to case.
#pragma once

#include "TavuString.h"

class CmdLineParser {
public:
    /// Finds the first word that equals `shortName` or `longName` (an empty name equals nothing). When a
    /// word follows it, stores that word, whatever it is, in `value` and gives 1; else gives 0.
    static int GetCommandValueFromArgs(const TavuStringArray& args, const char* shortName, const char* longName,
                                       TavuString& value);
};

/// With a non-empty `option`: finds the first pair of `option` and `name` behind each other; an option
/// that is the last word ends the search. With an empty one: finds `name`. Gives 1 and the position in
/// `index`, or 0 and -1.
int IsCommandInArgs(const TavuStringArray& args, const char* option, const char* name, int& index);
