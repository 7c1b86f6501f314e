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
    /// A record that the library fails to fill stays zero.
    struct AdapterInfo {
        AdapterEntry entry;
        _VEXAPI_FlashComponentVersion components{};
        VX_SFlashMemoBlock memo{};
    };

    static VX_UINT32 Get(const TavuStringArray& args, AdapterInfo& info);
    static void DisplayAdapterInfo(MultipleCmdsProcessor* self, const AdapterInfo& info, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayAdapterInfo, DisplayError>;
    static const Leaf LEAVES[];
};
