# Boot configuration: changing

`setFile` begins a file with what the port has, and merges its options; the mode of each command is staged anew.

  $ . "$TESTDIR/setup.sh"
  $ host boot
  $ port=FC_21:00:00:24:ff:60:00:01
  $ target=50:06:0e:80:12:4a:7c:10
  $ nvme=50:0a:09:81:a1:c3:40:10
  $ orfc-esxcli -t port -s bootconfig setFilecli $port -b UEFI --enable-bfs true --world-login true --drive-5 $target-300
  ****************************************************
  BootConfigInfo:
  Message: Success
  BootConfig: BootConfigList:
  Data: Adapter Driver: true
        Selective Login: false
        Selective LUN Login: true
        World Login: true
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
        Drive 5 WWPN: 50:06:0e:80:12:4a:7c:10
        Drive 5 LUN: 300
        Drive 6 WWPN: 00:00:00:00:00:00:00:00
        Drive 6 LUN: 0
        Drive 7 WWPN: 50:06:0e:80:12:4a:7c:17
        Drive 7 LUN: 7
  ****************************************************
  $ cat /tmp/BootConfig_$port
  Alternate_Boot_Target_1_LUN=0
  Alternate_Boot_Target_1_WWPN=00:00:00:00:00:00:00:00
  Alternate_Boot_Target_2_LUN=0
  Alternate_Boot_Target_2_WWPN=00:00:00:00:00:00:00:00
  Alternate_Boot_Target_3_LUN=0
  Alternate_Boot_Target_3_WWPN=00:00:00:00:00:00:00:00
  Alternate_Boot_Target_4_LUN=0
  Alternate_Boot_Target_4_WWPN=00:00:00:00:00:00:00:00
  Alternate_Boot_Target_5_LUN=300
  Alternate_Boot_Target_5_WWPN=50:06:0e:80:12:4a:7c:10
  Alternate_Boot_Target_6_LUN=0
  Alternate_Boot_Target_6_WWPN=00:00:00:00:00:00:00:00
  Alternate_Boot_Target_7_LUN=7
  Alternate_Boot_Target_7_WWPN=50:06:0e:80:12:4a:7c:17
  Boot_Mode=1
  Disable_BIOS=0
  Fabric_Assigned_Boot_Lun=1
  Primary_Boot_Target_LUN=3
  Primary_Boot_Target_WWPN=50:06:0e:80:12:4a:7c:10
  Selectable_Boot=1
  Selective_LUN_Login=1
  Selective_Login=0
  World_Login=1
  $ orfc-esxcli -t port -s bootconfig setFilecli $port --selectable-boot false --drive-0 00:00:00:00:00:00:00:00-9
  ****************************************************
  BootConfigInfo:
  Message: Success
  BootConfig: BootConfigList:
  Data: Adapter BIOS: true
        Selectable Boot: false
        Fabric Assigned Boot LUN: true
        Drive 0 WWPN: 00:00:00:00:00:00:00:00
        Drive 0 LUN: 0
        Drive 1 WWPN: 00:00:00:00:00:00:00:00
        Drive 1 LUN: 0
        Drive 2 WWPN: 00:00:00:00:00:00:00:00
        Drive 2 LUN: 0
        Drive 3 WWPN: 00:00:00:00:00:00:00:00
        Drive 3 LUN: 0
  ****************************************************
  $ grep -E 'Boot_Mode|Primary|_5_|Selectable' /tmp/BootConfig_$port
  Alternate_Boot_Target_5_LUN=300
  Alternate_Boot_Target_5_WWPN=50:06:0e:80:12:4a:7c:10
  Boot_Mode=0
  Primary_Boot_Target_LUN=0
  Primary_Boot_Target_WWPN=00:00:00:00:00:00:00:00
  Selectable_Boot=0
  $ rm -f journal

`set` writes all of it once, whatever the mode, and deletes the file.

  $ orfc-esxcli -t port -s bootconfig set $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="BootConfigInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="Reboot Required">
  <bool>true</bool></field>
  <field name="BootConfig">
  <list type="structure">
  <structure typeName="BootConfigList">
  <field name="Data">
  <string>Adapter BIOS: true
        Selectable Boot: false
        Fabric Assigned Boot LUN: true
        Drive 0 WWPN: 00:00:00:00:00:00:00:00
        Drive 0 LUN: 0
        Drive 1 WWPN: 00:00:00:00:00:00:00:00
        Drive 1 LUN: 0
        Drive 2 WWPN: 00:00:00:00:00:00:00:00
        Drive 2 LUN: 0
        Drive 3 WWPN: 00:00:00:00:00:00:00:00
        Drive 3 LUN: 0
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_GetBootDeviceInfo
  VEXAPI_SetBootDeviceInfo
  $ ls /tmp/BootConfig_$port
  ls: cannot access '/tmp/BootConfig_FC_21:00:00:24:ff:60:00:01': No such file or directory
  [2]
  $ orfc-esxcli -t port -s bootconfig getcli $port -b UEFI | grep -E 'Adapter|World|Drive [05]'
  Data: Adapter Driver: true
        World Login: true
        Drive 0 WWPN: 00:00:00:00:00:00:00:00
        Drive 0 LUN: 0
        Drive 5 WWPN: 50:06:0e:80:12:4a:7c:10
        Drive 5 LUN: 300
  $ orfc-esxcli -t port -s bootconfig setcli $port
  ****************************************************
  BootConfigInfo:
  Reboot Required: false
  Message: Failed, Unknown
  BootConfig: ****************************************************

What can't be written keeps the file.

  $ orfc-esxcli -t port -s bootconfig setFilecli $port --enable-bfs false >/dev/null
  $ VEXAPI_SIM_FAULTS=VEXAPI_SetBootDeviceInfo=5 orfc-esxcli -t port -s bootconfig setcli $port
  ****************************************************
  BootConfigInfo:
  Reboot Required: false
  Message: Failed, Boot Config update failed
  BootConfig: ****************************************************
  $ ls /tmp/BootConfig_$port
  /tmp/BootConfig_FC_21:00:00:24:ff:60:00:01
  $ orfc-esxcli -t port -s bootconfig setcli $port | sed -n 3,4p
  Message: Success
  Reboot Required: true

Refusals leave the file as it was.

  $ refused() { orfc-esxcli -t port -s bootconfig setFilecli "$@" | sed -n 's/^Message: //p'; }
  $ orfc-esxcli -t port -s bootconfig setFilecli $port >/dev/null; cp /tmp/BootConfig_$port before
  $ refused $port --enable-bfs yes
  Failed, Invalid parameter
  $ refused $port --selectable-boot true --boot-mode UEFI
  Failed, Boot parameter not supported with UEFI boot mode option
  $ refused $port --world-login true
  Failed, Boot parameter requires UEFI boot mode option
  $ refused $port --drive-4 $target-3
  Failed, Boot parameter requires UEFI boot mode option
  $ refused $port --drive-0 $target-4
  Failed, Invalid parameter
  $ refused $port --drive-0 50:06:0e:80:12:4a:7c:17-0
  Failed, Invalid parameter
  $ refused $port --drive-0 50:06:0e:80:12:4a:7c:99-0
  Failed, Invalid parameter
  $ refused $port --drive-0 $nvme-1
  Failed, Feature not supported for NVMe target
  $ refused $port --drive-0 $nvme-9
  Failed, Invalid parameter
  $ refused $port --enable-bfs true --drive-1 $target-4
  Failed, Invalid parameter
  $ cmp before /tmp/BootConfig_$port
  $ old=FC_21:00:00:24:ff:60:00:04
  $ refused $old --world-login true
  Failed, Feature not supported for this adapter
  $ refused $old --fabric-assigned-boot-lun true
  Failed, Feature not supported for this adapter
  $ refused $old --drive-7 $target-3
  Failed, Feature not supported for this adapter
  $ rm /tmp/BootConfig_*

A drive without a LUN takes that of the previous drive.

  $ orfc-esxcli -t port -s bootconfig setFilecli $port -j $target-300 -k 50:06:0E:80:12:4A:7C:10 | grep -E 'Drive [01]'
        Drive 0 WWPN: 50:06:0e:80:12:4a:7c:10
        Drive 0 LUN: 300
        Drive 1 WWPN: 50:06:0e:80:12:4a:7c:10
        Drive 1 LUN: 300
