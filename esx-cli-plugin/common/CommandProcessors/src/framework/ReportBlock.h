/// @file
/// The text of a data-block report.
#pragma once

#include "TavuString.h"

#include <cstdlib>
#include <memory>
#include <string_view>

/// A report of many lines in one bounded buffer. The first line is not indented, because in text form it follows
/// the label "Data"; all others are indented by six blanks. A line that the size rule rejects is silently dropped,
/// and a later, shorter one can still fit. Each line is traced at level 1, even if dropped, with the names of the
/// traced function, and is truncated to `TavuString::MAX_FORMATTED` characters.
class ReportBlock {
public:
    /// The limit that the whole text must stay below after each append.
    enum class SizeRule {
        FULL,       ///< the buffer size: a report can fill the buffer
        SPACE_LEFT, ///< the space left: a report fills about half. Required: parsers depend on it
    };

    ReportBlock(std::size_t size, SizeRule rule);

    /// False if the allocation failed; nothing else may be called then.
    bool IsAllocated() const { return mText != nullptr; }

    /// Adds "LABEL: VALUE" and `lineEnd`, which differs for values that contain their own.
    void Line(const char* label, std::string_view value, const char* lineEnd = "\n");
    /// Same with a value formatted as by `printf`.
    void LineF(const char* label, const char* format, ...) __attribute__((format(printf, 3, 4)));
    /// Same as `Line` without truncation, for values assembled piece by piece.
    void UncutLine(const char* label, std::string_view value);
    /// Adds a line without a label.
    void Heading(const char* text);
    /// Adds a text verbatim as a line: no indentation, no line end.
    void BareLine(const char* text);
    /// Adds a text verbatim: part of a line, or several lines. Not traced.
    void Raw(const char* text);
    /// Same, formatted as by `printf` and truncated to 255 characters.
    void RawF(const char* format, ...) __attribute__((format(printf, 2, 3)));

    /// Null if the allocation failed.
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
