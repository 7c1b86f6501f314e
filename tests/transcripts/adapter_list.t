# The list of adapters

One row per adapter, as XML for `esxcli` and as text for users.

  $ . "$TESTDIR/setup.sh"
  $ host lists
  $ orfc-esxcli -t adapter list
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  <structure typeName="AdapterList">
  <field name="Adapters">
  <string>Adapter_ORV2872_BFK2101S04711</string></field>
  </structure>
  <structure typeName="AdapterList">
  <field name="Adapters">
  <string>Adapter_ORV8362_RFD1402C10050</string></field>
  </structure>
  <structure typeName="AdapterList">
  <field name="Adapters">
  <string>Adapter_ORV2742_AFE1825K03347</string></field>
  </structure>
  </list>
  </output>
  $ orfc-esxcli -t adapter listcli
  ****************************************************
  AdapterList:
  Adapters: Adapter_ORV2872_BFK2101S04711
  AdapterList:
  Adapters: Adapter_ORV8362_RFD1402C10050
  AdapterList:
  Adapters: Adapter_ORV2742_AFE1825K03347
  ****************************************************

Words after the command are ignored.

  $ orfc-esxcli -t adapter list FC_nosuch -f x | cmp - <(orfc-esxcli -t adapter list)

A help word in the first place gives no document; only the `cli` command has a usage to show.

  $ for word in help /h /help -h -help '/?' HELP -Help; do orfc-esxcli -t adapter list $word; orfc-esxcli -t adapter listcli $word; done
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  Usage: list\r (esc)
  $ orfc-esxcli -t adapter list ?
  $ orfc-esxcli -t adapter listcli ?
  Usage: list\r (esc)
  $ code -t adapter list help
  5
  $ code -t adapter list '?'
  0

A help word after another word has no special meaning.

  $ orfc-esxcli -t adapter listcli x help | cmp - <(orfc-esxcli -t adapter listcli)

A host without adapters has an empty list.

  $ host empty
  $ orfc-esxcli -t adapter list
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  $ orfc-esxcli -t adapter listcli
  ****************************************************
  ****************************************************

A host without even a list has no document.

  $ host no_list
  $ orfc-esxcli -t adapter list
  $ orfc-esxcli -t adapter listcli
  $ code -t adapter list
  14
