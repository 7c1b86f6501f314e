#pragma once

#include "Family.h"
#include "Resolvers.h"

/// Size of a LUN in megabytes. Required: whole groups of 1024 blocks are counted first, so fewer than 1024 blocks,
/// however large, have size 0; parsers depend on it.
VX_UINT64 LunSizeInMegabytes(VX_UINT64 blockCount, VX_UINT32 blockSize);

/// `lun -v info`: everything known about a LUN or namespace, as one report.
class FCLunInfoCmdsProcessor final : public Family<FCLunInfoCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode Get(const TavuStringArray& args, LunEntry& entry);
    static void DisplayLunInfo(MultipleCmdsProcessor* self, const LunEntry& entry, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayLunInfo, DisplayError>;
};
