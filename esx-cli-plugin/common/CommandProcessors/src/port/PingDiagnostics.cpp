#include "PingDiagnostics.h"

#include "CmdLineParser.h"
#include "HostTree.h"
#include "Words.h"

ResultCode AdmitPingPort(const TavuStringArray& args, PingRequest& request) {
    const ResultCode code = GetPhysicalPortFromPortString(args, request.entry);
    return code == RC_SUCCESS && request.entry.protocol->PortState != PORT_STATE_ONLINE ? RC_LINK_UP_REQUIRED : code;
}

ResultCode ReadPingWords(const TavuStringArray& args, std::size_t first, PingRequest& request) {
    if (args.size() < first + 3) {
        return RC_INVALID_PARAMETER;
    }
    ScanWwn(ArgText(args, first), request.wwn);
    FormatWwn(request.name, request.wwn);
    request.count = ParseNumber(ArgText(args, first + 1));
    if (request.count == 0 || request.count > MAX_PING_COUNT) {
        return RC_INVALID_PARAMETER;
    }
    request.stopOnError = CompareNoCase(ArgText(args, first + 2), OUT_TRUE) == 0 ? 1 : 0;
    return RC_SUCCESS;
}

bool IsPingTarget(const PingRequest& request) {
    return !ForEachEntry(request.entry.protocol->pTargetList,
                         [&](const _tagVEXAPI_SDMTarget& target) { return !IsSameWwn(target.PortName, request.wwn); });
}
