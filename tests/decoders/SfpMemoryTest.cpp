/// @file
/// SFF-8472, field by field. Expected values are the standard's arithmetic on the bytes beside them.
#include "SfpMemory.h"
#include "Data.h"

#include <cmath>

using namespace decoders;
using namespace decoders_test;

namespace {

constexpr int INTERNAL = 0x60;
constexpr int EXTERNAL = 0x50;
constexpr int AVERAGE = 0x08;

Page A0(int monitoringType = INTERNAL) {
    return Page().Set(0, {3}).Set(92, {monitoringType});
}

SfpDiagnostics Decode(const Page& a2, int monitoringType = INTERNAL) {
    const Page a0 = A0(monitoringType);
    const auto diagnostics = DecodeSfpDiagnostics(Bytes(a0), Bytes(a2));
    EXPECT_TRUE(diagnostics.has_value());
    return diagnostics.value();
}

ModuleIdentity Identify(const Page& a0) {
    return DecodeSfpIdentity(Bytes(a0));
}

TEST(SfpIdentityTest, EveryFieldFromItsPlace) {
    Page a0 = Page()
                  .Set(0, {3, 4, 7})
                  .Set(12, {140, 0, 0, 100, 8, 3, 40, 30})
                  .Set(20, "ACME Optics     ")
                  .Set(37, {0x00, 0x24, 0xFF})
                  .Set(40, "PN-0123456789ABC")
                  .Set(56, "R1  ")
                  .SetU16(60, 850)
                  .Set(68, "SN 42           ")
                  .Set(84, "250301A ");
    const ModuleIdentity identity = Identify(a0);
    EXPECT_EQ(identity.identifier, 3);
    EXPECT_EQ(identity.connector, 7);
    EXPECT_EQ(identity.vendor, "ACME Optics");
    EXPECT_EQ(identity.oui, (std::array<std::uint8_t, 3>{0x00, 0x24, 0xFF}));
    EXPECT_EQ(identity.partNumber, "PN-0123456789ABC"); // fills its field
    EXPECT_EQ(identity.revision, "R1");
    EXPECT_EQ(identity.serialNumber, "SN 42");
    EXPECT_EQ(identity.dateCode, "250301A");
    EXPECT_EQ(identity.date, (Date{2025, 3, 1}));
    EXPECT_EQ(identity.cable, CableKind::NONE);
    EXPECT_EQ(identity.wavelength, Nanometres{850});
    EXPECT_EQ(identity.signalingRate, 14000u);
    // 100 x 100 m; OM2 8 x 10 m, OM1 3 x 10 m, OM4 40 x 10 m, OM3 30 x 10 m.
    EXPECT_EQ(identity.lengths,
              (LinkLengths{.singleMode = 10000, .om1 = 30, .om2 = 80, .om3 = 300, .om4 = 400, .cable = 0}));
}

TEST(SfpIdentityTest, LengthsOverSingleMode) {
    const auto metres = [](int kilometres, int hundreds) {
        return Identify(Page().Set(14, {kilometres, hundreds})).lengths.singleMode;
    };
    EXPECT_EQ(metres(0, 0), 0u);
    EXPECT_EQ(metres(10, 100), 10000u);
    EXPECT_EQ(metres(1, 14), 1400u);    // the finer one
    EXPECT_EQ(metres(40, 255), 40000u); // more than 25.4 km
    EXPECT_EQ(metres(40, 0), 40000u);
    EXPECT_EQ(metres(255, 255), 255000u);
}

TEST(SfpIdentityTest, SignalingRate) {
    const auto rate = [](int nominal, int other) {
        return Identify(Page().Set(12, {nominal}).Set(66, {other})).signalingRate;
    };
    EXPECT_EQ(rate(0, 103), std::nullopt);
    EXPECT_EQ(rate(1, 103), 100u);
    EXPECT_EQ(rate(254, 103), 25400u);
    EXPECT_EQ(rate(255, 103), 25750u); // 103 x 250
    EXPECT_EQ(rate(255, 255), 63750u);
    EXPECT_EQ(rate(255, 0), std::nullopt);
}

/// The wavelength's bytes tell a cable's compliance, and the lengths' some of its attenuation.
TEST(SfpIdentityTest, CablesHaveNoWavelength) {
    Page a0 = Page().Set(8, {0x04}).Set(14, {9, 8, 7, 6, 5, 4}).SetU16(60, 0x0100);
    EXPECT_EQ(Identify(a0).cable, CableKind::PASSIVE);
    EXPECT_EQ(Identify(a0).wavelength, std::nullopt);
    EXPECT_EQ(Identify(a0).lengths, (LinkLengths{.cable = 5}));
    EXPECT_EQ(Identify(a0.Set(8, {0x08})).cable, CableKind::ACTIVE);
    EXPECT_EQ(Identify(a0).wavelength, std::nullopt);
    EXPECT_EQ(Identify(a0.Set(8, {0xF3})).cable, CableKind::NONE);
    EXPECT_EQ(Identify(a0).wavelength, Nanometres{256});
    EXPECT_EQ(Identify(a0.SetU16(60, 0)).wavelength, std::nullopt);
    // 1000BASE-T: the same byte in metres of copper.
    EXPECT_EQ(Identify(Page().Set(6, {0x08}).Set(18, {100})).lengths, (LinkLengths{.cable = 100}));
}

TEST(SfpIdentityTest, Checksums) {
    // 3 + 7 + 250 is 260, the low byte 4; 0x20 + 0xF0 is 110h.
    Page a0 = Page().Set(0, {3, 0, 7}).Set(62, {250, 4}).Set(64, {0x20}).Set(94, {0xF0, 0x10});
    EXPECT_EQ(Identify(a0).baseChecksum, Checksum::VALID);
    EXPECT_EQ(Identify(a0).extendedChecksum, Checksum::VALID);
    a0.Set(62, {251});
    EXPECT_EQ(Identify(a0).baseChecksum, Checksum::INVALID);
    EXPECT_EQ(Identify(a0).extendedChecksum, Checksum::VALID);
    a0.Set(62, {250}).Set(64, {0x21});
    EXPECT_EQ(Identify(a0).baseChecksum, Checksum::VALID);
    EXPECT_EQ(Identify(a0).extendedChecksum, Checksum::INVALID);
    a0.Set(64, {0x20}).Set(96, {0xFF}); // beyond them
    EXPECT_EQ(Identify(a0).extendedChecksum, Checksum::VALID);
}

TEST(SfpDiagnosticsTest, OnlyOfModulesThatMonitorThemselves) {
    const Page a2;
    for (int type = 0; type < 256; ++type) {
        const Page a0 = A0(type);
        const auto diagnostics = DecodeSfpDiagnostics(Bytes(a0), Bytes(a2));
        ASSERT_EQ(diagnostics.has_value(), (type & 0x40) != 0) << type;
        if (diagnostics) {
            // Neither kind of calibration counts as internal, both as external.
            EXPECT_EQ(diagnostics->calibration, (type & 0x10) != 0 ? Calibration::EXTERNAL : Calibration::INTERNAL);
            EXPECT_EQ(diagnostics->isAverageReceivePower, (type & 0x08) != 0);
        }
    }
}

TEST(SfpDiagnosticsTest, EveryValueFromItsPlace) {
    const SfpDiagnostics diagnostics = Decode(Page()
                                                  .SetU16(96, 0x1980)
                                                  .SetU16(98, 33000)
                                                  .SetU16(100, 3000)
                                                  .SetU16(102, 5000)
                                                  .SetU16(104, 4000)
                                                  .Set(110, {0}));
    EXPECT_EQ(diagnostics.temperature.value, Celsius{25.5}); // 19h is 25, and 80h of 100h a half
    EXPECT_EQ(diagnostics.voltage.value, Volts{3.3});
    EXPECT_EQ(diagnostics.bias.value, Milliamperes{6});
    EXPECT_EQ(diagnostics.transmitPower.value, Milliwatts{0.5});
    EXPECT_EQ(diagnostics.receivePower.value().value, Milliwatts{0.4});
    EXPECT_TRUE(diagnostics.isReady);
    EXPECT_FALSE(Decode(Page().Set(110, {0x01})).isReady);
    EXPECT_TRUE(Decode(Page().Set(110, {0xFE})).isReady);
}

TEST(SfpDiagnosticsTest, TemperaturesAreSigned) {
    const auto degrees = [](unsigned count) { return Decode(Page().SetU16(96, count)).temperature.value.value; };
    EXPECT_EQ(degrees(0x0000), 0.0);
    EXPECT_EQ(degrees(0x0001), 1.0 / 256);
    EXPECT_EQ(degrees(0x7FFF), 127.0 + 255.0 / 256);
    EXPECT_EQ(degrees(0xFFFF), -1.0 / 256);
    EXPECT_EQ(degrees(0xFF80), -0.5);
    EXPECT_EQ(degrees(0xF600), -10.0);
    EXPECT_EQ(degrees(0xD800), -40.0);
    EXPECT_EQ(degrees(0x8000), -128.0);
}

TEST(SfpDiagnosticsTest, EndsOfTheUnsignedRanges) {
    const SfpDiagnostics most = Decode(Page().Set(98, {255, 255, 255, 255, 255, 255, 255, 255}));
    EXPECT_EQ(most.voltage.value, Volts{6.5535});
    EXPECT_EQ(most.bias.value, Milliamperes{131.07});
    EXPECT_EQ(most.transmitPower.value, Milliwatts{6.5535});
    EXPECT_EQ(most.receivePower.value().value, Milliwatts{6.5535});
    const SfpDiagnostics least = Decode(Page());
    EXPECT_EQ(least.voltage.value, Volts{0});
    EXPECT_EQ(least.receivePower.value().value, Milliwatts{0});
    EXPECT_FALSE(DbmOf(least.receivePower.value().value).has_value());
}

/// Bytes 0 to 39: high alarm, low alarm, high warning and low warning of each.
TEST(SfpDiagnosticsTest, EveryThresholdFromItsPlace) {
    Page a2;
    a2.SetU16(0, 0x5A00).SetU16(2, 0xD800).SetU16(4, 0x5000).SetU16(6, 0xE280);
    for (unsigned level = 4; level < 20; ++level) {
        a2.SetU16(2 * std::size_t{level}, 1000 * level);
    }
    const SfpDiagnostics diagnostics = Decode(a2);
    // E280h is -7552, and 7552 / 256 is 29.5.
    EXPECT_EQ(diagnostics.temperature.thresholds, (Thresholds<Celsius>{{90}, {-40}, {80}, {-29.5}}));
    EXPECT_EQ(diagnostics.voltage.thresholds, (Thresholds<Volts>{{0.4}, {0.5}, {0.6}, {0.7}}));
    EXPECT_EQ(diagnostics.bias.thresholds, (Thresholds<Milliamperes>{{16}, {18}, {20}, {22}}));
    EXPECT_EQ(diagnostics.transmitPower.thresholds, (Thresholds<Milliwatts>{{1.2}, {1.3}, {1.4}, {1.5}}));
    EXPECT_EQ(diagnostics.receivePower.value().thresholds, (Thresholds<Milliwatts>{{1.6}, {1.7}, {1.8}, {1.9}}));
}

TEST(SfpDiagnosticsTest, FourZerosAreNoThresholds) {
    const SfpDiagnostics diagnostics = Decode(Page().SetU16(22, 1)); // the low warning of the bias
    EXPECT_FALSE(diagnostics.temperature.thresholds.has_value());
    EXPECT_FALSE(diagnostics.voltage.thresholds.has_value());
    EXPECT_EQ(diagnostics.bias.thresholds, (Thresholds<Milliamperes>{{0}, {0}, {0}, {0.002}}));
    EXPECT_FALSE(diagnostics.transmitPower.thresholds.has_value());
    EXPECT_FALSE(diagnostics.receivePower.value().thresholds.has_value());
    EXPECT_FALSE(diagnostics.voltage.Judged().has_value());
}

TEST(SfpDiagnosticsTest, VerdictsOnTemperaturesBelowZero) {
    const auto verdict = [](unsigned count) {
        return Decode(Page().SetU16(0, 0x4600).SetU16(2, 0xF600).SetU16(4, 0x4100).SetU16(6, 0xFB00).SetU16(96, count))
            .temperature.Judged();
    };
    // 70, -10, 65 and -5 degrees.
    EXPECT_EQ(verdict(0x4601), Verdict::HIGH_ALARM);
    EXPECT_EQ(verdict(0x4600), Verdict::HIGH_WARNING);
    EXPECT_EQ(verdict(0x4100), Verdict::OK);
    EXPECT_EQ(verdict(0x0000), Verdict::OK);
    EXPECT_EQ(verdict(0xFB00), Verdict::OK);
    EXPECT_EQ(verdict(0xFAFF), Verdict::LOW_WARNING);
    EXPECT_EQ(verdict(0xF600), Verdict::LOW_WARNING);
    EXPECT_EQ(verdict(0xF5FF), Verdict::LOW_ALARM);
    EXPECT_EQ(verdict(0x8000), Verdict::LOW_ALARM);
}

TEST(SfpDiagnosticsTest, ChecksumOfThePage) {
    // 80h + 90h is 110h.
    Page a2 = Page().Set(0, {0x80}).Set(94, {0x90, 0x10}).Set(96, {0x55});
    EXPECT_EQ(Decode(a2).checksum, Checksum::VALID);
    EXPECT_EQ(Decode(a2.Set(95, {0x11})).checksum, Checksum::INVALID);
}

// External calibration: value = slope x number + offset, the slope in 1/256, the offset in the number's unit.

TEST(SfpExternalCalibrationTest, Temperature) {
    const auto degrees = [](unsigned count, unsigned slope, unsigned offset) {
        return Decode(Page().SetU16(96, count).SetU16(84, slope).SetU16(86, offset), EXTERNAL).temperature.value.value;
    };
    EXPECT_EQ(degrees(0x1400, 0x0100, 0), 20.0);
    EXPECT_EQ(degrees(0x1400, 0x0180, 0), 30.0);            // 1.5 times
    EXPECT_EQ(degrees(0x1400, 0x0100, 0x0200), 22.0);       // 512 / 256 is 2
    EXPECT_EQ(degrees(0x1400, 0x0100, 0xFF80), 19.5);       // -128 / 256
    EXPECT_EQ(degrees(0xF600, 0x0080, 0xFE00), -7.0);       // half of -10, less 2
    EXPECT_EQ(degrees(0x0100, 0xFF00, 0), 255.0);           // the slope has no sign
    EXPECT_EQ(degrees(0x0001, 0x0001, 0), 1.0 / 256 / 256); // nothing is rounded
    EXPECT_EQ(degrees(0x1400, 0, 0x0300), 3.0);             // a slope of 0 is one
    EXPECT_EQ(degrees(0x0000, 0x0100, 0x8000), -128.0);
}

TEST(SfpExternalCalibrationTest, VoltageBiasAndTransmitPower) {
    const Page a2 = Page()
                        .SetU16(98, 20000)
                        .SetU16(88, 0x0140) // 1.25
                        .SetU16(90, 5000)
                        .SetU16(100, 1000)
                        .SetU16(76, 0x0200) // 2
                        .SetU16(78, 0xFF9C) // -100
                        .SetU16(102, 8000)
                        .SetU16(80, 0x0080) // 0.5
                        .SetU16(82, 1000);
    const SfpDiagnostics diagnostics = Decode(a2, EXTERNAL);
    EXPECT_EQ(diagnostics.voltage.value, Volts{3.0});            // 25000 + 5000 times 100 microvolts
    EXPECT_EQ(diagnostics.bias.value, Milliamperes{3.8});        // 2000 - 100 times 2 microamperes
    EXPECT_EQ(diagnostics.transmitPower.value, Milliwatts{0.5}); // 4000 + 1000 times 0.1 microwatt
    // The same bytes of a module that calibrates itself.
    const SfpDiagnostics internal = Decode(a2, INTERNAL);
    EXPECT_EQ(internal.voltage.value, Volts{2.0});
    EXPECT_EQ(internal.bias.value, Milliamperes{2.0});
    EXPECT_EQ(internal.transmitPower.value, Milliwatts{0.8});
}

/// Factors as IEEE 754 singles: 3, 1/2, 2^-10, 2^-20, 2^-30, from the constant up.
Page Polynomial(std::uint32_t fourth, std::uint32_t third, std::uint32_t second, std::uint32_t first,
                std::uint32_t constant) {
    return Page().SetU32(56, fourth).SetU32(60, third).SetU32(64, second).SetU32(68, first).SetU32(72, constant);
}

double ReceivedMilliwatts(Page a2, unsigned count) {
    return Decode(a2.SetU16(104, count), EXTERNAL).receivePower.value().value.value;
}

TEST(SfpExternalCalibrationTest, ReceivePowerIsAPolynomial) {
    const Page a2 = Polynomial(0x30800000, 0x35800000, 0x3A800000, 0x3F000000, 0x40400000);
    for (const unsigned count : {0u, 1u, 1000u, 32768u, 65535u}) {
        const double x = count;
        const double tenths = std::ldexp(std::pow(x, 4), -30) + std::ldexp(std::pow(x, 3), -20) +
                              std::ldexp(std::pow(x, 2), -10) + x / 2 + 3;
        const double expected = tenths * 0.0001;
        EXPECT_NEAR(ReceivedMilliwatts(a2, count), expected, expected * 1e-14) << count;
    }
}

TEST(SfpExternalCalibrationTest, EachFactorHasItsPower) {
    constexpr std::uint32_t ONE = 0x3F800000;
    EXPECT_DOUBLE_EQ(ReceivedMilliwatts(Polynomial(0, 0, 0, 0, ONE), 100), 0.0001);
    EXPECT_DOUBLE_EQ(ReceivedMilliwatts(Polynomial(0, 0, 0, ONE, 0), 100), 0.01);
    EXPECT_DOUBLE_EQ(ReceivedMilliwatts(Polynomial(0, 0, ONE, 0, 0), 100), 1);
    EXPECT_DOUBLE_EQ(ReceivedMilliwatts(Polynomial(0, ONE, 0, 0, 0), 100), 100);
    EXPECT_DOUBLE_EQ(ReceivedMilliwatts(Polynomial(ONE, 0, 0, 0, 0), 100), 10000);
    // 65535 to the fourth power, 1.8e19.
    EXPECT_DOUBLE_EQ(ReceivedMilliwatts(Polynomial(ONE, 0, 0, 0, 0), 65535), std::pow(65535.0, 4) / 10000);
    EXPECT_EQ(ReceivedMilliwatts(Polynomial(0, 0, 0, 0, 0), 65535), 0.0);
}

TEST(SfpExternalCalibrationTest, ReceivePowerCanFallBelowZero) {
    const Page a2 = Polynomial(0, 0, 0, 0x3F800000, 0xC1200000); // 1 times the number, less 10
    EXPECT_DOUBLE_EQ(ReceivedMilliwatts(a2, 5), -0.0005);
    EXPECT_DOUBLE_EQ(ReceivedMilliwatts(a2, 10), 0);
    EXPECT_FALSE(DbmOf(Milliwatts{ReceivedMilliwatts(a2, 5)}).has_value());
    EXPECT_FALSE(DbmOf(Milliwatts{ReceivedMilliwatts(a2, 10)}).has_value());
    EXPECT_NEAR(DbmOf(Milliwatts{ReceivedMilliwatts(a2, 11)}).value().value, -40, 1e-9);
}

TEST(SfpExternalCalibrationTest, FactorsAtTheEndsOfSingles) {
    // The smallest, 2^-149; the largest, (2 - 2^-23) 2^127.
    EXPECT_DOUBLE_EQ(ReceivedMilliwatts(Polynomial(0, 0, 0, 0, 1), 0), std::ldexp(0.0001, -149));
    EXPECT_DOUBLE_EQ(ReceivedMilliwatts(Polynomial(0x7F7FFFFF, 0, 0, 0, 0), 65535),
                     std::ldexp(2 - std::ldexp(1.0, -23), 127) * std::pow(65535.0, 4) / 10000);
    for (const std::uint32_t bits : {0x7F800000u, 0xFF800000u, 0x7FC00000u, 0xFFFFFFFFu, 0x7F800001u}) {
        for (std::size_t factor = 0; factor < 5; ++factor) {
            const SfpDiagnostics diagnostics = Decode(Page().SetU16(98, 1).SetU32(56 + 4 * factor, bits), EXTERNAL);
            EXPECT_FALSE(diagnostics.receivePower.has_value()) << bits << " " << factor;
            // Bytes that a module with internal calibration may use as it likes.
            EXPECT_TRUE(Decode(Page().SetU32(56 + 4 * factor, bits)).receivePower.has_value());
        }
    }
}

/// Thresholds are read in the same way as the values.
TEST(SfpExternalCalibrationTest, ThresholdsAreCalibrated) {
    Page a2 = Polynomial(0, 0, 0x3F800000, 0, 0) // the square of the number
                  .SetU16(76, 0x0200)
                  .SetU16(80, 0x0200)
                  .SetU16(84, 0x0200)
                  .SetU16(86, 0x0100)
                  .SetU16(88, 0x0200);
    for (unsigned level = 0; level < 20; ++level) {
        a2.SetU16(2 * std::size_t{level}, 10 * (level + 1));
    }
    const SfpDiagnostics diagnostics = Decode(a2, EXTERNAL);
    const auto linear = [](double count) { return (2 * count + 256) / 256; };
    EXPECT_EQ(diagnostics.temperature.thresholds,
              (Thresholds<Celsius>{{linear(10)}, {linear(20)}, {linear(30)}, {linear(40)}}));
    EXPECT_EQ(diagnostics.voltage.thresholds, (Thresholds<Volts>{{0.01}, {0.012}, {0.014}, {0.016}}));
    EXPECT_EQ(diagnostics.bias.thresholds, (Thresholds<Milliamperes>{{0.36}, {0.4}, {0.44}, {0.48}}));
    EXPECT_EQ(diagnostics.transmitPower.thresholds, (Thresholds<Milliwatts>{{0.026}, {0.028}, {0.03}, {0.032}}));
    // 170, 180, 190 and 200, squared.
    EXPECT_EQ(diagnostics.receivePower.value().thresholds, (Thresholds<Milliwatts>{{2.89}, {3.24}, {3.61}, {4.0}}));
}

TEST(SfpMemoryTest, EveryTruncationOfTheDiagnostics) {
    Page whole;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        whole[at] = static_cast<std::uint8_t>(at + 1);
    }
    for (const int type : {INTERNAL | AVERAGE, EXTERNAL}) {
        const Page a0 = A0(type);
        for (std::size_t size = 0; size <= whole.size(); ++size) {
            const Data a2 = Cut(whole, size);
            EXPECT_EQ(DecodeSfpDiagnostics(Bytes(a0), Bytes(a2)).has_value(), size > 110) << size;
            const Data cutA0 = Cut(a0, size);
            EXPECT_EQ(DecodeSfpDiagnostics(Bytes(cutA0), Bytes(whole)).has_value(), size > 92) << size;
        }
    }
}

} // namespace
