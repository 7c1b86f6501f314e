# The highest link speed to a target

The adapter sends to this target at 32 Gbps.

  $ . "$TESTDIR/setup.sh"
  $ host targets
  $ target=FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10
  $ orfc-esxcli -t target -v iidma get $target
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetIIDMAInformation">
  <field name="Message">
  <string>Success</string></field>
  <field name="Target IIDMA Info">
  <list type="structure">
  <structure typeName="TargetIIDMAInfoList">
  <field name="Data">
  <string>Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:0a
        Target Number: 0
        Target Maximum Link Speed: 32_Gbps
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_GetTargetLinkSpeed targetNumber=0

A change is in force at once, and the next run shows it.

  $ orfc-esxcli -t target -v iidma setcli $target 16_gbps
  ****************************************************
  TargetIIDMAInformation:
  Message: Success
  Target IIDMA Info: TargetIIDMAInfoList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:0a
        Target Number: 0
        Target Maximum Link Speed: 16_Gbps
  ****************************************************
  $ calls
  VEXAPI_GetTargetLinkSpeed targetNumber=0
  VEXAPI_SetTargetLinkSpeed targetNumber=0 speed=22
  $ orfc-esxcli -t target -v iidma getcli $target | grep Speed
        Target Maximum Link Speed: 16_Gbps

The speed that is in force already is not written.

  $ rm journal
  $ orfc-esxcli -t target -v iidma setcli $target 16_Gbps | grep -e Message -e Speed
  Message: Success
        Target Maximum Link Speed: 16_Gbps
  $ calls
  VEXAPI_GetTargetLinkSpeed targetNumber=0

A misspelt speed is 1 Gbps. On this adapter, which doesn't name 1 Gbps among its speeds, it passes, as all below
the highest do; a missing speed is refused.

  $ orfc-esxcli -t target -v iidma setcli $target 64Gbps | grep -e Message -e Speed
  Message: Success
        Target Maximum Link Speed: 1_Gbps
  $ rm journal
  $ orfc-esxcli -t target -v iidma set $target
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetIIDMAInformation">
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  <field name="Target IIDMA Info">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t target -v iidma setcli $target
  ****************************************************
  TargetIIDMAInformation:
  Message: Failed, Invalid parameter
  Target IIDMA Info: ****************************************************
  Usage: set [port identifier]\r (esc)

What the adapter can't do is refused, and 10 Gbps always.

  $ orfc-esxcli -t target -v iidma setcli $target 64_Gbps
  ****************************************************
  TargetIIDMAInformation:
  Message: Failed, Speed not supported for this adapter
  Target IIDMA Info: ****************************************************
  $ orfc-esxcli -t target -v iidma setcli $target 10_Gbps | grep Message
  Message: Failed, Speed not supported for this adapter
  $ calls

A target that is faster than the adapter shows the adapter's highest speed.

  $ orfc-esxcli -t target -v iidma getcli FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:14 | grep Speed
        Target Maximum Link Speed: 32_Gbps

An adapter of 10 Gbps can be read.

  $ converged=FC_20:00:00:24:ff:cc:00:02_Target_50:06:0e:80:12:4a:7c:10
  $ orfc-esxcli -t target -v iidma getcli $converged | grep Speed
        Target Maximum Link Speed: 10_Gbps
  $ orfc-esxcli -t target -v iidma setcli $converged
  ****************************************************
  TargetIIDMAInformation:
  Message: Failed, Read-Only feature for this adapter
  Target IIDMA Info: ****************************************************

A virtual port has no speed of its own.

  $ virtual=FC_28:24:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10
  $ orfc-esxcli -t target -v iidma getcli $virtual
  ****************************************************
  TargetIIDMAInformation:
  Message: Failed, feature not supported for virtual port
  Target IIDMA Info: ****************************************************
  $ code -t target -v iidma set $virtual
  51

The library fails, or its log can't be opened.

  $ VEXAPI_SIM_FAULTS=VEXAPI_GetTargetLinkSpeed=9 orfc-esxcli -t target -v iidma getcli $target | grep Message
  Message: Failed, IIDMA read failed
  $ VEXAPI_SIM_FAULTS=VEXAPI_SetTargetLinkSpeed=9 orfc-esxcli -t target -v iidma setcli $target 8_Gbps | grep Message
  Message: Failed, IIDMA set failed
  $ refuse_log 2 orfc-esxcli -t target -v iidma getcli $target | grep Message
  Message: Failed, File not found
  $ refuse_log 3 orfc-esxcli -t target -v iidma setcli $target 8_Gbps | grep Message
  Message: Failed, File not found

The trace of the failed change reports a read.

  $ VEXAPI_SIM_FAULTS=VEXAPI_SetTargetLinkSpeed=9 ORFC_DEBUG_LEVEL=4 orfc-esxcli -t target -v iidma set $target 8_Gbps >/dev/null
  $ messages /var/tmp/viplugin.log
  FCTargetIIDMACmdsProcessor::CmdSetCommon: Get Link Speed failed err=9\r (esc)
  FCTargetIIDMACmdsProcessor::DisplayError: Failed, IIDMA set failed (result 20)\r (esc)
