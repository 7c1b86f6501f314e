/// @file
/// The optional functions on small trees. The kernel's words are those of its sources: `scsi_sysfs.c`,
/// `scsi_transport_fc.c`, and of the NVMe driver's `sysfs.c`.
#include "TextTree.h"

#include <cstring>
#include <map>
#include <vector>

namespace {

using linux_host_test::TreeTest;

/// Two ports of a card, each with a target; that of the first has two LUNs. A third port on a network device.
constexpr char HOST[] = R"(
class/fc_host/host2 -> ../../devices/pci0000:3a/0000:3b:00.0/host2/fc_host/host2
class/fc_host/host3 -> ../../devices/pci0000:3a/0000:3b:00.1/host3/fc_host/host3
class/fc_host/host9 -> ../../devices/pci0000:3a/0000:3c:00.0/net/i0/ctlr_0/host9/fc_host/host9
devices/pci0000:3a/0000:3b:00.0/driver -> ../../../bus/pci/drivers/the_driver
bus/pci/drivers/the_driver/module -> ../../../../module/the_module
devices/pci0000:3a/0000:3c:00.0/driver -> ../../../bus/pci/drivers/the_driver
devices/pci0000:3a/0000:3b:00.0/host2/fc_host/host2/port_name 0x2100000000000002
devices/pci0000:3a/0000:3b:00.0/host2/fc_host/host2/port_state Linkdown
devices/pci0000:3a/0000:3b:00.0/host2/fc_host/host2/speed 16 Gbit
devices/pci0000:3a/0000:3b:00.0/host2/fc_host/host2/symbolic_name maker's card, firmware 1.2
devices/pci0000:3a/0000:3b:00.0/host2/fc_host/host2/dev_loss_tmo 45
devices/pci0000:3a/0000:3b:00.1/host3/fc_host/host3/port_name 0x2100000000000003
devices/pci0000:3a/0000:3c:00.0/net/i0/ctlr_0/host9/fc_host/host9/port_name 0x2100000000000009
class/scsi_host/host3/proc_name ethernet_fc
class/scsi_host/host9/proc_name fcoe
class/fc_remote_ports/rport-2:0-4/roles FCP Target, NVMe Target
class/fc_remote_ports/rport-2:0-4/port_name 0x5000000000000004
class/fc_remote_ports/rport-2:0-4/port_state Blocked
class/fc_remote_ports/rport-2:0-4/scsi_target_id 1
class/fc_remote_ports/rport-2:0-4/dev_loss_tmo 60
class/fc_remote_ports/rport-2:0-4/fast_io_fail_tmo 5
class/fc_remote_ports/rport-3:0-0/roles FCP Target
class/fc_remote_ports/rport-3:0-0/port_name 0x5000000000000005
class/fc_remote_ports/rport-3:0-0/scsi_target_id 0
class/fc_remote_ports/rport-3:0-0/fast_io_fail_tmo off
bus/scsi/devices/2:0:1:0/state running
bus/scsi/devices/2:0:1:0/access_state active/optimized
bus/scsi/devices/2:0:1:0/wwid naa.6000000000000001
bus/scsi/devices/2:0:1:0/block/sdb/
bus/scsi/devices/2:0:1:131077/state offline
bus/scsi/devices/3:0:0:0/block/sdc/
class/block/sdb -> ../../devices/pci0000:3a/0000:3b:00.0/host2/rport-2:0-4/target2:0:1/2:0:1:0/block/sdb
class/block/sdc -> ../../devices/pci0000:3a/0000:3b:00.1/host3/rport-3:0-0/target3:0:0/3:0:0:0/block/sdc
devices/pci0000:3a/0000:3b:00.0/host2/rport-2:0-4/target2:0:1/2:0:1:0/block/sdb/holders/
devices/pci0000:3a/0000:3b:00.1/host3/rport-3:0-0/target3:0:0/3:0:0:0/block/sdc/holders/
)";

/// A map over both disks.
constexpr char MAP[] = R"(
class/block/dm-7 -> ../../devices/virtual/block/dm-7
devices/virtual/block/dm-7/dm/name mpatha
devices/virtual/block/dm-7/dm/uuid mpath-36000000000000001
devices/virtual/block/dm-7/dm/suspended 0
devices/virtual/block/dm-7/slaves/sdb/
devices/virtual/block/dm-7/slaves/sdc/
class/block/sdb/holders/dm-7/
class/block/sdc/holders/dm-7/
)";

/// A subsystem with one namespace, seen through one controller; a second controller with a namespace of its own.
constexpr char NVME[] = R"(
class/fc_host/host2 -> ../../devices/pci0000:3a/0000:3b:00.0/host2/fc_host/host2
devices/pci0000:3a/0000:3b:00.0/host2/fc_host/host2/port_name 0x2100000000000002
class/nvme/nvme4 -> ../../devices/virtual/nvme-fabrics/ctl/nvme4
class/nvme/nvme5 -> ../../devices/virtual/nvme-fabrics/ctl/nvme5
devices/virtual/nvme-fabrics/ctl/nvme4/transport fc
devices/virtual/nvme-fabrics/ctl/nvme4/address traddr=nn-0x1:pn-0x5000000000000006,host_traddr=nn-0x2:pn-0x2100000000000002
devices/virtual/nvme-fabrics/ctl/nvme4/state connecting
devices/virtual/nvme-fabrics/ctl/nvme4/subsysnqn nqn.4
devices/virtual/nvme-fabrics/ctl/nvme4/nvme3c4n1/nsid 9
devices/virtual/nvme-fabrics/ctl/nvme4/nvme3c4n1/ana_state non-optimized
devices/virtual/nvme-fabrics/ctl/nvme4/nvme3c4n1/wwid uuid.44444444-0000-4000-8000-000000000001
class/block/nvme3c4n1 -> ../../devices/virtual/nvme-fabrics/ctl/nvme4/nvme3c4n1
class/block/nvme3n1 -> ../../devices/virtual/nvme-subsystem/nvme-subsys3/nvme3n1
class/nvme-subsystem/nvme-subsys3 -> ../../devices/virtual/nvme-subsystem/nvme-subsys3
devices/virtual/nvme-subsystem/nvme-subsys3/nvme3n1/wwid uuid.44444444-0000-4000-8000-000000000001
devices/virtual/nvme-fabrics/ctl/nvme5/transport fc
devices/virtual/nvme-fabrics/ctl/nvme5/address traddr=nn-0x1:pn-0x5000000000000007,host_traddr=nn-0x2:pn-0x2100000000000002
devices/virtual/nvme-fabrics/ctl/nvme5/state live
devices/virtual/nvme-fabrics/ctl/nvme5/subsysnqn nqn.5
devices/virtual/nvme-fabrics/ctl/nvme5/nvme5n1/nsid 1
devices/virtual/nvme-fabrics/ctl/nvme5/nvme5n1/wwid eui.0000000000000005
devices/virtual/nvme-fabrics/ctl/nvme5/nvme5n1/holders/dm-7/
class/block/nvme5n1 -> ../../devices/virtual/nvme-fabrics/ctl/nvme5/nvme5n1
class/block/dm-7 -> ../../devices/virtual/block/dm-7
devices/virtual/block/dm-7/dm/name mpathn
devices/virtual/block/dm-7/dm/uuid mpath-eui.0000000000000005
devices/virtual/block/dm-7/dm/suspended 1
devices/virtual/block/dm-7/slaves/nvme5n1/
)";

template <class Record> Record Empty(std::size_t size = sizeof(Record)) {
    Record record{};
    record.Size = static_cast<VX_UINT32>(size);
    return record;
}

class LinuxExtensionsTest : public TreeTest {
protected:
    static VEXAPI_EXT_PORT PortKnown(int index = 0) {
        auto record = Empty<VEXAPI_EXT_PORT>();
        EXPECT_EQ(VEXAPI_ExtGetPort(&Port(index).PortHandle, &record), 0u);
        return record;
    }
    static VEXAPI_EXT_TARGET TargetKnown(int index = 0, int port = 0) {
        auto record = Empty<VEXAPI_EXT_TARGET>();
        EXPECT_EQ(VEXAPI_ExtGetTarget(&Port(port).PortHandle, &Target(index, port), &record), 0u);
        return record;
    }
    static VEXAPI_EXT_LUN LunKnown(int index = 0, int target = 0) {
        auto record = Empty<VEXAPI_EXT_LUN>();
        EXPECT_EQ(VEXAPI_ExtGetLun(&Port().PortHandle, &Target(target), &Lun(index, target), &record), 0u);
        return record;
    }
    /// Counters in their order.
    static std::vector<std::pair<std::string, VX_UINT64>> Counters(const _tagVEXAPI_SDMTarget* target = nullptr) {
        std::vector<VEXAPI_EXT_COUNTER> records(2048);
        VX_UINT32 count = 2048;
        EXPECT_EQ(VEXAPI_ExtGetCounters(&Port().PortHandle, target, records.data(), &count), 0u);
        std::vector<std::pair<std::string, VX_UINT64>> counters;
        for (VX_UINT32 i = 0; i < count; ++i) {
            counters.emplace_back(records[i].Name, records[i].Value);
        }
        return counters;
    }
};

TEST_F(LinuxExtensionsTest, APort) {
    Add(HOST);
    Start();
    const VEXAPI_EXT_PORT port = PortKnown();
    EXPECT_STREQ(port.KernelName, "host2");
    EXPECT_STREQ(port.Device, "0000:3b:00.0");
    EXPECT_STREQ(port.Driver, "the_module");
    EXPECT_STREQ(port.State, "Linkdown");
    EXPECT_STREQ(port.Speed, "16 Gbit");
    EXPECT_STREQ(port.SymbolicName, "maker's card, firmware 1.2");
    EXPECT_EQ(port.DeviceLossTimeout, 45u);
}

TEST_F(LinuxExtensionsTest, APortWithLittleToTell) {
    Add(HOST);
    Start();
    const VEXAPI_EXT_PORT port = PortKnown(1);
    EXPECT_STREQ(port.KernelName, "host3");
    EXPECT_STREQ(port.Driver, "ethernet_fc"); // its function names none
    EXPECT_STREQ(port.State, "");
    EXPECT_STREQ(port.SymbolicName, "");
    EXPECT_EQ(port.DeviceLossTimeout, VEXAPI_EXT_UNKNOWN);
    // The driver of an FCoE port isn't that of the network device.
    EXPECT_STREQ(PortKnown(2).Driver, "fcoe");
    EXPECT_STREQ(PortKnown(2).Device, "0000:3c:00.0");
    Add("class/scsi_host/host3/proc_name (null)");
    EXPECT_STREQ(PortKnown(1).Driver, "");
    EXPECT_EQ(told, "");
}

TEST_F(LinuxExtensionsTest, APortWithoutAPciFunction) {
    Add("class/fc_host/host0 -> ../../devices/virtual/the_bus/the_card/host0/fc_host/host0\n"
        "devices/virtual/the_bus/the_card/host0/fc_host/host0/port_name 0x21");
    Start();
    EXPECT_STREQ(PortKnown().Device, "the_card");
}

/// Everything that the kernel calls the state of a port or a remote port.
TEST_F(LinuxExtensionsTest, StatesOfPortsAndTargets) {
    Add(HOST);
    Start();
    for (const char* const state : {"Not Present", "Online", "Offline", "Blocked", "Bypassed", "Diagnostics",
                                    "Linkdown", "Error", "Loopback", "Deleted", "Marginal"}) {
        Add("class/fc_host/host2/port_state " + std::string(state) + "\nclass/fc_remote_ports/rport-2:0-4/port_state " +
            state);
        EXPECT_STREQ(PortKnown().State, state);
        EXPECT_STREQ(TargetKnown().State, state);
    }
}

TEST_F(LinuxExtensionsTest, ATarget) {
    Add(HOST);
    Start();
    const VEXAPI_EXT_TARGET target = TargetKnown();
    EXPECT_STREQ(target.KernelName, "rport-2:0-4");
    EXPECT_STREQ(target.State, "Blocked");
    EXPECT_STREQ(target.Roles, "FCP Target, NVMe Target");
    EXPECT_EQ(target.DeviceLossTimeout, 60u);
    EXPECT_EQ(target.FastFailTimeout, 5u);
    EXPECT_EQ(TargetKnown(0, 1).FastFailTimeout, VEXAPI_EXT_UNKNOWN); // off
    EXPECT_EQ(TargetKnown(0, 1).DeviceLossTimeout, VEXAPI_EXT_UNKNOWN);
    EXPECT_EQ(told, "");
}

TEST_F(LinuxExtensionsTest, AControllerWithoutARemotePort) {
    Add(NVME);
    Start();
    for (const char* const state : {"new", "live", "resetting", "connecting", "deleting", "deleting (no IO)", "dead"}) {
        Add("class/nvme/nvme4/state " + std::string(state));
        EXPECT_STREQ(TargetKnown().State, state);
    }
    EXPECT_STREQ(TargetKnown().KernelName, "nvme4");
    EXPECT_STREQ(TargetKnown().Roles, "");
    EXPECT_EQ(TargetKnown().DeviceLossTimeout, VEXAPI_EXT_UNKNOWN);
    EXPECT_EQ(Counters(&Target()).size(), 0u);
}

TEST_F(LinuxExtensionsTest, ALun) {
    Add(HOST);
    Start();
    const VEXAPI_EXT_LUN lun = LunKnown();
    EXPECT_STREQ(lun.Address, "2:0:1:0");
    EXPECT_STREQ(lun.Device, "sdb");
    EXPECT_STREQ(lun.State, "running");
    EXPECT_STREQ(lun.AccessState, "active/optimized");
    EXPECT_STREQ(lun.WorldwideId, "naa.6000000000000001");
    EXPECT_STREQ(lun.Map, "");
    EXPECT_STREQ(lun.MapDevice, "");
    // 131077 is 2 * 65536 + 5; there is no disk, and nothing else to tell.
    EXPECT_EQ(Lun(1).LunNumber, 5);
    EXPECT_STREQ(LunKnown(1).Address, "2:0:1:131077");
    EXPECT_STREQ(LunKnown(1).Device, "");
    EXPECT_STREQ(LunKnown(1).State, "offline");
    EXPECT_STREQ(LunKnown(1).AccessState, "");
    EXPECT_STREQ(LunKnown(1).WorldwideId, "");
    EXPECT_EQ(told, "");
}

TEST_F(LinuxExtensionsTest, StatesOfLuns) {
    Add(HOST);
    Start();
    for (const char* const state : {"created", "running", "cancel", "deleted", "quiesce", "offline",
                                    "transport-offline", "blocked", "created-blocked"}) {
        Add("bus/scsi/devices/2:0:1:0/state " + std::string(state));
        EXPECT_STREQ(LunKnown().State, state);
    }
    for (const char* const state : {"active/optimized", "active/non-optimized", "standby", "unavailable",
                                    "lba-dependent", "offline", "transitioning"}) {
        Add("bus/scsi/devices/2:0:1:0/access_state " + std::string(state));
        EXPECT_STREQ(LunKnown().AccessState, state);
    }
}

/// Maps are looked for in two ways: for one target, and for all.
class LinuxMapsTest : public LinuxExtensionsTest, public testing::WithParamInterface<bool> {
protected:
    void StartWith(const std::string& text) {
        Add(text);
        VEXAPI_EXT_SCOPE scope{};
        scope.Size = sizeof scope;
        scope.Parts = VEXAPI_EXT_LUNS;
        Start(VEXAPI_EXT_LUNS);
        if (GetParam()) {
            std::copy_n(Target().PortName, 8, scope.TargetName);
            EXPECT_EQ(VEXAPI_ExtSetScope(&scope), 0u);
            ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
        }
    }
};
INSTANTIATE_TEST_SUITE_P(ForOneTargetAndForAll, LinuxMapsTest, testing::Bool());

TEST_P(LinuxMapsTest, AMap) {
    StartWith(std::string(HOST) + MAP);
    const VEXAPI_EXT_LUN lun = LunKnown();
    EXPECT_STREQ(lun.Device, "sdb");
    EXPECT_STREQ(lun.Map, "mpatha");
    EXPECT_STREQ(lun.MapDevice, "dm-7");
    EXPECT_STREQ(lun.MapId, "mpath-36000000000000001");
    EXPECT_STREQ(lun.MapState, "active");
    EXPECT_STREQ(lun.MapPathState, ""); // the device mapper of this machine knows nothing of the tree's
    EXPECT_STREQ(LunKnown(1).Map, "");
}

TEST_P(LinuxMapsTest, ASecondCallShowsWhatHasChanged) {
    StartWith(std::string(HOST) + MAP);
    EXPECT_STREQ(LunKnown().MapState, "active");
    Add("devices/virtual/block/dm-7/dm/suspended 1\ndevices/virtual/block/dm-7/dm/name renamed");
    EXPECT_STREQ(LunKnown().MapState, "suspended");
    EXPECT_STREQ(LunKnown().Map, "renamed");
    std::filesystem::remove(root / "sys/class/block/sdb/holders/dm-7");
    std::filesystem::remove(root / "sys/class/block/dm-7/slaves/sdb");
    EXPECT_STREQ(LunKnown().Map, "");
    // The disk comes back under another name.
    std::filesystem::remove(root / "sys/class/block/sdb");
    std::filesystem::remove_all(root / "sys/bus/scsi/devices/2:0:1:0/block/sdb");
    Add("bus/scsi/devices/2:0:1:0/block/sdx/\nclass/block/sdx -> ../../devices/x/2:0:1:0/block/sdx");
    EXPECT_STREQ(LunKnown().Device, "sdx");
}

TEST_P(LinuxMapsTest, OtherMapsAreNone) {
    // A volume on the disk beside the map, and the map of a partition.
    StartWith(std::string(HOST) + MAP + R"(
class/block/sdb/holders/dm-1/
class/block/dm-1/dm/name vg-home
class/block/dm-1/dm/uuid LVM-abcdef
class/block/dm-1/slaves/sdb/
class/block/sdb/holders/dm-2/
class/block/dm-2/dm/name mpatha1
class/block/dm-2/dm/uuid part1-mpath-36000000000000001
class/block/dm-2/slaves/sdb/
class/block/sdb/holders/md0/
)");
    EXPECT_STREQ(LunKnown().Map, "mpatha");
    Add("devices/virtual/block/dm-7/dm/uuid ");
    EXPECT_STREQ(LunKnown().Map, "");
    std::filesystem::remove_all(root / "sys/devices/virtual/block/dm-7/dm");
    EXPECT_STREQ(LunKnown().Map, "");
    EXPECT_EQ(told, "");
}

TEST_P(LinuxMapsTest, MapsThatCannotBe) {
    StartWith(std::string(HOST) + MAP + R"(
devices/virtual/block/dm-7/dm/suspended perhaps
devices/virtual/block/dm-7/slaves/.. -> /
class/block/sdb/holders/nowhere -> ../../../../../../../../../../../etc
class/block/dm-3 -> dm-3
)");
    std::ofstream(root / "sys/devices/virtual/block/dm-7/dm/name") << std::string(5000, 'n') << "\x80\n";
    const VEXAPI_EXT_LUN lun = LunKnown();
    EXPECT_EQ(lun.Map, std::string(127, 'n'));
    EXPECT_STREQ(lun.MapState, "");
    EXPECT_NE(told.find("block/dm-7/dm/suspended: not understood as the state of the map\n"), std::string::npos)
        << told;
}

TEST_P(LinuxMapsTest, NamespacesThatTheKernelJoins) {
    StartWith(NVME);
    const VEXAPI_EXT_LUN path = LunKnown();
    EXPECT_STREQ(path.Address, "");
    EXPECT_STREQ(path.Device, "nvme3c4n1");
    EXPECT_STREQ(path.State, "connecting");
    EXPECT_STREQ(path.AccessState, "non-optimized");
    EXPECT_STREQ(path.WorldwideId, "uuid.44444444-0000-4000-8000-000000000001");
    EXPECT_STREQ(path.Map, "");
    EXPECT_STREQ(path.MapDevice, "nvme3n1");
    EXPECT_STREQ(path.MapId, "uuid.44444444-0000-4000-8000-000000000001");
    EXPECT_STREQ(path.MapState, "");
    for (const char* const state : {"optimized", "non-optimized", "inaccessible", "persistent-loss", "change"}) {
        Add("class/block/nvme3c4n1/ana_state " + std::string(state));
        EXPECT_STREQ(LunKnown().AccessState, state);
    }
    std::filesystem::remove_all(root / "sys/class/nvme-subsystem");
    EXPECT_STREQ(LunKnown().MapDevice, "");
}

TEST_F(LinuxExtensionsTest, NamespacesThatTheDeviceMapperJoins) {
    Add(NVME);
    Start();
    const VEXAPI_EXT_LUN path = LunKnown(0, 1);
    EXPECT_STREQ(path.Device, "nvme5n1");
    EXPECT_STREQ(path.State, "live");
    EXPECT_STREQ(path.AccessState, "");
    EXPECT_STREQ(path.WorldwideId, "eui.0000000000000005");
    EXPECT_STREQ(path.Map, "mpathn");
    EXPECT_STREQ(path.MapState, "suspended");
}

/// What is in the place of a file is told, and the rest is complete.
TEST_F(LinuxExtensionsTest, FilesThatCannotBeRead) {
    Add(HOST);
    Start();
    for (const char* const file :
         {"class/fc_host/host2/speed", "class/fc_remote_ports/rport-2:0-4/roles", "bus/scsi/devices/2:0:1:0/wwid"}) {
        std::filesystem::remove_all(root / "sys" / file);
        std::filesystem::create_directory(root / "sys" / file);
    }
    Add("class/fc_remote_ports/rport-2:0-4/dev_loss_tmo soon\nbus/scsi/devices/2:0:1:0/access_state -> access_state");
    EXPECT_STREQ(PortKnown().State, "Linkdown");
    EXPECT_STREQ(TargetKnown().State, "Blocked");
    EXPECT_STREQ(LunKnown().State, "running");
    EXPECT_EQ(told, "host2/speed: Is a directory\n"
                    "rport-2:0-4/roles: Is a directory\n"
                    "rport-2:0-4/dev_loss_tmo: not understood as the seconds until a target is given up\n"
                    "2:0:1:0/access_state: Too many levels of symbolic links\n"
                    "2:0:1:0/wwid: Is a directory\n");
}

TEST_F(LinuxExtensionsTest, LinksLeadNowhereElse) {
    std::ofstream(root / "secret") << "outside\n";
    Add(std::string(HOST) + "class/scsi_host/host3/proc_name -> " + (root / "secret").string());
    Add("bus/scsi/devices/2:0:1:0/state -> /../../../../../../../../../../../../etc/hostname");
    Start();
    EXPECT_STREQ(PortKnown(1).Driver, "");
    EXPECT_STREQ(LunKnown().State, "");
}

TEST_F(LinuxExtensionsTest, Counters) {
    Add(HOST);
    Add("class/fc_host/host2/statistics/tx_frames 0x10\nclass/fc_host/host2/statistics/rx_words 7\n"
        "class/fc_host/host2/statistics/lip_count 0xffffffffffffffff\n"
        "class/fc_host/host2/statistics/fpin_cn_credit_stall 0xfffffffffffffffe\n"
        "class/fc_host/host2/statistics/reset_statistics 5\n"
        "class/fc_host/host2/statistics/nos_count none\n"
        "class/fc_host/host2/statistics/name_of_47_characters_is_not_too_long_for_a_rec 1\n"
        "class/fc_host/host2/statistics/name_of_48_characters_is_one_too_long_for_a_reco 2\n"
        "class/fc_remote_ports/rport-2:0-4/statistics/fpin_li 0x3");
    Start();
    using Expected = std::vector<std::pair<std::string, VX_UINT64>>;
    EXPECT_EQ(Counters(), (Expected{{"fpin_cn_credit_stall", 0xfffffffffffffffe},
                                    {"name_of_47_characters_is_not_too_long_for_a_rec", 1},
                                    {"rx_words", 7},
                                    {"tx_frames", 16}}));
    EXPECT_EQ(told, "host2/statistics/nos_count: not understood as the number\n");
    EXPECT_EQ(Counters(&Target()), (Expected{{"fpin_li", 3}}));
    // Room for fewer, and for none.
    VEXAPI_EXT_COUNTER two[2]{};
    VX_UINT32 count = 1;
    EXPECT_EQ(VEXAPI_ExtGetCounters(&Port().PortHandle, nullptr, two, &count), 0u);
    EXPECT_EQ(count, 4u);
    EXPECT_STREQ(two[0].Name, "fpin_cn_credit_stall");
    EXPECT_STREQ(two[1].Name, "");
    count = 0;
    EXPECT_EQ(VEXAPI_ExtGetCounters(&Port().PortHandle, nullptr, nullptr, &count), 0u);
    EXPECT_EQ(count, 4u);
    // Read at the call.
    Add("class/fc_remote_ports/rport-2:0-4/statistics/fpin_li 0x4");
    EXPECT_EQ(Counters(&Target()), (Expected{{"fpin_li", 4}}));
    // As many as a driver may have.
    for (int i = 0; i < 1200; ++i) {
        std::ofstream(root / "sys/class/fc_remote_ports/rport-2:0-4/statistics" / ("c" + std::to_string(i))) << i;
    }
    EXPECT_EQ(Counters(&Target()).size(), 1024u);
}

TEST_F(LinuxExtensionsTest, RecordsOfOtherSizes) {
    Add(HOST);
    Start();
    auto older = Empty<VEXAPI_EXT_PORT>(offsetof(VEXAPI_EXT_PORT, Device));
    std::strcpy(older.Device, "its own");
    EXPECT_EQ(VEXAPI_ExtGetPort(&Port().PortHandle, &older), 0u);
    EXPECT_STREQ(older.KernelName, "host2");
    EXPECT_STREQ(older.Device, "its own");
    EXPECT_EQ(older.Size, offsetof(VEXAPI_EXT_PORT, Device));
    struct {
        VEXAPI_EXT_PORT port = Empty<VEXAPI_EXT_PORT>(sizeof(VEXAPI_EXT_PORT) + 8);
        char more[8] = "unknown";
    } newer;
    EXPECT_EQ(VEXAPI_ExtGetPort(&Port().PortHandle, &newer.port), 0u);
    EXPECT_STREQ(newer.port.SymbolicName, "maker's card, firmware 1.2");
    EXPECT_STREQ(newer.more, "unknown");
}

TEST_F(LinuxExtensionsTest, WhatIsNoneOfTheSession) {
    Add(HOST);
    Start();
    constexpr VX_UINT32 INVALID_HANDLE = 5;
    VX_PORT_HANDLE unknown = Port().PortHandle;
    ++unknown.opaque[4];
    ++unknown.opaque[4]; // host4, which isn't there
    auto port = Empty<VEXAPI_EXT_PORT>();
    auto target = Empty<VEXAPI_EXT_TARGET>();
    auto lun = Empty<VEXAPI_EXT_LUN>();
    VX_UINT32 count = 0;
    EXPECT_EQ(VEXAPI_ExtGetPort(&unknown, &port), INVALID_HANDLE);
    EXPECT_EQ(VEXAPI_ExtGetPort(nullptr, &port), INVALID_HANDLE);
    EXPECT_EQ(VEXAPI_ExtGetTarget(&Port(1).PortHandle, &Target(), &target), INVALID_HANDLE);
    const _tagVEXAPI_SDMTarget copy = Target();
    EXPECT_EQ(VEXAPI_ExtGetTarget(&Port().PortHandle, &copy, &target), INVALID_HANDLE);
    EXPECT_EQ(VEXAPI_ExtGetTarget(&Port().PortHandle, nullptr, &target), INVALID_HANDLE);
    EXPECT_EQ(VEXAPI_ExtGetCounters(&Port().PortHandle, &copy, nullptr, &count), INVALID_HANDLE);
    EXPECT_EQ(VEXAPI_ExtGetCounters(&unknown, nullptr, nullptr, &count), INVALID_HANDLE);
    const auto* const inside = reinterpret_cast<const _tagVEXAPI_SDMLun*>(reinterpret_cast<const char*>(&Lun()) + 8);
    const auto* const before = reinterpret_cast<const _tagVEXAPI_SDMLun*>(reinterpret_cast<std::uintptr_t>(&Lun()) - 8);
    for (const _tagVEXAPI_SDMLun* const other : {static_cast<const _tagVEXAPI_SDMLun*>(nullptr), inside, before,
                                                 static_cast<const _tagVEXAPI_SDMLun*>(Target(0, 1).pLunList)}) {
        EXPECT_EQ(VEXAPI_ExtGetLun(&Port().PortHandle, &Target(), other, &lun), INVALID_HANDLE);
    }
    VEXAPI_Uninitialize();
    EXPECT_EQ(VEXAPI_ExtGetPort(&unknown, &port), INVALID_HANDLE);
}

/* Scope */

TEST_F(LinuxExtensionsTest, PartsAreLeftOut) {
    Add(HOST);
    Add("class/fc_host/host2/node_name 0x20\nclass/fc_host/host2/statistics/invalid_crc_count 0x7\n"
        "class/fc_remote_ports/rport-2:0-4/node_name 0x51\nclass/fc_host/host2/model M\n"
        "bus/scsi/devices/2:0:1:0/vendor MAKER\nclass/block/sdb/size 8");
    const auto show = [&](VX_UINT32 parts) {
        Start(parts);
        std::string shown = Port().WWPN[7] == 2 ? "port" : "";
        shown += VEXAPI_GetAdapterList()->pHead->Model[0] == 'M' ? " adapter" : "";
        shown += Port().WWNN[7] != 0 ? " details" : "";
        shown += Port().InvalidCrcCount != 0 ? " counters" : "";
        const _tagVEXAPI_SDMTarget* const target = Port().pTargetList;
        shown += target != nullptr && target->TargetNumber == 1 ? " target" : "";
        shown += target != nullptr && target->NodeName[7] != 0 ? " details" : "";
        shown += target != nullptr && target->VendorId[0] == 'M' ? " vendor" : "";
        const _tagVEXAPI_SDMLun* const lun = target == nullptr ? nullptr : target->pLunList;
        shown += lun != nullptr ? " lun" : "";
        shown += lun != nullptr && lun->BlockCount == 8 ? " details" : "";
        return shown;
    };
    EXPECT_EQ(show(VEXAPI_EXT_EVERYTHING), "port adapter details counters target details vendor lun details");
    EXPECT_EQ(show(0), "port");
    EXPECT_EQ(show(VEXAPI_EXT_PORTS), "port");
    EXPECT_EQ(show(VEXAPI_EXT_ADAPTERS), "port adapter");
    EXPECT_EQ(show(VEXAPI_EXT_PORT_DETAILS), "port details");
    EXPECT_EQ(show(VEXAPI_EXT_PORT_COUNTERS), "port counters");
    EXPECT_EQ(show(VEXAPI_EXT_TARGETS), "port target");
    EXPECT_EQ(show(VEXAPI_EXT_TARGETS | VEXAPI_EXT_LUNS), "port target lun");
    EXPECT_EQ(show(VEXAPI_EXT_LUNS), "port target lun"); // there is no LUN without its target
    EXPECT_EQ(show(VEXAPI_EXT_LUN_DETAILS), "port target vendor lun details");
    EXPECT_EQ(show(VEXAPI_EXT_TARGET_DETAILS), "port target details vendor lun");
}

TEST_F(LinuxExtensionsTest, AScopeHoldsUntilItIsEnded) {
    Add(HOST);
    Add("class/fc_host/host2/node_name 0x20");
    VEXAPI_EXT_SCOPE scope{};
    scope.Size = sizeof scope;
    EXPECT_EQ(VEXAPI_ExtSetScope(&scope), 0u);
    for (int session = 0; session < 2; ++session) {
        ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
        EXPECT_EQ(Port().WWNN[7], 0);
        VEXAPI_Uninitialize();
    }
    EXPECT_EQ(VEXAPI_ExtSetScope(nullptr), 0u);
    ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
    EXPECT_EQ(Port().WWNN[7], 0x20);
}

TEST_F(LinuxExtensionsTest, ScopesOfOtherSizes) {
    Add(HOST);
    Add("class/fc_host/host2/node_name 0x20");
    // Too short for the parts: refused, so that everything is read. Longer ones end where the caller's knowledge does.
    for (const std::size_t size : {std::size_t{0}, offsetof(VEXAPI_EXT_SCOPE, Parts)}) {
        VEXAPI_EXT_SCOPE scope{};
        scope.Size = static_cast<VX_UINT32>(size);
        EXPECT_NE(VEXAPI_ExtSetScope(&scope), 0u);
        ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
        EXPECT_EQ(Port().WWNN[7], 0x20);
    }
    VEXAPI_EXT_SCOPE scope{};
    scope.Size = offsetof(VEXAPI_EXT_SCOPE, PortName);
    scope.Parts = VEXAPI_EXT_PORT_DETAILS;
    scope.PortName[7] = 1; // not covered, so no limit
    EXPECT_EQ(VEXAPI_ExtSetScope(&scope), 0u);
    ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
    EXPECT_EQ(Port().WWNN[7], 0x20);
}

/* Messages */

TEST_F(LinuxExtensionsTest, MessagesGoToTheHandlerOrToTheOutput) {
    Add(HOST);
    Add("class/fc_host/host2/port_id none");
    Start();
    EXPECT_EQ(told, "host2/port_id: not understood as the port id\n");
    VEXAPI_ExtSetMessageHandler(nullptr, nullptr);
    testing::internal::CaptureStdout();
    ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "vexapi linux: host2/port_id: not understood as the port id\n");
    EXPECT_EQ(told, "host2/port_id: not understood as the port id\n");
}

} // namespace
