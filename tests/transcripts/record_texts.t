# Texts of the library's records

A text that fills its array has no terminator, and is shown whole.

  $ . "$TESTDIR/setup.sh"
  $ host texts
  $ orfc-esxcli -t adapter listcli
  ****************************************************
  AdapterList:
  Adapters: Adapter_ABCDEFGHIJKLMNOPQRSTUVWXYZ012345_abcdefghijklmnopqrstuvwxyz678901
  AdapterList:
  Adapters: Adapter_A<B>&"C"_%s%n%5$d
  AdapterList:
  Adapters: Adapter_\xc3\xbcber_\xc2\xa7 1 (esc)
  ****************************************************

Nothing is escaped, in XML neither by default, and a percent sign is a character like others.

  $ orfc-esxcli -t adapter list
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  <structure typeName="AdapterList">
  <field name="Adapters">
  <string>Adapter_ABCDEFGHIJKLMNOPQRSTUVWXYZ012345_abcdefghijklmnopqrstuvwxyz678901</string></field>
  </structure>
  <structure typeName="AdapterList">
  <field name="Adapters">
  <string>Adapter_A<B>&"C"_%s%n%5$d</string></field>
  </structure>
  <structure typeName="AdapterList">
  <field name="Adapters">
  <string>Adapter_\xc3\xbcber_\xc2\xa7 1</string></field> (esc)
  </structure>
  </list>
  </output>

With ORFC_XML=strict, any parser takes the document.

  $ ORFC_XML=strict orfc-esxcli -t adapter list | grep A.lt
  <string>Adapter_A&lt;B&gt;&amp;&quot;C&quot;_%s%n%5$d</string></field>
