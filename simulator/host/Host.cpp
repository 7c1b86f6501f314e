#include "host/Host.h"

#include "description/Fields.h"

#include <algorithm>
#include <cstring>

namespace sim {
namespace {

/// A handle is these four bytes, the port's word and a checksum of the word.
constexpr VX_UINT8 HANDLE_MAGIC[4] = {'V', 'X', 'P', 'H'};
/// Upper half of every port word, so that small numbers are never valid.
constexpr VX_UINT32 WORD_BASE = 0x5A510000;

VX_UINT32 CheckOf(VX_UINT32 word) {
    return (word * 2654435761U) ^ 0x6B8B4567U;
}

VX_PORT_HANDLE MakeHandle(std::uint32_t index) {
    const VX_UINT32 word = WORD_BASE + index;
    const VX_UINT32 check = CheckOf(word);
    VX_PORT_HANDLE handle{};
    std::memcpy(handle.opaque, HANDLE_MAGIC, 4);
    std::memcpy(handle.opaque + 4, &word, 4);
    std::memcpy(handle.opaque + 8, &check, 4);
    return handle;
}

/// Links the records of a vector into a list and returns its head, or null.
template <class Owner> auto Chain(std::vector<Owner>& owners) {
    for (std::size_t i = 0; i + 1 < owners.size(); ++i) {
        owners[i].record.pNext = &owners[i + 1].record;
    }
    return owners.empty() ? nullptr : &owners.front().record;
}

/// Fills a list header and returns its address; null for a null list.
template <class List, class Owner> List* Head(List& list, std::optional<std::vector<Owner>>& owners) {
    if (!owners) {
        return nullptr;
    }
    list.Count = static_cast<VX_UINT32>(owners->size());
    list.pHead = Chain(*owners);
    return &list;
}

void LinkTargets(Port& port) {
    port.record.pTargetList = Chain(port.targets);
    for (Target& target : port.targets) {
        for (std::size_t i = 0; i + 1 < target.luns.size(); ++i) {
            target.luns[i].pNext = &target.luns[i + 1];
        }
        target.record.pLunList = target.luns.empty() ? nullptr : target.luns.data();
    }
}

} // namespace

void Host::Link() {
    ports.clear();
    if (!adapters) {
        return;
    }
    for (std::size_t a = 0; a < adapters->size(); ++a) {
        Adapter& adapter = (*adapters)[a];
        adapter.index = static_cast<std::uint32_t>(a);
        if (adapter.phyPorts) {
            for (PhyPort& phyPort : *adapter.phyPorts) {
                if (phyPort.ports) {
                    for (Port& port : *phyPort.ports) {
                        port.adapter = &adapter;
                        port.index = static_cast<std::uint32_t>(ports.size());
                        port.record.PortHandle = MakeHandle(port.index);
                        LinkTargets(port);
                        ports.push_back(&port);
                    }
                }
                phyPort.record.pProtocolList = Head(phyPort.list, phyPort.ports);
            }
        }
        adapter.record.pPhyPortList = Head(adapter.list, adapter.phyPorts);
    }
    Head(list, adapters);
}

Port* Host::Find(const VX_PORT_HANDLE& handle) const {
    VX_UINT32 word = 0;
    VX_UINT32 check = 0;
    std::memcpy(&word, handle.opaque + 4, 4);
    std::memcpy(&check, handle.opaque + 8, 4);
    if (std::memcmp(handle.opaque, HANDLE_MAGIC, 4) != 0 || check != CheckOf(word)) {
        return nullptr;
    }
    return Find(word);
}

Port* Host::Find(VX_UINT32 word) const {
    const VX_UINT32 index = word - WORD_BASE;
    return index < ports.size() ? ports[index] : nullptr;
}

Target* FindTarget(Port& port, const VX_UINT8 (&name)[8]) {
    const auto found = std::find_if(port.targets.begin(), port.targets.end(), [&](const Target& target) {
        return std::memcmp(target.record.PortName, name, sizeof name) == 0;
    });
    return found == port.targets.end() ? nullptr : &*found;
}

bool HasLun(const Target& target, std::uint32_t number) {
    return std::any_of(target.luns.begin(), target.luns.end(),
                       [&](const _tagVEXAPI_SDMLun& lun) { return lun.LunNumber == number; });
}

bool IsNvme(const Target& target) {
    return (target.record.TargetFlags[5] & 0x08) != 0;
}

std::string NameOf(const Port& port) {
    return BytesText(port.record.WWPN);
}

_VEXAPI_HBAParameters FactoryNvram() {
    _VEXAPI_HBAParameters nvram{};
    nvram.DataRate = 2;         // auto
    nvram.ConnetionOptions = 2; // loop preferred, otherwise point to point
    nvram.EnableFibreChannelTapeSupport = 1;
    nvram.MaxLunsPerTarget = 128;
    nvram.FrameSize = 2048;
    nvram.EnableLipFullLogin = 1;
    nvram.EnableTargetReset = 1;
    nvram.LoopResetDelay = 5;
    nvram.LoginRetryCount = 8;
    nvram.PortDownRetryCount = 30;
    nvram.ExecutionThrottle = 65535;
    nvram.LinkDownTimeout = 30;
    nvram.DisableBIOS = 1;
    return nvram;
}

} // namespace sim
