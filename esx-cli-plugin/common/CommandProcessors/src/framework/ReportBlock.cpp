#include "ReportBlock.h"

#include "BoundedText.h"
#include "TavuDebug.h"

ReportBlock::ReportBlock(std::size_t size, SizeRule rule, const char* className, const char* function)
    : mText(static_cast<char*>(std::calloc(size, 1))), mSize(size), mRule(rule), mClassName(className),
      mFunction(function) {
    if (!IsAllocated()) {
        TavuDebug::Print(TRACE_DEBUG, "%s::%s: Output memory alloc failed", className, function);
    }
}

void ReportBlock::Line(const char* label, std::string_view value) {
    const auto length = static_cast<int>(value.size());
    TavuDebug::Print(TRACE_INFORMATION, "%s::%s: %s=%.*s", mClassName, mFunction, label, length, value.data());
    TavuString line;
    line.Format("%s%s: %.*s\n", mIsFirst ? "" : "      ", label, length, value.data());
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

void ReportBlock::Raw(const char* text) {
    const std::size_t size = mRule == SizeRule::FULL ? mSize : mSize - std::strlen(mText.get());
    strcat_s(mText.get(), size, text);
    mIsFirst = false;
}
