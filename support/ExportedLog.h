/// @file
/// Log functions exported to the closed libraries, which look them up in the running program. No command calls
/// them. See also `TavuDebug::UnInitialize`, the overloads of `TavuDebug::Print` and `TavuDebug::PrintForFwUpg`.
#pragma once

#include "TavuDebug.h"

/// Traces with their source location.
class LinenoLog {
public:
    /// Keeps the base name of `file`, which must outlive the log.
    LinenoLog(const char* file, int line);

    /// Same as `TavuDebug::Print`, with the prefix " FILE (LINE)", padded to 25 characters, after the process id.
    void Print(const char* format, ...) const __attribute__((format(printf, 2, 3)));
    void Print(unsigned level, const char* format, ...) const __attribute__((format(printf, 3, 4)));

private:
    TavuString GetPrefix() const;

    const char* mFile;
    int mLine;
};

/// Writes "ORDM_DebugPrint: SOURCE : TEXT" as a core log message of type debug, and to the API log.
void ORDM_DebugPrint(TavuString source, TavuString text);

extern "C" {

/// Same as `TavuDebug::Print` with a level.
void OR_Print(unsigned level, const char* format, ...) __attribute__((format(printf, 2, 3)));

/// Appends 'Debug:"TEXT" ' and a newline to "/tmp/APILog.txt". Silently drops the text if the file is not our own.
void APILog(const char* text);

/// Message types of `CoreLogMessage`; any other prints as "Unknown".
enum CoreLogType { CORE_LOG_INFO = 1, CORE_LOG_WARNING = 2, CORE_LOG_ERROR = 3, CORE_LOG_DEBUG = 100 };

/// Prints "TYPE: TEXT" on standard output, unless the mode is quiet. During a library call, standard output is the
/// library's log.
void CoreLogMessage(int type, const char* format, ...) __attribute__((format(printf, 2, 3)));

/// 0 silences `CoreLogMessage`; any other mode enables it. Enabled initially.
void OR_setDebugMode(int mode);
}
