#pragma once

#include "Family.h"

/// `adapter -s personality`: whether a Rowan adapter works as a Fibre Channel or as a converged adapter.
class AdapterPersonalityCmdsProcessor final : public Family<AdapterPersonalityCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    struct Personality {
        unsigned char value = 0; ///< 0 FC, 1 CNA
        RebootRequired reboot;   ///< for `set`: true even when nothing changed
    };

    static VX_UINT32 Get(const TavuStringArray& args, Personality& personality);
    static VX_UINT32 Set(const TavuStringArray& args, Personality& personality);
    static void DisplayAdapterPersonality(MultipleCmdsProcessor* self, const Personality& personality,
                                          eOutputFormat format);
    static void DisplayGetError(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format);
    static void DisplaySetError(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayAdapterPersonality, DisplayGetError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplayAdapterPersonality, DisplaySetError>;
    static const Leaf LEAVES[];
};
