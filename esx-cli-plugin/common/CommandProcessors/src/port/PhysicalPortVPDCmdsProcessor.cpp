#include "PhysicalPortVPDCmdsProcessor.h"

#include "HostTree.h"
#include "LibraryCall.h"
#include "Resolvers.h"

#include <cstring>

namespace {

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

/// First bytes of the items that are no keywords.
constexpr VX_UINT8 TAG_IDENTIFIER = 0x82;
constexpr VX_UINT8 TAG_READ_ONLY = 0x90;
constexpr VX_UINT8 TAG_READ_WRITE = 0x91;
constexpr VX_UINT8 TAG_END = 0x78;
constexpr std::size_t HEADER_SIZE = 3;

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

/// Length of the value behind an item's header. The header of a section is an item of its own: the
/// keywords inside are walked like any other item.
std::size_t ValueLength(const VX_UINT8* item) {
    switch (item[0]) {
    case TAG_IDENTIFIER:
        return static_cast<std::size_t>(item[1] | item[2] << 8);
    case TAG_READ_ONLY:
    case TAG_READ_WRITE:
        return 0;
    default:
        return item[2];
    }
}

/// Bytes as text: they end at `length`, or at a zero byte.
TavuString TextAt(const VX_UINT8* bytes, std::size_t length) {
    const char* text = reinterpret_cast<const char*>(bytes);
    return {text, strnlen(text, length)};
}

void TraceItem(const TavuString& text) {
    TraceStep(TRACE_INFORMATION, "tmpText=%s", text.c_str());
}

void MapFieldData(const VX_UINT8* item, std::size_t length, VpdMap& map) {
    const TracedFunction traced(CLASS_NAME, __func__);
    const VX_UINT8* const value = item + HEADER_SIZE;
    TavuString trace;
    switch (item[0]) {
    case TAG_IDENTIFIER:
        map["PI"] = TextAt(value, length);
        trace.Format(" 0x%02x  \"%s\"\n", item[0], map["PI"].c_str());
        break;
    case TAG_READ_ONLY:
    case TAG_READ_WRITE:
    case TAG_END:
        trace.Format(" 0x%02x\n", item[0]);
        break;
    default:
        const TavuString key = TextAt(item, 2);
        TavuString& text = map[key];
        if (key == "RV" || key == "RW") {
            text.Format("%02x", value[0]);
            trace.Format(" \"%2.2s\"  %02x\n", key.c_str(), value[0]);
        } else {
            text = TextAt(value, length);
            trace.Format(" \"%2.2s\"  \"%s\"\n", key.c_str(), text.c_str());
        }
        break;
    }
    TraceItem(trace);
}

/// Collects over the life of the process: at the prompt, a second port's report keeps the keywords that only
/// the first one had.
VpdMap& ProcessVpdMap() {
    static auto* const map = new VpdMap;
    return *map;
}

constexpr DocumentField GET_FIELDS[] = {{OUT_TAG, FieldType::TEXT}, {OUT_VALUE, FieldType::TEXT}};

} // namespace

void MapVpdData(const VX_UINT8* buffer, std::size_t size, VpdMap& map) {
    std::size_t at = 0;
    while (at < size) {
        const VX_UINT8* const item = buffer + at;
        const std::size_t length = item[0] == TAG_END ? 0 : ValueLength(item);
        MapFieldData(item, length, map);
        if (item[0] == TAG_END) {
            return;
        }
        at += HEADER_SIZE + length;
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
     .document = ReportDocument(OUT_NAMES, GET_FIELDS)},
};

constinit const FamilyDescription PhysicalPortVPDCmdsProcessor::FAMILY = {
    .className = CLASS_NAME,
    .helpWord = "VPD",
    .leaves = LEAVES_OF<COMMANDS>,
    .resultTexts = RESULT_TEXTS,
    .report = OUT_NAMES,
};

ResultCode PhysicalPortVPDCmdsProcessor::Get(const TavuStringArray& args, VpdMap*& map) {
    PortEntry entry;
    if (const ResultCode code = GetPhyPortFromPortString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    const std::unique_ptr<VX_UINT8, decltype(&std::free)> buffer(
        static_cast<VX_UINT8*>(std::calloc(VPD_SIZE + VPD_SLACK, 1)), &std::free);
    if (buffer == nullptr) {
        return RC_NO_MEMORY;
    }
    VX_UINT32 size = VPD_SIZE;
    const ResultCode code = CallLibrary(
        READ_VPD, [&] { return VEXAPI_GetVpd(HandleWord(entry.protocol->PortHandle), 0, buffer.get(), &size); });
    if (code == RC_SUCCESS) {
        map = &ProcessVpdMap();
        MapVpdData(buffer.get(), std::min(size, VPD_SIZE), *map);
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
