#include "FamilyTest.h"
#include "LibraryLog.h"
#include "PhysicalPortDPortDiagCmdsProcessor.h"
#include "RefusedBlock.h"
#include "TraceLog.h"

#include <cmath>

using namespace family_test;

namespace {

constexpr char INVALID[] = "Failed, Invalid parameter";
constexpr char READ_FAILED[] = "Failed, DPortDiag read failed";
constexpr char UPDATE_FAILED[] = "Failed, DPortDiag update failed";
constexpr char NO_HOST[] = "Failed, Host not found";
constexpr char NO_FILE[] = "Failed, File not found";
constexpr char NOT_SUPPORTED[] = "Failed, Feature not supported for this port";
constexpr char BFS_MODE[] = "Failed, Feature not supported in Boot-From-SAN mode";
constexpr char NO_LINK[] = "Failed, Feature requires link up";
constexpr char SPEED[] = "Failed, Feature supported for speeds 16 Gbps and above";
constexpr char MODE[] = "Failed, Port not in diagnostics mode";
constexpr char NO_VIRTUAL[] = "Failed, Feature not supported for virtual port";
constexpr char UNKNOWN[] = "Failed, Unknown";

constexpr VX_UINT32 SECOND_FORM = 0x20000000;

/// A number as the library stores it, big-endian.
VX_UINT16 Big16(unsigned value) {
    return __builtin_bswap16(static_cast<VX_UINT16>(value));
}
VX_UINT32 Big32(VX_UINT32 value) {
    return __builtin_bswap32(value);
}

TEST(DPortArithmeticTest, SwapsBytes) {
    EXPECT_EQ(swapshort(0x0102), 0x0201);
    EXPECT_EQ(swapshort(0xFF00), 0x00FF);
    EXPECT_EQ(swapint(0x01020304), 0x04030201u);
    EXPECT_EQ(swapint(0xFF000080), 0x800000FFu);
}

/// 0.1 microwatt per unit: 10000 units are one milliwatt, which is 0 dBm; a tenth of the power is 10 dBm less.
TEST(DPortArithmeticTest, PowersInDecibelMilliwatts) {
    EXPECT_FLOAT_EQ(DportPowerDbm(10000), 0.0F);
    EXPECT_FLOAT_EQ(DportPowerDbm(1000), -10.0F);
    EXPECT_FLOAT_EQ(DportPowerDbm(1), -40.0F);
    EXPECT_FLOAT_EQ(DportPowerDbm(20000), 3.0103F);   // log10(2) is 0.30103
    EXPECT_FLOAT_EQ(DportPowerDbm(65535), 8.164733F); // log10(6.5535) is 0.8164733
    EXPECT_TRUE(std::isinf(DportPowerDbm(0)));
    EXPECT_LT(DportPowerDbm(0), 0.0F);
}

TEST(DPortTextTest, PhaseResults) {
    const std::map<VX_UINT32, std::string> texts = {
        {0, "Not Started"},
        {1, "Passed"},
        {2, "Skipped"},
        {3, "Failed"},
        {71, "Failed"},
        {4, "Running"},
        {5, "Remote Port"},
        {6, "Stopped"},
        {56, "Unexpected Reject"},
        {57, "Unexpected Phase"},
        {58, "Retry Exceeded"},
        {59, "Timeout"},
        {78, "Not Supported"},
        {79, "Not Supported"},
        {115, "Memory Error"},
    };
    for (VX_UINT32 code = 0; code < 256; ++code) {
        const auto row = texts.find(code);
        EXPECT_EQ(GetDportTestResult(code), row == texts.end() ? "Unknown" : row->second) << code;
    }
}

class DPortDiagTest : public FamilyTest {
protected:
    DPortDiagTest() {
        port->PortSpeed = 22;
        port->FeatureFlags = SECOND_FORM;
        Fake().onIsMezzAdapter = [this](VX_PORT_HANDLE*, VX_UINT8* flag) {
            Chatter();
            *flag = mezzanineFlag;
            return After("mezz"), 0u;
        };
        Fake().onCheckAdapterDPortOption = [this](VX_PORT_HANDLE*) {
            Chatter();
            return After("check"), mode;
        };
        Fake().onConfigureAdapterDPortSettings = [this](VX_PORT_HANDLE*, VX_UINT32, VX_UINT32) {
            Chatter();
            return After("configure"), 0u;
        };
        Fake().onIsRebootRequired = [this](VX_UINT32* required) {
            Chatter();
            *required = reboot;
            return 0u;
        };
        Fake().onDiagnosticDPortTestV2 = [this](VX_PORT_HANDLE*, _VEXAPI_DiagnosticsDPortResult* record) {
            Chatter();
            const _VEXAPI_DiagnosticsDPortResult cleared{};
            wasCleared = std::memcmp(record, &cleared, sizeof cleared) == 0;
            *record = result;
            return 0u;
        };
        Fake().onDiagnosticDPortTest = [this](VX_PORT_HANDLE*, _VEXAPI_DiagnosticsDPortResult* record) {
            Chatter();
            record->HbaPortStatus = 5; // only the returned record counts
            return result;
        };
        SetText(result.StartTime, "Mon Jan  1 00:00:00 2024\n");
        SetText(result.StopTime, "Mon Jan  1 00:00:09 2024\n");
        result.HbaPortValue = 0xABCDEF01;
        result.HbaPortStatus = 1;
        result.ElecLbValue = 0x10;
        result.ElecLbStatus = 2;
        result.OptLbValue = 0xFF;
        result.OptLbStatus = 59;
        result.LinkTrafficValue = 0;
        result.LinkTrafficStatus = 200;
        result.RoundtripLinkLatency = Big32(0x01020304);
        result.CableLinkDistance = Big32(1000);
        result.Mbx1 = 0x4000;
        result.Mbx2 = 0x1234;
        result.LocalTxPower = Big16(20000);
        result.LocalRxPower = Big16(1000);
        result.RemoteTxPower = Big16(10000);
        result.RemoteRxPower = Big16(100);
    }

    /// After the named call, no file can be opened.
    void After(const char* call) {
        if (files != nullptr && lastCalled == call) {
            files->Begin();
        }
    }
    static std::string ModeDocument(const Format& format, bool isSet, const std::string& message, bool mode = false,
                                    bool reboot = false) {
        std::vector<Field> fields = {{"Message", message}};
        if (isSet) {
            fields.push_back(Flag("Reboot Required", reboot));
        }
        fields.push_back(Flag("Diagnostics Port Status", mode));
        return format.Flat("DPortDiagInfo", fields);
    }
    static std::string RunError(const Format& format, const std::string& message) {
        return format.Report("DPortDiagInfo", {{"Message", message}}, "DPortDiagResult", "");
    }
    /// The failure of a leaf; `run` shows it in another shape.
    static std::string Error(const std::string& leaf, const std::string& message) {
        return leaf == "run" ? RunError(XML, message) : ModeDocument(XML, leaf == "set", message);
    }
    void Expect(const CommandRun& run, ResultCode code, const std::string& document, const Calls& calls) const {
        EXPECT_EQ(run.code, code);
        EXPECT_EQ(run.output, document);
        EXPECT_EQ(PortCalls(), calls);
        EXPECT_FALSE(run.wasLeftRedirected);
    }
    std::string ReportOf(const Format& format = TEXT) const {
        const CommandRun run = RunPort("dportdiag", format.Leaf("run"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        return run.output;
    }
    static std::string Block(const Format& format, const std::string& text) {
        return format.Block("DPortDiagInfo", "DPortDiagResult", "DPortDiagResultList", text);
    }

    const std::string IS_MEZZ = Call("IsMezzAdapter");
    const std::string CHECK = Call("CheckAdapterDPortOption");
    const std::string ENABLE = Call("ConfigureAdapterDPortSettings", "1, 0");
    const std::string DISABLE = Call("ConfigureAdapterDPortSettings", "0, 0");
    const std::string REBOOT = "VEXAPI_IsRebootRequired()";
    const std::string FIRST_TEST = Call("DiagnosticDPortTest");
    const std::string SECOND_TEST = Call("DiagnosticDPortTestV2");

    VX_UINT8 mezzanineFlag = 0;
    VX_UINT32 mode = 1;
    VX_UINT32 reboot = 1;
    _VEXAPI_DiagnosticsDPortResult result{};
    bool wasCleared = false;
    NoFiles* files = nullptr;
    std::string lastCalled;
};

const std::string PHASES = "Start Time: Mon Jan  1 00:00:00 2024\n"
                           "      Stop Time: Mon Jan  1 00:00:09 2024\n"
                           "      HBA Port Value: 0xabcdef01\n"
                           "      HBA Port Status: 1\n"
                           "      HBA Port Result: Passed\n"
                           "      Electrical Loopback Value: 0x10\n"
                           "      Electrical Loopback Status: 2\n"
                           "      Electrical Loopback Result: Skipped\n"
                           "      Optical Loopback Value: 0xff\n"
                           "      Optical Loopback Status: 59\n"
                           "      Optical Loopback Result: Timeout\n"
                           "      Link Traffic Value: 0x0\n"
                           "      Link Traffic Status: 200\n"
                           "      Link Traffic Result: Unknown\n";

TEST_F(DPortDiagTest, GetAndSetAreByteExact) {
    EXPECT_EQ(RunPort("dportdiag", "get").output,
              "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
              "<structure typeName=\"DPortDiagInfo\">\n"
              "<field name=\"Message\">\n<string>Success</string></field>\n"
              "<field name=\"Diagnostics Port Status\">\n<bool>true</bool></field>\n"
              "</structure>\n</output>\n");
    EXPECT_EQ(RunPort("dportdiag", "setcli", "false").output, "****************************************************\n"
                                                              "DPortDiagInfo:\n"
                                                              "Message: Success\n"
                                                              "Reboot Required: true\n"
                                                              "Diagnostics Port Status: true\n"
                                                              "****************************************************\n");
}

TEST_F(DPortDiagTest, GetShowsTheMode) {
    for (const VX_UINT32 answer : {0u, 1u, 2u, 0xFFFFFFFFu}) {
        mode = answer;
        for (const Format& format : FORMATS) {
            Expect(RunPort("dportdiag", format.Leaf("get")), RC_SUCCESS,
                   ModeDocument(format, false, "Success", answer != 0), {IS_MEZZ, CHECK});
        }
    }
}

TEST_F(DPortDiagTest, SetShowsTheModeThatIsReadBack) {
    const struct {
        const char* word;
        bool isEnabled;
        VX_UINT32 mode;
        VX_UINT32 reboot;
        VX_UINT32 rebootStatus;
        bool isRebootShown;
    } cases[] = {
        {"true", true, 1, 1, 0, true},        {"TRUE", true, 0, 0, 0, false}, {"false", false, 0, 1, 0, true},
        {"False", false, 1, 2, 0, false},     {"true", true, 1, 0, 5, true}, // no answer counts as yes
        {"true extra", true, 1, 0, 0, false},
    };
    for (const auto& row : cases) {
        mode = row.mode;
        reboot = row.reboot;
        Fake().Return("VEXAPI_IsRebootRequired", row.rebootStatus);
        for (const Format& format : FORMATS) {
            SCOPED_TRACE(row.word);
            Expect(RunPort("dportdiag", format.Leaf("set"), row.word), RC_SUCCESS,
                   ModeDocument(format, true, "Success", row.mode != 0, row.isRebootShown),
                   {IS_MEZZ, row.isEnabled ? ENABLE : DISABLE, CHECK, REBOOT});
        }
    }
    for (const char* word : {"on", "1", "tru", "truee", "no"}) {
        Expect(RunPort("dportdiag", "set", word), RC_INVALID_PARAMETER, ModeDocument(XML, true, INVALID), {IS_MEZZ});
    }
    Expect(RunPort("dportdiag", "set"), RC_INVALID_PARAMETER, ModeDocument(XML, true, INVALID), {IS_MEZZ});
}

TEST_F(DPortDiagTest, AdmissionIsTheSameForAll) {
    const std::string id = Id(*port);
    for (const char* name : {"get", "set", "run"}) {
        const std::string leaf = name;
        SCOPED_TRACE(leaf);
        const auto run = [&](const std::string& word) { return Run("-t port -s dportdiag " + leaf + " " + word); };
        Expect(run("FC_21:00:0a:0b:0c:0d:00:99"), RC_INVALID_PARAMETER, Error(leaf, INVALID), {});
        Expect(run("help"), RC_HELP_REQUESTED, Error(leaf, UNKNOWN), {});
        mezzanineFlag = 1;
        Expect(run(id), RC_FEATURE_NOT_SUPPORTED, Error(leaf, NOT_SUPPORTED), {IS_MEZZ});
        mezzanineFlag = 0;
        for (const VX_UINT32 status : {1u, 35u, 0x80000000u}) {
            Fake().ReturnInTurn("VEXAPI_IsMezzAdapter", {status});
            Expect(run(id), RC_CFG_READ_FAILED, Error(leaf, READ_FAILED), {IS_MEZZ});
        }
        for (const ChipRow& chip : CHIPS) {
            SetChip(*port, chip.chip);
            const bool isSupported =
                chip.chip == ROWAN_FC || chip.chip == LARCH || chip.chip == ALDER || chip.chip == BIRCH;
            if (isSupported) {
                EXPECT_EQ(run(id + " true").code, RC_SUCCESS) << chip.name;
            } else {
                Expect(run(id + " true"), RC_FEATURE_NOT_SUPPORTED, Error(leaf, NOT_SUPPORTED), {IS_MEZZ});
            }
        }
        port->PortInterfaceType = 3; // before the adapter
        Expect(run(id), RC_NOT_SUPPORTED_FOR_VPORT, Error(leaf, NO_VIRTUAL), {});
        port->PortInterfaceType = 1;
        SetChip(*port, BIRCH);
        LoseHost();
        Expect(run(id), RC_HOST_NOT_FOUND, Error(leaf, NO_HOST), {});
        Fake().host.hasList = true;
    }
}

TEST_F(DPortDiagTest, AFailingChangeEndsSet) {
    for (const VX_UINT32 status : {1u, 118u, 0x80000000u}) {
        Fake().ReturnInTurn("VEXAPI_ConfigureAdapterDPortSettings", {status});
        Expect(RunPort("dportdiag", "set", "true"), RC_CFG_UPDATE_FAILED, ModeDocument(XML, true, UPDATE_FAILED),
               {IS_MEZZ, ENABLE});
    }
}

/// The n-th redirection can't be opened: nothing after it is called.
TEST_F(DPortDiagTest, WithoutTheRedirectionNothingIsCalled) {
    const struct {
        const char* leaf;
        const char* lastCalled; ///< the failing redirection follows this call; empty: the first one
        Calls calls;
    } cases[] = {
        {"get", "", {}},
        {"get", "mezz", {IS_MEZZ}},
        {"set", "", {}},
        {"set", "mezz", {IS_MEZZ}},
        {"set", "configure", {IS_MEZZ, ENABLE}},
        {"run", "", {}},
        {"run", "mezz", {IS_MEZZ}},
        {"run", "check", {IS_MEZZ, CHECK}},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(std::string(row.leaf) + " after " + row.lastCalled);
        NoFiles noFiles;
        files = &noFiles;
        lastCalled = row.lastCalled;
        Fake().onGetAdapterList = [this] {
            After("");
            return FakeLibrary::Get().host.List();
        };
        Expect(RunPort("dportdiag", row.leaf, "true"), RC_FILE_ERROR, Error(row.leaf, NO_FILE), row.calls);
        files = nullptr;
    }
}

/// The mode comes before the link, and the link before the speed.
TEST_F(DPortDiagTest, RunNeedsModeLinkAndSpeed) {
    const struct {
        VX_UINT32 mode;
        VX_UINT8 state;
        VX_UINT32 speed;
        ResultCode code;
        const char* message;
    } cases[] = {
        {0, 3, 8, RC_UNSUPPORTED_MODE, MODE},      {0, 1, 100, RC_UNSUPPORTED_MODE, MODE},
        {1, 3, 8, RC_LINK_UP_REQUIRED, NO_LINK},   {1, 0, 22, RC_LINK_UP_REQUIRED, NO_LINK},
        {1, 2, 100, RC_LINK_UP_REQUIRED, NO_LINK}, {1, 1, 8, RC_UNSUPPORTED_SPEED, SPEED},
        {1, 1, 16, RC_UNSUPPORTED_SPEED, SPEED},   {2, 1, 21, RC_UNSUPPORTED_SPEED, SPEED},
    };
    for (const auto& row : cases) {
        mode = row.mode;
        port->PortState = row.state;
        port->PortSpeed = row.speed;
        Expect(RunPort("dportdiag", "run"), row.code, RunError(XML, row.message), {IS_MEZZ, CHECK});
        Expect(RunPort("dportdiag", "runcli"), row.code, RunError(TEXT, row.message), {IS_MEZZ, CHECK});
    }
    mode = 7;
    port->PortState = 1;
    for (const VX_UINT32 speed : {22u, 50u, 100u, 0xFFFFFFFFu}) {
        port->PortSpeed = speed;
        EXPECT_EQ(RunPort("dportdiag", "run").code, RC_SUCCESS) << speed;
    }
}

TEST_F(DPortDiagTest, StatusesOfTheSecondForm) {
    const struct {
        VX_UINT32 status;
        ResultCode code;
        const char* message;
    } cases[] = {
        {2, RC_INVALID_PARAMETER, INVALID},
        {29, RC_NOT_SUPPORTED_FOR_VPORT, NO_VIRTUAL},
        {38, RC_FEATURE_NOT_SUPPORTED, NOT_SUPPORTED},
        {129, RC_UNSUPPORTED_MODE, MODE},
        {130, RC_LINK_UP_REQUIRED, NO_LINK},
        {131, RC_UNSUPPORTED_SPEED, SPEED},
        {132, RC_BFS_MODE, BFS_MODE},
        {1, RC_LIBRARY_FAILED, UNKNOWN},
        {3, RC_LIBRARY_FAILED, UNKNOWN},
        {133, RC_LIBRARY_FAILED, UNKNOWN},
        {128, RC_LIBRARY_FAILED, UNKNOWN},
        {0x80000000, RC_LIBRARY_FAILED, UNKNOWN},
    };
    result.Mbx1 = 0x4005; // ignored
    for (const auto& row : cases) {
        const LibraryLog log;
        Fake().Return("VEXAPI_DiagnosticDPortTestV2", row.status);
        for (const Format& format : FORMATS) {
            Expect(RunPort("dportdiag", format.Leaf("run")), row.code, RunError(format, row.message),
                   {IS_MEZZ, CHECK, SECOND_TEST});
            // For one status the document is also written to the library's log, before the visible one.
            EXPECT_EQ(log.Has(RunError(format, BFS_MODE)), row.status == 132) << row.status;
        }
    }
}

TEST_F(DPortDiagTest, FailedMailboxCommands) {
    const struct {
        VX_UINT16 status;
        const char* message;
    } cases[] = {
        {7, "Failed, Firmware is not ready to execute request command"},
        {21, "Failed, Invalid Request"},
        {58, "Failed, Mailbox command IOCB not allowed for this command"},
        {71, "Failed, Incorrect state for this command"},
        {96, "Failed, SFP not supported WRAP capability"},
        {32865, "Failed, Command not supported with Current Switch"},
        {0, UNKNOWN},
        {6, UNKNOWN},
        {0x4005, UNKNOWN},
        {65535, UNKNOWN},
    };
    result.Mbx1 = 0x4005;
    for (const VX_UINT32 flags : {SECOND_FORM, ~SECOND_FORM}) {
        port->FeatureFlags = flags;
        for (const auto& row : cases) {
            result.Mbx2 = row.status;
            for (const Format& format : FORMATS) {
                Expect(RunPort("dportdiag", format.Leaf("run")), RC_MAILBOX_ERROR, RunError(format, row.message),
                       {IS_MEZZ, CHECK, flags == SECOND_FORM ? SECOND_TEST : FIRST_TEST});
            }
        }
    }
    result.Mbx1 = 0x4006;
    EXPECT_EQ(RunPort("dportdiag", "run").code, RC_SUCCESS);
}

/// The first form shows only the phases, even if the record has powers.
TEST_F(DPortDiagTest, FirstFormShowsThePhases) {
    port->FeatureFlags = ~SECOND_FORM;
    for (const Format& format : FORMATS) {
        EXPECT_EQ(ReportOf(format), Block(format, PHASES));
        EXPECT_EQ(PortCalls(), (Calls{IS_MEZZ, CHECK, FIRST_TEST}));
    }
    // The library's time texts may or may not include line ends, and may fill their arrays.
    SetText(result.StartTime, std::string(64, 's'));
    SetText(result.StopTime, "");
    EXPECT_TRUE(BlockText(ReportOf())
                    .starts_with("Start Time: " + std::string(64, 's') + "      Stop Time:       HBA Port Value: 0x"));
}

TEST_F(DPortDiagTest, PassedTestShowsItsPowers) {
    const std::string powers = "      Tx Power: 0x4e20\n"
                               "      Rx Power: 0x3e8\n"
                               "      Mbx1: 0x4000\n"
                               "      Mbx2: 0x1234\n"
                               "      Roundtrip Link Latency: 16909060 ns\n" // 0x01020304
                               "      Cable Link Distance: 1000 meters\n"
                               // a kilometre, by 3, by 7/3
                               "      Allowable Power Loss: 7.000000\n"
                               // 2 mW sent, 0.01 mW received; then 1 mW and 0.1 mW
                               "      Egress Power: Tx: 3.010300 dBm, Rx: -20.000000 dBm, Diff: 23.010300 dBm\n"
                               "      Ingress Power: Tx: 0.000000 dBm, Rx: -10.000000 dBm, Diff: 10.000000 dBm\n";
    for (const Format& format : FORMATS) {
        EXPECT_EQ(ReportOf(format), Block(format, PHASES + powers));
        EXPECT_EQ(PortCalls(), (Calls{IS_MEZZ, CHECK, SECOND_TEST}));
        EXPECT_TRUE(wasCleared);
    }
    // Only the local powers are checked for zero.
    result.LocalTxPower = result.LocalRxPower = result.RemoteTxPower = result.RemoteRxPower = 0;
    result.RoundtripLinkLatency = result.CableLinkDistance = 0xFFFFFFFF;
    EXPECT_EQ(BlockText(ReportOf()),
              PHASES + "      Tx Power: 0x0\n"
                       "      Rx Power: 0x0\n"
                       "      Mbx1: 0x4000\n"
                       "      Mbx2: 0x1234\n"
                       "      Roundtrip Link Latency: 4294967295 ns\n"
                       "      Cable Link Distance: 4294967295 meters\n"
                       "      Allowable Power Loss: 30064771.065000\n" // 4294967.295 by 7
                       "      Egress Power: Tx: 0.000000 dBm, Rx: -inf dBm, Diff: inf dBm\n"
                       "      Ingress Power: Tx: -inf dBm, Rx: 0.000000 dBm, Diff: -inf dBm\n");
}

TEST_F(DPortDiagTest, FailedTestShowsItsReason) {
    const struct {
        VX_UINT16 mbx1;
        VX_UINT16 mbx2;
        const char* reason; ///< empty: no such line
        bool hasPowers;
    } cases[] = {
        {0x4000, 5, "", true},
        {0x4001, 5, "", true},
        {0x4003, 5, "", true},
        {0x400A, 5, "", true}, // 10 includes the bit of 2
        {0x4002, 0, "Reserved", true},
        {0x0002, 1, "Unexpected Reject Code", true},
        {0xFFF2, 2, "Unexpected Phase", true},
        {0x4002, 3, "Retry Exceeded", true},
        {0x4002, 0xFFF4, "Test Timeout", true},
        {0x4002, 5, "Dynamic mode not supported by attached switch", false},
        {0x4002, 0x1236, "Test stopped by user", true},
        {0x4002, 7, "Unknown", false},
        {0x4002, 0xFFFF, "Unknown", false},
    };
    std::string phases = PHASES;
    phases.replace(phases.find("Status: 1\n"), 10, "Status: 3\n");
    phases.replace(phases.find("Passed"), 6, "Failed");
    result.HbaPortStatus = 3;
    for (const auto& row : cases) {
        SCOPED_TRACE(row.mbx2);
        result.Mbx1 = row.mbx1;
        result.Mbx2 = row.mbx2;
        const std::string reason = *row.reason != '\0' ? std::string("      Reason: ") + row.reason + "\n" : "";
        const std::string egress = row.hasPowers ? "-20.000000" : "0.000000";
        EXPECT_EQ(BlockText(ReportOf()),
                  phases + "      Tx Power: 0x4e20\n      Rx Power: 0x3e8\n" + reason +
                      "      Roundtrip Link Latency: 16909060 ns\n"
                      "      Cable Link Distance: 1000 meters\n"
                      "      Allowable Power Loss: 0\n"
                      "      Egress Power: Tx: 0.000000 dBm, Rx: " +
                      egress +
                      " dBm, Diff: 0.000000 dBm\n"
                      "      Ingress Power: Tx: 0.000000 dBm, Rx: 0.000000 dBm, Diff: 0.000000 dBm\n");
    }
    // The ingress power is that of the remote side, which is not checked.
    result.Mbx1 = 0x4000;
    result.RemoteTxPower = Big16(1);
    result.RemoteRxPower = 0;
    const std::string report = BlockText(ReportOf());
    EXPECT_TRUE(report.ends_with("      Egress Power: Tx: 0.000000 dBm, Rx: -inf dBm, Diff: 0.000000 dBm\n"
                                 "      Ingress Power: Tx: -40.000000 dBm, Rx: 0.000000 dBm, Diff: 0.000000 dBm\n"))
        << report;
}

/// The `cli` leaves use another family's usage function.
TEST_F(DPortDiagTest, CliLeavesPrintAnotherUsage) {
    EXPECT_EQ(Run("-t port -s dportdiag getcli FC_x").output, ModeDocument(TEXT, false, INVALID) + "Usage: set\r\n");
    EXPECT_EQ(Run("-t port -s dportdiag setcli FC_x").output, ModeDocument(TEXT, true, INVALID));
    EXPECT_EQ(RunPort("dportdiag", "setcli", "on").output, ModeDocument(TEXT, true, INVALID));
    EXPECT_EQ(Run("-t port -s dportdiag runcli FC_x").output, RunError(TEXT, INVALID));
    EXPECT_EQ(Run("-t port -s dportdiag getcli ?").output, "Usage: set\r\n");
    EXPECT_EQ(Run("-t port -s dportdiag setcli ?").output, "");
    EXPECT_EQ(Run("-t port -s dportdiag runcli ?").output, "");
}

/// The command's result is unchanged; the code has no text.
TEST_F(DPortDiagTest, WithoutMemoryForTheReport) {
    for (const Format& format : FORMATS) {
        CommandRun run;
        {
            const RefusedBlock refused(2048);
            run = RunPort("dportdiag", format.Leaf("run"));
        }
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, RunError(format, UNKNOWN));
    }
}

TEST_F(DPortDiagTest, TracesTheStatusOfAFailingCall) {
    const TraceLog log("4");
    const std::string by = "DEBUG: PhysicalPortDPortDiagCmdsProcessor::";
    Fake().Return("VEXAPI_ConfigureAdapterDPortSettings", 7);
    RunPort("dportdiag", "set", "true");
    Fake().Return("VEXAPI_IsMezzAdapter", 6);
    for (const char* leaf : {"get", "setcli", "run"}) {
        RunPort("dportdiag", leaf, "true");
    }
    EXPECT_EQ(TraceLog::Steps(), (std::vector<std::string>{by + "CmdSetCommon: Configure DPort failed err=7",
                                                           by + "CmdGetCommon: Mezz adapter check failed err=6",
                                                           by + "CmdSetCommon: Mezz adapter check failed err=6",
                                                           by + "CmdRunCommon: Mezz adapter check failed err=6"}));
}

TEST_F(DPortDiagTest, FieldsAreTracedByTheirDisplay) {
    const TraceLog log("1");
    Run("-t port -s dportdiag get FC_x");
    RunPort("dportdiag", "set", "on");
    std::vector<std::string> lines;
    for (const std::string& line : TraceLog::Steps()) {
        if (line.find("::Display") != std::string::npos && line.find('=') != std::string::npos) {
            lines.push_back(line);
        }
    }
    const std::string by = "INFORMATION: PhysicalPortDPortDiagCmdsProcessor::DisplayDPortDiagInfo: ";
    EXPECT_EQ(lines, (std::vector<std::string>{by + "Message=" + INVALID, by + "Diagnostics Port Status=false",
                                               by + "Message=" + INVALID, by + "Reboot Required=false",
                                               by + "Diagnostics Port Status=false"}));
}

} // namespace
