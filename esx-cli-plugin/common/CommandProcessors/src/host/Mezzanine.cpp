#include "Mezzanine.h"

ResultCode AskMezzanine(const LibraryCall& what, VX_PORT_HANDLE& handle, bool& isMezzanine) {
    VX_UINT8 flag = 0;
    const ResultCode code = CallLibrary(what, [&] { return VEXAPI_IsMezzAdapter(&handle, &flag); });
    isMezzanine = flag == 1;
    return code;
}
