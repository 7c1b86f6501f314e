#include "PhysicalPortFCStatsCmdsProcessor.h"

#include "LibraryCall.h"
#include "Resolvers.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortFCStatsCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {{"FCStatistics", "FCStats", "FCStatsList"}, 2048, ReportBlock::SizeRule::FULL};
constexpr char OUT_RESET_STRUCT_NAME[] = "ResetFCStatistics";
constexpr char MODE_DRIVER[] = "Driver";
constexpr char MODE_FIRMWARE[] = "Firmware";

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_STATS_CLEAR_FAILED, "Failed, Statistics clear error"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
};

constexpr LibraryCall RESET_STATS = {"VEXAPI_ResetDeviceStats", "", "Reset Device Stats failed", RC_STATS_CLEAR_FAILED};

using Port = _vexapi_protocol_t;
constexpr PortCounter DRIVER_COUNTERS[] = {
    {"Controller Error Count", &Port::ControllerErrorCount},
    {"Device Error Count", &Port::DeviceErrorCount},
    {"IO Count", &Port::IoCount},
    {"Mega Bytes Count", &Port::MegaBytesCount},
    {"LIP Reset Count", &Port::LipResetCount},
    {"Interrupt Count", &Port::InterruptCount},
};
constexpr PortCounter FIRMWARE_COUNTERS[] = {
    {"Link Failure Count", &Port::LinkFailureCount},
    {"Loss Of Sync Count", &Port::LossOfSyncCount},
    {"Loss Of Signal Count", &Port::LossOfSignalCount},
    {"Primitive Sequence Protocol Error Count", &Port::PrimitiveSeqProtocolErrorCount},
    {"Invalid Transmission Word Count", &Port::InvalidTxWordCount},
    {"Invalid CRC Count", &Port::InvalidCrcCount},
};

void AddCounters(ReportBlock& block, const Port& port, std::span<const PortCounter> counters) {
    for (const PortCounter& counter : counters) {
        block.LineF(counter.label, "%u", port.*counter.count);
    }
}

constexpr CodeText GET_MODES[] = {{0, MODE_DRIVER}, {1, MODE_FIRMWARE}};
constexpr CodeText RESET_MODES[] = {{1, MODE_FIRMWARE}};
constexpr Argument GET_ARGUMENTS[] = {PORT_ARGUMENT,
                                      {"mode", nullptr, "whose counters", ArgumentKind::WORD, true, GET_MODES}};
constexpr Argument RESET_ARGUMENTS[] = {PORT_ARGUMENT,
                                        {"mode", nullptr, "whose counters", ArgumentKind::WORD, true, RESET_MODES}};

} // namespace

// Required: `reset` shares the id of `get`. Nothing shows it, as plain leaves have no usage.
constexpr Command PhysicalPortFCStatsCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane Physical Port Statistics",
     .run = CmdGetCommon,
     .usage = "Usage: get [port identifier]\r\n",
     .arguments = GET_ARGUMENTS,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_PORT_COUNTERS},
    {.names = Names<"reset", "CmdReset">(),
     .description = "reset Orvane Physical Port Statistics",
     .run = CmdResetCommon,
     .usage = "Usage: reset [port identifier]\r\n",
     .arguments = RESET_ARGUMENTS,
     .document = FlatDocument(OUT_RESET_STRUCT_NAME),
     .changes = true,
     .id = 0},
};

constinit const FamilyDescription PhysicalPortFCStatsCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "port stats",
    .leaves = LEAVES_OF<PhysicalPortFCStatsCmdsProcessor, "list of available commands", 1>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

ResultCode PhysicalPortFCStatsCmdsProcessor::CmdGetCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                          eOutputFormat format) {
    PortEntry entry;
    if (const ResultCode code = GetPhyPortFromPortString(args, entry); code != RC_SUCCESS) {
        DisplayError(self, code, format);
        return code;
    }
    const char* mode = ArgText(args, 1);
    if (CompareNoCase(mode, MODE_DRIVER) == 0) {
        DisplayFCDriverStats(self, *entry.protocol, format);
    } else if (CompareNoCase(mode, MODE_FIRMWARE) == 0) {
        DisplayFCFWStats(self, *entry.protocol, format);
    } else {
        // The document shows the failure, but the result is success, so no usage follows, unlike in `reset`.
        TraceStep(TRACE_DEBUG, "Invalid mode=%s", mode);
        DisplayError(self, RC_INVALID_PARAMETER, format);
    }
    return RC_SUCCESS;
}

ResultCode PhysicalPortFCStatsCmdsProcessor::Reset(const TavuStringArray& args, NoState&) {
    PortEntry entry;
    if (const ResultCode code = GetPhyPortFromPortString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    const char* mode = ArgText(args, 1);
    if (CompareNoCase(mode, MODE_FIRMWARE) != 0) {
        TraceStep(TRACE_DEBUG, "Invalid mode=%s", mode);
        return RC_INVALID_PARAMETER;
    }
    return CallLibrary(RESET_STATS, [&] { return VEXAPI_ResetDeviceStats(&entry.protocol->PortHandle); });
}

void PhysicalPortFCStatsCmdsProcessor::DisplayFCDriverStats(MultipleCmdsProcessor* self,
                                                            const _vexapi_protocol_t& protocol, eOutputFormat format) {
    DisplayBlock(self, format, __func__, OUT_SHAPE,
                 [&](ReportBlock& block) { AddCounters(block, protocol, DRIVER_COUNTERS); });
}

void PhysicalPortFCStatsCmdsProcessor::DisplayFCFWStats(MultipleCmdsProcessor* self, const _vexapi_protocol_t& protocol,
                                                        eOutputFormat format) {
    DisplayBlock(self, format, __func__, OUT_SHAPE,
                 [&](ReportBlock& block) { AddCounters(block, protocol, FIRMWARE_COUNTERS); });
}

void PhysicalPortFCStatsCmdsProcessor::DisplayReset(MultipleCmdsProcessor* self, const NoState&, eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Flat(OUT_RESET_STRUCT_NAME, [&] { document.Success(REBOOT_NOT_SHOWN); });
}
