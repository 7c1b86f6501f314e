#include "FCTargetIIDMACmdsProcessor.h"

#include "ChipFamilies.h"
#include "HostTree.h"
#include "LibraryCall.h"
#include "NameLines.h"
#include "ReportTexts.h"

namespace {

constexpr char CLASS_NAME[] = "FCTargetIIDMACmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"TargetIIDMAInformation", "Target IIDMA Info", "TargetIIDMAInfoList"}, 4096, ReportBlock::SizeRule::SPACE_LEFT};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_INVALID_CMD, "Failed, Read-Only feature for this adapter"},
    {RC_CFG_READ_FAILED, "Failed, IIDMA read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_CFG_UPDATE_FAILED, "Failed, IIDMA set failed"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
    {RC_UNSUPPORTED_SPEED, "Failed, Speed not supported for this adapter"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, feature not supported for virtual port"},
};

constexpr LibraryCall READ_SPEED = {"VEXAPI_GetTargetLinkSpeed", "", "Get Link Speed failed", RC_CFG_READ_FAILED};
/// Required: the trace of a failed change says "Get".
constexpr LibraryCall CHANGE_SPEED = {"VEXAPI_SetTargetLinkSpeed", "", "Get Link Speed failed", RC_CFG_UPDATE_FAILED};

/// A rate in its three forms. `level` ranks the rates of an adapter, by its highest bit of `SupportedSpeeds`. 10
/// Gbps has neither level nor usable bit: it can be shown but not set.
struct Rate {
    const char* word;
    VX_UINT32 code; ///< the library's
    int level;
    VX_UINT8 bit;
};
constexpr int NO_LEVEL = 0;
constexpr Rate RATES[] = {
    {"64_Gbps", 100, 7, 0x80}, {"32_Gbps", 50, 6, 0x40}, {"16_Gbps", 22, 5, 0x20}, {"10_Gbps", 16, NO_LEVEL, 0},
    {"8_Gbps", 8, 4, 0x10},    {"4_Gbps", 4, 3, 0x08},   {"2_Gbps", 2, 2, 0x02},   {"1_Gbps", 1, 1, 0x01},
};
constexpr const Rate& SLOWEST = *std::rbegin(RATES);

/// The first rate that satisfies `predicate(rate)`, or `fallback`.
template <typename Predicate> constexpr Rate FindRate(Predicate predicate, const Rate& fallback) {
    const auto* const rate = std::find_if(std::begin(RATES), std::end(RATES), predicate);
    return rate != std::end(RATES) ? *rate : fallback;
}

Rate RateOfCode(VX_UINT32 code) {
    return FindRate([code](const Rate& rate) { return rate.code == code; }, {OUT_UNKNOWN, code, NO_LEVEL, 0});
}

/// Required: any other word counts as 1 Gbps; clients depend on it.
Rate RateOfWord(const char* word) {
    return FindRate([word](const Rate& rate) { return CompareNoCase(word, rate.word) == 0; }, SLOWEST);
}

/// The highest rate of an adapter; code 0 and no level if there is none.
Rate MaximumRate(VX_UINT8 supportedSpeeds) {
    return FindRate([supportedSpeeds](const Rate& rate) { return (supportedSpeeds & rate.bit) != 0; },
                    {OUT_UNKNOWN, 0, NO_LEVEL, 0});
}

constexpr CodeText RATE_WORDS[] = {
    {100, RATES[0].word}, {50, RATES[1].word}, {22, RATES[2].word}, {16, RATES[3].word},
    {8, RATES[4].word},   {4, RATES[5].word},  {2, RATES[6].word},  {1, RATES[7].word},
};
constexpr Argument SET_ARGUMENTS[] = {
    TARGET_ARGUMENT,
    {"speed", nullptr, "maximum speed of the link; any other word means 1_Gbps", ArgumentKind::WORD, true, RATE_WORDS},
};

} // namespace

constexpr Command FCTargetIIDMACmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane FC Target IIDMA Speed",
     .run = CmdGetCommon,
     .usage = "Usage: get [port identifier]\r\n",
     .arguments = ONLY_TARGET,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_PORT_DETAILS | VEXAPI_EXT_TARGETS | VEXAPI_EXT_TARGET_DETAILS},
    {.names = Names<"set", "CmdSet">(),
     .description = "set Orvane FC Target IIDMA Speed",
     .run = CmdSetCommon,
     .usage = "Usage: set [port identifier]\r\n",
     .arguments = SET_ARGUMENTS,
     .document = ReportDocument(OUT_SHAPE.names),
     .changes = true},
};

constinit const FamilyDescription FCTargetIIDMACmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FC Target iidma",
    .leaves = LEAVES_OF<FCTargetIIDMACmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

/// A rate above the adapter's highest is shown as the highest.
ResultCode FCTargetIIDMACmdsProcessor::Get(const TavuStringArray& args, LinkSpeed& speed) {
    ResultCode code = ResolveTarget(args, speed.entry);
    if (code == RC_SUCCESS) {
        code = ReadSpeed(speed.entry, speed.code);
    }
    if (code != RC_SUCCESS) {
        return code;
    }
    const Rate maximum = MaximumRate(speed.entry.protocol->SupportedSpeeds);
    const int level = RateOfCode(speed.code).level;
    if (level > maximum.level) {
        TraceStep(TRACE_INFORMATION, "Got TgtSpeed %d > MaxSpeed %d", level, maximum.level);
        speed.code = maximum.code;
    }
    return RC_SUCCESS;
}

ResultCode FCTargetIIDMACmdsProcessor::Set(const TavuStringArray& args, LinkSpeed& speed) {
    if (const ResultCode code = ResolveTarget(args, speed.entry); code != RC_SUCCESS) {
        return code;
    }
    _vexapi_protocol_t& protocol = *speed.entry.protocol;
    if (Is10GAdapter(protocol.ChipProperty)) {
        TraceStep(TRACE_DEBUG, "Command not supported for this adapter");
        return RC_INVALID_CMD;
    }
    // A missing word is rejected; only a misspelt one counts as 1 Gbps.
    if (args.size() < 2) {
        return RC_INVALID_PARAMETER;
    }
    const Rate wanted = RateOfWord(ArgText(args, 1));
    if (wanted.level == NO_LEVEL || wanted.level > MaximumRate(protocol.SupportedSpeeds).level) {
        TraceStep(TRACE_DEBUG, "speed not supported for this adapter");
        return RC_UNSUPPORTED_SPEED;
    }
    speed.code = wanted.code;
    VX_UINT32 present = 0;
    const ResultCode code = ReadSpeed(speed.entry, present);
    if (code != RC_SUCCESS || present == wanted.code) {
        return code;
    }
    return CallLibrary(CHANGE_SPEED, [&] {
        return VEXAPI_SetTargetLinkSpeed(&protocol.PortHandle, speed.entry.target->TargetNumber, wanted.code);
    });
}

ResultCode FCTargetIIDMACmdsProcessor::ResolveTarget(const TavuStringArray& args, TargetEntry& entry) {
    const ResultCode code = GetTargetFromTargetString(args, entry);
    return code == RC_SUCCESS && IsVirtualPort(*entry.protocol) ? RC_NOT_SUPPORTED_FOR_VPORT : code;
}

ResultCode FCTargetIIDMACmdsProcessor::ReadSpeed(const TargetEntry& entry, VX_UINT32& code) {
    return CallLibrary(READ_SPEED, [&] {
        return VEXAPI_GetTargetLinkSpeed(&entry.protocol->PortHandle, entry.target->TargetNumber, &code);
    });
}

void FCTargetIIDMACmdsProcessor::DisplayTargetIIDMA(MultipleCmdsProcessor* self, const LinkSpeed& speed,
                                                    eOutputFormat format) {
    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        AddTargetNames(block, *speed.entry.target);
        block.Line("Target Maximum Link Speed", RateOfCode(speed.code).word);
    });
}
