# Congestion check of a port

A congested port that throttles, a healthy one, and one with virtual lanes.

  $ . "$TESTDIR/setup.sh"
  $ orfc-esxcli -t port -s scmchk get FC_21:00:00:24:ff:a6:77:0c
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMInformation">
  <field name="Message">
  <string>Success</string></field>
  <field name="Port FWCM Status">
  <list type="structure">
  <structure typeName="PortFWCMStatusList">
  <field name="Data">
  <string>Node Name: 20:00:00:24:ff:a6:77:0c
        Port Name: 21:00:00:24:ff:a6:77:0c
        Port Id: 02:33:00
        Port State: Online
        Congestion Current State: Congested
        Congestion Severity: Alarm
        Link Integrity Events: Yes
        Delivery Notification Events: Yes
        Seconds Since Last Event: 4
        Fabric Connection Flags: RDF Completed
        Virtual Lane: Disabled
        I/O Throttling: Active
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:a6:77:0c
  ****************************************************
  PortFWCMInformation:
  Message: Success
  Port FWCM Status: PortFWCMStatusList:
  Data: Node Name: 20:00:00:24:ff:a6:77:0c
        Port Name: 21:00:00:24:ff:a6:77:0c
        Port Id: 02:33:00
        Port State: Online
        Congestion Current State: Congested
        Congestion Severity: Alarm
        Link Integrity Events: Yes
        Delivery Notification Events: Yes
        Seconds Since Last Event: 4
        Fabric Connection Flags: RDF Completed
        Virtual Lane: Disabled
        I/O Throttling: Active
  ****************************************************
  $ calls
  VEXAPI_IsFWCMFeatureEnabled
  VEXAPI_IsFWCMFeatureEnabled
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:7e:2d:94
  ****************************************************
  PortFWCMInformation:
  Message: Success
  Port FWCM Status: PortFWCMStatusList:
  Data: Node Name: 20:00:00:24:ff:7e:2d:94
        Port Name: 21:00:00:24:ff:7e:2d:94
        Port Id: 01:30:00
        Port State: Online
        Congestion Current State: Healthy
        Congestion Severity: None
        Link Integrity Events: No
        Delivery Notification Events: No
        Seconds Since Last Event: 86400
        Fabric Connection Flags: RDF Completed (Brocade)
        Virtual Lane: Disabled
        I/O Throttling: None
  ****************************************************
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:0c:48:2e
  ****************************************************
  PortFWCMInformation:
  Message: Success
  Port FWCM Status: PortFWCMStatusList:
  Data: Node Name: 20:00:00:24:ff:0c:48:2e
        Port Name: 21:00:00:24:ff:0c:48:2e
        Port Id: 02:50:00
        Port State: Online
        Congestion Current State: Healthy
        Congestion Severity: None
        Link Integrity Events: No
        Delivery Notification Events: No
        Seconds Since Last Event: 3600
        Fabric Connection Flags: RDF Completed (Brocade)
        Virtual Lane: Operational
        I/O Throttling: None
  ****************************************************

The other fabrics, lanes and states. A registration that was rejected counts whatever the switch is, Brocade
is checked before Cisco, and only a Birch has lanes.

  $ host congestion
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:30
  ****************************************************
  PortFWCMInformation:
  Message: Success
  Port FWCM Status: PortFWCMStatusList:
  Data: Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:30
        Port Id: 00:00:00
        Port State: Online
        Congestion Current State: Unknown
        Congestion Severity: Reserved
        Link Integrity Events: No
        Delivery Notification Events: No
        Seconds Since Last Event: 0
        Fabric Connection Flags: RDF Reject
        Virtual Lane: Disabled
        I/O Throttling: None
  ****************************************************
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:31
  ****************************************************
  PortFWCMInformation:
  Message: Success
  Port FWCM Status: PortFWCMStatusList:
  Data: Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:31
        Port Id: 00:00:00
        Port State: Online
        Congestion Current State: Healthy
        Congestion Severity: None
        Link Integrity Events: No
        Delivery Notification Events: No
        Seconds Since Last Event: 0
        Fabric Connection Flags: RDF Completed (Cisco)
        Virtual Lane: Disabled
        I/O Throttling: Disabled
  ****************************************************
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:32
  ****************************************************
  PortFWCMInformation:
  Message: Success
  Port FWCM Status: PortFWCMStatusList:
  Data: Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:32
        Port Id: 00:00:00
        Port State: Online
        Congestion Current State: Healthy
        Congestion Severity: None
        Link Integrity Events: No
        Delivery Notification Events: No
        Seconds Since Last Event: 0
        Fabric Connection Flags: RDF Completed (Brocade)
        Virtual Lane: Non-Operational
        I/O Throttling: None
  ****************************************************
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:33
  ****************************************************
  PortFWCMInformation:
  Message: Success
  Port FWCM Status: PortFWCMStatusList:
  Data: Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:33
        Port Id: 00:00:00
        Port State: Online
        Congestion Current State: Healthy
        Congestion Severity: None
        Link Integrity Events: No
        Delivery Notification Events: No
        Seconds Since Last Event: 4294967295
        Fabric Connection Flags: RDF Completed
        Virtual Lane: Disabled
        I/O Throttling: None
  ****************************************************

The check is of the second generation alone.

  $ rm -f journal
  $ orfc-esxcli -t port -s scmchk get FC_21:00:00:24:ff:60:20:10
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMInformation">
  <field name="Message">
  <string>Failed, Driver/Firmware does not support this feature</string></field>
  <field name="Port FWCM Status">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:10
  ****************************************************
  PortFWCMInformation:
  Message: Failed, Driver/Firmware does not support this feature
  Port FWCM Status: ****************************************************
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:70
  ****************************************************
  PortFWCMInformation:
  Message: Failed, Feature not supported for this adapter
  Port FWCM Status: ****************************************************
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:71
  ****************************************************
  PortFWCMInformation:
  Message: Failed, Driver/Firmware does not support this feature
  Port FWCM Status: ****************************************************
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:72
  ****************************************************
  PortFWCMInformation:
  Message: Failed, feature not supported for virtual port
  Port FWCM Status: ****************************************************
  $ calls
  $ orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:41
  ****************************************************
  PortFWCMInformation:
  Message: Failed, Feature disabled on the port
  Port FWCM Status: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsFWCMFeatureEnabled=1 orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  PortFWCMInformation:
  Message: Failed, FWCM settings read error
  Port FWCM Status: ****************************************************
  $ refuse_log 2 orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  PortFWCMInformation:
  Message: Failed, File not found
  Port FWCM Status: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s scmchk getcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  PortFWCMInformation:
  Message: Failed, Host not found
  Port FWCM Status: ****************************************************
  $ orfc-esxcli -t port -s scmchk getcli
  ****************************************************
  PortFWCMInformation:
  Message: Failed, Invalid parameter
  Port FWCM Status: ****************************************************
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t port -s scmchk getcli ?
  Usage: get [port identifier]\r (esc)

The codes of these runs.

  $ for port in 20 10 70 71 72 41 99; do code -t port -s scmchk get FC_21:00:00:24:ff:60:20:$port; done | paste -sd ' '
  0 45 35 45 51 52 6
