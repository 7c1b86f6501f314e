/// LUNs by worldwide id, and every way to each of them with the state of each step.
#include "Command.h"
#include "Volumes.h"

namespace orfc {

namespace {

struct PathRow {
    const Lun* way;
    const Volume* volume;
    Redundancy redundancy;
    std::size_t waysUp;
};

std::string RedundancyText(Redundancy redundancy) {
    switch (redundancy) {
    case Redundancy::NO_PATH:
        return "no path";
    case Redundancy::ONE_PATH:
        return "one path";
    case Redundancy::ONE_PORT:
        return "one port";
    case Redundancy::ONE_FABRIC:
        return "one fabric";
    case Redundancy::REDUNDANT:
        return "redundant";
    }
    return {};
}

/// The verdict over a path: the map of another LUN, which endangers data, or the first step that is down.
std::string VerdictOf(const Lun& way) {
    if (way.IsForeignInMap()) {
        return "wrong map";
    }
    if (const std::optional<Step> step = way.DownAt()) {
        return StepText(*step);
    }
    return way.accessState == "standby" || way.accessState == "transitioning" ? way.accessState : "ok";
}

const Port& PortOf(const PathRow& row) {
    return *row.way->target->port;
}

// clang-format off
constexpr ColumnOf<PathRow> PATH[] = {
    {{"volume", "VOLUME", Type::TEXT, Place::HEADING, "LUN", "What the paths lead to: the worldwide id of the LUN, or the identifier of the path if the LUN has none"}, [](const PathRow& r) { return TextValue(r.volume->worldwideId.empty() ? r.way->identifier : r.volume->worldwideId); }},
    {{"worldwide_id", "WORLDWIDE ID", Type::TEXT, Place::DETAILED, "LUN", "Worldwide id of the LUN; unknown if it has none"}, [](const PathRow& r) { return TextValue(r.volume->worldwideId); }},
    {{"map", "MAP", Type::TEXT, Place::HEADING, "LUN", "Multipath map"}, [](const PathRow& r) { return TextValue(r.way->map); }},
    {{"map_device", "MAP DEVICE", Type::TEXT, Place::HEADING, "LUN", "Device of the map"}, [](const PathRow& r) { return TextValue(r.way->mapDevice); }},
    {{"size_bytes", "SIZE", Type::BYTES, Place::HEADING, "LUN", "Size in bytes"}, [](const PathRow& r) { return r.way->size ? Value(*r.way->size) : Value(); }},
    {{"paths", "paths", Type::INTEGER, Place::HEADING, "LUN", "Number of paths to the LUN"}, [](const PathRow& r) { return Value(std::uint64_t{r.volume->ways.size()}); }},
    {{"paths_up", "up", Type::INTEGER, Place::HEADING, "LUN", "Number of those that work"}, [](const PathRow& r) { return Value(std::uint64_t{r.waysUp}); }},
    {{"redundancy", "REDUNDANCY", Type::VERDICT, Place::HEADING, "LUN", "redundant; one fabric, one port or one path if all that work share it; no path if none works"}, [](const PathRow& r) { return TextValue(RedundancyText(r.redundancy)); }},
    {{"verdict", "VERDICT", Type::VERDICT, Place::ALWAYS, "Path", "ok; wrong map if the map is of another worldwide id; the first step that is down; standby or transitioning"}, [](const PathRow& r) { return TextValue(VerdictOf(*r.way)); }},
    {{"port", "PORT", Type::TEXT, Place::ALWAYS, "Path", "Identifier of the port"}, [](const PathRow& r) { return TextValue(PortOf(r).identifier); }},
    {{"host", "HOST", Type::TEXT, Place::TABLE, "Path", "The kernel's name of the port"}, [](const PathRow& r) { return TextValue(PortOf(r).kernelName); }},
    {{"target_port_name", "TARGET PORT", Type::TEXT, Place::ALWAYS, "Path", "Worldwide name of the storage port"}, [](const PathRow& r) { return TextValue(WwnText(r.way->target->portName)); }},
    {{"lun_number", "LUN", Type::INTEGER, Place::ALWAYS, "Path", "Number of the LUN or namespace"}, [](const PathRow& r) { return Value(std::uint64_t{r.way->number}); }},
    {{"address", "H:C:T:L", Type::TEXT, Place::TABLE, "Path", "Host, channel, target and LUN in the kernel"}, [](const PathRow& r) { return TextValue(r.way->address); }},
    {{"device", "DEVICE", Type::TEXT, Place::TABLE, "Path", "Block device"}, [](const PathRow& r) { return TextValue(r.way->device); }},
    {{"link_state", "LINK", Type::TEXT, Place::TABLE, "Steps", "State of the port's link"}, [](const PathRow& r) { return TextValue(PortOf(r).linkState.empty() ? PortOf(r).state : PortOf(r).linkState); }},
    {{"remote_port_state", "REMOTE PORT", Type::TEXT, Place::TABLE, "Steps", "State of the storage port"}, [](const PathRow& r) { return TextValue(r.way->target->kernelState.empty() ? r.way->target->state : r.way->target->kernelState); }},
    {{"device_state", "DEVICE STATE", Type::TEXT, Place::TABLE, "Steps", "State of the SCSI device or namespace in the kernel"}, [](const PathRow& r) { return TextValue(r.way->state); }},
    {{"access_state", "ACCESS", Type::TEXT, Place::TABLE, "Steps", "Access state that the storage reports"}, [](const PathRow& r) { return TextValue(r.way->accessState); }},
    {{"map_path_state", "IN MAP", Type::TEXT, Place::TABLE, "Steps", "State of the path in its map"}, [](const PathRow& r) { return TextValue(r.way->mapPathState); }},
    {{"map_state", "MAP STATE", Type::TEXT, Place::WIDE, "Steps", "State of the map"}, [](const PathRow& r) { return TextValue(r.way->mapState); }},
    {{"map_id", "MAP ID", Type::TEXT, Place::WIDE, "LUN", "Id of the map"}, [](const PathRow& r) { return TextValue(r.way->mapId); }},
    {{"fabric", "FABRIC", Type::TEXT, Place::WIDE, "Path", "Name of the port's fabric"}, [](const PathRow& r) { return TextValue(WwnText(PortOf(r).fabricName)); }},
    {{"switch", "SWITCH", Type::TEXT, Place::WIDE, "Path", "Name of the switch that the port is connected to"}, [](const PathRow& r) { return TextValue(WwnText(PortOf(r).switchName)); }},
    {{"remote_port", "RPORT", Type::TEXT, Place::WIDE, "Path", "The kernel's name of the storage port"}, [](const PathRow& r) { return TextValue(r.way->target->kernelName); }},
    {{"vendor", "VENDOR", Type::TEXT, Place::WIDE, "LUN", "Vendor of the storage"}, [](const PathRow& r) { return TextValue(r.way->vendor); }},
    {{"product", "PRODUCT", Type::TEXT, Place::WIDE, "LUN", "Product"}, [](const PathRow& r) { return TextValue(r.way->product); }},
    {{"lun", "IDENTIFIER", Type::TEXT, Place::DETAILED, "Path", "Identifier, as in orfc-esxcli"}, [](const PathRow& r) { return TextValue(r.way->identifier); }},
};
// clang-format on

} // namespace

std::string StepText(Step step) {
    switch (step) {
    case Step::LINK:
        return "link down";
    case Step::REMOTE_PORT:
        return "remote port down";
    case Step::DEVICE:
        return "device down";
    case Step::ACCESS:
        return "access down";
    case Step::MAP:
        return "down in map";
    }
    return {};
}

/// With names, whole LUNs: all ways to each that one of the named ways leads to.
Shown ShowPaths(const Request& request) {
    auto volumes = std::make_shared<std::vector<Volume>>(VolumesOf(request.host));
    const std::optional<Selection> selection = SelectionOf(request);
    std::vector<PathRow> rows;
    rows.reserve(request.host.luns.size());
    for (const Volume& volume : *volumes) {
        const bool isMeant = !selection || std::any_of(volume.ways.begin(), volume.ways.end(),
                                                       [&](const Lun* way) { return selection->luns.contains(way); });
        if (isMeant) {
            const Redundancy redundancy = volume.Judge();
            const std::size_t up = volume.WaysUp();
            for (const Lun* way : volume.ways) {
                rows.push_back({way, &volume, redundancy, up});
            }
        }
    }
    Shown shown;
    shown.Keep(std::move(volumes));
    shown.AddRows<PathRow>("path", PATH, std::move(rows));
    return shown;
}

} // namespace orfc
