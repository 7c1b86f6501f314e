/// @file
/// Texts common to all families.
#pragma once

inline constexpr char OUT_MESSAGE[] = "Message";
inline constexpr char OUT_SUCCESS[] = "Success";
inline constexpr char OUT_REBOOT_REQUIRED[] = "Reboot Required";
inline constexpr char OUT_DATA[] = "Data";
inline constexpr char OUT_NA[] = "NA";
inline constexpr char OUT_UNKNOWN[] = "Unknown";
inline constexpr char OUT_TRUE[] = "true";
inline constexpr char OUT_FALSE[] = "false";
