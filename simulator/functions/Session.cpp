/// @file
/// Start and end of the library, the adapter tree, pending reboots.
#include "caller/Call.h"
#include "caller/Journal.h"

#include <cstdio>
#include <nlohmann/json.hpp>

using namespace sim;

namespace {

/// Reports the lists that the caller didn't release.
template <class Lists> void ReportForgotten(const Lists& lists, const char* release) {
    for (std::size_t i = 0; i < lists.size(); ++i) {
        WriteJournal(
            {{"function", "VEXAPI_Uninitialize"}, {"mistake", std::string("a list was never given to ") + release}});
    }
}

} // namespace

VX_UINT32 VEXAPI_Initialize(VX_UINT32 debugLevel, VX_UINT32 reserved) {
    return Answer(__func__, [&](Call& call) {
        call.CheckFixed("debugLevel", debugLevel, {0, 31});
        call.CheckFixed("reserved", reserved, {0});
        if (CurrentSession() != nullptr) {
            throw Mistake{"the library is initialized already"};
        }
        call.Begin();
        StartSession();
        Session& session = call.GetSession();
        session.debugLevel = debugLevel;
        const Host& host = session.GetHost();
        std::printf("vexapi simulator: %u adapters, %zu ports\n", host.list.Count, host.ports.size());
        if (debugLevel != 0) {
            for (const Port* port : host.ports) {
                std::printf("vexapi simulator: port %u: %s, %zu targets\n", port->index, NameOf(*port).c_str(),
                            port->targets.size());
            }
        }
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_SetToolID(VX_UINT32 toolId) {
    return Answer(__func__, [&](Call& call) {
        call.NoteArgument("toolId", toolId);
        Session& session = call.GetSession();
        call.Begin();
        session.toolId = toolId;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_SetToolVersion(VX_UINT32 major, VX_UINT32 minor, VX_UINT32 sub, VX_UINT32 build) {
    return Answer(__func__, [&](Call& call) {
        const VX_UINT32 version[4] = {major, minor, sub, build};
        const char* const names[4] = {"major", "minor", "sub", "build"};
        for (int i = 0; i < 4; ++i) {
            call.NoteArgument(names[i], version[i]);
        }
        Session& session = call.GetSession();
        call.Begin();
        std::copy_n(version, 4, session.toolVersion);
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_Uninitialize(void) {
    return Answer(__func__, [&](Call& call) {
        try {
            Session& session = call.GetSession();
            call.Begin();
            ReportForgotten(session.congestionLists, "VEXAPI_FreeSCMRStatisticsList");
            ReportForgotten(session.bufferLists, "VEXAPI_FreeRWBufferTestResultList");
        } catch (const Failure&) { // ends a refused start too
            EndSession();
            throw;
        }
        EndSession();
        return STATUS_OK;
    });
}

VX_ADAPTER_LIST* VEXAPI_GetAdapterList(void) {
    // Returned instead of the host's own header if a fault asks for a null head.
    static VX_ADAPTER_LIST headless{};
    VX_ADAPTER_LIST* list = nullptr;
    const Outcome outcome = Run(__func__, [&](Call& call) {
        Host& host = call.GetSession().GetHost();
        const Asked asked = call.Begin();
        list = asked == Asked::NULL_POINTER ? nullptr
               : asked == Asked::NULL_HEAD  ? &headless
               : host.adapters              ? &host.list
                                            : nullptr;
        return STATUS_OK;
    });
    return outcome.status == STATUS_OK ? list : nullptr;
}

VX_UINT32 VEXAPI_IsRebootRequired(VX_UINT32* required) {
    return Answer(__func__, [&](Call& call) {
        call.CheckPointer(required, "required");
        Session& session = call.GetSession();
        call.Begin();
        *required = session.NeedsReboot() ? 1 : 0;
        return STATUS_OK;
    });
}
