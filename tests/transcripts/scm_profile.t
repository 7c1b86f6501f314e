# The congestion profile of a port

Who rules how hard the port defends itself.

  $ . "$TESTDIR/setup.sh"
  $ host congestion
  $ orfc-esxcli -t port -s scmprofile get FC_21:00:00:24:ff:60:20:40
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMProfile">
  <field name="Message">
  <string>Success</string></field>
  <field name="Congestion Profile">
  <list type="structure">
  <structure typeName="CongestionProfileList">
  <field name="Data">
  <string>Node Name: 20:00:00:24:ff:60:20:40
        Port Name: 21:00:00:24:ff:60:20:40
        Port Id: 01:33:0c
        Port State: Online
        FWCM Configuration Status: true
        FWCM Profile Management: NVRAM
        FWCM Profile Activation: Aggressive
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s scmprofile getcli FC_21:00:00:24:ff:60:20:40
  ****************************************************
  PortFWCMProfile:
  Message: Success
  Congestion Profile: CongestionProfileList:
  Data: Node Name: 20:00:00:24:ff:60:20:40
        Port Name: 21:00:00:24:ff:60:20:40
        Port Id: 01:33:0c
        Port State: Online
        FWCM Configuration Status: true
        FWCM Profile Management: NVRAM
        FWCM Profile Activation: Aggressive
  ****************************************************
  $ calls
  VEXAPI_GetSCMRProfile
  VEXAPI_GetSCMRProfile

A level without a name, and no management. The profile can be had while the feature is off.

  $ orfc-esxcli -t port -s scmprofile getcli FC_21:00:00:24:ff:60:20:41
  ****************************************************
  PortFWCMProfile:
  Message: Success
  Congestion Profile: CongestionProfileList:
  Data: Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:41
        Port Id: 00:00:00
        Port State: Online
        FWCM Configuration Status: false
        FWCM Profile Management: NVRAM
        FWCM Profile Activation: Unknown
  ****************************************************
  $ calls
  VEXAPI_GetSCMRProfile

A change is written at once, read back, and stays.

  $ orfc-esxcli -t port -s scmprofile set FC_21:00:00:24:ff:60:20:40 --activation Defensive
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMProfile">
  <field name="Message">
  <string>Success</string></field>
  <field name="Congestion Profile">
  <list type="structure">
  <structure typeName="CongestionProfileList">
  <field name="Data">
  <string>Node Name: 20:00:00:24:ff:60:20:40
        Port Name: 21:00:00:24:ff:60:20:40
        Port Id: 01:33:0c
        Port State: Online
        FWCM Configuration Status: true
        FWCM Profile Management: NVRAM
        FWCM Profile Activation: Defensive
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_GetSCMRProfile
  VEXAPI_SetSCMRProfile
  VEXAPI_GetSCMRProfile
  $ orfc-esxcli -t port -s scmprofile getcli FC_21:00:00:24:ff:60:20:40
  ****************************************************
  PortFWCMProfile:
  Message: Success
  Congestion Profile: CongestionProfileList:
  Data: Node Name: 20:00:00:24:ff:60:20:40
        Port Name: 21:00:00:24:ff:60:20:40
        Port Id: 01:33:0c
        Port State: Online
        FWCM Configuration Status: true
        FWCM Profile Management: NVRAM
        FWCM Profile Activation: Defensive
  ****************************************************

The driver's settings leave the level as it was.

  $ orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 --restore Driver_Settings
  ****************************************************
  PortFWCMProfile:
  Message: Success
  Congestion Profile: CongestionProfileList:
  Data: Node Name: 20:00:00:24:ff:60:20:40
        Port Name: 21:00:00:24:ff:60:20:40
        Port Id: 01:33:0c
        Port State: Online
        FWCM Configuration Status: true
        FWCM Profile Management: Driver_Settings
        FWCM Profile Activation: Defensive
  ****************************************************
  $ orfc-esxcli -t port -s scmprofile getcli FC_21:00:00:24:ff:60:20:40
  ****************************************************
  PortFWCMProfile:
  Message: Success
  Congestion Profile: CongestionProfileList:
  Data: Node Name: 20:00:00:24:ff:60:20:40
        Port Name: 21:00:00:24:ff:60:20:40
        Port Id: 01:33:0c
        Port State: Online
        FWCM Configuration Status: true
        FWCM Profile Management: Driver_Settings
        FWCM Profile Activation: Defensive
  ****************************************************

Every level, in any letter case.

  $ for level in Monitor_Only conservative MODERATE Aggressive dEFENSIVE; do
  >     orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -A $level | grep Activation
  > done
        FWCM Profile Activation: Monitor_Only
        FWCM Profile Activation: Conservative
        FWCM Profile Activation: Moderate
        FWCM Profile Activation: Aggressive
        FWCM Profile Activation: Defensive
  $ orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -r DRIVER_settings | grep Management
        FWCM Profile Management: Driver_Settings

Without an option the profile is written as it was read, all 16 bytes of it. An option without a value counts
as absent.

  $ rm -f journal
  $ orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:41
  ****************************************************
  PortFWCMProfile:
  Message: Success
  Congestion Profile: CongestionProfileList:
  Data: Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:41
        Port Id: 00:00:00
        Port State: Online
        FWCM Configuration Status: false
        FWCM Profile Management: NVRAM
        FWCM Profile Activation: Unknown
  ****************************************************
  $ orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:41 -a
  ****************************************************
  PortFWCMProfile:
  Message: Success
  Congestion Profile: CongestionProfileList:
  Data: Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:41
        Port Id: 00:00:00
        Port State: Online
        FWCM Configuration Status: false
        FWCM Profile Management: NVRAM
        FWCM Profile Activation: Unknown
  ****************************************************
  $ calls
  VEXAPI_GetSCMRProfile
  VEXAPI_SetSCMRProfile
  VEXAPI_GetSCMRProfile
  VEXAPI_GetSCMRProfile
  VEXAPI_SetSCMRProfile
  VEXAPI_GetSCMRProfile
