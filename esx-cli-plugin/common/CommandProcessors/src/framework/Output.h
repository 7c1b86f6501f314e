/// @file
/// Plain output, copied to the command log: everything that is not part of a document.
#pragma once

/// Descriptor of the file opened by the `log` command, or -1.
extern int g_hLogFile;

/// Levels of `Output`. Only `OUTPUT_LOG_ONLY` has an effect.
enum OutputLevel : unsigned short {
    OUTPUT_TEXT = 0,
    OUTPUT_NOTE = 10,
    OUTPUT_HEADING = 11,
    OUTPUT_ERROR = 12,
    OUTPUT_LIST = 15, ///< usage texts and lists
    OUTPUT_LOG_ONLY = 65535,
};

/// Prints on standard output, unless the level is `OUTPUT_LOG_ONLY`, and passes the first 4095 characters to
/// `LogToFile`.
void Output(unsigned short level, const char* format, ...) __attribute__((format(printf, 2, 3)));

/// Writes the text to the command log, without a terminator. Does nothing if no log is open.
void LogToFile(const char* text);

/// Prints on standard error and ends the process with status -1.
[[noreturn]] void Panic(const char* format, ...) __attribute__((format(printf, 1, 2)));

/// Reports an impossible state with one line on standard error, then calls `abort`. Active in every build.
[[noreturn]] void FailAssertion(const char* what);
