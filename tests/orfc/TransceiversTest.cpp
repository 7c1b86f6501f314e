/// @file
/// Modules from their images to what is shown of them. What is expected is the standards' arithmetic over the bytes
/// that stand in the files.
#include "Command.h"
#include "Data.h"
#include "ReadTransceiver.h"

#include <cmath>
#include <filesystem>

using namespace orfc;
using decoders_test::Data;

namespace {

/// The image of a file as a library has it, 512 bytes.
Data ImageOf(const std::string& name) {
    const decoders_test::File file = decoders_test::LoadModule(name);
    Data image = file.first;
    image.resize(256);
    image.insert(image.end(), file.second.begin(), file.second.end());
    image.resize(512);
    return image;
}

/// A port with a module, and the values of the module's columns.
class Module {
public:
    explicit Module(const Data& image) : mImage(image) { Decode(); }
    explicit Module(const std::string& name) : Module(ImageOf(name)) {}

    /// Changes bytes of address A2h.
    Module& A2(std::size_t offset, std::initializer_list<std::uint8_t> bytes) {
        std::copy(bytes.begin(), bytes.end(), mImage.begin() + 256 + static_cast<std::ptrdiff_t>(offset));
        unsigned sum = 0;
        for (std::size_t at = 0; at < 95; ++at) {
            sum += mImage[256 + at];
        }
        mImage[256 + 95] = static_cast<std::uint8_t>(sum); // CC_DMI
        return Decode();
    }
    Module& Byte(std::size_t offset, std::uint8_t byte) {
        mImage[offset] = byte;
        return Decode();
    }

    Value At(const std::string& key) const {
        for (const ColumnOf<Port>& column : TransceiverColumns()) {
            if (column.key == key) {
                return column.value(mPort);
            }
        }
        throw std::out_of_range(key);
    }
    std::string Text(const std::string& key) const { return TextOf(At(key)); }
    /// NaN if it is unknown.
    double Number(const std::string& key) const {
        const Value value = At(key);
        return std::holds_alternative<Decimal>(value) ? std::get<Decimal>(value).value : std::nan("");
    }
    /// Value, low alarm, low warning, high warning and high alarm.
    void ExpectReading(const std::string& name, const std::string& unit, std::array<double, 5> expected,
                       const char* verdict) const {
        const char* const parts[] = {"_", "_low_alarm_", "_low_warning_", "_high_warning_", "_high_alarm_"};
        for (std::size_t part = 0; part < expected.size(); ++part) {
            EXPECT_NEAR(Number(name + parts[part] + unit), expected[part], 1e-9) << name << parts[part];
        }
        EXPECT_EQ(Text(name + "_verdict"), verdict) << name;
    }

private:
    Module& Decode() {
        mPort.identifier = "FC_1";
        mPort.transceiver = DecodeTransceiver({mImage.data(), mImage.size()});
        return *this;
    }
    Data mImage;
    Port mPort;
};

double Dbm(double milliwatts) {
    return 10 * std::log10(milliwatts);
}

// ---- The SFP family

TEST(TransceiversTest, LongWaveTenGigabit) {
    const Module module("cisco-finisar-10g-lr");
    EXPECT_EQ(module.Text("port"), "FC_1");
    EXPECT_EQ(module.Text("health"), "ok");
    EXPECT_EQ(module.Text("family"), "SFP");
    EXPECT_EQ(module.Text("connector"), "LC"); // 07h
    EXPECT_EQ(module.Text("vendor"), "CISCO-FINISAR");
    EXPECT_EQ(module.Text("part_number"), "FTLX1474D3BCL-CS");
    EXPECT_EQ(module.Text("revision"), "A");
    EXPECT_EQ(module.Text("serial_number"), "FNS16100CQX");
    EXPECT_EQ(module.Text("vendor_oui"), "00:90:65");
    EXPECT_EQ(module.Text("date"), "2012-03-05");               // "120305"
    EXPECT_EQ(module.Number("wavelength_nanometres"), 1310);    // 051Eh
    EXPECT_EQ(module.Text("signaling_rate_megabaud"), "10300"); // 67h, 103 times 100
    EXPECT_EQ(module.Text("length_single_mode_metres"), "10000");
    EXPECT_EQ(module.Text("length_om3_metres"), "");
    EXPECT_EQ(module.Text("base_checksum_valid"), "true");
    EXPECT_EQ(module.Text("extended_checksum_valid"), "true");
    EXPECT_EQ(module.Text("diagnostics_checksum_valid"), "true");
    // 1B90h; alarms FA00h and 4B00h, warnings 0000h and 4600h: 1/256 degree, signed.
    module.ExpectReading("temperature", "celsius", {7056 / 256.0, -1536 / 256.0, 0, 70, 75}, "ok");
    // 82CDh; 7148h, 7530h, 8CA0h, 9088h: 100 microvolts.
    module.ExpectReading("voltage", "volts", {3.3485, 2.9, 3.0, 3.6, 3.7}, "ok");
    // 3C6Dh; 1D4Ch, 2710h, 9C40h, A604h: 2 microamperes.
    module.ExpectReading("bias", "milliamperes", {15469 * 0.002, 15, 20, 80, 85}, "ok");
    // 1859h; 025Ah, 05EBh, 2BC8h, 5764h: 0.1 microwatt.
    module.ExpectReading("transmit_power", "milliwatts", {0.6233, 0.0602, 0.1515, 1.1208, 2.2372}, "ok");
    module.ExpectReading("transmit_power", "dbm", {Dbm(0.6233), Dbm(0.0602), Dbm(0.1515), Dbm(1.1208), Dbm(2.2372)},
                         "ok");
    // 13E3h; 0090h, 016Bh, 2BC8h, 5764h.
    module.ExpectReading("receive_power", "milliwatts", {0.5091, 0.0144, 0.0363, 1.1208, 2.2372}, "ok");
    module.ExpectReading("receive_power", "dbm", {Dbm(0.5091), Dbm(0.0144), Dbm(0.0363), Dbm(1.1208), Dbm(2.2372)},
                         "ok");
    EXPECT_EQ(module.Text("receive_power_is_average"), "true"); // 68h in byte 92
    EXPECT_EQ(module.Text("receive_power_dbm"), "-2.93");       // -2.93197
    EXPECT_EQ(module.Text("bias_lane_2_milliamperes"), "");
}

/// It sends nothing, and receives next to nothing.
TEST(TransceiversTest, NoLight) {
    const Module module("tsuhan-xgspon-no-light");
    EXPECT_EQ(module.Text("health"), "alarm");
    // 1EA4h; F100h, F600h, 5500h, 5A00h.
    module.ExpectReading("temperature", "celsius", {7844 / 256.0, -15, -10, 85, 90}, "ok");
    // 0; 0, 0, 88B8h, AFC8h: a value on its thresholds hasn't crossed them.
    module.ExpectReading("bias", "milliamperes", {0, 0, 0, 70, 90}, "ok");
    // 0; 4577h, 6E18h, FFFFh, FFFFh. No power has no dBm.
    module.ExpectReading("transmit_power", "milliwatts", {0, 1.7783, 2.8184, 6.5535, 6.5535}, "low alarm");
    EXPECT_EQ(module.At("transmit_power_dbm"), Value());
    EXPECT_NEAR(module.Number("transmit_power_low_alarm_dbm"), Dbm(1.7783), 1e-9);
    // 0001h, which is 0.0001 mW; 0009h, 000Eh, 04EBh, 07CBh.
    module.ExpectReading("receive_power", "milliwatts", {0.0001, 0.0009, 0.0014, 0.1259, 0.1995}, "low alarm");
    EXPECT_NEAR(module.Number("receive_power_dbm"), -40, 1e-9);
}

TEST(TransceiversTest, ExternalCalibration) {
    const Module module("extcal-huawei-hpsp2120");
    EXPECT_EQ(module.Text("health"), "alarm");
    // Slope DCB7h and offset 9135h for 00ACh; levels 0080h, 0080h, 00EFh, 00EFh are raw numbers as well.
    const auto celsius = [](double raw) { return (56503 / 256.0 * raw - 28363) / 256; };
    module.ExpectReading("temperature", "celsius",
                         {celsius(172), celsius(128), celsius(128), celsius(239), celsius(239)}, "ok");
    // Slope 09C0h is 9.75, offset 0; 001Bh; 00CDh and 1408h.
    const auto bias = [](double raw) { return 9.75 * raw * 0.002; };
    module.ExpectReading("bias", "milliamperes", {bias(27), bias(205), bias(205), bias(5128), bias(5128)}, "low alarm");
    EXPECT_NEAR(module.Number("transmit_power_milliwatts"), 1.7782, 1e-9); // 4576h with slope 1
    EXPECT_LT(module.Number("receive_power_milliwatts"), 0);               // the constant of the polynomial alone
    EXPECT_EQ(module.At("receive_power_dbm"), Value());
}

TEST(TransceiversTest, ShortWave) {
    const Module module("mikrotik-s85dlc05d");
    EXPECT_EQ(module.Text("health"), "ok");
    EXPECT_EQ(module.Text("length_om1_metres"), "500");
    EXPECT_EQ(module.Text("length_om2_metres"), "550");
    module.ExpectReading("temperature", "celsius", {8572 / 256.0, -11521 / 256.0, -10241 / 256.0, 90, 100},
                         "ok");                                          // 217Ch; D2FFh, D7FFh
    EXPECT_NEAR(module.Number("transmit_power_dbm"), Dbm(0.2635), 1e-9); // 0A4Bh
    EXPECT_NEAR(module.Number("receive_power_dbm"), Dbm(0.3006), 1e-9);  // 0BBEh
}

/// Thresholds of `cisco-finisar-10g-lr` for the temperature: -6, 0, 70, 75 degrees.
TEST(TransceiversTest, EveryVerdict) {
    struct Case {
        int degrees;
        std::uint8_t fraction;
        const char* verdict;
        const char* health;
    };
    constexpr Case CASES[] = {{-7, 255, "low alarm", "alarm"},
                              {-6, 0, "low warning", "warning"},
                              {-1, 255, "low warning", "warning"},
                              {0, 0, "ok", "ok"},
                              {70, 0, "ok", "ok"},
                              {70, 1, "high warning", "warning"},
                              {75, 0, "high warning", "warning"},
                              {75, 1, "high alarm", "alarm"},
                              {127, 255, "high alarm", "alarm"},
                              {-128, 0, "low alarm", "alarm"}};
    Module module("cisco-finisar-10g-lr");
    for (const Case& row : CASES) {
        module.A2(96, {static_cast<std::uint8_t>(row.degrees), row.fraction});
        EXPECT_NEAR(module.Number("temperature_celsius"), row.degrees + row.fraction / 256.0, 1e-9);
        EXPECT_EQ(module.Text("temperature_verdict"), row.verdict) << row.degrees << " " << int{row.fraction};
        EXPECT_EQ(module.Text("health"), row.health);
    }
}

/// An alarm of any value is worse than a warning of any other.
TEST(TransceiversTest, HealthIsTheWorst) {
    Module module("cisco-finisar-10g-lr");
    module.A2(96, {70, 1}); // a high warning of the temperature
    EXPECT_EQ(module.Text("health"), "warning");
    module.A2(104, {0, 0x8F}); // 0.0143 mW received
    EXPECT_EQ(module.Text("receive_power_verdict"), "low alarm");
    EXPECT_EQ(module.Text("health"), "alarm");
}

// ---- The QSFP family

TEST(TransceiversTest, FourLanes) {
    const Module module("fs-qsfp28-ir4-100g");
    EXPECT_EQ(module.Text("family"), "QSFP");
    EXPECT_EQ(module.Text("identifier"), "QSFP28");
    EXPECT_EQ(module.Text("health"), "no thresholds");          // which are in a page that libraries don't read
    EXPECT_EQ(module.Text("wavelength_nanometres"), "1302.35"); // 65BFh, 26047 / 20
    EXPECT_NEAR(module.Number("temperature_celsius"), 7319 / 256.0, 1e-9); // 1C97h
    EXPECT_EQ(module.At("temperature_high_alarm_celsius"), Value());
    EXPECT_EQ(module.At("temperature_verdict"), Value());
    EXPECT_NEAR(module.Number("voltage_volts"), 3.3209, 1e-9); // 81B9h
    // Received 436Ah, 31C8h, 2B82h, 2ED6h; bias 4340h, 4140h, 47C0h, 4540h; sent 2CCCh, 2D91h, 302Ch, 2F9Dh.
    EXPECT_NEAR(module.Number("receive_power_milliwatts"), 1.7258, 1e-9);
    EXPECT_NEAR(module.Number("receive_power_lane_2_milliwatts"), 1.2744, 1e-9);
    EXPECT_NEAR(module.Number("receive_power_lane_3_milliwatts"), 1.1138, 1e-9);
    EXPECT_NEAR(module.Number("receive_power_lane_4_milliwatts"), 1.1990, 1e-9);
    EXPECT_NEAR(module.Number("receive_power_lane_4_dbm"), Dbm(1.1990), 1e-9);
    EXPECT_NEAR(module.Number("bias_milliamperes"), 17216 * 0.002, 1e-9);
    EXPECT_NEAR(module.Number("bias_lane_2_milliamperes"), 16704 * 0.002, 1e-9);
    EXPECT_NEAR(module.Number("bias_lane_3_milliamperes"), 18368 * 0.002, 1e-9);
    EXPECT_NEAR(module.Number("bias_lane_4_milliamperes"), 17728 * 0.002, 1e-9);
    EXPECT_NEAR(module.Number("transmit_power_dbm"), Dbm(1.1468), 1e-9);
    EXPECT_NEAR(module.Number("transmit_power_lane_2_milliwatts"), 1.1665, 1e-9);
    EXPECT_NEAR(module.Number("transmit_power_lane_3_milliwatts"), 1.2332, 1e-9);
    EXPECT_NEAR(module.Number("transmit_power_lane_4_milliwatts"), 1.2189, 1e-9);
}

TEST(TransceiversTest, AnActiveCableSendsNothingThatIsMeasured) {
    const Module module("dell-wg8c4-100g-aoc");
    EXPECT_EQ(module.Text("length_cable_metres"), "5");
    EXPECT_NEAR(module.Number("receive_power_lane_2_milliwatts"), 0.7930, 1e-9); // 1EFAh
    EXPECT_EQ(module.At("transmit_power_milliwatts"), Value());
    EXPECT_EQ(module.At("transmit_power_dbm"), Value());
}

// ---- What has no values

/// Every image: those that measure themselves, by their files' comments, and what is wrong with the others.
TEST(TransceiversTest, HealthOfEveryImage) {
    const std::map<std::string, std::string> healths = {
        {"badccbase-fiberstore-sr85", "bad checksum"}, // its comment says so
        {"cisco-finisar-10g-lr", "ok"},
        {"dell-wg8c4-100g-aoc", "no thresholds"},
        {"extcal-huawei-hpsp2120", "alarm"}, // 0.526 mA is below all levels
        {"finisar-ftl410-40g-sr4", "no thresholds"},
        {"finisar-ftlx8571-auj0rcj", "ok"},
        {"flexoptix-b1696-10g-bx1330", "ok"},
        {"fs-dwdm-ch44-uncoded", "alarm"},
        {"fs-qsfp28-ir4-100g", "no thresholds"},
        {"lumentum-lq210cr-cwdm4", "no thresholds"},
        {"mikrotik-s85dlc05d", "ok"},
        {"oem-qsfp-40g-sr4-lower0", "unknown kind"}, // shifted: its first byte is of neither family
        {"tsuhan-xgspon-no-light", "alarm"},
    };
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/transceivers")) {
        const std::string name = entry.path().stem().string();
        const auto health = healths.find(name);
        EXPECT_EQ(Module(name).Text("health"), health != healths.end() ? health->second : "no diagnostics") << name;
    }
}

TEST(TransceiversTest, AnEmptyBay) {
    const Module module(Data(512));
    EXPECT_EQ(module.Text("health"), "empty");
    for (const ColumnOf<Port>& column : TransceiverColumns()) {
        const std::string key = column.key;
        if (key != "port" && key != "health") {
            EXPECT_EQ(module.At(key), Value()) << key;
        }
    }
}

TEST(TransceiversTest, Unread) {
    Port port;
    for (const ColumnOf<Port>& column : TransceiverColumns()) {
        EXPECT_EQ(TextOf(column.value(port)), column.key == std::string("health") ? "unread" : "") << column.key;
    }
}

TEST(TransceiversTest, AModuleOfAnotherKind) {
    Data image(512);
    image[0] = 0x18; // QSFP-DD
    image[20] = 'X';
    const Module module(image);
    EXPECT_EQ(module.Text("health"), "unknown kind");
    EXPECT_EQ(module.At("vendor"), Value());
}

/// What was read is shown, but none of its values.
TEST(TransceiversTest, ABadChecksum) {
    const Module module("badccbase-fiberstore-sr85");
    EXPECT_EQ(module.Text("vendor"), "FiberStore d");
    EXPECT_EQ(module.Text("base_checksum_valid"), "false");
    EXPECT_EQ(module.At("temperature_celsius"), Value());
    EXPECT_EQ(Module("badccext-oem-sfp-ge-t").Text("extended_checksum_valid"), "false");
    EXPECT_EQ(Module("cisco-finisar-10g-lr").Byte(20, 'c').Text("health"), "bad checksum");
}

/// Thresholds whose checksum is wrong judge nothing.
TEST(TransceiversTest, ABadChecksumOfThresholds) {
    const Module module = Module("cisco-finisar-10g-lr").Byte(256, 0x10); // the high alarm of the temperature
    EXPECT_EQ(module.Text("health"), "bad checksum");
    EXPECT_EQ(module.Text("diagnostics_checksum_valid"), "false");
    EXPECT_NEAR(module.Number("temperature_celsius"), 27.5625, 1e-9);
    for (const char* name : {"temperature", "voltage", "bias", "transmit_power", "receive_power"}) {
        EXPECT_EQ(module.At(name + std::string("_verdict")), Value());
    }
    EXPECT_EQ(module.At("temperature_high_alarm_celsius"), Value());
    EXPECT_EQ(module.At("receive_power_low_alarm_dbm"), Value());
}

/// Byte 110 of A2h, or byte 2 of the lower page: bit 0 is set until there are values.
TEST(TransceiversTest, NotReady) {
    const Module sfp = Module("cisco-finisar-10g-lr").Byte(256 + 110, 0x01);
    EXPECT_EQ(sfp.Text("health"), "not ready");
    EXPECT_EQ(sfp.At("temperature_celsius"), Value());
    EXPECT_EQ(sfp.Text("vendor"), "CISCO-FINISAR");
    const Module qsfp = Module("fs-qsfp28-ir4-100g").Byte(2, 0x03);
    EXPECT_EQ(qsfp.Text("health"), "not ready");
    EXPECT_EQ(qsfp.At("receive_power_milliwatts"), Value());
}

/// A library that couldn't read A2h leaves it zero: that is no module at 0 degrees and 0 volts.
TEST(TransceiversTest, WithoutTheSecondAddress) {
    Data image = ImageOf("cisco-finisar-10g-lr");
    std::fill(image.begin() + 256, image.end(), std::uint8_t{0});
    const Module module(image);
    EXPECT_EQ(module.Text("health"), "no diagnostics");
    EXPECT_EQ(module.Text("diagnostics_checksum_valid"), "");
    EXPECT_EQ(module.At("temperature_celsius"), Value());
}

} // namespace
