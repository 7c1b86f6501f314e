#pragma once

#include "Family.h"
#include "Resolvers.h"

/// `port -s beacon`: blinking of a port's LEDs, to locate an adapter in a rack.
class PhysicalPortBeaconCmdsProcessor final : public Family<PhysicalPortBeaconCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode Get(const TavuStringArray& args, VEXAPI_BEACON_TYPE& state);
    static ResultCode Set(const TavuStringArray& args, VEXAPI_BEACON_TYPE& state);
    static ResultCode AdmitPort(const TavuStringArray& args, PortEntry& entry);
    static ResultCode ReadState(const PortEntry& entry, VEXAPI_BEACON_TYPE& state);
    static void DisplayBeaconInfo(MultipleCmdsProcessor* self, const VEXAPI_BEACON_TYPE& state, eOutputFormat format);
    static void DisplayError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayBeaconInfo, DisplayError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplayBeaconInfo, DisplayError>;
};
