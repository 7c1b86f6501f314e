#pragma once

#include "Document.h"
#include "Family.h"
#include "Resolvers.h"

/// `adapter -s info`: identity and flash images of an adapter, as one report.
class AdapterInfoCmdsProcessor final : public Family<AdapterInfoCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    /// A record that the library can't fill stays zero.
    struct AdapterInfo {
        AdapterEntry entry;
        _VEXAPI_FlashComponentVersion components{};
        VX_SFlashMemoBlock memo{};
    };

    static ResultCode Get(const TavuStringArray& args, AdapterInfo& info);
    static void DisplayAdapterInfo(MultipleCmdsProcessor* self, const AdapterInfo& info, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayAdapterInfo, DisplayError>;
};
