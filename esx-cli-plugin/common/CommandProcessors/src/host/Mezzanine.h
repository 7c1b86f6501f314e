/// @file
/// Check for mezzanine adapters, used by several commands.
#pragma once

#include "LibraryCall.h"

/// Queries, through `CallLibrary`, whether a port belongs to a mezzanine adapter.
ResultCode AskMezzanine(const LibraryCall& what, VX_PORT_HANDLE& handle, bool& isMezzanine);
