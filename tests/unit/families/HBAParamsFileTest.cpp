#include "HBAParamsTest.h"

#include "Limits.h"

using namespace family_test;

namespace {

/// Keys of the file and their accepted values.
struct KeyRow {
    const char* key;
    VX_UINT32 _VEXAPI_HBAParameters::*field;
    std::vector<VX_UINT32> accepted;
    std::vector<VX_UINT32> dropped;
};
const KeyRow KEYS[] = {
    {"Connection_Options", &_VEXAPI_HBAParameters::ConnetionOptions, {0, 2}, {3, 255}},
    {"Data_Rate", &_VEXAPI_HBAParameters::DataRate, {0, 7}, {8}},
    {"Disable_BIOS", &_VEXAPI_HBAParameters::DisableBIOS, {0, 1}, {2}},
    {"Disable_SCM", &_VEXAPI_HBAParameters::DisableSCM, {0, 1}, {2}},
    {"Enable_Fabric_Assign_WWN", &_VEXAPI_HBAParameters::EnableFabricAssignWWN, {0, 1}, {2}},
    {"Enable_Fibre_Channel_Tape_Support", &_VEXAPI_HBAParameters::EnableFibreChannelTapeSupport, {0, 1}, {2}},
    {"Enable_Hard_Loop_Id", &_VEXAPI_HBAParameters::EnableHardLoopId, {0, 1}, {2}},
    {"Enable_LR", &_VEXAPI_HBAParameters::EnableLRBit, {0, 1}, {2}},
    {"Enable_Lip_Full_Login", &_VEXAPI_HBAParameters::EnableLipFullLogin, {0, 1}, {2}},
    {"Enable_Receive_Out_Of_Order_Frames", &_VEXAPI_HBAParameters::RecvOutOfOrderDataBit, {0, 1}, {2}},
    {"Enable_Target_Reset", &_VEXAPI_HBAParameters::EnableTargetReset, {0, 1}, {2}},
    {"Execution_Throttle", &_VEXAPI_HBAParameters::ExecutionThrottle, {0, 65535}, {65536}},
    {"Frame_Size",
     &_VEXAPI_HBAParameters::FrameSize,
     {512, 1024, 2048, 2112}, // the last on every adapter: the file isn't checked against the adapter
     {0, 511, 513, 2047, 2049, 2113, 4096}},
    {"Hard_Loop_ID", &_VEXAPI_HBAParameters::HardLoopId, {0, 125}, {126, 200}},
    {"Interrupt_Delay_Timer", &_VEXAPI_HBAParameters::InterruptDelayTimer, {0, 255}, {256}},
    {"Link_Down_Timeout", &_VEXAPI_HBAParameters::LinkDownTimeout, {0, 240}, {241}},
    {"Login_Retry_Count", &_VEXAPI_HBAParameters::LoginRetryCount, {0, 255}, {256}},
    {"Loop_Reset_Delay", &_VEXAPI_HBAParameters::LoopResetDelay, {0, 255}, {256}},
    {"Luns_Per_Target", &_VEXAPI_HBAParameters::MaxLunsPerTarget, {0, 256}, {257}},
    {"Operation_Mode", &_VEXAPI_HBAParameters::OperationMode, {0, 5, 6}, {1, 4, 7}},
    {"Port_Down_Retry_Count", &_VEXAPI_HBAParameters::PortDownRetryCount, {0, 255}, {256}},
};

class HBAParamsFileTest : public HBAParamsTestBase {
protected:
    /// Runs `set` on a file of this content and expects the record that is written.
    void ExpectWritten(const std::string& content, const _VEXAPI_HBAParameters& expected) {
        written.reset();
        Stage(content);
        EXPECT_EQ(Run("set").code, RC_SUCCESS) << content;
        EXPECT_TRUE(WasWritten(expected)) << content;
    }
};

TEST_F(HBAParamsFileTest, ValuesOutOfRangeAreDropped) {
    for (const KeyRow& row : KEYS) {
        for (const VX_UINT32 number : row.accepted) {
            _VEXAPI_HBAParameters expected = nvram;
            expected.*row.field = number;
            ExpectWritten(std::string(row.key) + "=" + std::to_string(number) + "\n", expected);
        }
        std::vector<VX_UINT32> dropped = row.dropped;
        dropped.push_back(0xFFFFFFFF);
        for (const VX_UINT32 number : dropped) {
            ExpectWritten(std::string(row.key) + "=" + std::to_string(number) + "\n", nvram);
        }
        ExpectWritten(std::string(row.key) + "=-1\n", nvram);
    }
    _VEXAPI_HBAParameters expected = nvram;
    expected.EnableVirtualLane = 0;
    ExpectWritten("Enable_Virtual_Lane=0\n", expected);
    expected.EnableVirtualLane = 1;
    ExpectWritten("Enable_Virtual_Lane=1\n", expected);
    ExpectWritten("Enable_Virtual_Lane=2\n", nvram);
    ExpectWritten("Enable_Virtual_Lane=256\n", nvram); // the low byte isn't used
}

TEST_F(HBAParamsFileTest, NumbersAreReadAsOptionsAre) {
    _VEXAPI_HBAParameters expected = nvram;
    expected.HardLoopId = 0;
    for (const char* const text : {"abc", "", "0x10", "4294967296", "#33"}) {
        ExpectWritten(std::string("Hard_Loop_ID=") + text + "\n", expected);
    }
    expected.HardLoopId = 7;
    for (const char* const text : {"7", " 7 8", "7up", "+7", "4294967303", "7#8", "007"}) { // 2^32 + 7
        ExpectWritten(std::string("Hard_Loop_ID=") + text + "\n", expected);
    }
    // A value longer than the reader's 512 bytes is truncated, and still far out of range.
    ExpectWritten("Hard_Loop_ID=" + std::string(512, '1') + "\n", nvram);
    ExpectWritten("Hard_Loop_ID=" + std::string(900, '1') + "\n", nvram);
}

TEST_F(HBAParamsFileTest, HandEditedFiles) {
    _VEXAPI_HBAParameters expected = nvram;
    expected.FrameSize = 512;
    // All other values come from the read.
    ExpectWritten("Frame_Size=512\n", expected);
    ExpectWritten("Frame_Size=512", expected);
    ExpectWritten("\n# my port\n  frame_size = 512 # small\nnonsense\n", expected);
    ExpectWritten("FRAME_SIZE=512\nFrame_Size=1024\n", expected); // the first line counts
    ExpectWritten("#Frame_Size=1024\nFrame_Size=512\n", expected);
    ExpectWritten("", nvram);
    ExpectWritten(WithLine(SNAPSHOT, "Hard_Loop_ID", "200"), nvram);
    _VEXAPI_HBAParameters loops = nvram;
    loops.EnableHardLoopId = 0;
    loops.HardLoopId = 77;
    ExpectWritten("Hard_Loop_ID=77\nEnable_Hard_Loop_Id=0\n", loops);
}

TEST_F(HBAParamsFileTest, AnUpdateRegardsTheCaseOfAKey) {
    // The reader finds the first line; the updater doesn't see it, and appends another.
    Stage("frame_size=1024\n");
    ExpectStaged("-z 512", "frame_size=1024\nFrame_Size=512\n");
    // A last line without a newline gets one; otherwise both settings would be lost.
    Stage("Hard_Loop_ID=33");
    ExpectStaged("-z 512", "Hard_Loop_ID=33\nFrame_Size=512\n");
    // Every line that contains a key is replaced, even a comment.
    Stage("# Frame_Size was 2048\nFrame_Size=2048\n");
    ExpectStaged("-z 512", "Frame_Size=512\nFrame_Size=512\n");
    Stage(SNAPSHOT);
    ExpectStaged("-l 7", WithLine(SNAPSHOT, "Hard_Loop_ID", "7"));
    ExpectStaged("-p false", WithLine(WithLine(SNAPSHOT, "Hard_Loop_ID", "7"), "Enable_Hard_Loop_Id", "0"));
}

TEST_F(HBAParamsFileTest, ASnapshotOfOddValuesChangesNothing) {
    nvram.DataRate = 9;
    nvram.HardLoopId = 0xFFFFFFFF;
    nvram.EnableVirtualLane = 255;
    Run("setFile");
    EXPECT_EQ(Staged(), WithLine(WithLine(WithLine(SNAPSHOT, "Data_Rate", "9"), "Hard_Loop_ID", "-1"),
                                 "Enable_Virtual_Lane", "255"));
    Run("set");
    EXPECT_TRUE(WasWritten(nvram));
}

TEST_F(HBAParamsFileTest, PortsHaveFilesOfTheirOwn) {
    _vexapi_protocol_t& other = Fake().host.AddProtocol(*phyPort);
    std::memcpy(other.WWPN, port->WWPN, sizeof other.WWPN);
    other.WWPN[7] = 0x02;
    other.ChipProperty = port->ChipProperty;
    const std::string otherPath = "/tmp/HBAParams_" + Id(other);
    unlink(otherPath.c_str());
    Stage(SNAPSHOT);
    EXPECT_EQ(FamilyTest::Run("-t port -s hbaparams setFile " + Id(other) + " -z 512").code, RC_SUCCESS);
    EXPECT_EQ(Staged(), SNAPSHOT);
    EXPECT_EQ(ReadFile(otherPath), WithLine(SNAPSHOT, "Frame_Size", "512"));
    EXPECT_EQ(Run("set").code, RC_SUCCESS);
    EXPECT_EQ(Staged(), "no file");
    EXPECT_TRUE(std::filesystem::exists(otherPath));
    unlink(otherPath.c_str());
}

TEST_F(HBAParamsFileTest, AFullDiskLosesNothing) {
    for (const Format& format : FORMATS) {
        RemoveFiles();
        CommandRun run;
        {
            const FullDisk disk;
            run = Run(format.Leaf("setFile"), "-z 512");
        }
        EXPECT_EQ(run.code, RC_FILE_ERROR);
        EXPECT_EQ(run.output, Error(format, "Failed, Unknown"));
        EXPECT_EQ(Staged(), "no file");
        Stage(SNAPSHOT);
        {
            const FullDisk disk;
            run = Run(format.Leaf("setFile"), "-z 512");
        }
        EXPECT_EQ(run.code, RC_FILE_ERROR);
        EXPECT_EQ(run.output, Error(format, "Failed, Unknown"));
        EXPECT_EQ(Staged(), SNAPSHOT);
        EXPECT_EQ(ReadFile(FilePath() + "_tmp"), std::nullopt);
    }
}

} // namespace
