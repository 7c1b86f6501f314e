#include "PhysicalPortBBCRCmdsProcessor.h"

#include "ChipFamilies.h"
#include "CmdLineParser.h"
#include "LibraryCall.h"
#include "ReportTexts.h"
#include "Resolvers.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortBBCRCmdsProcessor";
constexpr FixedText SETTINGS = "Orvane adapter's Buffer-to-Buffer Credit information";

constexpr BlockShape OUT_SHAPE = {{"BBCRInfo", "BBCR", "BBCRList"}, 1024, ReportBlock::SizeRule::SPACE_LEFT};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, NVRAM read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_CFG_UPDATE_FAILED, "Failed, NVRAM update failed"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, feature not supported"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
    {RC_READ_ONLY_MODE, "Failed, Read-Only parameter"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, feature not supported for virtual port"},
};

constexpr LibraryCall READ_BBCR = {"VEXAPI_FCGetBBCSupportInfoEx", "", "Get BBCR Info failed", RC_CFG_READ_FAILED};
constexpr LibraryCall WRITE_BBCR = {"VEXAPI_FCSetBBCSupportInfo", " before set", "Update BBCR failed",
                                    RC_CFG_UPDATE_FAILED};

constexpr char KEY_COUNT[] = "BBCR_Count";
constexpr char KEY_STATUS[] = "BBCR_Status";
constexpr VX_UINT32 MAX_COUNT = 15;

StagedFile BBCRFile(const char* identifier) {
    static constexpr StagedGroup GROUP = {"BBCR", "CreateBBCRFile", "UpdateBBCRInFile", "ReadBBCRFromFile"};
    return {GROUP, identifier};
}

constexpr Argument SET_FILE_ARGUMENTS[] = {
    PORT_ARGUMENT,
    {"--bbcr-status", "-b", "whether credit recovery is on", ArgumentKind::WORD, false, FLAG_WORDS},
    {"--bbcr-configured", "-c", "count of credits to recover", ArgumentKind::NUMBER, false, {}, 0, MAX_COUNT},
};

} // namespace

constexpr Command PhysicalPortBBCRCmdsProcessor::COMMANDS[] = {
    StagedGet<SETTINGS>(CmdGetCommon, ReportDocument(OUT_SHAPE.names)),
    StagedSetFile<SETTINGS>(CmdSetFileCommon, ReportDocument(OUT_SHAPE.names), SET_FILE_ARGUMENTS),
    StagedSet<SETTINGS>(CmdSetCommon, ReportDocument(OUT_SHAPE.names, DATA_BLOCK, MESSAGE_AND_REBOOT)),
};

constinit const FamilyDescription PhysicalPortBBCRCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "BBCR",
    .leaves = LEAVES_OF<PhysicalPortBBCRCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

/// The keys of the cache file, in the order of its lines.
std::span<const StagedKey<PhysicalPortBBCRCmdsProcessor::BBCRInfo>> PhysicalPortBBCRCmdsProcessor::Keys() {
    static constexpr StagedKey<BBCRInfo> KEYS[] = {
        NumberKey<BBCRInfo, &BBCRInfo::configured, IsBelow<MAX_COUNT + 1>>(KEY_COUNT),
        NumberKey<BBCRInfo, &BBCRInfo::status, IsBelow<2>>(KEY_STATUS),
    };
    return KEYS;
}

ResultCode PhysicalPortBBCRCmdsProcessor::Get(const TavuStringArray& args, BBCRInfo& info) {
    PortEntry entry;
    const ResultCode code = GetPhysicalPortFromPortString(args, entry);
    if (code != RC_SUCCESS) {
        return code;
    }
    info.protocol = entry.protocol;
    if (!IsUefiCapableAdapter(info.protocol->ChipProperty)) {
        TraceStep(TRACE_DEBUG, "Command not supported for this adapter");
        return RC_FEATURE_NOT_SUPPORTED;
    }
    return CallLibrary(READ_BBCR, [&] {
        return VEXAPI_FCGetBBCSupportInfoEx(&info.protocol->PortHandle, &info.status, &info.configured, &info.state,
                                            &info.negotiated, info.reason, sizeof info.reason);
    });
}

/// Shows the staged status and count, and the live state and negotiated count.
ResultCode PhysicalPortBBCRCmdsProcessor::SetFile(const TavuStringArray& args, BBCRInfo& info) {
    const ResultCode code = Get(args, info);
    if (code != RC_SUCCESS) {
        return code;
    }
    return StageSettings(BBCRFile(ArgText(args, 0)), Keys(), info,
                         [&](const StagedFile& file) { return UpdateBBCRInFile(args, file); });
}

ResultCode PhysicalPortBBCRCmdsProcessor::Set(const TavuStringArray& args, BBCRInfo& info) {
    if (const ResultCode code = Get(args, info); code != RC_SUCCESS) {
        return code;
    }
    info.reboot = true; // always; the library isn't asked
    const auto overlay = [&](const StagedFile& file) { ReadStagedFile(file, Keys(), info); };
    return CommitSettings(BBCRFile(ArgText(args, 0)), info.commit, overlay, [&] {
        return CallLibrary(WRITE_BBCR, [&] {
            return VEXAPI_FCSetBBCSupportInfo(&info.protocol->PortHandle, info.status, info.configured);
        });
    });
}

/// Checks both options before either is merged into the file.
ResultCode PhysicalPortBBCRCmdsProcessor::UpdateBBCRInFile(const TavuStringArray& args, const StagedFile& file) {
    StagedValues values;
    TavuString value;
    if (CmdLineParser::GetOption(args, OptionOf(SET_FILE_ARGUMENTS, "--bbcr-status"), value)) {
        VX_UINT32 status = 0;
        if (!FindWord(FLAG_WORDS, value.c_str(), status)) {
            TraceStep(TRACE_DEBUG, "bbcr-status=%s not supported", value.c_str());
            return RC_INVALID_PARAMETER;
        }
        values[KEY_STATUS].Format("%u", status);
    }
    if (CmdLineParser::GetOption(args, OptionOf(SET_FILE_ARGUMENTS, "--bbcr-configured"), value)) {
        const VX_UINT32 count = ParseNumber(value.c_str());
        if (count > MAX_COUNT) {
            TraceStep(TRACE_DEBUG, "bbcr-count=%s not supported", value.c_str());
            return RC_INVALID_PARAMETER;
        }
        values[KEY_COUNT].Format("%u", count);
    }
    return file.Merge(values);
}

void PhysicalPortBBCRCmdsProcessor::DisplayBBCRInfo(MultipleCmdsProcessor* self, const BBCRInfo& info,
                                                    eOutputFormat format) {
    const auto fill = [&](ReportBlock& block) {
        block.Line("BBCR Status", info.status != 0 ? OUT_TRUE : OUT_FALSE);
        block.LineF("BBCR Configured", "%u", info.configured);
        block.Line("BBCR State", info.state != 0 ? "Online" : "Offline");
        const std::string_view reason = BoundedText(info.reason);
        if (info.state != 0) {
            block.LineF("BBCR Negotiated", "%u", info.negotiated);
        } else if (!reason.empty()) {
            block.Line("BBCR Offline Reason Code", reason);
        }
    };
    DisplayBlock(self, format, __func__, OUT_SHAPE, fill, info.reboot,
                 info.reboot.has_value() ? RebootRequired(false) : REBOOT_NOT_SHOWN);
}
