#include "XmlText.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char REPLACEMENT[] = "\xEF\xBF\xBD"; // U+FFFD

/// Multi-byte sequences by their first byte: their size and the range of the second byte, which excludes overlong
/// forms, surrogates and values above U+10FFFF. Later bytes are 80 to BF.
struct SequenceRow {
    unsigned char first, last;
    std::size_t size;
    unsigned char secondFirst, secondLast;
};
constexpr SequenceRow SEQUENCES[] = {
    {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF}, {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F},
    {0xEE, 0xEF, 3, 0x80, 0xBF}, {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

/// What a text begins with.
struct Piece {
    std::size_t size;
    bool isXml; ///< a character that XML can hold; otherwise one replacement stands for it
};

Piece FirstPiece(std::string_view text) {
    const auto isIn = [text](std::size_t at, unsigned char first, unsigned char last) {
        const auto byte = static_cast<unsigned char>(text[at]);
        return byte >= first && byte <= last;
    };
    if (isIn(0, 0x00, 0x7F)) {
        return {1, text[0] >= ' ' || text[0] == '\t' || text[0] == '\n' || text[0] == '\r'};
    }
    const auto* const row = std::find_if(std::begin(SEQUENCES), std::end(SEQUENCES), [&](const SequenceRow& sequence) {
        return isIn(0, sequence.first, sequence.last);
    });
    if (row == std::end(SEQUENCES) || text.size() < 2 || !isIn(1, row->secondFirst, row->secondLast)) {
        return {1, false};
    }
    std::size_t size = 2;
    while (size < std::min(row->size, text.size()) && isIn(size, 0x80, 0xBF)) {
        ++size;
    }
    return {size, size == row->size && !text.starts_with("\xEF\xBF\xBE") && !text.starts_with("\xEF\xBF\xBF")};
}

} // namespace

void AppendXmlText(TavuString& document, std::string_view text) {
    while (!text.empty()) {
        const Piece piece = FirstPiece(text);
        const std::string_view character = text.substr(0, piece.size);
        text.remove_prefix(piece.size);
        if (!piece.isXml) {
            document += REPLACEMENT;
            continue;
        }
        switch (character[0]) {
        case '&':
            document += "&amp;";
            break;
        case '<':
            document += "&lt;";
            break;
        case '>': // forbidden after "]]"
            document += "&gt;";
            break;
        case '"':
            document += "&quot;";
            break;
        case '\r': // verbatim, a parser would read it as a line feed
            document += "&#13;";
            break;
        default:
            document += character;
            break;
        }
    }
}
