#pragma once

#include "Family.h"
#include "Resolvers.h"

/// `target -v info`: everything known about a target, as one report, from the adapter tree alone.
class FCTargetInfoCmdsProcessor final : public Family<FCTargetInfoCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode Get(const TavuStringArray& args, TargetEntry& entry);
    static void DisplayTargetInfo(MultipleCmdsProcessor* self, const TargetEntry& entry, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayTargetInfo, DisplayError>;
};
