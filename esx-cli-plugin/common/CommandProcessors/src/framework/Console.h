/// @file
/// What a run has in common: its mode, its plain output with the command log, and small questions about
/// words and files. Everything that is not part of a document is written here.
#pragma once

#include "TavuString.h"
#include "vexapi.h"

#include <atomic>

/// Bits of `g_uFlags`.
enum ProgramFlag : VX_UINT32 {
    FLAG_DEBUG = 1,        ///< "-debug": accepted and stored; nothing reads it
    FLAG_QUIT = 2,         ///< tested by `main` and the prompt; nothing sets it
    FLAG_COMMAND_LINE = 4, ///< one command, no prompt
    FLAG_ENGINEERING = 8,  ///< "-eng": nodes with bit 0 in their flags are usable and shown
    FLAG_BREAK = 16,       ///< SIGQUIT: back to the prompt
};
extern std::atomic<VX_UINT32> g_uFlags;
inline bool HasProgramFlag(ProgramFlag flag) {
    return (g_uFlags & flag) != 0;
}

/// Descriptor of the file that the `log` command opened; -1 when there is none.
extern int g_hLogFile;

/// Levels of `Output`. They have no effect but for the silent one.
enum OutputLevel : unsigned short {
    OUTPUT_TEXT = 0,
    OUTPUT_NOTE = 10,
    OUTPUT_HEADING = 11,
    OUTPUT_ERROR = 12,
    OUTPUT_LIST = 15, ///< usage texts and lists
    OUTPUT_LOG_ONLY = 65535,
};

/// Prints on standard output, unless the level is `OUTPUT_LOG_ONLY`, and gives the first 4095 characters
/// to `LogToFile`.
void Output(unsigned short level, const char* format, ...) __attribute__((format(printf, 2, 3)));

/// Writes the text to the open command log, without a terminator; nothing without one.
void LogToFile(const char* text);

/// True when `stat` succeeds on the path.
bool FileExists(const char* path);

/// Prints on standard error and ends the process with status -1.
[[noreturn]] void Panic(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// A state that the program must never reach: one line on standard error, then `abort`. In every build.
[[noreturn]] void FailAssertion(const char* what);

/// True for "help", "/h", "/help", "-h", "-help", "/?" and "?", in any letter case.
bool IsInvokingHelp(const char* word);

/// True when every character is a decimal digit; also for the empty word.
bool IsArgNumber(const char* word);

/// The argument at `index`, or an empty text when there is none. Arguments are read in no other way.
const char* ArgText(const TavuStringArray& args, std::size_t index);

/// Splits a line at blanks, tabs, carriage returns and newlines; a quoted stretch is part of its word, and
/// a pair of quotes alone is an empty word. There is no escape character. Gives null when the quotes
/// stay open. The result and all its words are one allocation, which the caller frees with `free`.
char** ParseCommandLineToArgv(const char* line, int& argc);
