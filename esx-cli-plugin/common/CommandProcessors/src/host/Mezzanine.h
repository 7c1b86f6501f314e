/// @file
/// A question that several commands ask before they admit a port.
#pragma once

#include "LibraryCall.h"

/// Asks, as `CallLibrary` does, whether a port belongs to a mezzanine adapter.
ResultCode AskMezzanine(const LibraryCall& what, VX_PORT_HANDLE& handle, bool& isMezzanine);
