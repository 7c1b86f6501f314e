/// @file
/// Tracing: everything that is not the tool's answer goes to a debug log outside its output.
#pragma once

#include "TavuString.h"
#include "TavuTimer.h"

#include <concepts>

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
    /// Does nothing; for the closed libraries.
    static void UnInitialize();

    static unsigned GetLevel() { return dwDbgLevel; }
    static bool IsEnabled(unsigned level) { return (level & dwDbgLevel) != 0; }

    /// Traces without a level, at any mask but 0.
    static void Print(const char* format, ...) __attribute__((format(printf, 1, 2)));
    /// Traces when the mask has a bit of `level`. A level without a word of its own prints an empty word.
    static void Print(unsigned level, const char* format, ...) __attribute__((format(printf, 2, 3)));
    /// The same with other types of formats, for the closed libraries. A string without values is a text and no
    /// format. Characters outside of ASCII in a wide format are traced as "?".
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
    /// As `Print` without a level.
    static void PrintForFwUpg(const char* format, ...) __attribute__((format(printf, 1, 2)));

    /// As `Print`, with `prefix` after the process id; a null level is none.
    static void PrintV(const unsigned* level, const char* prefix, const char* format, va_list arguments)
        __attribute__((format(printf, 3, 0)));

    /// Appends the text, with the local time ahead of it, to the log file.
    static void OutputDebugStringA(const char* text);

    /// Path of the log: "/var/tmp/NAME.log" of the loaded file's name, without ".so" and what follows it.
    /// A program that was found without a path logs to "/var/tmp/viplugin.log".
    static const TavuString& GetInstallationPath();

private:
    static unsigned dwDbgLevel;
};

/// Path of the log for a program that was loaded from `file`.
TavuString DebugLogPath(const char* file);

/// Traces the start and the end of a class's constructor or destructor at level 1, and the time that it took when
/// that is 300 milliseconds or more.
class ScopedTrace {
public:
    enum Kind { CONSTRUCTOR, DESTRUCTOR };

    /// `className` must outlive the scope.
    ScopedTrace(Kind kind, const char* className);
    ~ScopedTrace();
    ScopedTrace(const ScopedTrace&) = delete;
    ScopedTrace& operator=(const ScopedTrace&) = delete;

private:
    /// The function as the compiler would name it.
    TavuString GetName() const;

    Kind mKind;
    const char* mClassName;
    TavuTimer mTimer;
};
