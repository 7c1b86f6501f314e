/// @file
/// Bit queries.
#pragma once

#include "vexapi.h"

#include <bit>

/// -1, 0 or 1.
constexpr int Sign(int value) {
    return (value > 0) - (value < 0);
}

/// Index of the highest set bit; 0 for the values 0 and 1.
constexpr int GetMSB(VX_UINT32 value) {
    return value == 0 ? 0 : static_cast<int>(std::bit_width(value)) - 1;
}

/// State of a bit, 0 or 1; -1 for a bit number above 7, or 15 with `isWide`, or below 0.
constexpr int findbit(VX_UINT32 value, int bit, bool isWide) {
    const int highest = isWide ? 15 : 7;
    return bit < 0 || bit > highest ? -1 : static_cast<int>(value >> bit & 1U);
}
