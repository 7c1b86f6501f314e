#pragma once

#include "Family.h"

/// `port -s fwdump`: writes a port's firmware dump to a file.
class PhysicalPortFwDumpCmdsProcessor final : public Family<PhysicalPortFwDumpCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode CmdGetCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static ResultCode WriteDump(const TavuStringArray& args);
};
