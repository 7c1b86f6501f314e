#include "PhysicalPortCmdsProcessor.h"

#include "CodeTable.h"
#include "HostTree.h"
#include "LibraryCall.h"
#include "PhysicalPortBBCRCmdsProcessor.h"
#include "PhysicalPortBeaconCmdsProcessor.h"
#include "PhysicalPortBootConfigCmdsProcessor.h"
#include "PhysicalPortBootConfigExtCmdsProcessor.h"
#include "PhysicalPortCTDiagCmdsProcessor.h"
#include "PhysicalPortDMICmdsProcessor.h"
#include "PhysicalPortDPortDiagCmdsProcessor.h"
#include "PhysicalPortFCEchoCmdsProcessor.h"
#include "PhysicalPortFCPingCmdsProcessor.h"
#include "PhysicalPortFCStatsCmdsProcessor.h"
#include "PhysicalPortFECCmdsProcessor.h"
#include "PhysicalPortFwDumpCmdsProcessor.h"
#include "PhysicalPortHBAParamsCmdsProcessor.h"
#include "PhysicalPortInfoCmdsProcessor.h"
#include "PhysicalPortLoopbackCmdsProcessor.h"
#include "PhysicalPortRDPCmdsProcessor.h"
#include "PhysicalPortRWBufferCmdsProcessor.h"
#include "PhysicalPortSCMChkCmdsProcessor.h"
#include "PhysicalPortSCMProfileCmdsProcessor.h"
#include "PhysicalPortSCMStatsCmdsProcessor.h"
#include "PhysicalPortVPDCmdsProcessor.h"

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

/// `updatenvramcli` has no usage text although it carries the usage function.
constexpr UsageText USAGES[] = {
    {3, "Usage: list\r\n"},
};

constexpr LibraryCall UPDATE_NVRAM = {"VEXAPI_UpdateAdapterNVRAMFromFile", "", "NVRAM update failed",
                                      RC_CFG_UPDATE_FAILED};

/// What stands ahead of the first "_" or "'" of an identifier.
TavuString PrefixOf(const char* identifier) {
    return {identifier, std::strcspn(identifier, "'_")};
}

} // namespace

constinit const Leaf PhysicalPortCmdsProcessor::LEAVES[] = {
    {"list", "Discover list of Orvane physical ports", 0, Xml<"CmdList", CmdListCommon>, nullptr},
    {"updatenvram", "Update NVRAM of Orvane physical port", 1, Xml<"CmdUpdateNvram", CmdUpdateNvramCommon>, nullptr},
    {"help", "list of available commands", 2, CmdHelp, Usage},
    {"listcli", "Discover list of Orvane physical ports", 3, Text<"CmdListCli", CmdListCommon>, Usage},
    {"updatenvramcli", "Update NVRAM of Orvane physical port", 4, Text<"CmdUpdateNvramCli", CmdUpdateNvramCommon>,
     Usage},
};

constinit const SubFamily PhysicalPortCmdsProcessor::SUB_FAMILIES[] = {
    {"info", "use this command to get Orvane Fibre Channel Port's info", CreateFamily<PhysicalPortInfoCmdsProcessor>},
    {"stats", "use this command to get Orvane Fibre Chanel Port Statistics",
     CreateFamily<PhysicalPortFCStatsCmdsProcessor>},
    {"dmi", "use this command to get Orvane Fibre Channel Port's SFP DMI info",
     CreateFamily<PhysicalPortDMICmdsProcessor>},
    {"vpd", "use this command to get Orvane Fibre Channel Port's VPD info", CreateFamily<PhysicalPortVPDCmdsProcessor>},
    {"hbaparams", "use this command to get/set Orvane Fibre Channel Port's HBA parameters",
     CreateFamily<PhysicalPortHBAParamsCmdsProcessor>},
    {"bbcr", "use this command to get/set Orvane Fibre Channel Port's BBCR info",
     CreateFamily<PhysicalPortBBCRCmdsProcessor>},
    {"fec", "use this command to get/set Orvane Fibre Channel Port's FEC info",
     CreateFamily<PhysicalPortFECCmdsProcessor>},
    {"bootconfig", "use this command to get/set Orvane Fibre Channel Port's Boot Config info",
     CreateFamily<PhysicalPortBootConfigCmdsProcessor>},
    {"bootconfigext", "use this command to get/set Orvane Fibre Channel Port's Boot Config info",
     CreateFamily<PhysicalPortBootConfigExtCmdsProcessor>},
    {"fwdump", "use this command to get Orvane Fibre Channel Port's Firmware Dump info",
     CreateFamily<PhysicalPortFwDumpCmdsProcessor>},
    {"beacon", "use this command to get/set Orvane Fibre Channel Port's Beacon info",
     CreateFamily<PhysicalPortBeaconCmdsProcessor>},
    {"scmstats",
     "use this command to get Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Statistics",
     CreateFamily<PhysicalPortSCMStatsCmdsProcessor>},
    {"scmchk", "use this command to check Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Status",
     CreateFamily<PhysicalPortSCMChkCmdsProcessor>},
    {"scmprofile",
     "use this command to check Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Profile",
     CreateFamily<PhysicalPortSCMProfileCmdsProcessor>},
    {"dportdiag", "use this command to get/set/run Diagnostic Port (DPort) on Orvane Fibre Channel Port",
     CreateFamily<PhysicalPortDPortDiagCmdsProcessor>},
    {"ctdiag", "use this command to run CT diagnostic through Orvane Fibre Channel Port",
     CreateFamily<PhysicalPortCTDiagCmdsProcessor>},
    {"fcping", "use this command to run FC Ping diagnostic through Orvane Fibre Channel Port",
     CreateFamily<PhysicalPortFCPingCmdsProcessor>},
    {"fcecho", "use this command to run FC Echo ELS diagnostic through Orvane Fibre Channel Port",
     CreateFamily<PhysicalPortFCEchoCmdsProcessor>},
    {"rdp", "use this command to get Read Diagnostic Parameters ELS info through Orvane Fibre Channel Port",
     CreateFamily<PhysicalPortRDPCmdsProcessor>},
    {"loopback", "use this command to run loopback diagnostic test through Orvane Fibre Channel Port",
     CreateFamily<PhysicalPortLoopbackCmdsProcessor>},
    {"rwbuffer", "use this command to run Read/Write Buffer Diagnostic test through Orvane Fibre Channel Port",
     CreateFamily<PhysicalPortRWBufferCmdsProcessor>},
};

constinit const FamilyDescription PhysicalPortCmdsProcessor::FAMILY = {
    .className = "PhysicalPortCmdsProcessor",
    .helpWord = "Port",
    .helpId = 2,
    .leaves = LEAVES,
    .usages = USAGES,
    .subOption = "-s",
    .subFamilies = SUB_FAMILIES,
};

VX_UINT32 PhysicalPortCmdsProcessor::CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                   eOutputFormat format) {
    return ListHost(self, args, format, [](Document& document, const VX_ADAPTER_LIST& host) {
        ForEachFcPort(host, [&](auto&, auto&, const _vexapi_protocol_t& protocol) {
            const PortIdentifier identifier(protocol.WWPN);
            document.Structure(OUT_STRUCT_NAME, [&] { document.Field(OUT_PORTS, identifier.text); });
            return true;
        });
    });
}

VX_UINT32 PhysicalPortCmdsProcessor::GetPhyPortFromPortString(const TavuStringArray& args, _vexapi_adapter_t** adapter,
                                                              _vexapi_phy_port_t** port,
                                                              _vexapi_protocol_t** protocol) {
    const TracedFunction traced(FAMILY.className, __func__);
    TraceStep(TRACE_INFORMATION, "Entered");
    const char* identifier = ArgText(args, 0);
    if (IsInvokingHelp(identifier)) {
        return RC_HELP_REQUESTED;
    }
    if (PrefixOf(identifier).CompareNoCase("FC") != 0) {
        TraceStep(TRACE_DEBUG, "Invalid Port identifier %s", identifier);
        return RC_INVALID_PARAMETER;
    }
    const VX_ADAPTER_LIST* host = VEXAPI_GetAdapterList();
    if (host == nullptr) {
        TraceStep(TRACE_DEBUG, "Adapter List is NULL");
        return RC_HOST_NOT_FOUND;
    }
    // The prefix passes in any letter case, yet only the exact text of a port finds it.
    VX_UINT8 wwpn[8];
    if (!ParsePortIdentifier(identifier, wwpn)) {
        return RC_INVALID_PARAMETER;
    }
    VX_UINT32 result = RC_INVALID_PARAMETER;
    ForEachFcPort(
        *host, [&](_vexapi_adapter_t& adapterEntry, _vexapi_phy_port_t& portEntry, _vexapi_protocol_t& protocolEntry) {
            if (std::memcmp(protocolEntry.WWPN, wwpn, sizeof wwpn) != 0) {
                return true;
            }
            *adapter = &adapterEntry;
            *port = &portEntry;
            *protocol = &protocolEntry;
            result = RC_SUCCESS;
            return false;
        });
    TraceStep(TRACE_INFORMATION, "Exiting");
    return result;
}

VX_UINT32 PhysicalPortCmdsProcessor::GetPhysicalPortFromPortString(const TavuStringArray& args, PortEntry& entry) {
    const VX_UINT32 code = GetPhyPortFromPortString(args, entry);
    if (code == RC_SUCCESS && IsVirtualPort(*entry.protocol)) {
        TraceStep(TRACE_DEBUG, "Command not supported for vport");
        return RC_NOT_SUPPORTED_FOR_VPORT;
    }
    return code;
}

VX_UINT32 PhysicalPortCmdsProcessor::CmdUpdateNvramCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                          eOutputFormat format) {
    bool rebootRequired = false;
    const VX_UINT32 code = UpdateNvram(args, rebootRequired);
    DisplayUpdateNvram(self, code, format, rebootRequired);
    return code;
}

/// The command but for its document. `rebootRequired` is only written on success.
VX_UINT32 PhysicalPortCmdsProcessor::UpdateNvram(const TavuStringArray& args, bool& rebootRequired) {
    PortEntry entry;
    if (const VX_UINT32 code = GetPhysicalPortFromPortString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    const char* path = ArgText(args, 1);
    if (!FileExists(path)) {
        TraceStep(TRACE_DEBUG, "NVRAM file [%s] does not exist", path);
        return RC_FILE_ERROR;
    }
    const VX_UINT32 code =
        CallLibrary(UPDATE_NVRAM, [&] { return VEXAPI_UpdateAdapterNVRAMFromFile(&entry.protocol->PortHandle, path); });
    if (code == RC_SUCCESS) {
        rebootRequired = IsRebootRequired();
    }
    return code;
}

void PhysicalPortCmdsProcessor::DisplayUpdateNvram(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format,
                                                   bool rebootRequired) {
    const TracedCall traced(FAMILY.className, __func__);
    Document document(*self, format);
    document.Flat(OUT_UPDATE_NVRAM, [&] {
        document.Field(OUT_REBOOT_REQUIRED, rebootRequired);
        document.Message(code, ResultTextOf(RESULT_TEXTS, code));
    });
}
