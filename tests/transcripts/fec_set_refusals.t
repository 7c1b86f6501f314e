# Forward error correction: what can't be changed

There is no choice below 16 Gbps, above it, and on mezzanine adapters. A misspelt value is refused in the
same words, and a reset after the status doesn't happen.

  $ . "$TESTDIR/setup.sh"
  $ host fec
  $ orfc-esxcli -t port -s fec set FC_21:00:00:24:ff:10:20:31 -f true
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, Read-Only parameter for non 16Gbps or Unknown speed or mezz adapter</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:40 -f false
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Read-Only parameter for non 16Gbps or Unknown speed or mezz adapter
  FEC: ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:50 -f false
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Read-Only parameter for non 16Gbps or Unknown speed or mezz adapter
  FEC: ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:60 -f false
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Read-Only parameter for non 16Gbps or Unknown speed or mezz adapter
  FEC: ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:31 -f on
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Read-Only parameter for non 16Gbps or Unknown speed or mezz adapter
  FEC: ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:31 -f true -r reset
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Read-Only parameter for non 16Gbps or Unknown speed or mezz adapter
  FEC: ****************************************************
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
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter

The counters of such a port can be reset nevertheless.

  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:31 -r reset
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: true
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:60 -r reset
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
  VEXAPI_FCGetFECSupportInfo
  VEXAPI_GetFWPrivateStats
  VEXAPI_IsMezzAdapter
  VEXAPI_ResetFECCounters

An offline port can be changed, at any speed.

  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:41 -f true
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: true
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:42 -f false
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: true
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ rm -f journal

Virtual ports, other chips, and identifiers that find nothing.

  $ orfc-esxcli -t port -s fec set FC_21:01:00:24:ff:10:20:30 -f true
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, feature not supported for virtual port</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s fec setcli FC_21:01:00:24:ff:10:20:30 -f true
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, feature not supported for virtual port
  FEC: ****************************************************
  $ orfc-esxcli -t port -s fec set FC_21:00:00:24:ff:10:20:70 -f true
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, feature not supported</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s fec setcli FC_20:00:00:24:ff:10:20:80 -r other
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, feature not supported
  FEC: ****************************************************
  $ orfc-esxcli -t port -s fec set
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
  $ orfc-esxcli -t port -s fec setcli -f true
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:99 -f true
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: set\r (esc)
  $ calls

Help words.

  $ orfc-esxcli -t port -s fec set help
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FECInfo">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, Unknown</string></field>
  <field name="FEC">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s fec setcli /? FC_21:00:00:24:ff:10:20:30 -f true
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Unknown
  FEC: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s fec setcli ?
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s fec set ?
  $ calls
