#include "PhysicalPortInfoCmdsProcessor.h"

#include "ChipFamilies.h"
#include "FlashReport.h"
#include "LibraryCall.h"
#include "ReportTexts.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortInfoCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {{"PortInformation", "PortInfo", "PortInfoList"}, 4096, ReportBlock::SizeRule::FULL};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
};

/// Bits of `PciMaxLink` and `PciNegotiatedLink`.
constexpr unsigned LinkSpeedCode(VX_UINT16 link) {
    return link & 0xF;
}
constexpr unsigned LinkWidthCode(VX_UINT16 link) {
    return link >> 4 & 0x3F;
}

constexpr CodeText LINK_WIDTHS[] = {{1, "x1"}, {2, "x2"}, {4, "x4"}, {8, "x8"}, {16, "x16"}, {24, "x32"}};
constexpr CodeText LINK_SPEEDS[] = {
    {1, "2.5 Gtps"}, {2, "5 Gtps"}, {3, "8 Gtps"}, {4, "16 Gtps"}, {8, "32 Gtps"},
};
constexpr CodeText INTERFACE_TYPES[] = {{1, "Physical Port"}, {3, "NPIV Virtual Port"}};
constexpr CodeText PROTOCOL_TYPES[] = {{0, "FC"}, {1, "FCoE"}, {2, "NIC"}, {3, "ISCSI"}};
constexpr CodeText PORT_TYPES[] = {
    {1, "Node Port"},           {2, "Loop Port"},      {3, "Fabric Private Loop Port"},
    {4, "Node Or Loop Port"},   {5, "Fabric Port"},    {6, "Fabric Public Loop Port"},
    {7, "Loop Transport Port"}, {8, "Expansion Port"}, {9, "Bridge Port"},
};
constexpr CodeText CONNECTION_MODES[] = {{1, "Point to Point"}, {2, "Loop"}};
constexpr CodeText PORT_SPEEDS[] = {
    {1, "1 Gbps"},   {2, "2 Gbps"},   {4, "4 Gbps"},   {8, "8 Gbps"},
    {16, "10 Gbps"}, {22, "16 Gbps"}, {50, "32 Gbps"}, {100, "64 Gbps"},
};
/// Bits of `SupportedSpeeds`, of which the first set one counts: 10 Gbps precedes 8, and 1 and 2 Gbps are ignored.
constexpr CodeText MAXIMUM_SPEEDS[] = {
    {0x80, "64 Gbps"}, {0x40, "32 Gbps"}, {0x20, "16 Gbps"}, {0x04, "10 Gbps"}, {0x10, "8 Gbps"}, {0x08, "4 Gbps"},
};
/// The same bits in the order of the list of supported speeds, in which 10 follows 8.
constexpr CodeText SUPPORTED_SPEEDS[] = {
    {0x01, "1 "}, {0x02, "2 "}, {0x08, "4 "}, {0x10, "8 "}, {0x04, "10 "}, {0x20, "16 "}, {0x40, "32 "}, {0x80, "64 "},
};

const char* MaximumSpeed(VX_UINT8 speeds) {
    const auto* row = std::find_if(std::begin(MAXIMUM_SPEEDS), std::end(MAXIMUM_SPEEDS),
                                   [speeds](const CodeText& speed) { return (speeds & speed.code) != 0; });
    return row != std::end(MAXIMUM_SPEEDS) ? row->text : OUT_UNKNOWN;
}

/// "1 2 4 … Gbps"; an empty mask still gives the unit.
TavuString SupportedSpeeds(VX_UINT8 speeds) {
    TavuString text;
    for (const CodeText& speed : SUPPORTED_SPEEDS) {
        text += (speeds & speed.code) != 0 ? speed.text : "";
    }
    return text + "Gbps";
}

/// Required: a lockdown with status 0 reads "false" whatever its state; parsers depend on it.
const char* LockdownText(VX_UINT32 status) {
    static constexpr CodeText TEXTS[] = {
        {0, OUT_FALSE},
        {118, "Unsupported Driver"},
        {134, "Unsupported Firmware"},
    };
    return TextOf(TEXTS, status, OUT_UNKNOWN);
}

} // namespace

constexpr Command PhysicalPortInfoCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane Physical Port information",
     .run = CmdGetCommon,
     .usage = "Usage: get [port identifier]\r\n",
     .arguments = ONLY_PORT,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_ADAPTERS | VEXAPI_EXT_PORT_DETAILS},
};

constinit const FamilyDescription PhysicalPortInfoCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "port info",
    .leaves = LEAVES_OF<PhysicalPortInfoCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

ResultCode PhysicalPortInfoCmdsProcessor::Get(const TavuStringArray& args, PortInfo& info) {
    const ResultCode code = GetPhyPortFromPortString(args, info.entry);
    if (code != RC_SUCCESS) {
        return code;
    }
    return MakeLibraryCalls([&] {
        VX_PORT_HANDLE* const handle = &info.entry.protocol->PortHandle;
        TraceStatus("VEXAPI_GetAdapterAsicBoardTemperature",
                    VEXAPI_GetAdapterAsicBoardTemperature(handle, &info.temperature));
        TraceStatus("VEXAPI_GetLockdownStatus", VEXAPI_GetLockdownStatus(handle, &info.lockdown));
        TraceStatus("VEXAPI_GetFlashComponentVersion", VEXAPI_GetFlashComponentVersion(handle, &info.components));
    });
}

void PhysicalPortInfoCmdsProcessor::DisplayPortInfo(MultipleCmdsProcessor* self, const PortInfo& info,
                                                    eOutputFormat format) {
    const _vexapi_protocol_t& protocol = *info.entry.protocol;
    const __CHIPPROPERTY chip = protocol.ChipProperty;
    const bool isUefiCapable = IsUefiCapableAdapter(chip);

    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        block.Line("Model", OrNa(BoundedText(info.entry.adapter->Model)));
        block.LineF("Port Number", "%u", info.entry.port->PortNumber);
        block.LineF("PCI Bus Number", "0x%x", protocol.PciBusNumber);
        block.LineF("PCI Device Number", "0x%x", protocol.PciDeviceNumber);
        block.LineF("PCI Function Number", "0x%x", protocol.PciFunctionNumber);
        block.Line("PCI Bus Max Width", TextOf(LINK_WIDTHS, LinkWidthCode(chip.PciMaxLink), OUT_UNKNOWN));
        block.Line("PCI Bus Negotiated Width", TextOf(LINK_WIDTHS, LinkWidthCode(chip.PciNegotiatedLink), OUT_UNKNOWN));
        block.Line("PCI Bus Max Speed", TextOf(LINK_SPEEDS, LinkSpeedCode(chip.PciMaxLink), OUT_UNKNOWN));
        block.Line("PCI Bus Negotiated Speed", TextOf(LINK_SPEEDS, LinkSpeedCode(chip.PciNegotiatedLink), OUT_UNKNOWN));
        block.Line("Driver Version", BoundedText(protocol.DriverVersion));
        if (isUefiCapable) {
            block.Line("Host NQN", OrNa(BoundedText(protocol.HostNQN)));
            block.Line("Host ID", HostIdText(protocol.HostId));
        }
        block.Line("Node Name", WwnText(protocol.WWNN));
        block.Line("Port Name", WwnText(protocol.WWPN));
        block.Line("Principal Fabric WWN", WwnText(protocol.PrincipalFabricWWN));
        block.Line("Adjacent Fabric WWN", WwnText(protocol.AdjacentFabricWWN));
        block.Line("Maximum Speed", MaximumSpeed(protocol.SupportedSpeeds));
        block.Line("Supported Speeds", SupportedSpeeds(protocol.SupportedSpeeds));
        block.Line("Port Interface Type", TextOf(INTERFACE_TYPES, protocol.PortInterfaceType, OUT_UNKNOWN));
        block.Line("Protocol Type", TextOf(PROTOCOL_TYPES, protocol.ProtocolType, OUT_UNKNOWN));
        block.Line("Port Type", TextOf(PORT_TYPES, protocol.PortType, OUT_UNKNOWN));
        block.Line("Port State", TextOf(PORT_STATE_TEXTS, protocol.PortState, OUT_UNKNOWN));
        block.Line("Port Connection Mode", TextOf(CONNECTION_MODES, protocol.PortConnectionMode, OUT_UNKNOWN));
        block.Line("Port Speed", TextOf(PORT_SPEEDS, protocol.PortSpeed, OUT_UNKNOWN));
        block.Line("Port ID", PortIdText(protocol.PortId));
        if (isUefiCapable || IsRowanAdapter(chip)) {
            // Required: a negative temperature prints as the unsigned number with the same bits; parsers depend on
            // it.
            block.LineF("Temperature In Celsius", "%u", static_cast<unsigned>(int{info.temperature.Temperature}));
        }
        block.Line("Flash Firmware Version", ImageVersionText(protocol.FlashFwVersion));
        block.Line("Flash BIOS Version", OrNa(BoundedText(protocol.BiosVersion)));
        block.Line("Flash FCode Version", ImageVersionText(protocol.FlashFCodeVersion));
        block.Line("Flash EFI Version", ImageVersionText(protocol.FlashEfiVersion));
        // Required: the label of an absent PEP SoftROM differs from that of a present one; parsers match on it.
        AddFlashComponents(block, chip, info.components, "Flash MPI SoftROM Version");
        block.Line("Running Firmware Version", OrNa(BoundedText(protocol.RunningFwVersion)));
        if (isUefiCapable) {
            block.Line("Running MPI Firmware Version", VersionText(protocol.RunningMpiFwVersion));
            block.Line("Running PEP Firmware Version", VersionText(protocol.RunningPepFwVersion));
            block.Line("Config Lockdown", LockdownText(info.lockdown.ConfigStatus));
            block.Line("Firmware Update Lockdown", LockdownText(info.lockdown.FirmwareStatus));
            block.Line("MPI Lockdown", LockdownText(info.lockdown.MpiStatus));
        }
    });
}
