#include "PhysicalPortHBAParamsCmdsProcessor.h"

#include "ChipFamilies.h"
#include "HBAParamsFile.h"
#include "LibraryCall.h"
#include "ReportTexts.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortHBAParamsCmdsProcessor";

constexpr ReportNames OUT_NAMES = {"HBAParametersInfo", "HBAParameters", "HBAParametersList"};
constexpr char OUT_RESTORE_DEFAULTS[] = "RestoreDefaultsInfo";
constexpr char OUT_SAVE[] = "HBAParametersSave";

/// A file that can't be opened is not among them, and reads as unknown.
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

constexpr UsageText USAGES[] = {
    {6, "Usage: get\r\n"},   {7, "Usage: setFile\r\n"}, {8, "Usage: set\r\n"}, {9, "Usage: restoreDefaults\r\n"},
    {10, "Usage: save\r\n"},
};

constexpr LibraryCall READ_PARAMETERS = {"VEXAPI_GetHBAParamsInfo", "", "Get HBA Params failed", RC_CFG_READ_FAILED};
constexpr LibraryCall WRITE_PARAMETERS = {"VEXAPI_UpdateHBAParameters", "", "Update HBA Params failed",
                                          RC_CFG_UPDATE_FAILED};
/// A write, and yet its failure is told as that of a read: clients know it so.
constexpr LibraryCall RESTORE_DEFAULTS = {"VEXAPI_RestoreDefaultNVRAM", "", "Restore Default NVRAM failed",
                                          RC_CFG_READ_FAILED};
constexpr LibraryCall SAVE_NVRAM = {"VEXAPI_SaveSingleAdapterNVRAMToFile", "", "Save NVRAM failed", RC_CFG_READ_FAILED};

constexpr CodeText CONNECTION_TEXTS[] = {{0, OUT_LOOP_ONLY}, {1, OUT_POINT_TO_POINT_ONLY}, {2, OUT_LOOP_PREFERRED}};
constexpr CodeText DATA_RATE_TEXTS[] = {
    {0, OUT_1GBPS}, {1, OUT_2GBPS},  {2, OUT_AUTO},   {3, OUT_4GBPS},
    {4, OUT_8GBPS}, {5, OUT_16GBPS}, {6, OUT_32GBPS}, {7, OUT_64GBPS},
};
constexpr CodeText OPERATION_MODE_TEXTS[] = {
    {0, OUT_EVERY_COMPLETION}, {5, OUT_TIMER_EXPIRES}, {6, OUT_TIMER_EXPIRES_OR_IDLE}};

/// On converged Rowan adapters the code of 16 Gbps stands for 10.
const char* DataRateText(VX_UINT32 rate, __CHIPPROPERTY chip) {
    constexpr VX_UINT32 RATE_16_GBPS = 5;
    return rate == RATE_16_GBPS && IsRowanCNAAdapter(chip) ? OUT_10GBPS : TextOf(DATA_RATE_TEXTS, rate, OUT_UNKNOWN);
}

const char* EnabledText(bool isEnabled) {
    return isEnabled ? OUT_TRUE : OUT_FALSE;
}

/// "true" or "false", or "NA" on an adapter that doesn't have the setting.
const char* EnabledOrNa(bool hasSetting, bool isEnabled) {
    return hasSetting ? EnabledText(isEnabled) : OUT_NA;
}

VX_UINT32 ReadParameters(const PortEntry& entry, _VEXAPI_HBAParameters& parameters) {
    VX_HBA_AUX auxiliary{};
    return CallLibrary(READ_PARAMETERS,
                       [&] { return VEXAPI_GetHBAParamsInfo(&entry.protocol->PortHandle, &parameters, &auxiliary); });
}

} // namespace

constinit const Leaf PhysicalPortHBAParamsCmdsProcessor::LEAVES[] = {
    {"get", "get Orvane HBA Parameters information", 0, Xml<"CmdGet", CmdGetCommon>, nullptr},
    {"setFile", "set Orvane HBA Parameters information in a local cache file", 1, Xml<"CmdSetFile", CmdSetFileCommon>,
     nullptr},
    {"set", "set Orvane HBA Parameters information", 2, Xml<"CmdSet", CmdSetCommon>, nullptr},
    {"restoreDefaults", "Restore default values of Orvane HBA Parameters", 3,
     Xml<"CmdRestoreDefaults", CmdRestoreDefaultsCommon>, nullptr},
    {"save", "save Orvane HBA Parameters information in a text file", 4, Xml<"CmdSave", CmdSaveCommon>, nullptr},
    {"help", "list of available commands", 5, CmdHelp, Usage},
    {"getcli", "get Orvane HBA Parameters information", 6, Text<"CmdGetCli", CmdGetCommon>, Usage},
    {"setFilecli", "set Orvane HBA Parameters information in a local cache file", 7,
     Text<"CmdSetFileCli", CmdSetFileCommon>, Usage},
    {"setcli", "set Orvane HBA Parameters information", 8, Text<"CmdSetCli", CmdSetCommon>, Usage},
    {"restoreDefaultscli", "Restore default values of Orvane HBA Parameters", 9,
     Text<"CmdRestoreDefaultsCli", CmdRestoreDefaultsCommon>, Usage},
    {"savecli", "Save Orvane HBA Parameters information in a file", 10, Text<"CmdSaveCli", CmdSaveCommon>, Usage},
};

constinit const FamilyDescription PhysicalPortHBAParamsCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "hbaparams",
    .helpId = 5,
    .leaves = LEAVES,
    .usages = USAGES,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_NAMES,
};

VX_UINT32 PhysicalPortHBAParamsCmdsProcessor::Get(const TavuStringArray& args, HBAParams& params) {
    const VX_UINT32 code = PhysicalPortCmdsProcessor::GetPhysicalPortFromPortString(args, params.entry);
    return code == RC_SUCCESS ? ReadParameters(params.entry, params.parameters) : code;
}

/// Shows the pending state: the port's parameters as they will be after `set`.
VX_UINT32 PhysicalPortHBAParamsCmdsProcessor::SetFile(const TavuStringArray& args, HBAParams& params) {
    const VX_UINT32 code = Get(args, params);
    if (code != RC_SUCCESS) {
        return code;
    }
    return StageSettings(
        HBAParamsFile(ArgText(args, 0)), HBAParamsKeys(), params.parameters,
        [&](const StagedFile& file) { return UpdateHBAParamsInFile(args, file, *params.entry.protocol); });
}

VX_UINT32 PhysicalPortHBAParamsCmdsProcessor::Set(const TavuStringArray& args, HBAParams& params) {
    if (const VX_UINT32 code = Get(args, params); code != RC_SUCCESS) {
        return code;
    }
    const auto overlay = [&](const StagedFile& file) { ReadStagedFile(file, HBAParamsKeys(), params.parameters); };
    return CommitSettings(HBAParamsFile(ArgText(args, 0)), params.commit, overlay, [&] {
        const VX_UINT32 code = CallLibrary(WRITE_PARAMETERS, [&] {
            return VEXAPI_UpdateHBAParameters(&params.entry.protocol->PortHandle, &params.parameters);
        });
        if (code == RC_SUCCESS) {
            params.reboot = AskRebootRequired();
        }
        return code;
    });
}

VX_UINT32 PhysicalPortHBAParamsCmdsProcessor::RestoreDefaults(const TavuStringArray& args, RebootRequired& reboot) {
    PortEntry entry;
    if (const VX_UINT32 code = PhysicalPortCmdsProcessor::GetPhysicalPortFromPortString(args, entry);
        code != RC_SUCCESS) {
        return code;
    }
    // One opening of the log for both calls.
    VX_UINT32 code = RC_SUCCESS;
    const VX_UINT32 called = MakeLibraryCalls([&] {
        code = ResultOf(RESTORE_DEFAULTS, VEXAPI_RestoreDefaultNVRAM(&entry.protocol->PortHandle));
        if (code == RC_SUCCESS) {
            reboot = IsRebootRequired();
        }
    });
    return called == RC_SUCCESS ? code : called;
}

VX_UINT32 PhysicalPortHBAParamsCmdsProcessor::Save(const TavuStringArray& args, NoState&) {
    PortEntry entry;
    const VX_UINT32 code = PhysicalPortCmdsProcessor::GetPhysicalPortFromPortString(args, entry);
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
    const _VEXAPI_HBAParameters& nvram = params.parameters;
    const __CHIPPROPERTY chip = params.entry.protocol->ChipProperty;
    const bool is10G = Is10GAdapter(chip);
    const bool isWillow = IsWillowAdapter(chip);
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    const auto number = [&document](const char* label, VX_UINT32 value) { document.Field(label, value, INT_U32); };

    document.FieldReport(OUT_NAMES, params.reboot, [&] {
        document.Field("Connection Options", TextOf(CONNECTION_TEXTS, nvram.ConnetionOptions, OUT_UNKNOWN));
        document.Field("Data Rate", DataRateText(nvram.DataRate, chip));
        document.Field("Operation Mode",
                       isWillow ? OUT_NA : TextOf(OPERATION_MODE_TEXTS, nvram.OperationMode, OUT_UNKNOWN));
        number("Frame Size", nvram.FrameSize);
        document.Field("Enable Hard Loop Id", EnabledOrNa(!is10G, nvram.EnableHardLoopId != 0));
        number("Hard Loop Id", is10G ? 0 : nvram.HardLoopId);
        number("Loop Reset Delay In Seconds", nvram.LoopResetDelay);
        number("Interrupt Delay Timer In 100us", isWillow ? 0 : nvram.InterruptDelayTimer);
        number("Execution Throttle", IsRowanCNAAdapter(chip) ? 0 : nvram.ExecutionThrottle);
        number("Login Retry Count", nvram.LoginRetryCount);
        number("Port Down Retry Count", nvram.PortDownRetryCount);
        number("Link Down Timeout In Seconds", nvram.LinkDownTimeout);
        number("Luns Per Target", nvram.MaxLunsPerTarget);
        document.Field("Enable LR", EnabledOrNa(!Is4GAdapter(chip) && !isWillow, nvram.EnableLRBit != 0));
        document.Field("Enable Host Hba Bios", EnabledText(nvram.DisableBIOS == 0));
        document.Field("Enable Fc Tape Support", EnabledText(nvram.EnableFibreChannelTapeSupport != 0));
        document.Field("Enable Lip Full Login", EnabledOrNa(!is10G, nvram.EnableLipFullLogin != 0));
        document.Field("Enable Target Reset", EnabledText(nvram.EnableTargetReset != 0));
        document.Field("Enable Fabric Assigned WWN", EnabledOrNa(!Is4GAdapter(chip) && !Is8GAdapter(chip) && !is10G,
                                                                 nvram.EnableFabricAssignWWN != 0));
        document.Field("Enable FWCM", EnabledOrNa(IsUefiCapableAdapter(chip), nvram.DisableSCM == 0));
        document.Field("Virtual Lane", EnabledOrNa(IsBirchAdapter(chip), nvram.EnableVirtualLane != 0));
    });
}

void PhysicalPortHBAParamsCmdsProcessor::DisplayRestoreDefaults(MultipleCmdsProcessor* self,
                                                                const RebootRequired& reboot, eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Flat(OUT_RESTORE_DEFAULTS, [&] { document.Success(reboot); });
}

void PhysicalPortHBAParamsCmdsProcessor::DisplayRestoreDefaultsError(MultipleCmdsProcessor* self, VX_UINT32 code,
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

void PhysicalPortHBAParamsCmdsProcessor::DisplaySaveError(MultipleCmdsProcessor* self, VX_UINT32 code,
                                                          eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Flat(OUT_SAVE, [&] { document.Failure(REBOOT_NOT_SHOWN, code, ResultText(code)); });
}
