/// @file
/// The interface of the management library `libvexapi_fconly`: its records and its 62 functions.
///
/// Declarations only, valid C11 and C++20. All implementations of the library (the vendor's, the simulator, the
/// Linux library) are built against this header and are interchangeable at load time.
///
/// Unless a function's comment says otherwise:
///  - The result is a status: 0 is success; any other value is a failure in the library's own numbering.
///  - `handle` is the address of the `PortHandle` field of a protocol record; `word` is the 32-bit word
///    at byte 4 of that field, in host order.
///  - The library owns the records of the adapter tree and everything they point to, from
///    `VEXAPI_GetAdapterList` to `VEXAPI_Uninitialize`. Callers must not free them.
///  - The caller zeroes every record that the library fills.
///  - Numbers are in host order. Texts are NUL-terminated unless they fill their array. Names (WWNN, WWPN,
///    port ids) are bytes in transmission order.
///  - The library may print progress on standard output.
#ifndef VEXAPI_H
#define VEXAPI_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define VEXAPI_STATIC_ASSERT(condition, text) static_assert(condition, text)
extern "C" {
#else
#define VEXAPI_STATIC_ASSERT(condition, text) _Static_assert(condition, text)
#endif

typedef uint8_t VX_UINT8;
typedef uint16_t VX_UINT16;
typedef uint32_t VX_UINT32;
typedef uint64_t VX_UINT64;
typedef int16_t VX_INT16;

/* ---------------------------------------------------------------- The adapter tree */

/// Identifies a port to the library. The content is private to the library.
typedef struct VX_PORT_HANDLE {
    VX_UINT8 opaque[12];
} VX_PORT_HANDLE;
VEXAPI_STATIC_ASSERT(sizeof(VX_PORT_HANDLE) == 12, "a port handle takes 12 bytes");

/// Identity of a chip and of its PCI Express link.
typedef struct __CHIPPROPERTY {
    VX_UINT16 VendorId;          ///< PCI vendor id
    VX_UINT16 DeviceId;          ///< PCI device id
    VX_UINT16 SubVendorId;       ///< PCI subsystem vendor id
    VX_UINT16 SubDeviceId;       ///< PCI subsystem device id
    VX_UINT16 PciMaxLink;        ///< bits 0 to 3: speed code, bits 4 to 9: lane code
    VX_UINT16 PciNegotiatedLink; ///< the same for the negotiated link
} __CHIPPROPERTY;

typedef struct _tagVEXAPI_SDMTarget _tagVEXAPI_SDMTarget;
typedef struct _tagVEXAPI_SDMLun _tagVEXAPI_SDMLun;
typedef struct _vexapi_protocol_t _vexapi_protocol_t;
typedef struct _vexapi_phy_port_t _vexapi_phy_port_t;
typedef struct _vexapi_adapter_t _vexapi_adapter_t;

/// One protocol function of a physical port; the tool's reports call it a port.
struct _vexapi_protocol_t {
    VX_UINT8 WWNN[8];
    VX_UINT8 WWPN[8];
    VX_PORT_HANDLE PortHandle; ///< its address is the first argument of the port-level functions
    __CHIPPROPERTY ChipProperty;
    char DriverVersion[64];
    VX_UINT32 FeatureFlags;      ///< bit 23 congestion management phase 1, 26 phase 2, 29 second form of
                                 ///< the D-Port test, 30 virtual lane capable, 31 throttling configured
    VX_UINT8 DriverFeatureFlags; ///< mask 2: the driver updates transceiver firmware
    char RunningFwVersion[32];
    char BiosVersion[32];          ///< flash BIOS version
    VX_UINT16 PortInterfaceType;   ///< 1 physical port, 3 NPIV virtual port
    VX_UINT8 OptionRomMask;        ///< 0x08 ROM BIOS present, 0x02 ROM UEFI present
    VX_UINT8 FlashFwVersion[3];    ///< major, minor, sub; all zero: no image
    VX_UINT8 FlashEfiVersion[2];   ///< major, minor; zero: no image
    VX_UINT8 FlashFCodeVersion[2]; ///< major, minor; zero: no image
    VX_UINT8 RunningMpiFwVersion[3];
    VX_UINT8 RunningPepFwVersion[3];
    VX_UINT8 PortId[3];
    VX_UINT8 PortType;           ///< 1 node, 2 loop, 3 fabric private loop, 4 node or loop, 5 fabric,
                                 ///< 6 fabric public loop, 7 loop transport, 8 expansion, 9 bridge
    VX_UINT8 PortState;          ///< 1 online, 3 offline
    VX_UINT8 PortConnectionMode; ///< 1 point to point, 2 loop
    VX_UINT32 PortSpeed;         ///< 1, 2, 4, 8; 16 is 10 Gbps, 22 is 16, 50 is 32, 100 is 64
    VX_UINT8 SupportedSpeeds;    ///< 0x01 1 Gbps, 0x02 2, 0x08 4, 0x10 8, 0x04 10, 0x20 16, 0x40 32, 0x80 64
    VX_UINT8 PrincipalFabricWWN[8];
    VX_UINT8 AdjacentFabricWWN[8];
    /* Counters of the driver (first six) and of the firmware. */
    VX_UINT32 ControllerErrorCount;
    VX_UINT32 DeviceErrorCount;
    VX_UINT32 IoCount;
    VX_UINT32 MegaBytesCount;
    VX_UINT32 LipResetCount;
    VX_UINT32 InterruptCount;
    VX_UINT32 LinkFailureCount;
    VX_UINT32 LossOfSyncCount;
    VX_UINT32 LossOfSignalCount;
    VX_UINT32 PrimitiveSeqProtocolErrorCount;
    VX_UINT32 InvalidTxWordCount;
    VX_UINT32 InvalidCrcCount;
    /* Congestion management, first generation: the last event and 32-bit counters. */
    VX_UINT16 ScmEventFlags; ///< bit 0 congestion, 1 delivery, 2 link integrity
    VX_UINT16 ScmLinkEventType;
    VX_UINT32 ScmLinkEventThreshold; ///< milliseconds
    VX_UINT16 ScmDeliveryReason;
    VX_UINT16 ScmCongEventType;
    VX_UINT32 ScmCongEventPeriod; ///< milliseconds
    VX_UINT8 ScmCongSeverity;     ///< 0 none, 0xF1 warning, 0xF7 alarm
    VX_UINT32 ScmLinkCounters[6]; ///< link failure, loss of sync, loss of signal, primitive sequence
                                  ///< protocol error, invalid transmission word, invalid CRC; these are
                                  ///< not the firmware counters above
    VX_UINT64 ScmAlarmCount;
    VX_UINT64 ScmWarningCount;
    /* Congestion management: the present state. */
    VX_UINT8 ScmFabricFlags;
    VX_UINT8 ScmCongState;
    VX_UINT8 ScmVirtualLaneState;
    VX_UINT32 ScmSecondsSinceLastEvent;
    VX_UINT8 ScmLinkIntegrityEvents;
    VX_UINT8 ScmDeliveryEvents;
    VX_UINT8 ScmThrottleState;
    VX_UINT32 SecurityFlags; ///< bit 0: ExtendedSecurity
    VX_UINT32 TargetCount;
    _tagVEXAPI_SDMTarget* pTargetList; ///< the first target itself, or null
    VX_UINT8 HostId[16];               ///< NVMe host identifier; all zero: none
    char HostNQN[256];                 ///< NVMe host NQN
    VX_UINT8 PciBusNumber;
    VX_UINT8 PciDeviceNumber;
    VX_UINT8 PciFunctionNumber;
    VX_UINT32 ProtocolType; ///< 0 FC, 1 FCoE, 2 NIC, 3 iSCSI
    _vexapi_protocol_t* pNext;
};

/// Header of a list of protocol functions.
typedef struct VX_PROTOCOL_LIST {
    VX_UINT32 Count;
    _vexapi_protocol_t* pHead;
} VX_PROTOCOL_LIST;

/// One physical port of an adapter.
struct _vexapi_phy_port_t {
    VX_UINT8 PortNumber;
    VX_PROTOCOL_LIST* pProtocolList;
    _vexapi_phy_port_t* pNext;
};

/// Header of a list of physical ports.
typedef struct VX_PHY_PORT_LIST {
    VX_UINT32 Count;
    _vexapi_phy_port_t* pHead;
} VX_PHY_PORT_LIST;

/// One adapter. A version text is empty if the flash has no such image.
struct _vexapi_adapter_t {
    char SerialNumber[32];
    VX_UINT32 AdapterType; ///< 1 Ethernet, 2 Fibre Channel, 3 iSCSI, 4 to 8 converged kinds
    char Manufacturer[64];
    VX_UINT16 VendorId;
    VX_UINT16 SubVendorId;
    VX_UINT16 SubDeviceId;
    VX_UINT16 PciBusNumber;
    char Model[32];
    char BiosVersion[32];
    char FCodeVersion[32];
    char EfiVersion[32];
    char FlashFwVersion[32];
    char MultibootVersion[32];
    VX_UINT32 ChipRevision;
    VX_PHY_PORT_LIST* pPhyPortList;
    _vexapi_adapter_t* pNext;
};

/// Header of the list of adapters.
typedef struct VX_ADAPTER_LIST {
    VX_UINT32 Count;
    _vexapi_adapter_t* pHead;
} VX_ADAPTER_LIST;

/* ---------------------------------------------------------------- Targets and LUNs */

/// One LUN of a SCSI target, or one namespace of an NVMe controller.
struct _tagVEXAPI_SDMLun {
    VX_UINT16 LunNumber; ///< LUN, or namespace number
    VX_UINT8 VendorId[8];
    VX_UINT8 ProductId[16];
    VX_UINT8 ProductRevision[4];
    VX_UINT8 WorldwideId[32];
    VX_UINT8 WorldwideIdLength; ///< valid bytes of `WorldwideId`
    VX_UINT64 BlockCount;
    VX_UINT32 BlockSize; ///< bytes
    VX_UINT8 LunFlags;
    VX_UINT8 NamespaceRevision[8];
    _tagVEXAPI_SDMLun* pNext;
};

/// One remote port, seen as a target.
struct _tagVEXAPI_SDMTarget {
    VX_UINT8 NodeName[8];
    VX_UINT8 PortName[8];
    VX_UINT8 PortId[3];
    VX_UINT16 TargetNumber;
    VX_UINT16 ScmEventFlags;
    VX_UINT16 ScmLinkEventType;
    VX_UINT32 ScmLinkEventThreshold; ///< milliseconds
    VX_UINT16 ScmDeliveryReason;
    VX_UINT16 ScmPeerCongEventType;
    VX_UINT32 ScmPeerCongEventPeriod; ///< milliseconds
    VX_UINT8 ScmCongState;
    VX_UINT8 ScmLinkIntegrityEvents;
    VX_UINT8 ScmVirtualLane;
    VX_UINT8 ScmThrottleState;
    VX_UINT32 ScmSecondsSinceLastEvent;
    VX_UINT8 VendorId[8];
    VX_UINT8 ProductId[16];
    VX_UINT8 ProductRevision[4];
    VX_UINT8 TargetFlags[6];
    VX_UINT32 LunCount;
    _tagVEXAPI_SDMLun* pLunList; ///< the first LUN itself, or null
    VX_UINT32 DeviceType;        ///< SCSI peripheral device type
    VX_UINT8 SerialNumber[64];
    VX_UINT8 AuthPortId[3];
    VX_UINT8 AuthPortName[8];
    VX_UINT8 AuthRole;
    VX_UINT8 AuthStatus;
    VX_UINT8 AuthState;
    VX_UINT8 SecPortId[3];
    VX_UINT8 SecFlags;
    VX_UINT8 SecPortName[8];
    VX_UINT32 SecSessionState;
    VX_UINT8 NvmeRevision[8];
    VX_UINT16 StorageControllerId;
    char StorageNqn[256];
    _tagVEXAPI_SDMTarget* pNext;
};

/* ---------------------------------------------------------------- Flash, temperature, lockdown */

/// Version of one flash component. All three numbers zero: the component is absent.
typedef struct VX_FLASH_COMPONENT {
    VX_UINT8 Reserved0;
    VX_UINT8 Major;
    VX_UINT8 Minor;
    VX_UINT8 Sub;
    VX_UINT8 Reserved[2];
} VX_FLASH_COMPONENT;

/// Versions of the components in an adapter's flash.
typedef struct _VEXAPI_FlashComponentVersion {
    VX_FLASH_COMPONENT PepFirmware;
    VX_FLASH_COMPONENT PepSoftRom;
    VX_FLASH_COMPONENT PepBoardConfig;
    VX_FLASH_COMPONENT PreloadFwArea;
    VX_FLASH_COMPONENT FcBoardConfig;
    VX_FLASH_COMPONENT MpiFirmware;
    VX_FLASH_COMPONENT MpiSoftRom;
    VX_FLASH_COMPONENT PcieSerdes;
} _VEXAPI_FlashComponentVersion;
VEXAPI_STATIC_ASSERT(sizeof(_VEXAPI_FlashComponentVersion) == 48, "eight entries of six bytes");

/// Record that the flash tools write to an adapter's flash. Texts are not terminated.
typedef struct VX_SFlashMemoBlock {
    char Signature[4]; ///< "FMBS"
    VX_UINT8 Reserved4[12];
    VX_UINT8 FamilyFw[3]; ///< family firmware: major, minor, sub
    VX_UINT8 Reserved19;
    VX_UINT8 Mbi[3]; ///< multi-boot image: major, minor, sub
    VX_UINT8 Reserved23;
    char MbiBuildDate[8]; ///< YYYYMMDD
    char ToolId[4];
    VX_UINT16 Year;
    VX_UINT8 Month;
    VX_UINT8 Day;
    VX_UINT8 Hour;
    VX_UINT8 Minute;
    VX_UINT8 Second;
    VX_UINT8 Reserved43;
    VX_UINT8 ToolVersion[4];
} VX_SFlashMemoBlock;
VEXAPI_STATIC_ASSERT(sizeof(VX_SFlashMemoBlock) == 48, "the memo block takes 48 bytes");
VEXAPI_STATIC_ASSERT(offsetof(VX_SFlashMemoBlock, FamilyFw) == 16, "family firmware at byte 16");
VEXAPI_STATIC_ASSERT(offsetof(VX_SFlashMemoBlock, Mbi) == 20, "image version at byte 20");
VEXAPI_STATIC_ASSERT(offsetof(VX_SFlashMemoBlock, MbiBuildDate) == 24, "build date at byte 24");
VEXAPI_STATIC_ASSERT(offsetof(VX_SFlashMemoBlock, ToolId) == 32, "tool id at byte 32");
VEXAPI_STATIC_ASSERT(offsetof(VX_SFlashMemoBlock, Year) == 36, "year at byte 36");
VEXAPI_STATIC_ASSERT(offsetof(VX_SFlashMemoBlock, ToolVersion) == 44, "tool version at byte 44");

/// Temperature of the board's chip.
typedef struct _VEXAPI_BoardThermalTemp {
    VX_INT16 Temperature; ///< degrees Celsius
    VX_UINT8 Reserved[14];
} _VEXAPI_BoardThermalTemp;

/// Lockdown state of an adapter, with a status for each item: 0 the state is valid, 118 not supported by the
/// driver, 134 not supported by the firmware.
typedef struct VEXAPI_LOCKDOWNINFO {
    VX_UINT8 ConfigLockdown;
    VX_UINT8 FirmwareLockdown;
    VX_UINT8 MpiLockdown;
    VX_UINT32 ConfigStatus;
    VX_UINT32 FirmwareStatus;
    VX_UINT32 MpiStatus;
} VEXAPI_LOCKDOWNINFO;

/// Beacon state: 0 off, 1 on.
typedef VX_UINT32 VEXAPI_BEACON_TYPE;

/// Memory image of a transceiver: A0h and A2h for the SFP family (SFF-8472), or lower page and upper page 00h in
/// the first 256 bytes for the QSFP family (SFF-8636).
typedef struct _VEXAPI_SFP_DATA {
    VX_UINT8 Data[512];
} _VEXAPI_SFP_DATA;
VEXAPI_STATIC_ASSERT(sizeof(_VEXAPI_SFP_DATA) == 512, "a transceiver image takes 512 bytes");

/* ---------------------------------------------------------------- Settings */

/// NVRAM parameters and boot settings of a port.
typedef struct _VEXAPI_HBAParameters {
    VX_UINT32 DataRate;
    VX_UINT32 ConnetionOptions; ///< the library's spelling
    VX_UINT32 EnableFibreChannelTapeSupport;
    VX_UINT32 MaxLunsPerTarget;
    VX_UINT32 EnableHardLoopId;
    VX_UINT32 HardLoopId;
    VX_UINT32 FrameSize;
    VX_UINT32 EnableLipFullLogin;
    VX_UINT32 EnableTargetReset;
    VX_UINT32 LoopResetDelay;
    VX_UINT32 LoginRetryCount;
    VX_UINT32 PortDownRetryCount;
    VX_UINT32 ExecutionThrottle;
    VX_UINT32 OperationMode;
    VX_UINT32 InterruptDelayTimer;
    VX_UINT32 LinkDownTimeout;
    VX_UINT32 DisableBIOS;
    VX_UINT32 EnableSelectableBoot;
    VX_UINT8 BootPortName[8];
    VX_UINT16 BootLunNumber;
    VX_UINT32 EnableSelectiveLogin;
    VX_UINT32 EnableSelectiveLUN;
    VX_UINT32 ForceWorldLogin;
    VX_UINT8 Alt1BootPortName[8];
    VX_UINT16 Alt1BootLunNumber;
    VX_UINT8 Alt2BootPortName[8];
    VX_UINT16 Alt2BootLunNumber;
    VX_UINT8 Alt3BootPortName[8];
    VX_UINT16 Alt3BootLunNumber;
    VX_UINT32 RecvOutOfOrderDataBit;
    VX_UINT32 EnableLRBit;
    VX_UINT32 EnableFabricAssignWWN;
    VX_UINT32 EnableFabricAssignBootLun;
    VX_UINT32 DisableSCM;
    VX_UINT8 NVMeEnable;
    VX_UINT8 Alt4BootPortName[8];
    VX_UINT16 Alt4BootLunNumber;
    VX_UINT8 Alt5BootPortName[8];
    VX_UINT16 Alt5BootLunNumber;
    VX_UINT8 Alt6BootPortName[8];
    VX_UINT16 Alt6BootLunNumber;
    VX_UINT8 Alt7BootPortName[8];
    VX_UINT16 Alt7BootLunNumber;
    VX_UINT8 EnableVirtualLane;
    VX_UINT8 Reserved[64]; ///< preserved as read
} _VEXAPI_HBAParameters;

/// Auxiliary record of `VEXAPI_GetHBAParamsInfo`: zeroed by the caller and otherwise unused.
typedef struct VX_HBA_AUX {
    VX_UINT8 Reserved[4096];
} VX_HBA_AUX;

/// One boot target of an NVMe over Fibre Channel host.
typedef struct VX_NVME_BOOT_ENTRY {
    VX_UINT8 Reserved[8];
    VX_UINT8 TargetWWPN[8];
    VX_UINT8 TargetWWNN[8];
    VX_UINT32 TargetNSID;
    VX_UINT16 TargetCtrlID;
    VX_UINT8 TargetFlags;
    char TargetNQN[256];
} VX_NVME_BOOT_ENTRY;

/// The NVMe boot targets of a port and the identity of its host.
typedef struct _VEXAPI_FcNVMeBootParams {
    VX_NVME_BOOT_ENTRY BootEntry[8];
    char HostNQN[256];
    VX_UINT8 HostId[16];
} _VEXAPI_FcNVMeBootParams;

/* ---------------------------------------------------------------- Statistics and congestion */

/// Private statistics of a port's firmware.
typedef struct _VEXAPI_FWPRIVATESTATSEntry {
    VX_UINT64 CorrectableFecErrors;
    VX_UINT64 UncorrectableFecErrors;
    VX_UINT64 Reserved[6];
} _VEXAPI_FWPRIVATESTATSEntry;

typedef struct _VEXAPI_SANCONGTMGMTV2 _VEXAPI_SANCONGTMGMTV2;
/// Congestion counters, second generation: one node for the port itself, one for each target.
struct _VEXAPI_SANCONGTMGMTV2 {
    VX_UINT8 WWNN[8];
    VX_UINT8 WWPN[8];
    VX_UINT32 EntryType; ///< 0x80: the physical port's own node
    VX_UINT64 AlarmCount;
    VX_UINT64 WarningCount;
    VX_UINT64 ClearedCongestionCount;
    VX_UINT64 ThrottledDownCount;
    VX_UINT64 ThrottledUpCount;
    VX_UINT64 ReturnedBusyCount;
    VX_UINT64 BottomedOutCount;
    /* Fabric Performance Impact Notifications received. */
    VX_UINT64 LinkFailureCount;
    VX_UINT64 LinkUnknownEventCount;
    VX_UINT64 LossOfSyncCount;
    VX_UINT64 LossOfSignalCount;
    VX_UINT64 PrimSeqProtoErrCount;
    VX_UINT64 InvalidTxWordCount;
    VX_UINT64 InvalidCrcCount;
    VX_UINT64 LinkDevSpecCount;
    VX_UINT64 DeliveryFailureCount;
    VX_UINT64 DeliveryTimeoutCount;
    VX_UINT64 DeliveryUnableToRouteCount;
    VX_UINT64 DeliveryDevSpecCount;
    VX_UINT64 CongClearCount;
    VX_UINT64 CongLostCreditCount;
    VX_UINT64 CongCreditStallCount;
    VX_UINT64 CongOversubscriptionCount;
    VX_UINT64 CongDevSpecCount;
    VX_UINT64 PunCount;
    VX_UINT64 LinkUncorFecCount;
    _VEXAPI_SANCONGTMGMTV2* pNext;
};

/// Congestion profile of a port.
typedef struct _VEXAPI_SCMRProfile {
    VX_UINT8 Disabled;
    VX_UINT8 ControlFlag;
    VX_UINT8 Profile;
    VX_UINT8 Reserved[13];
} _VEXAPI_SCMRProfile;
VEXAPI_STATIC_ASSERT(sizeof(_VEXAPI_SCMRProfile) == 16, "a congestion profile takes 16 bytes");

/// Link statistics of one remote port.
typedef struct __STATISTICS {
    VX_UINT32 LinkFailureCount;
    VX_UINT32 LossOfSyncCount;
    VX_UINT32 LossOfSignalCount;
    VX_UINT32 PrimSeqProtoErrCount;
    VX_UINT32 InvalidTxWordCount;
    VX_UINT32 InvalidCrcCount;
    VX_UINT32 DeliveryFailureCount;
    VX_UINT32 DeliveryTimeoutCount;
    VX_UINT32 DeliveryUnableToRouteCount;
    VX_UINT32 DeliveryDevSpecCount;
    VX_UINT32 PeerCongClearCount;
    VX_UINT32 PeerCongLostCreditCount;
    VX_UINT32 PeerCongCreditStallCount;
    VX_UINT32 PeerCongOversubscriptionCount;
    VX_UINT32 PeerCongDevSpecCount;
    VX_UINT32 LinkUnknownEventCount;
    VX_UINT32 LinkDevSpecCount;
    VX_UINT32 Reserved[15];
} __STATISTICS;

/// Selects the remote port whose statistics are read.
typedef struct VX_PORT_SELECTOR {
    VX_UINT16 SelectorType; ///< 2: by port name
    VX_UINT8 PortName[8];
} VX_PORT_SELECTOR;

/* ---------------------------------------------------------------- Diagnostics */

/// Parameters of the loopback and the read/write buffer test.
typedef struct DiagTestParams {
    VX_UINT32 TestCount;
    VX_UINT32 OnError; ///< 0 ignore, 1 stop, 2 loop
    VX_UINT32 TestCountCopy;
    VX_UINT32 DataPatternType; ///< 0 random, 1 CRPAT, 2 CJTPAT, 3 CSPAT, 4 custom, 5 fixed
    VX_UINT32 LoopbackType;    ///< 0 internal 10-bit, 2 external, 3 FCoE echo, 4 internal
    VX_UINT32 DataSize;        ///< bytes per frame
    VX_UINT8 CustomData[8];
    VX_UINT8 ConnectionMode; ///< `PortConnectionMode` of the port
} DiagTestParams;

typedef struct _VEXAPI_LoopbackTestResult {
    char TestStatus[64]; ///< "Success" when the iteration passed
    VX_UINT32 CrcError;
    VX_UINT32 DisparityError;
    VX_UINT32 FrameLengthError;
} _VEXAPI_LoopbackTestResult;

typedef struct _VEXAPI_ReadWriteBufferTestResult _VEXAPI_ReadWriteBufferTestResult;
/// Result of the read/write buffer test for one target.
struct _VEXAPI_ReadWriteBufferTestResult {
    char TestStatus[64];
    VX_UINT8 PortId[3];
    VX_UINT32 DataMiscompare;
    VX_UINT32 LinkFailure;
    VX_UINT32 LossOfSync;
    VX_UINT32 LossOfSignal;
    VX_UINT32 InvalidCrc;
    _VEXAPI_ReadWriteBufferTestResult* pNext;
};

/// Result of one Echo ELS frame.
typedef struct _VEXAPI_ECHO_RESULTS {
    VX_UINT32 FrameSent;
    VX_UINT32 FrameReceived;
    VX_UINT32 ResponseLength;
    VX_UINT32 EchoFailed; ///< non-zero: the frame failed although the call succeeded
    char EchoStatus[72];
    VX_UINT32 ResponseTime;
} _VEXAPI_ECHO_RESULTS;
VEXAPI_STATIC_ASSERT(sizeof(_VEXAPI_ECHO_RESULTS) == 92, "an echo result takes 92 bytes");

/// Result of the diagnostic port (D-Port) test. Each phase has a value and a phase result code.
typedef struct _VEXAPI_DiagnosticsDPortResult {
    VX_UINT32 RoundtripLinkLatency; ///< big-endian, nanoseconds
    VX_UINT32 CableLinkDistance;    ///< big-endian, metres
    VX_UINT32 HbaPortValue;
    VX_UINT8 HbaPortStatus;
    VX_UINT8 ElecLbValue; ///< electrical loopback
    VX_UINT8 ElecLbStatus;
    VX_UINT8 OptLbValue; ///< optical loopback
    VX_UINT8 OptLbStatus;
    VX_UINT8 LinkTrafficValue;
    VX_UINT8 LinkTrafficStatus;
    char StartTime[64];
    char StopTime[64];
    VX_UINT16 Mbx1;          ///< 0x4005: the mailbox command failed
    VX_UINT16 Mbx2;          ///< mailbox status, or reason of the failure
    VX_UINT16 RemoteRxPower; ///< big-endian, 0.1 microwatt, as are the three that follow
    VX_UINT16 RemoteTxPower;
    VX_UINT16 LocalRxPower;
    VX_UINT16 LocalTxPower;
    VX_UINT8 Reserved[80];
} _VEXAPI_DiagnosticsDPortResult;
VEXAPI_STATIC_ASSERT(sizeof(_VEXAPI_DiagnosticsDPortResult) == 240, "a D-Port result takes 240 bytes");

/* ---------------------------------------------------------------- Session */

/// Starts the library. `debugLevel` is 0 (quiet) or 31 (everything); `reserved` is 0.
VX_UINT32 VEXAPI_Initialize(VX_UINT32 debugLevel, VX_UINT32 reserved);
/// Identifies the calling tool.
VX_UINT32 VEXAPI_SetToolID(VX_UINT32 toolId);
/// Sets the version of the calling tool.
VX_UINT32 VEXAPI_SetToolVersion(VX_UINT32 major, VX_UINT32 minor, VX_UINT32 sub, VX_UINT32 build);
/// Ends the library and releases the adapter tree.
VX_UINT32 VEXAPI_Uninitialize(void);
/// Returns the adapter tree, or null. Repeated calls in a session return the same tree.
VX_ADAPTER_LIST* VEXAPI_GetAdapterList(void);
/// Sets `*required` to 1 if the change just made needs a reboot to take effect.
VX_UINT32 VEXAPI_IsRebootRequired(VX_UINT32* required);

/* ---------------------------------------------------------------- Adapter: flash, personality */

/// Fills the versions of the flash components.
VX_UINT32 VEXAPI_GetFlashComponentVersion(VX_PORT_HANDLE* handle, _VEXAPI_FlashComponentVersion* versions);
/// Fills the memo block of the flash.
VX_UINT32 VEXAPI_GetAdapterFlashMemoBlock(VX_PORT_HANDLE* handle, VX_SFlashMemoBlock* block);
/// Writes a multi-boot image; status 201 means success with a reboot needed. `reserved` is 0.
VX_UINT32 VEXAPI_doOptionROMUpdate(VX_PORT_HANDLE* handle, const char* path, VX_UINT32 reserved);
/// Writes the board configuration.
VX_UINT32 VEXAPI_UpdateSpecificFlashRegionFromFile(VX_PORT_HANDLE* handle, const char* path);
/// Writes the firmware preload table.
VX_UINT32 VEXAPI_UpdateAdapterFirmwareTableFromFile(VX_PORT_HANDLE* handle, const char* path);
/// Writes the PEP configuration.
VX_UINT32 VEXAPI_UpdateAdapterPEPCfgFromFile(VX_PORT_HANDLE* handle, const char* path);
/// Sets `*personality` to 0 (FC) or 1 (CNA).
VX_UINT32 VEXAPI_GetPersonalityType(VX_PORT_HANDLE* handle, unsigned char* personality);
/// Changes the personality to 0 (FC) or 1 (CNA).
VX_UINT32 VEXAPI_ChangePersonalityType(VX_PORT_HANDLE* handle, unsigned char personality);
/// Not a status: 1 if the personality may be changed.
VX_UINT32 VEXAPI_CheckRowanPersonalityChangeOption(VX_PORT_HANDLE* handle);

/* ---------------------------------------------------------------- Port: reports and actions */

/// Writes the NVRAM from a file.
VX_UINT32 VEXAPI_UpdateAdapterNVRAMFromFile(VX_PORT_HANDLE* handle, const char* path);
/// Fills the temperature of the board.
VX_UINT32 VEXAPI_GetAdapterAsicBoardTemperature(VX_PORT_HANDLE* handle, _VEXAPI_BoardThermalTemp* temperature);
/// Fills the lockdown state.
VX_UINT32 VEXAPI_GetLockdownStatus(VX_PORT_HANDLE* handle, VEXAPI_LOCKDOWNINFO* lockdown);
/// Clears the port's firmware counters.
VX_UINT32 VEXAPI_ResetDeviceStats(VX_PORT_HANDLE* handle);
/// Fills a zeroed buffer of 512 bytes with the transceiver's memory (`_VEXAPI_SFP_DATA`).
VX_UINT32 VEXAPI_GetSFPData(VX_PORT_HANDLE* handle, void* buffer);
/// Writes transceiver firmware from a file. `option` is 2.
VX_UINT32 VEXAPI_SfpModuleFirmwareUpdate(VX_PORT_HANDLE* handle, const char* path, VX_UINT32 option);
/// Fills a zeroed buffer with the vital product data; `*size` is the buffer size on entry and the data size on
/// return.
VX_UINT32 VEXAPI_GetVpd(VX_UINT32 word, VX_UINT32 reserved, void* buffer, VX_UINT32* size);
/// Fetches the firmware dump. `*dump` is null and `*size` 0 on entry; the caller frees it with `free`.
VX_UINT32 VEXAPI_SDGetFwDump2(VX_UINT32 word, VX_UINT32 reserved, void** dump, VX_UINT32* size);
/// Sets `*flag` to 1 for a mezzanine adapter.
VX_UINT32 VEXAPI_IsMezzAdapter(VX_PORT_HANDLE* handle, VX_UINT8* flag);
/// Reads the beacon state.
VX_UINT32 VEXAPI_GetAdapterBeaconStatus(VX_PORT_HANDLE* handle, VEXAPI_BEACON_TYPE* state);
/// Sets the beacon state.
VX_UINT32 VEXAPI_UpdateAdapterBeaconStatus(VX_PORT_HANDLE* handle, VEXAPI_BEACON_TYPE state);

/* ---------------------------------------------------------------- Port: settings */

/// Fills the NVRAM parameters. `auxiliary` is a zeroed `VX_HBA_AUX` that only the library uses.
VX_UINT32 VEXAPI_GetHBAParamsInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters, VX_HBA_AUX* auxiliary);
/// Writes the NVRAM parameters.
VX_UINT32 VEXAPI_UpdateHBAParameters(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters);
/// Returns the NVRAM to its defaults.
VX_UINT32 VEXAPI_RestoreDefaultNVRAM(VX_PORT_HANDLE* handle);
/// Writes the NVRAM contents to a text file.
VX_UINT32 VEXAPI_SaveSingleAdapterNVRAMToFile(VX_PORT_HANDLE* handle, const char* path);
/// Not a status: the boot-from-SAN mode of later boot calls, 1 BIOS, 2 UEFI, 4 NVMe.
VX_UINT8 VEXAPI_GetBfsConfigMode(void);
/// Switches the boot-from-SAN mode of later boot calls.
VX_UINT32 VEXAPI_SetBfsConfigMode(VX_UINT8 mode);
/// Fills the parameters, boot settings included. `reserved` is null.
VX_UINT32 VEXAPI_GetBootDeviceInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters, void* reserved);
/// Writes the boot settings of the record.
VX_UINT32 VEXAPI_SetBootDeviceInfo(VX_PORT_HANDLE* handle, _VEXAPI_HBAParameters* parameters);
/// Fills the NVMe boot entries and the host's identity.
VX_UINT32 VEXAPI_GetNVMeBootDeviceEntries(VX_PORT_HANDLE* handle, _VEXAPI_FcNVMeBootParams* parameters);
/// Writes the NVMe boot entries.
VX_UINT32 VEXAPI_SetNVMeBootDeviceEntries(VX_PORT_HANDLE* handle, _VEXAPI_FcNVMeBootParams* parameters);
/// Reads buffer-to-buffer credit recovery; `reason` receives a text of at most `reasonSize` (64) bytes.
VX_UINT32 VEXAPI_FCGetBBCSupportInfoEx(VX_PORT_HANDLE* handle, VX_UINT8* status, VX_UINT8* configured, VX_UINT8* state,
                                       VX_UINT8* negotiated, char* reason, VX_UINT32 reasonSize);
/// Sets buffer-to-buffer credit recovery; takes effect after a reboot.
VX_UINT32 VEXAPI_FCSetBBCSupportInfo(VX_PORT_HANDLE* handle, VX_UINT8 status, VX_UINT8 configured);
/// Reads forward error correction: 0 off, 1 on.
VX_UINT32 VEXAPI_FCGetFECSupportInfo(VX_PORT_HANDLE* handle, VX_UINT32* status);
/// Switches forward error correction; takes effect after a reboot.
VX_UINT32 VEXAPI_FCSetFECSupportInfo(VX_PORT_HANDLE* handle, VX_UINT32 status);
/// Clears the forward error correction counters.
VX_UINT32 VEXAPI_ResetFECCounters(VX_PORT_HANDLE* handle);
/// Allocates and fills `*count` entries; the caller frees `*entries` with `free`.
VX_UINT32 VEXAPI_GetFWPrivateStats(VX_PORT_HANDLE* handle, _VEXAPI_FWPRIVATESTATSEntry** entries, VX_UINT32* count);

/* ---------------------------------------------------------------- Port: congestion management */

/// Sets `*enabled` (0 on entry) to non-zero if congestion management is enabled on the port.
VX_UINT32 VEXAPI_IsFWCMFeatureEnabled(VX_PORT_HANDLE* handle, VX_UINT8* enabled);
/// Returns the head of a list, to be released with `VEXAPI_FreeSCMRStatisticsList`.
VX_UINT32 VEXAPI_GetSCMRStatisticsList(VX_PORT_HANDLE* handle, _VEXAPI_SANCONGTMGMTV2** list);
/// Releases a statistics list.
VX_UINT32 VEXAPI_FreeSCMRStatisticsList(_VEXAPI_SANCONGTMGMTV2* list);
/// Clears the congestion counters of all targets of the port; 118 if not supported.
VX_UINT32 VEXAPI_SANCongMgmtResetStatistics(VX_PORT_HANDLE* handle);
/// Fills the congestion profile.
VX_UINT32 VEXAPI_GetSCMRProfile(VX_PORT_HANDLE* handle, _VEXAPI_SCMRProfile* profile);
/// Applies the congestion profile.
VX_UINT32 VEXAPI_SetSCMRProfile(VX_PORT_HANDLE* handle, _VEXAPI_SCMRProfile* profile);

/* ---------------------------------------------------------------- Port: diagnostics */

/// Runs one loopback test. Not a status: the verdict is `TestStatus`.
_VEXAPI_LoopbackTestResult VEXAPI_DiagnosticsLoopBackTest(VX_PORT_HANDLE* handle, DiagTestParams* parameters);
/// Runs one read/write buffer test. Returns a list, to be released with `VEXAPI_FreeRWBufferTestResultList`.
_VEXAPI_ReadWriteBufferTestResult* VEXAPI_DiagnosticsReadWriteBufferTest(VX_PORT_HANDLE* handle,
                                                                         DiagTestParams* parameters);
/// Releases a result list.
VX_UINT32 VEXAPI_FreeRWBufferTestResultList(_VEXAPI_ReadWriteBufferTestResult* list);
/// Pings a target by port name ("xx:xx:…"). `*output` is 0 and `buffer` (of `size`, 256) zeroed on entry.
VX_UINT32 VEXAPI_DiagnosticsFCPingTest(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count, VX_UINT32 stopOnError,
                                       VX_UINT32* output, void* buffer, VX_UINT32 size);
/// Sends `count` (1) Echo ELS frames. `destinationType` is 2 for a target, 3 for the fabric.
VX_UINT32 VEXAPI_DiagnosticsEchoElsTest(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count,
                                        VX_UINT32 stopOnError, VX_UINT32 destinationType, _VEXAPI_ECHO_RESULTS* result);
/// Sends CT pass-through commands. Arguments as for the ping, followed by the test type, 1 or 2.
VX_UINT32 VEXAPI_DiagnosticsCTCommand(VX_PORT_HANDLE* handle, const char* name, VX_UINT32 count, VX_UINT32 stopOnError,
                                      VX_UINT32* output, void* buffer, VX_UINT32 size, VX_UINT32 testType);
/// Not a status: non-zero if the port is in diagnostic mode.
VX_UINT32 VEXAPI_CheckAdapterDPortOption(VX_PORT_HANDLE* handle);
/// Switches diagnostic mode on (1) or off (0). `reserved` is 0.
VX_UINT32 VEXAPI_ConfigureAdapterDPortSettings(VX_PORT_HANDLE* handle, VX_UINT32 enable, VX_UINT32 reserved);
/// Runs the diagnostic port test, first form. Not a status: returns the record by value.
_VEXAPI_DiagnosticsDPortResult VEXAPI_DiagnosticDPortTest(VX_PORT_HANDLE* handle,
                                                          _VEXAPI_DiagnosticsDPortResult* result);
/// Runs the diagnostic port test, second form, and fills the record.
VX_UINT32 VEXAPI_DiagnosticDPortTestV2(VX_PORT_HANDLE* handle, _VEXAPI_DiagnosticsDPortResult* result);
/// Fetches the Read Diagnostic Parameters payload; `*size` is 508 on entry and the payload size on return.
VX_UINT32 VEXAPI_DiagnosticsRDPTest(VX_PORT_HANDLE* handle, void* buffer, VX_UINT32* size);

/* ---------------------------------------------------------------- Targets */

/// Reads the speed code of the link to a target.
VX_UINT32 VEXAPI_GetTargetLinkSpeed(VX_PORT_HANDLE* handle, VX_UINT16 targetNumber, VX_UINT32* speed);
/// Sets the speed code of the link to a target.
VX_UINT32 VEXAPI_SetTargetLinkSpeed(VX_PORT_HANDLE* handle, VX_UINT16 targetNumber, VX_UINT32 speed);
/// Fills the statistics of the selected remote port. `reserved` is 0.
VX_UINT32 VEXAPI_GetPortStatisticsFC(VX_UINT32 word, VX_UINT32 reserved, VX_PORT_SELECTOR* selector,
                                     __STATISTICS* statistics);

#ifdef __cplusplus
}
#endif
#undef VEXAPI_STATIC_ASSERT
#endif
