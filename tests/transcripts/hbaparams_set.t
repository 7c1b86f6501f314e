# HBA parameters: changing

A change takes several commands, each a process of its own. `setFile` stages in a file of the port, and shows
what the port will have; `set` writes all of it once, and deletes the file.

  $ . "$TESTDIR/setup.sh"
  $ host settings
  $ port=FC_21:00:00:24:ff:50:00:01
  $ orfc-esxcli -t port -s hbaparams setFilecli $port --frame-size 1024
  ****************************************************
  HBAParametersInfo:
  Message: Success
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps
  Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O
  Frame Size: 1024
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
  $ cat /tmp/HBAParams_$port
  Connection_Options=1
  Data_Rate=5
  Disable_BIOS=1
  Disable_SCM=0
  Enable_Fabric_Assign_WWN=0
  Enable_Fibre_Channel_Tape_Support=1
  Enable_Hard_Loop_Id=1
  Enable_LR=1
  Enable_Lip_Full_Login=1
  Enable_Receive_Out_Of_Order_Frames=1
  Enable_Target_Reset=0
  Enable_Virtual_Lane=1
  Execution_Throttle=65535
  Frame_Size=1024
  Hard_Loop_ID=17
  Interrupt_Delay_Timer=11
  Link_Down_Timeout=60
  Login_Retry_Count=8
  Loop_Reset_Delay=5
  Luns_Per_Target=128
  Operation_Mode=6
  Port_Down_Retry_Count=30
  $ orfc-esxcli -t port -s hbaparams setFilecli $port --enable-bios true -y 256
  ****************************************************
  HBAParametersInfo:
  Message: Success
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps
  Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O
  Frame Size: 1024
  Enable Hard Loop Id: true
  Hard Loop Id: 17
  Loop Reset Delay In Seconds: 5
  Interrupt Delay Timer In 100us: 11
  Execution Throttle: 65535
  Login Retry Count: 8
  Port Down Retry Count: 30
  Link Down Timeout In Seconds: 60
  Luns Per Target: 256
  Enable LR: true
  Enable Host Hba Bios: true
  Enable Fc Tape Support: true
  Enable Lip Full Login: true
  Enable Target Reset: false
  Enable Fabric Assigned WWN: false
  Enable FWCM: true
  Virtual Lane: true
  ****************************************************
  $ calls
  VEXAPI_GetHBAParamsInfo
  VEXAPI_GetHBAParamsInfo

Up to here NVRAM is as it was, and `get` shows it.

  $ orfc-esxcli -t port -s hbaparams getcli $port
  ****************************************************
  HBAParametersInfo:
  Message: Success
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps
  Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O
  Frame Size: 2048
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
  $ rm -f journal
  $ orfc-esxcli -t port -s hbaparams set $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="HBAParametersInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="Reboot Required">
  <bool>true</bool></field>
  <field name="HBAParameters">
  <list type="structure">
  <structure typeName="HBAParametersList">
  <field name="Connection Options">
  <string>Point_To_Point_Only</string></field>
  <field name="Data Rate">
  <string>16_Gbps</string></field>
  <field name="Operation Mode">
  <string>Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O</string></field>
  <field name="Frame Size">
  <int>1024</int></field>
  <field name="Enable Hard Loop Id">
  <string>true</string></field>
  <field name="Hard Loop Id">
  <int>17</int></field>
  <field name="Loop Reset Delay In Seconds">
  <int>5</int></field>
  <field name="Interrupt Delay Timer In 100us">
  <int>11</int></field>
  <field name="Execution Throttle">
  <int>65535</int></field>
  <field name="Login Retry Count">
  <int>8</int></field>
  <field name="Port Down Retry Count">
  <int>30</int></field>
  <field name="Link Down Timeout In Seconds">
  <int>60</int></field>
  <field name="Luns Per Target">
  <int>256</int></field>
  <field name="Enable LR">
  <string>true</string></field>
  <field name="Enable Host Hba Bios">
  <string>true</string></field>
  <field name="Enable Fc Tape Support">
  <string>true</string></field>
  <field name="Enable Lip Full Login">
  <string>true</string></field>
  <field name="Enable Target Reset">
  <string>false</string></field>
  <field name="Enable Fabric Assigned WWN">
  <string>false</string></field>
  <field name="Enable FWCM">
  <string>true</string></field>
  <field name="Virtual Lane">
  <string>true</string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ ls /tmp/HBAParams_$port*
  ls: cannot access '/tmp/HBAParams_FC_21:00:00:24:ff:50:00:01*': No such file or directory
  [2]

One write of the whole record: unknown parts are written back as read.

  $ grep -oE '"(FrameSize|EnableSelectableBoot|BootPortName|BootLunNumber|ForceWorldLogin|NVMeEnable)":[^,]*' journal
  "FrameSize":1024
  "EnableSelectableBoot":1
  "BootPortName":"50:06:0e:80:12:4a:7c:10"
  "BootLunNumber":513
  "ForceWorldLogin":1
  "NVMeEnable":1
  $ grep -oE '"(EnableFabricAssignBootLun|Alt7Boot[A-Z][A-Za-z]*)":[^,]*' journal
  "EnableFabricAssignBootLun":1
  "Alt7BootPortName":"50:06:0e:80:12:4a:7c:17"
  "Alt7BootLunNumber":7
  $ calls
  VEXAPI_GetHBAParamsInfo
  VEXAPI_UpdateHBAParameters
  $ orfc-esxcli -t port -s hbaparams getcli $port
  ****************************************************
  HBAParametersInfo:
  Message: Success
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps
  Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O
  Frame Size: 1024
  Enable Hard Loop Id: true
  Hard Loop Id: 17
  Loop Reset Delay In Seconds: 5
  Interrupt Delay Timer In 100us: 11
  Execution Throttle: 65535
  Login Retry Count: 8
  Port Down Retry Count: 30
  Link Down Timeout In Seconds: 60
  Luns Per Target: 256
  Enable LR: true
  Enable Host Hba Bios: true
  Enable Fc Tape Support: true
  Enable Lip Full Login: true
  Enable Target Reset: false
  Enable Fabric Assigned WWN: false
  Enable FWCM: true
  Virtual Lane: true
  ****************************************************

Nothing is pending any more. `set` says that it failed, and gives the code of a success.

  $ rm -f journal
  $ orfc-esxcli -t port -s hbaparams set $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="HBAParametersInfo">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, Unknown</string></field>
  <field name="HBAParameters">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s hbaparams setcli $port
  ****************************************************
  HBAParametersInfo:
  Reboot Required: false
  Message: Failed, Unknown
  HBAParameters: ****************************************************
  $ calls
  VEXAPI_GetHBAParamsInfo
  VEXAPI_GetHBAParamsInfo
  $ code -t port -s hbaparams set $port
  0
  $ rm -f journal

A port whose changes take effect at once needs no reboot. Where the library can't tell, one is requested.

  $ orfc-esxcli -t port -s hbaparams setFile FC_21:00:00:24:ff:50:00:02 -r 6 >/dev/null
  $ orfc-esxcli -t port -s hbaparams setcli FC_21:00:00:24:ff:50:00:02
  ****************************************************
  HBAParametersInfo:
  Message: Success
  Reboot Required: false
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps
  Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O
  Frame Size: 2048
  Enable Hard Loop Id: true
  Hard Loop Id: 17
  Loop Reset Delay In Seconds: 6
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
  $ orfc-esxcli -t port -s hbaparams setFile FC_21:00:00:24:ff:50:00:02 -r 7 >/dev/null
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsRebootRequired=1 orfc-esxcli -t port -s hbaparams setcli FC_21:00:00:24:ff:50:00:02
  ****************************************************
  HBAParametersInfo:
  Message: Success
  Reboot Required: true
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps
  Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O
  Frame Size: 2048
  Enable Hard Loop Id: true
  Hard Loop Id: 17
  Loop Reset Delay In Seconds: 7
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

The same on the lab host, from a Rowan port.

  $ unset VEXAPI_SIM_HOST; rm -f state journal
  $ lab=FC_21:00:00:24:ff:4b:18:7a
  $ orfc-esxcli -t port -s hbaparams setFilecli $lab -o 240 | grep -E 'Message|Link Down'
  Message: Success
  Link Down Timeout In Seconds: 240
  $ orfc-esxcli -t port -s hbaparams setFilecli $lab -o 239 -f false | grep -E 'Link Down|Tape'
  Link Down Timeout In Seconds: 239
  Enable Fc Tape Support: false
  $ orfc-esxcli -t port -s hbaparams setcli $lab | grep -E 'Message|Reboot|Link Down|Tape'
  Message: Success
  Reboot Required: true
  Link Down Timeout In Seconds: 239
  Enable Fc Tape Support: false
  $ orfc-esxcli -t port -s hbaparams getcli $lab | grep -E 'Message|Reboot|Link Down|Tape'
  Message: Success
  Link Down Timeout In Seconds: 239
  Enable Fc Tape Support: false
  $ grep -c UpdateHBAParameters journal
  1
  $ calls
  VEXAPI_GetHBAParamsInfo
  VEXAPI_GetHBAParamsInfo
  VEXAPI_GetHBAParamsInfo
  VEXAPI_UpdateHBAParameters
  VEXAPI_GetHBAParamsInfo
  $ ls /tmp/HBAParams_$lab*
  ls: cannot access '/tmp/HBAParams_FC_21:00:00:24:ff:4b:18:7a*': No such file or directory
  [2]

Without an option the file is the port's own, and `set` writes it back. It does so even when the port was
changed by other means meanwhile.

  $ host settings
  $ orfc-esxcli -t port -s hbaparams setFilecli $port
  ****************************************************
  HBAParametersInfo:
  Message: Success
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps
  Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O
  Frame Size: 2048
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
  $ printf 'ORFC-IMAGE NVRAM 1.0\nFrameSize 512\n' >nvram.txt
  $ orfc-esxcli -t port updatenvram $port nvram.txt >/dev/null
  $ orfc-esxcli -t port -s hbaparams getcli $port
  ****************************************************
  HBAParametersInfo:
  Message: Success
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
  $ orfc-esxcli -t port -s hbaparams setcli $port
  ****************************************************
  HBAParametersInfo:
  Message: Success
  Reboot Required: true
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps
  Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O
  Frame Size: 2048
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
  $ orfc-esxcli -t port -s hbaparams getcli $port
  ****************************************************
  HBAParametersInfo:
  Message: Success
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps
  Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O
  Frame Size: 2048
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

A file that was edited by hand. What is out of range is dropped, and the port's own stays.

  $ printf 'hard_loop_id=200\n# small frames\n frame_size = 512 # bytes\nLogin_Retry_Count=abc' >/tmp/HBAParams_$port
  $ orfc-esxcli -t port -s hbaparams setFilecli $port -w 31
  ****************************************************
  HBAParametersInfo:
  Message: Success
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
  Login Retry Count: 0
  Port Down Retry Count: 31
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
  $ cat /tmp/HBAParams_$port
  hard_loop_id=200
  # small frames
   frame_size = 512 # bytes
  Login_Retry_Count=abc
  Port_Down_Retry_Count=31
  $ orfc-esxcli -t port -s hbaparams setcli $port
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
  Login Retry Count: 0
  Port Down Retry Count: 31
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
  $ rm -f /tmp/HBAParams_FC_21:0?:00:24:ff:50:00:0?
