#pragma once

#include "vexapi.h"

#include <cstddef>

/// The memory of a transceiver as a bounded view: a byte at or behind its end reads as 0. In the SFP family bytes 0
/// to 255 are address A0h (SFF-8472) and bytes 256 to 511 address A2h; in the QSFP family bytes 0 to 255 are the
/// lower page and upper page 00h (SFF-8636).
class ModuleImage {
public:
    constexpr ModuleImage(const VX_UINT8* bytes, VX_UINT16 size) : mBytes(bytes), mSize(size) {}
    explicit constexpr ModuleImage(const _VEXAPI_SFP_DATA& data) : ModuleImage(data.Data, sizeof data.Data) {}

    constexpr VX_UINT8 operator[](std::size_t offset) const { return offset < mSize ? mBytes[offset] : VX_UINT8{0}; }
    constexpr VX_UINT16 Size() const { return mSize; }

    /// Byte 0, the identifier: 12 QSFP, 13 QSFP+, 17 QSFP28, 18 CXP2. Every other value is the SFP family.
    constexpr bool IsQsfp() const {
        const VX_UINT8 identifier = (*this)[0];
        return identifier == 12 || identifier == 13 || identifier == 17 || identifier == 18;
    }
    /// Where the identification of the module begins.
    constexpr VX_UINT16 Base() const { return IsQsfp() ? 128 : 0; }

private:
    const VX_UINT8* mBytes;
    VX_UINT16 mSize;
};
