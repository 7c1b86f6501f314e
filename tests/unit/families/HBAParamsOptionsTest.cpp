#include "HBAParamsTest.h"

#include "TraceLog.h"

using namespace family_test;

namespace {

const Adapters NONE = {};

/// A number option: 0 to `maximum`.
struct NumberOption {
    const char* longName;
    const char* shortName;
    const char* key;
    VX_UINT32 maximum;
    Adapters refusing;
};
const NumberOption NUMBERS[] = {
    {"--hard-loop-id", "-l", "Hard_Loop_ID", 125, TEN_GS},
    {"--loop-reset-delay", "-r", "Loop_Reset_Delay", 255, NONE},
    {"--interrupt-delay-timer", "-e", "Interrupt_Delay_Timer", 255, {A_WILLOW}},
    {"--execution-throttle", "-x", "Execution_Throttle", 65535, ROWAN_FCS + ROWAN_CNAS + UEFI_CAPABLES},
    {"--login-retry-count", "-u", "Login_Retry_Count", 255, NONE},
    {"--port-down-retry-count", "-w", "Port_Down_Retry_Count", 255, NONE},
    {"--link-down-timeout", "-o", "Link_Down_Timeout", 240, NONE},
    {"--luns-per-target", "-y", "Luns_Per_Target", 256, NONE},
};

/// A switch: "true" or "false".
struct SwitchOption {
    const char* longName;
    const char* shortName;
    const char* key;
    bool isInverted; ///< inverted in the file
    Adapters refusing;
};
const SwitchOption SWITCHES[] = {
    {"--enable-bios", "-b", "Disable_BIOS", true, NONE},
    {"--enable-hard-loop-id", "-p", "Enable_Hard_Loop_Id", false, TEN_GS},
    {"--enable-fc-tape", "-f", "Enable_Fibre_Channel_Tape_Support", false, NONE},
    {"--enable-lip-full-login", "-g", "Enable_Lip_Full_Login", false, TEN_GS},
    {"--enable-target-reset", "-a", "Enable_Target_Reset", false, NONE},
    {"--enable-lr", "-k", "Enable_LR", false, {A_4G, A_WILLOW}},
    {"--enable-fabric-assigned-wwn", "-n", "Enable_Fabric_Assign_WWN", false, Adapters{A_4G, A_8G} + TEN_GS},
    {"--enable-fwcm", "-q", "Disable_SCM", true,
     Adapters{A_4G, A_8G, A_NO_FAMILY, A_OTHER_VENDOR} + ROWAN_FCS + TEN_GS},
    {"--virtual-lane", "-j", "Enable_Virtual_Lane", false,
     Adapters{A_4G, A_8G, A_NO_FAMILY, A_OTHER_VENDOR, A_ALDER} + ROWAN_FCS + TEN_GS + LARCHES},
};

std::string InUpperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
    return text;
}

class HBAParamsOptionsTest : public HBAParamsTestBase {
protected:
    /// Both names, in both letter cases.
    static std::vector<std::string> NamesOf(const char* longName, const char* shortName) {
        return {longName, shortName, InUpperCase(longName), InUpperCase(shortName)};
    }
    /// Expects an option with this value, in each form of its name, to stage this in a fresh snapshot.
    void ExpectStagedInAllForms(const char* longName, const char* shortName, const std::string& value,
                                const std::string& key, const std::string& staged) const {
        for (const std::string& name : NamesOf(longName, shortName)) {
            Stage(SNAPSHOT);
            ExpectStaged(name + " " + value, WithLine(SNAPSHOT, key, staged));
        }
    }
    /// Runs `setFile` on a snapshot and gives its code.
    ResultCode CodeOf(const std::string& options, const std::string& content = SNAPSHOT) const {
        Stage(content);
        return Run("setFile", options).code;
    }
};

TEST_F(HBAParamsOptionsTest, NumbersTakeTheirRange) {
    for (const NumberOption& option : NUMBERS) {
        SetAdapter(IsIn(option.refusing, A_8G) ? A_BIRCH : A_8G);
        for (VX_UINT32 number = 0; number <= option.maximum; number += number < 257 ? 1 : 5441) {
            const std::string text = std::to_string(number);
            Stage(SNAPSHOT);
            ExpectStaged(option.longName + (" " + text), WithLine(SNAPSHOT, option.key, text));
        }
        const std::string maximum = std::to_string(option.maximum);
        ExpectStagedInAllForms(option.longName, option.shortName, "0", option.key, "0");
        ExpectStagedInAllForms(option.longName, option.shortName, maximum, option.key, maximum);
        for (const std::string& name : NamesOf(option.longName, option.shortName)) {
            Stage(SNAPSHOT);
            ExpectRefused(name + " " + std::to_string(option.maximum + 1), RC_INVALID_PARAMETER);
        }
    }
}

/// Base 10, the low 32 bits, and 0 for text that is not a number.
TEST_F(HBAParamsOptionsTest, NumbersAreReadLoosely) {
    struct Case {
        const char* text;
        const char* staged; ///< null: refused
    };
    const Case cases[] = {
        {"abc", "0"},
        {"", "0"},
        {"7up", "7"},
        {"0x10", "0"},
        {"010", "10"},
        {"+5", "5"},
        {"4294967296", "0"},               // 2^32
        {"4294967297", "1"},               // 2^32 + 1
        {"4294967551", nullptr},           // 2^32 + 255: fits some of the ranges, see below
        {"4294967295", nullptr},           // 2^32 - 1
        {"-1", nullptr},                   // 2^64 - 1, whose low half is 2^32 - 1
        {"-4294967295", "1"},              // 2^64 - 2^32 + 1
        {"18446744073709551615", nullptr}, // 2^64 - 1
        {"99999999999999999999", nullptr}, // reads as the largest number
        {"1-", "1"},
        {"--what", "0"},
    };
    for (const NumberOption& option : NUMBERS) {
        SetAdapter(IsIn(option.refusing, A_8G) ? A_BIRCH : A_8G);
        for (const Case& row : cases) {
            const std::string options = option.longName + std::string(" ") + row.text + " ."; // an empty word is one
            Stage(SNAPSHOT);
            if (std::string(row.text) == "4294967551" && option.maximum >= 255) {
                ExpectStaged(options, WithLine(SNAPSHOT, option.key, "255"));
            } else if (row.staged == nullptr) {
                ExpectRefused(options, RC_INVALID_PARAMETER);
            } else {
                ExpectStaged(options, WithLine(SNAPSHOT, option.key, row.staged));
            }
        }
    }
}

TEST_F(HBAParamsOptionsTest, SwitchesTakeTrueAndFalse) {
    for (const SwitchOption& option : SWITCHES) {
        for (const char* const value : {"true", "false", "TRUE", "fAlSe"}) {
            const bool isTrue = *value == 't' || *value == 'T';
            ExpectStagedInAllForms(option.longName, option.shortName, value, option.key,
                                   isTrue != option.isInverted ? "1" : "0");
        }
        for (const char* const value : {"1", "0", "on", "yes", "tru", "truee", "true=", ""}) {
            Stage(SNAPSHOT);
            ExpectRefused(option.longName + std::string(" ") + value + " .", RC_INVALID_PARAMETER);
        }
    }
}

TEST_F(HBAParamsOptionsTest, AdaptersAreLookedAtAheadOfValues) {
    for (const AdapterRow& row : ADAPTERS) {
        SetAdapter(row.adapter);
        for (const NumberOption& option : NUMBERS) {
            const bool isRefused = IsIn(option.refusing, row.adapter);
            const std::string name = option.longName + std::string(" ");
            EXPECT_EQ(CodeOf(name + "1"), isRefused ? RC_FEATURE_NOT_SUPPORTED : RC_SUCCESS) << row.name << " " << name;
            EXPECT_EQ(Staged(), isRefused ? SNAPSHOT : WithLine(SNAPSHOT, option.key, "1"));
            EXPECT_EQ(CodeOf(name + "65536"), isRefused ? RC_FEATURE_NOT_SUPPORTED : RC_INVALID_PARAMETER)
                << row.name << " " << name;
        }
        for (const SwitchOption& option : SWITCHES) {
            const bool isRefused = IsIn(option.refusing, row.adapter);
            const std::string name = option.longName + std::string(" ");
            EXPECT_EQ(CodeOf(name + "true"), isRefused ? RC_FEATURE_NOT_SUPPORTED : RC_SUCCESS)
                << row.name << " " << name;
            EXPECT_EQ(Staged(), isRefused ? SNAPSHOT : WithLine(SNAPSHOT, option.key, option.isInverted ? "0" : "1"));
            EXPECT_EQ(CodeOf(name + "x"), isRefused ? RC_FEATURE_NOT_SUPPORTED : RC_INVALID_PARAMETER)
                << row.name << " " << name;
        }
        const bool isWillow = row.adapter == A_WILLOW;
        EXPECT_EQ(CodeOf(std::string("-m ") + TIMER_EXPIRES), isWillow ? RC_FEATURE_NOT_SUPPORTED : RC_SUCCESS)
            << row.name;
        EXPECT_EQ(CodeOf("-m x"), isWillow ? RC_FEATURE_NOT_SUPPORTED : RC_INVALID_PARAMETER) << row.name;
    }
}

TEST_F(HBAParamsOptionsTest, FrameSizes) {
    for (const AdapterRow& row : ADAPTERS) {
        SetAdapter(row.adapter);
        for (const char* const size : {"512", "1024", "2048"}) {
            ExpectStagedInAllForms("--frame-size", "-z", size, "Frame_Size", size);
        }
        Stage(SNAPSHOT);
        if (row.adapter == A_ENCRYPTION) {
            ExpectStagedInAllForms("--frame-size", "-z", "2112", "Frame_Size", "2112");
        } else {
            ExpectRefused("--frame-size 2112", RC_INVALID_PARAMETER);
        }
        for (const char* const size : {"0", "511", "513", "1023", "1025", "2047", "2049", "2111", "2113", "4096", "abc",
                                       "-1", "4294969344 x"}) { // the last is 2^32 + 2048
            Stage(SNAPSHOT);
            if (*size == '4' && size[1] == '2') {
                ExpectStaged(std::string("-z ") + size, SNAPSHOT);
            } else {
                ExpectRefused(std::string("-z ") + size, RC_INVALID_PARAMETER);
            }
        }
    }
}

/// Data rates that an adapter accepts if its port supports all speeds.
TEST_F(HBAParamsOptionsTest, DataRates) {
    struct Rate {
        const char* word;
        VX_UINT8 bit; ///< of `SupportedSpeeds`; 0: no speed
        const char* code;
    };
    const Rate rates[] = {
        {"1_Gbps", 0x01, "0"}, {"2_Gbps", 0x02, "1"},  {"Auto", 0, "2"},       {"4_Gbps", 0x08, "3"},
        {"8_Gbps", 0x10, "4"}, {"16_Gbps", 0x20, "5"}, {"32_Gbps", 0x40, "6"}, {"64_Gbps", 0x80, "7"},
    };
    const std::map<Adapter, std::vector<std::string>> limited = {
        {A_N4, {"Auto", "8_Gbps", "16_Gbps"}},
        {A_MAPLE, {"Auto", "8_Gbps", "16_Gbps"}},
        {A_MEZZ_32G, {"Auto", "16_Gbps", "32_Gbps"}},
        {A_MEZZ_16G, {"Auto", "16_Gbps"}},
    };
    for (const AdapterRow& row : ADAPTERS) {
        SetAdapter(row.adapter);
        const bool isReadOnly = IsIn(TEN_GS + Adapters{A_CEDAR}, row.adapter);
        for (const Rate& rate : rates) {
            const auto limit = limited.find(row.adapter);
            const bool isExcluded = limit != limited.end() && std::find(limit->second.begin(), limit->second.end(),
                                                                        rate.word) == limit->second.end();
            for (const int speeds : {0xFF, 0x00, +rate.bit, 0xFF & ~rate.bit}) {
                port->SupportedSpeeds = static_cast<VX_UINT8>(speeds);
                const bool isSupported = rate.bit == 0 || (speeds & rate.bit) != 0;
                const std::string options = std::string("--data-rate ") + rate.word;
                SCOPED_TRACE(std::string(row.name) + " " + std::to_string(speeds));
                Stage(SNAPSHOT);
                if (isReadOnly) {
                    ExpectRefused(options, RC_READ_ONLY_MODE);
                } else if (isExcluded || !isSupported) {
                    ExpectRefused(options, RC_INVALID_PARAMETER);
                } else {
                    ExpectStagedInAllForms("--data-rate", "-d", rate.word, "Data_Rate", rate.code);
                    ExpectStagedInAllForms("--data-rate", "-d", InUpperCase(rate.word), "Data_Rate", rate.code);
                }
            }
        }
        port->SupportedSpeeds = 0xFF;
        for (const char* const word : {"10_Gbps", "25_Gbps", "16", "5", "16_Gbps_", "_Gbps", ""}) {
            Stage(SNAPSHOT);
            ExpectRefused(std::string("-d ") + word + " .", isReadOnly ? RC_READ_ONLY_MODE : RC_INVALID_PARAMETER);
        }
    }
}

TEST_F(HBAParamsOptionsTest, ConnectionOptions) {
    for (const AdapterRow& row : ADAPTERS) {
        SetAdapter(row.adapter);
        const bool isMaple = row.adapter == A_MAPLE;
        const bool isRateLimited = IsIn(ROWAN_FCS + UEFI_CAPABLES, row.adapter);
        for (const VX_UINT8 speeds : std::initializer_list<VX_UINT8>{0x00, 0x7F, 0x80, 0xFF}) {
            port->SupportedSpeeds = speeds;
            for (int rate = 0; rate < 8; ++rate) {
                SCOPED_TRACE(std::string(row.name) + " speeds " + std::to_string(speeds) + " rate " +
                             std::to_string(rate));
                const std::string content = WithLine(SNAPSHOT, "Data_Rate", std::to_string(rate));
                Stage(content);
                if (isMaple) {
                    ExpectRefused("-c Loop_Only", RC_INVALID_PARAMETER);
                } else if (speeds >= 0x80 || row.adapter == A_BIRCH_64G || (isRateLimited && rate > 4)) {
                    ExpectRefused("-c Loop_Only", RC_INVALID_FIELD);
                } else {
                    ExpectStaged("-c Loop_Only", WithLine(content, "Connection_Options", "0"));
                }
                Stage(content);
                ExpectStaged("-c Point_To_Point_Only", content);
                Stage(content);
                if (isMaple) {
                    ExpectRefused("-c Loop_Preferred_Otherwise_Point_To_Point", RC_INVALID_PARAMETER);
                } else {
                    ExpectStaged("-c Loop_Preferred_Otherwise_Point_To_Point",
                                 WithLine(content, "Connection_Options", "2"));
                }
                Stage(content);
                ExpectRefused("-c Loop", RC_INVALID_PARAMETER);
            }
        }
        Stage(SNAPSHOT);
        ExpectRefused("-c 1", RC_INVALID_PARAMETER);
        Stage(WithLine(SNAPSHOT, "Connection_Options", "2"));
        ExpectStaged("-c POINT_TO_POINT_ONLY", SNAPSHOT);
    }
    SetAdapter(A_8G);
    port->SupportedSpeeds = 0x7F;
    ExpectStagedInAllForms("--connection-options", "-c", "Loop_Only", "Connection_Options", "0");
    ExpectStagedInAllForms("--connection-options", "-c", "lOOP_oNLY", "Connection_Options", "0");
    ExpectStagedInAllForms("--connection-options", "-c", "loop_preferred_otherwise_point_to_point",
                           "Connection_Options", "2");
}

/// A loop and 16 Gbps or more are mutually exclusive on some adapters, and the two options check different things.
TEST_F(HBAParamsOptionsTest, LoopAndDataRate) {
    const std::string loop = WithLine(SNAPSHOT, "Connection_Options", "0");
    for (const AdapterRow& row : ADAPTERS) {
        SetAdapter(row.adapter);
        SCOPED_TRACE(row.name);
        // Other adapters with 64 Gbps either don't allow a loop or don't allow setting the rate.
        if (!IsIn({A_ROWAN_FC, A_ROWAN_FC_MEZZ, A_LARCH, A_ALDER, A_BIRCH, A_ENCRYPTION}, row.adapter)) {
            continue;
        }
        port->SupportedSpeeds = 0x7F;
        for (const char* const rate : {"16_Gbps", "32_Gbps"}) {
            const std::string option = std::string("-d ") + rate;
            const std::string code = *rate == '1' ? "5" : "6";
            // The same command
            Stage(SNAPSHOT);
            ExpectRefused(option + " -c Loop_Only", RC_INVALID_FIELD);
            ExpectRefused("-c Loop_Only " + option, RC_INVALID_FIELD);
            Stage(loop);
            ExpectStaged(option + " -c Point_To_Point_Only", WithLine(SNAPSHOT, "Data_Rate", code));
            // Across commands
            Stage(loop);
            ExpectRefused(option, RC_INVALID_FIELD);
            Stage(WithLine(SNAPSHOT, "Connection_Options", "2"));
            ExpectStaged(option, WithLine(Staged(), "Data_Rate", code));
            // A loop in last position is not an option, so the file counts.
            Stage(loop);
            ExpectRefused(option + " -c", RC_INVALID_FIELD);
            Stage(SNAPSHOT);
            ExpectStaged(option + " -c", WithLine(SNAPSHOT, "Data_Rate", code));
            // A file without the key doesn't matter.
            Stage("Hard_Loop_ID=33\n");
            ExpectStaged(option, "Hard_Loop_ID=33\nData_Rate=" + code + "\n");
        }
        for (const char* const rate : {"Auto", "8_Gbps", "1_Gbps"}) {
            Stage(loop);
            EXPECT_EQ(Run("setFile", std::string("-d ") + rate).code, RC_SUCCESS);
            Stage(SNAPSHOT);
            EXPECT_EQ(Run("setFile", std::string("-c Loop_Only -d ") + rate).code, RC_SUCCESS);
        }
        // Lowering the rate and selecting a loop takes two commands.
        Stage(WithLine(SNAPSHOT, "Data_Rate", "5"));
        ExpectRefused("-d 8_Gbps -c Loop_Only", RC_INVALID_FIELD);
        ExpectStaged("-d 8_Gbps", WithLine(SNAPSHOT, "Data_Rate", "4"));
        ExpectStaged("-c Loop_Only", WithLine(loop, "Data_Rate", "4"));
        Stage("Hard_Loop_ID=33\n");
        ExpectStaged("-c Loop_Only", "Hard_Loop_ID=33\nConnection_Options=0\n");
        // 64 Gbps, where the port has it and the file has a loop.
        port->SupportedSpeeds = 0xFF;
        Stage(loop);
        ExpectRefused("-d 64_Gbps", RC_INVALID_FIELD);
    }
    // These have no such rule; 16 Gbps is only rejected because it is not supported.
    for (const Adapter other : {A_4G, A_8G, A_NO_FAMILY, A_OTHER_VENDOR}) {
        SetAdapter(other);
        port->SupportedSpeeds = 0x7F;
        Stage(loop);
        ExpectStaged("-d 16_Gbps", WithLine(loop, "Data_Rate", "5"));
        Stage(SNAPSHOT);
        ExpectStaged("-c Loop_Only -d 32_Gbps", WithLine(loop, "Data_Rate", "6"));
    }
}

TEST_F(HBAParamsOptionsTest, OperationModes) {
    ExpectStagedInAllForms("--operation-mode", "-m", TIMER_EXPIRES, "Operation_Mode", "5");
    ExpectStagedInAllForms("--operation-mode", "-m", TIMER_OR_IDLE, "Operation_Mode", "6");
    ExpectStagedInAllForms("--operation-mode", "-m", InUpperCase(TIMER_EXPIRES), "Operation_Mode", "5");
    // Mode 0 also resets the timer.
    const std::string mode0 = WithLine(WithLine(SNAPSHOT, "Operation_Mode", "0"), "Interrupt_Delay_Timer", "0");
    for (const char* const name : {"-m ", "-M ", "--operation-mode ", "--Operation-Mode "}) {
        Stage(SNAPSHOT);
        ExpectStaged(name + std::string(EVERY_COMPLETION), mode0);
        Stage(SNAPSHOT);
        ExpectStaged(name + InUpperCase(EVERY_COMPLETION), mode0);
    }
    for (const char* const value : {"0", "5", "6", "Interrupt", ""}) {
        Stage(SNAPSHOT);
        ExpectRefused(std::string("-m ") + value + " .", RC_INVALID_PARAMETER);
    }
}

TEST_F(HBAParamsOptionsTest, TimerAndMode) {
    const std::string mode0 = WithLine(WithLine(SNAPSHOT, "Operation_Mode", "0"), "Interrupt_Delay_Timer", "0");
    const std::string every = std::string(" -m ") + EVERY_COMPLETION;
    // Inside one command
    Stage(SNAPSHOT);
    ExpectRefused("-e 5" + every, RC_INVALID_DATA);
    ExpectRefused("-e 255" + every, RC_INVALID_DATA);
    ExpectStaged("-e 0" + every, mode0);
    Stage(mode0);
    ExpectStaged(std::string("-e 5 -m ") + TIMER_EXPIRES,
                 WithLine(WithLine(SNAPSHOT, "Operation_Mode", "5"), "Interrupt_Delay_Timer", "5"));
    // Across commands
    Stage(mode0);
    ExpectRefused("-e 5", RC_INVALID_DATA);
    ExpectStaged("-e 0", mode0);
    ExpectStaged("-e abc", mode0);
    // In mode 0 the value 0 is accepted but not staged: the file is unchanged.
    const std::string odd = WithLine(SNAPSHOT, "Operation_Mode", "0");
    Stage(odd);
    ExpectStaged("-e 0", odd);
    // The range is checked before the mode.
    Stage(mode0);
    ExpectRefused("-e 256", RC_INVALID_PARAMETER);
    ExpectRefused("-e 256" + every, RC_INVALID_PARAMETER);
    // A file without the key has no mode.
    Stage("Hard_Loop_ID=33\n");
    ExpectStaged("-e 5", "Hard_Loop_ID=33\nInterrupt_Delay_Timer=5\n");
    // Other modes don't require a timer.
    for (const char* const mode : {"5", "6"}) {
        Stage(WithLine(SNAPSHOT, "Operation_Mode", mode));
        ExpectStaged("-e 0", WithLine(Staged(), "Interrupt_Delay_Timer", "0"));
    }
}

/// One command is all or nothing: valid options before a rejected one leave the file untouched.
TEST_F(HBAParamsOptionsTest, ARefusalLeavesTheFile) {
    Stage(SNAPSHOT);
    ExpectRefused("-z 512 -u 256", RC_INVALID_PARAMETER);
    ExpectRefused("-c Loop_Only -d 16_Gbps -z 512", RC_INVALID_FIELD);
    ExpectRefused("-z 512 -l 1 -r 2 -u 3 -w 4 -o 5 -y 6 -b true -x 1", RC_FEATURE_NOT_SUPPORTED);
    ExpectRefused(std::string("-z 512 -e 5 -m ") + EVERY_COMPLETION, RC_INVALID_DATA);
    ExpectRefused("-z 512 -b true -j maybe", RC_INVALID_PARAMETER);
    SetAdapter(A_CEDAR);
    ExpectRefused("-z 512 -d Auto", RC_READ_ONLY_MODE);
    // An accepted command that changes nothing doesn't touch it either.
    const auto identity = FileIdentity();
    ExpectStaged("", SNAPSHOT);
    ExpectStaged("-z", SNAPSHOT);
    EXPECT_EQ(FileIdentity(), identity);
}

/// Options are checked in the order of their table, not of the command. The trace shows which one was rejected;
/// each is removed in turn.
TEST_F(HBAParamsOptionsTest, OrderOfExamination) {
    const std::vector<std::pair<std::string, std::string>> table = {
        {"connection-options", "-c"},
        {"data-rate", "-d"},
        {"operation-mode", "-m"},
        {"frame-size", "-z"},
        {"hard-loop-id", "-l"},
        {"loop-reset-delay", "-r"},
        {"interrupt-delay-timer", "-e"},
        {"execution-throttle", "-x"},
        {"login-retry-count", "-u"},
        {"port-down-retry-count", "-w"},
        {"link-down-timeout", "-o"},
        {"luns-per-target", "-y"},
        {"enable-bios", "-b"},
        {"enable-hard-loop-id", "-p"},
        {"enable-fc-tape", "-f"},
        {"enable-lip-full-login", "-g"},
        {"enable-target-reset", "-a"},
        {"enable-lr", "-k"},
        {"enable-fabric-assigned-wwn", "-n"},
        {"enable-fwcm", "-q"},
        {"virtual-lane", "-j"},
    };
    Stage(SNAPSHOT);
    for (std::size_t first = 0; first < table.size(); ++first) {
        std::string options;
        for (std::size_t i = table.size(); i > first; --i) { // in reverse
            options += table[i - 1].second + " 65536 ";
        }
        const TraceLog log("1");
        EXPECT_NE(Run("setFile", options).code, RC_SUCCESS);
        std::vector<std::string> refused;
        for (const std::string& line : TraceLog::Lines()) {
            if (line.ends_with("=65536 not supported")) {
                refused.push_back(line);
            }
        }
        EXPECT_EQ(refused, (std::vector<std::string>{"INFORMATION: PhysicalPortHBAParamsCmdsProcessor::"
                                                     "UpdateHBAParamsInFile: " +
                                                     table[first].first + "=65536 not supported"}));
    }
}

TEST_F(HBAParamsOptionsTest, WordsOfACommand) {
    // An option without a following word is absent.
    Stage(SNAPSHOT);
    ExpectStaged("--frame-size", SNAPSHOT);
    // The first of two counts, whichever name it has.
    ExpectStaged("-z 512 -z 1024", WithLine(SNAPSHOT, "Frame_Size", "512"));
    ExpectStaged("--frame-size 1024 -z 4096", WithLine(SNAPSHOT, "Frame_Size", "1024"));
    // The value is the next word: here "-z" for one option, and no "-z" for the other.
    Stage(SNAPSHOT);
    ExpectStaged("-u -z 512", WithLine(WithLine(SNAPSHOT, "Login_Retry_Count", "0"), "Frame_Size", "512"));
    // Unknown words and malformed options are ignored.
    Stage(SNAPSHOT);
    ExpectStaged("what --frame 512 -zz 512 -z=512 -u 7", WithLine(SNAPSHOT, "Login_Retry_Count", "7"));
}

TEST_F(HBAParamsOptionsTest, AllOptionsAtOnce) {
    SetAdapter(A_8G);
    // Without what 8G doesn't support: fabric assigned WWN, FWCM and virtual lanes.
    Stage(SNAPSHOT);
    ExpectStaged(std::string("-y 256 -o 240 -w 255 -u 254 -x 65535 -e 253 -r 252 -l 125 -z 512 -m ") + TIMER_EXPIRES +
                     " -d 8_Gbps -c Loop_Only -k true -a true -g false -f false -p false -b true",
                 "Connection_Options=0\n"
                 "Data_Rate=4\n"
                 "Disable_BIOS=0\n"
                 "Disable_SCM=0\n"
                 "Enable_Fabric_Assign_WWN=1\n"
                 "Enable_Fibre_Channel_Tape_Support=0\n"
                 "Enable_Hard_Loop_Id=0\n"
                 "Enable_LR=1\n"
                 "Enable_Lip_Full_Login=0\n"
                 "Enable_Receive_Out_Of_Order_Frames=1\n"
                 "Enable_Target_Reset=1\n"
                 "Enable_Virtual_Lane=1\n"
                 "Execution_Throttle=65535\n"
                 "Frame_Size=512\n"
                 "Hard_Loop_ID=125\n"
                 "Interrupt_Delay_Timer=253\n"
                 "Link_Down_Timeout=240\n"
                 "Login_Retry_Count=254\n"
                 "Loop_Reset_Delay=252\n"
                 "Luns_Per_Target=256\n"
                 "Operation_Mode=5\n"
                 "Port_Down_Retry_Count=255\n");
}

} // namespace
