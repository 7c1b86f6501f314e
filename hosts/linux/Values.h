/// @file
/// Conversion of the kernel's texts to the library's values.
///
/// Each function takes the text of one attribute. It returns false, and leaves the value unchanged, if the text is
/// malformed. Unknown values (an empty text, "unknown", a number of all ones) leave the value unchanged too, but are
/// not errors.
#pragma once

#include "Tree.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace host {

using Text = std::string_view;

/// Removes white space and null characters at both ends.
Text Trimmed(Text text);

/// The numbers in a name such as "rport-3:0-12" for the pattern "rport-#:#-#".
template <std::size_t count>
std::optional<std::array<std::uint64_t, count>> NumbersIn(std::string_view name, std::string_view pattern) {
    std::array<std::uint64_t, count> numbers{};
    auto number = numbers.begin();
    const char* at = name.begin();
    for (const char expected : pattern) {
        if (expected == '#') {
            const auto [end, error] = std::from_chars(at, name.end(), *number++);
            if (error != std::errc() || (*at == '0' && end != at + 1)) {
                return std::nullopt;
            }
            at = end;
        } else if (at == name.end() || *at++ != expected) {
            return std::nullopt;
        }
    }
    return at == name.end() ? std::optional(numbers) : std::nullopt;
}

/// The whole text as a number: hexadecimal with "0x", otherwise decimal.
std::optional<std::uint64_t> NumberIn(Text text);

/// A worldwide name, as a number of 64 bits; 0 means none.
bool TakeName(Text text, VX_UINT8 (&name)[8]);

/// A port id, as a number of 24 bits. Larger numbers, which the kernel shows for a port without an id, are ignored.
bool TakePortId(Text text, VX_UINT8 (&id)[3]);

/// A number, saturated to the type of the value.
bool TakeNumber(Text text, VX_UINT8& number);
bool TakeNumber(Text text, VX_UINT16& number);
bool TakeNumber(Text text, VX_UINT32& number);
bool TakeNumber(Text text, VX_UINT64& number);
/// The same; nothing if the number is unknown.
bool TakeNumber(Text text, std::optional<std::uint64_t>& number);
/// The same, added to the value.
bool AddNumber(Text text, VX_UINT32& number);

/// A number saturated to 32 bits.
VX_UINT32 Saturated(VX_UINT64 number);

/// A line of text. Characters other than printable ASCII become question marks.
bool TakeText(Text text, std::string& value);

/// The same for arrays: truncated and terminated or, in `TakePadded`, truncated without a terminator.
template <std::size_t size> bool TakeText(Text text, char (&value)[size]) {
    std::string line;
    TakeText(text, line);
    value[line.copy(value, size - 1)] = '\0';
    return true;
}
template <std::size_t size> bool TakePadded(Text text, VX_UINT8 (&value)[size]) {
    std::string line;
    TakeText(text, line);
    line.copy(reinterpret_cast<char*>(value), size);
    return true;
}

/// "16 Gbit" as a code of `PortSpeed`; 0 if the speed has no code.
bool TakeSpeed(Text text, VX_UINT32& speed);

/// "8 Gbit, 16 Gbit, 32 Gbit" as the mask of `SupportedSpeeds`.
bool TakeSpeeds(Text text, VX_UINT8& speeds);

/// "Online", "Linkdown", … as a code of `PortState`.
bool TakePortState(Text text, VX_UINT8& state);

/// "Online", "Blocked", … as the bits of `TargetFlags` that say whether a target is online.
bool TakeTargetState(Text text, VX_UINT8 (&flags)[6]);

/// "NPort (fabric via point-to-point)", … as codes of `PortType` and `PortConnectionMode`.
bool TakePortType(Text text, _vexapi_protocol_t& record);

/// "8.0 GT/s PCIe" as the speed and "8" as the width of a PCI Express link, or-ed into the link's bits.
bool TakeLinkSpeed(Text text, VX_UINT16& link);
bool TakeLinkWidth(Text text, VX_UINT16& link);

/// "naa.6001…", "eui.…" and "uuid.…" as bytes, "t10.…" as characters. Truncated to 32 bytes.
bool TakeWorldwideId(Text text, _tagVEXAPI_SDMLun& lun);

/// The best designator of the logical unit in VPD page 83h (SPC-4, 7.8.6): NAA (of several, the most unique), then
/// EUI-64, then T10 vendor. False if there is none.
bool TakeDesignators(Text page, _tagVEXAPI_SDMLun& lun);

/// "44444444-0000-4000-8000-000000000001" as its 16 bytes.
bool TakeUuid(Text text, VX_UINT8 (&id)[16]);

/// "traddr=nn-0x1000…:pn-0x2000…,host_traddr=nn-0x…:pn-0x…" as the names of both ends. False unless both have a port
/// name.
bool TakeAddress(Text text, Controller& controller);

/// Standard inquiry data (SPC-4, 6.4.2). False if it is shorter than its fixed part.
bool TakeInquiry(Text bytes, Lun& lun);

/// Seconds, or "off", which leaves the value unchanged.
bool TakeTimeout(Text text, VX_UINT32& seconds);

/// "0" as "active", "1" as "suspended".
bool TakeSuspension(Text text, std::string& state);

/// "253:0" as a device number.
bool TakeDeviceNumber(Text text, dev_t& number);

/// A worldwide name as its number, and back.
std::uint64_t NameNumber(const VX_UINT8 (&name)[8]);
void StoreName(std::uint64_t number, VX_UINT8 (&name)[8]);

/// Value of a keyword, such as "PN", in the read-only section of PCI vital product data (PCI Local Bus 3.0,
/// Appendix I); empty if there is none.
Text VpdKeyword(Text vpd, Text keyword);

} // namespace host
