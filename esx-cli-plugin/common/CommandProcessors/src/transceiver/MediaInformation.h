#pragma once

#include "ModuleImage.h"
#include "TavuString.h"

/// The type and speed of a module, two lines of its report.
struct MediaInformation {
    TavuString mediaType; ///< such as "1600-M5-SN-S"; just a line end in the QSFP family
    TavuString speed;     ///< ends in a blank in the SFP family, in a line end in the QSFP family
};
MediaInformation DescribeMedia(const ModuleImage& image);
