/// @file
/// Questions about bits, and exchanges of bytes.
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

/// Exchanges the two low bytes; the upper half is that of the sign-extended argument.
constexpr int swapshort(VX_INT16 value) {
    const auto bits = static_cast<VX_UINT32>(int{value});
    return static_cast<int>((bits & 0xFFFF0000U) | (bits & 0xFFU) << 8 | (bits >> 8 & 0xFFU));
}

/// The two low bytes exchanged, 0 to 65535. The flag has no effect.
constexpr int swapData(int value, [[maybe_unused]] bool flag = false) {
    return (value & 0xFF) << 8 | (value >> 8 & 0xFF);
}

/// The four bytes reversed.
constexpr int swapint(int value) {
    const auto bits = static_cast<VX_UINT32>(value);
    return static_cast<int>(bits << 24 | (bits & 0xFF00U) << 8 | (bits >> 8 & 0xFF00U) | bits >> 24);
}
