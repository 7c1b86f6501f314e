# Boot configuration

Without `--boot-mode` the BIOS is meant: four boot targets, and the library is switched to the BIOS.

  $ . "$TESTDIR/setup.sh"
  $ host boot
  $ port=FC_21:00:00:24:ff:60:00:01
  $ old=FC_21:00:00:24:ff:60:00:04
  $ target=50:06:0e:80:12:4a:7c:10
  $ orfc-esxcli -t port -s bootconfig getcli $port
  ****************************************************
  BootConfigInfo:
  Message: Success
  BootConfig: BootConfigList:
  Data: Adapter BIOS: false
        Selectable Boot: true
        Fabric Assigned Boot LUN: true
        Drive 0 WWPN: 50:06:0e:80:12:4a:7c:10
        Drive 0 LUN: 3
        Drive 1 WWPN: 00:00:00:00:00:00:00:00
        Drive 1 LUN: 0
        Drive 2 WWPN: 00:00:00:00:00:00:00:00
        Drive 2 LUN: 0
        Drive 3 WWPN: 00:00:00:00:00:00:00:00
        Drive 3 LUN: 0
  ****************************************************
  $ calls --all
  VEXAPI_ExtSetScope
  VEXAPI_Initialize debugLevel=0 reserved=0
  VEXAPI_SetToolID toolId=11
  VEXAPI_SetToolVersion major=1 minor=3 sub=6 build=0
  VEXAPI_GetAdapterList
  VEXAPI_GetBfsConfigMode
  VEXAPI_GetBootDeviceInfo
  VEXAPI_Uninitialize
  $ orfc-esxcli -t port -s bootconfig get $port -b uefi
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="BootConfigInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="BootConfig">
  <list type="structure">
  <structure typeName="BootConfigList">
  <field name="Data">
  <string>Adapter Driver: false
        Selective Login: false
        Selective LUN Login: true
        World Login: false
        Fabric Assigned Boot LUN: true
        Drive 0 WWPN: 50:06:0e:80:12:4a:7c:10
        Drive 0 LUN: 3
        Drive 1 WWPN: 00:00:00:00:00:00:00:00
        Drive 1 LUN: 0
        Drive 2 WWPN: 00:00:00:00:00:00:00:00
        Drive 2 LUN: 0
        Drive 3 WWPN: 00:00:00:00:00:00:00:00
        Drive 3 LUN: 0
        Drive 4 WWPN: 00:00:00:00:00:00:00:00
        Drive 4 LUN: 0
        Drive 5 WWPN: 00:00:00:00:00:00:00:00
        Drive 5 LUN: 0
        Drive 6 WWPN: 00:00:00:00:00:00:00:00
        Drive 6 LUN: 0
        Drive 7 WWPN: 50:06:0e:80:12:4a:7c:17
        Drive 7 LUN: 7
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_GetBootDeviceInfo

The mode is switched only between BIOS and UEFI.

  $ orfc-esxcli -t port -s bootconfig getcli $port --boot-mode UEFI | sed -n 3p
  Message: Success
  $ calls --all | grep Bfs
  VEXAPI_GetBfsConfigMode

Older adapters support the BIOS only, and 8G adapters no fabric-assigned boot LUN.

  $ orfc-esxcli -t port -s bootconfig getcli $old
  ****************************************************
  BootConfigInfo:
  Message: Success
  BootConfig: BootConfigList:
  Data: Adapter BIOS: false
        Selectable Boot: true
        Drive 0 WWPN: 50:06:0e:80:12:4a:7c:10
        Drive 0 LUN: 3
        Drive 1 WWPN: 00:00:00:00:00:00:00:00
        Drive 1 LUN: 0
        Drive 2 WWPN: 00:00:00:00:00:00:00:00
        Drive 2 LUN: 0
        Drive 3 WWPN: 00:00:00:00:00:00:00:00
        Drive 3 LUN: 0
  ****************************************************
  $ calls
  VEXAPI_GetBootDeviceInfo
  $ orfc-esxcli -t port -s bootconfig getcli $old -b UEFI
  ****************************************************
  BootConfigInfo:
  Message: Failed, UEFI boot mode not supported for this adapter
  BootConfig: ****************************************************
  $ calls

A port of the other mode's ROM is refused, once the mode is switched.

  $ orfc-esxcli -t port -s bootconfig getcli FC_21:00:00:24:ff:60:00:02 | sed -n 3p
  Message: Failed, Adapter does not have ROM BIOS
  $ orfc-esxcli -t port -s bootconfig getcli FC_21:00:00:24:ff:60:00:02 -b UEFI | sed -n 3p
  Message: Success
  $ orfc-esxcli -t port -s bootconfig getcli FC_21:00:00:24:ff:60:00:03 -b UEFI
  ****************************************************
  BootConfigInfo:
  Message: Failed, Adapter does not have ROM UEFI
  BootConfig: ****************************************************
  $ orfc-esxcli -t port -s bootconfig getcli $port -b NVME
  ****************************************************
  BootConfigInfo:
  Message: Failed, Invalid parameter
  BootConfig: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s bootconfig get FC_21:01:00:24:ff:60:00:01
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="BootConfigInfo">
  <field name="Message">
  <string>Failed, Feature not supported for virtual port</string></field>
  <field name="BootConfig">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ rm -f journal
