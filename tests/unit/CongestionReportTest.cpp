#include "CongestionReport.h"

#include "families/FamilyTest.h"

#include <cstring>
#include <gtest/gtest.h>

using namespace family_test;

namespace {

using Node = _VEXAPI_SANCONGTMGMTV2;

/// Output of `add(block)` after a first line.
template <typename Add> std::string Written(Add add) {
    ReportBlock block(4096, ReportBlock::SizeRule::SPACE_LEFT);
    block.Raw("");
    add(block);
    return block.GetText();
}

std::string Labelled(const std::string& label, const std::string& value) {
    return "      " + label + ": " + value + "\n";
}

/// The first of the three lines that `AddLinkEvent` writes.
std::string NotificationLine(const CongestionWords& words, VX_UINT16 flags) {
    const std::string text = Written([&](ReportBlock& block) { AddLinkEvent(block, words, flags, 0, 0); });
    return text.substr(0, text.find('\n') + 1);
}

/// Indexed by the three significant bits: the words in sequence, each with its separator.
constexpr const char* PORT_RUNS[8] = {
    nullptr,
    "Congestion, ",
    "Delivery, ",
    "Congestion, Delivery, ",
    "Link Integrity",
    "Congestion, Link Integrity",
    "Delivery, Link Integrity",
    "Congestion, Delivery, Link Integrity",
};
constexpr const char* TARGET_RUNS[8] = {
    nullptr,
    "Delivery, ",
    "Link Integrity, ",
    "Delivery, Link Integrity, ",
    "Peer Congestion",
    "Delivery, Peer Congestion",
    "Link Integrity, Peer Congestion",
    "Delivery, Link Integrity, Peer Congestion",
};

/// All 16-bit values: "None" for zero, just a newline if no significant bit is set.
void ExpectNotifications(const CongestionWords& words, const char* const (&runs)[8], unsigned lowestBit) {
    for (unsigned flags = 0; flags <= 0xFFFF; ++flags) {
        const char* const run = runs[flags >> lowestBit & 7];
        const std::string expected = flags == 0       ? Labelled("Congestion Notification", "None")
                                     : run == nullptr ? "\n"
                                                      : Labelled("Congestion Notification", run);
        ASSERT_EQ(NotificationLine(words, static_cast<VX_UINT16>(flags)), expected) << flags;
    }
}
TEST(CongestionReportTest, ShowsEveryMixOfAPortsEventFlags) {
    ExpectNotifications(PORT_WORDS, PORT_RUNS, 0);
}
TEST(CongestionReportTest, ShowsEveryMixOfATargetsEventFlags) {
    ExpectNotifications(TARGET_WORDS, TARGET_RUNS, 1);
}

struct EventRow {
    VX_UINT16 code;
    const char* link;
    const char* portDelivery;
    const char* targetDelivery;
    const char* congestion;
};
constexpr EventRow EVENTS[] = {
    {0, "Unknown", "Unknown", "Unknown", "Clear"},
    {1, "Link Failure", "Timeout", "Timeout", "Lost Credit"},
    {2, "Loss Of Sync", "Unable To Route", "Unable To Route", "Credit Stall"},
    {3, "Loss Of Signal", "Reserved", "Reserved", "Oversubscription"},
    {4, "Primitive Sequence Protocol Error", "Reserved", "Reserved", "Reserved"},
    {5, "Invalid Transmission Word", "Reserved", "Reserved", "Reserved"},
    {6, "Invalid CRC", "Reserved", "Reserved", "Reserved"},
    {7, "Reserved", "Reserved", "Reserved", "Reserved"},
    {14, "Reserved", "Reserved", "Reserved", "Reserved"},
    {15, "Device Specific", "Device Specific", "Reserved", "Device Specific"},
    {16, "Reserved", "Reserved", "Reserved", "Reserved"},
    // The low byte alone must not count.
    {0x0100, "Reserved", "Reserved", "Reserved", "Reserved"},
    {0x010F, "Reserved", "Reserved", "Reserved", "Reserved"},
    {0xFFFF, "Reserved", "Reserved", "Reserved", "Reserved"},
};
TEST(CongestionReportTest, NamesTheEvents) {
    for (const EventRow& row : EVENTS) {
        SCOPED_TRACE(row.code);
        for (const CongestionWords* words : {&PORT_WORDS, &TARGET_WORDS}) {
            const bool isPort = words == &PORT_WORDS;
            EXPECT_EQ(Written([&](ReportBlock& block) { AddLinkEvent(block, *words, 0, row.code, 4294967295u); }),
                      Labelled("Congestion Notification", "None") + Labelled("Link Event Type", row.link) +
                          Labelled("Link Event Threshold", "4294967295 (ms)"));
            EXPECT_EQ(Written([&](ReportBlock& block) { AddDeliveryReason(block, *words, row.code); }),
                      Labelled("Delivery Notification", isPort ? row.portDelivery : row.targetDelivery));
            const std::string peer = isPort ? "" : "Peer ";
            EXPECT_EQ(Written([&](ReportBlock& block) { AddCongestionEvent(block, *words, row.code, 0); }),
                      Labelled(peer + "Congestion Event Type", row.congestion) +
                          Labelled(peer + "Congestion Event Period", "0 (ms)"));
        }
    }
}

/// The statistics print just the word for a reserved severity, the check a regular line.
TEST(CongestionReportTest, NamesTheSeverity) {
    for (unsigned severity = 0; severity <= 0xFF; ++severity) {
        const char* const text = severity == 0      ? "None"
                                 : severity == 0xF1 ? "Warning"
                                 : severity == 0xF7 ? "Alarm"
                                                    : nullptr;
        const auto value = static_cast<VX_UINT8>(severity);
        EXPECT_EQ(Written([&](ReportBlock& block) { AddEventSeverity(block, value); }),
                  text != nullptr ? Labelled("Congestion Severity", text) : "Reserved");
        EXPECT_EQ(Written([&](ReportBlock& block) { AddSeverity(block, value); }),
                  Labelled("Congestion Severity", text != nullptr ? text : "Reserved"));
    }
}

TEST(CongestionReportTest, TellsThePresentState) {
    for (unsigned value = 0; value <= 0xFF; ++value) {
        const auto state = static_cast<VX_UINT8>(value);
        EXPECT_EQ(Written([&](ReportBlock& block) { AddCongestionState(block, state); }),
                  Labelled("Congestion Current State", value == 0   ? "Healthy"
                                                       : value == 1 ? "Congested"
                                                                    : "Unknown"));
        EXPECT_EQ(Written([&](ReportBlock& block) { AddLinkIntegrityEvents(block, state); }),
                  Labelled("Link Integrity Events", value == 0 ? "No" : "Yes"));
        EXPECT_EQ(Written([&](ReportBlock& block) { AddDeliveryEvents(block, state); }),
                  Labelled("Delivery Notification Events", value == 0 ? "No" : "Yes"));
    }
    EXPECT_EQ(Written([](ReportBlock& block) { AddSecondsSinceLastEvent(block, 4294967295u); }),
              Labelled("Seconds Since Last Event", "4294967295"));
}

constexpr VX_UINT32 BIT_30 = 0x40000000;
constexpr VX_UINT32 BIT_31 = 0x80000000;

struct StateRow {
    int state;
    const char* text;
};
struct RuleCase {
    const char* name;
    const ChipStateRule& rule;
    std::vector<Chip> chips; ///< chips that have the state
    std::vector<StateRow> states;
    VX_UINT32 bit;
    const char* set;   ///< other states, bit set
    const char* clear; ///< other states, bit clear
    const char* otherChips;
};

TEST(CongestionReportTest, HoldsTheRulesOfLanesAndThrottling) {
    const std::vector<Chip> birch = {BIRCH};
    const std::vector<Chip> capable = {LARCH, ALDER, BIRCH};
    const std::vector<StateRow> throttling = {{1, "None"}, {2, "Active"}};
    const RuleCase cases[] = {
        // A port's lane depends on no bit.
        {"port lane",
         PORT_LANE_RULE,
         birch,
         {{1, "Operational"}, {2, "Non-Operational"}},
         0,
         "Disabled",
         "Disabled",
         "Disabled"},
        {"target lane",
         TARGET_LANE_RULE,
         birch,
         {{1, "Slow"}, {2, "Normal"}, {3, "Fast"}},
         BIT_30,
         "Non-Operational",
         "NA",
         "NA"},
        {"port throttling", PORT_THROTTLE_RULE, capable, throttling, BIT_31, "Disabled", "None", "NA"},
        {"target throttling", TARGET_THROTTLE_RULE, capable, throttling, BIT_31, "Disabled", "None", "None"},
    };
    for (const RuleCase& row : cases) {
        for (const ChipRow& chip : CHIPS) {
            const bool hasState = std::find(row.chips.begin(), row.chips.end(), chip.chip) != row.chips.end();
            for (const VX_UINT32 flags : {0u, BIT_30, BIT_31, BIT_30 | BIT_31, ~BIT_30, ~BIT_31, ~0u}) {
                _vexapi_protocol_t protocol{};
                SetChip(protocol, chip.chip);
                protocol.FeatureFlags = flags;
                for (int state = 0; state <= 0xFF; ++state) {
                    const char* expected = (flags & row.bit) != 0 ? row.set : row.clear;
                    for (const StateRow& known : row.states) {
                        expected = known.state == state ? known.text : expected;
                    }
                    ASSERT_STREQ(StateText(row.rule, protocol, static_cast<VX_UINT8>(state)),
                                 hasState ? expected : row.otherChips)
                        << row.name << " on " << chip.name << " with state " << state << " and flags " << flags;
                }
            }
        }
    }
}

TEST(CongestionReportTest, LabelsLaneAndThrottling) {
    _vexapi_protocol_t protocol{};
    SetChip(protocol, BIRCH);
    EXPECT_EQ(Written([&](ReportBlock& block) { AddVirtualLane(block, TARGET_LANE_RULE, protocol, 3); }),
              Labelled("Virtual Lane", "Fast"));
    EXPECT_EQ(Written([&](ReportBlock& block) { AddThrottling(block, PORT_THROTTLE_RULE, protocol, 2); }),
              Labelled("I/O Throttling", "Active"));
}

/// Links nodes to a list.
std::vector<Node> Chain(std::vector<Node> nodes) {
    for (std::size_t i = 0; i + 1 < nodes.size(); ++i) {
        nodes[i].pNext = &nodes[i + 1];
    }
    return nodes;
}

constexpr VX_UINT32 PORTS_OWN = 0x80;

TEST(CongestionReportTest, TakesThePortsNodeFromTheFirstTwo) {
    const struct {
        std::vector<VX_UINT32> types;
        int found; ///< position; -1 for none
    } cases[] = {
        {{0x80}, 0},
        {{0}, -1},
        {{0x80, 0x80}, 0},
        {{0, 0x80}, 1},
        {{0, 0}, 1}, // a target's node, taken for the port's
        {{0, 0, 0x80}, 1},
        // The whole number is compared, not one bit of it.
        {{0x81, 0}, 1},
        {{0x180, 0}, 1},
        {{0xFFFFFFFF, 0}, 1},
    };
    for (const auto& row : cases) {
        std::vector<Node> nodes;
        for (const VX_UINT32 type : row.types) {
            nodes.emplace_back().EntryType = type;
        }
        nodes = Chain(std::move(nodes));
        EXPECT_EQ(FindPortNode(nodes.front()), row.found < 0 ? nullptr : &nodes[static_cast<std::size_t>(row.found)]);
    }
}

class TargetNodeTest : public ::testing::Test {
protected:
    TargetNodeTest() {
        SetBytes(target.NodeName, {1, 2, 3, 4, 5, 6, 7, 8});
        SetBytes(target.PortName, {9, 10, 11, 12, 13, 14, 15, 16});
        match = Own();
        std::copy_n(target.NodeName, 8, match.WWNN);
        std::copy_n(target.PortName, 8, match.WWPN);
    }
    static Node Own() {
        Node node{};
        node.EntryType = PORTS_OWN;
        return node;
    }
    /// Position of the node found; -1 for none.
    std::ptrdiff_t Found(std::vector<Node> nodes) const {
        nodes = Chain(std::move(nodes));
        const Node* const found = FindTargetNode(nodes.front(), target);
        return found == nullptr ? -1 : found - nodes.data();
    }

    _tagVEXAPI_SDMTarget target{};
    Node match;
    Node other{};
};

TEST_F(TargetNodeTest, SearchesFromTheSecondNodeOn) {
    EXPECT_EQ(Found({Own()}), -1);
    EXPECT_EQ(Found({match}), -1); // the head is never compared
    EXPECT_EQ(Found({match, other}), -1);
    EXPECT_EQ(Found({Own(), match}), 1);
    EXPECT_EQ(Found({match, match}), 1);
    EXPECT_EQ(Found({other, match}), 1);
    EXPECT_EQ(Found({Own(), other, other, match}), 3);
    EXPECT_EQ(Found({Own(), other, match, match}), 2); // the first match
    EXPECT_EQ(Found(std::vector<Node>(1000, other)), -1);
    std::vector<Node> many(1000, other);
    many.back() = match;
    EXPECT_EQ(Found(many), 999);
}

TEST_F(TargetNodeTest, ComparesEveryByteOfBothNames) {
    for (std::size_t i = 0; i < 8; ++i) {
        Node node = match;
        node.WWNN[i] ^= 1;
        EXPECT_EQ(Found({Own(), node}), -1) << i;
        node = match;
        node.WWPN[i] ^= 1;
        EXPECT_EQ(Found({Own(), node}), -1) << i;
    }
}

} // namespace
