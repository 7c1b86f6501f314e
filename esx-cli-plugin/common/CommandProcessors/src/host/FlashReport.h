/// @file
/// What the reports of adapters and ports share about the flash.
#pragma once

#include "ReportBlock.h"
#include "vexapi.h"

/// What a memo block begins with.
inline constexpr std::string_view FLASH_MEMO_SIGNATURE = "FMBS";

/// The chips whose flash has a memo block.
bool HasFlashMemoBlock(__CHIPPROPERTY chip);

/// Adds a line for each component that the flash of a chip of this family may hold. `absentSoftRomLabel` is
/// the label of the PEP SoftROM line when there is none.
void AddFlashComponents(ReportBlock& block, __CHIPPROPERTY chip, const _VEXAPI_FlashComponentVersion& components,
                        const char* absentSoftRomLabel);
