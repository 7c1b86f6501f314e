/// @file
/// Plain output with the command log: everything that is not part of a document is written here.
#pragma once

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

/// Prints on standard error and ends the process with status -1.
[[noreturn]] void Panic(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// A state that the program must never reach: one line on standard error, then `abort`. In every build.
[[noreturn]] void FailAssertion(const char* what);
