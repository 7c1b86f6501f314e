/// @file
/// The kinds of flash images, and the results of an update.
#pragma once

#include "CodeTable.h"
#include "ResultCodes.h"
#include "vexapi.h"

/// The words of the kinds, in the order of the table of kinds.
inline constexpr CodeText FLASH_IMAGE_WORDS[] = {{0, "MBI"}, {1, "BrdCfg"}, {2, "FWPreload"}, {3, "PEPCfg"}};

/// A kind of image.
struct FlashImageKind {
    const char* word;     ///< on the command line, in any letter case
    const char* function; ///< library function, in the trace of its status
    VX_UINT32 (*write)(VX_PORT_HANDLE* handle, const char* path);
    bool (*isAllowed)(__CHIPPROPERTY chip);
    /// Whether the chip runs the new image without a reboot.
    bool (*runsAtOnce)(__CHIPPROPERTY chip);
};

/// The kind with this word, or null.
const FlashImageKind* FindFlashImageKind(const char* word);

/// Library statuses that are not failures.
inline constexpr VX_UINT32 FLASH_STATUS_DONE = 0;
inline constexpr VX_UINT32 FLASH_STATUS_REBOOT_NEEDED = 201;
/// No update was attempted.
inline constexpr VX_UINT32 FLASH_STATUS_NONE = ~VX_UINT32{0};

/// Result code of a failure status.
ResultCode FlashUpdateResult(VX_UINT32 status);
