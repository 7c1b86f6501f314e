#include "PhysicalPortSCMChkCmdsProcessor.h"

#include "CongestionAccess.h"
#include "CongestionReport.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortSCMChkCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"PortFWCMInformation", "Port FWCM Status", "PortFWCMStatusList"}, 4096, ReportBlock::SizeRule::SPACE_LEFT};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_CFG_READ_FAILED, "Failed, FWCM settings read error"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_NOT_SUPPORTED_BY_SWITCH, "Failed, Feature not supported by switch"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
    {RC_LINK_UP_REQUIRED, "Failed, Feature requires link up"},
    {RC_UNSUPPORTED_FW, "Failed, Driver/Firmware does not support this feature"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, feature not supported for virtual port"},
    {RC_FEATURE_DISABLED, "Failed, Feature disabled on the port"},
};

/// Text of `ScmFabricFlags`; the first that applies counts. Without a completed registration no other flag does.
const char* FabricConnection(VX_UINT8 flags) {
    constexpr VX_UINT8 IS_REGISTERED = 0x01;
    constexpr VX_UINT8 IS_BROCADE = 0x02;
    constexpr VX_UINT8 IS_CISCO = 0x04;
    if ((flags & IS_REGISTERED) == 0) {
        return "RDF Reject";
    }
    if ((flags & IS_BROCADE) != 0) {
        return "RDF Completed (Brocade)";
    }
    return (flags & IS_CISCO) != 0 ? "RDF Completed (Cisco)" : "RDF Completed";
}

} // namespace

constexpr Command PhysicalPortSCMChkCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane Physical Port SAN Congetstion information",
     .run = CmdGetCommon,
     .usage = "Usage: get [port identifier]\r\n",
     .arguments = ONLY_PORT,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_PORT_DETAILS,
     .twinDescription = "get Orvane Physical Port SCM information"},
};

constinit const FamilyDescription PhysicalPortSCMChkCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "port scmchk",
    .leaves = LEAVES_OF<PhysicalPortSCMChkCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

ResultCode PhysicalPortSCMChkCmdsProcessor::Get(const TavuStringArray& args, PortEntry& entry) {
    return AdmitCongestion(ADMIT_SECOND_GENERATION, "phy port", GetPhyPortFromPortString, args, entry);
}

void PhysicalPortSCMChkCmdsProcessor::DisplayPortSCMChk(MultipleCmdsProcessor* self, const PortEntry& entry,
                                                        eOutputFormat format) {
    const _vexapi_protocol_t& protocol = *entry.protocol;
    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        AddPortNames(block, protocol);
        AddCongestionState(block, protocol.ScmCongState);
        AddSeverity(block, protocol.ScmCongSeverity);
        AddLinkIntegrityEvents(block, protocol.ScmLinkIntegrityEvents);
        AddDeliveryEvents(block, protocol.ScmDeliveryEvents);
        AddSecondsSinceLastEvent(block, protocol.ScmSecondsSinceLastEvent);
        block.Line("Fabric Connection Flags", FabricConnection(protocol.ScmFabricFlags));
        AddVirtualLane(block, PORT_LANE_RULE, protocol, protocol.ScmVirtualLaneState);
        AddThrottling(block, PORT_THROTTLE_RULE, protocol, protocol.ScmThrottleState);
    });
}
