/// @file
/// The kernel's files that this host reads, and where their values go in the library's records.
///
/// Sources: the Fibre Channel transport class, the SCSI middle layer, the block layer, the NVMe driver and the PCI
/// core, as of Linux 6.1. The kernel serves these files from memory or, for the PCI link, from a register. Two query
/// the device, with a timeout: the counters of a port, which some drivers fetch from the adapter's firmware, and vital
/// product data. Reads have no side effects; only one file is ever written.
#pragma once

#include "Attribute.h"
#include "Multipath.h"
#include "Scope.h"
#include "Tree.h"

namespace host {

// clang-format off

/// class/fc_host/hostN
inline constexpr Attribute<Port> HOST[] = {
    {"port_name",         "WWPN",                  PORTS,        [](Text t, Port& p) { return TakeName(t, p.record.WWPN); }},
    {"node_name",         "WWNN",                  PORT_DETAILS, [](Text t, Port& p) { return TakeName(t, p.record.WWNN); }},
    {"port_id",           "port id",               PORT_DETAILS, [](Text t, Port& p) { return TakePortId(t, p.record.PortId); }},
    {"port_state",        "state of the link",     PORT_DETAILS, [](Text t, Port& p) { return TakePortState(t, p.record.PortState); }},
    {"port_type",         "topology",              PORT_DETAILS, [](Text t, Port& p) { return TakePortType(t, p.record); }},
    {"speed",             "speed of the link",     PORT_DETAILS, [](Text t, Port& p) { return TakeSpeed(t, p.record.PortSpeed); }},
    {"supported_speeds",  "speeds of the port",    PORT_DETAILS, [](Text t, Port& p) { return TakeSpeeds(t, p.record.SupportedSpeeds); }},
    {"fabric_name",       "WWN of the fabric",     PORT_DETAILS, [](Text t, Port& p) { return TakeName(t, p.record.PrincipalFabricWWN); }},
    {"driver_version",    "version of the driver", PORT_DETAILS, [](Text t, Port& p) { return TakeText(t, p.record.DriverVersion); }},
    {"firmware_version",  "running firmware",      PORT_DETAILS, [](Text t, Port& p) { return TakeText(t, p.record.RunningFwVersion); }},
    {"optionrom_version", "boot code in flash",    PORT_DETAILS, [](Text t, Port& p) { return TakeText(t, p.record.BiosVersion); }},
};

/// The same folder: names of the adapter, until one of its ports has told each.
inline constexpr Attribute<Identity> IDENTITY[] = {
    {"model",         "model of the adapter", ADAPTERS, [](Text t, auto& i) { return TakeText(t, i.model); }},
    {"serial_number", "its serial number",    ADAPTERS, [](Text t, auto& i) { return TakeText(t, i.serialNumber); }},
    {"manufacturer",  "its maker",            ADAPTERS, [](Text t, auto& i) { return TakeText(t, i.manufacturer); }},
};

/// class/fc_host/hostN/statistics: all ones if the driver doesn't count.
inline constexpr Attribute<_vexapi_protocol_t> HOST_STATISTICS[] = {
    {"fcp_input_requests",          "reads",                       PORT_COUNTERS, [](Text t, auto& r) { return AddNumber(t, r.IoCount); }},
    {"fcp_output_requests",         "writes",                      PORT_COUNTERS, [](Text t, auto& r) { return AddNumber(t, r.IoCount); }},
    {"fcp_control_requests",        "other requests",              PORT_COUNTERS, [](Text t, auto& r) { return AddNumber(t, r.IoCount); }},
    {"fcp_input_megabytes",         "megabytes read",              PORT_COUNTERS, [](Text t, auto& r) { return AddNumber(t, r.MegaBytesCount); }},
    {"fcp_output_megabytes",        "megabytes written",           PORT_COUNTERS, [](Text t, auto& r) { return AddNumber(t, r.MegaBytesCount); }},
    {"lip_count",                   "loop initializations",        PORT_COUNTERS, [](Text t, auto& r) { return TakeNumber(t, r.LipResetCount); }},
    {"link_failure_count",          "link failures",               PORT_COUNTERS, [](Text t, auto& r) { return TakeNumber(t, r.LinkFailureCount); }},
    {"loss_of_sync_count",          "losses of synchronization",   PORT_COUNTERS, [](Text t, auto& r) { return TakeNumber(t, r.LossOfSyncCount); }},
    {"loss_of_signal_count",        "losses of signal",            PORT_COUNTERS, [](Text t, auto& r) { return TakeNumber(t, r.LossOfSignalCount); }},
    {"prim_seq_protocol_err_count", "primitive sequence errors",   PORT_COUNTERS, [](Text t, auto& r) { return TakeNumber(t, r.PrimitiveSeqProtocolErrorCount); }},
    {"invalid_tx_word_count",       "invalid transmission words",  PORT_COUNTERS, [](Text t, auto& r) { return TakeNumber(t, r.InvalidTxWordCount); }},
    {"invalid_crc_count",           "frames with an invalid CRC",  PORT_COUNTERS, [](Text t, auto& r) { return TakeNumber(t, r.InvalidCrcCount); }},
};
/// Written, not read: "1" clears the port's counters.
inline constexpr char RESET_STATISTICS[] = "reset_statistics";

/// The folder of a PCI function.
inline constexpr Attribute<PciFunction> PCI[] = {
    {"vendor",             "vendor id",             ADAPTERS | PORT_DETAILS, [](Text t, auto& f) { return TakeNumber(t, f.chip.VendorId); }},
    {"device",             "device id",             ADAPTERS | PORT_DETAILS, [](Text t, auto& f) { return TakeNumber(t, f.chip.DeviceId); }},
    {"subsystem_vendor",   "vendor id of the card", ADAPTERS | PORT_DETAILS, [](Text t, auto& f) { return TakeNumber(t, f.chip.SubVendorId); }},
    {"subsystem_device",   "device id of the card", ADAPTERS | PORT_DETAILS, [](Text t, auto& f) { return TakeNumber(t, f.chip.SubDeviceId); }},
    {"revision",           "revision of the chip",  ADAPTERS,                [](Text t, auto& f) { return TakeNumber(t, f.revision); }},
    {"max_link_speed",     "fastest PCI link",      PORT_DETAILS,            [](Text t, auto& f) { return TakeLinkSpeed(t, f.chip.PciMaxLink); }},
    {"max_link_width",     "widest PCI link",       PORT_DETAILS,            [](Text t, auto& f) { return TakeLinkWidth(t, f.chip.PciMaxLink); }},
    {"current_link_speed", "speed of the PCI link", PORT_DETAILS,            [](Text t, auto& f) { return TakeLinkSpeed(t, f.chip.PciNegotiatedLink); }},
    {"current_link_width", "width of the PCI link", PORT_DETAILS,            [](Text t, auto& f) { return TakeLinkWidth(t, f.chip.PciNegotiatedLink); }},
};
/// Only of an FCoE adapter.
inline constexpr Attribute<PciFunction> PCI_CLASS{"class", "kind of device", ADAPTERS, [](Text t, auto& f) { return TakeNumber(t, f.classCode); }};
/// Vital product data. Cards may be slow to return it, so it is only read on request and for the names of an adapter
/// that the transport class lacks.
inline constexpr char VITAL_PRODUCT_DATA[] = "vpd";

/// class/fc_remote_ports/rport-H:C-N; only the roles are read if it isn't a target.
inline constexpr Attribute<Target> ROLES{"roles", "roles", TARGETS, [](Text t, Target& r) { return TakeText(t, r.roles); }};
inline constexpr Attribute<Target> REMOTE_PORT[] = {
    {"port_name",      "WWPN",                       TARGETS,        [](Text t, auto& r) { return TakeName(t, r.record.PortName); }},
    {"node_name",      "WWNN",                       TARGET_DETAILS, [](Text t, auto& r) { return TakeName(t, r.record.NodeName); }},
    {"port_id",        "port id",                    TARGET_DETAILS, [](Text t, auto& r) { return TakePortId(t, r.record.PortId); }},
    {"port_state",     "state",                      TARGET_DETAILS, [](Text t, auto& r) { return TakeTargetState(t, r.record.TargetFlags); }},
    {"scsi_target_id", "number of the SCSI target",  TARGETS,        [](Text t, auto& r) { return TakeNumber(t, r.record.TargetNumber); }},
};

/// bus/scsi/devices/H:C:T:L
inline constexpr Attribute<Lun> INQUIRY{"inquiry", "standard inquiry data", TARGET_DETAILS | LUN_DETAILS, TakeInquiry};
/// The same as texts, used if that is missing.
inline constexpr Attribute<Lun> INQUIRY_TEXTS[] = {
    {"type",   "peripheral device type", TARGET_DETAILS | LUN_DETAILS, [](Text t, auto& l) { return TakeNumber(t, l.deviceType); }},
    {"vendor", "vendor",                 TARGET_DETAILS | LUN_DETAILS, [](Text t, auto& l) { return TakePadded(t, l.record.VendorId); }},
    {"model",  "product",                TARGET_DETAILS | LUN_DETAILS, [](Text t, auto& l) { return TakePadded(t, l.record.ProductId); }},
    {"rev",    "revision",               TARGET_DETAILS | LUN_DETAILS, [](Text t, auto& l) { return TakePadded(t, l.record.ProductRevision); }},
};
inline constexpr Attribute<Lun> DESIGNATORS{"vpd_pg83", "worldwide ids", LUN_DETAILS, [](Text t, auto& l) { return TakeDesignators(t, l.record); }};
/// The same as a text, used if that is missing and for namespaces.
inline constexpr Attribute<Lun> WORLDWIDE_ID{"wwid", "worldwide id", LUN_DETAILS, [](Text t, auto& l) { return TakeWorldwideId(t, l.record); }};

/// The block device of a LUN or a namespace.
inline constexpr Attribute<Lun> BLOCK_DEVICE[] = {
    {"size",                     "size in units of 512 bytes",  LUN_DETAILS, [](Text t, auto& l) { return TakeNumber(t, l.record.BlockCount); }},
    {"queue/logical_block_size", "bytes in a block",            LUN_DETAILS, [](Text t, auto& l) { return TakeNumber(t, l.record.BlockSize); }},
};
/// Only of a namespace.
inline constexpr Attribute<Lun> NAMESPACE_NUMBER{"nsid", "namespace number", LUNS, [](Text t, auto& l) { return TakeNumber(t, l.namespaceNumber); }};

/// class/nvme/nvmeN; only the transport is read if it isn't Fibre Channel.
inline constexpr Attribute<Controller> TRANSPORT{"transport", "transport", PORT_DETAILS | TARGETS, [](Text t, auto& c) { return TakeText(t, c.transport); }};
inline constexpr Attribute<Controller> ENDS[] = {
    {"address",   "names of both ports", PORT_DETAILS | TARGETS, TakeAddress},
    {"cntrltype", "kind of controller",  PORT_DETAILS | TARGETS, [](Text t, auto& c) { return TakeText(t, c.kind); }},
};
inline constexpr Attribute<Controller> CONTROLLER[] = {
    {"state",        "state",                   TARGET_DETAILS,               [](Text t, auto& c) { return TakeText(t, c.state); }},
    {"subsysnqn",    "NQN of the subsystem",    TARGETS,                      [](Text t, auto& c) { return TakeText(t, c.target.StorageNqn); }},
    {"cntlid",       "controller number",       TARGET_DETAILS,               [](Text t, auto& c) { return TakeNumber(t, c.target.StorageControllerId); }},
    {"model",        "model",                   TARGET_DETAILS | LUN_DETAILS, [](Text t, auto& c) { return TakePadded(t, c.target.ProductId); }},
    {"serial",       "serial number",           TARGET_DETAILS,               [](Text t, auto& c) { return TakePadded(t, c.target.SerialNumber); }},
    {"firmware_rev", "firmware",                TARGET_DETAILS | LUN_DETAILS, [](Text t, auto& c) { return TakePadded(t, c.target.NvmeRevision); }},
    {"hostnqn",      "NQN of this host",        PORT_DETAILS,                 [](Text t, auto& c) { return TakeText(t, c.hostNqn); }},
    {"hostid",       "UUID of this host",       PORT_DETAILS,                 [](Text t, auto& c) { return TakeUuid(t, c.hostId); }},
};

/// statistics/ of a port or a remote port: counters of fabric notifications. Kernels without them have no congestion
/// management.
inline constexpr char NOTIFICATIONS[] = "fpin_li";
struct Notification {
    const char* path;
    VX_UINT64 _VEXAPI_SANCONGTMGMTV2::*count;
    VX_UINT32 __STATISTICS::*peerCount; ///< in a remote port's statistics; null: not part of them
};
inline constexpr Notification NOTIFICATION_COUNTERS[] = {
    {"cn_sig_alarm",                  &_VEXAPI_SANCONGTMGMTV2::AlarmCount,                 nullptr},
    {"cn_sig_warn",                   &_VEXAPI_SANCONGTMGMTV2::WarningCount,               nullptr},
    {"fpin_li_link_failure_count",    &_VEXAPI_SANCONGTMGMTV2::LinkFailureCount,           &__STATISTICS::LinkFailureCount},
    {"fpin_li_failure_unknown",       &_VEXAPI_SANCONGTMGMTV2::LinkUnknownEventCount,      &__STATISTICS::LinkUnknownEventCount},
    {"fpin_li_loss_of_sync_count",    &_VEXAPI_SANCONGTMGMTV2::LossOfSyncCount,            &__STATISTICS::LossOfSyncCount},
    {"fpin_li_loss_of_signals_count", &_VEXAPI_SANCONGTMGMTV2::LossOfSignalCount,          &__STATISTICS::LossOfSignalCount},
    {"fpin_li_prim_seq_err_count",    &_VEXAPI_SANCONGTMGMTV2::PrimSeqProtoErrCount,       &__STATISTICS::PrimSeqProtoErrCount},
    {"fpin_li_invalid_tx_word_count", &_VEXAPI_SANCONGTMGMTV2::InvalidTxWordCount,         &__STATISTICS::InvalidTxWordCount},
    {"fpin_li_invalid_crc_count",     &_VEXAPI_SANCONGTMGMTV2::InvalidCrcCount,            &__STATISTICS::InvalidCrcCount},
    {"fpin_li_device_specific",       &_VEXAPI_SANCONGTMGMTV2::LinkDevSpecCount,           &__STATISTICS::LinkDevSpecCount},
    {"fpin_dn_unknown",               &_VEXAPI_SANCONGTMGMTV2::DeliveryFailureCount,       &__STATISTICS::DeliveryFailureCount},
    {"fpin_dn_timeout",               &_VEXAPI_SANCONGTMGMTV2::DeliveryTimeoutCount,       &__STATISTICS::DeliveryTimeoutCount},
    {"fpin_dn_unable_to_route",       &_VEXAPI_SANCONGTMGMTV2::DeliveryUnableToRouteCount, &__STATISTICS::DeliveryUnableToRouteCount},
    {"fpin_dn_device_specific",       &_VEXAPI_SANCONGTMGMTV2::DeliveryDevSpecCount,       &__STATISTICS::DeliveryDevSpecCount},
    {"fpin_cn_clear",                 &_VEXAPI_SANCONGTMGMTV2::CongClearCount,             &__STATISTICS::PeerCongClearCount},
    {"fpin_cn_lost_credit",           &_VEXAPI_SANCONGTMGMTV2::CongLostCreditCount,        &__STATISTICS::PeerCongLostCreditCount},
    {"fpin_cn_credit_stall",          &_VEXAPI_SANCONGTMGMTV2::CongCreditStallCount,       &__STATISTICS::PeerCongCreditStallCount},
    {"fpin_cn_oversubscription",      &_VEXAPI_SANCONGTMGMTV2::CongOversubscriptionCount,  &__STATISTICS::PeerCongOversubscriptionCount},
    {"fpin_cn_device_specific",       &_VEXAPI_SANCONGTMGMTV2::CongDevSpecCount,           &__STATISTICS::PeerCongDevSpecCount},
};

/// class/fc_host/hostN, in the kernel's words
inline constexpr Attribute<VEXAPI_EXT_PORT> KERNEL_PORT[] = {
    {"port_state",    "state of the link",                  ON_REQUEST, [](Text t, auto& p) { return TakeText(t, p.State); }},
    {"speed",         "speed of the link",                  ON_REQUEST, [](Text t, auto& p) { return TakeText(t, p.Speed); }},
    {"symbolic_name", "symbolic name",                      ON_REQUEST, [](Text t, auto& p) { return TakeText(t, p.SymbolicName); }},
    {"dev_loss_tmo",  "seconds until a target is given up", ON_REQUEST, [](Text t, auto& p) { return TakeTimeout(t, p.DeviceLossTimeout); }},
};
/// class/scsi_host/hostN: of ports whose PCI function has no driver, or that of a network device.
inline constexpr Attribute<VEXAPI_EXT_PORT> DRIVER{"proc_name", "driver", ON_REQUEST, [](Text t, auto& p) { return TakeText(t, p.Driver); }};
inline constexpr char NO_DRIVER[] = "(null)";

/// class/fc_remote_ports/rport-H:C-N
inline constexpr Attribute<VEXAPI_EXT_TARGET> KERNEL_REMOTE_PORT[] = {
    {"port_state",       "state",                              ON_REQUEST, [](Text t, auto& r) { return TakeText(t, r.State); }},
    {"roles",            "roles",                              ON_REQUEST, [](Text t, auto& r) { return TakeText(t, r.Roles); }},
    {"dev_loss_tmo",     "seconds until a target is given up", ON_REQUEST, [](Text t, auto& r) { return TakeTimeout(t, r.DeviceLossTimeout); }},
    {"fast_io_fail_tmo", "seconds until commands fail",        ON_REQUEST, [](Text t, auto& r) { return TakeTimeout(t, r.FastFailTimeout); }},
};
/// class/nvme/nvmeN
inline constexpr Attribute<VEXAPI_EXT_TARGET> KERNEL_CONTROLLER{"state", "state", ON_REQUEST, [](Text t, auto& r) { return TakeText(t, r.State); }};

/// bus/scsi/devices/H:C:T:L
inline constexpr Attribute<VEXAPI_EXT_LUN> KERNEL_LUN[] = {
    {"state",        "state",        ON_REQUEST, [](Text t, auto& l) { return TakeText(t, l.State); }},
    {"access_state", "access state", ON_REQUEST, [](Text t, auto& l) { return TakeText(t, l.AccessState); }},
    {"wwid",         "worldwide id", ON_REQUEST, [](Text t, auto& l) { return TakeText(t, l.WorldwideId); }},
};
/// The block device of a namespace, and its controller
inline constexpr Attribute<VEXAPI_EXT_LUN> KERNEL_NAMESPACE[] = {
    {"ana_state", "access state", ON_REQUEST, [](Text t, auto& l) { return TakeText(t, l.AccessState); }},
    {"wwid",      "worldwide id", ON_REQUEST, [](Text t, auto& l) { return TakeText(t, l.WorldwideId); }},
};
inline constexpr Attribute<VEXAPI_EXT_LUN> NAMESPACE_STATE{"state", "state", ON_REQUEST, [](Text t, auto& l) { return TakeText(t, l.State); }};

/// class/block/dm-N; only the id if it isn't a multipath map
inline constexpr Attribute<Map> MAP_ID{"dm/uuid", "id of the map", ON_REQUEST, [](Text t, auto& m) { return TakeText(t, m.id); }};
inline constexpr Attribute<Map> MAP[] = {
    {"dm/name",      "name of the map",  ON_REQUEST, [](Text t, auto& m) { return TakeText(t, m.name); }},
    {"dm/suspended", "state of the map", ON_REQUEST, [](Text t, auto& m) { return TakeSuspension(t, m.state); }},
};
/// Only if the device mapper is asked for the states of the paths.
inline constexpr Attribute<Map> MAP_NUMBER{"dev", "device number", ON_REQUEST, [](Text t, auto& m) { return TakeDeviceNumber(t, m.number); }};
/// class/nvme-subsystem/nvme-subsysN/nvmeNnM: a namespace whose paths the kernel joins itself
inline constexpr Attribute<Map> NATIVE_MAP{"wwid", "worldwide id", ON_REQUEST, [](Text t, auto& m) { return TakeText(t, m.id); }};

// clang-format on

} // namespace host
