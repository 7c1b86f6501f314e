# Hosts with lists that are empty or missing

At every level a list may be missing, or have no first entry.

  $ . "$TESTDIR/setup.sh"
  $ host nulls
  $ orfc-esxcli -t adapter listcli
  ****************************************************
  AdapterList:
  Adapters: Adapter_NOPORTLIST_N0001
  AdapterList:
  Adapters: Adapter_NOPORT_N0002
  AdapterList:
  Adapters: Adapter_NOPROTOCOLS_N0003
  AdapterList:
  Adapters: Adapter__
  AdapterList:
  Adapters: Adapter_ORV2872_N0005
  ****************************************************
  $ orfc-esxcli -t port listcli
  ****************************************************
  PortList:
  Ports: FC_21:00:00:24:ff:bb:00:01
  ****************************************************
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:bb:00:01
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 0
  Uncorrectable FEC errors: 0
  ****************************************************

The library gives a list without a first entry, or none.

  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=nullhead orfc-esxcli -t port list
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=nullhead orfc-esxcli -t adapter list
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=nullhead orfc-esxcli -t port -s fec get FC_21:00:00:24:ff:bb:00:01
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s fec get FC_21:00:00:24:ff:bb:00:01
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Message">
  <string>Failed, Host not found</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
