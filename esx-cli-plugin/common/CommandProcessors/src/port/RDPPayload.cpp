#include "RDPPayload.h"

#include "BoundedText.h"
#include "DiagnosticParameters.h"
#include "ReportArithmetic.h"
#include "ReportTexts.h"
#include "TracedFunction.h"

#include <algorithm>

namespace {

using decoders::Bytes;
namespace descriptors = decoders::rdp_descriptors;

constexpr char DASHES[] = "---------------------------------";
constexpr VX_UINT32 SMALLEST_LIST = 5;

constexpr VX_UINT16 High(VX_UINT32 word) {
    return static_cast<VX_UINT16>(word >> 16);
}
constexpr VX_UINT16 Low(VX_UINT32 word) {
    return static_cast<VX_UINT16>(word);
}

/// Three pieces: if a head doesn't fit as a whole, those of its lines that fit are shown.
void AppendHead(ReportBlock& report, const char* title, const char* before = "") {
    report.RawF("%s%s\n", before, DASHES);
    report.RawF("%s\n", title);
    report.RawF("%s\n", DASHES);
}

/// Moves from a descriptor's tag over its value words, calling `take(index, word)` for each. The cursor ends on the
/// last of them.
template <typename Take> void ForEachValue(RDPCursor& cursor, Take take) {
    cursor.Move(RDPCursor::WORD);
    const VX_UINT32 count = cursor.GetWord() / RDPCursor::WORD;
    for (VX_UINT32 index = 0; index < count && cursor.IsInside(); ++index) {
        const VX_UINT32 word = cursor.GetWord(RDPCursor::WORD);
        cursor.Move(RDPCursor::WORD);
        take(index, word);
    }
}

/// A descriptor's lines by word index. Each format takes one word; counters are printed as signed.
struct WordLines {
    const char* title;
    std::span<const char* const> formats;
    const char* later; ///< for words after the known ones
};

void AppendLine(ReportBlock& report, const WordLines& lines, VX_UINT32 index, VX_UINT32 word) {
    report.RawF(index < lines.formats.size() ? lines.formats[index] : lines.later, word);
}

void DecodeDiagParamsDescriptorData(RDPCursor& cursor, ReportBlock& report) {
    AppendHead(report, "Diagnostics Parameters Information", "\n");
    cursor.Move(RDPCursor::WORD);
    const VX_UINT32 length = cursor.GetWord();
    report.RawF("Descriptor Tag: %s\n", "Link Service Request Information");
    report.RawF("Descriptor Len: %d Bytes\n", static_cast<int>(length));
    for (VX_UINT32 index = 0; index < length / RDPCursor::WORD && cursor.IsInside(); ++index) {
        cursor.Move(RDPCursor::WORD);
        // Required: each value is read one more byte off than the one before; parsers depend on the values.
        report.RawF("Descriptor Value: 0x%08X\n", cursor.GetWord(index));
    }
    report.RawF("\n");
}

const char* OnOff(bool isOn) {
    return isOn ? "On" : "Off";
}

void DecodeSFPFlagInfo(VX_UINT16 flags, ReportBlock& report) {
    const auto bit = [flags](unsigned number) { return (flags >> number & 1) != 0; };
    // Required: a third kind, LL 1550 nm, has both low bits set and so reads as the second; parsers depend on it.
    if ((flags & 0xF) == 1) {
        report.RawF("\tPort Tx Type: Short Wave Laser\n");
    } else if (bit(1)) {
        report.RawF("\tPort Tx Type: Long Wave Laser LC 1310 nm\n");
    }
    report.RawF("\tConnector Type: %s\n", bit(4) && bit(6) ? "SFP+" : "Other");
    report.RawF("\tOptical Port: %s\n", OnOff(bit(4)));
    report.RawF("\tSFP Diagnostics Parameters not valid: %s\n", OnOff(bit(5)));
    // Required: the labels of the two cases differ; parsers match on them.
    report.RawF("\tFEC Active%s: %s\n", bit(15) ? " Port" : "", OnOff(bit(15)));
}

void DecodeSFPDiagParamDescriptorData(RDPCursor& cursor, ReportBlock& report) {
    AppendHead(report, "SFP Diagnostics Param Information");
    ForEachValue(cursor, [&](VX_UINT32 index, VX_UINT32 word) {
        switch (index) {
        case 0:
            report.RawF("Temperature: %d (C)\n", static_cast<int>(word >> 24)); // ignores the sign and the fraction
            report.RawF("Vcc: %.09f V\n", static_cast<double>(VoltageCalc(Low(word))));
            break;
        case 1:
            report.RawF("Tx Bias: %.09f mA\n", static_cast<double>(TxBiasCalc(High(word))));
            report.RawF("Tx Power: %.09f mW\n", static_cast<double>(TxRxPowerCalc(Low(word))));
            break;
        case 2:
            report.RawF("Rx Power: %.09f mW\n", static_cast<double>(TxRxPowerCalc(High(word))));
            report.RawF("SFP Flag: 0x%04X\n", Low(word));
            DecodeSFPFlagInfo(Low(word), report);
            break;
        default:
            report.RawF("Descriptor Value: 0x%08X\n", word);
        }
    });
    report.RawF("\n");
}

void DecodePortSpeedDescriptorData(RDPCursor& cursor, ReportBlock& report) {
    AppendHead(report, "Port Speed Information");
    ForEachValue(cursor, [&](VX_UINT32, VX_UINT32 word) {
        char capabilities[256] = {};
        report.RawF("Port Speed Capabilities: %s\n",
                    rdp::DecodePortSpeedCapabilities(High(word), capabilities, sizeof capabilities));
        report.RawF("Port Operating Speed: %d Gbps\n", rdp::DecodePortOperatingSpeed(Low(word)));
    });
    report.RawF("\n");
}

void DecodePNPortPhysicalType(VX_UINT32 word, ReportBlock& report) {
    static constexpr const char* TEXTS[] = {
        "\tNo information about Phy Type provided",
        "\tThe sending VN_Port uses an FC-FS-3 PN_Port or PF Port",
        "\tThe sending VN_Port uses a lossless Ethernet MAC",
        nullptr,
    };
    if (const char* text = TEXTS[word >> 30]) {
        report.RawF("%s\n", text);
    }
}

void DecodeLinkErrorStatusDescriptorData(RDPCursor& cursor, ReportBlock& report) {
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
    report.RawF("\n");
}

void AppendName(ReportBlock& report, const char* label, Bytes name) {
    if (name.BigU64(0) != 0) {
        VX_UINT8 bytes[8];
        std::generate(std::begin(bytes), std::end(bytes), [&, at = std::size_t{0}]() mutable { return name[at++]; });
        report.RawF("%s: %s\n", label, WwnText(bytes).c_str());
    }
}

void DecodePortNameDescriptorData(RDPCursor& cursor, ReportBlock& report) {
    constexpr VX_UINT32 NAME_SIZE = 8;
    const Bytes value = cursor.Value();
    AppendHead(report, "Port Name Information");
    ForEachValue(cursor, [&](VX_UINT32 index, VX_UINT32 word) {
        if (index >= 2 * NAME_SIZE / RDPCursor::WORD) {
            report.RawF("Descriptor Value (%d): 0x%08X\n", static_cast<int>(index), word);
        }
    });
    AppendName(report, "Node WWN", value.Sub(0, NAME_SIZE));
    AppendName(report, "Port WWN", value.Sub(NAME_SIZE, NAME_SIZE));
    report.RawF("\n");
}

void DecodeWordLines(RDPCursor& cursor, ReportBlock& report, const WordLines& lines) {
    AppendHead(report, lines.title);
    ForEachValue(cursor, [&](VX_UINT32 index, VX_UINT32 word) { AppendLine(report, lines, index, word); });
    report.RawF("\n");
}

void DecodeFECStatusDescriptorData(RDPCursor& cursor, ReportBlock& report) {
    static constexpr const char* FORMATS[] = {"Correctable Blocks: %d\n", "UnCorreatable Blocks: %d\n"};
    DecodeWordLines(cursor, report, {"FEC Status Information", FORMATS, "FEC Status Block Value: %d\n"});
}

void DecodeBufferCreditsStatusDescriptorData(RDPCursor& cursor, ReportBlock& report) {
    static constexpr const char* FORMATS[] = {"FC Port Buffer To Buffer Credits: %d\n",
                                              "Attached FC Port Buffer To Buffer Credits: %d\n",
                                              "Nominal FC Port RTT: %d ns\n"};
    DecodeWordLines(cursor, report,
                    {"Buffer Credits Status Information", FORMATS, "Buffer Credits Status Value: 0x%08X\n"});
}

/// An optical element descriptor, identified by its function flags, the whole word.
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
    ElementOf(0x20000000, "Voltage", VoltageCalc),
    ElementOf(0x30000000, "Tx Bias", TxBiasCalc),
    ElementOf(0x40000000, "Tx Power", TxRxPowerCalc),
    ElementOf(0x50000000, "Rx Power", TxRxPowerCalc),
};

void DecodeOpticalElementData(RDPCursor& cursor, ReportBlock& report) {
    constexpr VX_UINT32 KNOWN_WORDS = 3;
    const Bytes value = cursor.Value();
    AppendHead(report, "Optical Element Data Information");
    ForEachValue(cursor, [&](VX_UINT32 index, VX_UINT32 word) {
        if (index >= KNOWN_WORDS) {
            report.RawF("Optical Element Data Descriptor Value: 0x%08X\n", word);
        }
    });
    const VX_UINT16 highAlarm = value.BigU16(0);
    const VX_UINT16 lowAlarm = value.BigU16(2);
    const VX_UINT16 highWarning = value.BigU16(4);
    const VX_UINT16 lowWarning = value.BigU16(6);
    const VX_UINT32 flags = value.BigU32(8);
    // By FC-LS only the four high bits give the kind of element.
    const auto* element = std::find_if(std::begin(OPTICAL_ELEMENTS), std::end(OPTICAL_ELEMENTS),
                                       [flags](const OpticalElement& row) { return row.flags == flags; });
    if (element != std::end(OPTICAL_ELEMENTS)) {
        const auto append = [&](const char* limit, float level) {
            report.RawF(element->format, element->name, limit, static_cast<double>(level));
        };
        append("High Alarm", element->highAlarm(highAlarm));
        append("Low Alarm", element->lowAlarm(lowAlarm));
        append("High Warning", element->highWarning(highWarning));
        append("Low Warning", element->lowWarning(lowWarning));
    } else {
        const auto append = [&](const char* limit, VX_UINT16 level) {
            report.RawF("Optical Element Function Flag [0x%02x] %s: 0x%02x\n", flags, limit, level);
        };
        report.RawF("High Alarm: %.09f\n", static_cast<double>(rdp::CalculateTemperatureHighAlarm(highAlarm)));
        append("High Alarm", highAlarm);
        append("Low Alarm", lowAlarm);
        append("High Warning", highWarning);
        append("Low Warning", lowWarning);
    }
    report.RawF("\n");
}

/// A zero byte in the characters ends the piece there and drops its line end: the next label continues on the same
/// line.
void AppendCharacters(ReportBlock& report, const char* label, Bytes value, std::size_t offset, std::size_t size,
                      const char* lineEnd) {
    const std::string_view text = value.Text(offset, size);
    report.RawF("%s%.*s%s", label, static_cast<int>(text.size()), text.data(), text.size() == size ? lineEnd : "");
}

struct ProductField {
    const char* label;
    std::size_t offset;
    std::size_t size;
    const char* lineEnd;
};
constexpr ProductField PRODUCT_FIELDS[] = {
    {"Vendor Name: ", descriptors::VENDOR_NAME, descriptors::VENDOR_NAME_SIZE, "\n"},
    {"Part Number: ", descriptors::PART_NUMBER, descriptors::PART_NUMBER_SIZE, "\n"},
    {"Serial Number: ", descriptors::SERIAL_NUMBER, descriptors::SERIAL_NUMBER_SIZE, "\n"},
    {"Revision: ", descriptors::REVISION, descriptors::REVISION_SIZE, ""},
    {"\nDate: ", descriptors::DATE_CODE, descriptors::DATE_CODE_SIZE, "\n"},
};

void DecodeOpticalProductDataDescriptor(RDPCursor& cursor, ReportBlock& report) {
    namespace product = descriptors;
    constexpr VX_UINT32 KNOWN_WORDS = (product::DATE_CODE + product::DATE_CODE_SIZE) / RDPCursor::WORD;
    const Bytes value = cursor.Value();
    AppendHead(report, "Optical Product Data Information");
    ForEachValue(cursor, [&](VX_UINT32 index, VX_UINT32 word) {
        if (index >= KNOWN_WORDS) {
            report.RawF("Optical Product Data Descriptor Value: 0x%08X\n", word);
        }
    });
    for (const ProductField& field : PRODUCT_FIELDS) {
        AppendCharacters(report, field.label, value, field.offset, field.size, field.lineEnd);
    }
    report.RawF("\n");
}

struct Descriptor {
    VX_UINT32 tag;
    void (*decode)(RDPCursor& cursor, ReportBlock& report);
};
constexpr Descriptor DESCRIPTORS[] = {
    {descriptors::LINK_SERVICE_REQUEST, DecodeDiagParamsDescriptorData},
    {descriptors::TRANSCEIVER, DecodeSFPDiagParamDescriptorData},
    {descriptors::PORT_SPEED, DecodePortSpeedDescriptorData},
    {descriptors::LINK_ERRORS, DecodeLinkErrorStatusDescriptorData},
    {descriptors::PORT_NAMES, DecodePortNameDescriptorData},
    {descriptors::FEC_STATUS, DecodeFECStatusDescriptorData},
    {descriptors::BUFFER_CREDITS, DecodeBufferCreditsStatusDescriptorData},
    {descriptors::OPTICAL_ELEMENT, DecodeOpticalElementData},
    {descriptors::OPTICAL_PRODUCT, DecodeOpticalProductDataDescriptor},
};

void DecodeDescriptor(RDPCursor& cursor, ReportBlock& report) {
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

Bytes RDPCursor::Value() const {
    const std::size_t length = GetWord(WORD);
    return mPayload.Sub(std::size_t{mOffset} + 2 * WORD, length / WORD * WORD);
}

void ParseRDPDataBuffer(Bytes payload, ReportBlock& report, bool& isVendorMatch) {
    const TracedFunction traced("PhysicalPortRDPCmdsProcessor", __func__);
    RDPCursor cursor(payload);
    // The length is from the start of the payload, including its own four bytes.
    const VX_UINT32 listEnd = cursor.GetWord();
    if (listEnd < SMALLEST_LIST) {
        return;
    }
    for (cursor.MoveTo(RDPCursor::WORD); cursor.IsBefore(listEnd); cursor.Move(RDPCursor::WORD)) {
        if (cursor.GetWord() == descriptors::OPTICAL_PRODUCT) {
            const TavuString vendor(cursor.Value().Text(descriptors::VENDOR_NAME, descriptors::VENDOR_NAME_SIZE));
            isVendorMatch = vendor.find("CISCO") != TavuString::npos;
            for (const ProductField& field : PRODUCT_FIELDS) {
                const char* const label = field.label + (*field.label == '\n' ? 1 : 0);
                TraceStep(TRACE_INFORMATION, "%s%s", label,
                          TavuString(cursor.Value().Text(field.offset, field.size)).c_str());
            }
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
    for (std::size_t index = 0; index < std::size(descriptors::SPEEDS); ++index) {
        if ((capabilities >> (descriptors::FIRST_SPEED_BIT + index) & 1) != 0) {
            TavuString speed;
            speed.Format("%u ", descriptors::SPEEDS[index]);
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
    const int lowest = __builtin_ffs(speed) - 1; // -1 if no bit is set
    const int first = descriptors::FIRST_SPEED_BIT;
    return lowest < first ? 0 : static_cast<int>(descriptors::SPEEDS[lowest - first]);
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
