# HBA parameters: changes that fail

A port that can't be read gets no file.

  $ . "$TESTDIR/setup.sh"
  $ host settings
  $ port=FC_21:00:00:24:ff:50:00:01
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetHBAParamsInfo=1 orfc-esxcli -t port -s hbaparams setFilecli $port -z 512
  ****************************************************
  HBAParametersInfo:
  Message: Failed, NVRAM read failed
  HBAParameters: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetHBAParamsInfo=1 orfc-esxcli -t port -s hbaparams setcli $port
  ****************************************************
  HBAParametersInfo:
  Reboot Required: false
  Message: Failed, NVRAM read failed
  HBAParameters: ****************************************************
  $ ls /tmp/HBAParams_$port
  ls: cannot access '/tmp/HBAParams_FC_21:00:00:24:ff:50:00:01': No such file or directory
  [2]

A write that fails keeps the file, so that it can be repeated.

  $ orfc-esxcli -t port -s hbaparams setFile $port -z 512 >/dev/null
  $ cp /tmp/HBAParams_$port before; rm -f journal
  $ VEXAPI_SIM_FAULTS=VEXAPI_UpdateHBAParameters=1 orfc-esxcli -t port -s hbaparams set $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="HBAParametersInfo">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, NVRAM update failed</string></field>
  <field name="HBAParameters">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ VEXAPI_SIM_FAULTS=VEXAPI_UpdateHBAParameters=1 orfc-esxcli -t port -s hbaparams setcli $port
  ****************************************************
  HBAParametersInfo:
  Reboot Required: false
  Message: Failed, NVRAM update failed
  HBAParameters: ****************************************************
  $ calls
  VEXAPI_GetHBAParamsInfo
  VEXAPI_UpdateHBAParameters -> 1
  VEXAPI_GetHBAParamsInfo
  VEXAPI_UpdateHBAParameters -> 1
  $ cmp before /tmp/HBAParams_$port

The library's log can't be opened before the read, or before the write.

  $ refuse_log 2 orfc-esxcli -t port -s hbaparams setFilecli $port -z 1024
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Unknown
  HBAParameters: ****************************************************
  $ refuse_log 2 orfc-esxcli -t port -s hbaparams setcli $port
  ****************************************************
  HBAParametersInfo:
  Reboot Required: false
  Message: Failed, Unknown
  HBAParameters: ****************************************************
  $ refuse_log 3 orfc-esxcli -t port -s hbaparams setcli $port
  ****************************************************
  HBAParametersInfo:
  Reboot Required: false
  Message: Failed, Unknown
  HBAParameters: ****************************************************
  $ cmp before /tmp/HBAParams_$port

Before asking whether a reboot is required: the write is done then. A reboot is requested, to be on the safe side.

  $ rm -f journal
  $ refuse_log 4 orfc-esxcli -t port -s hbaparams setcli $port
  ****************************************************
  HBAParametersInfo:
  Message: Success
  Reboot Required: true
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps
  Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O
  Frame Size: 512
  Enable Hard Loop Id: true
  Hard Loop Id: 17
  Loop Reset Delay In Seconds: 5
  Interrupt Delay Timer In 100us: 11
  Execution Throttle: 65535
  Login Retry Count: 8
  Port Down Retry Count: 30
  Link Down Timeout In Seconds: 60
  Luns Per Target: 128
  Enable LR: true
  Enable Host Hba Bios: false
  Enable Fc Tape Support: true
  Enable Lip Full Login: true
  Enable Target Reset: false
  Enable Fabric Assigned WWN: false
  Enable FWCM: true
  Virtual Lane: true
  ****************************************************
  $ calls
  VEXAPI_GetHBAParamsInfo
  VEXAPI_UpdateHBAParameters
  $ ls /tmp/HBAParams_$port
  ls: cannot access '/tmp/HBAParams_FC_21:00:00:24:ff:50:00:01': No such file or directory
  [2]

No room for a file: a new one isn't created, and an old one is unchanged.

  $ VEXAPI_SIM_JOURNAL= full orfc-esxcli -t port -s hbaparams setFilecli $port -z 1024
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Unknown
  HBAParameters: ****************************************************
  $ ls /tmp/HBAParams_$port*
  ls: cannot access '/tmp/HBAParams_FC_21:00:00:24:ff:50:00:01*': No such file or directory
  [2]
  $ orfc-esxcli -t port -s hbaparams setFile $port -w 31 >/dev/null; cp /tmp/HBAParams_$port before
  $ VEXAPI_SIM_JOURNAL= full orfc-esxcli -t port -s hbaparams setFilecli $port -z 1024
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Unknown
  HBAParameters: ****************************************************
  $ cmp before /tmp/HBAParams_$port && ls /tmp/HBAParams_$port*
  /tmp/HBAParams_FC_21:00:00:24:ff:50:00:01

A folder is not a file: nothing is pending, and nothing can be staged.

  $ rm /tmp/HBAParams_$port; mkdir /tmp/HBAParams_$port
  $ orfc-esxcli -t port -s hbaparams setcli $port
  ****************************************************
  HBAParametersInfo:
  Reboot Required: false
  Message: Failed, Unknown
  HBAParameters: ****************************************************
  $ orfc-esxcli -t port -s hbaparams setFilecli $port -z 512
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Unknown
  HBAParameters: ****************************************************
  $ rmdir /tmp/HBAParams_$port
