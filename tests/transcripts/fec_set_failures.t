# Forward error correction: a change that fails

The three queries come first, in this order. No further call is made after a failure.

  $ . "$TESTDIR/setup.sh"
  $ host fec
  $ VEXAPI_SIM_FAULTS=VEXAPI_FCGetFECSupportInfo=1 orfc-esxcli -t port -s fec set FC_21:00:00:24:ff:10:20:30 -f false
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, FEC read failed</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_FCGetFECSupportInfo -> 1
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetFWPrivateStats=1 orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f false
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, FEC read failed
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats -> 1
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsMezzAdapter=1 orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f false
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, FEC read failed
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter -> 1
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetFWPrivateStats=null orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f false
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, FEC read failed
  FEC: ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:52 -f false
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, FEC read failed
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f false
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Host not found
  FEC: ****************************************************

The library rejects the change. The document says that no reboot is needed.

  $ VEXAPI_SIM_FAULTS=VEXAPI_FCSetFECSupportInfo=1 orfc-esxcli -t port -s fec set FC_21:00:00:24:ff:10:20:30 -f false -r reset
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, FEC update failed</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCSetFECSupportInfo status=0 -> 1
  $ VEXAPI_SIM_FAULTS=VEXAPI_ResetFECCounters=1 orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f false -r reset
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, FEC update failed
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCSetFECSupportInfo status=0
  VEXAPI_ResetFECCounters -> 1
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************

The library's log can't be opened for one of the calls.

  $ rm -f journal
  $ refuse_log 2 orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f false -r reset
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, File not found
  FEC: ****************************************************
  $ calls
  $ rm -f journal
  $ refuse_log 3 orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f false -r reset
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, File not found
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  $ rm -f journal
  $ refuse_log 4 orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f false -r reset
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, File not found
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  $ rm -f journal
  $ refuse_log 5 orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f false -r reset
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, File not found
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  $ rm -f journal
  $ refuse_log 6 orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f false -r reset
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, File not found
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCSetFECSupportInfo status=0

The codes of these runs.

  $ for words in '30 -f on' '31 -f on' '30 -r x' '30 -r reset' '70 -f on' '52'; do code -t port -s fec set FC_21:00:00:24:ff:10:20:$words; done | paste -sd ' '
  6 47 6 0 35 13
  $ VEXAPI_SIM_FAULTS=VEXAPI_FCSetFECSupportInfo=1 code -t port -s fec set FC_21:00:00:24:ff:10:20:30 -f true
  20
  $ VEXAPI_SIM_FAULTS=VEXAPI_ResetFECCounters=1 code -t port -s fec set FC_21:00:00:24:ff:10:20:30 -r reset
  20
