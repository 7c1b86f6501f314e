# Forward error correction: reading

A port at 16 Gbps: the library's answer counts.

  $ . "$TESTDIR/setup.sh"
  $ host fec
  $ orfc-esxcli -t port -s fec get FC_21:00:00:24:ff:10:20:30
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="FEC">
  <list type="structure">
  <structure typeName="FECList">
  <field name="FEC_Status">
  <string>true</string></field>
  <field name="Correctable FEC errors">
  <int>1200</int></field>
  <field name="Uncorrectable FEC errors">
  <int>7</int></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_IsMezzAdapter
  VEXAPI_GetFWPrivateStats
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************

The low 32 bits of the counters are shown, of the first entry.

  $ orfc-esxcli -t port -s fec get FC_21:00:00:24:ff:10:20:51
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="FEC">
  <list type="structure">
  <structure typeName="FECList">
  <field name="FEC_Status">
  <string>false</string></field>
  <field name="Correctable FEC errors">
  <int>5</int></field>
  <field name="Uncorrectable FEC errors">
  <int>4294967295</int></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:51
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 5
  Uncorrectable FEC errors: 4294967295
  ****************************************************

An online port below 16 Gbps has none, one at 32 or 64 Gbps always has it, whatever the library says.

  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:31
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:40
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:50
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************

An offline port reads as the library says, at any speed.

  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:41
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:42
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************

A mezzanine adapter always has it. Only the answer 1 means one.

  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:60
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:61
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ rm -f journal

Ports that can't answer: virtual ones, and those of other chips.

  $ orfc-esxcli -t port -s fec get FC_21:01:00:24:ff:10:20:30
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Message">
  <string>Failed, feature not supported for virtual port</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s fec getcli FC_21:01:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Failed, feature not supported for virtual port
  FEC: ****************************************************
  $ orfc-esxcli -t port -s fec get FC_21:00:00:24:ff:10:20:70
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Message">
  <string>Failed, feature not supported</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s fec getcli FC_20:00:00:24:ff:10:20:80
  ****************************************************
  FECInfo:
  Message: Failed, feature not supported
  FEC: ****************************************************
  $ calls

Identifiers that find nothing. The usage of the `cli` command follows its document.

  $ orfc-esxcli -t port -s fec get
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
  $ orfc-esxcli -t port -s fec get FC_21:00:00:24:ff:10:20:99
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
  $ orfc-esxcli -t port -s fec get ''
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
  $ orfc-esxcli -t port -s fec getcli
  ****************************************************
  FECInfo:
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s fec getcli fc_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:FF:10:20:30
  ****************************************************
  FECInfo:
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: get\r (esc)

Help words instead of the identifier. `?` is answered before the command.

  $ orfc-esxcli -t port -s fec get help
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Message">
  <string>Failed, Unknown</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s fec getcli -H
  ****************************************************
  FECInfo:
  Message: Failed, Unknown
  FEC: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s fec getcli ?
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s fec get ?

Each library query may fail; no further call is made after a failure.

  $ rm -f journal
  $ VEXAPI_SIM_FAULTS=VEXAPI_FCGetFECSupportInfo=5 orfc-esxcli -t port -s fec get FC_21:00:00:24:ff:10:20:30
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Message">
  <string>Failed, FEC read failed</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_FCGetFECSupportInfo -> 5
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsMezzAdapter=1 orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Failed, FEC read failed
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_IsMezzAdapter -> 1
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetFWPrivateStats=0x2000007B orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Failed, FEC read failed
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_IsMezzAdapter
  VEXAPI_GetFWPrivateStats -> 536871035

An answer without an entry is a failure too.

  $ VEXAPI_SIM_FAULTS=VEXAPI_GetFWPrivateStats=null orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Failed, FEC read failed
  FEC: ****************************************************
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:52
  ****************************************************
  FECInfo:
  Message: Failed, FEC read failed
  FEC: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Failed, Host not found
  FEC: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port -s fec getcli nosuch
  ****************************************************
  FECInfo:
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: get\r (esc)

The library's log can't be opened for the first, the second or the third question.

  $ rm -f journal
  $ refuse_log 2 orfc-esxcli -t port -s fec get FC_21:00:00:24:ff:10:20:30
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Message">
  <string>Failed, File not found</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ calls
  $ rm -f journal
  $ refuse_log 3 orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Failed, File not found
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  $ rm -f journal
  $ refuse_log 4 orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Failed, File not found
  FEC: ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_IsMezzAdapter

The codes of these runs.

  $ for port in 30 70 99; do code -t port -s fec get FC_21:00:00:24:ff:10:20:$port; done | paste -sd ' '
  0 35 6
  $ code -t port -s fec get FC_21:01:00:24:ff:10:20:30
  51
  $ code -t port -s fec get help
  5
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsMezzAdapter=1 code -t port -s fec get FC_21:00:00:24:ff:10:20:30
  13
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null code -t port -s fec get FC_21:00:00:24:ff:10:20:30
  14
