#pragma once

#include "Family.h"
#include "PhysicalPortCmdsProcessor.h"

/// `port -s beacon`: the blinking of a port's LEDs that lets somebody find an adapter in a rack.
class PhysicalPortBeaconCmdsProcessor final : public Family<PhysicalPortBeaconCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    static VX_UINT32 Get(const TavuStringArray& args, VEXAPI_BEACON_TYPE& state);
    static VX_UINT32 Set(const TavuStringArray& args, VEXAPI_BEACON_TYPE& state);
    static VX_UINT32 AdmitPort(const TavuStringArray& args, PortEntry& entry);
    static VX_UINT32 ReadState(const PortEntry& entry, VEXAPI_BEACON_TYPE& state);
    static void DisplayBeaconInfo(MultipleCmdsProcessor* self, const VEXAPI_BEACON_TYPE& state, eOutputFormat format);
    static void DisplayError(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayBeaconInfo, DisplayError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplayBeaconInfo, DisplayError>;
    static const Leaf LEAVES[];
};
