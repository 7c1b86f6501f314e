/// @file
/// Texts of modules, targets and fabrics, which may hold any bytes.
#pragma once

#include <string>
#include <string_view>

namespace orfc {

inline constexpr std::string_view REPLACEMENT = "\xEF\xBF\xBD"; ///< U+FFFD

/// The length of the character of UTF-8 that begins `text`; 0 if none does. Surrogates and overlong forms are none.
std::size_t CharacterLength(std::string_view text);
bool IsUtf8(std::string_view text);

/// For people: bytes that are no UTF-8, control characters, characters that change the direction of writing and
/// noncharacters are U+FFFD each.
std::string PrintableText(std::string_view text);

/// The same as one line of a message, which ends at 2,000 bytes.
std::string LineText(std::string_view text);

/// Cells that a printable text takes on a terminal: one for each character.
std::size_t CellsOf(std::string_view text);

} // namespace orfc
