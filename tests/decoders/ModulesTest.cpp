/// @file
/// Real modules. What is expected was printed for the same bytes by their makers' switches and routers, or asserted by
/// independent decoders, as far as the comments in the files say so; the rest is the standards' arithmetic.
#include "Data.h"
#include "QsfpMemory.h"
#include "SfpMemory.h"

#include <filesystem>
#include <set>

using namespace decoders;
using namespace decoders_test;

namespace {

constexpr auto OTHER = ModuleFamily::OTHER;
constexpr auto SFP = ModuleFamily::SFP;
constexpr auto QSFP = ModuleFamily::QSFP;
constexpr auto NONE = CableKind::NONE;
constexpr auto PASSIVE = CableKind::PASSIVE;

struct Module {
    const char* name;
    ModuleFamily family;
    const char* vendor;
    const char* partNumber;
    const char* revision;
    const char* serialNumber;
    const char* dateCode;
    const char* connector;
    CableKind cable;
    double wavelength; ///< 0 for none
    unsigned rate;     ///< 0 for none
};
const Module MODULES[] = {
    {"3m-dac-1410", SFP, "3M", "1410-P17-00-3.00", "", "", "120221", "Copper pigtail", PASSIVE, 0, 10300},
    {"amphenol-dac-571540007", SFP, "Amphenol", "571540007", "M", "APF112500749A3", "110624", "Copper pigtail", PASSIVE,
     0, 10300},
    {"brocade-57-1000042-1000base-t", SFP, "BROCADE", "57-1000042-02", "", "F78TVUM", "181121",
     "Unknown or unspecified", NONE, 0, 1300},
    {"cisco-finisar-10g-lr", SFP, "CISCO-FINISAR", "FTLX1474D3BCL-CS", "A", "FNS16100CQX", "120305", "LC", NONE, 1310,
     10300},
    {"extcal-huawei-hpsp2120", SFP, "HUAWEI", "HPSP2120", "", "030KMF6TB4524820", "11041403", "SC", NONE, 1310, 1300},
    {"fc12g-jdsu-plrxpl-s43", SFP, "JDSU", "PLRXPLSCS4322N", "2", "CB45UF001", "111031", "LC", NONE, 850, 10300},
    {"fc2g-finisar-ftrj8519p1bnl", SFP, "FINISAR CORP.", "FTRJ8519P1BNL", "A", "P8J2ZNC", "051031", "LC", NONE, 850,
     2100},
    {"fiberstore-sr85-base64", SFP, "FiberStore", "SFP-10GSR-85", "A", "", "", "LC", NONE, 850, 10300},
    {"flexoptix-b1696-10g-bx1330", SFP, "FLEXOPTIX", "P.B1696.10.DA", "A", "F79B5KH", "191218", "LC", NONE, 1330,
     10300},
    {"fs-dwdm-ch44-uncoded", SFP, "FS", "DW44-10G-80-4214", "0001", "C2007088821", "200729", "LC", NONE, 1542, 11100},
    {"mikrotik-s85dlc05d", SFP, "Mikrotik", "S-85DLC05D", nullptr, "SG85M31401687", "130424", "LC", NONE, 850, 1300},
    {"netgear-axm761", SFP, "NETGEAR", "AXM761", "10", "A7N2018312", "100625", "LC", NONE, 850, 10300},
    {"oem-glc-t-1000base-t", SFP, "OEM", "GLC-T", "B", "M0312A887", "130823", "Unknown or unspecified", NONE, 0, 1300},
    {"oem-sfp-ge35-ld10-bx", SFP, "OEM", "SFP-GE35-LD10", nullptr, "S12351210640006", nullptr, "LC", NONE, 1310, 1300},
    {"tsuhan-xgspon-no-light", SFP, "TSUHAN LTD.", "THMPRA-2677-GXA", "10", "802670138206693", "220928", "SC", NONE,
     1270, 10000},
    // Its rate is FFh: 103 x 250 MBd.
    {"ubnt-dac-sfp28-1m", SFP, "Ubiquiti Inc.", "DAC-SFP28-1M", "A1", "AH22091000096", "221013",
     "No separable connector", PASSIVE, 0, 25750},
    {"dell-wg8c4-100g-aoc", QSFP, "DELL", "WG8C4", "A0", "CN04HG0087AE001", "180717", "No separable connector", NONE,
     850, 25750},
    {"finisar-ftl410-40g-sr4", QSFP, "FINISAR CORP", "FTL410QE3C", "A", "ETG09FZ", "150513", "MPO 1x12", NONE, 850,
     10300},
    {"fs-q28-pc-dac", QSFP, "FS", "Q28-PCxx", "A2", "C1907253451-2", "190805", "No separable connector", PASSIVE, 0,
     25750},
    {"fs-qsfp28-ir4-100g", QSFP, "FS", "QSFP28-IR4-100G", "A1", "C1812155461", "190110", "LC", NONE, 1302.35, 26000},
    {"lumentum-lq210cr-cwdm4", QSFP, "LUMENTUM", "LQ210CR-CAA1", "01", "FF4250500019-Q", "151202", "LC", NONE, 1311,
     25750},
    {"mellanox-mc2206130-dac", QSFP, "Mellanox", "MC2206130-001", "A", "MS-11175031", "130224",
     "No separable connector", PASSIVE, 0, 0},
    {"molex-dac-1110401054", QSFP, "Molex Inc.", "1110401054", "", "611030929", "160419", "No separable connector",
     PASSIVE, 0, 0},
};

ModuleIdentity Identify(const File& file) {
    return FamilyOf(Bytes(file.first)) == QSFP ? DecodeQsfpIdentity(Bytes(file.first))
                                               : DecodeSfpIdentity(Bytes(file.first));
}

TEST(ModulesTest, Identities) {
    for (const Module& module : MODULES) {
        SCOPED_TRACE(module.name);
        const File file = LoadModule(module.name);
        EXPECT_EQ(FamilyOf(Bytes(file.first)), module.family);
        const ModuleIdentity identity = Identify(file);
        const auto expect = [](const std::string& value, const char* expected) {
            if (expected != nullptr) {
                EXPECT_EQ(value, expected);
            }
        };
        expect(identity.vendor, module.vendor);
        expect(identity.partNumber, module.partNumber);
        expect(identity.revision, module.revision);
        expect(identity.serialNumber, module.serialNumber);
        expect(identity.dateCode, module.dateCode);
        EXPECT_EQ(identity.date.has_value(), identity.dateCode.size() >= 6);
        EXPECT_EQ(ConnectorName(identity.connector), module.connector);
        EXPECT_EQ(identity.cable, module.cable);
        EXPECT_EQ(identity.wavelength.value_or(Nanometres{0}).value, module.wavelength);
        EXPECT_EQ(identity.signalingRate.value_or(0), module.rate);
    }
    EXPECT_EQ(Identify(LoadModule("extcal-huawei-hpsp2120")).date, (Date{2011, 4, 14}));
    EXPECT_EQ(Identify(LoadModule("cisco-finisar-10g-lr")).oui, (std::array<std::uint8_t, 3>{0x00, 0x90, 0x65}));
    EXPECT_EQ(Identify(LoadModule("fs-qsfp28-ir4-100g")).oui, (std::array<std::uint8_t, 3>{0x00, 0x02, 0xC9}));
    EXPECT_EQ(IdentifierName(Identify(LoadModule("fs-qsfp28-ir4-100g")).identifier), "QSFP28");
}

TEST(ModulesTest, Lengths) {
    const auto lengths = [](const char* name) { return Identify(LoadModule(name)).lengths; };
    EXPECT_EQ(lengths("cisco-finisar-10g-lr"), (LinkLengths{.singleMode = 10000}));
    EXPECT_EQ(lengths("extcal-huawei-hpsp2120"), (LinkLengths{.singleMode = 20000}));
    EXPECT_EQ(lengths("mikrotik-s85dlc05d"), (LinkLengths{.om1 = 500, .om2 = 550}));
    EXPECT_EQ(lengths("3m-dac-1410"), (LinkLengths{.cable = 3}));
    EXPECT_EQ(lengths("amphenol-dac-571540007"), (LinkLengths{.cable = 1}));
    EXPECT_EQ(lengths("fc2g-finisar-ftrj8519p1bnl"), (LinkLengths{.om1 = 150, .om2 = 300}));
    EXPECT_EQ(lengths("dell-wg8c4-100g-aoc"), (LinkLengths{.cable = 5}));
    EXPECT_EQ(lengths("fs-qsfp28-ir4-100g"), (LinkLengths{.singleMode = 2000}));
    EXPECT_EQ(lengths("finisar-ftl410-40g-sr4"), (LinkLengths{.om3 = 100, .om4 = 150}));
    EXPECT_EQ(lengths("mellanox-mc2206130-dac"), (LinkLengths{.cable = 1}));
}

/// All checksums hold but those of the two bad reads.
TEST(ModulesTest, Checksums) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/transceivers")) {
        const std::string name = entry.path().stem().string();
        SCOPED_TRACE(name);
        const File file = LoadModule(name);
        // A shifted image says that it is of neither family; its upper page is where it belongs.
        const bool isShifted = name == "oem-qsfp-40g-sr4-lower0";
        EXPECT_EQ(FamilyOf(Bytes(file.first)) == OTHER, isShifted);
        const ModuleIdentity identity = isShifted ? DecodeQsfpIdentity(Bytes(file.first)) : Identify(file);
        EXPECT_EQ(identity.baseChecksum, name == "badccbase-fiberstore-sr85" ? Checksum::INVALID : Checksum::VALID);
        EXPECT_EQ(identity.extendedChecksum, name.starts_with("badcc") ? Checksum::INVALID
                                             : file.first.size() < 96  ? Checksum::UNREAD
                                                                       : Checksum::VALID);
        if (const auto diagnostics = DecodeSfpDiagnostics(Bytes(file.first), Bytes(file.second))) {
            EXPECT_EQ(diagnostics->checksum, Checksum::VALID);
        }
        ++count;
    }
    EXPECT_EQ(count, 28u);
    const ModuleIdentity shifted = DecodeQsfpIdentity(Bytes(LoadModule("oem-qsfp-40g-sr4-lower0").first));
    EXPECT_EQ(shifted.serialNumber, "ACR40G0041");
    // A bad read shows what was read: the sixteenth character came as a "d".
    EXPECT_EQ(Identify(LoadModule("badccbase-fiberstore-sr85")).vendor, "FiberStore d");
}

/// Who monitors itself, of the modules whose A2h was read.
TEST(ModulesTest, WhoHasDiagnostics) {
    std::set<std::string> with;
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/transceivers")) {
        const std::string name = entry.path().stem().string();
        const File file = LoadModule(name);
        const Bytes first(file.first);
        if (FamilyOf(first) == QSFP ? DecodeQsfpDiagnostics(first).has_value()
                                    : DecodeSfpDiagnostics(first, Bytes(file.second)).has_value()) {
            with.insert(name);
        }
    }
    EXPECT_EQ(with, (std::set<std::string>{
                        "cisco-finisar-10g-lr",
                        "dell-wg8c4-100g-aoc",
                        "extcal-huawei-hpsp2120",
                        "finisar-ftl410-40g-sr4",
                        "finisar-ftlx8571-auj0rcj",
                        "flexoptix-b1696-10g-bx1330",
                        "fs-dwdm-ch44-uncoded",
                        "fs-qsfp28-ir4-100g",
                        "lumentum-lq210cr-cwdm4",
                        "mikrotik-s85dlc05d",
                        "tsuhan-xgspon-no-light",
                    }));
}

SfpDiagnostics Diagnose(const File& file) {
    return DecodeSfpDiagnostics(Bytes(file.first), Bytes(file.second)).value();
}

double DbmValue(Milliwatts power) {
    return DbmOf(power).value().value;
}

/// A switch printed 27.563 C, 3.349 V, 30.938 mA, 0.6233 mW or -2.05303 dBm, 0.5091 mW or -2.93197 dBm, and all levels.
TEST(ModulesTest, LongWaveTenGigabit) {
    const SfpDiagnostics diagnostics = Diagnose(LoadModule("cisco-finisar-10g-lr"));
    EXPECT_EQ(diagnostics.calibration, Calibration::INTERNAL);
    EXPECT_NEAR(diagnostics.temperature.value.value, 27.563, 0.0005);
    EXPECT_EQ(diagnostics.voltage.value, Volts{3.3485}); // 82CDh; printed as 3.348 as well
    EXPECT_NEAR(diagnostics.bias.value.value, 30.938, 0.0005);
    EXPECT_EQ(diagnostics.transmitPower.value, Milliwatts{0.6233});
    EXPECT_EQ(diagnostics.receivePower->value, Milliwatts{0.5091});
    EXPECT_NEAR(DbmValue(diagnostics.transmitPower.value), -2.05303, 0.000005);
    EXPECT_NEAR(DbmValue(diagnostics.receivePower->value), -2.93197, 0.000005);
    // High alarm, low alarm, high warning, low warning.
    EXPECT_EQ(diagnostics.temperature.thresholds, (Thresholds<Celsius>{{75}, {-6}, {70}, {0}}));
    EXPECT_EQ(diagnostics.voltage.thresholds, (Thresholds<Volts>{{3.7}, {2.9}, {3.6}, {3.0}}));
    EXPECT_EQ(diagnostics.bias.thresholds, (Thresholds<Milliamperes>{{85}, {15}, {80}, {20}}));
    EXPECT_EQ(diagnostics.transmitPower.thresholds, (Thresholds<Milliwatts>{{2.2372}, {0.0602}, {1.1208}, {0.1515}}));
    EXPECT_EQ(diagnostics.receivePower->thresholds, (Thresholds<Milliwatts>{{2.2372}, {0.0144}, {1.1208}, {0.0363}}));
    EXPECT_NEAR(DbmValue(diagnostics.transmitPower.thresholds->lowWarning), -8.19587, 0.000005);
    EXPECT_NEAR(DbmValue(diagnostics.receivePower->thresholds->lowAlarm), -18.41638, 0.000005);
    EXPECT_EQ(diagnostics.temperature.Judged(), Verdict::OK);
    EXPECT_EQ(diagnostics.receivePower->Judged(), Verdict::OK);
}

/// A router printed 33 C, 3.237 V, 2 mA, -5.792 dBm sent and -5.22 dBm received.
TEST(ModulesTest, ShortWaveOneGigabit) {
    const SfpDiagnostics diagnostics = Diagnose(LoadModule("mikrotik-s85dlc05d"));
    EXPECT_NEAR(diagnostics.temperature.value.value, 33, 1);
    EXPECT_NEAR(diagnostics.voltage.value.value, 3.237, 0.0005);
    EXPECT_NEAR(diagnostics.bias.value.value, 2, 1);
    EXPECT_NEAR(DbmValue(diagnostics.transmitPower.value), -5.792, 0.001);
    EXPECT_NEAR(DbmValue(diagnostics.receivePower->value), -5.22, 0.001);
}

/// A router printed 30 C, 3.26 V, 0 mA, -40 dBm received, and nothing for the power sent.
TEST(ModulesTest, NoLight) {
    const SfpDiagnostics diagnostics = Diagnose(LoadModule("tsuhan-xgspon-no-light"));
    EXPECT_NEAR(diagnostics.temperature.value.value, 30, 1);
    EXPECT_NEAR(diagnostics.voltage.value.value, 3.26, 0.005);
    EXPECT_EQ(diagnostics.bias.value, Milliamperes{0});
    EXPECT_EQ(diagnostics.transmitPower.value, Milliwatts{0});
    EXPECT_FALSE(DbmOf(diagnostics.transmitPower.value).has_value());
    EXPECT_DOUBLE_EQ(DbmValue(diagnostics.receivePower->value), -40);
}

/// A decoder's test asserted 44.875 C, 3.236 V, 18.45 mA and 0.2731 mW for the bytes that it had of A2h.
TEST(ModulesTest, BytesOfAModuleThatSends) {
    File file = LoadModule("oem-sfp-ge35-ld10-bx");
    file.second = Page().Set(96, {0x2C, 0xE0, 0x7E, 0x68, 0x24, 0x09, 0x0A, 0xAB, 0x00, 0x01});
    const SfpDiagnostics diagnostics = Diagnose(file);
    EXPECT_EQ(diagnostics.calibration, Calibration::INTERNAL);
    EXPECT_EQ(diagnostics.temperature.value, Celsius{44.875});
    EXPECT_EQ(diagnostics.voltage.value, Volts{3.236});
    EXPECT_EQ(diagnostics.bias.value, Milliamperes{18.45});
    EXPECT_EQ(diagnostics.transmitPower.value, Milliwatts{0.2731});
    EXPECT_EQ(diagnostics.receivePower->value, Milliwatts{0.0001});
}

/// The router's power, 2.499 dBm, is right. Its -24 C isn't: it took the slope for signed and left the offset out.
TEST(ModulesTest, ExternalCalibration) {
    const SfpDiagnostics diagnostics = Diagnose(LoadModule("extcal-huawei-hpsp2120"));
    EXPECT_EQ(diagnostics.calibration, Calibration::EXTERNAL);
    // Slope DCB7h is 56503/256, offset 9135h is -28363; the number is 00ACh, 172.
    EXPECT_DOUBLE_EQ(diagnostics.temperature.value.value, (56503.0 / 256 * 172 - 28363) / 256);
    EXPECT_NEAR(diagnostics.temperature.value.value, 37.5, 0.001);
    // Slope 30A6h is 12454/256, offset FE5Ah is -422; the number is 692.
    EXPECT_DOUBLE_EQ(diagnostics.voltage.value.value, (12454.0 / 256 * 692 - 422) / 10000);
    EXPECT_NEAR(diagnostics.voltage.value.value, 3.3243, 0.00005);
    // Slope 09C0h is 9.75; the number is 27.
    EXPECT_DOUBLE_EQ(diagnostics.bias.value.value, 9.75 * 27 * 2 / 1000);
    EXPECT_EQ(diagnostics.transmitPower.value, Milliwatts{1.7782});
    EXPECT_NEAR(DbmValue(diagnostics.transmitPower.value), 2.499, 0.001);
    // The number is 0: the constant alone, -0.697076 times 0.1 microwatt.
    EXPECT_NEAR(diagnostics.receivePower->value.value, -0.0000697076, 5e-11);
    EXPECT_FALSE(DbmOf(diagnostics.receivePower->value).has_value());
    // Levels are raw numbers too: 239 and 128 make 95.3 and -0.4 degrees.
    const Thresholds<Celsius> levels = diagnostics.temperature.thresholds.value();
    EXPECT_DOUBLE_EQ(levels.highAlarm.value, (56503.0 / 256 * 239 - 28363) / 256);
    EXPECT_NEAR(levels.highAlarm.value, 95.3, 0.05);
    EXPECT_NEAR(levels.lowAlarm.value, -0.4, 0.05);
    EXPECT_EQ(diagnostics.temperature.Judged(), Verdict::OK);
    // The polynomial of the receive level 502, 01F6h, factor by factor.
    const double x = 502;
    const double tenths = static_cast<double>(std::bit_cast<float>(0x320114F5)) * x * x * x * x +
                          static_cast<double>(std::bit_cast<float>(0xB6F4796D)) * x * x * x +
                          static_cast<double>(std::bit_cast<float>(0x3B7C3ACF)) * x * x +
                          static_cast<double>(std::bit_cast<float>(0x3FBB3A59)) * x +
                          static_cast<double>(std::bit_cast<float>(0xBF327391));
    EXPECT_NEAR(diagnostics.receivePower->thresholds->highAlarm.value, tenths / 10000, 1e-12);
}

/// A decoder's test asserted 1.7783 mW.
TEST(ModulesTest, HighAlarmOfTheTransmitPower) {
    EXPECT_EQ(Diagnose(LoadModule("flexoptix-b1696-10g-bx1330")).transmitPower.thresholds->highAlarm,
              Milliwatts{1.7783});
}

/// A decoder's test asserted 34.432 mA on the first lane.
TEST(ModulesTest, FourLanes) {
    const Data memory = LoadModule("fs-qsfp28-ir4-100g").first;
    const QsfpDiagnostics diagnostics = DecodeQsfpDiagnostics(Bytes(memory)).value();
    const auto& lanes = diagnostics.lanes.value();
    EXPECT_EQ(lanes[0].bias.value, Milliamperes{34.432});
    EXPECT_EQ(lanes[3].bias.value, Milliamperes{17728.0 * 2 / 1000});      // 4540h
    EXPECT_EQ(lanes[0].receivePower.value, Milliwatts{17258.0 / 10000});   // 436Ah
    EXPECT_EQ(lanes[3].receivePower.value, Milliwatts{11990.0 / 10000});   // 2ED6h
    EXPECT_EQ(lanes[0].transmitPower->value, Milliwatts{11468.0 / 10000}); // 2CCCh
    EXPECT_EQ(lanes[3].transmitPower->value, Milliwatts{12189.0 / 10000}); // 2F9Dh
    EXPECT_EQ(diagnostics.temperature->value, Celsius{7319.0 / 256});      // 1C97h
    EXPECT_EQ(diagnostics.voltage->value, Volts{33209.0 / 10000});         // 81B9h
    EXPECT_FALSE(lanes[0].bias.thresholds.has_value());
    // An active optical cable that doesn't monitor what it sends.
    const Data cable = LoadModule("dell-wg8c4-100g-aoc").first;
    EXPECT_FALSE(DecodeQsfpDiagnostics(Bytes(cable)).value().lanes.value()[0].transmitPower.has_value());
}

/// Each field is as it is in the whole image, or as if zero bytes followed the cut.
TEST(ModulesTest, EveryTruncationOfEveryImage) {
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/transceivers")) {
        SCOPED_TRACE(entry.path().stem().string());
        const File file = LoadModule(entry.path().stem().string());
        for (std::size_t size = 0; size <= file.first.size(); ++size) {
            const Data cut = Cut(file.first, size);
            Data padded = cut;
            padded.resize(256);
            for (const bool isQsfp : {false, true}) {
                const auto decode = isQsfp ? DecodeQsfpIdentity : DecodeSfpIdentity;
                const ModuleIdentity identity = decode(Bytes(cut));
                const ModuleIdentity expected = decode(Bytes(padded));
                ASSERT_EQ(identity.vendor, expected.vendor) << size;
                ASSERT_EQ(identity.partNumber, expected.partNumber) << size;
                ASSERT_EQ(identity.revision, expected.revision) << size;
                ASSERT_EQ(identity.serialNumber, expected.serialNumber) << size;
                ASSERT_EQ(identity.dateCode, expected.dateCode) << size;
                ASSERT_EQ(identity.wavelength, expected.wavelength) << size;
                ASSERT_EQ(identity.signalingRate, expected.signalingRate) << size;
                ASSERT_EQ(identity.lengths, expected.lengths) << size;
                ASSERT_EQ(identity.baseChecksum == Checksum::UNREAD, size <= (isQsfp ? 191u : 63u)) << size;
                ASSERT_EQ(identity.extendedChecksum == Checksum::UNREAD, size <= (isQsfp ? 223u : 95u)) << size;
            }
            DecodeQsfpDiagnostics(Bytes(cut), Bytes(cut));
            DecodeSfpDiagnostics(Bytes(cut), Bytes(file.second));
        }
        for (std::size_t size = 0; size <= file.second.size(); ++size) {
            const Data cut = Cut(file.second, size);
            const bool isRead = DecodeSfpDiagnostics(Bytes(file.first), Bytes(cut)).has_value();
            ASSERT_EQ(isRead, size > 110 && (file.first[92] & 0x40) != 0) << size;
        }
    }
}

} // namespace
