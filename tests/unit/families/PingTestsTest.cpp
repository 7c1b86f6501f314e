/// The tests that send something to a remote port: FC ping, FC echo and the CT tests. Common parts are tested for
/// all three.
#include "FamilyTest.h"
#include "TraceLog.h"

#include <chrono>
#include <thread>

using namespace family_test;

namespace {

constexpr char SUCCESS[] = "Success";
constexpr char INVALID[] = "Failed, Invalid parameter";
constexpr char TEST_FAILED[] = "Failed, Diagnostic test failed";
constexpr char NO_TARGET[] = "Failed, Target not found";
constexpr char NO_FILE[] = "Failed, File not found";
constexpr char NO_HOST[] = "Failed, Host not found";
constexpr char NO_LINK[] = "Failed, Feature requires link up";
constexpr char NO_VIRTUAL[] = "Failed, Feature not supported for virtual port";
constexpr char UNKNOWN[] = "Failed, Unknown";

struct Kind {
    const char* family;
    const char* testWord; ///< before the remote name
    const char* function;
};
constexpr Kind PING = {"fcping", "", "DiagnosticsFCPingTest"};
constexpr Kind ECHO = {"fcecho", "", "DiagnosticsEchoElsTest"};
constexpr Kind CT = {"ctdiag", "CTPing ", "DiagnosticsCTCommand"};
constexpr Kind KINDS[] = {PING, ECHO, CT};

constexpr char TARGET[] = "50:00:0a:0b:0c:0d:01:02"; ///< the second target of the port

class PingTestsTest : public FamilyTest {
protected:
    PingTestsTest() {
        Fake().host.AddTarget(*port);
        target = &Fake().host.AddTarget(*port);
        SetBytes(port->PrincipalFabricWWN, std::array{0x10, 0, 0, 0xAB, 0xCD, 0xEF, 0, 1});
        Fake().onDiagnosticsFCPingTest = [this](VX_PORT_HANDLE*, const char*, VX_UINT32, VX_UINT32, VX_UINT32* output,
                                                void* buffer, VX_UINT32 size) { return Answer(output, buffer, size); };
        Fake().onDiagnosticsCTCommand = [this](VX_PORT_HANDLE*, const char*, VX_UINT32, VX_UINT32, VX_UINT32* output,
                                               void* buffer, VX_UINT32 size,
                                               VX_UINT32) { return Answer(output, buffer, size); };
        Fake().onDiagnosticsEchoElsTest = [this](VX_PORT_HANDLE*, const char*, VX_UINT32, VX_UINT32, VX_UINT32,
                                                 _VEXAPI_ECHO_RESULTS* result) {
            Chatter();
            const _VEXAPI_ECHO_RESULTS cleared{};
            wereCleared = wereCleared && std::memcmp(result, &cleared, sizeof cleared) == 0;
            *result = frame;
            SetText(result->EchoStatus, "frame " + std::to_string(++frames));
            result->EchoFailed = failedFrames.find(std::to_string(frames)) != std::string::npos ? 7 : 0;
            return 0u;
        };
    }

    /// The library receives zeroed memory and may write to all of it.
    VX_UINT32 Answer(VX_UINT32* output, void* buffer, VX_UINT32 size) {
        Chatter();
        const auto* bytes = static_cast<const char*>(buffer);
        wereCleared =
            wereCleared && *output == 0 && std::all_of(bytes, bytes + size, [](char byte) { return byte == 0; });
        *output = 0xFFFFFFFF;
        std::memset(buffer, 'x', size);
        return 0;
    }

    CommandRun RunTest(const Kind& kind, const std::string& words, const std::string& leaf = "run") {
        frames = 0;
        return RunPort(kind.family, leaf, kind.testWord + words);
    }
    std::string Frame(const Format& format, unsigned number, const std::string& name = TARGET) const {
        return format.Structure(
            "FCEchoTestResultList",
            format.FieldsOf({{"Destination WWN", name},
                             {"Ping Sequence Number", std::to_string(number), Field::NUMBER},
                             {"Frame Sent", std::to_string(frame.FrameSent), Field::NUMBER},
                             {"Frame Received", std::to_string(frame.FrameReceived), Field::NUMBER},
                             {"Response Length", std::to_string(frame.ResponseLength), Field::NUMBER},
                             {"Response Time", "  3.00 (ms)"},
                             {"Echo Status", "frame " + std::to_string(number)}}));
    }
    std::string Frames(const Format& format, unsigned count) const {
        std::string rows;
        for (unsigned number = 1; number <= count; ++number) {
            rows += Frame(format, number);
        }
        return rows;
    }
    /// The document of a result; `rows` are those of the echo.
    std::string Shown(const Kind& kind, const Format& format, const std::string& message, const std::string& rows = "",
                      const std::string& ctTest = "CTPing") const {
        if (kind.family == ECHO.family) {
            return format.Report("FCEchoResult", {{"Message", message}}, "FCEchoTestResults", rows);
        }
        const bool isPing = kind.family == PING.family;
        return format.Flat(isPing ? "FCPingResult" : "CTDiagResult",
                           {{"Diagnostic Test", isPing ? "FCPing" : ctTest}, {"Test Result", message}});
    }
    void Expect(const Kind& kind, const CommandRun& run, ResultCode code, const std::string& message,
                const Calls& calls = {}) const {
        SCOPED_TRACE(kind.family);
        EXPECT_EQ(run.code, code);
        EXPECT_EQ(run.output, Shown(kind, XML, message));
        EXPECT_EQ(PortCalls(), calls);
        EXPECT_FALSE(run.wasLeftRedirected);
    }
    /// A call of the library with a target's name.
    static std::string TestCall(const Kind& kind, const std::string& count, const std::string& stop,
                                const std::string& name = TARGET) {
        const std::string start = "\"" + name + "\", ";
        if (kind.family == ECHO.family) {
            return Call(kind.function, start + "1, " + stop + ", 2");
        }
        return Call(kind.function, start + count + ", " + stop + ", 256" + (kind.family == CT.family ? ", 1" : ""));
    }

    _tagVEXAPI_SDMTarget* target;
    _VEXAPI_ECHO_RESULTS frame = {4294967295, 2, 116, 0, {}, 3};
    std::string failedFrames; ///< digits of their numbers
    unsigned frames = 0;
    bool wereCleared = true;
};

TEST_F(PingTestsTest, DocumentsAreByteExact) {
    EXPECT_EQ(RunTest(PING, std::string(TARGET) + " 1 true").output,
              "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
              "<structure typeName=\"FCPingResult\">\n"
              "<field name=\"Diagnostic Test\">\n<string>FCPing</string></field>\n"
              "<field name=\"Test Result\">\n<string>Success</string></field>\n"
              "</structure>\n</output>\n");
    EXPECT_EQ(RunTest(CT, std::string(TARGET) + " 1 true", "runcli").output,
              "****************************************************\n"
              "CTDiagResult:\n"
              "Diagnostic Test: CTPing\n"
              "Test Result: Success\n"
              "****************************************************\n");
    EXPECT_EQ(RunTest(ECHO, std::string(TARGET) + " 1 true", "runcli").output,
              "****************************************************\n"
              "FCEchoResult:\n"
              "Message: Success\n"
              "FCEchoTestResults: FCEchoTestResultList:\n"
              "Destination WWN: 50:00:0a:0b:0c:0d:01:02\n"
              "Ping Sequence Number: 1\n"
              "Frame Sent: 4294967295\n"
              "Frame Received: 2\n"
              "Response Length: 116\n"
              "Response Time:   3.00 (ms)\n"
              "Echo Status: frame 1\n"
              "****************************************************\n");
}

TEST_F(PingTestsTest, PassesCountAndStop) {
    const struct {
        const char* count;
        const char* stop;
        const char* passedCount;
        const char* passedStop;
    } cases[] = {
        {"1", "true", "1", "1"},  {"2", "TRUE", "2", "1"},  {"3", "True", "3", "1"},
        {"2", "false", "2", "0"}, {"2", "truee", "2", "0"},                                 // any other word means no
        {"2", "1", "2", "0"},     {"2nd", "yes", "2", "0"}, {"4294967297", "no", "1", "0"}, // low 32 bits
    };
    for (const Kind& kind : KINDS) {
        for (const auto& row : cases) {
            SCOPED_TRACE(std::string(kind.family) + " " + row.count + " " + row.stop);
            const CommandRun run = RunTest(kind, std::string(TARGET) + " " + row.count + " " + row.stop);
            EXPECT_EQ(run.code, RC_SUCCESS);
            const std::size_t count = std::stoul(row.passedCount);
            const bool isEcho = kind.family == ECHO.family; // a call for each frame
            EXPECT_EQ(PortCalls(), Calls(isEcho ? count : 1, TestCall(kind, row.passedCount, row.passedStop)));
            EXPECT_TRUE(wereCleared);
            EXPECT_EQ(run.output, Shown(kind, XML, SUCCESS, Frames(XML, static_cast<unsigned>(count))));
        }
        if (kind.family != ECHO.family) {
            EXPECT_EQ(RunTest(kind, std::string(TARGET) + " 65535 no").code, RC_SUCCESS);
            EXPECT_EQ(PortCalls(), Calls{TestCall(kind, "65535", "0")});
        }
        for (const char* count : {"0", "65536", "-1", "none", "4294967296", "0x1", "-"}) {
            Expect(kind, RunTest(kind, std::string(TARGET) + " " + count + " true"), RC_INVALID_PARAMETER, INVALID);
        }
    }
    // The echo takes the largest count too.
    failedFrames = "1";
    EXPECT_EQ(RunTest(ECHO, std::string(TARGET) + " 65535 true").output, Shown(ECHO, XML, TEST_FAILED, Frames(XML, 1)));
}

TEST_F(PingTestsTest, NamesAreNormalised) {
    const struct {
        const char* name;
        VX_UINT8 bytes[8]; ///< of the target found
        const char* passed;
    } cases[] = {
        {"50:00:0A:0B:0C:0D:01:02", {0x50, 0, 0x0A, 0x0B, 0x0C, 0x0D, 1, 2}, TARGET},
        {"50:0:a:b:c:d:1:2", {0x50, 0, 0x0A, 0x0B, 0x0C, 0x0D, 1, 2}, TARGET},
        {"0x50:00:0a:0b:0c:0d:01:02", {0x50, 0, 0x0A, 0x0B, 0x0C, 0x0D, 1, 2}, TARGET},
        {"50:00:0a:0b:0c:0d:01:02:03", {0x50, 0, 0x0A, 0x0B, 0x0C, 0x0D, 1, 2}, TARGET},
        {"50:00:0a:0b:0c:0d:01:02_x", {0x50, 0, 0x0A, 0x0B, 0x0C, 0x0D, 1, 2}, TARGET},
        {"150:00:0a:0b:0c:0d:01:02", {0x50, 0, 0x0A, 0x0B, 0x0C, 0x0D, 1, 2}, TARGET}, // a byte's low bits
        // Missing or malformed bytes are zero.
        {"50:00:0a", {0x50, 0, 0x0A, 0, 0, 0, 0, 0}, "50:00:0a:00:00:00:00:00"},
        {"50:00:0a-0b:0c", {0x50, 0, 0x0A, 0, 0, 0, 0, 0}, "50:00:0a:00:00:00:00:00"},
        {"50:xx:0a:0b", {0x50, 0, 0, 0, 0, 0, 0, 0}, "50:00:00:00:00:00:00:00"},
        {"name", {}, "00:00:00:00:00:00:00:00"},
    };
    for (const Kind& kind : KINDS) {
        for (const auto& row : cases) {
            SCOPED_TRACE(std::string(kind.family) + " " + row.name);
            std::memset(target->PortName, 0xEE, sizeof target->PortName);
            Expect(kind, RunTest(kind, std::string(row.name) + " 1 true"), RC_TARGET_NOT_FOUND, NO_TARGET);
            std::memcpy(target->PortName, row.bytes, sizeof row.bytes);
            EXPECT_EQ(RunTest(kind, std::string(row.name) + " 1 true").code, RC_SUCCESS);
            EXPECT_EQ(PortCalls(), Calls{TestCall(kind, "1", "1", row.passed)});
        }
        port->pTargetList = nullptr;
        Expect(kind, RunTest(kind, "name 1 true"), RC_TARGET_NOT_FOUND, NO_TARGET);
        port->pTargetList = target;
        SetBytes(target->PortName, std::array{0x50, 0, 0x0A, 0x0B, 0x0C, 0x0D, 1, 2});
    }
}

TEST_F(PingTestsTest, RefusalsComeInOrder) {
    for (const Kind& kind : KINDS) {
        const std::string start = std::string("-t port -s ") + kind.family + " run ";
        const std::string rest = std::string(" ") + kind.testWord + TARGET + " 1 true";
        Expect(kind, Run(start + "FC_21:00:0a:0b:0c:0d:00:99" + rest), RC_INVALID_PARAMETER, INVALID);
        Expect(kind, Run(start + "help" + rest), RC_HELP_REQUESTED, UNKNOWN);
        Expect(kind, RunTest(kind, "no 0 true"), RC_INVALID_PARAMETER, INVALID); // the count before the target
        // Missing words are reported after the port's state.
        const std::string fewer[] = {std::string(TARGET) + " 1", TARGET, ""};
        for (const std::string& words : fewer) {
            Expect(kind, RunTest(kind, words), RC_INVALID_PARAMETER, INVALID);
        }
        port->PortState = 3;
        Expect(kind, RunTest(kind, "no"), RC_LINK_UP_REQUIRED, NO_LINK);
        port->PortState = 0;
        Expect(kind, RunTest(kind, "no 0 true"), RC_LINK_UP_REQUIRED, NO_LINK);
        port->PortInterfaceType = 3;
        Expect(kind, RunTest(kind, "no"), RC_NOT_SUPPORTED_FOR_VPORT, NO_VIRTUAL);
        LoseHost();
        Expect(kind, RunTest(kind, "no"), RC_HOST_NOT_FOUND, NO_HOST);
        Fake().host.hasList = true;
        port->PortInterfaceType = 1;
        port->PortState = 1;
        SetChip(*port, NO_FAMILY); // any chip
        EXPECT_EQ(RunTest(kind, std::string(TARGET) + " 1 true").code, RC_SUCCESS);
    }
}

TEST_F(PingTestsTest, AFailingCallShowsAnEmptyFrame) {
    for (const Kind& kind : KINDS) {
        for (const VX_UINT32 status : {1u, 44u, 0x80000000u}) {
            const std::string function = std::string("VEXAPI_") + kind.function;
            for (const Format& format : FORMATS) {
                Fake().ReturnInTurn(function, {status});
                const CommandRun run =
                    RunTest(kind, std::string(TARGET) + " 1 true", format.IsXml() ? "run" : "runcli");
                EXPECT_EQ(run.code, RC_DIAG_TEST_FAILED);
                _VEXAPI_ECHO_RESULTS none{};
                std::swap(frame, none); // the failed call fills nothing
                std::string row = Frame(format, 1);
                std::swap(frame, none);
                const auto replace = [&row](const std::string& from, const std::string& to) {
                    row.replace(row.find(from), from.size(), to);
                };
                replace("  3.00", "  0.00");
                replace("frame 1", "");
                EXPECT_EQ(run.output, Shown(kind, format, TEST_FAILED, row));
                EXPECT_EQ(PortCalls(), Calls{TestCall(kind, "1", "1")});
            }
        }
    }
}

TEST_F(PingTestsTest, WithoutTheRedirectionNothingIsCalled) {
    for (const Kind& kind : KINDS) {
        NoFiles files;
        LoseFiles(files);
        Expect(kind, RunTest(kind, std::string(TARGET) + " 1 true"), RC_FILE_ERROR, NO_FILE);
        Fake().onGetAdapterList = nullptr;
    }
}

/// `runcli` has no usage function.
TEST_F(PingTestsTest, CliLeavesPrintNoUsage) {
    for (const Kind& kind : KINDS) {
        EXPECT_EQ(RunTest(kind, std::string(TARGET) + " 0 true", "runcli").output, Shown(kind, TEXT, INVALID));
        EXPECT_EQ(Run(std::string("-t port -s ") + kind.family + " runcli help " + kind.testWord).output,
                  Shown(kind, TEXT, UNKNOWN));
    }
}

TEST_F(PingTestsTest, TracesTheStatusOfAFailingCall) {
    const struct {
        const Kind& kind;
        const char* className;
        const char* failed;
    } cases[] = {{PING, "PhysicalPortFCPingCmdsProcessor", "FC Ping failed"},
                 {ECHO, "PhysicalPortFCEchoCmdsProcessor", "FC Echo failed"},
                 {CT, "PhysicalPortCTDiagCmdsProcessor", "CT Diag failed"}};
    for (const auto& row : cases) {
        const TraceLog log("4");
        Fake().ReturnInTurn(std::string("VEXAPI_") + row.kind.function, {5});
        RunTest(row.kind, std::string(TARGET) + " 1 true");
        EXPECT_EQ(TraceLog::Steps(), (std::vector<std::string>{std::string("DEBUG: ") + row.className +
                                                               "::CmdRunCommon: " + row.failed + " err=5"}));
    }
}

class EchoTest : public PingTestsTest {};

TEST_F(EchoTest, ResultIsThatOfTheLastFrame) {
    const struct {
        const char* count;
        const char* stop;
        const char* failedFrames;
        unsigned rows;
        ResultCode code;
    } cases[] = {
        {"3", "true", "", 3, RC_SUCCESS},           {"3", "true", "2", 2, RC_DIAG_TEST_FAILED},
        {"3", "true", "1", 1, RC_DIAG_TEST_FAILED}, {"3", "true", "3", 3, RC_DIAG_TEST_FAILED},
        {"3", "false", "2", 3, RC_SUCCESS},         {"3", "false", "3", 3, RC_DIAG_TEST_FAILED},
        {"3", "no", "12", 3, RC_SUCCESS},           {"3", "no", "123", 3, RC_DIAG_TEST_FAILED},
        {"1", "no", "1", 1, RC_DIAG_TEST_FAILED},
    };
    for (const auto& row : cases) {
        for (const Format& format : FORMATS) {
            SCOPED_TRACE(std::string(row.count) + " " + row.stop + " " + row.failedFrames);
            failedFrames = row.failedFrames;
            const CommandRun run = RunTest(ECHO, std::string(TARGET) + " " + row.count + " " + row.stop,
                                           format.IsXml() ? "run" : "runcli");
            EXPECT_EQ(run.code, row.code);
            EXPECT_EQ(run.output,
                      Shown(ECHO, format, row.code == RC_SUCCESS ? SUCCESS : TEST_FAILED, Frames(format, row.rows)));
            EXPECT_EQ(PortCalls().size(), row.rows);
        }
    }
}

TEST_F(EchoTest, FabricComesBeforeTheTargets) {
    const std::string fabric = "10:00:00:ab:cd:ef:00:01";
    const auto expectType = [&](const std::string& name, const std::string& normal, const char* type) {
        const CommandRun run = RunTest(ECHO, name + " 1 true");
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, Shown(ECHO, XML, SUCCESS, Frame(XML, 1, normal)));
        EXPECT_EQ(PortCalls(), Calls{Call("DiagnosticsEchoElsTest", "\"" + normal + "\", 1, 1, " + type)});
    };
    expectType(fabric, fabric, "3");
    expectType("10:0:0:AB:CD:EF:0:1", fabric, "3");
    std::memcpy(target->PortName, port->PrincipalFabricWWN, sizeof target->PortName);
    expectType(fabric, fabric, "3"); // also when a target has the same name
    port->PrincipalFabricWWN[7] = 2;
    expectType(fabric, fabric, "2");
    port->pTargetList = nullptr;
    port->PrincipalFabricWWN[7] = 1;
    expectType(fabric, fabric, "3");
    // A malformed name equals an all-zero fabric name.
    std::memset(port->PrincipalFabricWWN, 0, sizeof port->PrincipalFabricWWN);
    expectType("name", "00:00:00:00:00:00:00:00", "3");
}

/// The log is opened anew after a moment. If it can't be, the rows so far are shown.
TEST_F(EchoTest, RedirectionIsOpenedAgain) {
    NoFiles files;
    const auto echo = Fake().onDiagnosticsEchoElsTest;
    Fake().onDiagnosticsEchoElsTest = [&](VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count, VX_UINT32 stop,
                                          VX_UINT32 type, _VEXAPI_ECHO_RESULTS* result) {
        if (frames == 1) {
            files.Begin();
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return echo(handle, name, count, stop, type, result);
    };
    const CommandRun run = RunTest(ECHO, std::string(TARGET) + " 5 true");
    EXPECT_EQ(run.code, RC_FILE_ERROR);
    EXPECT_EQ(run.output, Shown(ECHO, XML, NO_FILE, Frames(XML, 2)));
    EXPECT_EQ(PortCalls().size(), 2u);
}

TEST_F(EchoTest, PadsShortTimes) {
    const struct {
        VX_UINT32 time;
        const char* shown;
    } cases[] = {{0, "  0.00 (ms)"}, {12, " 12.00 (ms)"}, {123, "123.00 (ms)"}, {4294967295, "4294967295.00 (ms)"}};
    for (const auto& row : cases) {
        frame.ResponseTime = row.time;
        EXPECT_NE(RunTest(ECHO, std::string(TARGET) + " 1 true", "runcli")
                      .output.find(std::string("\nResponse Time: ") + row.shown + "\n"),
                  std::string::npos);
    }
}

TEST_F(EchoTest, ShowsAStatusThatFillsItsArray) {
    Fake().onDiagnosticsEchoElsTest = [](VX_PORT_HANDLE*, const char*, VX_UINT32, VX_UINT32, VX_UINT32,
                                         _VEXAPI_ECHO_RESULTS* result) {
        SetText(result->EchoStatus, std::string(72, '%')); // fills its array
        return 0u;
    };
    EXPECT_NE(RunTest(ECHO, std::string(TARGET) + " 1 true", "runcli")
                  .output.find("\nEcho Status: " + std::string(72, '%') + "\n"),
              std::string::npos);
}

class CTDiagTest : public PingTestsTest {};

TEST_F(CTDiagTest, TestTypes) {
    const struct {
        const char* word;
        const char* type;
        const char* shown;
    } cases[] = {{"CTPing", "1", "CTPing"},
                 {"ctping", "1", "CTPing"},
                 {"CTFCTraceRoute", "2", "CTFCTraceRoute"},
                 {"CTFCTRACEROUTE", "2", "CTFCTraceRoute"}};
    for (const auto& row : cases) {
        for (const Format& format : FORMATS) {
            const CommandRun run =
                RunPort("ctdiag", format.IsXml() ? "run" : "runcli", std::string(row.word) + " " + TARGET + " 9 true");
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Shown(CT, format, SUCCESS, "", row.shown));
            EXPECT_EQ(PortCalls(),
                      Calls{Call("DiagnosticsCTCommand", std::string("\"") + TARGET + "\", 9, 1, 256, " + row.type)});
        }
        // Failures show the type too.
        EXPECT_EQ(RunPort("ctdiag", "run", std::string(row.word) + " " + TARGET).output,
                  Shown(CT, XML, INVALID, "", row.shown));
        EXPECT_EQ(Run("-t port -s ctdiag run help " + std::string(row.word)).output,
                  Shown(CT, XML, UNKNOWN, "", row.shown));
    }
}

/// The type is checked before everything else.
TEST_F(CTDiagTest, UnknownTypeIsRefusedFirst) {
    const std::string rest = std::string(" ") + TARGET + " 9 true";
    const std::string lines[] = {Id(*port) + " CTPong" + rest,
                                 Id(*port) + " 1" + rest,
                                 "FC_none CTPong" + rest,
                                 "help CTPong" + rest,
                                 Id(*port),
                                 "help",
                                 Id(*port) + " " + TARGET + " 9 true"};
    for (const bool isVirtual : {false, true}) {
        port->PortInterfaceType = isVirtual ? 3 : 1;
        port->PortState = isVirtual ? 3 : 1;
        for (const std::string& line : lines) {
            const CommandRun run = Run("-t port -s ctdiag run " + line);
            EXPECT_EQ(run.code, RC_INVALID_PARAMETER) << line;
            EXPECT_EQ(run.output, Shown(CT, XML, INVALID, "", "Unknown")) << line;
            EXPECT_EQ(PortCalls(), Calls{});
        }
    }
}

} // namespace
