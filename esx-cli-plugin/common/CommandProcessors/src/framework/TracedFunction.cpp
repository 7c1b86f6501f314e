#include "TracedFunction.h"

namespace {

const char* s_currentClass = "";
const char* s_currentFunction = "";

} // namespace

TracedFunction::TracedFunction(const char* className, const char* function)
    : mOuterClass(s_currentClass), mOuterFunction(s_currentFunction) {
    s_currentClass = className;
    s_currentFunction = function;
}

TracedFunction::TracedFunction(const char* function) : TracedFunction(s_currentClass, function) {}

TracedFunction::~TracedFunction() {
    s_currentClass = mOuterClass;
    s_currentFunction = mOuterFunction;
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
    TavuDebug::Print(level, "%s::%s: %s", s_currentClass, s_currentFunction, text.c_str());
}
