#include "Family.h"

VX_UINT32 ShowFamilyHelp(MultipleCmdsProcessor* self, TavuStringArray& args, const char* helpWord) {
    Output(OUTPUT_HEADING,
           "\r\nFollowing is the list of available commands in the %s command mode.\r\n"
           "For detailed information of each command, please type 'command ?'\r\n",
           helpWord);
    Output(OUTPUT_NOTE, "All commands are case insensitive.\r\n\r\n");
    self->ListChildren(args, true);
    return RC_SUCCESS;
}

VX_UINT32 ShowUsage(std::span<const UsageText> usages, VX_UINT32 cmdId) {
    for (const UsageText& usage : usages) {
        if (usage.id == cmdId) {
            Output(OUTPUT_LIST, "%s", usage.text);
            return RC_SUCCESS;
        }
    }
    return RC_NO_USAGE;
}

VX_UINT32 RunCommon(const char* className, const char* name, CommonFunction common, MultipleCmdsProcessor* self,
                    TavuStringArray& args, Serializer::eOutputFormat format) {
    // The common function is named after the plain leaf's.
    TavuString commonName = name;
    if (commonName.ends_with("Cli")) {
        commonName.resize(commonName.size() - 3);
    }
    commonName += "Common";
    TavuDebug::Print(TRACE_INFORMATION, "%s::%s: Entered", className, name);
    const TracedFunction traced(className, commonName.c_str());
    TraceStep(TRACE_INFORMATION, "Entered");
    const VX_UINT32 code = common(self, args, format);
    if (code == RC_SUCCESS) {
        TraceStep(TRACE_INFORMATION, "Exiting");
    }
    return code;
}

VX_UINT32 AdmitList(const TavuStringArray& args, const VX_ADAPTER_LIST*& host) {
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
