# Writing the NVRAM of a port from a file

The file is passed to the library unchanged. The change takes effect after a reboot.

  $ . "$TESTDIR/setup.sh"
  $ host lists
  $ port=FC_21:00:00:24:ff:aa:00:01
  $ printf 'ORFC-IMAGE NVRAM 1.0\nFrameSize 1024\n' >nvram.txt
  $ orfc-esxcli -t port updatenvram $port nvram.txt
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="UpdateNVRAM">
  <field name="Reboot Required">
  <bool>true</bool></field>
  <field name="Message">
  <string>Success</string></field>
  </structure>
  </output>
  $ calls
  VEXAPI_UpdateAdapterNVRAMFromFile path=nvram.txt
  $ orfc-esxcli -t port updatenvramcli $port nvram.txt
  ****************************************************
  UpdateNVRAM:
  Reboot Required: true
  Message: Success
  ****************************************************

The library tells whether a reboot is needed; if it can't, a reboot is needed.

  $ orfc-esxcli -t port updatenvramcli FC_21:00:00:24:ff:aa:00:02 nvram.txt
  ****************************************************
  UpdateNVRAM:
  Reboot Required: false
  Message: Success
  ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsRebootRequired=1 orfc-esxcli -t port updatenvramcli FC_21:00:00:24:ff:aa:00:02 nvram.txt
  ****************************************************
  UpdateNVRAM:
  Reboot Required: true
  Message: Success
  ****************************************************

A library that refuses the file.

  $ VEXAPI_SIM_FAULTS=VEXAPI_UpdateAdapterNVRAMFromFile=108 orfc-esxcli -t port updatenvram $port nvram.txt
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="UpdateNVRAM">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, NVRAM update failed</string></field>
  </structure>
  </output>
  $ echo nothing of use >other.txt
  $ orfc-esxcli -t port updatenvramcli $port other.txt
  ****************************************************
  UpdateNVRAM:
  Reboot Required: false
  Message: Failed, NVRAM update failed
  ****************************************************
  $ orfc-esxcli -t port updatenvramcli $port .
  ****************************************************
  UpdateNVRAM:
  Reboot Required: false
  Message: Failed, NVRAM update failed
  ****************************************************
  $ rm -f journal

A file that isn't there, or isn't named, never reaches the library.

  $ orfc-esxcli -t port updatenvram $port nosuch.txt
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="UpdateNVRAM">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, File not found</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port updatenvramcli $port ''
  ****************************************************
  UpdateNVRAM:
  Reboot Required: false
  Message: Failed, File not found
  ****************************************************
  $ orfc-esxcli -t port updatenvramcli $port
  ****************************************************
  UpdateNVRAM:
  Reboot Required: false
  Message: Failed, File not found
  ****************************************************
  $ calls

The port is checked before the file. Only its exact text finds a port, and the first letters decide
whether the host is asked at all.

  $ orfc-esxcli -t port updatenvram FC_21:01:00:24:ff:aa:00:04 nosuch.txt
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="UpdateNVRAM">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, feature not supported for virtual port</string></field>
  </structure>
  </output>
  $ for port in FC_21:00:00:24:ff:aa:00:99 fc_21:00:00:24:ff:aa:00:01 FC_21:00:00:24:FF:AA:00:01 FC_21:00:00:24:ff:aa:00:01x \
  >     FC_21:00:00:24:ff:aa:00: FC_21-00-00-24-ff-aa-00-01 FC FC_ _ '' nosuch Adapter_ORV2872_BFK2101S04711; do
  >     orfc-esxcli -t port updatenvramcli "$port" nvram.txt | grep Message
  > done | uniq -c
       12 Message: Failed, Invalid parameter
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port updatenvramcli FC_x nvram.txt
  ****************************************************
  UpdateNVRAM:
  Reboot Required: false
  Message: Failed, Host not found
  ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null orfc-esxcli -t port updatenvramcli x nvram.txt
  ****************************************************
  UpdateNVRAM:
  Reboot Required: false
  Message: Failed, Invalid parameter
  ****************************************************

Help words. `updatenvramcli` has no usage text.

  $ orfc-esxcli -t port updatenvram help
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="UpdateNVRAM">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, Unknown</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port updatenvramcli -h nvram.txt
  ****************************************************
  UpdateNVRAM:
  Reboot Required: false
  Message: Failed, Unknown
  ****************************************************
  $ orfc-esxcli -t port updatenvram ?
  $ orfc-esxcli -t port updatenvramcli ?

The library's log can't be opened for the update.

  $ rm -f journal
  $ refuse_log 2 orfc-esxcli -t port updatenvram $port nvram.txt
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="UpdateNVRAM">
  <field name="Reboot Required">
  <bool>false</bool></field>
  <field name="Message">
  <string>Failed, File not found</string></field>
  </structure>
  </output>
  $ calls

The codes of all these runs.

  $ for words in '$port nvram.txt' '$port other.txt' '$port nosuch.txt' nosuch help; do eval "code -t port updatenvram $words"; done | paste -sd ' '
  0 20 19 6 5
  $ code -t port updatenvram FC_21:01:00:24:ff:aa:00:04 nvram.txt
  51
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetAdapterList=null code -t port updatenvram $port nvram.txt
  14
