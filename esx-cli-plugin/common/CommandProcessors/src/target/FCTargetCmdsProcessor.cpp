#include "FCTargetCmdsProcessor.h"

#include "FCTargetIIDMACmdsProcessor.h"
#include "FCTargetInfoCmdsProcessor.h"
#include "FCTargetSCMChkCmdsProcessor.h"
#include "FCTargetSCMStatsCmdsProcessor.h"
#include "FCTargetStatsCmdsProcessor.h"
#include "ReportTexts.h"
#include "TargetIdentifiers.h"

namespace {

constexpr char CLASS_NAME[] = "FCTargetCmdsProcessor";

constexpr char OUT_STRUCT_NAME[] = "TargetList";
constexpr char OUT_TARGETS[] = "Targets";

constexpr UsageText USAGES[] = {{2, "Usage: list\r\n"}};

} // namespace

void AddTargetNames(ReportBlock& block, const _tagVEXAPI_SDMTarget& target) {
    block.Line("Node Name", WwnText(target.NodeName));
    block.Line("Port Name", WwnText(target.PortName));
    block.Line("Port Id", PortIdText(target.PortId));
    block.LineF("Target Number", "%u", target.TargetNumber);
}

constinit const Leaf FCTargetCmdsProcessor::LEAVES[] = {
    {"list", "Discover list of Orvane FC Targets", 0, Xml<"CmdList", CmdListCommon>, nullptr},
    {"help", "list of available commands", 1, CmdHelp, Usage},
    {"listcli", "Discover list of Orvane FC Targets", 2, Text<"CmdListCli", CmdListCommon>, Usage},
};

constinit const SubFamily FCTargetCmdsProcessor::SUB_FAMILIES[] = {
    {"info", "use this command to get Orvane FC Target info", CreateFamily<FCTargetInfoCmdsProcessor>},
    {"scmstats", "use this command to get Orvane FC Target SCM Statistics",
     CreateFamily<FCTargetSCMStatsCmdsProcessor>},
    {"scmchk", "use this command to get Orvane FC Target SCM Status", CreateFamily<FCTargetSCMChkCmdsProcessor>},
    {"iidma", "use this command to get/set Orvane FC Target's Maximum Link Speed",
     CreateFamily<FCTargetIIDMACmdsProcessor>},
    {"stats", "use this command to get Orvane FC Target Link Statistics", CreateFamily<FCTargetStatsCmdsProcessor>},
};

constinit const FamilyDescription FCTargetCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FC Target",
    .helpId = 1,
    .leaves = LEAVES,
    .usages = USAGES,
    .subOption = "-v",
    .subFamilies = SUB_FAMILIES,
};

VX_UINT32 FCTargetCmdsProcessor::CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                               eOutputFormat format) {
    return ListHost(self, args, format, [](Document& document, const VX_ADAPTER_LIST& host) {
        ForEachFcPort(host, [&](auto&, auto&, const _vexapi_protocol_t& protocol) {
            TraceStep(TRACE_INFORMATION, "Got Tgt Count=%d", static_cast<int>(protocol.TargetCount));
            return ForEachEntry(protocol.pTargetList, [&](const _tagVEXAPI_SDMTarget& target) {
                const TargetIdentifier identifier(protocol, target);
                TraceStep(TRACE_INFORMATION, "Got Tgt=%s", identifier.text);
                document.Structure(OUT_STRUCT_NAME, [&] { document.Field(OUT_TARGETS, identifier.text); });
                return true;
            });
        });
    });
}

VX_UINT32 FCTargetCmdsProcessor::GetTargetFromTargetString(const TavuStringArray& args, _vexapi_protocol_t** protocol,
                                                           _tagVEXAPI_SDMTarget** target) {
    const TracedFunction traced(CLASS_NAME, __func__);
    TraceStep(TRACE_INFORMATION, "Entered");
    const VX_ADAPTER_LIST* host = nullptr;
    if (const VX_UINT32 code = AdmitIdentifier(IdentifierKind::TARGET, args, host); code != RC_SUCCESS) {
        return code;
    }
    const char* identifier = ArgText(args, 0);
    TargetName name;
    if (!ParseTargetIdentifier(identifier, name)) {
        return RC_INVALID_PARAMETER;
    }
    VX_UINT32 result = RC_INVALID_PARAMETER;
    ForEachFcPort(*host, [&](auto&, auto&, _vexapi_protocol_t& protocolEntry) {
        if (!IsSameWwn(protocolEntry.WWPN, name.portWwpn)) {
            return true;
        }
        return ForEachEntry(protocolEntry.pTargetList, [&](_tagVEXAPI_SDMTarget& targetEntry) {
            if (!IsSameWwn(targetEntry.PortName, name.targetWwpn)) {
                return true;
            }
            TraceStep(TRACE_INFORMATION, "Got matching Tgt=%s", identifier);
            TraceStep(TRACE_INFORMATION, "Picked pTargetEntry %p", static_cast<void*>(&targetEntry));
            *protocol = &protocolEntry;
            *target = &targetEntry;
            result = RC_SUCCESS;
            return false;
        });
    });
    TraceStep(TRACE_INFORMATION, "Exiting");
    return result;
}
