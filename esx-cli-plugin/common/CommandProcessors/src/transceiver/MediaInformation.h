#pragma once

#include "ModuleImage.h"
#include "TavuString.h"

/// What a module is, in two lines of its report.
struct MediaInformation {
    TavuString mediaType; ///< such as "1600-M5-SN-S"; a line end alone in the QSFP family
    TavuString speed;     ///< ends in a blank in the SFP family, in a line end in the QSFP family
};
MediaInformation DescribeMedia(const ModuleImage& image);
