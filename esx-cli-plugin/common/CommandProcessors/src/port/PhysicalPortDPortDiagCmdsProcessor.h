#pragma once

#include "Family.h"
#include "Resolvers.h"

/// Swap the bytes of the big-endian fields of a diagnostic port result.
unsigned short swapshort(unsigned short value);
unsigned int swapint(unsigned int value);

/// Optical power in dBm from units of 0.1 microwatt, in single precision; minus infinity for 0.
float DportPowerDbm(unsigned short power);

/// Text of a phase's result code.
const char* GetDportTestResult(VX_UINT32 code);

/// `port -s dportdiag`: the diagnostic port, a mode in which the adapter and the switch test their link.
class PhysicalPortDPortDiagCmdsProcessor final : public Family<PhysicalPortDPortDiagCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];

private:
    struct DPortMode {
        bool isDiagnostic = false;
        RebootRequired reboot; ///< for `set`
    };

    static ResultCode Get(const TavuStringArray& args, DPortMode& mode);
    static ResultCode Set(const TavuStringArray& args, DPortMode& mode);
    static ResultCode CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static ResultCode AdmitPort(const TavuStringArray& args, PortEntry& entry);
    static ResultCode AdmitTest(const TavuStringArray& args, PortEntry& entry);

    static void DisplayDPortDiagInfo(MultipleCmdsProcessor* self, const DPortMode& mode, eOutputFormat format);
    static void DisplayGetError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format);
    static void DisplaySetError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format);
    static void DisplayMbxError(MultipleCmdsProcessor* self, VX_UINT32 status, eOutputFormat format);
    static void DisplayDPortDiagResult(MultipleCmdsProcessor* self, bool isSecondForm,
                                       const _VEXAPI_DiagnosticsDPortResult& result, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayDPortDiagInfo, DisplayGetError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplayDPortDiagInfo, DisplaySetError>;
};
