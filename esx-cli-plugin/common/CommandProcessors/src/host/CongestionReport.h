/// @file
/// What the reports of congestion management on ports and on targets share, and what they word differently,
/// as tables. The event codes are those of Fabric Performance Impact Notifications.
#pragma once

#include "ChipFamilies.h"
#include "CodeTable.h"
#include "NameLines.h"
#include "ReportBlock.h"

/// The words of a port's or of a target's reports.
struct CongestionWords {
    std::span<const CodeText> notifications;   ///< bits of `ScmEventFlags`, with the separators behind the words
    std::span<const CodeText> deliveryReasons; ///< any other is "Reserved"
    const char* congestionPrefix;              ///< of the labels of congestion events in the first generation
};

/// Separators stand even where nothing follows: clients know them so.
inline constexpr CodeText PORT_NOTIFICATIONS[] = {{0x1, "Congestion, "}, {0x2, "Delivery, "}, {0x4, "Link Integrity"}};
inline constexpr CodeText TARGET_NOTIFICATIONS[] = {
    {0x2, "Delivery, "}, {0x4, "Link Integrity, "}, {0x8, "Peer Congestion"}};
inline constexpr CodeText PORT_DELIVERY_REASONS[] = {
    {0, "Unknown"}, {1, "Timeout"}, {2, "Unable To Route"}, {15, "Device Specific"}};
/// Reason 15 reads "Reserved" at a target: clients know it so.
inline constexpr CodeText TARGET_DELIVERY_REASONS[] = {{0, "Unknown"}, {1, "Timeout"}, {2, "Unable To Route"}};

inline constexpr CongestionWords PORT_WORDS = {PORT_NOTIFICATIONS, PORT_DELIVERY_REASONS, ""};
inline constexpr CongestionWords TARGET_WORDS = {TARGET_NOTIFICATIONS, TARGET_DELIVERY_REASONS, "Peer "};

/// `ScmCongState`; any other is "Unknown".
inline constexpr CodeText CONGESTION_STATES[] = {{0, "Healthy"}, {1, "Congested"}};
/// `ScmCongSeverity`; any other is "Reserved".
inline constexpr CodeText SEVERITIES[] = {{0, "None"}, {0xF1, "Warning"}, {0xF7, "Alarm"}};

/// How a state reads that only some chips have.
struct ChipStateRule {
    bool (*hasState)(__CHIPPROPERTY chip);
    std::span<const CodeText> states;
    VX_UINT32 feature;          ///< bit of `FeatureFlags` that decides any other state
    const char* withFeature;    ///< any other state, with that bit set
    const char* withoutFeature; ///< and clear
    const char* otherChips;
};

inline constexpr VX_UINT32 FEATURE_VIRTUAL_LANE = 1U << 30;
inline constexpr VX_UINT32 FEATURE_THROTTLING = 1U << 31;
inline constexpr CodeText PORT_LANE_STATES[] = {{1, "Operational"}, {2, "Non-Operational"}};
inline constexpr CodeText TARGET_LANES[] = {{1, "Slow"}, {2, "Normal"}, {3, "Fast"}};
inline constexpr CodeText THROTTLE_STATES[] = {{1, "None"}, {2, "Active"}};

/// Of `ScmVirtualLaneState` and `ScmVirtualLane`.
inline constexpr ChipStateRule PORT_LANE_RULE = {IsBirchAdapter, PORT_LANE_STATES, FEATURE_VIRTUAL_LANE,
                                                 "Disabled",     "Disabled",       "Disabled"};
inline constexpr ChipStateRule TARGET_LANE_RULE = {IsBirchAdapter,    TARGET_LANES, FEATURE_VIRTUAL_LANE,
                                                   "Non-Operational", "NA",         "NA"};
/// Of `ScmThrottleState`. On other chips a port reads "NA" and a target "None": clients know both.
inline constexpr ChipStateRule PORT_THROTTLE_RULE = {IsUefiCapableAdapter, THROTTLE_STATES, FEATURE_THROTTLING,
                                                     "Disabled",           "None",          "NA"};
inline constexpr ChipStateRule TARGET_THROTTLE_RULE = {IsUefiCapableAdapter, THROTTLE_STATES, FEATURE_THROTTLING,
                                                       "Disabled",           "None",          "None"};

/// Text of a state at a port, or at a target that this port sees.
const char* StateText(const ChipStateRule& rule, const _vexapi_protocol_t& protocol, VX_UINT8 state);

/// A counter: where the records of each generation keep it. Reports show their counters in the table's order.
struct CongestionCounter {
    static constexpr int NOWHERE = -1;

    const char* label;
    VX_UINT64 _VEXAPI_SANCONGTMGMTV2::*second;
    VX_UINT32 __STATISTICS::*targetFirst = nullptr; ///< null: a target of the first generation doesn't have it
    int portFirst = NOWHERE;                        ///< index in `ScmLinkCounters`
};
using CongestionCounters = std::span<const CongestionCounter>;

extern const CongestionCounters LINK_COUNTERS;
extern const CongestionCounters DELIVERY_COUNTERS;
extern const CongestionCounters CONGESTION_COUNTERS;

/// Which counters of the second generation a report shows under each of its two headings.
struct CongestionSections {
    const char* object; ///< in the trace of a missing node
    std::span<const CongestionCounters> mitigation;
    std::span<const CongestionCounters> notifications;
};
extern const CongestionSections PORT_SECTIONS;
extern const CongestionSections TARGET_SECTIONS;

/// The node of the port itself: the head if it says so, else the next one whatever that is, or null. Clients
/// know no further search.
const _VEXAPI_SANCONGTMGMTV2* FindPortNode(const _VEXAPI_SANCONGTMGMTV2& head);
/// The first node behind the head that has both names of the target, or null. The head, which is to be the
/// port's, is not looked at.
const _VEXAPI_SANCONGTMGMTV2* FindTargetNode(const _VEXAPI_SANCONGTMGMTV2& head, const _tagVEXAPI_SDMTarget& target);

/// The lines of the last events, as values of their record.
void AddLinkEvent(ReportBlock& block, const CongestionWords& words, VX_UINT16 flags, VX_UINT16 type,
                  VX_UINT32 threshold);
void AddDeliveryReason(ReportBlock& block, const CongestionWords& words, VX_UINT16 reason);
void AddCongestionEvent(ReportBlock& block, const CongestionWords& words, VX_UINT16 type, VX_UINT32 period);
/// The severity of a port's first-generation statistics. One without a text gives the word "Reserved" alone, without
/// indentation, label or line end, and the next line runs on behind it: clients know it so.
void AddEventSeverity(ReportBlock& block, VX_UINT8 severity);

/// Counters of the first generation: of a port's link, a port's alarms, and those of a group at a target, with
/// `prefix` ahead of their labels.
void AddPortLinkCounters(ReportBlock& block, const _vexapi_protocol_t& protocol);
void AddPortAlarmCounters(ReportBlock& block, const _vexapi_protocol_t& protocol);
void AddTargetCounters(ReportBlock& block, CongestionCounters group, const __STATISTICS& statistics,
                       const char* prefix = "");

/// Headings and counters of the second generation. Nothing without a node: the report then ends here, as a success.
void AddSections(ReportBlock& block, const CongestionSections& sections, const _VEXAPI_SANCONGTMGMTV2* node);

/// The lines that tell the present state.
void AddCongestionState(ReportBlock& block, VX_UINT8 state);
void AddSeverity(ReportBlock& block, VX_UINT8 severity);
void AddLinkIntegrityEvents(ReportBlock& block, VX_UINT8 events);
void AddDeliveryEvents(ReportBlock& block, VX_UINT8 events);
void AddSecondsSinceLastEvent(ReportBlock& block, VX_UINT32 seconds);
void AddVirtualLane(ReportBlock& block, const ChipStateRule& rule, const _vexapi_protocol_t& protocol, VX_UINT8 state);
void AddThrottling(ReportBlock& block, const ChipStateRule& rule, const _vexapi_protocol_t& protocol, VX_UINT8 state);
