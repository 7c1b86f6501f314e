#pragma once

#include "Family.h"
#include "LibraryCall.h"
#include "PhysicalPortCmdsProcessor.h"

/// `port -s scmprofile`: how a port reacts to congestion, by the driver's settings or by NVRAM. Writes at once,
/// without a cache file.
class PhysicalPortSCMProfileCmdsProcessor final : public Family<PhysicalPortSCMProfileCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    struct PortProfile {
        PortEntry entry;
        _VEXAPI_SCMRProfile profile{};
    };

    static VX_UINT32 Get(const TavuStringArray& args, PortProfile& port);
    static VX_UINT32 Set(const TavuStringArray& args, PortProfile& port);
    static VX_UINT32 ReadProfile(const LibraryCall& call, PortProfile& port);
    static VX_UINT32 ApplyOptions(const TavuStringArray& args, _VEXAPI_SCMRProfile& profile);
    static void DisplaySCMProfile(MultipleCmdsProcessor* self, const PortProfile& port, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplaySCMProfile, DisplayError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplaySCMProfile, DisplayError>;
    static const Leaf LEAVES[];
};
