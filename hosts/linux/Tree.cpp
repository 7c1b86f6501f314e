#include "Tree.h"

#include "Attributes.h"
#include "Messages.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <map>
#include <optional>

namespace host {

namespace {

constexpr VX_UINT32 FIBRE_CHANNEL_ADAPTER = 2;
constexpr VX_UINT32 ETHERNET_ADAPTER = 1;
constexpr VX_UINT16 PHYSICAL_PORT = 1;
constexpr VX_UINT16 VIRTUAL_PORT = 3;
constexpr VX_UINT8 OFFLINE = 3;
constexpr VX_UINT32 CONGESTION_PHASE_2 = VX_UINT32{1} << 26;
constexpr VX_UINT8 UNKNOWN_STATE = 0xFF;       ///< congestion: neither healthy nor congested
constexpr VX_UINT8 NVME_TARGET = 0x08;         ///< in byte 5 of `TargetFlags`
constexpr VX_UINT8 NAMESPACE = 0x01;           ///< in `LunFlags`
constexpr VX_UINT32 NO_DEVICE_TYPE = 0x1F;     ///< SPC-4: unknown or no device type
constexpr VX_UINT16 NO_TARGET_NUMBER = 0xFFFF; ///< the kernel's -1
constexpr std::uint64_t MAX_HOST = 0xFFFFFFFF;
constexpr VX_UINT32 MAX_NAMESPACE = 0xFFFF; ///< limit of the library's record
constexpr VX_UINT32 SECTOR = 512;           ///< unit of the kernel's sizes
constexpr char HANDLE_TAG[4] = {'s', 'y', 's', 'f'};

/// The names in a folder that match a pattern, sorted by their numbers.
template <std::size_t count>
std::vector<std::pair<std::array<std::uint64_t, count>, std::string>>
Numbered(const Folder& folder, std::string_view pattern, const char* path = ".") {
    std::vector<std::pair<std::array<std::uint64_t, count>, std::string>> found;
    for (std::string& name : folder.Names(path)) {
        if (const auto numbers = NumbersIn<count>(name, pattern)) {
            found.emplace_back(*numbers, std::move(name));
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::vector<std::string> Split(std::string_view path) {
    std::vector<std::string> parts;
    while (!path.empty()) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        parts.emplace_back(path.substr(0, slash));
        path.remove_prefix(std::min(slash + 1, path.size()));
    }
    return parts;
}

/// Derives the owner of a port from the link of its entry: "../../devices/…/0000:0b:00.1/host3/fc_host/host3", or
/// "…/host3/vport-3:0-0/host7/fc_host/host7" for a virtual port.
void Place(const std::string& link, Port& port) {
    port.owner = port.name;
    port.physicalNumber = port.number;
    std::string path;
    std::string owner;
    std::string above;
    for (const std::string& part : Split(link)) {
        if (const auto host = NumbersIn<1>(part, "host#"); host && (*host)[0] <= MAX_HOST) {
            port.physicalNumber = static_cast<unsigned>((*host)[0]);
            port.isFcoe = above.starts_with("ctlr_"); // a controller on the FCoE bus, above a network device
            port.owner = owner.empty() ? path : owner;
            break;
        }
        path += part + '/';
        above = part;
        unsigned domain = 0;
        unsigned bus = 0;
        unsigned device = 0;
        unsigned function = 0;
        int size = 0;
        if (std::sscanf(part.c_str(), "%8x:%2x:%2x.%3u%n", &domain, &bus, &device, &function, &size) == 4 &&
            static_cast<std::size_t>(size) == part.size()) {
            port.pci.path = path;
            owner = path.substr(0, path.rfind('.'));
            port.record.PciBusNumber = static_cast<VX_UINT8>(bus);
            port.record.PciDeviceNumber = static_cast<VX_UINT8>(device);
            port.record.PciFunctionNumber = static_cast<VX_UINT8>(function);
        }
    }
    port.record.PortInterfaceType = link.find("/vport-") == std::string::npos ? PHYSICAL_PORT : VIRTUAL_PORT;
}

std::string TextOf(Text text) {
    std::string value;
    TakeText(text, value);
    return value;
}

bool IsComplete(const Identity& identity) {
    return !identity.model.empty() && !identity.serialNumber.empty() && !identity.manufacturer.empty();
}

/// Fills in missing texts.
void Complete(Identity& identity, const Identity& other) {
    for (std::string Identity::*const text : {&Identity::model, &Identity::serialNumber, &Identity::manufacturer}) {
        if ((identity.*text).empty()) {
            identity.*text = other.*text;
        }
    }
}

/// Takes what the transport class lacks from the card's vital product data.
void TakeIdentityFromCard(const Folder& hosts, const PciFunction& pci, Identity& identity) {
    if (pci.path.empty() || (!identity.model.empty() && !identity.serialNumber.empty())) {
        return;
    }
    constexpr std::size_t LIMIT = 1024; // as in the library's interface
    std::string vpd;
    const int error = hosts.ReadWhole((pci.path + VITAL_PRODUCT_DATA).c_str(), LIMIT, vpd);
    if (error != 0 && error != ENOENT) {
        Tell(Split(pci.path).back() + '/' + VITAL_PRODUCT_DATA, std::strerror(error));
    }
    Complete(identity, {TextOf(VpdKeyword(vpd, "PN")), TextOf(VpdKeyword(vpd, "SN")), TextOf(VpdKeyword(vpd, "MN"))});
}

/// The H:C:T prefix of the names of a target's LUNs; none if it has no LUNs.
std::optional<std::array<std::uint64_t, 3>> ScsiTarget(const Folder& remotePorts, const Target& target) {
    const auto numbers = NumbersIn<3>(target.name, "rport-#:#-#");
    if (target.record.TargetNumber != NO_TARGET_NUMBER) {
        return std::array{(*numbers)[0], (*numbers)[1], std::uint64_t{target.record.TargetNumber}};
    }
    // The attribute may be unreadable; the remote port's device folder contains the SCSI target.
    const auto found = Numbered<3>(remotePorts, "target#:#:#", (target.name + "/device").c_str());
    return found.empty() ? std::nullopt : std::optional(found.begin()->first);
}

template <std::size_t size> bool IsZero(const VX_UINT8 (&bytes)[size]) {
    return std::all_of(bytes, bytes + size, [](VX_UINT8 byte) { return byte == 0; });
}

void TakeIdentity(const Identity& identity, _vexapi_adapter_t& record) {
    TakeText(identity.model, record.Model);
    TakeText(identity.serialNumber, record.SerialNumber);
    TakeText(identity.manufacturer, record.Manufacturer);
}

void TakeChip(const Port& port, _vexapi_adapter_t& record) {
    record.AdapterType = !port.isFcoe                        ? FIBRE_CHANNEL_ADAPTER
                         : port.pci.classCode >> 8 == 0x0200 ? ETHERNET_ADAPTER
                                                             : 0;
    record.VendorId = port.pci.chip.VendorId;
    record.SubVendorId = port.pci.chip.SubVendorId;
    record.SubDeviceId = port.pci.chip.SubDeviceId;
    record.PciBusNumber = port.record.PciBusNumber;
    record.ChipRevision = port.pci.revision;
}

/// Reads the size of a LUN and converts it to the LUN's blocks.
void TakeSize(const Folder& classes, const std::string& blockDevice, Lun& lun) {
    TakeAll(classes, "block/" + blockDevice, BLOCK_DEVICE, LUN_DETAILS, lun);
    if (lun.record.BlockSize < SECTOR) {
        lun.record.BlockSize = SECTOR;
    }
    lun.record.BlockCount /= lun.record.BlockSize / SECTOR;
}

/// The block devices of NVMe controllers, or all others but maps, which have no parent.
BlockDevices ReadBlockDevices(const Folder& classes, bool ofControllers) {
    BlockDevices devices;
    const Folder blocks(classes, "block");
    for (const std::string& name : blocks.Names()) {
        if (name.starts_with("nvme") != ofControllers || name.starts_with("dm-")) {
            continue;
        }
        std::vector<std::string> parts = Split(blocks.Link(name.c_str()));
        if (parts.size() < 3) {
            continue;
        }
        parts.pop_back();
        if (parts.back() == "block") {
            parts.pop_back();
        }
        devices.emplace(parts.back(), name);
    }
    return devices;
}

/// Links the records into a list and returns its head.
template <class Records, class Project> auto Chain(Records& records, Project project) {
    decltype(&project(records.front())) next = nullptr;
    for (auto record = records.rbegin(); record != records.rend(); ++record) {
        project(*record).pNext = next;
        next = &project(*record);
    }
    return next;
}

} // namespace

Tree::Tree(const std::string& root, const Scope& scope)
    : mScope(scope), mRoot(root), mSystem(mRoot, "sys"), mClasses(mSystem, "class"), mHosts(mClasses, "fc_host"),
      mRemotePorts(mClasses, "fc_remote_ports"), mDevices(mSystem, "bus/scsi/devices"),
      mMaps(mSystem, mClasses, root.empty()) {
    ReadPorts();
    JoinPorts();
    for (Port& port : mPorts) {
        ReadPortDetails(port);
    }
    NameAdapters();
    ReadRemotePorts();
    ReadLuns();
    ReadControllers();
    LinkRecords();
}

Port* Tree::FindPort(VX_UINT32 word) {
    const auto found = std::find_if(mPorts.begin(), mPorts.end(), [&](const Port& p) { return p.number == word; });
    return found == mPorts.end() ? nullptr : &*found;
}

Port* Tree::FindPort(const VX_PORT_HANDLE* handle) {
    VX_UINT32 word = 0;
    if (handle == nullptr || std::memcmp(handle->opaque, HANDLE_TAG, sizeof HANDLE_TAG) != 0) {
        return nullptr;
    }
    std::memcpy(&word, handle->opaque + sizeof HANDLE_TAG, sizeof word);
    return FindPort(word);
}

void Tree::ReadPorts() {
    for (const auto& [numbers, name] : Numbered<1>(mHosts, "host#")) {
        if (numbers[0] > MAX_HOST) {
            Tell("fc_host/" + name, "left out, since the kernel has no such number");
            continue;
        }
        Port port;
        port.number = static_cast<unsigned>(numbers[0]);
        port.name = name;
        Place(mHosts.Link(name.c_str()), port);
        TakeAll(mHosts, name, HOST, PORTS, port);
        _vexapi_protocol_t& record = port.record;
        if (IsZero(record.WWPN)) {
            Tell("fc_host/" + name, "left out, since it has no port name");
            continue;
        }
        port.isNamed = Names(mScope.port, NameNumber(record.WWPN));
        record.ProtocolType = port.isFcoe ? 1 : 0;
        record.ScmCongState = UNKNOWN_STATE;
        const VX_UINT32 word = port.number;
        std::memcpy(record.PortHandle.opaque, HANDLE_TAG, sizeof HANDLE_TAG);
        std::memcpy(record.PortHandle.opaque + sizeof HANDLE_TAG, &word, sizeof word);
        mPorts.push_back(std::move(port));
    }
}

/// Makes the adapters of the ports.
void Tree::JoinPorts() {
    for (Port& port : mPorts) {
        auto adapter = std::find_if(mAdapters.begin(), mAdapters.end(),
                                    [&](const Adapter& known) { return known.first->owner == port.owner; });
        if (adapter == mAdapters.end()) {
            adapter = mAdapters.emplace(mAdapters.end());
            adapter->first = &port;
        }
        adapter->isNamed = adapter->isNamed || port.isNamed;
        port.adapter = &*adapter;
        // Virtual ports follow their physical port.
        auto physical = std::find_if(adapter->ports.begin(), adapter->ports.end(),
                                     [&](const PhysicalPort& known) { return known.number == port.physicalNumber; });
        if (physical == adapter->ports.end()) {
            physical = adapter->ports.emplace(adapter->ports.end());
            physical->number = port.physicalNumber;
            physical->record.PortNumber = static_cast<VX_UINT8>(adapter->ports.size());
            physical->record.pProtocolList = &physical->protocols;
        }
        _vexapi_protocol_t** end = &physical->protocols.pHead;
        while (*end != nullptr) {
            end = &(*end)->pNext;
        }
        *end = &port.record;
        ++physical->protocols.Count;
    }
}

/// Reads the rest of a port, and what it says of its adapter.
void Tree::ReadPortDetails(Port& port) {
    Adapter& adapter = *port.adapter;
    _vexapi_protocol_t& record = port.record;
    const VX_UINT32 adapterParts = adapter.isNamed ? mScope.Of(ADAPTERS) : 0;
    const VX_UINT32 portParts = port.isNamed ? mScope.Of(PORT_DETAILS | PORT_COUNTERS) : 0;
    if (!IsComplete(adapter.identity)) {
        Identity identity;
        TakeAll(mHosts, port.name, IDENTITY, adapterParts, identity);
        Complete(adapter.identity, identity);
    }
    TakeAll(mHosts, port.name, HOST, portParts, port);
    if (!port.pci.path.empty()) {
        const VX_UINT32 chipParts = adapter.first == &port ? adapterParts : 0;
        TakeAll(mHosts, port.pci.path, PCI, portParts | chipParts, port.pci);
        if (port.isFcoe && chipParts != 0) {
            Take(mHosts, port.pci.path, PCI_CLASS, port.pci);
        }
    }
    record.ChipProperty = port.pci.chip;
    if (record.PortState == OFFLINE) {
        record.PortSpeed = 0; // the kernel still shows the last one, or the fastest
    }
    if ((portParts & PORT_DETAILS) != 0 && mHosts.Has((port.name + "/statistics/" + NOTIFICATIONS).c_str())) {
        record.FeatureFlags |= CONGESTION_PHASE_2;
    }
    if ((portParts & PORT_COUNTERS) != 0) {
        ReadCounters(port);
    }
}

void Tree::ReadCounters(Port& port) {
    port.record.IoCount = 0; // summed up from several files
    port.record.MegaBytesCount = 0;
    TakeAll(mHosts, port.name + "/statistics", HOST_STATISTICS, PORT_COUNTERS, port.record);
}

void Tree::NameAdapters() {
    for (Adapter& adapter : mAdapters) {
        TakeChip(*adapter.first, adapter.record);
        if (adapter.isNamed && mScope.Of(ADAPTERS) != 0) {
            TakeIdentityFromCard(mHosts, adapter.first->pci, adapter.identity);
            TakeIdentity(adapter.identity, adapter.record);
        }
    }
}

void Tree::ReadRemotePorts() {
    if (mScope.Of(TARGETS) == 0) {
        return;
    }
    for (const auto& [numbers, name] : Numbered<3>(mRemotePorts, "rport-#:#-#")) {
        Port* const owner = numbers[0] > MAX_HOST ? nullptr : FindPort(static_cast<VX_UINT32>(numbers[0]));
        Target target;
        if (owner == nullptr || !owner->isNamed) {
            continue;
        }
        if (!Take(mRemotePorts, name, ROLES, target)) {
            Tell("fc_remote_ports/" + name, "left out, since it has no roles");
            continue;
        }
        const bool isFcp = target.roles.find("FCP Target") != std::string::npos;
        if (!isFcp && target.roles.find("NVMe Target") == std::string::npos) {
            continue;
        }
        _tagVEXAPI_SDMTarget& record = target.record;
        record.TargetNumber = NO_TARGET_NUMBER;
        record.DeviceType = isFcp ? NO_DEVICE_TYPE : 0;
        record.TargetFlags[5] = isFcp ? 0 : NVME_TARGET;
        record.ScmCongState = UNKNOWN_STATE;
        target.name = name;
        TakeAll(mRemotePorts, name, REMOTE_PORT, TARGETS, target);
        if (IsZero(record.PortName)) {
            Tell("fc_remote_ports/" + name, "left out, since it has no port name");
            continue;
        }
        target.isNamed = Names(mScope.target, NameNumber(record.PortName));
        if (target.isNamed) {
            TakeAll(mRemotePorts, name, REMOTE_PORT, mScope.Of(TARGET_DETAILS), target);
        }
        owner->targets.push_back(std::move(target));
    }
}

/// For one target the folder of each LUN is listed; for more, the links of all block devices are read once.
std::string Tree::BlockDeviceOf(const Lun& lun) {
    if (mScope.target) {
        const std::vector<std::string> names = mDevices.Names((lun.name + "/block").c_str());
        return names.empty() ? std::string() : names.front();
    }
    if (!mDisks) {
        mDisks = ReadBlockDevices(mClasses, false);
    }
    const auto found = mDisks->find(lun.name);
    return found == mDisks->end() ? std::string() : found->second;
}

void Tree::BeginPath(Lun& lun) {
    if (lun.pass == mPass) {
        ++mPass;
        mDisks.reset();
        mMaps.Forget();
    }
    lun.pass = mPass;
}

void Tree::ReadLuns() {
    // By H:C:T.
    std::map<std::array<std::uint64_t, 3>, Target*> targets;
    for (Port& port : mPorts) {
        for (Target& target : port.targets) {
            if (!target.isNamed || mScope.Of(TARGET_DETAILS | LUNS) == 0 ||
                (target.record.TargetFlags[5] & NVME_TARGET) != 0) {
                continue;
            }
            if (const auto numbers = ScsiTarget(mRemotePorts, target)) {
                targets.emplace(*numbers, &target);
            }
        }
    }
    if (targets.empty()) {
        return;
    }
    for (auto& [numbers, name] : Numbered<4>(mDevices, "#:#:#:#")) {
        const auto owner = targets.find({numbers[0], numbers[1], numbers[2]});
        if (owner == targets.end()) {
            continue;
        }
        Target& target = *owner->second;
        const bool isFirst = target.luns.empty();
        Lun& lun = target.luns.emplace_back();
        lun.name = std::move(name);
        lun.deviceType = NO_DEVICE_TYPE;
        lun.record.LunNumber = static_cast<VX_UINT16>(numbers[3]); // the first level of the address
        const VX_UINT32 details = Names(mScope.lun, lun.record.LunNumber) ? mScope.Of(LUN_DETAILS) : 0;
        const VX_UINT32 parts = details | (isFirst ? mScope.Of(TARGET_DETAILS) : 0);
        if (parts != 0 && !Take(mDevices, lun.name, INQUIRY, lun)) {
            TakeAll(mDevices, lun.name, INQUIRY_TEXTS, parts, lun);
        }
        if (isFirst) { // the target takes its texts from it
            std::copy_n(lun.record.VendorId, sizeof lun.record.VendorId, target.record.VendorId);
            std::copy_n(lun.record.ProductId, sizeof lun.record.ProductId, target.record.ProductId);
            std::copy_n(lun.record.ProductRevision, sizeof lun.record.ProductRevision, target.record.ProductRevision);
            target.record.DeviceType = lun.deviceType;
        }
        if (details == 0) {
            continue;
        }
        if (!Take(mDevices, lun.name, DESIGNATORS, lun)) {
            Take(mDevices, lun.name, WORLDWIDE_ID, lun);
        }
        if (const std::string disk = BlockDeviceOf(lun); !disk.empty()) {
            TakeSize(mClasses, disk, lun);
        }
    }
}

/// Namespaces are sorted by number; those without one, or with one that doesn't fit the record, are left out.
void Tree::ReadNamespaces(const std::string& controller, Target& target) {
    if (!mNamespaces) {
        mNamespaces = ReadBlockDevices(mClasses, true);
    }
    const auto [begin, end] = mNamespaces->equal_range(controller);
    for (auto block = begin; block != end; ++block) {
        Lun lun;
        lun.name = block->second;
        lun.record.LunFlags = NAMESPACE;
        const std::string entry = "block/" + block->second;
        Take(mClasses, entry, NAMESPACE_NUMBER, lun);
        if (lun.namespaceNumber == 0 || lun.namespaceNumber > MAX_NAMESPACE) {
            Tell(entry, lun.namespaceNumber == 0 ? "left out, since it has no namespace number"
                                                 : "left out, since its number takes more than 16 bits");
            continue;
        }
        lun.record.LunNumber = static_cast<VX_UINT16>(lun.namespaceNumber);
        if (mScope.Of(LUN_DETAILS) != 0 && Names(mScope.lun, lun.record.LunNumber)) {
            Take(mClasses, entry, WORLDWIDE_ID, lun);
            TakeSize(mClasses, lun.name, lun);
        }
        std::copy_n(target.record.ProductId, sizeof lun.record.ProductId, lun.record.ProductId);
        std::copy_n(target.record.NvmeRevision, sizeof lun.record.NamespaceRevision, lun.record.NamespaceRevision);
        target.luns.push_back(std::move(lun));
    }
    std::sort(target.luns.begin(), target.luns.end(),
              [](const Lun& a, const Lun& b) { return a.record.LunNumber < b.record.LunNumber; });
}

void Tree::ReadControllers() {
    if (mScope.Of(PORT_DETAILS | TARGETS) == 0) {
        return;
    }
    const Folder controllers(mClasses, "nvme");
    for (const auto& [numbers, name] : Numbered<1>(controllers, "nvme#")) {
        Controller controller;
        if (!Take(controllers, name, TRANSPORT, controller)) {
            Tell("nvme/" + name, "left out, since it has no transport");
            continue;
        }
        if (controller.transport != "fc") {
            continue;
        }
        TakeAll(controllers, name, ENDS, PORT_DETAILS | TARGETS, controller);
        if (controller.kind == "discovery") { // discovery controllers have no namespaces
            continue;
        }
        const auto owner = std::find_if(mPorts.begin(), mPorts.end(), [&](const Port& port) {
            return NameNumber(port.record.WWPN) == controller.hostPort;
        });
        if (owner == mPorts.end()) {
            Tell("nvme/" + name, "left out, since no port of this host has it");
            continue;
        }
        if (!owner->isNamed) {
            continue;
        }
        const bool isNamed = Names(mScope.target, NameNumber(controller.target.PortName));
        const VX_UINT32 parts = isNamed ? mScope.parts : mScope.Of(PORT_DETAILS | TARGETS);
        TakeAll(controllers, name, CONTROLLER, parts, controller);
        if (owner->record.HostNQN[0] == '\0') {
            TakeText(controller.hostNqn, owner->record.HostNQN);
            std::copy_n(controller.hostId, sizeof controller.hostId, owner->record.HostId);
        }
        if (mScope.Of(TARGETS) == 0) {
            continue;
        }
        // A remote port with the NVMe role already has a record, which the first controller takes.
        Target* target = nullptr;
        _tagVEXAPI_SDMTarget& record = controller.target;
        record.TargetNumber = NO_TARGET_NUMBER;
        for (Target& known : owner->targets) {
            if (NameNumber(known.record.PortName) == NameNumber(record.PortName)) {
                std::copy_n(known.record.PortId, sizeof record.PortId, record.PortId);
                const bool isFree = (known.record.TargetFlags[5] & NVME_TARGET) != 0 && known.record.StorageNqn[0] == 0;
                target = isFree ? &known : target;
            }
        }
        record.TargetFlags[5] = NVME_TARGET;
        if (controller.state == "live") {
            TakeTargetState("Online", record.TargetFlags);
        }
        record.ScmCongState = UNKNOWN_STATE;
        if (target == nullptr) {
            target = &owner->targets.emplace_back();
        }
        target->record = record;
        target->controller = name;
        if (isNamed && mScope.Of(LUNS) != 0) {
            ReadNamespaces(name, *target);
        }
    }
}

void Tree::LinkRecords() {
    for (Port& port : mPorts) {
        for (Target& target : port.targets) {
            target.record.LunCount = static_cast<VX_UINT32>(target.luns.size());
            target.record.pLunList = Chain(
                target.luns, [](Lun & lun) -> auto& { return lun.record; });
        }
        port.record.TargetCount = static_cast<VX_UINT32>(port.targets.size());
        port.record.pTargetList = Chain(
            port.targets, [](Target & target) -> auto& { return target.record; });
    }
    for (Adapter& adapter : mAdapters) {
        adapter.list.Count = static_cast<VX_UINT32>(adapter.ports.size());
        adapter.list.pHead = Chain(
            adapter.ports, [](PhysicalPort & port) -> auto& { return port.record; });
        adapter.record.pPhyPortList = &adapter.list;
    }
    mList.Count = static_cast<VX_UINT32>(mAdapters.size());
    mList.pHead = Chain(
        mAdapters, [](Adapter & adapter) -> auto& { return adapter.record; });
}

} // namespace host
