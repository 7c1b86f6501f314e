#include "TavuString.h"

#include <gtest/gtest.h>

namespace {

TEST(TavuStringFormatTest, ReplacesTheContent) {
    TavuString text = "before";
    text.Format("%s-%d", "after", 7);
    EXPECT_EQ(text, "after-7");
    text.Format("%s", "");
    EXPECT_EQ(text, "");
}

TEST(TavuStringFormatTest, CutsAt1024Characters) {
    TavuString text;
    for (const std::size_t length : {1023u, 1024u, 1025u, 2000u}) {
        const std::string value = std::string(length - 1, 'x') + "y";
        text.Format("%s", value.c_str());
        EXPECT_EQ(text, value.substr(0, 1024)) << length;
    }
}

TEST(TavuStringFormatTest, ReadsItsOwnContentAsArgument) {
    TavuString text = "own";
    text.Format("[%s]", text.c_str());
    EXPECT_EQ(text, "[own]");
}

TEST(TavuStringTest, AppendsAndAssigns) {
    TavuString text;
    text = "ab";
    text.Append("");
    text.Append("cd");
    EXPECT_EQ(text, "abcd");
    text = "";
    EXPECT_TRUE(text.empty());
}

TEST(TavuStringTest, MakesOnlyLettersLower) {
    // "@" and "[" are adjacent to "A" and "Z"; 0xC4 is a letter in some encodings.
    TavuString text = "@AZ[`az{09\xC4";
    text.MakeLower();
    EXPECT_EQ(text, "@az[`az{09\xC4");
}

TEST(CompareNoCaseTest, FoldsLetters) {
    EXPECT_EQ(TavuString("Adapter").CompareNoCase("ADAPTER"), 0);
    EXPECT_EQ(CompareNoCase("abcxyz", "ABCXYZ"), 0);
    EXPECT_EQ(CompareNoCase("", ""), 0);
    EXPECT_NE(CompareNoCase("@", "`"), 0); // 32 apart, as a letter's two cases are
    EXPECT_NE(CompareNoCase("[", "{"), 0);
}

TEST(CompareNoCaseTest, OrdersAsLowerCase) {
    EXPECT_LT(CompareNoCase("A", "b"), 0);
    EXPECT_GT(CompareNoCase("B", "a"), 0);
    EXPECT_LT(CompareNoCase("ab", "abc"), 0);
    EXPECT_GT(CompareNoCase("abc", "AB"), 0);
    EXPECT_LT(CompareNoCase("_", "A"), 0); // 0x5F is below "a", 0x61, and above "A", 0x41
}

TEST(CompareNoCaseTest, LeavesBytesAbove127) {
    EXPECT_EQ(CompareNoCase("\xC4\xE4", "\xC4\xE4"), 0);
    EXPECT_NE(CompareNoCase("\xC4", "\xE4"), 0);
    EXPECT_GT(CompareNoCase("\x80", "z"), 0); // bytes compare without sign
    EXPECT_LT(CompareNoCase("a", "\xFF"), 0);
}

struct Tokens {
    std::vector<std::string> tokens;
    std::vector<int> positions;
};

/// All tokens from `position` on, with the position after each.
Tokens Split(const TavuString& text, const char* delimiters, int position = 0) {
    Tokens result;
    for (TavuString token = text.Tokenize(delimiters, position); !token.empty();
         token = text.Tokenize(delimiters, position)) {
        result.tokens.push_back(token);
        result.positions.push_back(position);
    }
    return result;
}

using Strings = std::vector<std::string>;
using Ints = std::vector<int>;

TEST(TokenizeTest, SplitsWithPositionsBehindTheDelimiter) {
    // "ab" is at 0: 0 + 2 + 1. "c" is at 3: 3 + 1 + 1. "def" is at 5: 5 + 3 + 1.
    const Tokens split = Split("ab_c_def", "_");
    EXPECT_EQ(split.tokens, (Strings{"ab", "c", "def"}));
    EXPECT_EQ(split.positions, (Ints{3, 5, 9}));
}

TEST(TokenizeTest, SkipsLeadingAndDoubledDelimiters) {
    EXPECT_EQ(Split("A__B", "_").tokens, (Strings{"A", "B"}));
    // "A" is at 2: 2 + 1 + 1. "B" is at 6: 6 + 1 + 1.
    const Tokens split = Split("__A___B__", "_");
    EXPECT_EQ(split.tokens, (Strings{"A", "B"}));
    EXPECT_EQ(split.positions, (Ints{4, 8}));
}

TEST(TokenizeTest, TakesEveryCharacterOfTheSetForADelimiter) {
    EXPECT_EQ(Split("a-b c", " -").tokens, (Strings{"a", "b", "c"}));
    EXPECT_EQ(Split("a-b c", "").tokens, (Strings{"a-b c"}));
}

TEST(TokenizeTest, BeginsAtThePosition) {
    EXPECT_EQ(Split("abc_def", "_", 2).tokens, (Strings{"c", "def"}));
    EXPECT_EQ(Split("abc_def", "_", 3).tokens, (Strings{"def"}));
}

TEST(TokenizeTest, FindsTheTokenBehindThePositionNotAnEarlierLike) {
    // The second "a" is at 2: 2 + 1 + 1.
    EXPECT_EQ(Split("a_a", "_").positions, (Ints{2, 4}));
}

TEST(TokenizeTest, GivesNothingAtOrPastTheEnd) {
    EXPECT_TRUE(Split("", "_").tokens.empty());
    EXPECT_TRUE(Split("___", "_").tokens.empty());
    EXPECT_TRUE(Split("ab", "_", 2).tokens.empty());
    EXPECT_TRUE(Split("ab", "_", 3).tokens.empty());
    EXPECT_TRUE(Split("ab", "_", 1000).tokens.empty());
    int position = 3;
    const TavuString text = "ab";
    text.Tokenize("_", position);
    EXPECT_EQ(text.Tokenize("_", position), "");
}

} // namespace
