#include "FCTargetSCMChkCmdsProcessor.h"

#include "CongestionAccess.h"
#include "CongestionReport.h"

namespace {

constexpr char CLASS_NAME[] = "FCTargetSCMChkCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"TargetFWCMInformation", "Target FWCM Status", "TargetFWCMStatusList"}, 4096, ReportBlock::SizeRule::SPACE_LEFT};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, FWCM settings read error"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_NOT_SUPPORTED_BY_SWITCH, "Failed, Feature not supported by switch"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
    {RC_UNSUPPORTED_FW, "Failed, Driver/Firmware does not support this feature"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, feature not supported for virtual port"},
    {RC_FEATURE_DISABLED, "Failed, Feature disabled on the port"},
};

} // namespace

constexpr Command FCTargetSCMChkCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane FC Target information",
     .run = CmdGetCommon,
     .usage = "Usage: get [port identifier]\r\n",
     .arguments = ONLY_TARGET,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_PORT_DETAILS | VEXAPI_EXT_TARGETS | VEXAPI_EXT_TARGET_DETAILS},
};

constinit const FamilyDescription FCTargetSCMChkCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FC Target scmchk",
    .leaves = LEAVES_OF<FCTargetSCMChkCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

ResultCode FCTargetSCMChkCmdsProcessor::Get(const TavuStringArray& args, TargetEntry& entry) {
    return AdmitCongestion(ADMIT_SECOND_GENERATION, "target", GetTargetFromTargetString, args, entry);
}

void FCTargetSCMChkCmdsProcessor::DisplayTargetSCMChk(MultipleCmdsProcessor* self, const TargetEntry& entry,
                                                      eOutputFormat format) {
    const _tagVEXAPI_SDMTarget& target = *entry.target;
    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        AddTargetNames(block, target);
        AddCongestionState(block, target.ScmCongState);
        AddLinkIntegrityEvents(block, target.ScmLinkIntegrityEvents);
        AddSecondsSinceLastEvent(block, target.ScmSecondsSinceLastEvent);
        AddVirtualLane(block, TARGET_LANE_RULE, *entry.protocol, target.ScmVirtualLane);
        AddThrottling(block, TARGET_THROTTLE_RULE, *entry.protocol, target.ScmThrottleState);
    });
}
