/// @file
/// The tables of a transceiver's fields and codes, row by row.
#include "FieldTables.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

struct CodeTableRow {
    const char* name;
    const SfpTable* table;
    std::size_t rows;
    const char* sentinel;
    const char* codes; ///< VALUE="TEXT" for each row, with "; " between
};

// clang-format off
const CodeTableRow CODE_TABLES[] = {
    {"IdentifierTbl", IdentifierTbl, 25, "Reserved or Vendor specific",
     R"-(0="Unknown or unspecified"; 1="GBIC"; 2="Module/connector soldered to motherboard"; )-"
     R"-(3="SFP/SFP+/SFP28 and later"; 4="300 pin XBI"; 5="XENPAK"; 6="XFP"; 7="XFF"; 8="XFP-E"; 9="XPAK"; )-"
     R"-(10="X2"; 11="DWDM-SFP/SFP+"; 12="QSFP"; 13="QSFP+"; 14="CXP"; 15="Shielded Mini Multilane HD 4X"; )-"
     R"-(16="Shielded Mini Multilane HD 8X"; 17="QSFP28"; 18="CXP2"; 19="CDFP"; )-"
     R"-(20="Shielded Mini Multilane HD 4X Fanout Cable"; 21="Shielded Mini Multilane HD 8X Fanout Cable"; )-"
     R"-(22="CDFP"; 23="microQSFP"; 24="QSFP-DD Duoble Density 8X Pluggable Transceiver")-"},
    {"ExtIdentifierTbl", ExtIdentifierTbl, 8, "Reserved",
     R"-(0="GBIC definition is not specified"; 1="GBIC is compliant with MOD_DEF 1"; )-"
     R"-(2="GBIC is compliant with MOD_DEF 2"; 3="GBIC is compliant with MOD_DEF 3"; )-"
     R"-(4="GBIC/SFP defined by serial ID only"; 5="GBIC is compliant with MOD_DEF 5"; )-"
     R"-(6="GBIC is compliant with MOD_DEF 6"; 7="GBIC is compliant with MOD_DEF 7")-"},
    {"ConnectorTbl", ConnectorTbl, 23, "Reserved or Vendor specific",
     R"-(0="Unknown or unspecified"; 1="SC (Subscriber Connector)"; )-"
     R"-(2="Fibre Channel Style 1 copper connector"; 3="Fibre Channel Style 2 copper connector"; )-"
     R"-(4="BNC/TNC"; 5="Fibre Channel coaxial headers"; 6="FibreJack"; 7="LC (Lucent Connector)"; )-"
     R"-(8="MT-RJ"; 9="MU"; 10="SG"; 11="Optical pigtail"; 12="MPO 1x12"; 13="MPO 2x16"; 32="HSSDC II"; )-"
     R"-(33="Copper Pigtail"; 34="RJ45"; 35="No separable connector"; 36="MXC 2x16"; )-"
     R"-(37="CS optical connector"; 38="SN optical connector"; 39="MPO 2x12"; 40="MPO 1x16")-"},
    {"EthernetSpeedTbl", EthernetSpeedTbl, 4, " ",
     R"-(16="10 Gbits/Sec"; 32="10 Gbits/Sec"; 64="10 Gbits/Sec"; 128="10 Gbits/Sec")-"},
    {"FCLinkLengthTbl", FCLinkLengthTbl, 8, " ",
     R"-(1="Electrical-InterEnclosure (EL)"; 2="Longwave Laser (LS)"; 4="Shortwave Laser, linear Rx (SA)"; )-"
     R"-(8="Medium distance (M))"; 16="Long Distance (L)"; 32="Intermediate Distance (I)"; )-"
     R"-(64="Short Distance (S)"; 128="Very Long Distance (V)")-"},
    {"FCTransTechTbl", FCTransTechTbl, 8, " ",
     R"-(1=" "; 2="Copper FC-BaseT (LR1/LR2/LR3)"; 4="Copper Passive (IR1/IR2)"; )-"
     R"-(8="Copper Active (SR1/SR2)"; 16="Longwave Laser (LL)"; 32="Shortwave Laser w/ OFC (SL)"; )-"
     R"-(64="Shortwave Laser w/o OFC (SN)"; 128="Electrical Intra-Enclosure (EL)")-"},
    {"FCTransMediaTbl", FCTransMediaTbl, 7, " ",
     R"-(1="Single Mode (SM)"; 4="Multi-mode 50m (M5)"; 8="Multi-mode 62.5m (M6)"; 16="Video Coax (TV)"; )-"
     R"-(32="Minimiature Coax (MI)"; 64="Shielded Twisted Pair (TP)"; 128="Twin Axial Pair (TW)")-"},
    {"FCSpeedTbl", FCSpeedTbl, 7, " ",
     R"-(1="100 MBytes/Sec"; 4="200 MBytes/Sec"; 8="3200 MBytes/Sec"; 16="400 MBytes/Sec"; )-"
     R"-(32="1600 MBytes/Sec"; 64="800 MBytes/Sec"; 128="1200 MBytes/Sec")-"},
    {"EncodingTbl", EncodingTbl, 9, "Reserved",
     R"-(0="Unspecified"; 1="8B10B"; 2="4B5B"; 3="NRZ"; 4="Manchester"; 5="SONET Scrambled"; 6="64B66B"; )-"
     R"-(7="256B257B"; 8="PAM4")-"},
    {"EncodingQsfpTbl", EncodingQsfpTbl, 9, "Reserved",
     R"-(0="Unspecified"; 1="8B10B"; 2="4B5B"; 3="NRZ"; 4="SONET Scrambled"; 5="64B66B"; 6="Manchester"; )-"
     R"-(7="256B257B"; 8="PAM4")-"},
    {"RateIdentifierTbl", RateIdentifierTbl, 19, "Reserved",
     R"-(0="Unspecified"; 1="SFF-8079 (4/2/1G Rate_Select & AS0/AS1)"; )-"
     R"-(2="SFF-8431 (8/4/2G Rx Rate_Select only)"; 3="Unspecified"; )-"
     R"-(4="SFF-8431 (8/4/2G Tx Rate_Select only)"; 5="Unspecified"; )-"
     R"-(6="SFF-8431 (8/4/2G Independent Rx & Tx Rate_select)"; 7="Unspecified"; )-"
     R"-(8="FC-PI-5 (16/8/4G Rx Rate_select only)"; 9="Unspecified"; )-"
     R"-(10="FC-PI-5 (16/8/4G Independent Rx, Tx Rate_select"; 11="Unspecified"; )-"
     R"-(12="FC-PI-6 (32/16/8G Independent Rx, Tx Rate_Select)"; 13="Unspecified"; )-"
     R"-(14="10/8G Rx and Tx Rate_Select"; 15="Unspecified"; )-"
     R"-(16="FC-PI-7 (64/32/16G Independent Rx, Tx Rate Select)"; 17="Unspecified"; )-"
     R"-(32="Rate select based on PMDs as defined by A0h, byte 36 and A2h, byte 67 (Rx, Tx Rate Select)")-"},
    {"ExtComplianceCodesTbl", ExtComplianceCodesTbl, 4, "Reserved",
     R"-(0="Unspecified"; 127="256GFC-SW4 (FC-PI-7P)"; 128="64GFC (FC-PI-7)"; 129="128GFC (FC-PI-8)")-"},
    {"FCSpeed2Tbl", FCSpeed2Tbl, 2, " ",
     R"-(1="6400 MBytes/Sec"; 2="12800 MBytes/Sec")-"},
    {"OptionsBytes64Tbl", OptionsBytes64Tbl, 8, " ",
     R"-(1="Linear Receiver Output Implemented"; 2="Power Level Declaration"; )-"
     R"-(4="Cooled Transceiver Declaration"; 8="Retimer or CDR indicator"; )-"
     R"-(16="Paging implemented indicator"; 32="High Power Level Declaration by bit 1"; )-"
     R"-(64="High Power Level Declaration by bits 1 and 5"; 128="Reserved")-"},
    {"OptionsBytes65Tbl", OptionsBytes65Tbl, 7, " ",
     R"-(2="Signal Loss, as defined in SFP MSA"; 4="Signal Loss, inverted from SFP MSA"; )-"
     R"-(8="TX_FAULT signal implemented"; 16="TX_DISABLE implemented and disables serial o/p"; )-"
     R"-(32="RATE_SELECT implemented"; 64="Tunable transmitter technology"; )-"
     R"-(128="Receiver decision threshold implemented")-"},
    {"DiagMonitorTbl", DiagMonitorTbl, 6, " ",
     R"-(4="Address change required"; 8="Power Measurement"; 16="Externally Calibrated"; )-"
     R"-(32="Internally Calibrated"; 64="Digital diag monitoring"; 128="Legacy diagnostic")-"},
    {"DiagMonitorQsfpTbl", DiagMonitorQsfpTbl, 2, " ",
     R"-(4="Transmitter Power Measurement"; 8="Received Power Measurement")-"},
    {"EnhancedOptTbl", EnhancedOptTbl, 7, " ",
     R"-(2="Optional Soft Rate Select ctrl per SFF-8431"; 4="Optional Application Select ctrl per SFF-8079"; )-"
     R"-(8="Optional Soft RATE_SELECT ctrl and monitoring"; 16="Optional Soft RX_LOS monitoring"; )-"
     R"-(32="Optional Soft TX_FAULT monitoring"; 64="Optional Soft TX_DISABLE ctrl and monitoring"; )-"
     R"-(128="Optional Alarm/warning flags")-"},
    {"EnhancedOptQsfpTbl", EnhancedOptQsfpTbl, 3, " ",
     R"-(4="Application Select Table Declaration"; 8="Rate Selection Declaration"; )-"
     R"-(16="Initialization Complete Flag implemented")-"},
    {"SFF8472Tble", SFF8472Tble, 10, "Not Defined",
     R"-(0="Digital diag not included or undefined"; )-"
     R"-(1="Includes functionality described in Rev 9.3 of SFF-8472"; )-"
     R"-(2="Includes functionality described in Rev 9.5 of SFF-8472"; )-"
     R"-(3="Includes functionality described in Rev 10.2 of SFF-8472"; )-"
     R"-(4="Includes functionality described in Rev 10.4 of SFF-8472"; )-"
     R"-(5="Includes functionality described in Rev 11.0 of SFF-8472"; )-"
     R"-(6="Includes functionality described in Rev 11.3 of SFF-8472"; )-"
     R"-(7="Includes functionality described in Rev 11.4 of SFF-8472"; )-"
     R"-(8="Includes functionality described in Rev 12.3 of SFF-8472"; )-"
     R"-(9="Includes functionality described in Rev 12.4 of SFF-8472")-"},
    {"StatusCtrl110Tbl", StatusCtrl110Tbl, 7, " ",
     R"-(1="Data_Ready_Bar"; 2="LOS"; 4="TX Fault"; 8="Soft RX Rate Select"; 16="RX Rate Select State"; )-"
     R"-(64="Soft TX Disable"; 128="TX Disable State")-"},
    {"StatusCtrl111Tbl", StatusCtrl111Tbl, 4, " ",
     R"-(1="EWRAP Control Bit"; 2="EWRAP FORWARD Control Bit"; 4="OWRAP Control Bit"; )-"
     R"-(8="OWRAP FORWARD Control Bit")-"},
    {"StatusCtrl112Tbl", StatusCtrl112Tbl, 8, " ",
     R"-(1="TX Signal Power Low Alarm"; 2="TX Signal Power High Alarm"; 4="TX Bias Low Alarm"; )-"
     R"-(8="TX Bias High Alarm"; 16="Vcc Low Alarm"; 32="Vcc High Alarm"; 64="Temp Low Alarm"; )-"
     R"-(128="Temp High Alarm")-"},
    {"StatusCtrl113Tbl", StatusCtrl113Tbl, 2, " ",
     R"-(64="RX Signal Power Low Alarm"; 128="RX Signal Power High Alarm")-"},
    {"StatusCtrl116Tbl", StatusCtrl116Tbl, 8, " ",
     R"-(1="TX Signal Power Low Warning"; 2="TX Signal Power High Warning"; 4="TX Bias Low Warning"; )-"
     R"-(8="TX Bias High Warning"; 16="Vcc Low Warning"; 32="Vcc High Warning"; 64="Temp Low Warning"; )-"
     R"-(128="Temp High Warning")-"},
    {"StatusCtrl117Tbl", StatusCtrl117Tbl, 8, " ",
     R"-(1="Reserved Warning"; 2="Reserved Warning"; 4="Reserved Warning"; 8="Reserved Warning"; )-"
     R"-(16="Reserved Warning"; 32="Reserved Warning"; 64="RX Signal Power Low Warning"; )-"
     R"-(128="RX Signal Power High Warning")-"},
    {"StatusCtrl118Tbl", StatusCtrl118Tbl, 8, " ",
     R"-(1="Optional Power Level Select"; 2="Optional Power Level Operation State"; )-"
     R"-(4="Power Level 4 Enable"; 8="Soft RS(1) Select"; 16="Adaptive Input EQ Fail Flag"; 32="Reserved"; )-"
     R"-(64="Reserved"; 128="Reserved")-"},
    {"StatusCtrl119Tbl", StatusCtrl119Tbl, 7, " ",
     R"-(2="Optional Tx CDR Unlocked"; 4="64GFC Mode"; 8="PAM4 Mode Rx Configured"; )-"
     R"-(16="PAM4 Mode Tx Configured"; 32="Reserved"; 64="Reserved"; 128="Reserved")-"},
    {"StatusCtrl130Tbl", StatusCtrl130Tbl, 2, " ",
     R"-(1="EWRAP Disable"; 2="EWRAP Enable")-"},
    {"StatusCtrl133Tbl", StatusCtrl133Tbl, 2, " ",
     R"-(1="OWRAP Disable"; 2="OWRAP Enable")-"},
    {"LSNCtrl245Tbl", LSNCtrl245Tbl, 8, " ",
     R"-(1="Train 64G"; 2="Train 32G"; 4="Fixed Speed Switch to 64G"; 8="Reserved"; 16="Reserved"; )-"
     R"-(32="Reserved"; 64="Client Rx Adaptation Reset"; 128="LSN Mode")-"},
    {"EthernetExtSpeedTbl", EthernetExtSpeedTbl, 28, " ",
     R"-(0="Unspecified"; 1="100 Gbit/Sec or 25 Gbit/Sec"; 2="100 Gbit/Sec or 25 Gbit/Sec"; )-"
     R"-(3="100 Gbit/Sec or 25 Gbit/Sec"; 4="100 Gbit/Sec or 25 Gbit/Sec"; 5="100 Gbit/Sec"; )-"
     R"-(6="100 Gbit/Sec"; 7="100 Gbit/Sec"; 8="100 Gbit/Sec"; 9="Obsolete"; 10="Reserved"; )-"
     R"-(11="100 Gbit/Sec or 25 Gbit/Sec"; 12="25 Gbit/Sec"; 13="25 Gbit/Sec"; 14="Reserved"; 15="Reserved"; )-"
     R"-(16="40 Gbit/Sec"; 17="10 Gbit/Sec"; 18="40 Gbit/Sec"; 19="G959.1"; 20="G959.1"; 21="G959.1"; )-"
     R"-(22="10 Gbit/Sec"; 23="100 Gbit/Sec"; 24="100 Gbit/Sec"; 25="100 Gbit/Sec"; 26="100 Gbit/Sec"; )-"
     R"-(27="Reserved")-"},
    {"Options1Tbl", Options1Tbl, 4, " ",
     R"-(1="Rx Output Amplitude Fixed Programmable Settings"; )-"
     R"-(2="Rx Output Emphasis Fixed Programmable Settings"; )-"
     R"-(4="Tx Input Equalization Fixed Programmable Settings"; )-"
     R"-(8="Tx Input Equalization Auto Adaptive Capable")-"},
    {"Options2Tbl", Options2Tbl, 8, " ",
     R"-(1="Tx Squelch implemented"; 2="Tx Squelch Disable implemented"; 4="Rx Output Disable capable"; )-"
     R"-(8="Rx Squelch Disable implemented"; 16="Rx CDR Loss of Lock Flag implemented"; )-"
     R"-(32="Tx CDR Loss of Lock Flag implemented"; 64="Rx CDR On/Off Control implemented"; )-"
     R"-(128="Tx CDR On/Off Control implemented")-"},
    {"Options3Tbl", Options3Tbl, 7, " ",
     R"-(2="Tx Loss of Signal implemented"; 4="Tx Squelch implemented"; 8="TX_FAULT signal implemented"; )-"
     R"-(16="TX_DISABLE implemented and disables serial o/p"; 32="RATE_SELECT implemented"; )-"
     R"-(64="Memory Page 01h provided"; 128="Memory Page 02h provided")-"},
    {"EthernetSpeedQsfpTbl", EthernetSpeedQsfpTbl, 8, " ",
     R"-(1="40 Gbits/Sec"; 2="40 Gbits/Sec"; 4="40 Gbits/Sec"; 8="40 Gbits/Sec"; 16="10 Gbits/Sec"; )-"
     R"-(32="10 Gbits/Sec"; 64="10 Gbits/Sec"; 128="Extended")-"},
    {"FCSpeedCodeTbl", FCSpeedCodeTbl, 7, " ",
     R"-(1="100"; 4="200"; 8="3200"; 16="400"; 32="1600"; 64="800"; 128="1200")-"},
    {"FCSpeed2CodeTbl", FCSpeed2CodeTbl, 2, " ",
     R"-(1="6400"; 2="12800")-"},
    {"FCTransMediaCodeTbl", FCTransMediaCodeTbl, 8, " ",
     R"-(1="SM"; 2=" "; 4="M5"; 8="M6"; 16="TV"; 32="MI"; 64="TP"; 128="TW")-"},
    {"FCTransTechCodeTbl", FCTransTechCodeTbl, 8, " ",
     R"-(1=" "; 2="LR"; 4="IR"; 8="SR"; 16="LL"; 32="SL"; 64="SN"; 128="EL")-"},
    {"FCLinkLengthCodeTbl", FCLinkLengthCodeTbl, 8, " ",
     R"-(1="EL"; 2="LS"; 4="SA"; 8="M"; 16="L"; 32="I"; 64="S"; 128="V")-"},
};
// clang-format on

/// The rows before the end row.
std::vector<SfpTable> RowsOf(const SfpTable* table) {
    std::vector<SfpTable> rows;
    for (; table->Value != 65535; ++table) {
        rows.push_back(*table);
    }
    return rows;
}

std::string SentinelOf(const SfpTable* table) {
    return table[RowsOf(table).size()].Text;
}

std::string CodesOf(const SfpTable* table) {
    std::string codes;
    for (const SfpTable& row : RowsOf(table)) {
        codes += (codes.empty() ? "" : "; ") + std::to_string(row.Value) + "=\"" + row.Text + "\"";
    }
    return codes;
}

TEST(TransceiverTablesTest, HoldEveryCode) {
    for (const CodeTableRow& expected : CODE_TABLES) {
        SCOPED_TRACE(expected.name);
        EXPECT_EQ(RowsOf(expected.table).size(), expected.rows);
        EXPECT_EQ(CodesOf(expected.table), expected.codes);
        EXPECT_EQ(SentinelOf(expected.table), expected.sentinel);
    }
}

/// SFF-8636 byte 129 in this tool's words, for each value that has a text.
std::string ExtendedIdentifier(unsigned value) {
    const bool isLow = value <= 31;
    const bool isHigh = value >= 64 && value <= 252 && value % 4 == 0;
    if (!isLow && !isHigh) {
        return "no row";
    }
    static const char* const LOW_CLASSES[] = {"1", "5", "6", "7"};
    static const char* const HIGH_CLASSES[] = {"?", "2", "3", "4"};
    std::string text;
    text += (value & 16) != 0 ? "CLEI code, " : "";
    text += (value & 4) != 0 ? "CDR in Rx, " : "";
    text += (value & 8) != 0 ? "CDR in Tx, " : "";
    return text + "Power Class " + (isLow ? LOW_CLASSES[value % 4] : HIGH_CLASSES[value / 64]);
}

TEST(TransceiverTablesTest, MakeExtendedIdentifiersByTheirRule) {
    const std::vector<SfpTable> rows = RowsOf(ExtIdentifierQsfpTbl.data());
    ASSERT_EQ(rows.size(), 80u);
    EXPECT_EQ(SentinelOf(ExtIdentifierQsfpTbl.data()), " ");
    std::size_t next = 0;
    for (unsigned value = 0; value < 256; ++value) {
        const std::string expected = ExtendedIdentifier(value);
        if (expected == "no row") {
            EXPECT_TRUE(next == rows.size() || rows[next].Value != value) << value;
            continue;
        }
        ASSERT_LT(next, rows.size());
        EXPECT_EQ(rows[next].Value, value);
        EXPECT_EQ(rows[next].Text, expected) << value;
        ++next;
    }
    EXPECT_EQ(next, rows.size());
    // Checked by hand: no flag and the lowest class; all flags and the highest; bit 5 has no effect.
    EXPECT_EQ(ExtendedIdentifier(0), "Power Class 1");
    EXPECT_STREQ(rows[31].Text, "CLEI code, CDR in Rx, CDR in Tx, Power Class 7");
    EXPECT_STREQ(rows[32].Text, "Power Class 2");                                  // 64
    EXPECT_STREQ(rows[40].Text, "Power Class 2");                                  // 96, bit 5 set
    EXPECT_STREQ(rows[79].Text, "CLEI code, CDR in Rx, CDR in Tx, Power Class 4"); // 252
}

struct FieldRow {
    unsigned offset;
    unsigned size;
    unsigned type;
    const char* name;
    const SfpTable* table;
};
constexpr unsigned NONE = 65534;
enum Type : unsigned { BIT_CODE = 92, HEADING, SKIP, BIT_LIST, BYTE_TABLE, HEX4, HEX2, RAW, ASCII };

// clang-format off
const FieldRow SFP_FIELDS[] = {
    {NONE, 0, HEADING, "\nOptical Transceiver Digital Diagnostic Data:", nullptr},
    {NONE, 0, HEADING, "\nAddress A0", nullptr},
    {0, 1, BYTE_TABLE, "Identifier", IdentifierTbl},
    {1, 1, BYTE_TABLE, "Extended Identifier", ExtIdentifierTbl},
    {2, 1, BYTE_TABLE, "Connector", ConnectorTbl},
    {3, 1, BYTE_TABLE, "Ethernet Speed", EthernetSpeedTbl},
    {4, 3, RAW, "Compliance", nullptr},
    {7, 1, BIT_CODE, "FC Link Length", FCLinkLengthTbl},
    {8, 1, BIT_CODE, "FC Transmitter Tech", FCTransTechTbl},
    {9, 1, BIT_CODE, "FC Transmission Media", FCTransMediaTbl},
    {10, 1, BIT_CODE, "FC Speed", FCSpeedTbl},
    {11, 1, BYTE_TABLE, "Encoding", EncodingTbl},
    {12, 1, RAW, "BR, Nominal", nullptr},
    {13, 1, BYTE_TABLE, "Rate Identifier", RateIdentifierTbl},
    {14, 1, RAW, "Length (9um) - km", nullptr},
    {15, 1, RAW, "Length (9um)", nullptr},
    {16, 1, RAW, "Length (50um,OM2)", nullptr},
    {17, 1, RAW, "Length (62.5um,OM1)", nullptr},
    {18, 1, RAW, "Length (50um,OM4,Copper)", nullptr},
    {19, 1, RAW, "Length (50um,OM3,Copper)", nullptr},
    {20, 16, ASCII, "Vendor name", nullptr},
    {36, 1, BYTE_TABLE, "Extended Compliance Codes", ExtComplianceCodesTbl},
    {37, 3, RAW, "Vendor OUI", nullptr},
    {40, 16, ASCII, "Vendor PN", nullptr},
    {56, 4, ASCII, "Vendor rev", nullptr},
    {60, 2, HEX2, "Wavelength", nullptr},
    {62, 1, BIT_CODE, "FC Speed 2", FCSpeed2Tbl},
    {63, 1, RAW, "CC_BASE", nullptr},
    {64, 1, BIT_LIST, "Optional Transceiver Signals:", OptionsBytes64Tbl},
    {65, 1, BIT_LIST, "", OptionsBytes65Tbl},
    {66, 1, RAW, "Signaling Rate Max", nullptr},
    {67, 1, RAW, "Signaling Rate Min", nullptr},
    {68, 16, ASCII, "Vendor SN", nullptr},
    {84, 8, ASCII, "Date code", nullptr},
    {92, 1, BIT_LIST, "Diag Monitoring Type:", DiagMonitorTbl},
    {93, 1, BIT_LIST, "Enhanced Options:", EnhancedOptTbl},
    {94, 1, BYTE_TABLE, "SFF-8472 Compliance", SFF8472Tble},
    {95, 1, RAW, "CC_EXT", nullptr},
    {96, 32, RAW, "Vendor Specific", nullptr},
    {149, 2, RAW, "SFP Firmware Version", nullptr},
    {249, 2, RAW, "MCU Firmware Version", nullptr},
    {251, 3, RAW, "DSP Firmware Version", nullptr},
    {NONE, 0, HEADING, "\nAddress A2", nullptr},
    {256, 2, HEX2, "Temp High Alarm", nullptr},
    {258, 2, HEX2, "Temp Low Alarm", nullptr},
    {260, 2, HEX2, "Temp High Warning", nullptr},
    {262, 2, HEX2, "Temp Low Warning", nullptr},
    {264, 2, HEX2, "Voltage High Alarm", nullptr},
    {266, 2, HEX2, "Voltage Low Alarm", nullptr},
    {268, 2, HEX2, "Voltage High Warning", nullptr},
    {270, 2, HEX2, "Voltage Low Warning", nullptr},
    {272, 2, HEX2, "Bias High Alarm", nullptr},
    {274, 2, HEX2, "Bias Low Alarm", nullptr},
    {276, 2, HEX2, "Bias High Warning", nullptr},
    {278, 2, HEX2, "Bias Low Warning", nullptr},
    {280, 2, HEX2, "TX Signal Power High Alarm", nullptr},
    {282, 2, HEX2, "TX Signal Power Low Alarm", nullptr},
    {284, 2, HEX2, "TX Signal Power High Warning", nullptr},
    {286, 2, HEX2, "TX Signal Power Low Warning", nullptr},
    {288, 2, HEX2, "RX Signal Power High Alarm", nullptr},
    {290, 2, HEX2, "RX Signal Power Low Alarm", nullptr},
    {292, 2, HEX2, "RX Signal Power High Warning", nullptr},
    {294, 2, HEX2, "RX Signal Power Low Warning", nullptr},
    {296, 16, SKIP, "", nullptr},
    {312, 4, HEX4, "Rx_PWR(4)", nullptr},
    {316, 4, HEX4, "Rx_PWR(3)", nullptr},
    {320, 4, HEX4, "Rx_PWR(2)", nullptr},
    {324, 4, HEX4, "Rx_PWR(1)", nullptr},
    {328, 4, HEX4, "Rx_PWR(0)", nullptr},
    {332, 2, HEX2, "Tx_I(Slope)", nullptr},
    {334, 2, HEX2, "Tx_I(Offset)", nullptr},
    {336, 2, HEX2, "Tx_PWR(Slope)", nullptr},
    {338, 2, HEX2, "Tx_PWR(Offset)", nullptr},
    {340, 2, HEX2, "T(Slope)", nullptr},
    {342, 2, HEX2, "T(Offset)", nullptr},
    {344, 2, HEX2, "V(Slope)", nullptr},
    {346, 2, HEX2, "V(Offset)", nullptr},
    {348, 3, SKIP, "", nullptr},
    {351, 1, RAW, "Checksum", nullptr},
    {352, 1, RAW, "Temperature MSB", nullptr},
    {353, 1, RAW, "Temperature LSB", nullptr},
    {354, 1, RAW, "Vcc MSB", nullptr},
    {355, 1, RAW, "Vcc LSB", nullptr},
    {356, 1, RAW, "TX Bias MSB", nullptr},
    {357, 1, RAW, "TX Bias LSB", nullptr},
    {358, 1, RAW, "TX Power MSB", nullptr},
    {359, 1, RAW, "TX Power LSB", nullptr},
    {360, 1, RAW, "RX Power MSB", nullptr},
    {361, 1, RAW, "RX Power LSB", nullptr},
    {362, 1, RAW, "Reserved MSB", nullptr},
    {363, 1, RAW, "Reserved LSB", nullptr},
    {364, 1, RAW, "Reserved MSB", nullptr},
    {365, 1, RAW, "Reserved LSB", nullptr},
    {366, 1, BIT_LIST, "Status/Control Bits:", StatusCtrl110Tbl},
    {367, 1, BIT_LIST, "", StatusCtrl111Tbl},
    {368, 1, BIT_LIST, "", StatusCtrl112Tbl},
    {369, 1, BIT_LIST, "", StatusCtrl113Tbl},
    {370, 1, SKIP, "", nullptr},
    {371, 1, SKIP, "", nullptr},
    {372, 1, BIT_LIST, "", StatusCtrl116Tbl},
    {373, 1, BIT_LIST, "", StatusCtrl117Tbl},
    {374, 1, BIT_LIST, "Extended Module Control:", StatusCtrl118Tbl},
    {375, 1, BIT_LIST, "Extended Status Bytes:", StatusCtrl119Tbl},
    {376, 8, RAW, "Vendor Specific", nullptr},
    {386, 1, BIT_LIST, "TP1 to TP4 EWRAP Control:", StatusCtrl130Tbl},
    {389, 1, BIT_LIST, "TP3 to TP2 OWRAP Control:", StatusCtrl133Tbl},
    {480, 1, RAW, "Electrical Output Tx Tap Pre3", nullptr},
    {481, 1, RAW, "Electrical Output Tx Tap Pre2", nullptr},
    {482, 1, RAW, "Electrical Output Tx Tap Pre1", nullptr},
    {483, 1, RAW, "Electrical Output Tx Tap Main", nullptr},
    {484, 1, RAW, "Electrical Output Tx Tap Post1", nullptr},
    {496, 1, RAW, "DSP Status Timing Control", nullptr},
    {497, 1, RAW, "DSP Control", nullptr},
    {500, 1, RAW, "FC 64G Mode Control", nullptr},
    {501, 1, BIT_LIST, "LSN Control:", LSNCtrl245Tbl},
    {502, 3, RAW, "CDR Firmware Version", nullptr},
    {505, 1, RAW, "Laser Version", nullptr},
    {506, 1, RAW, "TIA Version", nullptr},
    {507, 1, RAW, "CDR Version", nullptr},
    {508, 1, RAW, "HW Version", nullptr},
    {509, 1, RAW, "MCU Version", nullptr},
    {510, 1, RAW, "PLP API Version", nullptr},
    {509, 1, RAW, "Debug MCU Version", nullptr},
};
const FieldRow QSFP_FIELDS[] = {
    {NONE, 0, HEADING, "\nOptical Transceiver Digital Diagnostic Data:", nullptr},
    {NONE, 0, HEADING, "\nAddress A0", nullptr},
    {128, 1, BYTE_TABLE, "Identifier", IdentifierTbl},
    {129, 1, BYTE_TABLE, "Extended Identifier", ExtIdentifierQsfpTbl.data()},
    {130, 1, BYTE_TABLE, "Connector", ConnectorTbl},
    {131, 1, BYTE_TABLE, "Ethernet Speed", nullptr},
    {132, 3, RAW, "Compliance", nullptr},
    {135, 1, BIT_CODE, "FC Link Length", FCLinkLengthTbl},
    {136, 1, BIT_CODE, "FC Transmitter Tech", FCTransTechTbl},
    {137, 1, BIT_CODE, "FC Transmission Media", FCTransMediaTbl},
    {138, 1, BIT_CODE, "FC Speed", FCSpeedTbl},
    {139, 1, BYTE_TABLE, "Encoding", EncodingQsfpTbl},
    {140, 1, RAW, "BR, Nominal", nullptr},
    {141, 1, SKIP, "", nullptr},
    {142, 1, RAW, "Length (SMF) - km", nullptr},
    {143, 1, RAW, "Length (OM3 50um)", nullptr},
    {144, 1, RAW, "Length (OM2 50um)", nullptr},
    {145, 1, RAW, "Length (OM1 62.5um)", nullptr},
    {146, 1, RAW, "Length (Copper)", nullptr},
    {147, 1, SKIP, "", nullptr},
    {148, 16, ASCII, "Vendor name", nullptr},
    {164, 1, SKIP, "", nullptr},
    {165, 3, RAW, "Vendor OUI", nullptr},
    {168, 16, ASCII, "Vendor PN", nullptr},
    {184, 2, ASCII, "Vendor rev", nullptr},
    {186, 2, HEX2, "Wavelength", nullptr},
    {188, 2, SKIP, "", nullptr},
    {190, 1, SKIP, "", nullptr},
    {191, 1, RAW, "CC_BASE", nullptr},
    {192, 1, BYTE_TABLE, "Extended Ethernet Speed", EthernetExtSpeedTbl},
    {193, 1, BIT_LIST, "Options 1:", Options1Tbl},
    {194, 1, BIT_LIST, "Options 2:", Options2Tbl},
    {195, 1, BIT_LIST, "Options 3:", Options3Tbl},
    {196, 16, ASCII, "Vendor SN", nullptr},
    {212, 8, ASCII, "Date code", nullptr},
    {220, 1, BIT_LIST, "Diag Monitoring Type:", DiagMonitorQsfpTbl},
    {221, 1, BIT_LIST, "Enhanced Options:", EnhancedOptQsfpTbl},
    {222, 1, RAW, "BR, Nominal", nullptr},
    {223, 1, RAW, "CC_EXT", nullptr},
    {224, 32, RAW, "Vendor Specific", nullptr},
};
// clang-format on

template <std::size_t Live, std::size_t Expected>
void ExpectFields(const FieldTable (&live)[Live], const FieldRow (&expected)[Expected]) {
    ASSERT_EQ(Live, Expected + 1); // and the end row
    for (std::size_t row = 0; row < Expected; ++row) {
        SCOPED_TRACE(row);
        EXPECT_EQ(live[row].Offset, expected[row].offset);
        EXPECT_STREQ(live[row].Name, expected[row].name);
        EXPECT_EQ(live[row].Table, expected[row].table);
        EXPECT_EQ(live[row].Size, expected[row].size);
        EXPECT_EQ(unsigned{live[row].FieldType}, expected[row].type);
    }
    const FieldTable& end = live[Expected];
    EXPECT_EQ(end.Offset, 65535);
    EXPECT_STREQ(end.Name, "");
    EXPECT_EQ(end.Table, nullptr);
    EXPECT_EQ(end.Size, 0);
    EXPECT_EQ(unsigned{end.FieldType}, RAW);
}

TEST(TransceiverTablesTest, HoldEveryFieldOfTheSfpFamily) {
    EXPECT_EQ(std::size(SFP_FIELDS), 123u);
    ExpectFields(FieldIndxTable, SFP_FIELDS);
    EXPECT_EQ(FieldIndxTable[120].Offset, FieldIndxTable[122].Offset);
}

TEST(TransceiverTablesTest, HoldEveryFieldOfTheQsfpFamily) {
    EXPECT_EQ(std::size(QSFP_FIELDS), 40u);
    ExpectFields(FieldIndxTableQSFP, QSFP_FIELDS);
}

} // namespace
