#include "XmlText.h"

#include <gtest/gtest.h>

namespace {

const std::string REPLACEMENT = "\xEF\xBF\xBD"; // U+FFFD: 1111 1111 1111 1101 as 1110'1111 10'111111 10'111101

std::string Escaped(std::string_view text) {
    TavuString document;
    AppendXmlText(document, text);
    return document;
}

std::string Replacements(std::size_t count) {
    std::string text;
    while (count-- > 0) {
        text += REPLACEMENT;
    }
    return text;
}

std::string Bytes(std::initializer_list<unsigned> bytes) {
    return {bytes.begin(), bytes.end()};
}

/// A value in the bit pattern of UTF-8, in 2 to 6 bytes, whether or not that is its form.
std::string Pattern(unsigned long value, std::size_t size) {
    std::string text(size, '\0');
    for (std::size_t at = size; --at > 0; value >>= 6) {
        text[at] = static_cast<char>(0x80 | (value & 0x3F));
    }
    // As many ones as bytes, then a zero.
    text[0] = static_cast<char>((0xFF00 >> size & 0xFF) | value);
    return text;
}

/// A character above U+007F.
std::string Character(unsigned long value) {
    return Pattern(value, value < 0x800 ? 2 : value < 0x10000 ? 3 : 4);
}

/// A byte by itself: before the end, before a letter, and after one.
TEST(XmlTextTest, TakesEveryByte) {
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        const std::string text = Bytes({byte});
        std::string expected = text;
        if (byte >= 0x80 || (byte < 0x20 && byte != 0x09 && byte != 0x0A && byte != 0x0D)) {
            expected = REPLACEMENT;
        } else if (byte == 0x0D) {
            expected = "&#13;";
        } else if (byte == '&') {
            expected = "&amp;";
        } else if (byte == '<') {
            expected = "&lt;";
        } else if (byte == '>') {
            expected = "&gt;";
        } else if (byte == '"') {
            expected = "&quot;";
        }
        EXPECT_EQ(Escaped(text), expected) << byte;
        EXPECT_EQ(Escaped(text + "a"), expected + "a") << byte;
        EXPECT_EQ(Escaped("a" + text), "a" + expected) << byte;
    }
}

/// Characters of XML 1.0: #x9 | #xA | #xD | [#x20-#xD7FF] | [#xE000-#xFFFD] | [#x10000-#x10FFFF]. The bytes of a
/// surrogate are replaced one by one. Above U+FFFF every 41st is tried: the last one is 10000h + 41 * 25575.
TEST(XmlTextTest, KeepsEveryCharacterOfXml) {
    for (unsigned long value = 0x80; value <= 0x10FFFF; value += value < 0x10000 ? 1 : 41) {
        const std::string text = Character(value);
        const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
        const bool isXml = !isSurrogate && value != 0xFFFE && value != 0xFFFF;
        const std::string expected = isXml ? text : Replacements(isSurrogate ? 3 : 1);
        if (Escaped(text + text + "a") != expected + expected + "a") {
            ADD_FAILURE() << std::hex << value;
        }
    }
}

TEST(XmlTextTest, ReplacesEveryByteOfAnOverlongForm) {
    for (std::size_t size = 2; size <= 6; ++size) {
        // Values that fit in fewer bytes: 7 bits in one; 11, 16, 21 and 26 in two to five.
        const unsigned long limit = size == 2 ? 1UL << 7 : 1UL << (5 * size - 4);
        for (const unsigned long value : {0UL, 1UL, limit / 2 - 1, limit / 2, limit - 1}) {
            EXPECT_EQ(Escaped(Pattern(value, size) + "<"), Replacements(size) + "&lt;") << size << " " << value;
        }
    }
}

TEST(XmlTextTest, ReplacesEveryByteAboveTheLastCharacter) {
    for (const unsigned long value : {0x110000UL, 0x13FFFFUL, 0x140000UL, 0x1FFFFFUL}) {
        EXPECT_EQ(Escaped(Pattern(value, 4) + "a"), Replacements(4) + "a") << value;
    }
    for (const unsigned long value : {0x200000UL, 0x3FFFFFFUL}) {
        EXPECT_EQ(Escaped(Pattern(value, 5) + "a"), Replacements(5) + "a") << value;
    }
    for (const unsigned long value : {0x4000000UL, 0x7FFFFFFFUL}) {
        EXPECT_EQ(Escaped(Pattern(value, 6) + "a"), Replacements(6) + "a") << value;
    }
}

/// The ends of every range of first and second bytes.
constexpr unsigned long ENDS[] = {0x80,   0x7FF,  0x800,   0xFFF,   0x1000,  0xCFFF,  0xD000,   0xD7FF,
                                  0xE000, 0xFFFD, 0x10000, 0x3FFFF, 0x40000, 0xFFFFF, 0x100000, 0x10FFFF};

TEST(XmlTextTest, ReplacesASequenceThatIsCutShortOnce) {
    const std::pair<std::string, std::string> followers[] = {
        {"", ""},
        {"a", "a"},
        {"&", "&amp;"},
        {Bytes({0x00}), REPLACEMENT},
        {Bytes({0xFF}), REPLACEMENT},
        {Character(0xE9), Character(0xE9)},
        {Character(0x1F600), Character(0x1F600)},
        {Bytes({0xC0}), REPLACEMENT},
    };
    for (const unsigned long value : ENDS) {
        const std::string text = Character(value);
        for (std::size_t size = 1; size < text.size(); ++size) {
            for (const auto& [follower, expected] : followers) {
                EXPECT_EQ(Escaped(text.substr(0, size) + follower), REPLACEMENT + expected)
                    << std::hex << value << ", " << size << " bytes, then \"" << follower << '"';
            }
        }
    }
}

TEST(XmlTextTest, ReplacesEveryContinuationThatContinuesNothing) {
    for (const unsigned long value : ENDS) {
        for (const unsigned byte : {0x80U, 0xBFU}) {
            EXPECT_EQ(Escaped(Character(value) + Bytes({byte, byte})), Character(value) + Replacements(2)) << value;
        }
    }
}

/// A second byte outside the range of its first one doesn't continue it: each counts.
TEST(XmlTextTest, ReplacesBothWhenTheSecondByteIsOutOfRange) {
    const std::initializer_list<unsigned> pairs[] = {{0xE0, 0x80}, {0xE0, 0x9F}, {0xED, 0xA0}, {0xED, 0xBF},
                                                     {0xF0, 0x80}, {0xF0, 0x8F}, {0xF4, 0x90}, {0xF4, 0xBF}};
    for (const auto& pair : pairs) {
        EXPECT_EQ(Escaped(Bytes(pair)), Replacements(2));
        EXPECT_EQ(Escaped(Bytes(pair) + "a"), Replacements(2) + "a");
    }
}

TEST(XmlTextTest, EscapesWhatLooksEscaped) {
    EXPECT_EQ(Escaped("&lt;&#13;&amp;"), "&amp;lt;&amp;#13;&amp;amp;");
    EXPECT_EQ(Escaped("]]>"), "]]&gt;");
    EXPECT_EQ(Escaped("<![CDATA[x]]><!--%%\t\n  \r\n'"), "&lt;![CDATA[x]]&gt;&lt;!--%%\t\n  &#13;\n'");
}

TEST(XmlTextTest, Appends) {
    TavuString document = "<string>";
    AppendXmlText(document, "");
    AppendXmlText(document, "a&");
    AppendXmlText(document, "\xE2\x82"); // the rest of the euro sign comes too late
    AppendXmlText(document, "\xAC");
    EXPECT_EQ(document, "<string>a&amp;" + Replacements(2));
}

} // namespace
