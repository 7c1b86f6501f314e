/// The command. For its payloads see the test of their decoder.
#include "FamilyTest.h"
#include "RefusedBlock.h"
#include "TraceLog.h"

using namespace family_test;

namespace {

constexpr char INVALID[] = "Failed, Invalid parameter";

const std::string FEC_BLOCK = "---------------------------------\n"
                              "FEC Status Information\n"
                              "---------------------------------\n"
                              "Correctable Blocks: 258\n"
                              "\n";

class RDPTest : public FamilyTest {
protected:
    RDPTest() {
        Fake().onDiagnosticsRDPTest = [this](VX_PORT_HANDLE*, void* buffer, VX_UINT32* size) {
            Chatter();
            sizeGiven = *size;
            auto* const bytes = static_cast<VX_UINT8*>(buffer);
            wasCleared = std::all_of(bytes, bytes + *size, [](VX_UINT8 byte) { return byte == 0; });
            std::copy(payload.begin(), payload.end(), bytes);
            *size = sizeBack;
            return 0u;
        };
    }

    static std::string Shown(const Format& format, const std::string& text) {
        return format.Report(
            "RDPInformation", {{"Message", "Success"}}, "Read Diagnostics Parameters Data",
            format.Structure("RDPDataList",
                             format.OpenField("RDPInfo", format.IsXml() ? "<string>" + text + "</string>" : text)));
    }
    static std::string Error(const Format& format, const std::string& message) {
        return format.Report("RDPInformation", {{"Message", message}}, "Read Diagnostics Parameters Data", "");
    }
    static std::string LeafOf(const Format& format) { return format.IsXml() ? "get" : "runcli"; }
    void Expect(const CommandRun& run, ResultCode code, const std::string& document, const Calls& calls = {}) const {
        EXPECT_EQ(run.code, code);
        EXPECT_EQ(run.output, document);
        EXPECT_EQ(PortCalls(), calls);
        EXPECT_FALSE(run.wasLeftRedirected);
    }

    const std::string RDP_TEST = Call("DiagnosticsRDPTest");

    /// A list of 16 bytes, including its length: one FEC status descriptor with one value of 0x102.
    std::vector<VX_UINT8> payload = {0, 0, 0, 16, 0, 1, 0, 5, 0, 0, 0, 4, 0, 0, 1, 2};
    VX_UINT32 sizeBack = 16;
    VX_UINT32 sizeGiven = 0;
    bool wasCleared = false;
};

TEST_F(RDPTest, IsByteExact) {
    EXPECT_EQ(RunPort("rdp", "get").output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                            "<structure typeName=\"RDPInformation\">\n"
                                            "<field name=\"Message\">\n<string>Success</string></field>\n"
                                            "<field name=\"Read Diagnostics Parameters Data\">\n"
                                            "<list type=\"structure\">\n"
                                            "<structure typeName=\"RDPDataList\">\n"
                                            "<field name=\"RDPInfo\">\n"
                                            "<string>" +
                                                FEC_BLOCK +
                                                "</string></field>\n"
                                                "</structure>\n</list>\n</field>\n</structure>\n</output>\n");
    EXPECT_EQ(RunPort("rdp", "runcli").output, "****************************************************\n"
                                               "RDPInformation:\n"
                                               "Message: Success\n"
                                               "Read Diagnostics Parameters Data: RDPDataList:\n"
                                               "RDPInfo: " +
                                                   FEC_BLOCK +
                                                   "****************************************************\n");
}

/// The returned size is ignored: the payload contains its own length.
TEST_F(RDPTest, ReadsThePayload) {
    for (const VX_UINT32 size : {0u, 4u, 16u, 508u, 0xFFFFFFFFu}) {
        sizeBack = size;
        for (const Format& format : FORMATS) {
            Expect(RunPort("rdp", LeafOf(format)), RC_SUCCESS, Shown(format, FEC_BLOCK), {RDP_TEST});
            EXPECT_EQ(sizeGiven, 508u);
            EXPECT_TRUE(wasCleared);
        }
    }
    payload[3] = 4; // a list of nothing
    Expect(RunPort("rdp", "get"), RC_SUCCESS, Shown(XML, ""), {RDP_TEST});
    payload.clear();
    Expect(RunPort("rdp", "runcli"), RC_SUCCESS, Shown(TEXT, ""), {RDP_TEST});
}

/// A list with an excessive length ends with the payload.
TEST_F(RDPTest, StaysInsideThePayload) {
    payload.assign(508, 0);
    std::fill_n(payload.begin(), 4, VX_UINT8{0xFF});
    const VX_UINT8 last[] = {0, 1, 0, 5, 0, 0, 1, 0, 0, 0, 0, 7}; // 64 values, of which one is there
    std::copy(std::begin(last), std::end(last), payload.end() - 12);
    const std::string output = RunPort("rdp", "runcli").output;
    EXPECT_NE(output.find("FEC Status Information\n---------------------------------\nCorrectable Blocks: 7\n"),
              std::string::npos)
        << output;
}

TEST_F(RDPTest, RefusalsComeInOrder) {
    for (const Format& format : FORMATS) {
        const auto run = [&](const std::string& words) {
            return Run("-t port -s rdp " + LeafOf(format) + (words.empty() ? "" : " " + words));
        };
        Expect(run(""), RC_INVALID_PARAMETER, Error(format, INVALID)); // and no usage after it
        Expect(run("FC_21:00:0a:0b:0c:0d:00:99"), RC_INVALID_PARAMETER, Error(format, INVALID));
        Expect(run("help"), RC_HELP_REQUESTED, Error(format, "Failed, Unknown"));
        for (const int state : {0, 2, 3, 255}) {
            port->PortState = static_cast<VX_UINT8>(state);
            Expect(run(Id(*port)), RC_LINK_UP_REQUIRED, Error(format, "Failed, Feature requires link up"));
        }
        port->PortInterfaceType = 3;
        Expect(run(Id(*port)), RC_NOT_SUPPORTED_FOR_VPORT,
               Error(format, "Failed, Feature not supported for virtual port"));
        port->PortState = 1;
        Expect(run(Id(*port)), RC_NOT_SUPPORTED_FOR_VPORT,
               Error(format, "Failed, Feature not supported for virtual port"));
        LoseHost();
        Expect(run(Id(*port)), RC_HOST_NOT_FOUND, Error(format, "Failed, Host not found"));
        Fake().host.hasList = true;
        port->PortInterfaceType = 1;
        SetChip(*port, NO_FAMILY); // any chip
        Expect(run(Id(*port)), RC_SUCCESS, Shown(format, FEC_BLOCK), {RDP_TEST});
    }
}

TEST_F(RDPTest, EveryLibraryFailureIsTheSame) {
    for (const VX_UINT32 status : {1u, 43u, 0xFFFFFFFFu}) {
        Fake().Return("VEXAPI_DiagnosticsRDPTest", status);
        for (const Format& format : FORMATS) {
            Expect(RunPort("rdp", LeafOf(format)), RC_DIAG_TEST_FAILED, Error(format, "Failed, Diagnostic test failed"),
                   {RDP_TEST});
        }
    }
}

TEST_F(RDPTest, WithoutTheRedirectionNothingIsCalled) {
    NoFiles files;
    LoseFiles(files);
    Expect(RunPort("rdp", "get"), RC_FILE_ERROR, Error(XML, "Failed, File not found"));
}

TEST_F(RDPTest, WithoutMemoryTheReportIsEmpty) {
    for (const Format& format : FORMATS) {
        CommandRun run;
        {
            const RefusedBlock refused(16384);
            run = RunPort("rdp", LeafOf(format));
        }
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output,
                  format.Report("RDPInformation", {{"Message", "Success"}}, "Read Diagnostics Parameters Data",
                                format.Structure("RDPDataList", format.OpenField("RDPInfo", ""))));
    }
}

TEST_F(RDPTest, TracesStatusesAndUnknownTags) {
    const TraceLog log("5");
    payload[7] = 4; // a tag without a decoder; the words after it are tags too
    Fake().ReturnInTurn("VEXAPI_DiagnosticsRDPTest", {0, 9});
    RunPort("rdp", "get");
    RunPort("rdp", "runcli");
    const std::string by = "PhysicalPortRDPCmdsProcessor::";
    std::vector<std::string> lines;
    for (const std::string& line : TraceLog::Steps()) {
        if (line.find(": " + by) != std::string::npos && line.find("RETURNING") == std::string::npos) {
            lines.push_back(line);
        }
    }
    const std::string tag = "INFORMATION: " + by + "ParseRDPDataBuffer: Unknown Descriptor Tag/Value 0x";
    const auto info = [&by](const std::string& text) { return "INFORMATION: " + by + text; };
    EXPECT_EQ(lines, (std::vector<std::string>{
                         info("CmdGet: Entered"), info("CmdGetCommon: Entered"),
                         info("CmdGetCommon: VEXAPI_DiagnosticsRDPTest=0"), info("DisplayRDPInfo: Entered"),
                         tag + "00010004", tag + "00000004", tag + "00000102", info("DisplayRDPInfo: Message=Success"),
                         info("DisplayRDPInfo: Exiting"), info("CmdGetCommon: Exiting"), info("CmdGetCli: Entered"),
                         info("CmdGetCommon: Entered"), info("CmdGetCommon: VEXAPI_DiagnosticsRDPTest=9"),
                         "DEBUG: " + by + "CmdGetCommon: RDP Test failed err=9", info("DisplayError: Entered"),
                         info("DisplayError: Message=Failed, Diagnostic test failed"), info("DisplayError: Exiting")}));
}

} // namespace
