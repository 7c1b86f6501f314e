/// @file
/// One correct call of every function, on the first port of `SmallHost`.
#pragma once

#include "Fixture.h"

/// What the functions are called with.
struct CallArguments {
    VX_PORT_HANDLE* handle;
    VX_UINT32 word;
    std::string folder; ///< for files that are written or missing
};

/// A call and how its result tells success.
struct NamedCall {
    const char* name;
    enum class Result { STATUS, POINTER, VALUE, RECORD } result;
    /// The status; for a pointer 0 when it isn't null; for a value the value; for a record its verdict.
    std::function<VX_UINT32(const CallArguments&)> call;
};

/// All but `VEXAPI_Initialize` and `VEXAPI_Uninitialize`, in the order of the interface. Functions that take a
/// file are given one that is missing.
const std::vector<NamedCall>& AllCalls();
