#pragma once

#include "FCTargetCmdsProcessor.h"

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
