/// @file
/// Maps of multipath devices: those of the device mapper, and namespaces whose paths the kernel joins itself.
#pragma once

#include "DeviceMapper.h"
#include "Sysfs.h"

#include <map>
#include <string>
#include <sys/types.h>

namespace host {

struct Map {
    std::string name;
    std::string device; ///< "dm-0", or "nvme0n1"
    std::string id;
    std::string state; ///< "active", "suspended"; empty: unknown
    dev_t number = 0;
    std::map<std::string, std::string> pathStates; ///< "active" or "failed" by block device
};

/// Each map is read once and then remembered, since a map has several paths.
class Multipath {
public:
    /// `canAsk` tells whether the tree is this machine's, so that the device mapper's answers are about it.
    Multipath(const Folder& system, const Folder& classes, bool canAsk)
        : mSystem(system), mClasses(classes), mCanAsk(canAsk) {}

    /// The map that has a block device as a path; null if there is none. For few devices the maps that hold each are
    /// found by its own folder, for many by those of all maps.
    const Map* MapOf(const std::string& blockDevice, bool isOneOfFew);

    void Forget();

private:
    /// Null if it isn't a multipath map.
    const Map* Read(const std::string& device);
    const Map* ReadNative(const std::string& device, const std::string& folder);

    const Folder& mSystem;
    const Folder& mClasses;
    bool mCanAsk;
    DeviceMapper mMapper;
    std::map<std::string, Map> mMaps; ///< by device
    std::optional<std::map<std::string, const Map*>> mMapsByPath;
};

} // namespace host
