/// @file
/// From the kernel's words to the library's values.
///
/// Each function takes the text of one attribute, without its line end. It returns false when the text is none of
/// those that the kernel writes; the value then stays as it was. What the kernel does not know leaves the value as it
/// was, too, and is no mistake: an empty text, "unknown", a number of all ones.
#pragma once

#include "Tree.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace host {

using Text = std::string_view;

/// Without blanks and line ends at both ends.
Text Trimmed(Text text);

/// The whole text as a number: hexadecimal with "0x", else decimal.
std::optional<std::uint64_t> NumberIn(Text text);

/// A worldwide name, a number of 64 bits. A name of all zeros is none.
bool TakeName(Text text, VX_UINT8 (&name)[8]);

/// A port id, a number of 24 bits. The kernel shows more bits than these as long as the port has no id.
bool TakePortId(Text text, VX_UINT8 (&id)[3]);

/// A number. What doesn't fit is the largest that does.
bool TakeNumber(Text text, VX_UINT8& number);
bool TakeNumber(Text text, VX_UINT16& number);
bool TakeNumber(Text text, VX_UINT32& number);
bool TakeNumber(Text text, VX_UINT64& number);
/// The same, added to what there is.
bool AddNumber(Text text, VX_UINT32& number);

/// A number in 32 bits: the largest of them when it doesn't fit.
VX_UINT32 Saturated(VX_UINT64 number);

/// A text for a report, of one line: every character that isn't printable ASCII becomes a question mark.
bool TakeText(Text text, std::string& value);

/// The same into an array: cut to what fits with the terminator, or, `Padded`, without one.
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

/// "16 Gbit" as a code of `PortSpeed`. Speeds without a code are left out.
bool TakeSpeed(Text text, VX_UINT32& speed);

/// "8 Gbit, 16 Gbit, 32 Gbit" as the mask of `SupportedSpeeds`.
bool TakeSpeeds(Text text, VX_UINT8& speeds);

/// "Online", "Linkdown", … as a code of `PortState`.
bool TakePortState(Text text, VX_UINT8& state);

/// "Online", "Blocked", … as the bits of `TargetFlags` that say whether a target is online.
bool TakeTargetState(Text text, VX_UINT8 (&flags)[6]);

/// "NPort (fabric via point-to-point)", … as codes of `PortType` and `PortConnectionMode`.
bool TakePortType(Text text, _vexapi_protocol_t& record);

/// "8.0 GT/s PCIe" as the speed code and "8" as the lane code of a PCI Express link, each or-ed into its bits.
bool TakeLinkSpeed(Text text, VX_UINT16& link);
bool TakeLinkWidth(Text text, VX_UINT16& link);

/// "naa.6001…", "eui.…", "uuid.…" as bytes, "t10.…" as its characters. Cut to 32 bytes.
bool TakeWorldwideId(Text text, _tagVEXAPI_SDMLun& lun);

/// Page 83h of the vital product data of a SCSI device (SPC-4, 7.8.6): of the designators of the logical unit, the
/// NAA one, the most worldwide of several, else the EUI-64 one, else the one that begins with the vendor. False without
/// any.
bool TakeDesignators(Text page, _tagVEXAPI_SDMLun& lun);

/// "44444444-0000-4000-8000-000000000001" as its 16 bytes.
bool TakeUuid(Text text, VX_UINT8 (&id)[16]);

/// "traddr=nn-0x1000…:pn-0x2000…,host_traddr=nn-0x…:pn-0x…" as the names of both ends; without a port name at both
/// ends it is not understood.
bool TakeAddress(Text text, Controller& controller);

/// Standard inquiry data (SPC-4, 6.4.2). False when it is shorter than its fixed part.
bool TakeInquiry(Text bytes, Lun& lun);

/// A worldwide name as its number, and back.
std::uint64_t NameNumber(const VX_UINT8 (&name)[8]);
void StoreName(std::uint64_t number, VX_UINT8 (&name)[8]);

/// A keyword of the read-only section of PCI vital product data (PCI Local Bus 3.0, Appendix I), such as "PN".
Text VpdKeyword(Text vpd, Text keyword);

} // namespace host
