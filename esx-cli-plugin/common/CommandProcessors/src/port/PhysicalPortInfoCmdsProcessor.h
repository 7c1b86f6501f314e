#pragma once

#include "Document.h"
#include "Family.h"
#include "PhysicalPortCmdsProcessor.h"

/// `port -s info`: everything that the tool knows about a port, as one report.
class PhysicalPortInfoCmdsProcessor final : public Family<PhysicalPortInfoCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    /// What the library is asked for; a record that it fails to fill stays zero, and the report shows that.
    struct PortRecords {
        _VEXAPI_BoardThermalTemp temperature{};
        VEXAPI_LOCKDOWNINFO lockdown{};
        _VEXAPI_FlashComponentVersion components{};
    };

    static const Leaf LEAVES[];

    static VX_UINT32 CmdGetCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static void DisplayPortInfo(MultipleCmdsProcessor* self, const PortEntry& entry, const PortRecords& records,
                                eOutputFormat format);
    static void DisplayError(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format);
};
