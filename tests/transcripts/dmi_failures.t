# Transceivers: reading that fails

An empty bay reads as zeros. The document says failure, and yet the result is 0.

  $ . "$TESTDIR/setup.sh"
  $ host transceivers
  $ orfc-esxcli -t port -s dmi get FC_21:00:00:24:ff:60:00:06
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="DMIInformation">
  <field name="Message">
  <string>Failed, Data not available</string></field>
  <field name="Dmi Info">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s dmi getcli FC_21:00:00:24:ff:60:00:06
  ****************************************************
  DMIInformation:
  Message: Failed, Data not available
  Dmi Info: ****************************************************
  $ orfc-esxcli -t port -s dmi getrawcli FC_21:00:00:24:ff:60:00:06
  ****************************************************
  DMIInformation:
  Message: Failed, Data not available
  Dmi Info: ****************************************************
  $ code -t port -s dmi get FC_21:00:00:24:ff:60:00:06
  0
  $ code -t port -s dmi getraw FC_21:00:00:24:ff:60:00:06
  0

The library fails.

  $ VEXAPI_SIM_FAULTS=VEXAPI_GetSFPData=113 orfc-esxcli -t port -s dmi get FC_21:00:00:24:ff:60:00:01
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="DMIInformation">
  <field name="Message">
  <string>Failed, SFP DMI data read failed</string></field>
  <field name="Dmi Info">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetSFPData=113 orfc-esxcli -t port -s dmi getrawcli FC_21:00:00:24:ff:60:00:01
  ****************************************************
  DMIInformation:
  Message: Failed, SFP DMI data read failed
  Dmi Info: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetSFPData=113 code -t port -s dmi get FC_21:00:00:24:ff:60:00:01
  13
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s dmi getcli FC_21:00:00:24:ff:60:00:01
  ****************************************************
  DMIInformation:
  Message: Failed, Host not found
  Dmi Info: ****************************************************
  $ refuse_log 2 orfc-esxcli -t port -s dmi getcli FC_21:00:00:24:ff:60:00:01
  ****************************************************
  DMIInformation:
  Message: Failed, File not found
  Dmi Info: ****************************************************

No port, and help: a plain leaf shows no usage.

  $ orfc-esxcli -t port -s dmi get
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="DMIInformation">
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  <field name="Dmi Info">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s dmi getcli
  ****************************************************
  DMIInformation:
  Message: Failed, Invalid parameter
  Dmi Info: ****************************************************
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t port -s dmi getrawcli FC_21:00:00:24:FF:60:00:01
  ****************************************************
  DMIInformation:
  Message: Failed, Invalid parameter
  Dmi Info: ****************************************************
  Usage: getraw [port identifier]\r (esc)
  $ orfc-esxcli -t port -s dmi getcli help
  ****************************************************
  DMIInformation:
  Message: Failed, Unknown
  Dmi Info: ****************************************************
  Usage: get [port identifier]\r (esc)
