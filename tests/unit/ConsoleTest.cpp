#include "Capture.h"
#include "Output.h"
#include "ProgramMode.h"
#include "Words.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <unistd.h>

namespace {

/// An open command log in a separate file.
class CommandLog {
public:
    CommandLog() { g_hLogFile = mkstemp(mPath); }
    ~CommandLog() {
        close(g_hLogFile);
        g_hLogFile = -1;
        unlink(mPath);
    }
    CommandLog(const CommandLog&) = delete;
    CommandLog& operator=(const CommandLog&) = delete;

    std::string Content() const {
        std::ifstream file(mPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    char mPath[32] = "/tmp/command-log-XXXXXX";
};

TEST(OutputTest, PrintsAtEveryLevelButTheSilentOne) {
    constexpr unsigned short LEVELS[] = {0, 10, 11, 12, 15, 1, 65534};
    for (const unsigned short level : LEVELS) {
        Capture capture;
        Output(level, "%s %d\r\n", "text", 5);
        EXPECT_EQ(capture.Stop(), "text 5\r\n") << level;
    }
    Capture capture;
    Output(65535, "%s", "text");
    EXPECT_EQ(capture.Stop(), "");
}

TEST(OutputTest, WritesTheLogAtEveryLevel) {
    const CommandLog log;
    Capture capture;
    Output(0, "%s;", "shown");
    Output(65535, "%s;", "silent");
    EXPECT_EQ(capture.Stop(), "shown;");
    EXPECT_EQ(log.Content(), "shown;silent;");
}

TEST(OutputTest, LogsTheFirst4095Characters) {
    for (const std::size_t length : {4094u, 4095u, 4096u, 9000u}) {
        const CommandLog log;
        const std::string text = std::string(length - 1, 'x') + "y";
        Capture capture;
        Output(0, "%s", text.c_str());
        EXPECT_EQ(capture.Stop(), text);
        EXPECT_EQ(log.Content(), text.substr(0, 4095)); // 4096 bytes include a terminator
    }
}

TEST(LogToFileTest, WritesTheTextAsItStands) {
    LogToFile("without a log");
    const CommandLog log;
    Capture capture;
    LogToFile("100%s %n\n");
    LogToFile("");
    EXPECT_EQ(capture.Stop(), "");
    EXPECT_EQ(log.Content(), "100%s %n\n");
}

TEST(LogToFileTest, LosesTextThatCannotBeWritten) {
    g_hLogFile = open("/dev/full", O_WRONLY);
    ASSERT_NE(g_hLogFile, -1);
    LogToFile("lost");
    close(g_hLogFile);
    g_hLogFile = -1;
}

TEST(IsInvokingHelpTest, KnowsSevenWordsInAnyCase) {
    for (const char* word : {"help", "/h", "/help", "-h", "-help", "/?", "?", "HELP", "/H", "-HeLp"}) {
        EXPECT_TRUE(IsInvokingHelp(word)) << word;
    }
    for (const char* word : {"", "h", "-?", "--help", "help ", " help", "hel", "helpx", "??", "/", "-", "\xE8"}) {
        EXPECT_FALSE(IsInvokingHelp(word)) << word;
    }
}

TEST(IsArgNumberTest, WantsDecimalDigitsOnly) {
    for (const char* word : {"", "0", "0123456789", "99999999999999999999999"}) {
        EXPECT_TRUE(IsArgNumber(word)) << word;
    }
    // "/" and ":" are adjacent to "0" and "9".
    for (const char* word : {"-1", "+1", "1.5", " 1", "1 ", "0x1", "a", "1a", "/", ":", "\xB2"}) {
        EXPECT_FALSE(IsArgNumber(word)) << word;
    }
}

TEST(ArgTextTest, GivesAnEmptyTextPastTheEnd) {
    const TavuStringArray args{"a", "", "c"};
    EXPECT_STREQ(ArgText(args, 0), "a");
    EXPECT_STREQ(ArgText(args, 1), "");
    EXPECT_STREQ(ArgText(args, 2), "c");
    EXPECT_STREQ(ArgText(args, 3), "");
    EXPECT_STREQ(ArgText(args, ~std::size_t{0}), "");
    EXPECT_STREQ(ArgText({}, 0), "");
}

TEST(FileExistsTest, AsksForThePath) {
    EXPECT_TRUE(FileExists("/tmp"));
    EXPECT_TRUE(FileExists("/dev/null"));
    EXPECT_FALSE(FileExists("/tmp/no/such/file"));
    EXPECT_FALSE(FileExists(""));
}

TEST(PanicTest, PrintsAndEndsWithMinusOne) {
    // The status -1 is 255 in its low eight bits.
    EXPECT_EXIT(Panic("no %s left, %d\n", "memory", 3), testing::ExitedWithCode(255), "^no memory left, 3\n$");
}

TEST(FailAssertionTest, PrintsOneLineAndAborts) {
    EXPECT_EXIT(FailAssertion("that was wrong"), testing::KilledBySignal(SIGABRT), "^[^\n]*that was wrong[^\n]*\n$");
}

} // namespace
