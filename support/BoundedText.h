/// @file
/// Bounded C string functions.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

/// Results of the bounded copies, in the numbering of the safe C library.
enum BoundedCopyResult : int {
    COPY_DONE = 0,
    COPY_INVALID = 22,  ///< null pointer, size 0, or unterminated destination
    COPY_TOO_LONG = 34, ///< the appended text does not fit
};

/// Appends `text` to `dest`, an array of `size` bytes. Returns `COPY_TOO_LONG`, with `dest` unchanged, if it does
/// not fit, and `COPY_INVALID` if an argument is null, `size` is 0 or `dest` has no terminator within `size` bytes.
int strcat_s(char* dest, unsigned long size, const char* text);

/// For `strncpy_s`: copy as much as fits.
inline constexpr unsigned long COPY_WHAT_FITS = ~0UL;

/// Copies at most `count` characters of `source` and a terminator. Returns `COPY_INVALID` for a null argument or a
/// size of 0 and, with `dest` set to the empty string, if the copy does not fit.
int strncpy_s(char* dest, unsigned long size, const char* source, unsigned long count);

/// The text in a record's array. It has no terminator if it fills the array.
template <std::size_t N> std::string_view BoundedText(const char (&array)[N]) {
    return {array, strnlen(array, N)};
}
template <std::size_t N> std::string_view BoundedText(const unsigned char (&array)[N]) {
    const auto* const text = reinterpret_cast<const char*>(array);
    return {text, strnlen(text, N)};
}
