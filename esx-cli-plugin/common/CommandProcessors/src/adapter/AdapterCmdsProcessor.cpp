#include "AdapterCmdsProcessor.h"

#include "AdapterInfoCmdsProcessor.h"
#include "BoundedText.h"
#include "Document.h"
#include "HostTree.h"

namespace {

constexpr char OUT_STRUCT_NAME[] = "AdapterList";
constexpr char OUT_ADAPTERS[] = "Adapters";

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

const Leaf AdapterCmdsProcessor::LEAVES[] = {
    {"list", "Discover list of Orvane adapters", 0, Xml<"CmdList", CmdListCommon>, nullptr},
    {"help", "List of available commands", 2, CmdHelp, Usage},
    {"listcli", "Discover list of Orvane adapters", 3, Text<"CmdListCli", CmdListCommon>, Usage},
};

const SubFamily AdapterCmdsProcessor::SUB_FAMILIES[] = {
    {"info", "use this command to get Orvane Adapter info", CreateFamily<AdapterInfoCmdsProcessor>},
};

const FamilyDescription AdapterCmdsProcessor::FAMILY = {
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
    TraceEntered(__func__);
    if (IsInvokingHelp(ArgText(args, 0))) {
        return RC_HELP_REQUESTED;
    }
    const VX_ADAPTER_LIST* host = VEXAPI_GetAdapterList();
    if (host == nullptr) {
        TavuDebug::Print(TRACE_DEBUG, "AdapterCmdsProcessor::CmdListCommon: List is NULL");
        return RC_HOST_NOT_FOUND;
    }
    Document document(*self, format, FAMILY.className, __func__);
    document.List([&] {
        for (const _vexapi_adapter_t* adapter = host->pHead; adapter != nullptr; adapter = adapter->pNext) {
            document.Structure(OUT_STRUCT_NAME, [&] {
                TavuString identifier;
                identifier.Format("Adapter_%.*s_%.*s", int{sizeof adapter->Model}, adapter->Model,
                                  int{sizeof adapter->SerialNumber}, adapter->SerialNumber);
                document.Field(OUT_ADAPTERS, identifier);
            });
        }
    });
    TraceExiting(__func__);
    return RC_SUCCESS;
}

VX_UINT32 AdapterCmdsProcessor::GetPhyPortFromAdapterString(const TavuStringArray& args, _vexapi_adapter_t** adapter,
                                                            _vexapi_phy_port_t** port, _vexapi_protocol_t** nic,
                                                            _vexapi_protocol_t** fc, _vexapi_protocol_t** iscsi) {
    TraceEntered(__func__);
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
        TavuDebug::Print(TRACE_DEBUG, "AdapterCmdsProcessor::%s: Adapter List is NULL", __func__);
        return RC_HOST_NOT_FOUND;
    }
    // The walk does not stop at a match: a later record with the same model and serial number wins.
    for (_vexapi_adapter_t* record = host->pHead; record != nullptr; record = record->pNext) {
        if (!EqualsNoCase(record->Model, model) || !EqualsNoCase(record->SerialNumber, serialNumber) ||
            record->pPhyPortList == nullptr) {
            continue;
        }
        *adapter = record;
        *port = record->pPhyPortList->pHead;
        const _vexapi_phy_port_t* lowest = *port;
        for (auto* phyPort = *port; phyPort != nullptr; phyPort = phyPort->pNext) {
            for (auto* protocol = HeadOf(phyPort->pProtocolList); protocol != nullptr; protocol = protocol->pNext) {
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
    TraceExiting(__func__);
    return RC_SUCCESS;
}

VX_UINT32 AdapterCmdsProcessor::GetFcPortFromAdapterString(const TavuStringArray& args, AdapterEntry& entry) {
    const VX_UINT32 code = GetPhyPortFromAdapterString(args, entry);
    return code == RC_SUCCESS && entry.fc == nullptr ? VX_UINT32{RC_ADAPTER_NOT_FOUND} : code;
}
