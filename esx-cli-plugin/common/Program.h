/// @file
/// The program's mode flags and signal handlers.
#pragma once

#include "vexapi.h"

/// Parses the mode words before the command, "-debug" and "-eng", ignoring case. Returns their bits of `g_uFlags`,
/// and in `firstArg` the index of the first other word, or `argc`.
VX_UINT32 ChkProgMode(int argc, char** argv, unsigned* firstArg);

/// SIGINT, SIGABRT and SIGTERM end the process like an unhandled SIGINT; SIGQUIT requests a new prompt.
void HandlerRoutine(int signal);

/// Installs `HandlerRoutine`. Its signals interrupt a read of the prompt.
void InstallSignalHandlers();
