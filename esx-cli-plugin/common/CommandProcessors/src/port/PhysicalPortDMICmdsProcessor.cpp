#include "PhysicalPortDMICmdsProcessor.h"

#include "ChipFamilies.h"
#include "LibraryCall.h"
#include "Resolvers.h"
#include "TransceiverReport.h"

namespace {

constexpr char CLASS_NAME[] = "PhysicalPortDMICmdsProcessor";

constexpr ReportNames OUT_NAMES = {"DMIInformation", "Dmi Info", "DMIInfoList", "Dmi Data"};
constexpr char OUT_DMI_A0_DATA[] = "Dmi A0Data In Hex";
constexpr char OUT_DMI_A2_DATA[] = "Dmi A2Data In Hex";
constexpr char OUT_SFP_FW_UPDATE[] = "SFPFirmwareUpdate";

/// The only vendor whose transceivers can be updated.
constexpr char OUT_WTD[] = "WTD";

constexpr CodeText RESULT_TEXTS[] = {
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_INVALID_CMD, "Failed, Data not available"},
    {RC_CFG_READ_FAILED, "Failed, SFP DMI data read failed"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for adapter"},
};

constexpr CodeText UPDATE_TEXTS[] = {
    {RC_SUCCESS, OUT_SUCCESS},
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_INVALID_CMD, "Failed, Data not available"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FILE_OPEN_ERROR, "Failed, File open error"},
    {RC_CHECKSUM_ERROR, "Failed, Checksum error"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for adapter"},
    {RC_UNSUPPORTED_FW, "Failed, Feature not supported by driver"},
    {RC_SFP_VENDOR_UNSUPPORTED, "Failed, SFP FW update not supported for this SFP vendor"},
    {RC_SFP_VENDOR_MISMATCHED, "Failed, SFP Vendor mismatched"},
    {RC_SFP_FW_UPDATE_FAILED, "Failed, SFP FW update failed"},
};

constexpr LibraryCall READ_DATA = {"VEXAPI_GetSFPData", "", "Get SFP data failed", RC_CFG_READ_FAILED};

constexpr StatusResult UPDATE_STATUSES[] = {
    {101, RC_FILE_OPEN_ERROR},       {107, RC_CHECKSUM_ERROR},         {113, RC_FEATURE_NOT_SUPPORTED},
    {114, RC_ADAPTER_NOT_FOUND},     {118, RC_UNSUPPORTED_FW},         {144, RC_SFP_FW_UPDATE_FAILED},
    {145, RC_SFP_VENDOR_MISMATCHED}, {146, RC_SFP_VENDOR_UNSUPPORTED},
};

constexpr LibraryCall UPDATE_MODULE = {"VEXAPI_SfpModuleFirmwareUpdate", "", "SFP FW update failed", RC_LIBRARY_FAILED,
                                       UPDATE_STATUSES};

constexpr VX_UINT8 DRIVER_UPDATES_TRANSCEIVERS = 2; ///< in `DriverFeatureFlags`
constexpr VX_UINT32 UPDATE_OPTION = 2;
constexpr std::size_t UPDATE_WORDS = 3; ///< port, path, vendor

constexpr std::size_t REPORT_SIZE = 16384;
constexpr std::size_t PAGE_SIZE = 256;

/// An empty bay.
bool IsEmpty(const _VEXAPI_SFP_DATA& data) {
    return std::all_of(std::begin(data.Data), std::end(data.Data), [](VX_UINT8 byte) { return byte == 0; });
}

/// A page as hexadecimal bytes, each followed by a blank.
TavuString HexText(const VX_UINT8* page) {
    constexpr char DIGITS[] = "0123456789abcdef";
    TavuString text;
    text.reserve(PAGE_SIZE * 3);
    std::for_each(page, page + PAGE_SIZE, [&](VX_UINT8 byte) {
        text += DIGITS[byte >> 4];
        text += DIGITS[byte & 0x0F];
        text += ' ';
    });
    return text;
}

constexpr DocumentField GET_FIELDS[] = {{OUT_NAMES.data, FieldType::TEXT}};
constexpr DocumentField RAW_FIELDS[] = {{OUT_DMI_A0_DATA, FieldType::TEXT}, {OUT_DMI_A2_DATA, FieldType::TEXT}};
constexpr CodeText VENDORS[] = {{0, OUT_WTD}};
constexpr Argument UPDATE_ARGUMENTS[] = {
    PORT_ARGUMENT,
    {"file", nullptr, "file with the module's firmware", ArgumentKind::INPUT_FILE, true},
    {"vendor", nullptr, "vendor of the module", ArgumentKind::WORD, true, VENDORS},
};

} // namespace

// Required: `update` has the id of `get`, and `help` that of `getraw`.
constexpr Command PhysicalPortDMICmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "Get Orvane Physical Port SFP DMI information",
     .run = CmdGetCommon,
     .usage = "Usage: get [port identifier]\r\n",
     .arguments = ONLY_PORT,
     .document = ReportDocument(OUT_NAMES, GET_FIELDS),
     .reads = VEXAPI_EXT_PORT_DETAILS},
    {.names = Names<"getraw", "CmdGetRaw">(),
     .description = "Get Orvane Physical Port SFP DMI information as raw hex data",
     .run = CmdGetRawCommon,
     .usage = "Usage: getraw [port identifier]\r\n",
     .arguments = ONLY_PORT,
     .document = ReportDocument(OUT_NAMES, RAW_FIELDS),
     .reads = VEXAPI_EXT_PORT_DETAILS},
    {.names = Names<"update", "CmdUpdate">(),
     .description = "Update Orvane Physical Port SFP DMI Firmware",
     .run = CmdUpdateCommon,
     .usage = "Usage: update [port identifier]\r\n",
     .arguments = UPDATE_ARGUMENTS,
     .document = FlatDocument(OUT_SFP_FW_UPDATE),
     .changes = true,
     .id = 0},
};

constinit const FamilyDescription PhysicalPortDMICmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "port dmi",
    .leaves = LEAVES_OF<PhysicalPortDMICmdsProcessor, "List of available commands", 1>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_NAMES,
};

ResultCode PhysicalPortDMICmdsProcessor::Get(const TavuStringArray& args, _VEXAPI_SFP_DATA& data) {
    PortEntry entry;
    if (const ResultCode code = GetPhyPortFromPortString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    data = {};
    return CallLibrary(READ_DATA, [&] { return VEXAPI_GetSFPData(&entry.protocol->PortHandle, data.Data); });
}

ResultCode PhysicalPortDMICmdsProcessor::Update(const TavuStringArray& args) {
    PortEntry entry;
    if (const ResultCode code = GetPhyPortFromPortString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    if (args.size() < UPDATE_WORDS) {
        return RC_INVALID_PARAMETER;
    }
    const char* path = ArgText(args, 1);
    if (!FileExists(path)) {
        TraceStep(TRACE_DEBUG, "SFP Image file [%s] does not exist", path);
        return RC_FILE_ERROR;
    }
    if (CompareNoCase(ArgText(args, 2), OUT_WTD) != 0) {
        return RC_SFP_VENDOR_UNSUPPORTED;
    }
    if (!IsBirchAdapter(entry.protocol->ChipProperty)) {
        return RC_FEATURE_NOT_SUPPORTED;
    }
    if ((entry.protocol->DriverFeatureFlags & DRIVER_UPDATES_TRANSCEIVERS) == 0) {
        return RC_UNSUPPORTED_FW;
    }
    return CallLibrary(UPDATE_MODULE, [&] {
        return VEXAPI_SfpModuleFirmwareUpdate(&entry.protocol->PortHandle, path, UPDATE_OPTION);
    });
}

ResultCode PhysicalPortDMICmdsProcessor::CmdUpdateCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                         eOutputFormat format) {
    const ResultCode code = Update(args);
    DisplaySfpUpdate(self, code, format);
    return code;
}

/// Required: for an empty bay the document shows a failure, but the command's result is 0; parsers depend on it.
void PhysicalPortDMICmdsProcessor::DisplayDMIInfo(MultipleCmdsProcessor* self, const _VEXAPI_SFP_DATA& data,
                                                  eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    if (IsEmpty(data)) {
        DisplayError(self, RC_INVALID_CMD, format);
        return;
    }
    ReportBlock block(REPORT_SIZE, ReportBlock::SizeRule::FULL);
    if (block.IsAllocated()) {
        TransceiverReport report(block, ModuleImage(data));
        report.CalculateDMIData();
        report.PrintSFPDMI(true);
        report.PrintSFP();
    }
    // If the block can't be allocated, this is a success without data.
    Document(*self, format).BlockReport(OUT_NAMES, REBOOT_NOT_SHOWN, block);
}

/// An empty bay is handled in the same way.
void PhysicalPortDMICmdsProcessor::DisplayRawDMIInfo(MultipleCmdsProcessor* self, const _VEXAPI_SFP_DATA& data,
                                                     eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    if (IsEmpty(data)) {
        DisplayError(self, RC_INVALID_CMD, format);
        return;
    }
    Document document(*self, format);
    document.FieldReport(OUT_NAMES, REBOOT_NOT_SHOWN, [&] {
        document.Field(OUT_DMI_A0_DATA, HexText(data.Data));
        document.Field(OUT_DMI_A2_DATA, HexText(data.Data + PAGE_SIZE));
    });
}

void PhysicalPortDMICmdsProcessor::DisplaySfpUpdate(MultipleCmdsProcessor* self, ResultCode code,
                                                    eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Flat(OUT_SFP_FW_UPDATE, [&] { document.Message(code, ResultTextOf(UPDATE_TEXTS, code)); });
}
