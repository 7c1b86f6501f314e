#pragma once

#include "Family.h"
#include "PhysicalPortCmdsProcessor.h"

/// `port -s scmstats`: what a port has counted of fabric congestion. `clear` clears the counters of its
/// targets, in the second generation only.
class PhysicalPortSCMStatsCmdsProcessor final : public Family<PhysicalPortSCMStatsCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    struct Statistics {
        PortEntry entry;
        _VEXAPI_SANCONGTMGMTV2* list = nullptr; ///< none in the first generation
    };

    static VX_UINT32 Get(const TavuStringArray& args, Statistics& statistics);
    static VX_UINT32 Release(const Statistics& statistics);
    static VX_UINT32 Clear(const TavuStringArray& args);
    static void DisplayStatistics(MultipleCmdsProcessor* self, const Statistics& statistics, eOutputFormat format);
    static void DisplayPortSCMStats(MultipleCmdsProcessor* self, const _vexapi_protocol_t& protocol,
                                    eOutputFormat format);
    static void DisplayPortSCMStatsV2(MultipleCmdsProcessor* self, const _vexapi_protocol_t& protocol,
                                      const _VEXAPI_SANCONGTMGMTV2& list, eOutputFormat format);
    static void DisplayClear(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchDisplayRelease<Get, DisplayStatistics, Release, DisplayError>;
    static VX_UINT32 CmdClearCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static const Leaf LEAVES[];
};
