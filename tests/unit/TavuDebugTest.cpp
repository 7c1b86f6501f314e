#include "Clock.h"
#include "Limits.h"
#include "TraceLog.h"

#include <gtest/gtest.h>

#include <ctime>
#include <regex>

namespace {

using Strings = std::vector<std::string>;

TEST(TavuDebugTest, ReadsTheMaskInBaseTen) {
    const TraceLog log("0");
    EXPECT_EQ(TavuDebug::GetLevel(), 0u);
    TraceLog::SetMask("5");
    EXPECT_EQ(TavuDebug::GetLevel(), 5u);
    TraceLog::SetMask("65535");
    EXPECT_EQ(TavuDebug::GetLevel(), 65535u);
    TraceLog::SetMask("010"); // ten, not eight
    EXPECT_EQ(TavuDebug::GetLevel(), 10u);
    TraceLog::SetMask("0x10");
    EXPECT_EQ(TavuDebug::GetLevel(), 0u);
    TraceLog::SetMask("4 and more");
    EXPECT_EQ(TavuDebug::GetLevel(), 4u);
    TraceLog::SetMask("all");
    EXPECT_EQ(TavuDebug::GetLevel(), 0u);
    unsetenv("ORFC_DEBUG_LEVEL");
    TavuDebug::Initialize();
    EXPECT_EQ(TavuDebug::GetLevel(), 0u);
}

TEST(TavuDebugTest, WritesNoFileWithoutAMask) {
    const TraceLog log("0");
    TavuDebug::Print("without a level");
    TavuDebug::Print(TRACE_INFORMATION, "with a level");
    { const ScopedTrace trace(ScopedTrace::CONSTRUCTOR, "Some"); }
    EXPECT_FALSE(TraceLog::Exists());
}

void TraceEveryLevel() {
    TavuDebug::Print(1, "one");
    TavuDebug::Print(2, "two");
    TavuDebug::Print(4, "four");
    TavuDebug::Print(8, "eight");
    TavuDebug::Print(16, "sixteen");
    TavuDebug::Print(0, "zero");
}

TEST(TavuDebugTest, WritesTheLevelsOfTheMask) {
    const TraceLog log("1");
    TraceEveryLevel();
    EXPECT_EQ(TraceLog::Lines(), (Strings{"INFORMATION: one"}));
    TraceLog::SetMask("4");
    TraceEveryLevel();
    EXPECT_EQ(TraceLog::Lines(), (Strings{"INFORMATION: one", "DEBUG: four"}));
    TraceLog::SetMask("18"); // 2 and 16
    TraceEveryLevel();
    EXPECT_EQ(TraceLog::Lines(), (Strings{"INFORMATION: one", "DEBUG: four", "WARNING: two", "DIAG_ERROR: sixteen"}));
}

/// The log as one line: the level word and the blanks around it matter.
void ExpectLine(const std::string& line) {
    const std::string stamp = "[0-9]+/[0-9]+/[0-9]{4} [0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3} ";
    EXPECT_TRUE(std::regex_match(TraceLog::Content(), std::regex(stamp + line))) << TraceLog::Content();
}

TEST(TavuDebugTest, PadsEveryLevelWordToElevenCharacters) {
    const std::string process = std::to_string(getpid());
    const std::pair<unsigned, std::string> words[] = {
        {1, "INFORMATION"}, {2, "WARNING    "}, {4, "DEBUG      "},  {16, "DIAG_ERROR "}, {8, ""},
        {7, "INFORMATION"}, {6, "WARNING    "}, {20, "DEBUG      "},
    };
    for (const auto& [level, word] : words) {
        const TraceLog log("65535");
        TavuDebug::Print(level, "text %d", 3);
        ExpectLine("CIM Provider " + word + " " + process + ": text 3\r\n");
    }
}

TEST(TavuDebugTest, WritesWithoutALevelAtAnyMask) {
    const TraceLog log("8");
    TavuDebug::Print("text %s", "plain");
    ExpectLine("CIM Provider " + std::to_string(getpid()) + ": text plain\r\n");
}

TEST(TavuDebugTest, StampsTheLocalTime) {
    const TraceLog log("1");
    setenv("TZ", "UTC0", 1);
    tzset();
    // 1 January 2021 began at second 1609459200; 33 days, 4 hours, 5 minutes and 6 seconds later:
    const StoppedClock clock({1609459200 + 33 * 86400 + 4 * 3600 + 5 * 60 + 6, 7'890});
    TavuDebug::OutputDebugStringA("text");
    EXPECT_EQ(TraceLog::Content(), "2/3/2021 04:05:06.007 text");
    setenv("TZ", "XXX-1", 1); // an hour ahead
    tzset();
    TavuDebug::OutputDebugStringA("text");
    EXPECT_EQ(TraceLog::Content(), "2/3/2021 04:05:06.007 text2/3/2021 05:05:06.007 text");
    unsetenv("TZ");
    tzset();
}

TEST(TavuDebugTest, WritesNothingForAnEmptyFormat) {
    const TraceLog log("1");
    const char* volatile empty = ""; // unknown to the compiler, which warns of an empty format
    TavuDebug::Print(1, empty, 0);
    TavuDebug::Print(empty, 0);
    EXPECT_FALSE(TraceLog::Exists());
}

TEST(TavuDebugTest, CutsALineAt1024Characters) {
    const TraceLog log("1");
    TavuDebug::Print(1, "%s", std::string(2000, 'x').c_str());
    const std::string content = TraceLog::Content();
    const std::size_t start = content.find("CIM Provider");
    const std::string head = "CIM Provider INFORMATION " + std::to_string(getpid()) + ": ";
    EXPECT_EQ(content.substr(start), head + std::string(1024 - head.size(), 'x'));
}

TEST(TavuDebugTest, KeepsALineOfExactly1024Characters) {
    const TraceLog log("1");
    const std::string head = "CIM Provider INFORMATION " + std::to_string(getpid()) + ": ";
    const std::string text(1024 - head.size() - 2, 'x'); // two for the line end
    TavuDebug::Print(1, "%s", text.c_str());
    EXPECT_TRUE(TraceLog::Content().ends_with(": " + text + "\r\n"));
}

TEST(TavuDebugTest, LosesTracesInSilence) {
    const TraceLog log("1");
    {
        const NoMoreFiles fault;
        TavuDebug::Print(1, "lost");
    }
    EXPECT_FALSE(TraceLog::Exists());
    TavuDebug::Print(1, "kept");
    EXPECT_EQ(TraceLog::Lines(), (Strings{"INFORMATION: kept"}));
}

TEST(DebugLogPathTest, IsNamedAfterTheLoadedFile) {
    EXPECT_EQ(DebugLogPath("/opt/some/tool"), "/var/tmp/tool.log");
    EXPECT_EQ(DebugLogPath("./tool"), "/var/tmp/tool.log");
    EXPECT_EQ(DebugLogPath("/opt/libtool.so"), "/var/tmp/libtool.log");
    EXPECT_EQ(DebugLogPath("/opt/libtool.so.1.2"), "/var/tmp/libtool.log");
    EXPECT_EQ(DebugLogPath("/opt/a.so.b.so"), "/var/tmp/a.log");
    EXPECT_EQ(DebugLogPath("/opt/lib.sources/tool"), "/var/tmp/tool.log");
    EXPECT_EQ(DebugLogPath("tool"), "/var/tmp/viplugin.log");
    EXPECT_EQ(DebugLogPath(""), "/var/tmp/viplugin.log");
}

TEST(ScopedTraceTest, TracesStartAndEnd) {
    const TraceLog log("1");
    { const ScopedTrace trace(ScopedTrace::CONSTRUCTOR, "Some"); }
    { const ScopedTrace trace(ScopedTrace::DESTRUCTOR, "Some"); }
    const std::string constructor = "Some::Some(MultipleCmdsProcessor*, const char*, const char*, const char*, "
                                    "VX_UINT32, VX_UINT32)";
    EXPECT_EQ(TraceLog::Lines(),
              (Strings{"INFORMATION: STARTING " + constructor, "INFORMATION: RETURNING " + constructor,
                       "INFORMATION: STARTING virtual Some::~Some()", "INFORMATION: RETURNING virtual Some::~Some()"}));
}

TEST(ScopedTraceTest, TellsTheTimeFrom300MillisecondsOn) {
    const TraceLog log("1");
    const long second = 1'600'000'000;
    StoppedClock clock({second, 0});
    {
        const ScopedTrace trace(ScopedTrace::DESTRUCTOR, "Quick");
        clock.Set({second, 299'999});
    }
    clock.Set({second, 0});
    {
        const ScopedTrace trace(ScopedTrace::DESTRUCTOR, "Slow");
        clock.Set({second, 300'000});
    }
    EXPECT_EQ(TraceLog::Lines(),
              (Strings{"INFORMATION: STARTING virtual Quick::~Quick()",
                       "INFORMATION: RETURNING virtual Quick::~Quick()", "INFORMATION: STARTING virtual Slow::~Slow()",
                       "INFORMATION: RETURNING virtual Slow::~Slow() ... elapsed 00:00:00.300"}));
}

TEST(ScopedTraceTest, IsSilentWithoutLevelOne) {
    const TraceLog log("4");
    { const ScopedTrace trace(ScopedTrace::CONSTRUCTOR, "Some"); }
    EXPECT_FALSE(TraceLog::Exists());
}

} // namespace
