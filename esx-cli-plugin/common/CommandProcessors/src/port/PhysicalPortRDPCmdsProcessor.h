#pragma once

#include "Family.h"

/// `port -s rdp`: diagnostic parameters of a port's link partner.
class PhysicalPortRDPCmdsProcessor final : public Family<PhysicalPortRDPCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct Payload {
        static constexpr VX_UINT32 SIZE = 508;
        VX_UINT8 bytes[SIZE]{};
    };

    static ResultCode Get(const TavuStringArray& args, Payload& payload);
    static void DisplayRDPInfo(MultipleCmdsProcessor* self, const Payload& payload, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayRDPInfo, DisplayError>;
};
