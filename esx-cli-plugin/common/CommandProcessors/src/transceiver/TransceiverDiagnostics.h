/// @file
/// The diagnostic page of a transceiver in physical values.
///
/// Every step is single precision, in the stated order, unless it says double. Temperature thresholds, calibration
/// slopes, the offset of the transmit power and all of the receive power depart from SFF-8472 on purpose: these are
/// the values that clients know.
#pragma once

#include "ModuleImage.h"

/// The IEEE 754 single of these bits. Infinities and NaNs become the largest finite value with their sign, and what
/// is below the smallest normal value becomes 0.
float int_bits_to_float(VX_UINT32 bits);
/// The same for a receive power coefficient.
float buildFloat(int bits);

/// The low byte of `value` and the second byte of it, both as decimal numbers, with a point between them. So the
/// second byte is no fraction of 256: 1 and 128 give 1.128.
float buildSlope(int value);

/// Volts of a hexadecimal text in units of 100 microvolts.
float VoltageCalc(const char* text);
/// Milliamperes of a hexadecimal text in units of 2 microamperes.
float TxBiasCalc(const char* text);
/// Milliwatts of a hexadecimal text in units of 0.1 microwatts.
float TxRxPowerCalc(const char* text);

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
