#pragma once

#include "Family.h"

/// `port -s fcping`: pings a target of a port.
class PhysicalPortFCPingCmdsProcessor final : public Family<PhysicalPortFCPingCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static ResultCode Run(const TavuStringArray& args);
};
