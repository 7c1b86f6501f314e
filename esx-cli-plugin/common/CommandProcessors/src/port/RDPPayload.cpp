#include "RDPPayload.h"

#include "BoundedText.h"
#include "ReportTexts.h"
#include "TracedFunction.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

constexpr char DASHES[] = "---------------------------------";
constexpr VX_UINT32 SMALLEST_LIST = 5;
constexpr VX_UINT32 TAG_OPTICAL_PRODUCT = 0x00010008;

constexpr VX_UINT16 High(VX_UINT32 word) {
    return static_cast<VX_UINT16>(word >> 16);
}
constexpr VX_UINT16 Low(VX_UINT32 word) {
    return static_cast<VX_UINT16>(word);
}

/// Three pieces: of a head that doesn't fit whole into the report, the lines that fit are shown.
void AppendHead(RDPReport& report, const char* title, const char* before = "") {
    report.Append("%s%s\n", before, DASHES);
    report.Append("%s\n", title);
    report.Append("%s\n", DASHES);
}

/// Moves from a descriptor's tag over its value words: `take(index, word)` for each. The cursor ends on the last
/// of them.
template <typename Take> void ForEachValue(RDPCursor& cursor, Take take) {
    cursor.Move(RDPCursor::WORD);
    const VX_UINT32 count = cursor.GetWord() / RDPCursor::WORD;
    for (VX_UINT32 index = 0; index < count && cursor.IsInside(); ++index) {
        const VX_UINT32 word = cursor.GetWord(RDPCursor::WORD);
        cursor.Move(RDPCursor::WORD);
        take(index, word);
    }
}

/// A descriptor's lines by the index of its words. Each format takes one word; counters print with a sign.
struct WordLines {
    const char* title;
    std::span<const char* const> formats;
    const char* later; ///< of the words behind the known ones
};

void AppendLine(RDPReport& report, const WordLines& lines, VX_UINT32 index, VX_UINT32 word) {
    report.Append(index < lines.formats.size() ? lines.formats[index] : lines.later, word);
}

void DecodeDiagParamsDescriptorData(RDPCursor& cursor, RDPReport& report) {
    AppendHead(report, "Diagnostics Parameters Information", "\n");
    cursor.Move(RDPCursor::WORD);
    const VX_UINT32 length = cursor.GetWord();
    report.Append("Descriptor Tag: %s\n", "Link Service Request Information");
    report.Append("Descriptor Len: %d Bytes\n", static_cast<int>(length));
    for (VX_UINT32 index = 0; index < length / RDPCursor::WORD && cursor.IsInside(); ++index) {
        cursor.Move(RDPCursor::WORD);
        // Each value is read one byte further out of step than the one before: clients know these values.
        report.Append("Descriptor Value: 0x%08X\n", cursor.GetWord(index));
    }
    report.Append("\n");
}

const char* OnOff(bool isOn) {
    return isOn ? "On" : "Off";
}

void DecodeSFPFlagInfo(VX_UINT16 flags, RDPReport& report) {
    const auto bit = [flags](unsigned number) { return (flags >> number & 1) != 0; };
    // A third kind, LL 1550 nm, has both low bits set, and so reads as the second: clients know it so.
    if ((flags & 0xF) == 1) {
        report.Append("\tPort Tx Type: Short Wave Laser\n");
    } else if (bit(1)) {
        report.Append("\tPort Tx Type: Long Wave Laser LC 1310 nm\n");
    }
    report.Append("\tConnector Type: %s\n", bit(4) && bit(6) ? "SFP+" : "Other");
    report.Append("\tOptical Port: %s\n", OnOff(bit(4)));
    report.Append("\tSFP Diagnostics Parameters not valid: %s\n", OnOff(bit(5)));
    // The labels of the two cases differ: clients match on them.
    report.Append("\tFEC Active%s: %s\n", bit(15) ? " Port" : "", OnOff(bit(15)));
}

void DecodeSFPDiagParamDescriptorData(RDPCursor& cursor, RDPReport& report) {
    AppendHead(report, "SFP Diagnostics Param Information");
    ForEachValue(cursor, [&](VX_UINT32 index, VX_UINT32 word) {
        switch (index) {
        case 0:
            report.Append("Temperature: %d (C)\n", static_cast<int>(word >> 24)); // without its fraction
            report.Append("Vcc: %.09f V\n", static_cast<double>(rdp::CalculateVoltage(Low(word))));
            break;
        case 1:
            report.Append("Tx Bias: %.09f mA\n", static_cast<double>(rdp::CalculateTxBias(High(word))));
            report.Append("Tx Power: %.09f mW\n", static_cast<double>(rdp::CalculateTxRxPower(Low(word))));
            break;
        case 2:
            report.Append("Rx Power: %.09f mW\n", static_cast<double>(rdp::CalculateTxRxPower(High(word))));
            report.Append("SFP Flag: 0x%04X\n", Low(word));
            DecodeSFPFlagInfo(Low(word), report);
            break;
        default:
            report.Append("Descriptor Value: 0x%08X\n", word);
        }
    });
    report.Append("\n");
}

void DecodePortSpeedDescriptorData(RDPCursor& cursor, RDPReport& report) {
    AppendHead(report, "Port Speed Information");
    ForEachValue(cursor, [&](VX_UINT32, VX_UINT32 word) {
        char capabilities[256] = {};
        report.Append("Port Speed Capabilities: %s\n",
                      rdp::DecodePortSpeedCapabilities(High(word), capabilities, sizeof capabilities));
        report.Append("Port Operating Speed: %d Gbps\n", rdp::DecodePortOperatingSpeed(Low(word)));
    });
    report.Append("\n");
}

void DecodePNPortPhysicalType(VX_UINT32 word, RDPReport& report) {
    static constexpr const char* TEXTS[] = {
        "\tNo information about Phy Type provided",
        "\tThe sending VN_Port uses an FC-FS-3 PN_Port or PF Port",
        "\tThe sending VN_Port uses a lossless Ethernet MAC",
        nullptr,
    };
    if (const char* text = TEXTS[word >> 30]) {
        report.Append("%s\n", text);
    }
}

void DecodeLinkErrorStatusDescriptorData(RDPCursor& cursor, RDPReport& report) {
    static constexpr VX_UINT32 PHYSICAL_TYPE = 6;
    static constexpr const char* FORMATS[] = {
        "Link Failure Count: %d\n",           "Loss Of Sync Count: %d\n",          "Loss Of Signal Count: %d\n",
        "Primary Sequence Error Count: %d\n", "Invalid Transmit Word Count: %d\n", "Invalid CRC Count: %d\n",
        "PN Port Physical Type: 0x%08X\n",
    };
    static constexpr WordLines LINES = {"Link Error Status Block Information", FORMATS,
                                        "Link Error Status Block Value: 0x%08X\n"};
    AppendHead(report, LINES.title);
    ForEachValue(cursor, [&](VX_UINT32 index, VX_UINT32 word) {
        AppendLine(report, LINES, index, word);
        if (index == PHYSICAL_TYPE) {
            DecodePNPortPhysicalType(word, report);
        }
    });
    report.Append("\n");
}

void StoreWord(VX_UINT8* bytes, VX_UINT32 word) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        *bytes++ = static_cast<VX_UINT8>(word >> shift);
    }
}

void DecodePortNameDescriptorData(RDPCursor& cursor, RDPReport& report) {
    constexpr VX_UINT32 WORDS_PER_NAME = 2;
    VX_UINT8 names[2][8] = {};
    AppendHead(report, "Port Name Information");
    ForEachValue(cursor, [&](VX_UINT32 index, VX_UINT32 word) {
        if (index < 2 * WORDS_PER_NAME) {
            StoreWord(&names[index / WORDS_PER_NAME][index % WORDS_PER_NAME * RDPCursor::WORD], word);
        } else {
            report.Append("Descriptor Value (%d): 0x%08X\n", static_cast<int>(index), word);
        }
    });
    if (!IsZero(names[0])) {
        report.Append("Node WWN: %s\n", WwnText(names[0]).c_str());
    }
    if (!IsZero(names[1])) {
        report.Append("Port WWN: %s\n", WwnText(names[1]).c_str());
    }
    report.Append("\n");
}

void DecodeWordLines(RDPCursor& cursor, RDPReport& report, const WordLines& lines) {
    AppendHead(report, lines.title);
    ForEachValue(cursor, [&](VX_UINT32 index, VX_UINT32 word) { AppendLine(report, lines, index, word); });
    report.Append("\n");
}

void DecodeFECStatusDescriptorData(RDPCursor& cursor, RDPReport& report) {
    static constexpr const char* FORMATS[] = {"Correctable Blocks: %d\n", "UnCorreatable Blocks: %d\n"};
    DecodeWordLines(cursor, report, {"FEC Status Information", FORMATS, "FEC Status Block Value: %d\n"});
}

void DecodeBufferCreditsStatusDescriptorData(RDPCursor& cursor, RDPReport& report) {
    static constexpr const char* FORMATS[] = {"FC Port Buffer To Buffer Credits: %d\n",
                                              "Attached FC Port Buffer To Buffer Credits: %d\n",
                                              "Nominal FC Port RTT: %d ns\n"};
    DecodeWordLines(cursor, report,
                    {"Buffer Credits Status Information", FORMATS, "Buffer Credits Status Value: 0x%08X\n"});
}

/// What an optical element descriptor is about: its function flags, the whole word.
struct OpticalElement {
    VX_UINT32 flags;
    const char* name;
    const char* format; ///< of a value
    float (*highAlarm)(VX_UINT16 value);
    float (*lowAlarm)(VX_UINT16 value);
    float (*highWarning)(VX_UINT16 value);
    float (*lowWarning)(VX_UINT16 value);
};
constexpr OpticalElement ElementOf(VX_UINT32 flags, const char* name, float (*calculate)(VX_UINT16 value)) {
    return {flags, name, "%s %s: %.09f\n", calculate, calculate, calculate, calculate};
}
constexpr OpticalElement OPTICAL_ELEMENTS[] = {
    {0x10000000, "Temperature", "%s %s: %.02f\n", rdp::CalculateTemperatureHighAlarm, rdp::CalculateTemperatureLowAlarm,
     rdp::CalculateTemperatureHighWarning, rdp::CalculateTemperatureLowWarning},
    ElementOf(0x20000000, "Voltage", rdp::CalculateVoltage),
    ElementOf(0x30000000, "Tx Bias", rdp::CalculateTxBias),
    ElementOf(0x40000000, "Tx Power", rdp::CalculateTxRxPower),
    ElementOf(0x50000000, "Rx Power", rdp::CalculateTxRxPower),
};

void DecodeOpticalElementData(RDPCursor& cursor, RDPReport& report) {
    VX_UINT32 words[3] = {}; // alarms, warnings, flags
    AppendHead(report, "Optical Element Data Information");
    ForEachValue(cursor, [&](VX_UINT32 index, VX_UINT32 word) {
        if (index < std::size(words)) {
            words[index] = word;
        } else {
            report.Append("Optical Element Data Descriptor Value: 0x%08X\n", word);
        }
    });
    const auto [alarms, warnings, flags] = words;
    const auto* element = std::find_if(std::begin(OPTICAL_ELEMENTS), std::end(OPTICAL_ELEMENTS),
                                       [&](const OpticalElement& row) { return row.flags == words[2]; });
    if (element != std::end(OPTICAL_ELEMENTS)) {
        const auto append = [&](const char* limit, float value) {
            report.Append(element->format, element->name, limit, static_cast<double>(value));
        };
        append("High Alarm", element->highAlarm(High(alarms)));
        append("Low Alarm", element->lowAlarm(Low(alarms)));
        append("High Warning", element->highWarning(High(warnings)));
        append("Low Warning", element->lowWarning(Low(warnings)));
    } else {
        const auto append = [&report, raw = flags](const char* limit, VX_UINT16 value) {
            report.Append("Optical Element Function Flag [0x%02x] %s: 0x%02x\n", raw, limit, value);
        };
        report.Append("High Alarm: %.09f\n", static_cast<double>(rdp::CalculateTemperatureHighAlarm(High(alarms))));
        append("High Alarm", High(alarms));
        append("Low Alarm", Low(alarms));
        append("High Warning", High(warnings));
        append("Low Warning", Low(warnings));
    }
    report.Append("\n");
}

/// Identity of a transceiver: the characters of the first 15 value words.
struct OpticalProduct {
    char vendor[16];
    char partNumber[16];
    char serialNumber[16];
    char revision[4];
    char date[8];
};
static_assert(sizeof(OpticalProduct) == 15 * RDPCursor::WORD);

/// `later(word)` takes the words behind them.
template <typename Later> OpticalProduct ReadOpticalProduct(RDPCursor& cursor, Later later) {
    VX_UINT8 bytes[sizeof(OpticalProduct)] = {};
    ForEachValue(cursor, [&](VX_UINT32 index, VX_UINT32 word) {
        if (index < sizeof bytes / RDPCursor::WORD) {
            StoreWord(&bytes[index * RDPCursor::WORD], word);
        } else {
            later(word);
        }
    });
    OpticalProduct product;
    std::memcpy(&product, bytes, sizeof product);
    return product;
}

/// A zero byte among the characters ends the piece there, and its line end is lost with it: the next label runs
/// on behind it.
template <std::size_t N>
void AppendCharacters(RDPReport& report, const char* label, const char (&characters)[N], const char* lineEnd) {
    const std::string_view text = BoundedText(characters);
    report.Append("%s%.*s%s", label, static_cast<int>(text.size()), text.data(), text.size() == N ? lineEnd : "");
}

void DecodeOpticalProductDataDescriptor(RDPCursor& cursor, RDPReport& report) {
    AppendHead(report, "Optical Product Data Information");
    const OpticalProduct product = ReadOpticalProduct(
        cursor, [&](VX_UINT32 word) { report.Append("Optical Product Data Descriptor Value: 0x%08X\n", word); });
    AppendCharacters(report, "Vendor Name: ", product.vendor, "\n");
    AppendCharacters(report, "Part Number: ", product.partNumber, "\n");
    AppendCharacters(report, "Serial Number: ", product.serialNumber, "\n");
    AppendCharacters(report, "Revision: ", product.revision, "");
    AppendCharacters(report, "\nDate: ", product.date, "\n");
    report.Append("\n");
}

/// The vendor's characters up to a zero byte.
TavuString DecodeSwitchVendorFromOpticalProductDescriptor(RDPCursor& cursor) {
    const OpticalProduct product = ReadOpticalProduct(cursor, [](VX_UINT32) {});
    return TavuString(BoundedText(product.vendor));
}

struct Descriptor {
    VX_UINT32 tag;
    void (*decode)(RDPCursor& cursor, RDPReport& report);
};
constexpr Descriptor DESCRIPTORS[] = {
    {0x00000001, DecodeDiagParamsDescriptorData},
    {0x00010000, DecodeSFPDiagParamDescriptorData},
    {0x00010001, DecodePortSpeedDescriptorData},
    {0x00010002, DecodeLinkErrorStatusDescriptorData},
    {0x00010003, DecodePortNameDescriptorData},
    {0x00010005, DecodeFECStatusDescriptorData},
    {0x00010006, DecodeBufferCreditsStatusDescriptorData},
    {0x00010007, DecodeOpticalElementData},
    {TAG_OPTICAL_PRODUCT, DecodeOpticalProductDataDescriptor},
};

/// Bits of the speed words, from 6 on.
constexpr unsigned FIRST_SPEED_BIT = 6;
constexpr int SPEEDS[] = {256, 128, 64, 32, 16, 8, 10, 4, 2, 1};

void DecodeDescriptor(RDPCursor& cursor, RDPReport& report) {
    const VX_UINT32 tag = cursor.GetWord();
    const auto* descriptor = std::find_if(std::begin(DESCRIPTORS), std::end(DESCRIPTORS),
                                          [tag](const Descriptor& row) { return row.tag == tag; });
    if (descriptor != std::end(DESCRIPTORS)) {
        descriptor->decode(cursor, report);
    } else {
        TraceStep(TRACE_INFORMATION, "Unknown Descriptor Tag/Value 0x%08X", tag);
    }
}

} // namespace

void RDPReport::Append(const char* format, ...) {
    char piece[256] = {};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(piece, sizeof piece, format, arguments);
    va_end(arguments);
    strcat_s(mText, mSize, piece);
}

VX_UINT32 RDPCursor::GetWord(VX_UINT32 distance) const {
    VX_UINT32 word = 0;
    for (VX_UINT32 byte = 0; byte < WORD; ++byte) {
        const std::size_t at = std::size_t{mOffset} + distance + byte;
        word = word << 8 | (at < mSize ? mPayload[at] : 0U);
    }
    return word;
}

void ParseRDPDataBuffer(const VX_UINT8* payload, std::size_t size, RDPReport& report, bool& isVendorMatch) {
    const TracedFunction traced("PhysicalPortRDPCmdsProcessor", __func__);
    if (payload == nullptr) {
        TraceStep(TRACE_DEBUG, "pBuffer is NULL");
        return;
    }
    RDPCursor cursor(payload, size);
    // The length counts from the start of the payload, its own four bytes included.
    const VX_UINT32 listEnd = cursor.GetWord();
    if (listEnd < SMALLEST_LIST) {
        return;
    }
    for (cursor.MoveTo(RDPCursor::WORD); cursor.IsBefore(listEnd); cursor.Move(RDPCursor::WORD)) {
        if (cursor.GetWord() == TAG_OPTICAL_PRODUCT) {
            const TavuString vendor = DecodeSwitchVendorFromOpticalProductDescriptor(cursor);
            isVendorMatch = vendor.find("CISCO") != TavuString::npos;
            TraceStep(TRACE_INFORMATION, "Vendor Name: %s", vendor.c_str());
            break;
        }
    }
    for (cursor.MoveTo(RDPCursor::WORD); cursor.IsBefore(listEnd); cursor.Move(RDPCursor::WORD)) {
        DecodeDescriptor(cursor, report);
    }
}

char* rdp::DecodePortSpeedCapabilities(VX_UINT16 capabilities, char* text, std::size_t size) {
    constexpr std::size_t SMALLEST_TEXT = 128;
    TavuString speeds;
    for (std::size_t index = 0; index < std::size(SPEEDS); ++index) {
        if ((capabilities >> (FIRST_SPEED_BIT + index) & 1) != 0) {
            TavuString speed;
            speed.Format("%d ", SPEEDS[index]);
            speeds += speed;
        }
    }
    speeds += "Gbps";
    if (size >= SMALLEST_TEXT) {
        strncpy_s(text, size, speeds.c_str(), COPY_WHAT_FITS);
    }
    return text;
}

int rdp::DecodePortOperatingSpeed(VX_UINT16 speed) {
    const int lowest = __builtin_ffs(speed) - 1; // -1 without any bit
    return lowest < static_cast<int>(FIRST_SPEED_BIT) ? 0 : SPEEDS[static_cast<unsigned>(lowest) - FIRST_SPEED_BIT];
}

float rdp::CalculateVoltage(VX_UINT16 value) {
    return static_cast<float>(value) * 100.0F * 1e-6F;
}

float rdp::CalculateTxBias(VX_UINT16 value) {
    return static_cast<float>(value * 2) * 0.001F;
}

float rdp::CalculateTxRxPower(VX_UINT16 value) {
    return static_cast<float>(value) * 0.1F * 0.001F;
}

float rdp::CalculateTemperatureHighAlarm(VX_UINT16 value) {
    constexpr unsigned SIGN = 0x100;
    return (value & SIGN) == 0 ? static_cast<float>(value & 0xFF) : static_cast<float>(value * 0.5) - 256.0F;
}

float rdp::CalculateTemperatureLowAlarm(VX_UINT16 value) {
    const unsigned low = value & 0xFFU;
    return low == 0 ? 0.0F : static_cast<float>(low) - 256.0F;
}

float rdp::CalculateTemperatureHighWarning(VX_UINT16 value) {
    return CalculateTemperatureHighAlarm(value);
}

float rdp::CalculateTemperatureLowWarning(VX_UINT16 value) {
    return CalculateTemperatureLowAlarm(value);
}
