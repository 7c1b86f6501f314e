/// The loopback and the read/write buffer test; common parts are tested for both.
#include "FamilyTest.h"
#include "TraceLog.h"

using namespace family_test;

namespace {

constexpr char INVALID[] = "Failed, Invalid parameter";
constexpr char NO_VIRTUAL[] = "Failed, Feature not supported for virtual port";
constexpr char NO_FILE[] = "Failed, File not found";
constexpr char NOT_SEPARATED[] = "Failed, Custom Data should be of 8 chars separated by '-' (hifen)";
constexpr char NO_LOOPBACK_TYPE[] = "Failed, Loopback type not supported for this adapter";

struct Kind {
    const char* family;
    const char* call;
    const char* typeWord; ///< the loopback type before the pattern
    const char* structure;
    const char* field;
    unsigned maxCount;
};
constexpr Kind LOOPBACK = {"loopback",         "DiagnosticsLoopBackTest", "Internal ",
                           "LoopbackTestInfo", "LoopbackTestResult",      65535};
constexpr Kind RWBUFFER = {"rwbuffer", "DiagnosticsReadWriteBufferTest", "", "RWBufferTestInfo", "RWBufferTestResult",
                           10000};
constexpr Kind KINDS[] = {LOOPBACK, RWBUFFER};

bool IsLoopback(const Kind& kind) {
    return &kind == &KINDS[0];
}

class FrameTestsTest : public FamilyTest {
protected:
    FrameTestsTest() {
        Fake().onDiagnosticsLoopBackTest = [this](VX_PORT_HANDLE*, DiagTestParams* parameters) {
            Chatter();
            seen.push_back(*parameters);
            _VEXAPI_LoopbackTestResult result = {{}, 11, 12, 4294967295};
            SetText(result.TestStatus, NextStatus());
            return result;
        };
        Fake().onDiagnosticsReadWriteBufferTest = [this](VX_PORT_HANDLE*, DiagTestParams* parameters) {
            Chatter();
            seen.push_back(*parameters);
            auto& node = lists.emplace_back();
            SetText(node.TestStatus, NextStatus());
            SetBytes(node.PortId, std::array{0x01, 0xAB, 0xFF});
            node.DataMiscompare = 21;
            node.LinkFailure = 22;
            node.LossOfSync = 23;
            node.LossOfSignal = 24;
            node.InvalidCrc = 4294967295;
            events.push_back("made " + std::to_string(lists.size()));
            return hasList ? &node : nullptr;
        };
        Fake().onFreeRWBufferTestResultList = [this](_VEXAPI_ReadWriteBufferTestResult* list) {
            Chatter();
            for (std::size_t at = 0; at < lists.size(); ++at) {
                if (list == &lists[at]) {
                    events.push_back("released " + std::to_string(at + 1));
                }
            }
            return 0u;
        };
    }

    /// Returns the statuses in turn, and then repeats the last one.
    std::string NextStatus() { return statuses[std::min(seen.size(), statuses.size()) - 1]; }

    CommandRun RunTest(const Kind& kind, const std::string& words, const std::string& leaf = "run") {
        seen.clear();
        lists.clear();
        events.clear();
        return RunPort(kind.family, leaf, words);
    }
    /// Runs with these words before the loopback type, which is "Internal", and after it.
    CommandRun RunWith(const Kind& kind, const std::string& start, const std::string& pattern) {
        return RunTest(kind, start + " " + kind.typeWord + pattern);
    }

    static std::string Shown(const Kind& kind, const Format& format, const std::string& status, unsigned iterations,
                             unsigned successes, unsigned failures) {
        const auto number = [](const char* label, unsigned value) {
            return Field{label, std::to_string(value), Field::NUMBER};
        };
        std::vector<Field> fields = {{"Test Status", status}};
        if (IsLoopback(kind)) {
            fields.insert(fields.end(), {number("Crc Error", 11), number("Disparity Error", 12),
                                         number("Frame Length Error", 4294967295)});
        } else {
            fields.insert(fields.end(), {{"Port ID", "01:ab:ff"},
                                         number("Data Miscompare", 21),
                                         number("Link Failure", 22),
                                         number("Loss Of Sync", 23),
                                         number("Loss Of Signal", 24),
                                         number("Invalid CRC", 4294967295)});
        }
        fields.insert(fields.end(), {number("Test Iteration", iterations), number("Success Count", successes),
                                     number("Failure Count", failures)});
        return format.Report(kind.structure, {{"Message", "Success"}}, kind.field,
                             format.Structure(std::string(kind.field) + "List", format.FieldsOf(fields)));
    }
    static std::string Error(const Kind& kind, const Format& format, const std::string& message) {
        return format.Report(kind.structure, {{"Message", message}}, kind.field, "");
    }
    void ExpectRefusal(const Kind& kind, const CommandRun& run, ResultCode code, const std::string& message) const {
        EXPECT_EQ(run.code, code);
        EXPECT_EQ(run.output, Error(kind, XML, message));
        EXPECT_FALSE(run.wasLeftRedirected);
        EXPECT_TRUE(seen.empty());
        EXPECT_EQ(PortCalls(), Calls{});
    }

    std::vector<std::string> statuses = {"Success"};
    std::vector<DiagTestParams> seen; ///< received by the library
    std::deque<_VEXAPI_ReadWriteBufferTestResult> lists;
    std::vector<std::string> events; ///< of the lists, numbered from 1
    bool hasList = true;
};

TEST_F(FrameTestsTest, LoopbackIsByteExact) {
    EXPECT_EQ(RunTest(LOOPBACK, "1 2 8 Ignore Internal Random").output,
              "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
              "<structure typeName=\"LoopbackTestInfo\">\n"
              "<field name=\"Message\">\n<string>Success</string></field>\n"
              "<field name=\"LoopbackTestResult\">\n"
              "<list type=\"structure\">\n"
              "<structure typeName=\"LoopbackTestResultList\">\n"
              "<field name=\"Test Status\">\n<string>Success</string></field>\n"
              "<field name=\"Crc Error\">\n<int>11</int></field>\n"
              "<field name=\"Disparity Error\">\n<int>12</int></field>\n"
              "<field name=\"Frame Length Error\">\n<int>4294967295</int></field>\n"
              "<field name=\"Test Iteration\">\n<int>2</int></field>\n"
              "<field name=\"Success Count\">\n<int>2</int></field>\n"
              "<field name=\"Failure Count\">\n<int>0</int></field>\n"
              "</structure>\n</list>\n</field>\n</structure>\n</output>\n");
}

TEST_F(FrameTestsTest, BothFormatsShowTheSame) {
    for (const Kind& kind : KINDS) {
        for (const Format& format : FORMATS) {
            const CommandRun run =
                RunTest(kind, std::string("1 2 8 Ignore ") + kind.typeWord + "Random", format.Leaf("run"));
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Shown(kind, format, "Success", 2, 2, 0));
            EXPECT_FALSE(run.wasLeftRedirected);
        }
    }
}

TEST_F(FrameTestsTest, TakesCountsIncrementsAndSizesInTheirRanges) {
    const struct {
        const char* words; ///< test count, test increment, data size
        bool isLoopback;   ///< accepted by the loopback test
        bool isBuffer;     ///< accepted by the read/write buffer test
        VX_UINT32 count;
        VX_UINT32 size;
    } cases[] = {
        {"1 1 8", true, true, 1, 8},
        {"0 1 8", false, false, 0, 0},
        {"none 1 8", false, false, 0, 0},
        {"12frames 1 8", true, true, 12, 8},
        {"0x10 1 8", false, false, 0, 0}, // base 10
        {"10000 1 8", true, true, 10000, 8},
        {"10001 1 8", true, false, 10001, 8},
        {"65535 1 8", true, false, 65535, 8},
        {"65536 1 8", false, false, 0, 0},
        // The test count is compared as signed.
        {"2147483647 1 8", false, false, 0, 0},
        {"2147483648 1 8", true, true, 0x80000000, 8},
        {"-1 1 8", true, true, 0xFFFFFFFF, 8},
        {"4294967295 1 8", true, true, 0xFFFFFFFF, 8},
        {"4294967296 1 8", false, false, 0, 0}, // its low 32 bits are 0
        {"4294967297 1 8", true, true, 1, 8},
        // The test increment isn't.
        {"1 0 8", false, false, 0, 0},
        {"1 word 8", false, false, 0, 0},
        {"1 3 8", true, true, 1, 8},
        {"1 10000 8", true, true, 1, 8},
        {"1 10001 8", true, false, 1, 8},
        {"1 65535 8", true, false, 1, 8},
        {"1 65536 8", false, false, 0, 0},
        {"1 -1 8", false, false, 0, 0},
        {"1 2147483648 8", false, false, 0, 0},
        {"1 4294967298 8", true, true, 1, 8},
        // Data sizes.
        {"1 1 0", false, false, 0, 0},
        {"1 1 7", false, false, 0, 0},
        {"1 1 9", false, false, 0, 0},
        {"1 1 16", true, true, 1, 16},
        {"1 1 32", true, true, 1, 32},
        {"1 1 64", true, true, 1, 64},
        {"1 1 128", true, true, 1, 128},
        {"1 1 256", true, false, 1, 256},
        {"1 1 512", true, false, 1, 512},
        {"1 1 1024", true, false, 1, 1024},
        {"1 1 2048", true, false, 1, 2048},
        {"1 1 4096", true, false, 1, 4096},
        {"1 1 8192", true, false, 1, 8192},
        {"1 1 16384", true, false, 1, 16384},
        {"1 1 32768", true, false, 1, 32768},
        {"1 1 65535", true, false, 1, 65535},
        {"1 1 65534", false, false, 0, 0},
        {"1 1 65536", false, false, 0, 0},
        {"1 1 4294967304", true, true, 1, 8},
    };
    statuses = {"no"}; // one call is enough to see what is accepted
    for (const Kind& kind : KINDS) {
        for (const auto& row : cases) {
            SCOPED_TRACE(std::string(kind.family) + " " + row.words);
            const CommandRun run = RunWith(kind, std::string(row.words) + " Stop", "Random");
            if (IsLoopback(kind) ? row.isLoopback : row.isBuffer) {
                EXPECT_EQ(run.code, RC_SUCCESS);
                ASSERT_EQ(seen.size(), 1u);
                EXPECT_EQ(seen[0].TestCount, row.count);
                EXPECT_EQ(seen[0].TestCountCopy, row.count);
                EXPECT_EQ(seen[0].DataSize, row.size);
            } else {
                ExpectRefusal(kind, run, RC_INVALID_PARAMETER, INVALID);
            }
        }
    }
}

TEST_F(FrameTestsTest, PassesOnWhatTheWordsStandFor) {
    const struct {
        const char* onError;
        const char* pattern;
        VX_UINT32 onErrorValue;
        VX_UINT32 type;
        std::string data; ///< eight bytes; padded with zeros
    } cases[] = {
        {"Ignore", "Random", 0, 0, ""},
        {"STOP", "crpat", 1, 1, ""},
        {"loop", "CJTPAT", 2, 2, ""},
        {"Stopp", "CsPaT", 0, 3, ""}, // a misspelt word ignores errors,
        {"Stop", "CSPATT", 1, 0, ""}, // or means random data
        {"Stop", "0000000", 1, 0, ""},
        {"Stop", "000000000", 1, 0, ""},
        {"Ignore", "11001100", 0, 0, ""},
        // The library receives the digits themselves.
        {"Ignore", "00000000", 0, 5, "00000000"},
        {"Ignore", "01010101", 0, 5, "\x30\x31\x30\x31\x30\x31\x30\x31"},
        {"Ignore", "01011010", 0, 5, "01011010"},
        {"Ignore", "10100101", 0, 5, "10100101"},
        {"Ignore", "10101010", 0, 5, "10101010"},
        {"Ignore", "11111111", 0, 5, "11111111"},
        {"Ignore", "11111111 -d a-b-c-d-e-f-g-h", 0, 5, "11111111"},
        {"Ignore", "Random -d nonsense", 0, 0, ""},
        // Custom data.
        {"Ignore", "Custom", 0, 4, ""},
        {"Ignore", "custom -d", 0, 4, ""},
        {"Ignore", "Custom -d 1-2-3-4-5-6-7-8", 0, 4, "12345678"},
        {"Ignore", "CUSTOM -D a-B-c-D-e-F-g-H", 0, 4, "aBcDeFgH"},
        {"Ignore", "Custom --data-pattern %-s-%-n-----*-!", 0, 4, "%s%n--*!"},
        {"Ignore", "Custom --Data-Pattern 1-2-3-4-5-6-7-89", 0, 4, "12345678"}, // the rest is cut off
        {"Ignore", "Custom -d 1-2-3-4-5-6-7-8-9-10", 0, 4, "12345678"},
        {"Ignore", "Custom -d ---------------", 0, 4, "--------"},
        {"Ignore", "Custom -d 1-2-3-4-5-6-7-", 0, 4, "1234567"},
    };
    port->PortConnectionMode = 2;
    for (const Kind& kind : KINDS) {
        for (const auto& row : cases) {
            SCOPED_TRACE(std::string(kind.family) + " " + row.onError + " " + row.pattern);
            const CommandRun run = RunWith(kind, std::string("1 1 8 ") + row.onError, row.pattern);
            EXPECT_EQ(run.code, RC_SUCCESS);
            ASSERT_EQ(seen.size(), 1u);
            EXPECT_EQ(seen[0].OnError, row.onErrorValue);
            EXPECT_EQ(seen[0].DataPatternType, row.type);
            std::string data = row.data;
            data.resize(8);
            EXPECT_EQ(std::string(reinterpret_cast<const char*>(seen[0].CustomData), 8), data);
            EXPECT_EQ(seen[0].LoopbackType, IsLoopback(kind) ? 4u : 0u);
            EXPECT_EQ(seen[0].ConnectionMode, IsLoopback(kind) ? 2 : 0);
        }
        for (const char* value : {"12345678", "1-2-3-4-5-6-7", "1-2-3-4-5-6-7_8", "1_2-3-4-5-6-7-8", "12", "-"}) {
            ExpectRefusal(kind, RunWith(kind, "1 1 8 Ignore", std::string("Custom -d ") + value), RC_INVALID_FORMAT,
                          NOT_SEPARATED);
        }
    }
}

TEST_F(FrameTestsTest, LoopbackTypes) {
    const struct {
        const char* word;
        VX_UINT32 type;
    } cases[] = {
        {"Internal", 4},  {"INTERNAL", 4},       {"External", 2},       {"external", 2}, {"FCoE_Echo", 3},
        {"fcoe_echo", 3}, {"Internal_10bit", 0}, {"internal_10BIT", 0}, {"Interal", 0},  {"4", 0},
    };
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        for (const auto& row : cases) {
            SCOPED_TRACE(std::string(chip.name) + " " + row.word);
            const bool isSupported = row.type == 0   ? chip.chip == FOUR_G || chip.chip == EIGHT_G
                                     : row.type == 3 ? chip.chip == ROWAN_CNA
                                                     : true;
            const CommandRun run = RunTest(LOOPBACK, std::string("1 1 8 Ignore ") + row.word + " Random");
            if (isSupported) {
                EXPECT_EQ(run.code, RC_SUCCESS);
                ASSERT_EQ(seen.size(), 1u);
                EXPECT_EQ(seen[0].LoopbackType, row.type);
            } else {
                ExpectRefusal(LOOPBACK, run, RC_PARAM_ERROR, NO_LOOPBACK_TYPE);
            }
        }
        EXPECT_EQ(RunTest(RWBUFFER, "1 1 8 Ignore Random").code, RC_SUCCESS) << chip.name; // any chip
    }
}

/// The first refusal that applies is shown: virtual port, number of words, then the words in their order.
TEST_F(FrameTestsTest, RefusalsComeInOrder) {
    ExpectRefusal(LOOPBACK, RunTest(LOOPBACK, "0 0 9 x Internal_10bit Custom -d x"), RC_INVALID_PARAMETER, INVALID);
    ExpectRefusal(LOOPBACK, RunTest(LOOPBACK, "1 1 9 x Internal_10bit Custom -d x"), RC_INVALID_PARAMETER, INVALID);
    ExpectRefusal(LOOPBACK, RunTest(LOOPBACK, "1 1 8 x Internal_10bit Custom -d x"), RC_PARAM_ERROR, NO_LOOPBACK_TYPE);
    ExpectRefusal(LOOPBACK, RunTest(LOOPBACK, "1 1 8 x External Custom -d x"), RC_INVALID_FORMAT, NOT_SEPARATED);
    for (const Kind& kind : KINDS) {
        const std::string id = Id(*port);
        const std::string words[] = {"1", "1", "8", "Ignore", "Internal", "Random"};
        std::string line = "-t port -s " + std::string(kind.family) + " run " + id;
        for (std::size_t count = 0; count < (IsLoopback(kind) ? 6u : 5u); ++count) {
            ExpectRefusal(kind, Run(line), RC_INVALID_PARAMETER, INVALID);
            line += " " + words[count];
        }
        const std::string start = "-t port -s " + std::string(kind.family) + " run ";
        const std::string rest = std::string(" 1 1 8 Ignore ") + kind.typeWord + "Random";
        ExpectRefusal(kind, Run(start + "FC_21:00:0a:0b:0c:0d:00:99" + rest), RC_INVALID_PARAMETER, INVALID);
        ExpectRefusal(kind, Run(start + "help" + rest), RC_HELP_REQUESTED, "Failed, Unknown");
        port->PortInterfaceType = 3;
        ExpectRefusal(kind, RunTest(kind, "0"), RC_NOT_SUPPORTED_FOR_VPORT, NO_VIRTUAL);
        port->PortInterfaceType = 1;
        port->PortState = 3; // no link is needed
        EXPECT_EQ(RunTest(kind, rest.substr(1)).code, RC_SUCCESS);
        port->PortState = 1;
        LoseHost();
        ExpectRefusal(kind, RunTest(kind, rest.substr(1)), RC_HOST_NOT_FOUND, "Failed, Host not found");
        Fake().host.hasList = true;
    }
}

/// `runcli` has no usage function, so a refusal shows its document alone.
TEST_F(FrameTestsTest, CliLeavesPrintNoUsage) {
    for (const Kind& kind : KINDS) {
        EXPECT_EQ(RunTest(kind, "0", "runcli").output, Error(kind, TEXT, INVALID));
        EXPECT_EQ(Run(std::string("-t port -s ") + kind.family + " runcli help").output,
                  Error(kind, TEXT, "Failed, Unknown"));
    }
}

/// `T` is a pass and `f` a failure, iteration by iteration.
TEST_F(FrameTestsTest, LoopAndStopRules) {
    const struct {
        const char* onError;
        unsigned long increment;
        const char* course;
        std::size_t calls;
        unsigned iterations;
        unsigned successes;
        unsigned failures;
    } cases[] = {
        {"Stop", 10, "TTf", 3, 2, 2, 1}, // the index of the failed iteration
        {"Stop", 10, "f", 1, 0, 0, 1},
        {"Stop", 1, "f", 1, 0, 0, 1},
        {"Stop", 3, "TTf", 3, 2, 2, 1},
        {"Stop", 3, "TTT", 3, 3, 3, 0},
        {"Ignore", 4, "ffff", 4, 4, 0, 4},
        {"Ignore", 4, "fTfT", 4, 4, 2, 2},
        {"Loop", 4, "ffff", 4, 4, 0, 4},
        {"Loop", 3, "fTf", 3, 3, 1, 2},
        {"stopped", 2, "fT", 2, 2, 1, 1},
        {"Ignore", 1, "T", 1, 1, 1, 0},
        {"Ignore", 4294967298, "TT", 2, 2, 2, 0}, // low 32 bits
    };
    for (const Kind& kind : KINDS) {
        for (const auto& row : cases) {
            SCOPED_TRACE(std::string(kind.family) + " " + row.onError + " " + row.course);
            statuses.clear();
            for (const char* step = row.course; *step != '\0'; ++step) {
                statuses.emplace_back(*step == 'T' ? "Success" : "Failed");
            }
            const CommandRun run = RunWith(kind, "5 " + std::to_string(row.increment) + " 8 " + row.onError, "Random");
            EXPECT_EQ(run.code, RC_SUCCESS); // whatever the iterations say
            EXPECT_EQ(seen.size(), row.calls);
            // The last iteration's result is shown with the counts of all.
            EXPECT_EQ(run.output, Shown(kind, XML, statuses.back(), row.iterations, row.successes, row.failures));
            for (const DiagTestParams& parameters : seen) {
                EXPECT_EQ(parameters.TestCount, 5u);
            }
        }
    }
}

TEST_F(FrameTestsTest, PassedMeansSuccessToTheLetter) {
    const struct {
        std::string status;
        bool isPassed;
    } cases[] = {
        {"Success", true},
        {std::string("Success\0 and more", 17), true},
        {"Success ", false},
        {"Successful", false},
        {"success", false},
        {"SUCCESS", false},
        {"Succes", false},
        {"", false},
        {std::string(64, 'x'), false}, // fills its array
        {std::string("Success\0", 8) + std::string(56, 'x'), true},
    };
    for (const Kind& kind : KINDS) {
        for (const auto& row : cases) {
            statuses = {row.status};
            EXPECT_EQ(RunWith(kind, "1 1 8 Ignore", "Random").output,
                      Shown(kind, XML, row.status.c_str(), 1, row.isPassed ? 1 : 0, row.isPassed ? 0 : 1));
        }
    }
}

TEST_F(FrameTestsTest, WithoutTheRedirectionNothingIsCalled) {
    for (const Kind& kind : KINDS) {
        for (const std::size_t callsBefore : {0u, 1u, 3u}) {
            NoFiles files;
            const auto resolver = [&] {
                if (callsBefore == 0) {
                    files.Begin();
                }
                return FakeLibrary::Get().host.List();
            };
            Fake().onGetAdapterList = resolver;
            const auto loopback = Fake().onDiagnosticsLoopBackTest;
            const auto buffer = Fake().onDiagnosticsReadWriteBufferTest;
            Fake().onDiagnosticsLoopBackTest = [&](VX_PORT_HANDLE* handle, DiagTestParams* parameters) {
                const auto result = loopback(handle, parameters);
                if (seen.size() == callsBefore) {
                    files.Begin();
                }
                return result;
            };
            Fake().onDiagnosticsReadWriteBufferTest = [&](VX_PORT_HANDLE* handle, DiagTestParams* parameters) {
                auto* const result = buffer(handle, parameters);
                if (seen.size() == callsBefore) {
                    files.Begin();
                }
                return result;
            };
            const CommandRun run = RunWith(kind, "1 5 8 Ignore", "Random");
            Fake().onDiagnosticsLoopBackTest = loopback;
            Fake().onDiagnosticsReadWriteBufferTest = buffer;
            Fake().onGetAdapterList = nullptr;
            EXPECT_EQ(run.code, RC_FILE_ERROR);
            EXPECT_EQ(run.output, Error(kind, XML, NO_FILE));
            EXPECT_EQ(seen.size(), callsBefore) << kind.family;
        }
    }
}

TEST_F(FrameTestsTest, LoopbackTracesItsRefusalsAndEveryFrame) {
    const TraceLog log("5");
    const auto tracesOf = [&](const std::string& words) {
        unlink(TraceLog::Path());
        RunTest(LOOPBACK, words);
        std::vector<std::string> lines;
        for (const std::string& line : TraceLog::Lines()) {
            const std::string by = "PhysicalPortLoopbackCmdsProcessor::CmdRunCommon: ";
            if (const std::size_t at = line.find(by); at != std::string::npos) {
                lines.push_back(line.substr(0, at) + line.substr(at + by.size()));
            }
        }
        return lines;
    };
    using Lines = std::vector<std::string>;
    const std::string entered = "INFORMATION: Entered";
    EXPECT_EQ(tracesOf("0 1 8 Stop Internal Random"), (Lines{entered, "DEBUG: Invalid test count"}));
    EXPECT_EQ(tracesOf("1 0 8 Stop Internal Random"), (Lines{entered, "DEBUG: Invalid test increment"}));
    EXPECT_EQ(tracesOf("1 1 1 Stop Internal Random"), (Lines{entered, "DEBUG: Invalid data size"}));
    EXPECT_EQ(tracesOf("1 1 8 Stop Internal_10bit Random"),
              (Lines{entered, "DEBUG: Option not supported for this adapter"}));
    EXPECT_EQ(tracesOf("1 1 8 Stop FCoE_Echo Random"), (Lines{entered, "DEBUG: Option not supported for FC adapter"}));
    EXPECT_EQ(tracesOf("1 1 8 Stop Internal Custom -d 12345678"),
              (Lines{entered, "DEBUG: Custom data is not '-' (hifen) separated"}));
    statuses = {"Success", "no"};
    EXPECT_EQ(tracesOf("1 9 8 Stop Internal Random"),
              (Lines{entered, "INFORMATION: Loopback Test Successful for TestIteration=0",
                     "INFORMATION: Loopback Test Failed for TestIteration=1", "INFORMATION: Exiting"}));
}

class RWBufferTest : public FrameTestsTest {};

TEST_F(RWBufferTest, IsByteExact) {
    EXPECT_EQ(RunTest(RWBUFFER, "1 1 8 Ignore Random", "runcli").output,
              "****************************************************\n"
              "RWBufferTestInfo:\n"
              "Message: Success\n"
              "RWBufferTestResult: RWBufferTestResultList:\n"
              "Test Status: Success\n"
              "Port ID: 01:ab:ff\n"
              "Data Miscompare: 21\n"
              "Link Failure: 22\n"
              "Loss Of Sync: 23\n"
              "Loss Of Signal: 24\n"
              "Invalid CRC: 4294967295\n"
              "Test Iteration: 1\n"
              "Success Count: 1\n"
              "Failure Count: 0\n"
              "****************************************************\n");
}

/// A list is released inside the redirection of the call that replaces it, and the last one after it was shown.
TEST_F(RWBufferTest, ReleasesEveryList) {
    RunTest(RWBUFFER, "1 3 8 Ignore Random");
    EXPECT_EQ(events,
              (std::vector<std::string>{"made 1", "released 1", "made 2", "released 2", "made 3", "released 3"}));
    EXPECT_EQ(PortCalls().size(), 6u);
    statuses = {"no"};
    RunTest(RWBUFFER, "1 3 8 Stop Random");
    EXPECT_EQ(events, (std::vector<std::string>{"made 1", "released 1"}));
}

TEST_F(RWBufferTest, ShowsEveryNodeOfTheLastList) {
    std::array<_VEXAPI_ReadWriteBufferTestResult, 3> nodes{};
    const char* const texts[] = {"no", "Success", "other"};
    for (std::size_t at = 0; at < nodes.size(); ++at) {
        SetText(nodes[at].TestStatus, texts[at]);
        nodes[at].PortId[2] = static_cast<VX_UINT8>(at);
        nodes[at].pNext = at + 1 < nodes.size() ? &nodes[at + 1] : nullptr;
    }
    Fake().onDiagnosticsReadWriteBufferTest = [&](VX_PORT_HANDLE*, DiagTestParams*) { return nodes.data(); };
    std::string rows;
    for (std::size_t at = 0; at < nodes.size(); ++at) {
        const auto number = [](const char* label, const char* value) { return Field{label, value, Field::NUMBER}; };
        rows += XML.Structure("RWBufferTestResultList", XML.FieldsOf({{"Test Status", texts[at]},
                                                                      {"Port ID", "00:00:0" + std::to_string(at)},
                                                                      number("Data Miscompare", "0"),
                                                                      number("Link Failure", "0"),
                                                                      number("Loss Of Sync", "0"),
                                                                      number("Loss Of Signal", "0"),
                                                                      number("Invalid CRC", "0"),
                                                                      number("Test Iteration", "0"),
                                                                      number("Success Count", "0"),
                                                                      number("Failure Count", "1")}));
    }
    // The first node decides, and every node has the counts of the run.
    EXPECT_EQ(RunTest(RWBUFFER, "1 9 8 Stop Random").output,
              XML.Report("RWBufferTestInfo", {{"Message", "Success"}}, "RWBufferTestResult", rows));
    EXPECT_EQ(Fake().calls.back(), "VEXAPI_Uninitialize()");
    EXPECT_EQ(PortCalls(), (Calls{Call("DiagnosticsReadWriteBufferTest"), "VEXAPI_FreeRWBufferTestResultList()"}));
}

TEST_F(RWBufferTest, NoListIsAFailure) {
    hasList = false;
    const CommandRun run = RunTest(RWBUFFER, "1 3 8 Ignore Random");
    EXPECT_EQ(run.code, RC_CFG_READ_FAILED);
    EXPECT_EQ(run.output, Error(RWBUFFER, XML, "Failed, DPortDiag read failed"));
    EXPECT_EQ(PortCalls(), (Calls{Call("DiagnosticsReadWriteBufferTest")})); // and nothing to release
}

/// If the release fails, there is a second document.
TEST_F(RWBufferTest, ReleaseNeedsTheRedirection) {
    NoFiles files;
    const auto buffer = Fake().onDiagnosticsReadWriteBufferTest;
    Fake().onDiagnosticsReadWriteBufferTest = [&](VX_PORT_HANDLE* handle, DiagTestParams* parameters) {
        files.Begin();
        return buffer(handle, parameters);
    };
    const CommandRun run = RunTest(RWBUFFER, "1 1 8 Ignore Random");
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, Shown(RWBUFFER, XML, "Success", 1, 1, 0) + Error(RWBUFFER, XML, NO_FILE));
    EXPECT_EQ(events, (std::vector<std::string>{"made 1"}));
}

} // namespace
