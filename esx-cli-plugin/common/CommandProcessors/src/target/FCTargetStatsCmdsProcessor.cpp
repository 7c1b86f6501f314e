#include "FCTargetStatsCmdsProcessor.h"

#include "HostTree.h"
#include "NameLines.h"
#include "TargetStatistics.h"

namespace {

constexpr char CLASS_NAME[] = "FCTargetStatsCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"TargetStatistics", "Target Stats", "TargetStatsList"}, 2048, ReportBlock::SizeRule::SPACE_LEFT};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
    {RC_STATS_READ_FAILED, "Failed, Statistics read error"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
    {RC_UNSUPPORTED_FW, "Failed, Driver/Firmware does not support this feature"},
};

struct Counter {
    const char* label;
    VX_UINT32 __STATISTICS::*count;
};
constexpr Counter COUNTERS[] = {
    {"Link Failure Count", &__STATISTICS::LinkFailureCount},
    {"Loss Of Sync Count", &__STATISTICS::LossOfSyncCount},
    {"Loss Of Signal Count", &__STATISTICS::LossOfSignalCount},
    {"Primitive Sequence Protocol Error Count", &__STATISTICS::PrimSeqProtoErrCount},
    {"Invalid Transmission Word Count", &__STATISTICS::InvalidTxWordCount},
    {"Invalid CRC Count", &__STATISTICS::InvalidCrcCount},
};

} // namespace

constexpr Command FCTargetStatsCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane FC Target information",
     .run = CmdGetCommon,
     .usage = "Usage: get [port identifier]\r\n",
     .arguments = ONLY_TARGET,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_TARGETS | VEXAPI_EXT_TARGET_DETAILS},
};

constinit const FamilyDescription FCTargetStatsCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FC Target stats",
    .leaves = LEAVES_OF<FCTargetStatsCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

ResultCode FCTargetStatsCmdsProcessor::Get(const TavuStringArray& args, TargetStats& stats) {
    if (const ResultCode code = GetTargetFromTargetString(args, stats.entry); code != RC_SUCCESS) {
        TraceStep(TRACE_DEBUG, "Get target failed err=%d", static_cast<int>(code));
        return code;
    }
    return ReadTargetStatistics(stats.entry, stats.counters);
}

void FCTargetStatsCmdsProcessor::DisplayTargetStats(MultipleCmdsProcessor* self, const TargetStats& stats,
                                                    eOutputFormat format) {
    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        AddTargetNames(block, *stats.entry.target);
        for (const Counter& counter : COUNTERS) {
            block.LineF(counter.label, "%u", stats.counters.*counter.count);
        }
    });
}
