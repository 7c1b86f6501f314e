#include "ReportBlock.h"
#include "Limits.h"
#include "TraceLog.h"
#include "TracedFunction.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

constexpr auto FULL = ReportBlock::SizeRule::FULL;
constexpr auto SPACE_LEFT = ReportBlock::SizeRule::SPACE_LEFT;

ReportBlock MakeBlock(std::size_t size, ReportBlock::SizeRule rule = FULL) {
    return ReportBlock(size, rule);
}

TEST(ReportBlockTest, IndentsAllLinesButTheFirst) {
    for (const auto rule : {FULL, SPACE_LEFT}) {
        ReportBlock block = MakeBlock(256, rule);
        ASSERT_TRUE(block.IsAllocated());
        EXPECT_STREQ(block.GetText(), "");
        block.Line("One", "1");
        block.LineF("Two", "%d%%", 2);
        block.Line("", "");
        EXPECT_STREQ(block.GetText(), "One: 1\n      Two: 2%\n      : \n");
    }
}

TEST(ReportBlockTest, TakesARawTextAsItStands) {
    ReportBlock block = MakeBlock(256);
    block.Line("One", "1");
    block.Raw("   raw %s\n");
    block.Raw("");
    block.Line("Two", "2");
    EXPECT_STREQ(block.GetText(), "One: 1\n   raw %s\n      Two: 2\n");
}

TEST(ReportBlockTest, TakesALineEndOfItsOwn) {
    ReportBlock block = MakeBlock(256);
    block.Line("One", "1", "");
    block.Line("Two", "2", "");
    block.BareLine("Reserved");
    EXPECT_STREQ(block.GetText(), "One: 1      Two: 2Reserved");
}

TEST(ReportBlockTest, CountsARawTextAsTheFirstLine) {
    ReportBlock block = MakeBlock(256);
    block.Raw("raw\n");
    block.Line("One", "1");
    EXPECT_STREQ(block.GetText(), "raw\n      One: 1\n");
}

TEST(ReportBlockTest, TakesAValueWithoutATerminator) {
    ReportBlock block = MakeBlock(256);
    const char value[3] = {'a', 'b', 'c'};
    block.Line("One", std::string_view(value, sizeof value));
    EXPECT_STREQ(block.GetText(), "One: abc\n");
}

TEST(ReportBlockTest, FillsTheBufferByTheFullRule) {
    // The first line takes 2 + 2 + 5 + 1 = 10 bytes, the second 6 + 10 = 16: with the terminator 27.
    for (const std::size_t size : {26u, 27u, 28u}) {
        ReportBlock block = MakeBlock(size);
        block.Line("L1", "11111");
        block.Line("L2", "22222");
        EXPECT_EQ(std::string(block.GetText()), size < 27 ? "L1: 11111\n" : "L1: 11111\n      L2: 22222\n") << size;
    }
}

TEST(ReportBlockTest, FillsHalfOfTheBufferBySpaceLeft) {
    // The whole text of 26 bytes must stay below what is left after the 10 of the first line: 37 - 10 = 27.
    for (const std::size_t size : {27u, 36u, 37u, 38u}) {
        ReportBlock block = MakeBlock(size, SPACE_LEFT);
        block.Line("L1", "11111");
        block.Line("L2", "22222");
        EXPECT_EQ(std::string(block.GetText()), size < 37 ? "L1: 11111\n" : "L1: 11111\n      L2: 22222\n") << size;
    }
}

TEST(ReportBlockTest, RefusesEverythingPastHalfBySpaceLeft) {
    // With 32 bytes used and 32 left, the text is no longer below the space left, whatever is added.
    ReportBlock block = MakeBlock(64, SPACE_LEFT);
    block.Raw(std::string(32, 'x').c_str());
    block.Raw("y");
    block.Raw("");
    EXPECT_EQ(std::string(block.GetText()), std::string(32, 'x'));
    // With 31 bytes used and 33 left, one more byte still fits.
    ReportBlock other = MakeBlock(64, SPACE_LEFT);
    other.Raw(std::string(31, 'x').c_str());
    other.Raw("yz");
    other.Raw("y");
    EXPECT_EQ(std::string(other.GetText()), std::string(31, 'x') + "y");
}

TEST(ReportBlockTest, TakesAShorterLineBehindOneThatWasLeftOut) {
    ReportBlock block = MakeBlock(30);
    block.Line("One", "1");                   // 7 bytes
    block.Line("Long", std::string(20, 'x')); // 33 more
    block.Line("Two", "2");                   // 13 more
    EXPECT_STREQ(block.GetText(), "One: 1\n      Two: 2\n");
}

TEST(ReportBlockTest, CountsALineThatWasLeftOutAsTheFirst) {
    ReportBlock block = MakeBlock(30);
    block.Line("Long", std::string(40, 'x'));
    block.Line("Two", "2");
    EXPECT_STREQ(block.GetText(), "      Two: 2\n");
}

TEST(ReportBlockTest, CutsALineAt1024Characters) {
    // "Name: " takes 6 characters of the first line; the line end is cut first.
    for (const std::size_t length : {1017u, 1018u, 1019u, 2000u}) {
        ReportBlock block = MakeBlock(4096);
        const std::string value(length, 'x');
        block.Line("Name", value);
        EXPECT_EQ(std::string(block.GetText()), ("Name: " + value + "\n").substr(0, 1024)) << length;
    }
}

TEST(ReportBlockTest, CutsAFormattedValueAt1024Characters) {
    ReportBlock block = MakeBlock(4096);
    block.LineF("N", "%s", std::string(3000, 'x').c_str());
    EXPECT_EQ(std::string(block.GetText()), "N: " + std::string(1021, 'x'));
}

TEST(ReportBlockTest, TracesEveryLine) {
    const TraceLog log("1");
    const TracedFunction traced("Class", "Function");
    ReportBlock block = MakeBlock(8);
    block.Line("One", "1");
    block.Line("Two", std::string_view("2%s3", 3));
    block.LineF("Three", "%u (ms)", 3u);
    block.Line("Time", "Nov 22", "");
    block.BareLine("Reserved");
    block.BareLine("\n");
    block.Raw("raw");
    EXPECT_STREQ(block.GetText(), "One: 1\n");
    EXPECT_EQ(TraceLog::Lines(),
              (std::vector<std::string>{"INFORMATION: Class::Function: One=1", "INFORMATION: Class::Function: Two=2%s",
                                        "INFORMATION: Class::Function: Three=3 (ms)",
                                        "INFORMATION: Class::Function: Time=Nov 22",
                                        "INFORMATION: Class::Function: Reserved", "INFORMATION: Class::Function: "}));
}

TEST(ReportBlockTest, TellsThatThereIsNoMemory) {
    const TraceLog log("4");
    const TracedFunction traced("Class", "Function");
#ifndef __SANITIZE_ADDRESS__
    const LoweredLimit fault(RLIMIT_AS, rlim_t{3} << 30);
#endif
    const ReportBlock block = MakeBlock(std::size_t{UINT_MAX});
    EXPECT_FALSE(block.IsAllocated());
    EXPECT_EQ(TraceLog::Lines(), (std::vector<std::string>{"DEBUG: Class::Function: Output memory alloc failed"}));
}

} // namespace
