#pragma once

#include "Family.h"
#include "Resolvers.h"

/// `target -v iidma`: the highest rate at which the port sends to a target. Changes are written immediately,
/// without a cache file.
class FCTargetIIDMACmdsProcessor final : public Family<FCTargetIIDMACmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct LinkSpeed {
        TargetEntry entry;
        VX_UINT32 code = 0; ///< the library's speed code
    };

    static ResultCode Get(const TavuStringArray& args, LinkSpeed& speed);
    static ResultCode Set(const TavuStringArray& args, LinkSpeed& speed);
    static ResultCode ResolveTarget(const TavuStringArray& args, TargetEntry& entry);
    static ResultCode ReadSpeed(const TargetEntry& entry, VX_UINT32& code);
    static void DisplayTargetIIDMA(MultipleCmdsProcessor* self, const LinkSpeed& speed, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayTargetIIDMA, DisplayError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplayTargetIIDMA, DisplayError>;
};
