#pragma once

#include "Document.h"
#include "Family.h"

#include <cstdlib>
#include <memory>

/// Forward error correction as determined by a port's speed and adapter. It is off below 16 Gbps, and always on at
/// 32 Gbps and above and on a mezzanine adapter. Only at 16 Gbps, and while the port is not online, does the
/// library's value count, and can it be changed.
VX_UINT32 EffectiveFecStatus(bool isMezzanine, const _vexapi_protocol_t& protocol, VX_UINT32 libraryStatus);
bool IsFecChangeAllowed(bool isMezzanine, const _vexapi_protocol_t& protocol);

/// `port -s fec`: forward error correction of a port and its counters. Changes are written immediately, without a
/// cache file.
class PhysicalPortFECCmdsProcessor final : public Family<PhysicalPortFECCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct Free {
        void operator()(_VEXAPI_FWPRIVATESTATSEntry* entries) const { std::free(entries); }
    };
    /// State of a port.
    struct FecState {
        _vexapi_protocol_t* protocol = nullptr;
        bool isMezzanine = false;
        VX_UINT32 status = 0; ///< 0 off, 1 on
        std::unique_ptr<_VEXAPI_FWPRIVATESTATSEntry, Free> entries;
        RebootRequired reboot; ///< for `set`: true once a library call to change something was made
    };

    static ResultCode Get(const TavuStringArray& args, FecState& fec);
    static ResultCode Set(const TavuStringArray& args, FecState& fec);
    static ResultCode ResolvePort(const TavuStringArray& args, FecState& fec);
    static ResultCode ReadStatus(FecState& fec);
    static ResultCode ReadMezzanine(FecState& fec);
    static ResultCode ReadCounters(FecState& fec);
    static ResultCode ChangeStatus(const TavuString& value, FecState& fec);
    static ResultCode ResetCounters(const TavuString& value, FecState& fec);

    static void DisplayFECInfo(MultipleCmdsProcessor* self, const FecState& fec, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayFECInfo, DisplayError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplayFECInfo, DisplaySetError>;
};
