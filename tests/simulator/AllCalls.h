/// @file
/// A correct call of every function, on the first port of `SmallHost`.
#pragma once

#include "Fixture.h"

/// Arguments of the calls.
struct CallArguments {
    VX_PORT_HANDLE* handle;
    VX_UINT32 word;
    std::string folder; ///< of written or missing files
    const _tagVEXAPI_SDMTarget* target = nullptr;
};

/// A call and the meaning of its result.
struct NamedCall {
    const char* name;
    enum class Result { STATUS, POINTER, VALUE, RECORD } result;
    /// The status or the value; for a pointer, 0 if it isn't null; for a record, 0 if it reports success.
    std::function<VX_UINT32(const CallArguments&)> call;
    bool anytime = false; ///< also outside of a session
};

/// All but `VEXAPI_Initialize` and `VEXAPI_Uninitialize`, in the order of the interfaces. Functions that take a file
/// get a missing one.
const std::vector<NamedCall>& AllCalls();
