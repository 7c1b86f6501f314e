/// @file
/// The program's mode flags and signals.
#pragma once

#include "vexapi.h"

/// Reads the words ahead of the command, in any letter case: "-debug" and "-eng". Gives their bits of
/// `g_uFlags`, and in `firstArg` the index of the first other word, or `argc`.
VX_UINT32 ChkProgMode(int argc, char** argv, unsigned* firstArg);

/// SIGINT, SIGABRT and SIGTERM end the process as an unhandled SIGINT does; SIGQUIT asks for a new prompt.
void HandlerRoutine(int signal);

/// Installs `HandlerRoutine`, so that a signal interrupts a read of the prompt.
void InstallSignalHandlers();
