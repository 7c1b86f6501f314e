#include "Multipath.h"

#include "Attributes.h"

namespace host {

namespace {

/// Begins the ids of multipath maps; other maps may hold a path too.
constexpr std::string_view MULTIPATH = "mpath-";

} // namespace

const Map* Multipath::MapOf(const std::string& blockDevice, bool isOneOfFew) {
    // "nvme0c1n2" is a path of "nvme0n2", by subsystem, controller and namespace.
    if (const auto numbers = NumbersIn<3>(blockDevice, "nvme#c#n#")) {
        const std::string subsystem = std::to_string((*numbers)[0]);
        const std::string head = "nvme" + subsystem + 'n' + std::to_string((*numbers)[2]);
        return ReadNative(head, "nvme-subsystem/nvme-subsys" + subsystem + '/' + head);
    }
    if (isOneOfFew) {
        for (const std::string& holder : mClasses.Names(("block/" + blockDevice + "/holders").c_str())) {
            if (const Map* const map = Read(holder)) {
                return map;
            }
        }
        return nullptr;
    }
    if (!mMapsByPath) {
        mMapsByPath.emplace();
        for (const std::string& name : mClasses.Names("block")) {
            const Map* const map = name.starts_with("dm-") ? Read(name) : nullptr;
            if (map != nullptr) {
                for (const std::string& path : mClasses.Names(("block/" + name + "/slaves").c_str())) {
                    mMapsByPath->emplace(path, map);
                }
            }
        }
    }
    const auto found = mMapsByPath->find(blockDevice);
    return found == mMapsByPath->end() ? nullptr : found->second;
}

void Multipath::Forget() {
    mMapsByPath.reset();
    mMaps.clear();
}

const Map* Multipath::Read(const std::string& device) {
    const auto [found, isNew] = mMaps.try_emplace(device);
    Map& map = found->second;
    const std::string entry = "block/" + device;
    if (isNew && Take(mClasses, entry, MAP_ID, map) && map.id.starts_with(MULTIPATH)) {
        map.device = device;
        TakeAll(mClasses, entry, MAP, ON_REQUEST, map);
        if (mCanAsk && Take(mClasses, entry, MAP_NUMBER, map)) {
            for (const auto& [number, state] : MultipathPaths(mMapper.Status(map.number))) {
                const std::string link = mSystem.Link(("dev/block/" + number).c_str());
                map.pathStates.emplace(link.substr(link.rfind('/') + 1), state);
            }
        }
    }
    return map.device.empty() ? nullptr : &map;
}

const Map* Multipath::ReadNative(const std::string& device, const std::string& folder) {
    const auto [found, isNew] = mMaps.try_emplace(device);
    Map& map = found->second;
    if (isNew && mClasses.Has(folder.c_str())) {
        map.device = device;
        Take(mClasses, folder, NATIVE_MAP, map);
    }
    return map.device.empty() ? nullptr : &map;
}

} // namespace host
