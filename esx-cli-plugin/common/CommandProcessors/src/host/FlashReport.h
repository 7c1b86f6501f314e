/// @file
/// Flash information common to the reports of adapters and ports.
#pragma once

#include "ReportBlock.h"
#include "vexapi.h"

/// Signature of a memo block.
inline constexpr std::string_view FLASH_MEMO_SIGNATURE = "FMBS";

/// Whether the chip's flash has a memo block.
bool HasFlashMemoBlock(__CHIPPROPERTY chip);

/// Adds a line for each component that the flash of this chip's family can contain. `absentSoftRomLabel` is the
/// label of the PEP SoftROM line if there is no PEP SoftROM.
void AddFlashComponents(ReportBlock& block, __CHIPPROPERTY chip, const _VEXAPI_FlashComponentVersion& components,
                        const char* absentSoftRomLabel);
