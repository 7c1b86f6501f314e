#include "PhysicalPortSCMStatsCmdsProcessor.h"

#include "CongestionAccess.h"
#include "CongestionReport.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortSCMStatsCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"PortFWCMStatistics", "Port FWCM Stats", "PortFWCMStatsList"}, 8192, ReportBlock::SizeRule::SPACE_LEFT};
constexpr char OUT_CLEAR_STRUCT_NAME[] = "FWCMStatisticsClear";

/// Required: a report that can't be allocated reads "Failed, Unknown"; parsers depend on it.
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
    {RC_LINK_UP_REQUIRED, "Failed, Feature requires link up"},
    {RC_UNSUPPORTED_FW, "Failed, Driver/Firmware does not support this feature"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, feature not supported for virtual port"},
    {RC_FEATURE_DISABLED, "Failed, Feature disabled on the port"},
};
/// Additional texts of `clear`.
constexpr CodeText CLEAR_RESULT_TEXTS[] = {
    {RC_SUCCESS, OUT_SUCCESS},
    {RC_NO_MEMORY, "Failed, Memory Error"},
};

constexpr LibraryCall RESET_STATISTICS = {"VEXAPI_SANCongMgmtResetStatistics", "", "Get SCM Reset Statistics failed",
                                          RC_LIBRARY_FAILED};
/// Status of a reset that the driver or firmware doesn't support.
constexpr VX_UINT32 STATUS_UNSUPPORTED_DRIVER = 118;

ResultCode AdmitPort(const CongestionAdmission& admission, const TavuStringArray& args, PortEntry& entry) {
    return AdmitCongestion(admission, "phy port", GetPhyPortFromPortString, args, entry);
}

} // namespace

constexpr Command PhysicalPortSCMStatsCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane Physical Port SCM statistics",
     .run = CmdGetCommon,
     .usage = "Usage: get [port identifier]\r\n",
     .arguments = ONLY_PORT,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_PORT_DETAILS | VEXAPI_EXT_TARGETS | VEXAPI_EXT_TARGET_DETAILS,
     .twinDescription = "get Orvane Physical Port SCM information"},
    {.names = Names<"clear", "CmdClear">(),
     .description = "clear SCM statistics of all targets connected to Orvane Physical Port",
     .run = CmdClearCommon,
     .usage = nullptr,
     .arguments = ONLY_PORT,
     .document = FlatDocument(OUT_CLEAR_STRUCT_NAME),
     .changes = true,
     .twinUsage = TwinUsage::NONE},
};

constinit const FamilyDescription PhysicalPortSCMStatsCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "port scmstats",
    .leaves = LEAVES_OF<PhysicalPortSCMStatsCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

ResultCode PhysicalPortSCMStatsCmdsProcessor::Get(const TavuStringArray& args, Statistics& statistics) {
    const ResultCode code = AdmitPort(ADMIT_EITHER_GENERATION, args, statistics.entry);
    if (code != RC_SUCCESS || !HasSecondGeneration(*statistics.entry.protocol)) {
        return code; // the first generation has everything in the port's record
    }
    return ReadCongestionList(*statistics.entry.protocol, statistics.list);
}

ResultCode PhysicalPortSCMStatsCmdsProcessor::Release(const Statistics& statistics) {
    return ReleaseCongestionList(statistics.list);
}

ResultCode PhysicalPortSCMStatsCmdsProcessor::CmdClearCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                             eOutputFormat format) {
    const ResultCode code = Clear(args);
    DisplayClear(self, code, format);
    return code;
}

ResultCode PhysicalPortSCMStatsCmdsProcessor::Clear(const TavuStringArray& args) {
    PortEntry entry;
    if (const ResultCode code = AdmitPort(ADMIT_SECOND_GENERATION, args, entry); code != RC_SUCCESS) {
        return code;
    }
    VX_UINT32 status = 0;
    const ResultCode code = CallLibrary(
        RESET_STATISTICS, [&] { return status = VEXAPI_SANCongMgmtResetStatistics(&entry.protocol->PortHandle); });
    return status == STATUS_UNSUPPORTED_DRIVER ? RC_UNSUPPORTED_FW : code;
}

void PhysicalPortSCMStatsCmdsProcessor::DisplayStatistics(MultipleCmdsProcessor* self, const Statistics& statistics,
                                                          eOutputFormat format) {
    if (statistics.list != nullptr) {
        DisplayPortSCMStatsV2(self, *statistics.entry.protocol, *statistics.list, format);
    } else {
        DisplayPortSCMStats(self, *statistics.entry.protocol, format);
    }
}

void PhysicalPortSCMStatsCmdsProcessor::DisplayPortSCMStats(MultipleCmdsProcessor* self,
                                                            const _vexapi_protocol_t& protocol, eOutputFormat format) {
    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        AddPortNames(block, protocol);
        AddLinkEvent(block, PORT_WORDS, protocol.ScmEventFlags, protocol.ScmLinkEventType,
                     protocol.ScmLinkEventThreshold);
        AddPortLinkCounters(block, protocol);
        AddDeliveryReason(block, PORT_WORDS, protocol.ScmDeliveryReason);
        AddCongestionEvent(block, PORT_WORDS, protocol.ScmCongEventType, protocol.ScmCongEventPeriod);
        AddEventSeverity(block, protocol.ScmCongSeverity);
        AddPortAlarmCounters(block, protocol);
    });
}

void PhysicalPortSCMStatsCmdsProcessor::DisplayPortSCMStatsV2(MultipleCmdsProcessor* self,
                                                              const _vexapi_protocol_t& protocol,
                                                              const _VEXAPI_SANCONGTMGMTV2& list,
                                                              eOutputFormat format) {
    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        AddPortNames(block, protocol);
        AddSections(block, PORT_SECTIONS, FindPortNode(list));
    });
}

void PhysicalPortSCMStatsCmdsProcessor::DisplayClear(MultipleCmdsProcessor* self, ResultCode code,
                                                     eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Flat(OUT_CLEAR_STRUCT_NAME,
                  [&] { document.Message(code, TextOf(CLEAR_RESULT_TEXTS, code, ResultText(code))); });
}
