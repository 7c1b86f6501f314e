/// Adapters, ports, targets and LUNs: their columns, and which of them a request is about.
#include "Command.h"

#include <algorithm>

namespace orfc {

namespace {

std::string HexText(std::uint32_t number) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%04x", number);
    return number != 0 ? text : std::string();
}

template <typename Number> Value NumberValue(const std::optional<Number>& number) {
    return number ? Value(static_cast<std::uint64_t>(*number)) : Value();
}
Value FlagValue(const std::optional<bool>& flag) {
    return flag ? Value(*flag) : Value();
}

Value VpdValue(const Adapter& adapter, std::string_view keyword) {
    for (const auto& [name, text] : adapter.vpd) {
        if (name == keyword) {
            return TextValue(text);
        }
    }
    return {};
}

/// "8 16 32"
std::string SpeedsText(const Port& port) {
    std::string text;
    for (const unsigned speed : port.supportedSpeeds) {
        text += (text.empty() ? "" : " ") + std::to_string(speed);
    }
    return text;
}

template <Literal name> Value CounterValue(const Port& port) {
    const auto counter = port.counters.find(std::string_view(name.text));
    return counter != port.counters.end() ? Value(counter->second) : Value();
}

template <Literal name> Value NvramValue(const Port& port) {
    for (const auto& [key, value] : port.settings.nvram) {
        if (std::string_view(key) == name.text) {
            return std::uint64_t{value};
        }
    }
    return {};
}

// clang-format off
constexpr ColumnOf<Adapter> ADAPTER[] = {
    {{"adapter", "ADAPTER", Type::TEXT, Place::ALWAYS, "Adapter", "Identifier, as in orfc-esxcli"}, [](const Adapter& a) { return TextValue(a.identifier); }},
    {{"model", "MODEL", Type::TEXT, Place::TABLE, "Adapter", "Model"}, [](const Adapter& a) { return TextValue(a.model); }},
    {{"serial_number", "SERIAL", Type::TEXT, Place::TABLE, "Adapter", "Serial number"}, [](const Adapter& a) { return TextValue(a.serialNumber); }},
    {{"type", "TYPE", Type::TEXT, Place::TABLE, "Adapter", "Kind of adapter"}, [](const Adapter& a) { return TextValue(a.type); }},
    {{"ports", "PORTS", Type::INTEGER, Place::TABLE, "Adapter", "Number of Fibre Channel and FCoE ports"}, [](const Adapter& a) { return Value(std::uint64_t{a.portCount}); }},
    {{"manufacturer", "MANUFACTURER", Type::TEXT, Place::TABLE, "Adapter", "Maker"}, [](const Adapter& a) { return TextValue(a.manufacturer); }},
    {{"pci_vendor_id", "VENDOR", Type::TEXT, Place::WIDE, "Adapter", "PCI vendor id"}, [](const Adapter& a) { return TextValue(HexText(a.vendorId)); }},
    {{"pci_subsystem_vendor_id", "SUBVENDOR", Type::TEXT, Place::WIDE, "Adapter", "PCI vendor id of the card"}, [](const Adapter& a) { return TextValue(HexText(a.subsystemVendorId)); }},
    {{"pci_subsystem_device_id", "SUBDEVICE", Type::TEXT, Place::WIDE, "Adapter", "PCI device id of the card"}, [](const Adapter& a) { return TextValue(HexText(a.subsystemDeviceId)); }},
    {{"flash_multiboot_version", "MULTIBOOT", Type::TEXT, Place::WIDE, "Flash", "Version of the multi-boot image"}, [](const Adapter& a) { return TextValue(a.multibootVersion); }},
    {{"flash_firmware_version", "FIRMWARE", Type::TEXT, Place::WIDE, "Flash", "Version of the firmware in flash"}, [](const Adapter& a) { return TextValue(a.firmwareVersion); }},
    {{"flash_bios_version", "BIOS", Type::TEXT, Place::WIDE, "Flash", "Version of the BIOS in flash"}, [](const Adapter& a) { return TextValue(a.biosVersion); }},
    {{"flash_fcode_version", "FCODE", Type::TEXT, Place::WIDE, "Flash", "Version of the FCode in flash"}, [](const Adapter& a) { return TextValue(a.fcodeVersion); }},
    {{"flash_efi_version", "EFI", Type::TEXT, Place::WIDE, "Flash", "Version of the EFI driver in flash"}, [](const Adapter& a) { return TextValue(a.efiVersion); }},
    {{"vpd_part_number", "PART", Type::TEXT, Place::DETAILED, "Vital product data", "Part number, keyword PN"}, [](const Adapter& a) { return VpdValue(a, "PN"); }},
    {{"vpd_engineering_change", "EC", Type::TEXT, Place::DETAILED, "Vital product data", "Engineering change level, keyword EC"}, [](const Adapter& a) { return VpdValue(a, "EC"); }},
    {{"vpd_serial_number", "SN", Type::TEXT, Place::DETAILED, "Vital product data", "Serial number, keyword SN"}, [](const Adapter& a) { return VpdValue(a, "SN"); }},
    {{"vpd_manufacturer_id", "MN", Type::TEXT, Place::DETAILED, "Vital product data", "Manufacturer id, keyword MN"}, [](const Adapter& a) { return VpdValue(a, "MN"); }},
};

#define ORFC_COUNTER(name, what) \
    {{name, "", Type::INTEGER, Place::DETAILED, "Counters", what}, CounterValue<name>}
#define ORFC_NVRAM(name, what) \
    {{"nvram_" name, "", Type::INTEGER, Place::DETAILED, "NVRAM", what}, NvramValue<name>}

constexpr ColumnOf<Port> PORT[] = {
    {{"port", "PORT", Type::TEXT, Place::ALWAYS, "Port", "Identifier, as in orfc-esxcli"}, [](const Port& p) { return TextValue(p.identifier); }},
    {{"host", "HOST", Type::TEXT, Place::TABLE, "Port", "The kernel's name of the port"}, [](const Port& p) { return TextValue(p.kernelName); }},
    {{"state", "STATE", Type::VERDICT, Place::TABLE, "Link", "State of the link: online or offline"}, [](const Port& p) { return TextValue(p.state); }},
    {{"speed_gbps", "Gb/s", Type::INTEGER, Place::TABLE, "Link", "Speed of the link in Gb/s"}, [](const Port& p) { return NumberValue(p.speed); }},
    {{"port_id", "PORT ID", Type::TEXT, Place::TABLE, "Link", "Fibre Channel address"}, [](const Port& p) { return TextValue(p.portId); }},
    {{"fabric", "FABRIC", Type::TEXT, Place::TABLE, "Link", "Name of the fabric, that of its principal switch"}, [](const Port& p) { return TextValue(WwnText(p.fabricName)); }},
    {{"adapter", "ADAPTER", Type::TEXT, Place::TABLE, "Port", "Identifier of its adapter"}, [](const Port& p) { return TextValue(p.adapter->identifier); }},
    {{"port_name", "PORT NAME", Type::TEXT, Place::WIDE, "Port", "Worldwide port name"}, [](const Port& p) { return TextValue(WwnText(p.portName)); }},
    {{"node_name", "NODE NAME", Type::TEXT, Place::WIDE, "Port", "Worldwide node name"}, [](const Port& p) { return TextValue(WwnText(p.nodeName)); }},
    {{"port_number", "NUMBER", Type::INTEGER, Place::WIDE, "Port", "Number of the physical port on its adapter"}, [](const Port& p) { return Value(std::uint64_t{p.number}); }},
    {{"interface", "INTERFACE", Type::TEXT, Place::WIDE, "Port", "physical or virtual"}, [](const Port& p) { return TextValue(p.interface); }},
    {{"protocol", "PROTOCOL", Type::TEXT, Place::WIDE, "Port", "FC or FCoE"}, [](const Port& p) { return TextValue(p.protocol); }},
    {{"pci_address", "PCI", Type::TEXT, Place::WIDE, "Port", "Bus, device and function"}, [](const Port& p) { return TextValue(p.pciAddress); }},
    {{"device", "DEVICE", Type::TEXT, Place::WIDE, "Port", "The kernel's parent device"}, [](const Port& p) { return TextValue(p.device); }},
    {{"driver", "DRIVER", Type::TEXT, Place::WIDE, "Port", "Kernel module"}, [](const Port& p) { return TextValue(p.driver); }},
    {{"driver_version", "DRIVER VERSION", Type::TEXT, Place::WIDE, "Port", "Version of the driver"}, [](const Port& p) { return TextValue(p.driverVersion); }},
    {{"firmware_version", "FIRMWARE", Type::TEXT, Place::WIDE, "Port", "Version of the running firmware"}, [](const Port& p) { return TextValue(p.firmwareVersion); }},
    {{"bios_version", "BIOS", Type::TEXT, Place::WIDE, "Port", "Version of the boot code in flash"}, [](const Port& p) { return TextValue(p.biosVersion); }},
    {{"link_state", "LINK", Type::TEXT, Place::WIDE, "Link", "State of the link in the kernel's words"}, [](const Port& p) { return TextValue(p.linkState); }},
    {{"supported_speeds_gbps", "SPEEDS", Type::TEXT, Place::WIDE, "Link", "Speeds that the port supports, in Gb/s, with blanks between them"}, [](const Port& p) { return TextValue(SpeedsText(p)); }},
    {{"port_type", "TYPE", Type::TEXT, Place::WIDE, "Link", "Kind of port, by its topology"}, [](const Port& p) { return TextValue(p.type); }},
    {{"connection", "CONNECTION", Type::TEXT, Place::WIDE, "Link", "point to point or loop"}, [](const Port& p) { return TextValue(p.connectionMode); }},
    {{"switch", "SWITCH", Type::TEXT, Place::WIDE, "Link", "Name of the adjacent switch"}, [](const Port& p) { return TextValue(WwnText(p.switchName)); }},
    {{"symbolic_name", "SYMBOLIC NAME", Type::TEXT, Place::DETAILED, "Port", "Name by which the port is registered in its fabric"}, [](const Port& p) { return TextValue(p.symbolicName); }},
    {{"host_nqn", "HOST NQN", Type::TEXT, Place::DETAILED, "Port", "NVMe qualified name of this host"}, [](const Port& p) { return TextValue(p.hostNqn); }},
    {{"device_loss_timeout_seconds", "LOSS TIMEOUT s", Type::INTEGER, Place::DETAILED, "Port", "Seconds until a target that vanished is given up"}, [](const Port& p) { return NumberValue(p.deviceLossTimeout); }},
    ORFC_COUNTER("link_failure_count", "Link failures"),
    ORFC_COUNTER("loss_of_sync_count", "Losses of synchronization"),
    ORFC_COUNTER("loss_of_signal_count", "Losses of signal"),
    ORFC_COUNTER("prim_seq_protocol_err_count", "Primitive sequence protocol errors"),
    ORFC_COUNTER("invalid_tx_word_count", "Invalid transmission words"),
    ORFC_COUNTER("invalid_crc_count", "Frames with an invalid CRC"),
    ORFC_COUNTER("lip_count", "Loop initializations"),
};

/// What a port answers beyond its record.
constexpr ColumnOf<Port> SETTINGS[] = {
    {{"port", "PORT", Type::TEXT, Place::ALWAYS, "Settings", "Identifier, as in orfc-esxcli"}, [](const Port& p) { return TextValue(p.identifier); }},
    {{"temperature_celsius", "TEMP C", Type::INTEGER, Place::DETAILED, "Settings", "Temperature of the board"}, [](const Port& p) { return p.settings.temperature ? Value(std::int64_t{*p.settings.temperature}) : Value(); }},
    {{"beacon", "BEACON", Type::FLAG, Place::DETAILED, "Settings", "Whether the port blinks to be found"}, [](const Port& p) { return FlagValue(p.settings.beacon); }},
    {{"fec", "FEC", Type::FLAG, Place::DETAILED, "Settings", "Whether forward error correction is on"}, [](const Port& p) { return FlagValue(p.settings.fec); }},
    {{"credit_recovery", "BB-CR", Type::FLAG, Place::DETAILED, "Settings", "Whether buffer-to-buffer credit recovery is on"}, [](const Port& p) { return FlagValue(p.settings.creditRecovery); }},
    {{"credit_recovery_reason", "BB-CR REASON", Type::TEXT, Place::DETAILED, "Settings", "Why credit recovery is off"}, [](const Port& p) { return TextValue(p.settings.creditRecoveryReason); }},
    {{"congestion_management", "CONGESTION", Type::FLAG, Place::DETAILED, "Settings", "Whether congestion management is on"}, [](const Port& p) { return FlagValue(p.settings.congestionManagement); }},
    ORFC_NVRAM("data_rate", "Configured speed, as the library's code"),
    ORFC_NVRAM("connection_options", "Configured topology, as the library's code"),
    ORFC_NVRAM("operation_mode", "Operation mode, as the library's code"),
    ORFC_NVRAM("frame_size", "Largest frame in bytes"),
    ORFC_NVRAM("execution_throttle", "Largest number of commands in flight"),
    ORFC_NVRAM("luns_per_target", "Largest number of LUNs of a target"),
    ORFC_NVRAM("login_retry_count", "Login attempts"),
    ORFC_NVRAM("port_down_retry_count", "Seconds until commands to a port that is down fail"),
    ORFC_NVRAM("link_down_timeout", "Seconds until a link that is down is reported"),
    ORFC_NVRAM("loop_reset_delay", "Seconds after a loop reset"),
    ORFC_NVRAM("interrupt_delay_timer", "Delay of interrupts, in units of 100 microseconds"),
    {{"fec_corrected_errors", "FEC CORRECTED", Type::INTEGER, Place::DETAILED, "Counters", "Errors that forward error correction has corrected"}, [](const Port& p) { return NumberValue(p.settings.correctedFecErrors); }},
    {{"fec_uncorrected_errors", "FEC UNCORRECTED", Type::INTEGER, Place::DETAILED, "Counters", "Errors that forward error correction could not correct"}, [](const Port& p) { return NumberValue(p.settings.uncorrectedFecErrors); }},
};

constexpr ColumnOf<Target> TARGET[] = {
    {{"target", "TARGET", Type::TEXT, Place::DETAILED, "Target", "Identifier, as in orfc-esxcli"}, [](const Target& t) { return TextValue(t.identifier); }},
    {{"port", "PORT", Type::TEXT, Place::ALWAYS, "Target", "Identifier of the port that sees it"}, [](const Target& t) { return TextValue(t.port->identifier); }},
    {{"port_name", "TARGET PORT", Type::TEXT, Place::ALWAYS, "Target", "Worldwide name of the storage port"}, [](const Target& t) { return TextValue(WwnText(t.portName)); }},
    {{"state", "STATE", Type::VERDICT, Place::TABLE, "Target", "online, offline or unconfigured"}, [](const Target& t) { return TextValue(t.state); }},
    {{"protocol", "PROTOCOL", Type::TEXT, Place::TABLE, "Target", "FCP or NVMe"}, [](const Target& t) { return TextValue(t.protocol); }},
    {{"vendor", "VENDOR", Type::TEXT, Place::TABLE, "Target", "Vendor of the storage"}, [](const Target& t) { return TextValue(t.vendor); }},
    {{"product", "PRODUCT", Type::TEXT, Place::TABLE, "Target", "Product"}, [](const Target& t) { return TextValue(t.product); }},
    {{"luns", "LUNS", Type::INTEGER, Place::TABLE, "Target", "Number of LUNs or namespaces"}, [](const Target& t) { return Value(std::uint64_t{t.lunCount}); }},
    {{"remote_port", "REMOTE PORT", Type::TEXT, Place::TABLE, "Target", "The kernel's name of the target"}, [](const Target& t) { return TextValue(t.kernelName); }},
    {{"remote_port_state", "KERNEL STATE", Type::TEXT, Place::WIDE, "Target", "State in the kernel's words"}, [](const Target& t) { return TextValue(t.kernelState); }},
    {{"node_name", "NODE NAME", Type::TEXT, Place::WIDE, "Target", "Worldwide node name of the storage"}, [](const Target& t) { return TextValue(WwnText(t.nodeName)); }},
    {{"port_id", "PORT ID", Type::TEXT, Place::WIDE, "Target", "Fibre Channel address"}, [](const Target& t) { return TextValue(t.portId); }},
    {{"target_number", "NUMBER", Type::INTEGER, Place::WIDE, "Target", "Number of the SCSI target"}, [](const Target& t) { return NumberValue(t.number); }},
    {{"roles", "ROLES", Type::TEXT, Place::WIDE, "Target", "Roles in the kernel's words"}, [](const Target& t) { return TextValue(t.roles); }},
    {{"type", "TYPE", Type::TEXT, Place::WIDE, "Target", "Kind of device"}, [](const Target& t) { return TextValue(t.type); }},
    {{"revision", "REVISION", Type::TEXT, Place::WIDE, "Target", "Revision of the product"}, [](const Target& t) { return TextValue(t.revision); }},
    {{"serial_number", "SERIAL", Type::TEXT, Place::WIDE, "Target", "Serial number"}, [](const Target& t) { return TextValue(t.serialNumber); }},
    {{"nqn", "NQN", Type::TEXT, Place::DETAILED, "Target", "NVMe qualified name of the subsystem"}, [](const Target& t) { return TextValue(t.nqn); }},
    {{"controller_id", "CONTROLLER", Type::INTEGER, Place::DETAILED, "Target", "Number of the NVMe controller"}, [](const Target& t) { return NumberValue(t.controllerId); }},
    {{"device_loss_timeout_seconds", "LOSS TIMEOUT s", Type::INTEGER, Place::DETAILED, "Target", "Seconds until the target is given up after it vanished"}, [](const Target& t) { return NumberValue(t.deviceLossTimeout); }},
    {{"fast_fail_timeout_seconds", "FAIL TIMEOUT s", Type::INTEGER, Place::DETAILED, "Target", "Seconds until commands to the target fail after it vanished"}, [](const Target& t) { return NumberValue(t.fastFailTimeout); }},
};

constexpr ColumnOf<Lun> LUN[] = {
    {{"lun", "IDENTIFIER", Type::TEXT, Place::DETAILED, "LUN", "Identifier, as in orfc-esxcli"}, [](const Lun& l) { return TextValue(l.identifier); }},
    {{"port", "PORT", Type::TEXT, Place::ALWAYS, "LUN", "Identifier of the port that sees it"}, [](const Lun& l) { return TextValue(l.target->port->identifier); }},
    {{"target_port_name", "TARGET PORT", Type::TEXT, Place::ALWAYS, "LUN", "Worldwide name of the storage port"}, [](const Lun& l) { return TextValue(WwnText(l.target->portName)); }},
    {{"lun_number", "LUN", Type::INTEGER, Place::ALWAYS, "LUN", "Number of the LUN or namespace"}, [](const Lun& l) { return Value(std::uint64_t{l.number}); }},
    {{"device", "DEVICE", Type::TEXT, Place::TABLE, "LUN", "Block device"}, [](const Lun& l) { return TextValue(l.device); }},
    {{"size_bytes", "SIZE", Type::BYTES, Place::TABLE, "LUN", "Size in bytes"}, [](const Lun& l) { return NumberValue(l.size); }},
    {{"worldwide_id", "WORLDWIDE ID", Type::TEXT, Place::TABLE, "LUN", "Worldwide id"}, [](const Lun& l) { return TextValue(l.worldwideId); }},
    {{"address", "H:C:T:L", Type::TEXT, Place::TABLE, "LUN", "Host, channel, target and LUN in the kernel"}, [](const Lun& l) { return TextValue(l.address); }},
    {{"map", "MAP", Type::TEXT, Place::TABLE, "Map", "Multipath map"}, [](const Lun& l) { return TextValue(l.map); }},
    {{"vendor", "VENDOR", Type::TEXT, Place::WIDE, "LUN", "Vendor of the storage"}, [](const Lun& l) { return TextValue(l.vendor); }},
    {{"product", "PRODUCT", Type::TEXT, Place::WIDE, "LUN", "Product"}, [](const Lun& l) { return TextValue(l.product); }},
    {{"revision", "REVISION", Type::TEXT, Place::WIDE, "LUN", "Revision of the product"}, [](const Lun& l) { return TextValue(l.revision); }},
    {{"block_size_bytes", "BLOCK", Type::INTEGER, Place::WIDE, "LUN", "Size of a logical block in bytes"}, [](const Lun& l) { return NumberValue(l.blockSize); }},
    {{"device_state", "STATE", Type::TEXT, Place::WIDE, "LUN", "State of the device in the kernel's words"}, [](const Lun& l) { return TextValue(l.state); }},
    {{"access_state", "ACCESS", Type::TEXT, Place::WIDE, "LUN", "Access state that the storage reports for this path"}, [](const Lun& l) { return TextValue(l.accessState); }},
    {{"map_device", "MAP DEVICE", Type::TEXT, Place::WIDE, "Map", "Device of the map"}, [](const Lun& l) { return TextValue(l.mapDevice); }},
    {{"map_path_state", "IN MAP", Type::TEXT, Place::WIDE, "Map", "State of the path in its map"}, [](const Lun& l) { return TextValue(l.mapPathState); }},
    {{"map_state", "MAP STATE", Type::TEXT, Place::WIDE, "Map", "State of the map"}, [](const Lun& l) { return TextValue(l.mapState); }},
    {{"map_id", "MAP ID", Type::TEXT, Place::WIDE, "Map", "Id of the map"}, [](const Lun& l) { return TextValue(l.mapId); }},
};
// clang-format on

template <typename Object>
std::vector<const Object*> Meant(const Request& request, const std::deque<Object>& all,
                                 std::set<const Object*> Selection::*chosen) {
    if (const std::optional<Selection> selection = SelectionOf(request)) {
        return InOrder(all, (*selection).*chosen);
    }
    std::vector<const Object*> objects;
    objects.reserve(all.size());
    for (const Object& object : all) {
        objects.push_back(&object);
    }
    return objects;
}

} // namespace

std::span<const ColumnOf<Adapter>> AdapterColumns() {
    return ADAPTER;
}
std::span<const ColumnOf<Port>> PortColumns() {
    return PORT;
}
std::span<const ColumnOf<Port>> SettingsColumns() {
    return SETTINGS;
}
std::span<const ColumnOf<Target>> TargetColumns() {
    return TARGET;
}
std::span<const ColumnOf<Lun>> LunColumns() {
    return LUN;
}

Selection FindAll(const Request& request) {
    Selection selection;
    for (const std::string& name : request.names) {
        Selection found = Find(request.host, name);
        selection.adapters.merge(found.adapters);
        selection.ports.merge(found.ports);
        selection.targets.merge(found.targets);
        selection.luns.merge(found.luns);
    }
    return selection;
}

std::optional<Selection> SelectionOf(const Request& request) {
    return request.names.empty() ? std::nullopt : std::optional(WithRelatives(request.host, FindAll(request)));
}

std::vector<const Adapter*> AdaptersOf(const Request& request) {
    return Meant(request, request.host.adapters, &Selection::adapters);
}
std::vector<const Port*> PortsOf(const Request& request) {
    return Meant(request, request.host.ports, &Selection::ports);
}
std::vector<const Target*> TargetsOf(const Request& request) {
    return Meant(request, request.host.targets, &Selection::targets);
}
std::vector<const Lun*> LunsOf(const Request& request) {
    return Meant(request, request.host.luns, &Selection::luns);
}

} // namespace orfc
