#include "HBAParamsTest.h"

using namespace family_test;

namespace {

constexpr char UNKNOWN[] = "Failed, Unknown";
constexpr char INVALID[] = "Failed, Invalid parameter";
constexpr char READ_FAILED[] = "Failed, NVRAM read failed";
constexpr char UPDATE_FAILED[] = "Failed, NVRAM update failed";
constexpr char NO_HOST[] = "Failed, Host not found";
constexpr char NO_VIRTUAL[] = "Failed, feature not supported for virtual port";

class HBAParamsTest : public HBAParamsTestBase {
protected:
    Calls ReadCalls() const { return {PortCall("GetHBAParamsInfo")}; }
    Calls SetCalls() const {
        return {PortCall("GetHBAParamsInfo"), PortCall("UpdateHBAParameters"), "VEXAPI_IsRebootRequired()"};
    }
    static std::string RestoreError(const Format& format, const std::string& message) {
        return format.Flat("RestoreDefaultsInfo", {Flag("Reboot Required", false), {"Message", message}});
    }
    static std::string SaveError(const Format& format, const std::string& message) {
        return format.Flat("HBAParametersSave", {{"Message", message}});
    }
    /// Output of a cli leaf after a code that shows its usage.
    static std::string UsageOf(const Format& format, const std::string& leaf) {
        return format.IsXml() ? "" : "Usage: " + leaf + "\r\n";
    }
};

TEST_F(HBAParamsTest, DocumentsAreByteExact) {
    EXPECT_EQ(Run("get").output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                 "<structure typeName=\"HBAParametersInfo\">\n"
                                 "<field name=\"Message\">\n<string>Success</string></field>\n"
                                 "<field name=\"HBAParameters\">\n"
                                 "<list type=\"structure\">\n"
                                 "<structure typeName=\"HBAParametersList\">\n"
                                 "<field name=\"Connection Options\">\n<string>Point_To_Point_Only</string></field>\n"
                                 "<field name=\"Data Rate\">\n<string>Auto</string></field>\n"
                                 "<field name=\"Operation Mode\">\n"
                                 "<string>Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O</string>"
                                 "</field>\n"
                                 "<field name=\"Frame Size\">\n<int>2048</int></field>\n"
                                 "<field name=\"Enable Hard Loop Id\">\n<string>true</string></field>\n"
                                 "<field name=\"Hard Loop Id\">\n<int>33</int></field>\n"
                                 "<field name=\"Loop Reset Delay In Seconds\">\n<int>5</int></field>\n"
                                 "<field name=\"Interrupt Delay Timer In 100us\">\n<int>11</int></field>\n"
                                 "<field name=\"Execution Throttle\">\n<int>65000</int></field>\n"
                                 "<field name=\"Login Retry Count\">\n<int>9</int></field>\n"
                                 "<field name=\"Port Down Retry Count\">\n<int>30</int></field>\n"
                                 "<field name=\"Link Down Timeout In Seconds\">\n<int>31</int></field>\n"
                                 "<field name=\"Luns Per Target\">\n<int>8</int></field>\n"
                                 "<field name=\"Enable LR\">\n<string>false</string></field>\n"
                                 "<field name=\"Enable Host Hba Bios\">\n<string>false</string></field>\n"
                                 "<field name=\"Enable Fc Tape Support\">\n<string>true</string></field>\n"
                                 "<field name=\"Enable Lip Full Login\">\n<string>true</string></field>\n"
                                 "<field name=\"Enable Target Reset\">\n<string>false</string></field>\n"
                                 "<field name=\"Enable Fabric Assigned WWN\">\n<string>true</string></field>\n"
                                 "<field name=\"Enable FWCM\">\n<string>true</string></field>\n"
                                 "<field name=\"Virtual Lane\">\n<string>true</string></field>\n"
                                 "</structure>\n"
                                 "</list>\n"
                                 "</field>\n"
                                 "</structure>\n"
                                 "</output>\n");
    Stage(SNAPSHOT);
    EXPECT_EQ(Run("setcli").output, "****************************************************\n"
                                    "HBAParametersInfo:\n"
                                    "Message: Success\n"
                                    "Reboot Required: true\n"
                                    "HBAParameters: HBAParametersList:\n"
                                    "Connection Options: Point_To_Point_Only\n"
                                    "Data Rate: Auto\n"
                                    "Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O\n"
                                    "Frame Size: 2048\n"
                                    "Enable Hard Loop Id: true\n"
                                    "Hard Loop Id: 33\n"
                                    "Loop Reset Delay In Seconds: 5\n"
                                    "Interrupt Delay Timer In 100us: 11\n"
                                    "Execution Throttle: 65000\n"
                                    "Login Retry Count: 9\n"
                                    "Port Down Retry Count: 30\n"
                                    "Link Down Timeout In Seconds: 31\n"
                                    "Luns Per Target: 8\n"
                                    "Enable LR: false\n"
                                    "Enable Host Hba Bios: false\n"
                                    "Enable Fc Tape Support: true\n"
                                    "Enable Lip Full Login: true\n"
                                    "Enable Target Reset: false\n"
                                    "Enable Fabric Assigned WWN: true\n"
                                    "Enable FWCM: true\n"
                                    "Virtual Lane: true\n"
                                    "****************************************************\n");
}

TEST_F(HBAParamsTest, ErrorsAreByteExact) {
    port->PortInterfaceType = 3;
    EXPECT_EQ(Run("set").output,
              "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
              "<structure typeName=\"HBAParametersInfo\">\n"
              "<field name=\"Reboot Required\">\n<bool>false</bool></field>\n"
              "<field name=\"Message\">\n<string>Failed, feature not supported for virtual port</string></field>\n"
              "<field name=\"HBAParameters\">\n"
              "<list type=\"structure\">\n"
              "</list>\n"
              "</field>\n"
              "</structure>\n"
              "</output>\n");
    EXPECT_EQ(Run("setFilecli").output, "****************************************************\n"
                                        "HBAParametersInfo:\n"
                                        "Message: Failed, feature not supported for virtual port\n"
                                        "HBAParameters: ****************************************************\n");
    EXPECT_EQ(Run("restoreDefaults").output,
              "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
              "<structure typeName=\"RestoreDefaultsInfo\">\n"
              "<field name=\"Reboot Required\">\n<bool>false</bool></field>\n"
              "<field name=\"Message\">\n<string>Failed, feature not supported for virtual port</string></field>\n"
              "</structure>\n"
              "</output>\n");
    EXPECT_EQ(Run("savecli", "/tmp/file").output, "****************************************************\n"
                                                  "HBAParametersSave:\n"
                                                  "Message: Failed, feature not supported for virtual port\n"
                                                  "****************************************************\n");
}

TEST_F(HBAParamsTest, EveryCodeHasItsText) {
    for (const Format& format : FORMATS) {
        for (const VX_UINT32 code : {0u, 1u, 2u, 3u, 7u, 0xFFFFFFFFu}) {
            nvram.ConnetionOptions = code;
            static constexpr const char* CONNECTIONS[] = {"Loop_Only", "Point_To_Point_Only",
                                                          "Loop_Preferred_Otherwise_Point_To_Point"};
            EXPECT_EQ(
                Run(format.Leaf("get")).output,
                Document(format, WithField(Shown(), "Connection Options", code < 3 ? CONNECTIONS[code] : "Unknown")));
        }
        nvram.ConnetionOptions = 1;
        for (const VX_UINT32 code : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 0xFFFFFFFFu}) {
            nvram.DataRate = code;
            static constexpr const char* RATES[] = {"1_Gbps", "2_Gbps",  "Auto",    "4_Gbps",
                                                    "8_Gbps", "16_Gbps", "32_Gbps", "64_Gbps"};
            EXPECT_EQ(Run(format.Leaf("get")).output,
                      Document(format, WithField(Shown(), "Data Rate", code < 8 ? RATES[code] : "Unknown")));
        }
        nvram.DataRate = 2;
        for (const VX_UINT32 code : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u}) {
            nvram.OperationMode = code;
            const char* const text = code == 0   ? EVERY_COMPLETION
                                     : code == 5 ? TIMER_EXPIRES
                                     : code == 6 ? TIMER_OR_IDLE
                                                 : "Unknown";
            EXPECT_EQ(Run(format.Leaf("get")).output, Document(format, WithField(Shown(), "Operation Mode", text)));
        }
        nvram.OperationMode = 6;
    }
}

TEST_F(HBAParamsTest, EveryFieldHasItsLine) {
    struct NumberRow {
        VX_UINT32 _VEXAPI_HBAParameters::*field;
        const char* label;
    };
    const NumberRow numbers[] = {
        {&_VEXAPI_HBAParameters::FrameSize, "Frame Size"},
        {&_VEXAPI_HBAParameters::HardLoopId, "Hard Loop Id"},
        {&_VEXAPI_HBAParameters::LoopResetDelay, "Loop Reset Delay In Seconds"},
        {&_VEXAPI_HBAParameters::InterruptDelayTimer, "Interrupt Delay Timer In 100us"},
        {&_VEXAPI_HBAParameters::ExecutionThrottle, "Execution Throttle"},
        {&_VEXAPI_HBAParameters::LoginRetryCount, "Login Retry Count"},
        {&_VEXAPI_HBAParameters::PortDownRetryCount, "Port Down Retry Count"},
        {&_VEXAPI_HBAParameters::LinkDownTimeout, "Link Down Timeout In Seconds"},
        {&_VEXAPI_HBAParameters::MaxLunsPerTarget, "Luns Per Target"},
    };
    for (const NumberRow& row : numbers) {
        const VX_UINT32 before = nvram.*row.field;
        for (const VX_UINT32 number : {0u, 4711u, 0xFFFFFFFFu}) { // as the library has it, even if invalid
            nvram.*row.field = number;
            EXPECT_EQ(Run("get").output, Document(XML, WithField(Shown(), row.label, std::to_string(number))));
        }
        nvram.*row.field = before;
    }
    struct SwitchRow {
        VX_UINT32 _VEXAPI_HBAParameters::*field;
        const char* label;
        bool isInverted;
    };
    const SwitchRow switches[] = {
        {&_VEXAPI_HBAParameters::EnableHardLoopId, "Enable Hard Loop Id", false},
        {&_VEXAPI_HBAParameters::EnableLRBit, "Enable LR", false},
        {&_VEXAPI_HBAParameters::DisableBIOS, "Enable Host Hba Bios", true},
        {&_VEXAPI_HBAParameters::EnableFibreChannelTapeSupport, "Enable Fc Tape Support", false},
        {&_VEXAPI_HBAParameters::EnableLipFullLogin, "Enable Lip Full Login", false},
        {&_VEXAPI_HBAParameters::EnableTargetReset, "Enable Target Reset", false},
        {&_VEXAPI_HBAParameters::EnableFabricAssignWWN, "Enable Fabric Assigned WWN", false},
        {&_VEXAPI_HBAParameters::DisableSCM, "Enable FWCM", true},
    };
    for (const SwitchRow& row : switches) {
        const VX_UINT32 before = nvram.*row.field;
        for (const VX_UINT32 number : {0u, 1u}) {
            nvram.*row.field = number;
            const bool isTrue = (number == 1) != row.isInverted;
            EXPECT_EQ(Run("getcli").output, Document(TEXT, WithField(Shown(), row.label, isTrue ? "true" : "false")));
        }
        nvram.*row.field = before;
    }
    nvram.EnableVirtualLane = 0;
    EXPECT_EQ(Run("get").output, Document(XML, WithField(Shown(), "Virtual Lane", "false")));
    // The bit that is only in the file is not shown.
    nvram.EnableVirtualLane = 1;
    nvram.RecvOutOfOrderDataBit = 0;
    EXPECT_EQ(Run("get").output, Document(XML, Shown()));
}

TEST_F(HBAParamsTest, AdaptersHideWhatTheyHaveNot) {
    nvram.DataRate = 5;
    for (const AdapterRow& row : ADAPTERS) {
        SetAdapter(row.adapter);
        const auto isIn = [&row](const Adapters& adapters) { return IsIn(adapters, row.adapter); };
        std::vector<Field> fields = WithField(Shown(), "Data Rate", isIn(ROWAN_CNAS) ? "10_Gbps" : "16_Gbps");
        if (isIn({A_WILLOW})) {
            fields = WithField(fields, "Operation Mode", "NA");
            fields = WithField(fields, "Interrupt Delay Timer In 100us", "0");
        }
        if (isIn(TEN_GS)) {
            fields = WithField(fields, "Enable Hard Loop Id", "NA");
            fields = WithField(fields, "Hard Loop Id", "0");
            fields = WithField(fields, "Enable Lip Full Login", "NA");
        }
        if (isIn(ROWAN_CNAS)) {
            fields = WithField(fields, "Execution Throttle", "0");
        }
        if (isIn({A_4G, A_WILLOW})) {
            fields = WithField(fields, "Enable LR", "NA");
        }
        if (isIn(Adapters{A_4G, A_8G} + TEN_GS)) {
            fields = WithField(fields, "Enable Fabric Assigned WWN", "NA");
        }
        if (!isIn(UEFI_CAPABLES)) {
            fields = WithField(fields, "Enable FWCM", "NA");
        }
        if (!isIn(BIRCHES)) {
            fields = WithField(fields, "Virtual Lane", "NA");
        }
        for (const Format& format : FORMATS) {
            EXPECT_EQ(Run(format.Leaf("get")).output, Document(format, fields)) << row.name;
        }
    }
}

TEST_F(HBAParamsTest, GetNeverLooksAtTheFile) {
    Stage(WithLine(SNAPSHOT, "Frame_Size", "512"));
    const auto identity = FileIdentity();
    for (const Format& format : FORMATS) {
        const CommandRun run = Run(format.Leaf("get"), "-z 1024");
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, Document(format, Shown()));
        EXPECT_EQ(PortCalls(), ReadCalls());
    }
    EXPECT_EQ(FileIdentity(), identity);
}

TEST_F(HBAParamsTest, SetFileBeginsWithASnapshot) {
    for (const Format& format : FORMATS) {
        RemoveFiles();
        const CommandRun run = Run(format.Leaf("setFile"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, Document(format, Shown())); // no reboot is requested
        EXPECT_EQ(PortCalls(), ReadCalls());
        EXPECT_EQ(Staged(), SNAPSHOT);
        EXPECT_EQ(ReadFile(FilePath() + "_tmp"), std::nullopt);
    }
}

TEST_F(HBAParamsTest, SetFileShowsThePendingState) {
    for (const Format& format : FORMATS) {
        RemoveFiles();
        std::vector<Field> fields = WithField(Shown(), "Frame Size", "512");
        EXPECT_EQ(Run(format.Leaf("setFile"), "-z 512").output, Document(format, fields));
        fields = WithField(fields, "Enable Host Hba Bios", "true");
        EXPECT_EQ(Run(format.Leaf("setFile"), "--enable-bios true").output, Document(format, fields));
        EXPECT_EQ(Staged(), WithLine(WithLine(SNAPSHOT, "Frame_Size", "512"), "Disable_BIOS", "0"));
        // The file keeps its settings, whatever the port has meanwhile.
        nvram.LoginRetryCount = 77;
        EXPECT_EQ(Run(format.Leaf("setFile"), "").output, Document(format, fields));
        EXPECT_EQ(PortCalls(), ReadCalls());
        nvram.LoginRetryCount = 9;
    }
}

TEST_F(HBAParamsTest, ARefusedFirstSetFileLeavesTheSnapshot) {
    for (const Format& format : FORMATS) {
        RemoveFiles();
        const CommandRun run = Run(format.Leaf("setFile"), "-z 512 -u 256");
        EXPECT_EQ(run.code, RC_INVALID_PARAMETER);
        EXPECT_EQ(run.output, Error(format, INVALID) + UsageOf(format, "setFile"));
        EXPECT_EQ(Staged(), SNAPSHOT);
        EXPECT_EQ(Run(format.Leaf("set")).code, RC_SUCCESS);
        EXPECT_TRUE(WasWritten(nvram)); // the snapshot, unchanged
    }
}

TEST_F(HBAParamsTest, RefusalsHaveTheirTexts) {
    struct Case {
        Adapter adapter;
        std::string options;
        ResultCode code;
        const char* message;
    };
    const Case cases[] = {
        {A_BIRCH, "-z 1", RC_INVALID_PARAMETER, INVALID},
        {A_BIRCH, std::string("-e 1 -m ") + EVERY_COMPLETION, RC_INVALID_DATA,
         "Failed, Interrupt Delay Timer value > 0 not supported for Operation Mode value "
         "Interrupt_For_Every_I/O_Completion"},
        {A_BIRCH, "-c Loop_Only -d 32_Gbps", RC_INVALID_FIELD,
         "Failed, Connection Options value Loop_Only not supported for data rate value 16 Gbps and above"},
        // The same text if no data rate is involved
        {A_BIRCH_64G, "-c Loop_Only", RC_INVALID_FIELD,
         "Failed, Connection Options value Loop_Only not supported for data rate value 16 Gbps and above"},
        {A_BIRCH, "-x 1", RC_FEATURE_NOT_SUPPORTED, "Failed, feature not supported"},
        {A_CEDAR, "-d Auto", RC_READ_ONLY_MODE, "Failed, Read-Only parameter"},
    };
    for (const Case& row : cases) {
        SetAdapter(row.adapter);
        for (const Format& format : FORMATS) {
            Stage(SNAPSHOT);
            const CommandRun run = Run(format.Leaf("setFile"), row.options);
            EXPECT_EQ(run.code, row.code) << row.options;
            EXPECT_EQ(run.output, Error(format, row.message) +
                                      (row.code == RC_INVALID_PARAMETER ? UsageOf(format, "setFile") : ""));
        }
    }
}

TEST_F(HBAParamsTest, SetWritesTheWholeRecordOnce) {
    for (const Format& format : FORMATS) {
        Run("setFile", "-z 512");
        Run("setFile", "-b true -y 256 -j false");
        const CommandRun run = Run(format.Leaf("set"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        std::vector<Field> fields = WithField(Shown(), "Frame Size", "512");
        fields = WithField(fields, "Enable Host Hba Bios", "true");
        fields = WithField(fields, "Luns Per Target", "256");
        fields = WithField(fields, "Virtual Lane", "false");
        EXPECT_EQ(run.output, Document(format, fields, true));
        EXPECT_EQ(PortCalls(), SetCalls());
        _VEXAPI_HBAParameters expected = nvram; // including everything unknown to the tool
        expected.FrameSize = 512;
        expected.DisableBIOS = 0;
        expected.MaxLunsPerTarget = 256;
        expected.EnableVirtualLane = 0;
        EXPECT_TRUE(WasWritten(expected));
        EXPECT_EQ(Staged(), "no file");

        // The next one has nothing to write.
        EXPECT_EQ(Run(format.Leaf("set")).output, Error(format, UNKNOWN, true));
    }
}

/// `set` takes no options; further words are ignored.
TEST_F(HBAParamsTest, SetReadsNoOptions) {
    Stage(SNAPSHOT);
    EXPECT_EQ(Run("set", "-z 512 -u 4096").code, RC_SUCCESS);
    EXPECT_TRUE(WasWritten(nvram));
}

TEST_F(HBAParamsTest, SetWritesASnapshotOverOtherChanges) {
    Run("setFile");
    const _VEXAPI_HBAParameters before = nvram;
    nvram.LoginRetryCount = 77;
    nvram.FrameSize = 1024;
    Run("set");
    EXPECT_TRUE(WasWritten(before));
}

TEST_F(HBAParamsTest, SetWithNothingPending) {
    for (const Format& format : FORMATS) {
        const CommandRun run = Run(format.Leaf("set"));
        EXPECT_EQ(run.code, RC_SUCCESS); // although the document tells of a failure
        EXPECT_EQ(run.output, Error(format, UNKNOWN, true));
        EXPECT_EQ(PortCalls(), ReadCalls());
        EXPECT_EQ(Staged(), "no file");
    }
    // The read comes first.
    Fake().Return("VEXAPI_GetHBAParamsInfo", 1);
    const CommandRun run = Run("set");
    EXPECT_EQ(run.code, RC_CFG_READ_FAILED);
    EXPECT_EQ(run.output, Error(XML, READ_FAILED, true));
}

TEST_F(HBAParamsTest, AFolderIsNoFile) {
    std::filesystem::create_directory(FilePath());
    CommandRun run = Run("set");
    EXPECT_EQ(run.code, RC_SUCCESS);
    EXPECT_EQ(run.output, Error(XML, UNKNOWN, true));
    run = Run("setFile", "-z 512");
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, Error(XML, UNKNOWN));
    EXPECT_TRUE(std::filesystem::is_directory(FilePath()));
}

TEST_F(HBAParamsTest, RebootIsRequiredWhenTheWordIs1OrCantBeHad) {
    struct Case {
        VX_UINT32 status;
        VX_UINT32 word;
        bool isRequired;
    };
    const Case cases[] = {{0, 1, true}, {0, 0, false}, {0, 2, false}, {1, 0, true}, {5, 2, true}};
    for (const Case& row : cases) {
        rebootStatus = row.status;
        reboot = row.word;
        for (const Format& format : FORMATS) {
            Stage(SNAPSHOT);
            CommandRun run = Run(format.Leaf("set"));
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Document(format, Shown(), row.isRequired)) << row.status << " " << row.word;
            EXPECT_EQ(Staged(), "no file");
            run = Run(format.Leaf("restoreDefaults"));
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, format.Flat("RestoreDefaultsInfo",
                                              {{"Message", "Success"}, Flag("Reboot Required", row.isRequired)}));
        }
    }
}

TEST_F(HBAParamsTest, AFailingReadLeavesTheFile) {
    Fake().Return("VEXAPI_GetHBAParamsInfo", 1);
    for (const Format& format : FORMATS) {
        for (const char* const leaf : {"get", "setFile", "set"}) {
            const bool isSet = std::string(leaf) == "set";
            for (const char* const content : {"", SNAPSHOT}) {
                RemoveFiles();
                if (*content != '\0') {
                    Stage(content);
                }
                const CommandRun run = Run(format.Leaf(leaf), "-z 512");
                EXPECT_EQ(run.code, RC_CFG_READ_FAILED);
                EXPECT_EQ(run.output, Error(format, READ_FAILED, isSet));
                EXPECT_EQ(PortCalls(), ReadCalls());
                EXPECT_EQ(Staged(), *content == '\0' ? "no file" : content);
            }
        }
    }
}

TEST_F(HBAParamsTest, AFailingWriteKeepsTheFile) {
    const std::string content = WithLine(SNAPSHOT, "Frame_Size", "512");
    for (const Format& format : FORMATS) {
        Stage(content);
        Fake().Return("VEXAPI_UpdateHBAParameters", 1);
        const CommandRun run = Run(format.Leaf("set"));
        EXPECT_EQ(run.code, RC_CFG_UPDATE_FAILED);
        EXPECT_EQ(run.output, Error(format, UPDATE_FAILED, true));
        EXPECT_EQ(PortCalls(), (Calls{PortCall("GetHBAParamsInfo"), PortCall("UpdateHBAParameters")}));
        EXPECT_EQ(Staged(), content);
        // It can be repeated.
        Fake().Return("VEXAPI_UpdateHBAParameters", 0);
        EXPECT_EQ(Run(format.Leaf("set")).output, Document(format, WithField(Shown(), "Frame Size", "512"), true));
        EXPECT_EQ(Staged(), "no file");
    }
}

TEST_F(HBAParamsTest, RedirectionsThatCantBeOpened) {
    const auto read = Fake().onGetHBAParamsInfo;
    const auto write = Fake().onUpdateHBAParameters;
    for (const Format& format : FORMATS) {
        // Before the read
        Stage(SNAPSHOT);
        for (const char* const leaf : {"get", "setFile", "set", "restoreDefaults", "save"}) {
            CommandRun run;
            {
                NoFiles files;
                LoseFiles(files);
                run = Run(format.Leaf(leaf), "/tmp/file");
            }
            Fake().onGetAdapterList = nullptr;
            EXPECT_EQ(run.code, RC_FILE_ERROR) << leaf;
            EXPECT_EQ(run.output, *leaf == 'r'                  ? RestoreError(format, UNKNOWN)
                                  : std::string(leaf) == "save" ? SaveError(format, UNKNOWN)
                                                                : Error(format, UNKNOWN, std::string(leaf) == "set"));
            EXPECT_EQ(PortCalls(), Calls{});
            EXPECT_EQ(Staged(), SNAPSHOT);
        }
        // Before the write; the cache file can't be read then either
        {
            NoFiles files;
            Fake().onGetHBAParamsInfo = [&](VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters,
                                            VX_HBA_AUX* auxiliary) {
                files.Begin();
                return read(handle, parameters, auxiliary);
            };
            const CommandRun run = Run(format.Leaf("set"));
            EXPECT_EQ(run.code, RC_FILE_ERROR);
            EXPECT_EQ(run.output, Error(format, UNKNOWN, true));
            EXPECT_EQ(PortCalls(), ReadCalls());
        }
        EXPECT_EQ(Staged(), SNAPSHOT);
        Fake().onGetHBAParamsInfo = read;
        // Before the reboot query: the write is done, and requesting a reboot is the safe answer.
        reboot = 0;
        {
            NoFiles files;
            Fake().onUpdateHBAParameters = [&](VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters) {
                files.Begin();
                return write(handle, parameters);
            };
            const CommandRun run = Run(format.Leaf("set"));
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Document(format, Shown(), true));
            EXPECT_EQ(PortCalls(), (Calls{PortCall("GetHBAParamsInfo"), PortCall("UpdateHBAParameters")}));
        }
        EXPECT_EQ(Staged(), "no file");
        Fake().onUpdateHBAParameters = write;
        {
            NoFiles files;
            Fake().onRestoreDefaultNVRAM = [&files](VX_PORT_HANDLE*) {
                files.Begin();
                return 0u;
            };
            // Both calls share one opening of the log: the query is made, and answered with no.
            const CommandRun run = Run(format.Leaf("restoreDefaults"));
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output,
                      format.Flat("RestoreDefaultsInfo", {{"Message", "Success"}, Flag("Reboot Required", false)}));
            EXPECT_EQ(PortCalls(), (Calls{PortCall("RestoreDefaultNVRAM"), "VEXAPI_IsRebootRequired()"}));
        }
        reboot = 1;
    }
}

TEST_F(HBAParamsTest, PortsThatAreNone) {
    struct Case {
        std::string identifier;
        ResultCode code;
        const char* message;
    };
    const Case cases[] = {{"FC_21:00:0a:0b:0c:0d:ff:ff", RC_INVALID_PARAMETER, INVALID},
                          {"port", RC_INVALID_PARAMETER, INVALID},
                          {"help", RC_HELP_REQUESTED, UNKNOWN},
                          {"/h", RC_HELP_REQUESTED, UNKNOWN}};
    for (const Format& format : FORMATS) {
        for (const Case& row : cases) {
            const auto run = [&](const char* leaf) {
                const CommandRun done =
                    FamilyTest::Run("-t port -s hbaparams " + format.Leaf(leaf) + " " + row.identifier + " /tmp/file");
                EXPECT_EQ(done.code, row.code) << leaf << " " << row.identifier;
                EXPECT_EQ(PortCalls(), Calls{});
                return done.output;
            };
            EXPECT_EQ(run("get"), Error(format, row.message) + UsageOf(format, "get"));
            EXPECT_EQ(run("setFile"), Error(format, row.message) + UsageOf(format, "setFile"));
            EXPECT_EQ(run("set"), Error(format, row.message, true) + UsageOf(format, "set"));
            EXPECT_EQ(run("restoreDefaults"), RestoreError(format, row.message) + UsageOf(format, "restoreDefaults"));
            EXPECT_EQ(run("save"), SaveError(format, row.message) + UsageOf(format, "save"));
        }
        LoseHost();
        const CommandRun set = Run(format.Leaf("set"));
        EXPECT_EQ(set.code, RC_HOST_NOT_FOUND);
        EXPECT_EQ(set.output, Error(format, NO_HOST, true));
        EXPECT_EQ(Run(format.Leaf("get")).output, Error(format, NO_HOST));
        EXPECT_EQ(Run(format.Leaf("setFile")).output, Error(format, NO_HOST));
        EXPECT_EQ(Run(format.Leaf("restoreDefaults")).output, RestoreError(format, NO_HOST));
        EXPECT_EQ(Run(format.Leaf("save"), "/tmp/file").output, SaveError(format, NO_HOST));
        Fake().host.hasList = true;
        EXPECT_EQ(FamilyTest::Run("-t port -s hbaparams " + format.Leaf("get")).output,
                  Error(format, INVALID) + UsageOf(format, "get"));
    }
}

TEST_F(HBAParamsTest, VirtualPortsHaveNone) {
    port->PortInterfaceType = 3;
    for (const Format& format : FORMATS) {
        const auto run = [&](const char* leaf, const char* rest = "") {
            const CommandRun done = Run(format.Leaf(leaf), rest);
            EXPECT_EQ(done.code, RC_NOT_SUPPORTED_FOR_VPORT) << leaf;
            EXPECT_EQ(PortCalls(), Calls{});
            return done.output;
        };
        EXPECT_EQ(run("get"), Error(format, NO_VIRTUAL));
        EXPECT_EQ(run("setFile"), Error(format, NO_VIRTUAL));
        EXPECT_EQ(run("set"), Error(format, NO_VIRTUAL, true));
        EXPECT_EQ(run("restoreDefaults"), RestoreError(format, NO_VIRTUAL));
        EXPECT_EQ(run("save"), SaveError(format, NO_VIRTUAL)); // before the missing file name
        EXPECT_EQ(run("save", "/tmp/file"), SaveError(format, NO_VIRTUAL));
    }
    EXPECT_EQ(Staged(), "no file");
}

TEST_F(HBAParamsTest, RestoreDefaultsLeavesThePendingFile) {
    Stage(SNAPSHOT);
    const auto identity = FileIdentity();
    for (const Format& format : FORMATS) {
        CommandRun run = Run(format.Leaf("restoreDefaults"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output,
                  format.Flat("RestoreDefaultsInfo", {{"Message", "Success"}, Flag("Reboot Required", true)}));
        EXPECT_EQ(PortCalls(), (Calls{PortCall("RestoreDefaultNVRAM"), "VEXAPI_IsRebootRequired()"}));
        // A failed write is reported as a read.
        Fake().ReturnInTurn("VEXAPI_RestoreDefaultNVRAM", {1});
        run = Run(format.Leaf("restoreDefaults"));
        EXPECT_EQ(run.code, RC_CFG_READ_FAILED);
        EXPECT_EQ(run.output, RestoreError(format, READ_FAILED));
        EXPECT_EQ(PortCalls(), (Calls{PortCall("RestoreDefaultNVRAM")}));
    }
    EXPECT_EQ(Staged(), SNAPSHOT);
    EXPECT_EQ(FileIdentity(), identity);
}

TEST_F(HBAParamsTest, SavesToTheNamedFile) {
    Fake().Succeed({"SaveSingleAdapterNVRAMToFile"});
    Stage(SNAPSHOT);
    for (const Format& format : FORMATS) {
        const CommandRun run = Run(format.Leaf("save"), "/tmp/nvram.txt more");
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, format.Flat("HBAParametersSave", {{"Message", "Success"}}));
        EXPECT_EQ(PortCalls(), (Calls{PortCall("SaveSingleAdapterNVRAMToFile", "\"/tmp/nvram.txt\"")}));
    }
    EXPECT_EQ(Staged(), SNAPSHOT);
}

TEST_F(HBAParamsTest, SaveNeedsAFileName) {
    for (const Format& format : FORMATS) {
        const CommandRun run = Run(format.Leaf("save"));
        EXPECT_EQ(run.code, RC_INVALID_PARAMETER);
        EXPECT_EQ(run.output, SaveError(format, INVALID) + UsageOf(format, "save"));
        EXPECT_EQ(PortCalls(), Calls{});
    }
}

TEST_F(HBAParamsTest, SaveTellsAFailingCall) {
    Stage(SNAPSHOT);
    for (const Format& format : FORMATS) {
        Fake().ReturnInTurn("VEXAPI_SaveSingleAdapterNVRAMToFile", {1});
        const CommandRun run = Run(format.Leaf("save"), "/tmp/nvram.txt");
        EXPECT_EQ(run.code, RC_CFG_READ_FAILED);
        EXPECT_EQ(run.output, SaveError(format, READ_FAILED));
    }
    EXPECT_EQ(Staged(), SNAPSHOT);
}

TEST_F(HBAParamsTest, UsageOfTheCliLeaves) {
    for (const char* const leaf : {"get", "setFile", "set", "restoreDefaults", "save"}) {
        EXPECT_EQ(FamilyTest::Run("-t port -s hbaparams " + std::string(leaf) + "cli ?").output,
                  "Usage: " + std::string(leaf) + "\r\n");
        EXPECT_EQ(FamilyTest::Run("-t port -s hbaparams " + std::string(leaf) + " ?").output, "");
    }
}

} // namespace
