#include "TargetTestBase.h"

using namespace family_test;

namespace {

constexpr char STRUCTURE[] = "TargetStatistics";
constexpr char FIELD[] = "Target Stats";
constexpr char LIST[] = "TargetStatsList";

class TargetStatsTest : public TargetTest {
protected:
    TargetStatsTest() {
        SetBytes(target->NodeName, {0x50, 0x0a, 0x09, 0x80, 0xa1, 0xc3, 0x40, 0x1e});
        SetBytes(target->PortId, {0x01, 0x4f, 0xe0});
        target->TargetNumber = 7;
        Fake().onGetPortStatisticsFC = [](VX_UINT32, VX_UINT32, VX_PORT_SELECTOR*, __STATISTICS* statistics) {
            Chatter();
            const __STATISTICS none{};
            EXPECT_EQ(std::memcmp(statistics, &none, sizeof none), 0);
            // Every member has a different value, to detect swapped ones.
            VX_UINT32 value = 0xFFFFFFF0;
            for (VX_UINT32* counter :
                 {&statistics->LinkFailureCount, &statistics->LossOfSyncCount, &statistics->LossOfSignalCount,
                  &statistics->PrimSeqProtoErrCount, &statistics->InvalidTxWordCount, &statistics->InvalidCrcCount,
                  &statistics->DeliveryFailureCount, &statistics->LinkUnknownEventCount}) {
                *counter = value++;
            }
            return 0u;
        };
    }
    void ExpectError(const std::string& arguments, ResultCode code, const std::string& message) const {
        for (const Format& format : FORMATS) {
            const CommandRun run = Run("-t target -v stats " + format.Leaf("get") + arguments);
            const bool hasUsage = !format.IsXml() && (code == RC_HELP_REQUESTED || code == RC_INVALID_PARAMETER);
            EXPECT_EQ(run.code, code);
            EXPECT_EQ(run.output, ErrorOf(format, STRUCTURE, FIELD, message) +
                                      (hasUsage ? "Usage: get [port identifier]\r\n" : ""));
        }
    }
    std::string Argument() const { return " " + TargetId(*port, *target); }
};

/// 0xFFFFFFF0 is 4294967280.
TEST_F(TargetStatsTest, ReportsTheCounters) {
    for (const Format& format : FORMATS) {
        const CommandRun run = RunTarget("stats", format.Leaf("get"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output,
                  format.Block(
                      STRUCTURE, FIELD, LIST,
                      TextOfLines({"Node Name: 50:0a:09:80:a1:c3:40:1e", "Port Name: 50:00:0a:0b:0c:0d:01:01",
                                   "Port Id: 01:4f:e0", "Target Number: 7", "Link Failure Count: 4294967280",
                                   "Loss Of Sync Count: 4294967281", "Loss Of Signal Count: 4294967282",
                                   "Primitive Sequence Protocol Error Count: 4294967283",
                                   "Invalid Transmission Word Count: 4294967284", "Invalid CRC Count: 4294967285"})));
        // The word of the handle, 0, and the selector: 2 and the target's port name.
        EXPECT_EQ(PortCalls(), (Calls{Call("GetPortStatisticsFC", "0, 2, 50:00:0a:0b:0c:0d:01:01")}));
    }
}

/// All chips, ports and link states are accepted.
TEST_F(TargetStatsTest, EveryPortIsTaken) {
    port->PortInterfaceType = 3;
    port->PortState = 3;
    port->FeatureFlags = 0;
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        EXPECT_EQ(RunTarget("stats", "get").code, RC_SUCCESS) << chip.name;
    }
}

TEST_F(TargetStatsTest, RefusesHelpAndATargetThatIsNotThere) {
    ExpectError("", RC_INVALID_PARAMETER, "Failed, Invalid parameter");
    ExpectError(" FC_21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER, "Failed, Invalid parameter");
    ExpectError(" ?x", RC_INVALID_PARAMETER, "Failed, Invalid parameter");
    ExpectError(" -help", RC_HELP_REQUESTED, "Failed, Unknown");
}

TEST_F(TargetStatsTest, TellsAFailingRead) {
    for (const VX_UINT32 status : {1u, 45u, 118u, 0xFFFFFFFFu}) {
        Fake().Return("VEXAPI_GetPortStatisticsFC", status);
        ExpectError(Argument(), RC_STATS_READ_FAILED, "Failed, Statistics read error");
    }
}

TEST_F(TargetStatsTest, FailsWithoutAHost) {
    LoseHost();
    ExpectError(Argument(), RC_HOST_NOT_FOUND, "Failed, Host not found");
}

TEST_F(TargetStatsTest, LibraryLogThatCannotBeOpened) {
    NoFiles files;
    LoseFiles(files);
    const CommandRun run = RunTarget("stats", "get");
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, ErrorOf(XML, STRUCTURE, FIELD, "Failed, File not found"));
    EXPECT_EQ(PortCalls(), Calls{});
}

} // namespace
