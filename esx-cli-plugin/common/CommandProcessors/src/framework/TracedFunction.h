/// @file
/// Names in traces. A trace names a class and a function: the common function of the running command, or a named
/// operation inside it. Helpers that trace steps don't know these names.
#pragma once

#include "TavuDebug.h"

/// Sets the class and function named in traces during its lifetime. Nested instances shadow the outer one. The
/// names must outlive it.
class TracedFunction {
public:
    TracedFunction(const char* className, const char* function);
    /// Takes the class from the outer instance.
    explicit TracedFunction(const char* function);
    ~TracedFunction();
    TracedFunction(const TracedFunction&) = delete;
    TracedFunction& operator=(const TracedFunction&) = delete;

private:
    const char* mOuterClass;
    const char* mOuterFunction;
};

/// Traces "CLASS::FUNCTION: TEXT" with the names of the innermost traced function.
void TraceStep(unsigned level, const char* format, ...) __attribute__((format(printf, 2, 3)));

/// A traced function that traces its entry and exit at level 1, whatever its result.
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
