#pragma once

#include "BootSettings.h"

/// `port -s bootconfigext`: booting from SAN, from NVMe over Fibre Channel too. Changes are staged by
/// `setFile`, one boot target a command, in a cache file, and written by `set`.
class PhysicalPortBootConfigExtCmdsProcessor final : public BootFamily<PhysicalPortBootConfigExtCmdsProcessor> {
public:
    static const FamilyDescription FAMILY;
    static const Command COMMANDS[];
    static const BootGroup GROUP;
};
