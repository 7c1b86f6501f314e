/// @file
/// The Fibre Channel ports of a Linux host, what they see, and the adapters that own them, as the library's records.
#pragma once

#include "Api.h"
#include "Sysfs.h"

#include <deque>
#include <map>
#include <string>
#include <vector>

namespace host {

/// What a port says of its adapter.
struct Identity {
    std::string model;
    std::string serialNumber;
    std::string manufacturer;
};

/// The PCI function that a port belongs to; all zero where it is none.
struct PciFunction {
    std::string path; ///< of its folder, from class/fc_host/; empty: there is none
    __CHIPPROPERTY chip{};
    VX_UINT32 classCode = 0; ///< class, subclass, programming interface: a byte each
    VX_UINT32 revision = 0;
};

/// A LUN while it is read.
struct Lun {
    _tagVEXAPI_SDMLun record{};
    VX_UINT32 deviceType = 0;
    VX_UINT32 namespaceNumber = 0; ///< 0: none
};

struct Target {
    _tagVEXAPI_SDMTarget record{};
    std::string name;  ///< in class/fc_remote_ports/; empty: known as an NVMe controller alone
    std::string roles; ///< as the kernel writes them
    std::vector<_tagVEXAPI_SDMLun> luns;
};

/// An NVMe controller while it is read.
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
    unsigned physicalNumber = 0; ///< the same of the port that a virtual port belongs to, else `number`
    std::string name;            ///< "hostN"
    std::string owner;           ///< path of the device that owns it; functions of one PCI device are one owner
    bool isFcoe = false;
    PciFunction pci;
    Identity identity;
    _vexapi_protocol_t record{};
    std::deque<Target> targets;
};

struct PhysicalPort {
    unsigned number = 0; ///< of its host
    _vexapi_phy_port_t record{};
    VX_PROTOCOL_LIST protocols{};
};

struct Adapter {
    std::string owner;
    PciFunction pci;   ///< of its first port
    Identity identity; ///< from the first of its ports that tells
    _vexapi_adapter_t record{};
    VX_PHY_PORT_LIST list{};
    std::deque<PhysicalPort> ports;
};

/// The whole of it, read when it is made. What can't be read is told on standard output, a line each, and left out.
class Tree {
public:
    /// `root` holds `sys/`.
    explicit Tree(const std::string& root);

    /// False: `root` has no `sys/class`, so that it isn't what it should be.
    bool IsValid() const { return mClasses.IsOpen(); }

    VX_ADAPTER_LIST* List() { return &mList; }
    std::size_t PortCount() const { return mPorts.size(); }

    /// The port of a handle, or of a handle's word; null for none of this tree.
    Port* FindPort(const VX_PORT_HANDLE* handle);
    Port* FindPort(VX_UINT32 word);

    /// Reads the counters of a port, the first time or again.
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
    /// Names in class/block by what they belong to: "0:0:1:300", a LUN, or "nvme0", a controller.
    std::multimap<std::string, std::string> mBlockDevices;
    std::deque<Port> mPorts; ///< in order of their numbers
    std::deque<Adapter> mAdapters;
    VX_ADAPTER_LIST mList{};
};

/// A line in the library's output: "vexapi linux: WHAT: WHY".
void Tell(const std::string& what, const std::string& why);

} // namespace host
