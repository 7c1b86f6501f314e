/// @file
/// Predicates on command words, and splitting of a line into words.
#pragma once

#include "TavuString.h"

/// True if `stat` succeeds on the path.
bool FileExists(const char* path);

/// True for "help", "/h", "/help", "-h", "-help", "/?" and "?", in any letter case.
bool IsInvokingHelp(const char* word);

/// True if every character is a decimal digit; also for an empty word.
bool IsArgNumber(const char* word);

/// The argument at `index`, or an empty text. All arguments are read through this function.
const char* ArgText(const TavuStringArray& args, std::size_t index);

/// Splits a line at blanks, tabs, carriage returns and newlines. A quoted section is part of its word; an empty
/// pair of quotes is an empty word. There is no escape character. Returns null if a quote is left open. The result
/// and all its words are one allocation, to be freed with `free`.
char** ParseCommandLineToArgv(const char* line, int& argc);
