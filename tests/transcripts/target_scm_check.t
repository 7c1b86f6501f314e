# Congestion check of a target

A target after a congested port, and one with a virtual lane.

  $ . "$TESTDIR/setup.sh"
  $ orfc-esxcli -t target -v scmchk get FC_21:00:00:24:ff:a6:77:0c_Target_50:06:0e:80:12:4a:7c:20
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetFWCMInformation">
  <field name="Message">
  <string>Success</string></field>
  <field name="Target FWCM Status">
  <list type="structure">
  <structure typeName="TargetFWCMStatusList">
  <field name="Data">
  <string>Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:20
        Port Id: 02:40:00
        Target Number: 0
        Congestion Current State: Congested
        Link Integrity Events: Yes
        Seconds Since Last Event: 4
        Virtual Lane: NA
        I/O Throttling: Active
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:a6:77:0c_Target_50:06:0e:80:12:4a:7c:20
  ****************************************************
  TargetFWCMInformation:
  Message: Success
  Target FWCM Status: TargetFWCMStatusList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:20
        Port Id: 02:40:00
        Target Number: 0
        Congestion Current State: Congested
        Link Integrity Events: Yes
        Seconds Since Last Event: 4
        Virtual Lane: NA
        I/O Throttling: Active
  ****************************************************
  $ calls
  VEXAPI_IsFWCMFeatureEnabled
  VEXAPI_IsFWCMFeatureEnabled
  $ orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:0c:48:2e_Target_50:06:0e:80:12:4a:7c:30
  ****************************************************
  TargetFWCMInformation:
  Message: Success
  Target FWCM Status: TargetFWCMStatusList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:30
        Port Id: 02:61:00
        Target Number: 1
        Congestion Current State: Healthy
        Link Integrity Events: No
        Seconds Since Last Event: 0
        Virtual Lane: Slow
        I/O Throttling: None
  ****************************************************

Only a Birch has lanes; one that is capable of them and doesn't use them says so.

  $ host congestion
  $ orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:60:20:31_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMInformation:
  Message: Success
  Target FWCM Status: TargetFWCMStatusList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
        Congestion Current State: Healthy
        Link Integrity Events: No
        Seconds Since Last Event: 0
        Virtual Lane: NA
        I/O Throttling: Disabled
  ****************************************************
  $ orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:60:20:32_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMInformation:
  Message: Success
  Target FWCM Status: TargetFWCMStatusList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
        Congestion Current State: Healthy
        Link Integrity Events: No
        Seconds Since Last Event: 0
        Virtual Lane: Non-Operational
        I/O Throttling: None
  ****************************************************
  $ orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:60:20:33_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMInformation:
  Message: Success
  Target FWCM Status: TargetFWCMStatusList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
        Congestion Current State: Healthy
        Link Integrity Events: No
        Seconds Since Last Event: 4294967295
        Virtual Lane: Normal
        I/O Throttling: None
  ****************************************************

The check is of the second generation alone.

  $ rm -f journal
  $ orfc-esxcli -t target -v scmchk get FC_21:00:00:24:ff:60:20:10_Target_50:06:0e:80:12:4a:7c:10
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetFWCMInformation">
  <field name="Message">
  <string>Failed, Driver/Firmware does not support this feature</string></field>
  <field name="Target FWCM Status">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:60:20:70_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMInformation:
  Message: Failed, Feature not supported for this adapter
  Target FWCM Status: ****************************************************
  $ orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:60:20:71_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMInformation:
  Message: Failed, Driver/Firmware does not support this feature
  Target FWCM Status: ****************************************************
  $ orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:60:20:72_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMInformation:
  Message: Failed, feature not supported for virtual port
  Target FWCM Status: ****************************************************
  $ calls
  $ orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:60:20:41_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMInformation:
  Message: Failed, Feature disabled on the port
  Target FWCM Status: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsFWCMFeatureEnabled=1 orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:60:20:20_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMInformation:
  Message: Failed, FWCM settings read error
  Target FWCM Status: ****************************************************
  $ refuse_log 2 orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:60:20:20_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMInformation:
  Message: Failed, File not found
  Target FWCM Status: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t target -v scmchk getcli FC_21:00:00:24:ff:60:20:20_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMInformation:
  Message: Failed, Host not found
  Target FWCM Status: ****************************************************
  $ orfc-esxcli -t target -v scmchk getcli
  ****************************************************
  TargetFWCMInformation:
  Message: Failed, Invalid parameter
  Target FWCM Status: ****************************************************
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t target -v scmchk getcli ?
  Usage: get [port identifier]\r (esc)

The codes of these runs.

  $ for port in 20 10 70 71 72 41 99; do code -t target -v scmchk get FC_21:00:00:24:ff:60:20:${port}_Target_50:06:0e:80:12:4a:7c:10; done | paste -sd ' '
  0 45 35 45 51 52 6
