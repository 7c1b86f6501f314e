/// @file
/// Common parts of the congestion management reports of ports and targets, and their differing texts as tables. The
/// event codes are those of Fabric Performance Impact Notifications.
#pragma once

#include "ChipFamilies.h"
#include "CodeTable.h"
#include "NameLines.h"
#include "ReportBlock.h"

/// The texts of a port's or of a target's reports.
struct CongestionWords {
    std::span<const CodeText> notifications;   ///< bits of `ScmEventFlags`; texts include the separators
    std::span<const CodeText> deliveryReasons; ///< any other is "Reserved"
    const char* congestionPrefix;              ///< prefix of first-generation congestion event labels
};

/// Required: separators are printed even if nothing follows; parsers depend on it.
inline constexpr CodeText PORT_NOTIFICATIONS[] = {{0x1, "Congestion, "}, {0x2, "Delivery, "}, {0x4, "Link Integrity"}};
inline constexpr CodeText TARGET_NOTIFICATIONS[] = {
    {0x2, "Delivery, "}, {0x4, "Link Integrity, "}, {0x8, "Peer Congestion"}};
inline constexpr CodeText PORT_DELIVERY_REASONS[] = {
    {0, "Unknown"}, {1, "Timeout"}, {2, "Unable To Route"}, {15, "Device Specific"}};
/// Required: reason 15 of a target reads "Reserved"; parsers depend on it.
inline constexpr CodeText TARGET_DELIVERY_REASONS[] = {{0, "Unknown"}, {1, "Timeout"}, {2, "Unable To Route"}};

inline constexpr CongestionWords PORT_WORDS = {PORT_NOTIFICATIONS, PORT_DELIVERY_REASONS, ""};
inline constexpr CongestionWords TARGET_WORDS = {TARGET_NOTIFICATIONS, TARGET_DELIVERY_REASONS, "Peer "};

/// `ScmCongState`; any other is "Unknown".
inline constexpr CodeText CONGESTION_STATES[] = {{0, "Healthy"}, {1, "Congested"}};
/// `ScmCongSeverity`; any other is "Reserved".
inline constexpr CodeText SEVERITIES[] = {{0, "None"}, {0xF1, "Warning"}, {0xF7, "Alarm"}};

/// Text of a state that only some chips have.
struct ChipStateRule {
    bool (*hasState)(__CHIPPROPERTY chip);
    std::span<const CodeText> states;
    VX_UINT32 feature;          ///< bit of `FeatureFlags` that selects the text of any other state
    const char* withFeature;    ///< other states, bit set
    const char* withoutFeature; ///< other states, bit clear
    const char* otherChips;
};

inline constexpr VX_UINT32 FEATURE_VIRTUAL_LANE = 1U << 30;
inline constexpr VX_UINT32 FEATURE_THROTTLING = 1U << 31;
inline constexpr CodeText PORT_LANE_STATES[] = {{1, "Operational"}, {2, "Non-Operational"}};
inline constexpr CodeText TARGET_LANES[] = {{1, "Slow"}, {2, "Normal"}, {3, "Fast"}};
inline constexpr CodeText THROTTLE_STATES[] = {{1, "None"}, {2, "Active"}};

/// Rules for `ScmVirtualLaneState` and `ScmVirtualLane`.
inline constexpr ChipStateRule PORT_LANE_RULE = {IsBirchAdapter, PORT_LANE_STATES, FEATURE_VIRTUAL_LANE,
                                                 "Disabled",     "Disabled",       "Disabled"};
inline constexpr ChipStateRule TARGET_LANE_RULE = {IsBirchAdapter,    TARGET_LANES, FEATURE_VIRTUAL_LANE,
                                                   "Non-Operational", "NA",         "NA"};
/// Rules for `ScmThrottleState`. Required: on other chips a port reads "NA" and a target "None"; parsers depend on
/// it.
inline constexpr ChipStateRule PORT_THROTTLE_RULE = {IsUefiCapableAdapter, THROTTLE_STATES, FEATURE_THROTTLING,
                                                     "Disabled",           "None",          "NA"};
inline constexpr ChipStateRule TARGET_THROTTLE_RULE = {IsUefiCapableAdapter, THROTTLE_STATES, FEATURE_THROTTLING,
                                                       "Disabled",           "None",          "None"};

/// Text of a state of a port, or of a target that this port sees.
const char* StateText(const ChipStateRule& rule, const _vexapi_protocol_t& protocol, VX_UINT8 state);

/// A counter and its location in the records of each generation. Reports show counters in table order.
struct CongestionCounter {
    static constexpr int NOWHERE = -1;

    const char* label;
    VX_UINT64 _VEXAPI_SANCONGTMGMTV2::*second;
    VX_UINT32 __STATISTICS::*targetFirst = nullptr; ///< null: not available for first-generation targets
    int portFirst = NOWHERE;                        ///< index in `ScmLinkCounters`
};
using CongestionCounters = std::span<const CongestionCounter>;

extern const CongestionCounters LINK_COUNTERS;
extern const CongestionCounters DELIVERY_COUNTERS;
extern const CongestionCounters CONGESTION_COUNTERS;

/// The second-generation counters that a report shows under each of its two headings.
struct CongestionSections {
    const char* object; ///< in the trace of a missing node
    std::span<const CongestionCounters> mitigation;
    std::span<const CongestionCounters> notifications;
};
extern const CongestionSections PORT_SECTIONS;
extern const CongestionSections TARGET_SECTIONS;

/// The port's own node: the head if it is marked as such, else the next node, whatever it is, or null. Required:
/// there is no further search; clients depend on it.
const _VEXAPI_SANCONGTMGMTV2* FindPortNode(const _VEXAPI_SANCONGTMGMTV2& head);
/// The first node after the head with both names of the target, or null. The head should be the port's node and is
/// skipped.
const _VEXAPI_SANCONGTMGMTV2* FindTargetNode(const _VEXAPI_SANCONGTMGMTV2& head, const _tagVEXAPI_SDMTarget& target);

/// Lines of the last events, from the values of their record.
void AddLinkEvent(ReportBlock& block, const CongestionWords& words, VX_UINT16 flags, VX_UINT16 type,
                  VX_UINT32 threshold);
void AddDeliveryReason(ReportBlock& block, const CongestionWords& words, VX_UINT16 reason);
void AddCongestionEvent(ReportBlock& block, const CongestionWords& words, VX_UINT16 type, VX_UINT32 period);
/// The severity in a port's first-generation statistics. Required: an unknown one prints just the word "Reserved",
/// without indentation, label or line end, so that the next line continues on it; parsers depend on it.
void AddEventSeverity(ReportBlock& block, VX_UINT8 severity);

/// First-generation counters: of a port's link, of a port's alarms, and of a group of a target, with `prefix`
/// before the labels.
void AddPortLinkCounters(ReportBlock& block, const _vexapi_protocol_t& protocol);
void AddPortAlarmCounters(ReportBlock& block, const _vexapi_protocol_t& protocol);
void AddTargetCounters(ReportBlock& block, CongestionCounters group, const __STATISTICS& statistics,
                       const char* prefix = "");

/// Headings and counters of the second generation. Without a node, prints nothing: the report ends here, as a
/// success.
void AddSections(ReportBlock& block, const CongestionSections& sections, const _VEXAPI_SANCONGTMGMTV2* node);

/// Lines of the current state.
void AddCongestionState(ReportBlock& block, VX_UINT8 state);
void AddSeverity(ReportBlock& block, VX_UINT8 severity);
void AddLinkIntegrityEvents(ReportBlock& block, VX_UINT8 events);
void AddDeliveryEvents(ReportBlock& block, VX_UINT8 events);
void AddSecondsSinceLastEvent(ReportBlock& block, VX_UINT32 seconds);
void AddVirtualLane(ReportBlock& block, const ChipStateRule& rule, const _vexapi_protocol_t& protocol, VX_UINT8 state);
void AddThrottling(ReportBlock& block, const ChipStateRule& rule, const _vexapi_protocol_t& protocol, VX_UINT8 state);
