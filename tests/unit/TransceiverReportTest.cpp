/// @file
/// The report of a transceiver: its media information, its summary and its fields, piece by piece.
#include "TransceiverImages.h"

#include <random>

using namespace transceiver_test;

namespace {

const std::string DASHES = "\n" + std::string(81, '-') + "\n";

std::string Hex(int byte) {
    char text[8];
    std::snprintf(text, sizeof text, "%02x", static_cast<unsigned>(byte));
    return text;
}

bool IsQsfp(const Image& image) {
    return image.Data[0] == 12 || image.Data[0] == 13 || image.Data[0] == 17 || image.Data[0] == 18;
}

/// The texts of the set bits as in a report line: without commas, each followed by a blank.
std::string BitTexts(const SfpTable* table, int byte) {
    std::string line;
    for (; table->Value != 65535; ++table) {
        if ((byte & table->Value) != 0) {
            for (const char* at = table->Text; *at != '\0'; ++at) {
                line += *at == ',' ? "" : std::string(1, *at);
            }
            line += " ";
        }
    }
    return line;
}

/// A field formatted by type, independently of the program.
std::string FieldText(const Image& image, const FieldTable& row) {
    const std::string name = row.Name;
    const auto byte = [&](int index) { return int{image.Data[row.Offset + index]}; };
    std::string text;
    switch (row.FieldType) {
    case FieldHeading:
        return name + "\n";
    case FieldSkip:
        return "";
    case FieldBitCode:
        return Label(name) + (byte(0) == 0 ? "0x0" : BitTexts(row.Table, byte(0))) + "\n";
    case FieldBitList:
        text = std::string(31 - name.size(), ' ') + name;
        for (const SfpTable* bit = row.Table; bit->Value != 65535; ++bit) {
            text += bit == row.Table ? "" : "\n" + std::string(31, ' ');
            text += std::string(" -") + bit->Text + ": " + ((byte(0) & bit->Value) != 0 ? "0x1" : "0x0");
        }
        return text + "\n";
    case FieldByteTable:
        for (const SfpTable* code = row.Table; code != nullptr && code->Value != 65535; ++code) {
            if (code->Value == byte(0)) {
                return Label(name) + code->Text + "\n";
            }
        }
        return Label(name) + "\n"; // neither the value nor the end row's text
    case FieldHex4:
    case FieldHex2:
        text = Label(name) + "0x";
        for (int index = 0; index < (row.FieldType == FieldHex4 ? 4 : 2); ++index) {
            text += Hex(byte(index));
        }
        return text + "\n";
    case FieldRaw:
        text = Label(name);
        for (int index = 0; index < row.Size; ++index) {
            text += "0x" + Hex(byte(index)) + " ";
            text += index % 8 == 7 && index + 1 < row.Size ? "\n" + std::string(32, ' ') : "";
        }
        return text + "\n";
    case FieldAscii:
        text.assign(reinterpret_cast<const char*>(image.Data) + row.Offset, row.Size);
        text = text.c_str();
        if (text.find_first_of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz") == std::string::npos) {
            text = "0";
        }
        return Label(name) + text + " \n";
    }
    return "Incorrect Data Type\n";
}

std::string ExpectedFields(const Image& image) {
    std::string text;
    for (const FieldTable* row = IsQsfp(image) ? FieldIndxTableQSFP : FieldIndxTable; row->Offset != 65535; ++row) {
        text += FieldText(image, *row);
    }
    return text;
}

void ExpectFields(const Image& image) {
    EXPECT_EQ(FieldsOf(ReportOf(image)), ExpectedFields(image));
}

/// Offsets of the fields that have a decode table.
std::vector<std::size_t> DecodedOffsets(const FieldTable* row) {
    std::vector<std::size_t> offsets;
    for (; row->Offset != 65535; ++row) {
        if (row->FieldType == FieldBitCode || row->FieldType == FieldBitList || row->FieldType == FieldByteTable) {
            offsets.push_back(row->Offset);
        }
    }
    return offsets;
}

void Sweep(int identifier, const FieldTable* table) {
    const std::vector<std::size_t> offsets = DecodedOffsets(table);
    ASSERT_GT(offsets.size(), 10u);
    for (int value = 0; value < 256; ++value) {
        SCOPED_TRACE(value);
        Image image;
        for (const std::size_t offset : offsets) {
            image.Set(offset, {value});
        }
        ExpectFields(image.Set(0, {identifier}));
    }
}

TEST(TransceiverReportTest, EveryValueOfEveryDecodedByteOfTheSfpFamily) {
    Sweep(3, FieldIndxTable);
}

TEST(TransceiverReportTest, EveryValueOfEveryDecodedByteOfTheQsfpFamily) {
    Sweep(17, FieldIndxTableQSFP);
}

TEST(TransceiverReportTest, EveryIdentifier) {
    for (int identifier = 0; identifier < 256; ++identifier) {
        ExpectFields(Image().Set(0, {identifier}));
    }
}

TEST(TransceiverReportTest, EveryByteHasItsPlace) {
    std::mt19937 random(4); // the same images in every run
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE(round);
        Image image;
        for (VX_UINT8& byte : image.Data) {
            byte = static_cast<VX_UINT8>(random());
        }
        ExpectFields(image.Set(0, {round % 2 == 0 ? 3 : 13}));
    }
}

TEST(TransceiverReportTest, FieldsLiterally) {
    const Image image = Image()
                            .Set(0, {3, 4, 255, 0x80, 0x0A, 0xB0, 0x0C})
                            .Set(7, {0x04, 0x00, 0x02})
                            .Set(20, "ACME, Inc.      ")
                            .Set(40, std::string(16, ' '))
                            .Set(60, {0x03, 0x52, 0x03})
                            .Set(96, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10})
                            .Set(A2h(72), {0xBF, 0x80, 0x0F, 0x01})
                            .Set(A2h(253), {0x5A, 0x5B});
    const std::string fields = FieldsOf(ReportOf(image));
    const auto expect = [&fields](const std::string& line) {
        EXPECT_NE(fields.find("\n" + line + "\n"), std::string::npos) << line << fields;
    };
    EXPECT_EQ(fields.substr(0, 58), "\nOptical Transceiver Digital Diagnostic Data:\n\nAddress A0\n");
    expect("                    Identifier: SFP/SFP+/SFP28 and later");
    expect("                     Connector: "); // no code, no text
    expect("                Ethernet Speed: 10 Gbits/Sec");
    expect("                    Compliance: 0x0a 0xb0 0x0c ");
    expect("                FC Link Length: Shortwave Laser linear Rx (SA) "); // its comma is gone
    expect("           FC Transmitter Tech: 0x0");
    expect("         FC Transmission Media: "); // a bit without a row doesn't appear
    expect("                   Vendor name: ACME, Inc.       ");
    expect("                     Vendor PN: 0 "); // only blanks
    expect("                    Wavelength: 0x0352");
    expect("                    FC Speed 2: 6400 MBytes/Sec 12800 MBytes/Sec ");
    expect("  Optional Transceiver Signals: -Linear Receiver Output Implemented: 0x0\n"
           "                                -Power Level Declaration: 0x0");
    expect("                                -Reserved: 0x0\n"
           "                                -Signal Loss, as defined in SFP MSA: 0x0");
    expect("               Vendor Specific: 0x01 0x02 0x03 0x04 0x05 0x06 0x07 0x08 \n"
           "                                0x09 0x0a 0x00 0x00 0x00 0x00 0x00 0x00 \n"
           "                                0x00 0x00 0x00 0x00 0x00 0x00 0x00 0x00 \n"
           "                                0x00 0x00 0x00 0x00 0x00 0x00 0x00 0x00 ");
    expect("\nAddress A2");
    expect("                     Rx_PWR(0): 0xbf800f01");
    // A field of eight bytes takes one line; the last row repeats the byte of the last but one.
    expect("               Vendor Specific: 0x00 0x00 0x00 0x00 0x00 0x00 0x00 0x00 ");
    const std::string end = "                   MCU Version: 0x5a \n"
                            "               PLP API Version: 0x5b \n"
                            "             Debug MCU Version: 0x5a \n";
    ASSERT_GT(fields.size(), end.size());
    EXPECT_EQ(fields.substr(fields.size() - end.size()), end);
}

TEST(TransceiverReportTest, QsfpLiterally) {
    // 128 to 140: QSFP28, class 4 with all flags, LC, and the rate byte 140.
    const Image image = Image()
                            .Set(0, {17})
                            .Set(128, {17, 0xDC, 7, 0x80, 0, 0, 0, 0, 0, 0, 0, 5, 0x67})
                            .Set(148, "ACME            ")
                            .Set(168, "QX-100          ")
                            .Set(184, "B2")
                            .Set(192, {2})
                            .Set(196, "SN00012345      ")
                            .Set(222, {0x68});
    const std::string report = ReportOf(image);
    EXPECT_EQ(HeadOf(report), DASHES + "Media Information" + DASHES + //
                                  "                        Vendor: ACME            \n"
                                  "                     Connector: LC (Lucent Connector)\n"
                                  "                    Media Type: \n\n"
                                  "                   Part Number: QX-100          \n"
                                  "                         Speed: 100 Gbits/Sec\n\n" // 104 * 250 / 1024 = 25, times 4
                                  "                      Revision: B2\n"
                                  "                 Serial Number: SN00012345      \n"
                                  "                    Identifier: QSFP28\n"
                                  "                              : \n" // no such fields in this family
                                  "                              : \n"
                                  "          Orvane SFP Installed: No\n" +
                                  DASHES);
    const std::string fields = FieldsOf(report);
    const auto expect = [&fields](const std::string& line) {
        EXPECT_NE(fields.find("\n" + line + "\n"), std::string::npos) << line << fields;
    };
    expect("           Extended Identifier: CLEI code, CDR in Rx, CDR in Tx, Power Class 4");
    expect("                Ethernet Speed: "); // a row without a table
    expect("                      Encoding: 64B66B");
    expect("                   BR, Nominal: 0x67 ");
    expect("                   BR, Nominal: 0x68 "); // the label comes twice
    expect("                    Vendor rev: B2 ");
    expect("       Extended Ethernet Speed: 100 Gbit/Sec or 25 Gbit/Sec");
    EXPECT_EQ(fields.find("Address A2"), std::string::npos);
}

TEST(TransceiverReportTest, SfpHeadLiterally) {
    const Image image = Image()
                            .Set(0, {3, 4, 7})
                            .Set(7, {0x40, 0x40, 0x04, 0x70})
                            .Set(20, "ACME            ")
                            .Set(40, "SX-16           ")
                            .Set(56, "A   ")
                            .Set(68, "SN00012345      ")
                            .Set(13, {8})
                            .Set(94, {8})
                            .Set(96, "Orvane");
    EXPECT_EQ(HeadOf(ReportOf(image)), DASHES + "Media Information" + DASHES + //
                                           "                        Vendor: ACME            \n"
                                           "                     Connector: LC (Lucent Connector)\n"
                                           "                    Media Type: 800-M5-SN-S\n"
                                           "                   Part Number: SX-16           \n"
                                           "                         Speed: "
                                           "400 MBytes/Sec 1600 MBytes/Sec 800 MBytes/Sec \n"
                                           "                      Revision: A   \n"
                                           "                 Serial Number: SN00012345      \n"
                                           "                    Identifier: SFP/SFP+/SFP28 and later\n"
                                           "     Extended Compliance Codes: Unspecified\n"
                                           "               Rate Identifier: FC-PI-5 (16/8/4G Rx Rate_select only)\n"
                                           "          Orvane SFP Installed: Yes\n" +
                                           DASHES);
}

TEST(TransceiverReportTest, InstalledOnlyWithTheExactWord) {
    const auto shows = [](const Image& image, const std::string& word) {
        return ReportOf(image).find(Label("Orvane SFP Installed") + word + "\n") != std::string::npos;
    };
    EXPECT_TRUE(shows(Image().Set(96, "Orvane").Set(102, "X"), "Yes"));
    EXPECT_TRUE(shows(Image().Set(96, "ORVANE"), "No"));
    EXPECT_TRUE(shows(Image().Set(96, "Orvan"), "No"));
    EXPECT_TRUE(shows(Image().Set(97, "Orvane"), "No"));
    EXPECT_TRUE(shows(Image().Set(0, {17}).Set(224, "Orvane"), "Yes"));
    EXPECT_TRUE(shows(Image().Set(0, {17}).Set(96, "Orvane"), "No"));
}

TEST(TransceiverReportTest, InstalledLineCanBeLeftOut) {
    const Image image = Image().Set(0, {3});
    ReportBlock block(16384, ReportBlock::SizeRule::FULL);
    TransceiverReport(block, image.View()).PrintSFPDMI(false);
    EXPECT_EQ(std::string(block.GetText()).find("Installed"), std::string::npos);
}

struct MediaCase {
    const char* what;
    int linkLength, tech, media, speed; ///< bytes 7 to 10
    int ethernet, extended, speed2, compliance;
    const char* type;
    const char* speeds;
};
const MediaCase MEDIA[] = {
    {"nothing known", 0, 0, 0, 0, 0, 0, 0, 0, "---", ""},
    {"two dashes come too late for an Ethernet speed", 0, 0, 0, 0, 0x10, 0, 0, 0, "---", ""},
    {"the last match of each", 0x11, 0x30, 0x0C, 0x15, 0, 0, 0, 0, "400-M6-SL-L",
     "100 MBytes/Sec 200 MBytes/Sec 400 MBytes/Sec "},
    {"the blank codes", 0x01, 0x01, 0x02, 0x01, 0, 0, 0, 0, "100---EL", "100 MBytes/Sec "},
    {"bits without rows", 0x00, 0x00, 0x00, 0x02, 0, 0, 0, 0, "---", ""},
    {"FC Speed 2", 0x40, 0x40, 0x04, 0x20, 0, 0, 1, 9, "6400-M5-SN-S", "6400 MBytes/Sec 1600 MBytes/Sec "},
    {"both of FC Speed 2", 0x40, 0x40, 0x04, 0x20, 0, 0, 3, 9, "12800-M5-SN-S",
     "6400 MBytes/Sec 12800 MBytes/Sec 1600 MBytes/Sec "},
    {"FC Speed 2 of an old compliance", 0, 0, 0, 0x20, 0, 128, 1, 0, "6400---", "6400 MBytes/Sec 1600 MBytes/Sec "},
    {"unknown bits of FC Speed 2", 0, 0, 0, 0x20, 0, 128, 4, 0, "---", "1600 MBytes/Sec "},
    {"64G by code 128", 0x40, 0x40, 0x04, 0x20, 0, 128, 0, 8, "6400-M5-SN-S", "6400 MBytes/Sec 1600 MBytes/Sec "},
    {"64G by code 81", 0, 0, 0, 0x20, 0, 81, 0, 0, "6400---", "6400 MBytes/Sec 1600 MBytes/Sec "},
    {"64G by code 82", 0, 0, 0, 0x00, 0, 82, 0, 0, "6400---", "6400 MBytes/Sec "},
    {"no 64G by code 80", 0, 0, 0, 0x20, 0, 80, 0, 8, "1600---", "1600 MBytes/Sec "},
    {"no 64G by code 83", 0, 0, 0, 0x20, 0, 83, 0, 8, "1600---", "1600 MBytes/Sec "},
    {"no 64G by code 129", 0, 0, 0, 0x20, 0, 129, 0, 8, "1600---", "1600 MBytes/Sec "},
    {"no 64G by code 128 from compliance 9 on", 0, 0, 0, 0x20, 0, 128, 0, 9, "1600---", "1600 MBytes/Sec "},
    {"nor of compliance 255", 0, 0, 0, 0x20, 0, 128, 0, 255, "1600---", "1600 MBytes/Sec "},
    {"every speed", 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, "1200-TW-EL-V",
     "100 MBytes/Sec 200 MBytes/Sec 3200 MBytes/Sec 400 MBytes/Sec 1600 MBytes/Sec 800 MBytes/Sec 1200 MBytes/Sec "},
};

TEST(TransceiverReportTest, MediaTypeAndSpeedOfTheSfpFamily) {
    for (const MediaCase& row : MEDIA) {
        SCOPED_TRACE(row.what);
        const std::string head = HeadOf(ReportOf(Image()
                                                     .Set(3, {row.ethernet})
                                                     .Set(7, {row.linkLength, row.tech, row.media, row.speed})
                                                     .Set(36, {row.extended})
                                                     .Set(62, {row.speed2})
                                                     .Set(94, {row.compliance})));
        EXPECT_NE(head.find(Label("Media Type") + row.type + "\n"), std::string::npos) << head;
        EXPECT_NE(head.find(Label("Speed") + row.speeds + "\n"), std::string::npos) << head;
    }
}

struct QsfpSpeedCase {
    int rate250, rate100;   ///< bytes 222 and 140
    int ethernet, extended; ///< bytes 131 and 192
    const char* speed;
};
const QsfpSpeedCase QSFP_SPEEDS[] = {
    {104, 0, 0, 0, "100 Gbits/Sec"},   // 26000 / 1024 = 25, times 4
    {104, 103, 0, 0, "100 Gbits/Sec"}, // byte 222 comes first
    {0, 103, 0, 0, "40 Gbits/Sec"},    // 10300 / 1024 = 10, times 4
    {255, 0, 0, 0, "248 Gbits/Sec"},   // 63750 / 1024 = 62, times 4
    {0, 255, 0, 0, "96 Gbits/Sec"},    // 25500 / 1024 = 24, times 4
    {1, 0, 0, 0, "0 Gbits/Sec"},       // 250 / 1024 = 0
    {0, 10, 4, 0, "0 Gbits/Sec"},      // 1000 / 1024 = 0
    {0, 11, 0, 0, "4 Gbits/Sec"},      // 1100 / 1024 = 1
    {0, 0, 4, 1, "40 Gbits/Sec "},     // a code keeps its blank
    {0, 0, 0x14, 1, "10 Gbits/Sec "},  // the last match
    {0, 0, 0x80, 23, "100 Gbit/Sec "}, // "Extended" asks the other byte
    {0, 0, 0x84, 23, "100 Gbit/Sec "},
    {0, 0, 0, 12, "25 Gbit/Sec "}, // so does none
    {0, 0, 0x80, 0, ""},           // byte 0 has no text
    {0, 0, 0x80, 28, ""},          // nor has a code without a row
    {0, 0, 0, 0, ""},
};

TEST(TransceiverReportTest, SpeedOfTheQsfpFamily) {
    for (const QsfpSpeedCase& row : QSFP_SPEEDS) {
        const std::string head = HeadOf(ReportOf(Image()
                                                     .Set(0, {13})
                                                     .Set(131, {row.ethernet})
                                                     .Set(140, {row.rate100})
                                                     .Set(192, {row.extended})
                                                     .Set(222, {row.rate250})));
        EXPECT_NE(head.find(Label("Speed") + row.speed + "\n\n"), std::string::npos) << row.speed << head;
    }
}

TEST(TransceiverReportTest, SummaryLiterally) {
    // All slopes 0: raw values. Receive power four times its raw value.
    const Image image = Image()
                            .Set(92, {0x40})
                            .Set(A2h(0), {0x4E, 0x00, 0xF3, 0x00, 0x49, 0x00, 0xF8, 0x00})
                            .Set(A2h(8), {0x90, 0x88, 0x71, 0x48, 0x8C, 0xA0, 0x75, 0x30})
                            .Set(A2h(16), {0x19, 0xC8, 0x07, 0xD0, 0x18, 0x9C, 0x09, 0xC4})
                            .Set(A2h(24), {0x27, 0x10, 0x09, 0xD0, 0x1F, 0x07, 0x0C, 0x5A})
                            .Set(A2h(32), {0x27, 0x10, 0x00, 0x64, 0x1F, 0x07, 0x00, 0x9E})
                            .Set(A2h(96), {0x14, 0x02, 0x81, 0xB1, 0x0D, 0x5A, 0x17, 0xA5, 0x20, 0x87});
    // Value: 20 2/256; 33201 -> 3.3201; 3418 -> 6.836; 6053 -> 0.6053; 8327 -> 0.8327, times 4 = 3.3308.
    // High alarm: 78; 37000; 6600; 10000; 10000. Low warning: F8 is -8. Low alarm: F3 is -13.
    const std::string expected = //
        "\n                 Temperature   Voltage     Tx Bias    Tx Power    Rx Power\n"
        "\n                     (C)         (V)        (mA)        (mW)        (mW)\n"
        "\n              --------------   -------     -------    --------    --------\n"
        "\n        Value      20.01         3.32        6.84      0.6053      3.3308\n"
        "\n       Status     Normal       Normal      Normal      Normal     Warning\n"
        "\n   High Alarm      78.00         3.70       13.20      1.0000      4.0000\n"
        "\n High Warning      73.00         3.60       12.60      0.7943      3.1772\n"
        "\n  Low Warning      -8.00         3.00        5.00      0.3162      0.0632\n"
        "\n    Low Alarm     -13.00         2.90        4.00      0.2512      0.0400\n";
    const std::string head = HeadOf(ReportOf(image));
    const std::string closing = Label("Orvane SFP Installed") + "No\n" + DASHES;
    ASSERT_NE(head.find(closing), std::string::npos);
    EXPECT_EQ(head.substr(head.find(closing) + closing.size()), expected);
}

TEST(TransceiverReportTest, SummaryOnlyOfModulesThatMonitorThemselves) {
    const auto hasSummary = [](const Image& image) {
        return ReportOf(image).find("Temperature   Voltage") != std::string::npos;
    };
    EXPECT_TRUE(hasSummary(Image().Set(0, {3}).Set(92, {0x40})));
    EXPECT_TRUE(hasSummary(Image().Set(0, {0}).Set(92, {0xFF})));
    EXPECT_FALSE(hasSummary(Image().Set(0, {3}).Set(92, {0xBF})));
    EXPECT_FALSE(hasSummary(Image().Set(0, {17}).Set(92, {0x40}).Set(220, {0x40})));
}

TEST(TransceiverReportTest, PiecesThatDoNotFitAreLost) {
    const Image image = Image().Set(0, {3});
    EXPECT_EQ(ReportOf(image, 1), "");
    EXPECT_EQ(ReportOf(image, 2), "\n"); // the first piece of one character that comes along
    // The first piece has 83 characters, the second 17, which fill 18 bytes with the terminator. Then nothing fits.
    EXPECT_EQ(ReportOf(image, 18), "Media Information");
    // One byte more takes the first line end that is a piece by itself.
    EXPECT_EQ(ReportOf(image, 19), "Media Information\n");
    // All sizes: never beyond the block.
    const std::size_t whole = ReportOf(image).size();
    for (std::size_t size = 1; size <= whole + 1; size += 97) {
        EXPECT_LT(ReportOf(image, size).size(), size);
    }
    EXPECT_LT(ReportOf(image, whole).size(), whole);
    EXPECT_EQ(ReportOf(image, whole + 1).size(), whole);
}

TEST(TransceiverReportTest, ShorterImagesReadAsZeroBehindTheirEnd) {
    Image whole = LoadImage("finisar-ftlx8571-auj0rcj");
    for (VX_UINT16 size = 0; size <= 512; ++size) {
        const std::vector<VX_UINT8> exact(whole.Data, whole.Data + size); // a read past it is caught
        ReportBlock block(16384, ReportBlock::SizeRule::FULL);
        TransceiverReport report(block, ModuleImage(decoders::Bytes(exact.data(), size)));
        report.CalculateDMIData();
        report.PrintSFPDMI(true);
        report.PrintSFP();
        Image padded;
        std::copy(exact.begin(), exact.end(), padded.Data);
        EXPECT_EQ(FieldsOf(block.GetText()), ExpectedFields(padded)) << size;
    }
}

} // namespace
