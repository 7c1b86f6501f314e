/// @file
/// Walking the library's adapter tree, and the texts that name its members.
///
/// A list may have no entries, no head, or not exist at all; every walk takes all three for empty.
#pragma once

#include "TracedFunction.h"
#include "vexapi.h"

#include <cstring>

/// Values of `_vexapi_protocol_t` that commands ask about.
inline constexpr VX_UINT32 FIRST_NON_FC_PROTOCOL_TYPE = 2; ///< FC and FCoE lie below it
inline constexpr VX_UINT32 PROTOCOL_TYPE_NIC = 2;
inline constexpr VX_UINT32 PROTOCOL_TYPE_ISCSI = 3;
inline constexpr VX_UINT16 PORT_INTERFACE_VIRTUAL = 3;
inline constexpr VX_UINT8 PORT_STATE_ONLINE = 1;
/// Speed codes of the library.
inline constexpr VX_UINT32 SPEED_16_GBPS = 22;
inline constexpr VX_UINT32 SPEED_32_GBPS = 50;

inline bool IsFcProtocol(const _vexapi_protocol_t& protocol) {
    return protocol.ProtocolType < FIRST_NON_FC_PROTOCOL_TYPE;
}
inline bool IsVirtualPort(const _vexapi_protocol_t& protocol) {
    return protocol.PortInterfaceType == PORT_INTERFACE_VIRTUAL;
}

/// The word of a handle that some library functions take in its place, in host order.
VX_UINT32 HandleWord(const VX_PORT_HANDLE& handle);

/// First entry of a list, or null.
template <typename List> auto HeadOf(const List* list) {
    return list != nullptr ? list->pHead : nullptr;
}

/// The same for a walk over the adapter tree: traces the count in the list's header, which nothing else reads.
template <typename List> auto BeginWalk(const char* what, const List* list) {
    if (list != nullptr && TavuDebug::IsEnabled(TRACE_INFORMATION)) {
        TraceStep(TRACE_INFORMATION, "%s Count=%u", what, list->Count);
    }
    return HeadOf(list);
}

/// Visits every FC or FCoE protocol of the host in list order, until `visit(adapter, port, protocol)` gives
/// false.
template <typename Visit> void ForEachFcPort(const VX_ADAPTER_LIST& host, Visit visit) {
    for (auto* adapter = BeginWalk("Adapter", &host); adapter != nullptr; adapter = adapter->pNext) {
        for (auto* port = BeginWalk("Phy Port", adapter->pPhyPortList); port != nullptr; port = port->pNext) {
            for (auto* protocol = BeginWalk("Protocol", port->pProtocolList); protocol != nullptr;
                 protocol = protocol->pNext) {
                if (IsFcProtocol(*protocol) && !visit(*adapter, *port, *protocol)) {
                    return;
                }
            }
        }
    }
}

/// Visits the entries of a list of targets or LUNs from `head` on, until `visit(entry)` gives false. False
/// when it did, so that an outer walk can end too.
template <typename Entry, typename Visit> bool ForEachEntry(Entry* head, Visit visit) {
    for (Entry* entry = head; entry != nullptr; entry = entry->pNext) {
        if (!visit(*entry)) {
            return false;
        }
    }
    return true;
}

inline constexpr std::size_t WWN_LENGTH = 23; ///< characters of a World Wide Name's text

/// A World Wide Name as all commands print it: "xx:xx:xx:xx:xx:xx:xx:xx" in lower case. Writes
/// `WWN_LENGTH` characters and a terminator.
void FormatWwn(char* text, const VX_UINT8 (&name)[8]);

/// Reads exactly the text that `FormatWwn` makes of a name, whatever stands behind it. Gives the position
/// behind it, or null.
const char* ReadWwn(const char* text, VX_UINT8 (&name)[8]);

/// Scans a name as options take it: hexadecimal numbers of any length, of which the low 8 bits count, with
/// colons between them. A text that is cut short leaves the bytes behind it as they are. Gives the position
/// behind the eighth number, or null.
const char* ScanWwn(const char* text, VX_UINT8 (&name)[8]);

inline bool IsSameWwn(const VX_UINT8 (&left)[8], const VX_UINT8 (&right)[8]) {
    return std::memcmp(left, right, sizeof left) == 0;
}

/// Identifier of a port: "FC_" and its WWPN.
struct PortIdentifier {
    explicit PortIdentifier(const VX_UINT8 (&wwpn)[8]);
    char text[27];
};

/// Reads a port identifier. True, with the WWPN stored, only for exactly the text that `PortIdentifier`
/// makes of that WWPN.
bool ParsePortIdentifier(const char* text, VX_UINT8 (&wwpn)[8]);
