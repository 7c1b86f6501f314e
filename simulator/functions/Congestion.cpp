/// @file
/// Congestion management.
#include "caller/Call.h"

using namespace sim;

namespace {

/// Entry type of the port's own node; all others are targets.
constexpr VX_UINT32 OWN_ENTRY = 0x80;

} // namespace

VX_UINT32 VEXAPI_IsFWCMFeatureEnabled(VX_PORT_HANDLE* handle, VX_UINT8* enabled) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(enabled, "enabled");
        call.Begin();
        *enabled = port.answers.CongestionFeature;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetSCMRStatisticsList(VX_PORT_HANDLE* handle, _VEXAPI_SANCONGTMGMTV2** list) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckPointer(list, "list");
        const bool asked = call.Begin() != Asked::ANSWER;
        *list = nullptr;
        if (asked || port.congestion.empty()) {
            return STATUS_OK;
        }
        std::vector<_VEXAPI_SANCONGTMGMTV2> nodes = port.congestion;
        for (std::size_t i = 0; i + 1 < nodes.size(); ++i) {
            nodes[i].pNext = &nodes[i + 1];
        }
        *list = nodes.data(); // stays valid when the vector is moved
        call.GetSession().congestionLists.emplace(*list, std::move(nodes));
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_FreeSCMRStatisticsList(_VEXAPI_SANCONGTMGMTV2* list) {
    return Answer(__func__, [&](Call& call) {
        call.CheckPointer(list, "list");
        auto& lists = call.GetSession().congestionLists;
        if (!lists.contains(list)) {
            throw Mistake{"the list is none that the library gave, or was released already"};
        }
        call.Begin();
        lists.erase(list);
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_SANCongMgmtResetStatistics(VX_PORT_HANDLE* handle) {
    return Answer(__func__, [&](Call& call) {
        constexpr VX_UINT32 SECOND_GENERATION = 1U << 26;
        Port& port = call.GetPort(handle);
        call.Begin();
        if ((port.record.FeatureFlags & SECOND_GENERATION) == 0) {
            throw Failure{STATUS_NOT_SUPPORTED_BY_DRIVER, "driver or firmware lacks the operation"};
        }
        call.ChangeHost([&](Change& change) {
            change.Touch(port, "CongestionStatistics");
            for (_VEXAPI_SANCONGTMGMTV2& node : port.congestion) {
                if (node.EntryType != OWN_ENTRY) {
                    _VEXAPI_SANCONGTMGMTV2 cleared{};
                    std::copy_n(node.WWNN, sizeof node.WWNN, cleared.WWNN);
                    std::copy_n(node.WWPN, sizeof node.WWPN, cleared.WWPN);
                    cleared.EntryType = node.EntryType;
                    node = cleared;
                }
            }
        });
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_GetSCMRProfile(VX_PORT_HANDLE* handle, _VEXAPI_SCMRProfile* profile) {
    return Answer(__func__, [&](Call& call) {
        const Port& port = call.GetPort(handle);
        call.CheckCleared(profile, "profile");
        call.Begin();
        *profile = port.answers.CongestionProfile;
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_SetSCMRProfile(VX_PORT_HANDLE* handle, _VEXAPI_SCMRProfile* profile) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        call.NoteRecord("profile", profile);
        call.Begin();
        call.ChangeHost([&](Change& change) {
            change.Touch(port, "CongestionProfile");
            port.answers.CongestionProfile = *profile;
        });
        return STATUS_OK;
    });
}
