#include "ReportBlock.h"

#include "BoundedText.h"
#include "TavuDebug.h"

ReportBlock::ReportBlock(std::size_t size, SizeRule rule, const char* owner)
    : mText(static_cast<char*>(std::calloc(size, 1))), mSize(size), mRule(rule), mOwner(owner) {
    if (!IsAllocated()) {
        TavuDebug::Print(TRACE_DEBUG, "%s: Output memory alloc failed", owner);
    }
}

void ReportBlock::Line(const char* label, const char* value) {
    TavuDebug::Print(TRACE_INFORMATION, "%s: %s=%s", mOwner, label, value);
    TavuString line;
    line.Format("%s%s: %s\n", mIsFirst ? "" : "      ", label, value);
    Raw(line.c_str());
}

void ReportBlock::LineF(const char* label, const char* format, ...) {
    TavuString value;
    va_list arguments;
    va_start(arguments, format);
    value.FormatV(format, arguments);
    va_end(arguments);
    Line(label, value.c_str());
}

void ReportBlock::Raw(const char* text) {
    const std::size_t size = mRule == SizeRule::FULL ? mSize : mSize - std::strlen(mText.get());
    strcat_s(mText.get(), size, text);
    mIsFirst = false;
}
