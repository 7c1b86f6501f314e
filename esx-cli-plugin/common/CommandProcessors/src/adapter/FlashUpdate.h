/// @file
/// The kinds of images that an adapter's flash takes, and what the library says of an update.
#pragma once

#include "CodeTable.h"
#include "ResultCodes.h"
#include "vexapi.h"

/// The words of the kinds, by their place in the table of kinds.
inline constexpr CodeText FLASH_IMAGE_WORDS[] = {{0, "MBI"}, {1, "BrdCfg"}, {2, "FWPreload"}, {3, "PEPCfg"}};

/// A kind of image.
struct FlashImageKind {
    const char* word;     ///< as the command line names it, in any letter case
    const char* function; ///< of the library, as the trace of its status names it
    VX_UINT32 (*write)(VX_PORT_HANDLE* handle, const char* path);
    bool (*isAllowed)(__CHIPPROPERTY chip);
    /// Whether the chip runs the new image without a reboot.
    bool (*runsAtOnce)(__CHIPPROPERTY chip);
};

/// The kind with this word, or null.
const FlashImageKind* FindFlashImageKind(const char* word);

/// Library statuses that are no failure.
inline constexpr VX_UINT32 FLASH_STATUS_DONE = 0;
inline constexpr VX_UINT32 FLASH_STATUS_REBOOT_NEEDED = 201;
/// Stands for a status where no update was tried.
inline constexpr VX_UINT32 FLASH_STATUS_NONE = ~VX_UINT32{0};

/// Result code of a failing status.
ResultCode FlashUpdateResult(VX_UINT32 status);
/// "Message" of a result code.
const char* FlashUpdateText(ResultCode code);
