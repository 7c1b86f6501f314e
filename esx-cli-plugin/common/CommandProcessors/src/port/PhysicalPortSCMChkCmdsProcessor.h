#pragma once

#include "Family.h"
#include "Resolvers.h"

/// `port -s scmchk`: whether a port is congested now, and how its fabric connection is set up. Only for
/// second-generation ports.
class PhysicalPortSCMChkCmdsProcessor final : public Family<PhysicalPortSCMChkCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode Get(const TavuStringArray& args, PortEntry& entry);
    static void DisplayPortSCMChk(MultipleCmdsProcessor* self, const PortEntry& entry, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayPortSCMChk, DisplayError>;
};
