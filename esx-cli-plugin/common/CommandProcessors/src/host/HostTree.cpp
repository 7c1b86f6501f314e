#include "HostTree.h"

#include <cstdlib>

namespace {

constexpr char PREFIX[] = "FC_";
constexpr std::size_t PREFIX_LENGTH = sizeof PREFIX - 1;
constexpr char HEX_DIGITS[] = "0123456789abcdef";

/// Value of a lower-case hexadecimal digit, or -1.
int DigitValue(char digit) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

} // namespace

VX_UINT32 HandleWord(const VX_PORT_HANDLE& handle) {
    VX_UINT32 word = 0;
    std::memcpy(&word, handle.opaque + 4, sizeof word);
    return word;
}

void FormatWwn(char* text, const VX_UINT8 (&name)[8]) {
    for (const VX_UINT8 byte : name) {
        *text++ = HEX_DIGITS[byte >> 4];
        *text++ = HEX_DIGITS[byte & 0xF];
        *text++ = ':';
    }
    text[-1] = '\0';
}

PortIdentifier::PortIdentifier(const VX_UINT8 (&wwpn)[8]) {
    std::memcpy(text, PREFIX, PREFIX_LENGTH);
    FormatWwn(text + PREFIX_LENGTH, wwpn);
}

const char* ReadWwn(const char* text, VX_UINT8 (&name)[8]) {
    for (std::size_t at = 0; at < sizeof name; ++at) {
        const int high = DigitValue(text[0]);
        const int low = high >= 0 ? DigitValue(text[1]) : -1;
        if (low < 0) {
            return nullptr;
        }
        name[at] = static_cast<VX_UINT8>(high << 4 | low);
        text += 2;
        const bool isLast = at + 1 == sizeof name;
        if (!isLast && *text++ != ':') {
            return nullptr;
        }
    }
    return text;
}

bool ParsePortIdentifier(const char* text, VX_UINT8 (&wwpn)[8]) {
    if (std::strncmp(text, PREFIX, PREFIX_LENGTH) != 0) {
        return false;
    }
    const char* const end = ReadWwn(text + PREFIX_LENGTH, wwpn);
    return end != nullptr && *end == '\0';
}

const char* ScanWwn(const char* text, VX_UINT8 (&name)[8]) {
    for (std::size_t at = 0; at < sizeof name; ++at) {
        if (at > 0 && *text++ != ':') {
            return nullptr;
        }
        char* end = nullptr;
        const unsigned long number = std::strtoul(text, &end, 16);
        if (end == text) {
            return nullptr;
        }
        name[at] = static_cast<VX_UINT8>(number);
        text = end;
    }
    return text;
}
