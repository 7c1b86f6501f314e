#pragma once

#include "Family.h"

/// `port -s ctdiag`: a Common Transport test against a target: a CT ping or an FC trace route.
class PhysicalPortCTDiagCmdsProcessor final : public Family<PhysicalPortCTDiagCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    static VX_UINT32 CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static VX_UINT32 Run(const TavuStringArray& args, VX_UINT32& testType);
    static const Leaf LEAVES[];
};
