/// @file
/// Starting and ending the library, its tree, the reboot question.
#include "caller/Call.h"
#include "caller/Journal.h"

#include <cstdio>
#include <nlohmann/json.hpp>

using namespace sim;

namespace {

/// A line for each list that its caller forgot to release.
template <class Lists> void reportForgotten(const Lists& lists, const char* release) {
    for (std::size_t i = 0; i < lists.size(); ++i) {
        writeJournal(
            {{"function", "VEXAPI_Uninitialize"}, {"mistake", std::string("a list was never given to ") + release}});
    }
}

} // namespace

VX_UINT32 VEXAPI_Initialize(VX_UINT32 debugLevel, VX_UINT32 reserved) {
    return answer(__func__, [&](Call& call) {
        call.fixed("debugLevel", debugLevel, {0, 31});
        call.fixed("reserved", reserved, {0});
        if (currentSession() != nullptr) {
            throw Mistake{"the library is initialized already"};
        }
        call.begin();
        startSession();
        Session& session = call.session();
        session.debugLevel = debugLevel;
        const Host& host = session.host();
        std::printf("vexapi simulator: %u adapters, %zu ports\n", host.list.Count, host.ports.size());
        if (debugLevel != 0) {
            for (const Port* port : host.ports) {
                std::printf("vexapi simulator: port %u: %s, %zu targets\n", port->index, nameOf(*port).c_str(),
                            port->targets.size());
            }
        }
        return statusOk;
    });
}

VX_UINT32 VEXAPI_SetToolID(VX_UINT32 toolId) {
    return answer(__func__, [&](Call& call) {
        call.argument("toolId", toolId);
        Session& session = call.session();
        call.begin();
        session.toolId = toolId;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_SetToolVersion(VX_UINT32 major, VX_UINT32 minor, VX_UINT32 sub, VX_UINT32 build) {
    return answer(__func__, [&](Call& call) {
        const VX_UINT32 version[4] = {major, minor, sub, build};
        const char* const names[4] = {"major", "minor", "sub", "build"};
        for (int i = 0; i < 4; ++i) {
            call.argument(names[i], version[i]);
        }
        Session& session = call.session();
        call.begin();
        std::copy_n(version, 4, session.toolVersion);
        return statusOk;
    });
}

VX_UINT32 VEXAPI_Uninitialize(void) {
    return answer(__func__, [&](Call& call) {
        try {
            Session& session = call.session();
            call.begin();
            reportForgotten(session.congestionLists, "VEXAPI_FreeSCMRStatisticsList");
            reportForgotten(session.bufferLists, "VEXAPI_FreeRWBufferTestResultList");
        } catch (const Failure&) { // a start that was refused ends here, too
            endSession();
            throw;
        }
        endSession();
        return statusOk;
    });
}

VX_ADAPTER_LIST* VEXAPI_GetAdapterList(void) {
    // Stands in for the host's own header when a null head is asked for.
    static VX_ADAPTER_LIST headless{};
    VX_ADAPTER_LIST* list = nullptr;
    const Outcome outcome = run(__func__, [&](Call& call) {
        Host& host = call.session().host();
        const Asked asked = call.begin();
        list = asked == Asked::Null       ? nullptr
               : asked == Asked::NullHead ? &headless
               : host.adapters            ? &host.list
                                          : nullptr;
        return statusOk;
    });
    return outcome.status == statusOk ? list : nullptr;
}

VX_UINT32 VEXAPI_IsRebootRequired(VX_UINT32* required) {
    return answer(__func__, [&](Call& call) {
        call.pointer(required, "required");
        Session& session = call.session();
        call.begin();
        *required = session.needsReboot() ? 1 : 0;
        return statusOk;
    });
}
