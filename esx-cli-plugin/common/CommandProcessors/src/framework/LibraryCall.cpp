#include "LibraryCall.h"

#include "OwnFile.h"

#include <algorithm>

namespace {

constexpr char LIBRARY_LOG[] = "/var/tmp/vexapi-output.log";

/// Its failure is traced, and no failure of a command.
constexpr LibraryCall REBOOT_QUESTION = {"VEXAPI_IsRebootRequired", "", "Is Reboot Required failed",
                                         RC_CFG_READ_FAILED};

} // namespace

bool LibraryOutputRedirection::Open() {
    mSaved = stdout;
    stdout = AppendToOwnFile(LIBRARY_LOG);
    if (stdout == nullptr) {
        stdout = mSaved;
        return false;
    }
    return true;
}

void LibraryOutputRedirection::Close() {
    std::fclose(stdout);
    stdout = mSaved;
}

VX_UINT32 RefuseLibraryCalls(const char* purpose) {
    TraceStep(TRACE_INFORMATION, "Failed to open %s file%s", LIBRARY_LOG, purpose);
    return RC_FILE_ERROR;
}

void TraceStatus(const char* libraryFunction, VX_UINT32 status) {
    TraceStep(TRACE_INFORMATION, "%s=%d", libraryFunction, static_cast<int>(status));
}

VX_UINT32 ResultOfStatus(std::span<const StatusResult> table, VX_UINT32 status, VX_UINT32 fallback) {
    if (status == 0) {
        return RC_SUCCESS;
    }
    const auto row = std::find_if(table.begin(), table.end(), [status](auto& each) { return each.status == status; });
    return row == table.end() ? fallback : row->code;
}

VX_UINT32 ResultOf(const LibraryCall& what, VX_UINT32 status) {
    TraceStatus(what.function, status);
    if (status == 0) {
        return RC_SUCCESS;
    }
    TraceStep(TRACE_DEBUG, "%s err=%d", what.failed, static_cast<int>(status));
    return ResultOfStatus(what.statuses, status, what.failureCode);
}

VX_UINT32 AskMezzanine(const LibraryCall& what, VX_PORT_HANDLE& handle, bool& isMezzanine) {
    VX_UINT8 flag = 0;
    const VX_UINT32 code = CallLibrary(what, [&] { return VEXAPI_IsMezzAdapter(&handle, &flag); });
    isMezzanine = flag == 1;
    return code;
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
