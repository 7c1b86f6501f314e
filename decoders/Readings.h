/// @file
/// Monitored values, their warning and alarm thresholds, and the resulting verdicts (SFF-8472, SFF-8636).
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

/// Alarms take precedence over warnings, and high over low. A value equal to a threshold has not crossed it.
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
    /// None if not read, or if all four fields are zero.
    std::optional<Thresholds<Value>> thresholds;

    /// None without thresholds.
    constexpr std::optional<Verdict> Judged() const {
        return thresholds ? std::optional(Judge(value, *thresholds)) : std::nullopt;
    }
};

} // namespace decoders
