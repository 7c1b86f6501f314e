/// @file
/// Congestion management of a port.
#include "caller/Call.h"

using namespace sim;

namespace {

/// The entry type of the port's own node; all others are targets.
constexpr VX_UINT32 ownEntry = 0x80;

} // namespace

VX_UINT32 VEXAPI_IsFWCMFeatureEnabled(VX_PORT_HANDLE* handle, VX_UINT8* enabled) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(enabled, "enabled");
        call.begin();
        *enabled = port.answers.CongestionFeature;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetSCMRStatisticsList(VX_PORT_HANDLE* handle, _VEXAPI_SANCONGTMGMTV2** list) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.pointer(list, "list");
        const bool asked = call.begin() != Asked::Answer;
        *list = nullptr;
        if (asked || port.congestion.empty()) {
            return statusOk;
        }
        std::vector<_VEXAPI_SANCONGTMGMTV2> nodes = port.congestion;
        for (std::size_t i = 0; i + 1 < nodes.size(); ++i) {
            nodes[i].pNext = &nodes[i + 1];
        }
        *list = nodes.data(); // moving the vector keeps its nodes where they are
        call.session().congestionLists.emplace(*list, std::move(nodes));
        return statusOk;
    });
}

VX_UINT32 VEXAPI_FreeSCMRStatisticsList(_VEXAPI_SANCONGTMGMTV2* list) {
    return answer(__func__, [&](Call& call) {
        call.pointer(list, "list");
        auto& lists = call.session().congestionLists;
        if (!lists.contains(list)) {
            throw Mistake{"the list is none that the library gave, or was released already"};
        }
        call.begin();
        lists.erase(list);
        return statusOk;
    });
}

VX_UINT32 VEXAPI_SANCongMgmtResetStatistics(VX_PORT_HANDLE* handle) {
    return answer(__func__, [&](Call& call) {
        constexpr VX_UINT32 secondGeneration = 1U << 26;
        Port& port = call.port(handle);
        call.begin();
        if ((port.record.FeatureFlags & secondGeneration) == 0) {
            throw Failure{statusNotSupportedByDriver, "driver or firmware lacks the operation"};
        }
        call.change([&](Change& change) {
            change.touch(port, "CongestionStatistics");
            for (_VEXAPI_SANCONGTMGMTV2& node : port.congestion) {
                if (node.EntryType != ownEntry) {
                    _VEXAPI_SANCONGTMGMTV2 cleared{};
                    std::copy_n(node.WWNN, sizeof node.WWNN, cleared.WWNN);
                    std::copy_n(node.WWPN, sizeof node.WWPN, cleared.WWPN);
                    cleared.EntryType = node.EntryType;
                    node = cleared;
                }
            }
        });
        return statusOk;
    });
}

VX_UINT32 VEXAPI_GetSCMRProfile(VX_PORT_HANDLE* handle, _VEXAPI_SCMRProfile* profile) {
    return answer(__func__, [&](Call& call) {
        const Port& port = call.port(handle);
        call.cleared(profile, "profile");
        call.begin();
        *profile = port.answers.CongestionProfile;
        return statusOk;
    });
}

VX_UINT32 VEXAPI_SetSCMRProfile(VX_PORT_HANDLE* handle, _VEXAPI_SCMRProfile* profile) {
    return answer(__func__, [&](Call& call) {
        Port& port = call.port(handle);
        call.record("profile", profile);
        call.begin();
        call.change([&](Change& change) {
            change.touch(port, "CongestionProfile");
            port.answers.CongestionProfile = *profile;
        });
        return statusOk;
    });
}
