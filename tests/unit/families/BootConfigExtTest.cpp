#include "BootConfigExtTest.h"

using namespace family_test;

namespace {

/// Specifics of `bootconfigext` other than its boot target options: its modes, and NVMe settings.
class BootConfigExtTest : public BootConfigExtTestBase {};

TEST_F(BootConfigExtTest, NvmeDocumentIsByteExact) {
    for (unsigned number = 1; number < 8; ++number) {
        entries.BootEntry[number] = {};
    }
    std::string rest;
    for (const char* const number : {"1", "2", "3", "4", "5", "6", "7"}) {
        const std::string label = std::string("      Storage ") + number;
        rest += label + ": false\n" + label + " WWNN: 00:00:00:00:00:00:00:00\n" + label +
                " WWPN: 00:00:00:00:00:00:00:00\n" + label + " NQN: \n" + label + " ControllerID: 0x0\n" + label +
                " NamespaceID: 0\n";
    }
    const std::string text = "Adapter Driver: false\n"
                             "      Selective Login: false\n"
                             "      Selective LUN Login: true\n"
                             "      World Login: false\n"
                             "      Fabric Assigned Boot LUN: true\n"
                             "      FC NVMe: true\n"
                             "      Host NQN: nqn.host\n"
                             "      Host ID: 00112233445566778899aabbccddeeff\n"
                             "      Storage 0: true\n"
                             "      Storage 0 WWNN: c0:01:02:03:04:05:06:07\n"
                             "      Storage 0 WWPN: c0:11:12:13:14:15:16:17\n"
                             "      Storage 0 NQN: nqn.array0\n"
                             "      Storage 0 ControllerID: 0xfff0\n"
                             "      Storage 0 NamespaceID: 4294967295\n";
    EXPECT_EQ(Run("getcli", "NVME").output, "****************************************************\n"
                                            "BootConfigInfo:\n"
                                            "Message: Success\n"
                                            "BootConfig: BootConfigList:\n"
                                            "Data: " +
                                                text + rest + "****************************************************\n");
    EXPECT_EQ(Run("get", "NVME").output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                         "<structure typeName=\"BootConfigInfo\">\n"
                                         "<field name=\"Message\">\n<string>Success</string></field>\n"
                                         "<field name=\"BootConfig\">\n"
                                         "<list type=\"structure\">\n"
                                         "<structure typeName=\"BootConfigList\">\n"
                                         "<field name=\"Data\">\n"
                                         "<string>" +
                                             text + rest +
                                             "</string></field>\n"
                                             "</structure>\n"
                                             "</list>\n"
                                             "</field>\n"
                                             "</structure>\n"
                                             "</output>\n");
}

TEST_F(BootConfigExtTest, TheSecondWordIsTheMode) {
    struct Case {
        std::string words;
        ResultCode code;
        Mode mode;
    };
    const Case cases[] = {
        {"BIOS", RC_SUCCESS, BIOS},
        {"bios", RC_SUCCESS, BIOS},
        {"UEFI", RC_SUCCESS, UEFI},
        {"uEfI", RC_SUCCESS, UEFI},
        {"NVME", RC_SUCCESS, NVME},
        {"nvme", RC_SUCCESS, NVME},
        {"NVMe x", RC_SUCCESS, NVME},
        // The second word counts, whatever follows, and is required.
        {"BIOS NVME", RC_SUCCESS, BIOS},
        {"BIOS -b UEFI", RC_SUCCESS, BIOS},
        {"", RC_INVALID_PARAMETER, BIOS},
        {"-b UEFI", RC_INVALID_PARAMETER, BIOS},
        {"--boot-mode UEFI", RC_INVALID_PARAMETER, BIOS},
        {"x NVME", RC_INVALID_PARAMETER, BIOS},
        {"-a true NVME", RC_INVALID_PARAMETER, BIOS},
        {"UEFI2", RC_INVALID_PARAMETER, BIOS},
        {"NVM", RC_INVALID_PARAMETER, BIOS},
        {"4", RC_INVALID_PARAMETER, BIOS},
        {"%s%n", RC_INVALID_PARAMETER, BIOS},
        {std::string(100000, 'N'), RC_INVALID_PARAMETER, BIOS},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.words.substr(0, 50));
        for (const Format& format : FORMATS) {
            for (const std::string leaf : {"get", "setFile"}) {
                RemoveFiles();
                bfsMode = row.mode;
                const CommandRun run = Run(format.Leaf(leaf), row.words);
                EXPECT_EQ(run.code, row.code);
                if (row.code == RC_SUCCESS) {
                    EXPECT_EQ(run.output, Document(format, Layout(row.mode)));
                    EXPECT_EQ(PortCalls(), ReadCalls(row.mode));
                    EXPECT_EQ(Staged(), leaf == "get" ? "no file" : Snapshot(row.mode));
                } else {
                    EXPECT_EQ(run.output, Error(format, INVALID) + UsageOf(format, leaf));
                    EXPECT_EQ(PortCalls(), Calls{});
                    EXPECT_EQ(Staged(), "no file");
                }
            }
        }
    }
    // A wrong word is reported on every adapter; the others are rejected if there is only the BIOS.
    SetChip(*port, EIGHT_G);
    EXPECT_EQ(Run("get", "x").code, RC_INVALID_PARAMETER);
    EXPECT_EQ(Run("get", "uefi").code, RC_INVALID_CMD);
    EXPECT_EQ(Run("setFile", "nvme").code, RC_INVALID_CMD);
}

/// The library is switched if it is in another mode.
TEST_F(BootConfigExtTest, TheLibraryIsSwitchedFromEveryOtherMode) {
    for (int current = 0; current < 256; ++current) {
        for (const Mode mode : {BIOS, UEFI, NVME}) {
            bfsMode = static_cast<VX_UINT8>(current);
            EXPECT_EQ(RunIn(mode, "get").output, Document(XML, Layout(mode)));
            Calls expected = ReadCalls(mode);
            if (current != mode) {
                expected.insert(expected.begin() + 1, "VEXAPI_SetBfsConfigMode(" + std::to_string(mode) + ")");
            }
            EXPECT_EQ(PortCalls(), expected) << current << " " << +mode;
        }
    }
}

TEST_F(BootConfigExtTest, NvmeLines) {
    const auto shown = [this] { return LinesOf(BlockText(Run("getcli", "NVME").output)); };
    const auto line = [&](std::size_t at) { return shown().at(at); };
    // Flags are true for any number but 0.
    for (const int number : {0, 1, 2, 255}) {
        nvram.NVMeEnable = static_cast<VX_UINT8>(number);
        EXPECT_EQ(line(5), number == 0 ? "FC NVMe: false" : "FC NVMe: true");
        entries.BootEntry[7].TargetFlags = static_cast<VX_UINT8>(number);
        EXPECT_EQ(line(50), number == 0 ? "Storage 7: false" : "Storage 7: true"); // 8 lines and 7 entries of 6
    }
    // Any non-zero byte makes it a host identifier.
    for (unsigned i = 0; i < 16; ++i) {
        std::memset(entries.HostId, 0, sizeof entries.HostId);
        EXPECT_EQ(line(7), "Host ID: NA");
        entries.HostId[i] = 0x0A;
        std::string expected(32, '0');
        expected[2 * i + 1] = 'a';
        EXPECT_EQ(line(7), "Host ID: " + expected);
    }
    struct NumberCase {
        VX_UINT16 controller;
        VX_UINT32 nspace;
        const char* controllerText;
        const char* nspaceText;
    };
    for (const NumberCase& row : {NumberCase{0, 0, "0x0", "0"}, {0x41, 1, "0x41", "1"}, {0xABCD, 16, "0xabcd", "16"}}) {
        entries.BootEntry[0].TargetCtrlID = row.controller;
        entries.BootEntry[0].TargetNSID = row.nspace;
        EXPECT_EQ(line(12), std::string("Storage 0 ControllerID: ") + row.controllerText);
        EXPECT_EQ(line(13), std::string("Storage 0 NamespaceID: ") + row.nspaceText);
    }
}

/// Names that fill their arrays have no terminator; percent signs are not conversions, and a pair of them prints
/// as one.
TEST_F(BootConfigExtTest, NamesOfAnyKind) {
    const std::string full(256, 'n');
    SetText(entries.HostNQN, full);
    for (VX_NVME_BOOT_ENTRY& entry : entries.BootEntry) {
        SetText(entry.TargetNQN, full);
    }
    std::vector<Field> lines = WithField(NvmeLines(), "Host NQN", full);
    for (unsigned number = 0; number < 8; ++number) {
        lines = WithField(lines, "Storage " + std::to_string(number) + " NQN", full);
    }
    EXPECT_EQ(Run("get", "NVME").output, Document(XML, lines));

    SetText(entries.HostNQN, "%s%n%%d");
    SetText(entries.BootEntry[0].TargetNQN, "%d%%%s");
    const std::vector<std::string> shown = LinesOf(BlockText(Run("getcli", "NVME").output));
    EXPECT_EQ(shown.at(6), "Host NQN: %s%n%d");
    EXPECT_EQ(shown.at(11), "Storage 0 NQN: %d%%s");
    // They reach the file and the library unchanged.
    EXPECT_EQ(Run("setFile", "NVME").code, RC_SUCCESS);
    EXPECT_NE(Staged().find("\nNVME_0_NQN=%d%%%s\n"), std::string::npos);
    EXPECT_EQ(Run("set").code, RC_SUCCESS);
    EXPECT_STREQ(writtenEntries->BootEntry[0].TargetNQN, "%d%%%s");
    // Of 256 characters, the last is replaced by a terminator.
    EXPECT_EQ(writtenEntries->BootEntry[1].TargetNQN, std::string(255, 'n'));
}

TEST_F(BootConfigExtTest, EntriesThatCantBeRead) {
    // The record of a failed call is not shown.
    const auto failing = [this](VX_PORT_HANDLE*, _VEXAPI_FcNVMeBootParams* parameters) {
        *parameters = entries;
        return 1u;
    };
    Fake().onGetNVMeBootDeviceEntries = failing;
    for (const Format& format : FORMATS) {
        bfsMode = NVME;
        CommandRun run = Run(format.Leaf("get"), "NVME");
        EXPECT_EQ(run.code, RC_INVALID_DATA);
        EXPECT_EQ(run.output, Error(format, NO_NVME));
        EXPECT_EQ(PortCalls(), ReadCalls(NVME));
        // `setFile` continues with empty ones.
        run = Run(format.Leaf("setFile"), "NVME");
        EXPECT_EQ(run.code, RC_SUCCESS);
        EXPECT_EQ(run.output, Document(format, EmptyNvmeLayout()));
        EXPECT_EQ(PortCalls(), ReadCalls(NVME));
        nvmeLines = EmptyNvmeLines();
        EXPECT_EQ(Staged(), Snapshot(NVME));
        RemoveFiles();
    }
}

/// On adapters without UEFI the file has 24 keys, and keys of entries are not read.
TEST_F(BootConfigExtTest, AdaptersWithoutEntries) {
    for (const ChipRow& row : CHIPS) {
        SetChip(*port, row.chip);
        RemoveFiles();
        EXPECT_EQ(Run("setFile", "BIOS").code, RC_SUCCESS);
        const std::string content = Staged();
        EXPECT_EQ(std::count(content.begin(), content.end(), '\n'), IsUefiCapable(row.chip) ? 72 : 24) << row.name;
        Stage(WithLine(content, "Boot_Mode", "4") + nvmeLines);
        const CommandRun run = Run("set");
        EXPECT_EQ(run.code, RC_SUCCESS);
        if (!IsUefiCapable(row.chip)) {
            EXPECT_EQ(run.output, Document(XML, EmptyNvmeLayout(), true)) << row.name;
            EXPECT_EQ(PortCalls(), SetCalls()) << row.name;
        } else {
            EXPECT_EQ(PortCalls(), NvmeSetCalls()) << row.name;
        }
    }
}

TEST_F(BootConfigExtTest, SetWritesBothRecordsOnce) {
    bfsMode = 0; // `set` doesn't look at it
    for (const Format& format : FORMATS) {
        Stage(WithLine(Snapshot(NVME), "NVMe_Enable", "0"));
        const _VEXAPI_FcNVMeBootParams carried = Carried();
        // Shows what is read back, not what was written.
        SetText(entries.HostNQN, "nqn.other");
        SetText(entries.BootEntry[3].TargetNQN, "nqn.read-back");
        entries.BootEntry[3].TargetFlags = 1;
        const CommandRun run = Run(format.Leaf("set"));
        EXPECT_EQ(run.code, RC_SUCCESS);
        std::vector<Field> lines = WithField(NvmeLines(), "FC NVMe", "false");
        lines = WithField(lines, "Host NQN", "nqn.other");
        lines = WithField(WithField(lines, "Storage 3 NQN", "nqn.read-back"), "Storage 3", "true");
        EXPECT_EQ(run.output, Document(format, lines, true));
        EXPECT_EQ(PortCalls(), NvmeSetCalls());
        _VEXAPI_HBAParameters expected = nvram;
        expected.NVMeEnable = 0;
        EXPECT_TRUE(WasWritten(expected));
        EXPECT_TRUE(WereWritten(carried)); // six fields of each entry, and zeros
        EXPECT_EQ(Staged(), "no file");

        SetText(entries.HostNQN, "nqn.host");
        SetText(entries.BootEntry[3].TargetNQN, "nqn.array3");
        entries.BootEntry[3].TargetFlags = 0;
    }
}

/// In the FCP modes only the FCP settings are written, whatever entries the file has.
TEST_F(BootConfigExtTest, ModesInTheFile) {
    struct Case {
        const char* number;
        VX_UINT8 mode;
    };
    const Case cases[] = {
        {"1", 1},   {"2", 2},   {"4", 4},          {"0", 0},    {"3", 3},  {"5", 5}, {"255", 255}, {"257", 1},
        {"258", 2}, {"260", 4}, {"4294967300", 4}, {"-1", 255}, {"4x", 4}, {"", 0},  {"NVME", 0},
    };
    for (const Case& row : cases) {
        writtenEntries.reset();
        Stage(WithLine(Snapshot(NVME), "Boot_Mode", row.number));
        const CommandRun run = Run("set");
        EXPECT_EQ(run.code, RC_SUCCESS);
        // An unknown mode has the layout of UEFI.
        EXPECT_EQ(run.output, Document(XML, row.mode == 4 ? NvmeLines() : LinesIn(row.mode == 1 ? BIOS : UEFI), true))
            << row.number;
        EXPECT_EQ(PortCalls(), row.mode == 4 ? NvmeSetCalls() : SetCalls()) << row.number;
        EXPECT_TRUE(WasWritten(nvram)) << row.number;
        EXPECT_EQ(writtenEntries.has_value(), row.mode == 4) << row.number;
    }
    // Without the key the mode is BIOS.
    Stage("World_Login=0\n" + nvmeLines);
    EXPECT_EQ(Run("set").output, Document(XML, BiosLines(), true));
    EXPECT_EQ(PortCalls(), SetCalls());
}

TEST_F(BootConfigExtTest, EntriesEditedByHand) {
    // The entry's values in the written record, initially zeros.
    const auto entryOf = [this](const std::string& line) {
        Stage("Boot_Mode=4\n" + line + "\n");
        EXPECT_EQ(Run("set").code, RC_SUCCESS);
        _VEXAPI_FcNVMeBootParams others = *writtenEntries;
        const VX_NVME_BOOT_ENTRY entry = others.BootEntry[5];
        others.BootEntry[5] = {};
        EXPECT_TRUE(IsCleared(others)) << line;
        return entry;
    };
    struct NumberCase {
        const char* text;
        VX_UINT32 number;
    };
    for (const NumberCase& row : {NumberCase{"0", 0},
                                  {"1", 1},
                                  {"2", 0},
                                  {"256", 0},
                                  {"257", 0},
                                  {"-1", 0},
                                  {"4294967297", 1},
                                  {"1x", 1},
                                  {"", 0}}) {
        EXPECT_EQ(entryOf(std::string("NVME_5_Enable=") + row.text).TargetFlags, row.number) << row.text;
    }
    for (const NumberCase& row :
         {NumberCase{"65", 65}, {"65535", 65535}, {"65536", 0}, {"65601", 65}, {"-1", 65535}, {"0x41", 0}, {"", 0}}) {
        EXPECT_EQ(entryOf(std::string("NVME_5_ControllerID=") + row.text).TargetCtrlID, row.number) << row.text;
    }
    for (const NumberCase& row : {NumberCase{"7", 7}, {"4294967295", 4294967295}, {"4294967303", 7}, {"abc", 0}}) {
        EXPECT_EQ(entryOf(std::string("nvme_5_namespaceid=") + row.text).TargetNSID, row.number) << row.text;
    }
    EXPECT_EQ(WwnOf(entryOf("NVME_5_WWPN=A0:1:ff02:3:4:5:6:7").TargetWWPN), "a0:01:02:03:04:05:06:07");
    EXPECT_EQ(WwnOf(entryOf("NVME_5_WWPN=a0:b1").TargetWWPN), "a0:b1:00:00:00:00:00:00");
    EXPECT_EQ(WwnOf(entryOf("NVME_5_WWNN=a0:b1:c2:d3:e4:f5:06:17").TargetWWNN), "a0:b1:c2:d3:e4:f5:06:17");
    EXPECT_EQ(WwnOf(entryOf("NVME_5_WWNN=").TargetWWNN), NO_WWN);
    for (const std::size_t length : {1u, 254u, 255u, 256u, 257u, 900u}) {
        const VX_NVME_BOOT_ENTRY entry = entryOf("NVME_5_NQN=" + std::string(length, 'q'));
        EXPECT_EQ(entry.TargetNQN, std::string(std::min<std::size_t>(length, 255), 'q')) << length;
    }
    EXPECT_STREQ(entryOf("NVME_5_NQN = %s%n # array").TargetNQN, "%s%n");
    EXPECT_STREQ(entryOf("NVME_5_NQN=").TargetNQN, "");
    // Entries above 7 are never read.
    EXPECT_TRUE(IsCleared(entryOf("NVME_8_NamespaceID=1\nNVME_05_Enable=1\nNVME_55_Enable=1")));
}

/// A shorter name leaves nothing of a longer one.
TEST_F(BootConfigExtTest, ShorterNames) {
    Run("setFile", "NVME");
    Stage(WithLine(Staged(), "NVME_0_NQN", "nqn"));
    EXPECT_EQ(Run("setFile", "NVME").output, Document(XML, WithField(NvmeLines(), "Storage 0 NQN", "nqn")));
    Stage(WithLine(Staged(), "NVME_0_NQN", ""));
    EXPECT_EQ(Run("setFile", "NVME").output, Document(XML, WithField(NvmeLines(), "Storage 0 NQN", "")));
}

/// A file created in one mode and updated in another keeps the keys of both.
TEST_F(BootConfigExtTest, FilesOfTwoModes) {
    Run("setFile", "BIOS -d false");
    EXPECT_EQ(Staged(), WithLine(Snapshot(BIOS), "Selectable_Boot", "0")); // the entries count as empty
    CommandRun run = Run("setFile", "NVME -m false");
    std::string content = WithLine(WithLine(Snapshot(BIOS), "Selectable_Boot", "0"), "NVMe_Enable", "0");
    EXPECT_EQ(Staged(), WithLine(content, "Boot_Mode", "4"));
    // The entries come from the file, the host from the library.
    EXPECT_EQ(run.output, Document(XML, WithField(WithField(WithField(EmptyNvmeLayout(), "FC NVMe", "false"),
                                                            "Host NQN", "nqn.host"),
                                                  "Host ID", "00112233445566778899aabbccddeeff")));
    run = Run("set");
    EXPECT_EQ(PortCalls(), NvmeSetCalls());
    _VEXAPI_HBAParameters expected = nvram;
    expected.EnableSelectableBoot = 0;
    expected.NVMeEnable = 0;
    EXPECT_TRUE(WasWritten(expected));
    EXPECT_TRUE(WereWritten({}));

    // And the other way round
    Run("setFile", "NVME -a true");
    Run("setFile", "UEFI");
    EXPECT_EQ(Staged(), WithLine(WithLine(Snapshot(NVME), "Disable_BIOS", "0"), "Boot_Mode", "2"));
    EXPECT_EQ(Run("set").output, Document(XML, WithField(UefiLines(), "Adapter Driver", "true"), true));
    EXPECT_EQ(PortCalls(), SetCalls());
}

TEST_F(BootConfigExtTest, FailingWritesKeepTheFile) {
    struct Case {
        const char* function;
        std::size_t calls; ///< made until the failure
    };
    const std::string content = WithLine(Snapshot(NVME), "Disable_BIOS", "0");
    for (const Case& row : {Case{"VEXAPI_SetBootDeviceInfo", 2},
                            {"VEXAPI_SetNVMeBootDeviceEntries", 3},
                            {"VEXAPI_GetNVMeBootDeviceEntries", 4}}) {
        for (const Format& format : FORMATS) {
            Stage(content);
            const auto identity = FileIdentity();
            written.reset();
            Fake().Return(row.function, 1);
            const CommandRun run = Run(format.Leaf("set"));
            EXPECT_EQ(run.code, RC_CFG_UPDATE_FAILED) << row.function; // the reading back too
            EXPECT_EQ(run.output, Error(format, UPDATE_FAILED, true)) << row.function;
            Calls expected = NvmeSetCalls();
            expected.resize(row.calls);
            EXPECT_EQ(PortCalls(), expected);
            EXPECT_EQ(written.has_value(), row.calls > 2); // no transaction
            EXPECT_EQ(Staged(), content);
            EXPECT_EQ(FileIdentity(), identity);
            Fake().Return(row.function, 0);
            EXPECT_EQ(Run(format.Leaf("set")).output,
                      Document(format, WithField(NvmeLines(), "Adapter Driver", "true"), true));
            EXPECT_EQ(Staged(), "no file");
        }
    }
}

TEST_F(BootConfigExtTest, NvmeRedirectionsThatCantBeOpened) {
    const auto read = Fake().onGetBootDeviceInfo;
    const auto write = Fake().onSetBootDeviceInfo;
    const auto writeEntries = Fake().onSetNVMeBootDeviceEntries;
    for (const Format& format : FORMATS) {
        for (const std::string leaf : {"get", "setFile"}) { // unlike a failed call, this ends both
            RemoveFiles();
            bfsMode = NVME;
            CommandRun run;
            {
                NoFiles files;
                Fake().onGetBootDeviceInfo = [&](VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* nvramOut, void* third) {
                    files.Begin();
                    return read(handle, nvramOut, third);
                };
                run = Run(format.Leaf(leaf), "NVME");
            }
            Fake().onGetBootDeviceInfo = read;
            EXPECT_EQ(run.code, RC_FILE_ERROR) << leaf;
            EXPECT_EQ(run.output, Error(format, UNKNOWN_FAILURE));
            EXPECT_EQ(PortCalls(), ReadCalls(BIOS)); // without the call for the entries
            EXPECT_EQ(Staged(), "no file");
        }
        const auto expect = [&](std::size_t calls) {
            const CommandRun run = Run(format.Leaf("set"));
            EXPECT_EQ(run.code, RC_FILE_ERROR);
            EXPECT_EQ(run.output, Error(format, UNKNOWN_FAILURE, true));
            Calls expected = NvmeSetCalls();
            expected.resize(calls);
            EXPECT_EQ(PortCalls(), expected);
        };
        Stage(Snapshot(NVME));
        {
            NoFiles files; // before the entries' write
            Fake().onSetBootDeviceInfo = [&](VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters) {
                files.Begin();
                return write(handle, parameters);
            };
            expect(2);
        }
        Fake().onSetBootDeviceInfo = write;
        EXPECT_EQ(Staged(), Snapshot(NVME));
        {
            NoFiles files; // before they are read back
            Fake().onSetNVMeBootDeviceEntries = [&](VX_PORT_HANDLE* handle, _VEXAPI_FcNVMeBootParams* parameters) {
                files.Begin();
                return writeEntries(handle, parameters);
            };
            expect(3);
        }
        Fake().onSetNVMeBootDeviceEntries = writeEntries;
        EXPECT_EQ(Staged(), Snapshot(NVME));
    }
}

} // namespace
