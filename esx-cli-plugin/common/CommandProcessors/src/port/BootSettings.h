/// @file
/// Common rules, cache files and reports of the groups of boot settings. A group's `BootGroup` states how it
/// differs.
#pragma once

#include "CmdLineParser.h"
#include "Family.h"
#include "LibraryCall.h"
#include "ReportTexts.h"
#include "Resolvers.h"
#include "StagedSettings.h"

/// Boot-from-SAN modes in the library's numbering.
enum BootMode : VX_UINT8 { BOOT_BIOS = 1, BOOT_UEFI = 2, BOOT_NVME = 4 };

/// Boot settings of a port, and related state of a command.
struct BootSettings {
    PortEntry entry;
    VX_UINT8 mode = BOOT_BIOS; ///< `BootMode`, or any number from a file
    _VEXAPI_HBAParameters parameters{};
    _VEXAPI_FcNVMeBootParams nvme{};
    RebootRequired reboot;
    Commit commit; ///< of `set`

    __CHIPPROPERTY Chip() const { return entry.protocol->ChipProperty; }
    VX_PORT_HANDLE* Handle() const { return &entry.protocol->PortHandle; }
};

/// Library calls of both groups.
struct BootCalls {
    LibraryCall switchMode;
    LibraryCall read;
    LibraryCall readNvme;
    LibraryCall write;
    LibraryCall writeNvme;
    LibraryCall readBackNvme;
};

/// The boot mode is an option in `bootconfig`, and the second argument in `bootconfigext`.
inline constexpr CodeText BOOT_MODE_WORDS[] = {{BOOT_BIOS, "BIOS"}, {BOOT_UEFI, "UEFI"}, {BOOT_NVME, "NVME"}};
inline constexpr std::span<const CodeText> PLAIN_BOOT_MODES{BOOT_MODE_WORDS, 2};
/// Modes with which an option applies.
inline constexpr std::span<const CodeText> ONLY_BIOS{BOOT_MODE_WORDS, 1};
inline constexpr std::span<const CodeText> NOT_BIOS{BOOT_MODE_WORDS + 1, 2};
inline constexpr std::span<const CodeText> ONLY_NVME{BOOT_MODE_WORDS + 2, 1};

/// Whether an option applies with a mode.
constexpr bool AppliesWith(const Argument& option, VX_UINT8 mode) {
    return option.appliesWith.empty() || TextOf(option.appliesWith, mode, nullptr) != nullptr;
}

/// The flags common to both groups, and the one that only `bootconfigext` has.
consteval Argument BootFlag(const char* name, const char* shortName, const char* description,
                            std::span<const CodeText> modes) {
    return Argument{name, shortName, description, ArgumentKind::WORD, false, FLAG_WORDS}.With(modes);
}
inline constexpr Argument BOOT_FLAGS[] = {
    {"--enable-bfs", "-a", "whether the adapter's boot code runs", ArgumentKind::WORD, false, INVERTED_FLAG_WORDS},
    {"--fabric-assigned-boot-lun", "-f", "whether the fabric assigns the boot LUN", ArgumentKind::WORD, false,
     FLAG_WORDS},
    BootFlag("--selectable-boot", "-d", "whether the boot target can be selected", ONLY_BIOS),
    BootFlag("--selective-login", "-e", "whether only the boot targets are logged into", NOT_BIOS),
    BootFlag("--selective-lun-login", "-c", "the same for the boot LUNs", NOT_BIOS),
    BootFlag("--world-login", "-g", "whether every port is logged into", NOT_BIOS),
};
inline constexpr Argument NVME_BOOT_FLAG =
    BootFlag("--fc-nvme", "-m", "whether NVMe over Fibre Channel is booted from", ONLY_NVME);

/// `first`, the flags, then `last`.
template <std::size_t M, std::size_t N>
consteval std::array<Argument, M + std::size(BOOT_FLAGS) + N> BootArguments(const Argument (&first)[M],
                                                                            const Argument (&last)[N]) {
    std::array<Argument, M + std::size(BOOT_FLAGS) + N> all{};
    auto* at = std::copy(std::begin(first), std::end(first), all.begin());
    at = std::copy(std::begin(BOOT_FLAGS), std::end(BOOT_FLAGS), at);
    std::copy(std::begin(last), std::end(last), at);
    return all;
}

/// Properties of a group.
struct BootGroup {
    BootCalls calls;
    BlockShape shape;
    /// Parses the mode.
    ResultCode (*readMode)(const TavuStringArray& args, BootSettings& boot);
    /// Whether the library's mode must be switched before reading boot settings.
    bool (*mustSwitchMode)(VX_UINT8 current, VX_UINT8 wanted);
    StagedFile (*file)(const char* identifier);
    /// Converts a mode to its number in the cache file, and back.
    VX_UINT32 (*modeInFile)(VX_UINT8 mode);
    VX_UINT8 (*modeFromFile)(VX_UINT32 number);
    /// Checks and stages the options that name boot targets.
    ResultCode (*stageTargets)(const TavuStringArray& args, const BootSettings& boot, StagedValues& values);
    bool isExtended; ///< has NVMe settings
};

/// `get`, `setFile` and `set` without their documents. If `set` fails, the file is kept, so that the command can be
/// repeated.
ResultCode GetBootSettings(const BootGroup& group, const TavuStringArray& args, BootSettings& boot);
ResultCode StageBootSettings(const BootGroup& group, const TavuStringArray& args, BootSettings& boot);
ResultCode CommitBootSettings(const BootGroup& group, const TavuStringArray& args, BootSettings& boot);

/// Traces a rejected option, with two dashes before its name, and returns `code`.
ResultCode RefuseBootOption(const char* longName, const TavuString& value, ResultCode code);

/// Stages a boot target in the keys of entry `number`; nothing is staged for numbers above 7.
void StageBootTarget(VX_UINT32 number, const TavuString& wwpn, const TavuString& lun, StagedValues& values);

/// The staged form of an NVMe qualified name: up to its first white space, control character or "#", where a reader
/// of the cache file would cut it anyway. So a name can't inject lines into the file.
TavuString StagedName(std::string_view name);

/// Key of an NVMe boot entry's field.
TavuString NvmeBootKey(VX_UINT32 number, const char* field);
inline constexpr char NVME_CONTROLLER_ID[] = "ControllerID";
inline constexpr char NVME_ENABLE[] = "Enable";
inline constexpr char NVME_NQN[] = "NQN";
inline constexpr char NVME_NAMESPACE_ID[] = "NamespaceID";
inline constexpr char NVME_WWNN[] = "WWNN";
inline constexpr char NVME_WWPN[] = "WWPN";

/// The port's target with this name, or null; the target's LUN or namespace with this number, or null.
const _tagVEXAPI_SDMTarget* FindBootTarget(const BootSettings& boot, const VX_UINT8 (&wwpn)[8]);
const _tagVEXAPI_SDMLun* FindBootLun(const _tagVEXAPI_SDMTarget& target, long number);

/// Adds the report in the layout of the BIOS, UEFI or NVMe. An unknown mode has the layout of UEFI.
void AddBootSettings(ReportBlock& block, const BootSettings& boot);

/// Family of a group. `Self` provides a `GROUP` in addition to its `FAMILY`.
template <typename Self> class BootFamily : public Family<Self> {
    using Base = Family<Self>;

protected:
    static ResultCode Get(const TavuStringArray& args, BootSettings& boot) {
        return GetBootSettings(Self::GROUP, args, boot);
    }
    static ResultCode SetFile(const TavuStringArray& args, BootSettings& boot) {
        return StageBootSettings(Self::GROUP, args, boot);
    }
    static ResultCode Set(const TavuStringArray& args, BootSettings& boot) {
        return CommitBootSettings(Self::GROUP, args, boot);
    }
    static void DisplayBootConfigInfo(MultipleCmdsProcessor* self, const BootSettings& boot,
                                      Serializer::eOutputFormat format) {
        Base::DisplayBlock(
            self, format, __func__, Self::GROUP.shape, [&](ReportBlock& block) { AddBootSettings(block, boot); },
            boot.reboot);
    }

    static constexpr CommonFunction CmdGetCommon =
        Base::template FetchThenDisplay<Get, DisplayBootConfigInfo, Base::DisplayError>;
    static constexpr CommonFunction CmdSetFileCommon =
        Base::template FetchThenDisplay<SetFile, DisplayBootConfigInfo, Base::DisplayError>;
    static constexpr CommonFunction CmdSetCommon =
        Base::template CommitThenDisplay<Set, DisplayBootConfigInfo, Base::DisplaySetError>;
};
