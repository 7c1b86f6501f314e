/// @file
/// What the groups of boot settings share: their rules, their cache files and their reports. A group says in
/// its `BootGroup` what differs.
#pragma once

#include "LibraryCall.h"
#include "PhysicalPortCmdsProcessor.h"
#include "StagedSettings.h"

/// Boot-from-SAN modes in the library's numbering.
enum BootMode : VX_UINT8 { BOOT_BIOS = 1, BOOT_UEFI = 2, BOOT_NVME = 4 };

/// Boot settings of a port, and what a command finds out about it.
struct BootSettings {
    PortEntry entry;
    VX_UINT8 mode = BOOT_BIOS; ///< `BootMode`, or any number that a file holds
    _VEXAPI_HBAParameters parameters{};
    _VEXAPI_FcNVMeBootParams nvme{};
    RebootRequired reboot;
    bool isNothingPending = false; ///< for `set`: there is no cache file

    __CHIPPROPERTY Chip() const { return entry.protocol->ChipProperty; }
    VX_PORT_HANDLE* Handle() const { return &entry.protocol->PortHandle; }
};

/// Library calls of both groups.
struct BootCalls {
    LibraryCall switchMode;
    LibraryCall read;
    LibraryCall write;
    LibraryCall writeNvme;
    LibraryCall readBackNvme;
};

/// What is particular to a group.
struct BootGroup {
    BootCalls calls;
    /// Whether the library's mode must be switched before boot settings are read.
    bool (*mustSwitchMode)(VX_UINT8 current, VX_UINT8 wanted);
    StagedFile (*file)(const char* identifier);
    /// The number of a mode in the cache file, and back.
    VX_UINT32 (*modeInFile)(VX_UINT8 mode);
    VX_UINT8 (*modeFromFile)(VX_UINT32 number);
    bool isExtended; ///< has NVMe settings
};

/// The opening of `get` and `setFile`, once port and mode stand: aligns the library's mode, checks the ROM and
/// reads the settings.
VX_UINT32 ReadBootSettings(const BootGroup& group, BootSettings& boot);

/// The whole of `setFile` behind that; `update(values)` checks the options that the groups don't share.
using BootOptions = VX_UINT32 (*)(const TavuStringArray& args, const BootSettings& boot, StagedValues& values);
VX_UINT32 StageBootSettings(const BootGroup& group, const TavuStringArray& args, BootSettings& boot,
                            BootOptions options);

/// The whole of `set`. A failure keeps the file, so that the command can be repeated.
VX_UINT32 CommitBootSettings(const BootGroup& group, const TavuStringArray& args, BootSettings& boot);

/// Stages a boot target in the keys of entry `number`; an entry above 7 has none, and nothing is staged.
void StageBootTarget(VX_UINT32 number, const TavuString& wwpn, const TavuString& lun, StagedValues& values);

/// Key of an NVMe boot entry's field.
TavuString NvmeBootKey(VX_UINT32 number, const char* field);
inline constexpr char NVME_CONTROLLER_ID[] = "ControllerID";
inline constexpr char NVME_ENABLE[] = "Enable";
inline constexpr char NVME_NQN[] = "NQN";
inline constexpr char NVME_NAMESPACE_ID[] = "NamespaceID";
inline constexpr char NVME_WWNN[] = "WWNN";
inline constexpr char NVME_WWPN[] = "WWPN";

/// The target of a port with this name, or null; the LUN or namespace of a target with this number, or null.
const _tagVEXAPI_SDMTarget* FindBootTarget(const BootSettings& boot, const VX_UINT8 (&wwpn)[8]);
const _tagVEXAPI_SDMLun* FindBootLun(const _tagVEXAPI_SDMTarget& target, long number);

/// The lines of the report: the layout of the BIOS, of UEFI, or of NVMe. A mode that is none has that of UEFI.
void AddBootSettings(ReportBlock& block, const BootSettings& boot);
