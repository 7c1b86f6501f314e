/// @file
/// What a command needs of the host, told to the library before it starts.
#pragma once

#include "vexapi.h"

/// Asks the library to read no more than these parts (`VEXAPI_EXT_PARTS`) and, if `identifier` is that of a port,
/// target or LUN, no other one. A library that can't limit what it reads reads everything.
void LimitReading(VX_UINT32 parts, const char* identifier);
