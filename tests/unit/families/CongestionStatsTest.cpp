#include "CongestionTest.h"

using namespace family_test;

namespace {

constexpr char LIST[] = "PortFWCMStatsList";
constexpr char TARGET_LIST[] = "TargetFWCMStatsList";

std::string Block(const CongestionCommand& command, const Format& format, const std::vector<std::string>& lines) {
    return format.Block(command.structure, command.field, command.isTarget ? TARGET_LIST : LIST, TextOfLines(lines));
}

class CongestionStatsTest : public CongestionTest {
protected:
    void ExpectReport(const CongestionCommand& command, const std::vector<std::string>& lines) const {
        for (const Format& format : FORMATS) {
            const CommandRun run = RunCongestion(command, format);
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Block(command, format, lines));
            EXPECT_FALSE(run.wasLeftRedirected);
        }
    }
    /// Expects a report with names only.
    void ExpectNamesOnly(const CongestionCommand& command) const {
        ExpectReport(command, command.isTarget ? targetNames : portNames);
    }
};

class FirstGenerationTest : public CongestionStatsTest {
protected:
    FirstGenerationTest() {
        port->FeatureFlags = FIRST_GENERATION;
        port->ScmEventFlags = 7;
        port->ScmLinkEventType = 3;
        port->ScmLinkEventThreshold = 4294967295u;
        port->ScmDeliveryReason = 15;
        port->ScmCongEventType = 2;
        port->ScmCongEventPeriod = 4294967294u;
        port->ScmCongSeverity = 0xF7;
        for (VX_UINT32 i = 0; i < 6; ++i) {
            port->ScmLinkCounters[i] = 4294967290u + i;
        }
        port->ScmAlarmCount = 4294967295u;
        port->ScmWarningCount = 21;
        // `port stats` has different counters.
        port->LinkFailureCount = 1;
        port->InvalidCrcCount = 2;

        target->ScmEventFlags = 14;
        target->ScmLinkEventType = 6;
        target->ScmLinkEventThreshold = 30000;
        target->ScmDeliveryReason = 2;
        target->ScmPeerCongEventType = 15;
        target->ScmPeerCongEventPeriod = 20000;
        Fake().onGetPortStatisticsFC = [](VX_UINT32, VX_UINT32, VX_PORT_SELECTOR*, __STATISTICS* statistics) {
            Chatter();
            const __STATISTICS none{};
            EXPECT_EQ(std::memcmp(statistics, &none, sizeof none), 0);
            // In the order of the record, counting down from 2^32 - 1.
            VX_UINT32 value = 4294967295u;
            for (VX_UINT32* counter :
                 {&statistics->LinkFailureCount, &statistics->LossOfSyncCount, &statistics->LossOfSignalCount,
                  &statistics->PrimSeqProtoErrCount, &statistics->InvalidTxWordCount, &statistics->InvalidCrcCount,
                  &statistics->DeliveryFailureCount, &statistics->DeliveryTimeoutCount,
                  &statistics->DeliveryUnableToRouteCount, &statistics->DeliveryDevSpecCount,
                  &statistics->PeerCongClearCount, &statistics->PeerCongLostCreditCount,
                  &statistics->PeerCongCreditStallCount, &statistics->PeerCongOversubscriptionCount,
                  &statistics->PeerCongDevSpecCount, &statistics->LinkUnknownEventCount,
                  &statistics->LinkDevSpecCount}) {
                *counter = value--;
            }
            return 0u;
        };
    }

    std::vector<std::string> portLines =
        Joined(portNames, {
                              "Congestion Notification: Congestion, Delivery, Link Integrity",
                              "Link Event Type: Loss Of Signal",
                              "Link Event Threshold: 4294967295 (ms)",
                              "Link Failure Count: 4294967290",
                              "Loss Of Sync Count: 4294967291",
                              "Loss Of Signal Count: 4294967292",
                              "Primitive Sequence Protocol Error Count: 4294967293",
                              "Invalid Transmission Word Count: 4294967294",
                              "Invalid CRC Count: 4294967295",
                              "Delivery Notification: Device Specific",
                              "Congestion Event Type: Credit Stall",
                              "Congestion Event Period: 4294967294 (ms)",
                              "Congestion Severity: Alarm",
                              "Congestion Alarm Count: 4294967295",
                              "Congestion Warning Count: 21",
                          });
};

TEST_F(FirstGenerationTest, ReportsAPort) {
    ExpectReport(PORT_STATISTICS, portLines);
    // Everything is in the port's record.
    EXPECT_EQ(PortCalls(), (Calls{Call("IsFWCMFeatureEnabled")}));
}

/// 17 members in the record's order, from 4294967295 downwards: `LinkFailureCount` is ...295, `LinkDevSpecCount`,
/// the last, ...279.
TEST_F(FirstGenerationTest, ReportsATarget) {
    ExpectReport(TARGET_STATISTICS,
                 Joined(targetNames, {
                                         "Congestion Notification: Delivery, Link Integrity, Peer Congestion",
                                         "Link Event Type: Invalid CRC",
                                         "Link Event Threshold: 30000 (ms)",
                                         "Link Failure Count: 4294967295",
                                         "Link Unknown Event Count: 4294967280",
                                         "Loss Of Sync Count: 4294967294",
                                         "Loss Of Signal Count: 4294967293",
                                         "Link Device Specific Event Count: 4294967279",
                                         "Primitive Sequence Protocol Error Count: 4294967292",
                                         "Invalid Transmission Word Count: 4294967291",
                                         "Invalid CRC Count: 4294967290",
                                         "Delivery Notification: Unable To Route",
                                         "Delivery Failure Unknown Count: 4294967289",
                                         "Delivery Timeout Count: 4294967288",
                                         "Delivery Unable To Route Count: 4294967287",
                                         "Delivery Failure Device Specific Count: 4294967286",
                                         "Peer Congestion Event Type: Device Specific",
                                         "Peer Congestion Event Period: 20000 (ms)",
                                         "Peer Congestion Clear Count: 4294967285",
                                         "Peer Congestion Lost Credit Count: 4294967284",
                                         "Peer Congestion Credit Stall Count: 4294967283",
                                         "Peer Congestion Oversubscription Count: 4294967282",
                                         "Peer Congestion Device Specific Count: 4294967281",
                                     }));
    EXPECT_EQ(PortCalls(),
              (Calls{Call("IsFWCMFeatureEnabled"), Call("GetPortStatisticsFC", "0, 2, 50:00:0a:0b:0c:0d:01:01")}));
}

/// Texts specific to targets: reason 15 reads "Reserved", and bit 0 of the flags is ignored.
TEST_F(FirstGenerationTest, WordsATargetOtherwise) {
    target->ScmDeliveryReason = 15;
    target->ScmEventFlags = 1;
    const std::string text = BlockText(RunCongestion(TARGET_STATISTICS, TEXT).output);
    EXPECT_NE(text.find("      Delivery Notification: Reserved\n"), std::string::npos);
    EXPECT_NE(text.find("      Target Number: 65535\n\n      Link Event Type: Invalid CRC\n"), std::string::npos);
}

TEST_F(FirstGenerationTest, RunsOnBehindAReservedSeverity) {
    port->ScmCongSeverity = 5;
    const std::string text = BlockText(RunCongestion(PORT_STATISTICS, TEXT).output);
    EXPECT_NE(text.find("      Congestion Event Period: 4294967294 (ms)\n"
                        "Reserved      Congestion Alarm Count: 4294967295\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(text.find("Congestion Severity"), std::string::npos);
}

/// 2^32 + 5 has the low 32 bits 5, and 2^64 - 1 has 4294967295.
TEST_F(FirstGenerationTest, CutsAlarmsAndWarnings) {
    port->ScmAlarmCount = 4294967301u;
    port->ScmWarningCount = 18446744073709551615u;
    portLines[portLines.size() - 2] = "Congestion Alarm Count: 5";
    portLines[portLines.size() - 1] = "Congestion Warning Count: 4294967295";
    ExpectReport(PORT_STATISTICS, portLines);
    port->ScmAlarmCount = 4294967296u;
    portLines[portLines.size() - 2] = "Congestion Alarm Count: 0";
    ExpectReport(PORT_STATISTICS, portLines);
}

TEST_F(FirstGenerationTest, NamesTheStateOfThePort) {
    for (int state = 0; state <= 0xFF; ++state) {
        port->PortState = static_cast<VX_UINT8>(state);
        portLines[3] = std::string("Port State: ") + (state == 1 ? "Online" : state == 3 ? "Offline" : "Unknown");
        ASSERT_EQ(BlockText(RunCongestion(PORT_STATISTICS, TEXT).output), TextOfLines(portLines));
    }
}

TEST_F(FirstGenerationTest, FailsWithoutATargetsStatistics) {
    for (const VX_UINT32 status : {1u, 0x20000075u}) {
        Fake().Return("VEXAPI_GetPortStatisticsFC", status);
        ExpectFailure(TARGET_STATISTICS, RC_STATS_READ_FAILED, "Failed, Statistics read error",
                      {Call("IsFWCMFeatureEnabled"), Call("GetPortStatisticsFC", "0, 2, 50:00:0a:0b:0c:0d:01:01")});
    }
}

TEST_F(FirstGenerationTest, NeedsTheLogForATargetsStatistics) {
    NoFiles files;
    Fake().onIsFWCMFeatureEnabled = [&](VX_PORT_HANDLE*, VX_UINT8* enabled) {
        files.Begin();
        *enabled = 1;
        return 0u;
    };
    const CommandRun run = RunCongestion(TARGET_STATISTICS, XML);
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, FailureOf(TARGET_STATISTICS, XML, "Failed, File not found"));
    EXPECT_EQ(PortCalls(), (Calls{Call("IsFWCMFeatureEnabled")}));
}

class SecondGenerationTest : public CongestionStatsTest {
protected:
    SecondGenerationTest() {
        nodes = {PortNode(), TargetNode()};
        Fill(nodes[0]);
    }
    const Calls calls = {Call("IsFWCMFeatureEnabled"), Call("GetSCMRStatisticsList"),
                         "VEXAPI_FreeSCMRStatisticsList()"};
};

/// 26 counters in the record's order, from 2^64 - 1 = ...551615 downwards: `LinkUncorFecCount`, the last, is ...590.
TEST_F(SecondGenerationTest, ReportsAPort) {
    ExpectReport(PORT_STATISTICS, Joined(portNames, {
                                                        "-----------------------------------",
                                                        "Congestion Mitigation",
                                                        "-----------------------------------",
                                                        "Congestion Alarm Count: 18446744073709551615",
                                                        "Congestion Warning Count: 18446744073709551614",
                                                        "Cleared Congestion Count: 18446744073709551613",
                                                        "Throttled Up Count: 18446744073709551611",
                                                        "Throttled Down Count: 18446744073709551612",
                                                        "Bottomed Out Count: 18446744073709551609",
                                                        "Returned Busy Count: 18446744073709551610",
                                                        "-----------------------------------",
                                                        "Rx Fabric Performance Impact ",
                                                        "Notifications",
                                                        "-----------------------------------",
                                                        "Link Failure Count: 18446744073709551608",
                                                        "Link Unknown Event Count: 18446744073709551607",
                                                        "Loss Of Sync Count: 18446744073709551606",
                                                        "Loss Of Signal Count: 18446744073709551605",
                                                        "Link Device Specific Event Count: 18446744073709551601",
                                                        "Primitive Sequence Protocol Error Count: 18446744073709551604",
                                                        "Invalid Transmission Word Count: 18446744073709551603",
                                                        "Invalid CRC Count: 18446744073709551602",
                                                        "Link Uncorrectable FEC Count: 18446744073709551590",
                                                        "Delivery Failure Unknown Count: 18446744073709551600",
                                                        "Delivery Timeout Count: 18446744073709551599",
                                                        "Delivery Unable To Route Count: 18446744073709551598",
                                                        "Delivery Failure Device Specific Count: 18446744073709551597",
                                                        "Congestion Clear Count: 18446744073709551596",
                                                        "Congestion Lost Credit Count: 18446744073709551595",
                                                        "Congestion Credit Stall Count: 18446744073709551594",
                                                        "Congestion Oversubscription Count: 18446744073709551593",
                                                        "Congestion Device Specific Count: 18446744073709551592",
                                                    }));
    EXPECT_EQ(PortCalls(), calls);
    EXPECT_EQ(released, 2); // once in each format
}

TEST_F(SecondGenerationTest, ReportsATarget) {
    nodes = {PortNode(), Node{}, TargetNode()};
    Fill(nodes[2]);
    ExpectReport(TARGET_STATISTICS,
                 Joined(targetNames, {
                                         "-----------------------------------",
                                         "Congestion Mitigation",
                                         "-----------------------------------",
                                         "Cleared Congestion Count: 18446744073709551613",
                                         "Throttled Up Count: 18446744073709551611",
                                         "Throttled Down Count: 18446744073709551612",
                                         "Bottomed Out Count: 18446744073709551609",
                                         "Returned Busy Count: 18446744073709551610",
                                         "-----------------------------------",
                                         "Rx Fabric Performance Impact ",
                                         "Notifications",
                                         "-----------------------------------",
                                         "Link Failure Count: 18446744073709551608",
                                         "Link Unknown Event Count: 18446744073709551607",
                                         "Loss Of Sync Count: 18446744073709551606",
                                         "Loss Of Signal Count: 18446744073709551605",
                                         "Link Device Specific Event Count: 18446744073709551601",
                                         "Primitive Sequence Protocol Error Count: 18446744073709551604",
                                         "Invalid Transmission Word Count: 18446744073709551603",
                                         "Invalid CRC Count: 18446744073709551602",
                                         "Link Uncorrectable FEC Count: 18446744073709551590",
                                         "Congestion Clear Count: 18446744073709551596",
                                         "Congestion Lost Credit Count: 18446744073709551595",
                                         "Congestion Credit Stall Count: 18446744073709551594",
                                         "Congestion Oversubscription Count: 18446744073709551593",
                                         "Congestion Device Specific Count: 18446744073709551592",
                                         "PUN Count: 18446744073709551591",
                                     }));
    EXPECT_EQ(PortCalls(), calls);
    EXPECT_EQ(released, 2);
}

TEST_F(SecondGenerationTest, WinsOverTheFirst) {
    port->FeatureFlags = FIRST_GENERATION | SECOND_GENERATION;
    RunCongestion(PORT_STATISTICS, XML);
    EXPECT_EQ(PortCalls(), calls);
    RunCongestion(TARGET_STATISTICS, XML);
    EXPECT_EQ(PortCalls(), calls);
}

TEST_F(SecondGenerationTest, ShowsTheSecondNodeForAPortWithoutAHead) {
    nodes = {Node{}, TargetNode(), PortNode()};
    nodes[1].AlarmCount = 77;
    EXPECT_NE(RunCongestion(PORT_STATISTICS, TEXT).output.find("Congestion Alarm Count: 77\n"), std::string::npos);
    EXPECT_EQ(released, 1);
}

TEST_F(SecondGenerationTest, ShowsNamesOnlyWithoutANode) {
    const TraceLog log("4");
    nodes = {TargetNode()}; // a head that is not the port's, and none after it
    ExpectNamesOnly(PORT_STATISTICS);
    ExpectNamesOnly(TARGET_STATISTICS); // even though the head has the target's names
    nodes = {PortNode()};
    ExpectNamesOnly(TARGET_STATISTICS);
    EXPECT_EQ(released, 6);
    const std::string noPort = "DEBUG: PhysicalPortSCMStatsCmdsProcessor::DisplayPortSCMStatsV2: "
                               "No matching physical port found in SCM V2 stats";
    const std::string noTarget = "DEBUG: FCTargetSCMStatsCmdsProcessor::DisplayTargetSCMStatsV2: "
                                 "No matching target found in SCM V2 stats";
    EXPECT_EQ(TraceLog::Lines(), (std::vector<std::string>{noPort, noPort, noTarget, noTarget, noTarget, noTarget}));
}

TEST_F(SecondGenerationTest, FailsWithoutAList) {
    const Calls asked = {Call("IsFWCMFeatureEnabled"), Call("GetSCMRStatisticsList")};
    for (const CongestionCommand* command : {&PORT_STATISTICS, &TARGET_STATISTICS}) {
        nodes = {PortNode()};
        for (const VX_UINT32 status : {1u, 118u, 0x20000075u}) {
            Fake().Return("VEXAPI_GetSCMRStatisticsList", status);
            ExpectFailure(*command, RC_STATS_READ_FAILED, "Failed, Statistics read error", asked);
        }
        Fake().Return("VEXAPI_GetSCMRStatisticsList", 0);
        nodes.clear();
        ExpectFailure(*command, RC_STATS_READ_FAILED, "Failed, Statistics read error", asked);
    }
    EXPECT_EQ(released, 0);
}

TEST_F(SecondGenerationTest, NeedsTheLogForTheList) {
    for (const CongestionCommand* command : {&PORT_STATISTICS, &TARGET_STATISTICS}) {
        NoFiles files;
        Fake().onIsFWCMFeatureEnabled = [&](VX_PORT_HANDLE*, VX_UINT8* enabled) {
            files.Begin();
            *enabled = 1;
            return 0u;
        };
        const CommandRun run = RunCongestion(*command, XML);
        EXPECT_EQ(run.code, RC_FILE_ERROR);
        EXPECT_EQ(run.output, FailureOf(*command, XML, "Failed, File not found"));
        EXPECT_EQ(PortCalls(), (Calls{Call("IsFWCMFeatureEnabled")}));
    }
}

/// A second document follows the report, and its code is the command's result.
TEST_F(SecondGenerationTest, TellsAFailingReleaseInASecondDocument) {
    nodes = {PortNode()};
    for (const Format& format : FORMATS) {
        const std::string report = Block(TARGET_STATISTICS, format, targetNames);
        Fake().Return("VEXAPI_FreeSCMRStatisticsList", 0);
        const std::string portReport = RunCongestion(PORT_STATISTICS, format).output;
        for (const VX_UINT32 status : {1u, 118u}) {
            Fake().Return("VEXAPI_FreeSCMRStatisticsList", status);
            CommandRun run = RunCongestion(PORT_STATISTICS, format);
            EXPECT_EQ(run.code, RC_STATS_CLEAR_FAILED);
            EXPECT_EQ(run.output,
                      portReport + FailureOf(PORT_STATISTICS, format, "Failed, Statistics list clear error"));
            run = RunCongestion(TARGET_STATISTICS, format);
            EXPECT_EQ(run.code, RC_STATS_CLEAR_FAILED);
            EXPECT_EQ(run.output, report + FailureOf(TARGET_STATISTICS, format, "Failed, Statistics list clear error"));
            EXPECT_EQ(PortCalls(), calls);
        }
    }
}

TEST_F(SecondGenerationTest, TellsALogThatCantBeOpenedForTheReleaseInASecondDocument) {
    nodes = {PortNode()};
    for (const CongestionCommand* command : {&PORT_STATISTICS, &TARGET_STATISTICS}) {
        const std::string report = RunCongestion(*command, XML).output;
        const auto list = Fake().onGetSCMRStatisticsList;
        NoFiles files;
        Fake().onGetSCMRStatisticsList = [&](VX_PORT_HANDLE* handle, Node** head) {
            files.Begin();
            return list(handle, head);
        };
        const CommandRun run = RunCongestion(*command, XML);
        Fake().onGetSCMRStatisticsList = list;
        EXPECT_EQ(run.code, RC_FILE_ERROR);
        EXPECT_EQ(run.output, report + FailureOf(*command, XML, "Failed, File not found"));
        EXPECT_EQ(PortCalls(), (Calls{Call("IsFWCMFeatureEnabled"), Call("GetSCMRStatisticsList")}));
    }
}

class CongestionClearTest : public CongestionTest {};

TEST_F(CongestionClearTest, ClearsTheTargets) {
    Fake().Succeed({"SANCongMgmtResetStatistics"});
    port->FeatureFlags = FIRST_GENERATION | SECOND_GENERATION;
    for (const Format& format : FORMATS) {
        const CommandRun run = RunCongestion(PORT_CLEAR, format);
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, format.Flat("FWCMStatisticsClear", {{"Message", "Success"}}));
        EXPECT_EQ(PortCalls(), (Calls{Call("IsFWCMFeatureEnabled"), Call("SANCongMgmtResetStatistics")}));
    }
}

TEST_F(CongestionClearTest, TellsWhyItCant) {
    static constexpr struct {
        VX_UINT32 status;
        ResultCode code;
        const char* message;
    } CASES[] = {
        {118, RC_UNSUPPORTED_FW, NO_FIRMWARE},    {117, RC_LIBRARY_FAILED, UNKNOWN},
        {119, RC_LIBRARY_FAILED, UNKNOWN},        {1, RC_LIBRARY_FAILED, UNKNOWN},
        {0x20000076, RC_LIBRARY_FAILED, UNKNOWN}, {0xFFFFFFFF, RC_LIBRARY_FAILED, UNKNOWN},
    };
    for (const auto& row : CASES) {
        Fake().Return("VEXAPI_SANCongMgmtResetStatistics", row.status);
        ExpectFailure(PORT_CLEAR, row.code, row.message,
                      {Call("IsFWCMFeatureEnabled"), Call("SANCongMgmtResetStatistics")});
    }
}

TEST_F(CongestionClearTest, NeedsTheLog) {
    NoFiles files;
    Fake().onIsFWCMFeatureEnabled = [&](VX_PORT_HANDLE*, VX_UINT8* enabled) {
        files.Begin();
        *enabled = 1;
        return 0u;
    };
    const CommandRun run = RunCongestion(PORT_CLEAR, XML);
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, FailureOf(PORT_CLEAR, XML, "Failed, File not found"));
    EXPECT_EQ(PortCalls(), (Calls{Call("IsFWCMFeatureEnabled")}));
}

/// `clearcli` has no usage, unlike `getcli`.
TEST_F(CongestionClearTest, HasNoUsage) {
    EXPECT_EQ(Run("-t port -s scmstats clearcli ?").output, "");
    EXPECT_EQ(Run("-t port -s scmstats clearcli").output, FailureOf(PORT_CLEAR, TEXT, "Failed, Invalid parameter"));
    EXPECT_EQ(Run("-t port -s scmstats getcli ?").output, "Usage: get [port identifier]\r\n");
}

} // namespace
