/// @file
/// A port with boot settings, all with different values, and its output to clients.
#pragma once

#include "StagedTest.h"

namespace family_test {

/// Boot modes, by the library's numbers.
enum Mode : VX_UINT8 { BIOS = 1, UEFI = 2, NVME = 4 };

inline constexpr char UNKNOWN_FAILURE[] = "Failed, Unknown";
inline constexpr char INVALID[] = "Failed, Invalid parameter";
inline constexpr char READ_FAILED[] = "Failed, Boot Config read failed";
inline constexpr char UPDATE_FAILED[] = "Failed, Boot Config update failed";
inline constexpr char NO_WWN[] = "00:00:00:00:00:00:00:00";

/// A flag of the record: its option, its key, and its lines in the layouts of the BIOS and of UEFI.
struct FlagOfBoot {
    VX_UINT32 _VEXAPI_HBAParameters::*field;
    const char* longName;
    const char* shortName;
    const char* key;
    const char* biosLabel; ///< null: no line
    const char* uefiLabel;
    bool isInverted; ///< inverted in the record
};
inline constexpr FlagOfBoot BOOT_FLAGS[] = {
    {&_VEXAPI_HBAParameters::DisableBIOS, "--enable-bfs", "-a", "Disable_BIOS", "Adapter BIOS", "Adapter Driver", true},
    {&_VEXAPI_HBAParameters::EnableFabricAssignBootLun, "--fabric-assigned-boot-lun", "-f", "Fabric_Assigned_Boot_Lun",
     "Fabric Assigned Boot LUN", "Fabric Assigned Boot LUN", false},
    {&_VEXAPI_HBAParameters::EnableSelectableBoot, "--selectable-boot", "-d", "Selectable_Boot", "Selectable Boot",
     nullptr, false},
    {&_VEXAPI_HBAParameters::EnableSelectiveLogin, "--selective-login", "-e", "Selective_Login", nullptr,
     "Selective Login", false},
    {&_VEXAPI_HBAParameters::EnableSelectiveLUN, "--selective-lun-login", "-c", "Selective_LUN_Login", nullptr,
     "Selective LUN Login", false},
    {&_VEXAPI_HBAParameters::ForceWorldLogin, "--world-login", "-g", "World_Login", nullptr, "World Login", false},
};

/// A boot target of the record, by number.
struct BootTargetFields {
    VX_UINT8 (_VEXAPI_HBAParameters::*wwpn)[8];
    VX_UINT16 _VEXAPI_HBAParameters::*lun;
};
inline constexpr BootTargetFields BOOT_TARGETS[] = {
    {&_VEXAPI_HBAParameters::BootPortName, &_VEXAPI_HBAParameters::BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt1BootPortName, &_VEXAPI_HBAParameters::Alt1BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt2BootPortName, &_VEXAPI_HBAParameters::Alt2BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt3BootPortName, &_VEXAPI_HBAParameters::Alt3BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt4BootPortName, &_VEXAPI_HBAParameters::Alt4BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt5BootPortName, &_VEXAPI_HBAParameters::Alt5BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt6BootPortName, &_VEXAPI_HBAParameters::Alt6BootLunNumber},
    {&_VEXAPI_HBAParameters::Alt7BootPortName, &_VEXAPI_HBAParameters::Alt7BootLunNumber},
};
/// Prefix of a boot target's two keys, by number.
inline std::string TargetKey(unsigned number, const char* field) {
    return (number == 0 ? "Primary_Boot_Target_" : "Alternate_Boot_Target_" + std::to_string(number) + "_") + field;
}

/// Differences between the groups.
struct BootGroupRow {
    const char* file;
    const char* family;
    bool isExtended;
    std::size_t blockSize;
    const char* paramError; ///< text of code 4
    const char* invalidCmd; ///< text of code 8
};
inline constexpr BootGroupRow BOOT_CONFIG = {"BootConfig",
                                             "bootconfig",
                                             false,
                                             2048,
                                             "Failed, Boot parameter requires UEFI boot mode option",
                                             "Failed, UEFI boot mode not supported for this adapter"};
inline constexpr BootGroupRow BOOT_CONFIG_EXT = {"BootConfigExt",
                                                 "bootconfigext",
                                                 true,
                                                 8192,
                                                 "Failed, Boot parameter requires valid boot mode option",
                                                 "Failed, UEFI/NVME boot mode not supported for this adapter"};

inline bool IsUefiCapable(Chip chip) {
    return chip == LARCH || chip == ALDER || chip == BIRCH;
}
/// Whether an adapter supports boot LUNs assigned by the fabric.
inline bool HasFabricLun(Chip chip) {
    return chip != FOUR_G && chip != EIGHT_G && chip != ROWAN_CNA && chip != HAZEL && chip != WILLOW;
}

inline std::string InUpperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
    return text;
}

/// A Birch with both ROMs. Its targets: "50:…:01" with LUNs 0, 3, 300 and 65535; the NVMe target "50:…:02" with
/// namespaces 1, 3 and 300; and "50:…:03" without LUNs.
class BootTestBase : public StagedTest {
protected:
    explicit BootTestBase(const BootGroupRow& wanted) : StagedTest(wanted.file, wanted.family), group(wanted) {
        port->OptionRomMask = 0x0A;
        // Fields unknown to the tool must be preserved too: every byte of the rest has a value.
        auto* const bytes = reinterpret_cast<VX_UINT8*>(&nvram);
        for (std::size_t i = 0; i < sizeof nvram; ++i) {
            bytes[i] = static_cast<VX_UINT8>(i * 7 + 1);
        }
        nvram.DisableBIOS = 1;
        nvram.EnableFabricAssignBootLun = 1;
        nvram.EnableSelectableBoot = 1;
        nvram.EnableSelectiveLogin = 0;
        nvram.EnableSelectiveLUN = 1;
        nvram.ForceWorldLogin = 0;
        nvram.NVMeEnable = 1;
        for (unsigned number = 0; number < 8; ++number) { // "10:11:…:17" and 7, "20:21:…:27" and 9008, …
            for (unsigned i = 0; i < 8; ++i) {
                (nvram.*BOOT_TARGETS[number].wwpn)[i] = static_cast<VX_UINT8>(0x10 * (number + 1) + i);
            }
            nvram.*BOOT_TARGETS[number].lun = static_cast<VX_UINT16>(9001 * number + 7);
        }
        AddTargets();

        if (group.isExtended) {
            Fake().Succeed({"GetNVMeBootDeviceEntries"});
        }
        Fake().onGetBfsConfigMode = [this] {
            Chatter();
            return bfsMode;
        };
        Fake().onSetBfsConfigMode = [this](VX_UINT8 mode) {
            Chatter();
            bfsMode = mode;
            return 0u;
        };
        Fake().onGetBootDeviceInfo = [this](VX_PORT_HANDLE*, _VEXAPI_HBAParameters* parameters, void* third) {
            Chatter();
            EXPECT_TRUE(IsCleared(*parameters));
            EXPECT_EQ(third, nullptr);
            *parameters = nvram;
            return 0u;
        };
        Fake().onSetBootDeviceInfo = [this](VX_PORT_HANDLE*, _VEXAPI_HBAParameters* parameters) {
            Chatter();
            written = *parameters;
            return 0u;
        };
        Fake().onIsRebootRequired = [this](VX_UINT32* required) {
            Chatter();
            EXPECT_EQ(*required, 1u); // so a reboot is requested if the library leaves it alone
            *required = reboot;
            return rebootStatus;
        };
    }

    template <typename Record> static bool IsCleared(const Record& record) {
        const auto* const bytes = reinterpret_cast<const VX_UINT8*>(&record);
        return std::all_of(bytes, bytes + sizeof record, [](VX_UINT8 byte) { return byte == 0; });
    }
    /// Whether the library received exactly this record.
    bool WasWritten(const _VEXAPI_HBAParameters& record) const {
        return written.has_value() && std::memcmp(&*written, &record, sizeof record) == 0;
    }

    std::vector<Mode> Modes() const {
        return group.isExtended ? std::vector<Mode>{BIOS, UEFI, NVME} : std::vector<Mode>{BIOS, UEFI};
    }
    /// The arguments that select a mode.
    std::string ModeWords(Mode mode) const {
        if (group.isExtended) {
            return mode == BIOS ? "BIOS" : mode == UEFI ? "UEFI" : "NVME";
        }
        return mode == BIOS ? "-b BIOS" : "-b UEFI";
    }
    /// The mode in the cache file.
    std::string ModeNumber(Mode mode) const { return std::to_string(group.isExtended ? mode : mode - 1); }
    /// Runs a command in a mode; `set` takes none.
    CommandRun RunIn(Mode mode, const std::string& leaf, const std::string& rest = "") const {
        const bool isSet = leaf.starts_with("set") && !leaf.starts_with("setFile");
        const std::string words = isSet ? "" : ModeWords(mode);
        return Run(leaf, words + (words.empty() || rest.empty() ? "" : " ") + rest);
    }

    /// The cache file of the library's settings: all keys in ascending byte order. The extended group also has NVMe
    /// boot entries, which are empty except in NVMe mode.
    std::string Snapshot(Mode mode) const {
        std::string text;
        for (unsigned number = 1; number < 8; ++number) {
            text += TargetKey(number, "LUN=") + Lun(number) + "\n" + TargetKey(number, "WWPN=") + Wwpn(number) + "\n";
        }
        text += "Boot_Mode=" + ModeNumber(mode) + "\nDisable_BIOS=1\nFabric_Assigned_Boot_Lun=1\n";
        if (group.isExtended) {
            text += (mode == NVME ? nvmeLines : EmptyNvmeLines()) + "NVMe_Enable=1\n";
        }
        return text + "Primary_Boot_Target_LUN=7\n"
                      "Primary_Boot_Target_WWPN=10:11:12:13:14:15:16:17\n"
                      "Selectable_Boot=1\n"
                      "Selective_LUN_Login=1\n"
                      "Selective_Login=0\n"
                      "World_Login=0\n";
    }
    static std::string EmptyNvmeLines() {
        std::string text;
        for (unsigned number = 0; number < 8; ++number) {
            const std::string start = "NVME_" + std::to_string(number) + "_";
            text += start + "ControllerID=0\n" + start + "Enable=0\n" + start + "NQN=\n" + start + "NamespaceID=0\n" +
                    start + "WWNN=00:00:00:00:00:00:00:00\n" + start + "WWPN=00:00:00:00:00:00:00:00\n";
        }
        return text;
    }
    static std::string Lun(unsigned number) { return std::to_string(9001 * number + 7); }
    static std::string Wwpn(unsigned number) {
        std::string text;
        for (unsigned i = 0; i < 8; ++i) {
            text += (i == 0 ? "" : ":") + std::to_string(number + 1) + std::to_string(i);
        }
        return text;
    }

    /// The lines of the layouts.
    static std::vector<Field> BiosLines() {
        std::vector<Field> lines = {
            {"Adapter BIOS", "false"}, {"Selectable Boot", "true"}, {"Fabric Assigned Boot LUN", "true"}};
        AddDrives(lines, 4);
        return lines;
    }
    static std::vector<Field> UefiFlags() {
        return {{"Adapter Driver", "false"},
                {"Selective Login", "false"},
                {"Selective LUN Login", "true"},
                {"World Login", "false"},
                {"Fabric Assigned Boot LUN", "true"}};
    }
    static std::vector<Field> UefiLines() {
        std::vector<Field> lines = UefiFlags();
        AddDrives(lines, 8);
        return lines;
    }
    static std::vector<Field> LinesIn(Mode mode) { return mode == BIOS ? BiosLines() : UefiLines(); }

    static std::string Document(const Format& format, const std::vector<Field>& lines,
                                std::optional<bool> reboot = std::nullopt) {
        std::vector<Field> head = {{"Message", "Success"}};
        if (reboot.has_value()) {
            head.push_back(Flag("Reboot Required", *reboot));
        }
        std::string text;
        for (const Field& line : lines) {
            text += (text.empty() ? "" : "      ") + line.label + ": " + line.value + "\n";
        }
        return format.Report(
            "BootConfigInfo", head, "BootConfig",
            format.Structure("BootConfigList",
                             format.OpenField("Data", format.IsXml() ? "<string>" + text + "</string>" : text)));
    }
    /// "Reboot Required" precedes "Message" here.
    static std::string Error(const Format& format, const std::string& message, bool isSet = false) {
        std::vector<Field> head = {{"Message", message}};
        if (isSet) {
            head.insert(head.begin(), Flag("Reboot Required", false));
        }
        return format.Report("BootConfigInfo", head, "BootConfig", "");
    }
    /// Output of a cli leaf after a code that shows its usage.
    static std::string UsageOf(const Format& format, const std::string& leaf) {
        return format.IsXml() ? "" : "Usage: " + leaf + "\r\n";
    }

    /// Options of a rejected `setFile`.
    struct Refusal {
        Chip chip;
        Mode mode;
        std::string options;
        ResultCode code;
        const char* message;
    };
    /// Expects its document in both formats, followed by the usage if there is one; the file is unchanged.
    void ExpectRefusal(const Refusal& refusal) const {
        SetChip(*port, refusal.chip);
        const bool hasUsage = refusal.code == RC_PARAM_ERROR || refusal.code == RC_INVALID_PARAMETER;
        for (const Format& format : FORMATS) {
            Stage(Snapshot(refusal.mode));
            const CommandRun run = RunIn(refusal.mode, format.Leaf("setFile"), refusal.options);
            EXPECT_EQ(run.code, refusal.code) << refusal.options;
            EXPECT_EQ(run.output, Error(format, refusal.message) + (hasUsage ? UsageOf(format, "setFile") : ""));
            EXPECT_EQ(Staged(), Snapshot(refusal.mode)) << refusal.options;
        }
    }

    Calls SetCalls() const {
        return {PortCall("GetBootDeviceInfo"), PortCall("SetBootDeviceInfo"), "VEXAPI_IsRebootRequired()"};
    }

    /// Expects `setFile` to be rejected, with the file unchanged.
    void ExpectRefused(Mode mode, const std::string& options, ResultCode code) const {
        const std::string before = Staged();
        const auto identity = FileIdentity();
        EXPECT_EQ(RunIn(mode, "setFile", options).code, code) << options.substr(0, 200);
        EXPECT_EQ(Staged(), before) << options.substr(0, 200);
        EXPECT_EQ(FileIdentity(), identity) << options.substr(0, 200);
    }
    /// Runs `setFile` on a fresh snapshot, and expects this file.
    void ExpectStaged(Mode mode, const std::string& options, const std::string& content) const {
        Stage(Snapshot(mode));
        EXPECT_EQ(RunIn(mode, "setFile", options).code, RC_SUCCESS) << options.substr(0, 200);
        EXPECT_EQ(Staged(), content) << options.substr(0, 200);
    }

    const BootGroupRow group;
    _VEXAPI_HBAParameters nvram{};                ///< returned by the library
    std::optional<_VEXAPI_HBAParameters> written; ///< last received by it
    std::string nvmeLines = EmptyNvmeLines();     ///< the library's NVMe boot entries in the cache file
    VX_UINT8 bfsMode = BIOS;
    VX_UINT32 reboot = 1;
    VX_UINT32 rebootStatus = 0;
    _tagVEXAPI_SDMTarget* target = nullptr;
    _tagVEXAPI_SDMTarget* nvmeTarget = nullptr;
    const std::string TARGET = "50:00:0a:0b:0c:0d:01:01";
    const std::string NVME_TARGET = "50:00:0a:0b:0c:0d:01:02";
    const std::string BARE_TARGET = "50:00:0a:0b:0c:0d:01:03";
    const std::string NO_TARGET = "50:00:0a:0b:0c:0d:01:04";

private:
    void AddTargets() {
        target = &Fake().host.AddTarget(*port);
        std::memset(target->TargetFlags, 0xFF, sizeof target->TargetFlags);
        target->TargetFlags[5] = 0xF7; // all but the bit of NVMe
        for (const VX_UINT16 number : std::initializer_list<VX_UINT16>{0, 3, 300, 65535}) {
            Fake().host.AddLun(*target).LunNumber = number;
        }
        nvmeTarget = &Fake().host.AddTarget(*port);
        nvmeTarget->TargetFlags[5] = 0x08; // that bit alone
        SetBytes(nvmeTarget->NodeName, {0x2F, 0xFF, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0xFE});
        nvmeTarget->StorageControllerId = 0xBEEF;
        SetText(nvmeTarget->StorageNqn, "nqn.2020-01.org.example:array");
        for (const VX_UINT16 number : std::initializer_list<VX_UINT16>{1, 3, 300}) {
            Fake().host.AddLun(*nvmeTarget).LunNumber = number;
        }
        Fake().host.AddTarget(*port);
    }
    static void AddDrives(std::vector<Field>& lines, unsigned count) {
        for (unsigned number = 0; number < count; ++number) {
            const std::string label = "Drive " + std::to_string(number);
            lines.push_back({label + " WWPN", Wwpn(number)});
            lines.push_back({label + " LUN", Lun(number)});
        }
    }
};

/// Tests of both groups.
class BootGroupTest : public BootTestBase, public ::testing::WithParamInterface<const BootGroupRow*> {
protected:
    BootGroupTest() : BootTestBase(*GetParam()) {}
};
inline const auto BOOT_GROUPS = ::testing::Values(&BOOT_CONFIG, &BOOT_CONFIG_EXT);
inline std::string NameOfGroup(const ::testing::TestParamInfo<const BootGroupRow*>& info) {
    return info.param->file;
}

} // namespace family_test
