#include "AllCalls.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr char TARGET_NAME[] = "50:06:0e:80:00:00:00:01";
constexpr VX_UINT8 TARGET_BYTES[8] = {0x50, 0x06, 0x0e, 0x80, 0, 0, 0, 1};

/// Calls a function that fills a zeroed record.
template <class Record> auto Fills(VX_UINT32 (*function)(VX_PORT_HANDLE*, Record*)) {
    return [function](const CallArguments& with) {
        Record record{};
        return function(with.handle, &record);
    };
}

/// Calls a function that takes nothing but a handle.
auto Plain(VX_UINT32 (*function)(VX_PORT_HANDLE*)) {
    return [function](const CallArguments& with) { return function(with.handle); };
}

/// Calls a function that takes a file.
auto TakesFile(VX_UINT32 (*function)(VX_PORT_HANDLE*, const char*)) {
    return [function](const CallArguments& with) { return function(with.handle, (with.folder + "/missing").c_str()); };
}

/// Calls a function that takes a record.
template <class Record> auto Takes(VX_UINT32 (*function)(VX_PORT_HANDLE*, Record*)) {
    return Fills(function);
}

VX_UINT32 VerdictOf(const char* status) {
    return std::strcmp(status, "Success") == 0 ? 0 : 1;
}

} // namespace

const std::vector<NamedCall>& AllCalls() {
    using enum NamedCall::Result;
    using With = const CallArguments&;
    static const std::vector<NamedCall> calls = {
        {"VEXAPI_SetToolID", STATUS, [](With) { return VEXAPI_SetToolID(11); }},
        {"VEXAPI_SetToolVersion", STATUS, [](With) { return VEXAPI_SetToolVersion(1, 3, 6, 0); }},
        {"VEXAPI_GetAdapterList", POINTER, [](With) { return VEXAPI_GetAdapterList() == nullptr ? 1U : 0U; }},
        {"VEXAPI_IsRebootRequired", STATUS,
         [](With) {
             VX_UINT32 required = 1;
             return VEXAPI_IsRebootRequired(&required);
         }},
        {"VEXAPI_GetFlashComponentVersion", STATUS, Fills(VEXAPI_GetFlashComponentVersion)},
        {"VEXAPI_GetAdapterFlashMemoBlock", STATUS, Fills(VEXAPI_GetAdapterFlashMemoBlock)},
        {"VEXAPI_doOptionROMUpdate", STATUS,
         [](With with) { return VEXAPI_doOptionROMUpdate(with.handle, (with.folder + "/missing").c_str(), 0); }},
        {"VEXAPI_UpdateSpecificFlashRegionFromFile", STATUS, TakesFile(VEXAPI_UpdateSpecificFlashRegionFromFile)},
        {"VEXAPI_UpdateAdapterFirmwareTableFromFile", STATUS, TakesFile(VEXAPI_UpdateAdapterFirmwareTableFromFile)},
        {"VEXAPI_UpdateAdapterPEPCfgFromFile", STATUS, TakesFile(VEXAPI_UpdateAdapterPEPCfgFromFile)},
        {"VEXAPI_GetPersonalityType", STATUS, Fills(VEXAPI_GetPersonalityType)},
        {"VEXAPI_ChangePersonalityType", STATUS,
         [](With with) { return VEXAPI_ChangePersonalityType(with.handle, 1); }},
        {"VEXAPI_CheckRowanPersonalityChangeOption", VALUE, Plain(VEXAPI_CheckRowanPersonalityChangeOption)},
        {"VEXAPI_UpdateAdapterNVRAMFromFile", STATUS, TakesFile(VEXAPI_UpdateAdapterNVRAMFromFile)},
        {"VEXAPI_GetAdapterAsicBoardTemperature", STATUS, Fills(VEXAPI_GetAdapterAsicBoardTemperature)},
        {"VEXAPI_GetLockdownStatus", STATUS, Fills(VEXAPI_GetLockdownStatus)},
        {"VEXAPI_ResetDeviceStats", STATUS, Plain(VEXAPI_ResetDeviceStats)},
        {"VEXAPI_GetSFPData", STATUS,
         [](With with) {
             _VEXAPI_SFP_DATA data{};
             return VEXAPI_GetSFPData(with.handle, &data);
         }},
        {"VEXAPI_SfpModuleFirmwareUpdate", STATUS,
         [](With with) { return VEXAPI_SfpModuleFirmwareUpdate(with.handle, (with.folder + "/missing").c_str(), 2); }},
        {"VEXAPI_GetVpd", STATUS,
         [](With with) {
             char buffer[1024] = {};
             VX_UINT32 size = sizeof buffer;
             return VEXAPI_GetVpd(with.word, 0, buffer, &size);
         }},
        {"VEXAPI_SDGetFwDump2", STATUS,
         [](With with) {
             void* dump = nullptr;
             VX_UINT32 size = 0;
             const VX_UINT32 status = VEXAPI_SDGetFwDump2(with.word, 0, &dump, &size);
             std::free(dump);
             return status;
         }},
        {"VEXAPI_IsMezzAdapter", STATUS, Fills(VEXAPI_IsMezzAdapter)},
        {"VEXAPI_GetAdapterBeaconStatus", STATUS, Fills(VEXAPI_GetAdapterBeaconStatus)},
        {"VEXAPI_UpdateAdapterBeaconStatus", STATUS,
         [](With with) { return VEXAPI_UpdateAdapterBeaconStatus(with.handle, 1); }},
        {"VEXAPI_GetHBAParamsInfo", STATUS,
         [](With with) {
             _VEXAPI_HBAParameters parameters{};
             VX_HBA_AUX auxiliary{};
             return VEXAPI_GetHBAParamsInfo(with.handle, &parameters, &auxiliary);
         }},
        {"VEXAPI_UpdateHBAParameters", STATUS, Takes(VEXAPI_UpdateHBAParameters)},
        {"VEXAPI_RestoreDefaultNVRAM", STATUS, Plain(VEXAPI_RestoreDefaultNVRAM)},
        {"VEXAPI_SaveSingleAdapterNVRAMToFile", STATUS,
         [](With with) { return VEXAPI_SaveSingleAdapterNVRAMToFile(with.handle, (with.folder + "/nvram").c_str()); }},
        {"VEXAPI_GetBfsConfigMode", VALUE, [](With) { return VX_UINT32{VEXAPI_GetBfsConfigMode()}; }},
        {"VEXAPI_SetBfsConfigMode", STATUS, [](With) { return VEXAPI_SetBfsConfigMode(2); }},
        {"VEXAPI_GetBootDeviceInfo", STATUS,
         [](With with) {
             _VEXAPI_HBAParameters parameters{};
             return VEXAPI_GetBootDeviceInfo(with.handle, &parameters, nullptr);
         }},
        {"VEXAPI_SetBootDeviceInfo", STATUS, Takes(VEXAPI_SetBootDeviceInfo)},
        {"VEXAPI_GetNVMeBootDeviceEntries", STATUS, Fills(VEXAPI_GetNVMeBootDeviceEntries)},
        {"VEXAPI_SetNVMeBootDeviceEntries", STATUS, Takes(VEXAPI_SetNVMeBootDeviceEntries)},
        {"VEXAPI_FCGetBBCSupportInfoEx", STATUS,
         [](With with) {
             VX_UINT8 out[4] = {};
             char reason[64] = {};
             return VEXAPI_FCGetBBCSupportInfoEx(with.handle, out, out + 1, out + 2, out + 3, reason, sizeof reason);
         }},
        {"VEXAPI_FCSetBBCSupportInfo", STATUS, [](With with) { return VEXAPI_FCSetBBCSupportInfo(with.handle, 1, 5); }},
        {"VEXAPI_FCGetFECSupportInfo", STATUS, Fills(VEXAPI_FCGetFECSupportInfo)},
        {"VEXAPI_FCSetFECSupportInfo", STATUS, [](With with) { return VEXAPI_FCSetFECSupportInfo(with.handle, 1); }},
        {"VEXAPI_ResetFECCounters", STATUS, Plain(VEXAPI_ResetFECCounters)},
        {"VEXAPI_GetFWPrivateStats", STATUS,
         [](With with) {
             _VEXAPI_FWPRIVATESTATSEntry* entries = nullptr;
             VX_UINT32 count = 0;
             const VX_UINT32 status = VEXAPI_GetFWPrivateStats(with.handle, &entries, &count);
             std::free(entries);
             return status;
         }},
        {"VEXAPI_IsFWCMFeatureEnabled", STATUS, Fills(VEXAPI_IsFWCMFeatureEnabled)},
        {"VEXAPI_GetSCMRStatisticsList", STATUS,
         [](With with) {
             _VEXAPI_SANCONGTMGMTV2* list = nullptr;
             return VEXAPI_GetSCMRStatisticsList(with.handle, &list);
         }},
        {"VEXAPI_FreeSCMRStatisticsList", STATUS,
         [](With with) {
             _VEXAPI_SANCONGTMGMTV2* list = nullptr;
             VEXAPI_GetSCMRStatisticsList(with.handle, &list);
             return VEXAPI_FreeSCMRStatisticsList(list);
         }},
        {"VEXAPI_SANCongMgmtResetStatistics", STATUS, Plain(VEXAPI_SANCongMgmtResetStatistics)},
        {"VEXAPI_GetSCMRProfile", STATUS, Fills(VEXAPI_GetSCMRProfile)},
        {"VEXAPI_SetSCMRProfile", STATUS, Takes(VEXAPI_SetSCMRProfile)},
        {"VEXAPI_DiagnosticsLoopBackTest", RECORD,
         [](With with) {
             DiagTestParams parameters{};
             return VerdictOf(VEXAPI_DiagnosticsLoopBackTest(with.handle, &parameters).TestStatus);
         }},
        {"VEXAPI_DiagnosticsReadWriteBufferTest", RECORD,
         [](With with) {
             DiagTestParams parameters{};
             auto* list = VEXAPI_DiagnosticsReadWriteBufferTest(with.handle, &parameters);
             return list == nullptr ? 1U : VerdictOf(list->TestStatus);
         }},
        {"VEXAPI_FreeRWBufferTestResultList", STATUS,
         [](With with) {
             DiagTestParams parameters{};
             return VEXAPI_FreeRWBufferTestResultList(VEXAPI_DiagnosticsReadWriteBufferTest(with.handle, &parameters));
         }},
        {"VEXAPI_DiagnosticsFCPingTest", STATUS,
         [](With with) {
             VX_UINT32 out = 0;
             char buffer[256] = {};
             return VEXAPI_DiagnosticsFCPingTest(with.handle, TARGET_NAME, 3, 1, &out, buffer, sizeof buffer);
         }},
        {"VEXAPI_DiagnosticsEchoElsTest", STATUS,
         [](With with) {
             _VEXAPI_ECHO_RESULTS result{};
             return VEXAPI_DiagnosticsEchoElsTest(with.handle, TARGET_NAME, 1, 0, 2, &result);
         }},
        {"VEXAPI_DiagnosticsCTCommand", STATUS,
         [](With with) {
             VX_UINT32 out = 0;
             char buffer[256] = {};
             return VEXAPI_DiagnosticsCTCommand(with.handle, TARGET_NAME, 3, 1, &out, buffer, sizeof buffer, 2);
         }},
        {"VEXAPI_CheckAdapterDPortOption", VALUE, Plain(VEXAPI_CheckAdapterDPortOption)},
        {"VEXAPI_ConfigureAdapterDPortSettings", STATUS,
         [](With with) { return VEXAPI_ConfigureAdapterDPortSettings(with.handle, 1, 0); }},
        {"VEXAPI_DiagnosticDPortTest", RECORD,
         [](With with) {
             _VEXAPI_DiagnosticsDPortResult in{};
             const _VEXAPI_DiagnosticsDPortResult result = VEXAPI_DiagnosticDPortTest(with.handle, &in);
             return result.Mbx1 == 0x4005 ? 1U : 0U;
         }},
        {"VEXAPI_DiagnosticDPortTestV2", STATUS, Fills(VEXAPI_DiagnosticDPortTestV2)},
        {"VEXAPI_DiagnosticsRDPTest", STATUS,
         [](With with) {
             char buffer[508] = {};
             VX_UINT32 size = sizeof buffer;
             return VEXAPI_DiagnosticsRDPTest(with.handle, buffer, &size);
         }},
        {"VEXAPI_GetTargetLinkSpeed", STATUS,
         [](With with) {
             VX_UINT32 speed = 0;
             return VEXAPI_GetTargetLinkSpeed(with.handle, 0, &speed);
         }},
        {"VEXAPI_SetTargetLinkSpeed", STATUS, [](With with) { return VEXAPI_SetTargetLinkSpeed(with.handle, 0, 22); }},
        {"VEXAPI_GetPortStatisticsFC", STATUS,
         [](With with) {
             VX_PORT_SELECTOR selector{2, {}};
             std::memcpy(selector.PortName, TARGET_BYTES, sizeof TARGET_BYTES);
             __STATISTICS statistics{};
             return VEXAPI_GetPortStatisticsFC(with.word, 0, &selector, &statistics);
         }},
        {"VEXAPI_ExtSetScope", STATUS, [](With) { return VEXAPI_ExtSetScope(nullptr); }, true},
        {"VEXAPI_ExtSetMessageHandler", STATUS, [](With) { return VEXAPI_ExtSetMessageHandler(nullptr, nullptr); },
         true},
        {"VEXAPI_ExtGetPort", STATUS,
         [](With with) {
             auto record = Sized<VEXAPI_EXT_PORT>();
             return VEXAPI_ExtGetPort(with.handle, &record);
         }},
        {"VEXAPI_ExtGetTarget", STATUS,
         [](With with) {
             auto record = Sized<VEXAPI_EXT_TARGET>();
             return VEXAPI_ExtGetTarget(with.handle, with.target, &record);
         }},
        {"VEXAPI_ExtGetLun", STATUS,
         [](With with) {
             auto record = Sized<VEXAPI_EXT_LUN>();
             const auto* lun = with.target == nullptr ? nullptr : with.target->pLunList;
             return VEXAPI_ExtGetLun(with.handle, with.target, lun, &record);
         }},
        {"VEXAPI_ExtGetCounters", STATUS,
         [](With with) {
             VX_UINT32 count = 0;
             return VEXAPI_ExtGetCounters(with.handle, nullptr, nullptr, &count);
         }},
    };
    return calls;
}
