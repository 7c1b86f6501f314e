#include "BoundedText.h"

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr int DONE = 0;
constexpr int INVALID = 22;
constexpr int TOO_LONG = 34;

TEST(StrcatSTest, AppendsUpToTheLastByte) {
    char text[6] = "ab";
    EXPECT_EQ(strcat_s(text, sizeof text, ""), DONE);
    EXPECT_STREQ(text, "ab");
    // 2 characters, 3 more and a terminator: 6 bytes.
    EXPECT_EQ(strcat_s(text, sizeof text, "cde"), DONE);
    EXPECT_STREQ(text, "abcde");
    EXPECT_EQ(strcat_s(text, sizeof text, ""), DONE);
}

TEST(StrcatSTest, LeavesTheTargetWhenOneByteIsMissing) {
    char text[6] = "ab";
    text[3] = 'm'; // after the terminator: nothing may be written there
    EXPECT_EQ(strcat_s(text, sizeof text, "cdef"), TOO_LONG);
    EXPECT_STREQ(text, "ab");
    EXPECT_EQ(text[3], 'm');
    EXPECT_EQ(strcat_s(text, sizeof text, "c"), DONE);
    EXPECT_STREQ(text, "abc");
}

TEST(StrcatSTest, LeavesAFullTarget) {
    char text[4] = "abc";
    EXPECT_EQ(strcat_s(text, sizeof text, "d"), TOO_LONG);
    EXPECT_STREQ(text, "abc");
    char smallest[1] = "";
    EXPECT_EQ(strcat_s(smallest, 1, ""), DONE);
    EXPECT_EQ(strcat_s(smallest, 1, "a"), TOO_LONG);
    EXPECT_STREQ(smallest, "");
}

TEST(StrcatSTest, MeasuresByTheSizeItIsGiven) {
    char text[16] = "abc";
    EXPECT_EQ(strcat_s(text, 5, "de"), TOO_LONG);
    EXPECT_EQ(strcat_s(text, 6, "de"), DONE);
    EXPECT_STREQ(text, "abcde");
}

TEST(StrcatSTest, RefusesNullsZeroSizeAndAMissingTerminator) {
    char text[4] = {'a', 'b', 'c', 'd'};
    EXPECT_EQ(strcat_s(nullptr, 4, "x"), INVALID);
    EXPECT_EQ(strcat_s(text, 4, nullptr), INVALID);
    EXPECT_EQ(strcat_s(text, 0, "x"), INVALID);
    EXPECT_EQ(strcat_s(text, 4, "x"), INVALID);
    EXPECT_EQ(strcat_s(text, 4, ""), INVALID);
    EXPECT_EQ(std::string(text, 4), "abcd");
    char terminated[4] = "abc";
    EXPECT_EQ(strcat_s(terminated, 3, ""), INVALID); // the terminator follows the third byte
}

TEST(StrncpySTest, CopiesUpToTheLastByte) {
    char text[4] = "zzz";
    EXPECT_EQ(strncpy_s(text, sizeof text, "abc", 3), DONE);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(strncpy_s(text, sizeof text, "ab", 100), DONE);
    EXPECT_STREQ(text, "ab");
    EXPECT_EQ(strncpy_s(text, sizeof text, "", 1), DONE);
    EXPECT_STREQ(text, "");
}

TEST(StrncpySTest, CopiesAtMostCount) {
    char text[8];
    EXPECT_EQ(strncpy_s(text, sizeof text, "abcdef", 3), DONE);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(strncpy_s(text, sizeof text, "abcdef", 0), DONE);
    EXPECT_STREQ(text, "");
    const char unterminated[3] = {'x', 'y', 'z'};
    EXPECT_EQ(strncpy_s(text, sizeof text, unterminated, sizeof unterminated), DONE);
    EXPECT_STREQ(text, "xyz");
    EXPECT_EQ(strncpy_s(text, 4, "abcdef", 3), DONE); // 3 characters and a terminator: 4 bytes
    EXPECT_STREQ(text, "abc");
}

TEST(StrncpySTest, ClearsTheTargetWhenTheCopyDoesNotFit) {
    char text[4] = "zzz";
    EXPECT_EQ(strncpy_s(text, sizeof text, "abcd", 4), INVALID);
    EXPECT_STREQ(text, "");
    char smallest[1] = {'z'};
    EXPECT_EQ(strncpy_s(smallest, 1, "a", 1), INVALID);
    EXPECT_STREQ(smallest, "");
}

TEST(StrncpySTest, CopiesWhatFits) {
    char text[4] = "zzz";
    EXPECT_EQ(strncpy_s(text, sizeof text, "abcdef", ~0UL), DONE);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(strncpy_s(text, sizeof text, "ab", COPY_WHAT_FITS), DONE);
    EXPECT_STREQ(text, "ab");
    char smallest[1] = {'z'};
    EXPECT_EQ(strncpy_s(smallest, 1, "abc", COPY_WHAT_FITS), DONE);
    EXPECT_STREQ(smallest, "");
}

TEST(StrncpySTest, RefusesNullsAndZeroSize) {
    char text[4] = "abc";
    EXPECT_EQ(strncpy_s(nullptr, 4, "x", 1), INVALID);
    EXPECT_EQ(strncpy_s(text, 0, "x", 1), INVALID);
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(strncpy_s(text, 4, nullptr, 1), INVALID);
}

TEST(BoundedTextTest, EndsAtTheTerminatorOrTheArray) {
    const char inside[4] = {'a', 'b', '\0', 'x'};
    const char full[4] = {'a', 'b', 'c', 'd'};
    const char empty[4] = {};
    EXPECT_EQ(BoundedText(inside), "ab");
    EXPECT_EQ(BoundedText(full), "abcd");
    EXPECT_EQ(BoundedText(empty), "");
}

} // namespace
