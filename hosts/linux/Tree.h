/// @file
/// Adapters, Fibre Channel ports, targets and LUNs of a Linux host as the library's records.
#pragma once

#include "Api.h"
#include "Sysfs.h"

#include <deque>
#include <map>
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

/// A LUN that is being read.
struct Lun {
    _tagVEXAPI_SDMLun record{};
    VX_UINT32 deviceType = 0;
    VX_UINT32 namespaceNumber = 0; ///< 0: none
};

struct Target {
    _tagVEXAPI_SDMTarget record{};
    std::string name;  ///< in class/fc_remote_ports/; empty: only known as an NVMe controller
    std::string roles; ///< as the kernel writes them
    std::vector<_tagVEXAPI_SDMLun> luns;
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

struct Port {
    unsigned number = 0;         ///< the N of class/fc_host/hostN
    unsigned physicalNumber = 0; ///< of a virtual port's physical port; otherwise `number`
    std::string name;            ///< "hostN"
    std::string owner;           ///< path of its device; functions of a PCI device have the same owner
    bool isFcoe = false;
    PciFunction pci;
    Identity identity;
    _vexapi_protocol_t record{};
    std::deque<Target> targets;
};

struct PhysicalPort {
    unsigned number = 0; ///< of its fc_host
    _vexapi_phy_port_t record{};
    VX_PROTOCOL_LIST protocols{};
};

struct Adapter {
    std::string owner;
    PciFunction pci;   ///< of its first port
    Identity identity; ///< from the first of its ports that has it
    _vexapi_adapter_t record{};
    VX_PHY_PORT_LIST list{};
    std::deque<PhysicalPort> ports;
};

/// The whole host, read by the constructor. What can't be read is reported on standard output and left out.
class Tree {
public:
    /// `root` holds `sys/`.
    explicit Tree(const std::string& root);

    /// False if `root` has no `sys/class`.
    bool IsValid() const { return mClasses.IsOpen(); }

    VX_ADAPTER_LIST* List() { return &mList; }
    std::size_t PortCount() const { return mPorts.size(); }

    /// The port of a handle, or of a handle's word; null if there is no such port.
    Port* FindPort(const VX_PORT_HANDLE* handle);
    Port* FindPort(VX_UINT32 word);

    /// Reads the counters of a port, or reads them again.
    void ReadCounters(Port& port);

    /// The folders class/fc_host and class/fc_remote_ports.
    const Folder& Hosts() const { return mHosts; }
    const Folder& RemotePorts() const { return mRemotePorts; }

private:
    void ReadPorts();
    void ReadRemotePorts();
    void ReadBlockDevices();
    void ReadLuns();
    void ReadNamespaces(const std::string& controller, Target& target);
    void ReadControllers();
    void Join();

    Folder mRoot;
    Folder mSystem;
    Folder mClasses;
    Folder mHosts;
    Folder mRemotePorts;
    /// Names in class/block by LUN ("0:0:1:300") or controller ("nvme0").
    std::multimap<std::string, std::string> mBlockDevices;
    std::deque<Port> mPorts; ///< sorted by number
    std::deque<Adapter> mAdapters;
    VX_ADAPTER_LIST mList{};
};

/// Prints "vexapi linux: WHAT: WHY" to the library's output.
void Tell(const std::string& what, const std::string& why);

} // namespace host
