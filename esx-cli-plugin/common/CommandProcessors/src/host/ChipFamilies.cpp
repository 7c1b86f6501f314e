#include "ChipFamilies.h"

#include <initializer_list>

namespace {

constexpr VX_UINT16 VENDOR_ID = 0x1D0C;

/// Ids in a row of a family's table; 0 matches any id.
struct ChipIds {
    VX_UINT16 device;
    VX_UINT16 subVendor;
    VX_UINT16 subDevice;
};

bool IsOneOf(const __CHIPPROPERTY& chip, std::initializer_list<ChipIds> family) {
    if (chip.VendorId != VENDOR_ID) {
        return false;
    }
    const auto matches = [](VX_UINT16 wanted, VX_UINT16 id) { return wanted == 0 || wanted == id; };
    for (const ChipIds& row : family) {
        if (matches(row.device, chip.DeviceId) && matches(row.subVendor, chip.SubVendorId) &&
            matches(row.subDevice, chip.SubDeviceId)) {
            return true;
        }
    }
    return false;
}

} // namespace

bool Is4GAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2422, 0, 0}, {0x2432, 0, 0}, {0x5422, 0, 0}, {0x5432, 0, 0}});
}

bool Is8GAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2532, 0, 0}, {0x2533, 0, 0}});
}

bool Is10GAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x8001, 0, 0}, {0x8021, 0, 0}, {0x8031, 0, 0}, {0x8831, 0, 0}});
}

bool IsBirchAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2081, 0, 0},
                          {0x2089, 0, 0},
                          {0x2181, 0, 0},
                          {0x2189, 0, 0},
                          {0x2281, 0, 0},
                          {0x2289, 0, 0},
                          {0x2381, 0, 0},
                          {0x2389, 0, 0},
                          {0x2881, 0, 0},
                          {0x2889, 0, 0},
                          {0x2981, 0, 0},
                          {0x2989, 0, 0}});
}

bool IsRowanAdapter(__CHIPPROPERTY chip) {
    return IsRowanFCAdapter(chip) || IsRowanCNAAdapter(chip);
}

bool IsRowanFCAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2031, 0, 0}, {0x2831, 0, 0}});
}

bool IsRowanCNAAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x8031, 0, 0}, {0x8831, 0, 0}});
}

bool IsHazelAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x8001, 0, 0}});
}

bool IsWillowAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x8021, 0, 0}});
}

bool IsLarchAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2261, 0, 0}, {0x2A61, 0, 0}, {0x2B61, 0, 0}});
}

bool IsAlderAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2071, 0, 0}, {0x2271, 0, 0}, {0x2871, 0, 0}, {0x2971, 0, 0}});
}

bool IsDellAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0, 0x1028, 0},
                          {0, 0, 0x15B},
                          {0, 0, 0x167},
                          {0, 0, 0x191},
                          {0, 0, 0x192},
                          {0, 0, 0x26F},
                          {0, 0, 0x290},
                          {0, 0, 0x2A3},
                          {0, 0, 0x2A4},
                          {0, 0, 0x2A7},
                          {0, 0, 0x2A8},
                          {0, 0, 0x2AB},
                          {0, 0, 0x2AC},
                          {0, 0, 0x2B5},
                          {0, 0, 0x2B8},
                          {0, 0, 0x2B9},
                          {0, 0, 0x2F2},
                          {0, 0, 0x2F3}});
}

bool Is64GAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2081, 0, 0x2E1},
                          {0x2281, 0, 0x2E2},
                          {0x2281, 0, 0x2EE},
                          {0x2281, 0, 0x2F8},
                          {0x2281, 0, 0x310},
                          {0x2281, 0, 0x311},
                          {0x2281, 0, 0x369},
                          {0x2281, 0, 0x36A},
                          {0x2089, 0, 0x2E8},
                          {0x2289, 0, 0x2E9},
                          {0x2289, 0, 0x2EF},
                          {0x2289, 0, 0x6C5},
                          {0x2881, 0, 0x30D},
                          {0x2889, 0, 0x312}});
}

bool IsEncryptionAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2089, 0x1D0C, 0x2E8},
                          {0x2089, 0x1D0C, 0x2EA},
                          {0x2089, 0x1D0C, 0x2EC},
                          {0x2089, 0x1D0C, 0x308},
                          {0x2289, 0x1D0C, 0x2E9},
                          {0x2289, 0x1D0C, 0x2EB},
                          {0x2289, 0x1D0C, 0x2ED},
                          {0x2289, 0x1D0C, 0x2EF},
                          {0x2289, 0x1D0C, 0x2F1},
                          {0x2089, 0x1014, 0x6C6},
                          {0x2289, 0x1014, 0x6C5},
                          {0x2889, 0x1D0C, 0x312}});
}

bool Is16GN4FCOnlyAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2031, 0x1D0C, 0x255}, {0x2031, 0x103C, 0x1939}});
}

bool IsCedarAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2031, 0x103C, 0x8002}});
}

bool IsMapleAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2031, 0x103C, 0x1939}});
}

bool IsMezz32GAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2261, 0x1D0C, 0x2B9}});
}

bool IsMezz16GAdapter(__CHIPPROPERTY chip) {
    return IsOneOf(chip, {{0x2261, 0x1D0C, 0x2B8}});
}

bool IsUefiCapableAdapter(__CHIPPROPERTY chip) {
    return IsLarchAdapter(chip) || IsAlderAdapter(chip) || IsBirchAdapter(chip);
}

bool HasFabricAssignment(__CHIPPROPERTY chip) {
    return !Is4GAdapter(chip) && !Is8GAdapter(chip) && !Is10GAdapter(chip);
}
