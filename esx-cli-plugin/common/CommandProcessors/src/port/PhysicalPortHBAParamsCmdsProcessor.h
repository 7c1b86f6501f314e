#pragma once

#include "Family.h"
#include "Resolvers.h"
#include "StagedSettings.h"

/// `port -s hbaparams`: a port's NVRAM parameters. Changes are staged in a cache file by `setFile` and
/// written by `set`.
class PhysicalPortHBAParamsCmdsProcessor final : public Family<PhysicalPortHBAParamsCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

    struct HBAParams {
        PortEntry entry;
        _VEXAPI_HBAParameters parameters{};
        RebootRequired reboot;
        Commit commit; ///< of `set`

        __CHIPPROPERTY Chip() const { return entry.protocol->ChipProperty; }
    };

private:
    struct NoState {};

    static ResultCode Get(const TavuStringArray& args, HBAParams& params);
    static ResultCode SetFile(const TavuStringArray& args, HBAParams& params);
    static ResultCode Set(const TavuStringArray& args, HBAParams& params);
    static ResultCode RestoreDefaults(const TavuStringArray& args, RebootRequired& reboot);
    static ResultCode Save(const TavuStringArray& args, NoState&);

    static void DisplayHBAParamsInfo(MultipleCmdsProcessor* self, const HBAParams& params, eOutputFormat format);
    static void DisplayRestoreDefaults(MultipleCmdsProcessor* self, const RebootRequired& reboot, eOutputFormat format);
    static void DisplayRestoreDefaultsError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format);
    static void DisplaySave(MultipleCmdsProcessor* self, const NoState&, eOutputFormat format);
    static void DisplaySaveError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayHBAParamsInfo, DisplayError>;
    static constexpr CommonFunction CmdSetFileCommon = FetchThenDisplay<SetFile, DisplayHBAParamsInfo, DisplayError>;
    static constexpr CommonFunction CmdSetCommon = CommitThenDisplay<Set, DisplayHBAParamsInfo, DisplaySetError>;
    static constexpr CommonFunction CmdRestoreDefaultsCommon =
        FetchThenDisplay<RestoreDefaults, DisplayRestoreDefaults, DisplayRestoreDefaultsError>;
    static constexpr CommonFunction CmdSaveCommon = FetchThenDisplay<Save, DisplaySave, DisplaySaveError>;
};
