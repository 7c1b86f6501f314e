/// @file
/// Real modules: the meaning of their bytes by the standards alone.
#include "TransceiverImages.h"

#include <filesystem>

using namespace transceiver_test;

namespace {

struct Identity {
    const char* image;
    const char* vendor;
    const char* partNumber;
    const char* revision;
    const char* serialNumber;
    const char* date;
};
/// Padding, which is part of the report, is left out here. Null: unknown.
const Identity IDENTITIES[] = {
    {"3m-dac-1410", "3M", "1410-P17-00-3.00", nullptr, "0", nullptr}, // a serial number of blanks
    {"amphenol-dac-571540007", "Amphenol", "571540007", "M", "APF112500749A3", "110624"},
    {"badccext-oem-sfp-ge-t", "OEM", "SFP-GE-T", "C", nullptr, nullptr},
    {"cisco-finisar-10g-lr", "CISCO-FINISAR", "FTLX1474D3BCL-CS", "A", "FNS16100CQX", "120305"},
    {"extcal-huawei-hpsp2120", "HUAWEI", "HPSP2120", nullptr, "030KMF6TB4524820", "11041403"},
    {"fc12g-jdsu-plrxpl-s43", "JDSU", "PLRXPLSCS4322N", nullptr, "CB45UF001", nullptr},
    {"fc2g-finisar-ftrj8519p1bnl", "FINISAR CORP.", "FTRJ8519P1BNL", nullptr, "P8J2ZNC", nullptr},
    {"fiberstore-sr85-base64", "FiberStore", "SFP-10GSR-85", "A", nullptr, nullptr},
    {"finisar-ftlf8536-25g-sr", "FINISAR CORP.", "FTLF8536P4BCL", nullptr, "UWB04VY", nullptr},
    {"flexoptix-b1696-10g-bx1330", "FLEXOPTIX", "P.B1696.10.DA", "A", "F79B5KH", "191218"},
    {"fs-dwdm-ch44-uncoded", "FS", "DW44-10G-80-4214", "0001", "C2007088821", "200729"},
    {"mikrotik-s85dlc05d", "Mikrotik", "S-85DLC05D", nullptr, "SG85M31401687", "130424"},
    {"netgear-axm761", "NETGEAR", "AXM761", "10", "A7N2018312", "100625"},
    {"oem-glc-t-1000base-t", "OEM", "GLC-T", "B", "M0312A887", "130823"},
    {"oem-sfp-ge35-ld10-bx", "OEM", "SFP-GE35-LD10", nullptr, "S12351210640006", nullptr},
    {"tsuhan-xgspon-no-light", "TSUHAN LTD.", "THMPRA-2677-GXA", "10", "802670138206693", "220928"},
    {"ubnt-dac-sfp28-1m", "Ubiquiti Inc.", "DAC-SFP28-1M", "A1", "AH22091000096", "221013"},
    {"dell-wg8c4-100g-aoc", "DELL", "WG8C4", nullptr, "CN04HG0087AE001", nullptr},
    {"fs-qsfp28-ir4-100g", "FS", "QSFP28-IR4-100G", "A1", "C1812155461", "190110"},
    {"lumentum-lq210cr-cwdm4", "LUMENTUM", "LQ210CR-CAA1", nullptr, "FF4250500019-Q", nullptr},
    {"mellanox-mc2206130-dac", "Mellanox", "MC2206130-001", nullptr, "MS-11175031", nullptr},
};

/// The value after a label, without trailing blanks.
std::string ValueOf(const std::string& text, const std::string& label) {
    const std::size_t start = text.find(Label(label));
    if (start == std::string::npos) {
        return "no " + label;
    }
    std::string value = text.substr(start + 32, text.find('\n', start) - start - 32);
    value.erase(value.find_last_not_of(' ') + 1);
    return value;
}

TEST(TransceiverModulesTest, Identities) {
    for (const Identity& module : IDENTITIES) {
        SCOPED_TRACE(module.image);
        const std::string report = ReportOf(LoadImage(module.image));
        const std::string head = HeadOf(report);
        const std::string fields = FieldsOf(report);
        const auto expect = [&](const char* expected, const char* headLabel, const char* fieldLabel) {
            if (expected != nullptr) {
                EXPECT_EQ(ValueOf(fields, fieldLabel), expected);
                EXPECT_EQ(*headLabel == '\0' ? expected : ValueOf(head, headLabel), expected);
            }
        };
        expect(module.vendor, "Vendor", "Vendor name");
        expect(module.partNumber, "Part Number", "Vendor PN");
        expect(module.revision, "Revision", "Vendor rev");
        expect(module.serialNumber, "Serial Number", "Vendor SN");
        expect(module.date, "", "Date code");
    }
}

TEST(TransceiverModulesTest, KindsOfModules) {
    const auto field = [](const char* image, const char* label) {
        return ValueOf(FieldsOf(ReportOf(LoadImage(image))), label);
    };
    EXPECT_EQ(field("amphenol-dac-571540007", "Connector"), "Copper Pigtail");
    EXPECT_EQ(field("ubnt-dac-sfp28-1m", "Connector"), "No separable connector");
    EXPECT_EQ(field("cisco-finisar-10g-lr", "Wavelength"), "0x051e"); // 1310 nm
    EXPECT_EQ(field("cisco-finisar-10g-lr", "Encoding"), "64B66B");
    EXPECT_EQ(field("cisco-finisar-10g-lr", "Vendor OUI"), "0x00 0x90 0x65");
    EXPECT_EQ(field("mikrotik-s85dlc05d", "Wavelength"), "0x0352"); // 850 nm
    EXPECT_EQ(field("extcal-huawei-hpsp2120", "Connector"), "SC (Subscriber Connector)");
    EXPECT_EQ(field("flexoptix-b1696-10g-bx1330", "Identifier"), "SFP/SFP+/SFP28 and later");
    EXPECT_EQ(field("fs-qsfp28-ir4-100g", "Identifier"), "QSFP28");
    EXPECT_EQ(field("fs-qsfp28-ir4-100g", "Connector"), "LC (Lucent Connector)");
    EXPECT_EQ(field("fs-qsfp28-ir4-100g", "Encoding"), "64B66B");
    EXPECT_EQ(field("fs-dwdm-ch44-uncoded", "SFF-8472 Compliance"),
              "Includes functionality described in Rev 10.4 of SFF-8472");
    // A faulty read of the vendor name is shown as read: the sixteenth character is "d".
    EXPECT_EQ(field("fiberstore-sr85-base64", "Vendor name"), "FiberStore");
    EXPECT_EQ(field("badccbase-fiberstore-sr85", "Vendor name"), "FiberStore d");
    // Byte 0 decides on the family, not byte 128, which says 13 here.
    EXPECT_EQ(field("oem-qsfp-40g-sr4-lower0", "Identifier"), "Unknown or unspecified");
    EXPECT_EQ(ValueOf(HeadOf(ReportOf(LoadImage("fc2g-finisar-ftrj8519p1bnl"))), "Media Type"), "200-M6-SN-I");
}

/// Values of modules without external calibration, and the weight of the last known digit.
struct Values {
    const char* image;
    float temperature, voltage, bias, transmit, receive;
    float temperatureStep, voltageStep, biasStep, powerStep;
    float receiveFactor; ///< of this tool
};
const Values VALUES[] = {
    {"cisco-finisar-10g-lr", 27.563f, 3.349f, 30.938f, 0.6233f, 0.5091f, 0.001f, 0.001f, 0.0005f, 0.000005f, 1},
    // 33 C, 2 mA; -5.792 dBm is 0.2635 mW, -5.22 dBm is 0.3006 mW
    {"mikrotik-s85dlc05d", 33, 3.237f, 2, 0.2635f, 0.3006f, 1, 0.0005f, 1, 0.0001f, 1},
    // -40 dBm is 0.0001 mW
    {"tsuhan-xgspon-no-light", 30, 3.26f, 0, 0, 0.0001f, 1, 0.005f, 0.5f, 0.000005f, 1},
    // Its coefficients are all zero: four times the value, 1 times 0.0001 mW.
    {"oem-sfp-ge35-ld10-bx", 44.875f, 3.236f, 18.45f, 0.2731f, 0.0001f, 0.0005f, 0.0005f, 0.005f, 0.00005f, 4},
};

Image LoadLive(const char* name) {
    Image image = LoadImage(name);
    if (std::string(name) == "oem-sfp-ge35-ld10-bx") {
        image.Set(A2h(96), {0x2C, 0xE0, 0x7E, 0x68, 0x24, 0x09, 0x0A, 0xAB, 0x00, 0x01}); // from its comment
    }
    return image;
}

TEST(TransceiverModulesTest, Values) {
    for (const Values& module : VALUES) {
        SCOPED_TRACE(module.image);
        TransceiverDiagnostics diagnostics;
        diagnostics.CalculateDMIData(LoadLive(module.image).View());
        EXPECT_NEAR(diagnostics.getValueAt(0, 1), module.temperature, module.temperatureStep);
        EXPECT_NEAR(diagnostics.getValueAt(0, 2), module.voltage, module.voltageStep);
        EXPECT_NEAR(diagnostics.getValueAt(0, 3), module.bias, module.biasStep);
        EXPECT_NEAR(diagnostics.getValueAt(0, 4), module.transmit, module.powerStep);
        EXPECT_NEAR(diagnostics.getValueAt(0, 5), module.receive * module.receiveFactor,
                    module.powerStep * module.receiveFactor);
    }
}

TEST(TransceiverModulesTest, Thresholds) {
    // High alarm, high warning, low warning, low alarm. -6 C is FA 00.
    const float LONG_WAVE[][5] = {
        {75, 3.7f, 85, 2.2372f, 2.2372f},
        {70, 3.6f, 80, 1.1208f, 1.1208f},
        {0, 3.0f, 20, 0.1515f, 0.0363f},
        {-6, 2.9f, 15, 0.0602f, 0.0144f},
    };
    TransceiverDiagnostics diagnostics;
    diagnostics.CalculateDMIData(LoadImage("cisco-finisar-10g-lr").View());
    for (int row = 2; row <= 5; ++row) {
        for (int column = 1; column <= 5; ++column) {
            EXPECT_NEAR(diagnostics.getValueAt(row, column), LONG_WAVE[row - 2][column - 1], 0.00002)
                << row << " " << column;
        }
    }
    diagnostics.CalculateDMIData(LoadImage("flexoptix-b1696-10g-bx1330").View());
    EXPECT_NEAR(diagnostics.getValueAt(2, 4), 1.7783, 0.00005);
}

/// With external calibration this tool deviates from SFF-8472, which gives 37.5 C, 3.324 V and 0.526 mA here.
TEST(TransceiverModulesTest, ExternalCalibration) {
    TransceiverDiagnostics diagnostics;
    diagnostics.CalculateDMIData(LoadImage("extcal-huawei-hpsp2120").View());
    // Slope DC B7 is "220.183"; offset 91 35 is 3591h = 13713; the value 00 AC is 172/256.
    EXPECT_EQ(diagnostics.getValueAt(0, 1), 220.183f * 0.671875f + 13713.0f);
    // Slope 30 A6 is "48.166"; offset FE 5A is -422; the value 02 B4 is 692.
    EXPECT_EQ(diagnostics.getValueAt(0, 2), 48.166f * (692.0f * 100.0f * 1e-6f) - 422.0f);
    // Slope 09 C0 is C0 alone, 192; the value 00 1B is 27.
    EXPECT_EQ(diagnostics.getValueAt(0, 3), 192.0f * (54.0f * 0.001f));
    // Slope 01 00; the value 45 76 is 17782. 2.499 dBm is 1.778 mW.
    EXPECT_EQ(diagnostics.getValueAt(0, 4), 17782.0f * 0.1f * 0.001f);
    EXPECT_NEAR(diagnostics.getValueAt(0, 4), 1.778, 0.0005);
    // The value is 0: the constant BF 32 73 91 alone.
    EXPECT_NEAR(diagnostics.getValueAt(0, 5), -0.697076, 0.0000005);
}

TEST(TransceiverModulesTest, EveryImageGivesAReport) {
    std::size_t images = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/transceivers")) {
        SCOPED_TRACE(entry.path().filename().string());
        const std::string report = ReportOf(LoadImage(entry.path().stem().string()));
        EXPECT_LT(report.size(), 16383u); // nothing was lost
        EXPECT_NE(FieldsOf(report).find("Vendor Specific: "), std::string::npos);
        EXPECT_EQ(report.find("Incorrect"), std::string::npos);
        ++images;
    }
    EXPECT_EQ(images, 28u);
}

} // namespace
