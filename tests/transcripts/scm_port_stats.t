# Congestion statistics of a port

A port of the first generation shows its last events, and 32-bit counters.

  $ . "$TESTDIR/setup.sh"
  $ orfc-esxcli -t port -s scmstats get FC_21:00:00:24:ff:13:c0:5e
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMStatistics">
  <field name="Message">
  <string>Success</string></field>
  <field name="Port FWCM Stats">
  <list type="structure">
  <structure typeName="PortFWCMStatsList">
  <field name="Data">
  <string>Node Name: 20:00:00:24:ff:13:c0:5e
        Port Name: 21:00:00:24:ff:13:c0:5e
        Port Id: 01:31:00
        Port State: Online
        Congestion Notification: Congestion, Delivery, Link Integrity
        Link Event Type: Loss Of Sync
        Link Event Threshold: 10000 (ms)
        Link Failure Count: 0
        Loss Of Sync Count: 4
        Loss Of Signal Count: 1
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 61
        Invalid CRC Count: 2
        Delivery Notification: Timeout
        Congestion Event Type: Credit Stall
        Congestion Event Period: 5000 (ms)
        Congestion Severity: Warning
        Congestion Alarm Count: 1
        Congestion Warning Count: 38
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:13:c0:5e
  ****************************************************
  PortFWCMStatistics:
  Message: Success
  Port FWCM Stats: PortFWCMStatsList:
  Data: Node Name: 20:00:00:24:ff:13:c0:5e
        Port Name: 21:00:00:24:ff:13:c0:5e
        Port Id: 01:31:00
        Port State: Online
        Congestion Notification: Congestion, Delivery, Link Integrity
        Link Event Type: Loss Of Sync
        Link Event Threshold: 10000 (ms)
        Link Failure Count: 0
        Loss Of Sync Count: 4
        Loss Of Signal Count: 1
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 61
        Invalid CRC Count: 2
        Delivery Notification: Timeout
        Congestion Event Type: Credit Stall
        Congestion Event Period: 5000 (ms)
        Congestion Severity: Warning
        Congestion Alarm Count: 1
        Congestion Warning Count: 38
  ****************************************************
  $ calls
  VEXAPI_IsFWCMFeatureEnabled
  VEXAPI_IsFWCMFeatureEnabled

A congested port of the second generation. The list is released.

  $ orfc-esxcli -t port -s scmstats get FC_21:00:00:24:ff:a6:77:0c
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="PortFWCMStatistics">
  <field name="Message">
  <string>Success</string></field>
  <field name="Port FWCM Stats">
  <list type="structure">
  <structure typeName="PortFWCMStatsList">
  <field name="Data">
  <string>Node Name: 20:00:00:24:ff:a6:77:0c
        Port Name: 21:00:00:24:ff:a6:77:0c
        Port Id: 02:33:00
        Port State: Online
        -----------------------------------
        Congestion Mitigation
        -----------------------------------
        Congestion Alarm Count: 4
        Congestion Warning Count: 219
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
        Delivery Failure Unknown Count: 7
        Delivery Timeout Count: 21
        Delivery Unable To Route Count: 1
        Delivery Failure Device Specific Count: 8
        Congestion Clear Count: 57
        Congestion Lost Credit Count: 9
        Congestion Credit Stall Count: 184
        Congestion Oversubscription Count: 26
        Congestion Device Specific Count: 10
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls --all | grep -v -e Initialize -e Uninit -e Tool -e Scope -e AdapterList
  VEXAPI_IsFWCMFeatureEnabled
  VEXAPI_GetSCMRStatisticsList
  VEXAPI_FreeSCMRStatisticsList
  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:a6:77:0c
  ****************************************************
  PortFWCMStatistics:
  Message: Success
  Port FWCM Stats: PortFWCMStatsList:
  Data: Node Name: 20:00:00:24:ff:a6:77:0c
        Port Name: 21:00:00:24:ff:a6:77:0c
        Port Id: 02:33:00
        Port State: Online
        -----------------------------------
        Congestion Mitigation
        -----------------------------------
        Congestion Alarm Count: 4
        Congestion Warning Count: 219
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
        Delivery Failure Unknown Count: 7
        Delivery Timeout Count: 21
        Delivery Unable To Route Count: 1
        Delivery Failure Device Specific Count: 8
        Congestion Clear Count: 57
        Congestion Lost Credit Count: 9
        Congestion Credit Stall Count: 184
        Congestion Oversubscription Count: 26
        Congestion Device Specific Count: 10
  ****************************************************

A healthy one has counted nothing.

  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:7e:2d:94
  ****************************************************
  PortFWCMStatistics:
  Message: Success
  Port FWCM Stats: PortFWCMStatsList:
  Data: Node Name: 20:00:00:24:ff:7e:2d:94
        Port Name: 21:00:00:24:ff:7e:2d:94
        Port Id: 01:30:00
        Port State: Online
        -----------------------------------
        Congestion Mitigation
        -----------------------------------
        Congestion Alarm Count: 0
        Congestion Warning Count: 0
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
        Delivery Failure Unknown Count: 0
        Delivery Timeout Count: 0
        Delivery Unable To Route Count: 0
        Delivery Failure Device Specific Count: 0
        Congestion Clear Count: 0
        Congestion Lost Credit Count: 0
        Congestion Credit Stall Count: 0
        Congestion Oversubscription Count: 0
        Congestion Device Specific Count: 0
  ****************************************************

A severity without a name is the bare word, and the next line runs on after it. A run of notifications
keeps its separators. The low 32 bits of 2^32 + 5 and of 2^64 - 1 are 5 and 4294967295.

  $ host congestion
  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:10
  ****************************************************
  PortFWCMStatistics:
  Message: Success
  Port FWCM Stats: PortFWCMStatsList:
  Data: Node Name: 20:00:00:24:ff:60:20:10
        Port Name: 21:00:00:24:ff:60:20:10
        Port Id: 01:31:0a
        Port State: Online
        Congestion Notification: Congestion, Delivery, 
        Link Event Type: Device Specific
        Link Event Threshold: 0 (ms)
        Link Failure Count: 1
        Loss Of Sync Count: 2
        Loss Of Signal Count: 3
        Primitive Sequence Protocol Error Count: 4
        Invalid Transmission Word Count: 5
        Invalid CRC Count: 4294967295
        Delivery Notification: Device Specific
        Congestion Event Type: Device Specific
        Congestion Event Period: 0 (ms)
  Reserved      Congestion Alarm Count: 5
        Congestion Warning Count: 4294967295
  ****************************************************

Event flags without a known bit give an empty line.

  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:11
  ****************************************************
  PortFWCMStatistics:
  Message: Success
  Port FWCM Stats: PortFWCMStatsList:
  Data: Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:11
        Port Id: 00:00:00
        Port State: Online
  
        Link Event Type: Unknown
        Link Event Threshold: 0 (ms)
        Link Failure Count: 0
        Loss Of Sync Count: 0
        Loss Of Signal Count: 0
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 0
        Invalid CRC Count: 0
        Delivery Notification: Unknown
        Congestion Event Type: Clear
        Congestion Event Period: 0 (ms)
        Congestion Severity: None
        Congestion Alarm Count: 0
        Congestion Warning Count: 0
  ****************************************************

A port that has both generations shows the second. Its counters have 64 bits.

  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  PortFWCMStatistics:
  Message: Success
  Port FWCM Stats: PortFWCMStatsList:
  Data: Node Name: 20:00:00:24:ff:60:20:20
        Port Name: 21:00:00:24:ff:60:20:20
        Port Id: 01:32:0b
        Port State: Offline
        -----------------------------------
        Congestion Mitigation
        -----------------------------------
        Congestion Alarm Count: 18446744073709551615
        Congestion Warning Count: 18446744073709551614
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
        Delivery Failure Unknown Count: 18446744073709551600
        Delivery Timeout Count: 18446744073709551599
        Delivery Unable To Route Count: 18446744073709551598
        Delivery Failure Device Specific Count: 18446744073709551597
        Congestion Clear Count: 18446744073709551596
        Congestion Lost Credit Count: 18446744073709551595
        Congestion Credit Stall Count: 18446744073709551594
        Congestion Oversubscription Count: 18446744073709551593
        Congestion Device Specific Count: 18446744073709551592
  ****************************************************

Only two nodes are checked. A head that is not the port's, with nothing after it: the report ends with the
names, and is a success.

  $ orfc-esxcli -t port -s scmstats get FC_21:00:00:24:ff:60:20:50
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

With a node after it: that one is shown, although it is a target's.

  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:51
  ****************************************************
  PortFWCMStatistics:
  Message: Success
  Port FWCM Stats: PortFWCMStatsList:
  Data: Node Name: 00:00:00:00:00:00:00:00
        Port Name: 21:00:00:24:ff:60:20:51
        Port Id: 00:00:00
        Port State: Online
        -----------------------------------
        Congestion Mitigation
        -----------------------------------
        Congestion Alarm Count: 5
        Congestion Warning Count: 0
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
        Delivery Failure Unknown Count: 0
        Delivery Timeout Count: 0
        Delivery Unable To Route Count: 0
        Delivery Failure Device Specific Count: 0
        Congestion Clear Count: 0
        Congestion Lost Credit Count: 0
        Congestion Credit Stall Count: 0
        Congestion Oversubscription Count: 0
        Congestion Device Specific Count: 0
  ****************************************************
