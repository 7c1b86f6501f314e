#include "PhysicalPortVPDCmdsProcessor.h"

#include "HostTree.h"
#include "LibraryCall.h"
#include "Resolvers.h"
#include "VitalProductData.h"

namespace {

using decoders::Bytes;
namespace vpd = decoders::vpd;

constexpr char CLASS_NAME[] = "PhysicalPortVPDCmdsProcessor";

constexpr ReportNames OUT_NAMES = {"VPDInformation", "VPD Data", "TagList"};
constexpr char OUT_TAG[] = "Tag";
constexpr char OUT_VALUE[] = "Value";

constexpr CodeText RESULT_TEXTS[] = {
    {RC_PARAM_ERROR, "Failed, PF-Number not provided"},
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_FILE_ERROR, "Failed, File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, VPD not present"},
    {RC_VPD_FAILED, "Failed, VPD failed"},
};

constexpr LibraryCall READ_VPD = {"VEXAPI_GetVpd", "", "Get VPD failed", RC_VPD_FAILED};

constexpr VX_UINT32 VPD_SIZE = 1024;

struct VpdKeyword {
    const char* key;
    const char* description;
};
constexpr VpdKeyword VPD_KEYWORDS[] = {
    {"PI", "Product Identifier"}, {"PN", "Part Number"},           {"SN", "Serial Number"},
    {"MN", "Manufacturing Id"},   {"EC", "Engineering Date Code"}, {"RM", "Multi Boot Version"},
    {"V0", "Miscellaneous Info"}, {"V1", "Efi Driver Version"},    {"V3", "Firmware Version"},
    {"V4", "Bios Version"},       {"V5", "FCode Version"},         {"V9", "Multi Boot Version"},
};

/// Length of the value after an item's header. The header of a section is an item of its own: the keywords inside
/// are walked like any other item.
std::size_t ValueLength(Bytes item) {
    switch (item[0]) {
    case vpd::IDENTIFIER_STRING:
        return item.LittleU16(1);
    case vpd::READ_ONLY:
    case vpd::READ_WRITE:
    case vpd::END:
        return 0;
    default:
        return item[2];
    }
}

void TraceItem(const TavuString& text) {
    TraceStep(TRACE_INFORMATION, "tmpText=%s", text.c_str());
}

void MapFieldData(Bytes item, std::size_t length, VpdMap& map) {
    const TracedFunction traced(CLASS_NAME, __func__);
    const std::string_view value = item.Text(vpd::HEADER_SIZE, length);
    TavuString trace;
    switch (item[0]) {
    case vpd::IDENTIFIER_STRING:
        map["PI"] = TavuString(value);
        trace.Format(" 0x%02x  \"%s\"\n", item[0], map["PI"].c_str());
        break;
    case vpd::READ_ONLY:
    case vpd::READ_WRITE:
    case vpd::END:
        trace.Format(" 0x%02x\n", item[0]);
        break;
    default:
        const TavuString key(item.Text(0, 2));
        TavuString& text = map[key];
        if (key == "RV" || key == "RW") {
            // The first byte of the value, regardless of its length: if that is 0, it is the next item's.
            const unsigned byte = item[vpd::HEADER_SIZE];
            text.Format("%02x", byte);
            trace.Format(" \"%2.2s\"  %02x\n", key.c_str(), byte);
        } else {
            text = TavuString(value);
            trace.Format(" \"%2.2s\"  \"%s\"\n", key.c_str(), text.c_str());
        }
        break;
    }
    TraceItem(trace);
}

/// Accumulates during the life of the process: at the prompt, the report of a second port includes keywords that
/// only the first one had.
VpdMap& ProcessVpdMap() {
    static auto* const map = new VpdMap;
    return *map;
}

constexpr DocumentField GET_FIELDS[] = {{OUT_TAG, FieldType::TEXT}, {OUT_VALUE, FieldType::TEXT}};

} // namespace

void MapVpdData(Bytes buffer, std::size_t size, VpdMap& map) {
    std::size_t at = 0;
    while (at < size) {
        const Bytes item = buffer.Sub(at);
        const std::size_t length = ValueLength(item);
        MapFieldData(item, length, map);
        if (item[0] == vpd::END) {
            return;
        }
        at += vpd::HEADER_SIZE + length;
    }
}

const char* GetVPDKeyVal(const TavuString& key) {
    for (const VpdKeyword& keyword : VPD_KEYWORDS) {
        if (key == keyword.key) {
            return keyword.description;
        }
    }
    return "";
}

constexpr Command PhysicalPortVPDCmdsProcessor::COMMANDS[] = {
    {.names = Names<"get", "CmdGet">(),
     .description = "get Orvane VPD information",
     .run = CmdGetCommon,
     .usage = "Usage: get\r\n",
     .arguments = ONLY_PORT,
     .document = ReportDocument(OUT_NAMES, GET_FIELDS),
     .reads = VEXAPI_EXT_PORTS},
};

constinit const FamilyDescription PhysicalPortVPDCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "VPD",
    .leaves = LEAVES_OF<PhysicalPortVPDCmdsProcessor>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_NAMES,
};

ResultCode PhysicalPortVPDCmdsProcessor::Get(const TavuStringArray& args, VpdMap*& map) {
    PortEntry entry;
    if (const ResultCode code = GetPhyPortFromPortString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    const std::unique_ptr<VX_UINT8, decltype(&std::free)> buffer(static_cast<VX_UINT8*>(std::calloc(VPD_SIZE, 1)),
                                                                 &std::free);
    if (buffer == nullptr) {
        return RC_NO_MEMORY;
    }
    VX_UINT32 size = VPD_SIZE;
    const ResultCode code = CallLibrary(
        READ_VPD, [&] { return VEXAPI_GetVpd(HandleWord(entry.protocol->PortHandle), 0, buffer.get(), &size); });
    if (code == RC_SUCCESS) {
        map = &ProcessVpdMap();
        MapVpdData(Bytes(buffer.get(), VPD_SIZE), std::min(size, VPD_SIZE), *map);
    }
    return code;
}

void PhysicalPortVPDCmdsProcessor::DisplayVPDInfo(MultipleCmdsProcessor* self, VpdMap* const& map,
                                                  eOutputFormat format) {
    const TracedCall traced(CLASS_NAME, __func__);
    Document document(*self, format);
    document.Report(OUT_NAMES, REBOOT_NOT_SHOWN, [&] {
        for (const auto& keyword : *map) {
            const char* description = GetVPDKeyVal(keyword.first);
            if (*description != '\0') {
                document.Structure(OUT_NAMES.list, [&] {
                    document.Field(OUT_TAG, description);
                    document.Field(OUT_VALUE, keyword.second);
                });
            }
        }
    });
}
