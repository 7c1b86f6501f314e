#include "FlashReport.h"

#include "ChipFamilies.h"
#include "ReportTexts.h"

bool HasFlashMemoBlock(__CHIPPROPERTY chip) {
    return IsRowanFCAdapter(chip) || IsUefiCapableAdapter(chip);
}

void AddFlashComponents(ReportBlock& block, __CHIPPROPERTY chip, const _VEXAPI_FlashComponentVersion& components,
                        const char* absentSoftRomLabel) {
    block.Line("Flash Preload Firmware Area Version", ImageVersionText(components.PreloadFwArea));
    block.Line("Flash FC Board Config Version", ImageVersionText(components.FcBoardConfig));
    if (IsUefiCapableAdapter(chip)) {
        block.Line("Flash MPI Firmware Version", ImageVersionText(components.MpiFirmware));
        block.Line("Flash PEP Firmware Version", ImageVersionText(components.PepFirmware));
        block.Line("Flash PEP Board Config Version", ImageVersionText(components.PepBoardConfig));
        block.Line(IsAbsent(components.PepSoftRom) ? absentSoftRomLabel : "Flash PEP SoftROM Version",
                   ImageVersionText(components.PepSoftRom));
    }
    if (IsBirchAdapter(chip)) {
        block.Line("Flash MPI SoftROM Version", ImageVersionText(components.MpiSoftRom));
        block.Line("Flash PCIE Serdes Version", ImageVersionText(components.PcieSerdes));
    }
}
