#include "Tree.h"

#include "Attributes.h"

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

/// The numbers in a name such as "rport-3:0-12" for the pattern "rport-#:#-#".
template <std::size_t count>
std::optional<std::array<std::uint64_t, count>> NumbersIn(std::string_view name, std::string_view pattern) {
    std::array<std::uint64_t, count> numbers{};
    auto number = numbers.begin();
    const char* at = name.begin();
    for (const char expected : pattern) {
        if (expected == '#') {
            const auto [end, error] = std::from_chars(at, name.end(), *number++);
            if (error != std::errc() || (*at == '0' && end != at + 1)) {
                return std::nullopt;
            }
            at = end;
        } else if (at == name.end() || *at++ != expected) {
            return std::nullopt;
        }
    }
    return at == name.end() ? std::optional(numbers) : std::nullopt;
}

/// The names in a folder that match a pattern, by their numbers.
template <std::size_t count>
std::map<std::array<std::uint64_t, count>, std::string> Numbered(const Folder& folder, std::string_view pattern) {
    std::map<std::array<std::uint64_t, count>, std::string> found;
    for (std::string& name : folder.Names()) {
        if (const auto numbers = NumbersIn<count>(name, pattern)) {
            found.emplace(*numbers, std::move(name));
        }
    }
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

/// Reads an attribute of an entry of a folder. A missing file isn't reported, since kernels differ.
template <class Record>
bool Take(const Folder& folder, const std::string& entry, const Attribute<Record>& attribute, Record& record) {
    const std::string path = entry + '/' + attribute.path;
    const Reading reading = folder.Read(path.c_str());
    if (reading.error == ENOENT) {
        return false;
    }
    if (reading.error != 0) {
        Tell(path, std::strerror(reading.error));
        return false;
    }
    if (!attribute.take(reading.bytes, record)) {
        Tell(path, std::string("not understood as the ") + attribute.meaning);
        return false;
    }
    return true;
}

template <class Record, std::size_t count>
void TakeAll(const Folder& folder, const std::string& entry, const Attribute<Record> (&attributes)[count],
             Record& record) {
    for (const Attribute<Record>& attribute : attributes) {
        Take(folder, entry, attribute, record);
    }
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
    const auto found = Numbered<3>(Folder(remotePorts, (target.name + "/device").c_str()), "target#:#:#");
    return found.empty() ? std::nullopt : std::optional(found.begin()->first);
}

template <std::size_t size> bool IsZero(const VX_UINT8 (&bytes)[size]) {
    return std::all_of(bytes, bytes + size, [](VX_UINT8 byte) { return byte == 0; });
}

/// Reads the size of a LUN and converts it to the LUN's blocks.
void TakeSize(const Folder& classes, const std::string& blockDevice, Lun& lun) {
    TakeAll(classes, "block/" + blockDevice, BLOCK_DEVICE, lun);
    if (lun.record.BlockSize < SECTOR) {
        lun.record.BlockSize = SECTOR;
    }
    lun.record.BlockCount /= lun.record.BlockSize / SECTOR;
}

} // namespace

void Tell(const std::string& what, const std::string& why) {
    std::printf("vexapi linux: %s: %s\n", what.c_str(), why.c_str());
}

Tree::Tree(const std::string& root)
    : mRoot(root), mSystem(mRoot, "sys"), mClasses(mSystem, "class"), mHosts(mClasses, "fc_host"),
      mRemotePorts(mClasses, "fc_remote_ports") {
    ReadPorts();
    ReadRemotePorts();
    ReadLuns();
    ReadControllers();
    Join();
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
        _vexapi_protocol_t& record = port.record;
        TakeAll(mHosts, name, HOST, port);
        if (IsZero(record.WWPN)) {
            Tell("fc_host/" + name, "left out, since it has no port name");
            continue;
        }
        ReadCounters(port);
        if (mHosts.Has((name + "/statistics/" + NOTIFICATIONS).c_str())) {
            record.FeatureFlags |= CONGESTION_PHASE_2;
        }
        if (!port.pci.path.empty()) {
            TakeAll(mHosts, port.pci.path, PCI, port.pci);
        }
        record.ChipProperty = port.pci.chip;
        record.ProtocolType = port.isFcoe ? 1 : 0;
        record.ScmCongState = UNKNOWN_STATE;
        if (record.PortState == OFFLINE) {
            record.PortSpeed = 0; // the kernel still shows the last one, or the fastest
        }
        const VX_UINT32 word = port.number;
        std::memcpy(record.PortHandle.opaque, HANDLE_TAG, sizeof HANDLE_TAG);
        std::memcpy(record.PortHandle.opaque + sizeof HANDLE_TAG, &word, sizeof word);
        mPorts.push_back(std::move(port));
    }
}

void Tree::ReadCounters(Port& port) {
    port.record.IoCount = 0; // summed up from several files
    port.record.MegaBytesCount = 0;
    TakeAll(mHosts, port.name + "/statistics", HOST_STATISTICS, port.record);
}

void Tree::ReadRemotePorts() {
    for (const auto& [numbers, name] : Numbered<3>(mRemotePorts, "rport-#:#-#")) {
        Port* const owner = numbers[0] > MAX_HOST ? nullptr : FindPort(static_cast<VX_UINT32>(numbers[0]));
        Target target;
        if (owner == nullptr) {
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
        TakeAll(mRemotePorts, name, REMOTE_PORT, target);
        if (IsZero(record.PortName)) {
            Tell("fc_remote_ports/" + name, "left out, since it has no port name");
            continue;
        }
        owner->targets.push_back(std::move(target));
    }
}

/// Keys are the names of the parent folders, from the links.
void Tree::ReadBlockDevices() {
    if (!mBlockDevices.empty()) {
        return; // already read
    }
    const Folder blocks(mClasses, "block");
    for (const std::string& name : blocks.Names()) {
        std::vector<std::string> parts = Split(blocks.Link(name.c_str()));
        if (parts.size() < 3) {
            continue;
        }
        parts.pop_back();
        if (parts.back() == "block") {
            parts.pop_back();
        }
        mBlockDevices.emplace(parts.back(), name);
    }
}

void Tree::ReadLuns() {
    // By H:C:T.
    std::map<std::array<std::uint64_t, 3>, Target*> targets;
    for (Port& port : mPorts) {
        for (Target& target : port.targets) {
            if ((target.record.TargetFlags[5] & NVME_TARGET) != 0) {
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
    ReadBlockDevices();
    const Folder devices(mSystem, "bus/scsi/devices");
    for (const auto& [numbers, name] : Numbered<4>(devices, "#:#:#:#")) {
        const auto owner = targets.find({numbers[0], numbers[1], numbers[2]});
        if (owner == targets.end()) {
            continue;
        }
        Lun lun;
        lun.deviceType = NO_DEVICE_TYPE;
        lun.record.LunNumber = static_cast<VX_UINT16>(numbers[3]); // the first level of the address
        if (!Take(devices, name, INQUIRY, lun)) {
            TakeAll(devices, name, INQUIRY_TEXTS, lun);
        }
        if (!Take(devices, name, DESIGNATORS, lun)) {
            Take(devices, name, WORLDWIDE_ID, lun);
        }
        if (const auto block = mBlockDevices.find(name); block != mBlockDevices.end()) {
            TakeSize(mClasses, block->second, lun);
        }
        Target& target = *owner->second;
        if (target.luns.empty()) { // the target takes its texts from the first LUN
            std::copy_n(lun.record.VendorId, sizeof lun.record.VendorId, target.record.VendorId);
            std::copy_n(lun.record.ProductId, sizeof lun.record.ProductId, target.record.ProductId);
            std::copy_n(lun.record.ProductRevision, sizeof lun.record.ProductRevision, target.record.ProductRevision);
            target.record.DeviceType = lun.deviceType;
        }
        target.luns.push_back(lun.record);
    }
}

/// Namespaces are sorted by number; those without one, or with one that doesn't fit the record, are left out.
void Tree::ReadNamespaces(const std::string& controller, Target& target) {
    const auto [begin, end] = mBlockDevices.equal_range(controller);
    for (auto block = begin; block != end; ++block) {
        Lun lun;
        lun.record.LunFlags = NAMESPACE;
        const std::string entry = "block/" + block->second;
        Take(mClasses, entry, NAMESPACE_NUMBER, lun);
        if (lun.namespaceNumber == 0 || lun.namespaceNumber > MAX_NAMESPACE) {
            Tell(entry, lun.namespaceNumber == 0 ? "left out, since it has no namespace number"
                                                 : "left out, since its number takes more than 16 bits");
            continue;
        }
        lun.record.LunNumber = static_cast<VX_UINT16>(lun.namespaceNumber);
        Take(mClasses, entry, WORLDWIDE_ID, lun);
        TakeSize(mClasses, block->second, lun);
        std::copy_n(target.record.ProductId, sizeof lun.record.ProductId, lun.record.ProductId);
        std::copy_n(target.record.NvmeRevision, sizeof lun.record.NamespaceRevision, lun.record.NamespaceRevision);
        target.luns.push_back(lun.record);
    }
    std::sort(target.luns.begin(), target.luns.end(),
              [](const auto& a, const auto& b) { return a.LunNumber < b.LunNumber; });
}

void Tree::ReadControllers() {
    const Folder controllers(mClasses, "nvme");
    const std::map<std::array<std::uint64_t, 1>, std::string> names = Numbered<1>(controllers, "nvme#");
    if (names.empty()) {
        return;
    }
    ReadBlockDevices();
    for (const auto& [numbers, name] : names) {
        Controller controller;
        if (!Take(controllers, name, TRANSPORT, controller)) {
            Tell("nvme/" + name, "left out, since it has no transport");
            continue;
        }
        if (controller.transport != "fc") {
            continue;
        }
        TakeAll(controllers, name, CONTROLLER, controller);
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
        if (owner->record.HostNQN[0] == '\0') {
            TakeText(controller.hostNqn, owner->record.HostNQN);
            std::copy_n(controller.hostId, sizeof controller.hostId, owner->record.HostId);
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
        ReadNamespaces(name, *target);
    }
}

namespace {

/// Links the records into a list and returns its head.
template <class Records, class Project> auto Chain(Records& records, Project project) {
    decltype(&project(records.front())) next = nullptr;
    for (auto record = records.rbegin(); record != records.rend(); ++record) {
        project(*record).pNext = next;
        next = &project(*record);
    }
    return next;
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

} // namespace

void Tree::Join() {
    for (Port& port : mPorts) {
        for (Target& target : port.targets) {
            target.record.LunCount = static_cast<VX_UINT32>(target.luns.size());
            target.record.pLunList = Chain(
                target.luns, [](auto& lun) -> auto& { return lun; });
        }
        port.record.TargetCount = static_cast<VX_UINT32>(port.targets.size());
        port.record.pTargetList = Chain(
            port.targets, [](Target & target) -> auto& { return target.record; });

        auto adapter = std::find_if(mAdapters.begin(), mAdapters.end(),
                                    [&](const Adapter& known) { return known.owner == port.owner; });
        if (adapter == mAdapters.end()) {
            adapter = mAdapters.emplace(mAdapters.end());
            adapter->owner = port.owner;
            adapter->pci = port.pci;
            TakeChip(port, adapter->record);
        }
        Complete(adapter->identity, port.identity);
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
    for (Adapter& adapter : mAdapters) {
        TakeIdentityFromCard(mHosts, adapter.pci, adapter.identity);
        TakeIdentity(adapter.identity, adapter.record);
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
