#pragma once

#include "FCTargetCmdsProcessor.h"

/// Reads the link statistics of a target: `RC_STATS_READ_FAILED` when the library can't. The names are the
/// caller's, for the traces.
VX_UINT32 ReadTargetStatistics(const TargetEntry& entry, __STATISTICS& counters);

/// `target -v stats`: the error counters of the link to a target.
class FCTargetStatsCmdsProcessor final : public Family<FCTargetStatsCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    struct TargetStats {
        TargetEntry entry;
        __STATISTICS counters{};
    };

    static VX_UINT32 Get(const TavuStringArray& args, TargetStats& stats);
    static void DisplayTargetStats(MultipleCmdsProcessor* self, const TargetStats& stats, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayTargetStats, DisplayError>;
    static const Leaf LEAVES[];
};
