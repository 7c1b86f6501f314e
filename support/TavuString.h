/// @file
/// The string type of the tool and the array in which arguments travel.
#pragma once

#include <cstdarg>
#include <string>
#include <vector>

/// Compares as `strcmp` does, with the letters A to Z folded to lower case and every other byte, those
/// above 127 included, as it stands. 0 means equal. This is the comparison of all command words.
int CompareNoCase(const char* left, const char* right);

/// The standard string with the operations that commands use all the time.
template <typename Char> class TavuStringT;

template <> class TavuStringT<char> : public std::string {
public:
    /// Longest text that `Format` makes, in characters.
    static constexpr std::size_t MAX_FORMATTED = 1024;

    using std::string::string;
    TavuStringT() = default;
    TavuStringT(const std::string& text) : std::string(text) {}
    TavuStringT(std::string&& text) noexcept : std::string(std::move(text)) {}

    TavuStringT& operator=(const char* text);

    /// Replaces the content; a text above `MAX_FORMATTED` characters is cut there without a report.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void FormatV(const char* format, va_list arguments) __attribute__((format(printf, 2, 0)));

    void Append(const char* text) { append(text); }

    /// Maps A to Z to lower case; other bytes stay.
    void MakeLower();

    /// `::CompareNoCase` of this text and `other`.
    int CompareNoCase(const char* other) const { return ::CompareNoCase(c_str(), other); }

    /// Gives the next token at or behind `position` and moves `position` behind it and its delimiter.
    /// Leading and doubled delimiters are skipped; an empty result means that no token is left.
    TavuStringT Tokenize(const char* delimiters, int& position) const;
};

using TavuString = TavuStringT<char>;
using TavuStringArray = std::vector<TavuString>;
