#include "ReadHost.h"

#include "LinkedList.h"
#include "ReadTransceiver.h"
#include "VitalProductData.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

namespace orfc {

namespace {

/// Statuses of functions that the driver, the firmware or the library doesn't have: nothing is wrong then.
constexpr VX_UINT32 UNSUPPORTED[] = {NOT_SUPPORTED, 134};

/// Text of a code, for the small tables of the records; empty for an unknown code.
struct CodeName {
    VX_UINT32 code;
    const char* name;
};
template <std::size_t Size> std::string NameOf(const CodeName (&table)[Size], VX_UINT32 code) {
    for (const CodeName& row : table) {
        if (row.code == code) {
            return row.name;
        }
    }
    return {};
}

constexpr CodeName ADAPTER_TYPES[] = {{1, "Ethernet"},  {2, "Fibre Channel"}, {3, "iSCSI"},     {4, "converged"},
                                      {5, "converged"}, {6, "converged"},     {7, "converged"}, {8, "converged"}};
constexpr CodeName PORT_STATES[] = {{1, "online"}, {3, "offline"}};
constexpr CodeName INTERFACES[] = {{1, "physical"}, {3, "virtual"}};
constexpr CodeName PROTOCOLS[] = {{0, "FC"}, {1, "FCoE"}};
constexpr CodeName PORT_TYPES[] = {
    {1, "node"},           {2, "loop"},      {3, "fabric private loop"},
    {4, "node or loop"},   {5, "fabric"},    {6, "fabric public loop"},
    {7, "loop transport"}, {8, "expansion"}, {9, "bridge"},
};
constexpr CodeName CONNECTION_MODES[] = {{1, "point to point"}, {2, "loop"}};
constexpr CodeName DEVICE_TYPES[] = {{0, "disk"},    {1, "tape"},  {4, "optical"},   {5, "CD/DVD"},
                                     {8, "changer"}, {12, "RAID"}, {13, "enclosure"}};

/// Gb/s of a port's speed code, and of the bits of its supported speeds.
struct SpeedCode {
    VX_UINT32 code;
    unsigned speed;
};
constexpr SpeedCode SPEEDS[] = {{1, 1}, {2, 2}, {4, 4}, {8, 8}, {16, 10}, {22, 16}, {50, 32}, {100, 64}};
constexpr SpeedCode SPEED_BITS[] = {{0x01, 1},  {0x02, 2},  {0x08, 4},  {0x10, 8},
                                    {0x04, 10}, {0x20, 16}, {0x40, 32}, {0x80, 64}};

constexpr std::size_t VPD_SIZE = 1024;   ///< that of `orfc-esxcli`; libraries may refuse another
constexpr std::size_t RDP_SIZE = 508;    ///< likewise
constexpr std::size_t FEW_COUNTERS = 64; ///< as many as drivers have
constexpr std::size_t MOST_COUNTERS = 4096;
constexpr VX_UINT16 NO_TARGET_NUMBER = 0xFFFF;
constexpr VX_UINT8 NVME_TARGET = 0x08; ///< in byte 5 of a target's flags

/// Text of an array up to its first NUL, without the blanks that pad it.
template <typename Character, std::size_t Size> std::string TextOf(const Character (&array)[Size]) {
    const char* const text = reinterpret_cast<const char*>(array);
    std::string result(text, strnlen(text, Size));
    result.erase(result.find_last_not_of(' ') + 1);
    return result;
}

Wwn WwnOf(const VX_UINT8 (&name)[8]) {
    Wwn number = 0;
    for (const VX_UINT8 byte : name) {
        number = number << 8 | byte;
    }
    return number;
}

std::string PortIdText(const VX_UINT8 (&id)[3]) {
    char text[12];
    std::snprintf(text, sizeof text, "%02x:%02x:%02x", id[0], id[1], id[2]);
    return (id[0] | id[1] | id[2]) != 0 ? text : std::string();
}

std::optional<unsigned> KnownNumber(VX_UINT32 number) {
    return number != VEXAPI_EXT_UNKNOWN ? std::optional<unsigned>(number) : std::nullopt;
}

/// Visits each entry of a list once. Returns false for a list without an end.
template <typename Entry, typename Visit> bool Walk(Entry* head, Visit visit) {
    return WalkList(head, [&](Entry& entry) {
               visit(entry);
               return true;
           }) == WalkEnd::LIST;
}

/// The counters of a port's record, where the operating system's aren't to be had.
struct RecordCounter {
    const char* name;
    VX_UINT32 _vexapi_protocol_t::*value;
};
constexpr RecordCounter PORT_COUNTERS[] = {
    {"controller_error_count", &_vexapi_protocol_t::ControllerErrorCount},
    {"device_error_count", &_vexapi_protocol_t::DeviceErrorCount},
    {"io_count", &_vexapi_protocol_t::IoCount},
    {"megabytes_count", &_vexapi_protocol_t::MegaBytesCount},
    {"interrupt_count", &_vexapi_protocol_t::InterruptCount},
    {"lip_count", &_vexapi_protocol_t::LipResetCount},
    {"link_failure_count", &_vexapi_protocol_t::LinkFailureCount},
    {"loss_of_sync_count", &_vexapi_protocol_t::LossOfSyncCount},
    {"loss_of_signal_count", &_vexapi_protocol_t::LossOfSignalCount},
    {"prim_seq_protocol_err_count", &_vexapi_protocol_t::PrimitiveSeqProtocolErrorCount},
    {"invalid_tx_word_count", &_vexapi_protocol_t::InvalidTxWordCount},
    {"invalid_crc_count", &_vexapi_protocol_t::InvalidCrcCount},
};

struct NvramParameter {
    const char* name;
    VX_UINT32 _VEXAPI_HBAParameters::*value;
};
constexpr NvramParameter NVRAM[] = {
    {"data_rate", &_VEXAPI_HBAParameters::DataRate},
    {"connection_options", &_VEXAPI_HBAParameters::ConnetionOptions},
    {"operation_mode", &_VEXAPI_HBAParameters::OperationMode},
    {"frame_size", &_VEXAPI_HBAParameters::FrameSize},
    {"execution_throttle", &_VEXAPI_HBAParameters::ExecutionThrottle},
    {"luns_per_target", &_VEXAPI_HBAParameters::MaxLunsPerTarget},
    {"login_retry_count", &_VEXAPI_HBAParameters::LoginRetryCount},
    {"port_down_retry_count", &_VEXAPI_HBAParameters::PortDownRetryCount},
    {"link_down_timeout", &_VEXAPI_HBAParameters::LinkDownTimeout},
    {"loop_reset_delay", &_VEXAPI_HBAParameters::LoopResetDelay},
    {"interrupt_delay_timer", &_VEXAPI_HBAParameters::InterruptDelayTimer},
};

class Reader {
public:
    Reader(Session& session, const Wanted& wanted, const std::function<void(const std::string&)>& onPort, Host& host)
        : mSession(session), mWanted(wanted), mOnPort(onPort), mHost(host) {}

    void Read() {
        const VX_ADAPTER_LIST* const list = mSession->VEXAPI_GetAdapterList();
        if (list == nullptr) {
            throw Failure(mSession->Path() + ": shows no host" +
                          (mSession.Messages().empty() ? "" : ": " + mSession.Messages().front()));
        }
        mTold = mSession.Messages().size();
        WalkAll(list->pHead, "adapters", [this](_vexapi_adapter_t& record) { ReadAdapter(record); });
        // A library may meet the same file twice.
        std::set<std::string> known;
        for (const std::string& message : mSession.Messages()) {
            if (known.insert(message).second) {
                mHost.messages.push_back(message);
            }
        }
        mSession.Messages().clear();
    }

private:
    template <typename Entry, typename Visit> void WalkAll(Entry* head, const std::string& what, Visit visit) {
        if (!Walk(head, visit)) {
            mHost.messages.push_back(what + ": the library's list has no end");
        }
    }

    /// Whether a function succeeded. Tells of a failure, unless the library itself has told why. One that isn't
    /// supported is none, whatever the library says.
    bool Succeeds(VX_UINT32 status, const std::string& where, const char* what) {
        std::vector<std::string>& told = mSession.Messages();
        if (std::find(std::begin(UNSUPPORTED), std::end(UNSUPPORTED), status) != std::end(UNSUPPORTED)) {
            told.resize(mTold);
        } else if (status != 0 && told.size() == mTold) {
            mHost.messages.push_back(where + ": " + what + ": failed with status " + std::to_string(status));
        }
        mTold = told.size();
        return status == 0;
    }

    void ReadAdapter(_vexapi_adapter_t& record) {
        Adapter& adapter = mHost.adapters.emplace_back();
        adapter.model = TextOf(record.Model);
        adapter.serialNumber = TextOf(record.SerialNumber);
        adapter.identifier = "Adapter_" + adapter.model + "_" + adapter.serialNumber;
        adapter.manufacturer = TextOf(record.Manufacturer);
        adapter.type = NameOf(ADAPTER_TYPES, record.AdapterType);
        adapter.vendorId = record.VendorId;
        adapter.subsystemVendorId = record.SubVendorId;
        adapter.subsystemDeviceId = record.SubDeviceId;
        adapter.multibootVersion = TextOf(record.MultibootVersion);
        adapter.firmwareVersion = TextOf(record.FlashFwVersion);
        adapter.biosVersion = TextOf(record.BiosVersion);
        adapter.fcodeVersion = TextOf(record.FCodeVersion);
        adapter.efiVersion = TextOf(record.EfiVersion);
        if (record.pPhyPortList == nullptr) {
            return;
        }
        WalkAll(record.pPhyPortList->pHead, adapter.identifier + ": physical ports", [&](_vexapi_phy_port_t& physical) {
            ++mPhysicalPorts;
            if (physical.pProtocolList != nullptr) {
                WalkAll(physical.pProtocolList->pHead, adapter.identifier + ": ports",
                        [&](_vexapi_protocol_t& protocol) {
                            if (!NameOf(PROTOCOLS, protocol.ProtocolType).empty()) {
                                ReadPort(adapter, physical.PortNumber, protocol);
                            }
                        });
            }
        });
    }

    void ReadPort(Adapter& adapter, unsigned number, _vexapi_protocol_t& record) {
        Port& port = mHost.ports.emplace_back();
        ++adapter.portCount;
        port.adapter = &adapter;
        port.number = number;
        port.physicalPort = mPhysicalPorts;
        port.portName = WwnOf(record.WWPN);
        port.nodeName = WwnOf(record.WWNN);
        char identifier[] = "FC_xx:xx:xx:xx:xx:xx:xx:xx";
        const VX_UINT8(&name)[8] = record.WWPN;
        std::snprintf(identifier, sizeof identifier, "FC_%02x:%02x:%02x:%02x:%02x:%02x:%02x:%02x", name[0], name[1],
                      name[2], name[3], name[4], name[5], name[6], name[7]);
        port.identifier = identifier;
        if (mOnPort) {
            mOnPort(port.identifier);
        }
        if (mWanted.portDetails) {
            ReadPortDetails(port, record);
            if (port.state == "offline") {
                port.speed.reset(); // some drivers keep the last one
            }
        }
        const bool isMeant = mWanted.ports.empty() || mWanted.ports.contains(port.portName);
        if (mWanted.counters && isMeant) {
            ReadCounters(record, nullptr, port.counters, port.identifier);
            if (port.counters.empty()) {
                for (const RecordCounter& counter : PORT_COUNTERS) {
                    port.counters[counter.name] = record.*counter.value;
                }
            }
        }
        if ((mWanted.transceivers || (mWanted.modulesOfDownPorts && port.state == "offline")) && isMeant) {
            auto image = std::make_unique<_VEXAPI_SFP_DATA>();
            if (Succeeds(mSession->VEXAPI_GetSFPData(&record.PortHandle, image.get()), port.identifier,
                         "transceiver")) {
                port.transceiver = DecodeTransceiver({image->Data, sizeof image->Data});
            }
        }
        if (mWanted.farEnds && isMeant && port.IsOnline()) {
            ReadFarEnd(port, record);
        }
        if (mWanted.settings && isMeant) {
            ReadSettings(port, record);
        }
        if (mWanted.vpd && isMeant && adapter.vpd.empty()) {
            ReadVpd(adapter, record);
        }
        if (mWanted.targets) {
            WalkAll(record.pTargetList, port.identifier + ": targets",
                    [&](_tagVEXAPI_SDMTarget& target) { ReadTarget(port, record, target); });
        }
    }

    void ReadPortDetails(Port& port, _vexapi_protocol_t& record) {
        port.fabricName = WwnOf(record.PrincipalFabricWWN);
        port.switchName = WwnOf(record.AdjacentFabricWWN);
        port.portId = PortIdText(record.PortId);
        port.state = NameOf(PORT_STATES, record.PortState);
        port.interface = NameOf(INTERFACES, record.PortInterfaceType);
        port.protocol = NameOf(PROTOCOLS, record.ProtocolType);
        port.type = NameOf(PORT_TYPES, record.PortType);
        port.connectionMode = NameOf(CONNECTION_MODES, record.PortConnectionMode);
        for (const SpeedCode& speed : SPEEDS) {
            if (speed.code == record.PortSpeed) {
                port.speed = speed.speed;
            }
        }
        for (const SpeedCode& speed : SPEED_BITS) {
            if ((record.SupportedSpeeds & speed.code) != 0) {
                port.supportedSpeeds.push_back(speed.speed);
            }
        }
        port.driverVersion = TextOf(record.DriverVersion);
        port.firmwareVersion = TextOf(record.RunningFwVersion);
        port.biosVersion = TextOf(record.BiosVersion);
        port.hostNqn = TextOf(record.HostNQN);
        char address[16];
        std::snprintf(address, sizeof address, "%02x:%02x.%x", record.PciBusNumber, record.PciDeviceNumber,
                      record.PciFunctionNumber);
        port.pciAddress = address;
        if (mSession->VEXAPI_ExtGetPort == nullptr) {
            return;
        }
        VEXAPI_EXT_PORT known{};
        known.Size = sizeof known;
        if (Succeeds(mSession->VEXAPI_ExtGetPort(&record.PortHandle, &known), port.identifier, "kernel's names")) {
            port.kernelName = TextOf(known.KernelName);
            port.device = TextOf(known.Device);
            port.driver = TextOf(known.Driver);
            port.linkState = TextOf(known.State);
            if (!port.linkState.empty()) { // the kernel tells more states apart
                port.state = port.linkState == "Online" ? "online" : "offline";
            }
            port.symbolicName = TextOf(known.SymbolicName);
            port.deviceLossTimeout = KnownNumber(known.DeviceLossTimeout);
        }
    }

    /// The operating system's counters; none where the library doesn't know them.
    void ReadCounters(_vexapi_protocol_t& port, const _tagVEXAPI_SDMTarget* target, Counters& counters,
                      const std::string& where) {
        if (mSession->VEXAPI_ExtGetCounters == nullptr) {
            return;
        }
        std::vector<VEXAPI_EXT_COUNTER> records;
        for (std::size_t room = FEW_COUNTERS; room <= MOST_COUNTERS;) {
            records.assign(room, {});
            auto count = static_cast<VX_UINT32>(room);
            if (!Succeeds(mSession->VEXAPI_ExtGetCounters(&port.PortHandle, target, records.data(), &count), where,
                          "counters")) {
                return;
            }
            if (count <= room) {
                records.resize(count);
                for (const VEXAPI_EXT_COUNTER& record : records) {
                    counters[TextOf(record.Name)] = record.Value;
                }
                return;
            }
            room = count;
        }
        mHost.messages.push_back(where + ": counters: more than " + std::to_string(MOST_COUNTERS));
    }

    void ReadSettings(Port& port, _vexapi_protocol_t& record) {
        VX_PORT_HANDLE* const handle = &record.PortHandle;
        PortSettings& settings = port.settings;
        const auto reads = [&](VX_UINT32 status, const char* what) { return Succeeds(status, port.identifier, what); };

        _VEXAPI_BoardThermalTemp temperature{};
        if (reads(mSession->VEXAPI_GetAdapterAsicBoardTemperature(handle, &temperature), "temperature")) {
            settings.temperature = temperature.Temperature;
        }
        VEXAPI_BEACON_TYPE beacon = 0;
        if (reads(mSession->VEXAPI_GetAdapterBeaconStatus(handle, &beacon), "beacon")) {
            settings.beacon = beacon != 0;
        }
        VX_UINT32 fec = 0;
        if (reads(mSession->VEXAPI_FCGetFECSupportInfo(handle, &fec), "forward error correction")) {
            settings.fec = fec != 0;
        }
        _VEXAPI_FWPRIVATESTATSEntry* entries = nullptr;
        VX_UINT32 count = 0;
        if (reads(mSession->VEXAPI_GetFWPrivateStats(handle, &entries, &count), "firmware's statistics") &&
            entries != nullptr && count != 0) {
            settings.correctedFecErrors = entries->CorrectableFecErrors;
            settings.uncorrectedFecErrors = entries->UncorrectableFecErrors;
        }
        std::free(entries);
        VX_UINT8 status = 0;
        VX_UINT8 configured = 0;
        VX_UINT8 state = 0;
        VX_UINT8 negotiated = 0;
        char reason[64] = {};
        if (reads(mSession->VEXAPI_FCGetBBCSupportInfoEx(handle, &status, &configured, &state, &negotiated, reason,
                                                         sizeof reason),
                  "credit recovery")) {
            settings.creditRecovery = status != 0;
            settings.isCreditRecoveryRunning = state != 0;
            settings.creditRecoveryReason = TextOf(reason);
        }
        VX_UINT8 congestion = 0;
        if (reads(mSession->VEXAPI_IsFWCMFeatureEnabled(handle, &congestion), "congestion management")) {
            settings.congestionManagement = congestion != 0;
        }
        auto parameters = std::make_unique<_VEXAPI_HBAParameters>();
        auto auxiliary = std::make_unique<VX_HBA_AUX>();
        if (reads(mSession->VEXAPI_GetHBAParamsInfo(handle, parameters.get(), auxiliary.get()), "NVRAM")) {
            for (const NvramParameter& parameter : NVRAM) {
                settings.nvram.emplace_back(parameter.name, parameters.get()->*parameter.value);
            }
        }
    }

    /// A far end that doesn't answer, as many don't, is told of like anything else that can't be read.
    void ReadFarEnd(Port& port, _vexapi_protocol_t& record) {
        VX_UINT8 payload[RDP_SIZE] = {};
        VX_UINT32 size = sizeof payload;
        if (Succeeds(mSession->VEXAPI_DiagnosticsRDPTest(&record.PortHandle, payload, &size), port.identifier,
                     "far end")) {
            port.farEnd = DecodeFarEnd({payload, std::min<std::size_t>(size, sizeof payload)});
        }
    }

    void ReadVpd(Adapter& adapter, _vexapi_protocol_t& record) {
        VX_UINT32 word = 0;
        std::memcpy(&word, record.PortHandle.opaque + 4, sizeof word);
        std::vector<VX_UINT8> bytes(VPD_SIZE);
        auto size = static_cast<VX_UINT32>(bytes.size());
        if (!Succeeds(mSession->VEXAPI_GetVpd(word, 0, bytes.data(), &size), adapter.identifier,
                      "vital product data")) {
            return;
        }
        const decoders::Bytes view(bytes.data(), std::min<std::size_t>(size, bytes.size()));
        const decoders::VitalProductData vpd = decoders::DecodeVpd(view);
        for (const auto* keywords : {&vpd.readOnly, &vpd.readWrite}) {
            for (const decoders::VpdKeyword& keyword : *keywords) {
                adapter.vpd.emplace_back(keyword.name, keyword.Text());
            }
        }
    }

    void ReadTarget(Port& port, _vexapi_protocol_t& owner, _tagVEXAPI_SDMTarget& record) {
        Target& target = mHost.targets.emplace_back();
        ++port.targetCount;
        target.port = &port;
        target.portName = WwnOf(record.PortName);
        target.nodeName = WwnOf(record.NodeName);
        target.identifier = port.identifier + "_Target_" + WwnText(target.portName);
        target.portId = PortIdText(record.PortId);
        if (record.TargetNumber != NO_TARGET_NUMBER) {
            target.number = record.TargetNumber;
        }
        const VX_UINT8(&flags)[6] = record.TargetFlags;
        target.state = (flags[2] & 0x02) != 0 && (flags[4] & 0x01) != 0 ? "online"
                       : (flags[0] & 0x40) != 0                         ? "unconfigured"
                                                                        : "offline";
        const bool isNvme = (flags[5] & NVME_TARGET) != 0;
        target.protocol = isNvme ? "NVMe" : "FCP";
        target.type = NameOf(DEVICE_TYPES, record.DeviceType);
        target.vendor = TextOf(record.VendorId);
        target.product = TextOf(record.ProductId);
        target.revision = isNvme ? TextOf(record.NvmeRevision) : TextOf(record.ProductRevision);
        target.serialNumber = TextOf(record.SerialNumber);
        target.nqn = TextOf(record.StorageNqn);
        if (isNvme) {
            target.controllerId = record.StorageControllerId;
        }
        if (mSession->VEXAPI_ExtGetTarget != nullptr) {
            VEXAPI_EXT_TARGET known{};
            known.Size = sizeof known;
            if (Succeeds(mSession->VEXAPI_ExtGetTarget(&owner.PortHandle, &record, &known), target.identifier,
                         "kernel's names")) {
                target.kernelName = TextOf(known.KernelName);
                target.kernelState = TextOf(known.State);
                target.roles = TextOf(known.Roles);
                target.deviceLossTimeout = KnownNumber(known.DeviceLossTimeout);
                target.fastFailTimeout = KnownNumber(known.FastFailTimeout);
            }
        }
        if (mWanted.counters && (mWanted.ports.empty() || mWanted.ports.contains(port.portName))) {
            ReadCounters(owner, &record, target.counters, target.identifier);
        }
        if (mWanted.luns) {
            WalkAll(record.pLunList, target.identifier + ": LUNs",
                    [&](_tagVEXAPI_SDMLun& lun) { ReadLun(port, target, owner, record, lun); });
        }
    }

    void ReadLun(Port& port, Target& target, _vexapi_protocol_t& owner, _tagVEXAPI_SDMTarget& targetRecord,
                 _tagVEXAPI_SDMLun& record) {
        Lun& lun = mHost.luns.emplace_back();
        ++port.lunCount;
        ++target.lunCount;
        lun.target = &target;
        lun.number = record.LunNumber;
        lun.identifier = target.identifier + (lun.IsNamespace() ? "_NSID_" : "_LUN_") + std::to_string(lun.number);
        lun.vendor = TextOf(record.VendorId);
        lun.product = TextOf(record.ProductId);
        lun.revision = lun.IsNamespace() ? TextOf(record.NamespaceRevision) : TextOf(record.ProductRevision);
        if (record.BlockSize != 0) {
            lun.blockSize = record.BlockSize;
            if (record.BlockCount != 0 && record.BlockCount <= UINT64_MAX / record.BlockSize) {
                lun.size = record.BlockCount * record.BlockSize;
            }
        }
        lun.worldwideId = DesignatorText(
            {record.WorldwideId, std::min<std::size_t>(record.WorldwideIdLength, sizeof record.WorldwideId)},
            lun.IsNamespace());
        if (mSession->VEXAPI_ExtGetLun != nullptr) {
            VEXAPI_EXT_LUN known{};
            known.Size = sizeof known;
            if (Succeeds(mSession->VEXAPI_ExtGetLun(&owner.PortHandle, &targetRecord, &record, &known), lun.identifier,
                         "kernel's names")) {
                lun.address = TextOf(known.Address);
                lun.device = TextOf(known.Device);
                lun.state = TextOf(known.State);
                lun.accessState = TextOf(known.AccessState);
                lun.map = TextOf(known.Map);
                lun.mapDevice = TextOf(known.MapDevice);
                lun.mapId = TextOf(known.MapId);
                lun.mapState = TextOf(known.MapState);
                lun.mapPathState = TextOf(known.MapPathState);
                if (known.WorldwideId[0] != '\0') {
                    lun.worldwideId = TextOf(known.WorldwideId);
                }
            }
        }
        port.pathsDown += lun.DownAt().has_value() ? 1 : 0;
    }

    Session& mSession;
    const Wanted& mWanted;
    const std::function<void(const std::string&)>& mOnPort;
    Host& mHost;
    unsigned mPhysicalPorts = 0;
    std::size_t mTold = 0; ///< the library's messages up to the call before
};

} // namespace

Wanted operator|(const Wanted& left, const Wanted& right) {
    Wanted both = left;
    both.portDetails |= right.portDetails;
    both.counters |= right.counters;
    both.targets |= right.targets;
    both.luns |= right.luns;
    both.transceivers |= right.transceivers;
    both.modulesOfDownPorts |= right.modulesOfDownPorts;
    both.settings |= right.settings;
    both.vpd |= right.vpd;
    both.farEnds |= right.farEnds;
    return both;
}

VEXAPI_EXT_SCOPE ScopeOf(const Wanted& wanted) {
    VEXAPI_EXT_SCOPE scope{};
    scope.Parts = VEXAPI_EXT_ADAPTERS | VEXAPI_EXT_PORTS | (wanted.portDetails ? VEXAPI_EXT_PORT_DETAILS : 0) |
                  (wanted.counters ? VEXAPI_EXT_PORT_COUNTERS : 0) |
                  (wanted.targets ? VEXAPI_EXT_TARGETS | VEXAPI_EXT_TARGET_DETAILS : 0) |
                  (wanted.luns ? VEXAPI_EXT_LUNS | VEXAPI_EXT_LUN_DETAILS : 0);
    return scope;
}

Host ReadHost(Session& session, const Wanted& wanted, const std::function<void(const std::string&)>& onPort) {
    Host host;
    Reader(session, wanted, onPort, host).Read();
    return host;
}

VX_PORT_HANDLE* FindPort(Session& session, Wwn portName) {
    const VX_ADAPTER_LIST* const list = session->VEXAPI_GetAdapterList();
    VX_PORT_HANDLE* handle = nullptr;
    const auto look = [&](auto* header, auto visit) {
        if (header != nullptr) {
            Walk(header->pHead, visit);
        }
    };
    look(list, [&](_vexapi_adapter_t& adapter) {
        look(adapter.pPhyPortList, [&](_vexapi_phy_port_t& physical) {
            look(physical.pProtocolList, [&](_vexapi_protocol_t& port) {
                const bool isIt = WwnOf(port.WWPN) == portName && !NameOf(PROTOCOLS, port.ProtocolType).empty();
                handle = isIt && handle == nullptr ? &port.PortHandle : handle;
            });
        });
    });
    if (handle == nullptr) {
        throw Failure(WwnText(portName) + ": the port has gone");
    }
    return handle;
}

} // namespace orfc
