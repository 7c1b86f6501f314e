#include "FamilyTest.h"
#include "Resolvers.h"

using namespace family_test;

namespace {

constexpr const char* HELP_WORDS[] = {"help", "/h", "/help", "-h", "-help", "/?", "?", "HELP", "-Help", "/H"};

class AdapterResolverTest : public FamilyTest {
protected:
    AdapterResolverTest() : second(&Fake().host.AddAdapter()) {
        SetText(second->Model, "ORV9");
        SetText(second->SerialNumber, "T1");
    }

    /// The result, with the pointers in `entry`.
    VX_UINT32 Resolve(const TavuStringArray& args) {
        entry = {};
        return GetPhyPortFromAdapterString(args, entry);
    }
    VX_UINT32 Resolve(const std::string& identifier) { return Resolve(TavuStringArray{identifier}); }
    /// A port of the second adapter, with a protocol of each given type.
    _vexapi_phy_port_t* AddPhyPort(VX_UINT8 number, const std::vector<VX_UINT32>& types) {
        _vexapi_phy_port_t& added = Fake().host.AddPhyPort(*second);
        added.PortNumber = number;
        for (const VX_UINT32 type : types) {
            Fake().host.AddProtocol(added).ProtocolType = type;
        }
        return &added;
    }
    static _vexapi_protocol_t* Protocol(const _vexapi_phy_port_t* of, int index) {
        _vexapi_protocol_t* protocol = of->pProtocolList->pHead;
        for (; index > 0; --index) {
            protocol = protocol->pNext;
        }
        return protocol;
    }
    void ExpectNothing() const {
        EXPECT_EQ(entry.fc, nullptr);
        EXPECT_EQ(entry.nic, nullptr);
        EXPECT_EQ(entry.iscsi, nullptr);
    }

    _vexapi_adapter_t* second;
    AdapterEntry entry;
};

TEST_F(AdapterResolverTest, ReadsTheIdentifier) {
    static constexpr struct {
        const char* identifier;
        VX_UINT32 result;
    } CASES[] = {
        {"Adapter_ORV2_S1", 0},
        {"adapter_orv2_s1", 0},
        {"ADAPTER_OrV2_S1", 0},
        {"Adapter_ORV2_S1_more_and_more", 0}, // further tokens are ignored
        {"Adapter_ORV2_S1_", 0},
        {"Adapter__ORV2__S1", 0}, // separators may repeat
        {"Adapter_ORV2_S2", 6},
        {"Adapter_ORV3_S1", 6},
        {"Adapter_S1_ORV2", 6},
        {"Adapter_ORV2_S", 6},
        {"Adapter_ORV2_S11", 6},
        {"Adapter_ORV2", 6},
        {"Adapter", 6},
        {"Adapters_ORV2_S1", 6},
        {"Adapte_ORV2_S1", 6},
        {"ORV2_S1", 6},
        {"Adapter ORV2 S1", 6},
        {"FC_ORV2_S1", 6},
        {"", 6},
        {"_", 6},
    };
    for (const auto& row : CASES) {
        EXPECT_EQ(Resolve(row.identifier), row.result) << row.identifier;
        EXPECT_EQ(entry.adapter, row.result == 0 ? adapter : nullptr) << row.identifier;
        EXPECT_EQ(entry.port, row.result == 0 ? phyPort : nullptr) << row.identifier;
        EXPECT_EQ(entry.fc, row.result == 0 ? port : nullptr) << row.identifier;
        EXPECT_EQ(entry.nic, nullptr) << row.identifier;
        EXPECT_EQ(entry.iscsi, nullptr) << row.identifier;
    }
    EXPECT_EQ(Resolve(TavuStringArray{}), 6u);
    EXPECT_EQ(Resolve(TavuStringArray{"Adapter_ORV2_S1", "ignored", "words"}), 0u);
}

TEST_F(AdapterResolverTest, ModelOrSerialNumberWithASeparatorIsOutOfReach) {
    SetText(adapter->SerialNumber, "S_1");
    EXPECT_EQ(Resolve("Adapter_ORV2_S_1"), 6u);
    SetText(adapter->SerialNumber, "S1");
    SetText(adapter->Model, "OR_V2");
    EXPECT_EQ(Resolve("Adapter_OR_V2_S1"), 6u);
}

TEST_F(AdapterResolverTest, TakesTextsThatFillTheirArrays) {
    const std::string model(32, 'M');
    const std::string serial(32, '7');
    SetText(adapter->Model, model);
    SetText(adapter->SerialNumber, serial);
    EXPECT_EQ(Resolve("Adapter_" + model + "_" + serial), 0u);
    EXPECT_EQ(entry.adapter, adapter);
    EXPECT_EQ(Resolve("Adapter_" + model + "M_" + serial), 6u);
    EXPECT_EQ(Resolve("Adapter_" + model + "_" + serial + "7"), 6u);
    EXPECT_EQ(Resolve("Adapter_" + model + "_" + serial.substr(1)), 6u);
    EXPECT_EQ(Resolve("Adapter_" + std::string(100'000, 'M') + "_" + serial), 6u);
}

TEST_F(AdapterResolverTest, HelpWordsComeFirst) {
    LoseHost();
    for (const char* word : HELP_WORDS) {
        EXPECT_EQ(Resolve(word), 5u) << word;
    }
    EXPECT_EQ(Resolve("helper"), 6u);
    EXPECT_EQ(Resolve(TavuStringArray{"Adapter_ORV2_S1", "help"}), 14u);
    EXPECT_EQ(Fake().calls, Calls{"VEXAPI_GetAdapterList()"});
}

TEST_F(AdapterResolverTest, WithoutAHost) {
    LoseHost();
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), 14u);
    EXPECT_EQ(Resolve("FC_ORV2_S1"), 6u); // the prefix is tested first
    Fake().onGetAdapterList = [] {
        static VX_ADAPTER_LIST none{};
        return &none;
    };
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), 6u);
}

TEST_F(AdapterResolverTest, EmptyListsFindNothing) {
    adapter->pPhyPortList->pHead->pProtocolList->pHead = nullptr;
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), 6u);
    ExpectNothing();
    adapter->pPhyPortList->pHead->pProtocolList = nullptr;
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), 6u);
    adapter->pPhyPortList->pHead = nullptr;
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), 6u);
    EXPECT_EQ(entry.port, nullptr);
    adapter->pPhyPortList = nullptr;
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), 6u);
    EXPECT_EQ(entry.adapter, nullptr);
}

TEST_F(AdapterResolverTest, FcProtocolIsThatOfTheLowestPortNumber) {
    AddPhyPort(5, {0});
    _vexapi_phy_port_t* const three = AddPhyPort(3, {0, 1});
    AddPhyPort(4, {0});
    AddPhyPort(3, {0}); // not below 3
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), 0u);
    EXPECT_EQ(entry.adapter, second);
    EXPECT_EQ(entry.port, three);
    EXPECT_EQ(entry.fc, Protocol(three, 0));
    EXPECT_EQ(entry.nic, nullptr);
}

TEST_F(AdapterResolverTest, FirstFcProtocolOfTheFirstPortStays) {
    _vexapi_phy_port_t* const zero = AddPhyPort(0, {1, 0});
    AddPhyPort(1, {0});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), 0u);
    EXPECT_EQ(entry.port, zero);
    EXPECT_EQ(entry.fc, Protocol(zero, 0));
}

/// The port is the head of the list even if a later port with a higher number has the FC protocol.
TEST_F(AdapterResolverTest, PortWithoutProtocolsStays) {
    _vexapi_phy_port_t* const empty = AddPhyPort(0, {});
    _vexapi_phy_port_t* const one = AddPhyPort(1, {0});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), 0u);
    EXPECT_EQ(entry.port, empty);
    EXPECT_EQ(entry.fc, Protocol(one, 0));
}

TEST_F(AdapterResolverTest, NicAndIscsiMoveThePort) {
    _vexapi_phy_port_t* const zero = AddPhyPort(0, {0, 2});
    _vexapi_phy_port_t* const one = AddPhyPort(1, {2, 3});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), 0u);
    EXPECT_EQ(entry.fc, Protocol(zero, 0));
    EXPECT_EQ(entry.nic, Protocol(one, 0)); // the last one
    EXPECT_EQ(entry.iscsi, Protocol(one, 1));
    EXPECT_EQ(entry.port, one);
}

TEST_F(AdapterResolverTest, OtherProtocolTypesCountForNothing) {
    AddPhyPort(0, {4, 0xFFFFFFFF});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), 6u);
    ExpectNothing();
    _vexapi_phy_port_t* const nic = AddPhyPort(1, {2});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), 0u);
    EXPECT_EQ(entry.nic, Protocol(nic, 0));
    EXPECT_EQ(entry.port, nic);
}

/// The moved port is not remembered: that is still port 3, so port 2 is lower, and port 1 of a NIC changes nothing.
TEST_F(AdapterResolverTest, MovedPortIsNotTheRememberedOne) {
    AddPhyPort(3, {0});
    AddPhyPort(1, {2});
    _vexapi_phy_port_t* const two = AddPhyPort(2, {0});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), 0u);
    EXPECT_EQ(entry.port, two);
    EXPECT_EQ(entry.fc, Protocol(two, 0));
}

TEST_F(AdapterResolverTest, LaterRecordOfTheSameNameWins) {
    SetText(second->Model, "orv2");
    SetText(second->SerialNumber, "s1");
    _vexapi_phy_port_t* const seven = AddPhyPort(7, {0});
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), 0u);
    EXPECT_EQ(entry.adapter, second);
    EXPECT_EQ(entry.port, seven);
    // The FC protocol is already there, and the first port of a record isn't below itself.
    EXPECT_EQ(entry.fc, port);
    // A lower port number in the later record does replace it.
    _vexapi_phy_port_t* const six = AddPhyPort(6, {0});
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), 0u);
    EXPECT_EQ(entry.fc, Protocol(six, 0));
    EXPECT_EQ(entry.port, six);
    // Without a list of ports it is skipped.
    second->pPhyPortList = nullptr;
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), 0u);
    EXPECT_EQ(entry.adapter, adapter);
}

/// A later record with an empty list of ports removes the port.
TEST_F(AdapterResolverTest, LaterRecordWithoutPortsTakesThePortAway) {
    SetText(second->Model, "ORV2");
    SetText(second->SerialNumber, "S1");
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), 6u);
    EXPECT_EQ(entry.port, nullptr);
}

class PortResolverTest : public FamilyTest {
protected:
    VX_UINT32 Resolve(const TavuStringArray& args) {
        entry = {};
        return GetPhyPortFromPortString(args, entry);
    }
    VX_UINT32 Resolve(const std::string& identifier) { return Resolve(TavuStringArray{identifier}); }
    PortEntry entry;
};

constexpr char PORT_ID[] = "FC_21:00:0a:0b:0c:0d:00:01";

TEST_F(PortResolverTest, ReadsTheIdentifier) {
    static constexpr struct {
        const char* identifier;
        VX_UINT32 result;
    } CASES[] = {
        {PORT_ID, 0},
        {"fc_21:00:0a:0b:0c:0d:00:01", 6}, // the prefix is accepted, but the match is exact
        {"Fc_21:00:0a:0b:0c:0d:00:01", 6},
        {"FC_21:00:0A:0B:0C:0D:00:01", 6},
        {"FC_21:00:0a:0b:0c:0d:00:02", 6},
        {"FC_21:00:0a:0b:0c:0d:00:1", 6},
        {"FC_21:00:0a:0b:0c:0d:00:01 ", 6},
        {"FC_21:00:0a:0b:0c:0d:00:011", 6},
        {"FC_21:00:0a:0b:0c:0d:00:01:02", 6},
        {"FC_21:00:0a:0b:0c:0d:00", 6},
        {"FC_21-00-0a-0b-0c-0d-00-01", 6},
        {"FC_+1:00:0a:0b:0c:0d:00:01", 6},
        {"FC_ 21:00:0a:0b:0c:0d:00:01", 6},
        {"FC_0x21:00:0a:0b:0c:0d:00:01", 6},
        {" FC_21:00:0a:0b:0c:0d:00:01", 6},
        {"FC'21:00:0a:0b:0c:0d:00:01", 6},
        {"FC", 6},
        {"FC_", 6},
        {"21:00:0a:0b:0c:0d:00:01", 6},
        {"FCoE_21:00:0a:0b:0c:0d:00:01", 6},
        {"_21:00:0a:0b:0c:0d:00:01", 6},
        {"", 6},
    };
    for (const auto& row : CASES) {
        EXPECT_EQ(Resolve(row.identifier), row.result) << row.identifier;
        EXPECT_EQ(entry.protocol, row.result == 0 ? port : nullptr) << row.identifier;
        EXPECT_EQ(entry.port, row.result == 0 ? phyPort : nullptr) << row.identifier;
        EXPECT_EQ(entry.adapter, row.result == 0 ? adapter : nullptr) << row.identifier;
    }
    EXPECT_EQ(Resolve(TavuStringArray{}), 6u);
    EXPECT_EQ(Resolve(TavuStringArray{PORT_ID, "more"}), 0u);
    EXPECT_EQ(Resolve("FC_" + std::string(100'000, '0')), 6u);
}

TEST_F(PortResolverTest, HelpWordsComeFirst) {
    LoseHost();
    for (const char* word : HELP_WORDS) {
        EXPECT_EQ(Resolve(word), 5u) << word;
    }
    EXPECT_EQ(Resolve(TavuStringArray{PORT_ID, "help"}), 14u);
}

TEST_F(PortResolverTest, PrefixIsTestedAheadOfTheHost) {
    LoseHost();
    for (const char* word :
         {"FD_21:00:0a:0b:0c:0d:00:01", "FCX_21:00:0a:0b:0c:0d:00:01", "F_21:00:0a:0b:0c:0d:00:01"}) {
        EXPECT_EQ(Resolve(word), 6u) << word;
    }
    EXPECT_EQ(Fake().calls, Calls{});
    // A lower-case prefix is accepted, so the host is requested.
    for (const char* word : {PORT_ID, "fc_21:00:0a:0b:0c:0d:00:01", "FC", "fC", "FC'x"}) {
        EXPECT_EQ(Resolve(word), 14u) << word;
    }
}

TEST_F(PortResolverTest, EmptyListsFindNothing) {
    phyPort->pProtocolList->pHead = nullptr;
    EXPECT_EQ(Resolve(PORT_ID), 6u);
    phyPort->pProtocolList = nullptr;
    EXPECT_EQ(Resolve(PORT_ID), 6u);
    adapter->pPhyPortList->pHead = nullptr;
    EXPECT_EQ(Resolve(PORT_ID), 6u);
    adapter->pPhyPortList = nullptr;
    EXPECT_EQ(Resolve(PORT_ID), 6u);
    Fake().host.List()->pHead = nullptr;
    EXPECT_EQ(Resolve(PORT_ID), 6u);
}

TEST_F(PortResolverTest, OnlyFcAndFcoeArePorts) {
    static constexpr struct {
        VX_UINT32 type;
        VX_UINT32 result;
    } CASES[] = {{0, 0}, {1, 0}, {2, 6}, {3, 6}, {4, 6}, {0xFFFFFFFF, 6}};
    for (const auto& row : CASES) {
        port->ProtocolType = row.type;
        EXPECT_EQ(Resolve(PORT_ID), row.result) << row.type;
    }
}

TEST_F(PortResolverTest, FirstInListOrderWins) {
    _vexapi_adapter_t& second = Fake().host.AddAdapter();
    _vexapi_phy_port_t& otherPort = Fake().host.AddPhyPort(second);
    std::memcpy(Fake().host.AddProtocol(otherPort).WWPN, port->WWPN, 8);
    EXPECT_EQ(Resolve(PORT_ID), 0u);
    EXPECT_EQ(entry.protocol, port);
    port->ProtocolType = 2;
    EXPECT_EQ(Resolve(PORT_ID), 0u);
    EXPECT_EQ(entry.protocol, otherPort.pProtocolList->pHead);
    EXPECT_EQ(entry.port, &otherPort);
    EXPECT_EQ(entry.adapter, &second);
}

} // namespace
