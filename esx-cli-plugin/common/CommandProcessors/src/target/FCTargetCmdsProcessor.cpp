#include "FCTargetCmdsProcessor.h"

#include "HostList.h"
#include "ReportTexts.h"
#include "TargetIdentifiers.h"

namespace {

constexpr char CLASS_NAME[] = "FCTargetCmdsProcessor";

constexpr char OUT_STRUCT_NAME[] = "TargetList";
constexpr char OUT_TARGETS[] = "Targets";

constexpr DocumentField LIST_FIELDS[] = {{OUT_TARGETS, FieldType::TEXT}};

} // namespace

constexpr Command FCTargetCmdsProcessor::COMMANDS[] = {
    {.names = Names<"list", "CmdList">(),
     .description = "Discover list of Orvane FC Targets",
     .run = CmdListCommon,
     .usage = "Usage: list\r\n",
     .arguments = {},
     .document = ListDocument(OUT_STRUCT_NAME, LIST_FIELDS),
     .reads = VEXAPI_EXT_TARGETS},
};

constinit const FamilyDescription FCTargetCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "FC Target",
    .leaves = LEAVES_OF<FCTargetCmdsProcessor>,
};

ResultCode FCTargetCmdsProcessor::CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
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
