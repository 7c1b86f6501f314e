/// Payloads of the Read Diagnostic Parameters service, descriptor by descriptor: the words next to the text.
#include "RDPPayload.h"
#include "ReportArithmetic.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

constexpr std::size_t PAYLOAD_SIZE = 508;
const std::string DASHES(33, '-');

/// A payload of words, big-endian, after their list length.
class Payload {
public:
    /// `listLength` 0 stands for the true one, which counts its own four bytes.
    explicit Payload(const std::vector<VX_UINT32>& words, VX_UINT32 listLength = 0) : mBytes(PAYLOAD_SIZE) {
        Store(0, listLength != 0 ? listLength : static_cast<VX_UINT32>(4 + 4 * words.size()));
        for (std::size_t i = 0; i < words.size(); ++i) {
            Store(4 + 4 * i, words[i]);
        }
    }
    /// The report of the first `size` bytes when others follow.
    std::string ReportAhead(std::size_t size, VX_UINT8 following) const {
        std::vector<VX_UINT8> bytes(2 * PAYLOAD_SIZE, following);
        std::copy_n(mBytes.begin(), size, bytes.begin());
        ReportBlock report(16384, ReportBlock::SizeRule::FULL);
        ParseRDPDataBuffer(decoders::Bytes(bytes.data(), size), report, isVendorMatch);
        return report.GetText();
    }
    /// The report of a buffer of exactly `size` bytes, to detect reads past its end.
    std::string Report(std::size_t size = PAYLOAD_SIZE, std::size_t textSize = 16384) const {
        const std::vector<VX_UINT8> exact(mBytes.begin(), mBytes.begin() + static_cast<std::ptrdiff_t>(size));
        ReportBlock report(textSize, ReportBlock::SizeRule::FULL);
        isVendorMatch = false;
        ParseRDPDataBuffer(decoders::Bytes(exact), report, isVendorMatch);
        return report.GetText();
    }
    mutable bool isVendorMatch = false;

private:
    void Store(std::size_t at, VX_UINT32 word) {
        for (std::size_t i = 0; i < 4 && at + i < mBytes.size(); ++i) {
            mBytes[at + i] = static_cast<VX_UINT8>(word >> (24 - 8 * i));
        }
    }
    std::vector<VX_UINT8> mBytes;
};

std::string Block(const std::string& title, const std::string& lines) {
    return DASHES + "\n" + title + "\n" + DASHES + "\n" + lines + "\n";
}

/// Four characters as a word.
VX_UINT32 Text(const char* characters) {
    VX_UINT32 word = 0;
    for (int i = 0; i < 4; ++i) {
        word = word << 8 | static_cast<VX_UINT8>(characters[i]);
    }
    return word;
}

TEST(RDPPayload, ListsBelowFiveBytesAreEmpty) {
    EXPECT_EQ(Payload({0x00010005, 4, 1}, 4).Report(), "");
    EXPECT_EQ(Payload({0x00010005, 4, 1}, 5).Report(), Block("FEC Status Information", "Correctable Blocks: 1\n"));
    EXPECT_EQ(Payload({}).Report(0), "");
}

/// The first value is 8 bytes after the tag, each later one 5 bytes further on: 8, 13, 18.
TEST(RDPPayload, LinkServiceValuesFallOutOfStep) {
    EXPECT_EQ(Payload({1, 12, 0x01020304, 0x05060708, 0x090A0B0C}).Report(),
              "\n" + Block("Diagnostics Parameters Information", "Descriptor Tag: Link Service Request Information\n"
                                                                 "Descriptor Len: 12 Bytes\n"
                                                                 "Descriptor Value: 0x01020304\n"
                                                                 "Descriptor Value: 0x06070809\n"
                                                                 "Descriptor Value: 0x0B0C0000\n"));
}

/// 33000 x 100 microvolts is 3.3 V; 3700 x 2 microamperes is 7.4 mA; 6699 x 0.1 microwatt is 0.6699 mW.
TEST(RDPPayload, Transceiver) {
    EXPECT_EQ(Payload({0x00010000, 16, 0xE97F80E8, 0x0E741A2B, 0x00000000 | 0x0051, 0xCAFEBABE}).Report(),
              Block("SFP Diagnostics Param Information", "Temperature: 233 (C)\n"
                                                         "Vcc: 3.299999952 V\n"
                                                         "Tx Bias: 7.400000572 mA\n"
                                                         "Tx Power: 0.669900060 mW\n"
                                                         "Rx Power: 0.000000000 mW\n"
                                                         "SFP Flag: 0x0051\n"
                                                         "\tPort Tx Type: Short Wave Laser\n"
                                                         "\tConnector Type: SFP+\n"
                                                         "\tOptical Port: On\n"
                                                         "\tSFP Diagnostics Parameters not valid: Off\n"
                                                         "\tFEC Active: Off\n"
                                                         "Descriptor Value: 0xCAFEBABE\n"));
}

TEST(RDPPayload, TransceiverFlags) {
    const auto flags = [](VX_UINT32 value) {
        const std::string report = Payload({0x00010000, 12, 0, 0, value}).Report();
        const std::size_t start = report.find('\t');
        return report.substr(start, report.rfind('\n') - start);
    };
    // A long wave laser LL has both low bits set, and is reported as LC.
    EXPECT_EQ(flags(0x8003), "\tPort Tx Type: Long Wave Laser LC 1310 nm\n\tConnector Type: Other\n"
                             "\tOptical Port: Off\n\tSFP Diagnostics Parameters not valid: Off\n"
                             "\tFEC Active Port: On\n");
    EXPECT_EQ(flags(0x0030), "\tConnector Type: Other\n\tOptical Port: On\n"
                             "\tSFP Diagnostics Parameters not valid: On\n\tFEC Active: Off\n");
    EXPECT_EQ(flags(0x0040), "\tConnector Type: Other\n\tOptical Port: Off\n"
                             "\tSFP Diagnostics Parameters not valid: Off\n\tFEC Active: Off\n");
    EXPECT_EQ(flags(0x0009), "\tConnector Type: Other\n\tOptical Port: Off\n"
                             "\tSFP Diagnostics Parameters not valid: Off\n\tFEC Active: Off\n");
}

TEST(RDPPayload, PortSpeed) {
    EXPECT_EQ(Payload({0x00010001, 4, 0x00400040}).Report(),
              Block("Port Speed Information", "Port Speed Capabilities: 256 Gbps\nPort Operating Speed: 256 Gbps\n"));
    EXPECT_EQ(Payload({0x00010001, 8, 0xFFFF0041, 0x003F0000}).Report(),
              Block("Port Speed Information", "Port Speed Capabilities: 256 128 64 32 16 8 10 4 2 1 Gbps\n"
                                              "Port Operating Speed: 0 Gbps\n"
                                              "Port Speed Capabilities: Gbps\nPort Operating Speed: 0 Gbps\n"));
    const int speeds[] = {256, 128, 64, 32, 16, 8, 10, 4, 2, 1};
    for (unsigned bit = 0; bit < 16; ++bit) {
        EXPECT_EQ(rdp::DecodePortOperatingSpeed(static_cast<VX_UINT16>(1u << bit)), bit < 6 ? 0 : speeds[bit - 6]);
        EXPECT_EQ(rdp::DecodePortOperatingSpeed(static_cast<VX_UINT16>(0xFFFFu << bit)), bit < 6 ? 0 : speeds[bit - 6]);
    }
    char text[200] = "as it was";
    EXPECT_STREQ(rdp::DecodePortSpeedCapabilities(0x8000, text, 127), "as it was");
    EXPECT_STREQ(rdp::DecodePortSpeedCapabilities(0x8000, text, 128), "1 Gbps");
}

TEST(RDPPayload, LinkErrors) {
    EXPECT_EQ(Payload({0x00010002, 32, 1, 2, 3, 4, 5, 0xFFFFFFFF, 0x80000000, 9}).Report(),
              Block("Link Error Status Block Information",
                    "Link Failure Count: 1\nLoss Of Sync Count: 2\nLoss Of Signal Count: 3\n"
                    "Primary Sequence Error Count: 4\nInvalid Transmit Word Count: 5\nInvalid CRC Count: -1\n"
                    "PN Port Physical Type: 0x80000000\n\tThe sending VN_Port uses a lossless Ethernet MAC\n"
                    "Link Error Status Block Value: 0x00000009\n"));
    const auto physicalType = [](VX_UINT32 word) {
        const std::string report = Payload({0x00010002, 28, 0, 0, 0, 0, 0, 0, word}).Report();
        const std::size_t tab = report.find('\t');
        return tab == std::string::npos ? "" : report.substr(tab);
    };
    EXPECT_EQ(physicalType(0x3FFFFFFF), "\tNo information about Phy Type provided\n\n");
    EXPECT_EQ(physicalType(0x40000000), "\tThe sending VN_Port uses an FC-FS-3 PN_Port or PF Port\n\n");
    EXPECT_EQ(physicalType(0xC0000000), "");
}

TEST(RDPPayload, PortNames) {
    EXPECT_EQ(Payload({0x00010003, 20, 0x01020304, 0x05060708, 0x11121314, 0x15161718, 0xABCDEF01}).Report(),
              Block("Port Name Information", "Descriptor Value (4): 0xABCDEF01\n"
                                             "Node WWN: 01:02:03:04:05:06:07:08\n"
                                             "Port WWN: 11:12:13:14:15:16:17:18\n"));
    EXPECT_EQ(Payload({0x00010003, 16, 0, 0, 0, 1}).Report(),
              Block("Port Name Information", "Port WWN: 00:00:00:00:00:00:00:01\n"));
}

TEST(RDPPayload, ErrorCorrectionAndCredits) {
    EXPECT_EQ(Payload({0x00010005, 12, 1, 0x80000000, 3}).Report(),
              Block("FEC Status Information",
                    "Correctable Blocks: 1\nUnCorreatable Blocks: -2147483648\nFEC Status Block Value: 3\n"));
    EXPECT_EQ(Payload({0x00010006, 16, 1, 2, 3, 4}).Report(),
              Block("Buffer Credits Status Information",
                    "FC Port Buffer To Buffer Credits: 1\nAttached FC Port Buffer To Buffer Credits: 2\n"
                    "Nominal FC Port RTT: 3 ns\nBuffer Credits Status Value: 0x00000004\n"));
}

/// 0x014B x 0.5 is 165.5, less 256 is -90.5. The low byte 0x80 is 128, less 256 is -128.
TEST(RDPPayload, OpticalElements) {
    EXPECT_EQ(Payload({0x00010007, 12, 0x014B0080, 0x004B0000, 0x10000000}).Report(),
              Block("Optical Element Data Information",
                    "Temperature High Alarm: -90.50\nTemperature Low Alarm: -128.00\n"
                    "Temperature High Warning: 75.00\nTemperature Low Warning: 0.00\n"));
    // The value 10000 in each unit: times 100 microvolts, twice in microamperes, times 0.1 microwatt.
    const struct {
        VX_UINT32 flags;
        std::string name;
        float value;
    } elements[] = {
        {0x20000000, "Voltage", 10000.0f * 100.0f * 1e-6f},
        {0x30000000, "Tx Bias", 20000.0f * 0.001f},
        {0x40000000, "Tx Power", 10000.0f * 0.1f * 0.001f},
        {0x50000000, "Rx Power", 10000.0f * 0.1f * 0.001f},
    };
    for (const auto& element : elements) {
        char value[32];
        std::snprintf(value, sizeof value, "%.09f\n", static_cast<double>(element.value));
        EXPECT_EQ(Payload({0x00010007, 16, 0x27100000, 0x00002710, element.flags, 0x0000000A}).Report(),
                  Block("Optical Element Data Information",
                        "Optical Element Data Descriptor Value: 0x0000000A\n" + element.name + " High Alarm: " + value +
                            element.name + " Low Alarm: 0.000000000\n" + element.name + " High Warning: 0.000000000\n" +
                            element.name + " Low Warning: " + value));
    }
    EXPECT_EQ(Payload({0x00010007, 12, 0x00010002, 0x00030004, 0x60000000}).Report(),
              Block("Optical Element Data Information",
                    "High Alarm: 1.000000000\n"
                    "Optical Element Function Flag [0x60000000] High Alarm: 0x01\n"
                    "Optical Element Function Flag [0x60000000] Low Alarm: 0x02\n"
                    "Optical Element Function Flag [0x60000000] High Warning: 0x03\n"
                    "Optical Element Function Flag [0x60000000] Low Warning: 0x04\n"));
    // The flags are compared as a whole word: with one more bit, it is another element.
    EXPECT_NE(Payload({0x00010007, 12, 1, 2, 0x10000001}).Report().find("[0x10000001]"), std::string::npos);
    EXPECT_NE(Payload({0x00010007, 0}).Report().find("[0x00] High Alarm: 0x00"), std::string::npos);
}

TEST(RDPPayload, OpticalProduct) {
    const std::vector<VX_UINT32> product = {0x00010008,   64,           Text("CISC"), Text("O-WT"), Text("D   "),
                                            Text("    "), Text("PART"), Text("NUMB"), Text("ER01"), Text("2345"),
                                            Text("SERI"), Text("ALNU"), Text("MBER"), Text("0001"), Text("REV1"),
                                            Text("2503"), Text("01  "), 0x12345678};
    const Payload payload(product);
    EXPECT_EQ(payload.Report(), Block("Optical Product Data Information",
                                      "Optical Product Data Descriptor Value: 0x12345678\n"
                                      "Vendor Name: CISCO-WTD       \nPart Number: PARTNUMBER012345\n"
                                      "Serial Number: SERIALNUMBER0001\nRevision: REV1\nDate: 250301  \n"));
    EXPECT_TRUE(payload.isVendorMatch);
    // A zero byte ends the piece and drops its line end.
    std::vector<VX_UINT32> cut = product;
    cut[3] = 0x4F000000;
    cut.pop_back();
    cut[1] = 60;
    const Payload cutPayload(cut);
    EXPECT_EQ(cutPayload.Report(), Block("Optical Product Data Information",
                                         "Vendor Name: CISCOPart Number: PARTNUMBER012345\n"
                                         "Serial Number: SERIALNUMBER0001\nRevision: REV1\nDate: 250301  \n"));
    std::vector<VX_UINT32> ofAnother = product;
    ofAnother[2] = Text("NISC");
    for (const std::vector<VX_UINT32>& words : {ofAnother, {0x00010005, 4, 1}}) {
        const Payload other(words);
        EXPECT_NE(other.Report(), "");
        EXPECT_FALSE(other.isVendorMatch);
    }
}

/// The walk treats every word of an unknown descriptor as a possible tag.
TEST(RDPPayload, UnknownDescriptorsAreScannedWordByWord) {
    EXPECT_EQ(Payload({0x00010004, 8, 0x00010005, 4, 7}).Report(),
              Block("FEC Status Information", "Correctable Blocks: 7\n"));
    EXPECT_EQ(Payload({0xDEADBEEF, 0, 0}).Report(), "");
    const std::string twice = Block("FEC Status Information", "Correctable Blocks: 7\n");
    EXPECT_EQ(Payload({0x00010005, 4, 7, 0x00010005, 4, 7}).Report(), twice + twice);
}

/// Lengths are rounded down to words; excessive ones end with the payload.
TEST(RDPPayload, LengthsRoundDownToWordsAndEndWithThePayload) {
    EXPECT_EQ(Payload({0x00010005, 7, 1, 2}).Report(), Block("FEC Status Information", "Correctable Blocks: 1\n"));
    for (const VX_UINT32 length : {0x7FFFFFFFu, 0xFFFFFFFCu, 0xFFFFFFFFu}) {
        for (const VX_UINT32 tag :
             {1u, 0x10000u, 0x10001u, 0x10002u, 0x10003u, 0x10005u, 0x10006u, 0x10007u, 0x10008u}) {
            EXPECT_NE(Payload({tag, length}, 0xFFFFFFFF).Report(), "") << tag << " " << length;
        }
    }
}

TEST(RDPPayload, EveryTruncationStaysInside) {
    const Payload payload({1, 4,  2,          0x00010000, 12, 1,  2,  3,          0x00010003, 16, 1, 2,
                           3, 4,  0x00010008, 60,         1,  2,  3,  4,          5,          6,  7, 8,
                           9, 10, 11,         12,         13, 14, 15, 0x00010007, 12,         1,  2, 3},
                          0xFFFFFFFF);
    for (std::size_t size = 0; size <= PAYLOAD_SIZE; ++size) {
        const std::string report = payload.Report(size);
        EXPECT_EQ(payload.ReportAhead(size, 0x00), report) << size;
        EXPECT_EQ(payload.ReportAhead(size, 0x41), report) << size;
    }
}

/// A piece that doesn't fit is dropped whole, and a later, shorter one can still fit.
TEST(RDPPayload, ReportsLoseThePiecesThatDontFit) {
    const std::string whole = Payload({0x00010005, 4, 1}).Report();
    EXPECT_EQ(Payload({0x00010005, 4, 1}).Report(PAYLOAD_SIZE, whole.size() + 1), whole);
    EXPECT_EQ(Payload({0x00010005, 4, 1}).Report(PAYLOAD_SIZE, whole.size()), whole.substr(0, whole.size() - 1));
}

/// The head of a block is three pieces.
TEST(RDPPayload, ReportsKeepTheLinesOfAHeadThatFit) {
    const auto report = [](VX_UINT32 tag, std::size_t length) { // of at most `length` characters
        return Payload({tag, 0}).Report(PAYLOAD_SIZE, length + 1);
    };
    constexpr VX_UINT32 FEC = 0x00010005;
    const std::string title = "FEC Status Information\n"; // 23 characters, and a line of dashes has 34
    EXPECT_EQ(report(FEC, 22), "\n");
    EXPECT_EQ(report(FEC, 23), title);
    EXPECT_EQ(report(FEC, 24), title + "\n");
    EXPECT_EQ(report(FEC, 34), DASHES + "\n");
    EXPECT_EQ(report(FEC, 56), DASHES + "\n\n");
    EXPECT_EQ(report(FEC, 57), DASHES + "\n" + title);
    EXPECT_EQ(report(FEC, 90), DASHES + "\n" + title + "\n");
    EXPECT_EQ(report(FEC, 91), DASHES + "\n" + title + DASHES + "\n");
    EXPECT_EQ(report(FEC, 92), Block("FEC Status Information", ""));
    // The first of all begins with a newline that belongs to its line of dashes.
    EXPECT_EQ(report(1, 34), DASHES + "\n"); // the last line of the head, as the first and the title don't fit
    EXPECT_EQ(report(1, 35), "\n" + DASHES + "\n");
}

TEST(RDPArithmetic, Temperatures) {
    EXPECT_EQ(rdp::CalculateTemperatureHighAlarm(0), 0.0f);
    EXPECT_EQ(rdp::CalculateTemperatureHighAlarm(0x4BFF), 0x4BFF * 0.5f - 256.0f); // bit 8 is set
    EXPECT_EQ(rdp::CalculateTemperatureHighAlarm(0xFEFF), 255.0f);                 // and here it is clear
    EXPECT_EQ(rdp::CalculateTemperatureHighWarning(0x0100), 0x0100 * 0.5f - 256.0f);
    EXPECT_EQ(rdp::CalculateTemperatureLowAlarm(0xFF00), 0.0f);
    EXPECT_EQ(rdp::CalculateTemperatureLowAlarm(0x0001), -255.0f);
    EXPECT_EQ(rdp::CalculateTemperatureLowWarning(0x00FF), -1.0f);
}

TEST(RDPArithmetic, PowersAndVoltages) {
    EXPECT_EQ(VoltageCalc(65535), 65535.0f * 100.0f * 1e-6f);
    EXPECT_EQ(TxBiasCalc(65535), 131070.0f * 0.001f);
    EXPECT_EQ(TxRxPowerCalc(65535), 65535.0f * 0.1f * 0.001f);
    EXPECT_EQ(TxRxPowerCalc(0), 0.0f);
}

} // namespace
