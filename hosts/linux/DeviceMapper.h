/// @file
/// The device mapper's own view of a map. Only root may ask.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace host {

class DeviceMapper {
public:
    DeviceMapper() = default;
    DeviceMapper(const DeviceMapper&) = delete;
    DeviceMapper& operator=(const DeviceMapper&) = delete;
    ~DeviceMapper();

    /// The status of a map that consists of one multipath target; empty if it can't be asked for. Asking neither waits
    /// for the map nor changes it.
    std::string Status(dev_t map);

private:
    std::optional<int> mControl; ///< -1: failed to open
};

/// The paths in a multipath target's status, as device numbers, "8:16", and "active" or "failed". What is malformed
/// ends the list.
std::vector<std::pair<std::string, std::string>> MultipathPaths(std::string_view status);

} // namespace host
