# Boot configuration with NVMe over Fibre Channel

The mode is the second word, and has no default.

  $ . "$TESTDIR/setup.sh"
  $ host boot
  $ port=FC_21:00:00:24:ff:60:00:01
  $ target=50:06:0e:80:12:4a:7c:10
  $ nvme=50:0a:09:81:a1:c3:40:10
  $ orfc-esxcli -t port -s bootconfigext getcli $port
  ****************************************************
  BootConfigInfo:
  Message: Failed, Invalid parameter
  BootConfig: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s bootconfigext getcli $port NVME | head -30
  ****************************************************
  BootConfigInfo:
  Message: Success
  BootConfig: BootConfigList:
  Data: Adapter Driver: false
        Selective Login: false
        Selective LUN Login: true
        World Login: false
        Fabric Assigned Boot LUN: true
        FC NVMe: false
        Host NQN: nqn.2014-08.org.nvmexpress:uuid:host
        Host ID: 00112233445566778899aabbccddeeff
        Storage 0: false
        Storage 0 WWNN: 00:00:00:00:00:00:00:00
        Storage 0 WWPN: 00:00:00:00:00:00:00:00
        Storage 0 NQN: 
        Storage 0 ControllerID: 0x0
        Storage 0 NamespaceID: 0
        Storage 1: false
        Storage 1 WWNN: 00:00:00:00:00:00:00:00
        Storage 1 WWPN: 00:00:00:00:00:00:00:00
        Storage 1 NQN: 
        Storage 1 ControllerID: 0x0
        Storage 1 NamespaceID: 0
        Storage 2: false
        Storage 2 WWNN: 00:00:00:00:00:00:00:00
        Storage 2 WWPN: 00:00:00:00:00:00:00:00
        Storage 2 NQN: 
        Storage 2 ControllerID: 0x0
        Storage 2 NamespaceID: 0
  $ calls --all | grep -v -E 'Initialize|Tool|Scope|AdapterList'
  VEXAPI_Uninitialize
  VEXAPI_GetBfsConfigMode
  VEXAPI_SetBfsConfigMode mode=4
  VEXAPI_GetBootDeviceInfo
  VEXAPI_GetNVMeBootDeviceEntries
  VEXAPI_Uninitialize
  $ orfc-esxcli -t port -s bootconfigext getcli $port BIOS | sed -n 5,8p
  Data: Adapter BIOS: false
        Selectable Boot: true
        Fabric Assigned Boot LUN: true
        Drive 0 WWPN: 50:06:0e:80:12:4a:7c:10
  $ orfc-esxcli -t port -s bootconfigext getcli $port uefi | sed -n 5,11p
  Data: Adapter Driver: false
        Selective Login: false
        Selective LUN Login: true
        World Login: false
        Fabric Assigned Boot LUN: true
        Drive 0 WWPN: 50:06:0e:80:12:4a:7c:10
        Drive 0 LUN: 3
  $ orfc-esxcli -t port -s bootconfigext getcli FC_21:00:00:24:ff:60:00:04 NVME
  ****************************************************
  BootConfigInfo:
  Message: Failed, UEFI/NVME boot mode not supported for this adapter
  BootConfig: ****************************************************
  $ orfc-esxcli -t port -s bootconfigext getcli FC_21:00:00:24:ff:60:00:03 NVME | sed -n 3p
  Message: Failed, Adapter does not have ROM UEFI
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetNVMeBootDeviceEntries=1 orfc-esxcli -t port -s bootconfigext getcli $port NVME
  ****************************************************
  BootConfigInfo:
  Message: Failed, NVMe Boot Config not present
  BootConfig: ****************************************************
  $ rm -f journal

One command stages one boot target; one `set` writes them all, and reads the entries back.

  $ orfc-esxcli -t port -s bootconfigext setFilecli $port NVME --fc-nvme true | grep -E 'Message|FC NVMe'
  Message: Success
        FC NVMe: true
  $ orfc-esxcli -t port -s bootconfigext setFilecli $port NVME -n 1 -p $nvme -o 2 -l true | grep 'Storage 1'
        Storage 1: true
        Storage 1 WWNN: 50:0a:09:80:a1:c3:40:10
        Storage 1 WWPN: 50:0a:09:81:a1:c3:40:10
        Storage 1 NQN: nqn.2010-06.com.basalt:array
        Storage 1 ControllerID: 0x41
        Storage 1 NamespaceID: 2
  $ orfc-esxcli -t port -s bootconfigext setFilecli $port NVME -n 9 -p $nvme -o 2 -l true | sed -n 3p
  Message: Success
  $ orfc-esxcli -t port -s bootconfigext setFilecli $port NVME -n 0 -p 0:0:0:0:0:0:0:0 -o 2 -l false | grep 'Storage 0'
        Storage 0: false
        Storage 0 WWNN: 00:00:00:00:00:00:00:00
        Storage 0 WWPN: 00:00:00:00:00:00:00:00
        Storage 0 NQN: 
        Storage 0 ControllerID: 0x0
        Storage 0 NamespaceID: 0
  $ grep -E 'Boot_Mode|NVMe_Enable|NVME_[019]_' /tmp/BootConfigExt_$port
  Boot_Mode=4
  NVME_0_ControllerID=0
  NVME_0_Enable=0
  NVME_0_NQN=
  NVME_0_NamespaceID=0
  NVME_0_WWNN=00:00:00:00:00:00:00:00
  NVME_0_WWPN=00:00:00:00:00:00:00:00
  NVME_1_ControllerID=65
  NVME_1_Enable=1
  NVME_1_NQN=nqn.2010-06.com.basalt:array
  NVME_1_NamespaceID=2
  NVME_1_WWNN=50:0a:09:80:a1:c3:40:10
  NVME_1_WWPN=50:0a:09:81:a1:c3:40:10
  NVMe_Enable=1
  NVME_9_ControllerID=65
  NVME_9_Enable=1
  NVME_9_NQN=nqn.2010-06.com.basalt:array
  NVME_9_NamespaceID=2
  NVME_9_WWNN=50:0a:09:80:a1:c3:40:10
  NVME_9_WWPN=50:0a:09:81:a1:c3:40:10
  $ wc -l < /tmp/BootConfigExt_$port
  78
  $ rm -f journal
  $ orfc-esxcli -t port -s bootconfigext setcli $port | grep -E 'Message|Reboot|FC NVMe|Host|Storage [01]'
  Message: Success
  Reboot Required: true
        FC NVMe: true
        Host NQN: nqn.2014-08.org.nvmexpress:uuid:host
        Host ID: 00112233445566778899aabbccddeeff
        Storage 0: false
        Storage 0 WWNN: 00:00:00:00:00:00:00:00
        Storage 0 WWPN: 00:00:00:00:00:00:00:00
        Storage 0 NQN: 
        Storage 0 ControllerID: 0x0
        Storage 0 NamespaceID: 0
        Storage 1: true
        Storage 1 WWNN: 50:0a:09:80:a1:c3:40:10
        Storage 1 WWPN: 50:0a:09:81:a1:c3:40:10
        Storage 1 NQN: nqn.2010-06.com.basalt:array
        Storage 1 ControllerID: 0x41
        Storage 1 NamespaceID: 2
  $ calls
  VEXAPI_GetBootDeviceInfo
  VEXAPI_SetBootDeviceInfo
  VEXAPI_SetNVMeBootDeviceEntries
  VEXAPI_GetNVMeBootDeviceEntries
  $ ls /tmp/BootConfigExt_$port
  ls: cannot access '/tmp/BootConfigExt_FC_21:00:00:24:ff:60:00:01': No such file or directory
  [2]

Entries that can't be written keep the file, while the boot settings are in place.

  $ orfc-esxcli -t port -s bootconfigext setFilecli $port NVME --enable-bfs true >/dev/null
  $ VEXAPI_SIM_FAULTS=VEXAPI_SetNVMeBootDeviceEntries=1 orfc-esxcli -t port -s bootconfigext setcli $port
  ****************************************************
  BootConfigInfo:
  Reboot Required: false
  Message: Failed, Boot Config update failed
  BootConfig: ****************************************************
  $ ls /tmp/BootConfigExt_$port
  /tmp/BootConfigExt_FC_21:00:00:24:ff:60:00:01
  $ orfc-esxcli -t port -s bootconfigext getcli $port UEFI | sed -n 5p
  Data: Adapter Driver: true
  $ rm /tmp/BootConfigExt_$port

A failed read is ignored by `setFile`: the entries count as empty.

  $ VEXAPI_SIM_FAULTS=VEXAPI_GetNVMeBootDeviceEntries=1 orfc-esxcli -t port -s bootconfigext setFilecli $port NVME | grep -E 'Message|Storage 1|Host'
  Message: Success
        Host NQN: 
        Host ID: NA
        Storage 1: false
        Storage 1 WWNN: 00:00:00:00:00:00:00:00
        Storage 1 WWPN: 00:00:00:00:00:00:00:00
        Storage 1 NQN: 
        Storage 1 ControllerID: 0x0
        Storage 1 NamespaceID: 0
  $ rm /tmp/BootConfigExt_$port

But a log of the library that can't be opened ends the command there, with no file made.

  $ refuse_log 4 orfc-esxcli -t port -s bootconfigext setFilecli $port NVME
  ****************************************************
  BootConfigInfo:
  Message: Failed, Unknown
  BootConfig: ****************************************************
  $ ls /tmp/BootConfigExt_$port
  ls: cannot access '/tmp/BootConfigExt_FC_21:00:00:24:ff:60:00:01': No such file or directory
  [2]

The options of a boot target: every mix of number, name, disk and enable, in each mode.

  $ mixes() {
  >     for mix in 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15; do
  >         words=()
  >         ((mix & 1)) && words+=(--boot-target-num 1)
  >         ((mix & 2)) && words+=(--boot-target-wwpn $2)
  >         ((mix & 4)) && words+=(--boot-disk-num $3)
  >         ((mix & 8)) && words+=(--boot-target-enable true)
  >         echo "$mix $(orfc-esxcli -t port -s bootconfigext setFilecli $port $1 "${words[@]}" | sed -n 's/^Message: //p')"
  >     done
  > }
  $ mixes BIOS $target 3
  0 Success
  1 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  2 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  3 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  4 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  5 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  6 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  7 Success
  8 Failed, Boot parameter requires valid boot mode option
  9 Failed, Boot parameter requires valid boot mode option
  10 Failed, Boot parameter requires valid boot mode option
  11 Failed, Boot parameter requires valid boot mode option
  12 Failed, Boot parameter requires valid boot mode option
  13 Failed, Boot parameter requires valid boot mode option
  14 Failed, Boot parameter requires valid boot mode option
  15 Failed, Boot parameter requires valid boot mode option
  $ mixes UEFI $target 3
  0 Success
  1 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  2 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  3 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  4 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  5 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  6 Failed, Tgt Num, Tgt WWPN, Disk Num required for FCP targets
  7 Success
  8 Failed, Boot parameter requires valid boot mode option
  9 Failed, Boot parameter requires valid boot mode option
  10 Failed, Boot parameter requires valid boot mode option
  11 Failed, Boot parameter requires valid boot mode option
  12 Failed, Boot parameter requires valid boot mode option
  13 Failed, Boot parameter requires valid boot mode option
  14 Failed, Boot parameter requires valid boot mode option
  15 Failed, Boot parameter requires valid boot mode option
  $ mixes NVME $nvme 2
  0 Success
  1 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  2 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  3 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  4 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  5 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  6 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  7 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  8 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  9 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  10 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  11 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  12 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  13 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  14 Failed, Tgt Num, Tgt WWPN, Disk Num, Tgt Enable required for NVMe targets
  15 Success

Refusals, in the order of the checks.

  $ refused() { orfc-esxcli -t port -s bootconfigext setFilecli "$@" | sed -n 's/^Message: //p'; }
  $ refused $port BIOS --boot-target-num 4
  Failed, Boot parameter requires valid boot mode option
  $ refused $port UEFI -n 8 -p $target -o 3
  Success
  $ refused $port UEFI -p 50:06:0e:80:12:4a:7c:99
  Failed, Invalid parameter
  $ refused $port UEFI -l true
  Failed, Boot parameter requires valid boot mode option
  $ refused $port UEFI -n 1 -p $target -o 4
  Failed, Invalid parameter
  $ refused $port UEFI -n 1 -p $nvme -o 1
  Failed, Invalid parameter
  $ refused $port NVME -n 1 -p $target -o 3 -l true
  Failed, Invalid parameter
  $ refused $port NVME -n 1 -p $nvme -o 1 -l maybe
  Failed, Invalid parameter
  $ refused $port UEFI --selectable-boot true
  Failed, Boot parameter not supported with UEFI boot mode option
  $ refused $port NVME --selectable-boot true
  Failed, Boot parameter not supported with UEFI boot mode option
  $ refused $port BIOS --selective-login true
  Failed, Boot parameter requires valid boot mode option
  $ refused $port UEFI --fc-nvme true
  Failed, Boot parameter requires valid boot mode option
  $ refused FC_21:00:00:24:ff:60:00:04 BIOS --fc-nvme true
  Failed, Feature not supported for this adapter
  $ refused FC_21:00:00:24:ff:60:00:04 BIOS -l true
  Failed, Feature not supported for this adapter
  $ wc -l < /tmp/BootConfigExt_FC_21:00:00:24:ff:60:00:04
  24
