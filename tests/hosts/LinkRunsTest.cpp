/// @file
/// Runs of frames: what is counted, what ends them, and where nothing can be sent.
#include "LinkTest.h"

#include <csignal>

namespace {

using namespace linux_test;

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

} // namespace
