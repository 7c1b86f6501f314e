#include "AdapterFlashInfoCmdsProcessor.h"

#include "FlashReport.h"
#include "LibraryCall.h"
#include "ReportTexts.h"
#include "Resolvers.h"

namespace {

constexpr char CLASS_NAME[] = "AdapterFlashInfoCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"AdapterFlashInformation", "Flash Info", "FlashInfoList"}, 1024, ReportBlock::SizeRule::FULL};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, Flash Info read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_SIGNATURE_ERROR, "Failed, Flash Signature Error"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, feature not supported for this adapter"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
};

constexpr LibraryCall READ_MEMO = {"VEXAPI_GetAdapterFlashMemoBlock", "", "Get Flash Memo Block failed",
                                   RC_CFG_READ_FAILED};

struct FlashTool {
    const char* id;
    const char* name; ///< null: the id is shown
};
constexpr FlashTool FLASH_TOOLS[] = {
    {"OCLI", "Sorvenna CLI"},
    {"OGUI", "Sorvenna GUI"},
    {"OMFG", "Manufacturing Tool"},
    {"ORFS", "DOS Flash Update Utility"},
    {"PLDM", "Platform Management Firmware"},
    {"EFLS", "UEFI Flash Tool"},
    {"EFMP", "UEFI Firmware Management Protocol Driver"},
    {"VIPL", "ESXi Plugin"},
    {"HPFL", "Flash Update Library"},
    {"ORFL", nullptr},
    {"ECLI", "ESX CLI Plugin"},
    {"FCTB", "FC Toolbench"},
    {"CMPR", "CIM Provider"},
    {"IBMD", "IBM AIX Driver"},
};

TavuString FlashToolName(const TavuString& id) {
    for (const FlashTool& tool : FLASH_TOOLS) {
        if (id.CompareNoCase(tool.id) == 0) {
            return tool.name != nullptr ? TavuString(tool.name) : id;
        }
    }
    return OUT_UNKNOWN;
}

/// One matching character suffices: blocks of early tools have no more.
bool HasSignature(const VX_SFlashMemoBlock& memo) {
    return std::mismatch(FLASH_MEMO_SIGNATURE.begin(), FLASH_MEMO_SIGNATURE.end(), memo.Signature,
                         [](char expected, char found) { return expected != found; })
               .first != FLASH_MEMO_SIGNATURE.end();
}

} // namespace

constexpr Command AdapterFlashInfoCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane Adapter information",
     .run = CmdGetCommon,
     .usage = "Usage: get [adapter identifier]\r\n",
     .arguments = ONLY_ADAPTER,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_ADAPTERS},
};

constinit const FamilyDescription AdapterFlashInfoCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "Adapter flashinfo",
    .leaves = LEAVES_OF<AdapterFlashInfoCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

ResultCode AdapterFlashInfoCmdsProcessor::Get(const TavuStringArray& args, VX_SFlashMemoBlock& memo) {
    AdapterEntry entry;
    if (const ResultCode code = GetFcPortFromAdapterString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    if (!HasFlashMemoBlock(entry.fc->ChipProperty)) {
        TraceStep(TRACE_DEBUG, "Command not supported for this adapter");
        return RC_FEATURE_NOT_SUPPORTED;
    }
    const ResultCode code =
        CallLibrary(READ_MEMO, [&] { return VEXAPI_GetAdapterFlashMemoBlock(&entry.fc->PortHandle, &memo); });
    if (code != RC_SUCCESS) {
        return code;
    }
    if (!HasSignature(memo)) {
        TraceStep(TRACE_DEBUG, "Get FMB signature failed err=%d", int{RC_SIGNATURE_ERROR});
        return RC_SIGNATURE_ERROR;
    }
    return RC_SUCCESS;
}

void AdapterFlashInfoCmdsProcessor::DisplayFlashInfo(MultipleCmdsProcessor* self, const VX_SFlashMemoBlock& memo,
                                                     eOutputFormat format) {
    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        const auto& tool = memo.ToolVersion;
        const auto& date = memo.MbiBuildDate;
        block.LineF("MBI Version", "%02u.%02u.%02u", memo.Mbi[0], memo.Mbi[1], memo.Mbi[2]);
        // A zero byte in the date ends the line there, and the next line continues on it.
        const char dateText[] = {static_cast<char>(date[0]),
                                 static_cast<char>(date[1]),
                                 static_cast<char>(date[2]),
                                 static_cast<char>(date[3]),
                                 '-',
                                 static_cast<char>(date[4]),
                                 static_cast<char>(date[5]),
                                 '-',
                                 static_cast<char>(date[6]),
                                 static_cast<char>(date[7])};
        const std::string_view buildDate = BoundedText(dateText);
        block.Line("MBI Build Date", buildDate, buildDate.size() == sizeof dateText ? "\n" : "");
        block.Line("Flash Tool ID", FlashToolName(TavuString(BoundedText(memo.ToolId))));
        block.LineF("Flash Tool Version", "%02u.%02u.%02u.%02u", tool[0], tool[1], tool[2], tool[3]);
        block.LineF("Last Update Time", "%04u-%02u-%02u %02u:%02u:%02u", memo.Year, memo.Month, memo.Day, memo.Hour,
                    memo.Minute, memo.Second);
        if (!IsZero(memo.FamilyFw)) {
            block.LineF("Family Firmware Version", "%02u.%02u.%02u", memo.FamilyFw[0], memo.FamilyFw[1],
                        memo.FamilyFw[2]);
        }
    });
}
