/// @file
/// C strings that never run past their arrays.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

/// Results of the bounded copies, in the numbering of the safe C library.
enum BoundedCopyResult : int {
    COPY_DONE = 0,
    COPY_INVALID = 22,  ///< null pointer, no room at all, or a target without terminator
    COPY_TOO_LONG = 34, ///< the appended text does not fit
};

/// Appends `text` to `dest`, an array of `size` bytes. A text that does not fit whole leaves `dest` as it
/// was and gives `COPY_TOO_LONG`. `COPY_INVALID` when an argument is null, `size` is 0 or `dest` has no
/// terminator within `size` bytes.
int strcat_s(char* dest, unsigned long size, const char* text);

/// For `strncpy_s`: copy as much as fits.
inline constexpr unsigned long COPY_WHAT_FITS = ~0UL;

/// Copies at most `count` characters of `source` and terminates. `COPY_INVALID` for a null or a zero
/// size and, with `dest` cleared to an empty text, when the copy does not fit.
int strncpy_s(char* dest, unsigned long size, const char* source, unsigned long count);

/// The text in a record's array, which has no terminator when it fills the array.
template <std::size_t N> std::string_view BoundedText(const char (&array)[N]) {
    return {array, strnlen(array, N)};
}
template <std::size_t N> std::string_view BoundedText(const unsigned char (&array)[N]) {
    const auto* const text = reinterpret_cast<const char*>(array);
    return {text, strnlen(text, N)};
}
