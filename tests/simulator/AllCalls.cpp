#include "AllCalls.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr char targetName[] = "50:06:0e:80:00:00:00:01";
constexpr VX_UINT8 targetBytes[8] = {0x50, 0x06, 0x0e, 0x80, 0, 0, 0, 1};

/// Calls a function that fills a zeroed record.
template <class Record> auto fills(VX_UINT32 (*function)(VX_PORT_HANDLE*, Record*)) {
    return [function](const CallArguments& with) {
        Record record{};
        return function(with.handle, &record);
    };
}

/// Calls a function that takes nothing but a handle.
auto plain(VX_UINT32 (*function)(VX_PORT_HANDLE*)) {
    return [function](const CallArguments& with) { return function(with.handle); };
}

/// Calls a function that takes a file.
auto takesFile(VX_UINT32 (*function)(VX_PORT_HANDLE*, const char*)) {
    return [function](const CallArguments& with) { return function(with.handle, (with.folder + "/missing").c_str()); };
}

/// Calls a function that takes a record.
template <class Record> auto takes(VX_UINT32 (*function)(VX_PORT_HANDLE*, Record*)) {
    return fills(function);
}

VX_UINT32 verdictOf(const char* status) {
    return std::strcmp(status, "Success") == 0 ? 0 : 1;
}

} // namespace

const std::vector<NamedCall>& allCalls() {
    using enum NamedCall::Result;
    using With = const CallArguments&;
    static const std::vector<NamedCall> calls = {
        {"VEXAPI_SetToolID", Status, [](With) { return VEXAPI_SetToolID(11); }},
        {"VEXAPI_SetToolVersion", Status, [](With) { return VEXAPI_SetToolVersion(1, 3, 6, 0); }},
        {"VEXAPI_GetAdapterList", Pointer, [](With) { return VEXAPI_GetAdapterList() == nullptr ? 1U : 0U; }},
        {"VEXAPI_IsRebootRequired", Status,
         [](With) {
             VX_UINT32 required = 1;
             return VEXAPI_IsRebootRequired(&required);
         }},
        {"VEXAPI_GetFlashComponentVersion", Status, fills(VEXAPI_GetFlashComponentVersion)},
        {"VEXAPI_GetAdapterFlashMemoBlock", Status, fills(VEXAPI_GetAdapterFlashMemoBlock)},
        {"VEXAPI_doOptionROMUpdate", Status,
         [](With with) { return VEXAPI_doOptionROMUpdate(with.handle, (with.folder + "/missing").c_str(), 0); }},
        {"VEXAPI_UpdateSpecificFlashRegionFromFile", Status, takesFile(VEXAPI_UpdateSpecificFlashRegionFromFile)},
        {"VEXAPI_UpdateAdapterFirmwareTableFromFile", Status, takesFile(VEXAPI_UpdateAdapterFirmwareTableFromFile)},
        {"VEXAPI_UpdateAdapterPEPCfgFromFile", Status, takesFile(VEXAPI_UpdateAdapterPEPCfgFromFile)},
        {"VEXAPI_GetPersonalityType", Status, fills(VEXAPI_GetPersonalityType)},
        {"VEXAPI_ChangePersonalityType", Status,
         [](With with) { return VEXAPI_ChangePersonalityType(with.handle, 1); }},
        {"VEXAPI_CheckRowanPersonalityChangeOption", Value, plain(VEXAPI_CheckRowanPersonalityChangeOption)},
        {"VEXAPI_UpdateAdapterNVRAMFromFile", Status, takesFile(VEXAPI_UpdateAdapterNVRAMFromFile)},
        {"VEXAPI_GetAdapterAsicBoardTemperature", Status, fills(VEXAPI_GetAdapterAsicBoardTemperature)},
        {"VEXAPI_GetLockdownStatus", Status, fills(VEXAPI_GetLockdownStatus)},
        {"VEXAPI_ResetDeviceStats", Status, plain(VEXAPI_ResetDeviceStats)},
        {"VEXAPI_GetSFPData", Status,
         [](With with) {
             _VEXAPI_SFP_DATA data{};
             return VEXAPI_GetSFPData(with.handle, &data);
         }},
        {"VEXAPI_SfpModuleFirmwareUpdate", Status,
         [](With with) { return VEXAPI_SfpModuleFirmwareUpdate(with.handle, (with.folder + "/missing").c_str(), 2); }},
        {"VEXAPI_GetVpd", Status,
         [](With with) {
             char buffer[1024] = {};
             VX_UINT32 size = sizeof buffer;
             return VEXAPI_GetVpd(with.word, 0, buffer, &size);
         }},
        {"VEXAPI_SDGetFwDump2", Status,
         [](With with) {
             void* dump = nullptr;
             VX_UINT32 size = 0;
             const VX_UINT32 status = VEXAPI_SDGetFwDump2(with.word, 0, &dump, &size);
             std::free(dump);
             return status;
         }},
        {"VEXAPI_IsMezzAdapter", Status, fills(VEXAPI_IsMezzAdapter)},
        {"VEXAPI_GetAdapterBeaconStatus", Status, fills(VEXAPI_GetAdapterBeaconStatus)},
        {"VEXAPI_UpdateAdapterBeaconStatus", Status,
         [](With with) { return VEXAPI_UpdateAdapterBeaconStatus(with.handle, 1); }},
        {"VEXAPI_GetHBAParamsInfo", Status,
         [](With with) {
             _VEXAPI_HBAParameters parameters{};
             VX_HBA_AUX auxiliary{};
             return VEXAPI_GetHBAParamsInfo(with.handle, &parameters, &auxiliary);
         }},
        {"VEXAPI_UpdateHBAParameters", Status, takes(VEXAPI_UpdateHBAParameters)},
        {"VEXAPI_RestoreDefaultNVRAM", Status, plain(VEXAPI_RestoreDefaultNVRAM)},
        {"VEXAPI_SaveSingleAdapterNVRAMToFile", Status,
         [](With with) { return VEXAPI_SaveSingleAdapterNVRAMToFile(with.handle, (with.folder + "/nvram").c_str()); }},
        {"VEXAPI_GetBfsConfigMode", Value, [](With) { return VX_UINT32{VEXAPI_GetBfsConfigMode()}; }},
        {"VEXAPI_SetBfsConfigMode", Status, [](With) { return VEXAPI_SetBfsConfigMode(2); }},
        {"VEXAPI_GetBootDeviceInfo", Status,
         [](With with) {
             _VEXAPI_HBAParameters parameters{};
             return VEXAPI_GetBootDeviceInfo(with.handle, &parameters, nullptr);
         }},
        {"VEXAPI_SetBootDeviceInfo", Status, takes(VEXAPI_SetBootDeviceInfo)},
        {"VEXAPI_GetNVMeBootDeviceEntries", Status, fills(VEXAPI_GetNVMeBootDeviceEntries)},
        {"VEXAPI_SetNVMeBootDeviceEntries", Status, takes(VEXAPI_SetNVMeBootDeviceEntries)},
        {"VEXAPI_FCGetBBCSupportInfoEx", Status,
         [](With with) {
             VX_UINT8 out[4] = {};
             char reason[64] = {};
             return VEXAPI_FCGetBBCSupportInfoEx(with.handle, out, out + 1, out + 2, out + 3, reason, sizeof reason);
         }},
        {"VEXAPI_FCSetBBCSupportInfo", Status, [](With with) { return VEXAPI_FCSetBBCSupportInfo(with.handle, 1, 5); }},
        {"VEXAPI_FCGetFECSupportInfo", Status, fills(VEXAPI_FCGetFECSupportInfo)},
        {"VEXAPI_FCSetFECSupportInfo", Status, [](With with) { return VEXAPI_FCSetFECSupportInfo(with.handle, 1); }},
        {"VEXAPI_ResetFECCounters", Status, plain(VEXAPI_ResetFECCounters)},
        {"VEXAPI_GetFWPrivateStats", Status,
         [](With with) {
             _VEXAPI_FWPRIVATESTATSEntry* entries = nullptr;
             VX_UINT32 count = 0;
             const VX_UINT32 status = VEXAPI_GetFWPrivateStats(with.handle, &entries, &count);
             std::free(entries);
             return status;
         }},
        {"VEXAPI_IsFWCMFeatureEnabled", Status, fills(VEXAPI_IsFWCMFeatureEnabled)},
        {"VEXAPI_GetSCMRStatisticsList", Status,
         [](With with) {
             _VEXAPI_SANCONGTMGMTV2* list = nullptr;
             return VEXAPI_GetSCMRStatisticsList(with.handle, &list);
         }},
        {"VEXAPI_FreeSCMRStatisticsList", Status,
         [](With with) {
             _VEXAPI_SANCONGTMGMTV2* list = nullptr;
             VEXAPI_GetSCMRStatisticsList(with.handle, &list);
             return VEXAPI_FreeSCMRStatisticsList(list);
         }},
        {"VEXAPI_SANCongMgmtResetStatistics", Status, plain(VEXAPI_SANCongMgmtResetStatistics)},
        {"VEXAPI_GetSCMRProfile", Status, fills(VEXAPI_GetSCMRProfile)},
        {"VEXAPI_SetSCMRProfile", Status, takes(VEXAPI_SetSCMRProfile)},
        {"VEXAPI_DiagnosticsLoopBackTest", Record,
         [](With with) {
             DiagTestParams parameters{};
             return verdictOf(VEXAPI_DiagnosticsLoopBackTest(with.handle, &parameters).TestStatus);
         }},
        {"VEXAPI_DiagnosticsReadWriteBufferTest", Record,
         [](With with) {
             DiagTestParams parameters{};
             auto* list = VEXAPI_DiagnosticsReadWriteBufferTest(with.handle, &parameters);
             return list == nullptr ? 1U : verdictOf(list->TestStatus);
         }},
        {"VEXAPI_FreeRWBufferTestResultList", Status,
         [](With with) {
             DiagTestParams parameters{};
             return VEXAPI_FreeRWBufferTestResultList(VEXAPI_DiagnosticsReadWriteBufferTest(with.handle, &parameters));
         }},
        {"VEXAPI_DiagnosticsFCPingTest", Status,
         [](With with) {
             VX_UINT32 out = 0;
             char buffer[256] = {};
             return VEXAPI_DiagnosticsFCPingTest(with.handle, targetName, 3, 1, &out, buffer, sizeof buffer);
         }},
        {"VEXAPI_DiagnosticsEchoElsTest", Status,
         [](With with) {
             _VEXAPI_ECHO_RESULTS result{};
             return VEXAPI_DiagnosticsEchoElsTest(with.handle, targetName, 1, 0, 2, &result);
         }},
        {"VEXAPI_DiagnosticsCTCommand", Status,
         [](With with) {
             VX_UINT32 out = 0;
             char buffer[256] = {};
             return VEXAPI_DiagnosticsCTCommand(with.handle, targetName, 3, 1, &out, buffer, sizeof buffer, 2);
         }},
        {"VEXAPI_CheckAdapterDPortOption", Value, plain(VEXAPI_CheckAdapterDPortOption)},
        {"VEXAPI_ConfigureAdapterDPortSettings", Status,
         [](With with) { return VEXAPI_ConfigureAdapterDPortSettings(with.handle, 1, 0); }},
        {"VEXAPI_DiagnosticDPortTest", Record,
         [](With with) {
             _VEXAPI_DiagnosticsDPortResult in{};
             const _VEXAPI_DiagnosticsDPortResult result = VEXAPI_DiagnosticDPortTest(with.handle, &in);
             return result.Mbx1 == 0x4005 ? 1U : 0U;
         }},
        {"VEXAPI_DiagnosticDPortTestV2", Status, fills(VEXAPI_DiagnosticDPortTestV2)},
        {"VEXAPI_DiagnosticsRDPTest", Status,
         [](With with) {
             char buffer[508] = {};
             VX_UINT32 size = sizeof buffer;
             return VEXAPI_DiagnosticsRDPTest(with.handle, buffer, &size);
         }},
        {"VEXAPI_GetTargetLinkSpeed", Status,
         [](With with) {
             VX_UINT32 speed = 0;
             return VEXAPI_GetTargetLinkSpeed(with.handle, 0, &speed);
         }},
        {"VEXAPI_SetTargetLinkSpeed", Status, [](With with) { return VEXAPI_SetTargetLinkSpeed(with.handle, 0, 22); }},
        {"VEXAPI_GetPortStatisticsFC", Status,
         [](With with) {
             VX_PORT_SELECTOR selector{2, {}};
             std::memcpy(selector.PortName, targetBytes, sizeof targetBytes);
             __STATISTICS statistics{};
             return VEXAPI_GetPortStatisticsFC(with.word, 0, &selector, &statistics);
         }},
    };
    return calls;
}
