#include "Utf8.h"

#include <gtest/gtest.h>

using namespace orfc;

namespace {

const std::string BAD(REPLACEMENT);

TEST(Utf8Test, LengthsOfCharacters) {
    EXPECT_EQ(CharacterLength(""), 0u);
    EXPECT_EQ(CharacterLength("ab"), 1u);
    EXPECT_EQ(CharacterLength(std::string_view("\0", 1)), 1u);
    // The first and last character of each length: U+0080, U+07FF, U+0800, U+FFFF, U+10000, U+10FFFF.
    EXPECT_EQ(CharacterLength("\xC2\x80"), 2u);
    EXPECT_EQ(CharacterLength("\xDF\xBF"), 2u);
    EXPECT_EQ(CharacterLength("\xE0\xA0\x80"), 3u);
    EXPECT_EQ(CharacterLength("\xEF\xBF\xBF"), 3u);
    EXPECT_EQ(CharacterLength("\xF0\x90\x80\x80"), 4u);
    EXPECT_EQ(CharacterLength("\xF4\x8F\xBF\xBF"), 4u);
}

TEST(Utf8Test, WhatIsNoUtf8) {
    for (const char* text : {"\x80", "\xBF", "\xC0\xAF", "\xC1\xBF", "\xE0\x80\xAF", "\xE0\x9F\xBF", "\xED\xA0\x80",
                             "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "\xC2",
                             "\xC2!", "\xE2\x82", "\xE2\x82!", "\xE2!\x82", "\xF0\x9F\x98", "\xF0\x9F\x98!"}) {
        EXPECT_EQ(CharacterLength(text), 0u) << text;
        EXPECT_FALSE(IsUtf8("a" + std::string(text)));
    }
    EXPECT_TRUE(IsUtf8("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"));
}

TEST(Utf8Test, PrintableTexts) {
    EXPECT_EQ(PrintableText("plain \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80"),
              "plain \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80");
    EXPECT_EQ(PrintableText("\033[31m\n\r\t\x7F"), BAD + "[31m" + BAD + BAD + BAD + BAD);
    EXPECT_EQ(PrintableText(std::string_view("a\0b", 3)), "a" + BAD + "b");
    EXPECT_EQ(PrintableText("a\xFF\xFEz\xC2"), "a" + BAD + BAD + "z" + BAD);
    // Controls beyond ASCII: U+0080, U+009B (which begins a sequence too), U+009F; U+00A0 is none.
    EXPECT_EQ(PrintableText("\xC2\x80\xC2\x9B\xC2\x9F\xC2\xA0"), BAD + BAD + BAD + "\xC2\xA0");
}

TEST(Utf8Test, CharactersThatTurnTheLineOrArentAny) {
    const char* const bad[] = {
        "\xD8\x9C",                                                                     // U+061C
        "\xE2\x80\x8E", "\xE2\x80\x8F",                                                 // U+200E, U+200F
        "\xE2\x80\xA8", "\xE2\x80\xA9", "\xE2\x80\xAA", "\xE2\x80\xAB", "\xE2\x80\xAC", // U+2028 to
        "\xE2\x80\xAD", "\xE2\x80\xAE",                                                 // U+202E
        "\xE2\x81\xA6", "\xE2\x81\xA7", "\xE2\x81\xA8", "\xE2\x81\xA9",                 // U+2066 to U+2069
        "\xEF\xBF\xBE", "\xEF\xBF\xBF",                                                 // U+FFFE, U+FFFF
    };
    for (const char* character : bad) {
        EXPECT_EQ(PrintableText(character), BAD) << character;
    }
    // Their neighbours: U+061B, U+061D, U+200D, U+2010, U+2027, U+202F, U+2065, U+206A, U+FFFD, U+10000.
    for (const char* character : {"\xD8\x9B", "\xD8\x9D", "\xE2\x80\x8D", "\xE2\x80\x90", "\xE2\x80\xA7",
                                  "\xE2\x80\xAF", "\xE2\x81\xA5", "\xE2\x81\xAA", "\xEF\xBF\xBD", "\xF0\x90\x80\x80"}) {
        EXPECT_EQ(PrintableText(character), character);
    }
}

TEST(Utf8Test, LinesOfMessagesEnd) {
    EXPECT_EQ(LineText("host2/speed:\nInput/output error"), "host2/speed:" + BAD + "Input/output error");
    EXPECT_EQ(LineText(std::string(2000, 'x')), std::string(2000, 'x'));
    EXPECT_EQ(LineText(std::string(65536, 'x')), std::string(2000, 'x') + "...");
    EXPECT_EQ(LineText(std::string(1999, 'x') + "\xC3\xA9"), std::string(1999, 'x') + BAD + "..."); // cut within it
}

TEST(Utf8Test, Cells) {
    EXPECT_EQ(CellsOf(""), 0u);
    EXPECT_EQ(CellsOf("abc"), 3u);
    EXPECT_EQ(CellsOf("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), 3u);
}

} // namespace
