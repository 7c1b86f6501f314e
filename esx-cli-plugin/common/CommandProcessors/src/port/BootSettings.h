/// @file
/// What the groups of boot settings share: their rules, their cache files and their reports. A group says in
/// its `BootGroup` what differs.
#pragma once

#include "CmdLineParser.h"
#include "Family.h"
#include "LibraryCall.h"
#include "ReportTexts.h"
#include "Resolvers.h"
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

/// The boot mode of `bootconfig` is an option, that of `bootconfigext` the second argument.
inline constexpr CodeText BOOT_MODE_WORDS[] = {{BOOT_BIOS, "BIOS"}, {BOOT_UEFI, "UEFI"}, {BOOT_NVME, "NVME"}};
inline constexpr std::span<const CodeText> PLAIN_BOOT_MODES{BOOT_MODE_WORDS, 2};

/// The flags that both groups take, and the one that only `bootconfigext` has.
inline constexpr Argument BOOT_FLAGS[] = {
    {"--enable-bfs", "-a", "whether the adapter's boot code runs", ArgumentKind::WORD, false, INVERTED_FLAG_WORDS},
    {"--fabric-assigned-boot-lun", "-f", "whether the fabric assigns the boot LUN", ArgumentKind::WORD, false,
     FLAG_WORDS},
    {"--selectable-boot", "-d", "whether the boot target can be selected", ArgumentKind::WORD, false, FLAG_WORDS},
    {"--selective-login", "-e", "whether only the boot targets are logged into", ArgumentKind::WORD, false, FLAG_WORDS},
    {"--selective-lun-login", "-c", "the same for the boot LUNs", ArgumentKind::WORD, false, FLAG_WORDS},
    {"--world-login", "-g", "whether every port is logged into", ArgumentKind::WORD, false, FLAG_WORDS},
};
inline constexpr Argument NVME_BOOT_FLAG = {"--fc-nvme",        "-m",  "whether NVMe over Fibre Channel is booted from",
                                            ArgumentKind::WORD, false, FLAG_WORDS};

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

/// What is particular to a group.
struct BootGroup {
    BootCalls calls;
    BlockShape shape;
    /// Reads the mode among the words.
    ResultCode (*readMode)(const TavuStringArray& args, BootSettings& boot);
    /// Whether the library's mode must be switched before boot settings are read.
    bool (*mustSwitchMode)(VX_UINT8 current, VX_UINT8 wanted);
    StagedFile (*file)(const char* identifier);
    /// The number of a mode in the cache file, and back.
    VX_UINT32 (*modeInFile)(VX_UINT8 mode);
    VX_UINT8 (*modeFromFile)(VX_UINT32 number);
    /// Checks and stages the options that name boot targets.
    ResultCode (*stageTargets)(const TavuStringArray& args, const BootSettings& boot, StagedValues& values);
    bool isExtended; ///< has NVMe settings
};

/// The whole of `get`, of `setFile` and of `set`, but for their documents. A failing `set` keeps the file, so
/// that the command can be repeated.
ResultCode GetBootSettings(const BootGroup& group, const TavuStringArray& args, BootSettings& boot);
ResultCode StageBootSettings(const BootGroup& group, const TavuStringArray& args, BootSettings& boot);
ResultCode CommitBootSettings(const BootGroup& group, const TavuStringArray& args, BootSettings& boot);

/// Traces a refused option, whose name has two dashes before it, and gives `code`.
ResultCode RefuseBootOption(const char* longName, const TavuString& value, ResultCode code);

/// Stages a boot target in the keys of entry `number`; an entry above 7 has none, and nothing is staged.
void StageBootTarget(VX_UINT32 number, const TavuString& wwpn, const TavuString& lun, StagedValues& values);

/// An NVMe qualified name as it is staged: up to its first white space, control character or "#", where a reader
/// of the cache file would cut it anyway. So no name can bring lines of its own into the file.
TavuString StagedName(std::string_view name);

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

/// A group's family. `Self` gives a `GROUP` beside its `FAMILY`.
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
