/// @file
/// Optional function: a LUN as a block device, and the multipath map that it is part of.
#include "Attributes.h"
#include "Extension.h"

#include <cstdint>

using namespace host;

namespace {

Lun* LunOf(Target& target, const _tagVEXAPI_SDMLun* record) {
    const std::uintptr_t distance =
        reinterpret_cast<std::uintptr_t>(record) - reinterpret_cast<std::uintptr_t>(target.luns.data());
    const std::size_t index = distance / sizeof(Lun);
    const bool isOne = index < target.luns.size() && record == &target.luns[index].record;
    return isOne ? &target.luns[index] : nullptr;
}

void TakeMap(const Map& map, VEXAPI_EXT_LUN& lun) {
    TakeText(map.name, lun.Map);
    TakeText(map.device, lun.MapDevice);
    TakeText(map.id, lun.MapId);
    TakeText(map.state, lun.MapState);
    if (const auto state = map.pathStates.find(lun.Device); state != map.pathStates.end()) {
        TakeText(state->second, lun.MapPathState);
    }
}

} // namespace

VX_UINT32 VEXAPI_ExtGetLun(VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* targetRecord,
                           const _tagVEXAPI_SDMLun* lunRecord, VEXAPI_EXT_LUN* record) {
    Target* const target = TargetOf(handle, targetRecord);
    Lun* const lun = target == nullptr ? nullptr : LunOf(*target, lunRecord);
    if (lun == nullptr) {
        return INVALID_HANDLE;
    }
    Tree& tree = *GetTree();
    tree.BeginPath(*lun);
    VEXAPI_EXT_LUN known{};
    std::string device = lun->name;
    if (target->controller.empty()) {
        device = tree.BlockDeviceOf(*lun);
        TakeText(lun->name, known.Address);
        TakeAll(tree.Devices(), lun->name, KERNEL_LUN, ON_REQUEST, known);
    } else {
        Take(tree.Classes(), "nvme/" + target->controller, NAMESPACE_STATE, known);
        TakeAll(tree.Classes(), "block/" + device, KERNEL_NAMESPACE, ON_REQUEST, known);
    }
    if (!device.empty()) {
        TakeText(device, known.Device);
        if (const Map* const map = tree.MapOf(device)) {
            TakeMap(*map, known);
        }
    }
    return Fill(known, record);
}
