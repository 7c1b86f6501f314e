/// @file
/// Texts of values shown in several reports.
#pragma once

#include "BoundedText.h"
#include "CodeTable.h"
#include "TavuString.h"
#include "Texts.h"
#include "vexapi.h"

#include <algorithm>

/// `PortState`.
inline constexpr CodeText PORT_STATE_TEXTS[] = {{1, "Online"}, {3, "Offline"}};

/// The text, or "NA" if empty.
constexpr std::string_view OrNa(std::string_view text) {
    return text.empty() ? std::string_view(OUT_NA) : text;
}

/// A World Wide Name, "xx:xx:xx:xx:xx:xx:xx:xx".
TavuString WwnText(const VX_UINT8 (&name)[8]);
/// A Fibre Channel port id, "xx:xx:xx".
TavuString PortIdText(const VX_UINT8 (&id)[3]);

/// An NVMe host identifier as 32 digits, or "NA" if all bytes are zero.
TavuString HostIdText(const VX_UINT8 (&id)[16]);

/// "MAJOR.MINOR.SUB", the last two with at least two digits.
TavuString VersionText(VX_UINT8 major, VX_UINT8 minor, VX_UINT8 sub);
inline TavuString VersionText(const VX_UINT8 (&version)[3]) {
    return VersionText(version[0], version[1], version[2]);
}
/// Same, or "NA" if all numbers are zero: there is no such image.
TavuString ImageVersionText(const VX_UINT8 (&version)[3]);
TavuString ImageVersionText(const VX_FLASH_COMPONENT& component);
/// "MAJOR.MINOR", or "NA".
TavuString ImageVersionText(const VX_UINT8 (&version)[2]);

/// True when all bytes are zero.
template <std::size_t N> bool IsZero(const VX_UINT8 (&bytes)[N]) {
    return std::all_of(std::begin(bytes), std::end(bytes), [](VX_UINT8 byte) { return byte == 0; });
}

inline bool IsAbsent(const VX_FLASH_COMPONENT& component) {
    return component.Major == 0 && component.Minor == 0 && component.Sub == 0;
}
