#include "BootSettings.h"

#include "ChipFamilies.h"
#include "CmdLineParser.h"
#include "HostTree.h"

namespace {

/// Bits of `OptionRomMask`.
constexpr VX_UINT8 HAS_ROM_BIOS = 0x08;
constexpr VX_UINT8 HAS_ROM_UEFI = 0x02;

constexpr char KEY_BOOT_MODE[] = "Boot_Mode";
constexpr char KEY_NVME_ENABLE[] = "NVMe_Enable";

using Parameters = _VEXAPI_HBAParameters;
constexpr unsigned BIOS_BOOT_TARGETS = 4;
constexpr unsigned BOOT_TARGETS = 8;

/// Fields of a boot target.
struct BootTarget {
    VX_UINT8 (Parameters::*wwpn)[8];
    VX_UINT16 Parameters::*lun;
};
constexpr BootTarget BOOT_TARGET_FIELDS[BOOT_TARGETS] = {
    {&Parameters::BootPortName, &Parameters::BootLunNumber},
    {&Parameters::Alt1BootPortName, &Parameters::Alt1BootLunNumber},
    {&Parameters::Alt2BootPortName, &Parameters::Alt2BootLunNumber},
    {&Parameters::Alt3BootPortName, &Parameters::Alt3BootLunNumber},
    {&Parameters::Alt4BootPortName, &Parameters::Alt4BootLunNumber},
    {&Parameters::Alt5BootPortName, &Parameters::Alt5BootLunNumber},
    {&Parameters::Alt6BootPortName, &Parameters::Alt6BootLunNumber},
    {&Parameters::Alt7BootPortName, &Parameters::Alt7BootLunNumber},
};

/// The flags in the cache file, which also contains the boot targets.
constexpr StagedKey<Parameters> FLAG_KEYS[] = {
    NumberKey<Parameters, &Parameters::DisableBIOS, IsBelow<2>>("Disable_BIOS"),
    NumberKey<Parameters, &Parameters::EnableFabricAssignBootLun, IsBelow<2>>("Fabric_Assigned_Boot_Lun"),
    NumberKey<Parameters, &Parameters::EnableSelectableBoot, IsBelow<2>>("Selectable_Boot"),
    NumberKey<Parameters, &Parameters::EnableSelectiveLUN, IsBelow<2>>("Selective_LUN_Login"),
    NumberKey<Parameters, &Parameters::EnableSelectiveLogin, IsBelow<2>>("Selective_Login"),
    NumberKey<Parameters, &Parameters::ForceWorldLogin, IsBelow<2>>("World_Login"),
};
constexpr StagedKey<Parameters> NVME_FLAG_KEYS[] = {
    NumberKey<Parameters, &Parameters::NVMeEnable, IsBelow<2>>(KEY_NVME_ENABLE),
};

TavuString BootTargetKey(unsigned number, const char* field) {
    TavuString key;
    if (number == 0) {
        key.Format("Primary_Boot_Target_%s", field);
    } else {
        key.Format("Alternate_Boot_Target_%u_%s", number, field);
    }
    return key;
}

TavuString Decimal(VX_UINT32 number) {
    TavuString text;
    text.Format("%u", number);
    return text;
}

/// Whether the group has NVMe boot entries for this port, and whether it uses them in this mode.
bool HasNvmeEntries(const BootGroup& group, const BootSettings& boot) {
    return group.isExtended && IsUefiCapableAdapter(boot.Chip());
}
bool UsesNvmeEntries(const BootGroup& group, const BootSettings& boot) {
    return HasNvmeEntries(group, boot) && boot.mode == BOOT_NVME;
}

void CollectNvmeEntry(unsigned number, const VX_NVME_BOOT_ENTRY& entry, StagedValues& values) {
    values[NvmeBootKey(number, NVME_CONTROLLER_ID)] = Decimal(entry.TargetCtrlID);
    values[NvmeBootKey(number, NVME_ENABLE)] = Decimal(entry.TargetFlags);
    values[NvmeBootKey(number, NVME_NQN)] = StagedName(BoundedText(entry.TargetNQN));
    values[NvmeBootKey(number, NVME_NAMESPACE_ID)] = Decimal(entry.TargetNSID);
    values[NvmeBootKey(number, NVME_WWNN)] = WwnText(entry.TargetWWNN);
    values[NvmeBootKey(number, NVME_WWPN)] = WwnText(entry.TargetWWPN);
}

/// Keys missing from the file, and flags out of range, leave the field unchanged.
void ReadNvmeEntry(const StagedFile& file, unsigned number, VX_NVME_BOOT_ENTRY& entry) {
    TavuString text;
    const auto read = [&](const char* field) { return file.Read(NvmeBootKey(number, field).c_str(), text); };
    if (read(NVME_CONTROLLER_ID)) {
        entry.TargetCtrlID = static_cast<VX_UINT16>(ParseNumber(text.c_str()));
    }
    if (read(NVME_ENABLE) && ParseNumber(text.c_str()) < 2) {
        entry.TargetFlags = static_cast<VX_UINT8>(ParseNumber(text.c_str()));
    }
    if (read(NVME_NQN)) {
        text.resize(std::min(text.size(), sizeof entry.TargetNQN - 1));
        strncpy_s(entry.TargetNQN, sizeof entry.TargetNQN, text.c_str(), COPY_WHAT_FITS);
    }
    if (read(NVME_NAMESPACE_ID)) {
        entry.TargetNSID = ParseNumber(text.c_str());
    }
    if (read(NVME_WWNN)) {
        ScanWwn(text.c_str(), entry.TargetWWNN);
    }
    if (read(NVME_WWPN)) {
        ScanWwn(text.c_str(), entry.TargetWWPN);
    }
}

void CollectBootSettings(const BootGroup& group, const BootSettings& boot, StagedValues& values) {
    values[KEY_BOOT_MODE] = Decimal(group.modeInFile(boot.mode));
    CollectSettings<Parameters>(FLAG_KEYS, boot.parameters, values);
    for (unsigned number = 0; number < BOOT_TARGETS; ++number) {
        const BootTarget& target = BOOT_TARGET_FIELDS[number];
        StageBootTarget(number, WwnText(boot.parameters.*target.wwpn), Decimal(boot.parameters.*target.lun), values);
    }
    if (group.isExtended) {
        CollectSettings<Parameters>(NVME_FLAG_KEYS, boot.parameters, values);
    }
    if (HasNvmeEntries(group, boot)) {
        for (unsigned number = 0; number < BOOT_TARGETS; ++number) {
            CollectNvmeEntry(number, boot.nvme.BootEntry[number], values);
        }
    }
}

/// Applies the file to the settings. Names are parsed without validation, and LUNs truncated to their low 16 bits.
void ReadBootFile(const BootGroup& group, const StagedFile& file, BootSettings& boot) {
    TavuString text;
    if (file.Read(KEY_BOOT_MODE, text)) {
        boot.mode = group.modeFromFile(ParseNumber(text.c_str()));
    }
    ReadStagedFile<Parameters>(file, FLAG_KEYS, boot.parameters);
    for (unsigned number = 0; number < BOOT_TARGETS; ++number) {
        const BootTarget& target = BOOT_TARGET_FIELDS[number];
        if (file.Read(BootTargetKey(number, "WWPN").c_str(), text)) {
            ScanWwn(text.c_str(), boot.parameters.*target.wwpn);
        }
        if (file.Read(BootTargetKey(number, "LUN").c_str(), text)) {
            boot.parameters.*target.lun = static_cast<VX_UINT16>(ParseNumber(text.c_str()));
        }
    }
    if (group.isExtended) {
        ReadStagedFile<Parameters>(file, NVME_FLAG_KEYS, boot.parameters);
    }
    if (HasNvmeEntries(group, boot)) {
        for (unsigned number = 0; number < BOOT_TARGETS; ++number) {
            ReadNvmeEntry(file, number, boot.nvme.BootEntry[number]);
        }
    }
}

/// Row: a flag option. The adapter is checked first, then the mode, then the value.
struct FlagOption {
    const Argument& argument;
    const char* key;
    bool (*isSupported)(__CHIPPROPERTY chip) = nullptr; ///< null: on every adapter
    ResultCode otherMode = RC_SUCCESS;                  ///< result in a mode with which it doesn't apply
};
consteval const Argument& Of(std::string_view name) {
    return OptionOf(BOOT_FLAGS, name);
}
constexpr FlagOption FLAG_OPTIONS[] = {
    {Of("--enable-bfs"), "Disable_BIOS"},
    {Of("--fabric-assigned-boot-lun"), "Fabric_Assigned_Boot_Lun", HasFabricAssignment},
    {Of("--selectable-boot"), "Selectable_Boot", nullptr, RC_INVALID_FIELD},
    {Of("--selective-login"), "Selective_Login", IsUefiCapableAdapter, RC_PARAM_ERROR},
    {Of("--selective-lun-login"), "Selective_LUN_Login", IsUefiCapableAdapter, RC_PARAM_ERROR},
    {Of("--world-login"), "World_Login", IsUefiCapableAdapter, RC_PARAM_ERROR},
};
static_assert(std::size(FLAG_OPTIONS) == std::size(BOOT_FLAGS));
constexpr FlagOption NVME_FLAG_OPTIONS[] = {{NVME_BOOT_FLAG, KEY_NVME_ENABLE, IsUefiCapableAdapter, RC_PARAM_ERROR}};

ResultCode CheckFlag(const FlagOption& option, const char* word, const BootSettings& boot, StagedValues& values) {
    if (option.isSupported != nullptr && !option.isSupported(boot.Chip())) {
        return RC_FEATURE_NOT_SUPPORTED;
    }
    if (!AppliesWith(option.argument, boot.mode)) {
        return option.otherMode;
    }
    VX_UINT32 number = 0;
    if (!FindWord(option.argument.words, word, number)) {
        return RC_INVALID_PARAMETER;
    }
    values[option.key] = Decimal(number);
    return RC_SUCCESS;
}

ResultCode StageFlags(std::span<const FlagOption> options, const TavuStringArray& args, const BootSettings& boot,
                      StagedValues& values) {
    for (const FlagOption& option : options) {
        TavuString word;
        if (!CmdLineParser::GetOption(args, option.argument, word)) {
            continue;
        }
        if (const ResultCode code = CheckFlag(option, word.c_str(), boot, values); code != RC_SUCCESS) {
            return RefuseBootOption(option.argument.name, word, code);
        }
    }
    return RC_SUCCESS;
}

ResultCode ReadRecord(const BootGroup& group, BootSettings& boot) {
    return CallLibrary(group.calls.read,
                       [&] { return VEXAPI_GetBootDeviceInfo(boot.Handle(), &boot.parameters, nullptr); });
}

void AddFlag(ReportBlock& block, const char* label, bool isSet) {
    block.Line(label, isSet ? OUT_TRUE : OUT_FALSE);
}

void AddBootTargets(ReportBlock& block, const Parameters& parameters, unsigned count) {
    for (unsigned number = 0; number < count; ++number) {
        const BootTarget& target = BOOT_TARGET_FIELDS[number];
        TavuString label;
        label.Format("Drive %u WWPN", number);
        block.Line(label.c_str(), WwnText(parameters.*target.wwpn));
        label.Format("Drive %u LUN", number);
        block.LineF(label.c_str(), "%u", parameters.*target.lun);
    }
}

void AddNvmeEntries(ReportBlock& block, const BootSettings& boot) {
    AddFlag(block, "FC NVMe", boot.parameters.NVMeEnable != 0);
    block.Line("Host NQN", BoundedText(boot.nvme.HostNQN));
    block.Line("Host ID", HostIdText(boot.nvme.HostId));
    for (unsigned number = 0; number < BOOT_TARGETS; ++number) {
        const VX_NVME_BOOT_ENTRY& entry = boot.nvme.BootEntry[number];
        const auto label = [number](const char* field) {
            TavuString text;
            text.Format("Storage %u%s", number, field);
            return text;
        };
        AddFlag(block, label("").c_str(), entry.TargetFlags != 0);
        block.Line(label(" WWNN").c_str(), WwnText(entry.TargetWWNN));
        block.Line(label(" WWPN").c_str(), WwnText(entry.TargetWWPN));
        block.Line(label(" NQN").c_str(), BoundedText(entry.TargetNQN));
        block.LineF(label(" ControllerID").c_str(), "0x%x", entry.TargetCtrlID);
        block.LineF(label(" NamespaceID").c_str(), "%u", entry.TargetNSID);
    }
}

/// Common start of `get` and `setFile`. The mode is checked before any library call.
ResultCode Open(const BootGroup& group, const TavuStringArray& args, BootSettings& boot) {
    ResultCode code = GetPhysicalPortFromPortString(args, boot.entry);
    if (code == RC_SUCCESS) {
        code = group.readMode(args, boot);
    }
    if (code != RC_SUCCESS) {
        return code;
    }
    // The library's mode is switched before the ROM is checked.
    if (IsUefiCapableAdapter(boot.Chip())) {
        code = CallLibrary(group.calls.switchMode, [&]() -> VX_UINT32 {
            const VX_UINT8 current = VEXAPI_GetBfsConfigMode();
            return group.mustSwitchMode(current, boot.mode) ? VEXAPI_SetBfsConfigMode(boot.mode) : 0;
        });
        if (code != RC_SUCCESS) {
            return code;
        }
    }
    const VX_UINT8 roms = boot.entry.protocol->OptionRomMask;
    if (boot.mode == BOOT_BIOS && (roms & HAS_ROM_BIOS) == 0) {
        return RC_NO_BIOS;
    }
    if (boot.mode != BOOT_BIOS && (roms & HAS_ROM_UEFI) == 0) {
        return RC_NO_EFI;
    }
    return ReadRecord(group, boot);
}

/// Reads the NVMe boot entries, if the mode has any.
ResultCode ReadNvmeEntries(const BootGroup& group, BootSettings& boot) {
    if (!UsesNvmeEntries(group, boot)) {
        return RC_SUCCESS;
    }
    return CallLibrary(group.calls.readNvme,
                       [&] { return VEXAPI_GetNVMeBootDeviceEntries(boot.Handle(), &boot.nvme); });
}

/// Not a transaction: if writing the entries fails, the boot settings are already written.
ResultCode WriteBootSettings(const BootGroup& group, BootSettings& boot) {
    ResultCode code =
        CallLibrary(group.calls.write, [&] { return VEXAPI_SetBootDeviceInfo(boot.Handle(), &boot.parameters); });
    if (code != RC_SUCCESS || !UsesNvmeEntries(group, boot)) {
        return code;
    }
    code =
        CallLibrary(group.calls.writeNvme, [&] { return VEXAPI_SetNVMeBootDeviceEntries(boot.Handle(), &boot.nvme); });
    if (code != RC_SUCCESS) {
        return code;
    }
    boot.nvme = {}; // the library requires a zeroed record
    return CallLibrary(group.calls.readBackNvme,
                       [&] { return VEXAPI_GetNVMeBootDeviceEntries(boot.Handle(), &boot.nvme); });
}

} // namespace

ResultCode RefuseBootOption(const char* longName, const TavuString& value, ResultCode code) {
    TraceStep(TRACE_DEBUG, "%s=%s not supported", longName + 2, value.c_str());
    return code;
}

TavuString StagedName(std::string_view name) {
    const auto* const end = std::find_if(name.begin(), name.end(), [](char character) {
        const auto byte = static_cast<unsigned char>(character);
        return byte <= ' ' || byte == 0x7F || byte == '#';
    });
    return {name.begin(), end};
}

TavuString NvmeBootKey(VX_UINT32 number, const char* field) {
    TavuString key;
    key.Format("NVME_%u_%s", number, field);
    return key;
}

void StageBootTarget(VX_UINT32 number, const TavuString& wwpn, const TavuString& lun, StagedValues& values) {
    if (number < BOOT_TARGETS) {
        values[BootTargetKey(number, "WWPN")] = wwpn;
        values[BootTargetKey(number, "LUN")] = lun;
    }
}

ResultCode GetBootSettings(const BootGroup& group, const TavuStringArray& args, BootSettings& boot) {
    const ResultCode code = Open(group, args, boot);
    return code == RC_SUCCESS ? ReadNvmeEntries(group, boot) : code;
}

ResultCode StageBootSettings(const BootGroup& group, const TavuStringArray& args, BootSettings& boot) {
    if (const ResultCode code = Open(group, args, boot); code != RC_SUCCESS) {
        return code;
    }
    if (const ResultCode code = ReadNvmeEntries(group, boot); code == RC_FILE_ERROR) {
        return code;
    } else if (code != RC_SUCCESS) {
        boot.nvme = {}; // unreadable entries count as empty here, while `get` fails
    }
    const auto update = [&](const StagedFile& file) {
        StagedValues values;
        values[KEY_BOOT_MODE] = Decimal(group.modeInFile(boot.mode));
        ResultCode code = StageFlags(FLAG_OPTIONS, args, boot, values);
        if (code == RC_SUCCESS && group.isExtended) {
            code = StageFlags(NVME_FLAG_OPTIONS, args, boot, values);
        }
        if (code == RC_SUCCESS) {
            code = group.stageTargets(args, boot, values);
        }
        return code == RC_SUCCESS ? file.Merge(values) : code;
    };
    return StageSettings(
        group.file(ArgText(args, 0)), [&](StagedValues& values) { CollectBootSettings(group, boot, values); }, update,
        [&](const StagedFile& file) { ReadBootFile(group, file, boot); });
}

ResultCode CommitBootSettings(const BootGroup& group, const TavuStringArray& args, BootSettings& boot) {
    ResultCode code = GetPhysicalPortFromPortString(args, boot.entry);
    if (code == RC_SUCCESS) {
        code = ReadRecord(group, boot);
    }
    if (code != RC_SUCCESS) {
        return code;
    }
    const auto overlay = [&](const StagedFile& file) { ReadBootFile(group, file, boot); };
    return CommitSettings(group.file(ArgText(args, 0)), boot.commit, overlay, [&] {
        const ResultCode written = WriteBootSettings(group, boot);
        if (written == RC_SUCCESS) {
            boot.reboot = AskRebootRequired();
        }
        return written;
    });
}

const _tagVEXAPI_SDMTarget* FindBootTarget(const BootSettings& boot, const VX_UINT8 (&wwpn)[8]) {
    const _tagVEXAPI_SDMTarget* found = nullptr;
    ForEachEntry(boot.entry.protocol->pTargetList, [&](const _tagVEXAPI_SDMTarget& target) {
        found = IsSameWwn(target.PortName, wwpn) ? &target : nullptr;
        return found == nullptr;
    });
    return found;
}

const _tagVEXAPI_SDMLun* FindBootLun(const _tagVEXAPI_SDMTarget& target, long number) {
    const _tagVEXAPI_SDMLun* found = nullptr;
    ForEachEntry(target.pLunList, [&](const _tagVEXAPI_SDMLun& lun) {
        found = lun.LunNumber == number ? &lun : nullptr;
        return found == nullptr;
    });
    return found;
}

void AddBootSettings(ReportBlock& block, const BootSettings& boot) {
    const Parameters& parameters = boot.parameters;
    const bool isBios = boot.mode == BOOT_BIOS;
    AddFlag(block, isBios ? "Adapter BIOS" : "Adapter Driver", parameters.DisableBIOS == 0);
    if (isBios) {
        AddFlag(block, "Selectable Boot", parameters.EnableSelectableBoot != 0);
        if (HasFabricAssignment(boot.Chip())) {
            AddFlag(block, "Fabric Assigned Boot LUN", parameters.EnableFabricAssignBootLun != 0);
        }
        AddBootTargets(block, parameters, BIOS_BOOT_TARGETS);
        return;
    }
    AddFlag(block, "Selective Login", parameters.EnableSelectiveLogin != 0);
    AddFlag(block, "Selective LUN Login", parameters.EnableSelectiveLUN != 0);
    AddFlag(block, "World Login", parameters.ForceWorldLogin != 0);
    AddFlag(block, "Fabric Assigned Boot LUN", parameters.EnableFabricAssignBootLun != 0);
    if (boot.mode == BOOT_NVME) {
        AddNvmeEntries(block, boot);
    } else {
        AddBootTargets(block, parameters, BOOT_TARGETS);
    }
}
