#include "TransceiverDiagnostics.h"

#include "BitFunctions.h"
#include "FieldDecoders.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace {

constexpr char STATUS_NORMAL[] = "Normal";
constexpr char STATUS_WARNING[] = "Warning";
constexpr char STATUS_FAULT[] = "Fault";

/// Indices of a quantity in the arrays.
enum Quantity : int { TEMPERATURE, VOLTAGE, TX_BIAS, TX_POWER, RX_POWER };

using Values = float[5];

/// 2 to the power of a normal double's exponent. (The mathematics library is not worth loading for it.)
double PowerOfTwo(int exponent) {
    return std::bit_cast<double>(static_cast<VX_UINT64>(1023 + exponent) << 52);
}

/// A field of two bytes as four hexadecimal digits, the first byte first.
const char* Digits(const ModuleImage& image, VX_UINT16 offset, DecodedText& text) {
    text[0] = '\0';
    return GetFieldData(image, nullptr, FieldHex2, offset, text);
}

int Number(const ModuleImage& image, VX_UINT16 offset) {
    DecodedText text;
    return hexToDec(Digits(image, offset, text));
}

/// The same with the first byte low, and the sign of the second.
VX_INT16 SwappedNumber(const ModuleImage& image, VX_UINT16 offset) {
    return static_cast<VX_INT16>(swapshort(static_cast<VX_INT16>(Number(image, offset))));
}

/// The number in the low 16 bits of a hexadecimal text.
int Low16(const char* text) {
    return hexToDec(text) & 0xFFFF;
}

/// A quantity whose bytes are plain numbers: value, high alarm, high warning, low warning, low alarm.
struct LinearQuantity {
    Quantity quantity;
    float (*calculate)(const char* digits);
    VX_UINT16 offsets[5];
};
constexpr LinearQuantity LINEAR_QUANTITIES[] = {
    {VOLTAGE, VoltageCalc, {A2 + 98, A2 + 8, A2 + 12, A2 + 14, A2 + 10}},
    {TX_BIAS, TxBiasCalc, {A2 + 100, A2 + 16, A2 + 20, A2 + 22, A2 + 18}},
    {TX_POWER, TxRxPowerCalc, {A2 + 102, A2 + 24, A2 + 28, A2 + 30, A2 + 26}},
    {RX_POWER, TxRxPowerCalc, {A2 + 104, A2 + 32, A2 + 36, A2 + 38, A2 + 34}},
};

/// The first byte of a threshold counts degrees and the second is no fraction: bit 0 of it halves the number.
float HighTemperature(const ModuleImage& image, VX_UINT16 offset) {
    const int v = SwappedNumber(image, offset);
    if (findbit(static_cast<VX_UINT32>(v), 8, true) == 1) {
        return static_cast<float>(v * 0.5) - 256.0f; // the product is double
    }
    return static_cast<float>(v);
}

/// Below zero from 128 degrees on, as a high threshold never is: the same bytes give two temperatures.
float LowTemperature(const ModuleImage& image, VX_UINT16 offset) {
    const int v = SwappedNumber(image, offset);
    const auto bits = static_cast<VX_UINT32>(v);
    if (GetMSB(bits) >= 8) {
        return static_cast<float>(v) - 512.0f;
    }
    return findbit(bits, 7, false) == 1 ? static_cast<float>(v) - 256.0f : static_cast<float>(v);
}

void SetTemperatures(Values& values, const ModuleImage& image) {
    // Both bytes count as unsigned: the value is never below zero.
    values[0] = static_cast<float>(getDataValue(image, "Temperature MSB")) +
                static_cast<float>(getDataValue(image, "Temperature LSB")) * 0.00390625f;
    values[1] = HighTemperature(image, A2 + 0);
    values[2] = HighTemperature(image, A2 + 4);
    values[3] = LowTemperature(image, A2 + 6);
    values[4] = LowTemperature(image, A2 + 2);
}

} // namespace

float int_bits_to_float(VX_UINT32 bits) {
    const bool isNegative = bits >> 31 != 0;
    const auto exponent = static_cast<int>(bits >> 23 & 0xFF);
    VX_UINT32 mantissa = bits & 0x7FFFFF;
    if (exponent == 255) {
        return isNegative ? -3.4028235e38f : 3.4028235e38f;
    }
    // Below the smallest normal value the scale is 0 before it is doubled.
    auto scale = static_cast<float>(PowerOfTwo(exponent - 150));
    if (exponent == 0) {
        scale *= 2.0f;
    } else {
        mantissa |= 0x800000;
    }
    const float value = static_cast<float>(mantissa) * scale;
    return isNegative ? -value : value;
}

float buildFloat(int bits) {
    return int_bits_to_float(static_cast<VX_UINT32>(bits));
}

float buildSlope(int value) {
    char text[16];
    std::snprintf(text, sizeof text, "%d.%d", value & 0xFF, value >> 8 & 0xFF);
    return std::strtof(text, nullptr);
}

float VoltageCalc(const char* text) {
    return static_cast<float>(Low16(text)) * 100.0f * 1e-6f;
}

float TxBiasCalc(const char* text) {
    const auto value = static_cast<float>(Low16(text));
    return (value + value) * 0.001f;
}

float TxRxPowerCalc(const char* text) {
    return static_cast<float>(Low16(text)) * 0.1f * 0.001f;
}

void TransceiverDiagnostics::CalculateDMIData(const ModuleImage& image) {
    if (image.IsQsfp()) {
        return;
    }
    SetTemperatures(valueArray[TEMPERATURE], image);
    for (const LinearQuantity& row : LINEAR_QUANTITIES) {
        for (std::size_t index = 0; index < std::size(row.offsets); ++index) {
            DecodedText text;
            valueArray[row.quantity][index] = row.calculate(Digits(image, row.offsets[index], text));
        }
    }

    slopeArray[TEMPERATURE] = buildSlope(SwappedNumber(image, A2 + 84));
    offsetArray[TEMPERATURE] = static_cast<float>(SwappedNumber(image, A2 + 86));
    slopeArray[VOLTAGE] = buildSlope(swapData(Number(image, A2 + 88)));
    offsetArray[VOLTAGE] = static_cast<float>(static_cast<VX_INT16>(Number(image, A2 + 90)));
    // The last byte alone: a slope of 1 in the first byte counts as none.
    slopeArray[TX_BIAS] = buildSlope(getDataValue(image, "Tx_I(Slope)"));
    offsetArray[TX_BIAS] = static_cast<float>(getDataValue(image, "Tx_I(Offset)"));
    slopeArray[TX_POWER] = buildSlope(swapData(Number(image, A2 + 80)));
    // The field of the slope again, and of its four reversed bytes the two that are always 0: clients know no offset
    // here.
    offsetArray[TX_POWER] = static_cast<float>(static_cast<VX_INT16>(swapint(Number(image, A2 + 80))));

    for (int power = 0; power < 5; ++power) {
        DecodedText text = "";
        const auto offset = static_cast<VX_UINT16>(A2 + 72 - 4 * power);
        rxPowerArray[power] = buildFloat(hexToDec(GetFieldData(image, nullptr, FieldHex4, offset, text)));
    }
}

float TransceiverDiagnostics::getValueAt(int row, int column) const {
    if (row < ROW_VALUE || row > ROW_LOW_ALARM || column < COLUMN_TEMPERATURE || column > COLUMN_RX_POWER) {
        return 0.0f;
    }
    if (row == ROW_STATUS) {
        const char* status = getDMIStatusAt(row, column, nullptr);
        if (status == STATUS_NORMAL) {
            return 0.0f;
        }
        return status == STATUS_WARNING && column != COLUMN_TX_BIAS ? -0.1f : -0.2f;
    }
    const int quantity = column - COLUMN_TEMPERATURE;
    const float x = valueArray[quantity][row == ROW_VALUE ? 0 : row - 1];
    if (column == COLUMN_RX_POWER) {
        const float(&rx)[5] = rxPowerArray;
        // No powers of x, and four times the value where nothing is calibrated: clients know both.
        if (std::all_of(rx, rx + 5, [](float coefficient) { return coefficient == 0.0f; })) {
            return x + x + x + x + rx[0];
        }
        return rx[4] * x + rx[3] * x + rx[2] * x + rx[1] * x + rx[0];
    }
    // No slope means no calibration: the offset goes with it.
    return slopeArray[quantity] == 0.0f ? x : slopeArray[quantity] * x + offsetArray[quantity];
}

const char* TransceiverDiagnostics::getDMIStatusAt(int row, int column, const char* destination) const {
    if (row != ROW_STATUS) {
        return STATUS_NORMAL;
    }
    if (column == 0) {
        return destination;
    }
    if (column < COLUMN_TEMPERATURE || column > COLUMN_RX_POWER) {
        return STATUS_FAULT;
    }
    const float value = getValueAt(ROW_VALUE, column);
    const float highWarning = getValueAt(ROW_HIGH_WARNING, column);
    const float lowWarning = getValueAt(ROW_LOW_WARNING, column);
    if (value >= getValueAt(ROW_HIGH_ALARM, column)) {
        return STATUS_FAULT;
    }
    if (column != COLUMN_RX_POWER) {
        // The low alarm is never looked at: the low warning is the level of the fault.
        if (value <= lowWarning) {
            return STATUS_FAULT;
        }
        return value < highWarning ? STATUS_NORMAL : STATUS_WARNING;
    }
    if (value <= getValueAt(ROW_LOW_ALARM, column)) {
        return STATUS_FAULT;
    }
    if (value >= highWarning) {
        return STATUS_WARNING;
    }
    return value > lowWarning ? STATUS_NORMAL : STATUS_WARNING;
}
