/// @file
/// Identification of a pluggable module, common to both families (SFF-8472, SFF-8636; codes of SFF-8024).
#pragma once

#include "Bytes.h"
#include "Units.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace decoders {

enum class ModuleFamily {
    SFP,   ///< SFF-8472; see SfpMemory.h
    QSFP,  ///< SFF-8636 or its predecessors; see QsfpMemory.h
    OTHER, ///< not decoded
};

/// The family according to byte 0, the identifier: 2 and 3 are SFP, 12, 13 and 17 QSFP.
ModuleFamily FamilyOf(Bytes memory);

/// Names of SFF-8024 codes; empty for reserved and vendor-specific ones.
std::string_view IdentifierName(std::uint8_t identifier);
std::string_view ConnectorName(std::uint8_t connector);

enum class Checksum {
    VALID,
    INVALID,
    UNREAD, ///< the view lacks some of the covered bytes
};

/// Compares the low byte of the sum of bytes `first` to `last` with the byte after them.
Checksum CheckSum(Bytes memory, std::size_t first, std::size_t last);

struct Date {
    int year; ///< 2000 to 2099
    int month;
    int day;

    friend constexpr bool operator==(const Date&, const Date&) = default;
};
/// Parses a date code "YYMMDD", with anything after it. None for other text and for invalid days or months.
std::optional<Date> ParseDateCode(std::string_view code);

enum class CableKind {
    NONE, ///< a transceiver or an optical cable
    PASSIVE,
    ACTIVE,
};

/// Longest supported link, or length of the attached cable, in metres. 0 is unspecified; the largest value of a
/// field may mean "or longer".
struct LinkLengths {
    unsigned singleMode = 0;
    unsigned om1 = 0;
    unsigned om2 = 0;
    unsigned om3 = 0;
    unsigned om4 = 0;
    unsigned cable = 0; ///< copper, or any attached cable

    friend constexpr bool operator==(const LinkLengths&, const LinkLengths&) = default;
};

/// Texts are raw bytes without padding, and empty if the memory wasn't read.
struct ModuleIdentity {
    std::uint8_t identifier = 0; ///< see `IdentifierName`
    std::uint8_t connector = 0;  ///< see `ConnectorName`
    std::string vendor;
    std::array<std::uint8_t, 3> oui{}; ///< IEEE company identifier; all zeros for none
    std::string partNumber;
    std::string revision;
    std::string serialNumber;
    std::string dateCode;     ///< with the vendor's lot code
    std::optional<Date> date; ///< of the date code
    CableKind cable = CableKind::NONE;
    LinkLengths lengths;
    std::optional<Nanometres> wavelength;  ///< none for copper and for 0
    std::optional<unsigned> signalingRate; ///< nominal, in megabaud
    Checksum baseChecksum = Checksum::UNREAD;
    Checksum extendedChecksum = Checksum::UNREAD;
};

} // namespace decoders
