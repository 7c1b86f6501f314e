# HBA parameters: restoring the defaults, and saving

The defaults are written at once. A pending file is neither read nor removed: a `set` that follows writes it over
them.

  $ . "$TESTDIR/setup.sh"
  $ host settings
  $ port=FC_21:00:00:24:ff:50:00:01
  $ orfc-esxcli -t port -s hbaparams setFile $port -l 77 >/dev/null; rm -f journal
  $ orfc-esxcli -t port -s hbaparams restoreDefaults $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="RestoreDefaultsInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="Reboot Required">
  <bool>true</bool></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s hbaparams restoreDefaultscli $port
  ****************************************************
  RestoreDefaultsInfo:
  Message: Success
  Reboot Required: true
  ****************************************************
  $ calls
  VEXAPI_RestoreDefaultNVRAM
  VEXAPI_RestoreDefaultNVRAM
  $ orfc-esxcli -t port -s hbaparams getcli $port | grep Id:
  Enable Hard Loop Id: false
  Hard Loop Id: 0
  $ orfc-esxcli -t port -s hbaparams setcli $port | grep Id:
  Enable Hard Loop Id: true
  Hard Loop Id: 77
  $ orfc-esxcli -t port -s hbaparams restoreDefaultscli FC_21:00:00:24:ff:50:00:02
  ****************************************************
  RestoreDefaultsInfo:
  Message: Success
  Reboot Required: false
  ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsRebootRequired=1 orfc-esxcli -t port -s hbaparams restoreDefaultscli FC_21:00:00:24:ff:50:00:02
  ****************************************************
  RestoreDefaultsInfo:
  Message: Success
  Reboot Required: true
  ****************************************************

A failure is reported as that of a read, although it is a write.

  $ VEXAPI_SIM_FAULTS=VEXAPI_RestoreDefaultNVRAM=1 orfc-esxcli -t port -s hbaparams restoreDefaults $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="RestoreDefaultsInfo">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, NVRAM read failed</string></field>
  </structure>
  </output>
  $ VEXAPI_SIM_FAULTS=VEXAPI_RestoreDefaultNVRAM=1 orfc-esxcli -t port -s hbaparams restoreDefaultscli $port
  ****************************************************
  RestoreDefaultsInfo:
  Reboot Required: false
  Message: Failed, NVRAM read failed
  ****************************************************
  $ refuse_log 2 orfc-esxcli -t port -s hbaparams restoreDefaultscli $port
  ****************************************************
  RestoreDefaultsInfo:
  Reboot Required: false
  Message: Failed, Unknown
  ****************************************************
  $ refuse_log 3 orfc-esxcli -t port -s hbaparams restoreDefaultscli FC_21:00:00:24:ff:50:00:02
  ****************************************************
  RestoreDefaultsInfo:
  Message: Success
  Reboot Required: false
  ****************************************************
  $ orfc-esxcli -t port -s hbaparams restoreDefaultscli FC_21:01:00:24:ff:50:00:01
  ****************************************************
  RestoreDefaultsInfo:
  Reboot Required: false
  Message: Failed, feature not supported for virtual port
  ****************************************************
  $ orfc-esxcli -t port -s hbaparams restoreDefaultscli port
  ****************************************************
  RestoreDefaultsInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  ****************************************************
  Usage: restoreDefaults\r (esc)

The library saves what the port has to a text file.

  $ host settings
  $ orfc-esxcli -t port -s hbaparams save $port saved.txt
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="HBAParametersSave">
  <field name="Message">
  <string>Success</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s hbaparams savecli $port saved.txt
  ****************************************************
  HBAParametersSave:
  Message: Success
  ****************************************************
  $ calls
  VEXAPI_SaveSingleAdapterNVRAMToFile path=saved.txt
  VEXAPI_SaveSingleAdapterNVRAMToFile path=saved.txt
  $ grep -E '^(FrameSize|HardLoopId) ' saved.txt
  HardLoopId 17
  FrameSize 2048

Without a file name the library isn't called.

  $ orfc-esxcli -t port -s hbaparams save $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="HBAParametersSave">
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s hbaparams savecli $port
  ****************************************************
  HBAParametersSave:
  Message: Failed, Invalid parameter
  ****************************************************
  Usage: save\r (esc)
  $ orfc-esxcli -t port -s hbaparams savecli FC_21:01:00:24:ff:50:00:01
  ****************************************************
  HBAParametersSave:
  Message: Failed, feature not supported for virtual port
  ****************************************************
  $ calls
  $ orfc-esxcli -t port -s hbaparams savecli $port no/folder
  ****************************************************
  HBAParametersSave:
  Message: Failed, NVRAM read failed
  ****************************************************
  $ refuse_log 2 orfc-esxcli -t port -s hbaparams savecli $port saved.txt
  ****************************************************
  HBAParametersSave:
  Message: Failed, Unknown
  ****************************************************
  $ rm -f /tmp/HBAParams_FC_21:0?:00:24:ff:50:00:0?
