#include "FCLunInfoCmdsProcessor.h"

#include "ReportTexts.h"
#include "Resolvers.h"

namespace {

constexpr char CLASS_NAME[] = "FCLunInfoCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"LunInformation", "LunInfo", "LunInfoList"}, 2048, ReportBlock::SizeRule::SPACE_LEFT};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
};

/// The used bytes, joined by colons; empty for length 0. Bytes that are all zero are not an identifier, whatever
/// the length; the length is limited to the array's.
TavuString WorldwideIdText(const _tagVEXAPI_SDMLun& lun) {
    if (IsZero(lun.WorldwideId)) {
        return OUT_NA;
    }
    TavuString text;
    const std::size_t length = std::min<std::size_t>(lun.WorldwideIdLength, sizeof lun.WorldwideId);
    for (std::size_t at = 0; at < length; ++at) {
        TavuString byte;
        byte.Format(at == 0 ? "%02x" : ":%02x", lun.WorldwideId[at]);
        text += byte;
    }
    return text;
}

} // namespace

constexpr Command FCLunInfoCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane FC LUN information",
     .run = CmdGetCommon,
     .usage = "Usage: get [port identifier]\r\n",
     .arguments = ONLY_LUN,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_TARGETS | VEXAPI_EXT_LUNS | VEXAPI_EXT_LUN_DETAILS},
};

constinit const FamilyDescription FCLunInfoCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FC LUN info",
    .leaves = LEAVES_OF<FCLunInfoCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

VX_UINT64 LunSizeInMegabytes(VX_UINT64 blockCount, VX_UINT32 blockSize) {
    return (blockCount >> 10) * blockSize >> 10;
}

ResultCode FCLunInfoCmdsProcessor::Get(const TavuStringArray& args, LunEntry& entry) {
    return GetLunFromLunString(args, entry);
}

void FCLunInfoCmdsProcessor::DisplayLunInfo(MultipleCmdsProcessor* self, const LunEntry& entry, eOutputFormat format) {
    const _tagVEXAPI_SDMLun& lun = *entry.lun;
    const bool isNamespace = (lun.LunFlags & 1) != 0;

    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        block.Line("Vendor ID", BoundedText(lun.VendorId));
        block.Line("Product ID", BoundedText(lun.ProductId));
        block.Line("Product Revision",
                   isNamespace ? BoundedText(lun.NamespaceRevision) : BoundedText(lun.ProductRevision));
        block.LineF(isNamespace ? "Namespace ID" : "Lun Number", "%u", lun.LunNumber);
        block.LineF(isNamespace ? "Namespace Size In MB" : "Lun Size In MB", "%llu",
                    static_cast<unsigned long long>(LunSizeInMegabytes(lun.BlockCount, lun.BlockSize)));
        if (!isNamespace) {
            block.Line("Lun Worldwide Unique ID", WorldwideIdText(lun));
        }
    });
}
