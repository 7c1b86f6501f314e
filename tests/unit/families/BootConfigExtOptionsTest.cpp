#include "BootConfigExtTest.h"

#include "TraceLog.h"

using namespace family_test;

namespace {

/// The options that `bootconfig` doesn't have: NVMe, and the four that describe a boot target.
class BootConfigExtOptionsTest : public BootConfigExtTestBase {
protected:
    /// An entry of the FCP side.
    static std::string WithTarget(const std::string& content, unsigned number, const std::string& wwpn,
                                  const std::string& lun) {
        return WithLine(WithLine(content, TargetKey(number, "WWPN"), wwpn), TargetKey(number, "LUN"), lun);
    }
    /// The six lines of an NVMe entry, in the order of the file.
    static std::string EntryLines(const std::string& number, const std::array<std::string, 6>& values) {
        static constexpr const char* FIELDS[] = {"ControllerID", "Enable", "NQN", "NamespaceID", "WWNN", "WWPN"};
        std::string text;
        for (std::size_t i = 0; i < values.size(); ++i) {
            text += "NVME_" + number + "_" + FIELDS[i] + "=" + values[i] + "\n";
        }
        return text;
    }
    static std::string WithEntry(std::string content, unsigned number, const std::array<std::string, 6>& values) {
        const std::string start = "NVME_" + std::to_string(number) + "_";
        const std::size_t from = content.find(start);
        const std::size_t last = content.rfind(start);
        content.replace(from, content.find('\n', last) + 1 - from, EntryLines(std::to_string(number), values));
        return content;
    }
    /// The entry made from the NVMe target and namespace 300: 0xBEEF is 48879.
    std::array<std::string, 6> EntryOfTarget(const std::string& enable = "1") const {
        return {"48879", enable, "nqn.2020-01.org.example:array", "300", "2f:ff:0a:0b:0c:0d:0e:fe", NVME_TARGET};
    }
    static std::array<std::string, 6> ClearedEntry(const std::string& enable) {
        return {"0", enable, "", "0", NO_WWN, NO_WWN};
    }
};

TEST_F(BootConfigExtOptionsTest, FcNvmeIsTakenInNvmeModeOnly) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        for (const Mode mode : Modes()) {
            if (mode != BIOS && !IsUefiCapable(chip.chip)) {
                continue;
            }
            const ResultCode code = !IsUefiCapable(chip.chip) ? RC_FEATURE_NOT_SUPPORTED
                                    : mode != NVME            ? RC_PARAM_ERROR
                                                              : RC_SUCCESS;
            SCOPED_TRACE(std::string(chip.name) + " mode " + std::to_string(mode));
            for (const char* const word : {"true", "false", "TrUe", "FALSE"}) {
                for (const char* const name : {"--fc-nvme ", "-m ", "--FC-NVMe ", "-M "}) {
                    if (code == RC_SUCCESS) {
                        ExpectStaged(mode, std::string(name) + word,
                                     WithLine(Snapshot(mode), "NVMe_Enable", (*word | 0x20) == 't' ? "1" : "0"));
                    } else {
                        Stage(Snapshot(mode));
                        ExpectRefused(mode, std::string(name) + word, code);
                    }
                }
            }
            Stage(Snapshot(mode));
            ExpectRefused(mode, "-m on", code == RC_SUCCESS ? RC_INVALID_PARAMETER : code);
        }
    }
    SetChip(*port, BIRCH);
    nvram.NVMeEnable = 0;
    Stage(Snapshot(NVME));
    EXPECT_EQ(Run("setFile", "NVME -m true").code, RC_SUCCESS);
    EXPECT_EQ(Run("set").code, RC_SUCCESS);
    nvram.NVMeEnable = 1;
    EXPECT_TRUE(WasWritten(nvram));
    // Values of 2 and above in a file are ignored.
    for (const char* const number : {"2", "256", "257", "-1"}) {
        Stage(WithLine(Snapshot(BIOS), "NVMe_Enable", number));
        EXPECT_EQ(Run("set").code, RC_SUCCESS);
        EXPECT_TRUE(WasWritten(nvram)) << number;
    }
    nvram.NVMeEnable = 0;
    Stage("NVMe_Enable=4294967297\n"); // 2^32 + 1
    EXPECT_EQ(Run("set").code, RC_SUCCESS);
    EXPECT_EQ(written->NVMeEnable, 1);
}

/// All options of a mode together, or none. Outside NVMe mode the last one is rejected before that check.
TEST_F(BootConfigExtOptionsTest, MixesOfTheFourOptions) {
    for (const Mode mode : {BIOS, UEFI, NVME}) {
        for (const bool isShort : {false, true}) {
            for (int mix = 0; mix < 16; ++mix) {
                const std::string& wwpn = mode == NVME ? NVME_TARGET : TARGET;
                const std::string words[] = {"2", wwpn, "300", "true"};
                static constexpr const char* LONG[] = {"--boot-target-num", "--boot-target-wwpn", "--boot-disk-num",
                                                       "--boot-target-enable"};
                static constexpr const char* SHORT[] = {"-n", "-p", "-o", "-l"};
                std::string options = "x";
                for (int i = 3; i >= 0; --i) {
                    if ((mix >> i & 1) != 0) {
                        options += std::string(" ") + (isShort ? SHORT[i] : LONG[i]) + " " + words[i];
                    }
                }
                ResultCode code = RC_SUCCESS;
                std::string content = Snapshot(mode);
                if (mode == NVME) {
                    code = mix == 0 || mix == 15 ? RC_SUCCESS : RC_NEED_ADD_NVME_PARAMS;
                    content = mix == 15 ? WithEntry(content, 2, EntryOfTarget()) : content;
                } else {
                    code = mix >= 8 ? RC_PARAM_ERROR : mix == 0 || mix == 7 ? RC_SUCCESS : RC_NEED_ADD_FCP_PARAMS;
                    content = mix == 7 ? WithTarget(content, 2, TARGET, "300") : content;
                }
                SCOPED_TRACE("mode " + std::to_string(mode) + ": " + options);
                Stage(Snapshot(mode));
                const CommandRun run = RunIn(mode, "setFile", options);
                EXPECT_EQ(run.code, code);
                EXPECT_EQ(Staged(), content);
                if (code == RC_NEED_ADD_FCP_PARAMS) {
                    EXPECT_EQ(run.output, Error(XML, "Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets"));
                } else if (code == RC_NEED_ADD_NVME_PARAMS) {
                    EXPECT_EQ(run.output, Error(XML, "Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for "
                                                     "NVMe targets"));
                }
            }
        }
    }
}

TEST_F(BootConfigExtOptionsTest, NumbersOfFcpTargets) {
    const std::string rest = " -p " + TARGET + " -o 3";
    for (const Mode mode : {BIOS, UEFI}) {
        for (unsigned number = 0; number < 12; ++number) {
            const std::string option = "-n " + std::to_string(number);
            SCOPED_TRACE(option + " mode " + std::to_string(mode));
            if (mode == BIOS && number > 3) {
                Stage(Snapshot(mode));
                ExpectRefused(mode, option + rest, RC_PARAM_ERROR);
                ExpectRefused(mode, option, RC_PARAM_ERROR); // whatever else is given
            } else if (number > 7) {
                ExpectStaged(mode, option + rest, Snapshot(mode)); // succeeds and stages nothing
            } else {
                ExpectStaged(mode, option + rest, WithTarget(Snapshot(mode), number, TARGET, "3"));
            }
        }
    }
    // On adapters without UEFI there are only the first four.
    SetChip(*port, ROWAN_FC);
    ExpectStaged(BIOS, "-n 3" + rest, WithTarget(Snapshot(BIOS), 3, TARGET, "3"));
    ExpectRefused(BIOS, "-n 4" + rest, RC_PARAM_ERROR);
    SetChip(*port, BIRCH);
    // Base 10, the low 32 bits, and 0 for text that is not a number
    const std::pair<std::string, unsigned> texts[] = {
        {"007", 7}, {"+5", 5}, {"5th", 5},        {"0x5", 0},         {"abc", 0},
        {"", 0},    {"%d", 0}, {"4294967301", 5}, {"-4294967293", 3}, {std::string(100000, '0') + "6", 6},
    };
    for (const auto& [text, number] : texts) {
        ExpectStaged(UEFI, "-n " + text + rest, WithTarget(Snapshot(UEFI), number, TARGET, "3"));
    }
    for (const std::string& text : {std::string("-1"), std::string("4294967295"), std::string(100000, '9')}) {
        ExpectStaged(UEFI, "-n " + text + rest, Snapshot(UEFI));
        Stage(Snapshot(BIOS));
        ExpectRefused(BIOS, "-n " + text + rest, RC_PARAM_ERROR);
    }
}

TEST_F(BootConfigExtOptionsTest, NumbersOfNvmeEntries) {
    for (const char* const enable : {"true", "FALSE"}) {
        const std::string rest = " -p " + NVME_TARGET + " -o 300 -l " + enable;
        const std::array<std::string, 6> values = EntryOfTarget(*enable == 't' ? "1" : "0");
        for (unsigned number = 0; number < 8; ++number) {
            ExpectStaged(NVME, "-n " + std::to_string(number) + rest, WithEntry(Snapshot(NVME), number, values));
        }
        // There is no upper limit, but larger entries are never read.
        for (const char* const number : {"8", "10", "4294967295"}) {
            ExpectStaged(NVME, std::string("-n ") + number + rest, Snapshot(NVME) + EntryLines(number, values));
            EXPECT_EQ(Run("set").code, RC_SUCCESS);
            EXPECT_TRUE(WereWritten(Carried()));
        }
    }
}

TEST_F(BootConfigExtOptionsTest, EntriesReachTheLibrary) {
    Stage(Snapshot(NVME));
    EXPECT_EQ(Run("setFile", "NVME -n 5 -p " + NVME_TARGET + " -o 300 -l true").output,
              Document(XML, WithStorage(NvmeLines(), 5,
                                        {"true", "2f:ff:0a:0b:0c:0d:0e:fe", NVME_TARGET,
                                         "nqn.2020-01.org.example:array", "0xbeef", "300"})));
    EXPECT_EQ(Run("setFile", "NVME -n 2 -p 0 -o 9 -l true").code, RC_SUCCESS);
    EXPECT_EQ(Run("set").code, RC_SUCCESS);
    _VEXAPI_FcNVMeBootParams expected = Carried();
    VX_NVME_BOOT_ENTRY& entry = expected.BootEntry[5];
    SetBytes(entry.TargetWWNN, {0x2F, 0xFF, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0xFE});
    SetBytes(entry.TargetWWPN, {0x50, 0x00, 0x0A, 0x0B, 0x0C, 0x0D, 0x01, 0x02});
    SetText(entry.TargetNQN, "nqn.2020-01.org.example:array");
    entry.TargetCtrlID = 0xBEEF;
    entry.TargetNSID = 300;
    entry.TargetFlags = 1;
    expected.BootEntry[2] = {};
    expected.BootEntry[2].TargetFlags = 1;
    EXPECT_TRUE(WereWritten(expected));
    EXPECT_TRUE(WasWritten(nvram));
}

/// One command stages one entry; one write covers several commands.
TEST_F(BootConfigExtOptionsTest, EntriesOfSeveralCommands) {
    Run("setFile", "NVME --fc-nvme false");
    std::string content = WithLine(Snapshot(NVME), "NVMe_Enable", "0");
    for (unsigned number = 0; number < 4; ++number) {
        Run("setFile", "NVME -n " + std::to_string(number) + " -p " + NVME_TARGET + " -o 300 -l true");
        content = WithEntry(content, number, EntryOfTarget());
    }
    EXPECT_EQ(Staged(), content);
    EXPECT_EQ(Run("set").code, RC_SUCCESS);
    EXPECT_EQ(PortCalls(), NvmeSetCalls());
    EXPECT_EQ(Staged(), "no file");
}

TEST_F(BootConfigExtOptionsTest, TargetsAndDisks) {
    struct Case {
        Mode mode;
        std::string wwpn;
        std::string disk;
        ResultCode code;
        std::string staged; ///< of an FCP entry: its name and LUN
    };
    const std::string zeros(5000, '0');
    const Case cases[] = {
        {UEFI, TARGET, "0", RC_SUCCESS, TARGET + " 0"},
        {UEFI, TARGET, "65535", RC_SUCCESS, TARGET + " 65535"},
        {BIOS, TARGET, "300", RC_SUCCESS, TARGET + " 300"},
        {UEFI, "50:00:0A:0B:0C:0D:01:01", "3", RC_SUCCESS, TARGET + " 3"},
        {UEFI, "50:0:a:b:c:d:1:1", "3", RC_SUCCESS, TARGET + " 3"},
        {UEFI, zeros + "50:00:0a:0b:0c:0d:01:1201", zeros + "3", RC_SUCCESS, TARGET + " 3"},
        {UEFI, TARGET + "-300", "3", RC_SUCCESS, TARGET + " 3"}, // a LUN after the name is none
        {UEFI, TARGET + ":99" + std::string(100000, 'x'), "3", RC_SUCCESS, TARGET + " 3"},
        // The disk's low 16 bits
        {UEFI, TARGET, "65539", RC_SUCCESS, TARGET + " 3"},
        {UEFI, TARGET, "4294967299", RC_SUCCESS, TARGET + " 3"},
        {UEFI, TARGET, "-1", RC_SUCCESS, TARGET + " 65535"},
        {UEFI, TARGET, "3x", RC_SUCCESS, TARGET + " 3"},
        {UEFI, TARGET, "abc", RC_SUCCESS, TARGET + " 0"},
        {UEFI, TARGET, "", RC_SUCCESS, TARGET + " 0"},
        {UEFI, TARGET, "%n", RC_SUCCESS, TARGET + " 0"},
        // Disks and targets that aren't there
        {UEFI, TARGET, "1", RC_INVALID_PARAMETER, ""},
        {UEFI, TARGET, "65537", RC_INVALID_PARAMETER, ""},
        {BIOS, TARGET, "4", RC_INVALID_PARAMETER, ""},
        {UEFI, BARE_TARGET, "0", RC_INVALID_PARAMETER, ""},
        {UEFI, NO_TARGET, "0", RC_INVALID_PARAMETER, ""},
        {NVME, NO_TARGET, "1", RC_INVALID_PARAMETER, ""},
        {NVME, BARE_TARGET, "0", RC_INVALID_PARAMETER, ""},
        {NVME, NVME_TARGET, "2", RC_INVALID_PARAMETER, ""},
        {UEFI, "50", "0", RC_INVALID_PARAMETER, ""},
        {UEFI, "a%s%n", "0", RC_INVALID_PARAMETER, ""},
        {UEFI, std::string(100000, 'f'), "0", RC_INVALID_PARAMETER, ""},
        // Targets of the other kind, with disks that are there
        {BIOS, NVME_TARGET, "3", RC_INVALID_PARAMETER, ""},
        {UEFI, NVME_TARGET, "3", RC_INVALID_PARAMETER, ""},
        {NVME, TARGET, "3", RC_INVALID_PARAMETER, ""},
        // Zeros clear the entry, whatever the disk.
        {UEFI, NO_WWN, "3", RC_SUCCESS, std::string(NO_WWN) + " 0"},
        {BIOS, "0:0:0:0:0:0:0:0", "4", RC_SUCCESS, std::string(NO_WWN) + " 0"},
        {UEFI, "100:200", "65536", RC_SUCCESS, std::string(NO_WWN) + " 0"}, // the low 8 bits
        {UEFI, "xyz", "x", RC_SUCCESS, std::string(NO_WWN) + " 0"},
        {UEFI, "", "", RC_SUCCESS, std::string(NO_WWN) + " 0"},
    };
    for (const Case& row : cases) {
        const std::string options =
            "-p " + row.wwpn + " -o " + row.disk + " -n 3" + (row.mode == NVME ? " -l true" : "");
        if (row.code == RC_SUCCESS) {
            const std::size_t blank = row.staged.find(' ');
            ExpectStaged(row.mode, options,
                         WithTarget(Snapshot(row.mode), 3, row.staged.substr(0, blank), row.staged.substr(blank + 1)));
        } else {
            Stage(Snapshot(row.mode));
            ExpectRefused(row.mode, options, row.code);
        }
    }
    // Cleared NVMe entries
    for (const char* const enable : {"true", "false"}) {
        const std::array<std::string, 6> values = ClearedEntry(*enable == 't' ? "1" : "0");
        for (const char* const wwpn : {NO_WWN, "0", "zero", ""}) {
            ExpectStaged(NVME, std::string("-p ") + wwpn + " -o 9 -n 4 -l " + enable,
                         WithEntry(Snapshot(NVME), 4, values));
        }
    }
    // Without any target
    port->pTargetList = nullptr;
    ExpectStaged(NVME, "-n 4 -p 0 -o 9 -l false", WithEntry(Snapshot(NVME), 4, ClearedEntry("0")));
    ExpectStaged(BIOS, "-n 0 -p 0 -o 9", WithTarget(Snapshot(BIOS), 0, NO_WWN, "0"));
    Stage(Snapshot(BIOS));
    ExpectRefused(BIOS, "-n 0 -p " + TARGET + " -o 0", RC_INVALID_PARAMETER);
}

/// The namespace is the number found: the low 16 bits of the word.
TEST_F(BootConfigExtOptionsTest, NamespacesAreReadIn16Bits) {
    for (const auto& [word, number] : {std::pair{"1", "1"}, {"3", "3"}, {"65537", "1"}, {"300x", "300"}}) {
        std::array<std::string, 6> values = EntryOfTarget();
        values[3] = number;
        ExpectStaged(NVME, std::string("-n 0 -l true -p ") + NVME_TARGET + " -o " + word,
                     WithEntry(Snapshot(NVME), 0, values));
    }
}

/// Target names that fill their array, or contain characters at which a reader of the file stops.
TEST_F(BootConfigExtOptionsTest, NamesOfTargets) {
    struct Case {
        std::string name;
        std::string inFile;
        std::string shown;
    };
    const Case cases[] = {
        {std::string(255, 'n'), std::string(255, 'n'), std::string(255, 'n')},
        {std::string(256, 'n'), std::string(256, 'n'), std::string(255, 'n')},
        {"", "", ""},
        {"%s%n", "%s%n", "%s%n"},
        {"nqn.a b", "nqn.a", "nqn.a"},
        {"nqn.a#b", "nqn.a", "nqn.a"},
        {"nqn.a\nPrimary_Boot_Target_LUN=9", "nqn.a", "nqn.a"},
        {"nqn.a\x01\x7f", "nqn.a", "nqn.a"},
        {"nqn.\xc3\xa9\x7f", "nqn.\xc3\xa9", "nqn.\xc3\xa9"},
        {"\tnqn.a", "", ""},
        {"nqn=a", "nqn=a", "nqn=a"},
    };
    for (const Case& row : cases) {
        SetText(nvmeTarget->StorageNqn, row.name);
        std::array<std::string, 6> values = EntryOfTarget();
        values[2] = row.inFile;
        Stage(Snapshot(NVME));
        const CommandRun run = Run("setFile", "NVME -n 1 -l true -o 300 -p " + NVME_TARGET);
        EXPECT_EQ(Staged(), WithEntry(Snapshot(NVME), 1, values));
        EXPECT_EQ(run.output, Document(XML, WithStorage(NvmeLines(), 1,
                                                        {"true", "2f:ff:0a:0b:0c:0d:0e:fe", NVME_TARGET, row.shown,
                                                         "0xbeef", "300"})));
    }
}

TEST_F(BootConfigExtOptionsTest, EnableOption) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        for (const Mode mode : Modes()) {
            if (mode != BIOS && !IsUefiCapable(chip.chip)) {
                continue;
            }
            SCOPED_TRACE(std::string(chip.name) + " mode " + std::to_string(mode));
            Stage(Snapshot(mode));
            const ResultCode code = !IsUefiCapable(chip.chip) ? RC_FEATURE_NOT_SUPPORTED
                                    : mode != NVME            ? RC_PARAM_ERROR
                                                              : RC_SUCCESS;
            // On its own it only makes the options incomplete in NVMe mode; an invalid word is reported first.
            ExpectRefused(mode, "-l true", code == RC_SUCCESS ? RC_NEED_ADD_NVME_PARAMS : code);
            ExpectRefused(mode, "-l on", code == RC_SUCCESS ? RC_INVALID_PARAMETER : code);
            ExpectRefused(mode, "--boot-target-enable 1 -n 1 -o 300 -p " + NVME_TARGET,
                          code == RC_SUCCESS ? RC_INVALID_PARAMETER : code);
        }
    }
    SetChip(*port, BIRCH);
    for (const std::string& word : {std::string(), std::string("%s"), std::string(100000, 't')}) {
        Stage(Snapshot(NVME));
        ExpectRefused(NVME, "-l " + word + " -n 1 -o 300 -p " + NVME_TARGET, RC_INVALID_PARAMETER);
    }
}

/// The order of the checks, with commands that fail several of them.
TEST_F(BootConfigExtOptionsTest, OrderOfChecks) {
    struct Case {
        Mode mode;
        std::string options;
        ResultCode code;
    };
    const Case cases[] = {
        // Flags, "--fc-nvme", number, name, enable, completeness, disk
        {BIOS, "-n 4 -p " + NO_TARGET + " -a 1", RC_INVALID_PARAMETER},
        {UEFI, "-n 4 -p " + NO_TARGET + " -d true -m true", RC_INVALID_FIELD},
        {UEFI, "-p " + NO_TARGET + " -m true", RC_PARAM_ERROR},
        {BIOS, "-n 4 -p " + NO_TARGET + " -l 1", RC_PARAM_ERROR},
        {UEFI, "-p " + NO_TARGET + " -l 1", RC_INVALID_PARAMETER}, // the name's, before 4
        {UEFI, "-n 1 -p " + TARGET + " -o 4 -l 1", RC_PARAM_ERROR},
        {UEFI, "-p " + NO_TARGET, RC_INVALID_PARAMETER}, // and not 55
        {UEFI, "-p " + TARGET, RC_NEED_ADD_FCP_PARAMS},
        {UEFI, "-p " + TARGET + " -o 4", RC_NEED_ADD_FCP_PARAMS},
        {UEFI, "-n 9 -o 4 -p " + TARGET, RC_INVALID_PARAMETER}, // the disk counts even where nothing is staged
        {NVME, "-p " + NO_TARGET + " -l 1", RC_INVALID_PARAMETER},
        {NVME, "-p " + TARGET + " -l 1", RC_INVALID_PARAMETER},
        {NVME, "-p " + TARGET + " -l true", RC_NEED_ADD_NVME_PARAMS}, // before the target's kind
        {NVME, "-n 9 -o 2 -l true -p " + NVME_TARGET, RC_INVALID_PARAMETER},
    };
    for (const Case& row : cases) {
        Stage(Snapshot(row.mode));
        ExpectRefused(row.mode, row.options, row.code);
    }
    Stage(Snapshot(NVME));
    const TraceLog log("4");
    ExpectRefused(NVME, "-n 1 -m %d -p " + NO_TARGET, RC_INVALID_PARAMETER);
    bool isTraced = false;
    for (const std::string& line : TraceLog::Lines()) {
        isTraced = isTraced || line.ends_with(": fc-nvme=%d not supported");
    }
    EXPECT_TRUE(isTraced);
}

TEST_F(BootConfigExtOptionsTest, RefusalsHaveTheirTexts) {
    const char* const paramError = "Failed, Boot parameter requires valid boot mode option";
    const char* const notSupported = "Failed, Feature not supported for this adapter";
    const Refusal refusals[] = {
        {BIRCH, BIOS, "-n 4", RC_PARAM_ERROR, paramError},
        {BIRCH, UEFI, "-m true", RC_PARAM_ERROR, paramError},
        {BIRCH, UEFI, "-l true", RC_PARAM_ERROR, paramError},
        {BIRCH, NVME, "-n 1 -o 3 -l true -p " + TARGET, RC_INVALID_PARAMETER, INVALID},
        {BIRCH, UEFI, "-n 1 -o 3 -p " + NVME_TARGET, RC_INVALID_PARAMETER, INVALID}, // 36 is of the other group
        {BIRCH, NVME, "-d true", RC_INVALID_FIELD, "Failed, Boot parameter not supported with UEFI boot mode option"},
        {EIGHT_G, BIOS, "-m true", RC_FEATURE_NOT_SUPPORTED, notSupported},
        {EIGHT_G, BIOS, "-l true", RC_FEATURE_NOT_SUPPORTED, notSupported},
        {BIRCH, BIOS, "-n 1", RC_NEED_ADD_FCP_PARAMS, "Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets"},
        {BIRCH, NVME, "-n 1", RC_NEED_ADD_NVME_PARAMS,
         "Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets"},
    };
    for (const Refusal& refusal : refusals) {
        ExpectRefusal(refusal);
    }
}

/// The drives of the other group are not options here.
TEST_F(BootConfigExtOptionsTest, KnowsNoDrives) {
    ExpectStaged(UEFI, "--drive-0 " + TARGET + "-3 -j " + TARGET + "-3", Snapshot(UEFI));
}

} // namespace
