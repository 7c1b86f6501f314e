/// @file
/// Base of the congestion tests: a second-generation port with the feature enabled.
#pragma once

#include "TargetTestBase.h"
#include "TraceLog.h"

namespace family_test {

inline constexpr VX_UINT32 FIRST_GENERATION = 0x00800000;  // bit 23
inline constexpr VX_UINT32 SECOND_GENERATION = 0x04000000; // bit 26

inline constexpr char NO_CHIP[] = "Failed, Feature not supported for this adapter";
inline constexpr char NO_FIRMWARE[] = "Failed, Driver/Firmware does not support this feature";
inline constexpr char UNKNOWN[] = "Failed, Unknown";

inline std::vector<std::string> Joined(std::vector<std::string> first, const std::vector<std::string>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// A command and its document's names, for tests of refusals and failures.
struct CongestionCommand {
    const char* name;
    const char* line; ///< before the leaf
    const char* leaf; ///< in XML; the text form appends "cli"
    bool isTarget;
    const char* structure;
    const char* field; ///< null in a flat document
    const char* usage; ///< of the text form, or empty
};
inline constexpr CongestionCommand PORT_STATISTICS = {"port statistics",
                                                      "-t port -s scmstats ",
                                                      "get",
                                                      false,
                                                      "PortFWCMStatistics",
                                                      "Port FWCM Stats",
                                                      "Usage: get [port identifier]\r\n"};
inline constexpr CongestionCommand PORT_CLEAR = {
    "port clear", "-t port -s scmstats ", "clear", false, "FWCMStatisticsClear", nullptr, ""};
inline constexpr CongestionCommand PORT_CHECK = {"port check",
                                                 "-t port -s scmchk ",
                                                 "get",
                                                 false,
                                                 "PortFWCMInformation",
                                                 "Port FWCM Status",
                                                 "Usage: get [port identifier]\r\n"};
inline constexpr CongestionCommand PROFILE_GET = {"profile get",     "-t port -s scmprofile ", "get",           false,
                                                  "PortFWCMProfile", "Congestion Profile",     "Usage: get\r\n"};
inline constexpr CongestionCommand PROFILE_SET = {"profile set",     "-t port -s scmprofile ", "set",           false,
                                                  "PortFWCMProfile", "Congestion Profile",     "Usage: set\r\n"};
inline constexpr CongestionCommand TARGET_STATISTICS = {
    "target statistics", "-t target -v scmstats ",          "get", true, "TargetFWCMStatistics",
    "Target FWCM Stats", "Usage: get [port identifier]\r\n"};
inline constexpr CongestionCommand TARGET_CHECK = {"target check",
                                                   "-t target -v scmchk ",
                                                   "get",
                                                   true,
                                                   "TargetFWCMInformation",
                                                   "Target FWCM Status",
                                                   "Usage: get [port identifier]\r\n"};
inline constexpr const CongestionCommand* COMMANDS[] = {
    &PORT_STATISTICS, &PORT_CLEAR, &PORT_CHECK, &PROFILE_GET, &PROFILE_SET, &TARGET_STATISTICS, &TARGET_CHECK};

/// The document of a failure.
inline std::string FailureOf(const CongestionCommand& command, const Format& format, const std::string& message) {
    return command.field != nullptr ? ErrorOf(format, command.structure, command.field, message)
                                    : format.Flat(command.structure, {{"Message", message}});
}

/// A port and a target with the names at the start of reports.
class CongestionTest : public TargetTest {
protected:
    using Node = _VEXAPI_SANCONGTMGMTV2;

    CongestionTest() {
        port->FeatureFlags = SECOND_GENERATION;
        SetBytes(port->PortId, {0x01, 0x2f, 0xe0});
        SetBytes(target->NodeName, {0x50, 0x0a, 0x09, 0x80, 0xa1, 0xc3, 0x40, 0x1e});
        SetBytes(target->PortId, {0x02, 0x4f, 0xe1});
        target->TargetNumber = 65535;
        Fake().onIsFWCMFeatureEnabled = [this](VX_PORT_HANDLE*, VX_UINT8* enabled) {
            Chatter();
            EXPECT_EQ(*enabled, 0);
            *enabled = feature;
            return 0u;
        };
        Fake().onGetSCMRStatisticsList = [this](VX_PORT_HANDLE*, Node** list) {
            Chatter();
            for (std::size_t i = 0; i + 1 < nodes.size(); ++i) {
                nodes[i].pNext = &nodes[i + 1];
            }
            *list = nodes.empty() ? nullptr : nodes.data();
            return 0u;
        };
        Fake().onFreeSCMRStatisticsList = [this](Node* list) {
            Chatter();
            EXPECT_EQ(list, nodes.data());
            ++released;
            return 0u;
        };
    }

    /// The target's node, by its names.
    Node TargetNode() const {
        Node node{};
        std::copy_n(target->NodeName, 8, node.WWNN);
        std::copy_n(target->PortName, 8, node.WWPN);
        return node;
    }
    static Node PortNode() {
        Node node{};
        node.EntryType = 0x80;
        return node;
    }
    /// Gives every counter a different value: 2^64 - 1 for the first of the record, and one less for each next.
    static void Fill(Node& node) {
        VX_UINT64 value = 18446744073709551615u;
        for (VX_UINT64* counter : {&node.AlarmCount,
                                   &node.WarningCount,
                                   &node.ClearedCongestionCount,
                                   &node.ThrottledDownCount,
                                   &node.ThrottledUpCount,
                                   &node.ReturnedBusyCount,
                                   &node.BottomedOutCount,
                                   &node.LinkFailureCount,
                                   &node.LinkUnknownEventCount,
                                   &node.LossOfSyncCount,
                                   &node.LossOfSignalCount,
                                   &node.PrimSeqProtoErrCount,
                                   &node.InvalidTxWordCount,
                                   &node.InvalidCrcCount,
                                   &node.LinkDevSpecCount,
                                   &node.DeliveryFailureCount,
                                   &node.DeliveryTimeoutCount,
                                   &node.DeliveryUnableToRouteCount,
                                   &node.DeliveryDevSpecCount,
                                   &node.CongClearCount,
                                   &node.CongLostCreditCount,
                                   &node.CongCreditStallCount,
                                   &node.CongOversubscriptionCount,
                                   &node.CongDevSpecCount,
                                   &node.PunCount,
                                   &node.LinkUncorFecCount}) {
            *counter = value--;
        }
    }

    /// Runs a command on the port, or on the target, with `rest` after the identifier.
    CommandRun RunCongestion(const CongestionCommand& command, const Format& format,
                             const std::string& rest = "") const {
        return Run(command.line + format.Leaf(command.leaf) + " " +
                   (command.isTarget ? TargetId(*port, *target) : Id(*port)) + (rest.empty() ? "" : " " + rest));
    }
    /// Expects, in both formats, a code, the document of a failure, and the calls until then.
    void ExpectFailure(const CongestionCommand& command, ResultCode code, const std::string& message,
                       const Calls& calls, const std::string& rest = "") const {
        for (const Format& format : FORMATS) {
            const CommandRun run = RunCongestion(command, format, rest);
            const bool hasUsage = !format.IsXml() && (code == RC_HELP_REQUESTED || code == RC_INVALID_PARAMETER);
            EXPECT_EQ(run.code, code) << command.name;
            EXPECT_EQ(run.output, FailureOf(command, format, message) + (hasUsage ? command.usage : ""))
                << command.name;
            EXPECT_EQ(PortCalls(), calls) << command.name;
            EXPECT_FALSE(run.wasLeftRedirected) << command.name;
        }
    }

    const std::vector<std::string> portNames = {"Node Name: 20:00:0a:0b:0c:0d:00:01",
                                                "Port Name: 21:00:0a:0b:0c:0d:00:01", "Port Id: 01:2f:e0",
                                                "Port State: Online"};
    const std::vector<std::string> targetNames = {"Node Name: 50:0a:09:80:a1:c3:40:1e",
                                                  "Port Name: 50:00:0a:0b:0c:0d:01:01", "Port Id: 02:4f:e1",
                                                  "Target Number: 65535"};
    VX_UINT8 feature = 1;
    std::vector<Node> nodes;
    int released = 0;
};

} // namespace family_test
