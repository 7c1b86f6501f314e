#include "FCLunCmdsProcessor.h"

#include "FCLunInfoCmdsProcessor.h"
#include "TargetIdentifiers.h"

namespace {

constexpr char CLASS_NAME[] = "FCLunCmdsProcessor";

constexpr char OUT_STRUCT_NAME[] = "LunList";
constexpr char OUT_LUNS[] = "LUNs/Namespaces";

constexpr UsageText USAGES[] = {{2, "Usage: list\r\n"}};

} // namespace

constinit const Leaf FCLunCmdsProcessor::LEAVES[] = {
    {"list", "Discover list of Orvane FC LUNs", 0, Xml<"CmdList", CmdListCommon>, nullptr},
    {"help", "list of available commands", 1, CmdHelp, Usage},
    {"listcli", "Discover list of Orvane FC LUNs", 2, Text<"CmdListCli", CmdListCommon>, Usage},
};

constinit const SubFamily FCLunCmdsProcessor::SUB_FAMILIES[] = {
    {"info", "use this command to get Orvane FC LUN info", CreateFamily<FCLunInfoCmdsProcessor>},
};

constinit const FamilyDescription FCLunCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FC Target", // the heading is that of `target`: clients know it so
    .helpId = 1,
    .leaves = LEAVES,
    .usages = USAGES,
    .subOption = "-v",
    .subFamilies = SUB_FAMILIES,
};

VX_UINT32 FCLunCmdsProcessor::CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format) {
    return ListHost(self, args, format, [](Document& document, const VX_ADAPTER_LIST& host) {
        ForEachFcPort(host, [&](auto&, auto&, const _vexapi_protocol_t& protocol) {
            TraceStep(TRACE_INFORMATION, "Got Tgt Count=%d", static_cast<int>(protocol.TargetCount));
            return ForEachEntry(protocol.pTargetList, [&](const _tagVEXAPI_SDMTarget& target) {
                if (TavuDebug::IsEnabled(TRACE_INFORMATION)) {
                    TraceStep(TRACE_INFORMATION, "Got Tgt=%s", TargetIdentifier(protocol, target).text);
                }
                LunIdentifier identifier(protocol, target);
                return ForEachEntry(target.pLunList, [&](const _tagVEXAPI_SDMLun& lun) {
                    document.Structure(OUT_STRUCT_NAME,
                                       [&] { document.Field(OUT_LUNS, identifier.WithNumber(lun.LunNumber)); });
                    return true;
                });
            });
        });
    });
}

VX_UINT32 FCLunCmdsProcessor::GetLunFromLunString(const TavuStringArray& args, _tagVEXAPI_SDMLun** lun) {
    const TracedFunction traced(CLASS_NAME, __func__);
    TraceStep(TRACE_INFORMATION, "Entered");
    const VX_ADAPTER_LIST* host = nullptr;
    if (const VX_UINT32 code = AdmitIdentifier(IdentifierKind::LUN, args, host); code != RC_SUCCESS) {
        return code;
    }
    LunName name;
    if (!ParseLunIdentifier(ArgText(args, 0), name)) {
        return RC_INVALID_PARAMETER;
    }
    VX_UINT32 result = RC_INVALID_PARAMETER;
    ForEachFcPort(*host, [&](auto&, auto&, const _vexapi_protocol_t& protocol) {
        if (!IsSameWwn(protocol.WWPN, name.target.portWwpn)) {
            return true;
        }
        return ForEachEntry(protocol.pTargetList, [&](const _tagVEXAPI_SDMTarget& target) {
            if (IsNvmeTarget(target) != name.isNamespace || !IsSameWwn(target.PortName, name.target.targetWwpn)) {
                return true;
            }
            return ForEachEntry(target.pLunList, [&](_tagVEXAPI_SDMLun& lunEntry) {
                if (lunEntry.LunNumber != name.number) {
                    return true;
                }
                *lun = &lunEntry;
                result = RC_SUCCESS;
                return false;
            });
        });
    });
    TraceStep(TRACE_INFORMATION, "Exiting");
    return result;
}
