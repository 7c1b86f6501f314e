#include "BootTest.h"

#include "TraceLog.h"

using namespace family_test;

namespace {

class BootOptionsTest : public BootGroupTest {
protected:
    std::string ClassName() const { return std::string("PhysicalPort") + group.file + "CmdsProcessor"; }
    /// The traces so far that contain this text.
    static Calls LinesWith(const std::string& text) {
        Calls lines = TraceLog::Steps();
        std::erase_if(lines, [&](const std::string& line) { return line.find(text) == std::string::npos; });
        return lines;
    }
};

INSTANTIATE_TEST_SUITE_P(Groups, BootOptionsTest, BOOT_GROUPS, NameOfGroup);

/// Flags accepted by each adapter in each mode: the adapter is checked first, then the mode, then the word.
TEST_P(BootOptionsTest, FlagOptions) {
    for (const ChipRow& chip : CHIPS) {
        SetChip(*port, chip.chip);
        for (const Mode mode : Modes()) {
            if (mode != BIOS && !IsUefiCapable(chip.chip)) {
                continue;
            }
            bfsMode = mode;
            for (const FlagOfBoot& flag : BOOT_FLAGS) {
                SCOPED_TRACE(std::string(chip.name) + " " + flag.longName + " in mode " + std::to_string(mode));
                const std::string name = flag.longName;
                ResultCode code = RC_SUCCESS;
                if (name == "--fabric-assigned-boot-lun") {
                    code = HasFabricLun(chip.chip) ? RC_SUCCESS : RC_FEATURE_NOT_SUPPORTED;
                } else if (name == "--selectable-boot") {
                    code = mode == BIOS ? RC_SUCCESS : RC_INVALID_FIELD;
                } else if (name != "--enable-bfs") {
                    code = !IsUefiCapable(chip.chip) ? RC_FEATURE_NOT_SUPPORTED
                           : mode == BIOS            ? RC_PARAM_ERROR
                                                     : RC_SUCCESS;
                }
                for (const char* const word : {"true", "false"}) {
                    if (code == RC_SUCCESS) {
                        ExpectStaged(mode, name + " " + word,
                                     WithLine(Snapshot(mode), flag.key, (*word == 't') != flag.isInverted ? "1" : "0"));
                    } else {
                        Stage(Snapshot(mode));
                        ExpectRefused(mode, name + " " + word, code);
                    }
                }
                Stage(Snapshot(mode));
                ExpectRefused(mode, name + " maybe", code == RC_SUCCESS ? RC_INVALID_PARAMETER : code);
            }
        }
    }
}

TEST_P(BootOptionsTest, FlagWords) {
    for (const FlagOfBoot& flag : BOOT_FLAGS) {
        const Mode mode = flag.biosLabel != nullptr ? BIOS : UEFI;
        const std::string longName = flag.longName;
        for (const std::string& name :
             {longName, InUpperCase(longName), std::string(flag.shortName), InUpperCase(flag.shortName)}) {
            for (const char* const word : {"true", "false", "TRUE", "fAlSe"}) {
                const bool isTrue = *word == 't' || *word == 'T';
                ExpectStaged(mode, name + " " + word,
                             WithLine(Snapshot(mode), flag.key, isTrue != flag.isInverted ? "1" : "0"));
            }
        }
        for (const std::string& word :
             {std::string("1"), std::string("0"), std::string("on"), std::string("tru"), std::string("truee"),
              std::string("true="), std::string("%s%n"), std::string(), std::string(100000, 't')}) {
            Stage(Snapshot(mode));
            ExpectRefused(mode, longName + " " + word + " .", RC_INVALID_PARAMETER);
        }
    }
}

TEST_P(BootOptionsTest, RefusalsHaveTheirTexts) {
    const Refusal refusals[] = {
        {BIRCH, BIOS, "-g true", RC_PARAM_ERROR, group.paramError},
        {BIRCH, BIOS, "-a 1", RC_INVALID_PARAMETER, INVALID},
        {BIRCH, UEFI, "-d true", RC_INVALID_FIELD, "Failed, Boot parameter not supported with UEFI boot mode option"},
        {EIGHT_G, BIOS, "-f true", RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
    };
    for (const Refusal& refusal : refusals) {
        ExpectRefusal(refusal);
    }
}

/// One command is all or nothing: valid options before a rejected one leave the file untouched.
TEST_P(BootOptionsTest, ARefusalLeavesTheFile) {
    Stage(Snapshot(UEFI));
    ExpectRefused(UEFI, "-a true -g 1", RC_INVALID_PARAMETER);
    ExpectRefused(UEFI, "-a true -f false -d true", RC_INVALID_FIELD);
    ExpectRefused(BIOS, "-a true -f false -d false -e true", RC_PARAM_ERROR); // nor is the mode staged
    SetChip(*port, EIGHT_G);
    ExpectRefused(BIOS, "-a true -e true", RC_FEATURE_NOT_SUPPORTED);
}

/// Options are checked in the order of their table, not of the command. The trace shows which one was rejected;
/// each is removed in turn.
TEST_P(BootOptionsTest, OrderOfExamination) {
    const std::vector<std::pair<std::string, std::string>> table = {
        {"enable-bfs", "-a"},      {"fabric-assigned-boot-lun", "-f"}, {"selectable-boot", "-d"},
        {"selective-login", "-e"}, {"selective-lun-login", "-c"},      {"world-login", "-g"},
    };
    Stage(Snapshot(UEFI));
    for (std::size_t first = 0; first < table.size(); ++first) {
        std::string options;
        for (std::size_t i = table.size(); i > first; --i) { // in reverse
            options += table[i - 1].second + " %d" + std::to_string(i) + " ";
        }
        const TraceLog log("4");
        ExpectRefused(UEFI, options, table[first].first == "selectable-boot" ? RC_INVALID_FIELD : RC_INVALID_PARAMETER);
        EXPECT_EQ(LinesWith("InFile: "),
                  Calls{"DEBUG: " + ClassName() + "::UpdateBootConfigInFile: " + table[first].first + "=%d" +
                        std::to_string(first + 1) + " not supported"});
    }
}

/// Both groups use the same names for their operations.
TEST_P(BootOptionsTest, FailuresAreTraced) {
    {
        const TraceLog log("4");
        RunIn(BIOS, "setFile", "-a maybe");
        EXPECT_EQ(LinesWith(ClassName()),
                  (Calls{"DEBUG: " + ClassName() + "::UpdateBootConfigInFile: enable-bfs=maybe not supported",
                         "DEBUG: " + ClassName() + "::CmdSetFileCommon: UpdateBootConfigInFile failed with uRet=6"}));
    }
    RemoveFiles();
    std::filesystem::create_directory(FilePath());
    const TraceLog log("4");
    RunIn(BIOS, "setFile");
    EXPECT_EQ(LinesWith(ClassName()),
              (Calls{"DEBUG: " + ClassName() + "::CreateBootConfigFile: file ops failed",
                     "DEBUG: " + ClassName() + "::CmdSetFileCommon: CreateBootConfigFile failed"}));
}

TEST_P(BootOptionsTest, WordsOfACommand) {
    // An option in last position counts as absent.
    ExpectStaged(BIOS, "--enable-bfs", Snapshot(BIOS));
    // The first of two counts, whichever name it has.
    ExpectStaged(BIOS, "-a true -a maybe", WithLine(Snapshot(BIOS), "Disable_BIOS", "0"));
    ExpectStaged(BIOS, "--enable-bfs true -a false", WithLine(Snapshot(BIOS), "Disable_BIOS", "0"));
    // The value is the following word, even another option's name.
    Stage(Snapshot(BIOS));
    ExpectRefused(BIOS, "-a -d true", RC_INVALID_PARAMETER);
    ExpectStaged(BIOS, "-x -a true", WithLine(Snapshot(BIOS), "Disable_BIOS", "0"));
    // Unknown words and malformed options are ignored.
    ExpectStaged(BIOS, "what --enable -aa false -a=true -d false", WithLine(Snapshot(BIOS), "Selectable_Boot", "0"));
}

/// The updater finds a key anywhere in a line; so no key may occur in another key's line.
TEST_P(BootOptionsTest, NoKeyStandsInTheLineOfAnother) {
    const std::string whole = Snapshot(UEFI) + "\n";
    std::vector<std::string> keys;
    for (std::size_t at = 0; at < whole.size() - 1;) {
        keys.push_back(whole.substr(at, whole.find('=', at) - at));
        at = whole.find('\n', at) + 1;
    }
    EXPECT_EQ(keys.size(), group.isExtended ? 72u : 23u);
    for (const std::string& key : keys) {
        for (const std::string& other : keys) {
            EXPECT_TRUE(key == other || other.find(key) == std::string::npos) << key << " in " << other;
        }
    }
}

} // namespace
