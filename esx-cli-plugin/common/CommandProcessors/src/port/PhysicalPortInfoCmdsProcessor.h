#pragma once

#include "Document.h"
#include "Family.h"
#include "Resolvers.h"

/// `port -s info`: everything known about a port, as one report.
class PhysicalPortInfoCmdsProcessor final : public Family<PhysicalPortInfoCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    /// A record that the library can't fill stays zero, and is reported as such.
    struct PortInfo {
        PortEntry entry;
        _VEXAPI_BoardThermalTemp temperature{};
        VEXAPI_LOCKDOWNINFO lockdown{};
        _VEXAPI_FlashComponentVersion components{};
    };

    static ResultCode Get(const TavuStringArray& args, PortInfo& info);
    static void DisplayPortInfo(MultipleCmdsProcessor* self, const PortInfo& info, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayPortInfo, DisplayError>;
};
