#include "caller/Functions.h"

#include <algorithm>

namespace sim {
namespace {

constexpr std::string_view NAMES[] = {
    "VEXAPI_Initialize",
    "VEXAPI_SetToolID",
    "VEXAPI_SetToolVersion",
    "VEXAPI_Uninitialize",
    "VEXAPI_GetAdapterList",
    "VEXAPI_IsRebootRequired",
    "VEXAPI_GetFlashComponentVersion",
    "VEXAPI_GetAdapterFlashMemoBlock",
    "VEXAPI_doOptionROMUpdate",
    "VEXAPI_UpdateSpecificFlashRegionFromFile",
    "VEXAPI_UpdateAdapterFirmwareTableFromFile",
    "VEXAPI_UpdateAdapterPEPCfgFromFile",
    "VEXAPI_GetPersonalityType",
    "VEXAPI_ChangePersonalityType",
    "VEXAPI_CheckRowanPersonalityChangeOption",
    "VEXAPI_UpdateAdapterNVRAMFromFile",
    "VEXAPI_GetAdapterAsicBoardTemperature",
    "VEXAPI_GetLockdownStatus",
    "VEXAPI_ResetDeviceStats",
    "VEXAPI_GetSFPData",
    "VEXAPI_SfpModuleFirmwareUpdate",
    "VEXAPI_GetVpd",
    "VEXAPI_SDGetFwDump2",
    "VEXAPI_IsMezzAdapter",
    "VEXAPI_GetAdapterBeaconStatus",
    "VEXAPI_UpdateAdapterBeaconStatus",
    "VEXAPI_GetHBAParamsInfo",
    "VEXAPI_UpdateHBAParameters",
    "VEXAPI_RestoreDefaultNVRAM",
    "VEXAPI_SaveSingleAdapterNVRAMToFile",
    "VEXAPI_GetBfsConfigMode",
    "VEXAPI_SetBfsConfigMode",
    "VEXAPI_GetBootDeviceInfo",
    "VEXAPI_SetBootDeviceInfo",
    "VEXAPI_GetNVMeBootDeviceEntries",
    "VEXAPI_SetNVMeBootDeviceEntries",
    "VEXAPI_FCGetBBCSupportInfoEx",
    "VEXAPI_FCSetBBCSupportInfo",
    "VEXAPI_FCGetFECSupportInfo",
    "VEXAPI_FCSetFECSupportInfo",
    "VEXAPI_ResetFECCounters",
    "VEXAPI_GetFWPrivateStats",
    "VEXAPI_IsFWCMFeatureEnabled",
    "VEXAPI_GetSCMRStatisticsList",
    "VEXAPI_FreeSCMRStatisticsList",
    "VEXAPI_SANCongMgmtResetStatistics",
    "VEXAPI_GetSCMRProfile",
    "VEXAPI_SetSCMRProfile",
    "VEXAPI_DiagnosticsLoopBackTest",
    "VEXAPI_DiagnosticsReadWriteBufferTest",
    "VEXAPI_FreeRWBufferTestResultList",
    "VEXAPI_DiagnosticsFCPingTest",
    "VEXAPI_DiagnosticsEchoElsTest",
    "VEXAPI_DiagnosticsCTCommand",
    "VEXAPI_CheckAdapterDPortOption",
    "VEXAPI_ConfigureAdapterDPortSettings",
    "VEXAPI_DiagnosticDPortTest",
    "VEXAPI_DiagnosticDPortTestV2",
    "VEXAPI_DiagnosticsRDPTest",
    "VEXAPI_GetTargetLinkSpeed",
    "VEXAPI_SetTargetLinkSpeed",
    "VEXAPI_GetPortStatisticsFC",
    "VEXAPI_ExtSetScope",
    "VEXAPI_ExtSetMessageHandler",
    "VEXAPI_ExtGetPort",
    "VEXAPI_ExtGetTarget",
    "VEXAPI_ExtGetLun",
    "VEXAPI_ExtGetCounters",
};
static_assert(std::size(NAMES) == 62 + 6);

constexpr std::string_view POINTER_GIVERS[] = {
    "VEXAPI_GetAdapterList",
    "VEXAPI_SDGetFwDump2",
    "VEXAPI_GetFWPrivateStats",
    "VEXAPI_GetSCMRStatisticsList",
    "VEXAPI_DiagnosticsReadWriteBufferTest",
};

constexpr std::string_view SILENT[] = {
    "VEXAPI_GetAdapterList",     "VEXAPI_Uninitialize",          "VEXAPI_IsRebootRequired",
    "VEXAPI_GetPersonalityType", "VEXAPI_ChangePersonalityType", "VEXAPI_CheckRowanPersonalityChangeOption",
};

bool IsAmong(std::span<const std::string_view> some, std::size_t function) {
    return function < std::size(NAMES) && std::find(some.begin(), some.end(), NAMES[function]) != some.end();
}

} // namespace

std::span<const std::string_view> FunctionNames() {
    return NAMES;
}

std::size_t FunctionIndex(std::string_view name) {
    return static_cast<std::size_t>(std::find(std::begin(NAMES), std::end(NAMES), name) - std::begin(NAMES));
}

bool GivesPointer(std::size_t function) {
    return IsAmong(POINTER_GIVERS, function);
}

bool IsSilent(std::size_t function) {
    return IsAmong(SILENT, function);
}

} // namespace sim
