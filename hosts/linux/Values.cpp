#include "Values.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <sys/sysmacros.h>

namespace host {

namespace {

/// A word of the kernel's and the library's code for it; 0 if it has none.
template <class Code> struct Word {
    Text word;
    Code code;
};

template <class Code, std::size_t count> const Word<Code>* Find(const Word<Code> (&words)[count], Text word) {
    const auto* const found =
        std::find_if(std::begin(words), std::end(words), [&](const auto& row) { return row.word == word; });
    return found == std::end(words) ? nullptr : found;
}

struct Speed {
    VX_UINT8 code; ///< of `PortSpeed`
    VX_UINT8 bit;  ///< of `SupportedSpeeds`
};
/// The kernel's names of link speeds. The library has no codes for some of them.
constexpr Word<Speed> SPEEDS[] = {
    {"1 Gbit", {1, 0x01}},   {"2 Gbit", {2, 0x02}},   {"4 Gbit", {4, 0x08}},   {"8 Gbit", {8, 0x10}},
    {"10 Gbit", {16, 0x04}}, {"16 Gbit", {22, 0x20}}, {"32 Gbit", {50, 0x40}}, {"64 Gbit", {100, 0x80}},
    {"20 Gbit", {}},         {"25 Gbit", {}},         {"40 Gbit", {}},         {"50 Gbit", {}},
    {"100 Gbit", {}},        {"128 Gbit", {}},        {"256 Gbit", {}},        {"Not Negotiated", {}},
};

constexpr VX_UINT8 ONLINE = 1;
constexpr VX_UINT8 OFFLINE = 3;
constexpr Word<VX_UINT8> PORT_STATES[] = {
    {"Online", ONLINE},    {"Offline", OFFLINE}, {"Linkdown", OFFLINE}, {"Not Present", OFFLINE},
    {"Bypassed", OFFLINE}, {"Error", OFFLINE},   {"Deleted", OFFLINE},  {"Blocked", 0},
    {"Diagnostics", 0},    {"Loopback", 0},      {"Marginal", 0},
};

struct PortKind {
    VX_UINT8 type; ///< of `PortType`
    VX_UINT8 mode; ///< of `PortConnectionMode`
};
constexpr PortKind NODE{1, 1};
constexpr PortKind PRIVATE_LOOP{2, 2};
constexpr PortKind PUBLIC_LOOP{6, 2};
constexpr Word<PortKind> PORT_TYPES[] = {
    {"NPort (fabric via point-to-point)", NODE},
    {"Point-To-Point (direct nport connection)", NODE},
    {"NPIV VPORT", NODE},
    {"NLPort (fabric via loop)", PUBLIC_LOOP},
    {"LPort (private loop)", PRIVATE_LOOP},
    {"Other", {}},
    {"Not Present", {}},
};

constexpr Word<VX_UINT16> LINK_SPEEDS[] = {
    {"2.5", 1}, {"5.0", 2},  {"5", 2},  {"8.0", 3},  {"8", 3},       {"16.0", 4},
    {"16", 4},  {"32.0", 8}, {"32", 8}, {"64.0", 0}, {"Unknown", 0},
};

/// The text without `prefix`, or nothing if it has another prefix.
std::optional<Text> Without(Text prefix, Text text) {
    return text.starts_with(prefix) ? std::optional(text.substr(prefix.size())) : std::nullopt;
}

/// Whether the kernel doesn't know the value.
bool IsUntold(Text text) {
    static constexpr Text UNKNOWN = "unknown";
    return text.empty() || text == "-1" ||
           std::equal(text.begin(), text.end(), UNKNOWN.begin(), UNKNOWN.end(),
                      [](char a, char b) { return (a | 0x20) == b; });
}

/// The kernel shows all ones if there is no number.
bool IsNone(std::uint64_t number) {
    return number == std::numeric_limits<std::uint64_t>::max();
}

/// Calls `use` with the number. False if the text is malformed; an unknown value is well-formed.
template <class Use> bool WithNumber(Text text, Use use) {
    const Text word = Trimmed(text);
    if (IsUntold(word)) {
        return true;
    }
    const std::optional<std::uint64_t> number = NumberIn(word);
    if (number && !IsNone(*number)) {
        use(*number);
    }
    return number.has_value();
}

template <class Number> bool TakeAny(Text text, Number& number) {
    return WithNumber(text, [&](std::uint64_t value) {
        number = static_cast<Number>(std::min<std::uint64_t>(value, std::numeric_limits<Number>::max()));
    });
}

/// Parses pairs of hexadecimal digits, with optional dashes between them; stores at most `limit` bytes. False if
/// malformed.
bool HexBytes(Text digits, VX_UINT8* bytes, std::size_t limit, std::size_t& count) {
    count = 0;
    while (!digits.empty()) {
        if (digits.front() == '-') {
            digits.remove_prefix(1);
            continue;
        }
        VX_UINT8 byte = 0;
        const Text pair = digits.substr(0, 2);
        const auto [end, error] = std::from_chars(pair.begin(), pair.end(), byte, 16);
        if (pair.size() != 2 || error != std::errc() || end != pair.end()) {
            return false;
        }
        if (count < limit) {
            bytes[count++] = byte;
        }
        digits.remove_prefix(2);
    }
    return true;
}

void StoreWorldwideId(Text bytes, _tagVEXAPI_SDMLun& lun) {
    std::memset(lun.WorldwideId, 0, sizeof lun.WorldwideId);
    lun.WorldwideIdLength = static_cast<VX_UINT8>(bytes.copy(reinterpret_cast<char*>(lun.WorldwideId), 32));
}

unsigned ByteAt(Text bytes, std::size_t index) {
    return static_cast<unsigned char>(bytes[index]);
}

/// Preference of a designator (SPC-4, 7.8.6); 0: not usable.
unsigned DesignatorRank(unsigned type, Text designator) {
    enum : unsigned { T10_VENDOR = 1, EUI_64 = 2, NAA = 3 };
    constexpr unsigned LOCALLY_ASSIGNED = 3;
    if (type == NAA) {
        // Prefer the longest IEEE format, which has the highest number: 2 extended, 5 registered, 6 registered
        // extended.
        const unsigned format = ByteAt(designator, 0) >> 4;
        return NAA + (format == LOCALLY_ASSIGNED ? 0 : format);
    }
    return type == T10_VENDOR || type == EUI_64 ? type : 0;
}

} // namespace

Text Trimmed(Text text) {
    static constexpr Text BLANKS(" \t\r\n\0", 5);
    const std::size_t begin = text.find_first_not_of(BLANKS);
    return begin == Text::npos ? Text() : text.substr(begin, text.find_last_not_of(BLANKS) + 1 - begin);
}

std::optional<std::uint64_t> NumberIn(Text text) {
    const std::optional<Text> hexadecimal = Without("0x", text);
    const Text digits = hexadecimal.value_or(text);
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), number, hexadecimal ? 16 : 10);
    return error == std::errc() && end == digits.end() ? std::optional(number) : std::nullopt;
}

bool TakeName(Text text, VX_UINT8 (&name)[8]) {
    return WithNumber(text, [&](std::uint64_t number) { StoreName(number, name); });
}

bool TakePortId(Text text, VX_UINT8 (&id)[3]) {
    return WithNumber(text, [&](std::uint64_t number) {
        if (number <= 0xFFFFFF) {
            id[0] = static_cast<VX_UINT8>(number >> 16);
            id[1] = static_cast<VX_UINT8>(number >> 8);
            id[2] = static_cast<VX_UINT8>(number);
        }
    });
}

bool TakeNumber(Text text, VX_UINT8& number) {
    return TakeAny(text, number);
}
bool TakeNumber(Text text, VX_UINT16& number) {
    return TakeAny(text, number);
}
bool TakeNumber(Text text, VX_UINT32& number) {
    return TakeAny(text, number);
}
bool TakeNumber(Text text, VX_UINT64& number) {
    return TakeAny(text, number);
}

bool TakeNumber(Text text, std::optional<std::uint64_t>& number) {
    return WithNumber(text, [&](std::uint64_t value) { number = value; });
}

bool AddNumber(Text text, VX_UINT32& number) {
    return WithNumber(text, [&](std::uint64_t value) {
        const VX_UINT32 room = std::numeric_limits<VX_UINT32>::max() - number;
        number += static_cast<VX_UINT32>(std::min<std::uint64_t>(value, room));
    });
}

VX_UINT32 Saturated(VX_UINT64 number) {
    return static_cast<VX_UINT32>(std::min<VX_UINT64>(number, std::numeric_limits<VX_UINT32>::max()));
}

bool TakeText(Text text, std::string& value) {
    const Text line = Trimmed(text);
    if (!IsUntold(line)) {
        value = line;
        std::replace_if(
            value.begin(), value.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    }
    return true;
}

bool TakeSpeed(Text text, VX_UINT32& speed) {
    const Text word = Trimmed(text);
    const auto* const row = Find(SPEEDS, word);
    if (row != nullptr) {
        speed = row->code.code;
    }
    return row != nullptr || IsUntold(word);
}

bool TakeSpeeds(Text text, VX_UINT8& speeds) {
    bool isUnderstood = true;
    for (Text rest = Trimmed(text); !rest.empty();) {
        const Text word = Trimmed(rest.substr(0, rest.find(',')));
        const auto* const row = Find(SPEEDS, word);
        if (row != nullptr) {
            speeds = static_cast<VX_UINT8>(speeds | row->code.bit);
        }
        isUnderstood = isUnderstood && (row != nullptr || IsUntold(word));
        rest.remove_prefix(std::min(rest.find(','), rest.size() - 1) + 1);
    }
    return isUnderstood;
}

bool TakePortState(Text text, VX_UINT8& state) {
    const Text word = Trimmed(text);
    const auto* const row = Find(PORT_STATES, word);
    if (row != nullptr) {
        state = row->code;
    }
    return row != nullptr || IsUntold(word);
}

bool TakeTargetState(Text text, VX_UINT8 (&flags)[6]) {
    const Text word = Trimmed(text);
    if (word == "Online" || word == "Marginal") { // degraded, but reachable
        flags[2] |= 0x02;
        flags[4] |= 0x01;
    }
    return IsUntold(word) || Find(PORT_STATES, word) != nullptr;
}

bool TakePortType(Text text, _vexapi_protocol_t& record) {
    const Text word = Trimmed(text);
    const auto* const row = Find(PORT_TYPES, word);
    if (row != nullptr) {
        record.PortType = row->code.type;
        record.PortConnectionMode = row->code.mode;
    }
    return row != nullptr || IsUntold(word);
}

bool TakeLinkSpeed(Text text, VX_UINT16& link) {
    const Text word = Trimmed(text);
    const auto* const row = Find(LINK_SPEEDS, word.substr(0, word.find(' ')));
    if (row != nullptr) {
        link = static_cast<VX_UINT16>(link | row->code);
    }
    return row != nullptr || IsUntold(word);
}

bool TakeLinkWidth(Text text, VX_UINT16& link) {
    constexpr VX_UINT16 LANES_32 = 24;
    return WithNumber(text, [&](std::uint64_t lanes) {
        // The kernel shows 255 or 63 lanes if the width is unknown.
        const std::uint64_t code = lanes <= 16 ? lanes : lanes == 32 ? LANES_32 : 0;
        link = static_cast<VX_UINT16>(link | code << 4);
    });
}

bool TakeWorldwideId(Text text, _tagVEXAPI_SDMLun& lun) {
    const Text word = Trimmed(text);
    if (IsUntold(word)) {
        return true;
    }
    if (const std::optional<Text> characters = Without("t10.", word)) {
        StoreWorldwideId(*characters, lun);
        return true;
    }
    for (const Text prefix : {"naa.", "eui.", "uuid."}) {
        if (const std::optional<Text> digits = Without(prefix, word)) {
            VX_UINT8 bytes[sizeof lun.WorldwideId];
            std::size_t count = 0;
            if (!HexBytes(*digits, bytes, sizeof bytes, count)) {
                return false;
            }
            StoreWorldwideId({reinterpret_cast<const char*>(bytes), count}, lun);
            return true;
        }
    }
    return word.starts_with("nvme."); // made up from the texts if the namespace has no identifier
}

bool TakeDesignators(Text page, _tagVEXAPI_SDMLun& lun) {
    if (page.size() < 4 || ByteAt(page, 1) != 0x83) {
        return false;
    }
    const std::size_t length = (ByteAt(page, 2) << 8) + ByteAt(page, 3);
    Text best;
    unsigned bestRank = 0;
    for (Text rest = page.substr(4, length); rest.size() >= 4;) {
        const std::size_t size = ByteAt(rest, 3);
        const bool isOfLogicalUnit = (ByteAt(rest, 1) & 0x30) == 0;
        if (isOfLogicalUnit && size != 0 && rest.size() >= 4 + size) {
            const Text designator = rest.substr(4, size);
            const unsigned rank = DesignatorRank(ByteAt(rest, 1) & 0x0F, designator);
            best = rank > bestRank ? designator : best;
            bestRank = std::max(rank, bestRank);
        }
        rest.remove_prefix(std::min(4 + size, rest.size()));
    }
    if (bestRank != 0) {
        StoreWorldwideId(best, lun);
    }
    return bestRank != 0;
}

bool TakeUuid(Text text, VX_UINT8 (&id)[16]) {
    const Text word = Trimmed(text);
    VX_UINT8 bytes[16] = {};
    std::size_t count = 0;
    if (IsUntold(word)) {
        return true;
    }
    if (!HexBytes(word, bytes, sizeof bytes, count) || count != sizeof bytes) {
        return false;
    }
    std::memcpy(id, bytes, sizeof id);
    return true;
}

bool TakeAddress(Text text, Controller& controller) {
    const auto nameAfter = [](Text entry, Text part) {
        const std::size_t begin = entry.find(part);
        const Text name = begin == Text::npos ? Text() : entry.substr(begin + part.size());
        return NumberIn(name.substr(0, name.find(':'))).value_or(0);
    };
    bool hasTarget = false;
    for (Text rest = Trimmed(text); !rest.empty();) {
        const std::size_t comma = std::min(rest.find(','), rest.size());
        const Text entry = rest.substr(0, comma);
        if (const std::optional<Text> target = Without("traddr=", entry)) {
            StoreName(nameAfter(*target, "nn-"), controller.target.NodeName);
            StoreName(nameAfter(*target, "pn-"), controller.target.PortName);
            hasTarget = nameAfter(*target, "pn-") != 0;
        } else if (const std::optional<Text> host = Without("host_traddr=", entry)) {
            controller.hostPort = nameAfter(*host, "pn-");
        }
        rest.remove_prefix(std::min(comma + 1, rest.size()));
    }
    return hasTarget && controller.hostPort != 0;
}

bool TakeInquiry(Text bytes, Lun& lun) {
    constexpr std::size_t FIXED_PART = 36;
    if (bytes.size() < FIXED_PART) {
        return false;
    }
    lun.deviceType = ByteAt(bytes, 0) & 0x1F;
    TakePadded(bytes.substr(8, 8), lun.record.VendorId);
    TakePadded(bytes.substr(16, 16), lun.record.ProductId);
    return TakePadded(bytes.substr(32, 4), lun.record.ProductRevision);
}

bool TakeTimeout(Text text, VX_UINT32& seconds) {
    return Trimmed(text) == "off" || TakeNumber(text, seconds);
}

bool TakeSuspension(Text text, std::string& state) {
    const Text word = Trimmed(text);
    if (word != "0" && word != "1") {
        return false;
    }
    state = word == "0" ? "active" : "suspended";
    return true;
}

bool TakeDeviceNumber(Text text, dev_t& number) {
    const Text word = Trimmed(text);
    const std::size_t colon = std::min(word.find(':'), word.size());
    const std::optional<std::uint64_t> major = NumberIn(word.substr(0, colon));
    const std::optional<std::uint64_t> minor = NumberIn(word.substr(std::min(colon + 1, word.size())));
    constexpr std::uint64_t MAX_MAJOR = 0xFFF; // the kernel's limits
    constexpr std::uint64_t MAX_MINOR = 0xFFFFF;
    if (!major || !minor || *major > MAX_MAJOR || *minor > MAX_MINOR) {
        return false;
    }
    number = makedev(static_cast<unsigned>(*major), static_cast<unsigned>(*minor));
    return true;
}

std::uint64_t NameNumber(const VX_UINT8 (&name)[8]) {
    std::uint64_t number = 0;
    for (const VX_UINT8 byte : name) {
        number = number << 8 | byte;
    }
    return number;
}

void StoreName(std::uint64_t number, VX_UINT8 (&name)[8]) {
    for (std::size_t i = 0; i < 8; ++i) {
        name[i] = static_cast<VX_UINT8>(number >> (8 * (7 - i)));
    }
}

Text VpdKeyword(Text vpd, Text keyword) {
    constexpr unsigned READ_ONLY = 0x90;
    constexpr unsigned LARGE = 0x80;
    // A section has a tag and a little-endian length of two bytes; a small tag, such as the end tag, ends the search.
    while (vpd.size() >= 3 && (ByteAt(vpd, 0) & LARGE) != 0) {
        const unsigned tag = ByteAt(vpd, 0);
        const std::size_t size = std::min<std::size_t>(ByteAt(vpd, 1) + (ByteAt(vpd, 2) << 8), vpd.size() - 3);
        Text section = vpd.substr(3, size);
        while (tag == READ_ONLY && section.size() >= 3) {
            const Text value = section.substr(3, ByteAt(section, 2));
            if (section.starts_with(keyword)) {
                return value;
            }
            section.remove_prefix(3 + value.size());
        }
        vpd.remove_prefix(3 + size);
    }
    return {};
}

} // namespace host
