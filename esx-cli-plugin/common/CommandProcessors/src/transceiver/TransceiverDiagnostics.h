/// @file
/// The diagnostic page of a transceiver in physical values.
///
/// Required: every step is single precision, in the stated order, unless stated to be double; and the live
/// temperature, the temperature thresholds, calibration and verdicts deviate from SFF-8472. Parsers depend on these
/// values. For the standard's values see `decoders::DecodeSfpDiagnostics`.
#pragma once

#include "ModuleImage.h"

/// The IEEE 754 single with these bits, for a receive power coefficient. Infinities and NaNs become the largest
/// finite value with their sign; subnormal values become 0.
float int_bits_to_float(VX_UINT32 bits);

/// Joins the two bytes of a slope as decimal numbers with a decimal point. So the second byte is not a fraction of
/// 256: 1 and 128 yield 1.128, where SFF-8472 has 1.5.
float buildSlope(VX_UINT8 first, VX_UINT8 second);

/// Rows of `getValueAt`. The status is a row too.
enum DiagnosticRow : int {
    ROW_VALUE = 0,
    ROW_STATUS = 1,
    ROW_HIGH_ALARM = 2,
    ROW_HIGH_WARNING = 3,
    ROW_LOW_WARNING = 4,
    ROW_LOW_ALARM = 5,
};
enum DiagnosticColumn : int {
    COLUMN_TEMPERATURE = 1, ///< degrees Celsius
    COLUMN_VOLTAGE = 2,     ///< volts
    COLUMN_TX_BIAS = 3,     ///< milliamperes
    COLUMN_TX_POWER = 4,    ///< milliwatts
    COLUMN_RX_POWER = 5,    ///< milliwatts
};

/// The diagnostic values of one module of the SFP family.
class TransceiverDiagnostics {
public:
    /// Calculates the values of an image. Does nothing for a QSFP module, which has no such page.
    void CalculateDMIData(const ModuleImage& image);

    /// The calibrated value; 0.0 for an invalid row or column. In the status row: 0.0 normal, -0.1 warning, -0.2
    /// fault.
    float getValueAt(int row, int column) const;

    /// "Normal", "Warning" or "Fault". Returns `destination` for column 0.
    const char* getDMIStatusAt(int row, int column, const char* destination) const;

private:
    float valueArray[5][5] = {}; ///< temperature to receive power; value, high alarm, high warning, low warning, alarm
    float slopeArray[4] = {};    ///< temperature to transmit power
    float offsetArray[4] = {};
    float rxPowerArray[5] = {}; ///< `Rx_PWR(0)` to `Rx_PWR(4)`
};
