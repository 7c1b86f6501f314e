# Congestion statistics of a port: what can fail

Refused: the chip before the firmware, the firmware before a virtual port.

  $ . "$TESTDIR/setup.sh"
  $ host congestion
  $ orfc-esxcli -t port -s scmstats get FC_21:00:00:24:ff:60:20:70
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMStatistics">
  <field name="Message">
  <string>Failed, Feature not supported for this adapter</string></field>
  <field name="Port FWCM Stats">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:71
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, Driver/Firmware does not support this feature
  Port FWCM Stats: ****************************************************
  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:72
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, feature not supported for virtual port
  Port FWCM Stats: ****************************************************
  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:73
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, Driver/Firmware does not support this feature
  Port FWCM Stats: ****************************************************
  $ calls
  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:41
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, Feature disabled on the port
  Port FWCM Stats: ****************************************************
  $ calls
  VEXAPI_IsFWCMFeatureEnabled

An identifier that finds nothing, and a help word.

  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:99
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, Invalid parameter
  Port FWCM Stats: ****************************************************
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t port -s scmstats getcli help
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, Unknown
  Port FWCM Stats: ****************************************************
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t port -s scmstats get help
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMStatistics">
  <field name="Message">
  <string>Failed, Unknown</string></field>
  <field name="Port FWCM Stats">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s scmstats getcli ?
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t port -s scmstats get ?
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, Host not found
  Port FWCM Stats: ****************************************************

Each call can fail.

  $ rm -f journal
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsFWCMFeatureEnabled=118 orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, FWCM settings read error
  Port FWCM Stats: ****************************************************
  $ calls
  VEXAPI_IsFWCMFeatureEnabled -> 118
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetSCMRStatisticsList=1 orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, Statistics read error
  Port FWCM Stats: ****************************************************
  $ calls
  VEXAPI_IsFWCMFeatureEnabled
  VEXAPI_GetSCMRStatisticsList -> 1
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetSCMRStatisticsList=null orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, Statistics read error
  Port FWCM Stats: ****************************************************
  $ calls
  VEXAPI_IsFWCMFeatureEnabled
  VEXAPI_GetSCMRStatisticsList
  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:52
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, Statistics read error
  Port FWCM Stats: ****************************************************

A list that can't be released: a second document follows the report, whose code is the command's.

  $ VEXAPI_SIM_FAULTS=VEXAPI_FreeSCMRStatisticsList=1 orfc-esxcli -t port -s scmstats get FC_21:00:00:24:ff:60:20:50
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMStatistics">
  <field name="Message">
  <string>Success</string></field>
  <field name="Port FWCM Stats">
  <list type="structure">
  <structure typeName="PortFWCMStatsList">
  <field name="Data">
  <string>Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:50
        Port Id: 00:00:00
        Port State: Online
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMStatistics">
  <field name="Message">
  <string>Failed, Statistics list clear error</string></field>
  <field name="Port FWCM Stats">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ VEXAPI_SIM_FAULTS=VEXAPI_FreeSCMRStatisticsList=1 orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:50
  ****************************************************
  PortFWCMStatistics:
  Message: Success
  Port FWCM Stats: PortFWCMStatsList:
  Data: Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:50
        Port Id: 00:00:00
        Port State: Online
  ****************************************************
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, Statistics list clear error
  Port FWCM Stats: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_FreeSCMRStatisticsList=1 code -t port -s scmstats get FC_21:00:00:24:ff:60:20:50
  39

The library's log can't be opened: for the feature, for the list, for its release.

  $ rm -f journal
  $ refuse_log 2 orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:50
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, File not found
  Port FWCM Stats: ****************************************************
  $ calls
  $ rm -f journal
  $ refuse_log 3 orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:50
  ****************************************************
  PortFWCMStatistics:
  Message: Failed, File not found
  Port FWCM Stats: ****************************************************
  $ calls
  VEXAPI_IsFWCMFeatureEnabled
  $ refuse_log 4 orfc-esxcli -t port -s scmstats get FC_21:00:00:24:ff:60:20:50
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMStatistics">
  <field name="Message">
  <string>Success</string></field>
  <field name="Port FWCM Stats">
  <list type="structure">
  <structure typeName="PortFWCMStatsList">
  <field name="Data">
  <string>Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:50
        Port Id: 00:00:00
        Port State: Online
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMStatistics">
  <field name="Message">
  <string>Failed, File not found</string></field>
  <field name="Port FWCM Stats">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ grep -c '"function": *"VEXAPI_FreeSCMRStatisticsList"' journal
  0
  [1]

The codes of these runs.

  $ for port in 20 70 71 72 41 52 99; do code -t port -s scmstats get FC_21:00:00:24:ff:60:20:$port; done | paste -sd ' '
  0 35 45 51 52 38 6
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsFWCMFeatureEnabled=1 code -t port -s scmstats get FC_21:00:00:24:ff:60:20:20
  13
