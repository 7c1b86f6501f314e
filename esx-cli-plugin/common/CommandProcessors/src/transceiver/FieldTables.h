/// @file
/// The fields of a transceiver's memory, in the order in which the report shows them. Sources: SFF-8472 for the
/// SFP family; SFF-8636, upper page 00h, for the QSFP family.
#pragma once

#include "CodeTables.h"

/// How a field prints.
enum eFieldType : VX_UINT16 {
    FieldBitCode = 92,   ///< one byte: the names of all set bits on one line
    FieldHeading = 93,   ///< a heading line, no data
    FieldSkip = 94,      ///< reserved bytes: nothing
    FieldBitList = 95,   ///< one byte: a line for each row of the decode table, with that bit's state
    FieldByteTable = 96, ///< one byte, looked up by exact value
    FieldHex4 = 97,      ///< four bytes as one hexadecimal number
    FieldHex2 = 98,      ///< two bytes as one hexadecimal number
    FieldRaw = 99,       ///< `Size` bytes as a hexadecimal dump
    FieldAscii = 100,    ///< `Size` bytes of text
};

struct FieldTable {
    VX_UINT16 Offset;      ///< in the module's image; `HEADING_OFFSET` or `END_OF_FIELDS` for none
    const char* Name;      ///< the label, and the key by which the code finds the field; may be empty
    const SfpTable* Table; ///< or null
    VX_UINT16 Size;        ///< in bytes
    eFieldType FieldType;
};
inline constexpr VX_UINT16 HEADING_OFFSET = 65534;
inline constexpr VX_UINT16 END_OF_FIELDS = 65535;

/// Where address A2h begins in the image of a module of the SFP family.
inline constexpr VX_UINT16 A2 = 256;

/// SFP family: address A0h, then A2h. "MCU Version" and "Debug MCU Version" show the same byte, the latter out of
/// order: clients know it so.
inline constexpr FieldTable FieldIndxTable[] = {
    {HEADING_OFFSET, "\nOptical Transceiver Digital Diagnostic Data:", nullptr, 0, FieldHeading},
    {HEADING_OFFSET, "\nAddress A0", nullptr, 0, FieldHeading},
    {0, "Identifier", IdentifierTbl, 1, FieldByteTable},
    {1, "Extended Identifier", ExtIdentifierTbl, 1, FieldByteTable},
    {2, "Connector", ConnectorTbl, 1, FieldByteTable},
    {3, "Ethernet Speed", EthernetSpeedTbl, 1, FieldByteTable},
    {4, "Compliance", nullptr, 3, FieldRaw},
    {7, "FC Link Length", FCLinkLengthTbl, 1, FieldBitCode},
    {8, "FC Transmitter Tech", FCTransTechTbl, 1, FieldBitCode},
    {9, "FC Transmission Media", FCTransMediaTbl, 1, FieldBitCode},
    {10, "FC Speed", FCSpeedTbl, 1, FieldBitCode},
    {11, "Encoding", EncodingTbl, 1, FieldByteTable},
    {12, "BR, Nominal", nullptr, 1, FieldRaw},
    {13, "Rate Identifier", RateIdentifierTbl, 1, FieldByteTable},
    {14, "Length (9um) - km", nullptr, 1, FieldRaw},
    {15, "Length (9um)", nullptr, 1, FieldRaw},
    {16, "Length (50um,OM2)", nullptr, 1, FieldRaw},
    {17, "Length (62.5um,OM1)", nullptr, 1, FieldRaw},
    {18, "Length (50um,OM4,Copper)", nullptr, 1, FieldRaw},
    {19, "Length (50um,OM3,Copper)", nullptr, 1, FieldRaw},
    {20, "Vendor name", nullptr, 16, FieldAscii},
    {36, "Extended Compliance Codes", ExtComplianceCodesTbl, 1, FieldByteTable},
    {37, "Vendor OUI", nullptr, 3, FieldRaw},
    {40, "Vendor PN", nullptr, 16, FieldAscii},
    {56, "Vendor rev", nullptr, 4, FieldAscii},
    {60, "Wavelength", nullptr, 2, FieldHex2},
    {62, "FC Speed 2", FCSpeed2Tbl, 1, FieldBitCode},
    {63, "CC_BASE", nullptr, 1, FieldRaw},
    {64, "Optional Transceiver Signals:", OptionsBytes64Tbl, 1, FieldBitList},
    {65, "", OptionsBytes65Tbl, 1, FieldBitList},
    {66, "Signaling Rate Max", nullptr, 1, FieldRaw},
    {67, "Signaling Rate Min", nullptr, 1, FieldRaw},
    {68, "Vendor SN", nullptr, 16, FieldAscii},
    {84, "Date code", nullptr, 8, FieldAscii},
    {92, "Diag Monitoring Type:", DiagMonitorTbl, 1, FieldBitList},
    {93, "Enhanced Options:", EnhancedOptTbl, 1, FieldBitList},
    {94, "SFF-8472 Compliance", SFF8472Tble, 1, FieldByteTable},
    {95, "CC_EXT", nullptr, 1, FieldRaw},
    {96, "Vendor Specific", nullptr, 32, FieldRaw},
    {149, "SFP Firmware Version", nullptr, 2, FieldRaw},
    {249, "MCU Firmware Version", nullptr, 2, FieldRaw},
    {251, "DSP Firmware Version", nullptr, 3, FieldRaw},
    {HEADING_OFFSET, "\nAddress A2", nullptr, 0, FieldHeading},
    {A2 + 0, "Temp High Alarm", nullptr, 2, FieldHex2},
    {A2 + 2, "Temp Low Alarm", nullptr, 2, FieldHex2},
    {A2 + 4, "Temp High Warning", nullptr, 2, FieldHex2},
    {A2 + 6, "Temp Low Warning", nullptr, 2, FieldHex2},
    {A2 + 8, "Voltage High Alarm", nullptr, 2, FieldHex2},
    {A2 + 10, "Voltage Low Alarm", nullptr, 2, FieldHex2},
    {A2 + 12, "Voltage High Warning", nullptr, 2, FieldHex2},
    {A2 + 14, "Voltage Low Warning", nullptr, 2, FieldHex2},
    {A2 + 16, "Bias High Alarm", nullptr, 2, FieldHex2},
    {A2 + 18, "Bias Low Alarm", nullptr, 2, FieldHex2},
    {A2 + 20, "Bias High Warning", nullptr, 2, FieldHex2},
    {A2 + 22, "Bias Low Warning", nullptr, 2, FieldHex2},
    {A2 + 24, "TX Signal Power High Alarm", nullptr, 2, FieldHex2},
    {A2 + 26, "TX Signal Power Low Alarm", nullptr, 2, FieldHex2},
    {A2 + 28, "TX Signal Power High Warning", nullptr, 2, FieldHex2},
    {A2 + 30, "TX Signal Power Low Warning", nullptr, 2, FieldHex2},
    {A2 + 32, "RX Signal Power High Alarm", nullptr, 2, FieldHex2},
    {A2 + 34, "RX Signal Power Low Alarm", nullptr, 2, FieldHex2},
    {A2 + 36, "RX Signal Power High Warning", nullptr, 2, FieldHex2},
    {A2 + 38, "RX Signal Power Low Warning", nullptr, 2, FieldHex2},
    {A2 + 40, "", nullptr, 16, FieldSkip},
    {A2 + 56, "Rx_PWR(4)", nullptr, 4, FieldHex4},
    {A2 + 60, "Rx_PWR(3)", nullptr, 4, FieldHex4},
    {A2 + 64, "Rx_PWR(2)", nullptr, 4, FieldHex4},
    {A2 + 68, "Rx_PWR(1)", nullptr, 4, FieldHex4},
    {A2 + 72, "Rx_PWR(0)", nullptr, 4, FieldHex4},
    {A2 + 76, "Tx_I(Slope)", nullptr, 2, FieldHex2},
    {A2 + 78, "Tx_I(Offset)", nullptr, 2, FieldHex2},
    {A2 + 80, "Tx_PWR(Slope)", nullptr, 2, FieldHex2},
    {A2 + 82, "Tx_PWR(Offset)", nullptr, 2, FieldHex2},
    {A2 + 84, "T(Slope)", nullptr, 2, FieldHex2},
    {A2 + 86, "T(Offset)", nullptr, 2, FieldHex2},
    {A2 + 88, "V(Slope)", nullptr, 2, FieldHex2},
    {A2 + 90, "V(Offset)", nullptr, 2, FieldHex2},
    {A2 + 92, "", nullptr, 3, FieldSkip},
    {A2 + 95, "Checksum", nullptr, 1, FieldRaw},
    {A2 + 96, "Temperature MSB", nullptr, 1, FieldRaw},
    {A2 + 97, "Temperature LSB", nullptr, 1, FieldRaw},
    {A2 + 98, "Vcc MSB", nullptr, 1, FieldRaw},
    {A2 + 99, "Vcc LSB", nullptr, 1, FieldRaw},
    {A2 + 100, "TX Bias MSB", nullptr, 1, FieldRaw},
    {A2 + 101, "TX Bias LSB", nullptr, 1, FieldRaw},
    {A2 + 102, "TX Power MSB", nullptr, 1, FieldRaw},
    {A2 + 103, "TX Power LSB", nullptr, 1, FieldRaw},
    {A2 + 104, "RX Power MSB", nullptr, 1, FieldRaw},
    {A2 + 105, "RX Power LSB", nullptr, 1, FieldRaw},
    {A2 + 106, "Reserved MSB", nullptr, 1, FieldRaw},
    {A2 + 107, "Reserved LSB", nullptr, 1, FieldRaw},
    {A2 + 108, "Reserved MSB", nullptr, 1, FieldRaw},
    {A2 + 109, "Reserved LSB", nullptr, 1, FieldRaw},
    {A2 + 110, "Status/Control Bits:", StatusCtrl110Tbl, 1, FieldBitList},
    {A2 + 111, "", StatusCtrl111Tbl, 1, FieldBitList},
    {A2 + 112, "", StatusCtrl112Tbl, 1, FieldBitList},
    {A2 + 113, "", StatusCtrl113Tbl, 1, FieldBitList},
    {A2 + 114, "", nullptr, 1, FieldSkip},
    {A2 + 115, "", nullptr, 1, FieldSkip},
    {A2 + 116, "", StatusCtrl116Tbl, 1, FieldBitList},
    {A2 + 117, "", StatusCtrl117Tbl, 1, FieldBitList},
    {A2 + 118, "Extended Module Control:", StatusCtrl118Tbl, 1, FieldBitList},
    {A2 + 119, "Extended Status Bytes:", StatusCtrl119Tbl, 1, FieldBitList},
    {A2 + 120, "Vendor Specific", nullptr, 8, FieldRaw},
    {A2 + 130, "TP1 to TP4 EWRAP Control:", StatusCtrl130Tbl, 1, FieldBitList},
    {A2 + 133, "TP3 to TP2 OWRAP Control:", StatusCtrl133Tbl, 1, FieldBitList},
    {A2 + 224, "Electrical Output Tx Tap Pre3", nullptr, 1, FieldRaw},
    {A2 + 225, "Electrical Output Tx Tap Pre2", nullptr, 1, FieldRaw},
    {A2 + 226, "Electrical Output Tx Tap Pre1", nullptr, 1, FieldRaw},
    {A2 + 227, "Electrical Output Tx Tap Main", nullptr, 1, FieldRaw},
    {A2 + 228, "Electrical Output Tx Tap Post1", nullptr, 1, FieldRaw},
    {A2 + 240, "DSP Status Timing Control", nullptr, 1, FieldRaw},
    {A2 + 241, "DSP Control", nullptr, 1, FieldRaw},
    {A2 + 244, "FC 64G Mode Control", nullptr, 1, FieldRaw},
    {A2 + 245, "LSN Control:", LSNCtrl245Tbl, 1, FieldBitList},
    {A2 + 246, "CDR Firmware Version", nullptr, 3, FieldRaw},
    {A2 + 249, "Laser Version", nullptr, 1, FieldRaw},
    {A2 + 250, "TIA Version", nullptr, 1, FieldRaw},
    {A2 + 251, "CDR Version", nullptr, 1, FieldRaw},
    {A2 + 252, "HW Version", nullptr, 1, FieldRaw},
    {A2 + 253, "MCU Version", nullptr, 1, FieldRaw},
    {A2 + 254, "PLP API Version", nullptr, 1, FieldRaw},
    {A2 + 253, "Debug MCU Version", nullptr, 1, FieldRaw},
    {END_OF_FIELDS, "", nullptr, 0, FieldRaw},
};

/// QSFP family: upper page 00h. "Ethernet Speed" has no decode table here, and byte 222 repeats the label of byte
/// 140: clients know it so.
inline constexpr FieldTable FieldIndxTableQSFP[] = {
    {HEADING_OFFSET, "\nOptical Transceiver Digital Diagnostic Data:", nullptr, 0, FieldHeading},
    {HEADING_OFFSET, "\nAddress A0", nullptr, 0, FieldHeading},
    {128, "Identifier", IdentifierTbl, 1, FieldByteTable},
    {129, "Extended Identifier", ExtIdentifierQsfpTbl.data(), 1, FieldByteTable},
    {130, "Connector", ConnectorTbl, 1, FieldByteTable},
    {131, "Ethernet Speed", nullptr, 1, FieldByteTable},
    {132, "Compliance", nullptr, 3, FieldRaw},
    {135, "FC Link Length", FCLinkLengthTbl, 1, FieldBitCode},
    {136, "FC Transmitter Tech", FCTransTechTbl, 1, FieldBitCode},
    {137, "FC Transmission Media", FCTransMediaTbl, 1, FieldBitCode},
    {138, "FC Speed", FCSpeedTbl, 1, FieldBitCode},
    {139, "Encoding", EncodingQsfpTbl, 1, FieldByteTable},
    {140, "BR, Nominal", nullptr, 1, FieldRaw},
    {141, "", nullptr, 1, FieldSkip},
    {142, "Length (SMF) - km", nullptr, 1, FieldRaw},
    {143, "Length (OM3 50um)", nullptr, 1, FieldRaw},
    {144, "Length (OM2 50um)", nullptr, 1, FieldRaw},
    {145, "Length (OM1 62.5um)", nullptr, 1, FieldRaw},
    {146, "Length (Copper)", nullptr, 1, FieldRaw},
    {147, "", nullptr, 1, FieldSkip},
    {148, "Vendor name", nullptr, 16, FieldAscii},
    {164, "", nullptr, 1, FieldSkip},
    {165, "Vendor OUI", nullptr, 3, FieldRaw},
    {168, "Vendor PN", nullptr, 16, FieldAscii},
    {184, "Vendor rev", nullptr, 2, FieldAscii},
    {186, "Wavelength", nullptr, 2, FieldHex2},
    {188, "", nullptr, 2, FieldSkip},
    {190, "", nullptr, 1, FieldSkip},
    {191, "CC_BASE", nullptr, 1, FieldRaw},
    {192, "Extended Ethernet Speed", EthernetExtSpeedTbl, 1, FieldByteTable},
    {193, "Options 1:", Options1Tbl, 1, FieldBitList},
    {194, "Options 2:", Options2Tbl, 1, FieldBitList},
    {195, "Options 3:", Options3Tbl, 1, FieldBitList},
    {196, "Vendor SN", nullptr, 16, FieldAscii},
    {212, "Date code", nullptr, 8, FieldAscii},
    {220, "Diag Monitoring Type:", DiagMonitorQsfpTbl, 1, FieldBitList},
    {221, "Enhanced Options:", EnhancedOptQsfpTbl, 1, FieldBitList},
    {222, "BR, Nominal", nullptr, 1, FieldRaw},
    {223, "CC_EXT", nullptr, 1, FieldRaw},
    {224, "Vendor Specific", nullptr, 32, FieldRaw},
    {END_OF_FIELDS, "", nullptr, 0, FieldRaw},
};
