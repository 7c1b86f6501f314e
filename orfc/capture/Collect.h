/// @file
/// What a capture has of a Linux host.
#pragma once

#include "Archive.h"

#include <vector>

namespace orfc {

/// Begins the paths of counters that were read once more.
inline constexpr char LATER[] = "later/";

struct Collection {
    Entries entries;
    std::vector<std::string> statistics; ///< files among them that count
    struct Missing {
        std::string file;
        std::string reason;
        bool isUsual; ///< drivers differ in what they know
    };
    std::vector<Missing> missing; ///< what exists and couldn't be read
};

/// Reads the files of Fibre Channel ports, remote ports, LUNs, namespaces and maps, with the links that lead to them.
/// `root` is a folder with a captured sys/, or "/". Throws `Failure` if it can't be read at all.
Collection CollectHost(const std::string& root);

/// Reads the counters of a collection once more, to the same paths below `LATER`.
void CollectLater(const std::string& root, Collection& collection);

} // namespace orfc
