/// @file
/// Quantities with units, and conversions from the units of modules (SFF-8472, SFF-8636 and FC-LS alike).
#pragma once

#include <compare>
#include <optional>

namespace decoders {

template <typename Unit> struct Quantity {
    double value = 0;

    friend constexpr auto operator<=>(const Quantity&, const Quantity&) = default; // NOLINT(modernize-use-nullptr)
};

using Celsius = Quantity<struct CelsiusUnit>;
using Volts = Quantity<struct VoltUnit>;
using Milliamperes = Quantity<struct MilliampereUnit>;
/// Optical power. External calibration can make it slightly negative without light.
using Milliwatts = Quantity<struct MilliwattUnit>;
/// Optical power relative to 1 mW.
using Dbm = Quantity<struct DbmUnit>;
using Nanometres = Quantity<struct NanometreUnit>;

/// Conversions from raw counts. Counts of calibrated values needn't be integers.
constexpr Celsius CelsiusFrom256ths(double count) {
    return {count / 256};
}
constexpr Volts VoltsFrom100Microvolts(double count) {
    return {count / 10000};
}
constexpr Milliamperes MilliamperesFrom2Microamperes(double count) {
    return {count / 500};
}
constexpr Milliwatts MilliwattsFromTenthMicrowatts(double count) {
    return {count / 10000};
}

/// None for a power of 0 or less.
std::optional<Dbm> DbmOf(Milliwatts power);

} // namespace decoders
