# Vital product data

Of a real card, sorted by keyword. What is between the items that the walk knows is not shown.

  $ . "$TESTDIR/setup.sh"
  $ host vpd
  $ port=FC_21:00:00:24:ff:80:00:0
  $ orfc-esxcli -t port -s vpd getcli ${port}1
  ****************************************************
  VPDInformation:
  Message: Success
  VPD Data: TagList:
  Tag: Engineering Date Code
  Value: 106679-15
  TagList:
  Tag: Manufacturing Id
  Value: 14e4
  TagList:
  Tag: Product Identifier
  Value: Broadcom NetXtreme Gigabit Ethernet Controller
  TagList:
  Tag: Part Number
  Value: BCM95719
  TagList:
  Tag: Serial Number
  Value: 0123456789
  ****************************************************
  $ calls
  VEXAPI_GetVpd word=1515257856 reserved=0 size=1024

The bus specification's example, a virtual machine's, and one that knows none of our keywords but the identifier.

  $ orfc-esxcli -t port -s vpd get ${port}2
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="VPDInformation">
  <field name="Message">
  <string>Success</string></field>
  <field name="VPD Data">
  <list type="structure">
  <structure typeName="TagList">
  <field name="Tag">
  <string>Engineering Date Code</string></field>
  <field name="Value">
  <string>4950262536</string></field>
  </structure>
  <structure typeName="TagList">
  <field name="Tag">
  <string>Manufacturing Id</string></field>
  <field name="Value">
  <string>1037</string></field>
  </structure>
  <structure typeName="TagList">
  <field name="Tag">
  <string>Product Identifier</string></field>
  <field name="Value">
  <string>ABCD Super-Fast Widget Controller</string></field>
  </structure>
  <structure typeName="TagList">
  <field name="Tag">
  <string>Part Number</string></field>
  <field name="Value">
  <string>6181682A</string></field>
  </structure>
  <structure typeName="TagList">
  <field name="Tag">
  <string>Serial Number</string></field>
  <field name="Value">
  <string>00000194</string></field>
  </structure>
  <structure typeName="TagList">
  <field name="Tag">
  <string>Efi Driver Version</string></field>
  <field name="Value">
  <string>65A01</string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s vpd getcli ${port}3
  ****************************************************
  VPDInformation:
  Message: Success
  VPD Data: TagList:
  Tag: Engineering Date Code
  Value: 4242
  TagList:
  Tag: Product Identifier
  Value: testname
  TagList:
  Tag: Part Number
  Value: 42
  ****************************************************
  $ orfc-esxcli -t port -s vpd getcli ${port}4
  ****************************************************
  VPDInformation:
  Message: Success
  VPD Data: TagList:
  Tag: Manufacturing Id
  Value: Sample VPD Manufacture ID 1
  TagList:
  Tag: Product Identifier
  Value: Sample PCI Component
  TagList:
  Tag: Part Number
  Value: Sample VPD Part Number 1
  TagList:
  Tag: Serial Number
  Value: Sample VPD Serial Number 1
  TagList:
  Tag: Miscellaneous Info
  Value: Sample Extra Data in VPD                 
  TagList:
  Tag: Efi Driver Version
  Value: Sample RW Data in VPD   
  ****************************************************

A size that cuts the data off, and one that lies, stay inside the buffer.

  $ orfc-esxcli -t port -s vpd getcli ${port}5
  ****************************************************
  VPDInformation:
  Message: Success
  VPD Data: TagList:
  Tag: Engineering Date Code
  Value: 106679-15
  TagList:
  Tag: Product Identifier
  Value: Broadcom NetXtreme Gigabit Ethernet Controller
  TagList:
  Tag: Part Number
  Value: BCM95719
  ****************************************************
  $ orfc-esxcli -t port -s vpd getcli ${port}6 > lying; orfc-esxcli -t port -s vpd getcli ${port}1 | cmp - lying
  $ orfc-esxcli -t port -s vpd getcli ${port}7
  ****************************************************
  VPDInformation:
  Message: Success
  VPD Data: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetVpd=1 orfc-esxcli -t port -s vpd getcli ${port}1
  ****************************************************
  VPDInformation:
  Message: Failed, VPD failed
  VPD Data: ****************************************************
