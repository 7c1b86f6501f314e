#include "HBAParamsFile.h"

#include "ChipFamilies.h"
#include "ResultCodes.h"
#include "TracedFunction.h"

namespace {

constexpr char KEY_CONNECTION_OPTIONS[] = "Connection_Options";
constexpr char KEY_DATA_RATE[] = "Data_Rate";
constexpr char KEY_INTERRUPT_DELAY_TIMER[] = "Interrupt_Delay_Timer";
constexpr char KEY_OPERATION_MODE[] = "Operation_Mode";

constexpr VX_UINT32 CONNECTION_LOOP_ONLY = 0;
constexpr VX_UINT32 MODE_EVERY_COMPLETION = 0;
/// Codes of `DataRate`, which are not in order of speed.
constexpr VX_UINT32 RATE_AUTO = 2;
constexpr VX_UINT32 RATE_8_GBPS = 4;

using Parameters = _VEXAPI_HBAParameters;

bool IsFrameSize(VX_UINT32 size) {
    return size == 512 || size == 1024 || size == 2048 || size == 2112;
}
bool IsOperationMode(VX_UINT32 mode) {
    return mode == 0 || mode == 5 || mode == 6;
}

template <auto field, auto accepts> constexpr StagedKey<Parameters> Key(const char* key) {
    return NumberKey<Parameters, field, accepts>(key);
}

/// The updater of cache files finds a key anywhere in a line: "Hard_Loop_ID" and "Enable_Hard_Loop_Id" are
/// distinguished only by the case of their last letters.
constexpr StagedKey<Parameters> KEYS[] = {
    Key<&Parameters::ConnetionOptions, IsBelow<3>>(KEY_CONNECTION_OPTIONS),
    Key<&Parameters::DataRate, IsBelow<8>>(KEY_DATA_RATE),
    Key<&Parameters::DisableBIOS, IsBelow<2>>("Disable_BIOS"),
    Key<&Parameters::DisableSCM, IsBelow<2>>("Disable_SCM"),
    Key<&Parameters::EnableFabricAssignWWN, IsBelow<2>>("Enable_Fabric_Assign_WWN"),
    Key<&Parameters::EnableFibreChannelTapeSupport, IsBelow<2>>("Enable_Fibre_Channel_Tape_Support"),
    Key<&Parameters::EnableHardLoopId, IsBelow<2>>("Enable_Hard_Loop_Id"),
    Key<&Parameters::EnableLRBit, IsBelow<2>>("Enable_LR"),
    Key<&Parameters::EnableLipFullLogin, IsBelow<2>>("Enable_Lip_Full_Login"),
    Key<&Parameters::RecvOutOfOrderDataBit, IsBelow<2>>("Enable_Receive_Out_Of_Order_Frames"),
    Key<&Parameters::EnableTargetReset, IsBelow<2>>("Enable_Target_Reset"),
    Key<&Parameters::EnableVirtualLane, IsBelow<2>>("Enable_Virtual_Lane"),
    Key<&Parameters::ExecutionThrottle, IsBelow<65536>>("Execution_Throttle"),
    Key<&Parameters::FrameSize, IsFrameSize>("Frame_Size"),
    Key<&Parameters::HardLoopId, IsBelow<126>>("Hard_Loop_ID"),
    Key<&Parameters::InterruptDelayTimer, IsBelow<256>>(KEY_INTERRUPT_DELAY_TIMER),
    Key<&Parameters::LinkDownTimeout, IsBelow<241>>("Link_Down_Timeout"),
    Key<&Parameters::LoginRetryCount, IsBelow<256>>("Login_Retry_Count"),
    Key<&Parameters::LoopResetDelay, IsBelow<256>>("Loop_Reset_Delay"),
    Key<&Parameters::MaxLunsPerTarget, IsBelow<257>>("Luns_Per_Target"),
    Key<&Parameters::OperationMode, IsOperationMode>(KEY_OPERATION_MODE),
    Key<&Parameters::PortDownRetryCount, IsBelow<256>>("Port_Down_Retry_Count"),
};

/// Context of an option's check, and where it is staged.
struct Staging {
    const StagedFile& file;
    const _vexapi_protocol_t& protocol;
    StagedValues& values;

    __CHIPPROPERTY Chip() const { return protocol.ChipProperty; }
    void Set(const char* key, VX_UINT32 number) const { values[key].Format("%u", number); }
    /// Reads a number from the file only.
    bool InFile(const char* key, VX_UINT32& number) const {
        TavuString text;
        if (!file.Read(key, text)) {
            return false;
        }
        number = ParseNumber(text.c_str());
        return true;
    }
    /// Reads a number staged by an earlier option of this command.
    bool InCommand(const char* key, VX_UINT32& number) const {
        const auto staged = values.find(key);
        if (staged == values.end()) {
            return false;
        }
        number = ParseNumber(staged->second.c_str());
        return true;
    }
};

/// Row: an option. `stage` checks the value and stages it.
struct Option {
    const Argument& argument;
    const char* key;
    ResultCode (*stage)(const Option& option, const char* value, const Staging& staging);
    bool (*isSupported)(__CHIPPROPERTY chip) = nullptr; ///< null: on every adapter
};

bool IsOneOf(const char* value, std::initializer_list<const char*> words) {
    return std::any_of(words.begin(), words.end(),
                       [value](const char* word) { return CompareNoCase(value, word) == 0; });
}

ResultCode StageNumber(const Option& option, const char* value, const Staging& staging) {
    const VX_UINT32 number = ParseNumber(value);
    if (number > option.argument.maximum) {
        return RC_INVALID_PARAMETER;
    }
    staging.Set(option.key, number);
    return RC_SUCCESS;
}

ResultCode StageWord(const Option& option, const char* value, const Staging& staging) {
    VX_UINT32 number = 0;
    if (!FindWord(option.argument.words, value, number)) {
        return RC_INVALID_PARAMETER;
    }
    staging.Set(option.key, number);
    return RC_SUCCESS;
}

/// Adapters on which loop topology excludes data rates of 16 Gbps and above.
bool LoopExcludes16Gbps(__CHIPPROPERTY chip) {
    return IsRowanFCAdapter(chip) || IsUefiCapableAdapter(chip);
}

constexpr VX_UINT8 SUPPORTS_64_GBPS = 0x80;

/// Checks the data rate in the file only, unlike the check of the data rate itself: this option is checked first,
/// and a command that both lowers the rate and selects a loop is rejected.
ResultCode StageConnectionOptions(const Option& option, const char* value, const Staging& staging) {
    if (CompareNoCase(value, OUT_POINT_TO_POINT_ONLY) != 0 && IsMapleAdapter(staging.Chip())) {
        return RC_INVALID_PARAMETER;
    }
    if (CompareNoCase(value, OUT_LOOP_ONLY) == 0) {
        VX_UINT32 rate = 0;
        if ((staging.protocol.SupportedSpeeds & SUPPORTS_64_GBPS) != 0 || Is64GAdapter(staging.Chip()) ||
            (LoopExcludes16Gbps(staging.Chip()) && staging.InFile(KEY_DATA_RATE, rate) && rate > RATE_8_GBPS)) {
            return RC_INVALID_FIELD;
        }
    }
    return StageWord(option, value, staging);
}

/// A settable data rate, with its bit of `SupportedSpeeds`. 10 Gbps can be shown but not set.
struct DataRate {
    VX_UINT8 bit;
    const char* word;
    VX_UINT32 code;
    bool isLoopExcluded;
};
constexpr DataRate DATA_RATES[] = {
    {SUPPORTS_64_GBPS, OUT_64GBPS, 7, true},
    {0x40, OUT_32GBPS, 6, true},
    {0x20, OUT_16GBPS, 5, true},
    {0x10, OUT_8GBPS, RATE_8_GBPS, false},
    {0x08, OUT_4GBPS, 3, false},
    {0x02, OUT_2GBPS, 1, false},
    {0x01, OUT_1GBPS, 0, false},
};

/// Some adapters accept only some of their speeds.
bool IsRateAllowed(__CHIPPROPERTY chip, const char* value) {
    if (Is16GN4FCOnlyAdapter(chip)) {
        return IsOneOf(value, {OUT_AUTO, OUT_8GBPS, OUT_16GBPS});
    }
    if (IsMezz32GAdapter(chip)) {
        return IsOneOf(value, {OUT_AUTO, OUT_16GBPS, OUT_32GBPS});
    }
    return !IsMezz16GAdapter(chip) || IsOneOf(value, {OUT_AUTO, OUT_16GBPS});
}

/// Whether this command selects a loop or, if it does not set the topology, the file does.
bool IsLoopAskedFor(const Staging& staging) {
    VX_UINT32 connection = CONNECTION_LOOP_ONLY + 1;
    return (staging.InCommand(KEY_CONNECTION_OPTIONS, connection) ||
            staging.InFile(KEY_CONNECTION_OPTIONS, connection)) &&
           connection == CONNECTION_LOOP_ONLY;
}

ResultCode StageDataRate(const Option& option, const char* value, const Staging& staging) {
    const __CHIPPROPERTY chip = staging.Chip();
    if (Is10GAdapter(chip) || IsCedarAdapter(chip)) {
        return RC_READ_ONLY_MODE;
    }
    if (!IsRateAllowed(chip, value)) {
        return RC_INVALID_PARAMETER;
    }
    const auto* rate = std::find_if(std::begin(DATA_RATES), std::end(DATA_RATES), [&](const DataRate& row) {
        return (staging.protocol.SupportedSpeeds & row.bit) != 0 && CompareNoCase(value, row.word) == 0;
    });
    if (rate == std::end(DATA_RATES)) {
        if (CompareNoCase(value, OUT_AUTO) != 0) {
            return RC_INVALID_PARAMETER;
        }
        staging.Set(option.key, RATE_AUTO);
        return RC_SUCCESS;
    }
    if (rate->isLoopExcluded && LoopExcludes16Gbps(chip) && IsLoopAskedFor(staging)) {
        return RC_INVALID_FIELD;
    }
    staging.Set(option.key, rate->code);
    return RC_SUCCESS;
}

/// Mode 0 doesn't use the timer, and stages it as 0.
ResultCode StageOperationMode(const Option& option, const char* value, const Staging& staging) {
    const ResultCode code = StageWord(option, value, staging);
    VX_UINT32 mode = 0;
    if (code == RC_SUCCESS && staging.InCommand(option.key, mode) && mode == MODE_EVERY_COMPLETION) {
        staging.Set(KEY_INTERRUPT_DELAY_TIMER, 0);
    }
    return code;
}

ResultCode StageFrameSize(const Option& option, const char* value, const Staging& staging) {
    constexpr VX_UINT32 ENCRYPTION_FRAME_SIZE = 2112;
    const VX_UINT32 size = ParseNumber(value);
    if (!IsFrameSize(size) || (size == ENCRYPTION_FRAME_SIZE && !IsEncryptionAdapter(staging.Chip()))) {
        return RC_INVALID_PARAMETER;
    }
    staging.Set(option.key, size);
    return RC_SUCCESS;
}

/// In mode 0, set by this command or else in the file, only 0 is valid, and nothing is staged.
ResultCode StageInterruptDelayTimer(const Option& option, const char* value, const Staging& staging) {
    const VX_UINT32 timer = ParseNumber(value);
    if (timer > option.argument.maximum) {
        return RC_INVALID_PARAMETER;
    }
    VX_UINT32 mode = MODE_EVERY_COMPLETION + 1;
    if (!staging.InCommand(KEY_OPERATION_MODE, mode)) {
        staging.InFile(KEY_OPERATION_MODE, mode);
    }
    if (mode == MODE_EVERY_COMPLETION) {
        return timer == 0 ? RC_SUCCESS : RC_INVALID_DATA;
    }
    staging.Set(option.key, timer);
    return RC_SUCCESS;
}

bool HasExecutionThrottle(__CHIPPROPERTY chip) {
    return !IsRowanAdapter(chip) && !IsUefiCapableAdapter(chip);
}
consteval const Argument& Of(std::string_view name) {
    return OptionOf(HBA_PARAMS_ARGUMENTS, name);
}

/// In the order of their checks.
constexpr Option OPTIONS[] = {
    {Of("--connection-options"), KEY_CONNECTION_OPTIONS, StageConnectionOptions},
    {Of("--data-rate"), KEY_DATA_RATE, StageDataRate},
    {Of("--operation-mode"), KEY_OPERATION_MODE, StageOperationMode, HasOperationMode},
    {Of("--frame-size"), "Frame_Size", StageFrameSize},
    {Of("--hard-loop-id"), "Hard_Loop_ID", StageNumber, HasHardLoopId},
    {Of("--loop-reset-delay"), "Loop_Reset_Delay", StageNumber},
    {Of("--interrupt-delay-timer"), KEY_INTERRUPT_DELAY_TIMER, StageInterruptDelayTimer, HasOperationMode},
    {Of("--execution-throttle"), "Execution_Throttle", StageNumber, HasExecutionThrottle},
    {Of("--login-retry-count"), "Login_Retry_Count", StageNumber},
    {Of("--port-down-retry-count"), "Port_Down_Retry_Count", StageNumber},
    {Of("--link-down-timeout"), "Link_Down_Timeout", StageNumber},
    {Of("--luns-per-target"), "Luns_Per_Target", StageNumber},
    {Of("--enable-bios"), "Disable_BIOS", StageWord},
    {Of("--enable-hard-loop-id"), "Enable_Hard_Loop_Id", StageWord, HasHardLoopId},
    {Of("--enable-fc-tape"), "Enable_Fibre_Channel_Tape_Support", StageWord},
    {Of("--enable-lip-full-login"), "Enable_Lip_Full_Login", StageWord, HasHardLoopId},
    {Of("--enable-target-reset"), "Enable_Target_Reset", StageWord},
    {Of("--enable-lr"), "Enable_LR", StageWord, HasLR},
    {Of("--enable-fabric-assigned-wwn"), "Enable_Fabric_Assign_WWN", StageWord, HasFabricAssignment},
    {Of("--enable-fwcm"), "Disable_SCM", StageWord, IsUefiCapableAdapter},
    {Of("--virtual-lane"), "Enable_Virtual_Lane", StageWord, IsBirchAdapter},
};
static_assert(std::size(OPTIONS) == std::size(HBA_PARAMS_ARGUMENTS) - 1);

/// Checks the adapter before the value.
ResultCode StageOption(const Option& option, const char* value, const Staging& staging) {
    const bool isSupported = option.isSupported == nullptr || option.isSupported(staging.Chip());
    const ResultCode code = isSupported ? option.stage(option, value, staging) : RC_FEATURE_NOT_SUPPORTED;
    if (code != RC_SUCCESS) {
        TraceStep(TRACE_INFORMATION, "%s=%s not supported", option.argument.name + 2, value); // without the dashes
    }
    return code;
}

} // namespace

bool HasHardLoopId(__CHIPPROPERTY chip) {
    return !Is10GAdapter(chip);
}

bool HasOperationMode(__CHIPPROPERTY chip) {
    return !IsWillowAdapter(chip);
}

bool HasLR(__CHIPPROPERTY chip) {
    return !Is4GAdapter(chip) && !IsWillowAdapter(chip);
}

StagedFile HBAParamsFile(const char* identifier) {
    static constexpr StagedGroup GROUP = {"HBAParams", "CreateHBAParamsFile", "UpdateHBAParamsInFile",
                                          "ReadHBAParamsFromFile"};
    return {GROUP, identifier};
}

std::span<const StagedKey<_VEXAPI_HBAParameters>> HBAParamsKeys() {
    return KEYS;
}

ResultCode UpdateHBAParamsInFile(const TavuStringArray& args, const StagedFile& file,
                                 const _vexapi_protocol_t& protocol) {
    StagedValues values;
    const Staging staging = {file, protocol, values};
    for (const Option& option : OPTIONS) {
        TavuString value;
        if (!CmdLineParser::GetOption(args, option.argument, value)) {
            continue;
        }
        if (const ResultCode code = StageOption(option, value.c_str(), staging); code != RC_SUCCESS) {
            return code;
        }
    }
    return file.Merge(values);
}
