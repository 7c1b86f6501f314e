#pragma once

#include "Bytes.h"
#include "vexapi.h"

/// Where address A2h begins in the image of a module of the SFP family.
inline constexpr VX_UINT16 A2 = 256;

/// The memory of a transceiver: a byte outside reads as 0. In the SFP family bytes 0 to 255 are address A0h (SFF-8472)
/// and bytes 256 to 511 address A2h; in the QSFP family bytes 0 to 255 are the lower page and upper page 00h
/// (SFF-8636).
class ModuleImage : public decoders::Bytes {
public:
    explicit constexpr ModuleImage(decoders::Bytes bytes) : Bytes(bytes) {}
    explicit constexpr ModuleImage(const _VEXAPI_SFP_DATA& data) : Bytes(data.Data, sizeof data.Data) {}

    /// Byte 0, the identifier: 12 QSFP, 13 QSFP+, 17 QSFP28, 18 CXP2. Every other value is the SFP family. By the
    /// standards a CXP2 is in neither family, and only 2 and 3 are SFP: see `decoders::FamilyOf`.
    constexpr bool IsQsfp() const {
        const std::uint8_t identifier = (*this)[0];
        return identifier == 12 || identifier == 13 || identifier == 17 || identifier == 18;
    }
    /// Where the identification of the module begins.
    constexpr VX_UINT16 Base() const { return IsQsfp() ? 128 : 0; }
};
