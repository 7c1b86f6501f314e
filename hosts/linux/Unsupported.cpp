/// @file
/// Functions without an open kernel interface: flash, NVRAM, transceivers, tests of the adapter and most settings. They
/// fail without side effects.
#include "Session.h"

#include <cstring>

using host::UNSUPPORTED;

namespace {

constexpr char VERDICT[] = "Not supported";

} // namespace

/* Functions that don't return a status. */

VX_UINT32 VEXAPI_CheckRowanPersonalityChangeOption(VX_PORT_HANDLE* /*handle*/) {
    return 0;
}
VX_UINT32 VEXAPI_CheckAdapterDPortOption(VX_PORT_HANDLE* /*handle*/) {
    return 0;
}
VX_UINT8 VEXAPI_GetBfsConfigMode(void) {
    return 0;
}
_VEXAPI_LoopbackTestResult VEXAPI_DiagnosticsLoopBackTest(VX_PORT_HANDLE* /*handle*/, DiagTestParams* /*parameters*/) {
    _VEXAPI_LoopbackTestResult result{};
    std::memcpy(result.TestStatus, VERDICT, sizeof VERDICT);
    return result;
}
_VEXAPI_ReadWriteBufferTestResult* VEXAPI_DiagnosticsReadWriteBufferTest(VX_PORT_HANDLE* /*handle*/,
                                                                         DiagTestParams* /*parameters*/) {
    return nullptr;
}
_VEXAPI_DiagnosticsDPortResult VEXAPI_DiagnosticDPortTest(VX_PORT_HANDLE* /*handle*/,
                                                          _VEXAPI_DiagnosticsDPortResult* /*result*/) {
    constexpr VX_UINT16 MAILBOX_COMMAND_FAILED = 0x4005;
    _VEXAPI_DiagnosticsDPortResult result{};
    result.Mbx1 = MAILBOX_COMMAND_FAILED;
    return result;
}

/// Reports a status per item.
VX_UINT32 VEXAPI_GetLockdownStatus(VX_PORT_HANDLE* /*handle*/, VEXAPI_LOCKDOWNINFO* lockdown) {
    lockdown->ConfigStatus = UNSUPPORTED;
    lockdown->FirmwareStatus = UNSUPPORTED;
    lockdown->MpiStatus = UNSUPPORTED;
    return host::OK;
}

/* Functions that return a status. */

VX_UINT32 VEXAPI_IsRebootRequired(VX_UINT32* /*required*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetFlashComponentVersion(VX_PORT_HANDLE* /*handle*/, _VEXAPI_FlashComponentVersion* /*versions*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetAdapterFlashMemoBlock(VX_PORT_HANDLE* /*handle*/, VX_SFlashMemoBlock* /*block*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_doOptionROMUpdate(VX_PORT_HANDLE* /*handle*/, const char* /*path*/, VX_UINT32 /*reserved*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_UpdateSpecificFlashRegionFromFile(VX_PORT_HANDLE* /*handle*/, const char* /*path*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_UpdateAdapterFirmwareTableFromFile(VX_PORT_HANDLE* /*handle*/, const char* /*path*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_UpdateAdapterPEPCfgFromFile(VX_PORT_HANDLE* /*handle*/, const char* /*path*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetPersonalityType(VX_PORT_HANDLE* /*handle*/, unsigned char* /*personality*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_ChangePersonalityType(VX_PORT_HANDLE* /*handle*/, unsigned char /*personality*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_UpdateAdapterNVRAMFromFile(VX_PORT_HANDLE* /*handle*/, const char* /*path*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetAdapterAsicBoardTemperature(VX_PORT_HANDLE* /*handle*/, _VEXAPI_BoardThermalTemp* /*temperature*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetSFPData(VX_PORT_HANDLE* /*handle*/, void* /*buffer*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_SfpModuleFirmwareUpdate(VX_PORT_HANDLE* /*handle*/, const char* /*path*/, VX_UINT32 /*option*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_SDGetFwDump2(VX_UINT32 /*word*/, VX_UINT32 /*reserved*/, void** /*dump*/, VX_UINT32* /*size*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_IsMezzAdapter(VX_PORT_HANDLE* /*handle*/, VX_UINT8* /*flag*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetAdapterBeaconStatus(VX_PORT_HANDLE* /*handle*/, VEXAPI_BEACON_TYPE* /*state*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_UpdateAdapterBeaconStatus(VX_PORT_HANDLE* /*handle*/, VEXAPI_BEACON_TYPE /*state*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetHBAParamsInfo(VX_PORT_HANDLE* /*handle*/, _VEXAPI_HBAParameters* /*parameters*/,
                                  VX_HBA_AUX* /*auxiliary*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_UpdateHBAParameters(VX_PORT_HANDLE* /*handle*/, _VEXAPI_HBAParameters* /*parameters*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_RestoreDefaultNVRAM(VX_PORT_HANDLE* /*handle*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_SaveSingleAdapterNVRAMToFile(VX_PORT_HANDLE* /*handle*/, const char* /*path*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_SetBfsConfigMode(VX_UINT8 /*mode*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetBootDeviceInfo(VX_PORT_HANDLE* /*handle*/, _VEXAPI_HBAParameters* /*parameters*/,
                                   void* /*reserved*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_SetBootDeviceInfo(VX_PORT_HANDLE* /*handle*/, _VEXAPI_HBAParameters* /*parameters*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetNVMeBootDeviceEntries(VX_PORT_HANDLE* /*handle*/, _VEXAPI_FcNVMeBootParams* /*parameters*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_SetNVMeBootDeviceEntries(VX_PORT_HANDLE* /*handle*/, _VEXAPI_FcNVMeBootParams* /*parameters*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_FCGetBBCSupportInfoEx(VX_PORT_HANDLE* /*handle*/, VX_UINT8* /*status*/, VX_UINT8* /*configured*/,
                                       VX_UINT8* /*state*/, VX_UINT8* /*negotiated*/, char* /*reason*/,
                                       VX_UINT32 /*reasonSize*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_FCSetBBCSupportInfo(VX_PORT_HANDLE* /*handle*/, VX_UINT8 /*status*/, VX_UINT8 /*configured*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_FCGetFECSupportInfo(VX_PORT_HANDLE* /*handle*/, VX_UINT32* /*status*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_FCSetFECSupportInfo(VX_PORT_HANDLE* /*handle*/, VX_UINT32 /*status*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_ResetFECCounters(VX_PORT_HANDLE* /*handle*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetFWPrivateStats(VX_PORT_HANDLE* /*handle*/, _VEXAPI_FWPRIVATESTATSEntry** /*entries*/,
                                   VX_UINT32* /*count*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_SANCongMgmtResetStatistics(VX_PORT_HANDLE* /*handle*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetSCMRProfile(VX_PORT_HANDLE* /*handle*/, _VEXAPI_SCMRProfile* /*profile*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_SetSCMRProfile(VX_PORT_HANDLE* /*handle*/, _VEXAPI_SCMRProfile* /*profile*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_FreeRWBufferTestResultList(_VEXAPI_ReadWriteBufferTestResult* /*list*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_ConfigureAdapterDPortSettings(VX_PORT_HANDLE* /*handle*/, VX_UINT32 /*enable*/,
                                               VX_UINT32 /*reserved*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_DiagnosticDPortTestV2(VX_PORT_HANDLE* /*handle*/, _VEXAPI_DiagnosticsDPortResult* /*result*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_GetTargetLinkSpeed(VX_PORT_HANDLE* /*handle*/, VX_UINT16 /*targetNumber*/, VX_UINT32* /*speed*/) {
    return UNSUPPORTED;
}
VX_UINT32 VEXAPI_SetTargetLinkSpeed(VX_PORT_HANDLE* /*handle*/, VX_UINT16 /*targetNumber*/, VX_UINT32 /*speed*/) {
    return UNSUPPORTED;
}
