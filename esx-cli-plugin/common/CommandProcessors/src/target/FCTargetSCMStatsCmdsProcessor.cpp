#include "FCTargetSCMStatsCmdsProcessor.h"

#include "CongestionAccess.h"
#include "CongestionReport.h"
#include "TargetStatistics.h"

namespace {

constexpr char CLASS_NAME[] = "FCTargetSCMStatsCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"TargetFWCMStatistics", "Target FWCM Stats", "TargetFWCMStatsList"}, 8192, ReportBlock::SizeRule::SPACE_LEFT};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, FWCM settings read error"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_NOT_SUPPORTED_BY_SWITCH, "Failed, Feature not supported by switch"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
    {RC_STATS_READ_FAILED, "Failed, Statistics read error"},
    {RC_STATS_CLEAR_FAILED, "Failed, Statistics list clear error"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
    {RC_UNSUPPORTED_FW, "Failed, Driver/Firmware does not support this feature"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, feature not supported for virtual port"},
    {RC_FEATURE_DISABLED, "Failed, Feature disabled on the port"},
};

} // namespace

constexpr Command FCTargetSCMStatsCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane FC Target information",
     .run = CmdGetCommon,
     .usage = "Usage: get [port identifier]\r\n",
     .arguments = ONLY_TARGET,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_PORT_DETAILS | VEXAPI_EXT_TARGETS | VEXAPI_EXT_TARGET_DETAILS},
};

constinit const FamilyDescription FCTargetSCMStatsCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FC Target scmstats",
    .leaves = LEAVES_OF<FCTargetSCMStatsCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

ResultCode FCTargetSCMStatsCmdsProcessor::Get(const TavuStringArray& args, Statistics& statistics) {
    const ResultCode code =
        AdmitCongestion(ADMIT_EITHER_GENERATION, "target", GetTargetFromTargetString, args, statistics.entry);
    if (code != RC_SUCCESS) {
        return code;
    }
    _vexapi_protocol_t& protocol = *statistics.entry.protocol;
    return HasSecondGeneration(protocol) ? ReadCongestionList(protocol, statistics.list)
                                         : ReadTargetStatistics(statistics.entry, statistics.counters);
}

ResultCode FCTargetSCMStatsCmdsProcessor::Release(const Statistics& statistics) {
    return ReleaseCongestionList(statistics.list);
}

void FCTargetSCMStatsCmdsProcessor::DisplayStatistics(MultipleCmdsProcessor* self, const Statistics& statistics,
                                                      eOutputFormat format) {
    if (statistics.list != nullptr) {
        DisplayTargetSCMStatsV2(self, *statistics.entry.target, *statistics.list, format);
    } else {
        DisplayTargetSCMStats(self, *statistics.entry.target, statistics.counters, format);
    }
}

void FCTargetSCMStatsCmdsProcessor::DisplayTargetSCMStats(MultipleCmdsProcessor* self,
                                                          const _tagVEXAPI_SDMTarget& target,
                                                          const __STATISTICS& counters, eOutputFormat format) {
    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        AddTargetNames(block, target);
        AddLinkEvent(block, TARGET_WORDS, target.ScmEventFlags, target.ScmLinkEventType, target.ScmLinkEventThreshold);
        AddTargetCounters(block, LINK_COUNTERS, counters);
        AddDeliveryReason(block, TARGET_WORDS, target.ScmDeliveryReason);
        AddTargetCounters(block, DELIVERY_COUNTERS, counters);
        AddCongestionEvent(block, TARGET_WORDS, target.ScmPeerCongEventType, target.ScmPeerCongEventPeriod);
        AddTargetCounters(block, CONGESTION_COUNTERS, counters, TARGET_WORDS.congestionPrefix);
    });
}

void FCTargetSCMStatsCmdsProcessor::DisplayTargetSCMStatsV2(MultipleCmdsProcessor* self,
                                                            const _tagVEXAPI_SDMTarget& target,
                                                            const _VEXAPI_SANCONGTMGMTV2& list, eOutputFormat format) {
    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        AddTargetNames(block, target);
        AddSections(block, TARGET_SECTIONS, FindTargetNode(list, target));
    });
}
