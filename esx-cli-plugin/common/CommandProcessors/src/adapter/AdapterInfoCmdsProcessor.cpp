#include "AdapterInfoCmdsProcessor.h"

#include "ChipFamilies.h"
#include "FlashReport.h"
#include "LibraryCall.h"
#include "ReportTexts.h"

namespace {

constexpr char CLASS_NAME[] = "AdapterInfoCmdsProcessor";

constexpr BlockShape OUT_SHAPE = {
    {"AdapterInformation", "General Parameters", "GeneralParametersList"}, 4096, ReportBlock::SizeRule::FULL};

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
};

constexpr UsageText USAGES[] = {{2, "Usage: get [adapter identifier]\r\n"}};

constexpr CodeText ADAPTER_TYPES[] = {
    {1, "Ethernet Adapter"}, {2, "Fibre Channel Adapter"},
    {3, "iSCSI Adapter"},    {4, "Aspen CNA"},
    {5, "Ethernet CNA"},     {6, "FCoE CNA"},
    {7, "iSCSI CNA"},        {8, "RDMA CNA"},
};

} // namespace

constinit const Leaf AdapterInfoCmdsProcessor::LEAVES[] = {
    {"get", "get Orvane Adapter information", 0, Xml<"CmdGet", CmdGetCommon>, nullptr},
    {"help", "list of available commands", 1, CmdHelp, Usage},
    {"getcli", "get Orvane Adapter information", 2, Text<"CmdGetCli", CmdGetCommon>, Usage},
};

constinit const FamilyDescription AdapterInfoCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "Adapter info",
    .helpId = 1,
    .leaves = LEAVES,
    .usages = USAGES,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

VX_UINT32 AdapterInfoCmdsProcessor::Get(const TavuStringArray& args, AdapterInfo& info) {
    const VX_UINT32 code = AdapterCmdsProcessor::GetFcPortFromAdapterString(args, info.entry);
    if (code != RC_SUCCESS) {
        return code;
    }
    return MakeLibraryCalls([&] {
        VX_PORT_HANDLE* const handle = &info.entry.fc->PortHandle;
        TraceStatus("VEXAPI_GetFlashComponentVersion", VEXAPI_GetFlashComponentVersion(handle, &info.components));
        if (HasFlashMemoBlock(info.entry.fc->ChipProperty)) {
            TraceStatus("VEXAPI_GetAdapterFlashMemoBlock", VEXAPI_GetAdapterFlashMemoBlock(handle, &info.memo));
        }
    });
}

void AdapterInfoCmdsProcessor::DisplayAdapterInfo(MultipleCmdsProcessor* self, const AdapterInfo& info,
                                                  eOutputFormat format) {
    const _vexapi_adapter_t& adapter = *info.entry.adapter;
    const __CHIPPROPERTY chip = info.entry.fc->ChipProperty;

    DisplayBlock(self, format, __func__, OUT_SHAPE, [&](ReportBlock& block) {
        block.Line("Manufacturer", BoundedText(adapter.Manufacturer));
        block.Line("Model", OrNa(BoundedText(adapter.Model)));
        block.Line("Serial Number", OrNa(BoundedText(adapter.SerialNumber)));
        block.LineF("Vendor ID", "0x%x", adapter.VendorId);
        block.LineF("Device ID", "0x%x", chip.DeviceId);
        block.LineF("Subsystem Device ID", "0x%x", adapter.SubDeviceId);
        block.LineF("Subsystem Vendor ID", "0x%x", adapter.SubVendorId);
        block.LineF("PCI Bus ID", "0x%x", adapter.PciBusNumber);
        block.LineF("Chip Revision", "%u", adapter.ChipRevision);
        block.Line("Type", TextOf(ADAPTER_TYPES, adapter.AdapterType, OUT_UNKNOWN));
        block.Line("Multiboot Version", OrNa(BoundedText(adapter.MultibootVersion)));
        block.Line("Flash Firmware Version", OrNa(BoundedText(adapter.FlashFwVersion)));
        block.Line("Flash BIOS Version", OrNa(BoundedText(adapter.BiosVersion)));
        block.Line("Flash FCode Version", OrNa(BoundedText(adapter.FCodeVersion)));
        block.Line("Flash EFI Version", OrNa(BoundedText(adapter.EfiVersion)));
        // One label for the PEP SoftROM in both cases, unlike in the port's report.
        AddFlashComponents(block, chip, info.components, "Flash PEP SoftROM Version");
        if (HasFlashMemoBlock(chip) && BoundedText(info.memo.Signature) == FLASH_MEMO_SIGNATURE &&
            !IsZero(info.memo.FamilyFw)) {
            block.Line("Family Firmware Version", VersionText(info.memo.FamilyFw));
        }
    });
}
