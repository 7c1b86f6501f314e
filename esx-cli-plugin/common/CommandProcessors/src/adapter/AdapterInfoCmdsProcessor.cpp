#include "AdapterInfoCmdsProcessor.h"

#include "ChipFamilies.h"
#include "LibraryCall.h"
#include "ReportTexts.h"

namespace {

constexpr char CLASS_NAME[] = "AdapterInfoCmdsProcessor";

constexpr ReportNames OUT_NAMES = {"AdapterInformation", "General Parameters", "GeneralParametersList"};
constexpr std::size_t REPORT_SIZE = 4096;

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

/// The chips whose flash has a memo block.
bool HasMemoBlock(__CHIPPROPERTY chip) {
    return IsRowanFCAdapter(chip) || IsUefiCapableAdapter(chip);
}

} // namespace

const Leaf AdapterInfoCmdsProcessor::LEAVES[] = {
    {"get", "get Orvane Adapter information", 0, Xml<"CmdGet", CmdGetCommon>, nullptr},
    {"help", "list of available commands", 1, CmdHelp, Usage},
    {"getcli", "get Orvane Adapter information", 2, Text<"CmdGetCli", CmdGetCommon>, Usage},
};

const FamilyDescription AdapterInfoCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "Adapter info",
    .helpId = 1,
    .leaves = LEAVES,
    .usages = USAGES,
};

VX_UINT32 AdapterInfoCmdsProcessor::CmdGetCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                 eOutputFormat format) {
    TraceEntered(__func__);
    AdapterEntry entry;
    VX_UINT32 code = AdapterCmdsProcessor::GetFcPortFromAdapterString(args, entry);
    FlashRecords flash;
    if (code == RC_SUCCESS) {
        code = MakeLibraryCalls(CLASS_NAME, __func__, [&] {
            VX_PORT_HANDLE* const handle = &entry.fc->PortHandle;
            TraceStatus("VEXAPI_GetFlashComponentVersion", VEXAPI_GetFlashComponentVersion(handle, &flash.components));
            if (HasMemoBlock(entry.fc->ChipProperty)) {
                TraceStatus("VEXAPI_GetAdapterFlashMemoBlock", VEXAPI_GetAdapterFlashMemoBlock(handle, &flash.memo));
            }
        });
    }
    if (code != RC_SUCCESS) {
        DisplayError(self, code, format);
        return code;
    }
    DisplayAdapterInfo(self, entry, flash, format);
    TraceExiting(__func__);
    return RC_SUCCESS;
}

void AdapterInfoCmdsProcessor::DisplayAdapterInfo(MultipleCmdsProcessor* self, const AdapterEntry& entry,
                                                  const FlashRecords& flash, eOutputFormat format) {
    ReportBlock block(REPORT_SIZE, ReportBlock::SizeRule::FULL, CLASS_NAME, __func__);
    if (!block.IsAllocated()) {
        DisplayError(self, RC_NO_MEMORY, format);
        return;
    }
    const _vexapi_adapter_t& adapter = *entry.adapter;
    const __CHIPPROPERTY chip = entry.fc->ChipProperty;
    const _VEXAPI_FlashComponentVersion& components = flash.components;

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
    block.Line("Flash Preload Firmware Area Version", ImageVersionText(components.PreloadFwArea));
    block.Line("Flash FC Board Config Version", ImageVersionText(components.FcBoardConfig));
    if (IsUefiCapableAdapter(chip)) {
        block.Line("Flash MPI Firmware Version", ImageVersionText(components.MpiFirmware));
        block.Line("Flash PEP Firmware Version", ImageVersionText(components.PepFirmware));
        block.Line("Flash PEP Board Config Version", ImageVersionText(components.PepBoardConfig));
        // One label in both cases, unlike in the port's report.
        block.Line("Flash PEP SoftROM Version", ImageVersionText(components.PepSoftRom));
    }
    if (IsBirchAdapter(chip)) {
        block.Line("Flash MPI SoftROM Version", ImageVersionText(components.MpiSoftRom));
        block.Line("Flash PCIE Serdes Version", ImageVersionText(components.PcieSerdes));
    }
    if (HasMemoBlock(chip) && BoundedText(flash.memo.Signature) == "FMBS" && !IsZero(flash.memo.FamilyFw)) {
        block.Line("Family Firmware Version", VersionText(flash.memo.FamilyFw));
    }
    Document(*self, format, CLASS_NAME, __func__).BlockReport(OUT_NAMES, REBOOT_NOT_SHOWN, block);
}

void AdapterInfoCmdsProcessor::DisplayError(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format) {
    Document(*self, format, CLASS_NAME, __func__)
        .ReportError(OUT_NAMES, REBOOT_NOT_SHOWN, ResultTextOf(RESULT_TEXTS, code));
}
