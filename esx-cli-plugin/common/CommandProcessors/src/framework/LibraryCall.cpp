#include "LibraryCall.h"

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

VX_UINT32 RefuseLibraryCall(const LibraryCall& what, const char* function) {
    TavuDebug::Print(TRACE_INFORMATION, "%s::%s: Failed to open %s file%s", what.className, function, LIBRARY_LOG,
                     what.purpose);
    return RC_FILE_ERROR;
}

VX_UINT32 FailLibraryCall(const LibraryCall& what, const char* function, VX_UINT32 status) {
    TavuDebug::Print(TRACE_DEBUG, "%s::%s: %s err=%d", what.className, function, what.failed, static_cast<int>(status));
    return what.failureCode;
}

bool IsRebootRequired() {
    VX_UINT32 required = 1;
    if (VEXAPI_IsRebootRequired(&required) != 0) {
        required = 1;
    }
    return required == 1;
}
