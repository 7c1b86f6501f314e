/// @file
/// How the management library is called: its chatter must never reach the pipe that `esxcli` reads.
#pragma once

#include "ResultCodes.h"
#include "TavuDebug.h"

#include <cstdio>

/// Sends what the library prints to "/var/tmp/vexapi-output.log", by exchanging the `stdout` stream itself.
///
/// Open and close are explicit, and there is no destructor on purpose: some commands leave the redirection
/// open. While it is open the tool writes nothing to standard output.
class LibraryOutputRedirection {
public:
    /// False when the log can't be opened; standard output is then as it was.
    bool Open();
    void Close();

private:
    FILE* mSaved = nullptr;
};

/// How the failures of a library call are told.
struct LibraryCall {
    const char* className; ///< the calling family, as its traces name it
    const char* purpose;   ///< behind the trace of a redirection that can't be opened, such as " before FEC read"
    const char* failed;    ///< trace of a failing status, such as "Get FEC Info failed"
    VX_UINT32 failureCode; ///< result code of a failing status
};

/// Traces, and gives `RC_FILE_ERROR`.
VX_UINT32 RefuseLibraryCall(const LibraryCall& what, const char* function);
/// Traces, and gives the failure code.
VX_UINT32 FailLibraryCall(const LibraryCall& what, const char* function, VX_UINT32 status);

/// Makes a library call, or a tight group of them, inside the redirection. `call()` gives a status;
/// `function` is the caller's name for the traces. `RC_SUCCESS` for status 0, `RC_FILE_ERROR` with no call
/// made when the redirection can't be opened, else the failure code.
template <typename Call> VX_UINT32 CallLibrary(const LibraryCall& what, const char* function, Call call) {
    LibraryOutputRedirection redirection;
    if (!redirection.Open()) {
        return RefuseLibraryCall(what, function);
    }
    const VX_UINT32 status = call();
    redirection.Close();
    return status == 0 ? VX_UINT32{RC_SUCCESS} : FailLibraryCall(what, function, status);
}

/// Whether the change just made needs a reboot; true when the library can't answer. The caller decides
/// whether this stands inside the redirection.
bool IsRebootRequired();
