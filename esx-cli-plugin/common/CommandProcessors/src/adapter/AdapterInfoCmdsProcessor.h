#pragma once

#include "AdapterCmdsProcessor.h"
#include "Document.h"
#include "Family.h"

/// `adapter -s info`: identity and flash images of an adapter, as one report.
class AdapterInfoCmdsProcessor final : public Family<AdapterInfoCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    /// What the library is asked for; a record that it fails to fill stays zero.
    struct FlashRecords {
        _VEXAPI_FlashComponentVersion components{};
        VX_SFlashMemoBlock memo{};
    };

    static const Leaf LEAVES[];

    static VX_UINT32 CmdGetCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static void DisplayAdapterInfo(MultipleCmdsProcessor* self, const AdapterEntry& entry, const FlashRecords& flash,
                                   eOutputFormat format);
    static void DisplayError(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format);
};
