#pragma once

#include "Family.h"

/// `adapter -s personality`: whether a Rowan adapter works as a Fibre Channel or as a converged adapter.
class AdapterPersonalityCmdsProcessor final : public Family<AdapterPersonalityCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct Personality {
        unsigned char value = 0; ///< 0 FC, 1 CNA
        RebootRequired reboot;   ///< for `set`: true even if nothing changed
    };

    static ResultCode Get(const TavuStringArray& args, Personality& personality);
    static ResultCode Set(const TavuStringArray& args, Personality& personality);
    static void DisplayAdapterPersonality(MultipleCmdsProcessor* self, const Personality& personality,
                                          eOutputFormat format);
    static void DisplayGetError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format);
    static void DisplaySetError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayAdapterPersonality, DisplayGetError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplayAdapterPersonality, DisplaySetError>;
};
