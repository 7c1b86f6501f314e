#pragma once

#include "Family.h"

/// `port -s dmi`: the memory of a port's transceiver, decoded or as it stands, and the update of its firmware.
class PhysicalPortDMICmdsProcessor final : public Family<PhysicalPortDMICmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    static VX_UINT32 Get(const TavuStringArray& args, _VEXAPI_SFP_DATA& data);
    static VX_UINT32 Update(const TavuStringArray& args);

    static void DisplayDMIInfo(MultipleCmdsProcessor* self, const _VEXAPI_SFP_DATA& data, eOutputFormat format);
    static void DisplayRawDMIInfo(MultipleCmdsProcessor* self, const _VEXAPI_SFP_DATA& data, eOutputFormat format);
    static void DisplaySfpUpdate(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayDMIInfo, DisplayError>;
    static constexpr CommonFunction CmdGetRawCommon = FetchThenDisplay<Get, DisplayRawDMIInfo, DisplayError>;
    static VX_UINT32 CmdUpdateCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static const Leaf LEAVES[];
};
