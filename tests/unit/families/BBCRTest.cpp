#include "StagedTest.h"

#include "Limits.h"
#include "TraceLog.h"

using namespace family_test;

namespace {

constexpr char UNKNOWN[] = "Failed, Unknown";
constexpr char INVALID[] = "Failed, Invalid parameter";
constexpr char READ_FAILED[] = "Failed, NVRAM read failed";
constexpr char UPDATE_FAILED[] = "Failed, NVRAM update failed";
constexpr char NO_FILE[] = "Failed, File not found";
constexpr char NO_HOST[] = "Failed, Host not found";
constexpr char NOT_SUPPORTED[] = "Failed, feature not supported";
constexpr char NO_VIRTUAL[] = "Failed, feature not supported for virtual port";

constexpr char SNAPSHOT[] = "BBCR_Count=5\nBBCR_Status=1\n";

class BBCRTest : public StagedTest {
protected:
    BBCRTest() : StagedTest("BBCR", "bbcr") {
        Fake().onFCGetBBCSupportInfoEx = [this](VX_PORT_HANDLE*, VX_UINT8* outStatus, VX_UINT8* outConfigured,
                                                VX_UINT8* outState, VX_UINT8* outNegotiated, char* outReason,
                                                VX_UINT32 size) {
            Chatter();
            EXPECT_EQ(size, 64u);
            EXPECT_TRUE(std::all_of(outReason, outReason + size, [](char c) { return c == '\0'; }));
            *outStatus = status;
            *outConfigured = configured;
            *outState = state;
            *outNegotiated = negotiated;
            std::memcpy(outReason, reason.data(), reason.size());
            return 0u;
        };
        Fake().onFCSetBBCSupportInfo = [](VX_PORT_HANDLE*, VX_UINT8, VX_UINT8) {
            Chatter();
            return 0u;
        };
    }

    Calls ReadCalls() const { return {PortCall("FCGetBBCSupportInfoEx", "64")}; }
    Calls SetCalls(const std::string& values) const {
        return {PortCall("FCGetBBCSupportInfoEx", "64"), PortCall("FCSetBBCSupportInfo", values)};
    }

    static std::string Document(const Format& format, const std::string& text,
                                std::optional<bool> reboot = std::nullopt) {
        std::vector<Field> head = {{"Message", "Success"}};
        if (reboot.has_value()) {
            head.push_back(Flag("Reboot Required", *reboot));
        }
        const std::string data = format.IsXml() ? "<string>" + text + "</string>" : text;
        return format.Report("BBCRInfo", head, "BBCR", format.Structure("BBCRList", format.OpenField("Data", data)));
    }
    static std::string Error(const Format& format, const std::string& message, bool isSet = false) {
        std::vector<Field> head = {{"Message", message}};
        if (isSet) {
            head.insert(head.begin(), Flag("Reboot Required", false));
        }
        return format.Report("BBCRInfo", head, "BBCR", "");
    }
    static std::string Online(const std::string& shownStatus, int count, int shownNegotiated = 4) {
        return "BBCR Status: " + shownStatus + "\n      BBCR Configured: " + std::to_string(count) +
               "\n      BBCR State: Online\n      BBCR Negotiated: " + std::to_string(shownNegotiated) + "\n";
    }
    static std::string UsageOf(const Format& format, const std::string& leaf) {
        return format.IsXml() ? "" : "Usage: " + leaf + "\r\n";
    }

    VX_UINT8 status = 1;
    VX_UINT8 configured = 5;
    VX_UINT8 state = 1;
    VX_UINT8 negotiated = 4;
    std::string reason;
};

TEST_F(BBCRTest, DocumentsAreByteExact) {
    EXPECT_EQ(Run("get").output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                 "<structure typeName=\"BBCRInfo\">\n"
                                 "<field name=\"Message\">\n<string>Success</string></field>\n"
                                 "<field name=\"BBCR\">\n"
                                 "<list type=\"structure\">\n"
                                 "<structure typeName=\"BBCRList\">\n"
                                 "<field name=\"Data\">\n"
                                 "<string>BBCR Status: true\n"
                                 "      BBCR Configured: 5\n"
                                 "      BBCR State: Online\n"
                                 "      BBCR Negotiated: 4\n"
                                 "</string></field>\n"
                                 "</structure>\n"
                                 "</list>\n"
                                 "</field>\n"
                                 "</structure>\n"
                                 "</output>\n");
    Stage(SNAPSHOT);
    state = 0;
    reason = "Partner does not log in";
    EXPECT_EQ(Run("setcli").output, "****************************************************\n"
                                    "BBCRInfo:\n"
                                    "Message: Success\n"
                                    "Reboot Required: true\n"
                                    "BBCR: BBCRList:\n"
                                    "Data: BBCR Status: true\n"
                                    "      BBCR Configured: 5\n"
                                    "      BBCR State: Offline\n"
                                    "      BBCR Offline Reason Code: Partner does not log in\n"
                                    "****************************************************\n");
    port->PortInterfaceType = 3;
    EXPECT_EQ(Run("set").output,
              "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
              "<structure typeName=\"BBCRInfo\">\n"
              "<field name=\"Reboot Required\">\n<bool>false</bool></field>\n"
              "<field name=\"Message\">\n<string>Failed, feature not supported for virtual port</string></field>\n"
              "<field name=\"BBCR\">\n"
              "<list type=\"structure\">\n"
              "</list>\n"
              "</field>\n"
              "</structure>\n"
              "</output>\n");
    EXPECT_EQ(Run("getcli").output, "****************************************************\n"
                                    "BBCRInfo:\n"
                                    "Message: Failed, feature not supported for virtual port\n"
                                    "BBCR: ****************************************************\n");
}

TEST_F(BBCRTest, ShowsEveryValue) {
    for (const Format& format : FORMATS) {
        for (const int value : {0, 1, 2, 255}) {
            status = static_cast<VX_UINT8>(value);
            EXPECT_EQ(Run(format.Leaf("get")).output, Document(format, Online(value == 0 ? "false" : "true", 5)));
            status = 1;
            configured = static_cast<VX_UINT8>(value);
            EXPECT_EQ(Run(format.Leaf("get")).output, Document(format, Online("true", value)));
            configured = 5;
            negotiated = static_cast<VX_UINT8>(value);
            EXPECT_EQ(Run(format.Leaf("get")).output, Document(format, Online("true", 5, value)));
            negotiated = 4;
            state = static_cast<VX_UINT8>(value);
            // Offline without a reason, there are three lines.
            EXPECT_EQ(Run(format.Leaf("get")).output,
                      Document(format, value != 0 ? Online("true", 5)
                                                  : "BBCR Status: true\n      BBCR Configured: 5\n"
                                                    "      BBCR State: Offline\n"));
            state = 1;
        }
        EXPECT_EQ(PortCalls(), ReadCalls());
    }
}

TEST_F(BBCRTest, AReasonIsReadToItsBound) {
    const std::string start = "BBCR Status: true\n      BBCR Configured: 5\n      BBCR State: Offline\n";
    state = 0;
    // 64 bytes fill the text, without a terminator.
    for (const std::size_t length : {1u, 63u, 64u}) {
        reason = std::string(length, 'r');
        EXPECT_EQ(Run("get").output,
                  Document(XML, start + "      BBCR Offline Reason Code: " + std::string(length, 'r') + "\n"));
    }
    // A reason isn't shown while online.
    state = 1;
    EXPECT_EQ(Run("get").output, Document(XML, Online("true", 5)));
}

TEST_F(BBCRTest, AdaptersAndVirtualPorts) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        const bool isSupported = chip.chip == LARCH || chip.chip == ALDER || chip.chip == BIRCH;
        for (const Format& format : FORMATS) {
            for (const std::string leaf : {"get", "setFile", "set"}) {
                for (const VX_UINT16 type : std::initializer_list<VX_UINT16>{1, 3}) {
                    port->PortInterfaceType = type;
                    RemoveFiles();
                    const CommandRun run = Run(format.Leaf(leaf));
                    // The virtual port is checked before the adapter.
                    const ResultCode code = type == 3     ? RC_NOT_SUPPORTED_FOR_VPORT
                                            : isSupported ? RC_SUCCESS
                                                          : RC_FEATURE_NOT_SUPPORTED;
                    EXPECT_EQ(run.code, code) << chip.name;
                    EXPECT_EQ(PortCalls(), code == RC_SUCCESS ? ReadCalls() : Calls{});
                    if (code != RC_SUCCESS) {
                        EXPECT_EQ(run.output, Error(format, type == 3 ? NO_VIRTUAL : NOT_SUPPORTED, leaf == "set"));
                        EXPECT_EQ(Staged(), "no file");
                    }
                }
            }
        }
    }
}

TEST_F(BBCRTest, PortsThatAreNone) {
    for (const Format& format : FORMATS) {
        for (const std::string leaf : {"get", "setFile", "set"}) {
            const auto run = [&](const std::string& identifier) {
                return FamilyTest::Run("-t port -s bbcr " + format.Leaf(leaf) + identifier);
            };
            const std::string usage = UsageOf(format, leaf);
            EXPECT_EQ(run("").output, Error(format, INVALID, leaf == "set") + usage);
            EXPECT_EQ(run(" FC_21:00:0a:0b:0c:0d:ff:ff").output, Error(format, INVALID, leaf == "set") + usage);
            EXPECT_EQ(run(" help").output, Error(format, UNKNOWN, leaf == "set") + usage);
            EXPECT_EQ(run(" help").code, RC_HELP_REQUESTED);
            EXPECT_EQ(run(" ?").output, usage);
            LoseHost();
            EXPECT_EQ(Run(format.Leaf(leaf)).output, Error(format, NO_HOST, leaf == "set"));
            Fake().host.hasList = true;
        }
    }
}

TEST_F(BBCRTest, SetFileBeginsWithASnapshot) {
    for (const Format& format : FORMATS) {
        RemoveFiles();
        const CommandRun run = Run(format.Leaf("setFile"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, Document(format, Online("true", 5)));
        EXPECT_EQ(PortCalls(), ReadCalls());
        EXPECT_EQ(Staged(), SNAPSHOT);
        // An existing file keeps its settings; state and negotiated count are live.
        status = 0;
        configured = 9;
        negotiated = 7;
        EXPECT_EQ(Run(format.Leaf("setFile")).output, Document(format, Online("true", 5, 7)));
        EXPECT_EQ(Staged(), SNAPSHOT);
        EXPECT_EQ(Run(format.Leaf("get")).output, Document(format, Online("false", 9, 7)));
        status = 1;
        configured = 5;
        negotiated = 4;
    }
}

TEST_F(BBCRTest, OptionsTakeTheirRange) {
    for (const std::string name : {"--bbcr-status", "-b", "--BBCR-Status", "-B"}) {
        for (const std::string value : {"true", "TRUE", "True", "false", "FALSE", "fAlse"}) {
            const bool isTrue = value[0] == 't' || value[0] == 'T';
            Stage("BBCR_Count=5\nBBCR_Status=7\n");
            EXPECT_EQ(Run("setFile", name + " " + value).code, RC_SUCCESS);
            EXPECT_EQ(Staged(), std::string("BBCR_Count=5\nBBCR_Status=") + (isTrue ? "1\n" : "0\n"));
        }
        for (const std::string value : {"1", "0", "on", "tru", "truee", ""}) {
            Stage(SNAPSHOT);
            EXPECT_EQ(Run("setFile", name + " " + value + " .").code, RC_INVALID_PARAMETER); // an empty word is a word
            EXPECT_EQ(Staged(), SNAPSHOT);
        }
    }
    for (const std::string name : {"--bbcr-configured", "-c", "--BBCR-CONFIGURED", "-C"}) {
        for (int count = 0; count <= 15; ++count) {
            const std::string text = std::to_string(count);
            Stage(SNAPSHOT);
            const CommandRun run = Run("setFilecli", name + " " + text);
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Document(TEXT, Online("true", count)));
            EXPECT_EQ(Staged(), "BBCR_Count=" + text + "\nBBCR_Status=1\n");
        }
        // "abc" is not a number and reads as 0, 4294967297 is 2^32 + 1
        for (const auto& [text, count] : std::map<std::string, std::string>{
                 {"abc", "0"}, {"", "0"}, {"4294967297", "1"}, {"4294967311", "15"}, {"7up", "7"}, {"015", "15"}}) {
            Stage(SNAPSHOT);
            EXPECT_EQ(Run("setFile", name + " " + text + " .").code, RC_SUCCESS) << text;
            EXPECT_EQ(Staged(), "BBCR_Count=" + count + "\nBBCR_Status=1\n") << text;
        }
        for (const std::string text : {"16", "255", "256", "-1", "4294967295", "4294967312", "99999999999999999999"}) {
            Stage(SNAPSHOT);
            const auto identity = FileIdentity();
            EXPECT_EQ(Run("setFile", name + " " + text).code, RC_INVALID_PARAMETER) << text;
            EXPECT_EQ(Staged(), SNAPSHOT);
            EXPECT_EQ(FileIdentity(), identity);
        }
    }
}

TEST_F(BBCRTest, ABadValueOfEitherOptionLeavesTheFile) {
    for (const Format& format : FORMATS) {
        for (const char* const options : {"-b false -c 16", "-c 16 -b false", "-b maybe -c 3", "-c 3 -b maybe"}) {
            for (const char* const content : {"", "BBCR_Count=2\nBBCR_Status=1\n"}) {
                RemoveFiles();
                if (*content != '\0') {
                    Stage(content);
                }
                const CommandRun run = Run(format.Leaf("setFile"), options);
                EXPECT_EQ(run.code, RC_INVALID_PARAMETER);
                EXPECT_EQ(run.output, Error(format, INVALID) + UsageOf(format, "setFile"));
                // A file created by this call stays, with the library's values.
                EXPECT_EQ(Staged(), *content == '\0' ? SNAPSHOT : content);
            }
        }
    }
    // An option in last position is absent, and the first of two counts.
    Stage(SNAPSHOT);
    EXPECT_EQ(Run("setFile", "-b").code, RC_SUCCESS);
    EXPECT_EQ(Run("setFile", "-c").code, RC_SUCCESS);
    EXPECT_EQ(Staged(), SNAPSHOT);
    EXPECT_EQ(Run("setFile", "-c 3 -c 16").code, RC_SUCCESS);
    EXPECT_EQ(Staged(), "BBCR_Count=3\nBBCR_Status=1\n");
}

TEST_F(BBCRTest, SetWritesTheFileOnce) {
    for (const Format& format : FORMATS) {
        status = 1;
        Run("setFile", "-b false");
        Run("setFile", "-c 15");
        negotiated = 7;
        const CommandRun run = Run(format.Leaf("set"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        // A reboot is always requested; the library isn't asked.
        EXPECT_EQ(run.output, Document(format, Online("false", 15, 7), true));
        EXPECT_EQ(PortCalls(), SetCalls("0, 15"));
        EXPECT_EQ(Staged(), "no file");
    }
}

TEST_F(BBCRTest, SetWithNothingPending) {
    for (const Format& format : FORMATS) {
        for (const bool isFolder : {false, true}) {
            RemoveFiles();
            if (isFolder) {
                std::filesystem::create_directory(FilePath());
            }
            const CommandRun run = Run(format.Leaf("set"), "-c 3");
            EXPECT_EQ(run.code, RC_SUCCESS); // although the document tells of a failure
            EXPECT_EQ(run.output, Error(format, UNKNOWN, true));
            EXPECT_EQ(PortCalls(), ReadCalls());
        }
    }
    Fake().Return("VEXAPI_FCGetBBCSupportInfoEx", 1);
    EXPECT_EQ(Run("set").code, RC_CFG_READ_FAILED); // the read comes first
}

TEST_F(BBCRTest, FilesEditedByHand) {
    struct Case {
        const char* content;
        const char* written;
    };
    // The library has status 1 and count 5.
    const Case cases[] = {
        {"BBCR_Count=99\nBBCR_Status=0\n", "0, 5"},
        {"BBCR_Count=16\n", "1, 5"},
        {"BBCR_Count=15\n", "1, 15"},
        {"BBCR_Count=261\n", "1, 5"}, // the low byte isn't used; 5 is the library's: see below
        {"BBCR_Count=258\n", "1, 5"}, // low byte 2
        {"BBCR_Count=-1\n", "1, 5"},
        {"BBCR_Count=abc\n", "1, 0"},
        {"BBCR_Status=2\n", "1, 5"},
        {"BBCR_Status=0\n", "0, 5"},
        {"BBCR_Status=256\n", "1, 5"},
        {"bbcr_count = 3 # few\n", "1, 3"},
        {"#BBCR_Count=3\n", "1, 5"},
        {"", "1, 5"},
    };
    for (const Case& row : cases) {
        Stage(row.content);
        EXPECT_EQ(Run("set").code, RC_SUCCESS);
        EXPECT_EQ(PortCalls(), SetCalls(row.written)) << row.content;
    }
    Stage("BBCR_Status=0");
    EXPECT_EQ(Run("setFile", "-c 3").code, RC_SUCCESS);
    EXPECT_EQ(Staged(), "BBCR_Status=0\nBBCR_Count=3\n");
}

TEST_F(BBCRTest, AFailingReadEndsEveryLeaf) {
    for (const Format& format : FORMATS) {
        for (const std::string leaf : {"get", "setFile", "set"}) {
            RemoveFiles();
            Fake().ReturnInTurn("VEXAPI_FCGetBBCSupportInfoEx", {1});
            const CommandRun run = Run(format.Leaf(leaf), "-c 3");
            EXPECT_EQ(run.code, RC_CFG_READ_FAILED);
            EXPECT_EQ(run.output, Error(format, READ_FAILED, leaf == "set"));
            EXPECT_EQ(Staged(), "no file");
        }
    }
}

TEST_F(BBCRTest, CallsNothingWithoutTheRedirection) {
    for (const Format& format : FORMATS) {
        for (const std::string leaf : {"get", "setFile", "set"}) {
            Stage(SNAPSHOT);
            {
                NoFiles files;
                LoseFiles(files);
                const CommandRun lost = Run(format.Leaf(leaf), "-c 3");
                EXPECT_EQ(lost.code, RC_FILE_ERROR);
                EXPECT_EQ(lost.output, Error(format, NO_FILE, leaf == "set"));
                EXPECT_EQ(PortCalls(), Calls{});
            }
            Fake().onGetAdapterList = nullptr;
            EXPECT_EQ(Staged(), SNAPSHOT);
        }
    }
}

TEST_F(BBCRTest, AFailingWriteKeepsTheFile) {
    for (const Format& format : FORMATS) {
        Stage(SNAPSHOT);
        Fake().ReturnInTurn("VEXAPI_FCSetBBCSupportInfo", {1});
        const CommandRun run = Run(format.Leaf("set"));
        EXPECT_EQ(run.code, RC_CFG_UPDATE_FAILED);
        EXPECT_EQ(run.output, Error(format, UPDATE_FAILED, true));
        EXPECT_EQ(PortCalls(), SetCalls("1, 5"));
        EXPECT_EQ(Staged(), SNAPSHOT);
        EXPECT_EQ(Run(format.Leaf("set")).code, RC_SUCCESS);
        EXPECT_EQ(Staged(), "no file");
    }
}

TEST_F(BBCRTest, WritesNothingWithoutTheRedirectionAheadOfTheWrite) {
    for (const Format& format : FORMATS) {
        Stage(SNAPSHOT);
        const auto read = Fake().onFCGetBBCSupportInfoEx;
        {
            NoFiles files;
            Fake().onFCGetBBCSupportInfoEx = [&](VX_PORT_HANDLE* handle, VX_UINT8* a, VX_UINT8* b, VX_UINT8* c,
                                                 VX_UINT8* d, char* text, VX_UINT32 size) {
                files.Begin();
                return read(handle, a, b, c, d, text, size);
            };
            const CommandRun lost = Run(format.Leaf("set"));
            EXPECT_EQ(lost.code, RC_FILE_ERROR);
            EXPECT_EQ(lost.output, Error(format, NO_FILE, true));
            EXPECT_EQ(PortCalls(), ReadCalls());
        }
        Fake().onFCGetBBCSupportInfoEx = read;
        EXPECT_EQ(Staged(), SNAPSHOT);
    }
}

TEST_F(BBCRTest, AFullDiskLosesNothing) {
    CommandRun run;
    {
        const FullDisk disk;
        run = Run("setFile", "-c 3");
    }
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, Error(XML, NO_FILE));
    EXPECT_EQ(Staged(), "no file");
    Stage(SNAPSHOT);
    {
        const FullDisk disk;
        run = Run("setFile", "-c 3");
    }
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, Error(XML, NO_FILE));
    EXPECT_EQ(Staged(), SNAPSHOT);
    EXPECT_EQ(ReadFile(FilePath() + "_tmp"), std::nullopt);
}

/// Lines of the debug log that are specific to this run.
std::vector<std::string> FailureTraces() {
    std::vector<std::string> lines;
    for (const std::string& line : TraceLog::Steps()) {
        if (line.starts_with("DEBUG: ") && line.find("FileOps::") == std::string::npos) {
            lines.push_back(line.substr(7));
        }
    }
    return lines;
}
/// A trace's text after the function's name.
bool Tells(const std::string& line, const std::string& text) {
    return line.starts_with("PhysicalPortBBCRCmdsProcessor::") && line.ends_with(": " + text);
}

TEST_F(BBCRTest, FailuresAreTraced) {
    struct Case {
        std::function<void()> prepare;
        const char* leaf;
        const char* options;
        std::vector<std::string> texts;
    };
    const Case cases[] = {
        {[this] { SetChip(*port, EIGHT_G); }, "get", "", {"Command not supported for this adapter"}},
        {[] { Fake().Return("VEXAPI_FCGetBBCSupportInfoEx", 7); }, "get", "", {"Get BBCR Info failed err=7"}},
        {[this] { Stage(SNAPSHOT); },
         "setFile",
         "-b no",
         {"bbcr-status=no not supported", "UpdateBBCRInFile failed with uRet=6"}},
        {[this] { Stage(SNAPSHOT); },
         "setFile",
         "-c 16",
         {"bbcr-count=16 not supported", "UpdateBBCRInFile failed with uRet=6"}},
        {[this] { std::filesystem::create_directory(FilePath()); },
         "setFile",
         "",
         {"file ops failed", "CreateBBCRFile failed"}},
        {[this] {
             Stage(SNAPSHOT);
             std::filesystem::create_directory(FilePath() + "_tmp");
         },
         "setFile",
         "-c 3",
         {"file ops failed", "UpdateBBCRInFile failed with uRet=19"}},
        {[] {}, "set", "", {FilePath() + " file not present"}},
        {[this] {
             Stage(SNAPSHOT);
             Fake().Return("VEXAPI_FCSetBBCSupportInfo", 9);
         },
         "set",
         "",
         {"Update BBCR failed err=9"}},
    };
    for (const Case& row : cases) {
        SetChip(*port, BIRCH);
        Fake().Return("VEXAPI_FCGetBBCSupportInfoEx", 0);
        RemoveFiles();
        row.prepare();
        const TraceLog log("4");
        Run(row.leaf, row.options);
        const std::vector<std::string> lines = FailureTraces();
        ASSERT_EQ(lines.size(), row.texts.size()) << row.texts.front();
        for (std::size_t i = 0; i < lines.size(); ++i) {
            EXPECT_TRUE(Tells(lines[i], row.texts[i])) << lines[i];
        }
    }
    port->PortInterfaceType = 3;
    const TraceLog log("4");
    Run("get");
    ASSERT_EQ(FailureTraces().size(), 1u);
    EXPECT_TRUE(FailureTraces().front().ends_with(": Command not supported for vport"));
}

} // namespace
