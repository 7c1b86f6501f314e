/// @file
/// Walking the library's adapter tree, and the texts that name its members.
///
/// A list may have no entries, no head, or not exist at all; every walk takes all three for empty.
#pragma once

#include "vexapi.h"

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

/// Visits every FC or FCoE protocol of the host in list order, until `visit(adapter, port, protocol)` gives
/// false.
template <typename Visit> void ForEachFcPort(const VX_ADAPTER_LIST& host, Visit visit) {
    for (_vexapi_adapter_t* adapter = host.pHead; adapter != nullptr; adapter = adapter->pNext) {
        for (auto* port = HeadOf(adapter->pPhyPortList); port != nullptr; port = port->pNext) {
            for (auto* protocol = HeadOf(port->pProtocolList); protocol != nullptr; protocol = protocol->pNext) {
                if (IsFcProtocol(*protocol) && !visit(*adapter, *port, *protocol)) {
                    return;
                }
            }
        }
    }
}

/// A World Wide Name as all commands print it: "xx:xx:xx:xx:xx:xx:xx:xx" in lower case. Writes 23
/// characters and a terminator.
void FormatWwn(char* text, const VX_UINT8 (&name)[8]);

/// Identifier of a port: "FC_" and its WWPN.
struct PortIdentifier {
    explicit PortIdentifier(const VX_UINT8 (&wwpn)[8]);
    char text[27];
};

/// Reads a port identifier. True, with the WWPN stored, only for exactly the text that `PortIdentifier`
/// makes of that WWPN.
bool ParsePortIdentifier(const char* text, VX_UINT8 (&wwpn)[8]);
