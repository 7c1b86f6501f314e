#pragma once

#include "Family.h"

/// `port`: lists the FC and FCoE ports and writes NVRAM files.
class PhysicalPortCmdsProcessor final : public Family<PhysicalPortCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static ResultCode CmdUpdateNvramCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static ResultCode UpdateNvram(const TavuStringArray& args, bool& rebootRequired);
    static void DisplayUpdateNvram(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format,
                                   bool rebootRequired);
};
