#pragma once

#include "Family.h"
#include "Resolvers.h"

/// Size of a LUN in megabytes. Whole blocks of 1024 are counted first, so fewer than 1024 blocks, however
/// large, have the size 0: clients know it so.
VX_UINT64 LunSizeInMegabytes(VX_UINT64 blockCount, VX_UINT32 blockSize);

/// `lun -v info`: everything that the tool knows about a LUN or a namespace, as one report.
class FCLunInfoCmdsProcessor final : public Family<FCLunInfoCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode Get(const TavuStringArray& args, LunEntry& entry);
    static void DisplayLunInfo(MultipleCmdsProcessor* self, const LunEntry& entry, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayLunInfo, DisplayError>;
};
