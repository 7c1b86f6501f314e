# Statistics of a target

The counters of the link to a target. The library wants to be told its port name, in a record that is otherwise
zero, and the word of the port's handle in place of the handle.

  $ . "$TESTDIR/setup.sh"
  $ host targets
  $ target=FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10
  $ orfc-esxcli -t target -v stats get $target
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetStatistics">
  <field name="Message">
  <string>Success</string></field>
  <field name="Target Stats">
  <list type="structure">
  <structure typeName="TargetStatsList">
  <field name="Data">
  <string>Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:0a
        Target Number: 0
        Link Failure Count: 2
        Loss Of Sync Count: 5
        Loss Of Signal Count: 4294967295
        Primitive Sequence Protocol Error Count: 7
        Invalid Transmission Word Count: 40
        Invalid CRC Count: 1
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ grep -o '"records":{"selector":{[^}]*}' journal
  "records":{"selector":{"SelectorType":2,"PortName":"50:06:0e:80:12:4a:7c:10"}
  $ calls | sed 's/word=[0-9]*/word=NUMBER/'
  VEXAPI_GetPortStatisticsFC word=NUMBER reserved=0 SelectorType=2

A target of a virtual port has them too.

  $ orfc-esxcli -t target -v stats getcli FC_28:24:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetStatistics:
  Message: Success
  Target Stats: TargetStatsList:
  Data: Node Name: 50:06:0e:80:12:4a:7c:00
        Port Name: 50:06:0e:80:12:4a:7c:10
        Port Id: 01:40:0a
        Target Number: 0
        Link Failure Count: 2
        Loss Of Sync Count: 5
        Loss Of Signal Count: 4294967295
        Primitive Sequence Protocol Error Count: 7
        Invalid Transmission Word Count: 40
        Invalid CRC Count: 1
  ****************************************************

The failures.

  $ VEXAPI_SIM_FAULTS=VEXAPI_GetPortStatisticsFC=118 orfc-esxcli -t target -v stats getcli $target
  ****************************************************
  TargetStatistics:
  Message: Failed, Statistics read error
  Target Stats: ****************************************************
  $ refuse_log 2 orfc-esxcli -t target -v stats getcli $target | grep Message
  Message: Failed, File not found
  $ orfc-esxcli -t target -v stats getcli FC_21:00:00:24:ff:cc:00:01
  ****************************************************
  TargetStatistics:
  Message: Failed, Invalid parameter
  Target Stats: ****************************************************
  Usage: get [port identifier]\r (esc)
