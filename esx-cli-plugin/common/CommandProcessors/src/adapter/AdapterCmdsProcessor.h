#pragma once

#include "Family.h"

/// `adapter`: lists the adapters and writes their flash.
class AdapterCmdsProcessor final : public Family<AdapterCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    static ResultCode CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static ResultCode CmdUpdateCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static ResultCode Update(const TavuStringArray& args, bool& reboot);
    static void DisplayUpdateInfo(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format, bool reboot);
};
