#include "ReportTexts.h"
#include "ResultCodes.h"

#include <gtest/gtest.h>

namespace {

TEST(ReportTextsTest, WritesNamesAndPortIdsInLowerCase) {
    const VX_UINT8 name[8] = {0x50, 0x00, 0x09, 0x7A, 0xBC, 0xDE, 0xF0, 0xFF};
    EXPECT_EQ(WwnText(name), "50:00:09:7a:bc:de:f0:ff");
    const VX_UINT8 id[3] = {0x01, 0xAB, 0xEF};
    EXPECT_EQ(PortIdText(id), "01:ab:ef");
}

TEST(ReportTextsTest, WritesVersionsInTwoDigitsBehindTheMajor) {
    EXPECT_EQ(VersionText(0, 0, 0), "0.00.00");
    EXPECT_EQ(VersionText(9, 8, 7), "9.08.07");
    EXPECT_EQ(VersionText(12, 34, 99), "12.34.99");
    EXPECT_EQ(VersionText(255, 255, 100), "255.255.100");
    const VX_UINT8 version[3] = {1, 2, 3};
    EXPECT_EQ(VersionText(version), "1.02.03");
}

TEST(ReportTextsTest, WritesAnImageOfZerosAsAbsent) {
    const VX_UINT8 absent[3] = {0, 0, 0};
    EXPECT_EQ(ImageVersionText(absent), "NA");
    for (int at = 0; at < 3; ++at) {
        VX_UINT8 version[3] = {};
        version[at] = 5;
        const char* const texts[] = {"5.00.00", "0.05.00", "0.00.05"};
        EXPECT_EQ(ImageVersionText(version), texts[at]);
    }
}

TEST(ReportTextsTest, TakesOnlyTheThreeNumbersOfAComponent) {
    EXPECT_EQ(ImageVersionText(VX_FLASH_COMPONENT{0xFF, 0, 0, 0, {0xFF, 0xFF}}), "NA");
    EXPECT_TRUE(IsAbsent(VX_FLASH_COMPONENT{0xFF, 0, 0, 0, {0xFF, 0xFF}}));
    EXPECT_EQ(ImageVersionText(VX_FLASH_COMPONENT{9, 1, 2, 3, {8, 7}}), "1.02.03");
    EXPECT_FALSE(IsAbsent(VX_FLASH_COMPONENT{0, 1, 0, 0, {}}));
    EXPECT_FALSE(IsAbsent(VX_FLASH_COMPONENT{0, 0, 1, 0, {}}));
    EXPECT_FALSE(IsAbsent(VX_FLASH_COMPONENT{0, 0, 0, 1, {}}));
}

TEST(ReportTextsTest, WritesVersionsOfTwoNumbers) {
    const VX_UINT8 absent[2] = {0, 0}, minor[2] = {0, 3}, major[2] = {3, 0}, both[2] = {12, 34};
    EXPECT_EQ(ImageVersionText(absent), "NA");
    EXPECT_EQ(ImageVersionText(minor), "0.03");
    EXPECT_EQ(ImageVersionText(major), "3.00");
    EXPECT_EQ(ImageVersionText(both), "12.34");
}

TEST(ReportTextsTest, WritesAnEmptyTextAsAbsent) {
    EXPECT_EQ(OrNa(""), "NA");
    EXPECT_EQ(OrNa(" "), " ");
    EXPECT_EQ(OrNa("3.1"), "3.1");
}

TEST(ReportTextsTest, KnowsZerosByEveryByte) {
    VX_UINT8 bytes[8] = {};
    EXPECT_TRUE(IsZero(bytes));
    for (VX_UINT8& byte : bytes) {
        byte = 0x80;
        EXPECT_FALSE(IsZero(bytes));
        byte = 0;
    }
}

TEST(ReportTextsTest, NamesThePortStates) {
    const std::pair<VX_UINT32, const char*> rows[] = {
        {0, "Unknown"}, {1, "Online"}, {2, "Unknown"}, {3, "Offline"}, {4, "Unknown"}, {255, "Unknown"},
    };
    for (const auto& [state, text] : rows) {
        EXPECT_STREQ(TextOf(PORT_STATE_TEXTS, state, "Unknown"), text) << state;
    }
}

TEST(CodeTableTest, FindsTheFirstRowOrTheFallback) {
    constexpr CodeText TABLE[] = {{0, "zero"}, {7, "first"}, {7, "second"}, {0xFFFFFFFF, "last"}};
    EXPECT_STREQ(TextOf(TABLE, 0, "none"), "zero");
    EXPECT_STREQ(TextOf(TABLE, 7, "none"), "first");
    EXPECT_STREQ(TextOf(TABLE, 0xFFFFFFFF, "none"), "last");
    EXPECT_STREQ(TextOf(TABLE, 1, "none"), "none");
    EXPECT_STREQ(TextOf({}, 0, "none"), "none");
    EXPECT_EQ(TextOf(TABLE, 1, nullptr), nullptr);
}

TEST(CodeTableTest, ReadsAnUnlistedResultCodeAsUnknown) {
    constexpr CodeText TABLE[] = {{RC_INVALID_PARAMETER, "Failed, Invalid parameter"}};
    EXPECT_STREQ(ResultTextOf(TABLE, RC_INVALID_PARAMETER), "Failed, Invalid parameter");
    for (const ResultCode code :
         {RC_SUCCESS, RC_HELP_REQUESTED, RC_CMD_NOT_FOUND, RC_LIBRARY_FAILED, ResultCode{1000}}) {
        EXPECT_STREQ(ResultTextOf(TABLE, code), "Failed, Unknown") << code;
    }
}

} // namespace
