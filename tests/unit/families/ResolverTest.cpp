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
        ResultCode result;
    } CASES[] = {
        {"Adapter_ORV2_S1", RC_SUCCESS},
        {"adapter_orv2_s1", RC_SUCCESS},
        {"ADAPTER_OrV2_S1", RC_SUCCESS},
        {"Adapter_ORV2_S1_more_and_more", RC_SUCCESS}, // further tokens are dropped
        {"Adapter_ORV2_S1_", RC_SUCCESS},
        {"Adapter__ORV2__S1", RC_SUCCESS}, // tokens, so that separators may stand in a row
        {"Adapter_ORV2_S2", RC_INVALID_PARAMETER},
        {"Adapter_ORV3_S1", RC_INVALID_PARAMETER},
        {"Adapter_S1_ORV2", RC_INVALID_PARAMETER},
        {"Adapter_ORV2_S", RC_INVALID_PARAMETER},
        {"Adapter_ORV2_S11", RC_INVALID_PARAMETER},
        {"Adapter_ORV2", RC_INVALID_PARAMETER},
        {"Adapter", RC_INVALID_PARAMETER},
        {"Adapters_ORV2_S1", RC_INVALID_PARAMETER},
        {"Adapte_ORV2_S1", RC_INVALID_PARAMETER},
        {"ORV2_S1", RC_INVALID_PARAMETER},
        {"Adapter ORV2 S1", RC_INVALID_PARAMETER},
        {"FC_ORV2_S1", RC_INVALID_PARAMETER},
        {"", RC_INVALID_PARAMETER},
        {"_", RC_INVALID_PARAMETER},
    };
    for (const auto& row : CASES) {
        EXPECT_EQ(Resolve(row.identifier), row.result) << row.identifier;
        EXPECT_EQ(entry.adapter, row.result == RC_SUCCESS ? adapter : nullptr) << row.identifier;
        EXPECT_EQ(entry.port, row.result == RC_SUCCESS ? phyPort : nullptr) << row.identifier;
        EXPECT_EQ(entry.fc, row.result == RC_SUCCESS ? port : nullptr) << row.identifier;
        EXPECT_EQ(entry.nic, nullptr) << row.identifier;
        EXPECT_EQ(entry.iscsi, nullptr) << row.identifier;
    }
    EXPECT_EQ(Resolve(TavuStringArray{}), RC_INVALID_PARAMETER);
    EXPECT_EQ(Resolve(TavuStringArray{"Adapter_ORV2_S1", "ignored", "words"}), RC_SUCCESS);
}

TEST_F(AdapterResolverTest, ModelOrSerialNumberWithASeparatorIsOutOfReach) {
    SetText(adapter->SerialNumber, "S_1");
    EXPECT_EQ(Resolve("Adapter_ORV2_S_1"), RC_INVALID_PARAMETER);
    SetText(adapter->SerialNumber, "S1");
    SetText(adapter->Model, "OR_V2");
    EXPECT_EQ(Resolve("Adapter_OR_V2_S1"), RC_INVALID_PARAMETER);
}

TEST_F(AdapterResolverTest, TakesTextsThatFillTheirArrays) {
    const std::string model(32, 'M');
    const std::string serial(32, '7');
    SetText(adapter->Model, model);
    SetText(adapter->SerialNumber, serial);
    EXPECT_EQ(Resolve("Adapter_" + model + "_" + serial), RC_SUCCESS);
    EXPECT_EQ(entry.adapter, adapter);
    EXPECT_EQ(Resolve("Adapter_" + model + "M_" + serial), RC_INVALID_PARAMETER);
    EXPECT_EQ(Resolve("Adapter_" + model + "_" + serial + "7"), RC_INVALID_PARAMETER);
    EXPECT_EQ(Resolve("Adapter_" + model + "_" + serial.substr(1)), RC_INVALID_PARAMETER);
    EXPECT_EQ(Resolve("Adapter_" + std::string(100'000, 'M') + "_" + serial), RC_INVALID_PARAMETER);
}

TEST_F(AdapterResolverTest, HelpWordsComeFirst) {
    LoseHost();
    for (const char* word : HELP_WORDS) {
        EXPECT_EQ(Resolve(word), RC_HELP_REQUESTED) << word;
    }
    EXPECT_EQ(Resolve("helper"), RC_INVALID_PARAMETER);
    EXPECT_EQ(Resolve(TavuStringArray{"Adapter_ORV2_S1", "help"}), RC_HOST_NOT_FOUND);
    EXPECT_EQ(Fake().calls, Calls{"VEXAPI_GetAdapterList()"});
}

TEST_F(AdapterResolverTest, WithoutAHost) {
    LoseHost();
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), RC_HOST_NOT_FOUND);
    EXPECT_EQ(Resolve("FC_ORV2_S1"), RC_INVALID_PARAMETER); // the prefix is tested first
    Fake().onGetAdapterList = [] {
        static VX_ADAPTER_LIST none{};
        return &none;
    };
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), RC_INVALID_PARAMETER);
}

TEST_F(AdapterResolverTest, EmptyListsFindNothing) {
    adapter->pPhyPortList->pHead->pProtocolList->pHead = nullptr;
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), RC_INVALID_PARAMETER);
    ExpectNothing();
    adapter->pPhyPortList->pHead->pProtocolList = nullptr;
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), RC_INVALID_PARAMETER);
    adapter->pPhyPortList->pHead = nullptr;
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), RC_INVALID_PARAMETER);
    EXPECT_EQ(entry.port, nullptr);
    adapter->pPhyPortList = nullptr;
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), RC_INVALID_PARAMETER);
    EXPECT_EQ(entry.adapter, nullptr);
}

TEST_F(AdapterResolverTest, FcProtocolIsThatOfTheLowestPortNumber) {
    AddPhyPort(5, {0});
    _vexapi_phy_port_t* const three = AddPhyPort(3, {0, 1});
    AddPhyPort(4, {0});
    AddPhyPort(3, {0}); // not below 3
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), RC_SUCCESS);
    EXPECT_EQ(entry.adapter, second);
    EXPECT_EQ(entry.port, three);
    EXPECT_EQ(entry.fc, Protocol(three, 0));
    EXPECT_EQ(entry.nic, nullptr);
}

TEST_F(AdapterResolverTest, FirstFcProtocolOfTheFirstPortStays) {
    _vexapi_phy_port_t* const zero = AddPhyPort(0, {1, 0});
    AddPhyPort(1, {0});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), RC_SUCCESS);
    EXPECT_EQ(entry.port, zero);
    EXPECT_EQ(entry.fc, Protocol(zero, 0));
}

/// The port is the head of the list even if a later port with a higher number has the FC protocol.
TEST_F(AdapterResolverTest, PortWithoutProtocolsStays) {
    _vexapi_phy_port_t* const empty = AddPhyPort(0, {});
    _vexapi_phy_port_t* const one = AddPhyPort(1, {0});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), RC_SUCCESS);
    EXPECT_EQ(entry.port, empty);
    EXPECT_EQ(entry.fc, Protocol(one, 0));
}

TEST_F(AdapterResolverTest, NicAndIscsiMoveThePort) {
    _vexapi_phy_port_t* const zero = AddPhyPort(0, {0, 2});
    _vexapi_phy_port_t* const one = AddPhyPort(1, {2, 3});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), RC_SUCCESS);
    EXPECT_EQ(entry.fc, Protocol(zero, 0));
    EXPECT_EQ(entry.nic, Protocol(one, 0)); // the last one
    EXPECT_EQ(entry.iscsi, Protocol(one, 1));
    EXPECT_EQ(entry.port, one);
}

TEST_F(AdapterResolverTest, OtherProtocolTypesCountForNothing) {
    AddPhyPort(0, {4, 0xFFFFFFFF});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), RC_INVALID_PARAMETER);
    ExpectNothing();
    _vexapi_phy_port_t* const nic = AddPhyPort(1, {2});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), RC_SUCCESS);
    EXPECT_EQ(entry.nic, Protocol(nic, 0));
    EXPECT_EQ(entry.port, nic);
}

/// The moved port is not remembered: that is still port 3, so port 2 is lower, and port 1 of a NIC changes nothing.
TEST_F(AdapterResolverTest, MovedPortIsNotTheRememberedOne) {
    AddPhyPort(3, {0});
    AddPhyPort(1, {2});
    _vexapi_phy_port_t* const two = AddPhyPort(2, {0});
    EXPECT_EQ(Resolve("Adapter_ORV9_T1"), RC_SUCCESS);
    EXPECT_EQ(entry.port, two);
    EXPECT_EQ(entry.fc, Protocol(two, 0));
}

TEST_F(AdapterResolverTest, LaterRecordOfTheSameNameWins) {
    SetText(second->Model, "orv2");
    SetText(second->SerialNumber, "s1");
    _vexapi_phy_port_t* const seven = AddPhyPort(7, {0});
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), RC_SUCCESS);
    EXPECT_EQ(entry.adapter, second);
    EXPECT_EQ(entry.port, seven);
    // The FC protocol is already there, and the first port of a record isn't below itself.
    EXPECT_EQ(entry.fc, port);
    // A lower port number in the later record does replace it.
    _vexapi_phy_port_t* const six = AddPhyPort(6, {0});
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), RC_SUCCESS);
    EXPECT_EQ(entry.fc, Protocol(six, 0));
    EXPECT_EQ(entry.port, six);
    // Without a list of ports it is skipped.
    second->pPhyPortList = nullptr;
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), RC_SUCCESS);
    EXPECT_EQ(entry.adapter, adapter);
}

/// A later record with an empty list of ports removes the port.
TEST_F(AdapterResolverTest, LaterRecordWithoutPortsTakesThePortAway) {
    SetText(second->Model, "ORV2");
    SetText(second->SerialNumber, "S1");
    EXPECT_EQ(Resolve("Adapter_ORV2_S1"), RC_INVALID_PARAMETER);
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
        ResultCode result;
    } CASES[] = {
        {PORT_ID, RC_SUCCESS},
        {"fc_21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER}, // the prefix passes, yet the match is exact
        {"Fc_21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER},
        {"FC_21:00:0A:0B:0C:0D:00:01", RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00:02", RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00:1", RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00:01 ", RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00:011", RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00:01:02", RC_INVALID_PARAMETER},
        {"FC_21:00:0a:0b:0c:0d:00", RC_INVALID_PARAMETER},
        {"FC_21-00-0a-0b-0c-0d-00-01", RC_INVALID_PARAMETER},
        {"FC_+1:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER},
        {"FC_ 21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER},
        {"FC_0x21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER},
        {" FC_21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER},
        {"FC'21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER},
        {"FC", RC_INVALID_PARAMETER},
        {"FC_", RC_INVALID_PARAMETER},
        {"21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER},
        {"FCoE_21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER},
        {"_21:00:0a:0b:0c:0d:00:01", RC_INVALID_PARAMETER},
        {"", RC_INVALID_PARAMETER},
    };
    for (const auto& row : CASES) {
        EXPECT_EQ(Resolve(row.identifier), row.result) << row.identifier;
        EXPECT_EQ(entry.protocol, row.result == RC_SUCCESS ? port : nullptr) << row.identifier;
        EXPECT_EQ(entry.port, row.result == RC_SUCCESS ? phyPort : nullptr) << row.identifier;
        EXPECT_EQ(entry.adapter, row.result == RC_SUCCESS ? adapter : nullptr) << row.identifier;
    }
    EXPECT_EQ(Resolve(TavuStringArray{}), RC_INVALID_PARAMETER);
    EXPECT_EQ(Resolve(TavuStringArray{PORT_ID, "more"}), RC_SUCCESS);
    EXPECT_EQ(Resolve("FC_" + std::string(100'000, '0')), RC_INVALID_PARAMETER);
}

TEST_F(PortResolverTest, HelpWordsComeFirst) {
    LoseHost();
    for (const char* word : HELP_WORDS) {
        EXPECT_EQ(Resolve(word), RC_HELP_REQUESTED) << word;
    }
    EXPECT_EQ(Resolve(TavuStringArray{PORT_ID, "help"}), RC_HOST_NOT_FOUND);
}

TEST_F(PortResolverTest, PrefixIsTestedAheadOfTheHost) {
    LoseHost();
    for (const char* word :
         {"FD_21:00:0a:0b:0c:0d:00:01", "FCX_21:00:0a:0b:0c:0d:00:01", "F_21:00:0a:0b:0c:0d:00:01"}) {
        EXPECT_EQ(Resolve(word), RC_INVALID_PARAMETER) << word;
    }
    EXPECT_EQ(Fake().calls, Calls{});
    // A lower-case prefix is accepted, so the host is requested.
    for (const char* word : {PORT_ID, "fc_21:00:0a:0b:0c:0d:00:01", "FC", "fC", "FC'x"}) {
        EXPECT_EQ(Resolve(word), RC_HOST_NOT_FOUND) << word;
    }
}

TEST_F(PortResolverTest, EmptyListsFindNothing) {
    phyPort->pProtocolList->pHead = nullptr;
    EXPECT_EQ(Resolve(PORT_ID), RC_INVALID_PARAMETER);
    phyPort->pProtocolList = nullptr;
    EXPECT_EQ(Resolve(PORT_ID), RC_INVALID_PARAMETER);
    adapter->pPhyPortList->pHead = nullptr;
    EXPECT_EQ(Resolve(PORT_ID), RC_INVALID_PARAMETER);
    adapter->pPhyPortList = nullptr;
    EXPECT_EQ(Resolve(PORT_ID), RC_INVALID_PARAMETER);
    Fake().host.List()->pHead = nullptr;
    EXPECT_EQ(Resolve(PORT_ID), RC_INVALID_PARAMETER);
}

TEST_F(PortResolverTest, OnlyFcAndFcoeArePorts) {
    static constexpr struct {
        VX_UINT32 type;
        ResultCode result;
    } CASES[] = {{0, RC_SUCCESS},           {1, RC_SUCCESS},           {2, RC_INVALID_PARAMETER},
                 {3, RC_INVALID_PARAMETER}, {4, RC_INVALID_PARAMETER}, {0xFFFFFFFF, RC_INVALID_PARAMETER}};
    for (const auto& row : CASES) {
        port->ProtocolType = row.type;
        EXPECT_EQ(Resolve(PORT_ID), row.result) << row.type;
    }
}

TEST_F(PortResolverTest, FirstInListOrderWins) {
    _vexapi_adapter_t& second = Fake().host.AddAdapter();
    _vexapi_phy_port_t& otherPort = Fake().host.AddPhyPort(second);
    std::memcpy(Fake().host.AddProtocol(otherPort).WWPN, port->WWPN, 8);
    EXPECT_EQ(Resolve(PORT_ID), RC_SUCCESS);
    EXPECT_EQ(entry.protocol, port);
    port->ProtocolType = 2;
    EXPECT_EQ(Resolve(PORT_ID), RC_SUCCESS);
    EXPECT_EQ(entry.protocol, otherPort.pProtocolList->pHead);
    EXPECT_EQ(entry.port, &otherPort);
    EXPECT_EQ(entry.adapter, &second);
}

} // namespace
