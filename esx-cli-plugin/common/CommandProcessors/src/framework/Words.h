/// @file
/// Small questions about the words of a command, and the splitting of a line into words.
#pragma once

#include "TavuString.h"

/// True when `stat` succeeds on the path.
bool FileExists(const char* path);

/// True for "help", "/h", "/help", "-h", "-help", "/?" and "?", in any letter case.
bool IsInvokingHelp(const char* word);

/// True when every character is a decimal digit; also for the empty word.
bool IsArgNumber(const char* word);

/// The argument at `index`, or an empty text when there is none. Arguments are read in no other way.
const char* ArgText(const TavuStringArray& args, std::size_t index);

/// Splits a line at blanks, tabs, carriage returns and newlines; a quoted stretch is part of its word, and
/// a pair of quotes alone is an empty word. There is no escape character. Returns null when the quotes
/// stay open. The result and all its words are one allocation, which the caller frees with `free`.
char** ParseCommandLineToArgv(const char* line, int& argc);
