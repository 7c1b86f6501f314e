#pragma once

#include "Family.h"

/// `port -s fwdump`: writes a port's firmware dump to a file.
class PhysicalPortFwDumpCmdsProcessor final : public Family<PhysicalPortFwDumpCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    static VX_UINT32 CmdGetCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static VX_UINT32 WriteDump(const TavuStringArray& args);
    static const Leaf LEAVES[];
};
