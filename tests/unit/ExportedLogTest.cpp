#include "ExportedLog.h"
#include "Capture.h"
#include "TraceLog.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace {

using Strings = std::vector<std::string>;

/// The text of a test's trace after the process id.
std::string AfterProcess(const std::string& line) {
    const std::string process = std::to_string(getpid());
    return line.substr(line.find(process) + process.size());
}

TEST(ExportedLogTest, TracesAnyTypeOfFormat) {
    const TraceLog log("4");
    TavuDebug::Print(TRACE_DEBUG, TavuString("string %d"), 1);
    TavuDebug::Print(TRACE_DEBUG, TavuString("100%s"));
    TavuDebug::Print(TRACE_DEBUG, L"wide %d \u00e9", 2);
    TavuDebug::Print(TRACE_INFORMATION, L"not in the mask");
    OR_Print(TRACE_DEBUG, "plain %s", "3");
    OR_Print(TRACE_INFORMATION, "not in the mask");
    EXPECT_EQ(TraceLog::Lines(), (Strings{"DEBUG: string 1", "DEBUG: 100%s", "DEBUG: wide 2 ?", "DEBUG: plain 3"}));
}

TEST(ExportedLogTest, TracesWithoutALevelAtAnyMask) {
    const TraceLog log("2");
    TavuDebug::Print(TavuString("string %d"), 1);
    TavuDebug::Print(L"wide %d", 2);
    TavuDebug::PrintForFwUpg("update %d", 3);
    TavuDebug::UnInitialize(); // does nothing
    TavuDebug::PrintForFwUpg("still there");
    const std::string content = TraceLog::Content();
    for (const char* text : {": string 1\r\n", ": wide 2\r\n", ": update 3\r\n", ": still there\r\n"}) {
        EXPECT_NE(content.find("CIM Provider " + std::to_string(getpid()) + text), std::string::npos) << text;
    }
    TraceLog::SetMask("0");
    TavuDebug::Print(L"nothing");
    TavuDebug::PrintForFwUpg("nothing");
    EXPECT_EQ(TraceLog::Content(), content);
}

TEST(ExportedLogTest, CutsAWideTextAtTheLengthOfATrace) {
    const TraceLog log("4");
    const std::wstring text(3000, L'x');
    TavuDebug::Print(TRACE_DEBUG, L"%ls", text.c_str());
    const std::string content = TraceLog::Content();
    EXPECT_EQ(content.size() - content.find("CIM Provider"), 1024u);
    TavuDebug::Print(TRACE_DEBUG, static_cast<const wchar_t*>(nullptr));
    EXPECT_EQ(TraceLog::Content(), content);
}

TEST(ExportedLogTest, TracesThePlaceInTheSource) {
    const TraceLog log("4");
    LinenoLog("/src/library/file.cpp", 42).Print(TRACE_DEBUG, "at %s", "level");
    LinenoLog("file.cpp", 7).Print("without a level");
    LinenoLog("a_file_of_a_very_long_name.cpp", 1).Print(TRACE_DEBUG, "long");
    LinenoLog("file.cpp", 7).Print(TRACE_INFORMATION, "not in the mask");
    std::istringstream content(TraceLog::Content());
    Strings lines;
    for (std::string line; std::getline(content, line);) {
        lines.push_back(AfterProcess(line));
    }
    // The prefix " file.cpp (42)" of 14 characters is padded to 25.
    EXPECT_EQ(lines, (Strings{" file.cpp (42)           : at level\r", " file.cpp (7)            : without a level\r",
                              " a_file_of_a_very_long_name.cpp (1): long\r"}));
}

TEST(ExportedLogTest, PrintsCoreMessagesUnlessItIsQuiet) {
    Capture capture;
    CoreLogMessage(CORE_LOG_INFO, "%s", "one");
    CoreLogMessage(CORE_LOG_WARNING, "two");
    CoreLogMessage(CORE_LOG_ERROR, "three");
    CoreLogMessage(CORE_LOG_DEBUG, "hundred");
    CoreLogMessage(4, "four");
    OR_setDebugMode(0);
    CoreLogMessage(CORE_LOG_ERROR, "quiet");
    OR_setDebugMode(1);
    CoreLogMessage(CORE_LOG_INFO, "again");
    EXPECT_EQ(capture.Stop(), "Info: one\r\nWarning: two\r\nError: three\r\nDebug: hundred\r\nUnknown: four\r\n"
                              "Info: again\r\n");
}

/// All runs share one API log, in a world-writable folder.
class ApiLogTest : public testing::Test {
protected:
    ApiLogTest() { std::filesystem::remove(PATH); }
    ~ApiLogTest() override { std::filesystem::remove(PATH); }

    static std::string Content(const std::string& path = PATH) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static constexpr char PATH[] = "/tmp/APILog.txt";
    const TraceLog lock{"0"};
};

TEST_F(ApiLogTest, AppendsALineForEveryTextButNull) {
    APILog("100%s");
    APILog("two");
    APILog(nullptr);
    EXPECT_EQ(Content(), "Debug:\"100%s\" \nDebug:\"two\" \n");
}

TEST_F(ApiLogTest, TakesDebugPrints) {
    Capture capture;
    ORDM_DebugPrint("source", "100%s");
    EXPECT_EQ(capture.Stop(), "Debug: ORDM_DebugPrint: source : 100%s\n\r\n");
    EXPECT_EQ(Content(), "Debug:\"ORDM_DebugPrint: source : 100%s\n\" \n");
}

TEST_F(ApiLogTest, FollowsNoLink) {
    const std::string target = "/tmp/api-log-target-" + std::to_string(getpid());
    std::filesystem::create_symlink(target, PATH);
    APILog("text");
    EXPECT_FALSE(std::filesystem::exists(target));
}

} // namespace
