#include "PhysicalPortFECCmdsProcessor.h"

#include "ChipFamilies.h"
#include "CmdLineParser.h"
#include "CodeTable.h"
#include "HostTree.h"
#include "LibraryCall.h"
#include "Mezzanine.h"
#include "ReportTexts.h"
#include "Resolvers.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortFECCmdsProcessor";

constexpr ReportNames OUT_NAMES = {"FECInfo", "FEC", "FECList"};
constexpr char OUT_FEC_STATUS[] = "FEC_Status";
constexpr char OUT_CORRECTABLE_ERRORS[] = "Correctable FEC errors";
constexpr char OUT_UNCORRECTABLE_ERRORS[] = "Uncorrectable FEC errors";

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, FEC read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_CFG_UPDATE_FAILED, "Failed, FEC update failed"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, feature not supported"},
    {RC_READ_ONLY_MODE, "Failed, Read-Only parameter for non 16Gbps or Unknown speed or mezz adapter"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, feature not supported for virtual port"},
};

constexpr LibraryCall READ_STATUS = {"VEXAPI_FCGetFECSupportInfo", " before FEC read", "Get FEC Info failed",
                                     RC_CFG_READ_FAILED};
constexpr LibraryCall READ_MEZZANINE = {"VEXAPI_IsMezzAdapter", " before Mezz adapter check",
                                        "Mezz adapter check failed", RC_CFG_READ_FAILED};
constexpr LibraryCall READ_COUNTERS = {"VEXAPI_GetFWPrivateStats", " before FW Priv Stats read",
                                       "Get FW Private stats failed", RC_CFG_READ_FAILED};
constexpr LibraryCall CHANGE_STATUS = {"VEXAPI_FCSetFECSupportInfo", " before FEC set", "Update FEC failed",
                                       RC_CFG_UPDATE_FAILED};
constexpr LibraryCall RESET_COUNTERS = {"VEXAPI_ResetFECCounters", " before FEC counter reset",
                                        "Reset FEC counters failed", RC_CFG_UPDATE_FAILED};

constexpr DocumentField FIELDS[] = {
    {OUT_FEC_STATUS, FieldType::TEXT},
    {OUT_CORRECTABLE_ERRORS, FieldType::NUMBER},
    {OUT_UNCORRECTABLE_ERRORS, FieldType::NUMBER},
};
constexpr char OUT_RESET[] = "reset";
constexpr CodeText RESET_WORDS[] = {{0, OUT_RESET}};
constexpr Argument SET_ARGUMENTS[] = {
    PORT_ARGUMENT,
    {"--fec-status", "-f", "whether forward error correction is on", ArgumentKind::WORD, false, FLAG_WORDS},
    {"--reset", "-r", "clears the counters", ArgumentKind::WORD, false, RESET_WORDS},
};

} // namespace

constexpr Command PhysicalPortFECCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane adapter's FEC information",
     .run = CmdGetCommon,
     .usage = "Usage: get\r\n",
     .arguments = ONLY_PORT,
     .document = ReportDocument(OUT_NAMES, FIELDS),
     .reads = VEXAPI_EXT_PORT_DETAILS},
    {.names = Names<"set", "CmdSet">(),
     .description = "set Orvane adapter's FEC information",
     .run = CmdSetCommon,
     .usage = "Usage: set\r\n",
     .arguments = SET_ARGUMENTS,
     .document = ReportDocument(OUT_NAMES, FIELDS, MESSAGE_AND_REBOOT),
     .changes = true},
};

constinit const FamilyDescription PhysicalPortFECCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FEC",
    .leaves = LEAVES_OF<PhysicalPortFECCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_NAMES,
};

VX_UINT32 EffectiveFecStatus(bool isMezzanine, const _vexapi_protocol_t& protocol, VX_UINT32 libraryStatus) {
    if (isMezzanine) {
        return 1;
    }
    if (protocol.PortState == PORT_STATE_ONLINE && protocol.PortSpeed < SPEED_16_GBPS) {
        return 0;
    }
    if (protocol.PortState == PORT_STATE_ONLINE && protocol.PortSpeed >= SPEED_32_GBPS) {
        return 1;
    }
    return libraryStatus;
}

bool IsFecChangeAllowed(bool isMezzanine, const _vexapi_protocol_t& protocol) {
    return !isMezzanine && (protocol.PortState != PORT_STATE_ONLINE ||
                            (protocol.PortSpeed >= SPEED_16_GBPS && protocol.PortSpeed < SPEED_32_GBPS));
}

ResultCode PhysicalPortFECCmdsProcessor::Get(const TavuStringArray& args, FecState& fec) {
    ResultCode code = ResolvePort(args, fec);
    if (code == RC_SUCCESS) {
        code = ReadStatus(fec);
    }
    if (code == RC_SUCCESS) {
        code = ReadMezzanine(fec);
    }
    if (code == RC_SUCCESS) {
        code = ReadCounters(fec);
    }
    fec.status = code == RC_SUCCESS ? EffectiveFecStatus(fec.isMezzanine, *fec.protocol, fec.status) : 0;
    return code;
}

ResultCode PhysicalPortFECCmdsProcessor::Set(const TavuStringArray& args, FecState& fec) {
    fec.reboot = false;
    ResultCode code = ResolvePort(args, fec);
    if (code == RC_SUCCESS) {
        code = ReadStatus(fec);
    }
    if (code == RC_SUCCESS) {
        code = ReadCounters(fec);
    }
    if (code == RC_SUCCESS) {
        code = ReadMezzanine(fec);
    }
    if (code != RC_SUCCESS) {
        return code;
    }
    fec.status = EffectiveFecStatus(fec.isMezzanine, *fec.protocol, fec.status);
    // The status is written before the word of the reset is checked, so it stays written if that word is invalid.
    TavuString value;
    if (CmdLineParser::GetOption(args, OptionOf(SET_ARGUMENTS, "--fec-status"), value)) {
        code = ChangeStatus(value, fec);
    }
    if (code == RC_SUCCESS && CmdLineParser::GetOption(args, OptionOf(SET_ARGUMENTS, "--reset"), value)) {
        code = ResetCounters(value, fec);
    }
    return code;
}

ResultCode PhysicalPortFECCmdsProcessor::ResolvePort(const TavuStringArray& args, FecState& fec) {
    PortEntry entry;
    const ResultCode code = GetPhysicalPortFromPortString(args, entry);
    if (code != RC_SUCCESS) {
        return code;
    }
    fec.protocol = entry.protocol;
    const __CHIPPROPERTY chip = fec.protocol->ChipProperty;
    if (!IsRowanFCAdapter(chip) && !IsUefiCapableAdapter(chip)) {
        TraceStep(TRACE_DEBUG, "Command not supported for this adapter");
        return RC_FEATURE_NOT_SUPPORTED;
    }
    return RC_SUCCESS;
}

ResultCode PhysicalPortFECCmdsProcessor::ReadStatus(FecState& fec) {
    return CallLibrary(READ_STATUS, [&] { return VEXAPI_FCGetFECSupportInfo(&fec.protocol->PortHandle, &fec.status); });
}

ResultCode PhysicalPortFECCmdsProcessor::ReadMezzanine(FecState& fec) {
    return AskMezzanine(READ_MEZZANINE, fec.protocol->PortHandle, fec.isMezzanine);
}

ResultCode PhysicalPortFECCmdsProcessor::ReadCounters(FecState& fec) {
    _VEXAPI_FWPRIVATESTATSEntry* entries = nullptr;
    VX_UINT32 count = 0;
    const ResultCode code = CallLibrary(
        READ_COUNTERS, [&] { return VEXAPI_GetFWPrivateStats(&fec.protocol->PortHandle, &entries, &count); });
    fec.entries.reset(entries);
    return code == RC_SUCCESS && (entries == nullptr || count == 0) ? RC_CFG_READ_FAILED : code;
}

ResultCode PhysicalPortFECCmdsProcessor::ChangeStatus(const TavuString& value, FecState& fec) {
    // On a port whose status is fixed, even a misspelt word is rejected this way.
    if (!IsFecChangeAllowed(fec.isMezzanine, *fec.protocol)) {
        TraceStep(TRACE_DEBUG, "Modification of fec-status is supported at 16Gbps and Unknown speed for "
                               "non-mezz adapters only");
        return RC_READ_ONLY_MODE;
    }
    if (!FindWord(FLAG_WORDS, value.c_str(), fec.status)) {
        TraceStep(TRACE_DEBUG, "fec-status=%s not supported", value.c_str());
        return RC_INVALID_PARAMETER;
    }
    fec.reboot = true;
    return CallLibrary(CHANGE_STATUS,
                       [&] { return VEXAPI_FCSetFECSupportInfo(&fec.protocol->PortHandle, fec.status); });
}

/// The document shows the counters read before; the reset is first visible in the next `get`.
ResultCode PhysicalPortFECCmdsProcessor::ResetCounters(const TavuString& value, FecState& fec) {
    if (value.CompareNoCase(OUT_RESET) != 0) {
        TraceStep(TRACE_DEBUG, "reset=%s not supported", value.c_str());
        return RC_INVALID_PARAMETER;
    }
    fec.reboot = true;
    return CallLibrary(RESET_COUNTERS, [&] { return VEXAPI_ResetFECCounters(&fec.protocol->PortHandle); });
}

void PhysicalPortFECCmdsProcessor::DisplayFECInfo(MultipleCmdsProcessor* self, const FecState& fec,
                                                  eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.FieldReport(OUT_NAMES, fec.reboot, [&] {
        document.Field(OUT_FEC_STATUS, fec.status != 0 ? OUT_TRUE : OUT_FALSE);
        // Of 64 bits, the low 32 are shown.
        document.Field(OUT_CORRECTABLE_ERRORS, fec.entries->CorrectableFecErrors, INT_U32);
        document.Field(OUT_UNCORRECTABLE_ERRORS, fec.entries->UncorrectableFecErrors, INT_U32);
    });
}
