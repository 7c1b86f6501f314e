#include "FlashUpdate.h"

#include "ChipFamilies.h"
#include "CodeTable.h"
#include "LibraryCall.h"
#include "TavuString.h"

namespace {

bool IsAnyChip(__CHIPPROPERTY) {
    return true;
}
bool IsNoChip(__CHIPPROPERTY) {
    return false;
}
bool IsLarchOrAlder(__CHIPPROPERTY chip) {
    return IsLarchAdapter(chip) || IsAlderAdapter(chip);
}
bool IsRowanLarchOrAlder(__CHIPPROPERTY chip) {
    return IsRowanAdapter(chip) || IsLarchOrAlder(chip);
}
bool TakesPreloadTable(__CHIPPROPERTY chip) {
    return Is8GAdapter(chip) || IsRowanLarchOrAlder(chip);
}

// Wrappers: the address of a library function would be looked up at every start of the program.
VX_UINT32 WriteMultibootImage(VX_PORT_HANDLE* handle, const char* path) {
    return VEXAPI_doOptionROMUpdate(handle, path, 0);
}
VX_UINT32 WriteBoardConfig(VX_PORT_HANDLE* handle, const char* path) {
    return VEXAPI_UpdateSpecificFlashRegionFromFile(handle, path);
}
VX_UINT32 WritePreloadTable(VX_PORT_HANDLE* handle, const char* path) {
    return VEXAPI_UpdateAdapterFirmwareTableFromFile(handle, path);
}
VX_UINT32 WritePepConfig(VX_PORT_HANDLE* handle, const char* path) {
    return VEXAPI_UpdateAdapterPEPCfgFromFile(handle, path);
}

/// Only the multi-boot image supports the Birch family as well.
constexpr FlashImageKind KINDS[] = {
    {FLASH_IMAGE_WORDS[0].text, "VEXAPI_doOptionROMUpdate", WriteMultibootImage, IsAnyChip, IsUefiCapableAdapter},
    {FLASH_IMAGE_WORDS[1].text, "VEXAPI_UpdateSpecificFlashRegionFromFile", WriteBoardConfig, IsRowanLarchOrAlder,
     IsNoChip},
    {FLASH_IMAGE_WORDS[2].text, "VEXAPI_UpdateAdapterFirmwareTableFromFile", WritePreloadTable, TakesPreloadTable,
     IsNoChip},
    {FLASH_IMAGE_WORDS[3].text, "VEXAPI_UpdateAdapterPEPCfgFromFile", WritePepConfig, IsLarchOrAlder, IsNoChip},
};

constexpr StatusResult STATUS_RESULTS[] = {
    {3, RC_FILE_ERROR},
    {40, RC_NO_MEMORY},
    {101, RC_FILE_OPEN_ERROR},
    {102, RC_FILE_READ_ERROR},
    {103, RC_FILE_NOT_VALID},
    {104, RC_SSID_NOT_FOUND},
    {105, RC_FILE_CORRUPTED},
    {106, RC_FILE_SIZE_INVALID},
    {107, RC_CHECKSUM_ERROR},
    {108, RC_INVALID_DATA},
    {110, RC_INVALID_FIELD},
    {111, RC_SIGNATURE_ERROR},
    {113, RC_FEATURE_NOT_SUPPORTED},
    {114, RC_ADAPTER_NOT_FOUND},
    {121, RC_FEATURE_NOT_SUPPORTED},
    {133, RC_FLASH_UPDATE_LOCKDOWN},
    {522, RC_IMAGE_COMPONENTS_INVALID},
};

} // namespace

const FlashImageKind* FindFlashImageKind(const char* word) {
    for (const FlashImageKind& kind : KINDS) {
        if (CompareNoCase(word, kind.word) == 0) {
            return &kind;
        }
    }
    return nullptr;
}

ResultCode FlashUpdateResult(VX_UINT32 status) {
    return ResultOfStatus(STATUS_RESULTS, status, RC_FLASH_UPDATE_FAILED);
}
