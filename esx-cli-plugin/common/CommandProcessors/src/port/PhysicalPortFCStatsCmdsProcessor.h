#pragma once

#include "Family.h"

/// A counter of a port's record, as a row.
struct PortCounter {
    const char* label;
    VX_UINT32 _vexapi_protocol_t::*count;
};

/// `port -s stats`: a port's counters from the adapter tree.
class PhysicalPortFCStatsCmdsProcessor final : public Family<PhysicalPortFCStatsCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct NoState {};

    static ResultCode Reset(const TavuStringArray& args, NoState&);
    static void DisplayFCDriverStats(MultipleCmdsProcessor* self, const _vexapi_protocol_t& protocol,
                                     eOutputFormat format);
    static void DisplayFCFWStats(MultipleCmdsProcessor* self, const _vexapi_protocol_t& protocol, eOutputFormat format);
    static void DisplayReset(MultipleCmdsProcessor* self, const NoState&, eOutputFormat format);

    static ResultCode CmdGetCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static constexpr CommonFunction CmdResetCommon = FetchThenDisplay<Reset, DisplayReset, DisplayError>;
};
