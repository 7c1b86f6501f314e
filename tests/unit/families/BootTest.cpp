#include "BootTest.h"

#include "RefusedBlock.h"

using namespace family_test;

namespace {

class BootTest : public BootGroupTest {
protected:
    /// A file in BIOS mode.
    std::string InFile(const std::string& line) const { return "Boot_Mode=" + ModeNumber(BIOS) + "\n" + line; }
    /// The library calls of `get` and `setFile`, if the library is already in the right mode.
    Calls ReadCalls() const { return {"VEXAPI_GetBfsConfigMode()", PortCall("GetBootDeviceInfo")}; }
};

INSTANTIATE_TEST_SUITE_P(Groups, BootTest, BOOT_GROUPS, NameOfGroup);

TEST_P(BootTest, DocumentsAreByteExact) {
    EXPECT_EQ(RunIn(BIOS, "get").output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                         "<structure typeName=\"BootConfigInfo\">\n"
                                         "<field name=\"Message\">\n<string>Success</string></field>\n"
                                         "<field name=\"BootConfig\">\n"
                                         "<list type=\"structure\">\n"
                                         "<structure typeName=\"BootConfigList\">\n"
                                         "<field name=\"Data\">\n"
                                         "<string>Adapter BIOS: false\n"
                                         "      Selectable Boot: true\n"
                                         "      Fabric Assigned Boot LUN: true\n"
                                         "      Drive 0 WWPN: 10:11:12:13:14:15:16:17\n"
                                         "      Drive 0 LUN: 7\n"
                                         "      Drive 1 WWPN: 20:21:22:23:24:25:26:27\n"
                                         "      Drive 1 LUN: 9008\n"
                                         "      Drive 2 WWPN: 30:31:32:33:34:35:36:37\n"
                                         "      Drive 2 LUN: 18009\n"
                                         "      Drive 3 WWPN: 40:41:42:43:44:45:46:47\n"
                                         "      Drive 3 LUN: 27010\n"
                                         "</string></field>\n"
                                         "</structure>\n"
                                         "</list>\n"
                                         "</field>\n"
                                         "</structure>\n"
                                         "</output>\n");
    Stage(Snapshot(UEFI));
    EXPECT_EQ(Run("setcli").output, "****************************************************\n"
                                    "BootConfigInfo:\n"
                                    "Message: Success\n"
                                    "Reboot Required: true\n"
                                    "BootConfig: BootConfigList:\n"
                                    "Data: Adapter Driver: false\n"
                                    "      Selective Login: false\n"
                                    "      Selective LUN Login: true\n"
                                    "      World Login: false\n"
                                    "      Fabric Assigned Boot LUN: true\n"
                                    "      Drive 0 WWPN: 10:11:12:13:14:15:16:17\n"
                                    "      Drive 0 LUN: 7\n"
                                    "      Drive 1 WWPN: 20:21:22:23:24:25:26:27\n"
                                    "      Drive 1 LUN: 9008\n"
                                    "      Drive 2 WWPN: 30:31:32:33:34:35:36:37\n"
                                    "      Drive 2 LUN: 18009\n"
                                    "      Drive 3 WWPN: 40:41:42:43:44:45:46:47\n"
                                    "      Drive 3 LUN: 27010\n"
                                    "      Drive 4 WWPN: 50:51:52:53:54:55:56:57\n"
                                    "      Drive 4 LUN: 36011\n"
                                    "      Drive 5 WWPN: 60:61:62:63:64:65:66:67\n"
                                    "      Drive 5 LUN: 45012\n"
                                    "      Drive 6 WWPN: 70:71:72:73:74:75:76:77\n"
                                    "      Drive 6 LUN: 54013\n"
                                    "      Drive 7 WWPN: 80:81:82:83:84:85:86:87\n"
                                    "      Drive 7 LUN: 63014\n"
                                    "****************************************************\n");
}

TEST_P(BootTest, ErrorsAreByteExact) {
    port->PortInterfaceType = 3;
    EXPECT_EQ(Run("set").output,
              "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
              "<structure typeName=\"BootConfigInfo\">\n"
              "<field name=\"Reboot Required\">\n<bool>false</bool></field>\n"
              "<field name=\"Message\">\n<string>Failed, Feature not supported for virtual port</string></field>\n"
              "<field name=\"BootConfig\">\n"
              "<list type=\"structure\">\n"
              "</list>\n"
              "</field>\n"
              "</structure>\n"
              "</output>\n");
    EXPECT_EQ(RunIn(BIOS, "setFilecli").output, "****************************************************\n"
                                                "BootConfigInfo:\n"
                                                "Message: Failed, Feature not supported for virtual port\n"
                                                "BootConfig: ****************************************************\n");
}

TEST_P(BootTest, EveryFlagHasItsLine) {
    for (const FlagOfBoot& flag : BOOT_FLAGS) {
        const VX_UINT32 before = nvram.*flag.field;
        for (const VX_UINT32 number : {0u, 1u, 2u, 0xFFFFFFFFu}) { // as the library has it, even if invalid
            nvram.*flag.field = number;
            const std::string value = (number != 0) != flag.isInverted ? "true" : "false";
            for (const Format& format : FORMATS) {
                EXPECT_EQ(RunIn(BIOS, format.Leaf("get")).output,
                          Document(format, flag.biosLabel != nullptr ? WithField(BiosLines(), flag.biosLabel, value)
                                                                     : BiosLines()));
                EXPECT_EQ(RunIn(UEFI, format.Leaf("get")).output,
                          Document(format, flag.uefiLabel != nullptr ? WithField(UefiLines(), flag.uefiLabel, value)
                                                                     : UefiLines()));
            }
        }
        nvram.*flag.field = before;
    }
}

TEST_P(BootTest, OlderAdaptersKnowTheBiosAlone) {
    for (const ChipRow& row : CHIPS) {
        SetChip(*port, row.chip);
        std::vector<Field> lines = BiosLines();
        if (!HasFabricLun(row.chip)) {
            lines.erase(lines.begin() + 2);
        }
        for (const Format& format : FORMATS) {
            EXPECT_EQ(RunIn(BIOS, format.Leaf("get")).output, Document(format, lines)) << row.name;
            // The library's mode is checked if others are supported.
            EXPECT_EQ(PortCalls(), IsUefiCapable(row.chip) ? ReadCalls() : Calls{PortCall("GetBootDeviceInfo")})
                << row.name;
            for (const char* const leaf : {"get", "setFile"}) {
                for (const Mode mode : Modes()) {
                    if (mode == BIOS || IsUefiCapable(row.chip)) {
                        continue;
                    }
                    const CommandRun run = RunIn(mode, format.Leaf(leaf));
                    EXPECT_EQ(run.code, RC_INVALID_CMD) << row.name;
                    EXPECT_EQ(run.output, Error(format, group.invalidCmd));
                    EXPECT_EQ(PortCalls(), Calls{});
                    EXPECT_EQ(Staged(), "no file");
                }
            }
        }
    }
}

TEST_P(BootTest, RomsOfTheModes) {
    for (int mask = 0; mask < 256; ++mask) {
        port->OptionRomMask = static_cast<VX_UINT8>(mask);
        for (const Mode mode : Modes()) {
            const bool hasRom = (mask & (mode == BIOS ? 8 : 2)) != 0;
            bfsMode = mode;
            const CommandRun run = RunIn(mode, "getcli");
            EXPECT_EQ(run.code, hasRom ? RC_SUCCESS : mode == BIOS ? RC_NO_BIOS : RC_NO_EFI) << mask << " " << +mode;
            if (!hasRom) {
                EXPECT_EQ(run.output, Error(TEXT, mode == BIOS ? "Failed, Adapter does not have ROM BIOS"
                                                               : "Failed, Adapter does not have ROM UEFI"));
                EXPECT_EQ(PortCalls(), Calls{"VEXAPI_GetBfsConfigMode()"}); // the mode comes first
            }
        }
    }
    port->OptionRomMask = 0;
    EXPECT_EQ(RunIn(BIOS, "setFile").code, RC_NO_BIOS);
    EXPECT_EQ(Staged(), "no file");
    SetChip(*port, EIGHT_G);
    EXPECT_EQ(RunIn(BIOS, "get").code, RC_NO_BIOS);
    EXPECT_EQ(PortCalls(), Calls{});
    // `set` checks neither.
    Stage(Snapshot(BIOS));
    EXPECT_EQ(Run("set").code, RC_SUCCESS);
    EXPECT_EQ(PortCalls(), SetCalls());
}

TEST_P(BootTest, GetNeverLooksAtTheFile) {
    Stage(WithLine(WithLine(Snapshot(UEFI), "Disable_BIOS", "0"), "Selectable_Boot", "0"));
    const auto identity = FileIdentity();
    const CommandRun run = RunIn(BIOS, "get", "--enable-bfs true");
    EXPECT_EQ(run.code, RC_SUCCESS);
    EXPECT_EQ(run.output, Document(XML, BiosLines()));
    EXPECT_EQ(PortCalls(), ReadCalls());
    EXPECT_EQ(FileIdentity(), identity);
}

TEST_P(BootTest, SetFileBeginsWithASnapshot) {
    for (const Format& format : FORMATS) {
        for (const Mode mode : {BIOS, UEFI}) {
            RemoveFiles();
            const CommandRun run = RunIn(mode, format.Leaf("setFile"));
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Document(format, LinesIn(mode))); // no reboot is requested
            EXPECT_EQ(Staged(), Snapshot(mode));
            EXPECT_EQ(ReadFile(FilePath() + "_tmp"), std::nullopt);
        }
        // The same keys on every adapter, except those of NVMe entries
        SetChip(*port, EIGHT_G);
        RemoveFiles();
        EXPECT_EQ(RunIn(BIOS, format.Leaf("setFile")).code, RC_SUCCESS);
        std::string content = Snapshot(BIOS);
        if (group.isExtended) {
            content.erase(content.find(EmptyNvmeLines()), EmptyNvmeLines().size());
        }
        EXPECT_EQ(Staged(), content);
        SetChip(*port, BIRCH);
    }
}

/// Settings of the library are staged unchecked.
TEST_P(BootTest, SnapshotsAreNotChecked) {
    nvram.ForceWorldLogin = 4711;
    nvram.BootLunNumber = 65535;
    RunIn(UEFI, "setFile");
    EXPECT_EQ(Staged(), WithLine(WithLine(Snapshot(UEFI), "World_Login", "4711"), "Primary_Boot_Target_LUN", "65535"));
    // Values out of range are not read back, so the library's values stay.
    EXPECT_EQ(Run("set").code, RC_SUCCESS);
    EXPECT_TRUE(WasWritten(nvram));
}

TEST_P(BootTest, SetFileShowsThePendingState) {
    for (const Format& format : FORMATS) {
        RemoveFiles();
        std::vector<Field> lines = WithField(UefiLines(), "World Login", "true");
        EXPECT_EQ(RunIn(UEFI, format.Leaf("setFile"), "-g true").output, Document(format, lines));
        lines = WithField(lines, "Adapter Driver", "true");
        EXPECT_EQ(RunIn(UEFI, format.Leaf("setFile"), "--enable-bfs true").output, Document(format, lines));
        EXPECT_EQ(Staged(), WithLine(WithLine(Snapshot(UEFI), "World_Login", "1"), "Disable_BIOS", "0"));
        // The file keeps its settings, whatever the port has meanwhile.
        nvram.EnableSelectiveLogin = 1;
        nvram.BootLunNumber = 1;
        EXPECT_EQ(RunIn(UEFI, format.Leaf("setFile")).output, Document(format, lines));
        nvram.EnableSelectiveLogin = 0;
        nvram.BootLunNumber = 7;
        // Each command stages the mode again; the rest stays.
        EXPECT_EQ(RunIn(BIOS, format.Leaf("setFile")).output,
                  Document(format, WithField(BiosLines(), "Adapter BIOS", "true")));
        EXPECT_EQ(Staged(), WithLine(WithLine(Snapshot(BIOS), "World_Login", "1"), "Disable_BIOS", "0"));
    }
}

TEST_P(BootTest, ARefusedFirstSetFileLeavesTheSnapshot) {
    for (const Format& format : FORMATS) {
        RemoveFiles();
        const CommandRun run = RunIn(UEFI, format.Leaf("setFile"), "-a true -g maybe");
        EXPECT_EQ(run.code, RC_INVALID_PARAMETER);
        EXPECT_EQ(run.output, Error(format, INVALID) + UsageOf(format, "setFile"));
        EXPECT_EQ(Staged(), Snapshot(UEFI));
        EXPECT_EQ(Run(format.Leaf("set")).code, RC_SUCCESS);
        EXPECT_TRUE(WasWritten(nvram)); // the snapshot, unchanged
    }
}

TEST_P(BootTest, SetWritesTheWholeRecordOnce) {
    bfsMode = 0; // `set` doesn't check it
    for (const Format& format : FORMATS) {
        // Each value differs from the library's.
        std::string content = Snapshot(UEFI);
        _VEXAPI_HBAParameters expected = nvram; // including everything unknown to the tool
        for (const FlagOfBoot& flag : BOOT_FLAGS) {
            expected.*flag.field = 1 - nvram.*flag.field;
            content = WithLine(content, flag.key, std::to_string(expected.*flag.field));
        }
        std::vector<Field> lines = {{"Adapter Driver", "true"},
                                    {"Selective Login", "true"},
                                    {"Selective LUN Login", "false"},
                                    {"World Login", "true"},
                                    {"Fabric Assigned Boot LUN", "false"}};
        for (unsigned number = 0; number < 8; ++number) { // "a0:b0:c0:d0:e0:f0:90:80", "a1:b1:…
            SetBytes(expected.*BOOT_TARGETS[number].wwpn, {0xA0, 0xB0, 0xC0, 0xD0, 0xE0, 0xF0, 0x90, 0x80});
            for (VX_UINT8& byte : expected.*BOOT_TARGETS[number].wwpn) {
                byte = static_cast<VX_UINT8>(byte + number);
            }
            expected.*BOOT_TARGETS[number].lun = static_cast<VX_UINT16>(65535 - number);
            const std::string wwpn = WwnOf(expected.*BOOT_TARGETS[number].wwpn);
            const std::string lun = std::to_string(65535 - number);
            content = WithLine(WithLine(content, TargetKey(number, "WWPN"), wwpn), TargetKey(number, "LUN"), lun);
            lines.push_back({"Drive " + std::to_string(number) + " WWPN", wwpn});
            lines.push_back({"Drive " + std::to_string(number) + " LUN", lun});
        }
        Stage(content);
        const CommandRun run = Run(format.Leaf("set"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, Document(format, lines, true));
        EXPECT_EQ(PortCalls(), SetCalls());
        EXPECT_TRUE(WasWritten(expected));
        EXPECT_EQ(Staged(), "no file");
        // The next one has nothing to write.
        EXPECT_EQ(Run(format.Leaf("set")).output, Error(format, UNKNOWN_FAILURE, true));
    }
}

/// `set` takes no options; further words are ignored.
TEST_P(BootTest, SetReadsNoOptions) {
    Stage(Snapshot(BIOS));
    const CommandRun run = Run("set", "-b UEFI --enable-bfs maybe NVME");
    EXPECT_EQ(run.code, RC_SUCCESS);
    EXPECT_EQ(run.output, Document(XML, BiosLines(), true));
    EXPECT_TRUE(WasWritten(nvram));
}

TEST_P(BootTest, SetWithNothingPending) {
    for (const Format& format : FORMATS) {
        for (const bool isFolder : {false, true}) {
            RemoveFiles();
            if (isFolder) {
                std::filesystem::create_directory(FilePath());
            }
            const CommandRun run = Run(format.Leaf("set"));
            EXPECT_EQ(run.code, RC_SUCCESS); // although the document tells of a failure
            EXPECT_EQ(run.output, Error(format, UNKNOWN_FAILURE, true));
            EXPECT_EQ(PortCalls(), Calls{PortCall("GetBootDeviceInfo")});
        }
    }
    // The read comes first.
    Fake().Return("VEXAPI_GetBootDeviceInfo", 1);
    EXPECT_EQ(Run("set").code, RC_CFG_READ_FAILED);
}

TEST_P(BootTest, RebootIsRequiredWhenTheWordIs1OrCantBeHad) {
    struct Case {
        VX_UINT32 status;
        VX_UINT32 word;
        bool isRequired;
    };
    for (const Case& row : {Case{0, 1, true}, {0, 0, false}, {0, 2, false}, {1, 0, true}, {5, 2, true}}) {
        rebootStatus = row.status;
        reboot = row.word;
        for (const Format& format : FORMATS) {
            Stage(Snapshot(BIOS));
            const CommandRun run = Run(format.Leaf("set"));
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Document(format, BiosLines(), row.isRequired)) << row.status << " " << row.word;
            EXPECT_EQ(Staged(), "no file");
        }
    }
}

/// Values of a file in the record written by the next `set`.
TEST_P(BootTest, FilesEditedByHand) {
    struct Case {
        std::string text;
        VX_UINT32 number; ///< of a flag that is 9 in the library
    };
    const std::string long1 = std::string(300, '0') + "1"; // longer than the limit of the extended group
    const Case flags[] = {
        {"=0", 0},          {"=1", 1},     {"=2", 9},          {"=9", 9},
        {"=10", 9},         {"=-1", 9},    {"=4294967296", 0}, {"=4294967297", 1},
        {"=4294967298", 9}, // 2^32 and on: the low 32 bits count
        {"=abc", 0},        {"=", 0},      {"=1x", 1},         {" = 1 # on", 1},
        {"=1#", 1},         {"\t=\t1", 1}, {" 1", 9},          {"=" + long1, group.isExtended ? 0u : 1u},
        {"=0\n=1", 0},
    };
    for (const FlagOfBoot& flag : BOOT_FLAGS) {
        nvram.*flag.field = 9;
        _VEXAPI_HBAParameters expected = nvram;
        for (const Case& row : flags) {
            expected.*flag.field = row.number;
            for (const std::string& key : {std::string(flag.key), InUpperCase(flag.key)}) { // in any letter case
                Stage(InFile(key + row.text + "\n"));
                EXPECT_EQ(Run("set").code, RC_SUCCESS);
                EXPECT_TRUE(WasWritten(expected)) << key << row.text;
            }
        }
        expected.*flag.field = 0; // the first line counts
        Stage(InFile(std::string("# ") + flag.key + "=1\n\n  " + flag.key + "=0\n" + flag.key + "=1"));
        EXPECT_EQ(Run("set").code, RC_SUCCESS);
        EXPECT_TRUE(WasWritten(expected)) << flag.key;
        nvram.*flag.field = 0;
    }
}

TEST_P(BootTest, BootTargetsEditedByHand) {
    struct WwpnCase {
        const char* text;
        std::array<int, 8> bytes; ///< -1: the library's value
    };
    const WwpnCase names[] = {
        {"a0:b1:c2:d3:e4:f5:06:17", {0xA0, 0xB1, 0xC2, 0xD3, 0xE4, 0xF5, 0x06, 0x17}},
        {"A0:B1:C2:D3:E4:F5:06:17", {0xA0, 0xB1, 0xC2, 0xD3, 0xE4, 0xF5, 0x06, 0x17}},
        {"0:1:2:3:4:5:6:7", {0, 1, 2, 3, 4, 5, 6, 7}},
        {"00:00:00:00:00:00:00:00", {0, 0, 0, 0, 0, 0, 0, 0}},
        {"a0:b1:c2:d3:e4:f5:06:17:28", {0xA0, 0xB1, 0xC2, 0xD3, 0xE4, 0xF5, 0x06, 0x17}},
        {"a0:b1:c2:d3:e4:f5:06:17-5", {0xA0, 0xB1, 0xC2, 0xD3, 0xE4, 0xF5, 0x06, 0x17}},
        {"1a0:b1", {0xA0, 0xB1, -1, -1, -1, -1, -1, -1}}, // the low 8 bits
        {"a0:b1:", {0xA0, 0xB1, -1, -1, -1, -1, -1, -1}},
        {"a0-b1", {0xA0, -1, -1, -1, -1, -1, -1, -1}},
        {"a0:b1 :c2", {0xA0, 0xB1, -1, -1, -1, -1, -1, -1}}, // a value ends at a blank
        {"xyz", {-1, -1, -1, -1, -1, -1, -1, -1}},
        {"", {-1, -1, -1, -1, -1, -1, -1, -1}},
    };
    struct LunCase {
        const char* text;
        VX_UINT16 number;
    };
    const LunCase luns[] = {
        {"0", 0}, {"65535", 65535}, {"65536", 0}, {"65543", 7}, {"4294967301", 5}, {"-1", 65535}, {"abc", 0}, {"", 0},
    };
    for (unsigned number = 0; number < 8; ++number) {
        for (const WwpnCase& row : names) {
            _VEXAPI_HBAParameters expected = nvram;
            for (unsigned i = 0; i < 8; ++i) {
                VX_UINT8& byte = (expected.*BOOT_TARGETS[number].wwpn)[i];
                byte = row.bytes[i] < 0 ? byte : static_cast<VX_UINT8>(row.bytes[i]);
            }
            Stage(InFile(TargetKey(number, "WWPN=") + row.text + "\n"));
            EXPECT_EQ(Run("set").code, RC_SUCCESS);
            EXPECT_TRUE(WasWritten(expected)) << number << " " << row.text;
        }
        for (const LunCase& row : luns) {
            _VEXAPI_HBAParameters expected = nvram;
            expected.*BOOT_TARGETS[number].lun = row.number;
            Stage(InFile(TargetKey(number, "LUN=") + row.text + "\n"));
            EXPECT_EQ(Run("set").code, RC_SUCCESS);
            EXPECT_TRUE(WasWritten(expected)) << number << " " << row.text;
        }
    }
    // Without a key the library's value is written back.
    for (const char* const content : {"", "Alternate_Boot_Target_8_LUN=1\nWorld_Logins=1\n", "%s%n\n"}) {
        Stage(content);
        EXPECT_EQ(Run("set").code, RC_SUCCESS);
        EXPECT_TRUE(WasWritten(nvram)) << content;
    }
}

TEST_P(BootTest, AFailingReadLeavesTheFile) {
    Fake().Return("VEXAPI_GetBootDeviceInfo", 1);
    for (const Format& format : FORMATS) {
        for (const char* const leaf : {"get", "setFile", "set"}) {
            const bool isSet = std::string(leaf) == "set";
            for (const std::string& content : {std::string(), Snapshot(BIOS)}) {
                RemoveFiles();
                if (!content.empty()) {
                    Stage(content);
                }
                const CommandRun run = RunIn(BIOS, format.Leaf(leaf), isSet ? "" : "-a true");
                EXPECT_EQ(run.code, RC_CFG_READ_FAILED);
                EXPECT_EQ(run.output, Error(format, READ_FAILED, isSet));
                EXPECT_EQ(PortCalls(), isSet ? Calls{PortCall("GetBootDeviceInfo")} : ReadCalls());
                EXPECT_EQ(Staged(), content.empty() ? "no file" : content);
            }
        }
    }
}

TEST_P(BootTest, AModeThatCantBeSwitched) {
    Fake().Return("VEXAPI_SetBfsConfigMode", 1);
    for (const Format& format : FORMATS) {
        for (const char* const leaf : {"get", "setFile"}) {
            for (const Mode mode : {BIOS, UEFI}) {
                port->OptionRomMask = 0; // checked after it
                bfsMode = mode == BIOS ? UEFI : BIOS;
                const CommandRun run = RunIn(mode, format.Leaf(leaf));
                EXPECT_EQ(run.code, RC_CFG_READ_FAILED);
                EXPECT_EQ(run.output, Error(format, READ_FAILED));
                EXPECT_EQ(PortCalls(), (Calls{"VEXAPI_GetBfsConfigMode()",
                                              "VEXAPI_SetBfsConfigMode(" + std::to_string(mode) + ")"}));
                EXPECT_EQ(Staged(), "no file");
            }
        }
    }
}

TEST_P(BootTest, AFailingWriteKeepsTheFile) {
    const std::string content = WithLine(Snapshot(BIOS), "Selectable_Boot", "0");
    for (const Format& format : FORMATS) {
        Stage(content);
        const auto identity = FileIdentity();
        Fake().Return("VEXAPI_SetBootDeviceInfo", 1);
        const CommandRun run = Run(format.Leaf("set"));
        EXPECT_EQ(run.code, RC_CFG_UPDATE_FAILED);
        EXPECT_EQ(run.output, Error(format, UPDATE_FAILED, true));
        EXPECT_EQ(PortCalls(), (Calls{PortCall("GetBootDeviceInfo"), PortCall("SetBootDeviceInfo")}));
        EXPECT_EQ(Staged(), content);
        EXPECT_EQ(FileIdentity(), identity);
        // It can be repeated.
        Fake().Return("VEXAPI_SetBootDeviceInfo", 0);
        EXPECT_EQ(Run(format.Leaf("set")).output,
                  Document(format, WithField(BiosLines(), "Selectable Boot", "false"), true));
        EXPECT_EQ(Staged(), "no file");
    }
}

TEST_P(BootTest, RedirectionsThatCantBeOpened) {
    const auto askMode = Fake().onGetBfsConfigMode;
    const auto read = Fake().onGetBootDeviceInfo;
    const auto write = Fake().onSetBootDeviceInfo;
    for (const Format& format : FORMATS) {
        Stage(Snapshot(BIOS));
        for (const std::string leaf : {"get", "setFile", "set"}) {
            const auto expect = [&](const CommandRun& run, const Calls& calls) {
                EXPECT_EQ(run.code, RC_FILE_ERROR) << leaf;
                EXPECT_EQ(run.output, Error(format, UNKNOWN_FAILURE, leaf == "set")) << leaf;
                EXPECT_EQ(PortCalls(), calls) << leaf;
            };
            {
                NoFiles files; // before everything else
                LoseFiles(files);
                expect(RunIn(BIOS, format.Leaf(leaf)), {});
            }
            Fake().onGetAdapterList = nullptr;
            if (leaf != "set") {
                NoFiles files; // before the read
                Fake().onGetBfsConfigMode = [&] {
                    files.Begin();
                    return askMode();
                };
                expect(RunIn(BIOS, format.Leaf(leaf)), {"VEXAPI_GetBfsConfigMode()"});
                Fake().onGetBfsConfigMode = askMode;
            } else {
                NoFiles files; // before the write; the cache file can't be read then either
                Fake().onGetBootDeviceInfo = [&](VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* nvramOut, void* third) {
                    files.Begin();
                    return read(handle, nvramOut, third);
                };
                expect(RunIn(BIOS, format.Leaf(leaf)), {PortCall("GetBootDeviceInfo")});
                Fake().onGetBootDeviceInfo = read;
            }
            EXPECT_EQ(Staged(), Snapshot(BIOS));
        }
        // Before the reboot query: the write is done, and requesting a reboot is the safe answer.
        reboot = 0;
        {
            NoFiles files;
            Fake().onSetBootDeviceInfo = [&](VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters) {
                files.Begin();
                return write(handle, parameters);
            };
            const CommandRun run = Run(format.Leaf("set"));
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Document(format, BiosLines(), true));
            EXPECT_EQ(PortCalls(), (Calls{PortCall("GetBootDeviceInfo"), PortCall("SetBootDeviceInfo")}));
        }
        EXPECT_EQ(Staged(), "no file");
        Fake().onSetBootDeviceInfo = write;
        reboot = 1;
    }
}

/// A failure of the cache file reads as unknown.
TEST_P(BootTest, FilesThatCantBeWritten) {
    for (const Format& format : FORMATS) {
        RemoveFiles();
        std::filesystem::create_directory(FilePath()); // not a file, and none can be created
        CommandRun run = RunIn(BIOS, format.Leaf("setFile"));
        EXPECT_EQ(run.code, RC_FILE_ERROR);
        EXPECT_EQ(run.output, Error(format, UNKNOWN_FAILURE));
        RemoveFiles();
        Stage(Snapshot(BIOS));
        std::filesystem::create_directory(FilePath() + "_tmp");
        run = RunIn(BIOS, format.Leaf("setFile"), "-a true");
        EXPECT_EQ(run.code, RC_FILE_ERROR);
        EXPECT_EQ(run.output, Error(format, UNKNOWN_FAILURE));
        EXPECT_EQ(Staged(), Snapshot(BIOS));
    }
}

TEST_P(BootTest, ReportsThatFindNoMemory) {
    for (const Format& format : FORMATS) {
        for (const char* const leaf : {"get", "setFile", "set"}) {
            CommandRun run;
            {
                const RefusedBlock refused(group.blockSize);
                run = RunIn(BIOS, format.Leaf(leaf));
            }
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, Error(format, "Failed, Memory Error")); // never with the reboot field
        }
        EXPECT_EQ(Staged(), "no file");
    }
}

TEST_P(BootTest, PortsThatAreNone) {
    struct Case {
        std::string identifier;
        ResultCode code;
        const char* message;
    };
    const Case cases[] = {{"FC_21:00:0a:0b:0c:0d:ff:ff", RC_INVALID_PARAMETER, INVALID},
                          {"%s%n%n", RC_INVALID_PARAMETER, INVALID},
                          {std::string(100000, 'F'), RC_INVALID_PARAMETER, INVALID},
                          {"help", RC_HELP_REQUESTED, UNKNOWN_FAILURE}};
    for (const Format& format : FORMATS) {
        for (const std::string leaf : {"get", "setFile", "set"}) {
            const std::string start = std::string("-t port -s ") + group.family + " " + format.Leaf(leaf);
            for (const Case& row : cases) { // before the mode, which is invalid
                const CommandRun run = FamilyTest::Run(start + " " + row.identifier + " -b none");
                EXPECT_EQ(run.code, row.code) << leaf;
                EXPECT_EQ(run.output, Error(format, row.message, leaf == "set") + UsageOf(format, leaf));
                EXPECT_EQ(PortCalls(), Calls{});
            }
            EXPECT_EQ(FamilyTest::Run(start).code, RC_INVALID_PARAMETER);
            LoseHost();
            const CommandRun run = RunIn(BIOS, format.Leaf(leaf));
            EXPECT_EQ(run.code, RC_HOST_NOT_FOUND);
            EXPECT_EQ(run.output, Error(format, "Failed, Host not found", leaf == "set"));
            Fake().host.hasList = true;
        }
    }
}

TEST_P(BootTest, VirtualPortsHaveNone) {
    port->PortInterfaceType = 3;
    for (const Format& format : FORMATS) {
        for (const std::string leaf : {"get", "setFile", "set"}) {
            const CommandRun run = Run(format.Leaf(leaf), "-b none"); // before the mode
            EXPECT_EQ(run.code, RC_NOT_SUPPORTED_FOR_VPORT);
            EXPECT_EQ(run.output, Error(format, "Failed, Feature not supported for virtual port", leaf == "set"));
            EXPECT_EQ(PortCalls(), Calls{});
            EXPECT_EQ(Staged(), "no file");
        }
    }
}

} // namespace
