#pragma once

#include "Family.h"

/// `lun`: lists the LUNs and namespaces of the targets that the ports see.
class FCLunCmdsProcessor final : public Family<FCLunCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
};
