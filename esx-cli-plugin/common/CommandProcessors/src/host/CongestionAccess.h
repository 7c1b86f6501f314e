/// @file
/// What the commands of congestion management ask before they answer, and the library calls that ports and
/// targets share. A target is asked for by the port that sees it.
#pragma once

#include "LibraryCall.h"
#include "TracedFunction.h"
#include "vexapi.h"

/// What a port must be for a command of congestion management. Each kind has its own order of refusals.
struct CongestionAdmission;
/// Statistics of either generation.
extern const CongestionAdmission ADMIT_EITHER_GENERATION;
/// Checks and the clearing of statistics.
extern const CongestionAdmission ADMIT_SECOND_GENERATION;
/// The profile: it can be had while the feature is off.
extern const CongestionAdmission ADMIT_PROFILE;

/// `RC_SUCCESS`, the code of the first refusal that applies, or, where the feature must be on,
/// `RC_FEATURE_DISABLED` when it isn't and `RC_CFG_READ_FAILED` without an answer of the library.
ResultCode AdmitCongestion(const CongestionAdmission& admission, _vexapi_protocol_t& protocol);

/// The same for what the first argument names: `resolve` finds it, and `object` is its word in the trace of
/// a failure, "phy port" or "target".
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

/// Whether the port keeps a list of 64-bit counters, and not only the last events: the second generation counts
/// where it has both.
bool HasSecondGeneration(const _vexapi_protocol_t& protocol);

/// Reads the counters of the second generation, of the port and all its targets. On success there is a head,
/// which `ReleaseCongestionList` takes back; `RC_STATS_READ_FAILED` for a failure and for no head.
ResultCode ReadCongestionList(_vexapi_protocol_t& protocol, _VEXAPI_SANCONGTMGMTV2*& list);

/// Gives the list back; null is no list. `RC_STATS_CLEAR_FAILED` when the library fails at it.
ResultCode ReleaseCongestionList(_VEXAPI_SANCONGTMGMTV2* list);
