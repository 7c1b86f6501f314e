#include "FCLunCmdsProcessor.h"

#include "HostList.h"
#include "TargetIdentifiers.h"

namespace {

constexpr char CLASS_NAME[] = "FCLunCmdsProcessor";

constexpr char OUT_STRUCT_NAME[] = "LunList";
constexpr char OUT_LUNS[] = "LUNs/Namespaces";

constexpr DocumentField LIST_FIELDS[] = {{OUT_LUNS, FieldType::TEXT}};

} // namespace

constexpr Command FCLunCmdsProcessor::COMMANDS[] = {
    {.names = Names<"list", "CmdList">(),
     .description = "Discover list of Orvane FC LUNs",
     .run = CmdListCommon,
     .usage = "Usage: list\r\n",
     .arguments = {},
     .document = ListDocument(OUT_STRUCT_NAME, LIST_FIELDS),
     .reads = VEXAPI_EXT_TARGETS | VEXAPI_EXT_LUNS},
};

constinit const FamilyDescription FCLunCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FC Target", // Required: the heading is that of `target`; parsers depend on it
    .leaves = LEAVES_OF<FCLunCmdsProcessor>,
};

ResultCode FCLunCmdsProcessor::CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args, eOutputFormat format) {
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
