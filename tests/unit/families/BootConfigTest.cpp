#include "BootTest.h"

#include "TraceLog.h"

using namespace family_test;

namespace {

/// Specifics of `bootconfig`: its mode, an option, and its drives.
class BootConfigTest : public BootTestBase {
protected:
    BootConfigTest() : BootTestBase(BOOT_CONFIG) {}

    struct DriveOption {
        const char* longName;
        const char* shortName;
    };
    static constexpr DriveOption DRIVES[] = {
        {"--drive-0", "-j"}, {"--drive-1", "-k"}, {"--drive-2", "-l"}, {"--drive-3", "-m"},
        {"--drive-4", "-n"}, {"--drive-5", "-o"}, {"--drive-6", "-p"}, {"--drive-7", "-q"},
    };
    static std::string WithDrive(const std::string& content, unsigned number, const std::string& wwpn,
                                 const std::string& lun) {
        return WithLine(WithLine(content, TargetKey(number, "WWPN"), wwpn), TargetKey(number, "LUN"), lun);
    }
};

TEST_F(BootConfigTest, TheOptionIsTheModeAndBiosWithoutIt) {
    struct Case {
        const char* words;
        ResultCode code;
        Mode mode;
    };
    const Case cases[] = {
        {"", RC_SUCCESS, BIOS},
        {"-b BIOS", RC_SUCCESS, BIOS},
        {"-B bios", RC_SUCCESS, BIOS},
        {"--boot-mode Bios", RC_SUCCESS, BIOS},
        {"-b UEFI", RC_SUCCESS, UEFI},
        {"-b uEfI", RC_SUCCESS, UEFI},
        {"--BOOT-MODE UEFI", RC_SUCCESS, UEFI},
        {"x --boot-mode UEFI -b BIOS", RC_SUCCESS, UEFI}, // the first counts
        {"-b", RC_SUCCESS, BIOS},                         // in last place it is absent
        {"UEFI", RC_SUCCESS, BIOS},                       // and so is a word without its name
        {"-b NVME", RC_INVALID_PARAMETER, BIOS},
        {"-b UEFI2", RC_INVALID_PARAMETER, BIOS},
        {"-b 2", RC_INVALID_PARAMETER, BIOS},
        {"-b %s%n", RC_INVALID_PARAMETER, BIOS},
        {"-b --enable-bfs true", RC_INVALID_PARAMETER, BIOS},
    };
    for (const Case& row : cases) {
        for (const Format& format : FORMATS) {
            for (const std::string leaf : {"get", "setFile"}) {
                RemoveFiles();
                bfsMode = BIOS;
                const CommandRun run = Run(format.Leaf(leaf), row.words);
                EXPECT_EQ(run.code, row.code) << row.words;
                if (row.code == RC_SUCCESS) {
                    EXPECT_EQ(run.output, Document(format, LinesIn(row.mode))) << row.words;
                    EXPECT_EQ(Staged(), leaf == "get" ? "no file" : Snapshot(row.mode)) << row.words;
                } else {
                    EXPECT_EQ(run.output, Error(format, INVALID) + UsageOf(format, leaf)) << row.words;
                    EXPECT_EQ(PortCalls(), Calls{}) << row.words;
                    EXPECT_EQ(Staged(), "no file") << row.words;
                }
            }
        }
    }
    const std::string word(100000, 'U');
    EXPECT_EQ(Run("get", "-b " + word).code, RC_INVALID_PARAMETER);
    // A wrong word is reported on every adapter; UEFI is rejected if unsupported.
    SetChip(*port, EIGHT_G);
    EXPECT_EQ(Run("get", "-b NVME").code, RC_INVALID_PARAMETER);
    EXPECT_EQ(Run("get", "-b uefi").code, RC_INVALID_CMD);
}

/// Switches only between BIOS and UEFI; other modes of the library are left alone.
TEST_F(BootConfigTest, TheLibraryIsSwitchedBetweenBiosAndUefiOnly) {
    for (int current = 0; current < 256; ++current) {
        for (const Mode mode : {BIOS, UEFI}) {
            bfsMode = static_cast<VX_UINT8>(current);
            EXPECT_EQ(RunIn(mode, "get").output, Document(XML, LinesIn(mode)));
            Calls expected = {"VEXAPI_GetBfsConfigMode()"};
            if (current == 2 && mode == BIOS) {
                expected.emplace_back("VEXAPI_SetBfsConfigMode(1)");
            } else if (current == 1 && mode == UEFI) {
                expected.emplace_back("VEXAPI_SetBfsConfigMode(2)");
            }
            expected.push_back(PortCall("GetBootDeviceInfo"));
            EXPECT_EQ(PortCalls(), expected) << current << " " << +mode;
        }
    }
    // Without the option, the library is switched to the BIOS, also by `setFile`.
    for (const char* const leaf : {"get", "setFile"}) {
        bfsMode = UEFI;
        EXPECT_EQ(Run(leaf).code, RC_SUCCESS);
        EXPECT_EQ(bfsMode, BIOS);
    }
}

/// `set` shows the layout of the file's mode: 1 is UEFI, anything else the BIOS.
TEST_F(BootConfigTest, ModesInTheFile) {
    const std::pair<const char*, Mode> cases[] = {
        {"1", UEFI},   {"01", UEFI}, {"1x", UEFI},   {"4294967297", UEFI}, // 2^32 + 1
        {"0", BIOS},   {"2", BIOS},  {"4", BIOS},    {"11", BIOS},         {"-1", BIOS},
        {"257", BIOS}, {"", BIOS},   {"UEFI", BIOS}, {"4294967296", BIOS},
    };
    for (const auto& [number, mode] : cases) {
        Stage(std::string("Boot_Mode=") + number + "\n");
        EXPECT_EQ(Run("set").output, Document(XML, LinesIn(mode), true)) << number;
        EXPECT_TRUE(WasWritten(nvram)); // it doesn't contain the mode
    }
    Stage("World_Login=0\n"); // no mode at all
    EXPECT_EQ(Run("set").output, Document(XML, BiosLines(), true));
    Stage("boot_mode=1\n");
    EXPECT_EQ(Run("set").output, Document(XML, UefiLines(), true));
}

TEST_F(BootConfigTest, EveryDriveHasItsOptionAndItsKeys) {
    for (unsigned number = 0; number < 8; ++number) {
        const std::string longName = DRIVES[number].longName;
        for (const std::string& name : {longName, InUpperCase(longName), std::string(DRIVES[number].shortName),
                                        InUpperCase(DRIVES[number].shortName)}) {
            ExpectStaged(UEFI, name + " " + TARGET + "-300", WithDrive(Snapshot(UEFI), number, TARGET, "300"));
            if (number < 4) {
                ExpectStaged(BIOS, name + " " + TARGET + "-300", WithDrive(Snapshot(BIOS), number, TARGET, "300"));
            }
        }
        const std::string label = "Drive " + std::to_string(number);
        Stage(Snapshot(UEFI));
        EXPECT_EQ(RunIn(UEFI, "setFile", longName + " " + TARGET + "-65535").output,
                  Document(XML, WithField(WithField(UefiLines(), label + " WWPN", TARGET), label + " LUN", "65535")));
        EXPECT_EQ(Run("set").code, RC_SUCCESS);
        _VEXAPI_HBAParameters expected = nvram;
        SetBytes(expected.*BOOT_TARGETS[number].wwpn, {0x50, 0x00, 0x0A, 0x0B, 0x0C, 0x0D, 0x01, 0x01});
        expected.*BOOT_TARGETS[number].lun = 65535;
        EXPECT_TRUE(WasWritten(expected)) << number;
    }
    // All at once
    std::string options;
    std::string content = Snapshot(UEFI);
    for (unsigned number = 0; number < 8; ++number) {
        const std::string lun = number % 2 == 0 ? "3" : "300";
        options += (number == 0 ? "" : " ") + std::string(DRIVES[number].shortName) + " " + TARGET + "-" + lun;
        content = WithDrive(content, number, TARGET, lun);
    }
    ExpectStaged(UEFI, options, content);
}

TEST_F(BootConfigTest, DriveValues) {
    struct Case {
        std::string value;
        ResultCode code;
        std::string wwpn;
        std::string lun;
    };
    const std::string zeros(5000, '0');
    const Case cases[] = {
        {TARGET + "-0", RC_SUCCESS, TARGET, "0"},
        {TARGET + "-3", RC_SUCCESS, TARGET, "3"},
        {TARGET + "-65535", RC_SUCCESS, TARGET, "65535"},
        {"50:00:0A:0B:0C:0D:01:01-3", RC_SUCCESS, TARGET, "3"},
        {"50:0:a:b:c:d:1:1-3", RC_SUCCESS, TARGET, "3"},
        {"+50:00:0a:0b:0c:0d:01:01-3", RC_SUCCESS, TARGET, "3"},
        {"1250:ff00:0a:0b:0c:0d:01:01-3", RC_SUCCESS, TARGET, "3"}, // the low 8 bits of each number
        {zeros + "50:00:0a:0b:0c:0d:01:01-" + zeros + "3", RC_SUCCESS, TARGET, "3"},
        {TARGET + "-+3", RC_SUCCESS, TARGET, "3"},
        {TARGET + "-3x", RC_SUCCESS, TARGET, "3"},
        {TARGET + "-3" + std::string(100000, 'x'), RC_SUCCESS, TARGET, "3"},
        {TARGET + "-3-300", RC_SUCCESS, TARGET, "3"},
        {TARGET + "-0x3", RC_SUCCESS, TARGET, "0"}, // decimal
        // The default LUN is 0, which the target has.
        {TARGET, RC_SUCCESS, TARGET, "0"},
        {TARGET + "-", RC_SUCCESS, TARGET, "0"},
        {TARGET + "-x", RC_SUCCESS, TARGET, "0"},
        {TARGET + "/3", RC_SUCCESS, TARGET, "0"},
        {TARGET + ":3", RC_SUCCESS, TARGET, "0"},
        {TARGET + "-%d", RC_SUCCESS, TARGET, "0"},
        // Missing LUNs; numbers are not truncated to 16 bits.
        {TARGET + "-1", RC_INVALID_PARAMETER, "", ""},
        {TARGET + "-4", RC_INVALID_PARAMETER, "", ""},
        {TARGET + "--3", RC_INVALID_PARAMETER, "", ""},
        {TARGET + "-65536", RC_INVALID_PARAMETER, "", ""},
        {TARGET + "-65539", RC_INVALID_PARAMETER, "", ""}, // 2^16 + 3
        {BARE_TARGET + "-0", RC_INVALID_PARAMETER, "", ""},
        {NO_TARGET + "-0", RC_INVALID_PARAMETER, "", ""},
        // NVMe targets, except for missing LUNs
        {NVME_TARGET + "-1", RC_NOT_SUPPORTED_FOR_NVME, "", ""},
        {NVME_TARGET + "-300", RC_NOT_SUPPORTED_FOR_NVME, "", ""},
        {NVME_TARGET + "-0", RC_INVALID_PARAMETER, "", ""},
        {NVME_TARGET + "-2", RC_INVALID_PARAMETER, "", ""},
        // Incomplete names: the remaining bytes are 0.
        {"50:00:0a:0b:0c:0d:01-3", RC_INVALID_PARAMETER, "", ""},
        {"50", RC_INVALID_PARAMETER, "", ""},
        {"50-00-0a-0b-0c-0d-01-01-3", RC_INVALID_PARAMETER, "", ""},
        {"a%s%n", RC_INVALID_PARAMETER, "", ""},
        {std::string(100000, 'f'), RC_INVALID_PARAMETER, "", ""},
        // Zeros clear the entry, whatever the LUN.
        {std::string(NO_WWN) + "-0", RC_SUCCESS, NO_WWN, "0"},
        {std::string(NO_WWN) + "-9", RC_SUCCESS, NO_WWN, "0"},
        {std::string(NO_WWN) + "--1", RC_SUCCESS, NO_WWN, "0"},
        {NO_WWN, RC_SUCCESS, NO_WWN, "0"},
        {"0", RC_SUCCESS, NO_WWN, "0"},
        {"100:200", RC_SUCCESS, NO_WWN, "0"}, // the low 8 bits
        {"xyz", RC_SUCCESS, NO_WWN, "0"},
        {"%n", RC_SUCCESS, NO_WWN, "0"},
        {"", RC_SUCCESS, NO_WWN, "0"},
        {std::string(100000, 'x'), RC_SUCCESS, NO_WWN, "0"},
    };
    for (const Case& row : cases) {
        for (const unsigned number : {0u, 3u, 7u}) {
            const std::string options = std::string(DRIVES[number].longName) + " " + row.value + " .";
            if (row.code == RC_SUCCESS) {
                ExpectStaged(UEFI, options, WithDrive(Snapshot(UEFI), number, row.wwpn, row.lun));
            } else {
                Stage(Snapshot(UEFI));
                ExpectRefused(UEFI, options, row.code);
            }
        }
    }
    // No target is needed to clear an entry.
    port->pTargetList = nullptr;
    ExpectStaged(BIOS, "-j " + std::string(NO_WWN) + "-3", WithDrive(Snapshot(BIOS), 0, NO_WWN, "0"));
    Stage(Snapshot(BIOS));
    ExpectRefused(BIOS, "-j " + TARGET + "-0", RC_INVALID_PARAMETER);
}

/// A drive without a LUN takes that of the previous drive, in the order of the options' table.
TEST_F(BootConfigTest, LunsCarryOver) {
    struct Case {
        std::string options;
        std::vector<std::pair<unsigned, std::string>> luns; ///< of drives that name the target
        std::vector<unsigned> cleared;
    };
    const std::string clear = NO_WWN;
    const Case cases[] = {
        {"-j " + TARGET + "-300 -k " + TARGET, {{0, "300"}, {1, "300"}}, {}},
        {"-k " + TARGET + " -j " + TARGET + "-300", {{0, "300"}, {1, "300"}}, {}},
        {"-j " + TARGET + " -k " + TARGET + "-300", {{0, "0"}, {1, "300"}}, {}},
        {"-j " + TARGET + "-300 -k " + TARGET + "-x -l " + TARGET + "- -q " + TARGET,
         {{0, "300"}, {1, "300"}, {2, "300"}, {7, "300"}},
         {}},
        {"-j " + TARGET + "-300 -k " + TARGET + "-3 -l " + TARGET, {{0, "300"}, {1, "3"}, {2, "3"}}, {}},
        // A cleared drive keeps LUN 0, but its LUN carries over.
        {"-j " + clear + "-300 -k " + TARGET, {{1, "300"}}, {0}},
        {"-j " + TARGET + "-300 -k " + clear + " -l " + TARGET, {{0, "300"}, {2, "300"}}, {1}},
        {"-j " + TARGET + "-300 -k " + clear + "-3 -l " + TARGET, {{0, "300"}, {2, "3"}}, {1}},
        // An incomplete name has no LUN.
        {"-j " + TARGET + "-300 -k 0-3 -l " + TARGET, {{0, "300"}, {2, "300"}}, {1}},
    };
    for (const Case& row : cases) {
        std::string content = Snapshot(UEFI);
        for (const auto& [number, lun] : row.luns) {
            content = WithDrive(content, number, TARGET, lun);
        }
        for (const unsigned number : row.cleared) {
            content = WithDrive(content, number, NO_WWN, "0");
        }
        ExpectStaged(UEFI, row.options, content);
    }
    // The next command starts at 0 again.
    Stage(Snapshot(BIOS));
    Run("setFile", "-j " + TARGET + "-300");
    Run("setFile", "-k " + TARGET);
    EXPECT_EQ(Staged(), WithDrive(WithDrive(Snapshot(BIOS), 0, TARGET, "300"), 1, TARGET, "0"));
    // A LUN carried over may be missing.
    Stage(Snapshot(BIOS));
    ExpectRefused(BIOS, "-j " + std::string(NO_WWN) + "-4 -k " + TARGET, RC_INVALID_PARAMETER);
}

/// Drives 4 to 7: the adapter is checked first, then the mode, then the value.
TEST_F(BootConfigTest, DrivesOfUefi) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        const bool isCapable = IsUefiCapable(chip.chip);
        for (unsigned number = 0; number < 8; ++number) {
            for (const std::string& value : {TARGET + "-3", TARGET + "-4", NVME_TARGET + "-3", std::string(NO_WWN)}) {
                const ResultCode valueCode = value.ends_with("-4")            ? RC_INVALID_PARAMETER
                                             : value.starts_with(NVME_TARGET) ? RC_NOT_SUPPORTED_FOR_NVME
                                                                              : RC_SUCCESS;
                const std::string options = std::string(DRIVES[number].shortName) + " " + value;
                SCOPED_TRACE(chip.name + (" " + options));
                Stage(Snapshot(BIOS));
                EXPECT_EQ(RunIn(BIOS, "setFile", options).code, number < 4  ? valueCode
                                                                : isCapable ? RC_PARAM_ERROR
                                                                            : RC_FEATURE_NOT_SUPPORTED);
                if (isCapable) {
                    Stage(Snapshot(UEFI));
                    EXPECT_EQ(RunIn(UEFI, "setFile", options).code, valueCode);
                }
            }
        }
    }
}

TEST_F(BootConfigTest, RefusedDrivesHaveTheirTexts) {
    struct Case {
        Chip chip;
        std::string options;
        ResultCode code;
        const char* message;
    };
    const Case cases[] = {
        {BIRCH, "-n " + TARGET + "-3", RC_PARAM_ERROR, "Failed, Boot parameter requires UEFI boot mode option"},
        {BIRCH, "-j " + TARGET + "-4", RC_INVALID_PARAMETER, INVALID},
        {EIGHT_G, "-q " + TARGET + "-3", RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
        {BIRCH, "-j " + NVME_TARGET + "-3", RC_NOT_SUPPORTED_FOR_NVME, "Failed, Feature not supported for NVMe target"},
    };
    for (const Case& row : cases) {
        SetChip(*port, row.chip);
        for (const Format& format : FORMATS) {
            Stage(Snapshot(BIOS));
            const CommandRun run = Run(format.Leaf("setFile"), row.options);
            EXPECT_EQ(run.code, row.code);
            EXPECT_EQ(run.output,
                      Error(format, row.message) + (row.code == RC_PARAM_ERROR || row.code == RC_INVALID_PARAMETER
                                                        ? UsageOf(format, "setFile")
                                                        : ""));
            EXPECT_EQ(Staged(), Snapshot(BIOS));
        }
    }
}

/// Drives are checked after the flags, in the order of their numbers, and nothing is staged before a rejection.
TEST_F(BootConfigTest, OrderOfDrives) {
    Stage(Snapshot(UEFI));
    ExpectRefused(UEFI, "-j " + TARGET + "-4 -d true", RC_INVALID_FIELD);
    ExpectRefused(UEFI, "-a true -k " + TARGET + "-3 -l " + TARGET + "-4", RC_INVALID_PARAMETER);
    for (unsigned first = 0; first < 8; ++first) {
        std::string options;
        for (unsigned number = 8; number > first; --number) { // in reverse
            options += DRIVES[number - 1].shortName + (" 1:%d" + std::to_string(number - 1)) + " ";
        }
        const TraceLog log("4");
        ExpectRefused(UEFI, options, RC_INVALID_PARAMETER);
        std::vector<std::string> refused;
        for (const std::string& line : TraceLog::Lines()) {
            if (line.ends_with(" not supported")) {
                refused.push_back(line.substr(line.rfind(": ") + 2));
            }
        }
        const std::string number = std::to_string(first);
        EXPECT_EQ(refused, Calls{"drive-" + number + "=1:%d" + number + " not supported"});
    }
}

/// Targets and LUNs are looked up by `setFile`, not by `set`.
TEST_F(BootConfigTest, SetLooksForNoTarget) {
    RunIn(UEFI, "setFile", "-j " + TARGET + "-300");
    port->pTargetList = nullptr;
    EXPECT_EQ(Run("set").code, RC_SUCCESS);
    _VEXAPI_HBAParameters expected = nvram;
    SetBytes(expected.BootPortName, {0x50, 0x00, 0x0A, 0x0B, 0x0C, 0x0D, 0x01, 0x01});
    expected.BootLunNumber = 300;
    EXPECT_TRUE(WasWritten(expected));
}

TEST_F(BootConfigTest, ClearedEntriesReachTheLibrary) {
    RunIn(UEFI, "setFile", "-j 0 -q " + std::string(NO_WWN) + "-5");
    EXPECT_EQ(Run("set").code, RC_SUCCESS);
    _VEXAPI_HBAParameters expected = nvram;
    std::memset(expected.BootPortName, 0, 8);
    expected.BootLunNumber = 0;
    std::memset(expected.Alt7BootPortName, 0, 8);
    expected.Alt7BootLunNumber = 0;
    EXPECT_TRUE(WasWritten(expected));
}

/// Several commands, one write; the file has all eight entries in any mode.
TEST_F(BootConfigTest, ChangesOfSeveralCommands) {
    RunIn(UEFI, "setFile", "-q " + TARGET + "-3 -g true");
    RunIn(BIOS, "setFile", "-j " + TARGET + "-300 -d false");
    EXPECT_EQ(Staged(), WithLine(WithLine(WithDrive(WithDrive(Snapshot(BIOS), 7, TARGET, "3"), 0, TARGET, "300"),
                                          "World_Login", "1"),
                                 "Selectable_Boot", "0"));
    const CommandRun run = Run("set");
    EXPECT_EQ(PortCalls(), SetCalls());
    std::vector<Field> lines = WithField(BiosLines(), "Selectable Boot", "false");
    lines = WithField(WithField(lines, "Drive 0 WWPN", TARGET), "Drive 0 LUN", "300");
    EXPECT_EQ(run.output, Document(XML, lines, true));
    _VEXAPI_HBAParameters expected = nvram;
    SetBytes(expected.BootPortName, {0x50, 0x00, 0x0A, 0x0B, 0x0C, 0x0D, 0x01, 0x01});
    SetBytes(expected.Alt7BootPortName, {0x50, 0x00, 0x0A, 0x0B, 0x0C, 0x0D, 0x01, 0x01});
    expected.BootLunNumber = 300;
    expected.Alt7BootLunNumber = 3;
    expected.ForceWorldLogin = 1;
    expected.EnableSelectableBoot = 0;
    EXPECT_TRUE(WasWritten(expected));
}

/// The group has no NVMe settings: they are not in its file, and the library isn't asked.
TEST_F(BootConfigTest, KnowsNoNvme) {
    Stage(Snapshot(UEFI) + "NVMe_Enable=0\nNVME_0_Enable=1\n");
    EXPECT_EQ(RunIn(UEFI, "setFile", "-m " + TARGET + "-3 --fc-nvme false").code, RC_SUCCESS); // "-m" is a drive here
    EXPECT_EQ(Run("set").code, RC_SUCCESS);
    EXPECT_EQ(PortCalls(), SetCalls());
    EXPECT_EQ(written->NVMeEnable, 1);
    EXPECT_EQ(written->Alt3BootLunNumber, 3);
}

} // namespace
