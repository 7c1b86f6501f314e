#include "PhysicalPortBBCRCmdsProcessor.h"

#include "ChipFamilies.h"
#include "CmdLineParser.h"
#include "LibraryCall.h"
#include "PhysicalPortCmdsProcessor.h"
#include "ReportTexts.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortBBCRCmdsProcessor";

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

constexpr UsageText USAGES[] = {
    {4, "Usage: get\r\n"},
    {5, "Usage: setFile\r\n"},
    {6, "Usage: set\r\n"},
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

} // namespace

constinit const Leaf PhysicalPortBBCRCmdsProcessor::LEAVES[] = {
    {"get", "get Orvane adapter's Buffer-to-Buffer Credit information", 0, Xml<"CmdGet", CmdGetCommon>, nullptr},
    {"setFile", "set Orvane adapter's Buffer-to-Buffer Credit information in a local cache file", 1,
     Xml<"CmdSetFile", CmdSetFileCommon>, nullptr},
    {"set", "set Orvane adapter's Buffer-to-Buffer Credit information", 2, Xml<"CmdSet", CmdSetCommon>, nullptr},
    {"help", "list of available commands", 3, CmdHelp, Usage},
    {"getcli", "get Orvane adapter's Buffer-to-Buffer Credit information", 4, Text<"CmdGetCli", CmdGetCommon>, Usage},
    {"setFilecli", "set Orvane adapter's Buffer-to-Buffer Credit information in a local cache file", 5,
     Text<"CmdSetFileCli", CmdSetFileCommon>, Usage},
    {"setcli", "set Orvane adapter's Buffer-to-Buffer Credit information", 6, Text<"CmdSetCli", CmdSetCommon>, Usage},
};

constinit const FamilyDescription PhysicalPortBBCRCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "BBCR",
    .helpId = 3,
    .leaves = LEAVES,
    .usages = USAGES,
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

VX_UINT32 PhysicalPortBBCRCmdsProcessor::Get(const TavuStringArray& args, BBCRInfo& info) {
    PortEntry entry;
    const VX_UINT32 code = PhysicalPortCmdsProcessor::GetPhysicalPortFromPortString(args, entry);
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
VX_UINT32 PhysicalPortBBCRCmdsProcessor::SetFile(const TavuStringArray& args, BBCRInfo& info) {
    const VX_UINT32 code = Get(args, info);
    if (code != RC_SUCCESS) {
        return code;
    }
    return StageSettings(BBCRFile(ArgText(args, 0)), Keys(), info,
                         [&](const StagedFile& file) { return UpdateBBCRInFile(args, file); });
}

VX_UINT32 PhysicalPortBBCRCmdsProcessor::Set(const TavuStringArray& args, BBCRInfo& info) {
    if (const VX_UINT32 code = Get(args, info); code != RC_SUCCESS) {
        return code;
    }
    info.reboot = true; // always: the library isn't asked
    const auto overlay = [&](const StagedFile& file) { ReadStagedFile(file, Keys(), info); };
    return CommitSettings(BBCRFile(ArgText(args, 0)), info.commit, overlay, [&] {
        return CallLibrary(WRITE_BBCR, [&] {
            return VEXAPI_FCSetBBCSupportInfo(&info.protocol->PortHandle, info.status, info.configured);
        });
    });
}

/// Checks both options before either is merged into the file.
VX_UINT32 PhysicalPortBBCRCmdsProcessor::UpdateBBCRInFile(const TavuStringArray& args, const StagedFile& file) {
    StagedValues values;
    TavuString value;
    if (CmdLineParser::GetCommandValueFromArgs(args, "-b", "--bbcr-status", value) != 0) {
        VX_UINT32 status = 0;
        if (!FindWord(FLAG_WORDS, value.c_str(), status)) {
            TraceStep(TRACE_DEBUG, "bbcr-status=%s not supported", value.c_str());
            return RC_INVALID_PARAMETER;
        }
        values[KEY_STATUS].Format("%u", status);
    }
    if (CmdLineParser::GetCommandValueFromArgs(args, "-c", "--bbcr-configured", value) != 0) {
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
