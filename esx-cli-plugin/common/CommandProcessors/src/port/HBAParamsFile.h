/// @file
/// Staged NVRAM parameters of a port: the keys of their cache file, and the options that change them.
#pragma once

#include "CmdLineParser.h"
#include "CommandRows.h"
#include "StagedSettings.h"
#include "vexapi.h"

/// Values of parameters in options and reports.
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

inline constexpr CodeText HBA_CONNECTIONS[] = {
    {0, OUT_LOOP_ONLY}, {1, OUT_POINT_TO_POINT_ONLY}, {2, OUT_LOOP_PREFERRED}};
/// In the library's order, not by speed.
inline constexpr CodeText HBA_DATA_RATES[] = {
    {0, OUT_1GBPS}, {1, OUT_2GBPS},  {2, OUT_AUTO},   {3, OUT_4GBPS},
    {4, OUT_8GBPS}, {5, OUT_16GBPS}, {6, OUT_32GBPS}, {7, OUT_64GBPS},
};
inline constexpr CodeText HBA_OPERATION_MODES[] = {
    {0, OUT_EVERY_COMPLETION}, {5, OUT_TIMER_EXPIRES}, {6, OUT_TIMER_EXPIRES_OR_IDLE}};
inline constexpr CodeText HBA_FRAME_SIZES[] = {{512, "512"}, {1024, "1024"}, {2048, "2048"}, {2112, "2112"}};

/// Whether an adapter has a parameter.
bool HasHardLoopId(__CHIPPROPERTY chip);
bool HasOperationMode(__CHIPPROPERTY chip);
bool HasLR(__CHIPPROPERTY chip);

/// Arguments of `setFile`: the port, then the options in the order of their checks.
inline constexpr Argument HBA_PARAMS_ARGUMENTS[] = {
    PORT_ARGUMENT,
    {"--connection-options", "-c", "topology", ArgumentKind::WORD, false, HBA_CONNECTIONS},
    {"--data-rate", "-d", "speed of the port", ArgumentKind::WORD, false, HBA_DATA_RATES},
    {"--operation-mode", "-m", "when the adapter interrupts the host", ArgumentKind::WORD, false, HBA_OPERATION_MODES},
    {"--frame-size", "-z", "size of a frame", ArgumentKind::WORD, false, HBA_FRAME_SIZES, 0, 0, "bytes"},
    {"--hard-loop-id", "-l", "identifier on a loop", ArgumentKind::NUMBER, false, {}, 0, 125},
    {"--loop-reset-delay", "-r", "wait after a reset of the loop", ArgumentKind::NUMBER, false, {}, 0, 255, "seconds"},
    {"--interrupt-delay-timer", "-e", "delay of an interrupt", ArgumentKind::NUMBER, false, {}, 0, 255, "100 us"},
    {"--execution-throttle", "-x", "commands at a time", ArgumentKind::NUMBER, false, {}, 0, 65535},
    {"--login-retry-count", "-u", "attempts to log in", ArgumentKind::NUMBER, false, {}, 0, 255},
    {"--port-down-retry-count", "-w", "attempts while a port is down", ArgumentKind::NUMBER, false, {}, 0, 255},
    {"--link-down-timeout", "-o", "wait for a link that is down", ArgumentKind::NUMBER, false, {}, 0, 240, "seconds"},
    {"--luns-per-target", "-y", "LUNs of a target", ArgumentKind::NUMBER, false, {}, 0, 256},
    {"--enable-bios", "-b", "whether the adapter's BIOS runs", ArgumentKind::WORD, false, INVERTED_FLAG_WORDS},
    {"--enable-hard-loop-id", "-p", "whether the hard loop identifier is used", ArgumentKind::WORD, false, FLAG_WORDS},
    {"--enable-fc-tape", "-f", "whether FC tape is supported", ArgumentKind::WORD, false, FLAG_WORDS},
    {"--enable-lip-full-login", "-g", "whether a LIP is followed by a full login", ArgumentKind::WORD, false,
     FLAG_WORDS},
    {"--enable-target-reset", "-a", "whether targets are reset", ArgumentKind::WORD, false, FLAG_WORDS},
    {"--enable-lr", "-k", "whether long range is on", ArgumentKind::WORD, false, FLAG_WORDS},
    {"--enable-fabric-assigned-wwn", "-n", "whether the fabric assigns the port name", ArgumentKind::WORD, false,
     FLAG_WORDS},
    {"--enable-fwcm", "-q", "whether congestion mitigation is on", ArgumentKind::WORD, false, INVERTED_FLAG_WORDS},
    {"--virtual-lane", "-j", "whether virtual lanes are on", ArgumentKind::WORD, false, FLAG_WORDS},
};

/// Cache file of the port that the user typed as `identifier`.
StagedFile HBAParamsFile(const char* identifier);

/// The keys of the file, in the order of its lines.
std::span<const StagedKey<_VEXAPI_HBAParameters>> HBAParamsKeys();

/// Checks the options in `args` in a fixed order and merges all or none of them into the file. Returns the result
/// code of the first rejection; absent options are ignored.
ResultCode UpdateHBAParamsInFile(const TavuStringArray& args, const StagedFile& file,
                                 const _vexapi_protocol_t& protocol);
