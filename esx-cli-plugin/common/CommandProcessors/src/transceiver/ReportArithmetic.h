/// @file
/// The arithmetic that the reports of transceivers are known by: single precision in every step, in this order of
/// steps, so that the last printed decimals are as clients know them. For true values see `decoders`.
#pragma once

#include "vexapi.h"

/// Volts of a count of 100 microvolts.
constexpr float VoltageCalc(VX_UINT16 count) {
    return static_cast<float>(count) * 100.0F * 1e-6F;
}

/// Milliamperes of a count of 2 microamperes.
constexpr float TxBiasCalc(VX_UINT16 count) {
    return static_cast<float>(count * 2) * 0.001F;
}

/// Milliwatts of a count of 0.1 microwatts.
constexpr float TxRxPowerCalc(VX_UINT16 count) {
    return static_cast<float>(count) * 0.1F * 0.001F;
}
