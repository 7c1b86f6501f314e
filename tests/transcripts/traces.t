# The debug log

Without ORFC_DEBUG_LEVEL there is none.

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
  $ rm /var/tmp/viplugin.log

A command that goes well says nothing at this level.

  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30 >/dev/null
  $ logs
  /var/tmp/vexapi-output.log

The failures of `list` and of the identifiers. Who traces the file is not told here.

  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t adapter list
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port list
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s fec get FC >/dev/null
  $ orfc-esxcli -t port updatenvram FC_21:00:00:24:ff:10:20:30 nosuch.txt >/dev/null
  $ orfc-esxcli log nosuch/file >/dev/null
  $ messages /var/tmp/viplugin.log | sed 's/::[A-Za-z]*: NVRAM/::*: NVRAM/'
  AdapterCmdsProcessor::CmdListCommon: List is NULL\r (esc)
  PhysicalPortCmdsProcessor::CmdListCommon: List is NULL\r (esc)
  PhysicalPortCmdsProcessor::GetPhyPortFromPortString: Adapter List is NULL\r (esc)
  PhysicalPortCmdsProcessor::*: NVRAM file [nosuch.txt] does not exist\r (esc)
  open() nosuch/file failed 2 (No such file or directory)
  \r (esc)

The failures of `fec`. The function's name stands behind that of the class.

  $ fec() { orfc-esxcli -t port -s fec "$@" >/dev/null; messages /var/tmp/viplugin.log | sed 's/^PhysicalPortFECCmdsProcessor::[A-Za-z]*: //'; }
  $ port=FC_21:00:00:24:ff:10:20:30
  $ fec get FC_21:00:00:24:ff:10:20:70
  Command not supported for this adapter\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_FCGetFECSupportInfo=5 fec get $port
  Get FEC Info failed err=5\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsMezzAdapter=0xFFFFFFFF fec get $port
  Mezz adapter check failed err=-1\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetFWPrivateStats=7 fec get $port
  Get FW Private stats failed err=7\r (esc)
  $ fec set FC_21:00:00:24:ff:10:20:31 -f true
  Modification of fec-status is supported at 16Gbps and Unknown speed for non-mezz adapters only\r (esc)
  $ fec set $port -f on
  fec-status=on not supported\r (esc)
  $ fec set $port -r all
  reset=all not supported\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_FCSetFECSupportInfo=8 fec set $port -f true
  Update FEC failed err=8\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_ResetFECCounters=9 fec set $port -r reset
  Reset FEC counters failed err=9\r (esc)

1 is information: the entry and the exit of the functions, every field that is shown, and the run's code.

  $ export ORFC_DEBUG_LEVEL=1
  $ orfc-esxcli -t port -s fec getcli $port >/dev/null
  $ grep -vc 'CIM Provider INFORMATION [0-9]*: ' /var/tmp/viplugin.log
  1
  $ messages /var/tmp/viplugin.log | grep -a 'FECCmdsProcessor::\(Cmd\|Display\)\|^main'
  PhysicalPortFECCmdsProcessor::CmdGetCli: Entered\r (esc)
  PhysicalPortFECCmdsProcessor::CmdGetCommon: Entered\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayFECInfo: Message=Success\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayFECInfo: FEC_Status=true\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayFECInfo: Correctable FEC errors=1200\r (esc)
  PhysicalPortFECCmdsProcessor::DisplayFECInfo: Uncorrectable FEC errors=7\r (esc)
  PhysicalPortFECCmdsProcessor::CmdGetCommon: Exiting\r (esc)
  main: Program Exit Code: (0)

A log that can't be opened for a call of the library is information too.

  $ for call in 2 3 4 5 6; do
  >     refuse_log $call orfc-esxcli -t port -s fec set $port -f true -r reset >/dev/null
  >     messages /var/tmp/viplugin.log | grep -o 'Failed to open.*'
  > done
  Failed to open /var/tmp/vexapi-output.log file before FEC read\r (esc)
  Failed to open /var/tmp/vexapi-output.log file before FW Priv Stats read\r (esc)
  Failed to open /var/tmp/vexapi-output.log file before Mezz adapter check\r (esc)
  Failed to open /var/tmp/vexapi-output.log file before FEC set\r (esc)
  Failed to open /var/tmp/vexapi-output.log file before FEC counter reset\r (esc)

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

Lines are added to what stands there already. A trace is cut at 1024 characters.

  $ forget_logs; echo before >/var/tmp/viplugin.log
  $ export ORFC_DEBUG_LEVEL=4
  $ orfc-esxcli -t port -s fec get $(printf '%05000d' 0) >/dev/null
  $ sed 's/^[0-9/]* [0-9:.]* //' /var/tmp/viplugin.log | wc -lc
        1    1031

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
