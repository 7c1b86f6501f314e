#include "FakeLibrary.h"

#include <cstdio>
#include <cstring>

namespace {

std::unique_ptr<FakeLibrary> s_theLibrary;

/// A handle's word, instead of the handle.
struct Word {
    VX_UINT32 value;
};

VX_UINT32 WordOf(const VX_PORT_HANDLE& handle) {
    VX_UINT32 word = 0;
    std::memcpy(&word, handle.opaque + 4, sizeof word);
    return word;
}

/// Appends a record to the list at `head`.
template <typename Record> void AppendTo(Record*& head, Record& record) {
    Record** end = &head;
    while (*end != nullptr) {
        end = &(*end)->pNext;
    }
    *end = &record;
}

std::string TextOfArgument(Word word) {
    const _vexapi_protocol_t* const port = FakeLibrary::Get().host.ByWord(word.value);
    return port != nullptr ? WwnOf(port->WWPN) : "unknown port";
}

std::string TextOfArgument(const VX_PORT_HANDLE* handle) {
    if (handle == nullptr) {
        return "no handle";
    }
    const VX_UINT32 word = WordOf(*handle);
    const _vexapi_protocol_t* const port = FakeLibrary::Get().host.ByWord(word);
    return (port != nullptr && &port->PortHandle != handle ? "copy of " : "") + TextOfArgument(Word{word});
}

std::string TextOfArgument(const char* text) {
    return text != nullptr ? "\"" + std::string(text) + "\"" : "no text";
}

std::string TextOfArgument(const VX_PORT_SELECTOR* selector) {
    return std::to_string(selector->SelectorType) + ", " + WwnOf(selector->PortName);
}

std::string TextOfArgument(VX_UINT32 number) {
    return std::to_string(number);
}

template <typename Argument> void AppendArgument(std::string& record, Argument argument) {
    // Only input pointers are recorded: those with their own overload.
    if constexpr (!std::is_pointer_v<Argument> || std::is_same_v<Argument, VX_PORT_HANDLE*> ||
                  std::is_same_v<Argument, const char*> || std::is_same_v<Argument, VX_PORT_SELECTOR*>) {
        record += (record.empty() ? "" : ", ") + TextOfArgument(argument);
    }
}

template <typename... Arguments> std::string Record(Arguments... arguments) {
    std::string record;
    (AppendArgument(record, arguments), ...);
    return record;
}

FakeLibrary& Fake() {
    return FakeLibrary::Get();
}

} // namespace

std::string WwnOf(const VX_UINT8 (&name)[8]) {
    std::string text;
    for (const VX_UINT8 byte : name) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x", unsigned{byte});
        text += (text.empty() ? "" : ":") + std::string(digits);
    }
    return text;
}

std::string Id(const _vexapi_protocol_t& protocol) {
    return "FC_" + WwnOf(protocol.WWPN);
}

_vexapi_adapter_t& HostBuilder::AddAdapter() {
    _vexapi_adapter_t& adapter = mAdapters.emplace_back();
    adapter.pPhyPortList = &mPhyPortLists.emplace_back();
    AppendTo(mList.pHead, adapter);
    ++mList.Count;
    return adapter;
}

_vexapi_phy_port_t& HostBuilder::AddPhyPort(_vexapi_adapter_t& adapter) {
    _vexapi_phy_port_t& port = mPhyPorts.emplace_back();
    port.pProtocolList = &mProtocolLists.emplace_back();
    port.PortNumber = static_cast<VX_UINT8>(adapter.pPhyPortList->Count++);
    AppendTo(adapter.pPhyPortList->pHead, port);
    return port;
}

_vexapi_protocol_t& HostBuilder::AddProtocol(_vexapi_phy_port_t& port) {
    _vexapi_protocol_t& protocol = mProtocols.emplace_back();
    const auto number = static_cast<VX_UINT32>(mProtocols.size());
    const VX_UINT8 name[8] = {0x21, 0x00, 0x0a, 0x0b, 0x0c, 0x0d, 0x00, static_cast<VX_UINT8>(number)};
    std::memcpy(protocol.WWPN, name, sizeof name);
    std::memcpy(protocol.WWNN, name, sizeof name);
    protocol.WWNN[0] = 0x20;
    std::memset(protocol.PortHandle.opaque, 0xEE, sizeof protocol.PortHandle.opaque);
    std::memcpy(protocol.PortHandle.opaque + 4, &number, sizeof number);
    protocol.PortInterfaceType = 1;
    protocol.PortState = 1;
    AppendTo(port.pProtocolList->pHead, protocol);
    ++port.pProtocolList->Count;
    return protocol;
}

_vexapi_protocol_t& HostBuilder::AddPort() {
    return AddProtocol(AddPhyPort(mAdapters.empty() ? AddAdapter() : mAdapters.back()));
}

_tagVEXAPI_SDMTarget& HostBuilder::AddTarget(_vexapi_protocol_t& protocol) {
    _tagVEXAPI_SDMTarget& target = mTargets.emplace_back();
    target.TargetNumber = static_cast<VX_UINT16>(protocol.TargetCount++);
    const VX_UINT8 name[8] = {
        0x50, 0x00, 0x0a, 0x0b, 0x0c, 0x0d, protocol.WWPN[7], static_cast<VX_UINT8>(protocol.TargetCount)};
    std::memcpy(target.PortName, name, sizeof name);
    std::memcpy(target.NodeName, name, sizeof name);
    AppendTo(protocol.pTargetList, target);
    return target;
}

_tagVEXAPI_SDMLun& HostBuilder::AddLun(_tagVEXAPI_SDMTarget& target) {
    _tagVEXAPI_SDMLun& lun = mLuns.emplace_back();
    lun.LunNumber = static_cast<VX_UINT16>(target.LunCount++);
    AppendTo(target.pLunList, lun);
    return lun;
}

const _vexapi_protocol_t* HostBuilder::ByWord(VX_UINT32 word) const {
    for (const _vexapi_protocol_t& protocol : mProtocols) {
        if (WordOf(protocol.PortHandle) == word) {
            return &protocol;
        }
    }
    return nullptr;
}

FakeLibrary& FakeLibrary::Get() {
    if (!s_theLibrary) {
        Reset();
    }
    return *s_theLibrary;
}

void FakeLibrary::Reset() {
    s_theLibrary = std::make_unique<FakeLibrary>();
}

bool FakeLibrary::SucceedsUnasked(const std::string& function) {
    return function == "VEXAPI_Initialize" || function == "VEXAPI_Uninitialize" || function == "VEXAPI_SetToolID" ||
           function == "VEXAPI_SetToolVersion";
}

std::vector<std::string> FakeLibrary::PortCalls() const {
    static constexpr const char* OF_EVERY_RUN[] = {"VEXAPI_Initialize(", "VEXAPI_Uninitialize(", "VEXAPI_SetToolID(",
                                                   "VEXAPI_SetToolVersion(", "VEXAPI_GetAdapterList("};
    std::vector<std::string> kept;
    for (const std::string& call : calls) {
        bool isKept = true;
        for (const char* start : OF_EVERY_RUN) {
            isKept = isKept && !call.starts_with(start);
        }
        if (isKept) {
            kept.push_back(call);
        }
    }
    return kept;
}

std::optional<VX_UINT32> FakeLibrary::ScriptedStatus(const std::string& function) {
    if (auto& queue = mQueues[function]; !queue.empty()) {
        const VX_UINT32 status = queue.front();
        queue.pop_front();
        return status;
    }
    const auto always = mAlways.find(function);
    return always != mAlways.end() ? std::optional(always->second) : std::nullopt;
}

VX_UINT32 VEXAPI_Initialize(VX_UINT32 debugLevel, VX_UINT32 reserved) {
    return Fake().Answer("VEXAPI_Initialize", Fake().onInitialize, Record(debugLevel, reserved), debugLevel, reserved);
}

VX_UINT32 VEXAPI_SetToolID(VX_UINT32 toolId) {
    return Fake().Answer("VEXAPI_SetToolID", Fake().onSetToolID, Record(toolId), toolId);
}

VX_UINT32 VEXAPI_SetToolVersion(VX_UINT32 major, VX_UINT32 minor, VX_UINT32 sub, VX_UINT32 build) {
    return Fake().Answer("VEXAPI_SetToolVersion", Fake().onSetToolVersion, Record(major, minor, sub, build), major,
                         minor, sub, build);
}

VX_UINT32 VEXAPI_Uninitialize() {
    return Fake().Answer("VEXAPI_Uninitialize", Fake().onUninitialize, Record());
}

VX_ADAPTER_LIST* VEXAPI_GetAdapterList() {
    VX_ADAPTER_LIST* const list = Fake().Answer("VEXAPI_GetAdapterList", Fake().onGetAdapterList, Record());
    return Fake().onGetAdapterList ? list : Fake().host.List();
}

VX_UINT32 VEXAPI_IsRebootRequired(VX_UINT32* required) {
    return Fake().Answer("VEXAPI_IsRebootRequired", Fake().onIsRebootRequired, Record(required), required);
}

VX_UINT32 VEXAPI_GetFlashComponentVersion(VX_PORT_HANDLE* handle, _VEXAPI_FlashComponentVersion* versions) {
    return Fake().Answer("VEXAPI_GetFlashComponentVersion", Fake().onGetFlashComponentVersion, Record(handle, versions),
                         handle, versions);
}

VX_UINT32 VEXAPI_GetAdapterFlashMemoBlock(VX_PORT_HANDLE* handle, VX_SFlashMemoBlock* block) {
    return Fake().Answer("VEXAPI_GetAdapterFlashMemoBlock", Fake().onGetAdapterFlashMemoBlock, Record(handle, block),
                         handle, block);
}

VX_UINT32 VEXAPI_doOptionROMUpdate(VX_PORT_HANDLE* handle, const char* path, VX_UINT32 reserved) {
    return Fake().Answer("VEXAPI_doOptionROMUpdate", Fake().ondoOptionROMUpdate, Record(handle, path, reserved), handle,
                         path, reserved);
}

VX_UINT32 VEXAPI_UpdateSpecificFlashRegionFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return Fake().Answer("VEXAPI_UpdateSpecificFlashRegionFromFile", Fake().onUpdateSpecificFlashRegionFromFile,
                         Record(handle, path), handle, path);
}

VX_UINT32 VEXAPI_UpdateAdapterFirmwareTableFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return Fake().Answer("VEXAPI_UpdateAdapterFirmwareTableFromFile", Fake().onUpdateAdapterFirmwareTableFromFile,
                         Record(handle, path), handle, path);
}

VX_UINT32 VEXAPI_UpdateAdapterPEPCfgFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return Fake().Answer("VEXAPI_UpdateAdapterPEPCfgFromFile", Fake().onUpdateAdapterPEPCfgFromFile,
                         Record(handle, path), handle, path);
}

VX_UINT32 VEXAPI_GetPersonalityType(VX_PORT_HANDLE* handle, unsigned char* personality) {
    return Fake().Answer("VEXAPI_GetPersonalityType", Fake().onGetPersonalityType, Record(handle, personality), handle,
                         personality);
}

VX_UINT32 VEXAPI_ChangePersonalityType(VX_PORT_HANDLE* handle, unsigned char personality) {
    return Fake().Answer("VEXAPI_ChangePersonalityType", Fake().onChangePersonalityType, Record(handle, personality),
                         handle, personality);
}

VX_UINT32 VEXAPI_CheckRowanPersonalityChangeOption(VX_PORT_HANDLE* handle) {
    return Fake().Answer("VEXAPI_CheckRowanPersonalityChangeOption", Fake().onCheckRowanPersonalityChangeOption,
                         Record(handle), handle);
}

VX_UINT32 VEXAPI_UpdateAdapterNVRAMFromFile(VX_PORT_HANDLE* handle, const char* path) {
    return Fake().Answer("VEXAPI_UpdateAdapterNVRAMFromFile", Fake().onUpdateAdapterNVRAMFromFile, Record(handle, path),
                         handle, path);
}

VX_UINT32 VEXAPI_GetAdapterAsicBoardTemperature(VX_PORT_HANDLE* handle, _VEXAPI_BoardThermalTemp* temperature) {
    return Fake().Answer("VEXAPI_GetAdapterAsicBoardTemperature", Fake().onGetAdapterAsicBoardTemperature,
                         Record(handle, temperature), handle, temperature);
}

VX_UINT32 VEXAPI_GetLockdownStatus(VX_PORT_HANDLE* handle, VEXAPI_LOCKDOWNINFO* lockdown) {
    return Fake().Answer("VEXAPI_GetLockdownStatus", Fake().onGetLockdownStatus, Record(handle, lockdown), handle,
                         lockdown);
}

VX_UINT32 VEXAPI_ResetDeviceStats(VX_PORT_HANDLE* handle) {
    return Fake().Answer("VEXAPI_ResetDeviceStats", Fake().onResetDeviceStats, Record(handle), handle);
}

VX_UINT32 VEXAPI_GetSFPData(VX_PORT_HANDLE* handle, void* buffer) {
    return Fake().Answer("VEXAPI_GetSFPData", Fake().onGetSFPData, Record(handle, buffer), handle, buffer);
}

VX_UINT32 VEXAPI_SfpModuleFirmwareUpdate(VX_PORT_HANDLE* handle, const char* path, VX_UINT32 option) {
    return Fake().Answer("VEXAPI_SfpModuleFirmwareUpdate", Fake().onSfpModuleFirmwareUpdate,
                         Record(handle, path, option), handle, path, option);
}

VX_UINT32 VEXAPI_GetVpd(VX_UINT32 word, VX_UINT32 reserved, void* buffer, VX_UINT32* size) {
    return Fake().Answer("VEXAPI_GetVpd", Fake().onGetVpd, Record(Word{word}, reserved, buffer, size), word, reserved,
                         buffer, size);
}

VX_UINT32 VEXAPI_SDGetFwDump2(VX_UINT32 word, VX_UINT32 reserved, void** dump, VX_UINT32* size) {
    return Fake().Answer("VEXAPI_SDGetFwDump2", Fake().onSDGetFwDump2, Record(Word{word}, reserved, dump, size), word,
                         reserved, dump, size);
}

VX_UINT32 VEXAPI_IsMezzAdapter(VX_PORT_HANDLE* handle, VX_UINT8* flag) {
    return Fake().Answer("VEXAPI_IsMezzAdapter", Fake().onIsMezzAdapter, Record(handle, flag), handle, flag);
}

VX_UINT32 VEXAPI_GetAdapterBeaconStatus(VX_PORT_HANDLE* handle, VEXAPI_BEACON_TYPE* state) {
    return Fake().Answer("VEXAPI_GetAdapterBeaconStatus", Fake().onGetAdapterBeaconStatus, Record(handle, state),
                         handle, state);
}

VX_UINT32 VEXAPI_UpdateAdapterBeaconStatus(VX_PORT_HANDLE* handle, VEXAPI_BEACON_TYPE state) {
    return Fake().Answer("VEXAPI_UpdateAdapterBeaconStatus", Fake().onUpdateAdapterBeaconStatus, Record(handle, state),
                         handle, state);
}

VX_UINT32 VEXAPI_GetHBAParamsInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters, VX_HBA_AUX* auxiliary) {
    return Fake().Answer("VEXAPI_GetHBAParamsInfo", Fake().onGetHBAParamsInfo, Record(handle, parameters, auxiliary),
                         handle, parameters, auxiliary);
}

VX_UINT32 VEXAPI_UpdateHBAParameters(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters) {
    return Fake().Answer("VEXAPI_UpdateHBAParameters", Fake().onUpdateHBAParameters, Record(handle, parameters), handle,
                         parameters);
}

VX_UINT32 VEXAPI_RestoreDefaultNVRAM(VX_PORT_HANDLE* handle) {
    return Fake().Answer("VEXAPI_RestoreDefaultNVRAM", Fake().onRestoreDefaultNVRAM, Record(handle), handle);
}

VX_UINT32 VEXAPI_SaveSingleAdapterNVRAMToFile(VX_PORT_HANDLE* handle, const char* path) {
    return Fake().Answer("VEXAPI_SaveSingleAdapterNVRAMToFile", Fake().onSaveSingleAdapterNVRAMToFile,
                         Record(handle, path), handle, path);
}

VX_UINT8 VEXAPI_GetBfsConfigMode() {
    return Fake().Answer("VEXAPI_GetBfsConfigMode", Fake().onGetBfsConfigMode, Record());
}

VX_UINT32 VEXAPI_SetBfsConfigMode(VX_UINT8 mode) {
    return Fake().Answer("VEXAPI_SetBfsConfigMode", Fake().onSetBfsConfigMode, Record(mode), mode);
}

VX_UINT32 VEXAPI_GetBootDeviceInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters, void* reserved) {
    return Fake().Answer("VEXAPI_GetBootDeviceInfo", Fake().onGetBootDeviceInfo, Record(handle, parameters, reserved),
                         handle, parameters, reserved);
}

VX_UINT32 VEXAPI_SetBootDeviceInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters) {
    return Fake().Answer("VEXAPI_SetBootDeviceInfo", Fake().onSetBootDeviceInfo, Record(handle, parameters), handle,
                         parameters);
}

VX_UINT32 VEXAPI_GetNVMeBootDeviceEntries(VX_PORT_HANDLE* handle, _VEXAPI_FcNVMeBootParams* parameters) {
    return Fake().Answer("VEXAPI_GetNVMeBootDeviceEntries", Fake().onGetNVMeBootDeviceEntries,
                         Record(handle, parameters), handle, parameters);
}

VX_UINT32 VEXAPI_SetNVMeBootDeviceEntries(VX_PORT_HANDLE* handle, _VEXAPI_FcNVMeBootParams* parameters) {
    return Fake().Answer("VEXAPI_SetNVMeBootDeviceEntries", Fake().onSetNVMeBootDeviceEntries,
                         Record(handle, parameters), handle, parameters);
}

VX_UINT32 VEXAPI_FCGetBBCSupportInfoEx(VX_PORT_HANDLE* handle, VX_UINT8* status, VX_UINT8* configured, VX_UINT8* state,
                                       VX_UINT8* negotiated, char* reason, VX_UINT32 reasonSize) {
    return Fake().Answer("VEXAPI_FCGetBBCSupportInfoEx", Fake().onFCGetBBCSupportInfoEx,
                         Record(handle, status, configured, state, negotiated, reason, reasonSize), handle, status,
                         configured, state, negotiated, reason, reasonSize);
}

VX_UINT32 VEXAPI_FCSetBBCSupportInfo(VX_PORT_HANDLE* handle, VX_UINT8 status, VX_UINT8 configured) {
    return Fake().Answer("VEXAPI_FCSetBBCSupportInfo", Fake().onFCSetBBCSupportInfo, Record(handle, status, configured),
                         handle, status, configured);
}

VX_UINT32 VEXAPI_FCGetFECSupportInfo(VX_PORT_HANDLE* handle, VX_UINT32* status) {
    return Fake().Answer("VEXAPI_FCGetFECSupportInfo", Fake().onFCGetFECSupportInfo, Record(handle, status), handle,
                         status);
}

VX_UINT32 VEXAPI_FCSetFECSupportInfo(VX_PORT_HANDLE* handle, VX_UINT32 status) {
    return Fake().Answer("VEXAPI_FCSetFECSupportInfo", Fake().onFCSetFECSupportInfo, Record(handle, status), handle,
                         status);
}

VX_UINT32 VEXAPI_ResetFECCounters(VX_PORT_HANDLE* handle) {
    return Fake().Answer("VEXAPI_ResetFECCounters", Fake().onResetFECCounters, Record(handle), handle);
}

VX_UINT32 VEXAPI_GetFWPrivateStats(VX_PORT_HANDLE* handle, _VEXAPI_FWPRIVATESTATSEntry** entries, VX_UINT32* count) {
    return Fake().Answer("VEXAPI_GetFWPrivateStats", Fake().onGetFWPrivateStats, Record(handle, entries, count), handle,
                         entries, count);
}

VX_UINT32 VEXAPI_IsFWCMFeatureEnabled(VX_PORT_HANDLE* handle, VX_UINT8* enabled) {
    return Fake().Answer("VEXAPI_IsFWCMFeatureEnabled", Fake().onIsFWCMFeatureEnabled, Record(handle, enabled), handle,
                         enabled);
}

VX_UINT32 VEXAPI_GetSCMRStatisticsList(VX_PORT_HANDLE* handle, _VEXAPI_SANCONGTMGMTV2** list) {
    return Fake().Answer("VEXAPI_GetSCMRStatisticsList", Fake().onGetSCMRStatisticsList, Record(handle, list), handle,
                         list);
}

VX_UINT32 VEXAPI_FreeSCMRStatisticsList(_VEXAPI_SANCONGTMGMTV2* list) {
    return Fake().Answer("VEXAPI_FreeSCMRStatisticsList", Fake().onFreeSCMRStatisticsList, Record(list), list);
}

VX_UINT32 VEXAPI_SANCongMgmtResetStatistics(VX_PORT_HANDLE* handle) {
    return Fake().Answer("VEXAPI_SANCongMgmtResetStatistics", Fake().onSANCongMgmtResetStatistics, Record(handle),
                         handle);
}

VX_UINT32 VEXAPI_GetSCMRProfile(VX_PORT_HANDLE* handle, _VEXAPI_SCMRProfile* profile) {
    return Fake().Answer("VEXAPI_GetSCMRProfile", Fake().onGetSCMRProfile, Record(handle, profile), handle, profile);
}

VX_UINT32 VEXAPI_SetSCMRProfile(VX_PORT_HANDLE* handle, _VEXAPI_SCMRProfile* profile) {
    return Fake().Answer("VEXAPI_SetSCMRProfile", Fake().onSetSCMRProfile, Record(handle, profile), handle, profile);
}

_VEXAPI_LoopbackTestResult VEXAPI_DiagnosticsLoopBackTest(VX_PORT_HANDLE* handle, DiagTestParams* parameters) {
    return Fake().Answer("VEXAPI_DiagnosticsLoopBackTest", Fake().onDiagnosticsLoopBackTest, Record(handle, parameters),
                         handle, parameters);
}

_VEXAPI_ReadWriteBufferTestResult* VEXAPI_DiagnosticsReadWriteBufferTest(VX_PORT_HANDLE* handle,
                                                                         DiagTestParams* parameters) {
    return Fake().Answer("VEXAPI_DiagnosticsReadWriteBufferTest", Fake().onDiagnosticsReadWriteBufferTest,
                         Record(handle, parameters), handle, parameters);
}

VX_UINT32 VEXAPI_FreeRWBufferTestResultList(_VEXAPI_ReadWriteBufferTestResult* list) {
    return Fake().Answer("VEXAPI_FreeRWBufferTestResultList", Fake().onFreeRWBufferTestResultList, Record(list), list);
}

VX_UINT32 VEXAPI_DiagnosticsFCPingTest(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count, VX_UINT32 stopOnError,
                                       VX_UINT32* output, void* buffer, VX_UINT32 size) {
    return Fake().Answer("VEXAPI_DiagnosticsFCPingTest", Fake().onDiagnosticsFCPingTest,
                         Record(handle, name, count, stopOnError, output, buffer, size), handle, name, count,
                         stopOnError, output, buffer, size);
}

VX_UINT32 VEXAPI_DiagnosticsEchoElsTest(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count,
                                        VX_UINT32 stopOnError, VX_UINT32 destinationType,
                                        _VEXAPI_ECHO_RESULTS* result) {
    return Fake().Answer("VEXAPI_DiagnosticsEchoElsTest", Fake().onDiagnosticsEchoElsTest,
                         Record(handle, name, count, stopOnError, destinationType, result), handle, name, count,
                         stopOnError, destinationType, result);
}

VX_UINT32 VEXAPI_DiagnosticsCTCommand(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count, VX_UINT32 stopOnError,
                                      VX_UINT32* output, void* buffer, VX_UINT32 size, VX_UINT32 testType) {
    return Fake().Answer("VEXAPI_DiagnosticsCTCommand", Fake().onDiagnosticsCTCommand,
                         Record(handle, name, count, stopOnError, output, buffer, size, testType), handle, name, count,
                         stopOnError, output, buffer, size, testType);
}

VX_UINT32 VEXAPI_CheckAdapterDPortOption(VX_PORT_HANDLE* handle) {
    return Fake().Answer("VEXAPI_CheckAdapterDPortOption", Fake().onCheckAdapterDPortOption, Record(handle), handle);
}

VX_UINT32 VEXAPI_ConfigureAdapterDPortSettings(VX_PORT_HANDLE* handle, VX_UINT32 enable, VX_UINT32 reserved) {
    return Fake().Answer("VEXAPI_ConfigureAdapterDPortSettings", Fake().onConfigureAdapterDPortSettings,
                         Record(handle, enable, reserved), handle, enable, reserved);
}

_VEXAPI_DiagnosticsDPortResult VEXAPI_DiagnosticDPortTest(VX_PORT_HANDLE* handle,
                                                          _VEXAPI_DiagnosticsDPortResult* result) {
    return Fake().Answer("VEXAPI_DiagnosticDPortTest", Fake().onDiagnosticDPortTest, Record(handle, result), handle,
                         result);
}

VX_UINT32 VEXAPI_DiagnosticDPortTestV2(VX_PORT_HANDLE* handle, _VEXAPI_DiagnosticsDPortResult* result) {
    return Fake().Answer("VEXAPI_DiagnosticDPortTestV2", Fake().onDiagnosticDPortTestV2, Record(handle, result), handle,
                         result);
}

VX_UINT32 VEXAPI_DiagnosticsRDPTest(VX_PORT_HANDLE* handle, void* buffer, VX_UINT32* size) {
    return Fake().Answer("VEXAPI_DiagnosticsRDPTest", Fake().onDiagnosticsRDPTest, Record(handle, buffer, size), handle,
                         buffer, size);
}

VX_UINT32 VEXAPI_GetTargetLinkSpeed(VX_PORT_HANDLE* handle, VX_UINT16 targetNumber, VX_UINT32* speed) {
    return Fake().Answer("VEXAPI_GetTargetLinkSpeed", Fake().onGetTargetLinkSpeed, Record(handle, targetNumber, speed),
                         handle, targetNumber, speed);
}

VX_UINT32 VEXAPI_SetTargetLinkSpeed(VX_PORT_HANDLE* handle, VX_UINT16 targetNumber, VX_UINT32 speed) {
    return Fake().Answer("VEXAPI_SetTargetLinkSpeed", Fake().onSetTargetLinkSpeed, Record(handle, targetNumber, speed),
                         handle, targetNumber, speed);
}

VX_UINT32 VEXAPI_GetPortStatisticsFC(VX_UINT32 word, VX_UINT32 reserved, VX_PORT_SELECTOR* selector,
                                     __STATISTICS* statistics) {
    return Fake().Answer("VEXAPI_GetPortStatisticsFC", Fake().onGetPortStatisticsFC,
                         Record(Word{word}, reserved, selector, statistics), word, reserved, selector, statistics);
}
