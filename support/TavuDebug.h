/// @file
/// Tracing: all diagnostics go to a debug log, never to the tool's output.
#pragma once

#include "TavuString.h"
#include "TavuTimer.h"

#include <concepts>

/// Trace levels: bits of the mask.
enum TraceLevel : unsigned {
    TRACE_INFORMATION = 1, ///< entry, exit, fields, library statuses
    TRACE_WARNING = 2,
    TRACE_DEBUG = 4, ///< failures that a command reports
    TRACE_DIAG_ERROR = 16,
};

/// The debug log. It is off until the environment variable `ORFC_DEBUG_LEVEL` sets a mask; while off, a trace costs
/// a single test. Tracing never fails a command: lines are silently lost if the log can't be written. After its
/// time stamp, a line has at most `TavuString::MAX_FORMATTED` characters.
class TavuDebug {
public:
    /// Reads the mask from `ORFC_DEBUG_LEVEL`, in base 10; 0 if unset.
    static void Initialize();
    /// Does nothing. Called by the closed libraries.
    static void UnInitialize();

    static unsigned GetLevel() { return dwDbgLevel; }
    static bool IsEnabled(unsigned level) { return (level & dwDbgLevel) != 0; }

    /// Traces without a level, if the mask is not 0.
    static void Print(const char* format, ...) __attribute__((format(printf, 1, 2)));
    /// Traces if the mask has a bit of `level`. A level without a name prints an empty one.
    static void Print(unsigned level, const char* format, ...) __attribute__((format(printf, 2, 3)));
    /// Overloads with other format types, for the closed libraries. A string without values is printed verbatim,
    /// not as a format. Non-ASCII characters in a wide format are traced as "?".
    template <std::same_as<TavuString> Format, typename... Values>
    static void Print(const Format& format, Values... values) {
        if constexpr (sizeof...(values) == 0) {
            Print("%s", format.c_str());
        } else {
            Print(format.c_str(), values...);
        }
    }
    template <std::same_as<TavuString> Format, typename... Values>
    static void Print(unsigned level, const Format& format, Values... values) {
        if constexpr (sizeof...(values) == 0) {
            Print(level, "%s", format.c_str());
        } else {
            Print(level, format.c_str(), values...);
        }
    }
    static void Print(const wchar_t* format, ...);
    static void Print(unsigned level, const wchar_t* format, ...);
    /// Same as `Print` without a level.
    static void PrintForFwUpg(const char* format, ...) __attribute__((format(printf, 1, 2)));

    /// Same as `Print`, with `prefix` after the process id. A null level means none.
    static void PrintV(const unsigned* level, const char* prefix, const char* format, va_list arguments)
        __attribute__((format(printf, 3, 0)));

    /// Appends the text to the log file, preceded by the local time.
    static void OutputDebugStringA(const char* text);

    /// Path of the log: "/var/tmp/NAME.log", where NAME is the name of the loaded file up to ".so". A program found
    /// without a path logs to "/var/tmp/viplugin.log".
    static const TavuString& GetInstallationPath();

private:
    static unsigned dwDbgLevel;
};

/// Path of the log for a program loaded from `file`.
TavuString DebugLogPath(const char* file);

/// Traces the start and end of a constructor or destructor at level 1, and its duration if that is 300 milliseconds
/// or more.
class ScopedTrace {
public:
    enum Kind { CONSTRUCTOR, DESTRUCTOR };

    /// `className` must outlive the scope.
    ScopedTrace(Kind kind, const char* className);
    ~ScopedTrace();
    ScopedTrace(const ScopedTrace&) = delete;
    ScopedTrace& operator=(const ScopedTrace&) = delete;

private:
    /// The function's name as the compiler prints it.
    TavuString GetName() const;

    Kind mKind;
    const char* mClassName;
    TavuTimer mTimer;
};
