#pragma once

#include "FCTargetCmdsProcessor.h"

/// `target -v info`: everything that the tool knows about a target, as one report. All of it comes out of the
/// records; the library is not asked.
class FCTargetInfoCmdsProcessor final : public Family<FCTargetInfoCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    static VX_UINT32 Get(const TavuStringArray& args, TargetEntry& entry);
    static void DisplayTargetInfo(MultipleCmdsProcessor* self, const TargetEntry& entry, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayTargetInfo, DisplayError>;
    static const Leaf LEAVES[];
};
