#pragma once

#include "BootSettings.h"

/// `port -s bootconfigext`: booting from SAN, including NVMe over Fibre Channel. Changes are staged in a cache file
/// by `setFile`, one boot target per command, and written by `set`.
class PhysicalPortBootConfigExtCmdsProcessor final : public BootFamily<PhysicalPortBootConfigExtCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];
    static const BootGroup GROUP;
};
