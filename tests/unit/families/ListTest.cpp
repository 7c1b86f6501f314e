#include "FamilyTest.h"

using namespace family_test;

namespace {

/// The list documents, which have no "Message".
class ListTest : public FamilyTest {
protected:
    static std::string ListOf(const Format& format, const std::string& structure, const std::string& label,
                              const std::vector<std::string>& words) {
        std::string rows;
        for (const std::string& word : words) {
            rows += format.Structure(structure, format.FieldOf({label, word}));
        }
        return format.Whole(format.List(rows));
    }
    static void ExpectAdapters(const std::vector<std::string>& words) {
        for (const Format& format : FORMATS) {
            const CommandRun run = Run("-t adapter " + format.Leaf("list"));
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, ListOf(format, "AdapterList", "Adapters", words));
        }
    }
    static void ExpectPorts(const std::vector<std::string>& words) {
        for (const Format& format : FORMATS) {
            const CommandRun run = Run("-t port " + format.Leaf("list"));
            EXPECT_EQ(run.code, RC_SUCCESS);
            EXPECT_EQ(run.output, ListOf(format, "PortList", "Ports", words));
        }
    }
};

TEST_F(ListTest, IsByteExact) {
    EXPECT_EQ(Run("-t adapter list").output, "<?xml version=\"1.0\"?><output xmlns:esxcli=\"orfc\">\n"
                                             "<list type=\"structure\">\n"
                                             "<structure typeName=\"AdapterList\">\n"
                                             "<field name=\"Adapters\">\n<string>Adapter_ORV2_S1</string></field>\n"
                                             "</structure>\n"
                                             "</list>\n"
                                             "</output>\n");
    EXPECT_EQ(Run("-t port listcli").output, "****************************************************\n"
                                             "PortList:\n"
                                             "Ports: FC_21:00:0a:0b:0c:0d:00:01\n"
                                             "****************************************************\n");
}

TEST_F(ListTest, ListsAdaptersWhateverTheyHold) {
    _vexapi_adapter_t& second = Fake().host.AddAdapter();
    second.pPhyPortList = nullptr;
    SetText(second.Model, std::string(40, 'M')); // 32 fill the array
    SetText(second.SerialNumber, std::string(40, '9'));
    Fake().host.AddAdapter();
    ExpectAdapters({"Adapter_ORV2_S1", "Adapter_" + std::string(32, 'M') + "_" + std::string(32, '9'), "Adapter__"});
}

TEST_F(ListTest, ListsFcAndFcoePortsInListOrder) {
    Fake().host.AddProtocol(*phyPort).ProtocolType = 2; // 02
    Fake().host.AddProtocol(*phyPort).ProtocolType = 1; // 03
    Fake().host.AddProtocol(*phyPort).ProtocolType = 3; // 04
    Fake().host.AddAdapter().pPhyPortList = nullptr;
    _vexapi_adapter_t& third = Fake().host.AddAdapter();
    Fake().host.AddPhyPort(third).pProtocolList = nullptr;
    _vexapi_phy_port_t& last = Fake().host.AddPhyPort(third);
    _vexapi_protocol_t& virtualPort = Fake().host.AddProtocol(last); // 05
    virtualPort.PortInterfaceType = 3;
    SetBytes(virtualPort.WWPN, {0xFE, 0x0D, 0xC0, 0xAB, 0x00, 0x01, 0x9A, 0xFF});
    ExpectPorts({"FC_21:00:0a:0b:0c:0d:00:01", "FC_21:00:0a:0b:0c:0d:00:03", "FC_fe:0d:c0:ab:00:01:9a:ff"});
}

TEST_F(ListTest, AnEmptyHostIsAnEmptyList) {
    Fake().host.List()->pHead = nullptr;
    ExpectAdapters({});
    ExpectPorts({});
}

TEST_F(ListTest, EmptyListsHoldNoPorts) {
    adapter->pPhyPortList->pHead->pProtocolList->pHead = nullptr;
    ExpectPorts({});
    adapter->pPhyPortList->pHead = nullptr;
    ExpectPorts({});
}

TEST_F(ListTest, OtherArgumentsAreIgnored) {
    EXPECT_EQ(Run("-t adapter list extra help").output, ListOf(XML, "AdapterList", "Adapters", {"Adapter_ORV2_S1"}));
    EXPECT_EQ(Run("-t port list extra help").output, ListOf(XML, "PortList", "Ports", {Id(*port)}));
}

TEST_F(ListTest, HelpWordsGiveNoDocument) {
    for (const char* family : {"adapter", "port"}) {
        for (const char* word : {"help", "/H", "-h", "-HELP", "/help", "/?"}) {
            const CommandRun plain = Run(std::string("-t ") + family + " list " + word);
            EXPECT_EQ(plain.code, RC_HELP_REQUESTED) << word;
            EXPECT_EQ(plain.output, "") << word;
            const CommandRun cli = Run(std::string("-t ") + family + " listcli " + word);
            EXPECT_EQ(cli.code, RC_HELP_REQUESTED) << word;
            EXPECT_EQ(cli.output, "Usage: list\r\n") << word;
        }
        EXPECT_EQ(Fake().calls[3], "VEXAPI_Uninitialize()"); // the list isn't asked for
    }
}

TEST_F(ListTest, WithoutAHostThereIsNoDocument) {
    LoseHost();
    for (const char* command : {"-t adapter list", "-t adapter listcli", "-t port list", "-t port listcli"}) {
        const CommandRun run = Run(command);
        EXPECT_EQ(run.code, RC_HOST_NOT_FOUND) << command;
        EXPECT_EQ(run.output, "") << command;
    }
}

} // namespace
