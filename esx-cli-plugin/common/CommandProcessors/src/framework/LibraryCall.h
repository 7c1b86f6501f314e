/// @file
/// Calls into the management library. Its output must never reach the pipe that `esxcli` reads.
#pragma once

#include "ResultCodes.h"
#include "TracedFunction.h"

#include <chrono>
#include <cstdio>
#include <span>

/// Redirects the library's output to "/var/tmp/vexapi-output.log" by replacing the `stdout` stream itself.
///
/// Open and close are explicit, and there is deliberately no destructor: some commands leave the redirection open.
/// While it is open, the tool writes nothing to standard output.
class LibraryOutputRedirection {
public:
    /// Returns false if the log can't be opened; standard output is then unchanged.
    bool Open();
    void Close();

    /// Restores standard output like `Close`, but keeps the log for an `Open` within a moment: for runs of many calls,
    /// which `Close` ends.
    void Pause();

private:
    FILE* mSaved = nullptr;
    FILE* mLog = nullptr;
    std::chrono::steady_clock::time_point mOpened;
};

/// Traces that the redirection can't be opened, followed by `purpose`, and returns `RC_FILE_ERROR`.
ResultCode RefuseLibraryCalls(const char* purpose);

/// Traces the status of a library function at level 1.
void TraceStatus(const char* libraryFunction, VX_UINT32 status);

/// Result code of a library status, for functions whose statuses their command distinguishes.
struct StatusResult {
    VX_UINT32 status;
    ResultCode code;
};
/// The result code of `status`: `RC_SUCCESS` for 0, `fallback` for a status not in the table.
ResultCode ResultOfStatus(std::span<const StatusResult> table, VX_UINT32 status, ResultCode fallback);

/// Makes library calls inside the redirection, without evaluating their results. Returns `RC_FILE_ERROR`, making no
/// call, if the redirection can't be opened.
template <typename Calls>
ResultCode MakeLibraryCalls(LibraryOutputRedirection& redirection, Calls calls, const char* purpose) {
    if (!redirection.Open()) {
        return RefuseLibraryCalls(purpose);
    }
    calls();
    redirection.Pause();
    return RC_SUCCESS;
}
template <typename Calls> ResultCode MakeLibraryCalls(Calls calls, const char* purpose = "") {
    LibraryOutputRedirection redirection;
    const ResultCode code = MakeLibraryCalls(redirection, calls, purpose);
    redirection.Close();
    return code;
}

/// A library call whose failure ends the command.
struct LibraryCall {
    const char* function;                        ///< name in the trace of its status
    const char* purpose;                         ///< ends the trace of a failed redirection, such as " before FEC read"
    const char* failed;                          ///< trace of a failure status, such as "Get FEC Info failed"
    ResultCode failureCode;                      ///< result code of a failure status
    std::span<const StatusResult> statuses = {}; ///< the failure statuses with specific result codes
};

/// Traces a status, twice if it is a failure, and returns its result code.
ResultCode ResultOf(const LibraryCall& what, VX_UINT32 status);

/// Makes one library call, or a small group of them, inside the redirection; `call()` returns a status. Returns the
/// status's result code, or `RC_FILE_ERROR`, making no call, if the redirection can't be opened. A run of many calls
/// has a redirection of its own, and closes it.
template <typename Call>
ResultCode CallLibrary(LibraryOutputRedirection& redirection, const LibraryCall& what, Call call) {
    VX_UINT32 status = 0;
    const ResultCode code = MakeLibraryCalls(
        redirection, [&] { status = call(); }, what.purpose);
    return code == RC_SUCCESS ? ResultOf(what, status) : code;
}
template <typename Call> ResultCode CallLibrary(const LibraryCall& what, Call call) {
    LibraryOutputRedirection redirection;
    const ResultCode code = CallLibrary(redirection, what, call);
    redirection.Close();
    return code;
}

/// Whether the change just made needs a reboot; true if the library can't answer. The caller decides whether to
/// open the redirection.
bool IsRebootRequired();
/// Same inside the redirection; true if that can't be opened.
bool AskRebootRequired();
