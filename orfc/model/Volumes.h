/// @file
/// LUNs by worldwide id, with all ways to each.
#pragma once

#include "Host.h"

namespace orfc {

/// What is wrong with the ways to a LUN, the worst first.
enum class Redundancy {
    NO_PATH,    ///< none works
    ONE_PATH,   ///< one works
    ONE_PORT,   ///< those that work share a physical port of this host
    ONE_FABRIC, ///< they share a fabric
    REDUNDANT,
};

struct Volume {
    std::string worldwideId; ///< empty: the storage has none for it, so the way is the LUN
    std::vector<const Lun*> ways;

    std::size_t WaysUp() const;
    Redundancy Judge() const;
};

/// LUNs by worldwide id, in the order of the first way to each.
std::vector<Volume> VolumesOf(const Host& host);

} // namespace orfc
