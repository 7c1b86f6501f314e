#include "PhysicalPortBootConfigExtCmdsProcessor.h"

#include "ChipFamilies.h"
#include "CmdLineParser.h"
#include "HostTree.h"
#include "TargetIdentifiers.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortBootConfigExtCmdsProcessor";
constexpr FixedText SETTINGS = "Orvane HBA Boot Config information";

constexpr BlockShape OUT_SHAPE = {
    {"BootConfigInfo", "BootConfig", "BootConfigList"}, 8192, ReportBlock::SizeRule::FULL};

/// Three texts differ from those of `bootconfig`.
constexpr CodeText RESULT_TEXTS[] = {
    {RC_PARAM_ERROR, "Failed, Boot parameter requires valid boot mode option"},
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_INVALID_CMD, "Failed, UEFI/NVME boot mode not supported for this adapter"},
    {RC_CFG_READ_FAILED, "Failed, Boot Config read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_INVALID_DATA, "Failed, NVMe Boot Config not present"},
    {RC_INVALID_FIELD, "Failed, Boot parameter not supported with UEFI boot mode option"},
    {RC_CFG_UPDATE_FAILED, "Failed, Boot Config update failed"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
    {RC_NOT_SUPPORTED_FOR_NVME, "Failed, Feature not supported for NVMe target"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
    {RC_READ_ONLY_MODE, "Failed, Read-Only parameter"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, Feature not supported for virtual port"},
    {RC_NO_BIOS, "Failed, Adapter does not have ROM BIOS"},
    {RC_NO_EFI, "Failed, Adapter does not have ROM UEFI"},
    {RC_NEED_ADD_FCP_PARAMS, "Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets"},
    {RC_NEED_ADD_NVME_PARAMS, "Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets"},
};

bool MustSwitchMode(VX_UINT8 current, VX_UINT8 wanted) {
    return current != wanted;
}

StagedFile BootConfigExtFile(const char* identifier) {
    static constexpr StagedGroup GROUP = {"BootConfigExt", "CreateBootConfigFile", "UpdateBootConfigInFile",
                                          "ReadBootConfigFromFile", 256};
    return {GROUP, identifier};
}

/// The file contains the library's number; any number is accepted back.
VX_UINT32 ModeInFile(VX_UINT8 mode) {
    return mode;
}
VX_UINT8 ModeFromFile(VX_UINT32 number) {
    return static_cast<VX_UINT8>(number);
}

constexpr Argument MODE = {"mode", nullptr, "what boots", ArgumentKind::WORD, true, BOOT_MODE_WORDS};
constexpr char MODE_OPTION[] = "--boot-mode"; // in traces

/// The mode is the second argument, without a default.
ResultCode ReadMode(const TavuStringArray& args, BootSettings& boot) {
    const char* word = ArgText(args, 1);
    const bool isUefi = CompareNoCase(word, "UEFI") == 0;
    if (isUefi || CompareNoCase(word, "NVME") == 0) {
        boot.mode = isUefi ? BOOT_UEFI : BOOT_NVME;
        return IsUefiCapableAdapter(boot.Chip()) ? RC_SUCCESS : RefuseBootOption(MODE_OPTION, word, RC_INVALID_CMD);
    }
    boot.mode = BOOT_BIOS;
    return CompareNoCase(word, "BIOS") == 0 ? RC_SUCCESS : RefuseBootOption(MODE_OPTION, word, RC_INVALID_PARAMETER);
}

constexpr Argument TargetNumber(VX_UINT32 last, std::span<const CodeText> modes) {
    return Argument{"--boot-target-num", "-n", "which boot entry", ArgumentKind::NUMBER, false, {}, 0, last}.With(
        modes);
}
constexpr Argument BIOS_TARGET_NUMBER = TargetNumber(3, ONLY_BIOS);
constexpr Argument TARGET_NUMBER = TargetNumber(7, NOT_BIOS);
constexpr Argument TARGET_WWPN = {"--boot-target-wwpn", "-p", "port name of the target; zeros clear the entry",
                                  ArgumentKind::WWPN};
constexpr Argument DISK_NUMBER = {
    "--boot-disk-num", "-o", "LUN, or namespace of an NVMe target", ArgumentKind::NUMBER, false, {}, 0, 65535};
constexpr Argument TARGET_ENABLE = BootFlag("--boot-target-enable", "-l", "whether the entry is used", ONLY_NVME);
constexpr Argument ENTRY_OPTIONS[] = {NVME_BOOT_FLAG, BIOS_TARGET_NUMBER, TARGET_NUMBER,
                                      TARGET_WWPN,    DISK_NUMBER,        TARGET_ENABLE};
constexpr Argument GET_ARGUMENTS[] = {PORT_ARGUMENT, MODE};
constexpr auto SET_FILE_ARGUMENTS = BootArguments(GET_ARGUMENTS, ENTRY_OPTIONS);

/// The four options that together describe one boot target.
struct BootTargetOptions {
    std::optional<VX_UINT32> number;
    std::optional<TavuString> wwpn;
    std::optional<VX_UINT16> disk;
    std::optional<VX_UINT32> isEnabled;
    const _tagVEXAPI_SDMTarget* target = nullptr; ///< null if the name is all zeros, which clears the entry
};

/// The value of an option, if given.
std::optional<TavuString> OptionValue(const TavuStringArray& args, const Argument& option) {
    TavuString value;
    return CmdLineParser::GetOption(args, option, value) ? std::optional<TavuString>(value) : std::nullopt;
}

/// Checks each option separately, in order. The target is looked up before checking that the options are complete.
ResultCode ReadBootTargetOptions(const TavuStringArray& args, const BootSettings& boot, BootTargetOptions& options) {
    if (const auto number = OptionValue(args, TARGET_NUMBER)) {
        options.number = ParseNumber(number->c_str());
        if (boot.mode == BOOT_BIOS && *options.number > BIOS_TARGET_NUMBER.maximum) {
            return RefuseBootOption(TARGET_NUMBER.name, *number, RC_PARAM_ERROR);
        }
    }
    if (const auto name = OptionValue(args, TARGET_WWPN)) {
        VX_UINT8 wwpn[8] = {};
        ScanWwn(name->c_str(), wwpn);
        options.wwpn = WwnText(wwpn);
        if (!IsZero(wwpn)) {
            options.target = FindBootTarget(boot, wwpn);
            if (options.target == nullptr) {
                return RefuseBootOption(TARGET_WWPN.name, *name, RC_INVALID_PARAMETER);
            }
        }
    }
    if (const auto disk = OptionValue(args, DISK_NUMBER)) {
        options.disk = static_cast<VX_UINT16>(ParseNumber(disk->c_str()));
    }
    if (const auto word = OptionValue(args, TARGET_ENABLE)) {
        if (!IsUefiCapableAdapter(boot.Chip())) {
            return RefuseBootOption(TARGET_ENABLE.name, *word, RC_FEATURE_NOT_SUPPORTED);
        }
        if (!AppliesWith(TARGET_ENABLE, boot.mode)) {
            return RefuseBootOption(TARGET_ENABLE.name, *word, RC_PARAM_ERROR);
        }
        VX_UINT32 isEnabled = 0;
        if (!FindWord(FLAG_WORDS, word->c_str(), isEnabled)) {
            return RefuseBootOption(TARGET_ENABLE.name, *word, RC_INVALID_PARAMETER);
        }
        options.isEnabled = isEnabled;
    }
    return RC_SUCCESS;
}

/// Requires all options of the mode or none of them.
ResultCode CheckComplete(const BootSettings& boot, const BootTargetOptions& options, bool& isGiven) {
    const bool isNvme = boot.mode == BOOT_NVME;
    const int wanted = isNvme ? 4 : 3;
    const int given = (options.number ? 1 : 0) + (options.wwpn ? 1 : 0) + (options.disk ? 1 : 0) +
                      (options.isEnabled ? 1 : 0); // rejected earlier outside NVMe mode
    isGiven = given == wanted;
    if (given == 0 || isGiven) {
        return RC_SUCCESS;
    }
    return isNvme ? RC_NEED_ADD_NVME_PARAMS : RC_NEED_ADD_FCP_PARAMS;
}

void StageNvmeTarget(const BootTargetOptions& options, const TavuString& disk, StagedValues& values) {
    const auto stage = [&](const char* field, const TavuString& value) {
        values[NvmeBootKey(*options.number, field)] = value;
    };
    const _tagVEXAPI_SDMTarget* const target = options.target;
    TavuString controller = "0";
    if (target != nullptr) {
        controller.Format("%u", target->StorageControllerId);
    }
    stage(NVME_ENABLE, *options.isEnabled != 0 ? "1" : "0");
    stage(NVME_WWPN, *options.wwpn);
    stage(NVME_NAMESPACE_ID, disk);
    stage(NVME_WWNN, target != nullptr ? WwnText(target->NodeName) : *options.wwpn); // all zeros
    stage(NVME_NQN, target != nullptr ? StagedName(BoundedText(target->StorageNqn)) : TavuString());
    stage(NVME_CONTROLLER_ID, controller);
}

/// Stages one boot target. A number above 7 succeeds, but changes no entry that is ever read.
ResultCode StageTarget(const TavuStringArray& args, const BootSettings& boot, StagedValues& values) {
    BootTargetOptions options;
    if (const ResultCode code = ReadBootTargetOptions(args, boot, options); code != RC_SUCCESS) {
        return code;
    }
    bool isGiven = false;
    if (const ResultCode code = CheckComplete(boot, options, isGiven); code != RC_SUCCESS || !isGiven) {
        return code;
    }
    const bool isNvme = boot.mode == BOOT_NVME;
    TavuString disk = "0";
    if (options.target != nullptr) {
        disk.Format("%u", *options.disk);
        if (FindBootLun(*options.target, *options.disk) == nullptr) {
            return RefuseBootOption(DISK_NUMBER.name, disk, RC_INVALID_PARAMETER);
        }
        if (IsNvmeTarget(*options.target) != isNvme) {
            return RefuseBootOption(TARGET_WWPN.name, *options.wwpn, RC_INVALID_PARAMETER);
        }
    }
    if (isNvme) {
        StageNvmeTarget(options, disk, values);
    } else {
        StageBootTarget(*options.number, *options.wwpn, disk, values);
    }
    return RC_SUCCESS;
}

} // namespace

constinit const BootGroup PhysicalPortBootConfigExtCmdsProcessor::GROUP = {
    .calls = {.switchMode = {"VEXAPI_SetBfsConfigMode", "", "Set BFS Config Mode failed", RC_CFG_READ_FAILED},
              .read = {"VEXAPI_GetBootDeviceInfo", "", "Get Boot Device Info failed", RC_CFG_READ_FAILED},
              .readNvme = {"VEXAPI_GetNVMeBootDeviceEntries", "", "Get NVMe Boot Device Entries failed",
                           RC_INVALID_DATA},
              .write = {"VEXAPI_SetBootDeviceInfo", "", "Set Boot Device Info failed", RC_CFG_UPDATE_FAILED},
              .writeNvme = {"VEXAPI_SetNVMeBootDeviceEntries", "", "Set NVMe Boot Device Entries failed",
                            RC_CFG_UPDATE_FAILED},
              .readBackNvme = {"VEXAPI_GetNVMeBootDeviceEntries", "", "Get NVMe Boot Device Entries failed",
                               RC_CFG_UPDATE_FAILED}},
    .shape = OUT_SHAPE,
    .readMode = ReadMode,
    .mustSwitchMode = MustSwitchMode,
    .file = BootConfigExtFile,
    .modeInFile = ModeInFile,
    .modeFromFile = ModeFromFile,
    .stageTargets = StageTarget,
    .isExtended = true,
};

constexpr Command PhysicalPortBootConfigExtCmdsProcessor::COMMANDS[] = {
    StagedGet<SETTINGS>(CmdGetCommon, ReportDocument(OUT_SHAPE.names), GET_ARGUMENTS),
    StagedSetFile<SETTINGS>(CmdSetFileCommon, ReportDocument(OUT_SHAPE.names), SET_FILE_ARGUMENTS),
    StagedSet<SETTINGS>(CmdSetCommon, ReportDocument(OUT_SHAPE.names, DATA_BLOCK, MESSAGE_AND_REBOOT)),
};

constinit const FamilyDescription PhysicalPortBootConfigExtCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "Boot Config",
    .leaves = LEAVES_OF<PhysicalPortBootConfigExtCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};
