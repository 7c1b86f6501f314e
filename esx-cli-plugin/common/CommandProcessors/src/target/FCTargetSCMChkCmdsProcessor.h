#pragma once

#include "FCTargetCmdsProcessor.h"

/// `target -v scmchk`: whether the way to a target is congested now. For targets behind ports of the second
/// generation only.
class FCTargetSCMChkCmdsProcessor final : public Family<FCTargetSCMChkCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    static VX_UINT32 Get(const TavuStringArray& args, TargetEntry& entry);
    static void DisplayTargetSCMChk(MultipleCmdsProcessor* self, const TargetEntry& entry, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayTargetSCMChk, DisplayError>;
    static const Leaf LEAVES[];
};
