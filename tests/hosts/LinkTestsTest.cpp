/// @file
/// Link tests with a scripted kernel: what they send, and what they make of every answer.
#include "LinkTests.h"
#include "Api.h"
#include "DiagnosticParameters.h"
#include "LinkServices.h"
#include "ScriptedKernel.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

using namespace linux_test;
namespace fs = std::filesystem;

constexpr VX_UINT32 UNSUPPORTED = 118;
constexpr VX_UINT32 LINK_DOWN = 130;
constexpr VX_UINT32 NO_SUCH_PORT = 0x200000FA;
constexpr VX_UINT32 NO_ANSWER = 0x200000FB;
constexpr VX_UINT32 REMOTE_PORT = 2;
constexpr VX_UINT32 FABRIC = 3;

constexpr char TARGET[] = "50:00:00:00:00:00:00:01";
constexpr char INITIATOR[] = "21:00:00:00:00:00:00:02";
constexpr char FABRIC_NAME[] = "10:00:00:00:00:00:00:ff";

Data operator+(Data left, const Data& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}
Data Word(std::uint32_t word) {
    return {static_cast<std::uint8_t>(word >> 24), static_cast<std::uint8_t>(word >> 16),
            static_cast<std::uint8_t>(word >> 8), static_cast<std::uint8_t>(word)};
}
Data Words(std::initializer_list<std::uint32_t> words) {
    Data bytes;
    for (const std::uint32_t word : words) {
        bytes = bytes + Word(word);
    }
    return bytes;
}
/// A number in the byte order of this machine.
Data Native(std::uint32_t word) {
    Data bytes(sizeof word);
    std::memcpy(bytes.data(), &word, sizeof word);
    return bytes;
}

/// A port in a fabric, 01:02:03, that sees a target, 01:05:00, and an initiator, 01:06:00.
class LinuxLinkTest : public testing::Test {
protected:
    void SetUp() override {
        std::string name = fs::temp_directory_path() / "link-XXXXXX";
        mRoot = mkdtemp(name.data());
        Host("port_name", "0x2100000000000001");
        Host("port_state", "Online");
        Host("port_id", "0x010203");
        Host("port_type", "NPort (fabric via point-to-point)");
        Host("fabric_name", "0x10000000000000ff");
        Host("maxframe_size", "2048 bytes");
        AddRemotePort("rport-0:0-1", "0x5000000000000001", "0x010500", "FCP Target");
        AddRemotePort("rport-0:0-2", "0x2100000000000002", "0x010600", "FCP Initiator");
        AddRemotePort("rport-1:0-3", "0x5000000000000003", "0x010700", "FCP Target"); // another port's
        setenv("VEXAPI_SYSFS_ROOT", mRoot.c_str(), 1);
        ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
        host::SetKernel(&mKernel);
        mHandle = VEXAPI_GetAdapterList()->pHead->pPhyPortList->pHead->pProtocolList->pHead->PortHandle;
    }

    void TearDown() override {
        VEXAPI_Uninitialize();
        EXPECT_TRUE(mKernel.openResult < 0 || mKernel.opened.size() == mKernel.closed);
        host::SetKernel(nullptr);
        fs::remove_all(mRoot);
    }

    void Write(const std::string& path, const char* text) const {
        fs::create_directories((mRoot / "sys/class" / path).parent_path());
        std::ofstream(mRoot / "sys/class" / path) << text << '\n';
    }
    void Host(const char* attribute, const char* text) const { Write(std::string("fc_host/host0/") + attribute, text); }
    void Remote(const std::string& name, const char* attribute, const char* text) const {
        Write("fc_remote_ports/" + name + '/' + attribute, text);
    }
    void AddRemotePort(const std::string& name, const char* portName, const char* id, const char* roles) const {
        Remote(name, "port_name", portName);
        Remote(name, "port_id", id);
        Remote(name, "roles", roles);
        Remote(name, "port_state", "Online");
        Remote(name, "maxframe_size", "2048 bytes");
    }
    void Remove(const std::string& name) const { fs::remove_all(mRoot / "sys/class/fc_remote_ports" / name); }

    _VEXAPI_ECHO_RESULTS Echo(const char* name = TARGET, VX_UINT32 type = REMOTE_PORT) {
        _VEXAPI_ECHO_RESULTS result{};
        Call([&] { return VEXAPI_DiagnosticsEchoElsTest(&mHandle, name, 1, 0, type, &result); });
        return result;
    }
    /// The text in the buffer.
    std::string Ping(VX_UINT32 count, VX_UINT32 stopOnError, const char* name = TARGET) {
        char buffer[256] = {};
        mAnswered = 0;
        Call([&] {
            return VEXAPI_DiagnosticsFCPingTest(&mHandle, name, count, stopOnError, &mAnswered, buffer, sizeof buffer);
        });
        return buffer;
    }
    std::string Transport(VX_UINT32 testType, VX_UINT32 count = 1) {
        char buffer[256] = {};
        Call([&] {
            return VEXAPI_DiagnosticsCTCommand(&mHandle, TARGET, count, 0, &mAnswered, buffer, sizeof buffer, testType);
        });
        return buffer;
    }
    Data ReadParameters(VX_UINT32 size = 508) {
        Data buffer(size, 0xEE);
        Call([&] { return VEXAPI_DiagnosticsRDPTest(&mHandle, buffer.data(), &size); });
        buffer.resize(size);
        return buffer;
    }
    /// What the library has written since the last call.
    std::string Output() { return std::exchange(mOutput, ""); }

    fs::path mRoot;
    ScriptedKernel mKernel;
    VX_PORT_HANDLE mHandle{};
    VX_UINT32 mStatus = 0;
    VX_UINT32 mAnswered = 0;

private:
    template <class Function> void Call(Function function) {
        testing::internal::CaptureStdout();
        mStatus = function();
        mOutput += testing::internal::GetCapturedStdout();
    }

    std::string mOutput;
};

/* What is sent. */

TEST_F(LinuxLinkTest, AnEchoGoesToTheNodeOfTheRemotePort) {
    mKernel.step = 1'600'000; // two readings of the clock are 1.6 ms apart
    for (const auto& [name, node] : {std::pair{TARGET, "rport-0:0-1"}, {INITIATOR, "rport-0:0-2"}}) {
        const _VEXAPI_ECHO_RESULTS result = Echo(name);
        EXPECT_EQ(mStatus, 0u);
        EXPECT_EQ(result.EchoFailed, 0u);
        EXPECT_EQ(result.FrameSent, 1u);
        EXPECT_EQ(result.FrameReceived, 1u);
        EXPECT_EQ(result.ResponseLength, 1024u);
        EXPECT_EQ(result.ResponseTime, 2u); // 1.6 ms, rounded
        EXPECT_STREQ(result.EchoStatus, "Echo accepted");
        const ScriptedKernel::Request& request = mKernel.requests.back();
        EXPECT_EQ(request.node, node);
        EXPECT_EQ(request.code, 0x40000001u);
        EXPECT_EQ(request.fields, Data({0x10}) + Data(15));
        EXPECT_EQ(request.payload.size(), 1024u);
        EXPECT_EQ(Data(request.payload.begin(), request.payload.begin() + 4), Data({0x10, 0, 0, 0}));
        EXPECT_GT(mKernel.timeout, 0u);
        EXPECT_LE(mKernel.timeout, 30'000u);
    }
    EXPECT_EQ(Output(), "");
}

TEST_F(LinuxLinkTest, EveryFrameHasOtherData) {
    Ping(50, 1);
    EXPECT_EQ(mKernel.opened.size(), 1u);
    ASSERT_EQ(mKernel.requests.size(), 50u);
    for (std::size_t i = 0; i < 50; ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            EXPECT_NE(mKernel.requests[i].payload, mKernel.requests[k].payload);
        }
    }
}

TEST_F(LinuxLinkTest, AFrameFitsBothPorts) {
    struct Row {
        const char *own, *remote;
        std::size_t size;
    };
    // A word of the service, then data; 256 is the least that a port takes. 514 isn't a number of words.
    for (const Row& row : {Row{"2048 bytes", "512 bytes", 512}, Row{"512 bytes", "2112 bytes", 512},
                           Row{"514 bytes", "2112 bytes", 512}, Row{"0 bytes", "2048 bytes", 256},
                           Row{"2048 bytes", "unknown", 256}, Row{"4294967295 bytes", "2112 bytes", 1024}}) {
        Host("maxframe_size", row.own);
        Remote("rport-0:0-1", "maxframe_size", row.remote);
        host::EndLinkTests();
        EXPECT_EQ(Echo().ResponseLength, row.size);
        EXPECT_EQ(mKernel.requests.back().payload.size(), row.size);
    }
}

TEST_F(LinuxLinkTest, TheFabricIsReachedThroughThePort) {
    EXPECT_EQ(Echo(FABRIC_NAME, FABRIC).EchoFailed, 0u);
    EXPECT_EQ(mStatus, 0u);
    EXPECT_EQ(mKernel.requests.back().node, "fc_host0");
    EXPECT_EQ(mKernel.requests.back().code, 0x80000003u);
    EXPECT_EQ(mKernel.requests.back().fields, Data({0x10, 0xFF, 0xFF, 0xFD}) + Data(12));

    // A driver that shows the fabric controller as a remote port takes requests to it there.
    AddRemotePort("rport-0:0-9", "0x2001000000000009", "0xfffffd", "Fabric Port");
    host::EndLinkTests();
    EXPECT_EQ(Echo(FABRIC_NAME, FABRIC).EchoFailed, 0u);
    EXPECT_EQ(mKernel.requests.back().node, "rport-0:0-9");
    EXPECT_EQ(mKernel.requests.back().code, 0x40000001u);
}

TEST_F(LinuxLinkTest, WithoutADestinationNothingIsSent) {
    Echo("50:00:00:00:00:00:00:03"); // another port's
    EXPECT_EQ(mStatus, NO_SUCH_PORT);
    for (const char* name : {"", "50:00:00:00:00:00:00", "00:00:00:00:00:00:00:00", "5x:00:00:00:00:00:00:01"}) {
        Echo(name);
        EXPECT_EQ(mStatus, NO_SUCH_PORT) << name;
    }
    Echo(TARGET, FABRIC);
    EXPECT_EQ(mStatus, NO_SUCH_PORT);
    Host("port_type", "Point-To-Point (direct nport connection)"); // some drivers still show a name
    Echo(FABRIC_NAME, FABRIC);
    EXPECT_EQ(mStatus, NO_SUCH_PORT);
    Transport(1);
    EXPECT_EQ(mStatus, NO_SUCH_PORT);
    EXPECT_TRUE(mKernel.requests.empty());
    EXPECT_TRUE(mKernel.opened.empty());
}

TEST_F(LinuxLinkTest, OfTwoOfOneNameTheOnlineOneIsAsked) {
    AddRemotePort("rport-0:0-0", "0x5000000000000001", "0x010400", "FCP Target");
    Remote("rport-0:0-0", "port_state", "Not Present");
    Echo();
    EXPECT_EQ(mKernel.opened, std::vector<std::string>{"rport-0:0-1"});
}

/* What comes back. */

TEST_F(LinuxLinkTest, EveryAnswerHasItsWords) {
    struct Row {
        Reply reply;
        const char* text;
    };
    const auto rejected = [](std::uint8_t reason, std::uint8_t explanation) {
        return Reply{.length = 8, .status = 1, .answer = {1, 0, 0, 0, 0, reason, explanation, 0}};
    };
    const auto told = [](std::uint32_t status, std::uint8_t reason, std::uint8_t explanation = 0) {
        return Reply{.status = status, .reason = reason, .explanation = explanation};
    };
    const Row rows[] = {
        {rejected(0x0B, 0x00), "Rejected: command not supported"},
        {rejected(0x05, 0x00), "Rejected: logical busy"},
        {rejected(0x09, 0x2C), "Rejected: unable to perform request, request not supported"},
        {rejected(0x03, 0x1E), "Rejected: logical error, N_Port login required"},
        {rejected(0x0C, 0xEE), "Rejected: reason 0x0c, explanation 0xee"},
        {rejected(0x00, 0x00), "Rejected without a reason"},
        // Reported as an answer like any other; and without a payload.
        {{.length = 8, .answer = {1, 0, 0, 0, 0, 7, 0x2D, 0}}, "Rejected: protocol error, invalid payload length"},
        {told(1, 0x09, 0x2A), "Rejected: unable to perform request, unable to supply data"},
        {told(2, 0x01), "Frame rejected by the port: invalid D_ID"},
        {told(3, 0x1A), "Frame rejected by the fabric: fabric path not available"},
        {told(4, 0x03), "Busy: resource busy"},
        {told(6, 0x00), "Busy: the fabric"},
        {told(5, 0x00), "Kernel's status not understood: 5"},
        {{.length = 3, .answer = {2, 0, 0}}, "Answer too short: 3 bytes"},
        {{.length = 4, .answer = {2, 0, 0, 0}}, "Answer too short: 4 of 1024 bytes"},
        {{.length = 4, .answer = {0x55, 0, 0, 0}}, "Answer not understood: code 0x55"},
    };
    for (const Row& row : rows) {
        mKernel.Answer(row.reply);
        const _VEXAPI_ECHO_RESULTS result = Echo();
        EXPECT_EQ(mStatus, 0u);
        EXPECT_EQ(result.EchoFailed, 1u) << row.text;
        EXPECT_EQ(result.FrameSent, 1u);
        EXPECT_EQ(result.FrameReceived, 1u);
        EXPECT_STREQ(result.EchoStatus, row.text);
        EXPECT_EQ(Output(), std::string("vexapi linux: host0: ") + row.text + '\n');
    }
}

TEST_F(LinuxLinkTest, EveryRejectionFits) {
    host::Peer peer{&mKernel, 1, true, 0};
    for (unsigned reason = 0; reason < 256; ++reason) {
        for (unsigned explanation = 0; explanation < 256; ++explanation) {
            mKernel.Answer(Reply{.status = 1,
                                 .reason = static_cast<std::uint8_t>(reason),
                                 .explanation = static_cast<std::uint8_t>(explanation)});
            mKernel.requests.clear();
            mKernel.opened = {"rport-0:0-1"};
            ASSERT_LE(host::SendEcho(peer, 8).text.size(), host::MAX_OUTCOME_TEXT) << reason << ' ' << explanation;
        }
    }
    mKernel.opened.clear();
}

TEST_F(LinuxLinkTest, TheDataIsCompared) {
    struct Row {
        std::size_t at;
        const char* text;
    };
    for (const Row& row :
         {Row{4, "Answer altered at byte 4 of 1024"}, Row{1023, "Answer altered at byte 1023 of 1024"}}) {
        mKernel.Echo([&](Data& answer) { answer[row.at] ^= 0x10; });
        EXPECT_STREQ(Echo().EchoStatus, row.text);
    }
    mKernel.Echo([](Data& answer) { answer.resize(1020); });
    EXPECT_STREQ(Echo().EchoStatus, "Answer too short: 1020 of 1024 bytes");
    mKernel.Echo([](Data& answer) { answer.resize(1028); });
    EXPECT_STREQ(Echo().EchoStatus, "Answer too long: 1028 of 1024 bytes");
    // Lengths that lie.
    const auto told = [](std::uint32_t length) {
        return [=](const ScriptedKernel::Request& request, Reply& reply) {
            reply.answer = request.payload;
            reply.answer[0] = 2;
            reply.length = length;
            return 0;
        };
    };
    mKernel.script.push_back(told(0xFFFFFFFF));
    EXPECT_STREQ(Echo().EchoStatus, "Answer too long: 4294967295 of 1024 bytes");
    mKernel.Answer(Reply{.length = 1024, .answer = {2, 0, 0, 0}}); // nothing arrived but the first word
    EXPECT_STREQ(Echo().EchoStatus, "Answer altered at byte 4 of 1024");
}

TEST_F(LinuxLinkTest, TheKernelsAccountMayBeShort) {
    mKernel.Answer(Reply{.length = 1024, .size = 7});
    EXPECT_STREQ(Echo().EchoStatus, "The kernel's reply is incomplete");
    mKernel.Answer(Reply{.length = 8, .size = 8, .answer = {1, 0, 0, 0, 0, 5, 0, 0}});
    EXPECT_STREQ(Echo().EchoStatus, "Rejected: logical busy");
    mKernel.Answer(Reply{.result = 0x70000});
    EXPECT_STREQ(Echo().EchoStatus, "Failed in the driver: error");
    mKernel.Answer(Reply{.result = 0x30000});
    EXPECT_STREQ(Echo().EchoStatus, "Failed in the driver: timeout");
    mKernel.Answer(Reply{.result = INT32_MIN});
    EXPECT_STREQ(Echo().EchoStatus, "Not sent: the port can't be reached");
    mKernel.Answer(Reply{.result = -ETIMEDOUT, .size = 4});
    EXPECT_STREQ(Echo().EchoStatus, "No answer in time");
    // What the kernel gives up ends without an error.
    mKernel.Answer(Reply{});
    const _VEXAPI_ECHO_RESULTS result = Echo();
    EXPECT_STREQ(result.EchoStatus, "No answer in time");
    EXPECT_EQ(result.FrameSent, 1u);
    EXPECT_EQ(result.FrameReceived, 0u);
}

TEST_F(LinuxLinkTest, EveryErrorOfTheKernelHasItsWords) {
    struct Row {
        int error;
        VX_UINT32 status, sent;
        const char* text;
    };
    for (const Row& row : {
             Row{EPERM, UNSUPPORTED, 0, "Not sent: it needs root (CAP_SYS_RAWIO)"},
             Row{EINVAL, UNSUPPORTED, 0, "Not sent: the driver doesn't offer this request"},
             Row{EBADR, UNSUPPORTED, 0, "Not sent: the driver doesn't offer this request"},
             Row{ENOMSG, UNSUPPORTED, 0, "Not sent: the driver doesn't offer this request"},
             Row{ENOTTY, UNSUPPORTED, 0, "Not sent: the driver doesn't offer this request"},
             Row{ENOSYS, UNSUPPORTED, 0, "Not sent: the driver doesn't offer this request"},
             Row{EOPNOTSUPP, UNSUPPORTED, 0, "Not sent: the driver doesn't offer this request"},
             Row{ETIMEDOUT, 0, 1, "No answer in time"},
             Row{ECONNABORTED, 0, 1, "No answer: the exchange was aborted"},
             Row{EIO, 0, 0, "Not sent: the port can't be reached"},
             Row{EAGAIN, 0, 0, "Not sent: the port is busy"},
             Row{EBUSY, 0, 0, "Not sent: the port is busy"},
             Row{ENOMEM, 0, 0, "Not sent: Cannot allocate memory"},
             Row{ENODEV, 0, 0, "Not sent: the port is gone"},
             Row{ENXIO, 0, 0, "Not sent: the port is gone"},
         }) {
        mKernel.Fail(row.error);
        const _VEXAPI_ECHO_RESULTS result = Echo();
        EXPECT_EQ(mStatus, row.status) << row.text;
        EXPECT_EQ(result.EchoFailed, 1u);
        EXPECT_EQ(result.FrameSent, row.sent) << row.text;
        EXPECT_EQ(result.FrameReceived, 0u);
        EXPECT_STREQ(result.EchoStatus, row.text);
    }
}

/* Runs. */

TEST_F(LinuxLinkTest, APingCountsItsAnswers) {
    EXPECT_EQ(Ping(3, 1), "3 of 3 answered");
    EXPECT_EQ(mStatus, 0u);
    EXPECT_EQ(mAnswered, 3u);
    mKernel.Fail(ETIMEDOUT);
    mKernel.Fail(ETIMEDOUT);
    EXPECT_EQ(Ping(5, 0), "3 of 5 answered"); // two are lost
    EXPECT_EQ(Output(), "vexapi linux: host0: 3 of 3 answered\n"
                        "vexapi linux: host0: No answer in time\n"
                        "vexapi linux: host0: 3 of 5 answered\n");
    EXPECT_EQ(mStatus, NO_ANSWER);
    EXPECT_EQ(mAnswered, 3u);
    mKernel.requests.clear();
    mKernel.Fail(ETIMEDOUT);
    EXPECT_EQ(Ping(4, 1), "0 of 4 answered");
    EXPECT_EQ(mStatus, NO_ANSWER);
    EXPECT_EQ(mKernel.requests.size(), 1u);
    // What the next frame would meet too ends the run.
    mKernel.Fail(EPERM);
    EXPECT_EQ(Ping(4, 0), "0 of 4 answered");
    EXPECT_EQ(mStatus, UNSUPPORTED);
    EXPECT_EQ(mKernel.requests.size(), 2u);
}

TEST_F(LinuxLinkTest, ATargetGoesDownInTheMiddleOfARun) {
    mKernel.Echo([](Data&) {});
    mKernel.Echo([](Data&) {});
    mKernel.script.push_back([this](const ScriptedKernel::Request&, Reply&) {
        Remote("rport-0:0-1", "port_state", "Blocked");
        return 0; // without an answer
    });
    EXPECT_EQ(Ping(5, 0), "2 of 5 answered");
    EXPECT_EQ(mStatus, NO_ANSWER);
    EXPECT_EQ(mKernel.requests.size(), 3u); // nothing more is sent to a blocked port
    EXPECT_EQ(Output(), "vexapi linux: host0: No answer: the remote port is Blocked\n"
                        "vexapi linux: host0: Not sent: the remote port is Blocked\n"
                        "vexapi linux: host0: 2 of 5 answered\n");
    EXPECT_STREQ(Echo().EchoStatus, "Not sent: the remote port is Blocked");
    // It comes back, and then is given up: its node and its entry vanish between two frames.
    Remote("rport-0:0-1", "port_state", "Online");
    EXPECT_STREQ(Echo().EchoStatus, "Echo accepted");
    mKernel.Fail(ENODEV);
    EXPECT_STREQ(Echo().EchoStatus, "Not sent: the port is gone");
    EXPECT_EQ(mKernel.opened.size(), mKernel.closed);
    EXPECT_STREQ(Echo().EchoStatus, "Echo accepted");
    mKernel.script.push_back([this](const ScriptedKernel::Request&, Reply&) {
        Remove("rport-0:0-1");
        return ENXIO;
    });
    EXPECT_STREQ(Echo().EchoStatus, "Not sent: the remote port is gone");
    EXPECT_STREQ(Echo().EchoStatus, "Not sent: the port sees no such remote port");
    EXPECT_EQ(mStatus, NO_SUCH_PORT);
    // Back under another number.
    AddRemotePort("rport-0:0-7", "0x5000000000000001", "0x010500", "FCP Target");
    EXPECT_STREQ(Echo().EchoStatus, "Echo accepted");
    EXPECT_EQ(mKernel.opened.back(), "rport-0:0-7");
}

TEST_F(LinuxLinkTest, APortWithoutALinkSendsNothing) {
    Host("port_state", "Linkdown");
    EXPECT_EQ(Ping(5, 0), "0 of 5 answered");
    EXPECT_EQ(mStatus, LINK_DOWN);
    Echo(FABRIC_NAME, FABRIC);
    EXPECT_EQ(mStatus, LINK_DOWN);
    ReadParameters();
    EXPECT_EQ(mStatus, LINK_DOWN);
    EXPECT_TRUE(mKernel.opened.empty());
    EXPECT_NE(Output().find("host0: Not sent: the port is Linkdown\n"), std::string::npos);
}

volatile std::sig_atomic_t s_signals = 0;

TEST_F(LinuxLinkTest, AnInterruptEndsARun) {
    const auto before = std::signal(SIGINT, [](int) { s_signals = s_signals + 1; });
    s_signals = 0;
    mKernel.Echo([](Data&) {});
    mKernel.Echo([](Data&) { kill(getpid(), SIGINT); });
    EXPECT_EQ(Ping(60'000, 0), "2 of 60000 answered");
    EXPECT_EQ(mStatus, NO_ANSWER);
    EXPECT_EQ(s_signals, 0);
    EXPECT_NE(Output().find("host0: interrupted after 2 of 60000 frames\n"), std::string::npos);
    // A single frame leaves it to the caller.
    mKernel.Echo([](Data&) { kill(getpid(), SIGINT); });
    EXPECT_STREQ(Echo().EchoStatus, "Echo accepted");
    EXPECT_EQ(s_signals, 1);
    // A program that ignores it isn't interrupted.
    std::signal(SIGINT, SIG_IGN);
    mKernel.Echo([](Data&) { kill(getpid(), SIGINT); });
    EXPECT_EQ(Ping(3, 0), "3 of 3 answered");
    std::signal(SIGINT, before);
}

/* Where nothing can be sent. */

TEST_F(LinuxLinkTest, EveryNodeThatCantBeOpenedHasItsWords) {
    for (const auto& [error, text] : {std::pair{ENOSYS, "Not sent: the kernel has no bsg nodes (CONFIG_BLK_DEV_BSG)"},
                                      {EOPNOTSUPP, "Not sent: the driver offers no pass-through for this port"},
                                      {ENOENT, "Not sent: no node in /dev/bsg; udev or devtmpfs makes it"},
                                      {ENODEV, "Not sent: the file in /dev/bsg isn't the port's device"},
                                      {EACCES, "Not sent: it needs root"},
                                      {EPERM, "Not sent: it needs root"},
                                      {EMFILE, "Not sent: Too many open files"}}) {
        mKernel.openResult = -error;
        EXPECT_STREQ(Echo().EchoStatus, text);
        EXPECT_EQ(mStatus, UNSUPPORTED);
        Ping(3, 0);
        EXPECT_EQ(mStatus, UNSUPPORTED);
        Transport(1);
        EXPECT_EQ(mStatus, UNSUPPORTED);
        ReadParameters();
        EXPECT_EQ(mStatus, UNSUPPORTED);
        EXPECT_NE(Output().find(std::string("vexapi linux: host0: ") + text + '\n'), std::string::npos);
    }
    EXPECT_TRUE(mKernel.requests.empty());
}

TEST_F(LinuxLinkTest, NothingIsSentForACapturedTree) {
    host::SetKernel(nullptr); // this machine's
    Ping(3, 0);
    EXPECT_EQ(mStatus, UNSUPPORTED);
    EXPECT_EQ(Output(), "vexapi linux: host0: Not sent: the tree isn't that of this machine\n"
                        "vexapi linux: host0: 0 of 3 answered\n");
    Echo(FABRIC_NAME, FABRIC);
    EXPECT_EQ(mStatus, UNSUPPORTED);
    Transport(2);
    EXPECT_EQ(mStatus, UNSUPPORTED);
    ReadParameters();
    EXPECT_EQ(mStatus, UNSUPPORTED);
}

TEST_F(LinuxLinkTest, AHandleOfNoPortIsRefused) {
    mHandle = {};
    Echo();
    EXPECT_EQ(mStatus, 5u);
    Ping(1, 0);
    EXPECT_EQ(mStatus, 5u);
    Transport(1);
    EXPECT_EQ(mStatus, 5u);
    ReadParameters();
    EXPECT_EQ(mStatus, 5u);
}

/* The directory service. */

/// A CT_IU's header, and its data.
Data Directory(std::uint16_t code, const Data& data, std::uint8_t reason = 0, std::uint8_t explanation = 0) {
    return Data{1,
                0,
                0,
                0,
                0xFC,
                2,
                0,
                0,
                static_cast<std::uint8_t>(code >> 8),
                static_cast<std::uint8_t>(code),
                0,
                0,
                0,
                reason,
                explanation,
                0} +
           data;
}

TEST_F(LinuxLinkTest, ThePingAsksTheDirectoryForThePort) {
    mKernel.Answer(Directory(0x8002, Word(0x010500)));
    EXPECT_EQ(Transport(1), "1 of 1 answered");
    EXPECT_EQ(mStatus, 0u);
    const ScriptedKernel::Request& request = mKernel.requests.back();
    EXPECT_EQ(request.node, "fc_host0");
    EXPECT_EQ(request.code, 0x80000004u);
    // A byte, the address FFFFFCh, and the first three words of the payload as numbers.
    EXPECT_EQ(request.fields,
              Data({0, 0xFF, 0xFF, 0xFC}) + Native(0x01000000) + Native(0xFC020000) + Native(0x01210001));
    // Revision 1; directory service, name server; GID_PN with one word of answer; the port name.
    EXPECT_EQ(request.payload, Words({0x01000000, 0xFC020000, 0x01210001, 0, 0x50000000, 0x00000001}));

    AddRemotePort("rport-0:0-9", "0x2001000000000009", "0xfffffc", "Directory Server");
    host::EndLinkTests();
    mKernel.Answer(Directory(0x8002, Word(0x010500)));
    EXPECT_EQ(Transport(1), "1 of 1 answered");
    EXPECT_EQ(mKernel.requests.back().node, "rport-0:0-9");
    EXPECT_EQ(mKernel.requests.back().code, 0x40000002u);
    EXPECT_EQ(mKernel.requests.back().fields, Native(0x01000000) + Native(0xFC020000) + Native(0x01210001) + Data(4));
}

TEST_F(LinuxLinkTest, TheTraceAsksForTheFabricPorts) {
    mKernel.Answer(Directory(0x8002, Word(0x010500)));
    mKernel.Answer(Directory(0x8002, Words({0x20010000, 0x000000FF})));
    mKernel.Answer(Directory(0x8002, Words({0x20050000, 0x000000FF})));
    EXPECT_EQ(Transport(2), "1 of 1 answered: 010203, 20010000000000ff, 20050000000000ff, 010500");
    EXPECT_EQ(mStatus, 0u);
    ASSERT_EQ(mKernel.requests.size(), 3u);
    // GFPN_ID of both port ids, with two words of answer.
    EXPECT_EQ(mKernel.requests[1].payload, Words({0x01000000, 0xFC020000, 0x011C0002, 0, 0x010203}));
    EXPECT_EQ(mKernel.requests[2].payload, Words({0x01000000, 0xFC020000, 0x011C0002, 0, 0x010500}));
}

TEST_F(LinuxLinkTest, WhatTheDirectoryRejects) {
    struct Row {
        Data answer;
        const char* text;
    };
    for (const Row& row : {
             Row{Directory(0x8001, {}, 0x09, 0x02), "Rejected: unable to perform request, port name not registered"},
             Row{Directory(0x8001, {}, 0x0D, 0x00), "Rejected: server not available"},
             Row{Directory(0x8002, {}), "Answer too short: 16 bytes"},
             Row{Directory(0x8002, {0, 1, 5}), "Answer too short: 19 bytes"},
             Row{Data(15), "Answer too short: 15 bytes"},
             Row{Directory(0x8003, {}), "Answer not understood: code 0x8003"},
         }) {
        mKernel.Answer(row.answer);
        EXPECT_EQ(Transport(2), "0 of 1 answered");
        EXPECT_EQ(mStatus, NO_ANSWER);
        EXPECT_EQ(Output(),
                  std::string("vexapi linux: host0: ") + row.text + "\nvexapi linux: host0: 0 of 1 answered\n");
    }
}

TEST_F(LinuxLinkTest, NothingIsChangedInAFabric) {
    for (const VX_UINT32 test : {1u, 2u}) {
        for (int i = 0; i < 3; ++i) {
            mKernel.Answer(Directory(0x8002, Words({0, 0x010500})));
        }
        Transport(test);
        mKernel.script.clear();
    }
    EXPECT_GE(mKernel.requests.size(), 4u);
    for (const ScriptedKernel::Request& request : mKernel.requests) {
        EXPECT_EQ(request.payload[8], 1); // FC-GS: commands from 0200h on register something
    }
}

/* Diagnostic parameters. */

/// The payload of an acceptance, from descriptors in words.
Data Parameters(std::initializer_list<std::uint32_t> words) {
    return Words({0x02000000, static_cast<std::uint32_t>(4 * words.size())}) + Words(words);
}

TEST_F(LinuxLinkTest, TheFabricPortIsAskedForItsParameters) {
    mKernel.Answer(Parameters({0x00010001, 4, 0x07000100}));
    EXPECT_EQ(ReadParameters(), Words({12, 0x00010001, 4, 0x07000100}));
    EXPECT_EQ(mStatus, 0u);
    EXPECT_EQ(mKernel.requests.back().node, "fc_host0");
    EXPECT_EQ(mKernel.requests.back().code, 0x80000003u);
    EXPECT_EQ(mKernel.requests.back().fields, Data({0x18, 0xFF, 0xFF, 0xFE}) + Data(12));
    // One descriptor of 12 bytes: N_Port_ID, with the port that the fabric port is attached to.
    EXPECT_EQ(mKernel.requests.back().payload, Words({0x18000000, 12, 3, 4, 0x010203}));

    // If that rejects it, the controller may not.
    mKernel.Answer(Words({0x01000000, 0x000B0000}));
    mKernel.Answer(Parameters({0x00010001, 4, 0x07000100}));
    EXPECT_EQ(ReadParameters(), Words({12, 0x00010001, 4, 0x07000100}));
    EXPECT_EQ(mKernel.requests.back().fields, Data({0x18, 0xFF, 0xFF, 0xFD}) + Data(12));

    // Without an answer, one timeout is enough.
    mKernel.requests.clear();
    mKernel.Fail(ETIMEDOUT);
    ReadParameters();
    EXPECT_EQ(mStatus, NO_ANSWER);
    EXPECT_EQ(mKernel.requests.size(), 1u);
}

TEST_F(LinuxLinkTest, TheOnlyRemotePortOfALinkIsAskedForItsParameters) {
    Host("fabric_name", "0x0");
    const Data before = ReadParameters();
    EXPECT_EQ(mStatus, NO_SUCH_PORT);
    EXPECT_EQ(Output(), "vexapi linux: host0: Not sent: not one remote port at the other end, but 2\n");
    EXPECT_EQ(before, Data(508, 0xEE)); // untouched
    Remove("rport-0:0-2");
    AddRemotePort("rport-0:0-9", "0x2001000000000009", "0xfffffc", "Directory Server"); // isn't on the link
    mKernel.Answer(Words({0x01000000, 0x000B0000}));
    ReadParameters();
    EXPECT_EQ(mStatus, NO_ANSWER);
    EXPECT_EQ(Output(), "vexapi linux: host0: Rejected: command not supported\n");
    EXPECT_EQ(mKernel.requests.back().node, "rport-0:0-1");
    EXPECT_EQ(mKernel.requests.back().payload, Words({0x18000000, 12, 3, 4, 0x010500}));
}

TEST_F(LinuxLinkTest, ParametersAreCutToTheBuffer) {
    const Data answer = Parameters({0x00010005, 8, 1, 2}); // a list of 16 bytes
    for (VX_UINT32 size = 0; size <= 24; ++size) {
        mKernel.Answer(answer);
        const Data payload = ReadParameters(size);
        EXPECT_EQ(mStatus, 0u);
        EXPECT_EQ(payload, Data(answer.begin() + 4, answer.begin() + 4 + std::min<std::ptrdiff_t>(size, 20)));
    }
    // An answer without a list; one longer than a frame; a length that lies.
    mKernel.Answer(Words({0x02000000}));
    mKernel.Answer(Words({0x02000000}));
    ReadParameters();
    EXPECT_EQ(mStatus, NO_ANSWER);
    mKernel.Answer(Words({0x02000000}) + Data(4000, 7));
    EXPECT_EQ(ReadParameters(4000), Data(2108, 7)); // the largest frame but for its first word
    mKernel.Answer(Reply{.length = 0xFFFFFFFF, .answer = answer});
    EXPECT_EQ(ReadParameters(20), Data(answer.begin() + 4, answer.end()));
}

TEST_F(LinuxLinkTest, ModulesFrom16To64Gbps) {
    struct Row {
        std::uint32_t transceiver[3];
        std::uint32_t speed;
        double celsius, volts, milliamperes, transmitMilliwatts, receiveMilliwatts;
        unsigned gbps;
        bool isFec;
    };
    // FC-LS: 1/256 degree, 0.1 mV, 2 uA, 0.1 uW, 0.1 uW, flags. The flags are 8000h for FEC, 0040h for an SFP+ (bits 6
    // to 9 are 1), 0010h for optical, and the laser, 1 for short wave. The speeds are bits: 0400h 16, 0200h 32,
    // 0100h 64.
    const Row rows[] = {
        // 40.5 C is 10368, 2880h; 3.3 V 33000, 80E8h; 7.5 mA 3750, 0EA6h; 0.56 mW 5600, 15E0h; 0.4 mW 4000, 0FA0h.
        {{0x288080E8, 0x0EA615E0, 0x0FA00051}, 0x1C000400, 40.5, 3.3, 7.5, 0.56, 0.4, 16, false},
        // -5.25 C is -1344, FAC0h; 3.2 V 32000, 7D00h; 8 mA 4000, 0FA0h; 0.8 mW 8000, 1F40h; 0.65 mW 6500, 1964h.
        {{0xFAC07D00, 0x0FA01F40, 0x19648051}, 0x0E000200, -5.25, 3.2, 8, 0.8, 0.65, 32, true},
        // 55 C is 14080, 3700h; 3.35 V 33500, 82DCh; 6.8 mA 3400, 0D48h; 1.2 mW 12000, 2EE0h; 1 mW 10000, 2710h.
        {{0x370082DC, 0x0D482EE0, 0x27108051}, 0x07000100, 55, 3.35, 6.8, 1.2, 1, 64, true},
    };
    for (const Row& row : rows) {
        mKernel.Answer(Parameters({1, 4, 0x18000000, 0x00010000, 12, row.transceiver[0], row.transceiver[1],
                                   row.transceiver[2], 0x00010001, 4, row.speed, 0x00010006, 12, 32, 64, 412}));
        const Data payload = ReadParameters();
        const decoders::DiagnosticParameters read = decoders::DecodeRdpPayload(decoders::Bytes(payload));
        EXPECT_TRUE(read.isWhole);
        EXPECT_EQ(read.request, 0x18000000u);
        const decoders::RdpTransceiver module = read.transceiver.value();
        EXPECT_EQ(module.temperature, decoders::Celsius{row.celsius});
        EXPECT_EQ(module.voltage, decoders::Volts{row.volts});
        EXPECT_EQ(module.bias, decoders::Milliamperes{row.milliamperes});
        EXPECT_EQ(module.transmitPower, decoders::Milliwatts{row.transmitMilliwatts});
        EXPECT_EQ(module.receivePower, decoders::Milliwatts{row.receiveMilliwatts});
        EXPECT_EQ(module.laser, decoders::RdpLaser::SHORT_WAVE);
        EXPECT_TRUE(module.isOptical && module.areDiagnosticsValid && module.isSfpPlus);
        EXPECT_EQ(module.isFecActive, row.isFec);
        EXPECT_EQ(read.speed.value().operatingSpeed, row.gbps);
        EXPECT_EQ(read.bufferCredits.value().roundTripNanoseconds, 412u);
    }
}

/* The machine's nodes. */

TEST(LinuxSystemKernelTest, OnlyThePortsOwnDeviceIsOpened) {
    std::string name = fs::temp_directory_path() / "bsg-XXXXXX";
    const fs::path root = mkdtemp(name.data());
    fs::create_directories(root / "nodes");
    const auto classify = [&](const char* node, const char* device) {
        fs::create_directories(root / "class" / node);
        std::ofstream(root / "class" / node / "dev") << device << '\n';
    };
    host::SystemKernel kernel(root / "nodes", root / "class");
    EXPECT_EQ(kernel.Open("fc_host0"), -ENOSYS); // no class of such nodes
    classify("fc_host1", "248:1");
    EXPECT_EQ(kernel.Open("fc_host0"), -EOPNOTSUPP);
    EXPECT_EQ(kernel.Open("fc_host1"), -ENOENT);

    // What another could put in its place.
    std::ofstream(root / "nodes/fc_host1") << "a file";
    EXPECT_EQ(kernel.Open("fc_host1"), -ENODEV);
    for (const char* target : {"/dev/null", "/dev/missing", "fc_host1"}) {
        fs::remove_all(root / "nodes/fc_host1");
        fs::create_symlink(target, root / "nodes/fc_host1");
        EXPECT_EQ(kernel.Open("fc_host1"), -ENODEV) << target;
    }
    fs::remove_all(root / "nodes/fc_host1");
    fs::create_directory(root / "nodes/fc_host1");
    EXPECT_EQ(kernel.Open("fc_host1"), -ENODEV);
    fs::remove_all(root / "nodes/fc_host1");
    ASSERT_EQ(mkfifo((root / "nodes/fc_host1").c_str(), 0600), 0);
    EXPECT_EQ(kernel.Open("fc_host1"), -ENODEV); // without waiting for a reader

    // The folder itself; and a device of another number, /dev/null being 1:3.
    classify("null", "1:3");
    fs::create_symlink("/dev", root / "linked");
    EXPECT_EQ(host::SystemKernel(root / "linked", root / "class").Open("null"), -ENODEV);
    for (const char* device : {"1:5", "248:3", "1", "", "1:3:", "01:3"}) {
        classify("null", device);
        EXPECT_EQ(host::SystemKernel("/dev", root / "class").Open("null"), -ENODEV) << device;
    }
    classify("null", "1:3");
    host::SystemKernel devices("/dev", root / "class");
    const int descriptor = devices.Open("null");
    ASSERT_GE(descriptor, 0);
    EXPECT_NE(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
    sg_io_v4 exchange{};
    EXPECT_EQ(devices.Submit(descriptor, exchange), ENOTTY);
    devices.Close(descriptor);
    EXPECT_EQ(fcntl(descriptor, F_GETFD), -1);
    const std::uint64_t before = devices.Now();
    EXPECT_LT(before, devices.Now());
    fs::remove_all(root);
}

} // namespace
