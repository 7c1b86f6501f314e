/// @file
/// Functions other than the tree: vital product data, counters and their reset.
#include "Attributes.h"
#include "Extension.h"
#include "Messages.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

using namespace host;

namespace {

constexpr VX_UINT32 PHYSICAL_PORT_ENTRY = 0x80;

Port* PortOf(VX_UINT32 word) {
    return GetTree() == nullptr ? nullptr : GetTree()->FindPort(word);
}

/// The counters of notifications for an entry of a folder. Those that can't be read are reported and left at zero.
_VEXAPI_SANCONGTMGMTV2 Notifications(const Folder& folder, const std::string& entry) {
    _VEXAPI_SANCONGTMGMTV2 counts{};
    for (const Notification& counter : NOTIFICATION_COUNTERS) {
        const std::string path = entry + "/statistics/" + counter.path;
        const Reading reading = folder.Read(path.c_str());
        if (reading.error != 0 && reading.error != ENOENT) {
            Tell(path, std::strerror(reading.error));
        } else if (!TakeNumber(reading.bytes, counts.*counter.count)) {
            Tell(path, "not understood as a number");
        }
    }
    return counts;
}

/// Appends a node to a list; false if out of memory.
bool Append(_VEXAPI_SANCONGTMGMTV2**& end, const _VEXAPI_SANCONGTMGMTV2& counts, const VX_UINT8 (&node)[8],
            const VX_UINT8 (&port)[8]) {
    *end = static_cast<_VEXAPI_SANCONGTMGMTV2*>(std::malloc(sizeof counts));
    if (*end == nullptr) {
        return false;
    }
    **end = counts;
    std::memcpy((*end)->WWNN, node, sizeof node);
    std::memcpy((*end)->WWPN, port, sizeof port);
    end = &(*end)->pNext;
    return true;
}

} // namespace

VX_UINT32 VEXAPI_GetVpd(VX_UINT32 word, VX_UINT32 /*reserved*/, void* buffer, VX_UINT32* size) {
    const Port* const port = PortOf(word);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    std::string bytes;
    const int error = port->pci.path.empty()
                          ? ENOENT
                          : GetTree()->Hosts().ReadWhole((port->pci.path + VITAL_PRODUCT_DATA).c_str(), *size, bytes);
    // Cards without such data fail the read, and unprivileged users may not read it.
    if (error != 0) {
        Tell(port->name + ": vital product data", std::strerror(error));
        return error == ENOENT ? UNSUPPORTED : NOT_READABLE;
    }
    bytes.copy(static_cast<char*>(buffer), bytes.size());
    *size = static_cast<VX_UINT32>(bytes.size());
    return OK;
}

VX_UINT32 VEXAPI_ResetDeviceStats(VX_PORT_HANDLE* handle) {
    Port* const port = PortOf(handle);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    const int error = GetTree()->Hosts().Write((port->name + "/statistics/" + RESET_STATISTICS).c_str(), "1");
    if (error != 0) {
        Tell(port->name + ": clearing the counters", std::strerror(error));
        return error == ENOENT ? UNSUPPORTED : NOT_READABLE;
    }
    GetTree()->ReadCounters(*port);
    return OK;
}

VX_UINT32 VEXAPI_IsFWCMFeatureEnabled(VX_PORT_HANDLE* handle, VX_UINT8* enabled) {
    const Port* const port = PortOf(handle);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    *enabled = port->record.FeatureFlags != 0 ? 1 : 0;
    return OK;
}

VX_UINT32 VEXAPI_GetSCMRStatisticsList(VX_PORT_HANDLE* handle, _VEXAPI_SANCONGTMGMTV2** list) {
    const Port* const port = PortOf(handle);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    *list = nullptr;
    if (port->record.FeatureFlags == 0) {
        return UNSUPPORTED;
    }
    _VEXAPI_SANCONGTMGMTV2** end = list;
    _VEXAPI_SANCONGTMGMTV2 counts = Notifications(GetTree()->Hosts(), port->name);
    counts.EntryType = PHYSICAL_PORT_ENTRY;
    bool isWhole = Append(end, counts, port->record.WWNN, port->record.WWPN);
    for (const Target& target : port->targets) {
        if (!target.name.empty()) {
            isWhole = isWhole && Append(end, Notifications(GetTree()->RemotePorts(), target.name),
                                        target.record.NodeName, target.record.PortName);
        }
    }
    if (!isWhole) {
        VEXAPI_FreeSCMRStatisticsList(*list);
        *list = nullptr;
    }
    return isWhole ? OK : NOT_READABLE;
}

VX_UINT32 VEXAPI_FreeSCMRStatisticsList(_VEXAPI_SANCONGTMGMTV2* list) {
    while (list != nullptr) {
        std::free(std::exchange(list, list->pNext));
    }
    return OK;
}

VX_UINT32 VEXAPI_GetPortStatisticsFC(VX_UINT32 word, VX_UINT32 /*reserved*/, VX_PORT_SELECTOR* selector,
                                     __STATISTICS* statistics) {
    const Port* const port = PortOf(word);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    for (const Target& target : port->targets) {
        if (target.name.empty() || NameNumber(target.record.PortName) != NameNumber(selector->PortName)) {
            continue;
        }
        if (!GetTree()->RemotePorts().Has((target.name + "/statistics/" + NOTIFICATIONS).c_str())) {
            return UNSUPPORTED;
        }
        const _VEXAPI_SANCONGTMGMTV2 counts = Notifications(GetTree()->RemotePorts(), target.name);
        for (const Notification& counter : NOTIFICATION_COUNTERS) {
            if (counter.peerCount != nullptr) {
                statistics->*counter.peerCount = Saturated(counts.*counter.count);
            }
        }
        return OK;
    }
    return UNSUPPORTED;
}
