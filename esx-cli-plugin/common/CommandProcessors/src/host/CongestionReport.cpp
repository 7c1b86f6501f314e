#include "CongestionReport.h"

#include "HostTree.h"
#include "ReportTexts.h"
#include "TracedFunction.h"

namespace {

constexpr char OUT_RESERVED[] = "Reserved";
constexpr char OUT_SEVERITY[] = "Congestion Severity";
constexpr char OUT_ALARM_COUNT[] = "Congestion Alarm Count";
constexpr char OUT_WARNING_COUNT[] = "Congestion Warning Count";

constexpr char RULE_LINE[] = "-----------------------------------";
constexpr const char* MITIGATION_HEADING[] = {RULE_LINE, "Congestion Mitigation", RULE_LINE};
/// The trailing blank is part of the heading.
constexpr const char* NOTIFICATIONS_HEADING[] = {RULE_LINE, "Rx Fabric Performance Impact ", "Notifications",
                                                 RULE_LINE};

/// Any other is "Reserved".
constexpr CodeText LINK_EVENTS[] = {
    {0, OUT_UNKNOWN},
    {1, "Link Failure"},
    {2, "Loss Of Sync"},
    {3, "Loss Of Signal"},
    {4, "Primitive Sequence Protocol Error"},
    {5, "Invalid Transmission Word"},
    {6, "Invalid CRC"},
    {15, "Device Specific"},
};
constexpr CodeText CONGESTION_EVENTS[] = {
    {0, "Clear"}, {1, "Lost Credit"}, {2, "Credit Stall"}, {3, "Oversubscription"}, {15, "Device Specific"},
};

using Node = _VEXAPI_SANCONGTMGMTV2;
using Target = __STATISTICS;
constexpr CongestionCounter ALARMS[] = {
    {OUT_ALARM_COUNT, &Node::AlarmCount},
    {OUT_WARNING_COUNT, &Node::WarningCount},
};
/// Required: "Up" precedes "Down" and "Bottomed Out" precedes "Returned Busy", unlike in the record; parsers depend
/// on it.
constexpr CongestionCounter MITIGATION[] = {
    {"Cleared Congestion Count", &Node::ClearedCongestionCount}, {"Throttled Up Count", &Node::ThrottledUpCount},
    {"Throttled Down Count", &Node::ThrottledDownCount},         {"Bottomed Out Count", &Node::BottomedOutCount},
    {"Returned Busy Count", &Node::ReturnedBusyCount},
};
constexpr CongestionCounter LINK[] = {
    {"Link Failure Count", &Node::LinkFailureCount, &Target::LinkFailureCount, 0},
    {"Link Unknown Event Count", &Node::LinkUnknownEventCount, &Target::LinkUnknownEventCount},
    {"Loss Of Sync Count", &Node::LossOfSyncCount, &Target::LossOfSyncCount, 1},
    {"Loss Of Signal Count", &Node::LossOfSignalCount, &Target::LossOfSignalCount, 2},
    {"Link Device Specific Event Count", &Node::LinkDevSpecCount, &Target::LinkDevSpecCount},
    {"Primitive Sequence Protocol Error Count", &Node::PrimSeqProtoErrCount, &Target::PrimSeqProtoErrCount, 3},
    {"Invalid Transmission Word Count", &Node::InvalidTxWordCount, &Target::InvalidTxWordCount, 4},
    {"Invalid CRC Count", &Node::InvalidCrcCount, &Target::InvalidCrcCount, 5},
    {"Link Uncorrectable FEC Count", &Node::LinkUncorFecCount},
};
constexpr CongestionCounter DELIVERY[] = {
    {"Delivery Failure Unknown Count", &Node::DeliveryFailureCount, &Target::DeliveryFailureCount},
    {"Delivery Timeout Count", &Node::DeliveryTimeoutCount, &Target::DeliveryTimeoutCount},
    {"Delivery Unable To Route Count", &Node::DeliveryUnableToRouteCount, &Target::DeliveryUnableToRouteCount},
    {"Delivery Failure Device Specific Count", &Node::DeliveryDevSpecCount, &Target::DeliveryDevSpecCount},
};
constexpr CongestionCounter CONGESTION[] = {
    {"Congestion Clear Count", &Node::CongClearCount, &Target::PeerCongClearCount},
    {"Congestion Lost Credit Count", &Node::CongLostCreditCount, &Target::PeerCongLostCreditCount},
    {"Congestion Credit Stall Count", &Node::CongCreditStallCount, &Target::PeerCongCreditStallCount},
    {"Congestion Oversubscription Count", &Node::CongOversubscriptionCount, &Target::PeerCongOversubscriptionCount},
    {"Congestion Device Specific Count", &Node::CongDevSpecCount, &Target::PeerCongDevSpecCount},
};
constexpr CongestionCounter PUN[] = {{"PUN Count", &Node::PunCount}};

constexpr CongestionCounters PORT_MITIGATION_GROUPS[] = {ALARMS, MITIGATION};
constexpr CongestionCounters PORT_NOTIFICATION_GROUPS[] = {LINK, DELIVERY, CONGESTION};
constexpr CongestionCounters TARGET_MITIGATION_GROUPS[] = {MITIGATION};
constexpr CongestionCounters TARGET_NOTIFICATION_GROUPS[] = {LINK, CONGESTION, PUN};

void AddCount(ReportBlock& block, const char* label, VX_UINT32 count) {
    block.LineF(label, "%u", count);
}

void AddMilliseconds(ReportBlock& block, const char* label, VX_UINT32 milliseconds) {
    block.LineF(label, "%u (ms)", milliseconds);
}

void AddPresence(ReportBlock& block, const char* label, VX_UINT8 events) {
    block.Line(label, events != 0 ? "Yes" : "No");
}

/// Required: a non-zero value without known bits prints an empty line without a label; parsers depend on it.
void AddNotifications(ReportBlock& block, std::span<const CodeText> words, VX_UINT16 flags) {
    TavuString text = flags == 0 ? "None" : "";
    for (const CodeText& word : words) {
        text += (flags & word.code) != 0 ? word.text : "";
    }
    if (text.empty()) {
        block.BareLine("\n");
    } else {
        block.Line("Congestion Notification", text);
    }
}

void AddSection(ReportBlock& block, std::span<const char* const> heading, std::span<const CongestionCounters> groups,
                const Node& node) {
    for (const char* line : heading) {
        block.Heading(line);
    }
    for (const CongestionCounters& group : groups) {
        for (const CongestionCounter& counter : group) {
            block.LineF(counter.label, "%llu", static_cast<unsigned long long>(node.*counter.second));
        }
    }
}

} // namespace

constinit const CongestionCounters LINK_COUNTERS = LINK;
constinit const CongestionCounters DELIVERY_COUNTERS = DELIVERY;
constinit const CongestionCounters CONGESTION_COUNTERS = CONGESTION;
constinit const CongestionSections PORT_SECTIONS = {"physical port", PORT_MITIGATION_GROUPS, PORT_NOTIFICATION_GROUPS};
constinit const CongestionSections TARGET_SECTIONS = {"target", TARGET_MITIGATION_GROUPS, TARGET_NOTIFICATION_GROUPS};

const char* StateText(const ChipStateRule& rule, const _vexapi_protocol_t& protocol, VX_UINT8 state) {
    if (!rule.hasState(protocol.ChipProperty)) {
        return rule.otherChips;
    }
    const bool hasFeature = (protocol.FeatureFlags & rule.feature) != 0;
    return TextOf(rule.states, state, hasFeature ? rule.withFeature : rule.withoutFeature);
}

const Node* FindPortNode(const Node& head) {
    constexpr VX_UINT32 PORTS_OWN = 0x80;
    return head.EntryType == PORTS_OWN ? &head : head.pNext;
}

const Node* FindTargetNode(const Node& head, const _tagVEXAPI_SDMTarget& target) {
    const Node* found = nullptr;
    ForEachEntry(static_cast<const Node*>(head.pNext), [&](const Node& node) {
        if (IsSameWwn(node.WWNN, target.NodeName) && IsSameWwn(node.WWPN, target.PortName)) {
            found = &node;
        }
        return found == nullptr;
    });
    return found;
}

void AddLinkEvent(ReportBlock& block, const CongestionWords& words, VX_UINT16 flags, VX_UINT16 type,
                  VX_UINT32 threshold) {
    AddNotifications(block, words.notifications, flags);
    block.Line("Link Event Type", TextOf(LINK_EVENTS, type, OUT_RESERVED));
    AddMilliseconds(block, "Link Event Threshold", threshold);
}

void AddDeliveryReason(ReportBlock& block, const CongestionWords& words, VX_UINT16 reason) {
    block.Line("Delivery Notification", TextOf(words.deliveryReasons, reason, OUT_RESERVED));
}

void AddCongestionEvent(ReportBlock& block, const CongestionWords& words, VX_UINT16 type, VX_UINT32 period) {
    const TavuString prefix = words.congestionPrefix;
    block.Line((prefix + "Congestion Event Type").c_str(), TextOf(CONGESTION_EVENTS, type, OUT_RESERVED));
    AddMilliseconds(block, (prefix + "Congestion Event Period").c_str(), period);
}

void AddEventSeverity(ReportBlock& block, VX_UINT8 severity) {
    if (const char* const text = TextOf(SEVERITIES, severity, nullptr); text != nullptr) {
        block.Line(OUT_SEVERITY, text);
    } else {
        block.BareLine(OUT_RESERVED);
    }
}

void AddPortLinkCounters(ReportBlock& block, const _vexapi_protocol_t& protocol) {
    for (const CongestionCounter& counter : LINK_COUNTERS) {
        if (counter.portFirst != CongestionCounter::NOWHERE) {
            AddCount(block, counter.label, protocol.ScmLinkCounters[counter.portFirst]);
        }
    }
}

/// The counters have 64 bits; the low 32 are shown.
void AddPortAlarmCounters(ReportBlock& block, const _vexapi_protocol_t& protocol) {
    AddCount(block, OUT_ALARM_COUNT, static_cast<VX_UINT32>(protocol.ScmAlarmCount));
    AddCount(block, OUT_WARNING_COUNT, static_cast<VX_UINT32>(protocol.ScmWarningCount));
}

void AddTargetCounters(ReportBlock& block, CongestionCounters group, const __STATISTICS& statistics,
                       const char* prefix) {
    for (const CongestionCounter& counter : group) {
        if (counter.targetFirst != nullptr) {
            AddCount(block, (TavuString(prefix) + counter.label).c_str(), statistics.*counter.targetFirst);
        }
    }
}

void AddSections(ReportBlock& block, const CongestionSections& sections, const Node* node) {
    if (node == nullptr) {
        TraceStep(TRACE_DEBUG, "No matching %s found in SCM V2 stats", sections.object);
        return;
    }
    AddSection(block, MITIGATION_HEADING, sections.mitigation, *node);
    AddSection(block, NOTIFICATIONS_HEADING, sections.notifications, *node);
}

void AddCongestionState(ReportBlock& block, VX_UINT8 state) {
    block.Line("Congestion Current State", TextOf(CONGESTION_STATES, state, OUT_UNKNOWN));
}

void AddSeverity(ReportBlock& block, VX_UINT8 severity) {
    block.Line(OUT_SEVERITY, TextOf(SEVERITIES, severity, OUT_RESERVED));
}

void AddLinkIntegrityEvents(ReportBlock& block, VX_UINT8 events) {
    AddPresence(block, "Link Integrity Events", events);
}

void AddDeliveryEvents(ReportBlock& block, VX_UINT8 events) {
    AddPresence(block, "Delivery Notification Events", events);
}

void AddSecondsSinceLastEvent(ReportBlock& block, VX_UINT32 seconds) {
    AddCount(block, "Seconds Since Last Event", seconds);
}

void AddVirtualLane(ReportBlock& block, const ChipStateRule& rule, const _vexapi_protocol_t& protocol, VX_UINT8 state) {
    block.Line("Virtual Lane", StateText(rule, protocol, state));
}

void AddThrottling(ReportBlock& block, const ChipStateRule& rule, const _vexapi_protocol_t& protocol, VX_UINT8 state) {
    block.Line("I/O Throttling", StateText(rule, protocol, state));
}
