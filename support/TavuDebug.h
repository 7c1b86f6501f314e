/// @file
/// Tracing: everything that is not the tool's answer goes to a debug log outside its output.
#pragma once

#include "TavuString.h"
#include "TavuTimer.h"

/// Levels of a trace: bits of the mask.
enum TraceLevel : unsigned {
    TRACE_INFORMATION = 1, ///< entry, exit, fields, library statuses
    TRACE_WARNING = 2,
    TRACE_DEBUG = 4, ///< failures that a command reports
    TRACE_DIAG_ERROR = 16,
};

/// The debug log. It is off until the environment variable `ORFC_DEBUG_LEVEL` gives a mask, and a trace
/// then costs one test more than none. Tracing never fails a command: a log that cannot be written loses
/// its lines in silence. A line holds at most `TavuString::MAX_FORMATTED` characters behind its time stamp.
class TavuDebug {
public:
    /// Reads the mask from `ORFC_DEBUG_LEVEL`, in base 10; 0 without the variable.
    static void Initialize();

    static unsigned GetLevel() { return dwDbgLevel; }
    static bool IsEnabled(unsigned level) { return (level & dwDbgLevel) != 0; }

    /// Traces without a level, at any mask but 0.
    static void Print(const char* format, ...) __attribute__((format(printf, 1, 2)));
    /// Traces when the mask has a bit of `level`. A level without a word of its own prints an empty word.
    static void Print(unsigned level, const char* format, ...) __attribute__((format(printf, 2, 3)));

    /// Appends the text, with the local time ahead of it, to the log file.
    static void OutputDebugStringA(const char* text);

    /// Path of the log: "/var/tmp/NAME.log" of the loaded file's name, without ".so" and what follows it.
    /// A program that was found without a path logs to "/var/tmp/viplugin.log".
    static const TavuString& GetInstallationPath();

private:
    static void Write(const unsigned* level, const char* format, va_list arguments);

    static unsigned dwDbgLevel;
};

/// Path of the log for a program that was loaded from `file`.
TavuString DebugLogPath(const char* file);

/// Traces the start and the end of a scope at level 1, and the time that it took when that is 300
/// milliseconds or more. `name` must outlive the scope.
class ScopedTrace {
public:
    explicit ScopedTrace(const char* name);
    ~ScopedTrace();
    ScopedTrace(const ScopedTrace&) = delete;
    ScopedTrace& operator=(const ScopedTrace&) = delete;

private:
    const char* mName;
    TavuTimer mTimer;
};
