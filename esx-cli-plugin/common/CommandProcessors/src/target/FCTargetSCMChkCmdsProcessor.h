#pragma once

#include "Family.h"
#include "Resolvers.h"

/// `target -v scmchk`: whether the path to a target is congested now. Only for targets of second-generation ports.
class FCTargetSCMChkCmdsProcessor final : public Family<FCTargetSCMChkCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode Get(const TavuStringArray& args, TargetEntry& entry);
    static void DisplayTargetSCMChk(MultipleCmdsProcessor* self, const TargetEntry& entry, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayTargetSCMChk, DisplayError>;
};
