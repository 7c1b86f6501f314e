# The debug log

Without ORFC_DEBUG_LEVEL there is no log.

  $ . "$TESTDIR/setup.sh"
  $ host fec
  $ orfc-esxcli -t port -s fec getcli nosuch >/dev/null
  $ logs
  /var/tmp/vexapi-output.log

Its value is a mask of levels. 4 are the failures that a command reports. A program that was found through
the search path logs under the name of the plugin.

  $ export ORFC_DEBUG_LEVEL=4
  $ orfc-esxcli -t port -s fec getcli nosuch >/dev/null
  $ logs
  /var/tmp/vexapi-output.log
  /var/tmp/viplugin.log
  $ traces /var/tmp/viplugin.log
  TIME CIM Provider DEBUG       PID: PhysicalPortCmdsProcessor::GetPhyPortFromPortString: Invalid Port identifier nosuch\r (esc)
  TIME CIM Provider DEBUG       PID: PhysicalPortFECCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ rm /var/tmp/viplugin.log

A command that goes well says nothing at this level.

  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30 >/dev/null
  $ logs
  /var/tmp/vexapi-output.log

The failures of `list`, of the identifiers and of a file.

  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t adapter list
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port list
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s fec get FC >/dev/null
  $ orfc-esxcli -t port updatenvram FC_21:00:00:24:ff:10:20:30 nosuch.txt >/dev/null
  $ orfc-esxcli log nosuch/file >/dev/null
  $ messages /var/tmp/viplugin.log
  AdapterCmdsProcessor::CmdListCommon: List is NULL\r (esc)
  PhysicalPortCmdsProcessor::CmdListCommon: List is NULL\r (esc)
  PhysicalPortCmdsProcessor::GetPhyPortFromPortString: Adapter List is NULL\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayError: Failed, Host not found (result 14)\r (esc)
  PhysicalPortCmdsProcessor::CmdUpdateNvramCommon: NVRAM file [nosuch.txt] does not exist\r (esc)
  PhysicalPortCmdsProcessor::DisplayUpdateNvram: Failed, File not found (result 19)\r (esc)
  open() nosuch/file failed 2 (No such file or directory)
  \r (esc)

The failures of `fec`. A trace names the command's common function, whichever helper takes the step.

  $ fec() { orfc-esxcli -t port -s fec "$@" >/dev/null; messages /var/tmp/viplugin.log; }
  $ port=FC_21:00:00:24:ff:10:20:30
  $ fec get FC_21:00:00:24:ff:10:20:70
  PhysicalPortFECCmdsProcessor::CmdGetCommon: Command not supported for this adapter\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayError: Failed, feature not supported (result 35)\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_FCGetFECSupportInfo=5 fec get $port
  PhysicalPortFECCmdsProcessor::CmdGetCommon: Get FEC Info failed err=5\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayError: Failed, FEC read failed (result 13)\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsMezzAdapter=0xFFFFFFFF fec get $port
  PhysicalPortFECCmdsProcessor::CmdGetCommon: Mezz adapter check failed err=-1\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayError: Failed, FEC read failed (result 13)\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetFWPrivateStats=7 fec get $port
  PhysicalPortFECCmdsProcessor::CmdGetCommon: Get FW Private stats failed err=7\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayError: Failed, FEC read failed (result 13)\r (esc)
  $ fec set FC_21:00:00:24:ff:10:20:31 -f true
  PhysicalPortFECCmdsProcessor::CmdSetCommon: Modification of fec-status is supported at 16Gbps and Unknown speed for non-mezz adapters only\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayError: Failed, Read-Only parameter for non 16Gbps or Unknown speed or mezz adapter (result 47)\r (esc)
  $ fec set $port -f on
  PhysicalPortFECCmdsProcessor::CmdSetCommon: fec-status=on not supported\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ fec set $port -r all
  PhysicalPortFECCmdsProcessor::CmdSetCommon: reset=all not supported\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_FCSetFECSupportInfo=8 fec set $port -f true
  PhysicalPortFECCmdsProcessor::CmdSetCommon: Update FEC failed err=8\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayError: Failed, FEC update failed (result 20)\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_ResetFECCounters=9 fec set $port -r reset
  PhysicalPortFECCmdsProcessor::CmdSetCommon: Reset FEC counters failed err=9\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayError: Failed, FEC update failed (result 20)\r (esc)

So do the families that share helpers, and a helper of theirs that has a name of its own is named itself.

  $ run() { orfc-esxcli -t port -s "$@" >/dev/null; messages /var/tmp/viplugin.log; }
  $ host diagnostics
  $ run loopback run FC_21:00:00:24:ff:70:00:01 0 1 8 Ignore Internal Random
  PhysicalPortLoopbackCmdsProcessor::CmdRunCommon: Invalid test count\r (esc)
  PhysicalPortLoopbackCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ run loopback run FC_21:00:00:24:ff:70:00:01 1 1 8 Ignore Internal_10bit Random
  PhysicalPortLoopbackCmdsProcessor::CmdRunCommon: Option not supported for this adapter\r (esc)
  PhysicalPortLoopbackCmdsProcessor::DisplayError: Failed, Loopback type not supported for this adapter (result 4)\r (esc)
  $ run dportdiag set FC_21:01:00:24:ff:70:00:01 true
  PhysicalPortDPortDiagCmdsProcessor::CmdSetCommon: Command not supported for vport\r (esc)
  PhysicalPortDPortDiagCmdsProcessor::DisplayDPortDiagInfo: Failed, Feature not supported for virtual port (result 51)\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsMezzAdapter=5 run dportdiag set FC_21:00:00:24:ff:70:00:01 true
  PhysicalPortDPortDiagCmdsProcessor::CmdSetCommon: Mezz adapter check failed err=5\r (esc)
  PhysicalPortDPortDiagCmdsProcessor::DisplayDPortDiagInfo: Failed, DPortDiag read failed (result 13)\r (esc)
  $ run bbcr set FC_21:00:00:24:ff:70:00:01
  FileOps::IsFilePresent: File not present\r (esc)
  PhysicalPortBBCRCmdsProcessor::CmdSetCommon: /tmp/BBCR_FC_21:00:00:24:ff:70:00:01 file not present\r (esc)
  PhysicalPortBBCRCmdsProcessor::DisplayError: Failed, Unknown (result 0)\r (esc)
  $ run bbcr setFile FC_21:00:00:24:ff:70:00:01 -c 16
  FileOps::IsFilePresent: File not present\r (esc)
  FileOps::UpdateKeyValueInFile: File open failed in read mode, creating it\r (esc)
  PhysicalPortBBCRCmdsProcessor::UpdateBBCRInFile: bbcr-count=16 not supported\r (esc)
  PhysicalPortBBCRCmdsProcessor::CmdSetFileCommon: UpdateBBCRInFile failed with uRet=6\r (esc)
  PhysicalPortBBCRCmdsProcessor::DisplayError: Failed, Invalid parameter (result 6)\r (esc)
  $ rm /tmp/BBCR_*; host fec
1 is information: the entry and the exit of the functions, every field that is shown, and the run's code.

  $ export ORFC_DEBUG_LEVEL=1
  $ orfc-esxcli -t port -s fec getcli $port >/dev/null
  $ grep -vc 'CIM Provider INFORMATION [0-9]*: ' /var/tmp/viplugin.log
  1
  $ messages /var/tmp/viplugin.log | grep -a 'FECCmdsProcessor::\(Cmd\|Display\)\|GetPhyPort\|^main'
  PhysicalPortFECCmdsProcessor::CmdGetCli: Entered\r (esc)
  PhysicalPortFECCmdsProcessor::CmdGetCommon: Entered\r (esc)
  PhysicalPortCmdsProcessor::GetPhyPortFromPortString: Entered\r (esc)
  PhysicalPortCmdsProcessor::GetPhyPortFromPortString: Adapter Count=6\r (esc)
  PhysicalPortCmdsProcessor::GetPhyPortFromPortString: Phy Port Count=2\r (esc)
  PhysicalPortCmdsProcessor::GetPhyPortFromPortString: Protocol Count=2\r (esc)
  PhysicalPortCmdsProcessor::GetPhyPortFromPortString: Exiting\r (esc)
  PhysicalPortFECCmdsProcessor::CmdGetCommon: VEXAPI_FCGetFECSupportInfo=0\r (esc)
  PhysicalPortFECCmdsProcessor::CmdGetCommon: VEXAPI_IsMezzAdapter=0\r (esc)
  PhysicalPortFECCmdsProcessor::CmdGetCommon: VEXAPI_GetFWPrivateStats=0\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayFECInfo: Entered\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayFECInfo: Message=Success\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayFECInfo: FEC_Status=true\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayFECInfo: Correctable FEC errors=1200\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayFECInfo: Uncorrectable FEC errors=7\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayFECInfo: Exiting\r (esc)
  PhysicalPortFECCmdsProcessor::CmdGetCommon: Exiting\r (esc)
  main: Program Exit Code: (0)

The making and the end of a family too, by the pretty name of the function.

  $ orfc-esxcli -t port -s fec getcli $port >/dev/null
  $ messages /var/tmp/viplugin.log | grep -aE '^[A-Z]+ .*(FEC|Main)Cmds'
  STARTING MainCmdsProcessor::MainCmdsProcessor(MultipleCmdsProcessor*, const char*, const char*, const char*, VX_UINT32, VX_UINT32)\r (esc)
  RETURNING MainCmdsProcessor::MainCmdsProcessor(MultipleCmdsProcessor*, const char*, const char*, const char*, VX_UINT32, VX_UINT32)\r (esc)
  STARTING PhysicalPortFECCmdsProcessor::PhysicalPortFECCmdsProcessor(MultipleCmdsProcessor*, const char*, const char*, const char*, VX_UINT32, VX_UINT32)\r (esc)
  RETURNING PhysicalPortFECCmdsProcessor::PhysicalPortFECCmdsProcessor(MultipleCmdsProcessor*, const char*, const char*, const char*, VX_UINT32, VX_UINT32)\r (esc)
  STARTING virtual PhysicalPortFECCmdsProcessor::~PhysicalPortFECCmdsProcessor()\r (esc)
  RETURNING virtual PhysicalPortFECCmdsProcessor::~PhysicalPortFECCmdsProcessor()\r (esc)
  STARTING virtual MainCmdsProcessor::~MainCmdsProcessor()\r (esc)
  RETURNING virtual MainCmdsProcessor::~MainCmdsProcessor()\r (esc)

A log that can't be opened for a call of the library is information too.

  $ for call in 2 3 4 5 6; do
  >     refuse_log $call orfc-esxcli -t port -s fec set $port -f true -r reset >/dev/null
  >     messages /var/tmp/viplugin.log | grep 'Failed to open'
  > done
  PhysicalPortFECCmdsProcessor::CmdSetCommon: Failed to open /var/tmp/vexapi-output.log file before FEC read\r (esc)
  PhysicalPortFECCmdsProcessor::CmdSetCommon: Failed to open /var/tmp/vexapi-output.log file before FW Priv Stats read\r (esc)
  PhysicalPortFECCmdsProcessor::CmdSetCommon: Failed to open /var/tmp/vexapi-output.log file before Mezz adapter check\r (esc)
  PhysicalPortFECCmdsProcessor::CmdSetCommon: Failed to open /var/tmp/vexapi-output.log file before FEC set\r (esc)
  PhysicalPortFECCmdsProcessor::CmdSetCommon: Failed to open /var/tmp/vexapi-output.log file before FEC counter reset\r (esc)

Other families don't tell what it was for.

  $ host diagnostics
  $ for family in beacon bbcr dportdiag hbaparams rdp; do
  >     refuse_log 2 orfc-esxcli -t port -s $family get FC_21:00:00:24:ff:70:00:01 >/dev/null
  >     messages /var/tmp/viplugin.log | grep 'Failed to open'
  > done
  PhysicalPortBeaconCmdsProcessor::CmdGetCommon: Failed to open /var/tmp/vexapi-output.log file\r (esc)
  PhysicalPortBBCRCmdsProcessor::CmdGetCommon: Failed to open /var/tmp/vexapi-output.log file\r (esc)
  PhysicalPortDPortDiagCmdsProcessor::CmdGetCommon: Failed to open /var/tmp/vexapi-output.log file\r (esc)
  PhysicalPortHBAParamsCmdsProcessor::CmdGetCommon: Failed to open /var/tmp/vexapi-output.log file\r (esc)
  PhysicalPortRDPCmdsProcessor::CmdGetCommon: Failed to open /var/tmp/vexapi-output.log file\r (esc)
  $ host fec

5 is both, and so is every mask with these bits.

  $ for level in 5 65535 -1 4 1 2 0 nonsense; do
  >     ORFC_DEBUG_LEVEL=$level orfc-esxcli -t port -s fec get nosuch >/dev/null
  >     echo $level $(grep -aoE 'INFORMATION|DEBUG' /var/tmp/viplugin.log 2>/dev/null | sort -u)
  >     rm -f /var/tmp/viplugin.log
  > done
  5 DEBUG INFORMATION
  65535 DEBUG INFORMATION
  -1 DEBUG INFORMATION
  4 DEBUG
  1 INFORMATION
  2
  0
  nonsense

The log is named after the program's file, up to a ".so" in its name.

  $ export LD_LIBRARY_PATH=$BUILD
  $ forget_logs; cp $BUILD/orfc-esxcli tool; ./tool nosuch >/dev/null; logs
  /var/tmp/tool.log
  /var/tmp/vexapi-output.log
  $ forget_logs; mv tool tool.so.1; ./tool.so.1 nosuch >/dev/null; logs
  /var/tmp/tool.log
  /var/tmp/vexapi-output.log
  $ forget_logs; $BUILD/orfc-esxcli nosuch >/dev/null; logs
  /var/tmp/orfc-esxcli.log
  /var/tmp/vexapi-output.log

Lines are appended to an existing log. A trace is truncated to 1024 characters.

  $ forget_logs; echo before >/var/tmp/viplugin.log
  $ export ORFC_DEBUG_LEVEL=4
  $ orfc-esxcli -t port -s fec get $(printf '%05000d' 0) >/dev/null
  $ head -1 /var/tmp/viplugin.log | sed 's/^[0-9/]* [0-9:.]* //' | wc -lc
        1       7

A debug log that can't be written disturbs nothing.

  $ forget_logs; mkdir /var/tmp/viplugin.log
  $ ORFC_DEBUG_LEVEL=1 orfc-esxcli -t port -s fec getcli $port
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ rmdir /var/tmp/viplugin.log
  $ unset VEXAPI_SIM_JOURNAL; ORFC_DEBUG_LEVEL=65535 full orfc-esxcli -t port -s fec getcli $port
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
