#pragma once

#include "BootSettings.h"

/// `port -s bootconfig`: booting from SAN, from the BIOS or UEFI. Changes are staged in a cache file by
/// `setFile` and written by `set`.
class PhysicalPortBootConfigCmdsProcessor final : public BootFamily<PhysicalPortBootConfigCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];
    static const BootGroup GROUP;
};
