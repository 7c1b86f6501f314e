# Transceivers: raw memory

Both pages, 256 bytes each, a blank after every byte.

  $ . "$TESTDIR/setup.sh"
  $ host transceivers
  $ orfc-esxcli -t port -s dmi getraw FC_21:00:00:24:ff:60:00:05
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="DMIInformation">
  <field name="Message">
  <string>Success</string></field>
  <field name="Dmi Info">
  <list type="structure">
  <structure typeName="DMIInfoList">
  <field name="Dmi A0Data In Hex">
  <string>03 04 21 00 00 00 00 00 04 00 00 00 67 00 00 00 00 00 01 00 41 6d 70 68 65 6e 6f 6c 20 20 20 20 20 20 20 20 00 41 50 48 35 37 31 35 34 30 30 30 37 20 20 20 20 20 20 20 4d 20 20 20 01 00 00 fc 00 00 00 00 41 50 46 31 31 32 35 30 30 37 34 39 41 33 20 20 31 31 30 36 32 34 20 20 00 00 00 c6 ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff 00 </string></field>
  <field name="Dmi A2Data In Hex">
  <string>00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s dmi getrawcli FC_21:00:00:24:ff:60:00:05
  ****************************************************
  DMIInformation:
  Message: Success
  Dmi Info: DMIInfoList:
  Dmi A0Data In Hex: 03 04 21 00 00 00 00 00 04 00 00 00 67 00 00 00 00 00 01 00 41 6d 70 68 65 6e 6f 6c 20 20 20 20 20 20 20 20 00 41 50 48 35 37 31 35 34 30 30 30 37 20 20 20 20 20 20 20 4d 20 20 20 01 00 00 fc 00 00 00 00 41 50 46 31 31 32 35 30 30 37 34 39 41 33 20 20 31 31 30 36 32 34 20 20 00 00 00 c6 ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff ff 00 
  Dmi A2Data In Hex: 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 
  ****************************************************
  $ calls
  VEXAPI_GetSFPData
  VEXAPI_GetSFPData
