#include "TransceiverDiagnostics.h"

#include "BitFunctions.h"
#include "ReportArithmetic.h"
#include "SfpMemory.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <iterator>

namespace {

namespace sff8472 = decoders::sff8472;
using decoders::Bytes;
using sff8472::MonitoredField;

constexpr char STATUS_NORMAL[] = "Normal";
constexpr char STATUS_WARNING[] = "Warning";
constexpr char STATUS_FAULT[] = "Fault";

/// Indices of a quantity in the arrays.
enum Quantity : int { TEMPERATURE, VOLTAGE, TX_BIAS, TX_POWER, RX_POWER };

using Values = float[5];

/// 2 to the power of a normal double's exponent, without loading the mathematics library.
double PowerOfTwo(int exponent) {
    return std::bit_cast<double>(static_cast<VX_UINT64>(1023 + exponent) << 52);
}

/// A quantity whose bytes are linear in its value.
struct LinearQuantity {
    Quantity quantity;
    float (*calculate)(VX_UINT16 count);
    const MonitoredField& field;
};
constexpr LinearQuantity LINEAR_QUANTITIES[] = {
    {VOLTAGE, VoltageCalc, sff8472::VOLTAGE},
    {TX_BIAS, TxBiasCalc, sff8472::BIAS},
    {TX_POWER, TxRxPowerCalc, sff8472::TRANSMIT_POWER},
    {RX_POWER, TxRxPowerCalc, sff8472::RECEIVE_POWER},
};

void SetLinear(Values& values, Bytes a2, const LinearQuantity& quantity) {
    const MonitoredField& field = quantity.field;
    const std::size_t offsets[] = {field.value, field.highAlarm, field.highWarning, field.lowWarning, field.lowAlarm};
    std::transform(std::begin(offsets), std::end(offsets), values,
                   [&](std::size_t offset) { return quantity.calculate(a2.BigU16(offset)); });
}

/// The first byte is the low one and counts degrees. The second byte is not a fraction: its bit 0 halves the
/// number. By SFF-8472 the first byte is the high one, and signed.
float HighTemperature(Bytes a2, std::size_t offset) {
    const int v = a2.LittleS16(offset);
    if (findbit(static_cast<VX_UINT32>(v), 8, true) == 1) {
        return static_cast<float>(v * 0.5) - 256.0f; // the product is double
    }
    return static_cast<float>(v);
}

/// Negative from 128 degrees on, unlike a high threshold: the same bytes give two different temperatures.
float LowTemperature(Bytes a2, std::size_t offset) {
    const int v = a2.LittleS16(offset);
    const auto bits = static_cast<VX_UINT32>(v);
    if (GetMSB(bits) >= 8) {
        return static_cast<float>(v) - 512.0f;
    }
    return findbit(bits, 7, false) == 1 ? static_cast<float>(v) - 256.0f : static_cast<float>(v);
}

void SetTemperatures(Values& values, Bytes a2) {
    const MonitoredField& field = sff8472::TEMPERATURE;
    // Both bytes are unsigned: the value is never negative. By SFF-8472 it is signed.
    values[0] = static_cast<float>(a2[field.value]) + static_cast<float>(a2[field.value + 1]) * 0.00390625f;
    values[1] = HighTemperature(a2, field.highAlarm);
    values[2] = HighTemperature(a2, field.highWarning);
    values[3] = LowTemperature(a2, field.lowWarning);
    values[4] = LowTemperature(a2, field.lowAlarm);
}

float SlopeAt(Bytes a2, std::size_t offset) {
    return buildSlope(a2[offset], a2[offset + 1]);
}

} // namespace

float int_bits_to_float(VX_UINT32 bits) {
    const bool isNegative = bits >> 31 != 0;
    const auto exponent = static_cast<int>(bits >> 23 & 0xFF);
    VX_UINT32 mantissa = bits & 0x7FFFFF;
    if (exponent == 255) {
        return isNegative ? -3.4028235e38f : 3.4028235e38f;
    }
    // For subnormal values the scale underflows to 0 before it is doubled.
    auto scale = static_cast<float>(PowerOfTwo(exponent - 150));
    if (exponent == 0) {
        scale *= 2.0f;
    } else {
        mantissa |= 0x800000;
    }
    const float value = static_cast<float>(mantissa) * scale;
    return isNegative ? -value : value;
}

float buildSlope(VX_UINT8 first, VX_UINT8 second) {
    char text[16];
    std::snprintf(text, sizeof text, "%d.%d", first, second);
    return std::strtof(text, nullptr);
}

void TransceiverDiagnostics::CalculateDMIData(const ModuleImage& image) {
    if (image.IsQsfp()) {
        return;
    }
    const Bytes a2 = image.Sub(A2);
    SetTemperatures(valueArray[TEMPERATURE], a2);
    for (const LinearQuantity& row : LINEAR_QUANTITIES) {
        SetLinear(valueArray[row.quantity], a2, row);
    }

    // By SFF-8472 the first byte of the temperature's offset is the high one, and offsets are in raw units, not in
    // degrees, volts and milliamperes.
    slopeArray[TEMPERATURE] = SlopeAt(a2, sff8472::TEMPERATURE_SLOPE);
    offsetArray[TEMPERATURE] = static_cast<float>(a2.LittleS16(sff8472::TEMPERATURE_OFFSET));
    slopeArray[VOLTAGE] = SlopeAt(a2, sff8472::VOLTAGE_SLOPE);
    offsetArray[VOLTAGE] = static_cast<float>(a2.BigS16(sff8472::VOLTAGE_OFFSET));
    // Only the last byte counts: a slope of 1 in the first byte is ignored.
    slopeArray[TX_BIAS] = static_cast<float>(a2[sff8472::BIAS_SLOPE + 1]);
    offsetArray[TX_BIAS] = static_cast<float>(a2[sff8472::BIAS_OFFSET + 1]);
    slopeArray[TX_POWER] = SlopeAt(a2, sff8472::TRANSMIT_POWER_SLOPE);
    offsetArray[TX_POWER] = 0.0f; // Required: parsers depend on the missing offset

    for (std::size_t power = 0; power < std::size(rxPowerArray); ++power) {
        rxPowerArray[power] = int_bits_to_float(a2.BigU32(sff8472::RX_POWER_0 - 4 * power));
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
        // Required: no powers of x, unlike SFF-8472, and four times the value if uncalibrated; parsers depend on
        // both.
        if (std::all_of(rx, rx + 5, [](float coefficient) { return coefficient == 0.0f; })) {
            return x + x + x + x + rx[0];
        }
        return rx[4] * x + rx[3] * x + rx[2] * x + rx[1] * x + rx[0];
    }
    // Without a slope there is no calibration, and the offset is ignored. The module's external calibration flag is
    // not used.
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
    // A value equal to a threshold has crossed it; by SFF-8472 it hasn't.
    if (value >= getValueAt(ROW_HIGH_ALARM, column)) {
        return STATUS_FAULT;
    }
    if (column != COLUMN_RX_POWER) {
        // The low alarm is not used: the low warning is the threshold of the fault.
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
