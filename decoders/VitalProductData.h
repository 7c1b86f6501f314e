/// @file
/// Vital product data of a PCI function (PCI Local Bus Specification, revision 3.0, appendix I): a list of resources,
/// of which the read-only and the read-write one hold keywords.
#pragma once

#include "Bytes.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace decoders {

/// Tags and sizes of the format.
namespace vpd {

inline constexpr std::uint8_t IDENTIFIER_STRING = 0x82;
inline constexpr std::uint8_t READ_ONLY = 0x90;
inline constexpr std::uint8_t READ_WRITE = 0x91;
inline constexpr std::uint8_t END = 0x78;
/// Of a large resource: its tag and a little-endian length. Of a keyword: its two characters and a length of one byte.
inline constexpr std::size_t HEADER_SIZE = 3;

} // namespace vpd

struct VpdKeyword {
    std::string name;  ///< two characters, such as "PN"
    std::string value; ///< its bytes, which are text in most keywords

    /// The value up to a zero byte and without the blanks that pad it.
    std::string_view Text() const;
};

enum class VpdChecksum {
    ABSENT, ///< there is no keyword "RV"
    VALID,  ///< all bytes up to and with the first of "RV" add up to 0, modulo 256
    INVALID,
};

struct VitalProductData {
    std::optional<std::string> identifier; ///< up to a zero byte, without its padding
    std::vector<VpdKeyword> readOnly;      ///< in their order
    std::vector<VpdKeyword> readWrite;     ///< in their order
    VpdChecksum checksum = VpdChecksum::ABSENT;
    /// The end tag was found, and every length led to it and no further.
    bool isWhole = false;

    /// The first read-only keyword of that name, else the first read-write one, else null.
    const VpdKeyword* Find(std::string_view name) const;
};

/// Reads as far as the resources make sense: a length that leads out of the data, or a keyword's that leads out of its
/// resource, is cut there and ends the walk of what it led out of. A byte of 0 is no tag. Resources of other kinds
/// are skipped. Of several resources of a kind, the first identifier counts and all keywords do.
VitalProductData DecodeVpd(Bytes data);

} // namespace decoders
