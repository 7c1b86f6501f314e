#include "Program.h"
#include "Output.h"
#include "ProgramMode.h"
#include "TraceLog.h"
#include "Words.h"

#include <gtest/gtest.h>

#include <csignal>

namespace {

struct Mode {
    VX_UINT32 bits;
    unsigned firstArg;
};

/// Reads the mode of "program WORDS".
Mode ModeOf(std::vector<std::string> words) {
    words.insert(words.begin(), "program");
    std::vector<char*> argv;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    Mode mode{0, 777};
    mode.bits = ChkProgMode(static_cast<int>(words.size()), argv.data(), &mode.firstArg);
    return mode;
}

void ExpectMode(const std::vector<std::string>& words, VX_UINT32 bits, unsigned firstArg) {
    const Mode mode = ModeOf(words);
    EXPECT_EQ(mode.bits, bits);
    EXPECT_EQ(mode.firstArg, firstArg);
}

TEST(ChkProgModeTest, ReadsTheWordsAheadOfTheCommand) {
    ExpectMode({}, 0, 1);
    ExpectMode({"-debug"}, 1, 2);
    ExpectMode({"-eng"}, 8, 2);
    ExpectMode({"-eng", "-debug"}, 9, 3);
    ExpectMode({"-debug", "-debug", "-eng", "-t", "port"}, 9, 4);
    ExpectMode({"-ENG", "-Debug", "-t", "adapter", "list"}, 9, 3);
}

TEST(ChkProgModeTest, StopsAtTheFirstOtherWord) {
    ExpectMode({"-t", "-debug", "-eng"}, 0, 1);
    ExpectMode({"-eng", "list", "-debug"}, 8, 2);
    ExpectMode({"", "-eng"}, 0, 1);
    ExpectMode({"-engineer"}, 0, 1);
    ExpectMode({"eng"}, 0, 1);
    ExpectMode({"--eng"}, 0, 1);
}

TEST(ChkProgModeTest, NeedsNoProgramName) {
    char* none[] = {nullptr};
    unsigned firstArg = 777;
    EXPECT_EQ(ChkProgMode(0, none, &firstArg), 0u);
    EXPECT_EQ(firstArg, 1u);
}

TEST(ProgramFlagTest, NumbersTheBits) {
    const std::pair<ProgramFlag, VX_UINT32> rows[] = {
        {FLAG_DEBUG, 1}, {FLAG_QUIT, 2}, {FLAG_COMMAND_LINE, 4}, {FLAG_ENGINEERING, 8}, {FLAG_BREAK, 16},
    };
    const VX_UINT32 saved = g_uFlags;
    for (const auto& [flag, value] : rows) {
        EXPECT_EQ(flag, value);
        g_uFlags = value;
        EXPECT_TRUE(HasProgramFlag(flag));
        g_uFlags = ~value;
        EXPECT_FALSE(HasProgramFlag(flag));
    }
    g_uFlags = saved;
}

TEST(HandlerRoutineTest, AsksForANewPromptOnQuit) {
    const TraceLog log("1");
    g_uFlags = FLAG_ENGINEERING;
    HandlerRoutine(SIGQUIT);
    EXPECT_EQ(g_uFlags, VX_UINT32{FLAG_ENGINEERING | FLAG_BREAK});
    g_uFlags = 0;
    EXPECT_NE(TraceLog::Content().find("\r\nBreaking...\r\n"), std::string::npos);
}

TEST(HandlerRoutineDeathTest, EndsTheProcessAsAnInterruptDoes) {
    for (const int signal : {SIGINT, SIGABRT, SIGTERM}) {
        EXPECT_EXIT(HandlerRoutine(signal), testing::KilledBySignal(SIGINT), "^$");
    }
}

TEST(HandlerRoutineDeathTest, TracesTheEnd) {
    const TraceLog log("1");
    EXPECT_EXIT(HandlerRoutine(SIGTERM), testing::KilledBySignal(SIGINT), "^$");
    EXPECT_NE(TraceLog::Content().find("\r\nClosing...\r\n"), std::string::npos);
}

TEST(InstallSignalHandlersDeathTest, HandlesFourSignals) {
    for (const int signal : {SIGINT, SIGABRT, SIGTERM}) {
        EXPECT_EXIT(
            {
                InstallSignalHandlers();
                std::raise(signal);
            },
            testing::KilledBySignal(SIGINT), "^$");
    }
    EXPECT_EXIT(
        {
            InstallSignalHandlers();
            FailAssertion("wrong");
        },
        testing::KilledBySignal(SIGINT), "^Assertion failed: wrong\n$");
    EXPECT_EXIT(
        {
            InstallSignalHandlers();
            std::raise(SIGQUIT);
            std::_Exit(HasProgramFlag(FLAG_BREAK) ? 5 : 6);
        },
        testing::ExitedWithCode(5), "^$");
}

TEST(InstallSignalHandlersDeathTest, LetsASignalInterruptARead) {
    EXPECT_EXIT(
        {
            InstallSignalHandlers();
            int code = 5;
            for (const int signal : {SIGINT, SIGABRT, SIGTERM, SIGQUIT}) {
                struct sigaction action {};
                sigaction(signal, nullptr, &action);
                if ((action.sa_flags & SA_RESTART) != 0) {
                    code = 6;
                }
            }
            std::_Exit(code);
        },
        testing::ExitedWithCode(5), "^$");
}

} // namespace
