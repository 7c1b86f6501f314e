# Credit recovery: changing

`setFile` stages in a file of the port, `set` writes it once and deletes it. Status and count are the staged ones,
state and negotiated count those of the link.

  $ . "$TESTDIR/setup.sh"
  $ host settings
  $ port=FC_21:00:00:24:ff:50:00:01
  $ orfc-esxcli -t port -s bbcr setFile $port --bbcr-status false
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="BBCRInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="BBCR">
  <list type="structure">
  <structure typeName="BBCRList">
  <field name="Data">
  <string>BBCR Status: false
        BBCR Configured: 5
        BBCR State: Online
        BBCR Negotiated: 4
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s bbcr setFilecli $port -c 15
  ****************************************************
  BBCRInfo:
  Message: Success
  BBCR: BBCRList:
  Data: BBCR Status: false
        BBCR Configured: 15
        BBCR State: Online
        BBCR Negotiated: 4
  ****************************************************
  $ cat /tmp/BBCR_$port
  BBCR_Count=15
  BBCR_Status=0
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
  $ rm -f journal
  $ orfc-esxcli -t port -s bbcr set $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="BBCRInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="Reboot Required">
  <bool>true</bool></field>
  <field name="BBCR">
  <list type="structure">
  <structure typeName="BBCRList">
  <field name="Data">
  <string>BBCR Status: false
        BBCR Configured: 15
        BBCR State: Online
        BBCR Negotiated: 4
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_FCGetBBCSupportInfoEx reasonSize=64
  VEXAPI_FCSetBBCSupportInfo status=0 configured=15
  $ ls /tmp/BBCR_$port*
  ls: cannot access '/tmp/BBCR_FC_21:00:00:24:ff:50:00:01*': No such file or directory
  [2]
  $ orfc-esxcli -t port -s bbcr getcli $port
  ****************************************************
  BBCRInfo:
  Message: Success
  BBCR: BBCRList:
  Data: BBCR Status: false
        BBCR Configured: 15
        BBCR State: Online
        BBCR Negotiated: 4
  ****************************************************
  $ rm -f journal

Nothing is pending any more. `set` says that it failed, and gives the code of a success.

  $ orfc-esxcli -t port -s bbcr set $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="BBCRInfo">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, Unknown</string></field>
  <field name="BBCR">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s bbcr setcli $port
  ****************************************************
  BBCRInfo:
  Reboot Required: false
  Message: Failed, Unknown
  BBCR: ****************************************************
  $ calls
  VEXAPI_FCGetBBCSupportInfoEx reasonSize=64
  VEXAPI_FCGetBBCSupportInfoEx reasonSize=64
  $ code -t port -s bbcr set $port
  0

A reboot is always requested, even by a port whose changes take effect at once: the library isn't asked.

  $ orfc-esxcli -t port -s bbcr setFilecli FC_21:00:00:24:ff:50:00:02 -B TRUE
  ****************************************************
  BBCRInfo:
  Message: Success
  BBCR: BBCRList:
  Data: BBCR Status: true
        BBCR Configured: 15
        BBCR State: Offline
        BBCR Offline Reason Code: Login pending
  ****************************************************
  $ orfc-esxcli -t port -s bbcr setcli FC_21:00:00:24:ff:50:00:02
  ****************************************************
  BBCRInfo:
  Message: Success
  Reboot Required: true
  BBCR: BBCRList:
  Data: BBCR Status: true
        BBCR Configured: 15
        BBCR State: Offline
        BBCR Offline Reason Code: Login pending
  ****************************************************

A bad value of either option leaves the file as it was. One that the command has made stays, with the port's own.

  $ host settings
  $ orfc-esxcli -t port -s bbcr setFile $port -b false -c 16
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="BBCRInfo">
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  <field name="BBCR">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s bbcr setFilecli $port -c 3 -b on
  ****************************************************
  BBCRInfo:
  Message: Failed, Invalid parameter
  BBCR: ****************************************************
  Usage: setFile\r (esc)
  $ cat /tmp/BBCR_$port
  BBCR_Count=5
  BBCR_Status=1
  $ orfc-esxcli -t port -s bbcr setFilecli $port -c abc -b
  ****************************************************
  BBCRInfo:
  Message: Success
  BBCR: BBCRList:
  Data: BBCR Status: true
        BBCR Configured: 0
        BBCR State: Online
        BBCR Negotiated: 4
  ****************************************************

A value out of range in a file that was edited by hand is dropped, and the port's own stays.

  $ printf 'BBCR_Count=99\nbbcr_status=0 # off\n' >/tmp/BBCR_$port
  $ orfc-esxcli -t port -s bbcr setFilecli $port
  ****************************************************
  BBCRInfo:
  Message: Success
  BBCR: BBCRList:
  Data: BBCR Status: false
        BBCR Configured: 5
        BBCR State: Online
        BBCR Negotiated: 4
  ****************************************************
  $ rm -f journal; orfc-esxcli -t port -s bbcr set $port >/dev/null; calls
  VEXAPI_FCGetBBCSupportInfoEx reasonSize=64
  VEXAPI_FCSetBBCSupportInfo status=0 configured=5

Failures. The file stays, so that the write can be repeated.

  $ host settings
  $ VEXAPI_SIM_FAULTS=VEXAPI_FCGetBBCSupportInfoEx=1 orfc-esxcli -t port -s bbcr setFilecli $port -c 3
  ****************************************************
  BBCRInfo:
  Message: Failed, NVRAM read failed
  BBCR: ****************************************************
  $ orfc-esxcli -t port -s bbcr setFile $port -c 3 >/dev/null; cp /tmp/BBCR_$port before
  $ VEXAPI_SIM_FAULTS=VEXAPI_FCGetBBCSupportInfoEx=1 orfc-esxcli -t port -s bbcr setcli $port
  ****************************************************
  BBCRInfo:
  Reboot Required: false
  Message: Failed, NVRAM read failed
  BBCR: ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_FCSetBBCSupportInfo=1 orfc-esxcli -t port -s bbcr setcli $port
  ****************************************************
  BBCRInfo:
  Reboot Required: false
  Message: Failed, NVRAM update failed
  BBCR: ****************************************************
  $ refuse_log 2 orfc-esxcli -t port -s bbcr setcli $port
  ****************************************************
  BBCRInfo:
  Reboot Required: false
  Message: Failed, File not found
  BBCR: ****************************************************
  $ refuse_log 3 orfc-esxcli -t port -s bbcr setcli $port
  ****************************************************
  BBCRInfo:
  Reboot Required: false
  Message: Failed, File not found
  BBCR: ****************************************************
  $ orfc-esxcli -t port -s bbcr setcli FC_21:00:00:24:ff:50:00:06
  ****************************************************
  BBCRInfo:
  Reboot Required: false
  Message: Failed, feature not supported
  BBCR: ****************************************************
  $ orfc-esxcli -t port -s bbcr setcli FC_21:01:00:24:ff:50:00:01
  ****************************************************
  BBCRInfo:
  Reboot Required: false
  Message: Failed, feature not supported for virtual port
  BBCR: ****************************************************
  $ orfc-esxcli -t port -s bbcr setcli help
  ****************************************************
  BBCRInfo:
  Reboot Required: false
  Message: Failed, Unknown
  BBCR: ****************************************************
  Usage: set\r (esc)
  $ VEXAPI_SIM_JOURNAL= full orfc-esxcli -t port -s bbcr setFilecli $port -c 4
  ****************************************************
  BBCRInfo:
  Message: Failed, File not found
  BBCR: ****************************************************
  $ cmp before /tmp/BBCR_$port && ls /tmp/BBCR_$port*
  /tmp/BBCR_FC_21:00:00:24:ff:50:00:01
  $ rm -f /tmp/BBCR_FC_21:0?:00:24:ff:50:00:0?
