/// @file
/// Objects by name: every spelling, beginnings, what is ambiguous, and what was meant.
#include "Names.h"
#include "Failure.h"

#include <gtest/gtest.h>

using namespace orfc;

namespace {

/// Two adapters; three ports, the first two of the first adapter; a storage port that two of them see, with a LUN that
/// is in a map; a namespace; a LUN without a name.
struct NamesTest : testing::Test {
    NamesTest() {
        AddAdapter("ORV2742", "RFH1836M74420");
        AddAdapter("ORV2690", "RFG1617K52096");
        const Port& first = AddPort(0, 0x21000024ff7e2d94, 0x20000024ff7e2d94, "host2");
        const Port& second = AddPort(0, 0x21000024ff7e2d95, 0x20000024ff7e2d95, "host20");
        AddPort(1, 0x210000e08b13c05e, 0x200000e08b13c05e, "host3");
        const Target& array = AddTarget(first, 0x50060e80124a7c10, "rport-2:0-1");
        const Target& again = AddTarget(second, 0x50060e80124a7c10, "rport-20:0-1");
        const Target& nvme = AddTarget(first, 0x500a0981a1c34010, "rport-2:0-2");
        AddLun(array, 5, "naa.60060e80124a7c0050404a7c00000005", "2:0:1:5", "sdb", "mpatha", "dm-0");
        AddLun(again, 5, "naa.60060e80124a7c0050404a7c00000005", "20:0:1:5", "sdc", "mpatha", "dm-0");
        AddLun(nvme, 1, "eui.6b1f4f0e9c3a51b7", "", "nvme0c0n1", "", "nvme0n1");
        AddLun(again, 6, "", "", "", "", "");
    }

    void AddAdapter(const char* model, const char* serial) {
        Adapter& adapter = mHost.adapters.emplace_back();
        adapter.model = model;
        adapter.serialNumber = serial;
        adapter.identifier = std::string("Adapter_") + model + "_" + serial;
    }
    Port& AddPort(std::size_t adapter, Wwn portName, Wwn nodeName, const char* kernelName) {
        Port& port = mHost.ports.emplace_back();
        port.adapter = &mHost.adapters[adapter];
        port.portName = portName;
        port.nodeName = nodeName;
        port.identifier = "FC_" + WwnText(portName);
        port.kernelName = kernelName;
        return port;
    }
    Target& AddTarget(const Port& port, Wwn portName, const char* kernelName) {
        Target& target = mHost.targets.emplace_back();
        target.port = &port;
        target.portName = portName;
        target.nodeName = portName & ~Wwn{0xFF};
        target.identifier = port.identifier + "_Target_" + WwnText(portName);
        target.kernelName = kernelName;
        return target;
    }
    void AddLun(const Target& target, unsigned number, const char* id, const char* address, const char* device,
                const char* map, const char* mapDevice) {
        Lun& lun = mHost.luns.emplace_back();
        lun.target = &target;
        lun.number = number;
        lun.identifier = target.identifier + "_LUN_" + std::to_string(number);
        lun.worldwideId = id;
        lun.address = address;
        lun.device = device;
        lun.map = map;
        lun.mapDevice = mapDevice;
        lun.mapId = *map != '\0' ? "mpath-360060e80124a7c0050404a7c00000005" : "";
    }

    /// "a0 p1 t0 t1 l3": what a name denotes, by number.
    std::string Found(std::string_view name) { return Shown(Find(mHost, name)); }
    std::string Related(std::string_view name) { return Shown(WithRelatives(mHost, Find(mHost, name))); }
    std::string Refused(std::string_view name) {
        try {
            return "found " + Found(name);
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.status, Failure::FAILED);
            return failure.what();
        }
    }
    std::string Shown(const Selection& selection) const {
        std::string text;
        const auto add = [&](char kind, const auto& all, const auto& chosen) {
            for (std::size_t at = 0; at < all.size(); ++at) {
                if (chosen.contains(&all[at])) {
                    text += (text.empty() ? "" : " ") + std::string(1, kind) + std::to_string(at);
                }
            }
        };
        add('a', mHost.adapters, selection.adapters);
        add('p', mHost.ports, selection.ports);
        add('t', mHost.targets, selection.targets);
        add('l', mHost.luns, selection.luns);
        return text;
    }

    Host mHost;
};

TEST_F(NamesTest, PortsInEverySpelling) {
    for (const char* name :
         {"FC_21:00:00:24:ff:7e:2d:94", "fc_21:00:00:24:FF:7E:2D:94", "21:00:00:24:ff:7e:2d:94",
          "21:00:00:24:FF:7E:2D:94", "21000024ff7e2d94", "21000024FF7E2D94", "0x21000024ff7e2d94", "0X21000024FF7E2D94",
          "pn-21:00:00:24:ff:7e:2d:94", "pn-0x21000024ff7e2d94", "PN-0x21000024FF7E2D94", "naa.21000024ff7e2d94",
          "nn-0x20000024ff7e2d94:pn-0x21000024ff7e2d94", // both names, as NVMe has them
          "20:00:00:24:ff:7e:2d:94", "nn-0x20000024ff7e2d94", "host2", "HOST2"}) {
        EXPECT_EQ(Found(name), "p0") << name;
    }
    EXPECT_EQ(Found("host20"), "p1");
}

TEST_F(NamesTest, Adapters) {
    for (const char* name :
         {"Adapter_ORV2742_RFH1836M74420", "adapter_orv2742_rfh1836m74420", "RFH1836M74420", "rfh1836m74420"}) {
        EXPECT_EQ(Found(name), "a0") << name;
    }
}

/// A storage port that two ports see is two targets.
TEST_F(NamesTest, Targets) {
    EXPECT_EQ(Found("FC_21:00:00:24:ff:7e:2d:95_Target_50:06:0e:80:12:4a:7c:10"), "t1");
    EXPECT_EQ(Found("rport-20:0-1"), "t1");
    for (const char* name : {"50:06:0e:80:12:4a:7c:10", "50060E80124A7C10", "0x50060e80124a7c10",
                             "eui.50060e80124a7c10", "50:06:0e:80:12:4a:7c:00" /* the node */}) {
        EXPECT_EQ(Found(name), "t0 t1") << name;
    }
}

/// A LUN is one for each path, but for the names of a path.
TEST_F(NamesTest, LunsAndNamespaces) {
    for (const char* name :
         {"naa.60060e80124a7c0050404a7c00000005", "NAA.60060E80124A7C0050404A7C00000005",
          "60060e80124a7c0050404a7c00000005", "0x60060e80124a7c0050404a7c00000005",
          "wwn-0x60060e80124a7c0050404a7c00000005", "/dev/disk/by-id/wwn-0x60060e80124a7c0050404a7c00000005",
          "60:06:0e:80:12:4a:7c:00:50:40:4a:7c:00:00:00:05", "mpatha", "/dev/mapper/mpatha", "dm-0", "/dev/dm-0",
          "mpath-360060e80124a7c0050404a7c00000005"}) {
        EXPECT_EQ(Found(name), "l0 l1") << name;
    }
    for (const char* name :
         {"sdb", "/dev/sdb", "SDB", "2:0:1:5", "FC_21:00:00:24:ff:7e:2d:94_Target_50:06:0e:80:12:4a:7c:10_LUN_5"}) {
        EXPECT_EQ(Found(name), "l0") << name;
    }
    for (const char* name : {"eui.6b1f4f0e9c3a51b7", "6b1f4f0e9c3a51b7", "nvme0n1", "/dev/nvme0n1", "nvme0c0n1"}) {
        EXPECT_EQ(Found(name), "l2") << name;
    }
}

TEST_F(NamesTest, BeginningsOfOneName) {
    EXPECT_EQ(Found("21:00:00:e0"), "p2");
    EXPECT_EQ(Found("210000E"), "p2");
    EXPECT_EQ(Found("0x210000e"), "p2");
    EXPECT_EQ(Found("21:00:00:e"), "p2"); // half a pair
    EXPECT_EQ(Found("Adapter_ORV26"), "a1");
    EXPECT_EQ(Found("RFG"), "a1");
    EXPECT_EQ(Found("nvme0n"), "l2");
    EXPECT_EQ(Found("6006"), "l0 l1"); // of one LUN, in its two spellings
    EXPECT_EQ(Found("naa.6006"), "l0 l1");
    EXPECT_EQ(Found("mpath"), "l0 l1"); // of the name and of the id of one map
    EXPECT_EQ(Found("20:0:"), "l1");
}

/// The identifier of a port is the beginning of those of its targets and LUNs: the port is meant.
TEST_F(NamesTest, BeginningsMeanWhatIsOnTop) {
    EXPECT_EQ(Found("FC_21:00:00:24:ff:7e:2d:95"), "p1");
    EXPECT_EQ(Found("FC_21:00:00:24:ff:7e:2d:95_T"), "t1");
    EXPECT_EQ(Found("FC_21:00:00:e"), "p2");
}

/// What is exact is never a beginning.
TEST_F(NamesTest, WholeNamesComeFirst) {
    EXPECT_EQ(Found("host2"), "p0");
    mHost.luns[1].device = "sdba";
    EXPECT_EQ(Found("sdb"), "l0");
}

TEST_F(NamesTest, WhatIsAmbiguous) {
    EXPECT_EQ(Refused("21:00:00:24:ff:7e:2d:9"),
              "21:00:00:24:ff:7e:2d:9 is ambiguous: 21:00:00:24:ff:7e:2d:94, 21:00:00:24:ff:7e:2d:95");
    EXPECT_EQ(Refused("host"), "host is ambiguous: host2, host20, host3");
    EXPECT_EQ(Refused("Adapter"), "Adapter is ambiguous: Adapter_ORV2690_RFG1617K52096, Adapter_ORV2742_RFH1836M74420");
    EXPECT_EQ(Refused("FC_"), "FC_ is ambiguous: FC_21:00:00:24:ff:7e:2d:94, "
                              "FC_21:00:00:24:ff:7e:2d:94_Target_50:06:0e:80:12:4a:7c:10, "
                              "FC_21:00:00:24:ff:7e:2d:94_Target_50:06:0e:80:12:4a:7c:10_LUN_5 and 7 more");
}

/// An address of the kernel isn't read as the beginning of a World Wide Name: "2:0:0:1" isn't "20:01".
TEST_F(NamesTest, AddressesAreNoNames) {
    AddPort(1, 0x2001000000000001, 0x2001000000000001, "host9");
    EXPECT_EQ(Found("2001"), "p3");
    EXPECT_EQ(Refused("2:0:0:1"), "nothing is named 2:0:0:1; did you mean 2:0:1:5 or 20:0:1:5?");
    EXPECT_EQ(Refused("20:01:0:1").substr(0, 26), "nothing is named 20:01:0:1");
}

TEST_F(NamesTest, NearestNames) {
    EXPECT_EQ(Refused("host4"), "nothing is named host4; did you mean host2 or host3 or host20?");
    EXPECT_EQ(Refused("/dev/sdx"), "nothing is named /dev/sdx; did you mean sdb or sdc?");
    EXPECT_EQ(Refused("mpathb"), "nothing is named mpathb; did you mean mpatha?");
    EXPECT_EQ(Refused("210000240f7e2d94"), "nothing is named 210000240f7e2d94; did you mean 21:00:00:24:ff:7e:2d:94 or "
                                           "20:00:00:24:ff:7e:2d:94 or 21:00:00:24:ff:7e:2d:95?");
    EXPECT_EQ(Refused("nothing at all like it"), "nothing is named nothing at all like it");
    EXPECT_EQ(Refused(std::string(65536, 'f')).size(), 65536 + std::string("nothing is named ").size());
}

TEST_F(NamesTest, WhatIsNoName) {
    for (const char* name : {"", "0x", "pn-", ":", "::", "/dev/", "nn-0x:pn-0x", "wwn-"}) {
        EXPECT_TRUE(Refused(name).starts_with("nothing is named ")) << name << Refused(name);
    }
}

/// Names that the library doesn't know aren't a name that everything has.
TEST_F(NamesTest, UnknownNamesMatchNothing) {
    Host host;
    Adapter& adapter = host.adapters.emplace_back();
    Port& port = host.ports.emplace_back();
    port.adapter = &adapter;
    EXPECT_THROW(Find(host, "0"), Failure);
    EXPECT_THROW(Find(host, "00:00:00:00:00:00:00:00"), Failure);
    EXPECT_THROW(Find(Host(), "host2"), Failure);
}

TEST_F(NamesTest, Relatives) {
    EXPECT_EQ(Related("RFH1836M74420"), "a0 p0 p1 t0 t1 t2 l0 l1 l2 l3");
    EXPECT_EQ(Related("host2"), "a0 p0 t0 t2 l0 l2");
    EXPECT_EQ(Related("host3"), "a1 p2");
    EXPECT_EQ(Related("rport-20:0-1"), "a0 p1 t1 l1 l3");
    EXPECT_EQ(Related("sdb"), "a0 p0 t0 l0"); // and not the LUNs beside it
    EXPECT_EQ(Related("mpatha"), "a0 p0 p1 t0 t1 l0 l1");
}

} // namespace
