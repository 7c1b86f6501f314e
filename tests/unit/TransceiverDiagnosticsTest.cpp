/// @file
/// The arithmetic of the diagnostic page, value by value.
#include "ReportArithmetic.h"
#include "TransceiverImages.h"

#include <cmath>
#include <limits>

using namespace transceiver_test;

namespace {

std::string NineDecimals(float value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.9f", static_cast<double>(value));
    return text;
}
std::string Hex(unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, "%04x", value);
    return text;
}

/// A neutral calibration, except for the transmit bias, whose slope of 01 00 is ignored. Of the coefficients of the
/// receive power only the fourth is 1.0, 3F 80 00 00.
Image Calibrated() {
    return Image()
        .Set(92, {0x68})
        .Set(A2h(68), {0x3F, 0x80, 0, 0})
        .Set(A2h(76), {1, 0})
        .Set(A2h(80), {1, 0})
        .Set(A2h(84), {1, 0})
        .Set(A2h(88), {1, 0});
}

TransceiverDiagnostics Diagnose(const Image& image) {
    TransceiverDiagnostics diagnostics;
    diagnostics.CalculateDMIData(image.View());
    return diagnostics;
}
float ValueAt(const Image& image, int row, int column) {
    return Diagnose(image).getValueAt(row, column);
}

enum Row { VALUE = 0, STATUS = 1, HIGH_ALARM = 2, HIGH_WARNING = 3, LOW_WARNING = 4, LOW_ALARM = 5 };
enum Column { TEMPERATURE = 1, VOLTAGE = 2, BIAS = 3, TX = 4, RX = 5 };

TEST(TransceiverDiagnosticsTest, Voltage) {
    EXPECT_EQ(NineDecimals(VoltageCalc(0x0000)), "0.000000000");
    EXPECT_EQ(NineDecimals(VoltageCalc(0x0001)), "0.000100000"); // 100 microvolts
    // 33201: 3320100 microvolts; the nearest single to a millionth is 9.99999997e-07, and the product rounds to
    // 3.320100069, the single next to 3.3201.
    EXPECT_EQ(NineDecimals(VoltageCalc(0x81b1)), "3.320100069");
    EXPECT_EQ(NineDecimals(VoltageCalc(0x8000)), "3.276799917"); // 32768
    EXPECT_EQ(NineDecimals(VoltageCalc(0xffff)), "6.553500175");
}

TEST(TransceiverDiagnosticsTest, TransmitBias) {
    EXPECT_EQ(NineDecimals(TxBiasCalc(0x0000)), "0.000000000");
    EXPECT_EQ(NineDecimals(TxBiasCalc(0x0001)), "0.002000000");  // 2 microamperes
    EXPECT_EQ(NineDecimals(TxBiasCalc(0x8000)), "65.536003113"); // 65536 times the single next to 0.001
    EXPECT_EQ(NineDecimals(TxBiasCalc(0xffff)), "131.070007324");
}

TEST(TransceiverDiagnosticsTest, Power) {
    EXPECT_EQ(NineDecimals(TxRxPowerCalc(0x0000)), "0.000000000");
    EXPECT_EQ(NineDecimals(TxRxPowerCalc(0x0001)), "0.000100000"); // 0.1 microwatts
    // 5511: 551.1 as a single is 551.100036621; times the single next to 0.001 it rounds to 0.551100075. With
    // constants of double precision it would be 0.551100016.
    EXPECT_EQ(NineDecimals(TxRxPowerCalc(0x1587)), "0.551100075");
    EXPECT_EQ(NineDecimals(TxRxPowerCalc(0x8000)), "3.276800156");
    EXPECT_EQ(NineDecimals(TxRxPowerCalc(0xffff)), "6.553500175");
}

/// Every step is single precision. This many of all values print differently at nine decimals if the constants are
/// double.
TEST(TransceiverDiagnosticsTest, PowerIsSinglePrecisionThroughout) {
    int differing = 0;
    for (unsigned raw = 0; raw < 65536; ++raw) {
        volatile float value = static_cast<float>(raw);
        value = value * 0.1f;
        value = value * 0.001f;
        const float power = TxRxPowerCalc(static_cast<VX_UINT16>(raw));
        ASSERT_EQ(power, value) << raw;
        const auto withDoubles = static_cast<float>(static_cast<double>(raw) * 0.1 * 0.001);
        differing += NineDecimals(power) != NineDecimals(withDoubles) ? 1 : 0;
    }
    EXPECT_EQ(differing, 47604);
}

TEST(TransceiverDiagnosticsTest, SlopesAreDecimalDigits) {
    const auto slope = [](int first, int second) {
        return NineDecimals(buildSlope(static_cast<VX_UINT8>(first), static_cast<VX_UINT8>(second)));
    };
    EXPECT_EQ(slope(0, 0), "0.000000000");
    EXPECT_EQ(slope(1, 0), "1.000000000");
    EXPECT_EQ(slope(1, 128), "1.128000021"); // "1.128"; SFF-8472 has 1.5
    EXPECT_EQ(slope(0, 5), "0.500000000");   // "0.5"
    EXPECT_EQ(slope(0, 50), "0.500000000");  // "0.50"
    EXPECT_EQ(slope(0, 1), "0.100000001");
    EXPECT_EQ(slope(2, 10), "2.099999905"); // "2.10"
    EXPECT_EQ(slope(255, 255), "255.255004883");
}

TEST(TransceiverDiagnosticsTest, FloatsByHand) {
    EXPECT_EQ(int_bits_to_float(0x3F800000), 1.0f);
    EXPECT_EQ(int_bits_to_float(0xBF800000), -1.0f);
    EXPECT_EQ(int_bits_to_float(0x40490FDB), 3.14159274f);
    EXPECT_EQ(int_bits_to_float(0x00800000), 1.17549435e-38f); // exponent 1: the smallest normal value
    EXPECT_EQ(int_bits_to_float(0x7F7FFFFF), 3.40282347e38f);  // exponent 254: the largest
    EXPECT_EQ(int_bits_to_float(0xFF7FFFFF), -3.40282347e38f);
    // Exponent 0: the scale is 0 as a single, whatever the mantissa.
    for (const VX_UINT32 bits : {0x00000000u, 0x00000001u, 0x00400000u, 0x007FFFFFu}) {
        EXPECT_EQ(int_bits_to_float(bits), 0.0f) << bits;
        EXPECT_EQ(int_bits_to_float(bits | 0x80000000u), 0.0f) << bits;
    }
    // Exponent 255: infinities and NaNs are the largest value, with their sign.
    for (const VX_UINT32 bits : {0x7F800000u, 0x7F800001u, 0x7FC00000u, 0x7FFFFFFFu}) {
        EXPECT_EQ(int_bits_to_float(bits), 3.4028235e38f) << bits;
        EXPECT_EQ(int_bits_to_float(bits | 0x80000000u), -3.4028235e38f) << bits;
    }
    // Every normal exponent, against the machine's own.
    for (VX_UINT32 exponent = 1; exponent < 255; ++exponent) {
        const VX_UINT32 bits = exponent << 23 | 0x2AAAAA;
        float expected = 0;
        std::memcpy(&expected, &bits, sizeof expected);
        EXPECT_EQ(int_bits_to_float(bits), expected) << exponent;
    }
}

TEST(TransceiverDiagnosticsTest, LiveTemperatureIsNeverNegative) {
    const auto live = [](int high, int low) { return ValueAt(Calibrated().Set(A2h(96), {high, low}), VALUE, 1); };
    EXPECT_EQ(live(0, 0), 0.0f);
    EXPECT_EQ(live(0, 1), 0.00390625f);
    EXPECT_EQ(live(0x14, 0x02), 20.0078125f); // 20 and 2/256
    EXPECT_EQ(live(0x80, 0x80), 128.5f);      // not -127.5
    EXPECT_EQ(live(255, 255), 255.99609375f);
}

struct ThresholdCase {
    int first;
    int second;
    float high; ///< as high alarm and warning
    float low;  ///< as low alarm and warning
};

/// v is the field with its bytes swapped, as 16 bits with sign.
const ThresholdCase TEMPERATURE_THRESHOLDS[] = {
    {0x00, 0x00, 0.0f, 0.0f},           {0x01, 0x00, 1.0f, 1.0f},
    {0x55, 0x00, 85.0f, 85.0f},         {0x7F, 0x00, 127.0f, 127.0f},
    {0x80, 0x00, 128.0f, -128.0f}, // bit 7 of v: v - 256 for a low one
    {0xFB, 0x00, 251.0f, -5.0f},        {0xFF, 0x00, 255.0f, -1.0f},
    {0x55, 0x01, -85.5f, -171.0f},      // v = 0155h = 341: 341/2 - 256; 341 - 512
    {0xFF, 0x01, -0.5f, -1.0f},         // v = 511: 255.5 - 256; 511 - 512
    {0x00, 0x01, -128.0f, -256.0f},     // v = 256
    {0x55, 0x02, 597.0f, 85.0f},        // v = 0255h = 597, bit 8 clear; 597 - 512
    {0x00, 0x7F, 16000.0f, 32000.0f},   // v = 7F00h = 32512, bit 8 set: 16256 - 256; 32512 - 512
    {0x55, 0x80, -32683.0f, -33195.0f}, // v = 8055h = -32683, bit 8 clear; highest bit 31: -32683 - 512
    {0x55, 0x81, -16469.5f, -32939.0f}, // v = 8155h = -32427, bit 8 set: -16213.5 - 256; -32427 - 512
    {0xFF, 0xFF, -256.5f, -513.0f},     // v = -1: -0.5 - 256; -1 - 512
};

TEST(TransceiverDiagnosticsTest, TemperatureThresholds) {
    for (const ThresholdCase& row : TEMPERATURE_THRESHOLDS) {
        SCOPED_TRACE(Hex(static_cast<unsigned>(row.first << 8 | row.second)));
        EXPECT_EQ(ValueAt(Calibrated().Set(A2h(0), {row.first, row.second}), HIGH_ALARM, TEMPERATURE), row.high);
        EXPECT_EQ(ValueAt(Calibrated().Set(A2h(4), {row.first, row.second}), HIGH_WARNING, TEMPERATURE), row.high);
        EXPECT_EQ(ValueAt(Calibrated().Set(A2h(2), {row.first, row.second}), LOW_ALARM, TEMPERATURE), row.low);
        EXPECT_EQ(ValueAt(Calibrated().Set(A2h(6), {row.first, row.second}), LOW_WARNING, TEMPERATURE), row.low);
    }
}

/// Each location of the linear quantities has a different number.
TEST(TransceiverDiagnosticsTest, EveryQuantityFromItsPlace) {
    const Image image = Calibrated()
                            .Set(A2h(8), {0, 1, 0, 2, 0, 3, 0, 4})      // voltage: alarms high, low, warnings
                            .Set(A2h(16), {0, 5, 0, 6, 0, 7, 0, 8})     // bias
                            .Set(A2h(24), {0, 9, 0, 10, 0, 11, 0, 12})  // transmit power
                            .Set(A2h(32), {0, 13, 0, 14, 0, 15, 0, 16}) // receive power
                            .Set(A2h(98), {1, 17, 1, 18, 1, 19, 1, 20});
    struct Place {
        Column column;
        Row row;
        unsigned raw;
    };
    const Place PLACES[] = {
        {VOLTAGE, HIGH_ALARM, 1}, {VOLTAGE, LOW_ALARM, 2}, {VOLTAGE, HIGH_WARNING, 3}, {VOLTAGE, LOW_WARNING, 4},
        {BIAS, HIGH_ALARM, 5},    {BIAS, LOW_ALARM, 6},    {BIAS, HIGH_WARNING, 7},    {BIAS, LOW_WARNING, 8},
        {TX, HIGH_ALARM, 9},      {TX, LOW_ALARM, 10},     {TX, HIGH_WARNING, 11},     {TX, LOW_WARNING, 12},
        {RX, HIGH_ALARM, 13},     {RX, LOW_ALARM, 14},     {RX, HIGH_WARNING, 15},     {RX, LOW_WARNING, 16},
        {VOLTAGE, VALUE, 273},    {BIAS, VALUE, 274},      {TX, VALUE, 275},           {RX, VALUE, 276},
    };
    for (const Place& place : PLACES) {
        const auto raw = static_cast<VX_UINT16>(place.raw);
        const float expected = place.column == VOLTAGE ? VoltageCalc(raw)
                               : place.column == BIAS  ? TxBiasCalc(raw)
                                                       : TxRxPowerCalc(raw);
        EXPECT_EQ(ValueAt(image, place.row, place.column), expected) << place.column << " " << place.row;
    }
}

TEST(TransceiverDiagnosticsTest, CalibrationOfTemperature) {
    const auto at20 = [](std::initializer_list<int> slope, std::initializer_list<int> offset) {
        return ValueAt(Calibrated().Set(A2h(96), {20, 0}).Set(A2h(84), slope).Set(A2h(86), offset), VALUE, 1);
    };
    EXPECT_EQ(at20({1, 0}, {0, 0}), 20.0f);
    EXPECT_EQ(at20({2, 0}, {0, 0}), 40.0f);
    EXPECT_EQ(at20({1, 128}, {0, 0}), 1.128f * 20.0f);
    EXPECT_EQ(at20({1, 0}, {3, 0}), 23.0f);           // the first byte is the low one
    EXPECT_EQ(at20({1, 0}, {0, 1}), 276.0f);          // 20 + 256
    EXPECT_EQ(at20({1, 0}, {0xFF, 0xFF}), 19.0f);     // -1
    EXPECT_EQ(at20({1, 0}, {0x00, 0x80}), -32748.0f); // 20 - 32768
    EXPECT_EQ(at20({0, 0}, {3, 0}), 20.0f);           // no slope: no offset either
    EXPECT_EQ(at20({0, 5}, {1, 0}), 11.0f);           // 0.5 times 20, + 1
    // The thresholds are calibrated too.
    EXPECT_EQ(ValueAt(Calibrated().Set(A2h(0), {70, 0}).Set(A2h(84), {2, 0}).Set(A2h(86), {5, 0}), HIGH_ALARM, 1),
              145.0f);
}

TEST(TransceiverDiagnosticsTest, CalibrationOfVoltage) {
    // 32768 is 3.2768 V, as a single 3.276799917.
    const auto calibrated = [](std::initializer_list<int> slope, std::initializer_list<int> offset) {
        return ValueAt(Calibrated().Set(A2h(98), {0x80, 0}).Set(A2h(88), slope).Set(A2h(90), offset), VALUE, 2);
    };
    const float x = 32768.0f * 100.0f * 1e-6f;
    EXPECT_EQ(calibrated({1, 0}, {0, 0}), x);
    EXPECT_EQ(calibrated({1, 128}, {0, 0}), 1.128f * x);
    EXPECT_EQ(calibrated({1, 0}, {0, 3}), x + 3.0f); // the first byte is the high one
    EXPECT_EQ(calibrated({1, 0}, {1, 0}), x + 256.0f);
    EXPECT_EQ(calibrated({1, 0}, {0xFF, 0xFE}), x - 2.0f);
    EXPECT_EQ(calibrated({1, 0}, {0x80, 0x00}), x - 32768.0f);
    EXPECT_EQ(calibrated({0, 0}, {0, 3}), x);
}

TEST(TransceiverDiagnosticsTest, CalibrationOfBiasReadsSecondBytesAlone) {
    // 1000 is 2 mA.
    const auto calibrated = [](std::initializer_list<int> slope, std::initializer_list<int> offset) {
        return ValueAt(Calibrated().Set(A2h(100), {0x03, 0xE8}).Set(A2h(76), slope).Set(A2h(78), offset), VALUE, 3);
    };
    EXPECT_EQ(calibrated({1, 0}, {0, 7}), 2.0f); // 01 00 is slope 0: uncalibrated, offset ignored
    EXPECT_EQ(calibrated({0, 1}, {0, 0}), 2.0f); // 00 01 is slope 1
    EXPECT_EQ(calibrated({9, 3}, {0, 0}), 6.0f); // the first byte has no say
    EXPECT_EQ(calibrated({0, 1}, {0, 7}), 9.0f);
    EXPECT_EQ(calibrated({0, 1}, {0xFF, 0x07}), 9.0f);
    EXPECT_EQ(calibrated({0, 1}, {0, 0xFF}), 257.0f); // never negative
    EXPECT_EQ(calibrated({0, 255}, {0, 0}), 510.0f);
}

TEST(TransceiverDiagnosticsTest, TransmitPowerHasNoOffset) {
    // 10000 is 1 mW.
    const auto calibrated = [](std::initializer_list<int> slope, std::initializer_list<int> offset) {
        return ValueAt(Calibrated().Set(A2h(102), {0x27, 0x10}).Set(A2h(80), slope).Set(A2h(82), offset), VALUE, 4);
    };
    const float x = 10000.0f * 0.1f * 0.001f;
    EXPECT_EQ(calibrated({1, 0}, {0, 0}), x);
    EXPECT_EQ(calibrated({1, 0}, {0x7F, 0xFF}), x); // its field has no effect
    EXPECT_EQ(calibrated({2, 25}, {0, 9}), 2.25f * x);
    EXPECT_EQ(calibrated({0, 0}, {0, 9}), x);
    EXPECT_EQ(calibrated({255, 255}, {0, 0}), 255.255f * x);
}

/// Bytes of a coefficient of 0.5, 1, 2, 3 and -1.
constexpr std::initializer_list<int> HALF = {0x3F, 0, 0, 0};
constexpr std::initializer_list<int> ONE = {0x3F, 0x80, 0, 0};
constexpr std::initializer_list<int> TWO = {0x40, 0, 0, 0};
constexpr std::initializer_list<int> THREE = {0x40, 0x40, 0, 0};
constexpr std::initializer_list<int> MINUS_ONE = {0xBF, 0x80, 0, 0};
constexpr std::initializer_list<int> ZERO = {0, 0, 0, 0};

TEST(TransceiverDiagnosticsTest, ReceivePowerCoefficients) {
    // 10000 is 1 mW, and 20000 is 2 mW.
    const auto at2mW = [](std::initializer_list<int> rx4, std::initializer_list<int> rx3,
                          std::initializer_list<int> rx2, std::initializer_list<int> rx1,
                          std::initializer_list<int> rx0) {
        return ValueAt(Image()
                           .Set(A2h(104), {0x4E, 0x20})
                           .Set(A2h(56), rx4)
                           .Set(A2h(60), rx3)
                           .Set(A2h(64), rx2)
                           .Set(A2h(68), rx1)
                           .Set(A2h(72), rx0),
                       VALUE, RX);
    };
    const float x = 20000.0f * 0.1f * 0.001f;
    EXPECT_EQ(at2mW(ZERO, ZERO, ZERO, ONE, ZERO), x);
    EXPECT_EQ(at2mW(ZERO, ZERO, ZERO, HALF, ZERO), 0.5f * x);
    // Plain factors: no power of x.
    EXPECT_EQ(at2mW(ZERO, ZERO, TWO, ZERO, ZERO), 2.0f * x);
    EXPECT_EQ(at2mW(ZERO, THREE, ZERO, ZERO, ZERO), 3.0f * x);
    EXPECT_EQ(at2mW(THREE, ZERO, ZERO, ZERO, ZERO), 3.0f * x);
    EXPECT_EQ(at2mW(ZERO, ZERO, ZERO, ZERO, ONE), 1.0f); // the constant is added
    EXPECT_EQ(at2mW(ZERO, ZERO, ZERO, ZERO, MINUS_ONE), -1.0f);
    EXPECT_EQ(at2mW(THREE, TWO, ONE, HALF, MINUS_ONE), 3.0f * x + 2.0f * x + x + 0.5f * x - 1.0f);
    // All zero, in whatever way: four times the raw value.
    EXPECT_EQ(at2mW(ZERO, ZERO, ZERO, ZERO, ZERO), x + x + x + x);
    EXPECT_EQ(at2mW({0x80, 0, 0, 0}, {0, 0, 0, 1}, {0, 0x7F, 0xFF, 0xFF}, ZERO, ZERO), x + x + x + x);
    // Infinity is the largest value; 2 times that has no single.
    EXPECT_EQ(at2mW({0x7F, 0x80, 0, 0}, ZERO, ZERO, ZERO, ZERO), std::numeric_limits<float>::infinity());
}

TEST(TransceiverDiagnosticsTest, ReceivePowerSumsInOrder) {
    // The largest value from (4), its negative from (3), and 1 from (1): only left to right is the result 1 times
    // x.
    const Image image = Image()
                            .Set(A2h(104), {0x27, 0x10})
                            .Set(A2h(56), {0x7F, 0x7F, 0xFF, 0xFF})
                            .Set(A2h(60), {0xFF, 0x7F, 0xFF, 0xFF})
                            .Set(A2h(68), {0x3F, 0x80, 0, 0});
    EXPECT_EQ(ValueAt(image, VALUE, RX), 10000.0f * 0.1f * 0.001f);
}

TEST(TransceiverDiagnosticsTest, ReceivePowerThresholdsScaleAlike) {
    Image image = Image().Set(A2h(32), {0x27, 0x10, 0x00, 0x64, 0x1F, 0x07, 0x00, 0x9E}).Set(A2h(104), {0x15, 0x87});
    const auto power = [](float raw) { return raw * 0.1f * 0.001f; };
    EXPECT_EQ(ValueAt(image, VALUE, RX), 4.0f * power(5511.0f));
    EXPECT_EQ(ValueAt(image, HIGH_ALARM, RX), 4.0f * power(10000.0f));
    EXPECT_EQ(ValueAt(image, LOW_ALARM, RX), 4.0f * power(100.0f));
    EXPECT_EQ(ValueAt(image, HIGH_WARNING, RX), 4.0f * power(7943.0f));
    EXPECT_EQ(ValueAt(image, LOW_WARNING, RX), 4.0f * power(158.0f));
}

TEST(TransceiverDiagnosticsTest, OtherRowsAndColumnsAreZero) {
    const TransceiverDiagnostics diagnostics = Diagnose(LoadImage("finisar-ftlx8571-auj0rcj"));
    for (const int column : {-1, 0, 6, 100}) {
        for (int row = -1; row < 8; ++row) {
            EXPECT_EQ(diagnostics.getValueAt(row, column), 0.0f) << row << " " << column;
        }
    }
    for (const int row : {-1, 6, 100}) {
        for (int column = 1; column <= 5; ++column) {
            EXPECT_EQ(diagnostics.getValueAt(row, column), 0.0f) << row << " " << column;
        }
    }
}

TEST(TransceiverDiagnosticsTest, NothingForTheQsfpFamily) {
    Image image = LoadImage("finisar-ftlx8571-auj0rcj");
    TransceiverDiagnostics diagnostics = Diagnose(image);
    const float before = diagnostics.getValueAt(VALUE, TEMPERATURE);
    EXPECT_EQ(before, 20.0078125f);
    image.Set(0, {17}).Set(A2h(96), {99, 0});
    diagnostics.CalculateDMIData(image.View());
    EXPECT_EQ(diagnostics.getValueAt(VALUE, TEMPERATURE), before); // unchanged
}

/// Location of a quantity's values: raw numbers between 0 and 255, so that the high byte is 0.
struct Quantity {
    Column column;
    std::size_t live;
    std::size_t highAlarm, lowAlarm, highWarning, lowWarning;
    bool isByteHigh; ///< temperature: the number is in the first byte
};
const Quantity QUANTITIES[] = {
    {TEMPERATURE, 96, 0, 2, 4, 6, true}, {VOLTAGE, 98, 8, 10, 12, 14, false}, {BIAS, 100, 16, 18, 20, 22, false},
    {TX, 102, 24, 26, 28, 30, false},    {RX, 104, 32, 34, 36, 38, false},
};

std::string StatusOf(const Quantity& quantity, int live, int highAlarm, int highWarning, int lowWarning, int lowAlarm) {
    Image image = Calibrated();
    const auto set = [&](std::size_t n, int number) {
        image.Data[A2h(n) + (quantity.isByteHigh ? 0 : 1)] = static_cast<VX_UINT8>(number);
    };
    set(quantity.live, live);
    set(quantity.highAlarm, highAlarm);
    set(quantity.highWarning, highWarning);
    set(quantity.lowWarning, lowWarning);
    set(quantity.lowAlarm, lowAlarm);
    const TransceiverDiagnostics diagnostics = Diagnose(image);
    const std::string status = diagnostics.getDMIStatusAt(1, quantity.column, "?");
    // The same verdict as a number. For the bias, a warning has the number of a fault.
    const float number = diagnostics.getValueAt(STATUS, quantity.column);
    const float expected = status == "Normal" ? 0.0f : status == "Warning" && quantity.column != BIAS ? -0.1f : -0.2f;
    EXPECT_EQ(number, expected) << status;
    return status;
}

struct StatusCase {
    int live;
    const char* others;  ///< columns 1 to 4
    const char* receive; ///< column 5
};
/// High alarm 90, high warning 80, low warning 20, low alarm 10.
const StatusCase
    STATUSES[] =
        {
            {100, "Fault", "Fault"},    {91, "Fault", "Fault"},
            {90, "Fault", "Fault"}, // at or above the high alarm
            {89, "Warning", "Warning"}, {81, "Warning", "Warning"},
            {80, "Warning", "Warning"}, {79, "Normal", "Normal"},
            {50, "Normal", "Normal"},   {21, "Normal", "Normal"},
            {20, "Fault", "Warning"}, // the low warning is the fault level of all but the receive power
            {19, "Fault", "Warning"},   {11, "Fault", "Warning"},
            {10, "Fault", "Fault"},     {9, "Fault", "Fault"},
            {0, "Fault", "Fault"},
};

TEST(TransceiverDiagnosticsTest, StatusAtEveryLevel) {
    for (const Quantity& quantity : QUANTITIES) {
        for (const StatusCase& row : STATUSES) {
            EXPECT_EQ(StatusOf(quantity, row.live, 90, 80, 20, 10), quantity.column == RX ? row.receive : row.others)
                << quantity.column << " at " << row.live;
        }
    }
}

TEST(TransceiverDiagnosticsTest, StatusTestsInOrder) {
    for (const Quantity& quantity : QUANTITIES) {
        SCOPED_TRACE(quantity.column);
        const bool isReceive = quantity.column == RX;
        // All zero: at the high alarm.
        EXPECT_EQ(StatusOf(quantity, 0, 0, 0, 0, 0), "Fault");
        // The alarms come before the warnings.
        EXPECT_EQ(StatusOf(quantity, 50, 50, 60, 20, 10), "Fault");
        // A low warning above the high one: a fault, but for the receive power, where the high warning is first.
        EXPECT_EQ(StatusOf(quantity, 50, 90, 40, 60, 10), isReceive ? "Warning" : "Fault");
        // A low alarm above the low warning: only the receive power looks at it.
        EXPECT_EQ(StatusOf(quantity, 50, 90, 80, 20, 60), isReceive ? "Fault" : "Normal");
        EXPECT_EQ(StatusOf(quantity, 50, 90, 80, 20, 50), isReceive ? "Fault" : "Normal");
        EXPECT_EQ(StatusOf(quantity, 50, 90, 80, 20, 49), "Normal");
    }
}

TEST(TransceiverDiagnosticsTest, StatusElsewhere) {
    const TransceiverDiagnostics diagnostics = Diagnose(Calibrated()); // every column is a fault
    const char destination[] = "destination";
    EXPECT_EQ(diagnostics.getDMIStatusAt(1, 0, destination), destination);
    EXPECT_STREQ(diagnostics.getDMIStatusAt(1, -1, destination), "Fault");
    EXPECT_STREQ(diagnostics.getDMIStatusAt(1, 6, destination), "Fault");
    for (const int row : {-1, 0, 2, 3, 4, 5, 6}) {
        for (int column = -1; column <= 6; ++column) {
            EXPECT_STREQ(diagnostics.getDMIStatusAt(row, column, destination), "Normal") << row << " " << column;
        }
    }
}

} // namespace
