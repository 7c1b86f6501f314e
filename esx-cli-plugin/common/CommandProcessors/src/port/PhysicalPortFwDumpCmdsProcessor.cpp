#include "PhysicalPortFwDumpCmdsProcessor.h"

#include "HostTree.h"
#include "LibraryCall.h"
#include "Resolvers.h"

#include <cstdlib>

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortFwDumpCmdsProcessor";

constexpr char OUT_STRUCT_NAME[] = "FwDumpInfo";

constexpr CodeText RESULT_TEXTS[] = {
    {RC_SUCCESS, OUT_SUCCESS},
    {RC_PARAM_ERROR, "Failed, Parameter Error"},
    {RC_INVALID_PARAMETER, "Failed, Invalid Parameter"},
    {RC_CFG_READ_FAILED, "Failed, FW Dump read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, feature not supported"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
    {RC_NO_DATA_AVAILABLE, "Failed, FW Dump Not Available"},
};

constexpr StatusResult DUMP_STATUSES[] = {
    {0x20000064, RC_INVALID_PARAMETER},
    {0x20000072, RC_NO_MEMORY},
    {0x20000073, RC_PARAM_ERROR},
    {0x2000007B, RC_NO_DATA_AVAILABLE},
};
constexpr LibraryCall READ_DUMP = {"VEXAPI_SDGetFwDump2", "", "Get FW Dump failed", RC_CFG_READ_FAILED, DUMP_STATUSES};

constexpr Argument GET_ARGUMENTS[] = {
    PORT_ARGUMENT,
    {"file", nullptr, "file to write the dump to", ArgumentKind::OUTPUT_FILE, true},
};

} // namespace

constexpr Command PhysicalPortFwDumpCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane Firmware Dump information",
     .run = CmdGetCommon,
     .usage = "Usage: get\r\n",
     .arguments = GET_ARGUMENTS,
     .document = FlatDocument(OUT_STRUCT_NAME),
     .changes = true},
};

constinit const FamilyDescription PhysicalPortFwDumpCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "Firmware Dump",
    .leaves = LEAVES_OF<PhysicalPortFwDumpCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
};

ResultCode PhysicalPortFwDumpCmdsProcessor::CmdGetCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                         eOutputFormat format) {
    const ResultCode code = WriteDump(args);
    const TracedCall traced(CLASS_NAME, code == RC_SUCCESS ? "DisplayFwDumpInfo" : "DisplayError");
    Document document(*self, format);
    document.Flat(OUT_STRUCT_NAME, [&] { document.Message(code, ResultText(code)); });
    return code;
}

/// Fetches the dump before opening the file. Overwrites an existing file.
ResultCode PhysicalPortFwDumpCmdsProcessor::WriteDump(const TavuStringArray& args) {
    PortEntry entry;
    if (const ResultCode code = GetPhyPortFromPortString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    if (args.size() < 2) {
        return RC_PARAM_ERROR;
    }
    void* data = nullptr;
    VX_UINT32 size = 0;
    const ResultCode code = CallLibrary(
        READ_DUMP, [&] { return VEXAPI_SDGetFwDump2(HandleWord(entry.protocol->PortHandle), 0, &data, &size); });
    const std::unique_ptr<void, decltype(&std::free)> dump(data, &std::free);
    if (code != RC_SUCCESS) {
        return code;
    }
    if (dump == nullptr && size > 0) {
        return RC_NO_DATA_AVAILABLE;
    }
    FILE* const file = std::fopen(ArgText(args, 1), "w");
    if (file == nullptr) {
        return RC_FILE_ERROR;
    }
    if (size > 0) {
        // Required: an incomplete write is not a failure of the command; clients depend on it.
        static_cast<void>(std::fwrite(dump.get(), 1, size, file));
    }
    std::fclose(file);
    return RC_SUCCESS;
}
