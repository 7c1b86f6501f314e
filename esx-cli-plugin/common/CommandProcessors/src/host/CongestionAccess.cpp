#include "CongestionAccess.h"

#include "ChipFamilies.h"
#include "HostTree.h"

#include <span>

namespace {

/// Bits of `FeatureFlags`: support in driver and firmware.
constexpr VX_UINT32 FEATURE_FIRST_GENERATION = 1U << 23;
constexpr VX_UINT32 FEATURE_SECOND_GENERATION = 1U << 26;

bool LacksFeatures(const _vexapi_protocol_t& protocol, VX_UINT32 features) {
    return (protocol.FeatureFlags & features) == 0;
}

/// A reason to refuse a port.
struct CongestionRefusal {
    bool (*applies)(const _vexapi_protocol_t& protocol);
    ResultCode code;
    const char* trace;
};

constexpr CongestionRefusal REFUSE_CHIP = {
    [](const _vexapi_protocol_t& protocol) { return !IsUefiCapableAdapter(protocol.ChipProperty); },
    RC_FEATURE_NOT_SUPPORTED, "SCM feature not supported for this adapter."};
constexpr CongestionRefusal REFUSE_NO_GENERATION = {[](const _vexapi_protocol_t& protocol) {
                                                        return LacksFeatures(protocol, FEATURE_FIRST_GENERATION |
                                                                                           FEATURE_SECOND_GENERATION);
                                                    },
                                                    RC_UNSUPPORTED_FW, "Driver/Firmware does not support SCM."};
constexpr CongestionRefusal REFUSE_NO_SECOND_GENERATION = {
    [](const _vexapi_protocol_t& protocol) { return LacksFeatures(protocol, FEATURE_SECOND_GENERATION); },
    RC_UNSUPPORTED_FW, REFUSE_NO_GENERATION.trace};
constexpr CongestionRefusal REFUSE_VIRTUAL_PORT = {IsVirtualPort, RC_NOT_SUPPORTED_FOR_VPORT,
                                                   "Command not supported for vport"};

constexpr CongestionRefusal EITHER_GENERATION[] = {REFUSE_CHIP, REFUSE_NO_GENERATION, REFUSE_VIRTUAL_PORT};
constexpr CongestionRefusal SECOND_GENERATION[] = {REFUSE_CHIP, REFUSE_NO_SECOND_GENERATION, REFUSE_VIRTUAL_PORT};
constexpr CongestionRefusal PROFILE[] = {REFUSE_CHIP, REFUSE_VIRTUAL_PORT, REFUSE_NO_SECOND_GENERATION};

ResultCode AskFeature(_vexapi_protocol_t& protocol) {
    VX_UINT8 isEnabled = 0;
    const ResultCode code =
        CallLibrary({"VEXAPI_IsFWCMFeatureEnabled", "", "Get FWCM feature failed", RC_CFG_READ_FAILED},
                    [&] { return VEXAPI_IsFWCMFeatureEnabled(&protocol.PortHandle, &isEnabled); });
    if (code == RC_SUCCESS && isEnabled == 0) {
        TraceStep(TRACE_DEBUG, "FWCM feature is disabled");
        return RC_FEATURE_DISABLED;
    }
    return code;
}

} // namespace

struct CongestionAdmission {
    std::span<const CongestionRefusal> refusals;
    bool needsFeature; ///< whether to ask the library if it is on
};
constinit const CongestionAdmission ADMIT_EITHER_GENERATION = {EITHER_GENERATION, true};
constinit const CongestionAdmission ADMIT_SECOND_GENERATION = {SECOND_GENERATION, true};
constinit const CongestionAdmission ADMIT_PROFILE = {PROFILE, false};

ResultCode AdmitCongestion(const CongestionAdmission& admission, _vexapi_protocol_t& protocol) {
    for (const CongestionRefusal& refusal : admission.refusals) {
        if (refusal.applies(protocol)) {
            TraceStep(TRACE_DEBUG, "%s", refusal.trace);
            return refusal.code;
        }
    }
    return admission.needsFeature ? AskFeature(protocol) : RC_SUCCESS;
}

bool HasSecondGeneration(const _vexapi_protocol_t& protocol) {
    const bool isSecond = !LacksFeatures(protocol, FEATURE_SECOND_GENERATION);
    TraceStep(TRACE_INFORMATION, "Phase %d supported", isSecond ? 2 : 1);
    return isSecond;
}

ResultCode ReadCongestionList(_vexapi_protocol_t& protocol, _VEXAPI_SANCONGTMGMTV2*& list) {
    VX_UINT32 status = 0;
    const ResultCode code =
        MakeLibraryCalls([&] { status = VEXAPI_GetSCMRStatisticsList(&protocol.PortHandle, &list); });
    if (code != RC_SUCCESS) {
        return code;
    }
    TraceStatus("VEXAPI_GetSCMRStatisticsList", status);
    if (status != 0 || list == nullptr) {
        TraceStep(TRACE_DEBUG, "Get SCMR Statistics failed err=%d", static_cast<int>(status));
        return RC_STATS_READ_FAILED;
    }
    return RC_SUCCESS;
}

ResultCode ReleaseCongestionList(_VEXAPI_SANCONGTMGMTV2* list) {
    if (list == nullptr) {
        return RC_SUCCESS;
    }
    return CallLibrary({"VEXAPI_FreeSCMRStatisticsList", "", "Free SCMR Statistics failed", RC_STATS_CLEAR_FAILED},
                       [&] { return VEXAPI_FreeSCMRStatisticsList(list); });
}
