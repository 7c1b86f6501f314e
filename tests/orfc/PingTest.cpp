/// @file
/// Echo frames to remote ports of a scripted library: what is sent, counted, timed and shown.
#include "Ping.h"
#include "Command.h"
#include "Failure.h"
#include "Rows.h"
#include "ScriptedLibrary.h"

#include <nlohmann/json.hpp>
#include <thread>

using namespace orfc_test;

namespace {

using Texts = std::vector<std::string>;
using std::chrono::milliseconds;

/// A port that sees two targets. Every frame is answered, but for what a test scripts.
class PingTest : public ScriptedTest {
protected:
    PingTest() {
        _vexapi_protocol_t& port = Tree().AddPort();
        Tree().AddTarget(port);
        Tree().AddTarget(port);
        SucceedEverywhere();
        Fake().onDiagnosticsEchoElsTest = [this](VX_PORT_HANDLE*, const char* name, VX_UINT32 count, VX_UINT32 stop,
                                                 VX_UINT32 type, _VEXAPI_ECHO_RESULTS* result) {
            EXPECT_EQ(count, 1u);
            EXPECT_EQ(stop, 0u);
            sent.push_back(std::string(name) + ' ' + std::to_string(type));
            return echo ? echo(sent.size(), *result) : VX_UINT32{0};
        };
    }

    static PingPlan PlanOf(const Host& host, unsigned long count, std::size_t remotes = 1,
                           std::chrono::duration<double> interval = {}) {
        PingPlan plan{{}, count, interval};
        for (std::size_t at = 0; at < remotes; ++at) {
            const Target& target = host.targets[at];
            plan.remotes.push_back({&host.ports[0], target.portName, target.kernelName, false});
        }
        return plan;
    }
    std::vector<PingResult> Run(const PingPlan& plan) {
        const Library library(Functions(false), "scripted");
        Session session(library, ScopeOf(EVERYTHING));
        return Ping(
            session, plan, [this] { return isInterrupted; }, [](const PingResult& /*result*/) {});
    }
    /// A run of the command, as JSON.
    nlohmann::json Command(const Texts& names, unsigned long count) {
        const Library library(Functions(false), "scripted");
        Session session(library, ScopeOf(EVERYTHING));
        const Host host = ReadHost(session, EVERYTHING);
        messages.clear();
        progress.clear();
        Request request{host, names, nullptr, 0, &session, &messages, 0, count};
        request.onProgress = [this](const std::string& text) { progress.push_back(text); };
        for (const CommandRow& row : Commands()) {
            if (row.name == std::string("ping")) {
                const Shown shown = row.run(request);
                Answer answer;
                shown.Fill(answer);
                return nlohmann::json::parse(Written(WriteJson, answer));
            }
        }
        throw std::out_of_range("ping");
    }

    std::function<VX_UINT32(std::size_t number, _VEXAPI_ECHO_RESULTS& result)> echo; ///< numbers count from 1
    Texts sent, messages, progress;
    bool isInterrupted = false;
};

constexpr char FIRST[] = "50:00:0a:0b:0c:0d:01:01", SECOND[] = "50:00:0a:0b:0c:0d:01:02";
const std::string PORT = "FC_21:00:0a:0b:0c:0d:00:01";

TEST_F(PingTest, FramesGoToEachInTurn) {
    const Host host = Read();
    const std::vector<PingResult> results = Run(PlanOf(host, 3, 2));
    const std::string first = FIRST + std::string(" 2"), second = SECOND + std::string(" 2");
    EXPECT_EQ(sent, (Texts{first, second, first, second, first, second}));
    ASSERT_EQ(results.size(), 2u);
    for (const PingResult& result : results) {
        EXPECT_EQ(result.port, PORT);
        EXPECT_EQ(result.sent, 3u);
        EXPECT_EQ(result.received, 3u);
        EXPECT_EQ(result.LossPercent(), 0);
        EXPECT_EQ(result.lastStatus, "");
    }
    EXPECT_EQ(results[1].remoteName, 0x50000a0b0c0d0102u);
}

TEST_F(PingTest, TimesAreThoseOfAnsweredFrames) {
    const Host host = Read();
    constexpr int WAITS[] = {20, 60, 200}; // milliseconds; the last frame is lost
    echo = [&](std::size_t number, _VEXAPI_ECHO_RESULTS& result) {
        std::this_thread::sleep_for(milliseconds(WAITS[number - 1]));
        result.EchoFailed = number == 3 ? 1 : 0;
        return VX_UINT32{0};
    };
    const PingResult result = Run(PlanOf(host, 3)).front();
    EXPECT_EQ(result.received, 2u);
    EXPECT_GE(result.least, 20);
    EXPECT_GE(result.most, 60);
    EXPECT_LE(result.least, result.most);
    EXPECT_DOUBLE_EQ(result.sum, result.least + result.most); // of two
    EXPECT_NEAR(result.LossPercent(), 100.0 / 3, 1e-9);
}

TEST_F(PingTest, TheLastLossTellsWhy) {
    const Host host = Read();
    struct Row {
        VX_UINT32 status, failed;
        std::string text, shown;
    };
    for (const Row& row : {Row{0, 1, "Rejected: logical busy", "Rejected: logical busy"},
                           Row{0, 1, std::string(72, 'x'), std::string(72, 'x')}, // fills its array
                           Row{5, 0, "", "status 5"}, Row{118, 0, "", "not supported"}, Row{0, 1, "", "status 0"}}) {
        sent.clear();
        echo = [&](std::size_t number, _VEXAPI_ECHO_RESULTS& result) {
            const bool isLost = number == 2;
            result.EchoFailed = isLost ? row.failed : 0;
            Put(result.EchoStatus, isLost ? row.text : "Echo accepted");
            return isLost ? row.status : VX_UINT32{0};
        };
        const PingResult result = Run(PlanOf(host, 4)).front();
        EXPECT_EQ(result.sent, 4u);
        EXPECT_EQ(result.received, 3u);
        EXPECT_EQ(result.lastStatus, row.shown);
    }
}

TEST_F(PingTest, AnInterruptEndsTheRunAndTheWait) {
    const Host host = Read();
    echo = [&](std::size_t number, _VEXAPI_ECHO_RESULTS&) {
        isInterrupted = number == 2;
        return VX_UINT32{0};
    };
    const std::vector<PingResult> results = Run(PlanOf(host, 1000, 2, std::chrono::hours(1)));
    EXPECT_EQ(results[0].sent, 1u);
    EXPECT_EQ(results[1].sent, 1u);
    isInterrupted = false;
    sent.clear();
    std::thread interrupt([this] {
        std::this_thread::sleep_for(milliseconds(20));
        isInterrupted = true;
    });
    echo = nullptr;
    EXPECT_EQ(Run(PlanOf(host, 1000, 1, std::chrono::hours(1))).front().sent, 1u);
    interrupt.join();
}

TEST_F(PingTest, JsonOfARun) {
    echo = [](std::size_t number, _VEXAPI_ECHO_RESULTS& result) {
        result.EchoFailed = number % 2 == 0 ? 1 : 0; // all to the second target
        Put(result.EchoStatus, result.EchoFailed != 0 ? "No answer in time" : "Echo accepted");
        return VX_UINT32{0};
    };
    const nlohmann::json rows = Command({PORT}, 2).at("records");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].at("port"), PORT);
    EXPECT_EQ(rows[0].at("remote_port_name"), FIRST);
    EXPECT_EQ(rows[0].at("sent"), 2);
    EXPECT_EQ(rows[0].at("received"), 2);
    EXPECT_EQ(rows[0].at("lost_percent"), 0.0);
    EXPECT_LE(rows[0].at("minimum_milliseconds"), rows[0].at("mean_milliseconds"));
    EXPECT_LE(rows[0].at("mean_milliseconds"), rows[0].at("maximum_milliseconds"));
    EXPECT_EQ(rows[1].at("remote_port_name"), SECOND);
    EXPECT_EQ(rows[1].at("received"), 0);
    EXPECT_EQ(rows[1].at("lost_percent"), 100.0);
    EXPECT_TRUE(rows[1].at("mean_milliseconds").is_null()); // of no answer
    EXPECT_EQ(rows[1].at("last_failure"), "No answer in time");
    EXPECT_EQ(messages, Texts{PORT + ": " + SECOND + ": 2 of 2 frames lost: No answer in time"});
    const std::string first = std::string("pinging ") + FIRST, second = std::string("pinging ") + SECOND;
    EXPECT_EQ(progress, (Texts{first + ": 0 of 0 answered", first + ": 1 of 1 answered", second + ": 0 of 0 answered",
                               second + ": 0 of 1 answered", first + ": 1 of 1 answered", first + ": 2 of 2 answered",
                               second + ": 0 of 1 answered", second + ": 0 of 2 answered"}));
}

TEST_F(PingTest, NamesThatAreNoTargets) {
    EXPECT_EQ(Command({PORT, SECOND}, 1).at("records").size(), 1u);
    EXPECT_EQ(sent, Texts{SECOND + std::string(" 2")});
    sent.clear();
    EXPECT_EQ(Command({PORT, "21000a0b0c0d00ff"}, 1).at("records").size(), 1u); // an initiator
    EXPECT_EQ(sent, Texts{"21:00:0a:0b:0c:0d:00:ff 2"});
}

TEST_F(PingTest, APortWithoutRemotePorts) {
    Tree().AddPort();
    EXPECT_THROW(Command({"FC_21:00:0a:0b:0c:0d:00:02"}, 1), Failure);
    EXPECT_TRUE(sent.empty());
}

} // namespace
