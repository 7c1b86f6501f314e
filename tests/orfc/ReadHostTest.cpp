/// @file
/// A host as the library shows it, good or bad.
#include "ScriptedLibrary.h"

#include <algorithm>

using namespace orfc_test;
using namespace std::string_literals;

namespace {

using Texts = std::vector<std::string>;

class ReadHostTest : public ScriptedTest {};

// ---- Without optional functions

TEST_F(ReadHostTest, AdaptersAndPorts) {
    _vexapi_adapter_t& adapter = Tree().AddAdapter();
    Put(adapter.Model, "ORV2742   ");
    Put(adapter.SerialNumber, "RFH1836M74420");
    Put(adapter.Manufacturer, "Orvane");
    adapter.AdapterType = 2;
    adapter.VendorId = 0x1D0C;
    _vexapi_phy_port_t& physical = Tree().AddPhyPort(adapter);
    physical.PortNumber = 3;
    _vexapi_protocol_t& record = Tree().AddProtocol(physical);
    Put(record.PortId, "\x01\x30\x02");
    Put(record.PrincipalFabricWWN, "\x10\x00\x88\x94\x71\x0b\x3c\x01"s);
    Put(record.DriverVersion, std::string(64, 'v')); // without a terminator
    record.PortType = 1;
    record.PortConnectionMode = 2;
    record.PortSpeed = 50;
    record.SupportedSpeeds = 0x70;
    record.ProtocolType = 1;
    record.PciBusNumber = 0x3B;
    record.PciFunctionNumber = 1;
    record.LinkFailureCount = 4294967295;
    SucceedEverywhere();

    const Host host = Read();
    EXPECT_EQ(host.messages, Texts{});
    ASSERT_EQ(host.adapters.size(), 1u);
    const Adapter& found = host.adapters[0];
    EXPECT_EQ(found.identifier, "Adapter_ORV2742_RFH1836M74420");
    EXPECT_EQ(found.type, "Fibre Channel");
    EXPECT_EQ(found.vendorId, 0x1D0Cu);
    EXPECT_EQ(found.portCount, 1u);
    ASSERT_EQ(host.ports.size(), 1u);
    const Port& port = host.ports[0];
    EXPECT_EQ(port.adapter, &found);
    EXPECT_EQ(port.identifier, "FC_21:00:0a:0b:0c:0d:00:01");
    EXPECT_EQ(port.portName, 0x21000a0b0c0d0001u);
    EXPECT_EQ(port.nodeName, 0x20000a0b0c0d0001u);
    EXPECT_EQ(port.fabricName, 0x10008894710b3c01u);
    EXPECT_EQ(port.portId, "01:30:02");
    EXPECT_EQ(port.number, 3u);
    EXPECT_EQ(port.state, "online");
    EXPECT_EQ(port.interface, "physical");
    EXPECT_EQ(port.protocol, "FCoE");
    EXPECT_EQ(port.type, "node");
    EXPECT_EQ(port.connectionMode, "loop");
    EXPECT_EQ(port.speed, 32u);
    EXPECT_EQ(port.supportedSpeeds, (std::vector<unsigned>{8, 16, 32}));
    EXPECT_EQ(port.pciAddress, "3b:00.1");
    EXPECT_EQ(port.driverVersion, std::string(64, 'v'));
    EXPECT_EQ(port.counters.at("link_failure_count"), 4294967295u);
    EXPECT_EQ(port.kernelName, "");
    EXPECT_EQ(port.deviceLossTimeout, std::nullopt);
}

TEST_F(ReadHostTest, SpeedCodes) {
    // Codes of `PortSpeed` and what they mean; bits of `SupportedSpeeds` in the order of speeds.
    constexpr std::pair<VX_UINT32, unsigned> CODES[] = {{1, 1},   {2, 2},   {4, 4},   {8, 8},
                                                        {16, 10}, {22, 16}, {50, 32}, {100, 64}};
    _vexapi_protocol_t& record = Tree().AddPort();
    for (const auto& [code, speed] : CODES) {
        record.PortSpeed = code;
        EXPECT_EQ(Read({.portDetails = true}).ports[0].speed, speed);
    }
    for (const VX_UINT32 code : {0u, 3u, 32u, 64u, 4294967295u}) {
        record.PortSpeed = code;
        EXPECT_EQ(Read({.portDetails = true}).ports[0].speed, std::nullopt);
    }
    record.SupportedSpeeds = 0xFF;
    EXPECT_EQ(Read({.portDetails = true}).ports[0].supportedSpeeds,
              (std::vector<unsigned>{1, 2, 4, 8, 10, 16, 32, 64}));
}

TEST_F(ReadHostTest, ALinkThatIsDownHasNoSpeed) {
    _vexapi_protocol_t& record = Tree().AddPort();
    record.PortSpeed = 50;
    record.PortState = 3;
    const Host host = Read({.portDetails = true});
    EXPECT_EQ(host.ports[0].state, "offline");
    EXPECT_EQ(host.ports[0].speed, std::nullopt);
}

TEST_F(ReadHostTest, OtherProtocolsAreNoPorts) {
    _vexapi_phy_port_t& physical = Tree().AddPhyPort(Tree().AddAdapter());
    for (const VX_UINT32 protocol : {2u, 0u, 3u, 1u, 4294967295u}) { // NIC, FC, iSCSI, FCoE, unknown
        Tree().AddProtocol(physical).ProtocolType = protocol;
    }
    const Host host = Read({});
    ASSERT_EQ(host.ports.size(), 2u);
    EXPECT_EQ(host.ports[0].portName & 0xFF, 2u);
    EXPECT_EQ(host.ports[1].portName & 0xFF, 4u);
    EXPECT_EQ(host.adapters[0].portCount, 2u);
}

/// Functions of one physical port share its link, virtual ports too.
TEST_F(ReadHostTest, PhysicalPorts) {
    _vexapi_adapter_t& adapter = Tree().AddAdapter();
    _vexapi_phy_port_t& first = Tree().AddPhyPort(adapter);
    Tree().AddProtocol(first);
    Tree().AddProtocol(first).PortInterfaceType = 3;
    Tree().AddProtocol(Tree().AddPhyPort(adapter));
    Tree().AddProtocol(Tree().AddPhyPort(Tree().AddAdapter()));
    const Host host = Read({.portDetails = true});
    ASSERT_EQ(host.ports.size(), 4u);
    EXPECT_EQ(host.ports[1].interface, "virtual");
    EXPECT_EQ(host.ports[0].physicalPort, host.ports[1].physicalPort);
    EXPECT_NE(host.ports[1].physicalPort, host.ports[2].physicalPort);
    EXPECT_NE(host.ports[2].physicalPort, host.ports[3].physicalPort);
    EXPECT_NE(host.ports[0].physicalPort, host.ports[3].physicalPort);
}

TEST_F(ReadHostTest, TargetsAndLuns) {
    _vexapi_protocol_t& port = Tree().AddPort();
    _tagVEXAPI_SDMTarget& disk = Tree().AddTarget(port);
    disk.TargetFlags[2] = 0x02;
    disk.TargetFlags[4] = 0x01;
    Put(disk.VendorId, "BASALT  ");
    Put(disk.SerialNumber, "S1");
    _tagVEXAPI_SDMTarget& offline = Tree().AddTarget(port);
    offline.TargetFlags[2] = 0x02;
    offline.TargetNumber = 0xFFFF;
    offline.DeviceType = 1;
    _tagVEXAPI_SDMTarget& unconfigured = Tree().AddTarget(port);
    unconfigured.TargetFlags[0] = 0x40;
    unconfigured.DeviceType = 99;
    _tagVEXAPI_SDMTarget& nvme = Tree().AddTarget(port);
    nvme.TargetFlags[5] = 0x08;
    nvme.StorageControllerId = 65;
    Put(nvme.StorageNqn, "nqn.1");
    Put(nvme.NvmeRevision, "6.3.1   ");
    _tagVEXAPI_SDMLun& lun = Tree().AddLun(disk);
    lun.LunNumber = 256;
    lun.BlockCount = 1000;
    lun.BlockSize = 4096;
    Put(lun.WorldwideId, "\x60\x06\x0e\x80\x12\x4a\x7c\x01\x50\x40\x4a\x7c\x01\x02\x03\x04");
    lun.WorldwideIdLength = 16;
    _tagVEXAPI_SDMLun& space = Tree().AddLun(nvme);
    space.LunNumber = 7;
    Put(space.NamespaceRevision, "6.3.2");
    Put(space.WorldwideId, "\x44\x45\x46\x47\x48\x49\x4a\x4b");
    space.WorldwideIdLength = 8;

    const Host host = Read({.targets = true, .luns = true});
    EXPECT_EQ(host.messages, Texts{});
    ASSERT_EQ(host.targets.size(), 4u);
    EXPECT_EQ(host.targets[0].identifier, "FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01");
    EXPECT_EQ(host.targets[0].state, "online");
    EXPECT_EQ(host.targets[0].type, "disk");
    EXPECT_EQ(host.targets[0].vendor, "BASALT");
    EXPECT_EQ(host.targets[0].number, 0u);
    EXPECT_EQ(host.targets[0].controllerId, std::nullopt);
    EXPECT_EQ(host.targets[1].state, "offline");
    EXPECT_EQ(host.targets[1].type, "tape");
    EXPECT_EQ(host.targets[1].number, std::nullopt);
    EXPECT_EQ(host.targets[2].state, "unconfigured");
    EXPECT_EQ(host.targets[2].type, "");
    EXPECT_EQ(host.targets[3].protocol, "NVMe");
    EXPECT_EQ(host.targets[3].revision, "6.3.1");
    EXPECT_EQ(host.targets[3].nqn, "nqn.1");
    EXPECT_EQ(host.targets[3].controllerId, 65u);
    ASSERT_EQ(host.luns.size(), 2u);
    EXPECT_EQ(host.luns[0].identifier, host.targets[0].identifier + "_LUN_256");
    EXPECT_EQ(host.luns[0].size, 4096000u);
    EXPECT_EQ(host.luns[0].blockSize, 4096u);
    EXPECT_EQ(host.luns[0].worldwideId, "naa.60060e80124a7c0150404a7c01020304");
    EXPECT_EQ(host.luns[1].identifier, host.targets[3].identifier + "_NSID_7");
    EXPECT_EQ(host.luns[1].revision, "6.3.2");
    EXPECT_EQ(host.luns[1].worldwideId, "eui.4445464748494a4b");
    EXPECT_EQ(host.luns[1].size, std::nullopt);
    EXPECT_EQ(host.ports[0].targetCount, 4u);
    EXPECT_EQ(host.ports[0].lunCount, 2u);
    EXPECT_EQ(host.targets[0].lunCount, 1u);
}

TEST_F(ReadHostTest, LengthsAndSizesThatLie) {
    _tagVEXAPI_SDMTarget& target = Tree().AddTarget(Tree().AddPort());
    _tagVEXAPI_SDMLun& lun = Tree().AddLun(target);
    std::fill(std::begin(lun.WorldwideId), std::end(lun.WorldwideId), 'x');
    lun.WorldwideIdLength = 255; // of 32
    lun.BlockCount = UINT64_MAX / 4096 + 1;
    lun.BlockSize = 4096;
    EXPECT_EQ(Read().luns[0].worldwideId, "t10." + std::string(32, 'x'));
    EXPECT_EQ(Read().luns[0].size, std::nullopt); // 2 to the power of 64
    lun.BlockCount = UINT64_MAX / 4096;
    EXPECT_EQ(Read().luns[0].size, UINT64_MAX - 4095);
}

TEST_F(ReadHostTest, Settings) {
    _vexapi_protocol_t& record = Tree().AddPort();
    SucceedEverywhere();
    Fake().onGetAdapterAsicBoardTemperature = [](VX_PORT_HANDLE*, _VEXAPI_BoardThermalTemp* temperature) {
        temperature->Temperature = -5;
        return VX_UINT32{0};
    };
    Fake().onGetAdapterBeaconStatus = [](VX_PORT_HANDLE*, VEXAPI_BEACON_TYPE* state) {
        *state = 1;
        return VX_UINT32{0};
    };
    Fake().onFCGetBBCSupportInfoEx = [](VX_PORT_HANDLE*, VX_UINT8*, VX_UINT8*, VX_UINT8*, VX_UINT8*, char* reason,
                                        VX_UINT32 size) {
        EXPECT_EQ(size, 64u);
        std::memset(reason, 'r', size); // without a terminator
        return VX_UINT32{0};
    };
    Fake().onGetFWPrivateStats = [](VX_PORT_HANDLE*, _VEXAPI_FWPRIVATESTATSEntry** entries, VX_UINT32* count) {
        _VEXAPI_FWPRIVATESTATSEntry entry{};
        entry.CorrectableFecErrors = 118;
        entry.UncorrectableFecErrors = 2;
        *entries = AllocatedCopy<_VEXAPI_FWPRIVATESTATSEntry>({entry});
        *count = 1;
        return VX_UINT32{0};
    };
    Fake().onGetHBAParamsInfo = [](VX_PORT_HANDLE*, _VEXAPI_HBAParameters* parameters, VX_HBA_AUX*) {
        parameters->FrameSize = 2048;
        return VX_UINT32{0};
    };
    Fake().onGetVpd = [&](VX_UINT32 word, VX_UINT32, void* buffer, VX_UINT32* size) {
        VX_UINT32 own = 0;
        std::memcpy(&own, record.PortHandle.opaque + 4, sizeof own);
        EXPECT_EQ(word, own);
        const char vpd[] = "\x90\x07\x00PN\x04"
                           "OR27\x78";
        std::memcpy(buffer, vpd, sizeof vpd - 1);
        *size = 4294967295; // more than there is room for
        return VX_UINT32{0};
    };
    const Host host = Read();
    EXPECT_EQ(host.messages, Texts{});
    const PortSettings& settings = host.ports[0].settings;
    EXPECT_EQ(settings.temperature, -5);
    EXPECT_EQ(settings.beacon, true);
    EXPECT_EQ(settings.fec, false);
    EXPECT_EQ(settings.creditRecovery, false);
    EXPECT_EQ(settings.creditRecoveryReason, std::string(64, 'r'));
    EXPECT_EQ(settings.correctedFecErrors, 118u);
    EXPECT_EQ(settings.uncorrectedFecErrors, 2u);
    const auto frameSize = std::find_if(settings.nvram.begin(), settings.nvram.end(),
                                        [](const auto& it) { return std::string(it.first) == "frame_size"; });
    ASSERT_NE(frameSize, settings.nvram.end());
    EXPECT_EQ(frameSize->second, 2048u);
    EXPECT_EQ(host.adapters[0].vpd, (decltype(Adapter::vpd){{"PN", "OR27"}}));
}

// ---- Functions that fail

constexpr const char* ASKED[] = {"VEXAPI_GetSFPData",
                                 "VEXAPI_GetAdapterAsicBoardTemperature",
                                 "VEXAPI_GetAdapterBeaconStatus",
                                 "VEXAPI_FCGetFECSupportInfo",
                                 "VEXAPI_GetFWPrivateStats",
                                 "VEXAPI_FCGetBBCSupportInfoEx",
                                 "VEXAPI_IsFWCMFeatureEnabled",
                                 "VEXAPI_GetHBAParamsInfo"};

TEST_F(ReadHostTest, EachFailureIsToldAndTheRestIsThere) {
    Put(Tree().AddAdapter().Model, "M");
    Tree().AddPort();
    Tree().AddPort();
    SucceedEverywhere();
    for (const char* function : ASKED) {
        Fake().ReturnInTurn(function, {5});
        const Host host = Read();
        ASSERT_EQ(host.ports.size(), 2u) << function;
        ASSERT_EQ(host.messages.size(), 1u) << function;
        EXPECT_TRUE(host.messages[0].starts_with("FC_21:00:0a:0b:0c:0d:00:01: ")) << host.messages[0];
        EXPECT_TRUE(host.messages[0].ends_with(": failed with status 5")) << host.messages[0];
        EXPECT_EQ(host.ports[1].settings.beacon, false);
    }
    Fake().ReturnInTurn("VEXAPI_GetVpd", {4294967295});
    EXPECT_EQ(Read().messages, (Texts{"Adapter_M_: vital product data: failed with status 4294967295"}));
}

/// 118: not by the driver; 134: not by the firmware. Nothing is wrong then, and nothing is known.
TEST_F(ReadHostTest, WhatIsNotSupportedIsUnknown) {
    Tree().AddPort();
    for (const VX_UINT32 status : {118u, 134u}) {
        for (const char* function : ASKED) {
            Fake().Return(function, status);
        }
        Fake().Return("VEXAPI_GetVpd", status);
        const Host host = Read();
        EXPECT_EQ(host.messages, Texts{});
        EXPECT_EQ(host.ports[0].settings.temperature, std::nullopt);
        EXPECT_EQ(host.ports[0].settings.beacon, std::nullopt);
        EXPECT_EQ(host.ports[0].transceiver.state, ModuleState::UNREAD);
        EXPECT_TRUE(host.ports[0].settings.nvram.empty());
    }
}

TEST_F(ReadHostTest, ALibraryThatDoesNotStart) {
    Fake().Return("VEXAPI_Initialize", 0x20000075);
    for (const bool hasExtensions : {false, true}) {
        try {
            Read({}, hasExtensions);
            FAIL();
        } catch (const Failure& failure) {
            EXPECT_STREQ(failure.what(), "scripted: doesn't start, status 0x20000075");
            EXPECT_EQ(failure.status, Failure::FAILED);
        }
    }
    EXPECT_EQ(Ext().handler, nullptr); // what it referred to is gone
}

TEST_F(ReadHostTest, WhyALibraryDoesNotStart) {
    Fake().onInitialize = [](VX_UINT32, VX_UINT32) {
        Ext().Tell("host.json: no such file");
        return VX_UINT32{102};
    };
    try {
        ReadExtended();
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(), "scripted: doesn't start, status 0x66: host.json: no such file");
    }
}

TEST_F(ReadHostTest, ALibraryWithoutAHost) {
    Tree().hasList = false;
    try {
        Read();
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_STREQ(failure.what(), "scripted: shows no host");
    }
    // It was ended all the same.
    EXPECT_EQ(std::count(Fake().calls.begin(), Fake().calls.end(), "VEXAPI_Uninitialize()"), 1);
}

// ---- Lists

TEST_F(ReadHostTest, ListsThatAreMissingOrEmpty) {
    EXPECT_EQ(Read().adapters.size(), 0u); // a header with a null head
    Tree().AddAdapter();
    Tree().AddAdapter().pPhyPortList = nullptr;
    _vexapi_adapter_t& third = Tree().AddAdapter();
    Tree().AddPhyPort(third).pProtocolList = nullptr;
    Tree().AddPhyPort(third);
    const Host host = Read();
    EXPECT_EQ(host.adapters.size(), 3u);
    EXPECT_EQ(host.ports.size(), 0u);
    EXPECT_EQ(host.messages, Texts{});
}

/// Lists of every length that end in a ring of every size: each entry is read once, and the ring is told.
TEST_F(ReadHostTest, RingsOfTargets) {
    for (int before = 0; before < 6; ++before) {
        for (int ring = 1; ring < 10; ++ring) {
            FakeLibrary::Reset();
            _vexapi_protocol_t& port = Tree().AddPort();
            std::vector<_tagVEXAPI_SDMTarget*> targets;
            for (int number = 0; number < before + ring; ++number) {
                targets.push_back(&Tree().AddTarget(port));
            }
            targets.back()->pNext = targets[static_cast<std::size_t>(before)];
            const Host host = Read({.targets = true});
            ASSERT_EQ(host.targets.size(), targets.size()) << before << " " << ring;
            for (std::size_t number = 0; number < targets.size(); ++number) {
                EXPECT_EQ(host.targets[number].number, number);
            }
            EXPECT_EQ(host.messages, (Texts{"FC_21:00:0a:0b:0c:0d:00:01: targets: the library's list has no end"}));
        }
    }
}

TEST_F(ReadHostTest, RingsOfEveryKind) {
    _vexapi_adapter_t& adapter = Tree().AddAdapter();
    Put(adapter.Model, "M");
    _vexapi_phy_port_t& physical = Tree().AddPhyPort(adapter);
    _vexapi_protocol_t& port = Tree().AddProtocol(physical);
    _tagVEXAPI_SDMTarget& target = Tree().AddTarget(port);
    _tagVEXAPI_SDMLun& lun = Tree().AddLun(target);
    adapter.pNext = &adapter;
    physical.pNext = &physical;
    port.pNext = &port;
    target.pNext = &target;
    lun.pNext = &lun;
    const Host host = Read({.targets = true, .luns = true});
    EXPECT_EQ(host.adapters.size(), 1u);
    EXPECT_EQ(host.ports.size(), 1u);
    EXPECT_EQ(host.targets.size(), 1u);
    EXPECT_EQ(host.luns.size(), 1u);
    const std::string targetName = "FC_21:00:0a:0b:0c:0d:00:01_Target_50:00:0a:0b:0c:0d:01:01";
    EXPECT_EQ(host.messages, (Texts{targetName + ": LUNs: the library's list has no end",
                                    "FC_21:00:0a:0b:0c:0d:00:01: targets: the library's list has no end",
                                    "Adapter_M_: ports: the library's list has no end",
                                    "Adapter_M_: physical ports: the library's list has no end",
                                    "adapters: the library's list has no end"}));
}

TEST_F(ReadHostTest, CountsOfListsAreNotBelieved) {
    _vexapi_protocol_t& port = Tree().AddPort();
    Tree().AddTarget(port).LunCount = 1000000;
    port.TargetCount = 0;
    Tree().List()->Count = 77;
    EXPECT_EQ(Read().targets.size(), 1u);
}

// ---- What isn't wanted isn't asked for

TEST_F(ReadHostTest, AsksForNothingElse) {
    Tree().AddLun(Tree().AddTarget(Tree().AddPort()));
    const Host host = Read({});
    EXPECT_EQ(Fake().PortCalls(), Texts{});
    EXPECT_EQ(host.targets.size(), 0u);
    EXPECT_EQ(host.ports[0].state, "");
    Read({.targets = true, .luns = true});
    EXPECT_EQ(Fake().PortCalls(), Texts{});
}

TEST_F(ReadHostTest, AsksNamedPortsOnly) {
    Tree().AddPort();
    const _vexapi_protocol_t& second = Tree().AddPort();
    SucceedEverywhere();
    Wanted wanted = EVERYTHING;
    wanted.ports = {0x21000a0b0c0d0002};
    EXPECT_EQ(Read(wanted).ports.size(), 2u);
    ASSERT_FALSE(Fake().PortCalls().empty());
    for (const std::string& call : Fake().PortCalls()) {
        EXPECT_NE(call.find(WwnOf(second.WWPN)), std::string::npos) << call;
    }
}

TEST_F(ReadHostTest, OneVpdOfAnAdapter) {
    Tree().AddPort();
    Tree().AddPort();
    SucceedEverywhere();
    Fake().onGetVpd = [](VX_UINT32, VX_UINT32, void* buffer, VX_UINT32* size) {
        std::memcpy(buffer,
                    "\x90\x04\x00SN\x01"
                    "7",
                    7);
        *size = 7;
        return VX_UINT32{0};
    };
    EXPECT_EQ(Read({.vpd = true}).adapters[0].vpd.size(), 1u);
    EXPECT_EQ(Fake().PortCalls().size(), 1u);
}

TEST_F(ReadHostTest, TellsWhichPortIsRead) {
    Tree().AddPort();
    Tree().AddPort();
    const Library library(Functions(false), "scripted");
    Session session(library, ScopeOf({}));
    Texts told;
    ReadHost(session, {}, [&](const std::string& identifier) { told.push_back(identifier); });
    EXPECT_EQ(told, (Texts{"FC_21:00:0a:0b:0c:0d:00:01", "FC_21:00:0a:0b:0c:0d:00:02"}));
}

// ---- Optional functions

TEST_F(ReadHostTest, WhatTheKernelKnows) {
    _vexapi_protocol_t& port = Tree().AddPort();
    port.PortSpeed = 50;
    _tagVEXAPI_SDMTarget& target = Tree().AddTarget(port);
    _tagVEXAPI_SDMLun& lun = Tree().AddLun(target);
    SucceedEverywhere();
    Ext().getPort = [&](VX_PORT_HANDLE* handle, VEXAPI_EXT_PORT* record) {
        EXPECT_EQ(handle, &port.PortHandle);
        EXPECT_EQ(record->Size, sizeof *record);
        Put(record->KernelName, "host2");
        Put(record->Driver, std::string(32, 'd')); // without a terminator
        Put(record->State, "Linkdown");
        record->DeviceLossTimeout = 30;
        return VX_UINT32{0};
    };
    Ext().getTarget = [&](VX_PORT_HANDLE*, const _tagVEXAPI_SDMTarget* record, VEXAPI_EXT_TARGET* known) {
        EXPECT_EQ(record, &target);
        Put(known->KernelName, "rport-2:0-1");
        Put(known->State, "Blocked");
        known->DeviceLossTimeout = VEXAPI_EXT_UNKNOWN;
        known->FastFailTimeout = 0;
        return VX_UINT32{0};
    };
    Ext().getLun = [&](VX_PORT_HANDLE*, const _tagVEXAPI_SDMTarget*, const _tagVEXAPI_SDMLun* record,
                       VEXAPI_EXT_LUN* known) {
        EXPECT_EQ(record, &lun);
        Put(known->Address, "2:0:1:5");
        Put(known->Device, "sdb");
        Put(known->WorldwideId, "naa.6001");
        Put(known->Map, "mpatha");
        Put(known->MapPathState, "failed");
        return VX_UINT32{0};
    };
    Ext().getCounters = [&](VX_PORT_HANDLE*, const _tagVEXAPI_SDMTarget* of, VEXAPI_EXT_COUNTER* counters,
                            VX_UINT32* count) {
        Put(counters[0].Name, of == nullptr ? "tx_frames" : "fpin_cn");
        counters[0].Value = UINT64_MAX;
        *count = 1;
        return VX_UINT32{0};
    };
    const Host host = ReadExtended();
    EXPECT_EQ(host.messages, Texts{});
    EXPECT_EQ(host.ports[0].kernelName, "host2");
    EXPECT_EQ(host.ports[0].driver, std::string(32, 'd'));
    EXPECT_EQ(host.ports[0].linkState, "Linkdown");
    EXPECT_EQ(host.ports[0].state, "offline"); // whatever the record says
    EXPECT_EQ(host.ports[0].speed, std::nullopt);
    EXPECT_EQ(host.ports[0].deviceLossTimeout, 30u);
    EXPECT_EQ(host.ports[0].counters, (Counters{{"tx_frames", UINT64_MAX}})); // and none of the record
    EXPECT_EQ(host.targets[0].kernelName, "rport-2:0-1");
    EXPECT_EQ(host.targets[0].deviceLossTimeout, std::nullopt);
    EXPECT_EQ(host.targets[0].fastFailTimeout, 0u);
    EXPECT_EQ(host.targets[0].counters, (Counters{{"fpin_cn", UINT64_MAX}}));
    EXPECT_EQ(host.luns[0].address, "2:0:1:5");
    EXPECT_EQ(host.luns[0].worldwideId, "naa.6001");
    EXPECT_EQ(host.luns[0].map, "mpatha");
    EXPECT_EQ(host.ports[0].pathsDown, 1u);
}

TEST_F(ReadHostTest, OptionalFunctionsThatFail) {
    _tagVEXAPI_SDMTarget& target = Tree().AddTarget(Tree().AddPort());
    _tagVEXAPI_SDMLun& lun = Tree().AddLun(target);
    Put(lun.WorldwideId, "\x50\x01\x02\x03\x04\x05\x06\x07");
    lun.WorldwideIdLength = 8;
    Ext().getPort = [](auto...) { return VX_UINT32{5}; };
    Ext().getTarget = [](auto...) { return VX_UINT32{6}; };
    Ext().getLun = [](auto...) { return VX_UINT32{7}; };
    Ext().getCounters = [](auto...) { return VX_UINT32{8}; };
    const Host host = ReadExtended({.portDetails = true, .counters = true, .targets = true, .luns = true});
    const std::string port = "FC_21:00:0a:0b:0c:0d:00:01";
    const std::string targetName = port + "_Target_50:00:0a:0b:0c:0d:01:01";
    EXPECT_EQ(
        host.messages,
        (Texts{port + ": kernel's names: failed with status 5", port + ": counters: failed with status 8",
               targetName + ": kernel's names: failed with status 6", targetName + ": counters: failed with status 8",
               targetName + "_LUN_0: kernel's names: failed with status 7"}));
    EXPECT_EQ(host.luns[0].worldwideId, "naa.5001020304050607");
    EXPECT_EQ(host.ports[0].counters.count("link_failure_count"), 1u); // of the record
}

TEST_F(ReadHostTest, MoreCountersThanThereIsRoomFor) {
    Tree().AddPort();
    std::vector<VX_UINT32> rooms;
    VX_UINT32 all = 300;
    Ext().getCounters = [&](VX_PORT_HANDLE*, const _tagVEXAPI_SDMTarget*, VEXAPI_EXT_COUNTER* counters,
                            VX_UINT32* count) {
        rooms.push_back(*count);
        for (VX_UINT32 at = 0; at < std::min(all, *count); ++at) {
            Put(counters[at].Name, "counter_" + std::to_string(at));
            counters[at].Value = at;
        }
        *count = all;
        return VX_UINT32{0};
    };
    const Wanted wanted = {.counters = true};
    EXPECT_EQ(ReadExtended(wanted).ports[0].counters.size(), 300u);
    EXPECT_EQ(rooms, (std::vector<VX_UINT32>{64, 300}));
    // A number that can't be.
    all = 4294967295;
    rooms.clear();
    const Host host = ReadExtended(wanted);
    EXPECT_EQ(rooms, (std::vector<VX_UINT32>{64}));
    EXPECT_EQ(host.messages, (Texts{"FC_21:00:0a:0b:0c:0d:00:01: counters: more than 4096"}));
}

TEST_F(ReadHostTest, ScopesAndMessages) {
    Tree().AddPort();
    Ext().getPort = [](auto...) {
        Ext().Tell("host2/speed: Input/output error");
        return VX_UINT32{0};
    };
    const Host host = ReadExtended({.portDetails = true, .luns = true});
    EXPECT_EQ(host.messages, (Texts{"host2/speed: Input/output error"}));
    EXPECT_EQ(Ext().scopes, (std::vector<VX_UINT32>{VEXAPI_EXT_ADAPTERS | VEXAPI_EXT_PORTS | VEXAPI_EXT_PORT_DETAILS |
                                                    VEXAPI_EXT_LUNS | VEXAPI_EXT_LUN_DETAILS}));
    EXPECT_EQ(Ext().handler, nullptr);
    EXPECT_EQ(ScopeOf(EVERYTHING).Parts, static_cast<VX_UINT32>(VEXAPI_EXT_EVERYTHING));
}

TEST_F(ReadHostTest, WhatIsToldTwiceIsToldOnce) {
    Tree().AddPort();
    Tree().AddPort();
    Ext().getPort = [](auto...) {
        Ext().Tell("host2/speed: Input/output error");
        return VX_UINT32{0};
    };
    EXPECT_EQ(ReadExtended({.portDetails = true}).messages, (Texts{"host2/speed: Input/output error"}));
}

/// A library may say in words what it has no support for. Nothing is wrong then; what it told before is.
TEST_F(ReadHostTest, WordsAboutWhatIsNotSupported) {
    Tree().AddPort();
    Fake().onInitialize = [](auto...) {
        Ext().Tell("host2/speed: Input/output error");
        return VX_UINT32{0};
    };
    VX_UINT32 status = 118;
    Fake().onGetVpd = [&](auto...) {
        Ext().Tell("host2: vital product data: No such file or directory");
        return status;
    };
    const Wanted wanted = {.portDetails = true, .vpd = true};
    EXPECT_EQ(ReadExtended(wanted).messages, (Texts{"host2/speed: Input/output error"}));
    status = 102;
    EXPECT_EQ(ReadExtended(wanted).messages,
              (Texts{"host2/speed: Input/output error", "host2: vital product data: No such file or directory"}));
}

TEST_F(ReadHostTest, WhatIsWantedAddsUp) {
    const Wanted both = Wanted{.portDetails = true, .targets = true, .settings = true, .ports = {1}} |
                        Wanted{.counters = true, .luns = true, .transceivers = true, .vpd = true};
    EXPECT_TRUE(both.portDetails && both.counters && both.targets && both.luns && both.transceivers && both.settings &&
                both.vpd);
    EXPECT_EQ(both.ports, std::set<Wwn>{1});
}

} // namespace
