#pragma once

#include "Family.h"
#include "Resolvers.h"

/// `port -s scmstats`: fabric congestion statistics of a port. `clear` clears the counters of its targets, in the
/// second generation only.
class PhysicalPortSCMStatsCmdsProcessor final : public Family<PhysicalPortSCMStatsCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct Statistics {
        PortEntry entry;
        _VEXAPI_SANCONGTMGMTV2* list = nullptr; ///< none in the first generation
    };

    static ResultCode Get(const TavuStringArray& args, Statistics& statistics);
    static ResultCode Release(const Statistics& statistics);
    static ResultCode Clear(const TavuStringArray& args);
    static void DisplayStatistics(MultipleCmdsProcessor* self, const Statistics& statistics, eOutputFormat format);
    static void DisplayPortSCMStats(MultipleCmdsProcessor* self, const _vexapi_protocol_t& protocol,
                                    eOutputFormat format);
    static void DisplayPortSCMStatsV2(MultipleCmdsProcessor* self, const _vexapi_protocol_t& protocol,
                                      const _VEXAPI_SANCONGTMGMTV2& list, eOutputFormat format);
    static void DisplayClear(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchDisplayRelease<Get, DisplayStatistics, Release, DisplayError>;
    static ResultCode CmdClearCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
};
