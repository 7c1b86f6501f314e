#pragma once

#include "Family.h"
#include "StagedSettings.h"

/// `port -s bbcr`: buffer-to-buffer credit recovery. Changes are staged in a cache file by `setFile` and
/// written by `set`.
class PhysicalPortBBCRCmdsProcessor final : public Family<PhysicalPortBBCRCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct BBCRInfo {
        _vexapi_protocol_t* protocol = nullptr;
        VX_UINT8 status = 0;     ///< staged: 0 off
        VX_UINT8 configured = 0; ///< staged count
        VX_UINT8 state = 0;      ///< live: 0 offline
        VX_UINT8 negotiated = 0; ///< live count
        char reason[64] = {};    ///< why the state is offline
        RebootRequired reboot;
        Commit commit; ///< of `set`
    };

    static ResultCode Get(const TavuStringArray& args, BBCRInfo& info);
    static ResultCode SetFile(const TavuStringArray& args, BBCRInfo& info);
    static ResultCode Set(const TavuStringArray& args, BBCRInfo& info);
    static std::span<const StagedKey<BBCRInfo>> Keys();
    static ResultCode UpdateBBCRInFile(const TavuStringArray& args, const StagedFile& file);
    static void DisplayBBCRInfo(MultipleCmdsProcessor* self, const BBCRInfo& info, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayBBCRInfo, DisplayError>;
    static constexpr CommonFunction CmdSetFileCommon = FetchThenDisplay<SetFile, DisplayBBCRInfo, DisplayError>;
    static constexpr CommonFunction CmdSetCommon = CommitThenDisplay<Set, DisplayBBCRInfo, DisplaySetError>;
};
