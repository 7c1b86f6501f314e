/// @file
/// Preloaded, calls the log functions that the program exports, like a closed library, when the session ends.
#include "ExportedLog.h"
#include "vexapi.h"

#include <cstdio>
#include <dlfcn.h>

VX_UINT32 VEXAPI_Uninitialize(void) {
    TavuDebug::Print("without a level %d", 1);
    TavuDebug::Print(TRACE_DEBUG, "with a level %d", 2);
    TavuDebug::Print(L"wide %d", 3);
    TavuDebug::Print(TRACE_DEBUG, L"wide with a level %d", 4);
    TavuDebug::PrintForFwUpg("update %d", 5);
    OR_Print(TRACE_DEBUG, "plain %d", 6);
    const LinenoLog place(__FILE__, 42);
    place.Print("at a line %d", 7);
    place.Print(TRACE_DEBUG, "at a line with a level %d", 8);
    ORDM_DebugPrint("source", "text");
    APILog("call");
    CoreLogMessage(CORE_LOG_WARNING, "core %d", 9);
    OR_setDebugMode(0);
    CoreLogMessage(CORE_LOG_WARNING, "quiet");
    TavuDebug::UnInitialize();
    std::fflush(stdout);

    using Next = VX_UINT32 (*)();
    return reinterpret_cast<Next>(dlsym(RTLD_NEXT, "VEXAPI_Uninitialize"))();
}
