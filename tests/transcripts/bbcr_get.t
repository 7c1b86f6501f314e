# Credit recovery: reading

  $ . "$TESTDIR/setup.sh"
  $ host settings
  $ port=FC_21:00:00:24:ff:50:00:01
  $ orfc-esxcli -t port -s bbcr get $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="BBCRInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="BBCR">
  <list type="structure">
  <structure typeName="BBCRList">
  <field name="Data">
  <string>BBCR Status: true
        BBCR Configured: 5
        BBCR State: Online
        BBCR Negotiated: 4
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s bbcr getcli $port
  ****************************************************
  BBCRInfo:
  Message: Success
  BBCR: BBCRList:
  Data: BBCR Status: true
        BBCR Configured: 5
        BBCR State: Online
        BBCR Negotiated: 4
  ****************************************************
  $ calls
  VEXAPI_FCGetBBCSupportInfoEx reasonSize=64
  VEXAPI_FCGetBBCSupportInfoEx reasonSize=64

When offline, the reason replaces the negotiated count. Without a reason there is no line.

  $ orfc-esxcli -t port -s bbcr getcli FC_21:00:00:24:ff:50:00:02
  ****************************************************
  BBCRInfo:
  Message: Success
  BBCR: BBCRList:
  Data: BBCR Status: false
        BBCR Configured: 15
        BBCR State: Offline
        BBCR Offline Reason Code: Login pending
  ****************************************************
  $ orfc-esxcli -t port -s bbcr getcli FC_21:00:00:24:ff:50:00:03
  ****************************************************
  BBCRInfo:
  Message: Success
  BBCR: BBCRList:
  Data: BBCR Status: true
        BBCR Configured: 0
        BBCR State: Offline
  ****************************************************
  $ rm -f journal

Larch, Alder and Birch have it; virtual ports don't.

  $ orfc-esxcli -t port -s bbcr get FC_21:00:00:24:ff:50:00:06
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="BBCRInfo">
  <field name="Message">
  <string>Failed, feature not supported</string></field>
  <field name="BBCR">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s bbcr getcli FC_21:00:00:24:ff:50:00:06
  ****************************************************
  BBCRInfo:
  Message: Failed, feature not supported
  BBCR: ****************************************************
  $ orfc-esxcli -t port -s bbcr getcli FC_21:01:00:24:ff:50:00:01
  ****************************************************
  BBCRInfo:
  Message: Failed, feature not supported for virtual port
  BBCR: ****************************************************
  $ orfc-esxcli -t port -s bbcr getcli FC_21:00:00:24:ff:50:00:0
  ****************************************************
  BBCRInfo:
  Message: Failed, Invalid parameter
  BBCR: ****************************************************
  Usage: get\r (esc)
  $ calls
  $ VEXAPI_SIM_FAULTS=VEXAPI_FCGetBBCSupportInfoEx=1 orfc-esxcli -t port -s bbcr getcli $port
  ****************************************************
  BBCRInfo:
  Message: Failed, NVRAM read failed
  BBCR: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s bbcr getcli $port
  ****************************************************
  BBCRInfo:
  Message: Failed, Host not found
  BBCR: ****************************************************
  $ refuse_log 2 orfc-esxcli -t port -s bbcr getcli $port
  ****************************************************
  BBCRInfo:
  Message: Failed, File not found
  BBCR: ****************************************************
