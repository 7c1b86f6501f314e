#include "description/Records.h"

/// A table per record, a row per field. Pointers, handles and reserved bytes have no row, except reserved bytes that
/// callers write back.
#define SIM_RECORD(record, ...)                                                                                        \
    template <> Table FieldsOf<record>() {                                                                             \
        using R = record;                                                                                              \
        static constexpr Field rows[] = {__VA_ARGS__};                                                                 \
        return rows;                                                                                                   \
    }
#define F(member) SIM_FIELD(R, member)

namespace sim {

SIM_RECORD(__CHIPPROPERTY, F(VendorId), F(DeviceId), F(SubVendorId), F(SubDeviceId), F(PciMaxLink),
           F(PciNegotiatedLink))

SIM_RECORD(_vexapi_adapter_t, F(SerialNumber), F(AdapterType), F(Manufacturer), F(VendorId), F(SubVendorId),
           F(SubDeviceId), F(PciBusNumber), F(Model), F(BiosVersion), F(FCodeVersion), F(EfiVersion), F(FlashFwVersion),
           F(MultibootVersion), F(ChipRevision))

SIM_RECORD(_vexapi_phy_port_t, F(PortNumber))

SIM_RECORD(_vexapi_protocol_t, F(WWNN), F(WWPN), F(ChipProperty), F(DriverVersion), F(FeatureFlags),
           F(DriverFeatureFlags), F(RunningFwVersion), F(BiosVersion), F(PortInterfaceType), F(OptionRomMask),
           F(FlashFwVersion), F(FlashEfiVersion), F(FlashFCodeVersion), F(RunningMpiFwVersion), F(RunningPepFwVersion),
           F(PortId), F(PortType), F(PortState), F(PortConnectionMode), F(PortSpeed), F(SupportedSpeeds),
           F(PrincipalFabricWWN), F(AdjacentFabricWWN), F(ControllerErrorCount), F(DeviceErrorCount), F(IoCount),
           F(MegaBytesCount), F(LipResetCount), F(InterruptCount), F(LinkFailureCount), F(LossOfSyncCount),
           F(LossOfSignalCount), F(PrimitiveSeqProtocolErrorCount), F(InvalidTxWordCount), F(InvalidCrcCount),
           F(ScmEventFlags), F(ScmLinkEventType), F(ScmLinkEventThreshold), F(ScmDeliveryReason), F(ScmCongEventType),
           F(ScmCongEventPeriod), F(ScmCongSeverity), F(ScmLinkCounters), F(ScmAlarmCount), F(ScmWarningCount),
           F(ScmFabricFlags), F(ScmCongState), F(ScmVirtualLaneState), F(ScmSecondsSinceLastEvent),
           F(ScmLinkIntegrityEvents), F(ScmDeliveryEvents), F(ScmThrottleState), F(SecurityFlags), F(TargetCount),
           F(HostId), F(HostNQN), F(PciBusNumber), F(PciDeviceNumber), F(PciFunctionNumber), F(ProtocolType))

SIM_RECORD(_tagVEXAPI_SDMTarget, F(NodeName), F(PortName), F(PortId), F(TargetNumber), F(ScmEventFlags),
           F(ScmLinkEventType), F(ScmLinkEventThreshold), F(ScmDeliveryReason), F(ScmPeerCongEventType),
           F(ScmPeerCongEventPeriod), F(ScmCongState), F(ScmLinkIntegrityEvents), F(ScmVirtualLane),
           F(ScmThrottleState), F(ScmSecondsSinceLastEvent), As(Kind::TEXT, F(VendorId)), As(Kind::TEXT, F(ProductId)),
           As(Kind::TEXT, F(ProductRevision)), F(TargetFlags), F(LunCount), F(DeviceType),
           As(Kind::TEXT, F(SerialNumber)), F(AuthPortId), F(AuthPortName), F(AuthRole), F(AuthStatus), F(AuthState),
           F(SecPortId), F(SecFlags), F(SecPortName), F(SecSessionState), As(Kind::TEXT, F(NvmeRevision)),
           F(StorageControllerId), F(StorageNqn))

SIM_RECORD(_tagVEXAPI_SDMLun, F(LunNumber), As(Kind::TEXT, F(VendorId)), As(Kind::TEXT, F(ProductId)),
           As(Kind::TEXT, F(ProductRevision)), As(Kind::OCTETS_UP_TO, F(WorldwideId)), F(WorldwideIdLength),
           F(BlockCount), F(BlockSize), F(LunFlags), As(Kind::TEXT, F(NamespaceRevision)))

SIM_RECORD(VX_FLASH_COMPONENT, F(Major), F(Minor), F(Sub))

SIM_RECORD(_VEXAPI_FlashComponentVersion, F(PepFirmware), F(PepSoftRom), F(PepBoardConfig), F(PreloadFwArea),
           F(FcBoardConfig), F(MpiFirmware), F(MpiSoftRom), F(PcieSerdes))

SIM_RECORD(VX_SFlashMemoBlock, F(Signature), F(FamilyFw), F(Mbi), F(MbiBuildDate), F(ToolId), F(Year), F(Month), F(Day),
           F(Hour), F(Minute), F(Second), F(ToolVersion))

SIM_RECORD(VEXAPI_LOCKDOWNINFO, F(ConfigLockdown), F(FirmwareLockdown), F(MpiLockdown), F(ConfigStatus),
           F(FirmwareStatus), F(MpiStatus))

SIM_RECORD(_VEXAPI_HBAParameters, F(DataRate), F(ConnetionOptions), F(EnableFibreChannelTapeSupport),
           F(MaxLunsPerTarget), F(EnableHardLoopId), F(HardLoopId), F(FrameSize), F(EnableLipFullLogin),
           F(EnableTargetReset), F(LoopResetDelay), F(LoginRetryCount), F(PortDownRetryCount), F(ExecutionThrottle),
           F(OperationMode), F(InterruptDelayTimer), F(LinkDownTimeout), F(DisableBIOS), F(EnableSelectableBoot),
           F(BootPortName), F(BootLunNumber), F(EnableSelectiveLogin), F(EnableSelectiveLUN), F(ForceWorldLogin),
           F(Alt1BootPortName), F(Alt1BootLunNumber), F(Alt2BootPortName), F(Alt2BootLunNumber), F(Alt3BootPortName),
           F(Alt3BootLunNumber), F(RecvOutOfOrderDataBit), F(EnableLRBit), F(EnableFabricAssignWWN),
           F(EnableFabricAssignBootLun), F(DisableSCM), F(NVMeEnable), F(Alt4BootPortName), F(Alt4BootLunNumber),
           F(Alt5BootPortName), F(Alt5BootLunNumber), F(Alt6BootPortName), F(Alt6BootLunNumber), F(Alt7BootPortName),
           F(Alt7BootLunNumber), F(EnableVirtualLane), F(Reserved))

SIM_RECORD(VX_NVME_BOOT_ENTRY, F(Reserved), F(TargetWWPN), F(TargetWWNN), F(TargetNSID), F(TargetCtrlID),
           F(TargetFlags), F(TargetNQN))

SIM_RECORD(_VEXAPI_FcNVMeBootParams, F(BootEntry), F(HostNQN), F(HostId))

SIM_RECORD(CreditInfo, F(Status), F(Configured), F(State), F(Negotiated), F(Reason))

SIM_RECORD(_VEXAPI_FWPRIVATESTATSEntry, F(CorrectableFecErrors), F(UncorrectableFecErrors))

SIM_RECORD(_VEXAPI_SANCONGTMGMTV2, F(WWNN), F(WWPN), F(EntryType), F(AlarmCount), F(WarningCount),
           F(ClearedCongestionCount), F(ThrottledDownCount), F(ThrottledUpCount), F(ReturnedBusyCount),
           F(BottomedOutCount), F(LinkFailureCount), F(LinkUnknownEventCount), F(LossOfSyncCount), F(LossOfSignalCount),
           F(PrimSeqProtoErrCount), F(InvalidTxWordCount), F(InvalidCrcCount), F(LinkDevSpecCount),
           F(DeliveryFailureCount), F(DeliveryTimeoutCount), F(DeliveryUnableToRouteCount), F(DeliveryDevSpecCount),
           F(CongClearCount), F(CongLostCreditCount), F(CongCreditStallCount), F(CongOversubscriptionCount),
           F(CongDevSpecCount), F(PunCount), F(LinkUncorFecCount))

SIM_RECORD(_VEXAPI_SCMRProfile, F(Disabled), F(ControlFlag), F(Profile), F(Reserved))

SIM_RECORD(__STATISTICS, F(LinkFailureCount), F(LossOfSyncCount), F(LossOfSignalCount), F(PrimSeqProtoErrCount),
           F(InvalidTxWordCount), F(InvalidCrcCount), F(DeliveryFailureCount), F(DeliveryTimeoutCount),
           F(DeliveryUnableToRouteCount), F(DeliveryDevSpecCount), F(PeerCongClearCount), F(PeerCongLostCreditCount),
           F(PeerCongCreditStallCount), F(PeerCongOversubscriptionCount), F(PeerCongDevSpecCount),
           F(LinkUnknownEventCount), F(LinkDevSpecCount))

SIM_RECORD(VX_PORT_SELECTOR, F(SelectorType), F(PortName))

SIM_RECORD(DiagTestParams, F(TestCount), F(OnError), F(TestCountCopy), F(DataPatternType), F(LoopbackType), F(DataSize),
           As(Kind::TEXT, F(CustomData)), F(ConnectionMode))

SIM_RECORD(_VEXAPI_LoopbackTestResult, F(TestStatus), F(CrcError), F(DisparityError), F(FrameLengthError))

SIM_RECORD(_VEXAPI_ReadWriteBufferTestResult, F(TestStatus), F(PortId), F(DataMiscompare), F(LinkFailure),
           F(LossOfSync), F(LossOfSignal), F(InvalidCrc))

SIM_RECORD(_VEXAPI_ECHO_RESULTS, F(FrameSent), F(FrameReceived), F(ResponseLength), F(EchoFailed), F(EchoStatus),
           F(ResponseTime))

SIM_RECORD(_VEXAPI_DiagnosticsDPortResult, As(Kind::NETWORK_ORDER, F(RoundtripLinkLatency)),
           As(Kind::NETWORK_ORDER, F(CableLinkDistance)), F(HbaPortValue), F(HbaPortStatus), F(ElecLbValue),
           F(ElecLbStatus), F(OptLbValue), F(OptLbStatus), F(LinkTrafficValue), F(LinkTrafficStatus), F(StartTime),
           F(StopTime), F(Mbx1), F(Mbx2), As(Kind::NETWORK_ORDER, F(RemoteRxPower)),
           As(Kind::NETWORK_ORDER, F(RemoteTxPower)), As(Kind::NETWORK_ORDER, F(LocalRxPower)),
           As(Kind::NETWORK_ORDER, F(LocalTxPower)))

SIM_RECORD(VEXAPI_EXT_SCOPE, F(Parts), F(PortName), F(TargetName), F(HasLunNumber), F(LunNumber))

SIM_RECORD(VEXAPI_EXT_PORT, F(DeviceLossTimeout), Ended(F(KernelName)), Ended(F(Device)), Ended(F(Driver)),
           Ended(F(State)), Ended(F(Speed)), Ended(F(SymbolicName)))

SIM_RECORD(VEXAPI_EXT_TARGET, F(DeviceLossTimeout), F(FastFailTimeout), Ended(F(KernelName)), Ended(F(State)),
           Ended(F(Roles)))

SIM_RECORD(VEXAPI_EXT_LUN, Ended(F(Address)), Ended(F(Device)), Ended(F(State)), Ended(F(AccessState)),
           Ended(F(WorldwideId)), Ended(F(Map)), Ended(F(MapDevice)), Ended(F(MapId)), Ended(F(MapState)),
           Ended(F(MapPathState)))

SIM_RECORD(PortAnswers, F(FlashComponents), F(MemoBlock), F(Temperature), F(Lockdown), F(Mezzanine), F(Beacon),
           F(Personality), F(PersonalityChangeAllowed), F(NvramDefaults), F(Nvram), F(NvmeBoot), F(CreditRecovery),
           F(Fec), F(CongestionFeature), F(CongestionProfile), F(DPortMode), F(DPortResult), F(VpdSize), F(RdpSize),
           F(RebootAfterChange), F(RebootPending), F(FlashPending), F(Kernel))

} // namespace sim
