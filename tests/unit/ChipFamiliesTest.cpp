#include "ChipFamilies.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using Predicate = bool (*)(__CHIPPROPERTY);
constexpr VX_UINT16 OUR_VENDOR = 0x1D0C;

__CHIPPROPERTY Chip(int device, int subVendor = OUR_VENDOR, int subDevice = 1, int vendor = OUR_VENDOR) {
    return {.VendorId = static_cast<VX_UINT16>(vendor),
            .DeviceId = static_cast<VX_UINT16>(device),
            .SubVendorId = static_cast<VX_UINT16>(subVendor),
            .SubDeviceId = static_cast<VX_UINT16>(subDevice),
            .PciMaxLink = 0,
            .PciNegotiatedLink = 0};
}

struct DeviceFamily {
    const char* name;
    Predicate predicate;
    std::set<int> devices;
};

/// The families determined by a device id.
const DeviceFamily DEVICE_FAMILIES[] = {
    {"4G", Is4GAdapter, {0x2422, 0x2432, 0x5422, 0x5432}},
    {"8G", Is8GAdapter, {0x2532, 0x2533}},
    {"10G", Is10GAdapter, {0x8001, 0x8021, 0x8031, 0x8831}},
    {"Birch",
     IsBirchAdapter,
     {0x2081, 0x2089, 0x2181, 0x2189, 0x2281, 0x2289, 0x2381, 0x2389, 0x2881, 0x2889, 0x2981, 0x2989}},
    {"Rowan", IsRowanAdapter, {0x2031, 0x2831, 0x8031, 0x8831}},
    {"Rowan FC", IsRowanFCAdapter, {0x2031, 0x2831}},
    {"Rowan CNA", IsRowanCNAAdapter, {0x8031, 0x8831}},
    {"Hazel", IsHazelAdapter, {0x8001}},
    {"Willow", IsWillowAdapter, {0x8021}},
    {"Larch", IsLarchAdapter, {0x2261, 0x2A61, 0x2B61}},
    {"Alder", IsAlderAdapter, {0x2071, 0x2271, 0x2871, 0x2971}},
    // Larch, Alder and Birch together.
    {"UEFI-capable",
     IsUefiCapableAdapter,
     {0x2261, 0x2A61, 0x2B61, 0x2071, 0x2271, 0x2871, 0x2971, 0x2081, 0x2089, 0x2181, 0x2189, 0x2281, 0x2289, 0x2381,
      0x2389, 0x2881, 0x2889, 0x2981, 0x2989}},
};

TEST(ChipFamiliesTest, AreDecidedByTheDeviceId) {
    for (const DeviceFamily& family : DEVICE_FAMILIES) {
        for (int device = 0; device <= 0xFFFF; ++device) {
            ASSERT_EQ(family.predicate(Chip(device)), family.devices.contains(device))
                << family.name << " 0x" << std::hex << device;
        }
    }
}

TEST(ChipFamiliesTest, TakeAnySubsystem) {
    for (const DeviceFamily& family : DEVICE_FAMILIES) {
        for (const int device : family.devices) {
            for (const int sub : {0, 0x1028, 0x103C, 0x1D0C, 0xFFFF}) {
                EXPECT_TRUE(family.predicate(Chip(device, sub, sub))) << family.name << " 0x" << std::hex << device;
            }
        }
    }
}

constexpr int ANY = -1;

struct SubsystemRow {
    int device;
    int subVendor;
    std::set<int> subDevices;
};

struct SubsystemFamily {
    const char* name;
    Predicate predicate;
    std::vector<SubsystemRow> rows;
};

/// The families determined by subsystem ids too.
const SubsystemFamily SUBSYSTEM_FAMILIES[] = {
    {"64G",
     Is64GAdapter,
     {{0x2081, ANY, {0x2E1}},
      {0x2281, ANY, {0x2E2, 0x2EE, 0x2F8, 0x310, 0x311, 0x369, 0x36A}},
      {0x2089, ANY, {0x2E8}},
      {0x2289, ANY, {0x2E9, 0x2EF, 0x6C5}},
      {0x2881, ANY, {0x30D}},
      {0x2889, ANY, {0x312}}}},
    {"Encryption",
     IsEncryptionAdapter,
     {{0x2089, 0x1D0C, {0x2E8, 0x2EA, 0x2EC, 0x308}},
      {0x2289, 0x1D0C, {0x2E9, 0x2EB, 0x2ED, 0x2EF, 0x2F1}},
      {0x2089, 0x1014, {0x6C6}},
      {0x2289, 0x1014, {0x6C5}},
      {0x2889, 0x1D0C, {0x312}}}},
    {"16G N4 FC only", Is16GN4FCOnlyAdapter, {{0x2031, 0x1D0C, {0x255}}, {0x2031, 0x103C, {0x1939}}}},
    {"Cedar", IsCedarAdapter, {{0x2031, 0x103C, {0x8002}}}},
    {"Maple", IsMapleAdapter, {{0x2031, 0x103C, {0x1939}}}},
    {"Mezzanine 32G", IsMezz32GAdapter, {{0x2261, 0x1D0C, {0x2B9}}}},
    {"Mezzanine 16G", IsMezz16GAdapter, {{0x2261, 0x1D0C, {0x2B8}}}},
};

bool IsListed(const SubsystemFamily& family, int device, int subVendor, int subDevice) {
    for (const SubsystemRow& row : family.rows) {
        if (row.device == device && (row.subVendor == ANY || row.subVendor == subVendor) &&
            row.subDevices.contains(subDevice)) {
            return true;
        }
    }
    return false;
}

/// Each id with its neighbours.
std::set<int> WithNeighbours(const std::set<int>& ids) {
    std::set<int> all;
    for (const int id : ids) {
        all.insert({id - 1, id, id + 1});
    }
    return all;
}

TEST(ChipFamiliesTest, AreDecidedBySubsystemIdsToo) {
    const std::set<int> devices = WithNeighbours({0x2031, 0x2081, 0x2089, 0x2261, 0x2281, 0x2289, 0x2881, 0x2889});
    const std::set<int> subVendors = WithNeighbours({0x1014, 0x1028, 0x103C, 0x1D0C});
    std::set<int> subDevices = WithNeighbours({0x1939, 0x8002});
    subDevices.insert({0, 0xFFFF});
    for (int id = 0x100; id < 0x800; ++id) {
        subDevices.insert(id);
    }
    for (const SubsystemFamily& family : SUBSYSTEM_FAMILIES) {
        for (const int device : devices) {
            for (const int subVendor : subVendors) {
                for (const int subDevice : subDevices) {
                    ASSERT_EQ(family.predicate(Chip(device, subVendor, subDevice)),
                              IsListed(family, device, subVendor, subDevice))
                        << family.name << std::hex << " 0x" << device << " 0x" << subVendor << " 0x" << subDevice;
                }
            }
        }
    }
}

TEST(ChipFamiliesTest, TakeASubsystemForNoOtherDevice) {
    for (const SubsystemFamily& family : SUBSYSTEM_FAMILIES) {
        for (const SubsystemRow& row : family.rows) {
            for (int device = 0; device <= 0xFFFF; ++device) {
                const int subVendor = row.subVendor == ANY ? 0x1028 : row.subVendor;
                const int subDevice = *row.subDevices.begin();
                ASSERT_EQ(family.predicate(Chip(device, subVendor, subDevice)),
                          IsListed(family, device, subVendor, subDevice))
                    << family.name << " 0x" << std::hex << device;
            }
        }
    }
}

TEST(ChipFamiliesTest, KnowDellByTheSubVendorOrTheSubDevice) {
    const std::set<int> subDevices = {0x15B, 0x167, 0x191, 0x192, 0x26F, 0x290, 0x2A3, 0x2A4, 0x2A7,
                                      0x2A8, 0x2AB, 0x2AC, 0x2B5, 0x2B8, 0x2B9, 0x2F2, 0x2F3};
    for (int subDevice = 0; subDevice <= 0xFFFF; ++subDevice) {
        for (const int device : {0, 0x2261, 0xFFFF}) {
            ASSERT_TRUE(IsDellAdapter(Chip(device, 0x1028, subDevice)));
            for (const int subVendor : {0, 0x1027, 0x1029, 0x1D0C}) {
                ASSERT_EQ(IsDellAdapter(Chip(device, subVendor, subDevice)), subDevices.contains(subDevice))
                    << "0x" << std::hex << subDevice;
            }
        }
    }
}

/// Other vendors belong to no family, whatever the other ids.
void ExpectOurVendorOnly(const char* name, Predicate predicate, int device, int subVendor, int subDevice) {
    for (int vendor = 0; vendor <= 0xFFFF; ++vendor) {
        ASSERT_EQ(predicate(Chip(device, subVendor, subDevice, vendor)), vendor == OUR_VENDOR)
            << name << " vendor 0x" << std::hex << vendor;
    }
}

TEST(ChipFamiliesTest, HoldChipsOfOneVendorOnly) {
    for (const DeviceFamily& family : DEVICE_FAMILIES) {
        ExpectOurVendorOnly(family.name, family.predicate, *family.devices.begin(), OUR_VENDOR, 1);
        for (const int device : family.devices) {
            EXPECT_FALSE(family.predicate(Chip(device, OUR_VENDOR, 1, 0x1028))) << family.name;
        }
    }
    for (const SubsystemFamily& family : SUBSYSTEM_FAMILIES) {
        const SubsystemRow& row = family.rows.front();
        ExpectOurVendorOnly(family.name, family.predicate, row.device, row.subVendor == ANY ? 0 : row.subVendor,
                            *row.subDevices.begin());
    }
    ExpectOurVendorOnly("Dell", IsDellAdapter, 0x2261, 0x1028, 0);
    ExpectOurVendorOnly("Dell", IsDellAdapter, 0x2261, 0, 0x15B);
}

TEST(ChipFamiliesTest, OverlapWhereTheyMust) {
    EXPECT_TRUE(Is10GAdapter(Chip(0x8031)) && IsRowanAdapter(Chip(0x8031)));
    EXPECT_TRUE(Is10GAdapter(Chip(0x8021)) && IsWillowAdapter(Chip(0x8021)));
    const __CHIPPROPERTY maple = Chip(0x2031, 0x103C, 0x1939);
    EXPECT_TRUE(IsMapleAdapter(maple) && Is16GN4FCOnlyAdapter(maple) && IsRowanFCAdapter(maple));
    const __CHIPPROPERTY mezzanine = Chip(0x2261, 0x1D0C, 0x2B9);
    EXPECT_TRUE(IsMezz32GAdapter(mezzanine) && IsLarchAdapter(mezzanine) && IsDellAdapter(mezzanine));
}

} // namespace
