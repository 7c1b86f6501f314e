#pragma once

#include "Family.h"

/// `port -s dmi`: the memory of a port's transceiver, decoded or raw, and the update of its firmware.
class PhysicalPortDMICmdsProcessor final : public Family<PhysicalPortDMICmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode Get(const TavuStringArray& args, _VEXAPI_SFP_DATA& data);
    static ResultCode Update(const TavuStringArray& args);

    static void DisplayDMIInfo(MultipleCmdsProcessor* self, const _VEXAPI_SFP_DATA& data, eOutputFormat format);
    static void DisplayRawDMIInfo(MultipleCmdsProcessor* self, const _VEXAPI_SFP_DATA& data, eOutputFormat format);
    static void DisplaySfpUpdate(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayDMIInfo, DisplayError>;
    static constexpr CommonFunction CmdGetRawCommon = FetchThenDisplay<Get, DisplayRawDMIInfo, DisplayError>;
    static ResultCode CmdUpdateCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
};
