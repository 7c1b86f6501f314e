/// @file
/// Paths with every step down, and what ways to a LUN have in common.
#include "Volumes.h"

#include <gtest/gtest.h>

using namespace orfc;

namespace {

/// One path through a port of its own, on which everything works.
struct Path {
    Path() {
        port.state = "online";
        port.linkState = "Online";
        target.port = &port;
        target.state = "online";
        target.kernelState = "Online";
        lun.target = &target;
        lun.state = "running";
        lun.accessState = "active/optimized";
        lun.mapState = "active";
        lun.mapPathState = "active";
    }
    Path(const Path&) = delete;

    Port port;
    Target target;
    Lun lun;
};

TEST(StepsTest, APathThatWorks) {
    EXPECT_EQ(Path().lun.DownAt(), std::nullopt);
}

TEST(StepsTest, NothingIsKnownToBeDown) {
    Path path;
    path.port.linkState = path.target.kernelState = "";
    path.lun.state = path.lun.accessState = path.lun.mapState = path.lun.mapPathState = "";
    EXPECT_EQ(path.lun.DownAt(), std::nullopt);
    path.port.state = path.target.state = "";
    EXPECT_EQ(path.lun.DownAt(), std::nullopt);
}

TEST(StepsTest, Link) {
    Path path;
    path.port.state = "offline";
    EXPECT_EQ(path.lun.DownAt(), Step::LINK);
}

/// The kernel's state of a remote port or NVMe controller; without it the record's.
TEST(StepsTest, RemotePort) {
    Path path;
    for (const char* state : {"Blocked", "Not Present", "Offline", "Linkdown", "Deleted", "Unknown", "connecting",
                              "deleting", "dead", "resetting"}) {
        path.target.kernelState = state;
        EXPECT_EQ(path.lun.DownAt(), Step::REMOTE_PORT) << state;
    }
    for (const char* state : {"Online", "Marginal", "live"}) {
        path.target.kernelState = state;
        path.target.state = "offline"; // the kernel knows better
        EXPECT_EQ(path.lun.DownAt(), std::nullopt) << state;
    }
    path.target.kernelState = "";
    EXPECT_EQ(path.lun.DownAt(), Step::REMOTE_PORT);
    path.target.state = "unconfigured";
    EXPECT_EQ(path.lun.DownAt(), std::nullopt);
}

TEST(StepsTest, Device) {
    Path path;
    for (const char* state : {"created", "cancel", "deleted", "quiesce", "offline", "transport-offline", "blocked",
                              "created-blocked", "connecting"}) {
        path.lun.state = state;
        EXPECT_EQ(path.lun.DownAt(), Step::DEVICE) << state;
    }
    path.lun.state = "live";
    EXPECT_EQ(path.lun.DownAt(), std::nullopt);
}

TEST(StepsTest, Access) {
    Path path;
    for (const char* state : {"unavailable", "offline", "inaccessible", "persistent-loss"}) {
        path.lun.accessState = state;
        EXPECT_EQ(path.lun.DownAt(), Step::ACCESS) << state;
    }
    for (const char* state : {"active/optimized", "active/non-optimized", "standby", "lba-dependent", "transitioning",
                              "optimized", "non-optimized", "change"}) {
        path.lun.accessState = state;
        EXPECT_EQ(path.lun.DownAt(), std::nullopt) << state;
    }
}

TEST(StepsTest, Map) {
    Path path;
    path.lun.mapPathState = "failed";
    EXPECT_EQ(path.lun.DownAt(), Step::MAP);
    path.lun.mapPathState = "active";
    path.lun.mapState = "suspended";
    EXPECT_EQ(path.lun.DownAt(), Step::MAP);
}

/// The first step that is down is the reason for all that follow.
TEST(StepsTest, TheFirstOneCounts) {
    Path path;
    path.lun.mapPathState = "failed";
    EXPECT_EQ(path.lun.DownAt(), Step::MAP);
    path.lun.accessState = "offline";
    EXPECT_EQ(path.lun.DownAt(), Step::ACCESS);
    path.lun.state = "transport-offline";
    EXPECT_EQ(path.lun.DownAt(), Step::DEVICE);
    path.target.kernelState = "Blocked";
    EXPECT_EQ(path.lun.DownAt(), Step::REMOTE_PORT);
    path.port.state = "offline";
    EXPECT_EQ(path.lun.DownAt(), Step::LINK);
}

// ---- The map of another LUN

bool IsForeign(const char* id, const char* mapId) {
    Lun lun;
    lun.worldwideId = id;
    lun.mapId = mapId;
    return lun.IsForeignInMap();
}

TEST(MapsTest, OfTheLun) {
    EXPECT_FALSE(IsForeign("naa.60060e80124a7c00", "mpath-360060e80124a7c00"));
    EXPECT_FALSE(IsForeign("eui.0025385b71b0d8aa", "mpath-20025385b71b0d8aa"));
    EXPECT_FALSE(IsForeign("eui.0025385b71b0d8aa", "mpath-eui.0025385b71b0d8aa")); // a namespace's
}

TEST(MapsTest, OfAnother) {
    EXPECT_TRUE(IsForeign("naa.60060e80124a7c00", "mpath-360060e80124a7c01"));
    EXPECT_TRUE(IsForeign("naa.60060e80124a7c00", "mpath-360060e80124a7c0"));
    EXPECT_TRUE(IsForeign("naa.60060e80124a7c00", "mpath-360060e80124a7c000"));
    EXPECT_TRUE(IsForeign("eui.0025385b71b0d8aa", "mpath-eui.0025385b71b0d8ab"));
}

TEST(MapsTest, WhereThereIsNothingToCompare) {
    EXPECT_FALSE(IsForeign("naa.60060e80124a7c00", ""));
    EXPECT_FALSE(IsForeign("", "mpath-360060e80124a7c01"));
    EXPECT_FALSE(IsForeign("t10.DISK", "mpath-1DISK"));
    EXPECT_FALSE(IsForeign("uuid.44454647", "mpath-uuid.44454648")); // not known how maps are named by it
    EXPECT_FALSE(IsForeign("naa.60060e80124a7c00", "LVM-360060e80124a7c01"));
    EXPECT_FALSE(IsForeign("naa.60060e80124a7c00", "mpath-"));
    EXPECT_FALSE(IsForeign("naa.60060e80124a7c00", "mpath-3"));
}

// ---- Names of LUNs

std::string Designator(const std::string& bytes, bool isNamespace = false) {
    return DesignatorText({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}, isNamespace);
}

TEST(DesignatorTest, NetworkAddressAuthorities) {
    EXPECT_EQ(Designator("\x60\x06\x0e\x80\x12\x4a\x7c\x01\x50\x40\x4a\x7c\x01\x02\x03\x04"),
              "naa.60060e80124a7c0150404a7c01020304");
    EXPECT_EQ(Designator("\x50\x06\x0e\x80\x12\x4a\x7c\x0c"), "naa.50060e80124a7c0c");
    EXPECT_EQ(Designator("\x2f\xff\xff\xff\xff\xff\xff\xff"), "naa.2fffffffffffffff");
    EXPECT_EQ(Designator("\x3f\xff\xff\xff\xff\xff\xff\xff"), "naa.3fffffffffffffff");
    // 6 has sixteen bytes, 5 has eight; 1 and 4 are none.
    EXPECT_EQ(Designator("\x60\x06\x0e\x80\x12\x4a\x7c\x0c"), "0x60060e80124a7c0c");
    EXPECT_EQ(Designator("\x1f\xff\xff\xff\xff\xff\xff\xff"), "0x1fffffffffffffff");
    EXPECT_EQ(Designator("\x4f\xff\xff\xff\xff\xff\xff\xff"), "0x4fffffffffffffff");
}

TEST(DesignatorTest, Namespaces) {
    EXPECT_EQ(Designator("\x50\x06\x0e\x80\x12\x4a\x7c\x0c", true), "eui.50060e80124a7c0c");
    EXPECT_EQ(Designator(std::string(16, '\x44'), true), "eui.44444444444444444444444444444444");
    EXPECT_EQ(Designator("\x80\x06", true), "0x8006");
}

TEST(DesignatorTest, Texts) {
    EXPECT_EQ(Designator("DISK"), "t10.DISK");
    EXPECT_EQ(Designator("BASALT  ARRAY 7   "), "t10.BASALT  ARRAY 7");
    EXPECT_EQ(Designator(std::string("DISK\0\0", 6)), "t10.DISK");
    EXPECT_EQ(Designator("DISK\x1b"), "0x4449534b1b");
    EXPECT_EQ(Designator("\xff"), "0xff");
}

/// A LUN with the bytes of another after a zero byte is another LUN.
TEST(DesignatorTest, TextsDoNotEndWithinTheirBytes) {
    EXPECT_EQ(Designator(std::string("DISK\0"
                                     "1",
                                     6)),
              "0x4449534b0031");
    EXPECT_NE(Designator(std::string("DISK\0"
                                     "1",
                                     6)),
              Designator(std::string("DISK\0"
                                     "2",
                                     6)));
}

TEST(DesignatorTest, NoBytesAndZeroBytesAreNoName) {
    EXPECT_EQ(Designator(""), "");
    for (const std::size_t size : {1u, 8u, 16u, 32u}) {
        EXPECT_EQ(Designator(std::string(size, '\0')), "");
        EXPECT_EQ(Designator(std::string(size, '\0'), true), "");
    }
}

TEST(WwnTest, Texts) {
    EXPECT_EQ(WwnText(0x21000024FF7E2D94), "21:00:00:24:ff:7e:2d:94");
    EXPECT_EQ(WwnText(1), "00:00:00:00:00:00:00:01");
    EXPECT_EQ(WwnText(0), "");
}

// ---- Volumes

/// Paths of LUNs, each with a port and a target of its own.
struct VolumesTest : testing::Test {
    /// A path to a LUN over a physical port and a fabric, which works unless its state says otherwise.
    Lun& Add(const char* id, unsigned physicalPort, Wwn fabric, const char* state = "running") {
        Port& port = mHost.ports.emplace_back();
        port.physicalPort = physicalPort;
        port.fabricName = fabric;
        port.state = "online";
        Target& target = mHost.targets.emplace_back();
        target.port = &port;
        Lun& lun = mHost.luns.emplace_back();
        lun.target = &target;
        lun.worldwideId = id;
        lun.identifier = "LUN"; // as that of others
        lun.state = state;
        return lun;
    }
    Redundancy JudgeOnly() {
        const std::vector<Volume> volumes = VolumesOf(mHost);
        EXPECT_EQ(volumes.size(), 1u);
        return volumes.front().Judge();
    }

    static constexpr Wwn A = 0x10000000000000AA, B = 0x10000000000000BB;
    Host mHost;
};

TEST_F(VolumesTest, WaysByWorldwideIdInTheOrderOfTheFirst) {
    const Lun& first = Add("naa.2", 1, A);
    Add("naa.1", 1, A);
    const Lun& third = Add("naa.2", 2, B, "offline");
    const std::vector<Volume> volumes = VolumesOf(mHost);
    ASSERT_EQ(volumes.size(), 2u);
    EXPECT_EQ(volumes[0].worldwideId, "naa.2");
    EXPECT_EQ(volumes[0].ways, (std::vector<const Lun*>{&first, &third}));
    EXPECT_EQ(volumes[0].WaysUp(), 1u);
    EXPECT_EQ(volumes[1].worldwideId, "naa.1");
    EXPECT_TRUE(VolumesOf(Host()).empty());
}

/// Nobody knows whether two LUNs without a worldwide id are the same, even if all else is equal.
TEST_F(VolumesTest, LunsWithoutAWorldwideIdAreNeverTheSame) {
    Add("", 1, A);
    Add("", 2, B);
    const std::vector<Volume> volumes = VolumesOf(mHost);
    ASSERT_EQ(volumes.size(), 2u);
    EXPECT_EQ(volumes[0].Judge(), Redundancy::ONE_PATH);
}

TEST_F(VolumesTest, Redundant) {
    Add("naa.1", 1, A);
    Add("naa.1", 2, B);
    EXPECT_EQ(JudgeOnly(), Redundancy::REDUNDANT);
}

TEST_F(VolumesTest, NoPath) {
    Add("naa.1", 1, A, "offline");
    Add("naa.1", 2, B, "blocked");
    EXPECT_EQ(JudgeOnly(), Redundancy::NO_PATH);
}

TEST_F(VolumesTest, OnePathOfOne) {
    Add("naa.1", 1, A);
    EXPECT_EQ(JudgeOnly(), Redundancy::ONE_PATH);
}

TEST_F(VolumesTest, OnePathLeft) {
    Add("naa.1", 1, A);
    Add("naa.1", 2, B, "offline");
    Add("naa.1", 3, B, "offline");
    EXPECT_EQ(JudgeOnly(), Redundancy::ONE_PATH);
}

/// A virtual port shares the link of its physical one, so two WWPNs aren't two ports.
TEST_F(VolumesTest, OnePort) {
    Add("naa.1", 1, A);
    Add("naa.1", 1, A);
    EXPECT_EQ(JudgeOnly(), Redundancy::ONE_PORT);
    Add("naa.1", 2, B, "offline");
    EXPECT_EQ(JudgeOnly(), Redundancy::ONE_PORT); // of those that work
}

TEST_F(VolumesTest, OnePortInTwoFabrics) {
    Add("naa.1", 1, A);
    Add("naa.1", 1, B);
    EXPECT_EQ(JudgeOnly(), Redundancy::ONE_PORT);
}

TEST_F(VolumesTest, OneFabric) {
    Add("naa.1", 1, A);
    Add("naa.1", 2, A);
    Add("naa.1", 3, B, "offline");
    EXPECT_EQ(JudgeOnly(), Redundancy::ONE_FABRIC);
}

/// Ports without a fabric are connected to the storage itself.
TEST_F(VolumesTest, NoFabric) {
    Add("naa.1", 1, 0);
    Add("naa.1", 2, 0);
    EXPECT_EQ(JudgeOnly(), Redundancy::REDUNDANT);
    Add("naa.1", 3, A);
    EXPECT_EQ(JudgeOnly(), Redundancy::REDUNDANT);
}

} // namespace
