/// @file
/// SFF-8636, field by field. Expected values are the standard's arithmetic on the bytes beside them.
#include "QsfpMemory.h"
#include "Data.h"

using namespace decoders;
using namespace decoders_test;

namespace {

constexpr int REVISION_2_7 = 7;
constexpr int REVISION_2_8 = 8;
constexpr int VCSEL = 0x00;
constexpr int DFB_1310 = 0x40;

Page Memory(int revision = REVISION_2_7, int technology = VCSEL, int monitoring = 0x0C) {
    return Page()
        .Set(0, {0x11, revision})
        .Set(128, {0x11})
        .Set(130, {0x0C})
        .Set(147, {technology})
        .Set(220, {monitoring});
}

ModuleIdentity Identify(const Page& memory) {
    return DecodeQsfpIdentity(Bytes(memory));
}

QsfpDiagnostics Decode(const Page& memory, Bytes page03 = {}) {
    const auto diagnostics = DecodeQsfpDiagnostics(Bytes(memory), page03);
    EXPECT_TRUE(diagnostics.has_value());
    return diagnostics.value();
}

TEST(QsfpIdentityTest, EveryFieldFromItsPlace) {
    const Page memory = Memory()
                            .Set(140, {103})
                            .Set(142, {2, 150, 40, 30, 200})
                            .Set(148, "ACME Optics     ")
                            .Set(165, {0x00, 0x24, 0xFF})
                            .Set(168, "PN-0123456789ABC")
                            .Set(184, "R1")
                            .SetU16(186, 17000)
                            .Set(196, "SN 42           ")
                            .Set(212, "250301A ");
    const ModuleIdentity identity = Identify(memory);
    EXPECT_EQ(identity.identifier, 0x11);
    EXPECT_EQ(identity.connector, 0x0C);
    EXPECT_EQ(identity.vendor, "ACME Optics");
    EXPECT_EQ(identity.oui, (std::array<std::uint8_t, 3>{0x00, 0x24, 0xFF}));
    EXPECT_EQ(identity.partNumber, "PN-0123456789ABC");
    EXPECT_EQ(identity.revision, "R1");
    EXPECT_EQ(identity.serialNumber, "SN 42");
    EXPECT_EQ(identity.dateCode, "250301A");
    EXPECT_EQ(identity.date, (Date{2025, 3, 1}));
    EXPECT_EQ(identity.cable, CableKind::NONE);
    EXPECT_EQ(identity.wavelength, Nanometres{850}); // 17000 / 20
    EXPECT_EQ(identity.signalingRate, 10300u);
    // 2 km; OM3 150 x 2 m, OM2 40 m, OM1 30 m, OM4 200 x 2 m.
    EXPECT_EQ(identity.lengths,
              (LinkLengths{.singleMode = 2000, .om1 = 30, .om2 = 40, .om3 = 300, .om4 = 400, .cable = 0}));
}

TEST(QsfpIdentityTest, FractionsOfTheWavelength) {
    EXPECT_EQ(Identify(Memory().SetU16(186, 26047)).wavelength, Nanometres{1302.35});
    EXPECT_EQ(Identify(Memory().SetU16(186, 1)).wavelength, Nanometres{0.05});
    EXPECT_EQ(Identify(Memory().SetU16(186, 65535)).wavelength, Nanometres{3276.75});
    EXPECT_EQ(Identify(Memory().SetU16(186, 0)).wavelength, std::nullopt);
}

TEST(QsfpIdentityTest, SignalingRate) {
    const auto rate = [](int nominal, int other) {
        return Identify(Memory().Set(140, {nominal}).Set(222, {other})).signalingRate;
    };
    EXPECT_EQ(rate(0, 103), std::nullopt);
    EXPECT_EQ(rate(1, 103), 100u);
    EXPECT_EQ(rate(254, 103), 25400u);
    EXPECT_EQ(rate(255, 104), 26000u); // 104 x 250
    EXPECT_EQ(rate(255, 0), std::nullopt);
}

TEST(QsfpIdentityTest, CablesByTheDeviceTechnology) {
    for (int technology = 0; technology < 16; ++technology) {
        const Page memory = Memory(REVISION_2_7, technology << 4 | 0x0F).SetU16(186, 0x0608).Set(146, {3});
        const CableKind cable = technology < 10   ? CableKind::NONE
                                : technology < 12 ? CableKind::PASSIVE
                                                  : CableKind::ACTIVE;
        EXPECT_EQ(Identify(memory).cable, cable) << technology;
        EXPECT_EQ(Identify(memory).wavelength.has_value(), cable == CableKind::NONE) << technology;
        EXPECT_EQ(Identify(memory).lengths.om4, technology == 0 ? 6u : 0u) << technology;
        EXPECT_EQ(Identify(memory).lengths.cable, technology == 0 ? 0u : 3u) << technology;
    }
    // An active optical cable: 850 nm, but no connector.
    EXPECT_EQ(Identify(Memory().Set(130, {0x23}).Set(146, {5})).lengths, (LinkLengths{.cable = 5}));
}

TEST(QsfpIdentityTest, Checksums) {
    // 11h + 0Ch + E6h is 103h; 220 is 0Ch, and 0Ch + F5h is 101h.
    Page memory = Memory().Set(190, {0xE6, 0x03}).Set(192, {0xF5}).Set(223, {0x01});
    EXPECT_EQ(Identify(memory).baseChecksum, Checksum::VALID);
    EXPECT_EQ(Identify(memory).extendedChecksum, Checksum::VALID);
    memory.Set(127, {0xFF}).Set(224, {0xFF}); // beyond them
    EXPECT_EQ(Identify(memory).baseChecksum, Checksum::VALID);
    EXPECT_EQ(Identify(memory).extendedChecksum, Checksum::VALID);
    EXPECT_EQ(Identify(memory.Set(191, {0x04})).baseChecksum, Checksum::INVALID);
    EXPECT_EQ(Identify(memory.Set(222, {0x01})).extendedChecksum, Checksum::INVALID);
}

TEST(QsfpDiagnosticsTest, EveryValueFromItsPlace) {
    Page memory = Memory().SetU16(22, 0xFF80).SetU16(26, 33000);
    for (unsigned lane = 0; lane < 4; ++lane) {
        memory.SetU16(34 + 2 * std::size_t{lane}, 1000 + lane);
        memory.SetU16(42 + 2 * std::size_t{lane}, 2000 + lane);
        memory.SetU16(50 + 2 * std::size_t{lane}, 3000 + lane);
    }
    const QsfpDiagnostics diagnostics = Decode(memory);
    EXPECT_EQ(diagnostics.temperature.value().value, Celsius{-0.5});
    EXPECT_EQ(diagnostics.voltage.value().value, Volts{3.3});
    EXPECT_TRUE(diagnostics.isAverageReceivePower);
    EXPECT_TRUE(diagnostics.isReady);
    for (unsigned lane = 0; lane < 4; ++lane) {
        const QsfpLane& values = diagnostics.lanes.value()[lane];
        EXPECT_EQ(values.receivePower.value, Milliwatts{(1000.0 + lane) / 10000}) << lane;
        EXPECT_EQ(values.bias.value, Milliamperes{(2000.0 + lane) * 2 / 1000}) << lane;
        EXPECT_EQ(values.transmitPower.value().value, Milliwatts{(3000.0 + lane) / 10000}) << lane;
        // Nothing is known of thresholds without page 03h.
        EXPECT_FALSE(values.receivePower.Judged().has_value());
    }
    EXPECT_FALSE(diagnostics.temperature.value().thresholds.has_value());
    EXPECT_FALSE(diagnostics.voltage.value().thresholds.has_value());
    EXPECT_FALSE(Decode(Memory().Set(2, {0x01})).isReady);
}

TEST(QsfpDiagnosticsTest, OnlyWhatIsMonitored) {
    const auto decode = [](int revision, int monitoring) { return Decode(Memory(revision, DFB_1310, monitoring)); };
    // Temperature and voltage are told from revision 2.8 on.
    EXPECT_TRUE(decode(REVISION_2_7, 0x00).temperature.has_value());
    EXPECT_TRUE(decode(REVISION_2_7, 0x00).voltage.has_value());
    EXPECT_FALSE(decode(REVISION_2_8, 0x00).temperature.has_value());
    EXPECT_FALSE(decode(REVISION_2_8, 0x00).voltage.has_value());
    EXPECT_TRUE(decode(REVISION_2_8, 0x20).temperature.has_value());
    EXPECT_FALSE(decode(REVISION_2_8, 0x20).voltage.has_value());
    EXPECT_TRUE(decode(REVISION_2_8, 0x10).voltage.has_value());
    EXPECT_FALSE(decode(REVISION_2_8, 0x10).temperature.has_value());
    EXPECT_FALSE(decode(REVISION_2_7, 0xFB).lanes.value()[3].transmitPower.has_value());
    EXPECT_TRUE(decode(REVISION_2_7, 0x04).lanes.value()[3].transmitPower.has_value());
    EXPECT_FALSE(decode(REVISION_2_7, 0xF7).isAverageReceivePower);
}

TEST(QsfpDiagnosticsTest, CopperHasNoLight) {
    for (const int technology : {0xA0, 0xB0}) {
        const Page memory = Memory(REVISION_2_7, technology);
        EXPECT_FALSE(DecodeQsfpDiagnostics(Bytes(memory)).has_value());
    }
    for (const int technology : {0xC0, 0xD0, 0xE0, 0xF0}) {
        const QsfpDiagnostics diagnostics = Decode(Memory(REVISION_2_7, technology));
        EXPECT_TRUE(diagnostics.temperature.has_value());
        EXPECT_FALSE(diagnostics.lanes.has_value());
    }
}

/// Page 03h, byte 128 first: high alarm, low alarm, high warning and low warning of each.
TEST(QsfpDiagnosticsTest, ThresholdsOfPage03) {
    Page page03(128);
    page03.SetU16(128 - 128, 0x4B00).SetU16(130 - 128, 0xFB00).SetU16(132 - 128, 0x4600).SetU16(134 - 128, 0x0080);
    const auto set = [&page03](std::size_t start, unsigned first) {
        for (unsigned level = 0; level < 4; ++level) {
            page03.SetU16(start - 128 + 2 * std::size_t{level}, first + 100 * level);
        }
    };
    set(144, 30000);
    set(176, 1000);
    set(184, 2000);
    set(192, 3000);
    const QsfpDiagnostics diagnostics = Decode(Memory().SetU16(22, 0xFA00).SetU16(42, 2301), Bytes(page03));
    EXPECT_EQ(diagnostics.temperature.value().thresholds, (Thresholds<Celsius>{{75}, {-5}, {70}, {0.5}}));
    EXPECT_EQ(diagnostics.temperature.value().Judged(), Verdict::LOW_ALARM); // -6
    EXPECT_EQ(diagnostics.voltage.value().thresholds, (Thresholds<Volts>{{3.0}, {3.01}, {3.02}, {3.03}}));
    for (const QsfpLane& lane : diagnostics.lanes.value()) {
        EXPECT_EQ(lane.receivePower.thresholds, (Thresholds<Milliwatts>{{0.1}, {0.11}, {0.12}, {0.13}}));
        EXPECT_EQ(lane.bias.thresholds, (Thresholds<Milliamperes>{{4.0}, {4.2}, {4.4}, {4.6}}));
        EXPECT_EQ(lane.transmitPower.value().thresholds, (Thresholds<Milliwatts>{{0.3}, {0.31}, {0.32}, {0.33}}));
    }
    EXPECT_EQ(diagnostics.lanes.value()[0].bias.Judged(), Verdict::HIGH_ALARM);
    // A page without levels.
    const Page empty(128);
    EXPECT_FALSE(Decode(Memory(), Bytes(empty)).voltage.value().thresholds.has_value());
}

TEST(QsfpMemoryTest, EveryTruncationOfTheDiagnostics) {
    Page whole = Memory();
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const Data memory = Cut(whole, size);
        EXPECT_EQ(DecodeQsfpDiagnostics(Bytes(memory)).has_value(), size > 220) << size;
    }
    Page page03(128);
    std::fill(page03.begin(), page03.end(), std::uint8_t{1});
    for (std::size_t size = 0; size <= page03.size(); ++size) {
        const Data cut = Cut(page03, size);
        const QsfpDiagnostics diagnostics = Decode(whole, Bytes(cut));
        // Whole levels or none: their last bytes are 135, 151, 183, 191 and 199.
        EXPECT_EQ(diagnostics.temperature.value().thresholds.has_value(), size > 135 - 128) << size;
        EXPECT_EQ(diagnostics.voltage.value().thresholds.has_value(), size > 151 - 128) << size;
        const QsfpLane& lane = diagnostics.lanes.value()[2];
        EXPECT_EQ(lane.receivePower.thresholds.has_value(), size > 183 - 128) << size;
        EXPECT_EQ(lane.bias.thresholds.has_value(), size > 191 - 128) << size;
        EXPECT_EQ(lane.transmitPower.value().thresholds.has_value(), size > 199 - 128) << size;
    }
}

} // namespace
