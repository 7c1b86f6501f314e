#include "FamilyTest.h"
#include "TraceLog.h"

using namespace family_test;

namespace {

class FwDumpTest : public FamilyTest {
protected:
    FwDumpTest() {
        Fake().onSDGetFwDump2 = [this](VX_UINT32, VX_UINT32, void** given, VX_UINT32* givenSize) {
            Chatter();
            startedEmpty = *given == nullptr && *givenSize == 0;
            // Allocates exactly the dump's length, so that the memory checker detects reads past it.
            *given = hasDump ? std::malloc(dump.size() + (dump.empty() ? 1 : 0)) : nullptr;
            if (hasDump) {
                std::copy(dump.begin(), dump.end(), static_cast<char*>(*given));
            }
            *givenSize = size;
            return status;
        };
        dump.resize(300);
        for (std::size_t i = 0; i < dump.size(); ++i) {
            dump[i] = static_cast<char>(i * 7);
        }
        size = static_cast<VX_UINT32>(dump.size());
    }
    static std::string Document(const Format& format, const std::string& message) {
        return format.Flat("FwDumpInfo", {{"Message", message}});
    }
    void Expect(const std::string& rest, ResultCode code, const std::string& message, bool isFetched = true) const {
        const CommandRun run = RunPort("fwdump", "get", rest);
        EXPECT_EQ(run.code, code) << rest;
        EXPECT_EQ(run.output, Document(XML, message)) << rest;
        EXPECT_EQ(PortCalls(), isFetched ? Calls{Call("SDGetFwDump2", "0")} : Calls{}) << rest;
    }

    TemporaryFolder folder;
    const std::string path = folder.Path("dump");
    std::string dump;
    VX_UINT32 size;
    bool hasDump = true;
    VX_UINT32 status = 0;
    bool startedEmpty = false;
};

TEST_F(FwDumpTest, IsByteExact) {
    EXPECT_EQ(RunPort("fwdump", "get", path).output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                                     "<structure typeName=\"FwDumpInfo\">\n"
                                                     "<field name=\"Message\">\n<string>Success</string></field>\n"
                                                     "</structure>\n"
                                                     "</output>\n");
    status = 0x2000007B;
    EXPECT_EQ(RunPort("fwdump", "getcli", path).output, "****************************************************\n"
                                                        "FwDumpInfo:\n"
                                                        "Message: Failed, FW Dump Not Available\n"
                                                        "****************************************************\n");
}

TEST_F(FwDumpTest, WritesTheDump) {
    Expect(path, RC_SUCCESS, "Success");
    EXPECT_TRUE(startedEmpty);
    EXPECT_EQ(ReadFile(path), dump);
    // An existing file is overwritten, and truncated if longer.
    folder.Write("dump", std::string(1000, 'x'));
    EXPECT_EQ(RunPort("fwdump", "getcli", path + " extra").output, Document(TEXT, "Success"));
    EXPECT_EQ(ReadFile(path), dump);
    // The size counts, not the allocation.
    size = 10;
    Expect(path, RC_SUCCESS, "Success");
    EXPECT_EQ(ReadFile(path), dump.substr(0, 10));
}

TEST_F(FwDumpTest, GivesEveryStatusItsCodeAndText) {
    static constexpr struct {
        VX_UINT32 status;
        ResultCode code;
        const char* message;
    } CASES[] = {
        {0x20000064, RC_INVALID_PARAMETER, "Failed, Invalid Parameter"}, // with a capital
        {0x20000072, RC_NO_MEMORY, "Failed, Memory Error"},
        {0x20000073, RC_PARAM_ERROR, "Failed, Parameter Error"},
        {0x2000007B, RC_NO_DATA_AVAILABLE, "Failed, FW Dump Not Available"},
        {0x20000063, RC_CFG_READ_FAILED, "Failed, FW Dump read failed"},
        {0x20000065, RC_CFG_READ_FAILED, "Failed, FW Dump read failed"},
        {0x20000071, RC_CFG_READ_FAILED, "Failed, FW Dump read failed"},
        {0x20000074, RC_CFG_READ_FAILED, "Failed, FW Dump read failed"},
        {0x2000007A, RC_CFG_READ_FAILED, "Failed, FW Dump read failed"},
        {0x2000007C, RC_CFG_READ_FAILED, "Failed, FW Dump read failed"},
        {0x64, RC_CFG_READ_FAILED, "Failed, FW Dump read failed"},
        {1, RC_CFG_READ_FAILED, "Failed, FW Dump read failed"},
        {0xFFFFFFFF, RC_CFG_READ_FAILED, "Failed, FW Dump read failed"},
    };
    for (const auto& row : CASES) {
        status = row.status;
        for (const bool has : {true, false}) { // a dump returned with a failure is released
            hasDump = has;
            Expect(path, row.code, row.message);
            EXPECT_EQ(ReadFile(path), std::nullopt) << row.status;
        }
        const CommandRun run = RunPort("fwdump", "getcli", path);
        const bool showsUsage = row.code == RC_PARAM_ERROR || row.code == RC_INVALID_PARAMETER;
        EXPECT_EQ(run.output, Document(TEXT, row.message) + (showsUsage ? "Usage: get\r\n" : ""));
    }
}

TEST_F(FwDumpTest, TracesAFailingStatus) {
    const TraceLog log("4");
    Expect(path, RC_SUCCESS, "Success");
    status = 0x64;
    Expect(path, RC_CFG_READ_FAILED, "Failed, FW Dump read failed");
    EXPECT_EQ(
        TraceLog::Steps(),
        std::vector<std::string>{"DEBUG: PhysicalPortFwDumpCmdsProcessor::CmdGetCommon: Get FW Dump failed err=100"});
}

TEST_F(FwDumpTest, EmptyDumpIsAnEmptyFile) {
    size = 0;
    folder.Write("dump", "old");
    Expect(path, RC_SUCCESS, "Success");
    EXPECT_EQ(ReadFile(path), "");
    hasDump = false; // no dump is the same as size 0
    folder.Write("dump", "old");
    Expect(path, RC_SUCCESS, "Success");
    EXPECT_EQ(ReadFile(path), "");
}

TEST_F(FwDumpTest, NoDumpWithASizeIsNotAvailable) {
    hasDump = false;
    Expect(path, RC_NO_DATA_AVAILABLE, "Failed, FW Dump Not Available");
    EXPECT_EQ(ReadFile(path), std::nullopt);
}

/// The dump is fetched first, and released: see the leak check of a sanitized build.
TEST_F(FwDumpTest, PathThatCantBeWritten) {
    for (const std::string& bad : {folder.Path("none/dump"), folder.Path(""), folder.Path(std::string(5000, 'x'))}) {
        Expect(bad, RC_FILE_ERROR, "Failed, File not found");
    }
}

/// A full device is not a failure: the result of the write isn't checked.
TEST_F(FwDumpTest, FullDeviceIsNoFailure) {
    Expect("/dev/full", RC_SUCCESS, "Success");
}

TEST_F(FwDumpTest, WithoutAPathNothingIsFetched) {
    Expect("", RC_PARAM_ERROR, "Failed, Parameter Error", false);
    EXPECT_EQ(RunPort("fwdump", "getcli").output, Document(TEXT, "Failed, Parameter Error") + "Usage: get\r\n");
}

TEST_F(FwDumpTest, WithoutTheRedirection) {
    NoFiles files;
    LoseFiles(files);
    Expect(path, RC_FILE_ERROR, "Failed, File not found", false);
}

TEST_F(FwDumpTest, TellsWhyThereIsNoPort) {
    const CommandRun none = Run("-t port -s fwdump get");
    EXPECT_EQ(none.code, RC_INVALID_PARAMETER);
    EXPECT_EQ(none.output, Document(XML, "Failed, Invalid Parameter"));
    EXPECT_EQ(Run("-t port -s fwdump getcli FC_x " + path).output,
              Document(TEXT, "Failed, Invalid Parameter") + "Usage: get\r\n");
    const CommandRun help = Run("-t port -s fwdump get help " + path);
    EXPECT_EQ(help.code, RC_HELP_REQUESTED);
    EXPECT_EQ(help.output, Document(XML, "Failed, Unknown"));
    LoseHost();
    Expect("", RC_HOST_NOT_FOUND, "Failed, Host not found", false); // before the missing path
}

TEST_F(FwDumpTest, EveryPortIsAdmitted) {
    port->PortInterfaceType = 3;
    port->PortState = 3;
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        Expect(path, RC_SUCCESS, "Success");
    }
}

} // namespace
