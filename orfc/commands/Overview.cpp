/// The host on one screen.
#include "Command.h"

namespace orfc {

namespace {

// clang-format off
constexpr ColumnOf<Port> OVERVIEW[] = {
    {{"adapter", "ADAPTER", Type::TEXT, Place::HEADING, "Port", "Identifier of the adapter"}, [](const Port& p) { return TextValue(p.adapter->identifier); }},
    {{"firmware_version", "firmware", Type::TEXT, Place::HEADING, "Port", "Version of the running firmware"}, [](const Port& p) { return TextValue(p.firmwareVersion); }},
    {{"driver_version", "driver", Type::TEXT, Place::HEADING, "Port", "Version of the driver"}, [](const Port& p) { return TextValue(p.driverVersion); }},
    {{"port", "PORT", Type::TEXT, Place::ALWAYS, "Port", "Identifier of the port"}, [](const Port& p) { return TextValue(p.identifier); }},
    {{"host", "HOST", Type::TEXT, Place::TABLE, "Port", "The kernel's name of the port"}, [](const Port& p) { return TextValue(p.kernelName); }},
    {{"state", "STATE", Type::VERDICT, Place::TABLE, "Port", "State of the link"}, [](const Port& p) { return TextValue(p.state); }},
    {{"speed_gbps", "Gb/s", Type::INTEGER, Place::TABLE, "Port", "Speed of the link in Gb/s"}, [](const Port& p) { return p.speed ? Value(std::uint64_t{*p.speed}) : Value(); }},
    {{"transceiver_health", "TRANSCEIVER", Type::VERDICT, Place::TABLE, "Port", "How its transceiver does, as in transceivers"}, [](const Port& p) { return TextValue(HealthOf(p.transceiver)); }},
    {{"targets", "TARGETS", Type::INTEGER, Place::TABLE, "Port", "Number of targets"}, [](const Port& p) { return Value(std::uint64_t{p.targetCount}); }},
    {{"luns", "LUNS", Type::INTEGER, Place::TABLE, "Port", "Number of LUNs and namespaces"}, [](const Port& p) { return Value(std::uint64_t{p.lunCount}); }},
    {{"paths_down", "DOWN", Type::INTEGER, Place::TABLE, "Port", "Number of those that are down over this port"}, [](const Port& p) { return Value(std::uint64_t{p.pathsDown}); }},
};
// clang-format on

} // namespace

Shown ShowOverview(const Request& request) {
    Shown shown;
    shown.Add<Port>("overview", OVERVIEW, PortsOf(request));
    return shown;
}

} // namespace orfc
