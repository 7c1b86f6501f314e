#include "LibraryCall.h"

#include "OwnFile.h"

#include <algorithm>

namespace {

constexpr char LIBRARY_LOG[] = "/var/tmp/vexapi-output.log";

/// Others may move the log, or put something in its place: it is opened anew after this time.
constexpr std::chrono::milliseconds LOG_IS_KEPT(10);

/// A failure is traced, but is not a failure of the command.
constexpr LibraryCall REBOOT_QUESTION = {"VEXAPI_IsRebootRequired", "", "Is Reboot Required failed",
                                         RC_CFG_READ_FAILED};

} // namespace

bool LibraryOutputRedirection::Open() {
    const auto now = std::chrono::steady_clock::now();
    if (mLog != nullptr && now - mOpened >= LOG_IS_KEPT) {
        Close();
    }
    if (mLog == nullptr) {
        mLog = AppendToOwnFile(LIBRARY_LOG);
        mOpened = now;
    }
    if (mLog == nullptr) {
        return false;
    }
    mSaved = stdout;
    stdout = mLog;
    return true;
}

void LibraryOutputRedirection::Pause() {
    fflush_unlocked(mLog);
    stdout = mSaved;
}

void LibraryOutputRedirection::Close() {
    if (mLog != nullptr) {
        stdout = mSaved;
        std::fclose(mLog);
        mLog = nullptr;
    }
}

ResultCode RefuseLibraryCalls(const char* purpose) {
    TraceStep(TRACE_INFORMATION, "Failed to open %s file%s", LIBRARY_LOG, purpose);
    return RC_FILE_ERROR;
}

void TraceStatus(const char* libraryFunction, VX_UINT32 status) {
    TraceStep(TRACE_INFORMATION, "%s=%d", libraryFunction, static_cast<int>(status));
}

ResultCode ResultOfStatus(std::span<const StatusResult> table, VX_UINT32 status, ResultCode fallback) {
    if (status == 0) {
        return RC_SUCCESS;
    }
    const auto row = std::find_if(table.begin(), table.end(), [status](auto& each) { return each.status == status; });
    return row == table.end() ? fallback : row->code;
}

ResultCode ResultOf(const LibraryCall& what, VX_UINT32 status) {
    TraceStatus(what.function, status);
    if (status == 0) {
        return RC_SUCCESS;
    }
    TraceStep(TRACE_DEBUG, "%s err=%d", what.failed, static_cast<int>(status));
    return ResultOfStatus(what.statuses, status, what.failureCode);
}

bool IsRebootRequired() {
    VX_UINT32 required = 1;
    if (ResultOf(REBOOT_QUESTION, VEXAPI_IsRebootRequired(&required)) != RC_SUCCESS) {
        required = 1;
    }
    return required == 1;
}

bool AskRebootRequired() {
    bool isRequired = true;
    MakeLibraryCalls([&] { isRequired = IsRebootRequired(); });
    return isRequired;
}
