#include "ModuleIdentity.h"

#include <chrono>

namespace decoders {

namespace {

struct CodeName {
    std::uint8_t code;
    std::string_view name;
};

constexpr CodeName IDENTIFIERS[] = {
    {0x00, "Unknown or unspecified"},
    {0x01, "GBIC"},
    {0x02, "Soldered to motherboard"},
    {0x03, "SFP/SFP+/SFP28"},
    {0x04, "300-pin XBI"},
    {0x05, "XENPAK"},
    {0x06, "XFP"},
    {0x07, "XFF"},
    {0x08, "XFP-E"},
    {0x09, "XPAK"},
    {0x0A, "X2"},
    {0x0B, "DWDM-SFP/SFP+"},
    {0x0C, "QSFP"},
    {0x0D, "QSFP+"},
    {0x0E, "CXP"},
    {0x0F, "Shielded Mini Multilane HD 4X"},
    {0x10, "Shielded Mini Multilane HD 8X"},
    {0x11, "QSFP28"},
    {0x12, "CXP2"},
    {0x13, "CDFP (style 1 or 2)"},
    {0x14, "Shielded Mini Multilane HD 4X fanout cable"},
    {0x15, "Shielded Mini Multilane HD 8X fanout cable"},
    {0x16, "CDFP (style 3)"},
    {0x17, "microQSFP"},
    {0x18, "QSFP-DD"},
    {0x19, "OSFP"},
    {0x1A, "SFP-DD"},
    {0x1B, "DSFP"},
    {0x1C, "x4 MiniLink/OcuLink"},
    {0x1D, "x8 MiniLink"},
    {0x1E, "QSFP+ with CMIS"},
};

constexpr CodeName CONNECTORS[] = {
    {0x00, "Unknown or unspecified"},
    {0x01, "SC"},
    {0x02, "Fibre Channel style 1 copper"},
    {0x03, "Fibre Channel style 2 copper"},
    {0x04, "BNC/TNC"},
    {0x05, "Fibre Channel coaxial"},
    {0x06, "Fiber Jack"},
    {0x07, "LC"},
    {0x08, "MT-RJ"},
    {0x09, "MU"},
    {0x0A, "SG"},
    {0x0B, "Optical pigtail"},
    {0x0C, "MPO 1x12"},
    {0x0D, "MPO 2x16"},
    {0x20, "HSSDC II"},
    {0x21, "Copper pigtail"},
    {0x22, "RJ45"},
    {0x23, "No separable connector"},
    {0x24, "MXC 2x16"},
    {0x25, "CS"},
    {0x26, "SN"},
    {0x27, "MPO 2x12"},
    {0x28, "MPO 1x16"},
};

std::string_view NameOf(std::span<const CodeName> names, std::uint8_t code) {
    const auto row =
        std::find_if(names.begin(), names.end(), [code](const CodeName& name) { return name.code == code; });
    return row != names.end() ? row->name : std::string_view();
}

/// -1 unless both characters are digits.
int TwoDigits(std::string_view text) {
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    return isDigit(text[0]) && isDigit(text[1]) ? (text[0] - '0') * 10 + (text[1] - '0') : -1;
}

} // namespace

ModuleFamily FamilyOf(Bytes memory) {
    switch (memory[0]) {
    case 0x02:
    case 0x03:
        return ModuleFamily::SFP;
    case 0x0C:
    case 0x0D:
    case 0x11:
        return ModuleFamily::QSFP;
    default:
        return ModuleFamily::OTHER;
    }
}

std::string_view IdentifierName(std::uint8_t identifier) {
    return NameOf(IDENTIFIERS, identifier);
}

std::string_view ConnectorName(std::uint8_t connector) {
    return NameOf(CONNECTORS, connector);
}

Checksum CheckSum(Bytes memory, std::size_t first, std::size_t last) {
    const std::size_t length = last - first + 1;
    if (!memory.Holds(first, length + 1)) {
        return Checksum::UNREAD;
    }
    return memory.Sub(first, length).Sum() == memory[last + 1] ? Checksum::VALID : Checksum::INVALID;
}

std::optional<Date> ParseDateCode(std::string_view code) {
    constexpr std::size_t DIGITS = 6;
    if (code.size() < DIGITS) {
        return std::nullopt;
    }
    const int year = TwoDigits(code);
    const int month = TwoDigits(code.substr(2));
    const int day = TwoDigits(code.substr(4));
    if (year < 0 || month < 0 || day < 0) {
        return std::nullopt;
    }
    const Date date{2000 + year, month, day};
    const std::chrono::year_month_day calendar{std::chrono::year{date.year},
                                               std::chrono::month{static_cast<unsigned>(month)},
                                               std::chrono::day{static_cast<unsigned>(day)}};
    return calendar.ok() ? std::optional(date) : std::nullopt;
}

} // namespace decoders
