#include "TracedFunction.h"

namespace {

const char* currentClass = "";
const char* currentFunction = "";

} // namespace

TracedFunction::TracedFunction(const char* className, const char* function)
    : mOuterClass(currentClass), mOuterFunction(currentFunction) {
    currentClass = className;
    currentFunction = function;
}

TracedFunction::TracedFunction(const char* function) : TracedFunction(currentClass, function) {}

TracedFunction::~TracedFunction() {
    currentClass = mOuterClass;
    currentFunction = mOuterFunction;
}

void TraceStep(unsigned level, const char* format, ...) {
    if (!TavuDebug::IsEnabled(level)) {
        return;
    }
    TavuString text;
    va_list arguments;
    va_start(arguments, format);
    text.FormatV(format, arguments);
    va_end(arguments);
    TavuDebug::Print(level, "%s::%s: %s", currentClass, currentFunction, text.c_str());
}
