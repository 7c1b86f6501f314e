#include "CongestionTest.h"
#include "RefusedBlock.h"

#include <algorithm>

using namespace family_test;

namespace {

class CongestionCheckTest : public CongestionTest {
protected:
    /// The line of the port's check with this label.
    std::string LineOf(const CongestionCommand& command, const std::string& label) const {
        for (const std::string& line : LinesOf(BlockText(RunCongestion(command, TEXT).output))) {
            if (line.starts_with(label + ": ")) {
                return line.substr(label.size() + 2);
            }
        }
        return "no line " + label;
    }
    void ExpectReport(const CongestionCommand& command, const std::string& list,
                      const std::vector<std::string>& lines) const {
        for (const Format& format : FORMATS) {
            const CommandRun run = RunCongestion(command, format);
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, format.Block(command.structure, command.field, list, TextOfLines(lines)));
            EXPECT_EQ(PortCalls(), (Calls{Call("IsFWCMFeatureEnabled")}));
        }
    }
};

TEST_F(CongestionCheckTest, ReportsAHealthyPort) {
    port->ScmFabricFlags = 1;
    ExpectReport(PORT_CHECK, "PortFWCMStatusList",
                 Joined(portNames, {
                                       "Congestion Current State: Healthy",
                                       "Congestion Severity: None",
                                       "Link Integrity Events: No",
                                       "Delivery Notification Events: No",
                                       "Seconds Since Last Event: 0",
                                       "Fabric Connection Flags: RDF Completed",
                                       "Virtual Lane: Disabled",
                                       "I/O Throttling: None",
                                   }));
}

TEST_F(CongestionCheckTest, ReportsACongestedPort) {
    port->ScmCongState = 1;
    port->ScmCongSeverity = 0xF1;
    port->ScmLinkIntegrityEvents = 0x80;
    port->ScmDeliveryEvents = 2;
    port->ScmSecondsSinceLastEvent = 4294967295u;
    port->ScmFabricFlags = 3;
    port->ScmVirtualLaneState = 1;
    port->ScmThrottleState = 2;
    port->PortState = 3;
    std::vector<std::string> names = portNames;
    names[3] = "Port State: Offline";
    ExpectReport(PORT_CHECK, "PortFWCMStatusList",
                 Joined(names, {
                                   "Congestion Current State: Congested",
                                   "Congestion Severity: Warning",
                                   "Link Integrity Events: Yes",
                                   "Delivery Notification Events: Yes",
                                   "Seconds Since Last Event: 4294967295",
                                   "Fabric Connection Flags: RDF Completed (Brocade)",
                                   "Virtual Lane: Operational",
                                   "I/O Throttling: Active",
                               }));
}

/// If bit 0 is clear, no other bit counts; Brocade, bit 1, is tested before Cisco, bit 2.
TEST_F(CongestionCheckTest, NamesTheFabric) {
    for (int flags = 0; flags <= 0xFF; ++flags) {
        port->ScmFabricFlags = static_cast<VX_UINT8>(flags);
        static constexpr const char* BY_LOW_BITS[8] = {
            "RDF Reject", "RDF Completed",         "RDF Reject", "RDF Completed (Brocade)",
            "RDF Reject", "RDF Completed (Cisco)", "RDF Reject", "RDF Completed (Brocade)",
        };
        ASSERT_EQ(LineOf(PORT_CHECK, "Fabric Connection Flags"), BY_LOW_BITS[flags % 8]) << flags;
    }
}

/// Each report has its own rules: lanes and throttling read differently for ports and targets.
TEST_F(CongestionCheckTest, KeepsPortsAndTargetsApart) {
    port->FeatureFlags = SECOND_GENERATION | 0x40000000; // virtual lane capable
    EXPECT_EQ(LineOf(PORT_CHECK, "Virtual Lane"), "Disabled");
    EXPECT_EQ(LineOf(TARGET_CHECK, "Virtual Lane"), "Non-Operational");
    EXPECT_EQ(LineOf(PORT_CHECK, "I/O Throttling"), "None");
    EXPECT_EQ(LineOf(TARGET_CHECK, "I/O Throttling"), "None");
    port->FeatureFlags = SECOND_GENERATION | 0x80000000; // throttling configured
    EXPECT_EQ(LineOf(TARGET_CHECK, "Virtual Lane"), "NA");
    EXPECT_EQ(LineOf(PORT_CHECK, "I/O Throttling"), "Disabled");
    EXPECT_EQ(LineOf(TARGET_CHECK, "I/O Throttling"), "Disabled");
    port->ScmVirtualLaneState = 2;
    target->ScmVirtualLane = 2;
    port->ScmThrottleState = 1;
    target->ScmThrottleState = 2;
    EXPECT_EQ(LineOf(PORT_CHECK, "Virtual Lane"), "Non-Operational");
    EXPECT_EQ(LineOf(TARGET_CHECK, "Virtual Lane"), "Normal");
    EXPECT_EQ(LineOf(PORT_CHECK, "I/O Throttling"), "None");
    EXPECT_EQ(LineOf(TARGET_CHECK, "I/O Throttling"), "Active");
    SetChip(*port, LARCH);
    port->ScmVirtualLaneState = 1;
    EXPECT_EQ(LineOf(PORT_CHECK, "Virtual Lane"), "Disabled");
    EXPECT_EQ(LineOf(TARGET_CHECK, "Virtual Lane"), "NA");
}

TEST_F(CongestionCheckTest, GivesAReservedSeverityALineOfItsOwn) {
    port->ScmCongSeverity = 5;
    EXPECT_EQ(LineOf(PORT_CHECK, "Congestion Severity"), "Reserved");
}

TEST_F(CongestionCheckTest, ReportsATarget) {
    ExpectReport(TARGET_CHECK, "TargetFWCMStatusList",
                 Joined(targetNames, {
                                         "Congestion Current State: Healthy",
                                         "Link Integrity Events: No",
                                         "Seconds Since Last Event: 0",
                                         "Virtual Lane: NA",
                                         "I/O Throttling: None",
                                     }));
    target->ScmCongState = 1;
    target->ScmLinkIntegrityEvents = 0xFF;
    target->ScmSecondsSinceLastEvent = 4294967295u;
    target->ScmVirtualLane = 3;
    target->ScmThrottleState = 2;
    ExpectReport(TARGET_CHECK, "TargetFWCMStatusList",
                 Joined(targetNames, {
                                         "Congestion Current State: Congested",
                                         "Link Integrity Events: Yes",
                                         "Seconds Since Last Event: 4294967295",
                                         "Virtual Lane: Fast",
                                         "I/O Throttling: Active",
                                     }));
}

/// Refusals of the commands of this group, in order.
class CongestionRefusalTest : public CongestionTest {
protected:
    CongestionRefusalTest() {
        Fake().Succeed({"GetPortStatisticsFC", "GetSCMRProfile", "SetSCMRProfile", "SANCongMgmtResetStatistics"});
    }

    struct Order {
        const CongestionCommand* command;
        VX_UINT32 features;  ///< any of these bits will do
        bool isVirtualFirst; ///< before the firmware
        const char* noFirmware;
        const char* noVirtual;
        bool asksFeature;
    };
    static constexpr VX_UINT32 EITHER = FIRST_GENERATION | SECOND_GENERATION;
    static constexpr char SMALL[] = "Failed, feature not supported for virtual port";
    static constexpr char CAPITAL[] = "Failed, Feature not supported for virtual port";
    static constexpr Order ORDERS[] = {
        {&PORT_STATISTICS, EITHER, false, NO_FIRMWARE, SMALL, true},
        {&TARGET_STATISTICS, EITHER, false, NO_FIRMWARE, SMALL, true},
        {&PORT_CLEAR, SECOND_GENERATION, false, NO_FIRMWARE, SMALL, true},
        {&PORT_CHECK, SECOND_GENERATION, false, NO_FIRMWARE, SMALL, true},
        {&TARGET_CHECK, SECOND_GENERATION, false, NO_FIRMWARE, SMALL, true},
        // The profile has no text for the firmware, and a capital letter in the other text.
        {&PROFILE_GET, SECOND_GENERATION, true, UNKNOWN, CAPITAL, false},
        {&PROFILE_SET, SECOND_GENERATION, true, UNKNOWN, CAPITAL, false},
    };
};

TEST_F(CongestionRefusalTest, ComesInOrder) {
    for (const Order& order : ORDERS) {
        for (const ChipRow& chip : CHIPS) {
            const bool isCapable = chip.chip == LARCH || chip.chip == ALDER || chip.chip == BIRCH;
            for (const VX_UINT32 flags :
                 {0u, FIRST_GENERATION, SECOND_GENERATION, EITHER, ~EITHER, ~FIRST_GENERATION, ~SECOND_GENERATION}) {
                for (const int type : {1, 3, 2, 0x103}) {
                    SetChip(*port, chip.chip);
                    port->FeatureFlags = flags;
                    port->PortInterfaceType = static_cast<VX_UINT16>(type);
                    const bool lacksFirmware = (flags & order.features) == 0;
                    const bool isVirtual = type == 3;
                    ResultCode code = RC_SUCCESS;
                    if (!isCapable) {
                        code = RC_FEATURE_NOT_SUPPORTED;
                    } else if (lacksFirmware && isVirtual) {
                        code = order.isVirtualFirst ? RC_NOT_SUPPORTED_FOR_VPORT : RC_UNSUPPORTED_FW;
                    } else if (lacksFirmware || isVirtual) {
                        code = isVirtual ? RC_NOT_SUPPORTED_FOR_VPORT : RC_UNSUPPORTED_FW;
                    }
                    SCOPED_TRACE(std::string(order.command->name) + " on " + chip.name + ", flags " +
                                 std::to_string(flags) + ", type " + std::to_string(type));
                    if (code != RC_SUCCESS) {
                        ExpectFailure(*order.command, code,
                                      code == RC_FEATURE_NOT_SUPPORTED ? NO_CHIP
                                      : code == RC_UNSUPPORTED_FW      ? order.noFirmware
                                                                       : order.noVirtual,
                                      {});
                    } else {
                        nodes = {PortNode()};
                        EXPECT_EQ(RunCongestion(*order.command, XML).code, RC_SUCCESS);
                    }
                }
            }
        }
    }
}

/// Any value of the byte but 0 means that the feature is on. The profile is available without it.
TEST_F(CongestionRefusalTest, AsksForTheFeature) {
    const std::string ask = Call("IsFWCMFeatureEnabled");
    for (const Order& order : ORDERS) {
        SCOPED_TRACE(order.command->name);
        nodes = {PortNode()};
        feature = 0;
        if (order.asksFeature) {
            ExpectFailure(*order.command, RC_FEATURE_DISABLED, "Failed, Feature disabled on the port", {ask});
        } else {
            EXPECT_EQ(RunCongestion(*order.command, XML).code, RC_SUCCESS);
            const Calls calls = PortCalls();
            EXPECT_EQ(std::find(calls.begin(), calls.end(), ask), calls.end());
        }
        for (const int value : {1, 2, 0x80, 0xFF}) {
            feature = static_cast<VX_UINT8>(value);
            EXPECT_EQ(RunCongestion(*order.command, XML).code, RC_SUCCESS);
        }
        if (order.asksFeature) {
            for (const VX_UINT32 status : {1u, 118u, 0x20000075u}) {
                Fake().Return("VEXAPI_IsFWCMFeatureEnabled", status);
                ExpectFailure(*order.command, RC_CFG_READ_FAILED, "Failed, FWCM settings read error", {ask});
            }
            Fake().Return("VEXAPI_IsFWCMFeatureEnabled", 0);
        }
    }
}

TEST_F(CongestionRefusalTest, NeedsTheLogForTheFirstQuestion) {
    for (const CongestionCommand* command : COMMANDS) {
        for (const Format& format : FORMATS) {
            NoFiles files;
            LoseFiles(files);
            const CommandRun run = RunCongestion(*command, format);
            EXPECT_EQ(run.code, RC_FILE_ERROR) << command->name;
            EXPECT_EQ(run.output, FailureOf(*command, format, "Failed, File not found")) << command->name;
            EXPECT_EQ(PortCalls(), Calls{}) << command->name;
        }
    }
}

TEST_F(CongestionRefusalTest, TellsWhatTheResolverTells) {
    for (const CongestionCommand* command : COMMANDS) {
        for (const Format& format : FORMATS) {
            SCOPED_TRACE(command->name);
            const std::string usage = format.IsXml() ? "" : command->usage;
            const std::string line = command->line + format.Leaf(command->leaf);
            for (const char* identifier : {"", " nosuch", " FC_21:00:0a:0b:0c:0d:00:99",
                                           " FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:99"}) {
                const CommandRun run = Run(line + identifier);
                EXPECT_EQ(run.code, RC_INVALID_PARAMETER);
                EXPECT_EQ(run.output, FailureOf(*command, format, "Failed, Invalid parameter") + usage);
            }
            CommandRun run = Run(line + " help");
            EXPECT_EQ(run.code, RC_HELP_REQUESTED);
            EXPECT_EQ(run.output, FailureOf(*command, format, UNKNOWN) + usage);
            EXPECT_EQ(Run(line + " ?").output, usage);
            Fake().host.hasList = false;
            run = RunCongestion(*command, format);
            Fake().host.hasList = true;
            EXPECT_EQ(run.code, RC_HOST_NOT_FOUND);
            EXPECT_EQ(run.output, FailureOf(*command, format, "Failed, Host not found"));
        }
    }
}

/// The command's result is unchanged. The port's statistics have no text for it, and their list is still released.
TEST_F(CongestionRefusalTest, ShowsThatThereIsNoMemoryForTheReport) {
    static constexpr struct {
        const CongestionCommand* command;
        std::size_t size;
        const char* message;
    } CASES[] = {
        {&PORT_STATISTICS, 8192, UNKNOWN},
        {&TARGET_STATISTICS, 8192, "Failed, Memory Error"},
        {&PORT_CHECK, 4096, "Failed, Memory Error"},
        {&TARGET_CHECK, 4096, "Failed, Memory Error"},
        {&PROFILE_GET, 1024, "Failed, Memory Error"},
        {&PROFILE_SET, 1024, "Failed, Memory Error"},
    };
    const TraceLog log("4");
    nodes = {PortNode()};
    for (const auto& row : CASES) {
        for (const VX_UINT32 flags : {SECOND_GENERATION, FIRST_GENERATION}) {
            if (flags == FIRST_GENERATION && row.size != 8192) {
                continue; // only statistics support the first generation
            }
            port->FeatureFlags = flags;
            for (const Format& format : FORMATS) {
                unlink(TraceLog::Path());
                released = 0;
                const RefusedBlock fault(row.size);
                const CommandRun run = RunCongestion(*row.command, format);
                EXPECT_EQ(run.code, RC_SUCCESS) << row.command->name;
                EXPECT_EQ(run.output, FailureOf(*row.command, format, row.message)) << row.command->name;
                EXPECT_EQ(released, flags == SECOND_GENERATION && row.size == 8192 ? 1 : 0) << row.command->name;
                const std::vector<std::string> traces = TraceLog::Steps();
                ASSERT_EQ(traces.size(), 1u);
                EXPECT_TRUE(traces[0].ends_with(": Output memory alloc failed")) << traces[0];
            }
        }
    }
}

TEST_F(CongestionRefusalTest, TracesWhyAPortIsRefused) {
    const TraceLog log("4");
    const auto tracesOf = [&](const CongestionCommand& command) {
        unlink(TraceLog::Path());
        RunCongestion(command, XML);
        return TraceLog::Steps();
    };
    const std::string by = "DEBUG: FCTargetSCMChkCmdsProcessor::CmdGetCommon: ";
    feature = 0;
    EXPECT_EQ(tracesOf(TARGET_CHECK), (std::vector<std::string>{by + "FWCM feature is disabled"}));
    Fake().Return("VEXAPI_IsFWCMFeatureEnabled", 7);
    EXPECT_EQ(tracesOf(TARGET_CHECK), (std::vector<std::string>{by + "Get FWCM feature failed err=7"}));
    port->PortInterfaceType = 3;
    EXPECT_EQ(tracesOf(TARGET_CHECK), (std::vector<std::string>{by + "Command not supported for vport"}));
    port->FeatureFlags = 0;
    EXPECT_EQ(tracesOf(TARGET_CHECK), (std::vector<std::string>{by + "Driver/Firmware does not support SCM."}));
    SetChip(*port, HAZEL);
    EXPECT_EQ(tracesOf(TARGET_CHECK), (std::vector<std::string>{by + "SCM feature not supported for this adapter."}));
}

} // namespace
