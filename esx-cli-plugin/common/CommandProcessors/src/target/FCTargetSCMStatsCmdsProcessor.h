#pragma once

#include "Family.h"
#include "Resolvers.h"

/// `target -v scmstats`: congestion statistics of the path to a target, in the generation that its port supports.
class FCTargetSCMStatsCmdsProcessor final : public Family<FCTargetSCMStatsCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct Statistics {
        TargetEntry entry;
        __STATISTICS counters{};                ///< of the first generation
        _VEXAPI_SANCONGTMGMTV2* list = nullptr; ///< none in the first generation
    };

    static ResultCode Get(const TavuStringArray& args, Statistics& statistics);
    static ResultCode Release(const Statistics& statistics);
    static void DisplayStatistics(MultipleCmdsProcessor* self, const Statistics& statistics, eOutputFormat format);
    static void DisplayTargetSCMStats(MultipleCmdsProcessor* self, const _tagVEXAPI_SDMTarget& target,
                                      const __STATISTICS& counters, eOutputFormat format);
    static void DisplayTargetSCMStatsV2(MultipleCmdsProcessor* self, const _tagVEXAPI_SDMTarget& target,
                                        const _VEXAPI_SANCONGTMGMTV2& list, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchDisplayRelease<Get, DisplayStatistics, Release, DisplayError>;
};
