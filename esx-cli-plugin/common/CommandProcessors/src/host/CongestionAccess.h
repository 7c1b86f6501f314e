/// @file
/// Preconditions of the congestion management commands, and the library calls shared by ports and targets. A target
/// is looked up through the port that sees it.
#pragma once

#include "LibraryCall.h"
#include "TracedFunction.h"
#include "vexapi.h"

/// Preconditions of a congestion management command on its port. Each kind checks them in its own order.
struct CongestionAdmission;
/// For statistics of either generation.
extern const CongestionAdmission ADMIT_EITHER_GENERATION;
/// For checks, and for clearing statistics.
extern const CongestionAdmission ADMIT_SECOND_GENERATION;
/// For the profile, which is available even if the feature is off.
extern const CongestionAdmission ADMIT_PROFILE;

/// Returns `RC_SUCCESS` or the code of the first refusal that applies. If the feature must be on, returns
/// `RC_FEATURE_DISABLED` if it is off and `RC_CFG_READ_FAILED` if the library can't tell.
ResultCode AdmitCongestion(const CongestionAdmission& admission, _vexapi_protocol_t& protocol);

/// Same for the object of the first argument, found by `resolve`. `object` names it in the trace of a failure: "phy
/// port" or "target".
template <typename Entry>
ResultCode AdmitCongestion(const CongestionAdmission& admission, const char* object,
                           ResultCode (*resolve)(const TavuStringArray& args, Entry& entry),
                           const TavuStringArray& args, Entry& entry) {
    const ResultCode code = resolve(args, entry);
    if (code != RC_SUCCESS) {
        TraceStep(TRACE_DEBUG, "Get %s failed err=%d", object, static_cast<int>(code));
        return code;
    }
    return AdmitCongestion(admission, *entry.protocol);
}

/// Whether the port has a list of 64-bit counters, not only the last events. A port with both generations uses the
/// second.
bool HasSecondGeneration(const _vexapi_protocol_t& protocol);

/// Reads the second-generation counters of the port and all its targets. On success the list is not empty, and
/// `ReleaseCongestionList` must release it. Returns `RC_STATS_READ_FAILED` for a failure and for an empty list.
ResultCode ReadCongestionList(_vexapi_protocol_t& protocol, _VEXAPI_SANCONGTMGMTV2*& list);

/// Releases the list; null is ignored. Returns `RC_STATS_CLEAR_FAILED` if the library fails.
ResultCode ReleaseCongestionList(_VEXAPI_SANCONGTMGMTV2* list);
