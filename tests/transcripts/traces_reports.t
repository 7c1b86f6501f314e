# What adapters, ports and targets leave in the debug log when a command fails

  $ . "$TESTDIR/setup.sh"
  $ export ORFC_DEBUG_LEVEL=4
  $ failed() { orfc-esxcli "$@" >/dev/null; messages /var/tmp/viplugin.log; }
  $ fault() { VEXAPI_SIM_FAULTS=$1 failed "${@:2}"; }

Adapters. The first trace has the name of another class.

  $ export VEXAPI_SIM_HOST= larch=Adapter_ORV2742_RFH1836M74420 rowan=Adapter_ORV8362_RFE1506P30951
  $ failed -t adapter -s info get nosuch
  AdapterDefaultCfgCmdsProcessor::GetPhyPortFromAdapterString: Invalid Adapter identifier nosuch\r (esc)
  AdapterInfoCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ fault VEXAPI_GetAdapterList=null -t adapter -s info get $larch
  AdapterCmdsProcessor::GetPhyPortFromAdapterString: Adapter List is NULL\r (esc)
  AdapterInfoCmdsProcessor::DisplayError: Failed, Host not found (result 14)\r (esc)
  $ failed -t adapter -s flashinfo get $rowan
  AdapterFlashInfoCmdsProcessor::CmdGetCommon: Command not supported for this adapter\r (esc)
  AdapterFlashInfoCmdsProcessor::DisplayError: Failed, feature not supported for this adapter (result 35)\r (esc)
  $ failed -t adapter -s personality set $larch CNA
  AdapterPersonalityCmdsProcessor::CmdSetCommon: feature not supported for this adapter\r (esc)
  AdapterPersonalityCmdsProcessor::DisplayError: Failed, Not supported for this adapter (result 35)\r (esc)
  $ fault VEXAPI_CheckRowanPersonalityChangeOption=2 -t adapter -s personality set $rowan CNA
  AdapterPersonalityCmdsProcessor::CmdSetCommon: personality change by user not supported\r (esc)
  AdapterPersonalityCmdsProcessor::DisplayError: Failed, Personality change not allowed for user (result 24)\r (esc)
  $ failed -t adapter update $larch image
  AdapterCmdsProcessor::CmdUpdateCommon: Invalid number of arguments\r (esc)
  AdapterCmdsProcessor::DisplayUpdateInfo: Failed, Invalid Number of parameters (result 4)\r (esc)
  $ failed -t adapter update $larch nosuch.bin MBI
  AdapterCmdsProcessor::CmdUpdateCommon: Firmware file [nosuch.bin] does not exist\r (esc)
  AdapterCmdsProcessor::DisplayUpdateInfo: Failed, Flash File not found (result 19)\r (esc)
  $ fault VEXAPI_doOptionROMUpdate=0xFFFFFFFE -t adapter update $larch /dev/null mbi
  AdapterCmdsProcessor::CmdUpdateCommon: Update operation failed. uReturnCode=-2\r (esc)
  AdapterCmdsProcessor::DisplayUpdateInfo: Failed, Flash Update Error (result 11)\r (esc)

The counters of ports.

  $ port=FC_21:00:00:24:ff:7e:2d:94
  $ failed -t port -s stats get $port both
  PhysicalPortFCStatsCmdsProcessor::CmdGetCommon: Invalid mode=both\r (esc)
  PhysicalPortFCStatsCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ failed -t port -s stats reset $port Driver
  PhysicalPortFCStatsCmdsProcessor::CmdResetCommon: Invalid mode=Driver\r (esc)
  PhysicalPortFCStatsCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)

Congestion at ports.

  $ host congestion
  $ p=FC_21:00:00:24:ff:60:20:
  $ stats() { failed -t port -s scmstats "$@"; }
  $ stats get FC_x
  PhysicalPortSCMStatsCmdsProcessor::CmdGetCommon: Get phy port failed err=6\r (esc)
  PhysicalPortSCMStatsCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ stats get ${p}70
  PhysicalPortSCMStatsCmdsProcessor::CmdGetCommon: SCM feature not supported for this adapter.\r (esc)
  PhysicalPortSCMStatsCmdsProcessor::DisplayError: Failed, Feature not supported for this adapter (result 35)\r (esc)
  $ stats get ${p}71
  PhysicalPortSCMStatsCmdsProcessor::CmdGetCommon: Driver/Firmware does not support SCM.\r (esc)
  PhysicalPortSCMStatsCmdsProcessor::DisplayError: Failed, Driver/Firmware does not support this feature (result 45)\r (esc)
  $ stats clear ${p}10
  PhysicalPortSCMStatsCmdsProcessor::CmdClearCommon: Driver/Firmware does not support SCM.\r (esc)
  PhysicalPortSCMStatsCmdsProcessor::DisplayClear: Failed, Driver/Firmware does not support this feature (result 45)\r (esc)
  $ stats get ${p}72
  PhysicalPortSCMStatsCmdsProcessor::CmdGetCommon: Command not supported for vport\r (esc)
  PhysicalPortSCMStatsCmdsProcessor::DisplayError: Failed, feature not supported for virtual port (result 51)\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsFWCMFeatureEnabled=5 stats get ${p}10
  PhysicalPortSCMStatsCmdsProcessor::CmdGetCommon: Get FWCM feature failed err=5\r (esc)
  PhysicalPortSCMStatsCmdsProcessor::DisplayError: Failed, FWCM settings read error (result 13)\r (esc)
  $ failed -t port -s scmchk get ${p}41
  PhysicalPortSCMChkCmdsProcessor::CmdGetCommon: FWCM feature is disabled\r (esc)
  PhysicalPortSCMChkCmdsProcessor::DisplayError: Failed, Feature disabled on the port (result 52)\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetSCMRStatisticsList=9 stats get ${p}20
  PhysicalPortSCMStatsCmdsProcessor::CmdGetCommon: Get SCMR Statistics failed err=9\r (esc)
  PhysicalPortSCMStatsCmdsProcessor::DisplayError: Failed, Statistics read error (result 38)\r (esc)
  $ stats get ${p}50
  PhysicalPortSCMStatsCmdsProcessor::DisplayPortSCMStatsV2: No matching physical port found in SCM V2 stats\r (esc)
  $ stats clear ${p}74
  PhysicalPortSCMStatsCmdsProcessor::CmdClearCommon: Get SCM Reset Statistics failed err=118\r (esc)
  PhysicalPortSCMStatsCmdsProcessor::DisplayClear: Failed, Driver/Firmware does not support this feature (result 45)\r (esc)

The profile, whose options and levels are traced too.

  $ profile() { failed -t port -s scmprofile "$@"; }
  $ fault VEXAPI_GetSCMRProfile=5 -t port -s scmprofile get ${p}40
  PhysicalPortSCMProfileCmdsProcessor::CmdGetCommon: Get SCMR Profile failed err=5\r (esc)
  PhysicalPortSCMProfileCmdsProcessor::DisplayError: Failed, NVRAM read failed (result 13)\r (esc)
  $ profile set ${p}40 -r all
  PhysicalPortSCMProfileCmdsProcessor::CmdSetCommon: restore=all not supported\r (esc)
  PhysicalPortSCMProfileCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ profile set ${p}40 -a High
  PhysicalPortSCMProfileCmdsProcessor::CmdSetCommon: activation=High not supported\r (esc)
  PhysicalPortSCMProfileCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ profile set ${p}40 -a Moderate -r Driver_Settings
  PhysicalPortSCMProfileCmdsProcessor::CmdSetCommon: Mutually exclusive parameters\r (esc)
  PhysicalPortSCMProfileCmdsProcessor::DisplayError: Failed, Restore and Activation command-line options are mutually exclusive (result 37)\r (esc)
  $ fault VEXAPI_SetSCMRProfile=6 -t port -s scmprofile set ${p}40
  PhysicalPortSCMProfileCmdsProcessor::CmdSetCommon: Update SCMR Profile failed err=6\r (esc)
  PhysicalPortSCMProfileCmdsProcessor::DisplayError: Failed, NVRAM update failed (result 20)\r (esc)
  $ fault VEXAPI_GetSCMRProfile@2=7 -t port -s scmprofile set ${p}40
  PhysicalPortSCMProfileCmdsProcessor::CmdSetCommon: Get SCMR Profile failed after set err=7\r (esc)
  PhysicalPortSCMProfileCmdsProcessor::DisplayError: Failed, NVRAM read failed (result 13)\r (esc)
  $ ORFC_DEBUG_LEVEL=1 refuse_log 3 orfc-esxcli -t port -s scmprofile set ${p}40 -a defensive >/dev/null
  $ messages /var/tmp/viplugin.log | grep -a -e 'Failed to' -e Congestion_
  PhysicalPortSCMProfileCmdsProcessor::CmdSetCommon: Congestion_Profile_ControlFlag=1\r (esc)
  PhysicalPortSCMProfileCmdsProcessor::CmdSetCommon: Congestion_Profile_Profile=4\r (esc)
  PhysicalPortSCMProfileCmdsProcessor::CmdSetCommon: Failed to open /var/tmp/vexapi-output.log file before set\r (esc)

Targets and LUNs.

  $ t=_Target_50:06:0e:80:12:4a:7c:10
  $ failed -t target -v info get FX_1
  FCTargetCmdsProcessor::GetTargetFromTargetString: Invalid Port identifier FX_1\r (esc)
  FCTargetInfoCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ failed -t target -v info get ${p}10
  FCTargetCmdsProcessor::GetTargetFromTargetString: Invalid Tgt identifier FC_21:00:00:24:ff:60:20:10\r (esc)
  FCTargetInfoCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ failed -t lun -v info get ${p}10$t
  FCLunCmdsProcessor::GetLunFromLunString: Invalid LUN/NSID identifier FC_21:00:00:24:ff:60:20:10_Target_50:06:0e:80:12:4a:7c:10\r (esc)
  FCLunInfoCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ fault VEXAPI_GetAdapterList=null -t target -v info get ${p}10$t
  FCTargetCmdsProcessor::GetTargetFromTargetString: Adapter List is NULL\r (esc)
  FCTargetInfoCmdsProcessor::DisplayError: Failed, Host not found (result 14)\r (esc)
  $ failed -t target -v scmstats get ${p}99$t
  FCTargetSCMStatsCmdsProcessor::CmdGetCommon: Get target failed err=6\r (esc)
  FCTargetSCMStatsCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ failed -t target -v scmstats get ${p}53$t
  FCTargetSCMStatsCmdsProcessor::DisplayTargetSCMStatsV2: No matching target found in SCM V2 stats\r (esc)
  $ fault VEXAPI_GetPortStatisticsFC=3 -t target -v scmstats get ${p}10$t
  FCTargetSCMStatsCmdsProcessor::CmdGetCommon: Get Port Stats FC failed err=3\r (esc)
  FCTargetSCMStatsCmdsProcessor::DisplayError: Failed, Statistics read error (result 38)\r (esc)
  $ fault VEXAPI_GetPortStatisticsFC=4 -t target -v stats get ${p}10$t
  FCTargetStatsCmdsProcessor::CmdGetCommon: Get Port Stats FC failed err=4\r (esc)
  FCTargetStatsCmdsProcessor::DisplayError: Failed, Statistics read error (result 38)\r (esc)

The speed of a target. A change that fails is traced as a read that failed.

  $ host targets
  $ target=FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10
  $ fault VEXAPI_GetTargetLinkSpeed=5 -t target -v iidma get $target
  FCTargetIIDMACmdsProcessor::CmdGetCommon: Get Link Speed failed err=5\r (esc)
  FCTargetIIDMACmdsProcessor::DisplayError: Failed, IIDMA read failed (result 13)\r (esc)
  $ fault VEXAPI_SetTargetLinkSpeed=6 -t target -v iidma set $target 16_Gbps
  FCTargetIIDMACmdsProcessor::CmdSetCommon: Get Link Speed failed err=6\r (esc)
  FCTargetIIDMACmdsProcessor::DisplayError: Failed, IIDMA set failed (result 20)\r (esc)
  $ failed -t target -v iidma set $target 10_Gbps
  FCTargetIIDMACmdsProcessor::CmdSetCommon: speed not supported for this adapter\r (esc)
  FCTargetIIDMACmdsProcessor::DisplayError: Failed, Speed not supported for this adapter (result 44)\r (esc)
  $ failed -t target -v iidma set FC_20:00:00:24:ff:cc:00:02_Target_50:06:0e:80:12:4a:7c:10 8_Gbps
  FCTargetIIDMACmdsProcessor::CmdSetCommon: Command not supported for this adapter\r (esc)
  FCTargetIIDMACmdsProcessor::DisplayError: Failed, Read-Only feature for this adapter (result 8)\r (esc)
