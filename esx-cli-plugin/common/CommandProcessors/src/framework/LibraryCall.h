/// @file
/// How the management library is called: its chatter must never reach the pipe that `esxcli` reads.
#pragma once

#include "ResultCodes.h"
#include "TracedFunction.h"

#include <cstdio>
#include <span>

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

/// Traces a redirection that can't be opened, with `purpose` behind it, and gives `RC_FILE_ERROR`.
ResultCode RefuseLibraryCalls(const char* purpose);

/// Traces the status of a library function at level 1.
void TraceStatus(const char* libraryFunction, VX_UINT32 status);

/// Result code of a library status, for the functions whose statuses mean something to their command.
struct StatusResult {
    VX_UINT32 status;
    ResultCode code;
};
/// The code of `status`; 0 is `RC_SUCCESS`, and what the table doesn't list is `fallback`.
ResultCode ResultOfStatus(std::span<const StatusResult> table, VX_UINT32 status, ResultCode fallback);

/// Makes library calls inside the redirection, when what they give is no matter of result codes. `RC_FILE_ERROR`,
/// with no call made, when the redirection can't be opened.
template <typename Calls> ResultCode MakeLibraryCalls(Calls calls, const char* purpose = "") {
    LibraryOutputRedirection redirection;
    if (!redirection.Open()) {
        return RefuseLibraryCalls(purpose);
    }
    calls();
    redirection.Close();
    return RC_SUCCESS;
}

/// A library call whose failure ends the command.
struct LibraryCall {
    const char* function;   ///< as the trace of its status names it
    const char* purpose;    ///< behind the trace of a redirection that can't be opened, such as " before FEC read"
    const char* failed;     ///< trace of a failing status, such as "Get FEC Info failed"
    ResultCode failureCode; ///< result code of a failing status
    std::span<const StatusResult> statuses = {}; ///< the failing statuses that have a code of their own
};

/// Traces a status, a failing one as a failure too, and gives its code; `RC_SUCCESS` for status 0.
ResultCode ResultOf(const LibraryCall& what, VX_UINT32 status);

/// Makes one library call, or a tight group of them, inside the redirection; `call()` gives a status.
/// `RC_SUCCESS` for status 0, `RC_FILE_ERROR` with no call made when the redirection can't be opened, else
/// the status's code.
template <typename Call> ResultCode CallLibrary(const LibraryCall& what, Call call) {
    VX_UINT32 status = 0;
    const ResultCode code = MakeLibraryCalls([&] { status = call(); }, what.purpose);
    return code == RC_SUCCESS ? ResultOf(what, status) : code;
}

/// Whether the change just made needs a reboot; true when the library can't answer. The caller decides
/// whether this stands inside the redirection.
bool IsRebootRequired();
/// The same inside the redirection; true when that can't be opened.
bool AskRebootRequired();
