#pragma once

#include "Family.h"
#include "PhysicalPortCmdsProcessor.h"

/// Byte order of the big-endian fields of a diagnostic port result.
unsigned short swapshort(unsigned short value);
unsigned int swapint(unsigned int value);

/// Optical power in dBm of a value in units of 0.1 microwatt, in single precision; minus infinity for 0.
float DportPowerDbm(unsigned short power);

/// Text of a phase's result code.
const char* GetDportTestResult(VX_UINT32 code);

/// `port -s dportdiag`: the diagnostic port, a mode in which adapter and switch test their link.
class PhysicalPortDPortDiagCmdsProcessor final : public Family<PhysicalPortDPortDiagCmdsProcessor> {
public:
    using Family::Family;
    static const FamilyDescription FAMILY;

private:
    struct DPortMode {
        bool isDiagnostic = false;
        RebootRequired reboot; ///< for `set`
    };

    static VX_UINT32 Get(const TavuStringArray& args, DPortMode& mode);
    static VX_UINT32 Set(const TavuStringArray& args, DPortMode& mode);
    static VX_UINT32 CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format);
    static VX_UINT32 AdmitPort(const TavuStringArray& args, PortEntry& entry);
    static VX_UINT32 AdmitTest(const TavuStringArray& args, PortEntry& entry);

    static void DisplayDPortDiagInfo(MultipleCmdsProcessor* self, const DPortMode& mode, eOutputFormat format);
    static void DisplayGetError(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format);
    static void DisplaySetError(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format);
    static void DisplayMbxError(MultipleCmdsProcessor* self, VX_UINT32 status, eOutputFormat format);
    static void DisplayDPortDiagResult(MultipleCmdsProcessor* self, bool isSecondForm,
                                       const _VEXAPI_DiagnosticsDPortResult& result, eOutputFormat format);

    static constexpr CommonFunction CmdGetCommon = FetchThenDisplay<Get, DisplayDPortDiagInfo, DisplayGetError>;
    static constexpr CommonFunction CmdSetCommon = FetchThenDisplay<Set, DisplayDPortDiagInfo, DisplaySetError>;
    static const Leaf LEAVES[];
};
