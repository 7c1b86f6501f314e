#pragma once

#include "Family.h"

/// `target`: lists the targets that the ports see.
class FCTargetCmdsProcessor final : public Family<FCTargetCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
};
