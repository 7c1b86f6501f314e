#pragma once

#include "Family.h"
#include "Resolvers.h"

/// `target -v stats`: the error counters of the link to a target.
class FCTargetStatsCmdsProcessor final : public Family<FCTargetStatsCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct TargetStats {
        TargetEntry entry;
        __STATISTICS counters{};
    };

    static ResultCode Get(const TavuStringArray& args, TargetStats& stats);
    static void DisplayTargetStats(MultipleCmdsProcessor* self, const TargetStats& stats, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayTargetStats, DisplayError>;
};
