#pragma once

#include "Bytes.h"
#include "vexapi.h"

/// Offset of address A2h in the image of an SFP module.
inline constexpr VX_UINT16 A2 = 256;

/// The memory of a transceiver; bytes outside read as 0. In the SFP family, bytes 0 to 255 are address A0h
/// (SFF-8472) and bytes 256 to 511 address A2h; in the QSFP family, bytes 0 to 255 are the lower page and upper
/// page 00h (SFF-8636).
class ModuleImage : public decoders::Bytes {
public:
    explicit constexpr ModuleImage(decoders::Bytes bytes) : Bytes(bytes) {}
    explicit constexpr ModuleImage(const _VEXAPI_SFP_DATA& data) : Bytes(data.Data, sizeof data.Data) {}

    /// Depends on byte 0, the identifier: 12 QSFP, 13 QSFP+, 17 QSFP28, 18 CXP2. Any other value counts as SFP. By
    /// the standards, a CXP2 belongs to neither family, and only 2 and 3 are SFP: see `decoders::FamilyOf`.
    constexpr bool IsQsfp() const {
        const std::uint8_t identifier = (*this)[0];
        return identifier == 12 || identifier == 13 || identifier == 17 || identifier == 18;
    }
    /// Offset of the module's identification.
    constexpr VX_UINT16 Base() const { return IsQsfp() ? 128 : 0; }
};
