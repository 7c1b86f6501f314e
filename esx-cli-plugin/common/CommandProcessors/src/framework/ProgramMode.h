/// @file
/// The mode of a run.
#pragma once

#include "vexapi.h"

#include <atomic>

/// Bits of `g_uFlags`.
enum ProgramFlag : VX_UINT32 {
    FLAG_DEBUG = 1,        ///< "-debug": accepted and stored, but unused
    FLAG_QUIT = 2,         ///< tested by `main` and the prompt; never set
    FLAG_COMMAND_LINE = 4, ///< one command, no prompt
    FLAG_ENGINEERING = 8,  ///< "-eng": nodes with flag bit 0 are usable and listed
    FLAG_BREAK = 16,       ///< SIGQUIT: back to the prompt
};
extern std::atomic<VX_UINT32> g_uFlags;
inline bool HasProgramFlag(ProgramFlag flag) {
    return (g_uFlags & flag) != 0;
}
