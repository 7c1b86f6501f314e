#pragma once

#include "Family.h"

/// `port -s fcping`: pings a target of a port.
class PhysicalPortFCPingCmdsProcessor final : public Family<PhysicalPortFCPingCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    static VX_UINT32 CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static VX_UINT32 Run(const TavuStringArray& args);
    static const Leaf LEAVES[];
};
