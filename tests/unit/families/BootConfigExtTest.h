/// @file
/// A port whose library has NVMe boot entries, with different bytes throughout.
#pragma once

#include "BootTest.h"

namespace family_test {

inline constexpr char NO_NVME[] = "Failed, NVMe Boot Config not present";

class BootConfigExtTestBase : public BootTestBase {
protected:
    BootConfigExtTestBase() : BootTestBase(BOOT_CONFIG_EXT) {
        auto* const bytes = reinterpret_cast<VX_UINT8*>(&entries);
        for (std::size_t i = 0; i < sizeof entries; ++i) {
            bytes[i] = static_cast<VX_UINT8>(i * 5 + 3);
        }
        nvmeLines.clear();
        for (unsigned number = 0; number < 8; ++number) { // "c0:01:…:07" and "c0:11:…:17", "c1:01:…"
            VX_NVME_BOOT_ENTRY& entry = entries.BootEntry[number];
            for (unsigned i = 0; i < 8; ++i) {
                entry.TargetWWNN[i] = static_cast<VX_UINT8>(i == 0 ? 0xC0 + number : i);
                entry.TargetWWPN[i] = static_cast<VX_UINT8>(i == 0 ? 0xC0 + number : 0x10 + i);
            }
            entry.TargetNSID = 0xFFFFFFFF - number; // 4294967295, 4294967294, …
            entry.TargetCtrlID = static_cast<VX_UINT16>(0xFFF0 + number);
            entry.TargetFlags = number % 2 == 0 ? 1 : 0;
            SetText(entry.TargetNQN, "nqn.array" + std::to_string(number));
            const std::string digit = std::to_string(number);
            const std::string start = "NVME_" + digit + "_";
            nvmeLines += start + "ControllerID=" + std::to_string(65520 + number) + "\n" + start +
                         "Enable=" + (number % 2 == 0 ? "1" : "0") + "\n" + start + "NQN=nqn.array" + digit + "\n" +
                         start + "NamespaceID=" + std::to_string(4294967295 - number) + "\n" + start + "WWNN=c" +
                         digit + ":01:02:03:04:05:06:07\n" + start + "WWPN=c" + digit + ":11:12:13:14:15:16:17\n";
        }
        SetText(entries.HostNQN, "nqn.host");
        SetBytes(entries.HostId,
                 {0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF});
        Fake().onGetNVMeBootDeviceEntries = [this](VX_PORT_HANDLE*, _VEXAPI_FcNVMeBootParams* parameters) {
            Chatter();
            EXPECT_TRUE(IsCleared(*parameters));
            *parameters = entries;
            return 0u;
        };
        Fake().onSetNVMeBootDeviceEntries = [this](VX_PORT_HANDLE*, _VEXAPI_FcNVMeBootParams* parameters) {
            Chatter();
            writtenEntries = *parameters;
            return 0u;
        };
    }

    /// Whether the library received exactly this record.
    bool WereWritten(const _VEXAPI_FcNVMeBootParams& record) const {
        return writtenEntries.has_value() && std::memcmp(&*writtenEntries, &record, sizeof record) == 0;
    }
    /// The part of the library's entries in a cache file: six fields each.
    _VEXAPI_FcNVMeBootParams Carried() const {
        _VEXAPI_FcNVMeBootParams carried{};
        for (unsigned number = 0; number < 8; ++number) {
            const VX_NVME_BOOT_ENTRY& from = entries.BootEntry[number];
            VX_NVME_BOOT_ENTRY& to = carried.BootEntry[number];
            std::memcpy(to.TargetWWPN, from.TargetWWPN, sizeof to.TargetWWPN);
            std::memcpy(to.TargetWWNN, from.TargetWWNN, sizeof to.TargetWWNN);
            to.TargetNSID = from.TargetNSID;
            to.TargetCtrlID = from.TargetCtrlID;
            to.TargetFlags = from.TargetFlags;
            std::memcpy(to.TargetNQN, from.TargetNQN, sizeof to.TargetNQN);
        }
        return carried;
    }
    Calls ReadCalls(Mode mode) const {
        Calls calls = {"VEXAPI_GetBfsConfigMode()", PortCall("GetBootDeviceInfo")};
        if (mode == NVME) {
            calls.push_back(PortCall("GetNVMeBootDeviceEntries"));
        }
        return calls;
    }
    Calls NvmeSetCalls() const {
        return {PortCall("GetBootDeviceInfo"), PortCall("SetBootDeviceInfo"), PortCall("SetNVMeBootDeviceEntries"),
                PortCall("GetNVMeBootDeviceEntries"), "VEXAPI_IsRebootRequired()"};
    }

    /// The lines of the NVMe layout.
    static std::vector<Field> NvmeLines() {
        std::vector<Field> lines = UefiFlags();
        lines.push_back({"FC NVMe", "true"});
        lines.push_back({"Host NQN", "nqn.host"});
        lines.push_back({"Host ID", "00112233445566778899aabbccddeeff"});
        for (unsigned number = 0; number < 8; ++number) {
            const std::string digit = std::to_string(number);
            const std::string label = "Storage " + digit;
            lines.push_back({label, number % 2 == 0 ? "true" : "false"});
            lines.push_back({label + " WWNN", "c" + digit + ":01:02:03:04:05:06:07"});
            lines.push_back({label + " WWPN", "c" + digit + ":11:12:13:14:15:16:17"});
            lines.push_back({label + " NQN", "nqn.array" + digit});
            lines.push_back({label + " ControllerID", "0xfff" + digit});
            lines.push_back({label + " NamespaceID", std::to_string(4294967295 - number)});
        }
        return lines;
    }
    /// Same without host and entries.
    static std::vector<Field> EmptyNvmeLayout() {
        std::vector<Field> lines = WithField(WithField(NvmeLines(), "Host NQN", ""), "Host ID", "NA");
        for (unsigned number = 0; number < 8; ++number) {
            lines = WithStorage(lines, number, {"false", NO_WWN, NO_WWN, "", "0x0", "0"});
        }
        return lines;
    }
    /// Replaces the values of an entry, in the order of its lines.
    static std::vector<Field> WithStorage(std::vector<Field> lines, unsigned number,
                                          const std::array<std::string, 6>& values) {
        static constexpr const char* FIELDS[] = {"", " WWNN", " WWPN", " NQN", " ControllerID", " NamespaceID"};
        for (std::size_t i = 0; i < values.size(); ++i) {
            lines = WithField(lines, "Storage " + std::to_string(number) + FIELDS[i], values[i]);
        }
        return lines;
    }
    static std::vector<Field> Layout(Mode mode) { return mode == NVME ? NvmeLines() : LinesIn(mode); }

    _VEXAPI_FcNVMeBootParams entries{};                     ///< returned by the library
    std::optional<_VEXAPI_FcNVMeBootParams> writtenEntries; ///< last received by it
};

} // namespace family_test
