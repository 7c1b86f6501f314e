/// @file
/// The tree, which exists between `VEXAPI_Initialize` and `VEXAPI_Uninitialize`.
#pragma once

#include "Tree.h"

namespace host {

/// Statuses, in the library's own numbering.
enum Status : VX_UINT32 {
    OK = 0,
    INVALID_HANDLE = 5, ///< not a port of this session
    UNSUPPORTED = 118,  ///< no open interface provides it
    NOT_READABLE = 102, ///< the kernel returned an error
};

/// Null if the library isn't initialized.
Tree* GetTree();

} // namespace host
