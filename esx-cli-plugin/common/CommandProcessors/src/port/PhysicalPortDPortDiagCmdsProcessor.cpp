#include "PhysicalPortDPortDiagCmdsProcessor.h"

#include "ChipFamilies.h"
#include "CmdLineParser.h"
#include "HostTree.h"
#include "LibraryCall.h"
#include "Mezzanine.h"
#include "Output.h"
#include "PhysicalPortFECCmdsProcessor.h"
#include "ReportTexts.h"

#include <dlfcn.h>
#include <gnu/lib-names.h>

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortDPortDiagCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"DPortDiagInfo", "DPortDiagResult", "DPortDiagResultList"}, 2048, ReportBlock::SizeRule::SPACE_LEFT};
constexpr char OUT_DPORT_MODE[] = "Diagnostics Port Status";

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, DPortDiag read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_CFG_UPDATE_FAILED, "Failed, DPortDiag update failed"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this port"},
    {RC_BFS_MODE, "Failed, Feature not supported in Boot-From-SAN mode"},
    {RC_LINK_UP_REQUIRED, "Failed, Feature requires link up"},
    {RC_UNSUPPORTED_SPEED, "Failed, Feature supported for speeds 16 Gbps and above"},
    {RC_UNSUPPORTED_MODE, "Failed, Port not in diagnostics mode"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, Feature not supported for virtual port"},
};

constexpr CodeText MAILBOX_TEXTS[] = {
    {7, "Failed, Firmware is not ready to execute request command"},
    {21, "Failed, Invalid Request"},
    {58, "Failed, Mailbox command IOCB not allowed for this command"},
    {71, "Failed, Incorrect state for this command"},
    {96, "Failed, SFP not supported WRAP capability"},
    {32865, "Failed, Command not supported with Current Switch"},
};

constexpr LibraryCall READ_MEZZANINE = {"VEXAPI_IsMezzAdapter", "", "Mezz adapter check failed", RC_CFG_READ_FAILED};
constexpr LibraryCall CHANGE_MODE = {"VEXAPI_ConfigureAdapterDPortSettings", "", "Configure DPort failed",
                                     RC_CFG_UPDATE_FAILED};

constexpr VX_UINT32 FEATURE_SECOND_FORM = 0x20000000;
constexpr VX_UINT16 MAILBOX_FAILED = 0x4005;
constexpr VX_UINT8 PHASE_PASSED = 1;

constexpr VX_UINT32 STATUS_BFS_MODE = 132;
/// Statuses of the test's second form.
constexpr StatusResult TEST_STATUSES[] = {
    {2, RC_INVALID_PARAMETER},      {29, RC_NOT_SUPPORTED_FOR_VPORT}, {38, RC_FEATURE_NOT_SUPPORTED},
    {129, RC_UNSUPPORTED_MODE},     {130, RC_LINK_UP_REQUIRED},       {131, RC_UNSUPPORTED_SPEED},
    {STATUS_BFS_MODE, RC_BFS_MODE},
};
constexpr LibraryCall RUN_TEST = {"VEXAPI_DiagnosticDPortTestV2", "", "DPort test failed", RC_LIBRARY_FAILED,
                                  TEST_STATUSES};

constexpr CodeText PHASE_RESULTS[] = {
    {0, "Not Started"},       {1, "Passed"},          {2, "Skipped"},        {3, "Failed"},
    {4, "Running"},           {5, "Remote Port"},     {6, "Stopped"},        {56, "Unexpected Reject"},
    {57, "Unexpected Phase"}, {58, "Retry Exceeded"}, {59, "Timeout"},       {71, "Failed"},
    {78, "Not Supported"},    {79, "Not Supported"},  {115, "Memory Error"},
};

/// Reasons of a failed test: the low four bits of the second mailbox word.
constexpr VX_UINT32 LAST_REASON_WITH_POWERS = 6;
constexpr VX_UINT32 REASON_NO_DYNAMIC_MODE = 5;
constexpr CodeText REASONS[] = {
    {0, "Reserved"},
    {1, "Unexpected Reject Code"},
    {2, "Unexpected Phase"},
    {3, "Retry Exceeded"},
    {4, "Test Timeout"},
    {REASON_NO_DYNAMIC_MODE, "Dynamic mode not supported by attached switch"},
    {LAST_REASON_WITH_POWERS, "Test stopped by user"},
};
constexpr unsigned MAILBOX_LOW_BITS = 0xF;
constexpr unsigned MAILBOX_HAS_REASON = 2;

/// `log10f` of libm, loaded on demand: only this command needs it, and linking it would slow down every start of
/// the program.
float Log10(float value) {
    using Function = float (*)(float);
    static const auto function = reinterpret_cast<Function>(dlsym(dlopen(LIBM_SO, RTLD_LAZY), "log10f"));
    if (function == nullptr) {
        FailAssertion("the C library has no log10f");
    }
    return function(value);
}

bool IsInDiagnosticMode(VX_PORT_HANDLE& handle) {
    const VX_UINT32 mode = VEXAPI_CheckAdapterDPortOption(&handle);
    TraceStatus("VEXAPI_CheckAdapterDPortOption", mode);
    return mode != 0;
}

ResultCode ReadMode(const PortEntry& entry, bool& isDiagnostic) {
    return MakeLibraryCalls([&] { isDiagnostic = IsInDiagnosticMode(entry.protocol->PortHandle); });
}

void AddPhase(ReportBlock& block, const char* phase, VX_UINT32 value, VX_UINT8 status) {
    TavuString label;
    label.Format("%s Value", phase);
    block.LineF(label.c_str(), "0x%x", value);
    label.Format("%s Status", phase);
    block.LineF(label.c_str(), "%u", status);
    label.Format("%s Result", phase);
    block.Line(label.c_str(), GetDportTestResult(status));
}

void AddPowers(ReportBlock& block, const char* label, float tx, float rx, float difference) {
    block.LineF(label, "Tx: %lf dBm, Rx: %lf dBm, Diff: %lf dBm", static_cast<double>(tx), static_cast<double>(rx),
                static_cast<double>(difference));
}

void AddDistance(ReportBlock& block, const _VEXAPI_DiagnosticsDPortResult& result) {
    block.LineF("Roundtrip Link Latency", "%u ns", swapint(result.RoundtripLinkLatency));
    block.LineF("Cable Link Distance", "%u meters", swapint(result.CableLinkDistance));
}

/// The remote powers are not checked for 0, which prints as infinity.
void AddPassedPart(ReportBlock& block, const _VEXAPI_DiagnosticsDPortResult& result) {
    const unsigned short tx = swapshort(result.LocalTxPower);
    const unsigned short rx = swapshort(result.LocalRxPower);
    const float txDbm = tx > 0 ? DportPowerDbm(tx) : 0.0F;
    const float rxDbm = rx > 0 ? DportPowerDbm(rx) : 0.0F;
    const float remoteRxDbm = DportPowerDbm(swapshort(result.RemoteRxPower));
    const float remoteTxDbm = DportPowerDbm(swapshort(result.RemoteTxPower));
    block.LineF("Tx Power", "0x%x", tx);
    block.LineF("Rx Power", "0x%x", rx);
    block.LineF("Mbx1", "0x%x", result.Mbx1);
    block.LineF("Mbx2", "0x%x", result.Mbx2);
    AddDistance(block, result);
    block.LineF("Allowable Power Loss", "%lf", swapint(result.CableLinkDistance) * 0.001 * 3.0 * 2.3333333333333335);
    AddPowers(block, "Egress Power", txDbm, remoteRxDbm, txDbm - remoteRxDbm);
    AddPowers(block, "Ingress Power", remoteTxDbm, rxDbm, remoteTxDbm - rxDbm);
}

void AddFailedPart(ReportBlock& block, const _VEXAPI_DiagnosticsDPortResult& result) {
    block.LineF("Tx Power", "0x%x", swapshort(result.LocalTxPower));
    block.LineF("Rx Power", "0x%x", swapshort(result.LocalRxPower));
    float egress = DportPowerDbm(swapshort(result.RemoteRxPower));
    float ingress = DportPowerDbm(swapshort(result.RemoteTxPower));
    if ((result.Mbx1 & MAILBOX_LOW_BITS) == MAILBOX_HAS_REASON) {
        const unsigned reason = result.Mbx2 & MAILBOX_LOW_BITS;
        block.Line("Reason", TextOf(REASONS, reason, OUT_UNKNOWN));
        if (reason == REASON_NO_DYNAMIC_MODE || reason > LAST_REASON_WITH_POWERS) {
            egress = 0.0F;
            ingress = 0.0F;
        }
    }
    AddDistance(block, result);
    block.Line("Allowable Power Loss", "0");
    AddPowers(block, "Egress Power", 0.0F, egress, 0.0F);
    AddPowers(block, "Ingress Power", ingress, 0.0F, 0.0F);
}

/// The flat document of `get` and `set`, including failures.
void WriteMode(MultipleCmdsProcessor* self, Serializer::eOutputFormat format, ResultCode code, const char* message,
               RebootRequired reboot, bool isDiagnostic) {
    const TracedCall traced(CLASS_NAME, "DisplayDPortDiagInfo");
    Document document(*self, format);
    document.Flat(OUT_SHAPE.names.structure, [&] {
        document.Message(code, message);
        if (reboot.has_value()) {
            document.Field(OUT_REBOOT_REQUIRED, *reboot);
        }
        document.Field(OUT_DPORT_MODE, isDiagnostic);
    });
}

constexpr DocumentField GET_FIELDS[] = {MESSAGE_FIELD, {OUT_DPORT_MODE, FieldType::FLAG}};
constexpr DocumentField SET_FIELDS[] = {MESSAGE_FIELD, REBOOT_FIELD, {OUT_DPORT_MODE, FieldType::FLAG}};
constexpr Argument SET_ARGUMENTS[] = {
    PORT_ARGUMENT,
    {"mode", nullptr, "whether the port is in diagnostic mode", ArgumentKind::WORD, true, FLAG_WORDS},
};

} // namespace

// Required: two twins use another family's usage function, whose ids differ: `getcli` shows the usage of `set`, and
// `setcli` none.
constexpr Command PhysicalPortDPortDiagCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane adapter port's DPortDiag information",
     .run = CmdGetCommon,
     .usage = nullptr,
     .arguments = ONLY_PORT,
     .document = FlatDocument(OUT_SHAPE.names.structure, GET_FIELDS),
     .reads = VEXAPI_EXT_PORT_DETAILS,
     .usageFamily = &PhysicalPortFECCmdsProcessor::FAMILY},
    {.names = Names<"set", "CmdSet">(),
     .description = "set Orvane adapter port's DPortDiag information",
     .run = CmdSetCommon,
     .usage = nullptr,
     .arguments = SET_ARGUMENTS,
     .document = FlatDocument(OUT_SHAPE.names.structure, SET_FIELDS),
     .changes = true,
     .usageFamily = &PhysicalPortFECCmdsProcessor::FAMILY},
    {.names = Names<"run", "CmdRun">(),
     .description = "run DPortDiag on Orvane adapter port",
     .run = CmdRunCommon,
     .usage = nullptr,
     .arguments = ONLY_PORT,
     .document = ReportDocument(OUT_SHAPE.names),
     .changes = true,
     .twinUsage = TwinUsage::NONE},
};

constinit const FamilyDescription PhysicalPortDPortDiagCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "DPortDiag",
    .leaves = LEAVES_OF<PhysicalPortDPortDiagCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

unsigned short swapshort(unsigned short value) {
    return static_cast<unsigned short>(value << 8 | value >> 8);
}

unsigned int swapint(unsigned int value) {
    return __builtin_bswap32(value);
}

float DportPowerDbm(unsigned short power) {
    return Log10(static_cast<float>(power) * 0.1F * 0.001F) * 10.0F;
}

const char* GetDportTestResult(VX_UINT32 code) {
    return TextOf(PHASE_RESULTS, code, OUT_UNKNOWN);
}

ResultCode PhysicalPortDPortDiagCmdsProcessor::Get(const TavuStringArray& args, DPortMode& mode) {
    PortEntry entry;
    const ResultCode code = AdmitPort(args, entry);
    return code == RC_SUCCESS ? ReadMode(entry, mode.isDiagnostic) : code;
}

/// Shows the mode that is read back.
ResultCode PhysicalPortDPortDiagCmdsProcessor::Set(const TavuStringArray& args, DPortMode& mode) {
    PortEntry entry;
    ResultCode code = AdmitPort(args, entry);
    if (code != RC_SUCCESS) {
        return code;
    }
    const char* word = ArgText(args, 1);
    const bool isEnabled = CompareNoCase(word, OUT_TRUE) == 0;
    if (!isEnabled && CompareNoCase(word, OUT_FALSE) != 0) {
        return RC_INVALID_PARAMETER;
    }
    VX_PORT_HANDLE* const handle = &entry.protocol->PortHandle;
    code = CallLibrary(CHANGE_MODE, [&] { return VEXAPI_ConfigureAdapterDPortSettings(handle, isEnabled ? 1 : 0, 0); });
    if (code != RC_SUCCESS) {
        return code;
    }
    return MakeLibraryCalls([&] {
        mode.isDiagnostic = IsInDiagnosticMode(*handle);
        mode.reboot = IsRebootRequired();
    });
}

/// The document says "Success" whatever the phases' results: pass or fail is in the report.
ResultCode PhysicalPortDPortDiagCmdsProcessor::CmdRunCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                            eOutputFormat format) {
    PortEntry entry;
    ResultCode code = AdmitTest(args, entry);
    LibraryOutputRedirection redirection;
    if (code == RC_SUCCESS && !redirection.Open()) {
        code = RefuseLibraryCalls(RUN_TEST.purpose);
    }
    if (code != RC_SUCCESS) {
        DisplayError(self, code, format);
        return code;
    }
    _VEXAPI_DiagnosticsDPortResult result{};
    VX_PORT_HANDLE* const handle = &entry.protocol->PortHandle;
    const bool isSecondForm = (entry.protocol->FeatureFlags & FEATURE_SECOND_FORM) != 0;
    if (isSecondForm) {
        const VX_UINT32 status = VEXAPI_DiagnosticDPortTestV2(handle, &result);
        code = ResultOf(RUN_TEST, status);
        if (status == STATUS_BFS_MODE) {
            DisplayError(self, code, format); // to the library's log; the visible one follows
        }
    } else {
        result = VEXAPI_DiagnosticDPortTest(handle, &result);
    }
    redirection.Close();
    if (code != RC_SUCCESS) {
        DisplayError(self, code, format);
        return code;
    }
    if (result.Mbx1 == MAILBOX_FAILED) {
        DisplayMbxError(self, result.Mbx2, format);
        return RC_MAILBOX_ERROR;
    }
    DisplayDPortDiagResult(self, isSecondForm, result, format);
    return RC_SUCCESS;
}

ResultCode PhysicalPortDPortDiagCmdsProcessor::AdmitPort(const TavuStringArray& args, PortEntry& entry) {
    ResultCode code = GetPhysicalPortFromPortString(args, entry);
    if (code != RC_SUCCESS) {
        return code;
    }
    bool isMezzanine = false;
    code = AskMezzanine(READ_MEZZANINE, entry.protocol->PortHandle, isMezzanine);
    if (code != RC_SUCCESS) {
        return code;
    }
    const __CHIPPROPERTY chip = entry.protocol->ChipProperty;
    return isMezzanine || (!IsRowanFCAdapter(chip) && !IsUefiCapableAdapter(chip)) ? RC_FEATURE_NOT_SUPPORTED
                                                                                   : RC_SUCCESS;
}

ResultCode PhysicalPortDPortDiagCmdsProcessor::AdmitTest(const TavuStringArray& args, PortEntry& entry) {
    bool isDiagnostic = false;
    ResultCode code = AdmitPort(args, entry);
    if (code == RC_SUCCESS) {
        code = ReadMode(entry, isDiagnostic);
    }
    if (code != RC_SUCCESS) {
        return code;
    }
    if (!isDiagnostic) {
        return RC_UNSUPPORTED_MODE;
    }
    if (entry.protocol->PortState != PORT_STATE_ONLINE) {
        return RC_LINK_UP_REQUIRED;
    }
    return entry.protocol->PortSpeed < SPEED_16_GBPS ? RC_UNSUPPORTED_SPEED : RC_SUCCESS;
}

void PhysicalPortDPortDiagCmdsProcessor::DisplayDPortDiagInfo(MultipleCmdsProcessor* self, const DPortMode& mode,
                                                              eOutputFormat format) {
    WriteMode(self, format, RC_SUCCESS, OUT_SUCCESS, mode.reboot, mode.isDiagnostic);
}

void PhysicalPortDPortDiagCmdsProcessor::DisplayGetError(MultipleCmdsProcessor* self, ResultCode code,
                                                         eOutputFormat format) {
    WriteMode(self, format, code, ResultText(code), REBOOT_NOT_SHOWN, false);
}

void PhysicalPortDPortDiagCmdsProcessor::DisplaySetError(MultipleCmdsProcessor* self, ResultCode code,
                                                         eOutputFormat format) {
    WriteMode(self, format, code, ResultText(code), false, false);
}

void PhysicalPortDPortDiagCmdsProcessor::DisplayMbxError(MultipleCmdsProcessor* self, VX_UINT32 status,
                                                         eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document(*self, format)
        .ReportError(OUT_SHAPE.names, REBOOT_NOT_SHOWN, RC_MAILBOX_ERROR, ResultTextOf(MAILBOX_TEXTS, status));
}

void PhysicalPortDPortDiagCmdsProcessor::DisplayDPortDiagResult(MultipleCmdsProcessor* self, bool isSecondForm,
                                                                const _VEXAPI_DiagnosticsDPortResult& result,
                                                                eOutputFormat format) {
    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        // Both times include a line end.
        block.Line("Start Time", BoundedText(result.StartTime), "");
        block.Line("Stop Time", BoundedText(result.StopTime), "");
        AddPhase(block, "HBA Port", result.HbaPortValue, result.HbaPortStatus);
        AddPhase(block, "Electrical Loopback", result.ElecLbValue, result.ElecLbStatus);
        AddPhase(block, "Optical Loopback", result.OptLbValue, result.OptLbStatus);
        AddPhase(block, "Link Traffic", result.LinkTrafficValue, result.LinkTrafficStatus);
        if (isSecondForm && result.HbaPortStatus == PHASE_PASSED) {
            AddPassedPart(block, result);
        } else if (isSecondForm) {
            AddFailedPart(block, result);
        }
    });
}
