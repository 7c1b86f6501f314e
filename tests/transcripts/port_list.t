# The list of ports

One row for each FC and FCoE protocol, virtual ports among them; NIC and iSCSI functions are no ports.

  $ . "$TESTDIR/setup.sh"
  $ host lists
  $ orfc-esxcli -t port list
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  <structure typeName="PortList">
  <field name="Ports">
  <string>FC_21:00:00:24:ff:aa:00:01</string></field>
  </structure>
  <structure typeName="PortList">
  <field name="Ports">
  <string>FC_21:00:00:24:ff:aa:00:02</string></field>
  </structure>
  <structure typeName="PortList">
  <field name="Ports">
  <string>FC_20:00:00:24:ff:aa:00:03</string></field>
  </structure>
  <structure typeName="PortList">
  <field name="Ports">
  <string>FC_21:00:00:24:ff:aa:00:04</string></field>
  </structure>
  <structure typeName="PortList">
  <field name="Ports">
  <string>FC_21:01:00:24:ff:aa:00:04</string></field>
  </structure>
  </list>
  </output>
  $ orfc-esxcli -t port listcli
  ****************************************************
  PortList:
  Ports: FC_21:00:00:24:ff:aa:00:01
  PortList:
  Ports: FC_21:00:00:24:ff:aa:00:02
  PortList:
  Ports: FC_20:00:00:24:ff:aa:00:03
  PortList:
  Ports: FC_21:00:00:24:ff:aa:00:04
  PortList:
  Ports: FC_21:01:00:24:ff:aa:00:04
  ****************************************************

Words after the command are ignored.

  $ orfc-esxcli -t port list FC_nosuch -f x | cmp - <(orfc-esxcli -t port list)

A help word in the first place gives no document; only the `cli` command has a usage to show.

  $ for word in help /h /help -h -help '/?' HELP -Help; do orfc-esxcli -t port list $word; orfc-esxcli -t port listcli $word; done
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  $ orfc-esxcli -t port list ?
  $ orfc-esxcli -t port listcli ?
  Usage: list\r (esc)
  $ code -t port list help
  5

Only the list is requested from the library, once.

  $ rm -f journal
  $ orfc-esxcli -t port list >/dev/null
  $ calls --all
  VEXAPI_ExtSetScope
  VEXAPI_Initialize debugLevel=0 reserved=0
  VEXAPI_SetToolID toolId=11
  VEXAPI_SetToolVersion major=1 minor=3 sub=6 build=0
  VEXAPI_GetAdapterList
  VEXAPI_Uninitialize

A host without adapters has an empty list.

  $ host empty
  $ orfc-esxcli -t port list
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  $ orfc-esxcli -t port listcli
  ****************************************************
  ****************************************************

A host without even a list has no document.

  $ host no_list
  $ orfc-esxcli -t port list
  $ orfc-esxcli -t port listcli
  $ code -t port list
  14
