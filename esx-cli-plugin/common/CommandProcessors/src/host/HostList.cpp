#include "HostList.h"

#include "Words.h"

ResultCode AdmitList(const TavuStringArray& args, const VX_ADAPTER_LIST*& host) {
    if (IsInvokingHelp(ArgText(args, 0))) {
        return RC_HELP_REQUESTED;
    }
    host = VEXAPI_GetAdapterList();
    if (host == nullptr) {
        TraceStep(TRACE_DEBUG, "List is NULL");
        return RC_HOST_NOT_FOUND;
    }
    return RC_SUCCESS;
}
