/// @file
/// What the kernel offers beside the tree: vital product data, counters, their clearing.
#include "Attributes.h"
#include "Session.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

using namespace host;

namespace {

constexpr VX_UINT32 PHYSICAL_PORT_ENTRY = 0x80;

Port* portOf(const VX_PORT_HANDLE* handle) {
    return tree() == nullptr ? nullptr : tree()->port(handle);
}

Port* portOf(VX_UINT32 word) {
    return tree() == nullptr ? nullptr : tree()->port(word);
}

/// The notifications that the kernel counted for an entry of a folder. Counters that can't be read are told, and zero.
_VEXAPI_SANCONGTMGMTV2 notifications(const Folder& folder, const std::string& entry) {
    _VEXAPI_SANCONGTMGMTV2 counts{};
    for (const Notification& counter : NOTIFICATION_COUNTERS) {
        const std::string path = entry + "/statistics/" + counter.path;
        const Reading reading = folder.read(path.c_str());
        if (reading.error != 0 && reading.error != ENOENT) {
            tell(path, std::strerror(reading.error));
        } else if (!takeNumber(reading.bytes, counts.*counter.count)) {
            tell(path, "not understood as a number");
        }
    }
    return counts;
}

/// Puts a node at the end of a list; false when there is no memory for it.
bool append(_VEXAPI_SANCONGTMGMTV2**& end, const _VEXAPI_SANCONGTMGMTV2& counts, const VX_UINT8 (&node)[8],
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
    const Port* const port = portOf(word);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    std::string bytes;
    const int error = port->pci.path.empty()
                          ? ENOENT
                          : tree()->hosts().readWhole((port->pci.path + VITAL_PRODUCT_DATA).c_str(), *size, bytes);
    // Cards without such data fail the read, and a reader without rights may not see it.
    if (error != 0) {
        tell(port->name + ": vital product data", std::strerror(error));
        return error == ENOENT ? UNSUPPORTED : NOT_READABLE;
    }
    bytes.copy(static_cast<char*>(buffer), bytes.size());
    *size = static_cast<VX_UINT32>(bytes.size());
    return OK;
}

VX_UINT32 VEXAPI_ResetDeviceStats(VX_PORT_HANDLE* handle) {
    Port* const port = portOf(handle);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    const int error = tree()->hosts().write((port->name + "/statistics/" + RESET_STATISTICS).c_str(), "1");
    if (error != 0) {
        tell(port->name + ": clearing the counters", std::strerror(error));
        return error == ENOENT ? UNSUPPORTED : NOT_READABLE;
    }
    tree()->readCounters(*port);
    return OK;
}

VX_UINT32 VEXAPI_IsFWCMFeatureEnabled(VX_PORT_HANDLE* handle, VX_UINT8* enabled) {
    const Port* const port = portOf(handle);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    *enabled = port->record.FeatureFlags != 0 ? 1 : 0;
    return OK;
}

VX_UINT32 VEXAPI_GetSCMRStatisticsList(VX_PORT_HANDLE* handle, _VEXAPI_SANCONGTMGMTV2** list) {
    const Port* const port = portOf(handle);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    *list = nullptr;
    if (port->record.FeatureFlags == 0) {
        return UNSUPPORTED;
    }
    _VEXAPI_SANCONGTMGMTV2** end = list;
    _VEXAPI_SANCONGTMGMTV2 counts = notifications(tree()->hosts(), port->name);
    counts.EntryType = PHYSICAL_PORT_ENTRY;
    bool isWhole = append(end, counts, port->record.WWNN, port->record.WWPN);
    for (const Target& target : port->targets) {
        if (!target.name.empty()) {
            isWhole = isWhole && append(end, notifications(tree()->remotePorts(), target.name), target.record.NodeName,
                                        target.record.PortName);
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
    const Port* const port = portOf(word);
    if (port == nullptr) {
        return INVALID_HANDLE;
    }
    for (const Target& target : port->targets) {
        if (target.name.empty() || nameNumber(target.record.PortName) != nameNumber(selector->PortName)) {
            continue;
        }
        if (!tree()->remotePorts().has((target.name + "/statistics/" + NOTIFICATIONS).c_str())) {
            return UNSUPPORTED;
        }
        const _VEXAPI_SANCONGTMGMTV2 counts = notifications(tree()->remotePorts(), target.name);
        for (const Notification& counter : NOTIFICATION_COUNTERS) {
            if (counter.peerCount != nullptr) {
                statistics->*counter.peerCount = saturated(counts.*counter.count);
            }
        }
        return OK;
    }
    return UNSUPPORTED;
}
