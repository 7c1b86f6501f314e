#include "FamilyTest.h"
#include "PhysicalPortFECCmdsProcessor.h"

using namespace family_test;

namespace {

constexpr char NOT_SUPPORTED[] = "Failed, feature not supported";
constexpr char NO_VIRTUAL[] = "Failed, feature not supported for virtual port";
constexpr char READ_ONLY[] = "Failed, Read-Only parameter for non 16Gbps or Unknown speed or mezz adapter";
constexpr char READ_FAILED[] = "Failed, FEC read failed";
constexpr char UPDATE_FAILED[] = "Failed, FEC update failed";
constexpr char INVALID[] = "Failed, Invalid parameter";
constexpr char NO_FILE[] = "Failed, File not found";

/// For ports without a mezzanine adapter; with one, it is always on and can't be changed.
struct SpeedCase {
    VX_UINT8 state;
    VX_UINT32 speed;
    std::optional<VX_UINT32> decided; ///< nullopt: the library's value
    bool isChangeAllowed;
};
constexpr SpeedCase SPEEDS[] = {
    {1, 0, 0, false},
    {1, 8, 0, false},
    {1, 16, 0, false},
    {1, 21, 0, false},
    {1, 22, std::nullopt, true},
    {1, 23, std::nullopt, true},
    {1, 49, std::nullopt, true},
    {1, 50, 1, false},
    {1, 51, 1, false},
    {1, 100, 1, false},
    {1, 0xFFFFFFFF, 1, false},
    // Not online: the speed is ignored.
    {3, 0, std::nullopt, true},
    {3, 8, std::nullopt, true},
    {3, 22, std::nullopt, true},
    {3, 50, std::nullopt, true},
    {3, 100, std::nullopt, true},
    {0, 8, std::nullopt, true},
    {2, 50, std::nullopt, true},
    {255, 100, std::nullopt, true},
};

TEST(FecRuleTest, SpeedAndAdapterDecide) {
    for (const SpeedCase& row : SPEEDS) {
        _vexapi_protocol_t protocol{};
        protocol.PortState = row.state;
        protocol.PortSpeed = row.speed;
        for (const VX_UINT32 status : {0u, 1u, 7u}) {
            SCOPED_TRACE("state " + std::to_string(row.state) + " speed " + std::to_string(row.speed) + " status " +
                         std::to_string(status));
            EXPECT_EQ(EffectiveFecStatus(false, protocol, status), row.decided.value_or(status));
            EXPECT_EQ(EffectiveFecStatus(true, protocol, status), 1u);
        }
        EXPECT_EQ(IsFecChangeAllowed(false, protocol), row.isChangeAllowed) << row.speed;
        EXPECT_FALSE(IsFecChangeAllowed(true, protocol)) << row.speed;
    }
}

class FecTest : public FamilyTest {
protected:
    FecTest() {
        port->PortSpeed = 22; // 16 Gbps: the choice is open
        Fake().onFCGetFECSupportInfo = [this](VX_PORT_HANDLE*, VX_UINT32* status) {
            Chatter();
            *status = libraryStatus;
            return 0u;
        };
        Fake().onIsMezzAdapter = [this](VX_PORT_HANDLE*, VX_UINT8* flag) {
            Chatter();
            *flag = mezzanineFlag;
            return 0u;
        };
        Fake().onGetFWPrivateStats = [this](VX_PORT_HANDLE*, _VEXAPI_FWPRIVATESTATSEntry** entries, VX_UINT32* count) {
            Chatter();
            *entries = hasEntries ? AllocatedCopy(counters) : nullptr;
            *count = mCount;
            return statsStatus;
        };
        Fake().onFCSetFECSupportInfo = [](VX_PORT_HANDLE*, VX_UINT32) {
            Chatter();
            return 0u;
        };
        Fake().onResetFECCounters = [](VX_PORT_HANDLE*) {
            Chatter();
            return 0u;
        };
    }

    static std::string Shown(const Format& format, const std::string& status, std::optional<bool> reboot = std::nullopt,
                             const std::string& correctable = "7", const std::string& uncorrectable = "9") {
        std::vector<Field> fields = {{"Message", "Success"}};
        if (reboot.has_value()) {
            fields.push_back(Flag("Reboot Required", *reboot));
        }
        return format.Report(
            "FECInfo", fields, "FEC",
            format.Structure("FECList", format.FieldsOf({{"FEC_Status", status},
                                                         {"Correctable FEC errors", correctable, Field::NUMBER},
                                                         {"Uncorrectable FEC errors", uncorrectable, Field::NUMBER}})));
    }
    /// In a failure of `set`, "Reboot Required" precedes "Message".
    static std::string Error(const Format& format, bool isSet, const std::string& message) {
        std::vector<Field> fields = {{"Message", message}};
        if (isSet) {
            fields.insert(fields.begin(), Flag("Reboot Required", false));
        }
        return format.Report("FECInfo", fields, "FEC", "");
    }
    void ExpectSet(const std::string& options, ResultCode code, const std::string& document) const {
        const CommandRun run = RunPort("fec", "set", options);
        EXPECT_EQ(run.code, code) << options;
        EXPECT_EQ(run.output, document) << options;
        EXPECT_FALSE(run.wasLeftRedirected);
    }

    VX_UINT32 libraryStatus = 1;
    VX_UINT8 mezzanineFlag = 0;
    VX_UINT32 statsStatus = 0;
    bool hasEntries = true;
    VX_UINT32 mCount = 1;
    std::vector<_VEXAPI_FWPRIVATESTATSEntry> counters = {{7, 9, {}}, {111, 112, {}}};
};

const std::string GET_FEC = "VEXAPI_FCGetFECSupportInfo(21:00:0a:0b:0c:0d:00:01)";
const std::string IS_MEZZ = "VEXAPI_IsMezzAdapter(21:00:0a:0b:0c:0d:00:01)";
const std::string GET_STATS = "VEXAPI_GetFWPrivateStats(21:00:0a:0b:0c:0d:00:01)";
const std::string RESET = "VEXAPI_ResetFECCounters(21:00:0a:0b:0c:0d:00:01)";
const std::string SET_ON = "VEXAPI_FCSetFECSupportInfo(21:00:0a:0b:0c:0d:00:01, 1)";
const std::string SET_OFF = "VEXAPI_FCSetFECSupportInfo(21:00:0a:0b:0c:0d:00:01, 0)";

TEST_F(FecTest, GetIsByteExact) {
    EXPECT_EQ(RunPort("fec", "get").output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                            "<structure typeName=\"FECInfo\">\n"
                                            "<field name=\"Message\">\n<string>Success</string></field>\n"
                                            "<field name=\"FEC\">\n"
                                            "<list type=\"structure\">\n"
                                            "<structure typeName=\"FECList\">\n"
                                            "<field name=\"FEC_Status\">\n<string>true</string></field>\n"
                                            "<field name=\"Correctable FEC errors\">\n<int>7</int></field>\n"
                                            "<field name=\"Uncorrectable FEC errors\">\n<int>9</int></field>\n"
                                            "</structure>\n"
                                            "</list>\n"
                                            "</field>\n"
                                            "</structure>\n"
                                            "</output>\n");
    EXPECT_EQ(RunPort("fec", "setcli", "-r reset").output, "****************************************************\n"
                                                           "FECInfo:\n"
                                                           "Message: Success\n"
                                                           "Reboot Required: true\n"
                                                           "FEC: FECList:\n"
                                                           "FEC_Status: true\n"
                                                           "Correctable FEC errors: 7\n"
                                                           "Uncorrectable FEC errors: 9\n"
                                                           "****************************************************\n");
}

TEST_F(FecTest, ErrorsAreByteExact) {
    port->PortInterfaceType = 3;
    EXPECT_EQ(RunPort("fec", "set").output,
              "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
              "<structure typeName=\"FECInfo\">\n"
              "<field name=\"Reboot Required\">\n<bool>false</bool></field>\n"
              "<field name=\"Message\">\n<string>Failed, feature not supported for virtual port</string></field>\n"
              "<field name=\"FEC\">\n"
              "<list type=\"structure\">\n"
              "</list>\n"
              "</field>\n"
              "</structure>\n"
              "</output>\n");
    EXPECT_EQ(RunPort("fec", "getcli").output, "****************************************************\n"
                                               "FECInfo:\n"
                                               "Message: Failed, feature not supported for virtual port\n"
                                               "FEC: ****************************************************\n");
}

TEST_F(FecTest, GetShowsTheEffectiveStatus) {
    for (const SpeedCase& row : SPEEDS) {
        port->PortState = row.state;
        port->PortSpeed = row.speed;
        for (const Format& format : FORMATS) {
            for (const VX_UINT8 flag : std::initializer_list<VX_UINT8>{0, 1, 2}) { // only 1 is a mezzanine adapter
                for (const VX_UINT32 status : {0u, 1u, 2u}) {
                    mezzanineFlag = flag;
                    libraryStatus = status;
                    const bool isOn = flag == 1 || row.decided.value_or(status) != 0;
                    const CommandRun run = RunPort("fec", format.Leaf("get"));
                    EXPECT_EQ(run.code, RC_SUCCESS);
                    EXPECT_EQ(run.output, Shown(format, isOn ? "true" : "false")) << row.speed << " flag " << +flag;
                }
            }
        }
    }
    EXPECT_EQ(PortCalls(), (Calls{GET_FEC, IS_MEZZ, GET_STATS}));
}

TEST_F(FecTest, ShowsTheLow32BitsOfTheCounters) {
    // 2^32 + 5, and 2^64 - 1, whose low half is 4294967295
    counters = {{0x1'0000'0005, ~VX_UINT64{0}, {}}};
    for (const Format& format : FORMATS) {
        EXPECT_EQ(RunPort("fec", format.Leaf("get")).output, Shown(format, "true", std::nullopt, "5", "4294967295"));
    }
    counters = {{0x8000'0000, 0x7'0000'0000, {}}};
    EXPECT_EQ(RunPort("fec", "get").output, Shown(XML, "true", std::nullopt, "2147483648", "0"));
}

TEST_F(FecTest, SetWithoutOptionsShowsTheStatus) {
    for (const Format& format : FORMATS) {
        const CommandRun run = RunPort("fec", format.Leaf("set"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, Shown(format, "true", false));
    }
    EXPECT_EQ(PortCalls(), (Calls{GET_FEC, GET_STATS, IS_MEZZ})); // the order differs from `get`
    // An option without a value is ignored.
    ExpectSet("--fec-status", RC_SUCCESS, Shown(XML, "true", false));
    ExpectSet("-r", RC_SUCCESS, Shown(XML, "true", false));
    EXPECT_EQ(PortCalls(), (Calls{GET_FEC, GET_STATS, IS_MEZZ}));
}

TEST_F(FecTest, SetWritesAndResets) {
    const struct {
        const char* options;
        const char* status;
        Calls written;
    } cases[] = {
        {"--fec-status true", "true", {SET_ON}},
        {"-f TRUE", "true", {SET_ON}},
        {"-F false", "false", {SET_OFF}},
        {"--FEC-Status False", "false", {SET_OFF}},
        {"--reset reset", "true", {RESET}},
        {"-R RESET", "true", {RESET}},
        {"-r reset -f false", "false", {SET_OFF, RESET}}, // the status goes first
        {"-f true --reset reset", "true", {SET_ON, RESET}},
        {"-f true -f false", "true", {SET_ON}}, // the first counts
    };
    for (const auto& row : cases) {
        ExpectSet(row.options, RC_SUCCESS, Shown(XML, row.status, true));
        Calls calls = {GET_FEC, GET_STATS, IS_MEZZ};
        calls.insert(calls.end(), row.written.begin(), row.written.end());
        EXPECT_EQ(PortCalls(), calls) << row.options;
    }
}

TEST_F(FecTest, SetRefusesInOrder) {
    const struct {
        VX_UINT32 speed;
        const char* options;
        ResultCode code;
        const char* message;
        Calls written;
    } cases[] = {
        {22, "-f on", RC_INVALID_PARAMETER, INVALID, {}},
        {22, "-f truee", RC_INVALID_PARAMETER, INVALID, {}},
        {22, "-f -r reset", RC_INVALID_PARAMETER, INVALID, {}}, // the next word is the value, whatever it is
        {8, "-f true", RC_READ_ONLY_MODE, READ_ONLY, {}},
        {8, "-f on", RC_READ_ONLY_MODE, READ_ONLY, {}}, // before the value
        {50, "-f false -r reset", RC_READ_ONLY_MODE, READ_ONLY, {}},
        {22, "-r other", RC_INVALID_PARAMETER, INVALID, {}},
        {8, "-r res", RC_INVALID_PARAMETER, INVALID, {}},
        {22, "-f true -r other", RC_INVALID_PARAMETER, INVALID, {SET_ON}}, // the status is written all the same
    };
    for (const auto& row : cases) {
        port->PortSpeed = row.speed;
        ExpectSet(row.options, row.code, Error(XML, true, row.message));
        Calls calls = {GET_FEC, GET_STATS, IS_MEZZ};
        calls.insert(calls.end(), row.written.begin(), row.written.end());
        EXPECT_EQ(PortCalls(), calls) << row.options;
    }
    // A reset needs no permission.
    port->PortSpeed = 8;
    ExpectSet("-r reset", RC_SUCCESS, Shown(XML, "false", true));
    mezzanineFlag = 1;
    ExpectSet("-f true", RC_READ_ONLY_MODE, Error(XML, true, READ_ONLY));
    // Not online: any speed can be changed.
    mezzanineFlag = 2;
    port->PortState = 3;
    ExpectSet("-f false", RC_SUCCESS, Shown(XML, "false", true));
}

/// A rejected call of a `cli` leaf prints its usage after the document.
TEST_F(FecTest, CliLeavesPrintTheirUsage) {
    EXPECT_EQ(RunPort("fec", "setcli", "-f on").output, Error(TEXT, true, INVALID) + "Usage: set\r\n");
    EXPECT_EQ(Run("-t port -s fec getcli FC_x").output, Error(TEXT, false, INVALID) + "Usage: get\r\n");
    EXPECT_EQ(Run("-t port -s fec getcli help").output, Error(TEXT, false, "Failed, Unknown") + "Usage: get\r\n");
    port->PortSpeed = 8;
    EXPECT_EQ(RunPort("fec", "setcli", "-f on").output, Error(TEXT, true, READ_ONLY)); // 47: no usage
}

TEST_F(FecTest, AdmissionComesFirst) {
    for (const bool isSet : {false, true}) {
        const std::string leaf = isSet ? "set" : "get";
        const auto expect = [&](const CommandRun& run, ResultCode code, const char* message) {
            EXPECT_EQ(run.code, code) << message;
            EXPECT_EQ(run.output, Error(XML, isSet, message));
            EXPECT_EQ(PortCalls(), Calls{});
        };
        expect(Run("-t port -s fec " + leaf), RC_INVALID_PARAMETER, INVALID);
        expect(Run("-t port -s fec " + leaf + " FC_21:00:0a:0b:0c:0d:00:99"), RC_INVALID_PARAMETER, INVALID);
        expect(Run("-t port -s fec " + leaf + " help"), RC_HELP_REQUESTED, "Failed, Unknown");
        for (const ChipRow& chip : CHIPS) {
            SetChip(*port, chip.chip);
            port->PortInterfaceType = 1;
            if (chip.chip == ROWAN_FC || chip.chip == LARCH || chip.chip == ALDER || chip.chip == BIRCH) {
                EXPECT_EQ(RunPort("fec", leaf).code, RC_SUCCESS) << chip.name;
            } else {
                expect(RunPort("fec", leaf), RC_FEATURE_NOT_SUPPORTED, NOT_SUPPORTED);
            }
            port->PortInterfaceType = 3; // before the chip
            expect(RunPort("fec", leaf), RC_NOT_SUPPORTED_FOR_VPORT, NO_VIRTUAL);
        }
        port->PortInterfaceType = 1;
        SetChip(*port, BIRCH);
        LoseHost();
        expect(RunPort("fec", leaf), RC_HOST_NOT_FOUND, "Failed, Host not found");
        Fake().host.hasList = true;
    }
}

TEST_F(FecTest, LibraryFailuresEndTheCommand) {
    const struct {
        const char* function;
        const char* options;
        ResultCode code;
        const char* message;
        Calls get; ///< calls up to then; empty: not in `get`
        Calls set;
    } cases[] = {
        {"VEXAPI_FCGetFECSupportInfo", "-f true", RC_CFG_READ_FAILED, READ_FAILED, {GET_FEC}, {GET_FEC}},
        {"VEXAPI_GetFWPrivateStats",
         "-f true",
         RC_CFG_READ_FAILED,
         READ_FAILED,
         {GET_FEC, IS_MEZZ, GET_STATS},
         {GET_FEC, GET_STATS}},
        {"VEXAPI_IsMezzAdapter",
         "-f true",
         RC_CFG_READ_FAILED,
         READ_FAILED,
         {GET_FEC, IS_MEZZ},
         {GET_FEC, GET_STATS, IS_MEZZ}},
        {"VEXAPI_FCSetFECSupportInfo",
         "-f true -r reset",
         RC_CFG_UPDATE_FAILED,
         UPDATE_FAILED,
         {},
         {GET_FEC, GET_STATS, IS_MEZZ, SET_ON}},
        {"VEXAPI_ResetFECCounters",
         "-f true -r reset",
         RC_CFG_UPDATE_FAILED,
         UPDATE_FAILED,
         {},
         {GET_FEC, GET_STATS, IS_MEZZ, SET_ON, RESET}},
    };
    for (const auto& row : cases) {
        for (const VX_UINT32 status : {1u, 118u, 0x80000000u}) {
            Fake().ReturnInTurn(row.function, {status});
            ExpectSet(row.options, row.code, Error(XML, true, row.message));
            EXPECT_EQ(PortCalls(), row.set) << row.function;
            if (!row.get.empty()) {
                Fake().ReturnInTurn(row.function, {status});
                const CommandRun run = RunPort("fec", "getcli");
                EXPECT_EQ(run.code, row.code);
                EXPECT_EQ(run.output, Error(TEXT, false, row.message));
                EXPECT_EQ(PortCalls(), row.get) << row.function;
            }
        }
    }
}

/// Whatever the library allocated is released, even with a failure status: see the leak check of a sanitized build.
TEST_F(FecTest, CountersThatAreNoneAreAFailure) {
    const struct {
        VX_UINT32 status;
        bool hasEntries;
        VX_UINT32 count;
    } cases[] = {{0, false, 1}, {0, true, 0}, {0, false, 0}, {1, true, 1}, {1, false, 0}};
    for (const auto& row : cases) {
        statsStatus = row.status;
        hasEntries = row.hasEntries;
        mCount = row.count;
        for (const bool isSet : {false, true}) {
            const CommandRun run = RunPort("fec", isSet ? "set" : "get", isSet ? "-f true" : "");
            EXPECT_EQ(run.code, RC_CFG_READ_FAILED);
            EXPECT_EQ(run.output, Error(XML, isSet, READ_FAILED));
        }
    }
    statsStatus = 0;
    hasEntries = true;
    mCount = 2; // only the first is read
    EXPECT_EQ(RunPort("fec", "get").output, Shown(XML, "true"));
}

/// The n-th redirection can't be opened: nothing after it is called.
TEST_F(FecTest, WithoutTheRedirectionNothingIsCalled) {
    const struct {
        bool isSet;
        const char* lastCalled; ///< the failing redirection follows this function; null: it is the first one
        Calls calls;
    } cases[] = {
        {false, nullptr, {}},
        {false, "get", {GET_FEC}},
        {false, "mezz", {GET_FEC, IS_MEZZ}},
        {true, nullptr, {}},
        {true, "get", {GET_FEC}},
        {true, "stats", {GET_FEC, GET_STATS}},
        {true, "mezz", {GET_FEC, GET_STATS, IS_MEZZ}},
        {true, "set", {GET_FEC, GET_STATS, IS_MEZZ, SET_ON}},
    };
    for (const auto& row : cases) {
        NoFiles files;
        const std::string last = row.lastCalled != nullptr ? row.lastCalled : "";
        const auto after = [&files, last](const char* name) {
            if (last == name) {
                files.Begin();
            }
        };
        Fake().onGetAdapterList = [after] {
            after("");
            return FakeLibrary::Get().host.List();
        };
        Fake().onFCGetFECSupportInfo = [after](VX_PORT_HANDLE*, VX_UINT32*) { return after("get"), 0u; };
        Fake().onIsMezzAdapter = [after](VX_PORT_HANDLE*, VX_UINT8*) { return after("mezz"), 0u; };
        Fake().onFCSetFECSupportInfo = [after](VX_PORT_HANDLE*, VX_UINT32) { return after("set"), 0u; };
        Fake().onGetFWPrivateStats = [this, after](VX_PORT_HANDLE*, _VEXAPI_FWPRIVATESTATSEntry** entries,
                                                   VX_UINT32* count) {
            *entries = AllocatedCopy(counters);
            *count = 1;
            return after("stats"), 0u;
        };
        const CommandRun run = RunPort("fec", row.isSet ? "set" : "get", row.isSet ? "-f true -r reset" : "");
        EXPECT_EQ(run.code, RC_FILE_ERROR);
        EXPECT_EQ(run.output, Error(XML, row.isSet, NO_FILE));
        EXPECT_EQ(PortCalls(), row.calls);
    }
}

} // namespace
