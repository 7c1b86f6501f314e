#include "FamilyTest.h"

using namespace family_test;

namespace {

class StatsTest : public FamilyTest {
protected:
    StatsTest() {
        VX_UINT32 value = 101;
        for (auto member : {&_vexapi_protocol_t::ControllerErrorCount, &_vexapi_protocol_t::DeviceErrorCount,
                            &_vexapi_protocol_t::IoCount, &_vexapi_protocol_t::MegaBytesCount,
                            &_vexapi_protocol_t::LipResetCount, &_vexapi_protocol_t::InterruptCount,
                            &_vexapi_protocol_t::LinkFailureCount, &_vexapi_protocol_t::LossOfSyncCount,
                            &_vexapi_protocol_t::LossOfSignalCount, &_vexapi_protocol_t::PrimitiveSeqProtocolErrorCount,
                            &_vexapi_protocol_t::InvalidTxWordCount, &_vexapi_protocol_t::InvalidCrcCount}) {
            port->*member = value++;
        }
        // The six counters of congestion management with the same names are different ones.
        for (VX_UINT32& other : port->ScmLinkCounters) {
            other = 999;
        }
        Fake().onResetDeviceStats = [](VX_PORT_HANDLE*) {
            Chatter();
            return 0u;
        };
    }
    static std::string Shown(const Format& format, const std::string& text) {
        return format.Block("FCStatistics", "FCStats", "FCStatsList", text);
    }
    static std::string Error(const Format& format, const std::string& message) {
        return format.Report("FCStatistics", {{"Message", message}}, "FCStats", "");
    }
};

constexpr char DRIVER[] = "Controller Error Count: 101\n"
                          "      Device Error Count: 102\n"
                          "      IO Count: 103\n"
                          "      Mega Bytes Count: 104\n"
                          "      LIP Reset Count: 105\n"
                          "      Interrupt Count: 106\n";
constexpr char FIRMWARE[] = "Link Failure Count: 107\n"
                            "      Loss Of Sync Count: 108\n"
                            "      Loss Of Signal Count: 109\n"
                            "      Primitive Sequence Protocol Error Count: 110\n"
                            "      Invalid Transmission Word Count: 111\n"
                            "      Invalid CRC Count: 112\n";

TEST_F(StatsTest, IsByteExact) {
    EXPECT_EQ(RunPort("stats", "get", "Driver").output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                                        "<structure typeName=\"FCStatistics\">\n"
                                                        "<field name=\"Message\">\n<string>Success</string></field>\n"
                                                        "<field name=\"FCStats\">\n"
                                                        "<list type=\"structure\">\n"
                                                        "<structure typeName=\"FCStatsList\">\n"
                                                        "<field name=\"Data\">\n"
                                                        "<string>Controller Error Count: 101\n"
                                                        "      Device Error Count: 102\n"
                                                        "      IO Count: 103\n"
                                                        "      Mega Bytes Count: 104\n"
                                                        "      LIP Reset Count: 105\n"
                                                        "      Interrupt Count: 106\n"
                                                        "</string></field>\n"
                                                        "</structure>\n"
                                                        "</list>\n"
                                                        "</field>\n"
                                                        "</structure>\n"
                                                        "</output>\n");
    EXPECT_EQ(RunPort("stats", "getcli", "Firmware").output,
              "****************************************************\n"
              "FCStatistics:\n"
              "Message: Success\n"
              "FCStats: FCStatsList:\n"
              "Data: " +
                  std::string(FIRMWARE) + "****************************************************\n");
    EXPECT_EQ(RunPort("stats", "resetcli", "Firmware").output,
              "****************************************************\n"
              "ResetFCStatistics:\n"
              "Message: Success\n"
              "****************************************************\n");
}

TEST_F(StatsTest, GetReadsTheRecordOnly) {
    for (const Format& format : FORMATS) {
        for (const char* mode : {"Driver", "driver", "DRIVER"}) {
            const CommandRun run = RunPort("stats", format.Leaf("get"), mode);
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Shown(format, DRIVER)) << mode;
        }
        for (const char* mode : {"Firmware", "firmware", "fIRMWARE", "Firmware Driver"}) {
            const CommandRun run = RunPort("stats", format.Leaf("get"), mode);
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Shown(format, FIRMWARE)) << mode;
        }
    }
    EXPECT_EQ(PortCalls(), Calls{});
}

TEST_F(StatsTest, CountersAreUnsigned) {
    port->ControllerErrorCount = 0xFFFFFFFF;
    port->DeviceErrorCount = 0;
    const std::string text = BlockText(RunPort("stats", "getcli", "driver").output);
    EXPECT_TRUE(text.starts_with("Controller Error Count: 4294967295\n      Device Error Count: 0\n")) << text;
}

/// `get` reports an invalid mode but returns 0, so no usage follows; `reset` returns 6.
TEST_F(StatsTest, BadModesFailButForTheCodeOfGet) {
    for (const char* mode : {"", "Drive", "Drivers", "Firm", "all", "Driver,Firmware"}) {
        for (const Format& format : FORMATS) {
            const CommandRun run = RunPort("stats", format.Leaf("get"), mode);
            EXPECT_EQ(run.code, RC_SUCCESS) << mode;
            EXPECT_EQ(run.output, Error(format, "Failed, Invalid parameter")) << mode;
        }
    }
    for (const char* mode : {"", "Driver", "Firm", "Firmwares", "all"}) {
        const CommandRun xml = RunPort("stats", "reset", mode);
        EXPECT_EQ(xml.code, RC_INVALID_PARAMETER) << mode;
        EXPECT_EQ(xml.output, Error(XML, "Failed, Invalid parameter")) << mode;
        const CommandRun text = RunPort("stats", "resetcli", mode);
        EXPECT_EQ(text.code, RC_INVALID_PARAMETER) << mode;
        EXPECT_EQ(text.output, Error(TEXT, "Failed, Invalid parameter") + "Usage: reset [port identifier]\r\n") << mode;
        EXPECT_EQ(PortCalls(), Calls{});
    }
}

TEST_F(StatsTest, ResetsTheFirmwareCounters) {
    for (const Format& format : FORMATS) {
        for (const char* mode : {"Firmware", "FIRMWARE", "firmware"}) {
            const CommandRun run = RunPort("stats", format.Leaf("reset"), mode);
            EXPECT_EQ(run.code, RC_SUCCESS) << mode;
            EXPECT_EQ(run.output, format.Flat("ResetFCStatistics", {{"Message", "Success"}})) << mode;
            EXPECT_EQ(PortCalls(), Calls{Call("ResetDeviceStats")});
        }
    }
}

/// A failure has the frame of `get`.
TEST_F(StatsTest, ResetFails) {
    for (const VX_UINT32 status : {1u, 118u, 0x80000000u}) {
        Fake().Return("VEXAPI_ResetDeviceStats", status);
        const CommandRun run = RunPort("stats", "resetcli", "Firmware");
        EXPECT_EQ(run.code, RC_STATS_CLEAR_FAILED);
        EXPECT_EQ(run.output, Error(TEXT, "Failed, Statistics clear error"));
    }
    NoFiles files;
    LoseFiles(files);
    const CommandRun run = RunPort("stats", "reset", "Firmware");
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, Error(XML, "Failed, File not found"));
    EXPECT_EQ(PortCalls(), Calls{});
}

TEST_F(StatsTest, TellsWhyThereIsNoPort) {
    for (const std::string leaf : {"get", "reset"}) {
        EXPECT_EQ(Run("-t port -s stats " + leaf).code, RC_INVALID_PARAMETER);
        const CommandRun unknown = Run("-t port -s stats " + leaf + "cli FC_x Firmware");
        EXPECT_EQ(unknown.code, RC_INVALID_PARAMETER);
        EXPECT_EQ(unknown.output,
                  Error(TEXT, "Failed, Invalid parameter") + "Usage: " + leaf + " [port identifier]\r\n");
        const CommandRun help = Run("-t port -s stats " + leaf + " help");
        EXPECT_EQ(help.code, RC_HELP_REQUESTED);
        EXPECT_EQ(help.output, Error(XML, "Failed, Unknown"));
        LoseHost();
        const CommandRun lost = RunPort("stats", leaf, "Firmware");
        EXPECT_EQ(lost.code, RC_HOST_NOT_FOUND);
        EXPECT_EQ(lost.output, Error(XML, "Failed, Host not found"));
        Fake().host.hasList = true;
    }
}

TEST_F(StatsTest, VirtualPortsAndAllChipsAreAdmitted) {
    port->PortInterfaceType = 3;
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        EXPECT_EQ(RunPort("stats", "get", "Driver").output, Shown(XML, DRIVER)) << chip.name;
        EXPECT_EQ(RunPort("stats", "reset", "Firmware").code, RC_SUCCESS) << chip.name;
    }
}

} // namespace
