#include "PhysicalPortBootConfigCmdsProcessor.h"

#include "ChipFamilies.h"
#include "CmdLineParser.h"
#include "HostTree.h"
#include "TargetIdentifiers.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortBootConfigCmdsProcessor";

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

constexpr UsageText USAGES[] = {
    {4, "Usage: get\r\n"},
    {5, "Usage: setFile\r\n"},
    {6, "Usage: set\r\n"},
};

/// Only a clear difference between BIOS and UEFI is switched; other modes of the library are left alone.
bool MustSwitchMode(VX_UINT8 current, VX_UINT8 wanted) {
    return (current == BOOT_BIOS && wanted == BOOT_UEFI) || (current == BOOT_UEFI && wanted == BOOT_BIOS);
}

StagedFile BootConfigFile(const char* identifier) {
    return {CLASS_NAME, "BootConfig", identifier};
}

/// The file knows two modes: 1 is UEFI, any other number the BIOS.
VX_UINT32 ModeInFile(VX_UINT8 mode) {
    return mode == BOOT_UEFI ? 1 : 0;
}
VX_UINT8 ModeFromFile(VX_UINT32 number) {
    return number == 1 ? BOOT_UEFI : BOOT_BIOS;
}

constexpr BootGroup GROUP = {
    .calls = {.switchMode = {CLASS_NAME, " before BFS mode", "Set BFS Config Mode failed", RC_CFG_READ_FAILED},
              .read = {CLASS_NAME, "", "Get Boot Device Info failed", RC_CFG_READ_FAILED},
              .write = {CLASS_NAME, " before update", "Set Boot Device Info failed", RC_CFG_UPDATE_FAILED},
              .writeNvme = {},
              .readBackNvme = {}},
    .mustSwitchMode = MustSwitchMode,
    .file = BootConfigFile,
    .modeInFile = ModeInFile,
    .modeFromFile = ModeFromFile,
    .isExtended = false,
};

/// The mode is an option, and the BIOS without it.
VX_UINT32 ReadMode(const TavuStringArray& args, BootSettings& boot) {
    TavuString word;
    boot.mode = BOOT_BIOS;
    if (CmdLineParser::GetCommandValueFromArgs(args, "-b", "--boot-mode", word) == 0) {
        return RC_SUCCESS;
    }
    if (word.CompareNoCase("UEFI") == 0) {
        boot.mode = BOOT_UEFI;
        return IsUefiCapableAdapter(boot.Chip()) ? RC_SUCCESS : RC_INVALID_CMD;
    }
    return word.CompareNoCase("BIOS") == 0 ? RC_SUCCESS : RC_INVALID_PARAMETER;
}

struct DriveOption {
    const char* longName;
    const char* shortName;
};
constexpr DriveOption DRIVE_OPTIONS[] = {
    {"--drive-0", "-j"}, {"--drive-1", "-k"}, {"--drive-2", "-l"}, {"--drive-3", "-m"},
    {"--drive-4", "-n"}, {"--drive-5", "-o"}, {"--drive-6", "-p"}, {"--drive-7", "-q"},
};
constexpr VX_UINT32 FIRST_UEFI_DRIVE = 4;

/// Stages a drive, "xx:xx:xx:xx:xx:xx:xx:xx-LUN", that names a discovered target and LUN, or clears it with a
/// name of zeros. A value without a LUN takes that of the drive before it: `lun` carries over, and begins as
/// 0; users rely on it.
VX_UINT32 StageDrive(VX_UINT32 number, const char* value, const BootSettings& boot, int& lun, StagedValues& values) {
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

VX_UINT32 StageDrives(const TavuStringArray& args, const BootSettings& boot, StagedValues& values) {
    int lun = 0;
    for (VX_UINT32 number = 0; number < std::size(DRIVE_OPTIONS); ++number) {
        const DriveOption& option = DRIVE_OPTIONS[number];
        TavuString value;
        if (CmdLineParser::GetCommandValueFromArgs(args, option.shortName, option.longName, value) == 0) {
            continue;
        }
        if (number >= FIRST_UEFI_DRIVE && !IsUefiCapableAdapter(boot.Chip())) {
            return RC_FEATURE_NOT_SUPPORTED;
        }
        if (number >= FIRST_UEFI_DRIVE && boot.mode == BOOT_BIOS) {
            return RC_PARAM_ERROR;
        }
        if (const VX_UINT32 code = StageDrive(number, value.c_str(), boot, lun, values); code != RC_SUCCESS) {
            TavuDebug::Print(TRACE_INFORMATION, "%s::%s: drive-%u=%s not supported", CLASS_NAME, __func__, number,
                             value.c_str());
            return code;
        }
    }
    return RC_SUCCESS;
}

} // namespace

constinit const Leaf PhysicalPortBootConfigCmdsProcessor::LEAVES[] = {
    {"get", "get Orvane HBA Boot Config information", 0, Xml<"CmdGet", CmdGetCommon>, nullptr},
    {"setFile", "set Orvane HBA Boot Config information in a local cache file", 1, Xml<"CmdSetFile", CmdSetFileCommon>,
     nullptr},
    {"set", "set Orvane HBA Boot Config information", 2, Xml<"CmdSet", CmdSetCommon>, nullptr},
    {"help", "list of available commands", 3, CmdHelp, Usage},
    {"getcli", "get Orvane HBA Boot Config information", 4, Text<"CmdGetCli", CmdGetCommon>, Usage},
    {"setFilecli", "set Orvane HBA Boot Config information in a local cache file", 5,
     Text<"CmdSetFileCli", CmdSetFileCommon>, Usage},
    {"setcli", "set Orvane HBA Boot Config information", 6, Text<"CmdSetCli", CmdSetCommon>, Usage},
};

constinit const FamilyDescription PhysicalPortBootConfigCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "Boot Config",
    .helpId = 3,
    .leaves = LEAVES,
    .usages = USAGES,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

/// The mode is looked at before any library call.
VX_UINT32 PhysicalPortBootConfigCmdsProcessor::Get(const TavuStringArray& args, BootSettings& boot) {
    VX_UINT32 code = PhysicalPortCmdsProcessor::GetPhysicalPortFromPortString(args, boot.entry);
    if (code == RC_SUCCESS) {
        code = ReadMode(args, boot);
    }
    return code == RC_SUCCESS ? ReadBootSettings(GROUP, boot) : code;
}

VX_UINT32 PhysicalPortBootConfigCmdsProcessor::SetFile(const TavuStringArray& args, BootSettings& boot) {
    const VX_UINT32 code = Get(args, boot);
    return code == RC_SUCCESS ? StageBootSettings(GROUP, args, boot, StageDrives) : code;
}

VX_UINT32 PhysicalPortBootConfigCmdsProcessor::Set(const TavuStringArray& args, BootSettings& boot) {
    return CommitBootSettings(GROUP, args, boot);
}

void PhysicalPortBootConfigCmdsProcessor::DisplayBootConfigInfo(MultipleCmdsProcessor* self, const BootSettings& boot,
                                                                eOutputFormat format) {
    if (boot.isNothingPending) {
        // The document of a failure with the result of a success: clients know `set` so.
        DisplaySetError(self, RC_SUCCESS, format);
        return;
    }
    DisplayBlock(
        self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) { AddBootSettings(block, boot); }, boot.reboot);
}
