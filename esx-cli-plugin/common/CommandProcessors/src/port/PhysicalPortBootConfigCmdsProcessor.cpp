#include "PhysicalPortBootConfigCmdsProcessor.h"

#include "ChipFamilies.h"
#include "CmdLineParser.h"
#include "HostTree.h"
#include "TargetIdentifiers.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortBootConfigCmdsProcessor";
constexpr FixedText SETTINGS = "Orvane HBA Boot Config information";

constexpr BlockShape OUT_SHAPE = {
    {"BootConfigInfo", "BootConfig", "BootConfigList"}, 2048, ReportBlock::SizeRule::FULL};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_PARAM_ERROR, "Failed, Boot parameter requires UEFI boot mode option"},
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_INVALID_CMD, "Failed, UEFI boot mode not supported for this adapter"},
    {RC_CFG_READ_FAILED, "Failed, Boot Config read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
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
};

/// Switches only between BIOS and UEFI; other modes of the library are left alone.
bool MustSwitchMode(VX_UINT8 current, VX_UINT8 wanted) {
    return (current == BOOT_BIOS && wanted == BOOT_UEFI) || (current == BOOT_UEFI && wanted == BOOT_BIOS);
}

StagedFile BootConfigFile(const char* identifier) {
    static constexpr StagedGroup GROUP = {"BootConfig", "CreateBootConfigFile", "UpdateBootConfigInFile",
                                          "ReadBootConfigFromFile"};
    return {GROUP, identifier};
}

/// Modes in the file: 1 is UEFI, any other number the BIOS.
VX_UINT32 ModeInFile(VX_UINT8 mode) {
    return mode == BOOT_UEFI ? 1 : 0;
}
VX_UINT8 ModeFromFile(VX_UINT32 number) {
    return number == 1 ? BOOT_UEFI : BOOT_BIOS;
}

constexpr Argument MODE = {"--boot-mode",      "-b",  "what boots; BIOS without it",
                           ArgumentKind::WORD, false, PLAIN_BOOT_MODES};
constexpr char DRIVE[] = "a target's port name and a LUN, xx:xx:xx:xx:xx:xx:xx:xx-LUN; a name of zeros clears it";
constexpr Argument Drive(const char* name, const char* shortName, std::span<const CodeText> modes = {}) {
    return Argument{name, shortName, DRIVE, ArgumentKind::TEXT}.With(modes);
}
constexpr Argument DRIVE_OPTIONS[] = {
    Drive("--drive-0", "-j"),           Drive("--drive-1", "-k"),           Drive("--drive-2", "-l"),
    Drive("--drive-3", "-m"),           Drive("--drive-4", "-n", NOT_BIOS), Drive("--drive-5", "-o", NOT_BIOS),
    Drive("--drive-6", "-p", NOT_BIOS), Drive("--drive-7", "-q", NOT_BIOS),
};
constexpr Argument GET_ARGUMENTS[] = {PORT_ARGUMENT, MODE};
constexpr auto SET_FILE_ARGUMENTS = BootArguments(GET_ARGUMENTS, DRIVE_OPTIONS);

/// The mode is an option; the default is the BIOS.
ResultCode ReadMode(const TavuStringArray& args, BootSettings& boot) {
    TavuString word;
    boot.mode = BOOT_BIOS;
    if (!CmdLineParser::GetOption(args, MODE, word)) {
        return RC_SUCCESS;
    }
    if (word.CompareNoCase("UEFI") == 0) {
        boot.mode = BOOT_UEFI;
        return IsUefiCapableAdapter(boot.Chip()) ? RC_SUCCESS : RefuseBootOption(MODE.name, word, RC_INVALID_CMD);
    }
    return word.CompareNoCase("BIOS") == 0 ? RC_SUCCESS : RefuseBootOption(MODE.name, word, RC_INVALID_PARAMETER);
}

/// Stages a drive, "xx:xx:xx:xx:xx:xx:xx:xx-LUN", which names a discovered target and LUN, or clears it if the name
/// is all zeros. Required: a value without a LUN takes that of the previous drive, carried over in `lun`, initially
/// 0; users rely on it.
ResultCode StageDrive(VX_UINT32 number, const char* value, const BootSettings& boot, int& lun, StagedValues& values) {
    VX_UINT8 wwpn[8] = {};
    if (const char* end = ScanWwn(value, wwpn); end != nullptr && *end == '-') {
        char* digitsEnd = nullptr;
        const long scanned = std::strtol(end + 1, &digitsEnd, 10);
        lun = digitsEnd != end + 1 ? static_cast<int>(scanned) : lun;
    }
    if (IsZero(wwpn)) {
        StageBootTarget(number, WwnText(wwpn), "0", values);
        return RC_SUCCESS;
    }
    const _tagVEXAPI_SDMTarget* const target = FindBootTarget(boot, wwpn);
    if (target == nullptr || FindBootLun(*target, lun) == nullptr) {
        return RC_INVALID_PARAMETER;
    }
    if (IsNvmeTarget(*target)) {
        return RC_NOT_SUPPORTED_FOR_NVME;
    }
    TavuString lunText;
    lunText.Format("%d", lun);
    StageBootTarget(number, WwnText(wwpn), lunText, values);
    return RC_SUCCESS;
}

ResultCode StageDrives(const TavuStringArray& args, const BootSettings& boot, StagedValues& values) {
    int lun = 0;
    for (VX_UINT32 number = 0; number < std::size(DRIVE_OPTIONS); ++number) {
        const Argument& option = DRIVE_OPTIONS[number];
        TavuString value;
        if (!CmdLineParser::GetOption(args, option, value)) {
            continue;
        }
        if (!AppliesWith(option, BOOT_BIOS) && !IsUefiCapableAdapter(boot.Chip())) {
            return RefuseBootOption(option.name, value, RC_FEATURE_NOT_SUPPORTED);
        }
        if (!AppliesWith(option, boot.mode)) {
            return RefuseBootOption(option.name, value, RC_PARAM_ERROR);
        }
        if (const ResultCode code = StageDrive(number, value.c_str(), boot, lun, values); code != RC_SUCCESS) {
            return RefuseBootOption(option.name, value, code);
        }
    }
    return RC_SUCCESS;
}

} // namespace

constinit const BootGroup PhysicalPortBootConfigCmdsProcessor::GROUP = {
    .calls = {.switchMode = {"VEXAPI_SetBfsConfigMode", "", "Set BFS Config Mode failed", RC_CFG_READ_FAILED},
              .read = {"VEXAPI_GetBootDeviceInfo", "", "Get Boot Device Info failed", RC_CFG_READ_FAILED},
              .readNvme = {},
              .write = {"VEXAPI_SetBootDeviceInfo", "", "Set Boot Device Info failed", RC_CFG_UPDATE_FAILED},
              .writeNvme = {},
              .readBackNvme = {}},
    .shape = OUT_SHAPE,
    .readMode = ReadMode,
    .mustSwitchMode = MustSwitchMode,
    .file = BootConfigFile,
    .modeInFile = ModeInFile,
    .modeFromFile = ModeFromFile,
    .stageTargets = StageDrives,
    .isExtended = false,
};

constexpr Command PhysicalPortBootConfigCmdsProcessor::COMMANDS[] = {
    StagedGet<SETTINGS>(CmdGetCommon, ReportDocument(OUT_SHAPE.names), GET_ARGUMENTS),
    StagedSetFile<SETTINGS>(CmdSetFileCommon, ReportDocument(OUT_SHAPE.names), SET_FILE_ARGUMENTS),
    StagedSet<SETTINGS>(CmdSetCommon, ReportDocument(OUT_SHAPE.names, DATA_BLOCK, MESSAGE_AND_REBOOT)),
};

constinit const FamilyDescription PhysicalPortBootConfigCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "Boot Config",
    .leaves = LEAVES_OF<PhysicalPortBootConfigCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};
