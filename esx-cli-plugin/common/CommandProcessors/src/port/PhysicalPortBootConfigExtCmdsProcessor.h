#pragma once

#include "BootSettings.h"
#include "Family.h"

/// `port -s bootconfigext`: booting from SAN, from NVMe over Fibre Channel too. Changes are staged by
/// `setFile`, one boot target a command, in a cache file, and written by `set`.
class PhysicalPortBootConfigExtCmdsProcessor final : public Family<PhysicalPortBootConfigExtCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    static VX_UINT32 Get(const TavuStringArray& args, BootSettings& boot);
    static VX_UINT32 SetFile(const TavuStringArray& args, BootSettings& boot);
    static VX_UINT32 Set(const TavuStringArray& args, BootSettings& boot);
    static void DisplayBootConfigInfo(MultipleCmdsProcessor* self, const BootSettings& boot, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayBootConfigInfo, DisplayError>;
    static constexpr CommonFunction CmdSetFileCommon = FetchThenDisplay<SetFile, DisplayBootConfigInfo, DisplayError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplayBootConfigInfo, DisplaySetError>;
    static const Leaf LEAVES[];
};
