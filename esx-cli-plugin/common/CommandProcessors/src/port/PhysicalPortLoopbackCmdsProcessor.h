#pragma once

#include "Family.h"
#include "FrameTest.h"

/// `port -s loopback`: sends test frames through a port's own loop.
class PhysicalPortLoopbackCmdsProcessor final : public Family<PhysicalPortLoopbackCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    struct Loopback {
        _VEXAPI_LoopbackTestResult result{}; ///< of the last iteration
        FrameTestCounts counts;
    };

    static VX_UINT32 Run(const TavuStringArray& args, Loopback& loopback);
    static void DisplayLoopbackTestResult(MultipleCmdsProcessor* self, const Loopback& loopback, eOutputFormat format);

    static constexpr CommonFunction CmdRunCommon = FetchThenDisplay<Run, DisplayLoopbackTestResult, DisplayError>;
    static const Leaf LEAVES[];
};
