// Descriptions: values, lists, templates, blobs.
#include "Fixture.h"

#include <cstring>

namespace {

class Description : public Simulated {
protected:
    void StartWith(const Json& host) {
        Describe(host);
        ASSERT_EQ(Start(), 0U) << output;
    }
    static _tagVEXAPI_SDMTarget* Target() { return Port()->pTargetList; }
};

TEST_F(Description, NullAndEmptyListsAtEveryLevel) {
    StartWith({{"Adapters", nullptr}});
    EXPECT_EQ(VEXAPI_GetAdapterList(), nullptr);
    EXPECT_EQ(LastCall()["status"], 0);
    End();
    StartWith({{"Adapters", Json::array()}});
    ASSERT_NE(VEXAPI_GetAdapterList(), nullptr);
    EXPECT_EQ(VEXAPI_GetAdapterList()->pHead, nullptr);
    EXPECT_EQ(VEXAPI_GetAdapterList()->Count, 0U);
    End();
    StartWith(Json::parse(R"({"Adapters": [{}, {"PhyPorts": null}, {"PhyPorts": []},
        {"PhyPorts": [{}, {"Protocols": null}, {"Protocols": []}]},
        {"PhyPorts": [{"Protocols": [{"WWPN": "21:00:00:00:00:00:00:01"},
          {"WWPN": "21:00:00:00:00:00:00:02", "Targets": null}, {"WWPN": "21:00:00:00:00:00:00:03", "Targets": []},
          {"WWPN": "21:00:00:00:00:00:00:04", "Targets": [{}, {"Luns": null}, {"Luns": []}]}]}]}]})"));
    const _vexapi_adapter_t* adapter = VEXAPI_GetAdapterList()->pHead;
    EXPECT_EQ(adapter->pPhyPortList, nullptr);
    EXPECT_EQ(adapter->pNext->pPhyPortList, nullptr);
    adapter = adapter->pNext->pNext;
    ASSERT_NE(adapter->pPhyPortList, nullptr);
    EXPECT_EQ(adapter->pPhyPortList->pHead, nullptr);
    const _vexapi_phy_port_t* phyPort = adapter->pNext->pPhyPortList->pHead;
    EXPECT_EQ(phyPort->pProtocolList, nullptr);
    EXPECT_EQ(phyPort->pNext->pProtocolList, nullptr);
    ASSERT_NE(phyPort->pNext->pNext->pProtocolList, nullptr);
    EXPECT_EQ(phyPort->pNext->pNext->pProtocolList->pHead, nullptr);
    for (unsigned i = 0; i < 3; ++i) {
        EXPECT_EQ(Port(i)->pTargetList, nullptr);
    }
    const _tagVEXAPI_SDMTarget* target = Port(3)->pTargetList;
    for (int i = 0; i < 3; ++i) {
        ASSERT_NE(target, nullptr);
        EXPECT_EQ(target->pLunList, nullptr);
        EXPECT_EQ(target->TargetNumber, i);
        target = target->pNext;
    }
    EXPECT_EQ(target, nullptr);
}

TEST_F(Description, CountsAreThoseOfTheListsUnlessGiven) {
    Json host = SmallHost();
    StartWith(host);
    EXPECT_EQ(Port()->TargetCount, 2U);
    EXPECT_EQ(Target()->LunCount, 2U);
    End();
    PortOf(host)["TargetCount"] = 7;
    PortOf(host)["Targets"][0]["LunCount"] = 1;
    StartWith(host);
    EXPECT_EQ(Port()->TargetCount, 7U);
    EXPECT_EQ(Target()->LunCount, 1U);
    EXPECT_NE(Target()->pLunList->pNext, nullptr);
}

TEST_F(Description, TextsThatFillTheirArrays) {
    Json host = SmallHost();
    const std::string full = "0123456789abcdef0123456789abcdef";
    host["Adapters"][0]["Model"] = full;
    host["Adapters"][0]["SerialNumber"] = "short";
    PortOf(host)["HostNQN"] = std::string(256, 'n');
    PortOf(host)["Targets"][0]["VendorId"] = "HELIODOR";
    PortOf(host)["Targets"][0]["ProductId"] = "two";
    StartWith(host);
    const _vexapi_adapter_t& adapter = *VEXAPI_GetAdapterList()->pHead;
    EXPECT_EQ(std::memcmp(adapter.Model, full.data(), 32), 0);
    EXPECT_STREQ(adapter.SerialNumber, "short");
    EXPECT_EQ(Port()->HostNQN[255], 'n');
    EXPECT_EQ(std::memcmp(Target()->VendorId, "HELIODOR", 8), 0);
    EXPECT_EQ(std::memcmp(Target()->ProductId, "two\0\0\0\0\0\0\0\0\0\0\0\0", 16), 0);
}

TEST_F(Description, TextsThatAreNoUtf8) {
    Json host = SmallHost();
    host["Adapters"][0]["Model"] = {{"bytes", "ff:25:73"}};
    StartWith(host);
    EXPECT_STREQ(VEXAPI_GetAdapterList()->pHead->Model, "\xff%s");
}

TEST_F(Description, NumbersInBothForms) {
    Json host = SmallHost();
    PortOf(host)["FeatureFlags"] = "0xE4800000";
    PortOf(host)["ScmAlarmCount"] = "0xffffffffffffffff";
    PortOf(host)["ScmWarningCount"] = 18446744073709551615U;
    PortOf(host)["ScmLinkCounters"] = Json::parse(R"([1, "0x2", 3, 4, 5, 4294967295])");
    StartWith(host);
    EXPECT_EQ(Port()->FeatureFlags, 0xE4800000U);
    EXPECT_EQ(Port()->ScmAlarmCount, 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(Port()->ScmWarningCount, 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(Port()->ScmLinkCounters[1], 2U);
    EXPECT_EQ(Port()->ScmLinkCounters[5], 4294967295U);
}

TEST_F(Description, EveryFieldGoesToItsPlace) {
    Json host = SmallHost();
    host["Adapters"][0].update(Json::parse(R"({"AdapterType": 6, "VendorId": 1, "SubVendorId": 2, "SubDeviceId": 3,
        "PciBusNumber": 260, "ChipRevision": 5, "Manufacturer": "M", "BiosVersion": "B", "FCodeVersion": "FC",
        "EfiVersion": "E"})"));
    PortOf(host).update(Json::parse(R"({"ProtocolType": 1, "PciDeviceNumber": 31, "PciFunctionNumber": 7,
        "PortId": "0a:0b:0c", "HostId": "00:01:02:03:04:05:06:07:08:09:0a:0b:0c:0d:0e:0f", "SupportedSpeeds": 112,
        "AdjacentFabricWWN": "20:01:02:03:04:05:06:07", "RunningPepFwVersion": "01:02:03", "SecurityFlags": 1})"));
    StartWith(host);
    const _vexapi_adapter_t& adapter = *VEXAPI_GetAdapterList()->pHead;
    EXPECT_EQ(adapter.AdapterType, 6U);
    EXPECT_EQ(adapter.PciBusNumber, 260);
    EXPECT_EQ(adapter.ChipRevision, 5U);
    EXPECT_STREQ(adapter.Manufacturer, "M");
    EXPECT_STREQ(adapter.FCodeVersion, "FC");
    const _vexapi_protocol_t& record = *Port();
    EXPECT_EQ(record.ChipProperty.VendorId, 1); // the adapter's, unless given
    EXPECT_EQ(record.ChipProperty.SubVendorId, 2);
    EXPECT_EQ(record.ChipProperty.SubDeviceId, 3);
    EXPECT_EQ(record.ChipProperty.DeviceId, 0x2261);
    EXPECT_EQ(record.PciBusNumber, 4); // the low byte
    EXPECT_EQ(record.PciDeviceNumber, 31);
    EXPECT_EQ(record.ProtocolType, 1U);
    EXPECT_EQ(record.PortId[2], 0x0c);
    EXPECT_EQ(record.HostId[15], 15);
    EXPECT_EQ(record.SupportedSpeeds, 112);
    EXPECT_EQ(record.AdjacentFabricWWN[7], 7);
    EXPECT_EQ(record.RunningPepFwVersion[2], 3);
    EXPECT_EQ(record.SecurityFlags, 1U);
}

TEST_F(Description, Defaults) {
    StartWith(
        Json::parse(R"({"Adapters": [{"PhyPorts": [{}, {"Protocols": [{"WWPN": "21:00:00:00:00:00:00:01"}]}]}]})"));
    const _vexapi_adapter_t& adapter = *VEXAPI_GetAdapterList()->pHead;
    EXPECT_EQ(adapter.VendorId, 0x1D0C);
    EXPECT_EQ(adapter.AdapterType, 2U);
    EXPECT_STREQ(adapter.Manufacturer, "Orvane Corporation");
    EXPECT_EQ(adapter.pPhyPortList->pHead->pNext->PortNumber, 1);
    EXPECT_EQ(Port()->PortInterfaceType, 1);
    EXPECT_EQ(Port()->PortState, 1);
    EXPECT_EQ(Port()->PortType, 1);
    EXPECT_EQ(Port()->PortConnectionMode, 1);
    EXPECT_EQ(Port()->ProtocolType, 0U);
    _VEXAPI_SFP_DATA data{};
    EXPECT_EQ(VEXAPI_GetSFPData(Handle(), &data), 0U);
    EXPECT_EQ(data.Data[0], 0);
    char vpd[1024] = {};
    VX_UINT32 size = 1024;
    EXPECT_EQ(VEXAPI_GetVpd(Word(), 0, vpd, &size), 0U);
    EXPECT_EQ(size, 0U);
}

TEST_F(Description, RunsOfLuns) {
    Json host = SmallHost();
    PortOf(host)["Targets"][0]["Luns"] = Json::parse(R"([{"Repeat": 300, "WorldwideId": "60:00:ff:fe", "BlockCount": 9},
        {"LunNumber": 65535}])");
    StartWith(host);
    const _tagVEXAPI_SDMLun* lun = Target()->pLunList;
    EXPECT_EQ(Target()->LunCount, 301U);
    // 0x6000fffe counts up: ...ffff, then 60010000.
    const VX_UINT8 third[5] = {0x60, 0x01, 0, 0, 0};
    for (int i = 0; i < 300; ++i, lun = lun->pNext) {
        ASSERT_NE(lun, nullptr);
        ASSERT_EQ(lun->LunNumber, i);
        ASSERT_EQ(lun->WorldwideIdLength, 4);
        ASSERT_EQ(lun->BlockCount, 9U);
        ASSERT_EQ(lun->BlockSize, 512U);
        if (i == 2) {
            EXPECT_EQ(std::memcmp(lun->WorldwideId, third, 5), 0);
        }
    }
    EXPECT_EQ(lun->LunNumber, 65535);
    EXPECT_EQ(lun->pNext, nullptr);
}

TEST_F(Description, LengthsOfIdentifiersMayLie) {
    Json host = SmallHost();
    PortOf(host)["Targets"][0]["Luns"] =
        Json::parse(R"([{"WorldwideId": "01:02", "WorldwideIdLength": 255, "Repeat": 2}])");
    StartWith(host);
    EXPECT_EQ(Target()->pLunList->WorldwideIdLength, 255);
    EXPECT_EQ(Target()->pLunList->pNext->WorldwideId[31], 1); // incremented within the array
}

TEST_F(Description, Templates) {
    StartWith(Json::parse(R"({
      "Templates": {
        "base": {"PortSpeed": 8, "ChipProperty": {"DeviceId": 1, "SubDeviceId": 2}},
        "over": {"Use": "base", "PortSpeed": 16, "PortState": 3},
        "lun": {"BlockCount": 77},
        "target": {"PortId": "01:02:03", "Luns": [{"Use": "lun"}]}
      },
      "Adapters": [{"PhyPorts": [{"Protocols": [
        {"Use": ["over", "base"], "WWPN": "21:00:00:00:00:00:00:01", "ChipProperty": {"SubDeviceId": 3},
         "Targets": [{"Use": "target"}]}
      ]}]}]})"));
    EXPECT_EQ(Port()->PortState, 3);
    EXPECT_EQ(Port()->PortSpeed, 8U);               // from the later template
    EXPECT_EQ(Port()->ChipProperty.DeviceId, 1);    // merged
    EXPECT_EQ(Port()->ChipProperty.SubDeviceId, 3); // its own
    EXPECT_EQ(Target()->PortId[1], 2);
    EXPECT_EQ(Target()->pLunList->BlockCount, 77U);
}

TEST_F(Description, Blobs) {
    File("raw.bin", std::string("\x03\0\xff", 3));
    File("image.hex", "# a module\n# A0h: some bytes\n03 04\n07 # comment\n# A2h\naa\tbb\r\n# A2h not in source\n");
    File("qsfp.hex", "# lower page\n11\n# upper page 00h\n22 33\n");
    Json host = SmallHost();
    const auto imageOf = [&](const Json& blob) {
        PortOf(host)["Transceiver"] = blob;
        Describe(host);
        EXPECT_EQ(Start(), 0U) << output;
        _VEXAPI_SFP_DATA data{};
        EXPECT_EQ(VEXAPI_GetSFPData(Handle(), &data), 0U);
        End();
        return data;
    };
    EXPECT_EQ(imageOf("raw.bin").Data[2], 0xff);
    EXPECT_EQ(imageOf(Path("raw.bin")).Data[2], 0xff);
    EXPECT_EQ(imageOf({{"bytes", "01:02:03"}}).Data[1], 2);
    const _VEXAPI_SFP_DATA sfp = imageOf("image.hex");
    EXPECT_EQ(sfp.Data[2], 7);
    EXPECT_EQ(sfp.Data[3], 0);
    EXPECT_EQ(sfp.Data[256], 0xaa);
    EXPECT_EQ(sfp.Data[257], 0xbb);
    EXPECT_EQ(imageOf("qsfp.hex").Data[129], 0x33);
    const _VEXAPI_SFP_DATA patched =
        imageOf(Json::parse(R"({"file": "raw.bin", "patch": {"1": "05:06", "511": "07"}})"));
    EXPECT_EQ(patched.Data[0], 3);
    EXPECT_EQ(patched.Data[1], 5);
    EXPECT_EQ(patched.Data[2], 6);
    EXPECT_EQ(patched.Data[511], 7);
}

TEST_F(Description, Comments) {
    DescribeText("// a host\n{\"Adapters\": [/* none */]}\n");
    EXPECT_EQ(Start(), 0U) << output;
}

TEST_F(Description, PortsWithoutFibreChannelNeedNoName) {
    StartWith(
        Json::parse(R"({"Adapters": [{"PhyPorts": [{"Protocols": [{"ProtocolType": 2}, {"ProtocolType": 3}]}]}]})"));
    EXPECT_EQ(Port(1)->ProtocolType, 3U);
}

TEST_F(Description, NamesGivenTwiceWhenAllowed) {
    Json host = SmallHost();
    PortOf(host, 1)["WWPN"] = PortOf(host, 0)["WWPN"];
    host["AllowDuplicateNames"] = 1;
    StartWith(host);
    EXPECT_NE(Word(0), Word(1));
}

} // namespace
