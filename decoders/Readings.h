/// @file
/// Monitored values, the levels at which they warn and alarm, and the verdict on them (SFF-8472, SFF-8636).
#pragma once

#include "Units.h"

namespace decoders {

template <typename Value> struct Thresholds {
    Value highAlarm;
    Value lowAlarm;
    Value highWarning;
    Value lowWarning;

    friend constexpr bool operator==(const Thresholds&, const Thresholds&) = default;
};

enum class Verdict { OK, LOW_WARNING, HIGH_WARNING, LOW_ALARM, HIGH_ALARM };

/// Alarms come before warnings, the high one before the low one. A value at a level has not crossed it yet.
template <typename Value> constexpr Verdict Judge(Value value, const Thresholds<Value>& thresholds) {
    if (value > thresholds.highAlarm) {
        return Verdict::HIGH_ALARM;
    }
    if (value < thresholds.lowAlarm) {
        return Verdict::LOW_ALARM;
    }
    if (value > thresholds.highWarning) {
        return Verdict::HIGH_WARNING;
    }
    return value < thresholds.lowWarning ? Verdict::LOW_WARNING : Verdict::OK;
}

template <typename Value> struct Reading {
    Value value;
    /// None when they weren't read, and when the module leaves the fields of all four zero.
    std::optional<Thresholds<Value>> thresholds;

    /// None without thresholds.
    constexpr std::optional<Verdict> Judged() const {
        return thresholds ? std::optional(Judge(value, *thresholds)) : std::nullopt;
    }
};

} // namespace decoders
