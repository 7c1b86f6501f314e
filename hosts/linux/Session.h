/// @file
/// The tree between `VEXAPI_Initialize` and `VEXAPI_Uninitialize`.
#pragma once

#include "Tree.h"

namespace host {

/// Statuses, in the library's own numbering.
enum Status : VX_UINT32 {
    OK = 0,
    INVALID_HANDLE = 5, ///< no port of this session
    UNSUPPORTED = 118,  ///< no open interface offers it
    NOT_READABLE = 102, ///< the kernel refused
};

/// Null when the library isn't initialized.
Tree* GetTree();

} // namespace host
