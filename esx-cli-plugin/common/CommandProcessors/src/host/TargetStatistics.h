/// @file
/// Counters of the link to a target.
#pragma once

#include "Resolvers.h"

/// Reads the counters of a target from the port that sees it. `RC_STATS_READ_FAILED` when the library fails at it.
ResultCode ReadTargetStatistics(const TargetEntry& entry, __STATISTICS& counters);
