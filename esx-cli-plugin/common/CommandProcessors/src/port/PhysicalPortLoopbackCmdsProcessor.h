#pragma once

#include "Family.h"
#include "FrameDiagnostics.h"

/// `port -s loopback`: sends test frames through a port's own loop.
class PhysicalPortLoopbackCmdsProcessor final : public Family<PhysicalPortLoopbackCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

    struct Loopback {
        _VEXAPI_LoopbackTestResult result{}; ///< of the last iteration
        FrameTestCounts counts;
    };

private:
    static ResultCode Run(const TavuStringArray& args, Loopback& loopback);
    static void DisplayLoopbackTestResult(MultipleCmdsProcessor* self, const Loopback& loopback, eOutputFormat format);

    static constexpr CommonFunction CmdRunCommon = FetchThenDisplay<Run, DisplayLoopbackTestResult, DisplayError>;
};
