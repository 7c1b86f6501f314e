/// @file
/// Echoes: what they send and to whom, and what they make of every answer.
#include "LinkServices.h"
#include "LinkTest.h"

namespace {

using namespace linux_test;

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

} // namespace
