/// @file
/// The diagnostic page of a transceiver in physical values.
///
/// Every step is single precision, in the stated order, unless it says double. The live temperature, the temperature
/// thresholds, calibration and the verdicts depart from SFF-8472 on purpose: these are the values that clients know.
/// `decoders::DecodeSfpDiagnostics` has the standard's.
#pragma once

#include "ModuleImage.h"

/// The IEEE 754 single of these bits, as a receive power coefficient. Infinities and NaNs become the largest finite
/// value with their sign, and what is below the smallest normal value becomes 0.
float int_bits_to_float(VX_UINT32 bits);

/// The two bytes of a slope as decimal numbers with a point between them. So the second byte is no fraction of 256: 1
/// and 128 give 1.128, where SFF-8472 has 1.5.
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
    /// Reads the values of the image. Nothing changes for a module of the QSFP family: it has no such page.
    void CalculateDMIData(const ModuleImage& image);

    /// The calibrated value. 0.0 for any other row or column. In the status row: 0.0 normal, -0.1 warning, -0.2 fault.
    float getValueAt(int row, int column) const;

    /// "Normal", "Warning" or "Fault". `destination` is the result for column 0.
    const char* getDMIStatusAt(int row, int column, const char* destination) const;

private:
    float valueArray[5][5] = {}; ///< temperature to receive power; value, high alarm, high warning, low warning, alarm
    float slopeArray[4] = {};    ///< temperature to transmit power
    float offsetArray[4] = {};
    float rxPowerArray[5] = {}; ///< `Rx_PWR(0)` to `Rx_PWR(4)`
};
