# The congestion profile of a port: what can fail

The chip is checked first, then whether the port is virtual, then the firmware, whose refusal has no text.

  $ . "$TESTDIR/setup.sh"
  $ host congestion
  $ orfc-esxcli -t port -s scmprofile get FC_21:00:00:24:ff:60:20:70
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMProfile">
  <field name="Message">
  <string>Failed, Feature not supported for this adapter</string></field>
  <field name="Congestion Profile">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s scmprofile getcli FC_21:00:00:24:ff:60:20:71
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Feature not supported for virtual port
  Congestion Profile: ****************************************************
  $ orfc-esxcli -t port -s scmprofile getcli FC_21:00:00:24:ff:60:20:72
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Feature not supported for virtual port
  Congestion Profile: ****************************************************
  $ orfc-esxcli -t port -s scmprofile getcli FC_21:00:00:24:ff:60:20:73
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Unknown
  Congestion Profile: ****************************************************
  $ orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:10 -a Moderate
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Unknown
  Congestion Profile: ****************************************************
  $ calls

Values that there are not; the restore value is judged first, and each before both at once.

  $ orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -r x
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Invalid parameter
  Congestion Profile: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -a x
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Invalid parameter
  Congestion Profile: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -a 3
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Invalid parameter
  Congestion Profile: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 --restore x --activation y
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Invalid parameter
  Congestion Profile: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -r Driver_Settings -a y
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Invalid parameter
  Congestion Profile: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -r -a Moderate
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Invalid parameter
  Congestion Profile: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s scmprofile set FC_21:00:00:24:ff:60:20:40 -a x
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMProfile">
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  <field name="Congestion Profile">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s scmprofile set FC_21:00:00:24:ff:60:20:40 --restore Driver_Settings --activation Moderate
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMProfile">
  <field name="Message">
  <string>Failed, Restore and Activation command-line options are mutually exclusive</string></field>
  <field name="Congestion Profile">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ calls | sort | uniq -c | sed 's/^ *//'
  8 VEXAPI_GetSCMRProfile

Each call can fail.

  $ VEXAPI_SIM_FAULTS=VEXAPI_GetSCMRProfile=1 orfc-esxcli -t port -s scmprofile getcli FC_21:00:00:24:ff:60:20:40
  ****************************************************
  PortFWCMProfile:
  Message: Failed, NVRAM read failed
  Congestion Profile: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_SetSCMRProfile=1 orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -a Moderate
  ****************************************************
  PortFWCMProfile:
  Message: Failed, NVRAM update failed
  Congestion Profile: ****************************************************
  $ calls
  VEXAPI_GetSCMRProfile -> 1
  VEXAPI_GetSCMRProfile
  VEXAPI_SetSCMRProfile -> 1
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

A profile that can't be read back has been written nevertheless.

  $ VEXAPI_SIM_FAULTS=VEXAPI_GetSCMRProfile@2=1 orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -a Moderate
  ****************************************************
  PortFWCMProfile:
  Message: Failed, NVRAM read failed
  Congestion Profile: ****************************************************
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
        FWCM Profile Activation: Moderate
  ****************************************************

The library's log can't be opened: for the first read, for the change, for the second read.

  $ rm -f journal
  $ refuse_log 2 orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -a Conservative
  ****************************************************
  PortFWCMProfile:
  Message: Failed, File not found
  Congestion Profile: ****************************************************
  $ calls
  $ rm -f journal
  $ refuse_log 3 orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -a Conservative
  ****************************************************
  PortFWCMProfile:
  Message: Failed, File not found
  Congestion Profile: ****************************************************
  $ calls
  VEXAPI_GetSCMRProfile
  $ rm -f journal
  $ refuse_log 4 orfc-esxcli -t port -s scmprofile setcli FC_21:00:00:24:ff:60:20:40 -a Conservative
  ****************************************************
  PortFWCMProfile:
  Message: Failed, File not found
  Congestion Profile: ****************************************************
  $ calls
  VEXAPI_GetSCMRProfile
  VEXAPI_SetSCMRProfile

Identifiers and help words.

  $ orfc-esxcli -t port -s scmprofile getcli FC_21:00:00:24:ff:60:20:99
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Invalid parameter
  Congestion Profile: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s scmprofile setcli help
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Unknown
  Congestion Profile: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s scmprofile setcli ?
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s scmprofile getcli ?
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s scmprofile set ?
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s scmprofile getcli FC_21:00:00:24:ff:60:20:40
  ****************************************************
  PortFWCMProfile:
  Message: Failed, Host not found
  Congestion Profile: ****************************************************

The codes of these runs.

  $ for words in 40 70 71 72 73 '40 -r x' '40 -r Driver_Settings -a Moderate' 99; do code -t port -s scmprofile set FC_21:00:00:24:ff:60:20:$words; done | paste -sd ' '
  0 35 51 51 45 6 37 6
