/// @file
/// Names in traces. A trace names the class and the function whose step it tells: the common function of the command
/// that runs, or the operation inside it that has a name of its own. The helpers that take these steps don't know it.
#pragma once

#include "TavuDebug.h"

/// Names a class and a function in the traces of its lifetime. Nested instances shadow the outer one. The names
/// must outlive it.
class TracedFunction {
public:
    TracedFunction(const char* className, const char* function);
    /// Of the class of the outer one.
    explicit TracedFunction(const char* function);
    ~TracedFunction();
    TracedFunction(const TracedFunction&) = delete;
    TracedFunction& operator=(const TracedFunction&) = delete;

private:
    const char* mOuterClass;
    const char* mOuterFunction;
};

/// Traces "CLASS::FUNCTION: TEXT", with the names of the innermost traced function.
void TraceStep(unsigned level, const char* format, ...) __attribute__((format(printf, 2, 3)));

/// A traced function whose entry and exit are traced at level 1, whatever its result.
class TracedCall {
public:
    TracedCall(const char* className, const char* function) : mFunction(className, function) { TraceEntry(); }
    explicit TracedCall(const char* function) : mFunction(function) { TraceEntry(); }
    ~TracedCall() { TraceStep(TRACE_INFORMATION, "Exiting"); }
    TracedCall(const TracedCall&) = delete;
    TracedCall& operator=(const TracedCall&) = delete;

private:
    static void TraceEntry() { TraceStep(TRACE_INFORMATION, "Entered"); }

    TracedFunction mFunction;
};
