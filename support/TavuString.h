/// @file
/// The tool's string type and argument array.
#pragma once

#include <cstdarg>
#include <string>
#include <vector>

/// Compares like `strcmp`, with the letters A to Z folded to lower case; all other bytes, including those above
/// 127, are compared as they are. Returns 0 for equal strings. Used for all command words.
int CompareNoCase(const char* left, const char* right);

/// The standard string with a few extra operations.
template <typename Char> class TavuStringT;

template <> class TavuStringT<char> : public std::string {
public:
    /// Longest result of `Format`, in characters.
    static constexpr std::size_t MAX_FORMATTED = 1024;

    using std::string::string;
    TavuStringT() = default;
    TavuStringT(const std::string& text) : std::string(text) {}
    TavuStringT(std::string&& text) noexcept : std::string(std::move(text)) {}

    TavuStringT& operator=(const char* text);

    /// Replaces the content; silently truncates to `MAX_FORMATTED` characters.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void FormatV(const char* format, va_list arguments) __attribute__((format(printf, 2, 0)));

    void Append(const char* text) { append(text); }

    /// Maps A to Z to lower case; leaves other bytes alone.
    void MakeLower();

    /// Same as `::CompareNoCase` of this string and `other`.
    int CompareNoCase(const char* other) const { return ::CompareNoCase(c_str(), other); }

    /// Returns the next token at or after `position`, and moves `position` past it and its delimiter. Skips leading
    /// and repeated delimiters; returns an empty string when no token is left.
    TavuStringT Tokenize(const char* delimiters, int& position) const;
};

using TavuString = TavuStringT<char>;
using TavuStringArray = std::vector<TavuString>;
