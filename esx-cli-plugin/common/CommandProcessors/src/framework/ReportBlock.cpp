#include "ReportBlock.h"

#include "BoundedText.h"
#include "TavuDebug.h"

#include <cstdio>

ReportBlock::ReportBlock(std::size_t size, SizeRule rule, const char* className, const char* function)
    : mText(static_cast<char*>(std::calloc(size, 1))), mSize(size), mRule(rule), mClassName(className),
      mFunction(function) {
    if (!IsAllocated()) {
        TavuDebug::Print(TRACE_DEBUG, "%s::%s: Output memory alloc failed", className, function);
    }
}

void ReportBlock::Trace(const char* label, std::string_view value) const {
    TavuDebug::Print(TRACE_INFORMATION, "%s::%s: %s=%.*s", mClassName, mFunction, label, static_cast<int>(value.size()),
                     value.data());
}

void ReportBlock::Line(const char* label, std::string_view value) {
    Trace(label, value);
    TavuString line;
    line.Format("%s%s: %.*s\n", Indentation(), label, static_cast<int>(value.size()), value.data());
    Raw(line.c_str());
}

void ReportBlock::UncutLine(const char* label, std::string_view value) {
    Trace(label, value);
    TavuString line = Indentation();
    line.append(label).append(": ").append(value).append("\n");
    Raw(line.c_str());
}

void ReportBlock::LineF(const char* label, const char* format, ...) {
    TavuString value;
    va_list arguments;
    va_start(arguments, format);
    value.FormatV(format, arguments);
    va_end(arguments);
    Line(label, value);
}

void ReportBlock::Heading(const char* text) {
    TavuDebug::Print(TRACE_INFORMATION, "%s::%s: %s", mClassName, mFunction, text);
    Raw((TavuString(Indentation()) + text + "\n").c_str());
}

void ReportBlock::Raw(const char* text) {
    const std::size_t size = mRule == SizeRule::FULL ? mSize : mSize - std::strlen(mText.get());
    strcat_s(mText.get(), size, text);
    mIsFirst = false;
}

void ReportBlock::RawF(const char* format, ...) {
    char text[256];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    Raw(text);
}
