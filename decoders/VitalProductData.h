/// @file
/// Vital product data of a PCI function (PCI Local Bus Specification, revision 3.0, appendix I): a list of
/// resources. The read-only and the read-write resource contain keywords.
#pragma once

#include "Bytes.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace decoders {

/// Tags and sizes.
namespace vpd {

inline constexpr std::uint8_t IDENTIFIER_STRING = 0x82;
inline constexpr std::uint8_t READ_ONLY = 0x90;
inline constexpr std::uint8_t READ_WRITE = 0x91;
inline constexpr std::uint8_t END = 0x78;
/// Header of a large resource: a tag and a little-endian length. Header of a keyword: two characters and a one-byte
/// length.
inline constexpr std::size_t HEADER_SIZE = 3;

} // namespace vpd

struct VpdKeyword {
    std::string name;  ///< two characters, such as "PN"
    std::string value; ///< raw bytes; text in most keywords

    /// The value up to the first zero byte, without trailing blanks.
    std::string_view Text() const;
};

enum class VpdChecksum {
    ABSENT, ///< no keyword "RV"
    VALID,  ///< all bytes up to and including the first of "RV" add up to 0, modulo 256
    INVALID,
};

struct VitalProductData {
    std::optional<std::string> identifier; ///< up to the first zero byte, without padding
    std::vector<VpdKeyword> readOnly;      ///< in order of appearance
    std::vector<VpdKeyword> readWrite;     ///< in order of appearance
    VpdChecksum checksum = VpdChecksum::ABSENT;
    /// The end tag was found, and all lengths are consistent with it.
    bool isWhole = false;

    /// The first read-only keyword of that name, else the first read-write one, else null.
    const VpdKeyword* Find(std::string_view name) const;
};

/// Decodes as much as is consistent. A resource that exceeds the data is cut there and ends the walk; a keyword
/// that exceeds its resource is cut there and ends the walk of that resource. A byte of 0 is not a tag. Resources
/// of other kinds are skipped. If resources repeat, the first identifier counts, and the keywords of all.
VitalProductData DecodeVpd(Bytes data);

} // namespace decoders
