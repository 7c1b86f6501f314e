#pragma once

#include "Family.h"

/// `port -s temperature`: the temperature of the board that a port is on.
class PhysicalPortTemperatureCmdsProcessor final : public Family<PhysicalPortTemperatureCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct Temperature {
        VX_UINT32 celsius = 0;
    };

    static ResultCode Get(const TavuStringArray& args, Temperature& temperature);
    static void DisplayTemperature(MultipleCmdsProcessor* self, const Temperature& temperature, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayTemperature, DisplayError>;
};
