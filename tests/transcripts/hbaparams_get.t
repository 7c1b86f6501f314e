# HBA parameters: reading

What a port has in its NVRAM.

  $ . "$TESTDIR/setup.sh"
  $ host settings
  $ port=FC_21:00:00:24:ff:50:00:01
  $ orfc-esxcli -t port -s hbaparams get $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="HBAParametersInfo">
  <field name="Message">
  <string>Success</string></field>
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
  <int>2048</int></field>
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
  <int>128</int></field>
  <field name="Enable LR">
  <string>true</string></field>
  <field name="Enable Host Hba Bios">
  <string>false</string></field>
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
  $ calls
  VEXAPI_GetHBAParamsInfo
  VEXAPI_GetHBAParamsInfo

What an adapter doesn't have reads as NA, or as 0 where it is a number. Of a converged adapter the code of
16 Gbps stands for 10.

  $ orfc-esxcli -t port -s hbaparams getcli FC_21:00:00:24:ff:50:00:04
  ****************************************************
  HBAParametersInfo:
  Message: Success
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps
  Operation Mode: NA
  Frame Size: 2048
  Enable Hard Loop Id: NA
  Hard Loop Id: 0
  Loop Reset Delay In Seconds: 5
  Interrupt Delay Timer In 100us: 0
  Execution Throttle: 65535
  Login Retry Count: 8
  Port Down Retry Count: 30
  Link Down Timeout In Seconds: 60
  Luns Per Target: 128
  Enable LR: NA
  Enable Host Hba Bios: false
  Enable Fc Tape Support: true
  Enable Lip Full Login: NA
  Enable Target Reset: false
  Enable Fabric Assigned WWN: NA
  Enable FWCM: NA
  Virtual Lane: NA
  ****************************************************
  $ orfc-esxcli -t port -s hbaparams getcli FC_21:00:00:24:ff:50:00:05
  ****************************************************
  HBAParametersInfo:
  Message: Success
  HBAParameters: HBAParametersList:
  Connection Options: Point_To_Point_Only
  Data Rate: 10_Gbps
  Operation Mode: Interrupt_When_Interrupt_Delay_Timer_Expires_Or_No_Active_I/O
  Frame Size: 2048
  Enable Hard Loop Id: NA
  Hard Loop Id: 0
  Loop Reset Delay In Seconds: 5
  Interrupt Delay Timer In 100us: 11
  Execution Throttle: 0
  Login Retry Count: 8
  Port Down Retry Count: 30
  Link Down Timeout In Seconds: 60
  Luns Per Target: 128
  Enable LR: true
  Enable Host Hba Bios: false
  Enable Fc Tape Support: true
  Enable Lip Full Login: NA
  Enable Target Reset: false
  Enable Fabric Assigned WWN: NA
  Enable FWCM: NA
  Virtual Lane: NA
  ****************************************************
  $ orfc-esxcli -t port -s hbaparams getcli FC_21:00:00:24:ff:50:00:06
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
  Enable LR: NA
  Enable Host Hba Bios: false
  Enable Fc Tape Support: true
  Enable Lip Full Login: true
  Enable Target Reset: false
  Enable Fabric Assigned WWN: NA
  Enable FWCM: NA
  Virtual Lane: NA
  ****************************************************
  $ orfc-esxcli -t port -s hbaparams getcli FC_21:00:00:24:ff:50:00:03
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
  Virtual Lane: NA
  ****************************************************
  $ rm -f journal

Failures. A port must be named exactly as it is listed; a virtual one has no parameters.

  $ orfc-esxcli -t port -s hbaparams get FC_21:01:00:24:ff:50:00:01
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="HBAParametersInfo">
  <field name="Message">
  <string>Failed, feature not supported for virtual port</string></field>
  <field name="HBAParameters">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s hbaparams getcli FC_21:01:00:24:ff:50:00:01
  ****************************************************
  HBAParametersInfo:
  Message: Failed, feature not supported for virtual port
  HBAParameters: ****************************************************
  $ orfc-esxcli -t port -s hbaparams getcli FC_21:00:00:24:FF:50:00:01
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Invalid parameter
  HBAParameters: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s hbaparams getcli help
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Unknown
  HBAParameters: ****************************************************
  Usage: get\r (esc)
  $ calls
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetHBAParamsInfo=1 orfc-esxcli -t port -s hbaparams getcli $port
  ****************************************************
  HBAParametersInfo:
  Message: Failed, NVRAM read failed
  HBAParameters: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s hbaparams getcli $port
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Host not found
  HBAParameters: ****************************************************
  $ refuse_log 2 orfc-esxcli -t port -s hbaparams getcli $port
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Unknown
  HBAParameters: ****************************************************
