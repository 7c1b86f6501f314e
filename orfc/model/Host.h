/// @file
/// A host as typed records, read from the library once.
///
/// What is unknown is empty: a text without characters, or no value. All texts are as the library has them, so they
/// may hold any bytes.
#pragma once

#include "ModuleIdentity.h"
#include "Readings.h"

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orfc {

/// A World Wide Name as a number, most significant byte first; 0 for none.
using Wwn = std::uint64_t;

/// A counter by its name in the kernel.
using Counters = std::map<std::string, std::uint64_t, std::less<>>;

struct Adapter {
    std::string identifier; ///< "Adapter_MODEL_SERIAL", as in `orfc-esxcli`; not unique without a model
    std::string model;
    std::string serialNumber;
    std::string manufacturer;
    std::string type;
    std::uint32_t vendorId = 0; ///< PCI ids; 0: unknown
    std::uint32_t subsystemVendorId = 0;
    std::uint32_t subsystemDeviceId = 0;
    std::string multibootVersion; ///< versions in flash
    std::string firmwareVersion;
    std::string biosVersion;
    std::string fcodeVersion;
    std::string efiVersion;
    std::size_t portCount = 0;
    std::vector<std::pair<std::string, std::string>> vpd; ///< keywords and their texts, where they were read
};

/// A monitored value of a module, with its thresholds.
template <typename Unit> using Monitored = std::optional<decoders::Reading<Unit>>;

struct Lane {
    Monitored<decoders::Milliamperes> bias;
    Monitored<decoders::Milliwatts> transmitPower;
    Monitored<decoders::Milliwatts> receivePower;
};

enum class ModuleState {
    UNREAD,    ///< the library has no image of it
    EMPTY,     ///< nothing is plugged in
    BAD,       ///< its checksum is wrong: nothing in it can be trusted
    UNDECODED, ///< of a family that isn't decoded
    READ,
};

struct Transceiver {
    ModuleState state = ModuleState::UNREAD;
    decoders::ModuleFamily family = decoders::ModuleFamily::OTHER;
    decoders::ModuleIdentity identity;
    bool hasDiagnostics = false;
    bool isReady = false; ///< false: the module has no values yet
    bool isAverageReceivePower = false;
    /// Of thresholds and calibration constants. If it is wrong, no value has thresholds.
    decoders::Checksum diagnosticsChecksum = decoders::Checksum::UNREAD;
    Monitored<decoders::Celsius> temperature;
    Monitored<decoders::Volts> voltage;
    std::vector<Lane> lanes; ///< one for the SFP family, four for QSFP

    /// The worst of all values, none where no value has thresholds.
    std::optional<decoders::Verdict> WorstVerdict() const;
};

/// The far end of a port's link, as it describes itself (Read Diagnostic Parameters).
struct FarEnd {
    bool isRead = false;
    Transceiver transceiver; ///< its readings; identity where it tells it
    Wwn portName = 0;
    Wwn nodeName = 0;
    std::optional<unsigned> speed; ///< Gb/s
    std::vector<unsigned> supportedSpeeds;
    Counters counters; ///< of its link error block and forward error correction
    std::optional<std::uint32_t> bufferCredits;
    std::optional<std::uint32_t> attachedBufferCredits; ///< of this port, as the far end knows them
};

/// What a port's library functions answer beyond its record; read on request.
struct PortSettings {
    std::optional<int> temperature; ///< of the board, degrees Celsius
    std::optional<bool> beacon;
    std::optional<bool> fec;
    std::optional<std::uint64_t> correctedFecErrors;
    std::optional<std::uint64_t> uncorrectedFecErrors;
    std::optional<bool> creditRecovery;          ///< whether it is configured
    std::optional<bool> isCreditRecoveryRunning; ///< whether it is negotiated with the far end
    std::string creditRecoveryReason;            ///< why it is off
    std::optional<bool> congestionManagement;
    std::vector<std::pair<const char*, std::uint32_t>> nvram; ///< parameters by key
};

struct Port {
    const Adapter* adapter = nullptr;
    std::string identifier; ///< "FC_" and the WWPN, as in `orfc-esxcli`
    Wwn portName = 0;
    Wwn nodeName = 0;
    Wwn fabricName = 0;            ///< of the principal switch
    Wwn switchName = 0;            ///< of the adjacent switch
    unsigned number = 0;           ///< of the physical port on its adapter
    unsigned physicalPort = 0;     ///< of the physical port in the host: virtual ports share it
    std::string portId;            ///< "01:30:00"
    std::string state;             ///< "online", "offline"
    std::string interface;         ///< "physical", "virtual"
    std::string protocol;          ///< "FC", "FCoE"
    std::string type;              ///< "node port"
    std::string connectionMode;    ///< "point to point", "loop"
    std::optional<unsigned> speed; ///< Gb/s
    std::vector<unsigned> supportedSpeeds;
    std::string pciAddress;
    std::string driverVersion;
    std::string firmwareVersion;
    std::string biosVersion;
    std::string hostNqn;

    // Of the operating system
    std::string kernelName; ///< "host2"
    std::string device;
    std::string driver;
    std::string linkState; ///< in the kernel's words
    std::string symbolicName;
    std::optional<unsigned> deviceLossTimeout; ///< seconds

    Counters counters;
    Transceiver transceiver;
    FarEnd farEnd;
    PortSettings settings;
    std::size_t targetCount = 0;
    std::size_t lunCount = 0;
    std::size_t pathsDown = 0;

    bool IsOnline() const { return state == "online"; }
};

struct Target {
    const Port* port = nullptr;
    std::string identifier;
    Wwn portName = 0;
    Wwn nodeName = 0;
    std::string portId;
    std::optional<unsigned> number;
    std::string state;    ///< "online", "offline", "unconfigured"
    std::string protocol; ///< "FCP", "NVMe"
    std::string type;     ///< "disk", "tape"
    std::string vendor;
    std::string product;
    std::string revision;
    std::string serialNumber;
    std::string nqn;
    std::optional<unsigned> controllerId; ///< of an NVMe target

    std::string kernelName;  ///< "rport-2:0-1"
    std::string kernelState; ///< in the kernel's words
    std::string roles;
    std::optional<unsigned> deviceLossTimeout; ///< seconds
    std::optional<unsigned> fastFailTimeout;   ///< seconds

    Counters counters;
    std::size_t lunCount = 0;

    bool IsDown() const;
};

/// The steps from a port to a device, in their order. A path is down at the first that is bad.
enum class Step { LINK, REMOTE_PORT, DEVICE, ACCESS, MAP };

/// One way to a LUN or namespace.
struct Lun {
    const Target* target = nullptr;
    std::string identifier;
    unsigned number = 0;
    std::string vendor;
    std::string product;
    std::string revision;
    std::string worldwideId;           ///< "naa.60…", "eui.…"
    std::optional<std::uint64_t> size; ///< bytes
    std::optional<unsigned> blockSize; ///< bytes

    std::string address; ///< "2:0:1:5"
    std::string device;  ///< "sdb"
    std::string state;   ///< in the kernel's words
    std::string accessState;
    std::string map;
    std::string mapDevice;
    std::string mapId;
    std::string mapState;
    std::string mapPathState;

    bool IsNamespace() const { return target->protocol == "NVMe"; }
    /// The first step that is bad, none for a path that works.
    std::optional<Step> DownAt() const;
    /// Whether the map is of another worldwide id.
    bool IsForeignInMap() const;
};

struct Host {
    std::deque<Adapter> adapters;
    std::deque<Port> ports; ///< Fibre Channel and FCoE functions, those of an adapter together
    std::deque<Target> targets;
    std::deque<Lun> luns;
    std::vector<std::string> messages; ///< what couldn't be read, one line each
};

/// "21:00:00:24:ff:7e:2d:94"; empty for 0.
std::string WwnText(Wwn name);
/// A designator as the kernel spells it: "naa.60…", "eui.…" of a namespace, "t10.…" for a text, else "0x…". Empty if
/// all bytes are zero.
std::string DesignatorText(decoders::Bytes id, bool isNamespace);

} // namespace orfc
