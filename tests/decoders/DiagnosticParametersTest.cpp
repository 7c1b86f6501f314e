/// @file
/// Payloads of Read Diagnostic Parameters by FC-LS, descriptor by descriptor. No payload of a real port could be had:
/// the words stand beside what they mean.
#include "DiagnosticParameters.h"
#include "Data.h"

using namespace decoders;
using namespace decoders_test;

namespace {

using Words = std::vector<std::uint32_t>;

/// The words after the length of their list, which counts them alone.
Page PayloadOf(const Words& words) {
    Page payload(4 + 4 * words.size());
    payload.SetU32(0, static_cast<std::uint32_t>(4 * words.size()));
    for (std::size_t index = 0; index < words.size(); ++index) {
        payload.SetU32(4 + 4 * index, words[index]);
    }
    return payload;
}
DiagnosticParameters Decode(const Page& payload) {
    return DecodeRdpPayload(Bytes(payload));
}
DiagnosticParameters Decode(const Words& words) {
    return Decode(PayloadOf(words));
}

Words operator+(Words left, const Words& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}
std::uint32_t Characters(const char* text) {
    std::uint32_t word = 0;
    for (int index = 0; index < 4; ++index) {
        word = word << 8 | static_cast<std::uint8_t>(text[index]);
    }
    return word;
}

const Words REQUEST = {0x00000001, 4, 0x18000000};
/// -10.5 C, 3.3 V, 7.4 mA, 0.6699 mW, 0.5875 mW; short wave, optical, valid, SFP+, with FEC.
const Words TRANSCEIVER = {0x00010000, 12, 0xF58080E8, 0x0E741A2B, 0x16F38051};
const Words PORT_SPEED = {0x00010001, 4, 0x07000100};
const Words LINK_ERRORS = {0x00010002, 28, 1, 2, 3, 4, 5, 0xFFFFFFFF, 0x40000000};
const Words PORT_NAMES = {0x00010003, 16, 0x10008894, 0x712F9000, 0x20038894, 0x712F9001};
const Words FEC = {0x00010005, 8, 2041, 0x80000000};
const Words CREDITS = {0x00010006, 12, 32, 64, 412};
const Words TEMPERATURE_LEVELS = {0x00010007, 12, 0x4B00FB00, 0x4600FF80, 0x10000000};
const Words PRODUCT = {0x00010008,         60,
                       Characters("ACME"), Characters(" Opt"),
                       Characters("ics "), Characters("    "),
                       Characters("PN-0"), Characters("1234"),
                       Characters("5678"), Characters("9ABC"),
                       Characters("SN 4"), Characters("2   "),
                       Characters("    "), Characters("    "),
                       Characters("R1  "), Characters("2503"),
                       Characters("01  ")};

TEST(RdpTest, EveryDescriptor) {
    const DiagnosticParameters parameters = Decode(REQUEST + TRANSCEIVER + PORT_SPEED + LINK_ERRORS + PORT_NAMES + FEC +
                                                   CREDITS + TEMPERATURE_LEVELS + PRODUCT);
    EXPECT_TRUE(parameters.isWhole);
    EXPECT_EQ(parameters.request, 0x18000000u);
    EXPECT_TRUE(parameters.transceiver.has_value());
    EXPECT_TRUE(parameters.speed.has_value());
    EXPECT_TRUE(parameters.linkErrors.has_value());
    EXPECT_EQ(parameters.portNames.size(), 1u);
    EXPECT_TRUE(parameters.fecStatus.has_value());
    EXPECT_TRUE(parameters.bufferCredits.has_value());
    EXPECT_TRUE(parameters.thresholds.temperature.has_value());
    EXPECT_TRUE(parameters.product.has_value());
    EXPECT_TRUE(parameters.unknownTags.empty());
}

TEST(RdpTest, Transceiver) {
    const RdpTransceiver transceiver = Decode(TRANSCEIVER).transceiver.value();
    EXPECT_EQ(transceiver.temperature, Celsius{-10.5}); // F580h is -2688, and 2688 / 256 is 10.5
    EXPECT_EQ(transceiver.voltage, Volts{3.3});         // 80E8h is 33000
    EXPECT_EQ(transceiver.bias, Milliamperes{7.4});     // 0E74h is 3700
    EXPECT_EQ(transceiver.transmitPower, Milliwatts{0.6699});
    EXPECT_EQ(transceiver.receivePower, Milliwatts{0.5875});
    EXPECT_EQ(transceiver.flags, 0x8051);
    EXPECT_EQ(transceiver.laser, RdpLaser::SHORT_WAVE);
    EXPECT_TRUE(transceiver.isOptical);
    EXPECT_TRUE(transceiver.areDiagnosticsValid);
    EXPECT_TRUE(transceiver.isSfpPlus);
    EXPECT_TRUE(transceiver.isFecActive);
}

TEST(RdpTest, EndsOfTheRangesOfATransceiver) {
    const RdpTransceiver most = Decode(Words{0x00010000, 12, 0x7FFFFFFF, 0xFFFFFFFF, 0xFFFF0000}).transceiver.value();
    EXPECT_EQ(most.temperature, Celsius{127.99609375});
    EXPECT_EQ(most.voltage, Volts{6.5535});
    EXPECT_EQ(most.bias, Milliamperes{131.07});
    EXPECT_EQ(most.transmitPower, Milliwatts{6.5535});
    EXPECT_EQ(most.receivePower, Milliwatts{6.5535});
    const RdpTransceiver least = Decode(Words{0x00010000, 12, 0x80000000, 0, 0}).transceiver.value();
    EXPECT_EQ(least.temperature, Celsius{-128});
    EXPECT_EQ(least.voltage, Volts{0});
    EXPECT_FALSE(DbmOf(least.receivePower).has_value());
}

TEST(RdpTest, FlagsOfATransceiver) {
    const auto decode = [](std::uint32_t flags) {
        return Decode(Words{0x00010000, 12, 0, 0, flags}).transceiver.value();
    };
    EXPECT_EQ(decode(0x0000).laser, RdpLaser::UNKNOWN);
    EXPECT_EQ(decode(0x0002).laser, RdpLaser::LONG_WAVE_1310_NM);
    EXPECT_EQ(decode(0x0003).laser, RdpLaser::LONG_WAVE_1550_NM);
    for (std::uint32_t laser = 4; laser < 16; ++laser) {
        EXPECT_EQ(decode(laser).laser, RdpLaser::UNKNOWN) << laser;
    }
    EXPECT_FALSE(decode(0xFFEF).isOptical);
    EXPECT_TRUE(decode(0x0010).isOptical);
    EXPECT_FALSE(decode(0x0020).areDiagnosticsValid);
    EXPECT_TRUE(decode(0xFFDF).areDiagnosticsValid);
    EXPECT_TRUE(decode(0x0040).isSfpPlus); // whether it is optical or not
    EXPECT_FALSE(decode(0x0080).isSfpPlus);
    EXPECT_FALSE(decode(0x00C0).isSfpPlus);
    EXPECT_FALSE(decode(0x7FFF).isFecActive);
    EXPECT_TRUE(decode(0x8000).isFecActive);
}

TEST(RdpTest, PortSpeed) {
    const RdpPortSpeed speed = Decode(PORT_SPEED).speed.value();
    EXPECT_EQ(speed.capabilities, 0x0700);
    EXPECT_EQ(RdpSpeedsOf(speed.capabilities), (std::vector<unsigned>{16, 32, 64}));
    EXPECT_EQ(speed.operating, 0x0100);
    EXPECT_EQ(speed.operatingSpeed, 64u);
    const auto operating = [](std::uint32_t bits) {
        return Decode(Words{0x00010001, 4, bits}).speed.value().operatingSpeed;
    };
    const unsigned byBit[] = {0, 0, 0, 0, 0, 0, 256, 128, 64, 32, 16, 8, 10, 4, 2, 1};
    for (unsigned bit = 0; bit < 16; ++bit) {
        EXPECT_EQ(operating(1U << bit), bit < 6 ? std::nullopt : std::optional(byBit[bit])) << bit;
    }
    EXPECT_EQ(operating(0), std::nullopt);
    EXPECT_EQ(operating(0x0300), std::nullopt); // two speeds
    EXPECT_EQ(operating(0x0101), std::nullopt); // a speed, and "unknown"
    EXPECT_EQ(RdpSpeedsOf(0xFFFF), (std::vector<unsigned>{1, 2, 4, 8, 10, 16, 32, 64, 128, 256}));
    EXPECT_TRUE(RdpSpeedsOf(0x003F).empty());
}

TEST(RdpTest, LinkErrors) {
    const RdpLinkErrors errors = Decode(LINK_ERRORS).linkErrors.value();
    EXPECT_EQ(errors.linkFailures, 1u);
    EXPECT_EQ(errors.lossesOfSync, 2u);
    EXPECT_EQ(errors.lossesOfSignal, 3u);
    EXPECT_EQ(errors.primitiveSequenceProtocolErrors, 4u);
    EXPECT_EQ(errors.invalidTransmissionWords, 5u);
    EXPECT_EQ(errors.invalidCrcs, 4294967295u); // counters have no sign
    EXPECT_EQ(errors.portType, RdpPortType::FIBRE_CHANNEL);
    const auto type = [](std::uint32_t word) {
        return Decode(Words{0x00010002, 28, 0, 0, 0, 0, 0, 0, word}).linkErrors.value().portType;
    };
    EXPECT_EQ(type(0x3FFFFFFF), RdpPortType::UNKNOWN);
    EXPECT_EQ(type(0x80000000), RdpPortType::ETHERNET);
    EXPECT_EQ(type(0xC0000000), RdpPortType::RESERVED);
}

TEST(RdpTest, NamesFecAndCredits) {
    const Words attached = {0x00010003, 16, 0, 0, 0xFFFFFFFF, 0xFFFFFFFE};
    const DiagnosticParameters parameters = Decode(PORT_NAMES + FEC + attached + CREDITS);
    ASSERT_EQ(parameters.portNames.size(), 2u);
    EXPECT_EQ(parameters.portNames[0].nodeName, 0x10008894712F9000u);
    EXPECT_EQ(parameters.portNames[0].portName, 0x20038894712F9001u);
    EXPECT_EQ(parameters.portNames[1].nodeName, 0u);
    EXPECT_EQ(parameters.portNames[1].portName, 0xFFFFFFFFFFFFFFFEu);
    EXPECT_EQ(parameters.fecStatus.value().correctedBlocks, 2041u);
    EXPECT_EQ(parameters.fecStatus.value().uncorrectableBlocks, 2147483648u);
    EXPECT_EQ(parameters.bufferCredits.value().portCredits, 32u);
    EXPECT_EQ(parameters.bufferCredits.value().attachedPortCredits, 64u);
    EXPECT_EQ(parameters.bufferCredits.value().roundTripNanoseconds, 412u);
}

TEST(RdpTest, OpticalElements) {
    const auto element = [](std::uint32_t flags) {
        return Words{0x00010007, 12, 0x27100001, 0x138803E8, flags}; // 10000, 1, 5000, 1000
    };
    const DiagnosticParameters parameters =
        Decode(TEMPERATURE_LEVELS + element(0x20000000) + element(0x30000000) + element(0x40000000) +
               element(0x5000000F)); // the low bits tell which levels are crossed
    // FF80h is half a degree below zero.
    EXPECT_EQ(parameters.thresholds.temperature, (Thresholds<Celsius>{{75}, {-5}, {70}, {-0.5}}));
    EXPECT_EQ(parameters.thresholds.voltage, (Thresholds<Volts>{{1}, {0.0001}, {0.5}, {0.1}}));
    EXPECT_EQ(parameters.thresholds.bias, (Thresholds<Milliamperes>{{20}, {0.002}, {10}, {2}}));
    EXPECT_EQ(parameters.thresholds.transmitPower, (Thresholds<Milliwatts>{{1}, {0.0001}, {0.5}, {0.1}}));
    EXPECT_EQ(parameters.thresholds.receivePower, (Thresholds<Milliwatts>{{1}, {0.0001}, {0.5}, {0.1}}));
    EXPECT_EQ(Judge(Celsius{-1}, *parameters.thresholds.temperature), Verdict::LOW_WARNING);
    for (const std::uint32_t other : {0x00000000u, 0x0FFFFFFFu, 0x60000000u, 0xF0000000u}) {
        const RdpThresholds none = Decode(element(other)).thresholds;
        EXPECT_FALSE(none.temperature || none.voltage || none.bias || none.transmitPower || none.receivePower);
    }
}

TEST(RdpTest, OpticalProduct) {
    const RdpOpticalProduct product = Decode(PRODUCT).product.value();
    EXPECT_EQ(product.vendor, "ACME Optics");
    EXPECT_EQ(product.partNumber, "PN-0123456789ABC"); // fills its field
    EXPECT_EQ(product.serialNumber, "SN 42");
    EXPECT_EQ(product.revision, "R1");
    EXPECT_EQ(product.dateCode, "250301");
    Words cut = PRODUCT;
    cut[3] = 0x204F0000; // " O" and zero bytes
    EXPECT_EQ(Decode(cut).product.value().vendor, "ACME O");
}

TEST(RdpTest, TheFirstOfAKindCounts) {
    const Words second = {0x00010005, 8, 7, 8};
    EXPECT_EQ(Decode(FEC + second).fecStatus.value().correctedBlocks, 2041u);
    const Words levels = {0x00010007, 12, 0, 0, 0x10000000};
    EXPECT_EQ(Decode(TEMPERATURE_LEVELS + levels).thresholds.temperature.value().highAlarm, Celsius{75});
}

TEST(RdpTest, OtherDescriptorsAreSkippedByTheirLength) {
    // The value looks like a descriptor of its own.
    const DiagnosticParameters parameters = Decode(Words{0x00010004, 12, 0x00010005, 8, 7} + CREDITS);
    EXPECT_FALSE(parameters.fecStatus.has_value());
    EXPECT_TRUE(parameters.bufferCredits.has_value());
    EXPECT_EQ(parameters.unknownTags, std::vector<std::uint32_t>{0x00010004});
    EXPECT_TRUE(parameters.isWhole);
    // A longer one of a known kind.
    const DiagnosticParameters longer = Decode(Words{0x00010005, 12, 1, 2, 3} + CREDITS);
    EXPECT_EQ(longer.fecStatus.value().uncorrectableBlocks, 2u);
    EXPECT_EQ(longer.bufferCredits.value().portCredits, 32u);
    EXPECT_TRUE(longer.isWhole);
}

/// Too short for its kind, a descriptor is left out: a field that isn't there must not look like a 0.
TEST(RdpTest, ShortDescriptorsAreLeftOut) {
    for (const Words& descriptor :
         {REQUEST, TRANSCEIVER, PORT_SPEED, LINK_ERRORS, PORT_NAMES, FEC, CREDITS, TEMPERATURE_LEVELS, PRODUCT}) {
        Words shorter = descriptor;
        shorter.pop_back();
        shorter[1] -= 4;
        const DiagnosticParameters parameters = Decode(shorter + Words{0x00010004, 0});
        EXPECT_FALSE(parameters.isWhole) << descriptor[0];
        EXPECT_FALSE(parameters.request || parameters.transceiver || parameters.speed || parameters.linkErrors ||
                     parameters.fecStatus || parameters.bufferCredits || parameters.thresholds.temperature ||
                     parameters.product || !parameters.portNames.empty())
            << descriptor[0];
        EXPECT_EQ(parameters.unknownTags.size(), 1u); // the walk goes on
    }
}

TEST(RdpTest, LengthOfTheList) {
    Page payload = PayloadOf(FEC + CREDITS);
    const auto withLength = [&payload](std::uint32_t length) { return Decode(payload.SetU32(0, length)); };
    const std::uint32_t wholeLength = 4 * (4 + 5);
    EXPECT_TRUE(withLength(wholeLength).isWhole);
    EXPECT_TRUE(withLength(wholeLength + 4).isWhole); // its own bytes with it
    EXPECT_FALSE(withLength(wholeLength + 5).isWhole);
    for (const std::uint32_t length : {wholeLength + 5, 0x7FFFFFFFu, 0xFFFFFFFCu, 0xFFFFFFFFu}) {
        EXPECT_TRUE(withLength(length).bufferCredits.has_value()) << length; // what is there is read
        EXPECT_FALSE(withLength(length).isWhole) << length;
    }
    EXPECT_TRUE(withLength(16).isWhole); // the first descriptor alone
    EXPECT_TRUE(withLength(16).fecStatus.has_value());
    EXPECT_FALSE(withLength(16).bufferCredits.has_value());
    EXPECT_FALSE(withLength(15).fecStatus.has_value());
    EXPECT_FALSE(withLength(15).isWhole);
    EXPECT_TRUE(withLength(0).isWhole); // an empty list
    // A buffer longer than the payload: a list that counts its own bytes ends in the zero bytes after it.
    Page buffer = payload;
    buffer.resize(508);
    buffer.SetU32(0, wholeLength + 4);
    EXPECT_TRUE(Decode(buffer).isWhole);
    EXPECT_TRUE(Decode(buffer).bufferCredits.has_value());
    EXPECT_TRUE(Decode(buffer).unknownTags.empty());
}

TEST(RdpTest, LyingLengthsOfDescriptors) {
    for (const std::uint32_t length : {9u, 0x7FFFFFFFu, 0xFFFFFFF8u, 0xFFFFFFFFu}) {
        for (const Words& descriptor : {REQUEST, TRANSCEIVER, PORT_SPEED, LINK_ERRORS, PORT_NAMES, FEC, CREDITS,
                                        TEMPERATURE_LEVELS, PRODUCT, Words{0x00010004, 0}}) {
            Words lying = {descriptor[0], length, 1, 2};
            const DiagnosticParameters parameters = Decode(CREDITS + lying);
            EXPECT_TRUE(parameters.bufferCredits.has_value());
            EXPECT_FALSE(parameters.isWhole) << length;
        }
    }
}

TEST(RdpTest, EveryTruncation) {
    const Words words =
        REQUEST + TRANSCEIVER + PORT_SPEED + LINK_ERRORS + PORT_NAMES + FEC + CREDITS + TEMPERATURE_LEVELS + PRODUCT;
    const Page whole = PayloadOf(words);
    std::size_t ends[9] = {};
    std::size_t end = 4;
    std::size_t kind = 0;
    for (const Words& descriptor :
         {REQUEST, TRANSCEIVER, PORT_SPEED, LINK_ERRORS, PORT_NAMES, FEC, CREDITS, TEMPERATURE_LEVELS, PRODUCT}) {
        ends[kind++] = end += 4 * descriptor.size();
    }
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const Data cut = Cut(whole, size);
        const DiagnosticParameters parameters = DecodeRdpPayload(Bytes(cut));
        EXPECT_EQ(parameters.isWhole, size == whole.size()) << size;
        EXPECT_EQ(parameters.request.has_value(), size >= ends[0]) << size;
        EXPECT_EQ(parameters.transceiver.has_value(), size >= ends[1]) << size;
        EXPECT_EQ(parameters.speed.has_value(), size >= ends[2]) << size;
        EXPECT_EQ(parameters.linkErrors.has_value(), size >= ends[3]) << size;
        EXPECT_EQ(parameters.portNames.size(), size >= ends[4] ? 1u : 0u) << size;
        EXPECT_EQ(parameters.fecStatus.has_value(), size >= ends[5]) << size;
        EXPECT_EQ(parameters.bufferCredits.has_value(), size >= ends[6]) << size;
        EXPECT_EQ(parameters.thresholds.temperature.has_value(), size >= ends[7]) << size;
        EXPECT_EQ(parameters.product.has_value(), size >= ends[8]) << size;
    }
}

} // namespace
