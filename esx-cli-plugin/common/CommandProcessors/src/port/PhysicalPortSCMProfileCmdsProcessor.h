#pragma once

#include "Family.h"
#include "LibraryCall.h"
#include "Resolvers.h"

/// `port -s scmprofile`: how a port reacts to congestion, controlled by the driver's settings or by NVRAM. Changes
/// are written immediately, without a cache file.
class PhysicalPortSCMProfileCmdsProcessor final : public Family<PhysicalPortSCMProfileCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct PortProfile {
        PortEntry entry;
        _VEXAPI_SCMRProfile profile{};
    };

    static ResultCode Get(const TavuStringArray& args, PortProfile& port);
    static ResultCode Set(const TavuStringArray& args, PortProfile& port);
    static ResultCode ReadProfile(const LibraryCall& call, PortProfile& port);
    static ResultCode ApplyOptions(const TavuStringArray& args, _VEXAPI_SCMRProfile& profile);
    static void DisplaySCMProfile(MultipleCmdsProcessor* self, const PortProfile& port, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplaySCMProfile, DisplayError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplaySCMProfile, DisplayError>;
};
