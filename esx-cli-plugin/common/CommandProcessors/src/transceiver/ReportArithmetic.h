/// @file
/// The arithmetic of the transceiver reports. Required: every step is single precision, in this order; parsers
/// depend on the last printed decimals. For exact values see `decoders`.
#pragma once

#include "vexapi.h"

/// Volts from a count of 100 microvolts.
constexpr float VoltageCalc(VX_UINT16 count) {
    return static_cast<float>(count) * 100.0F * 1e-6F;
}

/// Milliamperes from a count of 2 microamperes.
constexpr float TxBiasCalc(VX_UINT16 count) {
    return static_cast<float>(count * 2) * 0.001F;
}

/// Milliwatts from a count of 0.1 microwatts.
constexpr float TxRxPowerCalc(VX_UINT16 count) {
    return static_cast<float>(count) * 0.1F * 0.001F;
}
