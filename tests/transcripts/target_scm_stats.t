# Congestion statistics of a target

After a port of the first generation: the last events, and the counters that the library keeps of the target.

  $ . "$TESTDIR/setup.sh"
  $ orfc-esxcli -t target -v scmstats get FC_21:00:00:24:ff:13:c0:5e_Target_50:06:0e:80:12:4a:7c:10
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetFWCMStatistics">
  <field name="Message">
  <string>Success</string></field>
  <field name="Target FWCM Stats">
  <list type="structure">
  <structure typeName="TargetFWCMStatsList">
  <field name="Data">
  <string>Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
        Congestion Notification: Delivery, Link Integrity, Peer Congestion
        Link Event Type: Invalid CRC
        Link Event Threshold: 30000 (ms)
        Link Failure Count: 1
        Link Unknown Event Count: 2
        Loss Of Sync Count: 0
        Loss Of Signal Count: 0
        Link Device Specific Event Count: 0
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 0
        Invalid CRC Count: 8
        Delivery Notification: Unable To Route
        Delivery Failure Unknown Count: 0
        Delivery Timeout Count: 3
        Delivery Unable To Route Count: 0
        Delivery Failure Device Specific Count: 0
        Peer Congestion Event Type: Oversubscription
        Peer Congestion Event Period: 20000 (ms)
        Peer Congestion Clear Count: 0
        Peer Congestion Lost Credit Count: 0
        Peer Congestion Credit Stall Count: 41
        Peer Congestion Oversubscription Count: 0
        Peer Congestion Device Specific Count: 0
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:13:c0:5e_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Success
  Target FWCM Stats: TargetFWCMStatsList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
        Congestion Notification: Delivery, Link Integrity, Peer Congestion
        Link Event Type: Invalid CRC
        Link Event Threshold: 30000 (ms)
        Link Failure Count: 1
        Link Unknown Event Count: 2
        Loss Of Sync Count: 0
        Loss Of Signal Count: 0
        Link Device Specific Event Count: 0
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 0
        Invalid CRC Count: 8
        Delivery Notification: Unable To Route
        Delivery Failure Unknown Count: 0
        Delivery Timeout Count: 3
        Delivery Unable To Route Count: 0
        Delivery Failure Device Specific Count: 0
        Peer Congestion Event Type: Oversubscription
        Peer Congestion Event Period: 20000 (ms)
        Peer Congestion Clear Count: 0
        Peer Congestion Lost Credit Count: 0
        Peer Congestion Credit Stall Count: 41
        Peer Congestion Oversubscription Count: 0
        Peer Congestion Device Specific Count: 0
  ****************************************************
  $ calls | sed 's/ word=[0-9]*//'
  VEXAPI_IsFWCMFeatureEnabled
  VEXAPI_GetPortStatisticsFC reserved=0 SelectorType=2
  VEXAPI_IsFWCMFeatureEnabled
  VEXAPI_GetPortStatisticsFC reserved=0 SelectorType=2

After one of the second generation: the target's node of the port's list.

  $ orfc-esxcli -t target -v scmstats get FC_21:00:00:24:ff:a6:77:0c_Target_50:06:0e:80:12:4a:7c:20
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetFWCMStatistics">
  <field name="Message">
  <string>Success</string></field>
  <field name="Target FWCM Stats">
  <list type="structure">
  <structure typeName="TargetFWCMStatsList">
  <field name="Data">
  <string>Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:20
        Port Id: 02:40:00
        Target Number: 0
        -----------------------------------
        Congestion Mitigation
        -----------------------------------
        Cleared Congestion Count: 57
        Throttled Up Count: 298
        Throttled Down Count: 312
        Bottomed Out Count: 3
        Returned Busy Count: 11
        -----------------------------------
        Rx Fabric Performance Impact 
        Notifications
        -----------------------------------
        Link Failure Count: 1
        Link Unknown Event Count: 0
        Loss Of Sync Count: 6
        Loss Of Signal Count: 2
        Link Device Specific Event Count: 5
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 94
        Invalid CRC Count: 13
        Link Uncorrectable FEC Count: 4294967301
        Congestion Clear Count: 57
        Congestion Lost Credit Count: 9
        Congestion Credit Stall Count: 184
        Congestion Oversubscription Count: 26
        Congestion Device Specific Count: 10
        PUN Count: 33
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:a6:77:0c_Target_50:06:0e:80:12:4a:7c:20
  ****************************************************
  TargetFWCMStatistics:
  Message: Success
  Target FWCM Stats: TargetFWCMStatsList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:20
        Port Id: 02:40:00
        Target Number: 0
        -----------------------------------
        Congestion Mitigation
        -----------------------------------
        Cleared Congestion Count: 57
        Throttled Up Count: 298
        Throttled Down Count: 312
        Bottomed Out Count: 3
        Returned Busy Count: 11
        -----------------------------------
        Rx Fabric Performance Impact 
        Notifications
        -----------------------------------
        Link Failure Count: 1
        Link Unknown Event Count: 0
        Loss Of Sync Count: 6
        Loss Of Signal Count: 2
        Link Device Specific Event Count: 5
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 94
        Invalid CRC Count: 13
        Link Uncorrectable FEC Count: 4294967301
        Congestion Clear Count: 57
        Congestion Lost Credit Count: 9
        Congestion Credit Stall Count: 184
        Congestion Oversubscription Count: 26
        Congestion Device Specific Count: 10
        PUN Count: 33
  ****************************************************
  $ calls --all | grep -e Free -e SCMR | sort | uniq -c | sed 's/^ *//'
  2 VEXAPI_FreeSCMRStatisticsList
  2 VEXAPI_GetSCMRStatisticsList

The words of a target: a separator after the link's word, a reserved reason, and an empty line for a flag that
only ports have.

  $ host congestion
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:10_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Success
  Target FWCM Stats: TargetFWCMStatsList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
        Congestion Notification: Delivery, Link Integrity, 
        Link Event Type: Device Specific
        Link Event Threshold: 0 (ms)
        Link Failure Count: 1
        Link Unknown Event Count: 16
        Loss Of Sync Count: 2
        Loss Of Signal Count: 3
        Link Device Specific Event Count: 4294967295
        Primitive Sequence Protocol Error Count: 4
        Invalid Transmission Word Count: 5
        Invalid CRC Count: 6
        Delivery Notification: Reserved
        Delivery Failure Unknown Count: 7
        Delivery Timeout Count: 8
        Delivery Unable To Route Count: 9
        Delivery Failure Device Specific Count: 10
        Peer Congestion Event Type: Reserved
        Peer Congestion Event Period: 4294967295 (ms)
        Peer Congestion Clear Count: 11
        Peer Congestion Lost Credit Count: 12
        Peer Congestion Credit Stall Count: 13
        Peer Congestion Oversubscription Count: 14
        Peer Congestion Device Specific Count: 15
  ****************************************************
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:11_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Success
  Target FWCM Stats: TargetFWCMStatsList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
  
        Link Event Type: Unknown
        Link Event Threshold: 0 (ms)
        Link Failure Count: 0
        Link Unknown Event Count: 0
        Loss Of Sync Count: 0
        Loss Of Signal Count: 0
        Link Device Specific Event Count: 0
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 0
        Invalid CRC Count: 0
        Delivery Notification: Unknown
        Delivery Failure Unknown Count: 0
        Delivery Timeout Count: 0
        Delivery Unable To Route Count: 0
        Delivery Failure Device Specific Count: 0
        Peer Congestion Event Type: Clear
        Peer Congestion Event Period: 0 (ms)
        Peer Congestion Clear Count: 0
        Peer Congestion Lost Credit Count: 0
        Peer Congestion Credit Stall Count: 0
        Peer Congestion Oversubscription Count: 0
        Peer Congestion Device Specific Count: 0
  ****************************************************

Counters at the top of their 64 bits.

  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:20_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Success
  Target FWCM Stats: TargetFWCMStatsList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 12
        -----------------------------------
        Congestion Mitigation
        -----------------------------------
        Cleared Congestion Count: 18446744073709551613
        Throttled Up Count: 18446744073709551611
        Throttled Down Count: 18446744073709551612
        Bottomed Out Count: 18446744073709551609
        Returned Busy Count: 18446744073709551610
        -----------------------------------
        Rx Fabric Performance Impact 
        Notifications
        -----------------------------------
        Link Failure Count: 18446744073709551608
        Link Unknown Event Count: 18446744073709551607
        Loss Of Sync Count: 18446744073709551606
        Loss Of Signal Count: 18446744073709551605
        Link Device Specific Event Count: 18446744073709551601
        Primitive Sequence Protocol Error Count: 18446744073709551604
        Invalid Transmission Word Count: 18446744073709551603
        Invalid CRC Count: 18446744073709551602
        Link Uncorrectable FEC Count: 18446744073709551590
        Congestion Clear Count: 18446744073709551596
        Congestion Lost Credit Count: 18446744073709551595
        Congestion Credit Stall Count: 18446744073709551594
        Congestion Oversubscription Count: 18446744073709551593
        Congestion Device Specific Count: 18446744073709551592
        PUN Count: 18446744073709551591
  ****************************************************

The head of the list is never compared, even where it has the target's names; without another node the report
ends with the names.

  $ orfc-esxcli -t target -v scmstats get FC_21:00:00:24:ff:60:20:50_Target_50:06:0e:80:12:4a:7c:10
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetFWCMStatistics">
  <field name="Message">
  <string>Success</string></field>
  <field name="Target FWCM Stats">
  <list type="structure">
  <structure typeName="TargetFWCMStatsList">
  <field name="Data">
  <string>Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:53_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Success
  Target FWCM Stats: TargetFWCMStatsList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
  ****************************************************
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:51_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Success
  Target FWCM Stats: TargetFWCMStatsList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
        -----------------------------------
        Congestion Mitigation
        -----------------------------------
        Cleared Congestion Count: 0
        Throttled Up Count: 0
        Throttled Down Count: 0
        Bottomed Out Count: 0
        Returned Busy Count: 0
        -----------------------------------
        Rx Fabric Performance Impact 
        Notifications
        -----------------------------------
        Link Failure Count: 0
        Link Unknown Event Count: 0
        Loss Of Sync Count: 0
        Loss Of Signal Count: 0
        Link Device Specific Event Count: 0
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 0
        Invalid CRC Count: 0
        Link Uncorrectable FEC Count: 0
        Congestion Clear Count: 0
        Congestion Lost Credit Count: 0
        Congestion Credit Stall Count: 0
        Congestion Oversubscription Count: 0
        Congestion Device Specific Count: 0
        PUN Count: 6
  ****************************************************

What is refused, and what can fail.

  $ rm -f journal
  $ orfc-esxcli -t target -v scmstats get FC_21:00:00:24:ff:60:20:70_Target_50:06:0e:80:12:4a:7c:10
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetFWCMStatistics">
  <field name="Message">
  <string>Failed, Feature not supported for this adapter</string></field>
  <field name="Target FWCM Stats">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:71_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, Driver/Firmware does not support this feature
  Target FWCM Stats: ****************************************************
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:72_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, feature not supported for virtual port
  Target FWCM Stats: ****************************************************
  $ calls
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:41_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, Feature disabled on the port
  Target FWCM Stats: ****************************************************
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:52_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, Statistics read error
  Target FWCM Stats: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsFWCMFeatureEnabled=1 orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:20_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, FWCM settings read error
  Target FWCM Stats: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetSCMRStatisticsList=1 orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:20_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, Statistics read error
  Target FWCM Stats: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetPortStatisticsFC=1 orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:10_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, Statistics read error
  Target FWCM Stats: ****************************************************
  $ refuse_log 2 orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:10_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, File not found
  Target FWCM Stats: ****************************************************
  $ refuse_log 3 orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:10_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, File not found
  Target FWCM Stats: ****************************************************
  $ refuse_log 3 orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:20_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, File not found
  Target FWCM Stats: ****************************************************

A second document follows when the list can't be released.

  $ VEXAPI_SIM_FAULTS=VEXAPI_FreeSCMRStatisticsList=1 orfc-esxcli -t target -v scmstats get FC_21:00:00:24:ff:60:20:53_Target_50:06:0e:80:12:4a:7c:10
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetFWCMStatistics">
  <field name="Message">
  <string>Success</string></field>
  <field name="Target FWCM Stats">
  <list type="structure">
  <structure typeName="TargetFWCMStatsList">
  <field name="Data">
  <string>Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetFWCMStatistics">
  <field name="Message">
  <string>Failed, Statistics list clear error</string></field>
  <field name="Target FWCM Stats">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ refuse_log 4 orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:53_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Success
  Target FWCM Stats: TargetFWCMStatsList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:00
        Target Number: 0
  ****************************************************
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, File not found
  Target FWCM Stats: ****************************************************

Identifiers and help words.

  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, Invalid parameter
  Target FWCM Stats: ****************************************************
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t target -v scmstats get
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetFWCMStatistics">
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  <field name="Target FWCM Stats">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t target -v scmstats getcli help
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, Unknown
  Target FWCM Stats: ****************************************************
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t target -v scmstats getcli ?
  Usage: get [port identifier]\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:20_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetFWCMStatistics:
  Message: Failed, Host not found
  Target FWCM Stats: ****************************************************

The codes of these runs.

  $ for port in 20 10 70 71 72 41 52 99; do code -t target -v scmstats get FC_21:00:00:24:ff:60:20:${port}_Target_50:06:0e:80:12:4a:7c:10; done | paste -sd ' '
  0 0 35 45 51 52 38 6
  $ VEXAPI_SIM_FAULTS=VEXAPI_FreeSCMRStatisticsList=1 code -t target -v scmstats get FC_21:00:00:24:ff:60:20:53_Target_50:06:0e:80:12:4a:7c:10
  39
