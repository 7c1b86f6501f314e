/// @file
/// What the commands of congestion management ask before they answer, and the library calls that ports and
/// targets share. A target is asked for by the port that sees it.
#pragma once

#include "LibraryCall.h"
#include "vexapi.h"

#include <span>

/// Bits of `FeatureFlags`: what driver and firmware support. The second generation counts where both are set.
inline constexpr VX_UINT32 FEATURE_FIRST_GENERATION = 1U << 23;
inline constexpr VX_UINT32 FEATURE_SECOND_GENERATION = 1U << 26;

/// The second generation keeps a list of 64-bit counters; the first one keeps the last events.
inline bool HasSecondGeneration(const _vexapi_protocol_t& protocol) {
    return (protocol.FeatureFlags & FEATURE_SECOND_GENERATION) != 0;
}

/// A reason to refuse a port.
struct CongestionRefusal {
    bool (*applies)(const _vexapi_protocol_t& protocol);
    VX_UINT32 code;
    const char* trace;
};

/// The refusals of each kind of command in the order that clients know; the first that applies counts.
extern const std::span<const CongestionRefusal> REFUSALS_OF_EITHER_GENERATION;
extern const std::span<const CongestionRefusal> REFUSALS_OF_SECOND_GENERATION;
/// Of the profile: a virtual port is refused ahead of the firmware.
extern const std::span<const CongestionRefusal> REFUSALS_OF_PROFILE;

/// `RC_SUCCESS`, or the code of the refusal. The names are the caller's, for the traces, here and below.
VX_UINT32 AdmitCongestionPort(const char* className, const char* function,
                              std::span<const CongestionRefusal> refusals, const _vexapi_protocol_t& protocol);

/// Asks the library whether the feature is on: `RC_FEATURE_DISABLED` when it isn't, `RC_CFG_READ_FAILED`
/// without an answer.
VX_UINT32 AskCongestionFeature(const char* className, const char* function, _vexapi_protocol_t& protocol);

/// Reads the counters of the second generation, of the port and all its targets. On success there is a head,
/// which `ReleaseCongestionList` takes back; `RC_STATS_READ_FAILED` for a failure and for no head.
VX_UINT32 ReadCongestionList(const char* className, const char* function, _vexapi_protocol_t& protocol,
                             _VEXAPI_SANCONGTMGMTV2*& list);

/// Gives the list back; null is no list. `RC_STATS_CLEAR_FAILED` when the library fails at it.
VX_UINT32 ReleaseCongestionList(const char* className, const char* function, _VEXAPI_SANCONGTMGMTV2* list);
