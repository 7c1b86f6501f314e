#include "PhysicalPortCmdsProcessor.h"

#include "CodeTable.h"
#include "HostList.h"
#include "HostTree.h"
#include "LibraryCall.h"
#include "Resolvers.h"

#include <cstring>

namespace {

constexpr char OUT_STRUCT_NAME[] = "PortList";
constexpr char OUT_PORTS[] = "Ports";
constexpr char OUT_UPDATE_NVRAM[] = "UpdateNVRAM";

constexpr CodeText RESULT_TEXTS[] = {
    {RC_SUCCESS, OUT_SUCCESS},
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_CFG_UPDATE_FAILED, "Failed, NVRAM update failed"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, feature not supported"},
    {RC_NOT_SUPPORTED_FOR_VPORT, "Failed, feature not supported for virtual port"},
};

constexpr LibraryCall UPDATE_NVRAM = {"VEXAPI_UpdateAdapterNVRAMFromFile", "", "NVRAM update failed",
                                      RC_CFG_UPDATE_FAILED};

constexpr DocumentField LIST_FIELDS[] = {{OUT_PORTS, FieldType::TEXT}};
constexpr Argument UPDATE_ARGUMENTS[] = {
    PORT_ARGUMENT,
    {"file", nullptr, "file with the NVRAM image", ArgumentKind::INPUT_FILE, true},
};

} // namespace

constexpr Command PhysicalPortCmdsProcessor::COMMANDS[] = {
    {.names = Names<"list", "CmdList">(),
     .description = "Discover list of Orvane physical ports",
     .run = CmdListCommon,
     .usage = "Usage: list\r\n",
     .arguments = {},
     .document = ListDocument(OUT_STRUCT_NAME, LIST_FIELDS),
     .reads = VEXAPI_EXT_PORTS},
    {.names = Names<"updatenvram", "CmdUpdateNvram">(),
     .description = "Update NVRAM of Orvane physical port",
     .run = CmdUpdateNvramCommon,
     .usage = nullptr,
     .arguments = UPDATE_ARGUMENTS,
     .document = FlatDocument(OUT_UPDATE_NVRAM, MESSAGE_AND_REBOOT),
     .changes = true},
};

constinit const FamilyDescription PhysicalPortCmdsProcessor::FAMILY = {
    .className = "PhysicalPortCmdsProcessor",
    .helpWord = "Port",
    .leaves = LEAVES_OF<PhysicalPortCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
};

ResultCode PhysicalPortCmdsProcessor::CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                    eOutputFormat format) {
    return ListHost(self, args, format, [](Document& document, const VX_ADAPTER_LIST& host) {
        ForEachFcPort(host, [&](auto&, auto&, const _vexapi_protocol_t& protocol) {
            const PortIdentifier identifier(protocol.WWPN);
            document.Structure(OUT_STRUCT_NAME, [&] { document.Field(OUT_PORTS, identifier.text); });
            return true;
        });
    });
}

ResultCode PhysicalPortCmdsProcessor::CmdUpdateNvramCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                           eOutputFormat format) {
    bool rebootRequired = false;
    const ResultCode code = UpdateNvram(args, rebootRequired);
    DisplayUpdateNvram(self, code, format, rebootRequired);
    return code;
}

/// The command without its document. `rebootRequired` is only written on success.
ResultCode PhysicalPortCmdsProcessor::UpdateNvram(const TavuStringArray& args, bool& rebootRequired) {
    PortEntry entry;
    if (const ResultCode code = GetPhysicalPortFromPortString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    const char* path = ArgText(args, 1);
    if (!FileExists(path)) {
        TraceStep(TRACE_DEBUG, "NVRAM file [%s] does not exist", path);
        return RC_FILE_ERROR;
    }
    const ResultCode code =
        CallLibrary(UPDATE_NVRAM, [&] { return VEXAPI_UpdateAdapterNVRAMFromFile(&entry.protocol->PortHandle, path); });
    if (code == RC_SUCCESS) {
        rebootRequired = IsRebootRequired();
    }
    return code;
}

void PhysicalPortCmdsProcessor::DisplayUpdateNvram(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format,
                                                   bool rebootRequired) {
    const TracedCall traced(FAMILY.className, __func__);
    Document document(*self, format);
    document.Flat(OUT_UPDATE_NVRAM, [&] {
        document.Field(OUT_REBOOT_REQUIRED, rebootRequired);
        document.Message(code, ResultText(code));
    });
}
