/// @file
/// Adapters, Fibre Channel ports, targets and LUNs of a Linux host as the library's records.
#pragma once

#include "Api.h"
#include "Multipath.h"
#include "Scope.h"
#include "Sysfs.h"

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// Names of an adapter, from one of its ports.
struct Identity {
    std::string model;
    std::string serialNumber;
    std::string manufacturer;
};

/// The PCI function of a port; all zero if there is none.
struct PciFunction {
    std::string path; ///< of its folder, relative to class/fc_host/; empty: none
    __CHIPPROPERTY chip{};
    VX_UINT32 classCode = 0; ///< class, subclass and programming interface, a byte each
    VX_UINT32 revision = 0;
};

struct Lun {
    _tagVEXAPI_SDMLun record{};
    std::string name;  ///< in bus/scsi/devices/, or of a namespace in class/block/
    unsigned pass = 0; ///< of `Tree::BeginPath` that last asked for it
    VX_UINT32 deviceType = 0;
    VX_UINT32 namespaceNumber = 0; ///< 0: none
};

struct Target {
    _tagVEXAPI_SDMTarget record{};
    std::string name;       ///< in class/fc_remote_ports/; empty: only known as an NVMe controller
    std::string controller; ///< in class/nvme/; empty: none
    std::string roles;      ///< as the kernel writes them
    bool isNamed = true;    ///< by the scope
    std::vector<Lun> luns;
};

/// An NVMe controller that is being read.
struct Controller {
    std::string transport;
    std::string kind;
    std::string state;
    std::uint64_t hostPort = 0; ///< WWPN of this host's port
    _tagVEXAPI_SDMTarget target{};
    std::string hostNqn;
    VX_UINT8 hostId[16] = {};
};

struct Adapter;

struct Port {
    unsigned number = 0;         ///< the N of class/fc_host/hostN
    unsigned physicalNumber = 0; ///< of a virtual port's physical port; otherwise `number`
    std::string name;            ///< "hostN"
    std::string owner;           ///< path of its device; functions of a PCI device have the same owner
    bool isFcoe = false;
    bool isNamed = true; ///< by the scope
    PciFunction pci;
    _vexapi_protocol_t record{};
    Adapter* adapter = nullptr;
    std::deque<Target> targets;
};

struct PhysicalPort {
    unsigned number = 0; ///< of its fc_host
    _vexapi_phy_port_t record{};
    VX_PROTOCOL_LIST protocols{};
};

struct Adapter {
    const Port* first = nullptr; ///< of its ports
    bool isNamed = false;        ///< by the scope, as one of its ports
    Identity identity;           ///< each text from the first of its ports that has it
    _vexapi_adapter_t record{};
    VX_PHY_PORT_LIST list{};
    std::deque<PhysicalPort> ports;
};

/// Names in class/block/ by that of the parent device: a LUN ("0:0:1:300") or a controller ("nvme0").
using BlockDevices = std::multimap<std::string, std::string>;

/// The host, or as much of it as the scope asks for, read by the constructor. What can't be read is told and left out.
class Tree {
public:
    /// `root` holds `sys/`.
    Tree(const std::string& root, const Scope& scope);

    /// False if `root` has no `sys/class`.
    bool IsValid() const { return mClasses.Exists(); }

    VX_ADAPTER_LIST* List() { return &mList; }
    std::size_t PortCount() const { return mPorts.size(); }

    /// The port of a handle, or of a handle's word; null if there is no such port.
    Port* FindPort(const VX_PORT_HANDLE* handle);
    Port* FindPort(VX_UINT32 word);

    /// Reads the counters of a port, or reads them again.
    void ReadCounters(Port& port);

    const Folder& Classes() const { return mClasses; }
    /// The folders class/fc_host and class/fc_remote_ports.
    const Folder& Hosts() const { return mHosts; }
    const Folder& RemotePorts() const { return mRemotePorts; }
    /// The folder bus/scsi/devices.
    const Folder& Devices() const { return mDevices; }

    /// The block device of a LUN; empty if there is none.
    std::string BlockDeviceOf(const Lun& lun);
    /// The multipath map of a block device; null if there is none.
    const Map* MapOf(const std::string& blockDevice) { return mMaps.MapOf(blockDevice, mScope.target.has_value()); }
    /// To be called before a LUN is read again. What paths share is read once for all LUNs, and once more when a LUN is
    /// asked for a second time.
    void BeginPath(Lun& lun);

private:
    void ReadPorts();
    void JoinPorts();
    void ReadPortDetails(Port& port);
    void NameAdapters();
    void ReadRemotePorts();
    void ReadLuns();
    void ReadNamespaces(const std::string& controller, Target& target);
    void ReadControllers();
    void LinkRecords();

    Scope mScope;
    Folder mRoot;
    Folder mSystem;
    Folder mClasses;
    Folder mHosts;
    Folder mRemotePorts;
    Folder mDevices;
    std::optional<BlockDevices> mDisks;      ///< of LUNs; read if needed
    std::optional<BlockDevices> mNamespaces; ///< of controllers; the same
    std::deque<Port> mPorts;                 ///< sorted by number
    std::deque<Adapter> mAdapters;
    VX_ADAPTER_LIST mList{};
    Multipath mMaps;
    unsigned mPass = 1;
};

} // namespace host
