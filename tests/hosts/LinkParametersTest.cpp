/// @file
/// Diagnostic parameters of the far end.
#include "DiagnosticParameters.h"
#include "LinkTest.h"

namespace {

using namespace linux_test;

/// The payload of an acceptance, from descriptors in words.
Data Parameters(std::initializer_list<std::uint32_t> words) {
    return Words({0x02000000, static_cast<std::uint32_t>(4 * words.size())}) + Words(words);
}

TEST_F(LinuxLinkTest, TheFabricPortIsAskedForItsParameters) {
    mKernel.Answer(Parameters({0x00010001, 4, 0x07000100}));
    EXPECT_EQ(ReadParameters(), Words({12, 0x00010001, 4, 0x07000100}));
    EXPECT_EQ(mStatus, 0u);
    EXPECT_EQ(mKernel.requests.back().node, "fc_host0");
    EXPECT_EQ(mKernel.requests.back().code, 0x80000003u);
    EXPECT_EQ(mKernel.requests.back().fields, Data({0x18, 0xFF, 0xFF, 0xFE}) + Data(12));
    // One descriptor of 12 bytes: N_Port_ID, with the port that the fabric port is attached to.
    EXPECT_EQ(mKernel.requests.back().payload, Words({0x18000000, 12, 3, 4, 0x010203}));

    // If that rejects it, the controller may not.
    mKernel.Answer(Words({0x01000000, 0x000B0000}));
    mKernel.Answer(Parameters({0x00010001, 4, 0x07000100}));
    EXPECT_EQ(ReadParameters(), Words({12, 0x00010001, 4, 0x07000100}));
    EXPECT_EQ(mKernel.requests.back().fields, Data({0x18, 0xFF, 0xFF, 0xFD}) + Data(12));

    // Without an answer, one timeout is enough.
    mKernel.requests.clear();
    mKernel.Fail(ETIMEDOUT);
    ReadParameters();
    EXPECT_EQ(mStatus, NO_ANSWER);
    EXPECT_EQ(mKernel.requests.size(), 1u);
}

TEST_F(LinuxLinkTest, AfterASlowRejectionTheFabricControllerIsNotAsked) {
    for (const auto& [seconds, requests] : {std::pair{9, 2}, {11, 1}}) {
        mKernel.requests.clear();
        mKernel.script.clear();
        mKernel.step = static_cast<std::uint64_t>(seconds) * 1'000'000'000; // of each request
        for (int answer = 0; answer < 2; ++answer) {
            mKernel.Answer(Words({0x01000000, 0x000B0000})); // LS_RJT, command not supported
        }
        ReadParameters();
        EXPECT_EQ(mKernel.requests.size(), static_cast<std::size_t>(requests));
        EXPECT_EQ(mStatus, NO_ANSWER);
    }
}

TEST_F(LinuxLinkTest, TheOnlyRemotePortOfALinkIsAskedForItsParameters) {
    Host("fabric_name", "0x0");
    const Data before = ReadParameters();
    EXPECT_EQ(mStatus, NO_SUCH_PORT);
    EXPECT_EQ(Output(), "vexapi linux: host0: Not sent: not one remote port at the other end, but 2\n");
    EXPECT_EQ(before, Data(508, 0xEE)); // untouched
    Remove("rport-0:0-2");
    AddRemotePort("rport-0:0-9", "0x2001000000000009", "0xfffffc", "Directory Server"); // isn't on the link
    mKernel.Answer(Words({0x01000000, 0x000B0000}));
    ReadParameters();
    EXPECT_EQ(mStatus, NO_ANSWER);
    EXPECT_EQ(Output(), "vexapi linux: host0: Rejected: command not supported\n");
    EXPECT_EQ(mKernel.requests.back().node, "rport-0:0-1");
    EXPECT_EQ(mKernel.requests.back().payload, Words({0x18000000, 12, 3, 4, 0x010500}));
}

TEST_F(LinuxLinkTest, ParametersAreCutToTheBuffer) {
    const Data answer = Parameters({0x00010005, 8, 1, 2}); // a list of 16 bytes
    for (VX_UINT32 size = 0; size <= 24; ++size) {
        mKernel.Answer(answer);
        const Data payload = ReadParameters(size);
        EXPECT_EQ(mStatus, 0u);
        EXPECT_EQ(payload, Data(answer.begin() + 4, answer.begin() + 4 + std::min<std::ptrdiff_t>(size, 20)));
    }
    // An answer without a list; one longer than a frame; a length that lies.
    mKernel.Answer(Words({0x02000000}));
    mKernel.Answer(Words({0x02000000}));
    ReadParameters();
    EXPECT_EQ(mStatus, NO_ANSWER);
    mKernel.Answer(Words({0x02000000}) + Data(4000, 7));
    EXPECT_EQ(ReadParameters(4000), Data(2108, 7)); // the largest frame but for its first word
    mKernel.Answer(Reply{.length = 0xFFFFFFFF, .answer = answer});
    EXPECT_EQ(ReadParameters(20), Data(answer.begin() + 4, answer.end()));
}

TEST_F(LinuxLinkTest, ModulesFrom16To64Gbps) {
    struct Row {
        std::uint32_t transceiver[3];
        std::uint32_t speed;
        double celsius, volts, milliamperes, transmitMilliwatts, receiveMilliwatts;
        unsigned gbps;
        bool isFec;
    };
    // FC-LS: 1/256 degree, 0.1 mV, 2 uA, 0.1 uW, 0.1 uW, flags. The flags are 8000h for FEC, 0040h for an SFP+ (bits 6
    // to 9 are 1), 0010h for optical, and the laser, 1 for short wave. The speeds are bits: 0400h 16, 0200h 32,
    // 0100h 64.
    const Row rows[] = {
        // 40.5 C is 10368, 2880h; 3.3 V 33000, 80E8h; 7.5 mA 3750, 0EA6h; 0.56 mW 5600, 15E0h; 0.4 mW 4000, 0FA0h.
        {{0x288080E8, 0x0EA615E0, 0x0FA00051}, 0x1C000400, 40.5, 3.3, 7.5, 0.56, 0.4, 16, false},
        // -5.25 C is -1344, FAC0h; 3.2 V 32000, 7D00h; 8 mA 4000, 0FA0h; 0.8 mW 8000, 1F40h; 0.65 mW 6500, 1964h.
        {{0xFAC07D00, 0x0FA01F40, 0x19648051}, 0x0E000200, -5.25, 3.2, 8, 0.8, 0.65, 32, true},
        // 55 C is 14080, 3700h; 3.35 V 33500, 82DCh; 6.8 mA 3400, 0D48h; 1.2 mW 12000, 2EE0h; 1 mW 10000, 2710h.
        {{0x370082DC, 0x0D482EE0, 0x27108051}, 0x07000100, 55, 3.35, 6.8, 1.2, 1, 64, true},
    };
    for (const Row& row : rows) {
        mKernel.Answer(Parameters({1, 4, 0x18000000, 0x00010000, 12, row.transceiver[0], row.transceiver[1],
                                   row.transceiver[2], 0x00010001, 4, row.speed, 0x00010006, 12, 32, 64, 412}));
        const Data payload = ReadParameters();
        const decoders::DiagnosticParameters read = decoders::DecodeRdpPayload(decoders::Bytes(payload));
        EXPECT_TRUE(read.isWhole);
        EXPECT_EQ(read.request, 0x18000000u);
        const decoders::RdpTransceiver module = read.transceiver.value();
        EXPECT_EQ(module.temperature, decoders::Celsius{row.celsius});
        EXPECT_EQ(module.voltage, decoders::Volts{row.volts});
        EXPECT_EQ(module.bias, decoders::Milliamperes{row.milliamperes});
        EXPECT_EQ(module.transmitPower, decoders::Milliwatts{row.transmitMilliwatts});
        EXPECT_EQ(module.receivePower, decoders::Milliwatts{row.receiveMilliwatts});
        EXPECT_EQ(module.laser, decoders::RdpLaser::SHORT_WAVE);
        EXPECT_TRUE(module.isOptical && module.areDiagnosticsValid && module.isSfpPlus);
        EXPECT_EQ(module.isFecActive, row.isFec);
        EXPECT_EQ(read.speed.value().operatingSpeed, row.gbps);
        EXPECT_EQ(read.bufferCredits.value().roundTripNanoseconds, 412u);
    }
}

} // namespace
