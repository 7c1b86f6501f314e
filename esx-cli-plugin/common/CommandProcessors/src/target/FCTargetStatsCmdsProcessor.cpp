#include "FCTargetStatsCmdsProcessor.h"

#include "HostTree.h"
#include "LibraryCall.h"

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

constexpr UsageText USAGES[] = {{2, "Usage: get [port identifier]\r\n"}};

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

constinit const Leaf FCTargetStatsCmdsProcessor::LEAVES[] = {
    {"get", "get Orvane FC Target information", 0, Xml<"CmdGet", CmdGetCommon>, nullptr},
    {"help", "list of available commands", 1, CmdHelp, Usage},
    {"getcli", "get Orvane FC Target information", 2, Text<"CmdGetCli", CmdGetCommon>, Usage},
};

constinit const FamilyDescription FCTargetStatsCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FC Target stats",
    .helpId = 1,
    .leaves = LEAVES,
    .usages = USAGES,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

VX_UINT32 ReadTargetStatistics(const TargetEntry& entry, __STATISTICS& counters) {
    constexpr VX_UINT16 SELECT_BY_PORT_NAME = 2;
    VX_PORT_SELECTOR selector{};
    selector.SelectorType = SELECT_BY_PORT_NAME;
    std::copy_n(entry.target->PortName, sizeof selector.PortName, selector.PortName);
    counters = {};
    return CallLibrary({"VEXAPI_GetPortStatisticsFC", "", "Get Port Stats FC failed", RC_STATS_READ_FAILED}, [&] {
        return VEXAPI_GetPortStatisticsFC(HandleWord(entry.protocol->PortHandle), 0, &selector, &counters);
    });
}

VX_UINT32 FCTargetStatsCmdsProcessor::Get(const TavuStringArray& args, TargetStats& stats) {
    if (const VX_UINT32 code = FCTargetCmdsProcessor::GetTargetFromTargetString(args, stats.entry);
        code != RC_SUCCESS) {
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
