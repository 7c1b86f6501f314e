#pragma once

#include "Family.h"

/// `port -s rdp`: the diagnostic parameters that a port's link partner tells.
class PhysicalPortRDPCmdsProcessor final : public Family<PhysicalPortRDPCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    struct Payload {
        static constexpr VX_UINT32 SIZE = 508;
        VX_UINT8 bytes[SIZE]{};
    };

    static VX_UINT32 Get(const TavuStringArray& args, Payload& payload);
    static void DisplayRDPInfo(MultipleCmdsProcessor* self, const Payload& payload, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayRDPInfo, DisplayError>;
    static const Leaf LEAVES[];
};
