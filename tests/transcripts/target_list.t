# The list of targets

A target is named by the port that sees it and by its own name. One that several ports see is several targets;
what a network function sees is none.

  $ . "$TESTDIR/setup.sh"
  $ host targets
  $ orfc-esxcli -t target list
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  <structure typeName="TargetList">
  <field name="Targets">
  <string>FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10</string></field>
  </structure>
  <structure typeName="TargetList">
  <field name="Targets">
  <string>FC_21:00:00:24:ff:cc:00:01_Target_50:0a:09:81:a1:c3:40:10</string></field>
  </structure>
  <structure typeName="TargetList">
  <field name="Targets">
  <string>FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:14</string></field>
  </structure>
  <structure typeName="TargetList">
  <field name="Targets">
  <string>FC_21:00:00:24:ff:cc:00:01_Target_50:00:d3:10:04:5e:ac:21</string></field>
  </structure>
  <structure typeName="TargetList">
  <field name="Targets">
  <string>FC_28:24:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10</string></field>
  </structure>
  <structure typeName="TargetList">
  <field name="Targets">
  <string>FC_20:00:00:24:ff:cc:00:02_Target_50:06:0e:80:12:4a:7c:10</string></field>
  </structure>
  <structure typeName="TargetList">
  <field name="Targets">
  <string>FC_21:00:00:24:ff:cc:00:03_Target_50:06:0e:80:12:4a:7c:10</string></field>
  </structure>
  </list>
  </output>
  $ orfc-esxcli -t target listcli
  ****************************************************
  TargetList:
  Targets: FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10
  TargetList:
  Targets: FC_21:00:00:24:ff:cc:00:01_Target_50:0a:09:81:a1:c3:40:10
  TargetList:
  Targets: FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:14
  TargetList:
  Targets: FC_21:00:00:24:ff:cc:00:01_Target_50:00:d3:10:04:5e:ac:21
  TargetList:
  Targets: FC_28:24:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10
  TargetList:
  Targets: FC_20:00:00:24:ff:cc:00:02_Target_50:06:0e:80:12:4a:7c:10
  TargetList:
  Targets: FC_21:00:00:24:ff:cc:00:03_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************

The lab host has targets after many ports, and every line of the list finds its target.

  $ unset VEXAPI_SIM_HOST
  $ orfc-esxcli -t target listcli | sed -n 's/^Targets: //p' >targets
  $ grep -c . targets
  23
  $ while read -r target; do orfc-esxcli -t target -v info getcli "$target"; done <targets | grep -c '^Message: Success'
  23

No targets are an empty list. Without a host there is no document; a help word shows the usage of the second leaf.

  $ host lists
  $ orfc-esxcli -t target list
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  $ orfc-esxcli -t target listcli
  ****************************************************
  ****************************************************
  $ host no_list
  $ orfc-esxcli -t target list
  $ orfc-esxcli -t target listcli
  $ code -t target list
  14
  $ orfc-esxcli -t target list help
  $ orfc-esxcli -t target listcli help
  Usage: list\r (esc)
  $ code -t target list help
  5
