/// @file
/// Traversal of the library's adapter tree, and the identifiers of its members.
///
/// A list may be empty, have no head or not exist at all; all walks treat these alike.
#pragma once

#include "LinkedList.h"
#include "TracedFunction.h"
#include "vexapi.h"

#include <cstring>

/// Values of `_vexapi_protocol_t` that commands check.
inline constexpr VX_UINT32 FIRST_NON_FC_PROTOCOL_TYPE = 2; ///< FC and FCoE are below it
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

/// The word of a handle that some library functions take instead of the handle, in host order.
VX_UINT32 HandleWord(const VX_PORT_HANDLE& handle);

/// First entry of a list, or null.
template <typename List> auto HeadOf(const List* list) {
    return list != nullptr ? list->pHead : nullptr;
}

/// Same for a walk over the adapter tree: also traces the count in the list's header, which is not used otherwise.
template <typename List> auto BeginWalk(const char* what, const List* list) {
    if (list != nullptr && TavuDebug::IsEnabled(TRACE_INFORMATION)) {
        TraceStep(TRACE_INFORMATION, "%s Count=%u", what, list->Count);
    }
    return HeadOf(list);
}

/// Visits each entry of a list once, starting at `head`, until `visit(entry)` returns false. Returns false if it
/// did, so that an outer walk can end too. A list that runs in a ring ends with a trace.
template <typename Entry, typename Visit> bool ForEachEntry(Entry* head, Visit visit) {
    const WalkEnd end = WalkList(head, visit);
    if (end == WalkEnd::RING) {
        TraceStep(TRACE_DEBUG, "The library's list has no end");
    }
    return end != WalkEnd::VISIT;
}

/// Visits every FC or FCoE protocol of the host in list order, until `visit(adapter, port, protocol)` returns
/// false.
template <typename Visit> void ForEachFcPort(const VX_ADAPTER_LIST& host, Visit visit) {
    ForEachEntry(BeginWalk("Adapter", &host), [&](_vexapi_adapter_t& adapter) {
        return ForEachEntry(BeginWalk("Phy Port", adapter.pPhyPortList), [&](_vexapi_phy_port_t& port) {
            return ForEachEntry(BeginWalk("Protocol", port.pProtocolList), [&](_vexapi_protocol_t& protocol) {
                return !IsFcProtocol(protocol) || visit(adapter, port, protocol);
            });
        });
    });
}

inline constexpr std::size_t WWN_LENGTH = 23; ///< characters of a World Wide Name's text

/// Formats a World Wide Name as in all commands: "xx:xx:xx:xx:xx:xx:xx:xx" in lower case. Writes `WWN_LENGTH`
/// characters and a terminator.
void FormatWwn(char* text, const VX_UINT8 (&name)[8]);

/// Parses a name exactly as `FormatWwn` formats it; any text may follow. Returns the position after it, or null.
const char* ReadWwn(const char* text, VX_UINT8 (&name)[8]);

/// Parses a name leniently, for options: hexadecimal numbers of any length, of which the low 8 bits count,
/// separated by colons. If the text is incomplete, the remaining bytes are unchanged. Returns the position after
/// the eighth number, or null.
const char* ScanWwn(const char* text, VX_UINT8 (&name)[8]);

inline bool IsSameWwn(const VX_UINT8 (&left)[8], const VX_UINT8 (&right)[8]) {
    return std::memcmp(left, right, sizeof left) == 0;
}

/// Identifier of a port: "FC_" and its WWPN.
struct PortIdentifier {
    explicit PortIdentifier(const VX_UINT8 (&wwpn)[8]);
    char text[27];
};

/// Parses a port identifier. Returns true and the WWPN only for exactly the text that `PortIdentifier` makes of
/// that WWPN.
bool ParsePortIdentifier(const char* text, VX_UINT8 (&wwpn)[8]);
