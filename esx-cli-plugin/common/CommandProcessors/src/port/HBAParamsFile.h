/// @file
/// NVRAM parameters of a port on their way between runs: the keys of their cache file, and the options that
/// change them.
#pragma once

#include "StagedSettings.h"
#include "vexapi.h"

/// Words of parameters, as options take them and reports show them.
inline constexpr char OUT_LOOP_ONLY[] = "Loop_Only";
inline constexpr char OUT_POINT_TO_POINT_ONLY[] = "Point_To_Point_Only";
inline constexpr char OUT_LOOP_PREFERRED[] = "Loop_Preferred_Otherwise_Point_To_Point";
inline constexpr char OUT_AUTO[] = "Auto";
inline constexpr char OUT_1GBPS[] = "1_Gbps";
inline constexpr char OUT_2GBPS[] = "2_Gbps";
inline constexpr char OUT_4GBPS[] = "4_Gbps";
inline constexpr char OUT_8GBPS[] = "8_Gbps";
inline constexpr char OUT_10GBPS[] = "10_Gbps";
inline constexpr char OUT_16GBPS[] = "16_Gbps";
inline constexpr char OUT_32GBPS[] = "32_Gbps";
inline constexpr char OUT_64GBPS[] = "64_Gbps";
inline constexpr char OUT_EVERY_COMPLETION[] = "Interrupt_For_Every_I/O_Completion";
inline constexpr char OUT_TIMER_EXPIRES[] = "Interrupt_When_Interrupt_Delay_Timer_Expires";
inline constexpr char OUT_TIMER_EXPIRES_OR_IDLE[] = "Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O";

/// The cache file of the port that the user typed as `identifier`.
StagedFile HBAParamsFile(const char* identifier);

/// The keys of the file, in the order of its lines.
std::span<const StagedKey<_VEXAPI_HBAParameters>> HBAParamsKeys();

/// Checks the options among `args` in a fixed order and merges them into the file: all or nothing. Gives the
/// result code of the first refusal; an option that is absent does nothing.
VX_UINT32 UpdateHBAParamsInFile(const TavuStringArray& args, const StagedFile& file,
                                const _vexapi_protocol_t& protocol);
