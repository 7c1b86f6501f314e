#include "LibraryCall.h"
#include "Capture.h"
#include "FakeLibrary.h"
#include "LibraryLog.h"
#include "Limits.h"
#include "Mezzanine.h"
#include "TraceLog.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>
#include <unistd.h>

namespace {

using Strings = std::vector<std::string>;

/// A text unique to this run.
std::string Chatter(const std::string& topic) {
    return "chatter of " + std::to_string(getpid()) + " about " + topic + "\n";
}

class LibraryCallTest : public testing::Test {
protected:
    void SetUp() override { FakeLibrary::Reset(); }

    FakeLibrary& Fake() { return FakeLibrary::Get(); }

    const LibraryCall what{"VEXAPI_Call", " before the call", "Call failed", RC_CFG_READ_FAILED};
};

TEST_F(LibraryCallTest, SendsWhatTheLibraryPrintsToTheLog) {
    const LibraryLog log;
    Capture capture;
    LibraryOutputRedirection redirection;
    std::printf("before;");
    ASSERT_TRUE(redirection.Open());
    std::printf("%s", Chatter("one").c_str());
    std::fputs(Chatter("two").c_str(), stdout);
    redirection.Close();
    std::printf("after;");
    EXPECT_EQ(capture.Stop(), "before;after;");
    EXPECT_TRUE(log.Has(Chatter("one") + Chatter("two")));
}

TEST_F(LibraryCallTest, AppendsToTheLog) {
    const LibraryLog log;
    for (const char* topic : {"three", "four"}) {
        LibraryOutputRedirection redirection;
        ASSERT_TRUE(redirection.Open());
        std::printf("%s", Chatter(topic).c_str());
        redirection.Close();
    }
    EXPECT_TRUE(log.Has(Chatter("three")));
    EXPECT_TRUE(log.Has(Chatter("four")));
}

TEST_F(LibraryCallTest, OpensAgain) {
    Capture capture;
    LibraryOutputRedirection redirection;
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(redirection.Open());
        std::printf("%s", Chatter("five").c_str());
        redirection.Close();
        std::printf("%d;", round);
    }
    EXPECT_EQ(capture.Stop(), "0;1;2;");
}

TEST_F(LibraryCallTest, WritesTheLogAtEachPause) {
    const LibraryLog log;
    Capture capture;
    LibraryOutputRedirection redirection;
    for (const char* topic : {"a pause", "another"}) {
        ASSERT_TRUE(redirection.Open());
        std::printf("%s", Chatter(topic).c_str());
        redirection.Pause();
        EXPECT_TRUE(log.Has(Chatter(topic)));
        std::printf("between;");
    }
    redirection.Close();
    redirection.Close(); // changes nothing
    EXPECT_EQ(capture.Stop(), "between;between;");
}

TEST_F(LibraryCallTest, KeepsAPausedLogForAMoment) {
    bool isKept = false;
    for (int round = 0; round < 100 && !isKept; ++round) { // the moment may be over on a busy machine
        LibraryOutputRedirection redirection;
        ASSERT_TRUE(redirection.Open());
        redirection.Pause();
        const NoMoreFiles fault;
        isKept = redirection.Open();
        redirection.Close();
    }
    EXPECT_TRUE(isKept);
}

TEST_F(LibraryCallTest, OpensAPausedLogAgainAfterAMoment) {
    constexpr std::chrono::milliseconds MOMENT(20);
    const char* const path = "/var/tmp/vexapi-output.log";
    const std::string moved = path + std::to_string(getpid());
    LibraryOutputRedirection redirection;
    ASSERT_TRUE(redirection.Open());
    redirection.Pause();
    std::filesystem::rename(path, moved);
    std::this_thread::sleep_for(MOMENT);
    ASSERT_TRUE(redirection.Open());
    std::printf("%s", Chatter("a new log").c_str());
    redirection.Pause();
    std::ifstream created(path);
    std::string line;
    std::getline(created, line);
    EXPECT_EQ(line + '\n', Chatter("a new log"));

    // A link in its place isn't followed.
    std::filesystem::remove(path);
    std::filesystem::create_symlink(moved, path);
    std::this_thread::sleep_for(MOMENT);
    EXPECT_FALSE(redirection.Open());
    std::filesystem::rename(moved, path);
    EXPECT_TRUE(redirection.Open());
    redirection.Close();
}

TEST_F(LibraryCallTest, KeepsStandardOutputWhenTheLogCannotBeOpened) {
    Capture capture;
    FILE* const before = stdout;
    {
        const NoMoreFiles fault;
        LibraryOutputRedirection redirection;
        EXPECT_FALSE(redirection.Open());
        EXPECT_EQ(stdout, before);
    }
    std::printf("still here");
    EXPECT_EQ(capture.Stop(), "still here");
}

TEST_F(LibraryCallTest, MakesCallsInsideTheRedirection) {
    const LibraryLog log;
    Capture capture;
    int calls = 0;
    EXPECT_EQ(MakeLibraryCalls([&] {
                  ++calls;
                  std::printf("%s", Chatter("six").c_str());
              }),
              RC_SUCCESS);
    EXPECT_EQ(capture.Stop(), "");
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(log.Has(Chatter("six")));
}

TEST_F(LibraryCallTest, MakesNoCallWithoutARedirection) {
    const NoMoreFiles fault;
    int calls = 0;
    EXPECT_EQ(MakeLibraryCalls([&] { ++calls; }), RC_FILE_ERROR);
    EXPECT_EQ(CallLibrary(what,
                          [&] {
                              ++calls;
                              return VX_UINT32{5};
                          }),
              RC_FILE_ERROR);
    EXPECT_EQ(calls, 0);
}

TEST_F(LibraryCallTest, TracesARedirectionThatCannotBeOpened) {
    const TraceLog log("1");
    const TracedFunction traced("Class", "Function");
    EXPECT_EQ(RefuseLibraryCalls(""), RC_FILE_ERROR);
    EXPECT_EQ(RefuseLibraryCalls(" before the call"), RC_FILE_ERROR);
    const std::string text = "INFORMATION: Class::Function: Failed to open /var/tmp/vexapi-output.log file";
    EXPECT_EQ(TraceLog::Lines(), (Strings{text, text + " before the call"}));
}

TEST_F(LibraryCallTest, GivesTheFailureCodeForEveryStatusButZero) {
    const TraceLog log("5");
    const TracedFunction traced("Class", "Function");
    EXPECT_EQ(CallLibrary(what, [] { return VX_UINT32{0}; }), RC_SUCCESS);
    EXPECT_EQ(CallLibrary(what, [] { return VX_UINT32{1}; }), RC_CFG_READ_FAILED);
    EXPECT_EQ(CallLibrary(what, [] { return VX_UINT32{0xFFFFFFFF}; }), RC_CFG_READ_FAILED);
    EXPECT_EQ(ResultOf(what, 118), RC_CFG_READ_FAILED);
    EXPECT_EQ(ResultOf(what, 0), RC_SUCCESS);
    const std::string status = "INFORMATION: Class::Function: VEXAPI_Call=";
    const std::string failed = "DEBUG: Class::Function: Call failed err=";
    EXPECT_EQ(TraceLog::Lines(), (Strings{status + "0", status + "1", failed + "1", status + "-1", failed + "-1",
                                          status + "118", failed + "118", status + "0"}));
}

TEST_F(LibraryCallTest, TracesAStatusThatFailsNothing) {
    const TraceLog log("1");
    const TracedFunction traced("Class", "Function");
    TraceStatus("VEXAPI_Initialize", 7);
    EXPECT_EQ(TraceLog::Lines(), (Strings{"INFORMATION: Class::Function: VEXAPI_Initialize=7"}));
}

TEST_F(LibraryCallTest, TakesOnlyTheValueOneForAMezzanineAdapter) {
    _vexapi_protocol_t& port = Fake().host.AddPort();
    for (const unsigned flag : {0u, 1u, 2u, 255u}) {
        Fake().onIsMezzAdapter = [flag](VX_PORT_HANDLE*, VX_UINT8* answer) {
            *answer = static_cast<VX_UINT8>(flag);
            std::printf("%s", Chatter("seven").c_str());
            return 0u;
        };
        bool isMezzanine = flag != 1;
        Capture capture;
        EXPECT_EQ(AskMezzanine(what, port.PortHandle, isMezzanine), RC_SUCCESS);
        EXPECT_EQ(capture.Stop(), "");
        EXPECT_EQ(isMezzanine, flag == 1) << flag;
    }
    Fake().Return("VEXAPI_IsMezzAdapter", 5);
    bool isMezzanine = true;
    EXPECT_EQ(AskMezzanine(what, port.PortHandle, isMezzanine), RC_CFG_READ_FAILED);
    EXPECT_EQ(Fake().calls, Strings(5, "VEXAPI_IsMezzAdapter(21:00:0a:0b:0c:0d:00:01)"));
}

TEST_F(LibraryCallTest, AsksForTheRebootWithTheAnswerYesReady) {
    std::vector<VX_UINT32> onEntry;
    VX_UINT32 answer = 0;
    VX_UINT32 status = 0;
    Fake().onIsRebootRequired = [&](VX_UINT32* required) {
        onEntry.push_back(*required);
        *required = answer;
        return status;
    };
    const std::pair<VX_UINT32, bool> answers[] = {{0, false}, {1, true}, {2, false}, {0xFFFFFFFF, false}};
    for (const auto& [value, isRequired] : answers) {
        answer = value;
        status = 0;
        EXPECT_EQ(IsRebootRequired(), isRequired) << value;
        status = 5; // a failed library has not answered, whatever it wrote
        EXPECT_TRUE(IsRebootRequired()) << value;
    }
    EXPECT_EQ(onEntry, std::vector<VX_UINT32>(8, 1));
}

TEST_F(LibraryCallTest, TracesAFailingRebootQuestion) {
    const TraceLog log("5");
    const TracedFunction traced("Class", "Function");
    Fake().onIsRebootRequired = [](VX_UINT32*) { return VX_UINT32{5}; };
    EXPECT_TRUE(IsRebootRequired());
    EXPECT_EQ(TraceLog::Lines(), (Strings{"INFORMATION: Class::Function: VEXAPI_IsRebootRequired=5",
                                          "DEBUG: Class::Function: Is Reboot Required failed err=5"}));
}

TEST_F(LibraryCallTest, TakesASilentLibraryForAReboot) {
    Fake().Succeed({"IsRebootRequired"});
    EXPECT_TRUE(IsRebootRequired()); // status 0, and the answer is left as it was
    EXPECT_EQ(Fake().calls, (Strings{"VEXAPI_IsRebootRequired()"}));
}

} // namespace
