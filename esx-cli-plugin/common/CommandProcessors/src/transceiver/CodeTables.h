/// @file
/// Decode tables of a transceiver's memory: the codes of SFF-8472 (SFP family, addresses A0h and A2h) and SFF-8636
/// (QSFP family, upper page 00h) with the texts of this tool's reports. Required: the texts, including
/// misspellings; parsers depend on them.
#pragma once

#include "vexapi.h"

#include <array>
#include <cstddef>
#include <iterator>

/// One code of a byte field: an exact value or, in tables of bit fields, a mask (in hexadecimal). The row with
/// `END_OF_CODES` ends a table; its text is never printed.
struct SfpTable {
    VX_UINT16 Value;
    const char* Text;
};
inline constexpr VX_UINT16 END_OF_CODES = 65535;

/// A0h byte 0; upper page 00h byte 128.
inline constexpr SfpTable IdentifierTbl[] = {
    {0, "Unknown or unspecified"},
    {1, "GBIC"},
    {2, "Module/connector soldered to motherboard"},
    {3, "SFP/SFP+/SFP28 and later"},
    {4, "300 pin XBI"},
    {5, "XENPAK"},
    {6, "XFP"},
    {7, "XFF"},
    {8, "XFP-E"},
    {9, "XPAK"},
    {10, "X2"},
    {11, "DWDM-SFP/SFP+"},
    {12, "QSFP"},
    {13, "QSFP+"},
    {14, "CXP"},
    {15, "Shielded Mini Multilane HD 4X"},
    {16, "Shielded Mini Multilane HD 8X"},
    {17, "QSFP28"},
    {18, "CXP2"},
    {19, "CDFP"},
    {20, "Shielded Mini Multilane HD 4X Fanout Cable"},
    {21, "Shielded Mini Multilane HD 8X Fanout Cable"},
    {22, "CDFP"},
    {23, "microQSFP"},
    {24, "QSFP-DD Duoble Density 8X Pluggable Transceiver"},
    {END_OF_CODES, "Reserved or Vendor specific"},
};

/// A0h byte 1.
inline constexpr SfpTable ExtIdentifierTbl[] = {
    {0, "GBIC definition is not specified"},
    {1, "GBIC is compliant with MOD_DEF 1"},
    {2, "GBIC is compliant with MOD_DEF 2"},
    {3, "GBIC is compliant with MOD_DEF 3"},
    {4, "GBIC/SFP defined by serial ID only"},
    {5, "GBIC is compliant with MOD_DEF 5"},
    {6, "GBIC is compliant with MOD_DEF 6"},
    {7, "GBIC is compliant with MOD_DEF 7"},
    {END_OF_CODES, "Reserved"},
};

/// A0h byte 2; upper page 00h byte 130.
inline constexpr SfpTable ConnectorTbl[] = {
    {0, "Unknown or unspecified"},
    {1, "SC (Subscriber Connector)"},
    {2, "Fibre Channel Style 1 copper connector"},
    {3, "Fibre Channel Style 2 copper connector"},
    {4, "BNC/TNC"},
    {5, "Fibre Channel coaxial headers"},
    {6, "FibreJack"},
    {7, "LC (Lucent Connector)"},
    {8, "MT-RJ"},
    {9, "MU"},
    {10, "SG"},
    {11, "Optical pigtail"},
    {12, "MPO 1x12"},
    {13, "MPO 2x16"},
    {32, "HSSDC II"},
    {33, "Copper Pigtail"},
    {34, "RJ45"},
    {35, "No separable connector"},
    {36, "MXC 2x16"},
    {37, "CS optical connector"},
    {38, "SN optical connector"},
    {39, "MPO 2x12"},
    {40, "MPO 1x16"},
    {END_OF_CODES, "Reserved or Vendor specific"},
};

/// A0h byte 3.
inline constexpr SfpTable EthernetSpeedTbl[] = {
    {16, "10 Gbits/Sec"}, {32, "10 Gbits/Sec"}, {64, "10 Gbits/Sec"}, {128, "10 Gbits/Sec"}, {END_OF_CODES, " "},
};

/// A0h byte 7; upper page 00h byte 135.
inline constexpr SfpTable FCLinkLengthTbl[] = {
    {0x01, "Electrical-InterEnclosure (EL)"},
    {0x02, "Longwave Laser (LS)"},
    {0x04, "Shortwave Laser, linear Rx (SA)"},
    {0x08, "Medium distance (M))"},
    {0x10, "Long Distance (L)"},
    {0x20, "Intermediate Distance (I)"},
    {0x40, "Short Distance (S)"},
    {0x80, "Very Long Distance (V)"},
    {END_OF_CODES, " "},
};

/// A0h byte 8; upper page 00h byte 136.
inline constexpr SfpTable FCTransTechTbl[] = {
    {0x01, " "},
    {0x02, "Copper FC-BaseT (LR1/LR2/LR3)"},
    {0x04, "Copper Passive (IR1/IR2)"},
    {0x08, "Copper Active (SR1/SR2)"},
    {0x10, "Longwave Laser (LL)"},
    {0x20, "Shortwave Laser w/ OFC (SL)"},
    {0x40, "Shortwave Laser w/o OFC (SN)"},
    {0x80, "Electrical Intra-Enclosure (EL)"},
    {END_OF_CODES, " "},
};

/// A0h byte 9; upper page 00h byte 137.
inline constexpr SfpTable FCTransMediaTbl[] = {
    {0x01, "Single Mode (SM)"},      {0x04, "Multi-mode 50m (M5)"},
    {0x08, "Multi-mode 62.5m (M6)"}, {0x10, "Video Coax (TV)"},
    {0x20, "Minimiature Coax (MI)"}, {0x40, "Shielded Twisted Pair (TP)"},
    {0x80, "Twin Axial Pair (TW)"},  {END_OF_CODES, " "},
};

/// A0h byte 10; upper page 00h byte 138.
inline constexpr SfpTable FCSpeedTbl[] = {
    {0x01, "100 MBytes/Sec"},  {0x04, "200 MBytes/Sec"}, {0x08, "3200 MBytes/Sec"}, {0x10, "400 MBytes/Sec"},
    {0x20, "1600 MBytes/Sec"}, {0x40, "800 MBytes/Sec"}, {0x80, "1200 MBytes/Sec"}, {END_OF_CODES, " "},
};

/// A0h byte 11.
inline constexpr SfpTable EncodingTbl[] = {
    {0, "Unspecified"},     {1, "8B10B"},  {2, "4B5B"},     {3, "NRZ"},  {4, "Manchester"},
    {5, "SONET Scrambled"}, {6, "64B66B"}, {7, "256B257B"}, {8, "PAM4"}, {END_OF_CODES, "Reserved"},
};

/// Upper page 00h byte 139.
inline constexpr SfpTable EncodingQsfpTbl[] = {
    {0, "Unspecified"}, {1, "8B10B"},      {2, "4B5B"},     {3, "NRZ"},  {4, "SONET Scrambled"},
    {5, "64B66B"},      {6, "Manchester"}, {7, "256B257B"}, {8, "PAM4"}, {END_OF_CODES, "Reserved"},
};

/// A0h byte 13.
inline constexpr SfpTable RateIdentifierTbl[] = {
    {0, "Unspecified"},
    {1, "SFF-8079 (4/2/1G Rate_Select & AS0/AS1)"},
    {2, "SFF-8431 (8/4/2G Rx Rate_Select only)"},
    {3, "Unspecified"},
    {4, "SFF-8431 (8/4/2G Tx Rate_Select only)"},
    {5, "Unspecified"},
    {6, "SFF-8431 (8/4/2G Independent Rx & Tx Rate_select)"},
    {7, "Unspecified"},
    {8, "FC-PI-5 (16/8/4G Rx Rate_select only)"},
    {9, "Unspecified"},
    {10, "FC-PI-5 (16/8/4G Independent Rx, Tx Rate_select"},
    {11, "Unspecified"},
    {12, "FC-PI-6 (32/16/8G Independent Rx, Tx Rate_Select)"},
    {13, "Unspecified"},
    {14, "10/8G Rx and Tx Rate_Select"},
    {15, "Unspecified"},
    {16, "FC-PI-7 (64/32/16G Independent Rx, Tx Rate Select)"},
    {17, "Unspecified"},
    {32, "Rate select based on PMDs as defined by A0h, byte 36 and A2h, byte 67 (Rx, Tx Rate Select)"},
    {END_OF_CODES, "Reserved"},
};

/// A0h byte 36.
inline constexpr SfpTable ExtComplianceCodesTbl[] = {
    {0, "Unspecified"},        {127, "256GFC-SW4 (FC-PI-7P)"}, {128, "64GFC (FC-PI-7)"},
    {129, "128GFC (FC-PI-8)"}, {END_OF_CODES, "Reserved"},
};

/// A0h byte 62.
inline constexpr SfpTable FCSpeed2Tbl[] = {
    {0x01, "6400 MBytes/Sec"},
    {0x02, "12800 MBytes/Sec"},
    {END_OF_CODES, " "},
};

/// A0h byte 64.
inline constexpr SfpTable OptionsBytes64Tbl[] = {
    {0x01, "Linear Receiver Output Implemented"},
    {0x02, "Power Level Declaration"},
    {0x04, "Cooled Transceiver Declaration"},
    {0x08, "Retimer or CDR indicator"},
    {0x10, "Paging implemented indicator"},
    {0x20, "High Power Level Declaration by bit 1"},
    {0x40, "High Power Level Declaration by bits 1 and 5"},
    {0x80, "Reserved"},
    {END_OF_CODES, " "},
};

/// A0h byte 65.
inline constexpr SfpTable OptionsBytes65Tbl[] = {
    {0x02, "Signal Loss, as defined in SFP MSA"},
    {0x04, "Signal Loss, inverted from SFP MSA"},
    {0x08, "TX_FAULT signal implemented"},
    {0x10, "TX_DISABLE implemented and disables serial o/p"},
    {0x20, "RATE_SELECT implemented"},
    {0x40, "Tunable transmitter technology"},
    {0x80, "Receiver decision threshold implemented"},
    {END_OF_CODES, " "},
};

/// A0h byte 92.
inline constexpr SfpTable DiagMonitorTbl[] = {
    {0x04, "Address change required"},
    {0x08, "Power Measurement"},
    {0x10, "Externally Calibrated"},
    {0x20, "Internally Calibrated"},
    {0x40, "Digital diag monitoring"},
    {0x80, "Legacy diagnostic"},
    {END_OF_CODES, " "},
};

/// Upper page 00h byte 220.
inline constexpr SfpTable DiagMonitorQsfpTbl[] = {
    {0x04, "Transmitter Power Measurement"},
    {0x08, "Received Power Measurement"},
    {END_OF_CODES, " "},
};

/// A0h byte 93.
inline constexpr SfpTable EnhancedOptTbl[] = {
    {0x02, "Optional Soft Rate Select ctrl per SFF-8431"},
    {0x04, "Optional Application Select ctrl per SFF-8079"},
    {0x08, "Optional Soft RATE_SELECT ctrl and monitoring"},
    {0x10, "Optional Soft RX_LOS monitoring"},
    {0x20, "Optional Soft TX_FAULT monitoring"},
    {0x40, "Optional Soft TX_DISABLE ctrl and monitoring"},
    {0x80, "Optional Alarm/warning flags"},
    {END_OF_CODES, " "},
};

/// Upper page 00h byte 221.
inline constexpr SfpTable EnhancedOptQsfpTbl[] = {
    {0x04, "Application Select Table Declaration"},
    {0x08, "Rate Selection Declaration"},
    {0x10, "Initialization Complete Flag implemented"},
    {END_OF_CODES, " "},
};

/// A0h byte 94.
inline constexpr SfpTable SFF8472Tble[] = {
    {0, "Digital diag not included or undefined"},
    {1, "Includes functionality described in Rev 9.3 of SFF-8472"},
    {2, "Includes functionality described in Rev 9.5 of SFF-8472"},
    {3, "Includes functionality described in Rev 10.2 of SFF-8472"},
    {4, "Includes functionality described in Rev 10.4 of SFF-8472"},
    {5, "Includes functionality described in Rev 11.0 of SFF-8472"},
    {6, "Includes functionality described in Rev 11.3 of SFF-8472"},
    {7, "Includes functionality described in Rev 11.4 of SFF-8472"},
    {8, "Includes functionality described in Rev 12.3 of SFF-8472"},
    {9, "Includes functionality described in Rev 12.4 of SFF-8472"},
    {END_OF_CODES, "Not Defined"},
};

/// A2h byte 110.
inline constexpr SfpTable StatusCtrl110Tbl[] = {
    {0x01, "Data_Ready_Bar"},
    {0x02, "LOS"},
    {0x04, "TX Fault"},
    {0x08, "Soft RX Rate Select"},
    {0x10, "RX Rate Select State"},
    {0x40, "Soft TX Disable"},
    {0x80, "TX Disable State"},
    {END_OF_CODES, " "},
};

/// A2h byte 111.
inline constexpr SfpTable StatusCtrl111Tbl[] = {
    {0x01, "EWRAP Control Bit"}, {0x02, "EWRAP FORWARD Control Bit"},
    {0x04, "OWRAP Control Bit"}, {0x08, "OWRAP FORWARD Control Bit"},
    {END_OF_CODES, " "},
};

/// A2h byte 112.
inline constexpr SfpTable StatusCtrl112Tbl[] = {
    {0x01, "TX Signal Power Low Alarm"},
    {0x02, "TX Signal Power High Alarm"},
    {0x04, "TX Bias Low Alarm"},
    {0x08, "TX Bias High Alarm"},
    {0x10, "Vcc Low Alarm"},
    {0x20, "Vcc High Alarm"},
    {0x40, "Temp Low Alarm"},
    {0x80, "Temp High Alarm"},
    {END_OF_CODES, " "},
};

/// A2h byte 113.
inline constexpr SfpTable StatusCtrl113Tbl[] = {
    {0x40, "RX Signal Power Low Alarm"},
    {0x80, "RX Signal Power High Alarm"},
    {END_OF_CODES, " "},
};

/// A2h byte 116.
inline constexpr SfpTable StatusCtrl116Tbl[] = {
    {0x01, "TX Signal Power Low Warning"},
    {0x02, "TX Signal Power High Warning"},
    {0x04, "TX Bias Low Warning"},
    {0x08, "TX Bias High Warning"},
    {0x10, "Vcc Low Warning"},
    {0x20, "Vcc High Warning"},
    {0x40, "Temp Low Warning"},
    {0x80, "Temp High Warning"},
    {END_OF_CODES, " "},
};

/// A2h byte 117.
inline constexpr SfpTable StatusCtrl117Tbl[] = {
    {0x01, "Reserved Warning"},
    {0x02, "Reserved Warning"},
    {0x04, "Reserved Warning"},
    {0x08, "Reserved Warning"},
    {0x10, "Reserved Warning"},
    {0x20, "Reserved Warning"},
    {0x40, "RX Signal Power Low Warning"},
    {0x80, "RX Signal Power High Warning"},
    {END_OF_CODES, " "},
};

/// A2h byte 118.
inline constexpr SfpTable StatusCtrl118Tbl[] = {
    {0x01, "Optional Power Level Select"},
    {0x02, "Optional Power Level Operation State"},
    {0x04, "Power Level 4 Enable"},
    {0x08, "Soft RS(1) Select"},
    {0x10, "Adaptive Input EQ Fail Flag"},
    {0x20, "Reserved"},
    {0x40, "Reserved"},
    {0x80, "Reserved"},
    {END_OF_CODES, " "},
};

/// A2h byte 119.
inline constexpr SfpTable StatusCtrl119Tbl[] = {
    {0x02, "Optional Tx CDR Unlocked"},
    {0x04, "64GFC Mode"},
    {0x08, "PAM4 Mode Rx Configured"},
    {0x10, "PAM4 Mode Tx Configured"},
    {0x20, "Reserved"},
    {0x40, "Reserved"},
    {0x80, "Reserved"},
    {END_OF_CODES, " "},
};

/// A2h byte 130.
inline constexpr SfpTable StatusCtrl130Tbl[] = {
    {0x01, "EWRAP Disable"},
    {0x02, "EWRAP Enable"},
    {END_OF_CODES, " "},
};

/// A2h byte 133.
inline constexpr SfpTable StatusCtrl133Tbl[] = {
    {0x01, "OWRAP Disable"},
    {0x02, "OWRAP Enable"},
    {END_OF_CODES, " "},
};

/// A2h byte 245.
inline constexpr SfpTable LSNCtrl245Tbl[] = {
    {0x01, "Train 64G"}, {0x02, "Train 32G"}, {0x04, "Fixed Speed Switch to 64G"},  {0x08, "Reserved"},
    {0x10, "Reserved"},  {0x20, "Reserved"},  {0x40, "Client Rx Adaptation Reset"}, {0x80, "LSN Mode"},
    {END_OF_CODES, " "},
};

/// Upper page 00h byte 192.
inline constexpr SfpTable EthernetExtSpeedTbl[] = {
    {0, "Unspecified"},
    {1, "100 Gbit/Sec or 25 Gbit/Sec"},
    {2, "100 Gbit/Sec or 25 Gbit/Sec"},
    {3, "100 Gbit/Sec or 25 Gbit/Sec"},
    {4, "100 Gbit/Sec or 25 Gbit/Sec"},
    {5, "100 Gbit/Sec"},
    {6, "100 Gbit/Sec"},
    {7, "100 Gbit/Sec"},
    {8, "100 Gbit/Sec"},
    {9, "Obsolete"},
    {10, "Reserved"},
    {11, "100 Gbit/Sec or 25 Gbit/Sec"},
    {12, "25 Gbit/Sec"},
    {13, "25 Gbit/Sec"},
    {14, "Reserved"},
    {15, "Reserved"},
    {16, "40 Gbit/Sec"},
    {17, "10 Gbit/Sec"},
    {18, "40 Gbit/Sec"},
    {19, "G959.1"},
    {20, "G959.1"},
    {21, "G959.1"},
    {22, "10 Gbit/Sec"},
    {23, "100 Gbit/Sec"},
    {24, "100 Gbit/Sec"},
    {25, "100 Gbit/Sec"},
    {26, "100 Gbit/Sec"},
    {27, "Reserved"},
    {END_OF_CODES, " "},
};

/// Upper page 00h byte 193.
inline constexpr SfpTable Options1Tbl[] = {
    {0x01, "Rx Output Amplitude Fixed Programmable Settings"},
    {0x02, "Rx Output Emphasis Fixed Programmable Settings"},
    {0x04, "Tx Input Equalization Fixed Programmable Settings"},
    {0x08, "Tx Input Equalization Auto Adaptive Capable"},
    {END_OF_CODES, " "},
};

/// Upper page 00h byte 194.
inline constexpr SfpTable Options2Tbl[] = {
    {0x01, "Tx Squelch implemented"},
    {0x02, "Tx Squelch Disable implemented"},
    {0x04, "Rx Output Disable capable"},
    {0x08, "Rx Squelch Disable implemented"},
    {0x10, "Rx CDR Loss of Lock Flag implemented"},
    {0x20, "Tx CDR Loss of Lock Flag implemented"},
    {0x40, "Rx CDR On/Off Control implemented"},
    {0x80, "Tx CDR On/Off Control implemented"},
    {END_OF_CODES, " "},
};

/// Upper page 00h byte 195.
inline constexpr SfpTable Options3Tbl[] = {
    {0x02, "Tx Loss of Signal implemented"}, {0x04, "Tx Squelch implemented"},
    {0x08, "TX_FAULT signal implemented"},   {0x10, "TX_DISABLE implemented and disables serial o/p"},
    {0x20, "RATE_SELECT implemented"},       {0x40, "Memory Page 01h provided"},
    {0x80, "Memory Page 02h provided"},      {END_OF_CODES, " "},
};

/// Texts of `ExtIdentifierQsfpTbl`, generated by rule.
struct ExtIdentifierTexts {
    static constexpr std::size_t LOW_ROWS = 32;  ///< values 0 to 31
    static constexpr std::size_t HIGH_ROWS = 48; ///< values 64 to 252 in steps of 4

    VX_UINT8 values[LOW_ROWS + HIGH_ROWS] = {};
    char texts[LOW_ROWS + HIGH_ROWS][sizeof "CLEI code, CDR in Rx, CDR in Tx, Power Class 1"] = {};

    constexpr ExtIdentifierTexts() {
        std::size_t row = 0;
        for (unsigned value = 0; value < LOW_ROWS; ++value) {
            Make(row++, value, "1567"[value & 0x03]); // bits 1 and 0: power classes 5 to 7
        }
        for (unsigned value = 0x40; value <= 0xFC; value += 4) {
            Make(row++, value, "1234"[value >> 6]); // bits 7 and 6: power classes 2 to 4
        }
    }

private:
    constexpr void Make(std::size_t row, unsigned value, char powerClass) {
        values[row] = static_cast<VX_UINT8>(value);
        char* at = texts[row];
        const auto add = [&at](const char* piece) {
            while (*piece != '\0') {
                *at++ = *piece++;
            }
        };
        add((value & 0x10) != 0 ? "CLEI code, " : "");
        add((value & 0x04) != 0 ? "CDR in Rx, " : "");
        add((value & 0x08) != 0 ? "CDR in Tx, " : "");
        add("Power Class ");
        *at = powerClass;
    }
};
inline constexpr ExtIdentifierTexts EXT_IDENTIFIER_TEXTS;

/// Upper page 00h byte 129. Bit 5 is ignored if bits 7 and 6 give the power class. There are no rows for values 32
/// to 63, and for values from 64 on with bit 0 or 1 set.
inline constexpr auto ExtIdentifierQsfpTbl = [] {
    std::array<SfpTable, std::size(EXT_IDENTIFIER_TEXTS.values) + 1> table{};
    for (std::size_t row = 0; row < std::size(EXT_IDENTIFIER_TEXTS.values); ++row) {
        table[row] = {EXT_IDENTIFIER_TEXTS.values[row], EXT_IDENTIFIER_TEXTS.texts[row]};
    }
    table.back() = {END_OF_CODES, " "};
    return table;
}();

// The short codes of the media information.

/// Upper page 00h byte 131, for the media information.
inline constexpr SfpTable EthernetSpeedQsfpTbl[] = {
    {0x01, "40 Gbits/Sec"}, {0x02, "40 Gbits/Sec"}, {0x04, "40 Gbits/Sec"},
    {0x08, "40 Gbits/Sec"}, {0x10, "10 Gbits/Sec"}, {0x20, "10 Gbits/Sec"},
    {0x40, "10 Gbits/Sec"}, {0x80, "Extended"},     {END_OF_CODES, " "},
};

/// A0h byte 10.
inline constexpr SfpTable FCSpeedCodeTbl[] = {
    {0x01, "100"},  {0x04, "200"}, {0x08, "3200"}, {0x10, "400"},
    {0x20, "1600"}, {0x40, "800"}, {0x80, "1200"}, {END_OF_CODES, " "},
};

/// A0h byte 62.
inline constexpr SfpTable FCSpeed2CodeTbl[] = {
    {0x01, "6400"},
    {0x02, "12800"},
    {END_OF_CODES, " "},
};

/// A0h byte 9.
inline constexpr SfpTable FCTransMediaCodeTbl[] = {
    {0x01, "SM"}, {0x02, " "},  {0x04, "M5"}, {0x08, "M6"},        {0x10, "TV"},
    {0x20, "MI"}, {0x40, "TP"}, {0x80, "TW"}, {END_OF_CODES, " "},
};

/// A0h byte 8.
inline constexpr SfpTable FCTransTechCodeTbl[] = {
    {0x01, " "},  {0x02, "LR"}, {0x04, "IR"}, {0x08, "SR"},        {0x10, "LL"},
    {0x20, "SL"}, {0x40, "SN"}, {0x80, "EL"}, {END_OF_CODES, " "},
};

/// A0h byte 7.
inline constexpr SfpTable FCLinkLengthCodeTbl[] = {
    {0x01, "EL"}, {0x02, "LS"}, {0x04, "SA"}, {0x08, "M"},         {0x10, "L"},
    {0x20, "I"},  {0x40, "S"},  {0x80, "V"},  {END_OF_CODES, " "},
};
