/// @file
/// Counters of the link to a target.
#pragma once

#include "Resolvers.h"

/// Reads the counters of a target from the port that sees it. Returns `RC_STATS_READ_FAILED` if the library fails.
ResultCode ReadTargetStatistics(const TargetEntry& entry, __STATISTICS& counters);
