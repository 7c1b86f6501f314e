/// @file
/// The text of a data-block report.
#pragma once

#include "TavuString.h"

#include <cstdlib>
#include <memory>
#include <string_view>

/// A report of many lines in one bounded buffer. The first line begins at once, because in text form it
/// stands behind the label "Data"; all others are indented with six blanks. A line that the size rule
/// refuses is left out without a word, and a later shorter one can still go in. Each line is traced at
/// level 1, whether it goes in or not, and is cut at `TavuString::MAX_FORMATTED` characters. The traces name the
/// traced function.
class ReportBlock {
public:
    /// The size that each append is checked against, as the whole text must stay below it.
    enum class SizeRule {
        FULL,       ///< the buffer's size: a report fills its buffer
        SPACE_LEFT, ///< the space that is left in it: a report fills about half, as clients know it
    };

    ReportBlock(std::size_t size, SizeRule rule);

    /// False when the buffer could not be had; nothing else may be called then.
    bool IsAllocated() const { return mText != nullptr; }

    /// Adds "LABEL: VALUE", with its line end; `lineEnd` is another one where a value brings its own.
    void Line(const char* label, std::string_view value, const char* lineEnd = "\n");
    /// The same with a value formatted as `printf` does.
    void LineF(const char* label, const char* format, ...) __attribute__((format(printf, 3, 4)));
    /// The same as `Line` at any length: the value of a line that is put together piece by piece is not cut.
    void UncutLine(const char* label, std::string_view value);
    /// Adds a line of its own, without a label.
    void Heading(const char* text);
    /// Adds a text as a line, as it stands: no indentation, no line end.
    void BareLine(const char* text);
    /// Adds a text as it stands, a piece of a line or several lines. It is not traced.
    void Raw(const char* text);
    /// The same, formatted as `printf` does and cut at 255 characters.
    void RawF(const char* format, ...) __attribute__((format(printf, 2, 3)));

    /// Null when the buffer could not be had.
    const char* GetText() const { return mText.get(); }

private:
    const char* Indentation() const { return mIsFirst ? "" : "      "; }
    static void Trace(const char* label, std::string_view value);

    struct Free {
        void operator()(char* text) const { std::free(text); }
    };

    std::unique_ptr<char, Free> mText;
    std::size_t mSize;
    SizeRule mRule;
    bool mIsFirst = true;
};
