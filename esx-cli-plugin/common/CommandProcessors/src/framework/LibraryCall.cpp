#include "LibraryCall.h"

#include <algorithm>

namespace {

constexpr char LIBRARY_LOG[] = "/var/tmp/vexapi-output.log";

} // namespace

bool LibraryOutputRedirection::Open() {
    mSaved = stdout;
    stdout = std::fopen(LIBRARY_LOG, "a+");
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

VX_UINT32 RefuseLibraryCalls(const char* className, const char* function, const char* purpose) {
    TavuDebug::Print(TRACE_INFORMATION, "%s::%s: Failed to open %s file%s", className, function, LIBRARY_LOG, purpose);
    return RC_FILE_ERROR;
}

void TraceStatus(const char* libraryFunction, VX_UINT32 status) {
    TavuDebug::Print(TRACE_INFORMATION, "%s=%d", libraryFunction, static_cast<int>(status));
}

VX_UINT32 ResultOfStatus(std::span<const StatusResult> table, VX_UINT32 status, VX_UINT32 fallback) {
    if (status == 0) {
        return RC_SUCCESS;
    }
    const auto row = std::find_if(table.begin(), table.end(), [status](auto& each) { return each.status == status; });
    return row == table.end() ? fallback : row->code;
}

VX_UINT32 ResultOf(const LibraryCall& what, const char* function, VX_UINT32 status) {
    if (status == 0) {
        return RC_SUCCESS;
    }
    TavuDebug::Print(TRACE_DEBUG, "%s::%s: %s err=%d", what.className, function, what.failed, static_cast<int>(status));
    return what.failureCode;
}

VX_UINT32 AskMezzanine(const LibraryCall& what, const char* function, VX_PORT_HANDLE& handle, bool& isMezzanine) {
    VX_UINT8 flag = 0;
    const VX_UINT32 code = CallLibrary(what, function, [&] { return VEXAPI_IsMezzAdapter(&handle, &flag); });
    isMezzanine = flag == 1;
    return code;
}

bool IsRebootRequired() {
    VX_UINT32 required = 1;
    if (VEXAPI_IsRebootRequired(&required) != 0) {
        required = 1;
    }
    return required == 1;
}

bool AskRebootRequired(const char* className, const char* function) {
    bool isRequired = true;
    MakeLibraryCalls(className, function, [&] { isRequired = IsRebootRequired(); });
    return isRequired;
}
