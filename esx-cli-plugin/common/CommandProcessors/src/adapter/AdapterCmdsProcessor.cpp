#include "AdapterCmdsProcessor.h"

#include "BoundedText.h"
#include "Document.h"
#include "FlashUpdate.h"
#include "HostList.h"
#include "HostTree.h"
#include "LibraryCall.h"
#include "Resolvers.h"

namespace {

constexpr char OUT_STRUCT_NAME[] = "AdapterList";
constexpr char OUT_ADAPTERS[] = "Adapters";
constexpr char OUT_FLASH_UPDATE[] = "FlashUpdate";

constexpr CodeText RESULT_TEXTS[] = {
    {RC_SUCCESS, OUT_SUCCESS},
    {RC_PARAM_ERROR, "Failed, Invalid Number of parameters"},
    {RC_INVALID_PARAMETER, "Failed, Invalid parameter"},
    {RC_FLASH_UPDATE_FAILED, "Failed, Flash Update Error"},
    {RC_HOST_NOT_FOUND, "Failed, Host not found"},
    {RC_IMAGE_COMPONENTS_INVALID, "Failed, Flash Image Components Validation Error"},
    {RC_INVALID_DATA, "Failed, Invalid data"},
    {RC_INVALID_FIELD, "Failed, Invalid Serial Number"},
    {RC_FILE_ERROR, "Failed, Flash File not found"},
    {RC_ADAPTER_NOT_FOUND, "Failed, Adapter not found"},
    {RC_FILE_OPEN_ERROR, "Failed, File Open Error"},
    {RC_FILE_NOT_VALID, "Failed, File not Valid"},
    {RC_FILE_READ_ERROR, "Failed, File read Error"},
    {RC_SSID_NOT_FOUND, "Failed, Invalid SSID"},
    {RC_FILE_CORRUPTED, "Failed, Corrupted File"},
    {RC_FILE_SIZE_INVALID, "Failed, Invalid File Size"},
    {RC_CHECKSUM_ERROR, "Failed, Checksum Error"},
    {RC_SIGNATURE_ERROR, "Failed, Invalid Signature"},
    {RC_FLASH_UPDATE_LOCKDOWN, "Failed, Flash Update disabled as FW lockdown mode enabled"},
    {RC_FEATURE_NOT_SUPPORTED, "Failed, Feature not supported for this adapter"},
    {RC_NO_MEMORY, "Failed, Memory Error"},
};

constexpr DocumentField LIST_FIELDS[] = {{OUT_ADAPTERS, FieldType::TEXT}};
constexpr Argument UPDATE_ARGUMENTS[] = {
    ADAPTER_ARGUMENT,
    {"file", nullptr, "file with the image", ArgumentKind::INPUT_FILE, true},
    {"kind", nullptr, "kind of the image", ArgumentKind::WORD, true, FLASH_IMAGE_WORDS},
};

} // namespace

constexpr Command AdapterCmdsProcessor::COMMANDS[] = {
    {.names = Names<"list", "CmdList">(),
     .description = "Discover list of Orvane adapters",
     .run = CmdListCommon,
     .usage = "Usage: list\r\n",
     .arguments = {},
     .document = ListDocument(OUT_STRUCT_NAME, LIST_FIELDS),
     .reads = VEXAPI_EXT_ADAPTERS},
    {.names = Names<"update", "CmdUpdate">(),
     .description = "Update firmware on the Orvane Adapter",
     .run = CmdUpdateCommon,
     .usage = "Usage: [identifier] [flashfile]\r\n",
     .arguments = UPDATE_ARGUMENTS,
     .document = FlatDocument(OUT_FLASH_UPDATE, MESSAGE_AND_REBOOT),
     .changes = true},
};

constinit const FamilyDescription AdapterCmdsProcessor::FAMILY = {
    .className = "AdapterCmdsProcessor",
    .helpWord = "Adapter",
    .leaves = LEAVES_OF<AdapterCmdsProcessor, "List of available commands">,
    .resultTexts = RESULT_TEXTS,
};

ResultCode AdapterCmdsProcessor::CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                               eOutputFormat format) {
    return ListHost(self, args, format, [](Document& document, const VX_ADAPTER_LIST& host) {
        ForEachEntry(BeginWalk("Adapter", &host), [&](const _vexapi_adapter_t& adapter) {
            document.Structure(OUT_STRUCT_NAME, [&] {
                TavuString identifier;
                identifier.Format("Adapter_%.*s_%.*s", int{sizeof adapter.Model}, adapter.Model,
                                  int{sizeof adapter.SerialNumber}, adapter.SerialNumber);
                document.Field(OUT_ADAPTERS, identifier);
            });
            return true;
        });
    });
}

ResultCode AdapterCmdsProcessor::CmdUpdateCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                 eOutputFormat format) {
    bool reboot = false;
    const ResultCode code = Update(args, reboot);
    DisplayUpdateInfo(self, code, format, reboot);
    return code;
}

/// The command without its document. `reboot` is only written on success.
ResultCode AdapterCmdsProcessor::Update(const TavuStringArray& args, bool& reboot) {
    if (args.size() < 3) {
        TraceStep(TRACE_DEBUG, "Invalid number of arguments");
        return RC_PARAM_ERROR;
    }
    AdapterEntry entry;
    if (const ResultCode code = GetPhyPortFromAdapterString(args, entry); code != RC_SUCCESS) {
        return code;
    }
    const char* path = ArgText(args, 1);
    if (!FileExists(path)) {
        TraceStep(TRACE_DEBUG, "Firmware file [%s] does not exist", path);
        return RC_FILE_ERROR;
    }
    LibraryOutputRedirection redirection;
    if (!redirection.Open()) {
        return RefuseLibraryCalls("");
    }
    // An invalid kind is reported as a failed update, not as a usage error; so is an adapter without an FC
    // protocol.
    const FlashImageKind* kind = entry.fc != nullptr ? FindFlashImageKind(ArgText(args, 2)) : nullptr;
    if (kind != nullptr && !kind->isAllowed(entry.fc->ChipProperty)) {
        // The redirection stays open: the document goes to the library's log and never reaches standard output.
        TraceStep(TRACE_DEBUG, "%s not supported for this adapter", kind->word);
        return RC_FEATURE_NOT_SUPPORTED;
    }
    const VX_UINT32 status = kind != nullptr ? kind->write(&entry.fc->PortHandle, path) : FLASH_STATUS_NONE;
    redirection.Close();
    if (kind != nullptr) {
        TraceStatus(kind->function, status);
    }
    if (status != FLASH_STATUS_DONE && status != FLASH_STATUS_REBOOT_NEEDED) {
        TraceStep(TRACE_DEBUG, "Update operation failed. uReturnCode=%d", static_cast<int>(status));
        return FlashUpdateResult(status);
    }
    TraceStep(TRACE_INFORMATION, "Update operation successful");
    reboot = status == FLASH_STATUS_REBOOT_NEEDED || !kind->runsAtOnce(entry.fc->ChipProperty);
    return RC_SUCCESS;
}

void AdapterCmdsProcessor::DisplayUpdateInfo(MultipleCmdsProcessor* self, ResultCode code, eOutputFormat format,
                                             bool reboot) {
    const TracedCall traced(FAMILY.className, __func__);
    Document document(*self, format);
    document.Flat(OUT_FLASH_UPDATE, [&] {
        document.Field(OUT_REBOOT_REQUIRED, reboot);
        document.Message(code, ResultText(code));
    });
}
