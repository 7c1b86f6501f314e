# A Linux host after faults

The same machine: `host1` and `host3` lost their links, two remote ports are blocked, LUNs are offline.

  $ . "$TESTDIR/setup.sh"
  $ linux degraded
  $ grep . $sys/class/fc_host/host*/port_state
  tree/sys/class/fc_host/host0/port_state:Online
  tree/sys/class/fc_host/host1/port_state:Linkdown
  tree/sys/class/fc_host/host2/port_state:Online
  tree/sys/class/fc_host/host3/port_state:Linkdown
  tree/sys/class/fc_host/host4/port_state:Online

Everything that the kernel still has is listed.

  $ orfc-esxcli -t port listcli | grep -c Ports:
  5
  $ orfc-esxcli -t target listcli | grep Targets:
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:11
  Targets: FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:b0:12
  $ orfc-esxcli -t lun listcli | grep -c LUNs
  7

A port without a link has no speed and no id, whatever the kernel says of them.

  $ cat $sys/class/fc_host/host1/speed $sys/class/fc_host/host1/port_id
  10 Gbit
  0x000000
  $ orfc-esxcli -t port -s info getcli FC_20:00:02:00:00:00:b0:01 | grep -E 'Port (State|Speed|ID)'
        Port State: Offline
        Port Speed: Unknown
        Port ID: 00:00:00

Before the first login the id is of 32 ones.

  $ echo 0xffffffff >$sys/class/fc_host/host1/port_id
  $ orfc-esxcli -t port -s info getcli FC_20:00:02:00:00:00:b0:01 | grep 'Port ID'
        Port ID: 00:00:00

A blocked target is offline, one that is only slow is not.

  $ orfc-esxcli -t target -v info getcli FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:b0:12 | grep Status
        Status: Offline
  $ echo Marginal >$sys/class/fc_remote_ports/rport-1:0-0/port_state
  $ orfc-esxcli -t target -v info getcli FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:b0:12 | grep Status
        Status: Online

A remote port that went away for good has no role any more, and is no target. One whose number as a SCSI target is gone
has no LUNs, and shows 65535.

  $ echo unknown >$sys/class/fc_remote_ports/rport-1:0-0/roles
  $ echo -1 >$sys/class/fc_remote_ports/rport-0:0-1/scsi_target_id
  $ orfc-esxcli -t target listcli | grep Targets:
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:11
  $ orfc-esxcli -t target -v info getcli FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:11 |
  >   grep -E 'Number|Count|Type|Luns'
        Target Number: 65535
        Product Type: Device
        Serial Number: 
        Lun Count: 0
        Luns: 
        Remote Type: Unknown
  $ orfc-esxcli -t lun listcli | grep LUNs
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_0
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_1
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_2
  $ told

# A virtual port

`host5` is one of `host0`. It shares its adapter's port.

  $ linux npiv
  $ readlink $sys/class/fc_host/host5
  ../../devices/pci0000:00/0000:00:08.0/virtio2/net/i0/ctlr_0/host0/vport-0:0-0/host5/fc_host/host5
  $ orfc-esxcli -t port listcli | grep Ports:
  Ports: FC_20:00:02:00:00:00:a0:01
  Ports: FC_20:00:02:00:00:00:a0:f1
  Ports: FC_20:00:02:00:00:00:b0:01
  Ports: FC_20:00:02:00:00:00:a0:10
  Ports: FC_20:00:02:00:00:00:a0:11
  Ports: FC_20:00:02:00:00:00:b0:12
  $ orfc-esxcli -t port -s info getcli FC_20:00:02:00:00:00:a0:f1 |
  >   grep -E 'Port (Number|Interface|State|Type|ID|Name)|PCI Device'
        Port Number: 1
        PCI Device Number: 0x8
        Port Name: 20:00:02:00:00:00:a0:f1
        Port Interface Type: NPIV Virtual Port
        Port Type: Node Port
        Port State: Offline
        Port ID: 00:00:00
  $ orfc-esxcli -t adapter listcli | grep -c Adapters:
  5
