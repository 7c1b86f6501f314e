#include "AdapterPersonalityCmdsProcessor.h"

#include "ChipFamilies.h"
#include "HostTree.h"
#include "LibraryCall.h"
#include "ReportTexts.h"
#include "Resolvers.h"

namespace {

constexpr char CLASS_NAME[] = "AdapterPersonalityCmdsProcessor";

constexpr char OUT_STRUCT_NAME[] = "AdapterPersonality";
constexpr char OUT_PERSONALITY[] = "Personality";
constexpr char OUT_FC[] = "FC";
constexpr char OUT_CNA[] = "CNA";

constexpr unsigned char PERSONALITY_FC = 0;
constexpr unsigned char PERSONALITY_CNA = 1;
constexpr CodeText PERSONALITY_TEXTS[] = {{PERSONALITY_FC, OUT_FC}, {PERSONALITY_CNA, OUT_CNA}};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, Personality read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_CFG_UPDATE_FAILED, "Failed, Personality change failed"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_DISABLED_FOR_USER, "Failed, Personality change not allowed for user"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Not supported for this adapter"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, Feature not supported for virtual port"},
};

/// The personality functions print nothing and are called without redirection.
constexpr LibraryCall READ_PERSONALITY = {"VEXAPI_GetPersonalityType", "", "Get Personality failed",
                                          RC_CFG_READ_FAILED};
constexpr LibraryCall CHANGE_PERSONALITY = {"VEXAPI_ChangePersonalityType", "", "Change Personality failed",
                                            RC_CFG_UPDATE_FAILED};

/// The library's answer if the personality may be changed.
constexpr VX_UINT32 CHANGE_ALLOWED = 1;

void WritePersonality(Document document, RebootRequired reboot, ResultCode code, const char* message,
                      const char* personality) {
    document.Flat(OUT_STRUCT_NAME, [&] {
        if (reboot.has_value()) {
            document.Field(OUT_REBOOT_REQUIRED, *reboot);
        }
        document.Message(code, message);
        document.Field(OUT_PERSONALITY, personality);
    });
}

constexpr DocumentField GET_FIELDS[] = {MESSAGE_FIELD, {OUT_PERSONALITY, FieldType::TEXT}};
constexpr DocumentField SET_FIELDS[] = {REBOOT_FIELD, MESSAGE_FIELD, {OUT_PERSONALITY, FieldType::TEXT}};
constexpr Argument SET_ARGUMENTS[] = {
    ADAPTER_ARGUMENT,
    {"personality", nullptr, "personality; any other word means FC", ArgumentKind::WORD, true, PERSONALITY_TEXTS},
};

} // namespace

constexpr Command AdapterPersonalityCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "Get Orvane Adapter Personality",
     .run = CmdGetCommon,
     .usage = "Usage: get [adapter identifier]\r\n",
     .arguments = ONLY_ADAPTER,
     .document = FlatDocument(OUT_STRUCT_NAME, GET_FIELDS),
     .reads = VEXAPI_EXT_ADAPTERS},
    {.names = Names<"set", "CmdSet">(),
     .description = "Set Orvane Adapter Personality",
     .run = CmdSetCommon,
     .usage = "Usage: set [adapter identifier]\r\n",
     .arguments = SET_ARGUMENTS,
     .document = FlatDocument(OUT_STRUCT_NAME, SET_FIELDS),
     .changes = true},
};

constinit const FamilyDescription AdapterPersonalityCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "Adapter personality",
    .leaves = LEAVES_OF<AdapterPersonalityCmdsProcessor, "List of available commands">,
    .resultTexts = RESULT_TEXTS,
};

ResultCode AdapterPersonalityCmdsProcessor::Get(const TavuStringArray& args, Personality& personality) {
    AdapterEntry entry;
    if (const ResultCode code = GetFcPortFromAdapterString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    if (IsVirtualPort(*entry.fc)) {
        return RC_NOT_SUPPORTED_FOR_VPORT;
    }
    if (!IsRowanAdapter(entry.fc->ChipProperty)) {
        personality.value = IsWillowAdapter(entry.fc->ChipProperty) ? PERSONALITY_CNA : PERSONALITY_FC;
        return RC_SUCCESS;
    }
    return ResultOf(READ_PERSONALITY, VEXAPI_GetPersonalityType(&entry.fc->PortHandle, &personality.value));
}

ResultCode AdapterPersonalityCmdsProcessor::Set(const TavuStringArray& args, Personality& personality) {
    AdapterEntry entry;
    if (const ResultCode code = GetFcPortFromAdapterString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    // The chip is checked before the virtual port, unlike in `get`.
    if (!IsRowanAdapter(entry.fc->ChipProperty)) {
        TraceStep(TRACE_DEBUG, "feature not supported for this adapter");
        return RC_FEATURE_NOT_SUPPORTED;
    }
    if (IsVirtualPort(*entry.fc)) {
        return RC_NOT_SUPPORTED_FOR_VPORT;
    }
    VX_PORT_HANDLE* const handle = &entry.fc->PortHandle;
    const VX_UINT32 answer = VEXAPI_CheckRowanPersonalityChangeOption(handle);
    TraceStatus("VEXAPI_CheckRowanPersonalityChangeOption", answer);
    if (answer != CHANGE_ALLOWED) {
        TraceStep(TRACE_DEBUG, "personality change by user not supported");
        return RC_DISABLED_FOR_USER;
    }
    // Any other word, even a missing one, means FC; there is no invalid value.
    personality.value = CompareNoCase(ArgText(args, 1), OUT_CNA) == 0 ? PERSONALITY_CNA : PERSONALITY_FC;
    personality.reboot = true;
    unsigned char current = 0;
    ResultCode code = ResultOf(READ_PERSONALITY, VEXAPI_GetPersonalityType(handle, &current));
    if (code == RC_SUCCESS && personality.value != current) {
        code = ResultOf(CHANGE_PERSONALITY, VEXAPI_ChangePersonalityType(handle, personality.value));
    }
    return code;
}

void AdapterPersonalityCmdsProcessor::DisplayAdapterPersonality(MultipleCmdsProcessor* self,
                                                                const Personality& personality, eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    WritePersonality(Document(*self, format), personality.reboot, RC_SUCCESS, OUT_SUCCESS,
                     TextOf(PERSONALITY_TEXTS, personality.value, OUT_UNKNOWN));
}

void AdapterPersonalityCmdsProcessor::DisplayGetError(MultipleCmdsProcessor* self, ResultCode code,
                                                      eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, "DisplayError");
    WritePersonality(Document(*self, format), REBOOT_NOT_SHOWN, code, ResultText(code), OUT_UNKNOWN);
}

void AdapterPersonalityCmdsProcessor::DisplaySetError(MultipleCmdsProcessor* self, ResultCode code,
                                                      eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, "DisplayError");
    WritePersonality(Document(*self, format), false, code, ResultText(code), OUT_UNKNOWN);
}
