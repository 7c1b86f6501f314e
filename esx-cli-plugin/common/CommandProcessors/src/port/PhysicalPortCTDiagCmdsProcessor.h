#pragma once

#include "Family.h"

/// `port -s ctdiag`: a Common Transport test against a target: a CT ping or an FC trace route.
class PhysicalPortCTDiagCmdsProcessor final : public Family<PhysicalPortCTDiagCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static ResultCode Run(const TavuStringArray& args, VX_UINT32& testType);
};
