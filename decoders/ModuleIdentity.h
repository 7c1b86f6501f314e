/// @file
/// What a pluggable module says of itself, alike for both families of modules (SFF-8472, SFF-8636; codes of
/// SFF-8024).
#pragma once

#include "Bytes.h"
#include "Units.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace decoders {

enum class ModuleFamily {
    SFP,   ///< memory by SFF-8472: see SfpMemory.h
    QSFP,  ///< memory by SFF-8636 or its forerunners: see QsfpMemory.h
    OTHER, ///< a memory that nothing here decodes
};

/// The family by byte 0 of the memory, the identifier: 2 and 3 are SFP, 12, 13 and 17 QSFP.
ModuleFamily FamilyOf(Bytes memory);

/// Names of SFF-8024 codes; empty for reserved and vendor specific ones.
std::string_view IdentifierName(std::uint8_t identifier);
std::string_view ConnectorName(std::uint8_t connector);

enum class Checksum {
    VALID,
    INVALID,
    UNREAD, ///< the view doesn't hold all bytes that it covers
};

/// Compares the low byte of the sum of bytes `first` to `last` with the byte after them.
Checksum CheckSum(Bytes memory, std::size_t first, std::size_t last);

struct Date {
    int year; ///< 2000 to 2099
    int month;
    int day;

    friend constexpr bool operator==(const Date&, const Date&) = default;
};
/// Of a date code "YYMMDD", with anything after it. None for another text, or a day or month that no calendar has.
std::optional<Date> ParseDateCode(std::string_view code);

enum class CableKind {
    NONE, ///< a transceiver, or a cable of fibre
    PASSIVE,
    ACTIVE,
};

/// Longest supported link in metres, or the length of an attached cable. 0 is unspecified; the largest value that a
/// field can hold may stand for more.
struct LinkLengths {
    unsigned singleMode = 0;
    unsigned om1 = 0;
    unsigned om2 = 0;
    unsigned om3 = 0;
    unsigned om4 = 0;
    unsigned cable = 0; ///< copper, or any attached cable

    friend constexpr bool operator==(const LinkLengths&, const LinkLengths&) = default;
};

/// Texts are as they stand, without their padding: bytes of any kind, empty where the memory wasn't read.
struct ModuleIdentity {
    std::uint8_t identifier = 0; ///< see `IdentifierName`
    std::uint8_t connector = 0;  ///< see `ConnectorName`
    std::string vendor;
    std::array<std::uint8_t, 3> oui{}; ///< IEEE company identifier; all zero for none
    std::string partNumber;
    std::string revision;
    std::string serialNumber;
    std::string dateCode;     ///< with the vendor's lot code
    std::optional<Date> date; ///< of the date code
    CableKind cable = CableKind::NONE;
    LinkLengths lengths;
    std::optional<Nanometres> wavelength;  ///< none for copper, and where it is 0
    std::optional<unsigned> signalingRate; ///< nominal, in megabaud
    Checksum baseChecksum = Checksum::UNREAD;
    Checksum extendedChecksum = Checksum::UNREAD;
};

} // namespace decoders
