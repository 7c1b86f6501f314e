#include "Utf8.h"

#include <algorithm>
#include <cstdint>

namespace orfc {

namespace {

/// Leading bytes of characters of more than one byte (Unicode, table 3-7), and the range of the byte after them.
struct Lead {
    std::uint8_t first, last;
    std::uint8_t low, high;
    std::size_t length;
};
constexpr Lead LEADS[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3}, {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

/// Whether a whole character may not reach a reader: controls (C0, delete, C1), those that change the direction of what
/// follows them, and U+FFFE and U+FFFF, which XML can't hold.
bool IsControl(std::string_view character) {
    constexpr std::string_view ARABIC_LETTER_MARK = "\xD8\x9C";
    constexpr std::string_view LEFT_TO_RIGHT_MARK = "\xE2\x80\x8E", RIGHT_TO_LEFT_MARK = "\xE2\x80\x8F";
    constexpr std::string_view FIRST_SEPARATOR = "\xE2\x80\xA8", LAST_EMBEDDING = "\xE2\x80\xAE";
    constexpr std::string_view FIRST_ISOLATE = "\xE2\x81\xA6", LAST_ISOLATE = "\xE2\x81\xA9";
    constexpr std::string_view FIRST_NONCHARACTER = "\xEF\xBF\xBE"; // two, at the end of the plane
    const auto first = static_cast<std::uint8_t>(character[0]);
    if (character.size() == 1) {
        return first < 0x20 || first == 0x7F;
    }
    if (character.size() == 2) {
        return (first == 0xC2 && static_cast<std::uint8_t>(character[1]) < 0xA0) || character == ARABIC_LETTER_MARK;
    }
    return character == LEFT_TO_RIGHT_MARK || character == RIGHT_TO_LEFT_MARK ||
           (character >= FIRST_SEPARATOR && character <= LAST_EMBEDDING) ||
           (character >= FIRST_ISOLATE && character <= LAST_ISOLATE) ||
           (character.size() == 3 && character >= FIRST_NONCHARACTER);
}

} // namespace

std::size_t CharacterLength(std::string_view text) {
    if (text.empty()) {
        return 0;
    }
    const auto byte = [text](std::size_t at) { return static_cast<std::uint8_t>(text[at]); };
    if (byte(0) < 0x80) {
        return 1;
    }
    for (const Lead& lead : LEADS) {
        if (byte(0) < lead.first || byte(0) > lead.last) {
            continue;
        }
        if (text.size() < lead.length || byte(1) < lead.low || byte(1) > lead.high) {
            return 0;
        }
        const std::string_view rest = text.substr(2, lead.length - 2);
        const bool isWhole =
            std::all_of(rest.begin(), rest.end(), [](char c) { return (static_cast<std::uint8_t>(c) & 0xC0) == 0x80; });
        return isWhole ? lead.length : 0;
    }
    return 0;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

std::string PrintableText(std::string_view text) {
    std::string printable;
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
        printable += length == 0 || IsControl(character) ? REPLACEMENT : character;
        text.remove_prefix(character.size());
    }
    return printable;
}

std::string LineText(std::string_view text) {
    constexpr std::size_t LONGEST = 2000;
    constexpr std::string_view MORE = "...";
    const std::size_t end = std::min(text.size(), LONGEST);
    return PrintableText(text.substr(0, end)) + std::string(end < text.size() ? MORE : "");
}

std::size_t CellsOf(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<std::uint8_t>(c) & 0xC0) != 0x80; }));
}

} // namespace orfc
