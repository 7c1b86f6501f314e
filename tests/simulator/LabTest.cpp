// The lab host has one of each kind.
#include "Fixture.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>

namespace {

class Lab : public Simulated {
protected:
    Lab() {
        EXPECT_EQ(Start(), 0U) << output;
        for (auto* adapter = VEXAPI_GetAdapterList()->pHead; adapter != nullptr; adapter = adapter->pNext) {
            adapters.push_back(adapter);
        }
        try {
            for (unsigned i = 0;; ++i) {
                ports.push_back(Port(i));
            }
        } catch (const std::runtime_error&) {
        }
    }
    /// Whether any port has a property.
    bool Any(const std::function<bool(const _vexapi_protocol_t&)>& has) const {
        return std::any_of(ports.begin(), ports.end(), [&](const auto* port) { return has(*port); });
    }
    /// Whether any target has a property.
    bool AnyTarget(const std::function<bool(const _tagVEXAPI_SDMTarget&)>& has) const {
        return Any([&](const _vexapi_protocol_t& port) {
            for (const auto* target = port.pTargetList; target != nullptr; target = target->pNext) {
                if (has(*target)) {
                    return true;
                }
            }
            return false;
        });
    }
    bool AnyLun(const std::function<bool(const _tagVEXAPI_SDMLun&)>& has) const {
        return AnyTarget([&](const _tagVEXAPI_SDMTarget& target) {
            for (const auto* lun = target.pLunList; lun != nullptr; lun = lun->pNext) {
                if (has(*lun)) {
                    return true;
                }
            }
            return false;
        });
    }
    std::vector<_vexapi_adapter_t*> adapters;
    std::vector<_vexapi_protocol_t*> ports;
};

TEST_F(Lab, HasAChipOfEachFamily) {
    const std::pair<const char*, std::set<VX_UINT16>> families[] = {{"4G", {0x2422, 0x2432, 0x5422, 0x5432}},
                                                                    {"8G", {0x2532, 0x2533}},
                                                                    {"Rowan FC", {0x2031, 0x2831}},
                                                                    {"Rowan CNA", {0x8031, 0x8831}},
                                                                    {"Willow", {0x8021}},
                                                                    {"Hazel", {0x8001}},
                                                                    {"Larch", {0x2261, 0x2A61, 0x2B61}},
                                                                    {"Alder", {0x2071, 0x2271, 0x2871, 0x2971}}};
    for (const auto& [name, devices] : families) {
        EXPECT_TRUE(Any([&ids = devices](const auto& port) {
            return port.ChipProperty.VendorId == 0x1D0C && ids.contains(port.ChipProperty.DeviceId);
        })) << name;
    }
    const auto isChip = [&](VX_UINT16 device, VX_UINT16 subVendor, VX_UINT16 subDevice) {
        return Any([&](const auto& port) {
            return port.ChipProperty.DeviceId == device && port.ChipProperty.SubVendorId == subVendor &&
                   port.ChipProperty.SubDeviceId == subDevice;
        });
    };
    EXPECT_TRUE(isChip(0x2281, 0x1D0C, 0x2E2)) << "Birch at 64 Gbps";
    EXPECT_TRUE(isChip(0x2289, 0x1D0C, 0x2E9)) << "Birch with encryption";
    EXPECT_TRUE(isChip(0x2031, 0x103C, 0x1939)) << "Maple";
    EXPECT_TRUE(isChip(0x2031, 0x103C, 0x8002)) << "Cedar";
    EXPECT_TRUE(isChip(0x2261, 0x1D0C, 0x2B9)) << "mezzanine at 32 Gbps";
    EXPECT_GE(adapters.size(), 8U);
}

TEST_F(Lab, NamesReadLikeRealOnesAndDiffer) {
    std::set<std::string> seen;
    for (const _vexapi_adapter_t* adapter : adapters) {
        const std::string model = adapter->Model;
        const std::string serial = adapter->SerialNumber;
        EXPECT_EQ((model + serial).find('_'), std::string::npos);
        EXPECT_TRUE(model.starts_with("ORV")) << model;
        EXPECT_TRUE(seen.insert(serial).second) << serial;
        EXPECT_STREQ(adapter->Manufacturer, "Orvane Corporation");
        EXPECT_EQ(adapter->VendorId, 0x1D0C);
    }
}

TEST_F(Lab, HasPortsOfEveryKind) {
    const auto speed = [&](VX_UINT32 code) {
        return Any([&](const auto& port) { return port.PortState == 1 && port.PortSpeed == code; });
    };
    for (const VX_UINT32 code : {8U, 16U, 22U, 50U, 100U}) {
        EXPECT_TRUE(speed(code)) << code;
    }
    EXPECT_TRUE(Any([](const auto& port) { return port.PortState == 3; }));
    EXPECT_TRUE(Any([](const auto& port) { return port.PortInterfaceType == 3; }));
    EXPECT_TRUE(Any([](const auto& port) { return port.PortConnectionMode == 2; }));
    for (const VX_UINT32 protocol : {0U, 1U, 2U, 3U}) {
        EXPECT_TRUE(Any([&](const auto& port) { return port.ProtocolType == protocol; })) << protocol;
    }
    int mezzanines = 0;
    for (_vexapi_protocol_t* port : ports) {
        VX_UINT8 flag = 0;
        EXPECT_EQ(VEXAPI_IsMezzAdapter(&port->PortHandle, &flag), 0U);
        mezzanines += flag;
    }
    EXPECT_GE(mezzanines, 1);
}

TEST_F(Lab, HasTargetsOfEveryKind) {
    const auto nvme = [](const auto& target) { return (target.TargetFlags[5] & 8) != 0; };
    EXPECT_TRUE(AnyTarget(nvme));
    EXPECT_TRUE(AnyTarget([&](const auto& target) { return !nvme(target) && target.DeviceType == 0; }));
    EXPECT_TRUE(AnyTarget([](const auto& target) { return target.DeviceType == 1; })) << "tape";
    EXPECT_TRUE(AnyTarget([](const auto& target) { return target.DeviceType == 12; })) << "RAID";
    EXPECT_TRUE(AnyTarget([](const auto& target) { return target.LunCount == 0; }));
    EXPECT_TRUE(AnyTarget([](const auto& target) { return target.LunCount == 300; }));
    EXPECT_TRUE(AnyTarget([](const auto& target) { return target.TargetFlags[0] == 0x40; })) << "unconfigured";
    EXPECT_TRUE(AnyTarget([](const auto& target) { return target.TargetFlags[2] == 0; })) << "offline";
    EXPECT_TRUE(AnyTarget([](const auto& target) {
        return std::memcmp(target.AuthPortName, target.PortName, 8) == 0 &&
               std::memcmp(target.AuthPortId, target.PortId, 3) == 0;
    }));
    EXPECT_TRUE(Any([](const auto& port) {
        const auto* target = port.pTargetList;
        return (port.SecurityFlags & 1) != 0 && std::memcmp(target->SecPortName, target->PortName, 8) == 0 &&
               std::memcmp(target->SecPortId, target->PortId, 3) == 0;
    }));
    EXPECT_TRUE(AnyTarget([](const auto& target) { return target.ScmCongState == 1 && target.ScmThrottleState == 2; }));
    std::map<std::string, int> paths;
    for (const auto* port : ports) {
        for (const auto* target = port->pTargetList; target != nullptr; target = target->pNext) {
            ++paths[std::string(reinterpret_cast<const char*>(target->PortName), 8)];
        }
    }
    EXPECT_TRUE(std::any_of(paths.begin(), paths.end(), [](const auto& count) { return count.second > 1; }));
}

TEST_F(Lab, HasLunsOfEveryKind) {
    EXPECT_TRUE(AnyLun([](const auto& lun) { return lun.LunNumber > 255; }));
    EXPECT_TRUE(AnyLun([](const auto& lun) { return (lun.LunFlags & 1) != 0; }));
    for (const int length : {0, 4, 8, 16, 32}) {
        EXPECT_TRUE(AnyLun([&](const auto& lun) { return lun.WorldwideIdLength == length; })) << length;
    }
}

TEST_F(Lab, HasCongestionOfBothGenerations) {
    constexpr VX_UINT32 FIRST = 1U << 23;
    constexpr VX_UINT32 SECOND = 1U << 26;
    EXPECT_TRUE(Any([](const auto& port) { return (port.FeatureFlags & (FIRST | SECOND)) == FIRST; }));
    EXPECT_TRUE(Any([](const auto& port) { return (port.FeatureFlags & SECOND) != 0 && port.ScmCongState == 0; }));
    EXPECT_TRUE(Any([](const auto& port) { return (port.FeatureFlags & SECOND) != 0 && port.ScmCongState == 1; }));
    EXPECT_TRUE(Any([](const auto& port) { return port.ScmThrottleState == 2; }));
    EXPECT_TRUE(Any([](const auto& port) { return port.ScmVirtualLaneState == 1; }));
    EXPECT_TRUE(Any([](const auto& port) { return port.ScmFabricFlags == 3; }));
    EXPECT_TRUE(Any([](const auto& port) { return port.ScmFabricFlags == 5; }));
}

TEST_F(Lab, HasTransceiversOfEveryKind) {
    bool empty = false;
    bool shortWave = false;
    bool longWave = false;
    bool copper = false;
    bool qsfp28 = false;
    bool external = false;
    bool bad = false;
    for (_vexapi_protocol_t* port : ports) {
        _VEXAPI_SFP_DATA image{};
        EXPECT_EQ(VEXAPI_GetSFPData(&port->PortHandle, &image), 0U);
        const VX_UINT8* bytes = image.Data;
        empty |= std::all_of(bytes, bytes + 512, [](VX_UINT8 byte) { return byte == 0; });
        qsfp28 |= bytes[0] == 0x11;
        if (bytes[0] != 3) {
            continue;
        }
        const int nanometres = bytes[60] * 256 + bytes[61];
        VX_UINT8 sum = 0;
        for (int i = 0; i < 63; ++i) {
            sum = static_cast<VX_UINT8>(sum + bytes[i]);
        }
        const bool good = sum == bytes[63];
        bad |= !good;
        shortWave |= good && nanometres == 850;
        longWave |= good && nanometres == 1310;
        copper |= good && (bytes[8] & 4) != 0;       // passive cable
        external |= good && (bytes[92] & 0x10) != 0; // external calibration
    }
    EXPECT_TRUE(empty);
    EXPECT_TRUE(shortWave);
    EXPECT_TRUE(longWave);
    EXPECT_TRUE(copper);
    EXPECT_TRUE(qsfp28);
    EXPECT_TRUE(external);
    EXPECT_TRUE(bad);
}

TEST_F(Lab, HasBlobsThatHoldTogether) {
    int dumps = 0;
    int payloads = 0;
    for (_vexapi_protocol_t* port : ports) {
        VX_UINT32 word = 0;
        std::memcpy(&word, port->PortHandle.opaque + 4, 4);
        unsigned char vpd[1024] = {};
        VX_UINT32 size = sizeof vpd;
        EXPECT_EQ(VEXAPI_GetVpd(word, 0, vpd, &size), 0U);
        if (size != 0) {
            EXPECT_EQ(vpd[0], 0x82);
            EXPECT_EQ(vpd[size - 1], 0x78);
            // The bytes up to and including the checksum add up to zero.
            unsigned sum = 0;
            std::size_t end = 3 + vpd[1];
            end += 3 + vpd[end + 1] + 256U * vpd[end + 2];
            for (std::size_t i = 0; i < end; ++i) {
                sum += vpd[i];
            }
            EXPECT_EQ(sum & 0xff, 0U);
        }
        void* dump = nullptr;
        size = 0;
        dumps += VEXAPI_SDGetFwDump2(word, 0, &dump, &size) == 0 ? 1 : 0;
        std::free(dump);
        unsigned char rdp[508] = {};
        size = sizeof rdp;
        if (VEXAPI_DiagnosticsRDPTest(&port->PortHandle, rdp, &size) == 0) {
            ++payloads;
            EXPECT_EQ(size, rdp[2] * 256U + rdp[3]); // the list length includes the header
        }
    }
    EXPECT_GE(dumps, 1);
    EXPECT_GE(payloads, 2);
}

TEST_F(Lab, BootTargetsOfTheLabAreInSight) {
    // The boot entries of every port refer to targets that the port sees.
    for (_vexapi_protocol_t* port : ports) {
        _VEXAPI_FcNVMeBootParams boot{};
        EXPECT_EQ(VEXAPI_GetNVMeBootDeviceEntries(&port->PortHandle, &boot), 0U);
        for (const VX_NVME_BOOT_ENTRY& entry : boot.BootEntry) {
            if (entry.TargetFlags != 0) {
                bool seen = false;
                for (const auto* target = port->pTargetList; target != nullptr; target = target->pNext) {
                    seen |= std::memcmp(target->PortName, entry.TargetWWPN, 8) == 0 &&
                            std::strcmp(target->StorageNqn, entry.TargetNQN) == 0;
                }
                EXPECT_TRUE(seen);
            }
        }
    }
}

/// A LUN as a path, with what the kernel knows of it.
struct LunPath {
    const _vexapi_protocol_t* port;
    const _tagVEXAPI_SDMTarget* target;
    const _tagVEXAPI_SDMLun* lun;
    VEXAPI_EXT_PORT kernelPort;
    VEXAPI_EXT_TARGET kernelTarget;
    VEXAPI_EXT_LUN kernel;

    bool IsNvme() const { return (target->TargetFlags[5] & 8) != 0; }
    /// Whether commands pass.
    bool Works() const {
        const std::string state = kernel.State;
        const std::string access = kernel.AccessState;
        return std::string(kernelPort.State) == "Online" && std::string(kernelTarget.State) != "Blocked" &&
               std::string(kernelTarget.State) != "Not Present" && (state == "running" || state == "live") &&
               access != "unavailable" && access != "inaccessible" && std::string(kernel.MapState) != "suspended" &&
               std::string(kernel.MapPathState) != "failed";
    }
};

class LabPaths : public Lab {
protected:
    LabPaths() {
        for (_vexapi_protocol_t* port : ports) {
            auto kernelPort = Sized<VEXAPI_EXT_PORT>();
            EXPECT_EQ(VEXAPI_ExtGetPort(&port->PortHandle, &kernelPort), 0U);
            kernelPorts.push_back(kernelPort);
            for (auto* target = port->pTargetList; target != nullptr; target = target->pNext) {
                auto kernelTarget = Sized<VEXAPI_EXT_TARGET>();
                EXPECT_EQ(VEXAPI_ExtGetTarget(&port->PortHandle, target, &kernelTarget), 0U);
                kernelTargets.push_back(kernelTarget);
                for (auto* lun = target->pLunList; lun != nullptr; lun = lun->pNext) {
                    paths.push_back({port, target, lun, kernelPort, kernelTarget, Sized<VEXAPI_EXT_LUN>()});
                    EXPECT_EQ(VEXAPI_ExtGetLun(&port->PortHandle, target, lun, &paths.back().kernel), 0U);
                }
            }
        }
        for (const LunPath& path : paths) {
            if (path.kernel.WorldwideId[0] != '\0') {
                volumes[path.kernel.WorldwideId].push_back(&path);
            }
        }
    }
    bool AnyPath(const std::function<bool(const LunPath&)>& has) const {
        return std::any_of(paths.begin(), paths.end(), has);
    }
    /// Whether a volume has `known` paths, of which `working` work on a number of ports and fabrics.
    bool AnyVolume(std::size_t known, std::size_t working, std::size_t onPorts, std::size_t onFabrics) const {
        return std::any_of(volumes.begin(), volumes.end(), [&](const auto& volume) {
            std::size_t work = 0;
            std::set<const _vexapi_protocol_t*> usedPorts;
            std::set<std::string> fabrics;
            for (const LunPath* path : volume.second) {
                if (path->Works()) {
                    ++work;
                    usedPorts.insert(path->port);
                    fabrics.insert(std::string(reinterpret_cast<const char*>(path->port->PrincipalFabricWWN), 8));
                }
            }
            return volume.second.size() == known && work == working && usedPorts.size() == onPorts &&
                   fabrics.size() == onFabrics;
        });
    }

    std::vector<VEXAPI_EXT_PORT> kernelPorts;
    std::vector<VEXAPI_EXT_TARGET> kernelTargets;
    std::vector<LunPath> paths;
    std::map<std::string, std::vector<const LunPath*>> volumes; ///< by worldwide id
};

std::string Printed(const char* format, ...) {
    char text[64];
    va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof text, format, values);
    va_end(values);
    return text;
}

TEST_F(LabPaths, TheKernelKnowsAllButNetworkFunctions) {
    std::set<std::string> names;
    for (std::size_t i = 0; i < ports.size(); ++i) {
        const VEXAPI_EXT_PORT& kernel = kernelPorts[i];
        if (ports[i]->ProtocolType >= 2) {
            EXPECT_STREQ(kernel.KernelName, "");
            continue;
        }
        EXPECT_TRUE(names.insert(kernel.KernelName).second) << kernel.KernelName;
        EXPECT_EQ(kernel.Device, Printed("0000:%02x:00.%u", ports[i]->PciBusNumber, ports[i]->PciFunctionNumber));
        EXPECT_STREQ(kernel.Driver, "orvfc");
        EXPECT_EQ(kernel.DeviceLossTimeout, 30U);
        EXPECT_STRNE(kernel.SymbolicName, "");
        VX_UINT32 count = 0;
        EXPECT_EQ(VEXAPI_ExtGetCounters(&ports[i]->PortHandle, nullptr, nullptr, &count), 0U);
        EXPECT_GE(count, 15U);
    }
    for (const VEXAPI_EXT_TARGET& kernel : kernelTargets) {
        EXPECT_TRUE(names.insert(kernel.KernelName).second) << kernel.KernelName;
        EXPECT_STRNE(kernel.Roles, "");
        EXPECT_EQ(kernel.FastFailTimeout, 5U);
    }
    for (const LunPath& path : paths) {
        EXPECT_TRUE(names.insert(path.kernel.Device).second) << path.kernel.Device;
        unsigned host = 0;
        EXPECT_EQ(std::sscanf(path.kernelPort.KernelName, "host%u", &host), 1);
        EXPECT_EQ(path.kernelTarget.KernelName, Printed("rport-%u:0-%u", host, path.target->TargetNumber));
        EXPECT_EQ(path.kernel.Address,
                  path.IsNvme() ? "" : Printed("%u:0:%u:%u", host, path.target->TargetNumber, path.lun->LunNumber));
    }
}

TEST_F(LabPaths, HasPathsOfEveryKind) {
    const auto any = [&](auto member, std::initializer_list<const char*> texts) {
        for (const char* text : texts) {
            EXPECT_TRUE(AnyPath([&](const LunPath& path) { return std::string(member(path)) == text; })) << text;
        }
    };
    any([](const LunPath& path) { return path.kernelPort.State; }, {"Online", "Linkdown"});
    any([](const LunPath& path) { return path.kernelTarget.State; }, {"Online", "Marginal", "Blocked", "Not Present"});
    any([](const LunPath& path) { return path.kernel.State; },
        {"running", "offline", "transport-offline", "blocked", "live", "connecting"});
    any([](const LunPath& path) { return path.kernel.AccessState; },
        {"active/optimized", "active/non-optimized", "standby", "unavailable", "optimized", "non-optimized",
         "inaccessible"});
    any([](const LunPath& path) { return path.kernel.MapState; }, {"active", "suspended", ""});
    EXPECT_TRUE(AnyPath([](const LunPath& path) {
        return std::string(path.kernel.State) == "running" && std::string(path.kernel.MapPathState) == "failed";
    }));
    EXPECT_TRUE(
        AnyPath([](const LunPath& path) { return path.kernel.Map[0] == '\0' && path.lun->WorldwideIdLength == 4; }));
}

TEST_F(LabPaths, HasVolumesOfEveryRedundancy) {
    EXPECT_TRUE(AnyVolume(2, 2, 2, 2)) << "two ports on two fabrics";
    EXPECT_TRUE(AnyVolume(3, 2, 2, 1)) << "two ports on one fabric";
    EXPECT_TRUE(AnyVolume(2, 2, 1, 1)) << "two paths through one port";
    EXPECT_TRUE(AnyVolume(2, 1, 1, 1)) << "one of two paths left";
    EXPECT_TRUE(AnyVolume(1, 1, 1, 1)) << "a single path";
    EXPECT_TRUE(AnyVolume(1, 0, 0, 0)) << "no path";
    EXPECT_TRUE(AnyVolume(12, 9, 9, 2)) << "many";
}

TEST_F(LabPaths, IdentifiersAgreeWithRecordsAndMapsButForOneEach) {
    int otherThanRecord = 0;
    int otherThanMap = 0;
    for (const LunPath& path : paths) {
        const std::string id = path.kernel.WorldwideId;
        const std::size_t length = path.lun->WorldwideIdLength;
        if (length == 8 || length == 16) {
            std::string digits = "naa.";
            for (std::size_t i = 0; i < length; ++i) {
                digits += Printed("%02x", path.lun->WorldwideId[i]);
            }
            otherThanRecord += id != digits ? 1 : 0;
        }
        if (path.kernel.MapId[0] != '\0') {
            const char* kind = id.starts_with("naa.") ? "3" : "1";
            otherThanMap += path.kernel.MapId != "mpath-" + (kind + id.substr(4)) ? 1 : 0;
        }
    }
    EXPECT_EQ(otherThanRecord, 2); // one that differs from its map, too, and a volume by two numbers
    EXPECT_EQ(otherThanMap, 1);
}

TEST_F(LabPaths, HasCountersThatMove) {
    const auto counters = [](_vexapi_protocol_t* port, const _tagVEXAPI_SDMTarget* target) {
        VEXAPI_EXT_COUNTER records[64]{};
        VX_UINT32 count = 64;
        EXPECT_EQ(VEXAPI_ExtGetCounters(&port->PortHandle, target, records, &count), 0U);
        std::map<std::string, VX_UINT64> values;
        for (VX_UINT32 i = 0; i < count; ++i) {
            values[records[i].Name] = records[i].Value;
        }
        return values;
    };
    std::set<std::string> moved;
    const auto compare = [&](const char* kind, _vexapi_protocol_t* port, const _tagVEXAPI_SDMTarget* target) {
        auto before = counters(port, target);
        for (const auto& [name, value] : counters(port, target)) {
            if (value != before[name]) {
                moved.insert(kind + name);
            }
        }
    };
    for (_vexapi_protocol_t* port : ports) {
        compare("port ", port, nullptr);
        for (const auto* target = port->pTargetList; target != nullptr; target = target->pNext) {
            compare("target ", port, target);
        }
    }
    for (const char* name : {"port rx_frames", "port invalid_crc_count", "target fpin_cn_credit_stall"}) {
        EXPECT_TRUE(moved.contains(name)) << name;
    }
}

} // namespace
