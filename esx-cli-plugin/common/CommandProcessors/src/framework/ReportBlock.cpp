#include "ReportBlock.h"

#include "BoundedText.h"
#include "TracedFunction.h"

#include <cstdio>

ReportBlock::ReportBlock(std::size_t size, SizeRule rule)
    : mText(static_cast<char*>(std::calloc(size, 1))), mSize(size), mRule(rule) {
    if (!IsAllocated()) {
        TraceStep(TRACE_DEBUG, "Output memory alloc failed");
    }
}

void ReportBlock::Trace(const char* label, std::string_view value) {
    TraceStep(TRACE_INFORMATION, "%s=%.*s", label, static_cast<int>(value.size()), value.data());
}

void ReportBlock::Line(const char* label, std::string_view value, const char* lineEnd) {
    Trace(label, value);
    TavuString line;
    line.Format("%s%s: %.*s%s", Indentation(), label, static_cast<int>(value.size()), value.data(), lineEnd);
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
    TraceStep(TRACE_INFORMATION, "%s", text);
    Raw((TavuString(Indentation()) + text + "\n").c_str());
}

void ReportBlock::BareLine(const char* text) {
    TraceStep(TRACE_INFORMATION, "%.*s", static_cast<int>(std::strcspn(text, "\n")), text);
    Raw(text);
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
