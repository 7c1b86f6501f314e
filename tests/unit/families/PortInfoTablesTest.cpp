#include "FamilyTest.h"

#include <functional>

using namespace family_test;

namespace {

/// The tables of the port report: every value, and one outside.
class PortInfoTablesTest : public FamilyTest {
protected:
    PortInfoTablesTest() {
        Fake().Succeed({"GetFlashComponentVersion", "GetAdapterAsicBoardTemperature", "GetLockdownStatus"});
    }

    struct Row {
        VX_UINT32 value;
        const char* word;
    };
    /// Sets each value and expects its text after the label.
    void Expect(const std::string& label, const std::vector<Row>& rows, const std::function<void(VX_UINT32)>& set) {
        for (const Row& row : rows) {
            set(row.value);
            int count = 0;
            for (const std::string& line : LinesOf(BlockText(RunPort("info", "getcli").output))) {
                if (line.starts_with(label + ": ")) {
                    EXPECT_EQ(line, label + ": " + row.word) << row.value;
                    ++count;
                }
            }
            EXPECT_EQ(count, 1) << label << " for " << row.value;
        }
    }
    template <typename Value> auto Member(Value _vexapi_protocol_t::*member) const {
        return [this, member](VX_UINT32 value) { port->*member = static_cast<Value>(value); };
    }
    /// Sets bits of a link word, with all others set or clear.
    auto LinkBits(VX_UINT16 __CHIPPROPERTY::*member, int shift, VX_UINT32 mask, bool othersSet) const {
        return [=, this](VX_UINT32 value) {
            const VX_UINT32 others = othersSet ? 0xFFFFu & ~(mask << shift) : 0;
            port->ChipProperty.*member = static_cast<VX_UINT16>(others | value << shift);
        };
    }
};

TEST_F(PortInfoTablesTest, LinkWidth) {
    // The code is the number of lanes, except that 24 means 32. Codes of 32 and above have the highest of the six
    // bits set.
    const std::vector<Row> rows = {
        {0, "Unknown"},  {1, "x1"},       {2, "x2"},       {3, "Unknown"},  {4, "x4"},
        {5, "Unknown"},  {7, "Unknown"},  {8, "x8"},       {9, "Unknown"},  {12, "Unknown"},
        {15, "Unknown"}, {16, "x16"},     {17, "Unknown"}, {23, "Unknown"}, {24, "x32"},
        {25, "Unknown"}, {32, "Unknown"}, {33, "Unknown"}, {56, "Unknown"}, {63, "Unknown"},
    };
    for (const bool othersSet : {false, true}) { // bits 4 to 9
        Expect("PCI Bus Max Width", rows, LinkBits(&__CHIPPROPERTY::PciMaxLink, 4, 0x3F, othersSet));
        Expect("PCI Bus Negotiated Width", rows, LinkBits(&__CHIPPROPERTY::PciNegotiatedLink, 4, 0x3F, othersSet));
    }
}

TEST_F(PortInfoTablesTest, LinkSpeed) {
    const std::vector<Row> rows = {
        {0, "Unknown"}, {1, "2.5 Gtps"}, {2, "5 Gtps"},  {3, "8 Gtps"},  {4, "16 Gtps"},  {5, "Unknown"},
        {6, "Unknown"}, {7, "Unknown"},  {8, "32 Gtps"}, {9, "Unknown"}, {15, "Unknown"},
    };
    for (const bool othersSet : {false, true}) { // bits 0 to 3
        Expect("PCI Bus Max Speed", rows, LinkBits(&__CHIPPROPERTY::PciMaxLink, 0, 0xF, othersSet));
        Expect("PCI Bus Negotiated Speed", rows, LinkBits(&__CHIPPROPERTY::PciNegotiatedLink, 0, 0xF, othersSet));
    }
}

TEST_F(PortInfoTablesTest, MaximumSpeed) {
    // The highest bit of the mask, except that 10 Gbps (0x04) is checked before 8 (0x10) and 4 (0x08). 1 and 2 Gbps
    // are ignored.
    Expect("Maximum Speed",
           {{0x80, "64 Gbps"},
            {0x40, "32 Gbps"},
            {0x20, "16 Gbps"},
            {0x04, "10 Gbps"},
            {0x10, "8 Gbps"},
            {0x08, "4 Gbps"},
            {0x02, "Unknown"},
            {0x01, "Unknown"},
            {0x03, "Unknown"},
            {0x00, "Unknown"},
            {0xFF, "64 Gbps"},
            {0x7F, "32 Gbps"},
            {0x3F, "16 Gbps"},
            {0x1F, "10 Gbps"},
            {0x14, "10 Gbps"},
            {0x1B, "8 Gbps"},
            {0x0B, "4 Gbps"}},
           Member(&_vexapi_protocol_t::SupportedSpeeds));
}

TEST_F(PortInfoTablesTest, SupportedSpeeds) {
    Expect("Supported Speeds",
           {{0x00, "Gbps"},
            {0x01, "1 Gbps"},
            {0x02, "2 Gbps"},
            {0x04, "10 Gbps"},
            {0x08, "4 Gbps"},
            {0x10, "8 Gbps"},
            {0x20, "16 Gbps"},
            {0x40, "32 Gbps"},
            {0x80, "64 Gbps"},
            {0x14, "8 10 Gbps"}, // 10 follows 8
            {0x0C, "4 10 Gbps"},
            {0xFF, "1 2 4 8 10 16 32 64 Gbps"}},
           Member(&_vexapi_protocol_t::SupportedSpeeds));
}

TEST_F(PortInfoTablesTest, PortSpeed) {
    Expect("Port Speed", {{0, "Unknown"},         {1, "1 Gbps"},   {2, "2 Gbps"},    {3, "Unknown"},   {4, "4 Gbps"},
                          {5, "Unknown"},         {7, "Unknown"},  {8, "8 Gbps"},    {9, "Unknown"},   {10, "Unknown"},
                          {15, "Unknown"},        {16, "10 Gbps"}, {17, "Unknown"},  {21, "Unknown"},  {22, "16 Gbps"},
                          {23, "Unknown"},        {32, "Unknown"}, {49, "Unknown"},  {50, "32 Gbps"},  {51, "Unknown"},
                          {64, "Unknown"},        {99, "Unknown"}, {100, "64 Gbps"}, {101, "Unknown"}, {257, "Unknown"},
                          {0xFFFFFFFF, "Unknown"}},
           Member(&_vexapi_protocol_t::PortSpeed));
}

TEST_F(PortInfoTablesTest, KindsAndStates) {
    Expect("Port Interface Type",
           {{0, "Unknown"},
            {1, "Physical Port"},
            {2, "Unknown"},
            {3, "NPIV Virtual Port"},
            {4, "Unknown"},
            {0x0101, "Unknown"},
            {0xFFFF, "Unknown"}},
           Member(&_vexapi_protocol_t::PortInterfaceType));
    // NIC and iSCSI have texts too, but their ports can't be selected.
    Expect("Protocol Type", {{0, "FC"}, {1, "FCoE"}}, Member(&_vexapi_protocol_t::ProtocolType));
    Expect("Port Type",
           {{0, "Unknown"},
            {1, "Node Port"},
            {2, "Loop Port"},
            {3, "Fabric Private Loop Port"},
            {4, "Node Or Loop Port"},
            {5, "Fabric Port"},
            {6, "Fabric Public Loop Port"},
            {7, "Loop Transport Port"},
            {8, "Expansion Port"},
            {9, "Bridge Port"},
            {10, "Unknown"},
            {255, "Unknown"}},
           Member(&_vexapi_protocol_t::PortType));
    Expect("Port State",
           {{0, "Unknown"}, {1, "Online"}, {2, "Unknown"}, {3, "Offline"}, {4, "Unknown"}, {255, "Unknown"}},
           Member(&_vexapi_protocol_t::PortState));
    Expect("Port Connection Mode",
           {{0, "Unknown"}, {1, "Point to Point"}, {2, "Loop"}, {3, "Unknown"}, {255, "Unknown"}},
           Member(&_vexapi_protocol_t::PortConnectionMode));
}

TEST_F(PortInfoTablesTest, SmallNumbers) {
    Expect("PCI Bus Number", {{0, "0x0"}, {9, "0x9"}, {0x0A, "0xa"}, {0xFF, "0xff"}},
           Member(&_vexapi_protocol_t::PciBusNumber));
    Expect("PCI Device Number", {{0, "0x0"}, {0x1F, "0x1f"}, {0xFF, "0xff"}},
           Member(&_vexapi_protocol_t::PciDeviceNumber));
    Expect("PCI Function Number", {{0, "0x0"}, {7, "0x7"}, {0xFF, "0xff"}},
           Member(&_vexapi_protocol_t::PciFunctionNumber));
    Expect("Port Number", {{0, "0"}, {1, "1"}, {127, "127"}, {128, "128"}, {255, "255"}},
           [this](VX_UINT32 value) { phyPort->PortNumber = static_cast<VX_UINT8>(value); });
}

} // namespace
