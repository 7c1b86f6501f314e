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

constexpr CodeText ADAPTER_TYPES[] = {
    {1, "Ethernet Adapter"}, {2, "Fibre Channel Adapter"},
    {3, "iSCSI Adapter"},    {4, "Aspen CNA"},
    {5, "Ethernet CNA"},     {6, "FCoE CNA"},
    {7, "iSCSI CNA"},        {8, "RDMA CNA"},
};

} // namespace

constexpr Command AdapterInfoCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane Adapter information",
     .run = CmdGetCommon,
     .usage = "Usage: get [adapter identifier]\r\n",
     .arguments = ONLY_ADAPTER,
     .document = ReportDocument(OUT_SHAPE.names),
     .reads = VEXAPI_EXT_ADAPTERS},
};

constinit const FamilyDescription AdapterInfoCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "Adapter info",
    .leaves = LEAVES_OF<AdapterInfoCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_SHAPE.names,
};

ResultCode AdapterInfoCmdsProcessor::Get(const TavuStringArray& args, AdapterInfo& info) {
    const ResultCode code = GetFcPortFromAdapterString(args, info.entry);
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
        // The PEP SoftROM has the same label whether present or absent, unlike in the port's report.
        AddFlashComponents(block, chip, info.components, "Flash PEP SoftROM Version");
        if (HasFlashMemoBlock(chip) && BoundedText(info.memo.Signature) == FLASH_MEMO_SIGNATURE &&
            !IsZero(info.memo.FamilyFw)) {
            block.Line("Family Firmware Version", VersionText(info.memo.FamilyFw));
        }
    });
}
