#pragma once

#include "Family.h"
#include "PingTest.h"

#include <vector>

/// `port -s fcecho`: sends Echo ELS frames to a target or to the fabric.
class PhysicalPortFCEchoCmdsProcessor final : public Family<PhysicalPortFCEchoCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    struct Echo {
        PingRequest request;
        std::vector<_VEXAPI_ECHO_RESULTS> frames; ///< those that were sent, failed ones too
    };

    static VX_UINT32 CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static VX_UINT32 Run(const TavuStringArray& args, Echo& echo);
    static VX_UINT32 SendFrames(Echo& echo, VX_UINT32 destinationType);
    static void DisplayFCEchoResult(MultipleCmdsProcessor* self, const Echo& echo, VX_UINT32 code,
                                    eOutputFormat format);
    static const Leaf LEAVES[];
};
