#include "TargetTestBase.h"

using namespace family_test;

namespace {

constexpr char STRUCTURE[] = "TargetIIDMAInformation";
constexpr char FIELD[] = "Target IIDMA Info";
constexpr char LIST[] = "TargetIIDMAInfoList";

constexpr char INVALID[] = "Failed, Invalid parameter";
constexpr char READ_ONLY[] = "Failed, Read-Only feature for this adapter";
constexpr char READ_FAILED[] = "Failed, IIDMA read failed";
constexpr char SET_FAILED[] = "Failed, IIDMA set failed";
constexpr char NO_HOST[] = "Failed, Host not found";
constexpr char NO_FILE[] = "Failed, File not found";
constexpr char NO_SPEED[] = "Failed, Speed not supported for this adapter";
constexpr char NO_VIRTUAL[] = "Failed, feature not supported for virtual port";

struct Speed {
    const char* word;
    VX_UINT32 code;
    int level;
    VX_UINT8 bit;
};
constexpr Speed SPEEDS[] = {
    {"1_Gbps", 1, 1, 0x01},   {"2_Gbps", 2, 2, 0x02},   {"4_Gbps", 4, 3, 0x08},    {"8_Gbps", 8, 4, 0x10},
    {"16_Gbps", 22, 5, 0x20}, {"32_Gbps", 50, 6, 0x40}, {"64_Gbps", 100, 7, 0x80},
};

class TargetLinkSpeedTest : public TargetTest {
protected:
    TargetLinkSpeedTest() {
        SetBytes(target->NodeName, {0x50, 0x0a, 0x09, 0x80, 0xa1, 0xc3, 0x40, 0x1e});
        SetBytes(target->PortId, {0x01, 0x4f, 0xe0});
        target->TargetNumber = 513;
        port->SupportedSpeeds = 0xFB; // all but 10 Gbps
        Fake().onGetTargetLinkSpeed = [this](VX_PORT_HANDLE*, VX_UINT16, VX_UINT32* speed) {
            Chatter();
            *speed = present;
            return 0u;
        };
        Fake().onSetTargetLinkSpeed = [this](VX_PORT_HANDLE*, VX_UINT16, VX_UINT32 speed) {
            Chatter();
            present = speed;
            return 0u;
        };
    }
    static std::string Report(const Format& format, const std::string& word) {
        return format.Block(
            STRUCTURE, FIELD, LIST,
            TextOfLines({"Node Name: 50:0a:09:80:a1:c3:40:1e", "Port Name: 50:00:0a:0b:0c:0d:01:01",
                         "Port Id: 01:4f:e0", "Target Number: 513", "Target Maximum Link Speed: " + word}));
    }
    void ExpectReport(const std::string& leaf, const std::string& rest, const std::string& word) const {
        for (const Format& format : FORMATS) {
            const CommandRun run = RunTarget("iidma", format.Leaf(leaf), rest);
            EXPECT_EQ(run.code, RC_SUCCESS) << leaf << " " << rest;
            EXPECT_EQ(run.output, Report(format, word)) << leaf << " " << rest;
        }
    }
    /// An error of a leaf, followed by the usage if the code and the format require it.
    void ExpectError(const std::string& leaf, const std::string& rest, ResultCode code, const char* message) const {
        for (const Format& format : FORMATS) {
            const CommandRun run = RunTarget("iidma", format.Leaf(leaf), rest);
            const bool hasUsage = !format.IsXml() && (code == RC_HELP_REQUESTED || code == RC_INVALID_PARAMETER);
            EXPECT_EQ(run.code, code) << leaf << " " << rest;
            EXPECT_EQ(run.output, ErrorOf(format, STRUCTURE, FIELD, message) +
                                      (hasUsage ? "Usage: " + leaf + " [port identifier]\r\n" : ""))
                << leaf << " " << rest;
        }
    }
    static Calls ReadOnce() { return {Call("GetTargetLinkSpeed", "513")}; }

    VX_UINT32 present = 50;
};

TEST_F(TargetLinkSpeedTest, GetShowsTheWord) {
    for (const Speed& speed : SPEEDS) {
        present = speed.code;
        ExpectReport("get", "", speed.word);
        EXPECT_EQ(PortCalls(), ReadOnce());
    }
    // 10 Gbps has a text but no level; other codes have neither.
    present = 16;
    ExpectReport("get", "", "10_Gbps");
    for (const VX_UINT32 code : {0u, 3u, 5u, 21u, 23u, 99u, 101u, 0xFFFFFFFFu}) {
        present = code;
        ExpectReport("get", "", "Unknown");
    }
}

/// A speed above the adapter's highest is shown as the highest; a speed without a level is unchanged.
TEST_F(TargetLinkSpeedTest, GetIsClamped) {
    for (const Speed& maximum : SPEEDS) {
        // The bits below the highest are ignored, as is that of 10 Gbps, 0x04.
        for (const int others : {0x00, 0x04, maximum.bit - 1}) {
            port->SupportedSpeeds = static_cast<VX_UINT8>(maximum.bit | others);
            for (const Speed& speed : SPEEDS) {
                present = speed.code;
                EXPECT_EQ(RunTarget("iidma", "getcli").output,
                          Report(TEXT, speed.level > maximum.level ? maximum.word : speed.word))
                    << maximum.word << " " << speed.word;
            }
            present = 16;
            EXPECT_EQ(RunTarget("iidma", "getcli").output, Report(TEXT, "10_Gbps"));
            present = 99;
            EXPECT_EQ(RunTarget("iidma", "getcli").output, Report(TEXT, "Unknown"));
        }
    }
    // Without any level the code is 0, which has no text.
    for (const VX_UINT8 mask : std::initializer_list<VX_UINT8>{0x00, 0x04}) {
        port->SupportedSpeeds = mask;
        for (const Speed& speed : SPEEDS) {
            present = speed.code;
            ExpectReport("get", "", "Unknown");
        }
        present = 16;
        ExpectReport("get", "", "10_Gbps");
    }
}

TEST_F(TargetLinkSpeedTest, SetWritesAndShowsTheWantedSpeed) {
    for (const Speed& speed : SPEEDS) {
        present = 999;
        const CommandRun run = RunTarget("iidma", "set", speed.word);
        EXPECT_EQ(run.output, Report(XML, speed.word));
        EXPECT_EQ(PortCalls(), (Calls{Call("GetTargetLinkSpeed", "513"),
                                      Call("SetTargetLinkSpeed", "513, " + std::to_string(speed.code))}));
        EXPECT_EQ(present, speed.code);
        ExpectReport("get", "", speed.word);
    }
    ExpectReport("set", "16_GBPS more", "16_Gbps");
}

TEST_F(TargetLinkSpeedTest, SpeedInForceIsNotWrittenAgain) {
    for (const Speed& speed : SPEEDS) {
        present = speed.code;
        ExpectReport("set", speed.word, speed.word);
        EXPECT_EQ(PortCalls(), ReadOnce());
    }
}

/// The speed read is compared without clamping.
TEST_F(TargetLinkSpeedTest, SpeedAboveTheHighestIsReplaced) {
    port->SupportedSpeeds = 0x38;
    present = 50;
    ExpectReport("get", "", "16_Gbps");
    ExpectReport("set", "16_Gbps", "16_Gbps");
    EXPECT_EQ(present, 22u);
}

/// Required: an unknown word counts as 1 Gbps. A missing word does not.
TEST_F(TargetLinkSpeedTest, MisspeltWordIsTheSlowestSpeed) {
    for (const char* word : {"1_Gbps", "128_Gbps", "32", "32Gbps", "16_Gbps_", "fast", "-s", "1_GBPS"}) {
        present = 22;
        EXPECT_EQ(RunTarget("iidma", "setcli", word).output, Report(TEXT, "1_Gbps")) << word;
        EXPECT_EQ(present, 1u) << word;
    }
    present = 22;
    const CommandRun run =
        RunCommand(TavuStringArray{"-t", "target", "-v", "iidma", "set", TavuString(TargetId(*port, *target)), ""});
    EXPECT_EQ(run.output, Report(XML, "1_Gbps")); // an empty word is not missing
    ExpectError("set", "", RC_INVALID_PARAMETER, INVALID);
    EXPECT_EQ(PortCalls(), Calls{});
}

TEST_F(TargetLinkSpeedTest, SpeedsAboveTheHighestAreRefused) {
    for (const Speed& maximum : SPEEDS) {
        port->SupportedSpeeds = maximum.bit;
        for (const Speed& speed : SPEEDS) {
            present = 999;
            const CommandRun run = RunTarget("iidma", "set", speed.word);
            const bool isRefused = speed.level > maximum.level;
            EXPECT_EQ(run.code, isRefused ? RC_UNSUPPORTED_SPEED : RC_SUCCESS) << maximum.word << " " << speed.word;
            EXPECT_EQ(run.output, isRefused ? ErrorOf(XML, STRUCTURE, FIELD, NO_SPEED) : Report(XML, speed.word));
            EXPECT_EQ(PortCalls().size(), isRefused ? 0u : 2u);
        }
        ExpectError("set", "10_Gbps", RC_UNSUPPORTED_SPEED, NO_SPEED);
        ExpectError("set", "10_gbps", RC_UNSUPPORTED_SPEED, NO_SPEED);
    }
    for (const VX_UINT8 mask : std::initializer_list<VX_UINT8>{0x00, 0x04}) {
        port->SupportedSpeeds = mask;
        for (const Speed& speed : SPEEDS) {
            ExpectError("set", speed.word, RC_UNSUPPORTED_SPEED, NO_SPEED);
        }
        ExpectError("set", "10_Gbps", RC_UNSUPPORTED_SPEED, NO_SPEED);
        ExpectError("set", "fast", RC_UNSUPPORTED_SPEED, NO_SPEED);
        EXPECT_EQ(PortCalls(), Calls{});
    }
    port->SupportedSpeeds = 0xFF; // an adapter that supports it
    ExpectError("set", "10_Gbps", RC_UNSUPPORTED_SPEED, NO_SPEED);
}

/// The refusals in order: each case also has all later ones.
TEST_F(TargetLinkSpeedTest, OrderOfRefusals) {
    Fake().Return("VEXAPI_GetTargetLinkSpeed", 7);
    port->SupportedSpeeds = 0;
    SetChip(*port, ROWAN_CNA);
    port->PortInterfaceType = 3;
    ExpectError("set", "", RC_NOT_SUPPORTED_FOR_VPORT, NO_VIRTUAL);
    ExpectError("set", "fast", RC_NOT_SUPPORTED_FOR_VPORT, NO_VIRTUAL);
    ExpectError("get", "", RC_NOT_SUPPORTED_FOR_VPORT, NO_VIRTUAL);
    port->PortInterfaceType = 1;
    ExpectError("set", "", RC_INVALID_CMD, READ_ONLY);
    ExpectError("set", "fast", RC_INVALID_CMD, READ_ONLY);
    ExpectError("get", "", RC_CFG_READ_FAILED, READ_FAILED);
    SetChip(*port, LARCH);
    ExpectError("set", "", RC_INVALID_PARAMETER, INVALID);
    ExpectError("set", "fast", RC_UNSUPPORTED_SPEED, NO_SPEED);
    EXPECT_EQ(PortCalls(), Calls{});
    port->SupportedSpeeds = 1;
    ExpectError("set", "fast", RC_CFG_READ_FAILED, READ_FAILED);
    EXPECT_EQ(PortCalls(), ReadOnce());
    Fake().Return("VEXAPI_GetTargetLinkSpeed", 0);
    Fake().Return("VEXAPI_SetTargetLinkSpeed", 7);
    ExpectError("set", "fast", RC_CFG_UPDATE_FAILED, SET_FAILED);
}

/// 8 for chips with 10 Gbps in `set`; `get` checks no chip.
TEST_F(TargetLinkSpeedTest, ChipsOf10GbpsRefuseSetOnly) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        const bool is10G = chip.chip == ROWAN_CNA || chip.chip == HAZEL || chip.chip == WILLOW;
        EXPECT_EQ(RunTarget("iidma", "set", "8_Gbps").code, is10G ? RC_INVALID_CMD : RC_SUCCESS) << chip.name;
        ExpectReport("get", "", "8_Gbps");
    }
}

TEST_F(TargetLinkSpeedTest, LibraryLogThatCannotBeOpened) {
    NoFiles files;
    LoseFiles(files);
    const CommandRun get = RunTarget("iidma", "get");
    EXPECT_EQ(get.code, RC_FILE_ERROR);
    EXPECT_EQ(get.output, ErrorOf(XML, STRUCTURE, FIELD, NO_FILE));
    EXPECT_EQ(PortCalls(), Calls{});
}

TEST_F(TargetLinkSpeedTest, SetWithoutTheLogOfTheSecondCall) {
    NoFiles files;
    Fake().onGetTargetLinkSpeed = [&files](VX_PORT_HANDLE*, VX_UINT16, VX_UINT32* speed) {
        *speed = 1;
        files.Begin();
        return 0u;
    };
    const CommandRun set = RunTarget("iidma", "set", "8_Gbps");
    EXPECT_EQ(set.code, RC_FILE_ERROR);
    EXPECT_EQ(set.output, ErrorOf(XML, STRUCTURE, FIELD, NO_FILE));
    EXPECT_EQ(PortCalls(), ReadOnce());
}

TEST_F(TargetLinkSpeedTest, TargetThatIsNotFound) {
    for (const std::string leaf : {"get", "set"}) {
        for (const Format& format : FORMATS) {
            const std::string command = "-t target -v iidma " + format.Leaf(leaf);
            const std::string usage = format.IsXml() ? "" : "Usage: " + leaf + " [port identifier]\r\n";
            EXPECT_EQ(Run(command).code, RC_INVALID_PARAMETER);
            EXPECT_EQ(Run(command).output, ErrorOf(format, STRUCTURE, FIELD, INVALID) + usage);
            EXPECT_EQ(Run(command + " /?").code, RC_HELP_REQUESTED);
            EXPECT_EQ(Run(command + " /?").output, ErrorOf(format, STRUCTURE, FIELD, "Failed, Unknown") + usage);
        }
    }
    LoseHost();
    ExpectError("get", "", RC_HOST_NOT_FOUND, NO_HOST);
    ExpectError("set", "", RC_HOST_NOT_FOUND, NO_HOST);
}

} // namespace
