#include "AdapterCmdsProcessor.h"

#include "AdapterFlashInfoCmdsProcessor.h"
#include "AdapterInfoCmdsProcessor.h"
#include "AdapterPersonalityCmdsProcessor.h"
#include "BoundedText.h"
#include "Document.h"
#include "FlashUpdate.h"
#include "HostTree.h"
#include "LibraryCall.h"

namespace {

constexpr char OUT_STRUCT_NAME[] = "AdapterList";
constexpr char OUT_ADAPTERS[] = "Adapters";
constexpr char OUT_FLASH_UPDATE[] = "FlashUpdate";

constexpr UsageText USAGES[] = {
    {3, "Usage: list\r\n"},
    {4, "Usage: [identifier] [flashfile]\r\n"},
};

/// Without regard to case, of a record's array and a word.
template <std::size_t N> bool EqualsNoCase(const char (&array)[N], const TavuString& word) {
    const std::string_view text = BoundedText(array);
    return text.size() == word.size() && word.CompareNoCase(TavuString(text).c_str()) == 0;
}

} // namespace

constinit const Leaf AdapterCmdsProcessor::LEAVES[] = {
    {"list", "Discover list of Orvane adapters", 0, Xml<"CmdList", CmdListCommon>, nullptr},
    {"update", "Update firmware on the Orvane Adapter", 1, Xml<"CmdUpdate", CmdUpdateCommon>, nullptr},
    {"help", "List of available commands", 2, CmdHelp, Usage},
    {"listcli", "Discover list of Orvane adapters", 3, Text<"CmdListCli", CmdListCommon>, Usage},
    {"updatecli", "Update firmware on the Orvane Adapter", 4, Text<"CmdUpdateCli", CmdUpdateCommon>, Usage},
};

constinit const SubFamily AdapterCmdsProcessor::SUB_FAMILIES[] = {
    {"info", "use this command to get Orvane Adapter info", CreateFamily<AdapterInfoCmdsProcessor>},
    {"personality", "use this command to get/set Orvane Adapter personality",
     CreateFamily<AdapterPersonalityCmdsProcessor>},
    {"flashinfo", "use this command to get Orvane Adapter flash information",
     CreateFamily<AdapterFlashInfoCmdsProcessor>},
};

constinit const FamilyDescription AdapterCmdsProcessor::FAMILY = {
    .className = "AdapterCmdsProcessor",
    .helpWord = "Adapter",
    .helpId = 2,
    .leaves = LEAVES,
    .usages = USAGES,
    .subOption = "-s",
    .subFamilies = SUB_FAMILIES,
};

VX_UINT32 AdapterCmdsProcessor::CmdListCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                              eOutputFormat format) {
    return ListHost(self, args, format, [](Document& document, const VX_ADAPTER_LIST& host) {
        for (const _vexapi_adapter_t* adapter = BeginWalk("Adapter", &host); adapter != nullptr;
             adapter = adapter->pNext) {
            document.Structure(OUT_STRUCT_NAME, [&] {
                TavuString identifier;
                identifier.Format("Adapter_%.*s_%.*s", int{sizeof adapter->Model}, adapter->Model,
                                  int{sizeof adapter->SerialNumber}, adapter->SerialNumber);
                document.Field(OUT_ADAPTERS, identifier);
            });
        }
    });
}

VX_UINT32 AdapterCmdsProcessor::GetPhyPortFromAdapterString(const TavuStringArray& args, _vexapi_adapter_t** adapter,
                                                            _vexapi_phy_port_t** port, _vexapi_protocol_t** nic,
                                                            _vexapi_protocol_t** fc, _vexapi_protocol_t** iscsi) {
    const TracedFunction traced(FAMILY.className, __func__);
    TraceStep(TRACE_INFORMATION, "Entered");
    const TavuString identifier = ArgText(args, 0);
    if (IsInvokingHelp(identifier.c_str())) {
        return RC_HELP_REQUESTED;
    }
    int position = 0;
    const TavuString prefix = identifier.Tokenize("_", position);
    const TavuString model = identifier.Tokenize("_", position);
    const TavuString serialNumber = identifier.Tokenize("_", position);
    if (prefix.CompareNoCase("Adapter") != 0) {
        // The name of another class in this trace is how support staff know the line.
        TavuDebug::Print(TRACE_DEBUG, "AdapterDefaultCfgCmdsProcessor::%s: Invalid Adapter identifier %s", __func__,
                         identifier.c_str());
        return RC_INVALID_PARAMETER;
    }
    const VX_ADAPTER_LIST* host = VEXAPI_GetAdapterList();
    if (host == nullptr) {
        TraceStep(TRACE_DEBUG, "Adapter List is NULL");
        return RC_HOST_NOT_FOUND;
    }
    // The walk does not stop at a match: a later record with the same model and serial number wins.
    for (_vexapi_adapter_t* record = BeginWalk("Adapter", host); record != nullptr; record = record->pNext) {
        if (!EqualsNoCase(record->Model, model) || !EqualsNoCase(record->SerialNumber, serialNumber) ||
            record->pPhyPortList == nullptr) {
            continue;
        }
        *adapter = record;
        *port = BeginWalk("Phy Port", record->pPhyPortList);
        const _vexapi_phy_port_t* lowest = *port;
        for (auto* phyPort = *port; phyPort != nullptr; phyPort = phyPort->pNext) {
            for (auto* protocol = BeginWalk("Protocol", phyPort->pProtocolList); protocol != nullptr;
                 protocol = protocol->pNext) {
                if (IsFcProtocol(*protocol)) {
                    if (*fc == nullptr) {
                        *fc = protocol;
                    }
                    if (phyPort->PortNumber < lowest->PortNumber) {
                        *fc = protocol;
                        *port = phyPort;
                        lowest = phyPort;
                    }
                } else if (protocol->ProtocolType == PROTOCOL_TYPE_NIC) {
                    *nic = protocol;
                    *port = phyPort;
                } else if (protocol->ProtocolType == PROTOCOL_TYPE_ISCSI) {
                    *iscsi = protocol;
                    *port = phyPort;
                }
            }
        }
    }
    if (*adapter == nullptr || *port == nullptr || (*nic == nullptr && *fc == nullptr && *iscsi == nullptr)) {
        return RC_INVALID_PARAMETER;
    }
    TraceStep(TRACE_INFORMATION, "Exiting");
    return RC_SUCCESS;
}

VX_UINT32 AdapterCmdsProcessor::GetFcPortFromAdapterString(const TavuStringArray& args, AdapterEntry& entry) {
    const VX_UINT32 code = GetPhyPortFromAdapterString(args, entry);
    return code == RC_SUCCESS && entry.fc == nullptr ? VX_UINT32{RC_ADAPTER_NOT_FOUND} : code;
}

VX_UINT32 AdapterCmdsProcessor::CmdUpdateCommon(MultipleCmdsProcessor* self, TavuStringArray& args,
                                                eOutputFormat format) {
    bool reboot = false;
    const VX_UINT32 code = Update(args, reboot);
    DisplayUpdateInfo(self, code, format, reboot);
    return code;
}

/// The command but for its document. `reboot` is only written on success.
VX_UINT32 AdapterCmdsProcessor::Update(const TavuStringArray& args, bool& reboot) {
    if (args.size() < 3) {
        TraceStep(TRACE_DEBUG, "Invalid number of arguments");
        return RC_PARAM_ERROR;
    }
    AdapterEntry entry;
    if (const VX_UINT32 code = GetPhyPortFromAdapterString(args, entry); code != RC_SUCCESS) {
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
    // A bad kind is no usage error but a failed update, as is an adapter without an FC protocol.
    const FlashImageKind* kind = entry.fc != nullptr ? FindFlashImageKind(ArgText(args, 2)) : nullptr;
    if (kind != nullptr && !kind->isAllowed(entry.fc->ChipProperty)) {
        // The redirection stays open: the document goes into the library's log, and clients see nothing.
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

void AdapterCmdsProcessor::DisplayUpdateInfo(MultipleCmdsProcessor* self, VX_UINT32 code, eOutputFormat format,
                                             bool reboot) {
    const TracedCall traced(FAMILY.className, __func__);
    Document document(*self, format);
    document.Flat(OUT_FLASH_UPDATE, [&] {
        document.Field(OUT_REBOOT_REQUIRED, reboot);
        document.Message(code, FlashUpdateText(code));
    });
}
