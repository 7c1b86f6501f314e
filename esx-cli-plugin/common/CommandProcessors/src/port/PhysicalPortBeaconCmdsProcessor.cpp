#include "PhysicalPortBeaconCmdsProcessor.h"

#include "ChipFamilies.h"
#include "LibraryCall.h"
#include "Mezzanine.h"
#include "PhysicalPortFECCmdsProcessor.h"
#include "ReportTexts.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortBeaconCmdsProcessor";

constexpr char OUT_STRUCT_NAME[] = "BeaconInfo";
constexpr char OUT_BEACON_STATE[] = "Beacon State";
constexpr char OUT_ON[] = "ON";
constexpr char OUT_OFF[] = "OFF";

constexpr VEXAPI_BEACON_TYPE STATE_OFF = 0;
constexpr VEXAPI_BEACON_TYPE STATE_ON = 1;
constexpr CodeText STATE_TEXTS[] = {{STATE_OFF, OUT_OFF}, {STATE_ON, OUT_ON}};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, Beacon read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_CFG_UPDATE_FAILED, "Failed, Beacon update failed"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, feature not supported"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, feature not supported for virtual port"},
};

constexpr LibraryCall READ_MEZZANINE = {"VEXAPI_IsMezzAdapter", "", "Mezz adapter check failed", RC_CFG_READ_FAILED};
constexpr LibraryCall READ_STATE = {"VEXAPI_GetAdapterBeaconStatus", "", "Get Beacon Status failed",
                                    RC_CFG_READ_FAILED};
constexpr LibraryCall CHANGE_STATE = {"VEXAPI_UpdateAdapterBeaconStatus", "", "Update Beacon Status failed",
                                      RC_CFG_UPDATE_FAILED};

bool HasBeacon(__CHIPPROPERTY chip) {
    return Is4GAdapter(chip) || Is8GAdapter(chip) || IsRowanFCAdapter(chip) || IsUefiCapableAdapter(chip);
}

void WriteBeacon(Document document, ResultCode code, const char* message, const char* state) {
    document.Flat(OUT_STRUCT_NAME, [&] {
        document.Message(code, message);
        document.Field(OUT_BEACON_STATE, state);
    });
}

constexpr DocumentField FIELDS[] = {MESSAGE_FIELD, {OUT_BEACON_STATE, FieldType::TEXT}};
constexpr Argument SET_ARGUMENTS[] = {
    PORT_ARGUMENT,
    {"state", nullptr, "state of the beacon", ArgumentKind::WORD, true, STATE_TEXTS},
};

} // namespace

// Required: the twins use another family's usage function, which has the same ids and texts.
constexpr Command PhysicalPortBeaconCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane adapter's Beacon information",
     .run = CmdGetCommon,
     .usage = nullptr,
     .arguments = ONLY_PORT,
     .document = FlatDocument(OUT_STRUCT_NAME, FIELDS),
     .reads = VEXAPI_EXT_PORT_DETAILS,
     .usageFamily = &PhysicalPortFECCmdsProcessor::FAMILY},
    {.names = Names<"set", "CmdSet">(),
     .description = "set Orvane adapter's Beacon information",
     .run = CmdSetCommon,
     .usage = nullptr,
     .arguments = SET_ARGUMENTS,
     .document = FlatDocument(OUT_STRUCT_NAME, FIELDS),
     .changes = true,
     .usageFamily = &PhysicalPortFECCmdsProcessor::FAMILY},
};

constinit const FamilyDescription PhysicalPortBeaconCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "Beacon",
    .leaves = LEAVES_OF<PhysicalPortBeaconCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
};

ResultCode PhysicalPortBeaconCmdsProcessor::Get(const TavuStringArray& args, VEXAPI_BEACON_TYPE& state) {
    PortEntry entry;
    const ResultCode code = AdmitPort(args, entry);
    return code == RC_SUCCESS ? ReadState(entry, state) : code;
}

/// Reads the state back: the document shows the adapter's current state, not the requested one.
ResultCode PhysicalPortBeaconCmdsProcessor::Set(const TavuStringArray& args, VEXAPI_BEACON_TYPE& state) {
    PortEntry entry;
    ResultCode code = AdmitPort(args, entry);
    if (code != RC_SUCCESS) {
        return code;
    }
    const char* word = ArgText(args, 1);
    const bool isOn = CompareNoCase(word, OUT_ON) == 0;
    if (!isOn && CompareNoCase(word, OUT_OFF) != 0) {
        return RC_INVALID_PARAMETER;
    }
    code = CallLibrary(CHANGE_STATE, [&] {
        return VEXAPI_UpdateAdapterBeaconStatus(&entry.protocol->PortHandle, isOn ? STATE_ON : STATE_OFF);
    });
    return code == RC_SUCCESS ? ReadState(entry, state) : code;
}

ResultCode PhysicalPortBeaconCmdsProcessor::AdmitPort(const TavuStringArray& args, PortEntry& entry) {
    ResultCode code = GetPhysicalPortFromPortString(args, entry);
    if (code != RC_SUCCESS) {
        return code;
    }
    bool isMezzanine = false;
    code = AskMezzanine(READ_MEZZANINE, entry.protocol->PortHandle, isMezzanine);
    if (code != RC_SUCCESS) {
        return code;
    }
    if (isMezzanine || !HasBeacon(entry.protocol->ChipProperty)) {
        TraceStep(TRACE_DEBUG, "Command not supported for this adapter");
        return RC_FEATURE_NOT_SUPPORTED;
    }
    return RC_SUCCESS;
}

ResultCode PhysicalPortBeaconCmdsProcessor::ReadState(const PortEntry& entry, VEXAPI_BEACON_TYPE& state) {
    return CallLibrary(READ_STATE, [&] { return VEXAPI_GetAdapterBeaconStatus(&entry.protocol->PortHandle, &state); });
}

void PhysicalPortBeaconCmdsProcessor::DisplayBeaconInfo(MultipleCmdsProcessor* self, const VEXAPI_BEACON_TYPE& state,
                                                        eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    WriteBeacon(Document(*self, format), RC_SUCCESS, OUT_SUCCESS, TextOf(STATE_TEXTS, state, OUT_UNKNOWN));
}

void PhysicalPortBeaconCmdsProcessor::DisplayError(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    WriteBeacon(Document(*self, format), code, ResultText(code), OUT_UNKNOWN);
}
