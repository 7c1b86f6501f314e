#include "PhysicalPortHBAParamsCmdsProcessor.h"

#include "ChipFamilies.h"
#include "FieldRows.h"
#include "HBAParamsFile.h"
#include "LibraryCall.h"
#include "ReportTexts.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortHBAParamsCmdsProcessor";
constexpr FixedText SETTINGS = "Orvane HBA Parameters information";

constexpr ReportNames OUT_NAMES = {"HBAParametersInfo", "HBAParameters", "HBAParametersList"};
constexpr char OUT_RESTORE_DEFAULTS[] = "RestoreDefaultsInfo";
constexpr char OUT_SAVE[] = "HBAParametersSave";

/// A file that can't be opened has no text here, and reads as unknown.
constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, NVRAM read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_INVALID_DATA, "Failed, Interrupt Delay Timer value > 0 not supported for Operation Mode value "
                      "Interrupt_For_Every_I/O_Completion"},
    {RC_INVALID_FIELD,
     "Failed, Connection Options value Loop_Only not supported for data rate value 16 Gbps and above"},
    {RC_CFG_UPDATE_FAILED, "Failed, NVRAM update failed"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, feature not supported"},
    {RC_READ_ONLY_MODE, "Failed, Read-Only parameter"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, feature not supported for virtual port"},
};

constexpr LibraryCall READ_PARAMETERS = {"VEXAPI_GetHBAParamsInfo", "", "Get HBA Params failed", RC_CFG_READ_FAILED};
constexpr LibraryCall WRITE_PARAMETERS = {"VEXAPI_UpdateHBAParameters", "", "Update HBA Params failed",
                                          RC_CFG_UPDATE_FAILED};
/// Required: the failure of this write is reported as a failed read; parsers depend on it.
constexpr LibraryCall RESTORE_DEFAULTS = {"VEXAPI_RestoreDefaultNVRAM", "", "Restore Default NVRAM failed",
                                          RC_CFG_READ_FAILED};
constexpr LibraryCall SAVE_NVRAM = {"VEXAPI_SaveSingleAdapterNVRAMToFile", "", "Save NVRAM failed", RC_CFG_READ_FAILED};

/// On converged Rowan adapters the code of 16 Gbps means 10.
const char* DataRateText(VX_UINT32 rate, __CHIPPROPERTY chip) {
    constexpr VX_UINT32 RATE_16_GBPS = 5;
    return rate == RATE_16_GBPS && IsRowanCNAAdapter(chip) ? OUT_10GBPS : TextOf(HBA_DATA_RATES, rate, OUT_UNKNOWN);
}

const char* EnabledText(bool isEnabled) {
    return isEnabled ? OUT_TRUE : OUT_FALSE;
}

/// "true" or "false", or "NA" if the adapter doesn't have the setting.
const char* EnabledOrNa(bool hasSetting, bool isEnabled) {
    return hasSetting ? EnabledText(isEnabled) : OUT_NA;
}

using Params = PhysicalPortHBAParamsCmdsProcessor::HBAParams;
constexpr FieldRow<Params> Text(const char* label, TavuString (*text)(const Params& params)) {
    return {label, text};
}
constexpr FieldRow<Params> Number(const char* label, VX_UINT32 (*number)(const Params& params)) {
    return NumberField<Params>(label, number);
}
/// A raw parameter.
template <auto field> constexpr FieldRow<Params> Number(const char* label) {
    return Number(label, [](const Params& params) { return VX_UINT32{params.parameters.*field}; });
}
/// A flag.
template <auto field> constexpr FieldRow<Params> Flag(const char* label) {
    return Text(label, [](const Params& params) -> TavuString { return EnabledText(params.parameters.*field != 0); });
}
/// A flag that only some adapters have.
template <auto field, auto hasSetting> constexpr FieldRow<Params> Flag(const char* label) {
    return Text(label, [](const Params& params) -> TavuString {
        return EnabledOrNa(hasSetting(params.Chip()), params.parameters.*field != 0);
    });
}

using Nvram = _VEXAPI_HBAParameters;
constexpr FieldRow<Params> FIELDS[] = {
    Text("Connection Options",
         [](const Params& params) -> TavuString {
             return TextOf(HBA_CONNECTIONS, params.parameters.ConnetionOptions, OUT_UNKNOWN);
         }),
    Text("Data Rate",
         [](const Params& params) -> TavuString { return DataRateText(params.parameters.DataRate, params.Chip()); }),
    Text("Operation Mode",
         [](const Params& params) -> TavuString {
             return HasOperationMode(params.Chip())
                        ? TextOf(HBA_OPERATION_MODES, params.parameters.OperationMode, OUT_UNKNOWN)
                        : OUT_NA;
         }),
    Number<&Nvram::FrameSize>("Frame Size"),
    Flag<&Nvram::EnableHardLoopId, HasHardLoopId>("Enable Hard Loop Id"),
    Number("Hard Loop Id",
           [](const Params& params) { return HasHardLoopId(params.Chip()) ? params.parameters.HardLoopId : 0; }),
    Number<&Nvram::LoopResetDelay>("Loop Reset Delay In Seconds"),
    Number("Interrupt Delay Timer In 100us",
           [](const Params& params) {
               return HasOperationMode(params.Chip()) ? params.parameters.InterruptDelayTimer : 0;
           }),
    Number("Execution Throttle",
           [](const Params& params) {
               return IsRowanCNAAdapter(params.Chip()) ? 0 : params.parameters.ExecutionThrottle;
           }),
    Number<&Nvram::LoginRetryCount>("Login Retry Count"),
    Number<&Nvram::PortDownRetryCount>("Port Down Retry Count"),
    Number<&Nvram::LinkDownTimeout>("Link Down Timeout In Seconds"),
    Number<&Nvram::MaxLunsPerTarget>("Luns Per Target"),
    Flag<&Nvram::EnableLRBit, HasLR>("Enable LR"),
    Text("Enable Host Hba Bios",
         [](const Params& params) -> TavuString { return EnabledText(params.parameters.DisableBIOS == 0); }),
    Flag<&Nvram::EnableFibreChannelTapeSupport>("Enable Fc Tape Support"),
    Flag<&Nvram::EnableLipFullLogin, HasHardLoopId>("Enable Lip Full Login"),
    Flag<&Nvram::EnableTargetReset>("Enable Target Reset"),
    Flag<&Nvram::EnableFabricAssignWWN, HasFabricAssignment>("Enable Fabric Assigned WWN"),
    Text("Enable FWCM",
         [](const Params& params) -> TavuString {
             return EnabledOrNa(IsUefiCapableAdapter(params.Chip()), params.parameters.DisableSCM == 0);
         }),
    Flag<&Nvram::EnableVirtualLane, IsBirchAdapter>("Virtual Lane"),
};

ResultCode ReadParameters(const PortEntry& entry, _VEXAPI_HBAParameters& parameters) {
    VX_HBA_AUX auxiliary{};
    return CallLibrary(READ_PARAMETERS,
                       [&] { return VEXAPI_GetHBAParamsInfo(&entry.protocol->PortHandle, &parameters, &auxiliary); });
}

constexpr auto FIELD_ROWS = FieldsOf(FIELDS);
constexpr Argument SAVE_ARGUMENTS[] = {
    PORT_ARGUMENT,
    {"file", nullptr, "file to write the parameters to", ArgumentKind::OUTPUT_FILE, true},
};

} // namespace

constexpr Command PhysicalPortHBAParamsCmdsProcessor::COMMANDS[] = {
    StagedGet<SETTINGS>(CmdGetCommon, ReportDocument(OUT_NAMES, FIELD_ROWS)),
    StagedSetFile<SETTINGS>(CmdSetFileCommon, ReportDocument(OUT_NAMES, FIELD_ROWS), HBA_PARAMS_ARGUMENTS),
    StagedSet<SETTINGS>(CmdSetCommon, ReportDocument(OUT_NAMES, FIELD_ROWS, MESSAGE_AND_REBOOT)),
    {.names = Names<"restoreDefaults", "CmdRestoreDefaults">(),
     .description = "Restore default values of Orvane HBA Parameters",
     .run = CmdRestoreDefaultsCommon,
     .usage = "Usage: restoreDefaults\r\n",
     .arguments = ONLY_PORT,
     .document = FlatDocument(OUT_RESTORE_DEFAULTS, MESSAGE_AND_REBOOT),
     .changes = true},
    {.names = Names<"save", "CmdSave">(),
     .description = "save Orvane HBA Parameters information in a text file",
     .run = CmdSaveCommon,
     .usage = "Usage: save\r\n",
     .arguments = SAVE_ARGUMENTS,
     .document = FlatDocument(OUT_SAVE),
     .changes = true,
     .twinDescription = "Save Orvane HBA Parameters information in a file"},
};

constinit const FamilyDescription PhysicalPortHBAParamsCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "hbaparams",
    .leaves = LEAVES_OF<PhysicalPortHBAParamsCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_NAMES,
};

ResultCode PhysicalPortHBAParamsCmdsProcessor::Get(const TavuStringArray& args, HBAParams& params) {
    const ResultCode code = GetPhysicalPortFromPortString(args, params.entry);
    return code == RC_SUCCESS ? ReadParameters(params.entry, params.parameters) : code;
}

/// Shows the pending state: the parameters as they will be after `set`.
ResultCode PhysicalPortHBAParamsCmdsProcessor::SetFile(const TavuStringArray& args, HBAParams& params) {
    const ResultCode code = Get(args, params);
    if (code != RC_SUCCESS) {
        return code;
    }
    return StageSettings(
        HBAParamsFile(ArgText(args, 0)), HBAParamsKeys(), params.parameters,
        [&](const StagedFile& file) { return UpdateHBAParamsInFile(args, file, *params.entry.protocol); });
}

ResultCode PhysicalPortHBAParamsCmdsProcessor::Set(const TavuStringArray& args, HBAParams& params) {
    if (const ResultCode code = Get(args, params); code != RC_SUCCESS) {
        return code;
    }
    const auto overlay = [&](const StagedFile& file) { ReadStagedFile(file, HBAParamsKeys(), params.parameters); };
    return CommitSettings(HBAParamsFile(ArgText(args, 0)), params.commit, overlay, [&] {
        const ResultCode code = CallLibrary(WRITE_PARAMETERS, [&] {
            return VEXAPI_UpdateHBAParameters(&params.entry.protocol->PortHandle, &params.parameters);
        });
        if (code == RC_SUCCESS) {
            params.reboot = AskRebootRequired();
        }
        return code;
    });
}

ResultCode PhysicalPortHBAParamsCmdsProcessor::RestoreDefaults(const TavuStringArray& args, RebootRequired& reboot) {
    PortEntry entry;
    if (const ResultCode code = GetPhysicalPortFromPortString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    // The log is opened once for both calls.
    ResultCode code = RC_SUCCESS;
    const ResultCode called = MakeLibraryCalls([&] {
        code = ResultOf(RESTORE_DEFAULTS, VEXAPI_RestoreDefaultNVRAM(&entry.protocol->PortHandle));
        if (code == RC_SUCCESS) {
            reboot = IsRebootRequired();
        }
    });
    return called == RC_SUCCESS ? code : called;
}

ResultCode PhysicalPortHBAParamsCmdsProcessor::Save(const TavuStringArray& args, NoState&) {
    PortEntry entry;
    const ResultCode code = GetPhysicalPortFromPortString(args, entry);
    if (code != RC_SUCCESS) {
        return code;
    }
    if (args.size() < 2) {
        return RC_INVALID_PARAMETER;
    }
    return CallLibrary(
        SAVE_NVRAM, [&] { return VEXAPI_SaveSingleAdapterNVRAMToFile(&entry.protocol->PortHandle, ArgText(args, 1)); });
}

void PhysicalPortHBAParamsCmdsProcessor::DisplayHBAParamsInfo(MultipleCmdsProcessor* self, const HBAParams& params,
                                                              eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.FieldReport(OUT_NAMES, params.reboot, [&] { WriteFields<HBAParams>(document, FIELDS, params); });
}

void PhysicalPortHBAParamsCmdsProcessor::DisplayRestoreDefaults(MultipleCmdsProcessor* self,
                                                                const RebootRequired& reboot, eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Flat(OUT_RESTORE_DEFAULTS, [&] { document.Success(reboot); });
}

void PhysicalPortHBAParamsCmdsProcessor::DisplayRestoreDefaultsError(MultipleCmdsProcessor* self, ResultCode code,
                                                                     eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Flat(OUT_RESTORE_DEFAULTS, [&] { document.Failure(false, code, ResultText(code)); });
}

void PhysicalPortHBAParamsCmdsProcessor::DisplaySave(MultipleCmdsProcessor* self, const NoState&,
                                                     eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Flat(OUT_SAVE, [&] { document.Success(REBOOT_NOT_SHOWN); });
}

void PhysicalPortHBAParamsCmdsProcessor::DisplaySaveError(MultipleCmdsProcessor* self, ResultCode code,
                                                          eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Flat(OUT_SAVE, [&] { document.Failure(REBOOT_NOT_SHOWN, code, ResultText(code)); });
}
