#pragma once

#include "Family.h"
#include "InterruptHold.h"
#include "PingDiagnostics.h"

#include <vector>

/// `port -s fcecho`: sends Echo ELS frames to a target or to the fabric.
class PhysicalPortFCEchoCmdsProcessor final : public Family<PhysicalPortFCEchoCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct Echo {
        PingRequest request;
        std::vector<_VEXAPI_ECHO_RESULTS> frames; ///< sent frames, including failed ones
    };

    static ResultCode CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static ResultCode Run(const TavuStringArray& args, Echo& echo, const InterruptHold& interrupt);
    static ResultCode SendFrames(Echo& echo, VX_UINT32 destinationType, const InterruptHold& interrupt);
    static void DisplayFCEchoResult(MultipleCmdsProcessor* self, const Echo& echo, ResultCode code,
                                    eOutputFormat format);
};
