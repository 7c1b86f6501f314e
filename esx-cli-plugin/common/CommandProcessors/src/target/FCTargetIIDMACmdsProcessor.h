#pragma once

#include "FCTargetCmdsProcessor.h"

/// `target -v iidma`: the highest rate at which the port sends to a target. Writes at once, without a cache
/// file.
class FCTargetIIDMACmdsProcessor final : public Family<FCTargetIIDMACmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    struct LinkSpeed {
        TargetEntry entry;
        VX_UINT32 code = 0; ///< the library's speed code
    };

    static VX_UINT32 Get(const TavuStringArray& args, LinkSpeed& speed);
    static VX_UINT32 Set(const TavuStringArray& args, LinkSpeed& speed);
    static VX_UINT32 ResolveTarget(const TavuStringArray& args, TargetEntry& entry);
    static VX_UINT32 ReadSpeed(const TargetEntry& entry, VX_UINT32& code);
    static void DisplayTargetIIDMA(MultipleCmdsProcessor* self, const LinkSpeed& speed, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayTargetIIDMA, DisplayError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplayTargetIIDMA, DisplayError>;
    static const Leaf LEAVES[];
};
