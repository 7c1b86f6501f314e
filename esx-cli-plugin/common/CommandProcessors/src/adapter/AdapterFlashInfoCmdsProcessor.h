#pragma once

#include "Family.h"

/// `adapter -s flashinfo`: which tool last wrote an adapter's flash, when, and with which image.
class AdapterFlashInfoCmdsProcessor final : public Family<AdapterFlashInfoCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode Get(const TavuStringArray& args, VX_SFlashMemoBlock& memo);
    static void DisplayFlashInfo(MultipleCmdsProcessor* self, const VX_SFlashMemoBlock& memo, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayFlashInfo, DisplayError>;
};
