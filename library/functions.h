/// @file
/// The names of the library's functions as lists, for callers that look them up at run time and for tables of them:
/// `VEXAPI_FUNCTIONS(X)` expands to `X(NAME)` for each of the 62, `VEXAPI_EXTENSIONS(X)` for each optional one.
#ifndef VEXAPI_FUNCTIONS_H
#define VEXAPI_FUNCTIONS_H

// clang-format off
#define VEXAPI_FUNCTIONS(X) \
    X(VEXAPI_Initialize) \
    X(VEXAPI_SetToolID) \
    X(VEXAPI_SetToolVersion) \
    X(VEXAPI_Uninitialize) \
    X(VEXAPI_GetAdapterList) \
    X(VEXAPI_IsRebootRequired) \
    X(VEXAPI_GetFlashComponentVersion) \
    X(VEXAPI_GetAdapterFlashMemoBlock) \
    X(VEXAPI_doOptionROMUpdate) \
    X(VEXAPI_UpdateSpecificFlashRegionFromFile) \
    X(VEXAPI_UpdateAdapterFirmwareTableFromFile) \
    X(VEXAPI_UpdateAdapterPEPCfgFromFile) \
    X(VEXAPI_GetPersonalityType) \
    X(VEXAPI_ChangePersonalityType) \
    X(VEXAPI_CheckRowanPersonalityChangeOption) \
    X(VEXAPI_UpdateAdapterNVRAMFromFile) \
    X(VEXAPI_GetAdapterAsicBoardTemperature) \
    X(VEXAPI_GetLockdownStatus) \
    X(VEXAPI_ResetDeviceStats) \
    X(VEXAPI_GetSFPData) \
    X(VEXAPI_SfpModuleFirmwareUpdate) \
    X(VEXAPI_GetVpd) \
    X(VEXAPI_SDGetFwDump2) \
    X(VEXAPI_IsMezzAdapter) \
    X(VEXAPI_GetAdapterBeaconStatus) \
    X(VEXAPI_UpdateAdapterBeaconStatus) \
    X(VEXAPI_GetHBAParamsInfo) \
    X(VEXAPI_UpdateHBAParameters) \
    X(VEXAPI_RestoreDefaultNVRAM) \
    X(VEXAPI_SaveSingleAdapterNVRAMToFile) \
    X(VEXAPI_GetBfsConfigMode) \
    X(VEXAPI_SetBfsConfigMode) \
    X(VEXAPI_GetBootDeviceInfo) \
    X(VEXAPI_SetBootDeviceInfo) \
    X(VEXAPI_GetNVMeBootDeviceEntries) \
    X(VEXAPI_SetNVMeBootDeviceEntries) \
    X(VEXAPI_FCGetBBCSupportInfoEx) \
    X(VEXAPI_FCSetBBCSupportInfo) \
    X(VEXAPI_FCGetFECSupportInfo) \
    X(VEXAPI_FCSetFECSupportInfo) \
    X(VEXAPI_ResetFECCounters) \
    X(VEXAPI_GetFWPrivateStats) \
    X(VEXAPI_IsFWCMFeatureEnabled) \
    X(VEXAPI_GetSCMRStatisticsList) \
    X(VEXAPI_FreeSCMRStatisticsList) \
    X(VEXAPI_SANCongMgmtResetStatistics) \
    X(VEXAPI_GetSCMRProfile) \
    X(VEXAPI_SetSCMRProfile) \
    X(VEXAPI_DiagnosticsLoopBackTest) \
    X(VEXAPI_DiagnosticsReadWriteBufferTest) \
    X(VEXAPI_FreeRWBufferTestResultList) \
    X(VEXAPI_DiagnosticsFCPingTest) \
    X(VEXAPI_DiagnosticsEchoElsTest) \
    X(VEXAPI_DiagnosticsCTCommand) \
    X(VEXAPI_CheckAdapterDPortOption) \
    X(VEXAPI_ConfigureAdapterDPortSettings) \
    X(VEXAPI_DiagnosticDPortTest) \
    X(VEXAPI_DiagnosticDPortTestV2) \
    X(VEXAPI_DiagnosticsRDPTest) \
    X(VEXAPI_GetTargetLinkSpeed) \
    X(VEXAPI_SetTargetLinkSpeed) \
    X(VEXAPI_GetPortStatisticsFC)

#define VEXAPI_EXTENSIONS(X) \
    X(VEXAPI_ExtSetScope) \
    X(VEXAPI_ExtSetMessageHandler) \
    X(VEXAPI_ExtGetPort) \
    X(VEXAPI_ExtGetTarget) \
    X(VEXAPI_ExtGetLun) \
    X(VEXAPI_ExtGetCounters)
// clang-format on

#endif
