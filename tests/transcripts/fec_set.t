# Forward error correction: changing

A port at 16 Gbps can be switched.

  $ . "$TESTDIR/setup.sh"
  $ host fec
  $ orfc-esxcli -t port -s fec set FC_21:00:00:24:ff:10:20:30 --fec-status false
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="Reboot Required">
  <bool>true</bool></field>
  <field name="FEC">
  <list type="structure">
  <structure typeName="FECList">
  <field name="FEC_Status">
  <string>false</string></field>
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
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCSetFECSupportInfo status=0
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ rm -f journal
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 --fec-status true
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: true
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCSetFECSupportInfo status=1

Without an option nothing is written, and the present state is shown.

  $ orfc-esxcli -t port -s fec set FC_21:00:00:24:ff:10:20:30
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="Reboot Required">
  <bool>false</bool></field>
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
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: false
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter

Resetting the counters shows those from before the reset; only the next reading shows it.

  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 --reset reset
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: true
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_ResetFECCounters
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 0
  Uncorrectable FEC errors: 0
  ****************************************************

Both at once, in any order, letter case and place. The status is written first.

  $ host fec
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -R RESET -F False
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: true
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCSetFECSupportInfo status=0
  VEXAPI_ResetFECCounters
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 some more words --FEC-STATUS TRUE
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: true
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 0
  Uncorrectable FEC errors: 0
  ****************************************************
  $ rm -f journal

Of a repeated option the first counts. An option without a word after it is ignored. Its value is the
next word, whatever that is.

  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f false -f true
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: true
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 0
  Uncorrectable FEC errors: 0
  ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 --fec-status false -f x
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: true
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 0
  Uncorrectable FEC errors: 0
  ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: false
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 0
  Uncorrectable FEC errors: 0
  ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 --reset
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: false
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 0
  Uncorrectable FEC errors: 0
  ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f -r reset
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: set\r (esc)
  $ host fec

Bad values. A bad reset is refused after a good status has been written.

  $ orfc-esxcli -t port -s fec set FC_21:00:00:24:ff:10:20:30 -f on
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f 1
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f ''
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -r true
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: set\r (esc)
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -r other -f false
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: set\r (esc)
  $ calls
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCSetFECSupportInfo status=0
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
