# Trees that aren't as they should be

Whatever a file contains, the rest of the list is complete, and omissions are reported in the library's output.

  $ . "$TESTDIR/setup.sh"
  $ lists() { for what in port target lun; do orfc-esxcli -t $what listcli | grep -c FC_; done; }
  $ linux fcoe
  $ lists
  5
  5
  11

A folder that is no sysfs tree has no adapters, not even an empty list of them.

  $ mkdir empty; VEXAPI_SYSFS_ROOT=empty orfc-esxcli -t port listcli
  vexapi linux: empty/sys/class can't be read: no sysfs there
  $ VEXAPI_SYSFS_ROOT=nowhere orfc-esxcli -t port -s info getcli FC_20:00:02:00:00:00:a0:01
  vexapi linux: nowhere/sys/class can't be read: no sysfs there
  ****************************************************
  PortInformation:
  Message: Failed, Host not found
  PortInfo: ****************************************************

A machine without Fibre Channel has an empty list.

  $ mkdir -p empty/sys/class; VEXAPI_SYSFS_ROOT=empty orfc-esxcli -t port listcli
  vexapi linux: no Fibre Channel port in empty/sys/class/fc_host
  ****************************************************
  ****************************************************

A port without a name can't be identified; nor can a remote port. Their targets and LUNs go with them.

  $ printf '' >$sys/class/fc_host/host0/port_name
  $ echo 0xffffffffffffffff >$sys/class/fc_host/host1/port_name
  $ echo 'twenty' >$sys/class/fc_host/host2/port_name
  $ rm $sys/class/fc_host/host3; ln -s ../../devices/nowhere $sys/class/fc_host/host3
  $ lists
  1
  0
  0
  [1]
  $ told | sort -u
  fc_host/host0: left out, since it has no port name
  fc_host/host1: left out, since it has no port name
  fc_host/host2: left out, since it has no port name
  fc_host/host3: left out, since it has no port name
  host2/port_name: not understood as the WWPN
  nvme/nvme0: left out, since no port of this host has it
  nvme/nvme1: left out, since no port of this host has it

Every other attribute may be missing, empty, unknown, garbage or too long.

  $ linux fcoe
  $ PORT=FC_20:00:02:00:00:00:a0:01
  $ cd $sys/class/fc_host/host0
  $ rm node_name port_type; printf '' >port_state; echo ' ' >speed; echo fast >supported_speeds; echo 0x1234567 >port_id
  $ printf 'a<b>&%%s%%n\t\377\001 %0100d\n' 7 >driver_version; echo none >statistics/lip_count
  $ cd - >/dev/null
  $ orfc-esxcli -t port -s info getcli $PORT | grep -E 'Driver|Node|Speed|State|Type|Port ID'
        PCI Bus Max Speed: Unknown
        PCI Bus Negotiated Speed: Unknown
        Driver Version: a<b>&%s%n??? 00000000000000000000000000000000000000000000000000
        Node Name: 00:00:00:00:00:00:00:00
        Maximum Speed: Unknown
        Supported Speeds: Gbps
        Port Interface Type: Physical Port
        Protocol Type: FCoE
        Port Type: Unknown
        Port State: Unknown
        Port Speed: Unknown
        Port ID: 00:00:00
  $ told
  host0/supported_speeds: not understood as the speeds of the port
  $ orfc-esxcli -t port -s stats getcli $PORT Driver | grep LIP
        LIP Reset Count: 0
  $ told
  host0/statistics/lip_count: not understood as the loop initializations
  $ lists | paste -s
  5\t5\t11 (esc)
  $ rm /var/tmp/vexapi-output.log

A port whose state isn't known keeps its speed; only a link that is down has none.

  $ echo 16 Gbit >$sys/class/fc_host/host0/speed
  $ orfc-esxcli -t port -s info getcli $PORT | grep -E 'Port (State|Speed)'
        Port State: Unknown
        Port Speed: 16 Gbps

An unreadable file is reported if what it says is shown. So is a folder in place of a file.

  $ rm $sys/class/fc_host/host0/speed; mkdir $sys/class/fc_host/host0/speed; told >/dev/null
  $ orfc-esxcli -t port listcli | grep -c FC_
  5
  $ told
  $ orfc-esxcli -t port -s info getcli $PORT | grep 'Port Speed'
        Port Speed: Unknown
  $ told | grep -w speed
  host0/speed: Is a directory

Nobody waits for a pipe in a file's place.

  $ rm -f $sys/class/fc_host/host0/node_name; mkfifo $sys/class/fc_host/host0/node_name
  $ timeout 5 orfc-esxcli -t port -s info getcli $PORT | grep 'Node Name'
        Node Name: 00:00:00:00:00:00:00:00

The kernel writes host numbers of 32 bits, and without zeros in front.

  $ linux fcoe
  $ for name in host4294967296 host00 host host-1 host0x; do ln -s $(readlink $sys/class/fc_host/host0) $sys/class/fc_host/$name; done
  $ lists | paste -s
  5\t5\t11 (esc)
  $ told | sort -u
  fc_host/host4294967296: left out, since the kernel has no such number

No link leads out of a tree: absolute ones, and those that climb above its root, begin at that root.

  $ echo outside >version; echo inside >tree/version
  $ rm $sys/class/fc_host/host0/statistics/reset_statistics
  $ ln -s $PWD/version $sys/class/fc_host/host0/statistics/reset_statistics
  $ for file in $PWD/version /version ../../../../../../../../../../../../../../../../../../version; do
  >   ln -sf $file $sys/class/fc_host/host0/driver_version
  >   orfc-esxcli -t port -s info getcli $PORT | grep Driver
  > done
        Driver Version: 
        Driver Version: inside
        Driver Version: inside
  $ orfc-esxcli -t port -s stats resetcli $PORT Firmware | grep Message
  Message: Failed, Statistics clear error
  $ cat version
  outside

A remote port without its number as a SCSI target has its LUNs nevertheless, by its folder. Without its roles it isn't
known as a target.

  $ linux fcoe
  $ rm $sys/class/fc_remote_ports/rport-0:0-1/scsi_target_id
  $ ln -s ../../../rport-0:0-1 $sys/class/fc_remote_ports/rport-0:0-1/device
  $ lists | paste -s
  5\t5\t11 (esc)
  $ printf '' >$sys/class/fc_remote_ports/rport-0:0-0/roles; rm $sys/class/fc_remote_ports/rport-1:0-0/roles
  $ lists | paste -s
  5\t3\t6 (esc)
  $ told | sort -u
  fc_remote_ports/rport-1:0-0: left out, since it has no roles

LUNs: texts with bytes of all kinds, too short or missing inquiry data, designators that lie about their lengths, sizes
that are no numbers, links that go nowhere.

  $ linux fcoe
  $ LUN=${PORT}_Target_20:00:02:00:00:00:a0:10_LUN
  $ cd $sys/bus/scsi/devices
  $ printf '\5\0\6\2\133\0\0\0A<&%%s\200\1BPRODUCT%%n--------1.0\n' >0:0:0:0/inquiry
  $ printf '\0\203\0\377\1\3\0\377\140\1' >0:0:0:0/vpd_pg83
  $ printf 'short' >0:0:0:1/inquiry; echo 0 >0:0:0:1/type; echo MAKER >0:0:0:1/vendor; echo DISK-9999999999999999 >0:0:0:1/model
  $ rm 0:0:0:1/vpd_pg83; echo naa.6001405 >0:0:0:1/wwid
  $ rm 0:0:0:2/inquiry 0:0:0:2/vpd_pg83; echo t10.LIO-ORG >0:0:0:2/wwid
  $ cd - >/dev/null
  $ echo many >$sys/class/block/sda/size; echo 0 >$sys/class/block/sdc/queue/logical_block_size
  $ for number in 0 1 2; do orfc-esxcli -t lun -v info getcli ${LUN}_$number | sed -n 4,9p; done
  LunInfo: LunInfoList:
  Data: Vendor ID: A<&%s??B
        Product ID: PRODUCT%n-------
        Product Revision: -1.0
        Lun Number: 0
        Lun Size In MB: 0
  LunInfo: LunInfoList:
  Data: Vendor ID: MAKER
        Product ID: DISK-99999999999
        Product Revision: 
        Lun Number: 1
        Lun Size In MB: 32
  LunInfo: LunInfoList:
  Data: Vendor ID: 
        Product ID: 
        Product Revision: 
        Lun Number: 2
        Lun Size In MB: 32
  $ told | sort -u
  0:0:0:0/vpd_pg83: not understood as the worldwide ids
  0:0:0:1/inquiry: not understood as the standard inquiry data
  0:0:0:1/wwid: not understood as the worldwide id
  block/sda/size: not understood as the size in units of 512 bytes

The first LUN speaks for its target.

  $ orfc-esxcli -t target -v info getcli ${PORT}_Target_20:00:02:00:00:00:a0:10 | grep -E 'ID|Product'
        Target Port ID: 00:a0:10
        Vendor ID: A<&%s??B
        Product ID: PRODUCT%n-------
        Product Revision: -1.0
        Product Type: CDROM

LUN numbers are of 64 bits, and the first 16 are shown.

  $ cp -r $sys/bus/scsi/devices/0:0:0:1/. $sys/bus/scsi/devices/0:0:0:4295098371
  $ orfc-esxcli -t lun listcli | grep a0:10_LUN
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_0
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_1
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_2
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_3

NVMe controllers: another transport, a discovery controller, an address without names, one of another machine's port.

  $ linux fcoe
  $ cd $sys/class/nvme
  $ for number in 2 3 4 5; do cp -r nvme0/. nvme$number; done
  $ echo pcie >nvme2/transport; echo discovery >nvme3/cntrltype; echo 'traddr=none' >nvme4/address
  $ sed -i s/host_traddr=nn-0x1/host_traddr=nn-0x2/\;s/000a001$/000a0ff/ nvme5/address
  $ rm nvme0/nvme0c0n1/nsid
  $ cd - >/dev/null
  $ orfc-esxcli -t lun listcli | grep NSID
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10_NSID_7
  LUNs/Namespaces: FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:c0:20_NSID_1
  LUNs/Namespaces: FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:c0:20_NSID_7
  $ told
  block/nvme0c0n1: left out, since it has no namespace number
  nvme4/address: not understood as the names of both ports
  nvme/nvme4: left out, since no port of this host has it
  nvme/nvme5: left out, since no port of this host has it

A namespace's number: a LUN's record has 16 bits for it, and 0 is invalid.

  $ linux fcoe
  $ cd $sys/class/nvme
  $ echo 65535 >nvme0/nvme0c0n1/nsid; echo 65536 >nvme0/nvme0c0n2/nsid
  $ printf '' >nvme1/nvme0c1n1/nsid; echo 0 >nvme1/nvme0c1n2/nsid
  $ cd - >/dev/null
  $ orfc-esxcli -t lun listcli | grep NSID
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10_NSID_65535
  $ told | sort -u
  block/nvme0c0n2: left out, since its number takes more than 16 bits
  block/nvme0c1n1: left out, since it has no namespace number
  block/nvme0c1n2: left out, since it has no namespace number
  $ rm $sys/class/nvme/nvme1/transport; orfc-esxcli -t target listcli | grep c0:
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10
  $ told | grep nvme1
  nvme/nvme1: left out, since it has no transport

Half a tree: without block devices there are no sizes, without a SCSI bus no LUNs, without remote ports NVMe alone.

  $ linux fcoe
  $ rm -r $sys/class/block
  $ orfc-esxcli -t lun -v info getcli ${LUN}_0 | grep Size
        Lun Size In MB: 0
  $ rm -r $sys/bus
  $ lists | paste -s
  5\t5\t0 (esc)
  $ rm -r $sys/class/fc_remote_ports
  $ orfc-esxcli -t target listcli | grep Targets:
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10
  Targets: FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:c0:20
  $ rm -r $sys/devices/pci0000:00/0000:00:08.0/vendor $sys/class/nvme
  $ lists | paste -s
  5\t0\t0 (esc)
  $ told
