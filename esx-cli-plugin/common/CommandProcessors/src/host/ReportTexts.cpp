#include "ReportTexts.h"

#include "HostTree.h"

TavuString WwnText(const VX_UINT8 (&name)[8]) {
    char text[24];
    FormatWwn(text, name);
    return text;
}

TavuString PortIdText(const VX_UINT8 (&id)[3]) {
    TavuString text;
    text.Format("%02x:%02x:%02x", id[0], id[1], id[2]);
    return text;
}

TavuString VersionText(VX_UINT8 major, VX_UINT8 minor, VX_UINT8 sub) {
    TavuString text;
    text.Format("%u.%02u.%02u", major, minor, sub);
    return text;
}

TavuString ImageVersionText(const VX_UINT8 (&version)[3]) {
    return ImageVersionText(VX_FLASH_COMPONENT{0, version[0], version[1], version[2], {}});
}

TavuString ImageVersionText(const VX_FLASH_COMPONENT& component) {
    return IsAbsent(component) ? TavuString(OUT_NA) : VersionText(component.Major, component.Minor, component.Sub);
}

TavuString ImageVersionText(const VX_UINT8 (&version)[2]) {
    if (IsZero(version)) {
        return OUT_NA;
    }
    TavuString text;
    text.Format("%u.%02u", version[0], version[1]);
    return text;
}

TavuString HostIdText(const VX_UINT8 (&id)[16]) {
    if (IsZero(id)) {
        return OUT_NA;
    }
    TavuString text;
    for (const VX_UINT8 byte : id) {
        TavuString digits;
        digits.Format("%02x", byte);
        text += digits;
    }
    return text;
}
