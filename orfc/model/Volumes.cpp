#include "Volumes.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace orfc {

std::size_t Volume::WaysUp() const {
    return static_cast<std::size_t>(
        std::count_if(ways.begin(), ways.end(), [](const Lun* way) { return !way->DownAt(); }));
}

Redundancy Volume::Judge() const {
    std::set<unsigned> ports;
    std::set<Wwn> fabrics;
    std::size_t up = 0;
    for (const Lun* way : ways) {
        if (!way->DownAt()) {
            ++up;
            ports.insert(way->target->port->physicalPort);
            fabrics.insert(way->target->port->fabricName);
        }
    }
    if (up <= 1) {
        return up == 0 ? Redundancy::NO_PATH : Redundancy::ONE_PATH;
    }
    if (ports.size() == 1) {
        return Redundancy::ONE_PORT;
    }
    // Ports without a fabric are connected directly.
    return fabrics.size() == 1 && *fabrics.begin() != 0 ? Redundancy::ONE_FABRIC : Redundancy::REDUNDANT;
}

std::vector<Volume> VolumesOf(const Host& host) {
    std::vector<Volume> volumes;
    std::unordered_map<std::string_view, std::size_t> known;
    for (const Lun& lun : host.luns) {
        std::size_t place = volumes.size();
        if (!lun.worldwideId.empty()) {
            place = known.emplace(lun.worldwideId, place).first->second;
        }
        if (place == volumes.size()) {
            volumes.push_back({lun.worldwideId, {}});
        }
        volumes[place].ways.push_back(&lun);
    }
    return volumes;
}

} // namespace orfc
