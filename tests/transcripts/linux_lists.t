# What a Linux host has: ports, targets, LUNs and namespaces

The tree is a real one, of a machine with five software ports. Two of them, `host0` and `host1`, see targets; the
others are the targets' side and see initiators only. Those are ports as well.

  $ . "$TESTDIR/setup.sh"
  $ linux fcoe
  $ orfc-esxcli -t port listcli
  ****************************************************
  PortList:
  Ports: FC_20:00:02:00:00:00:a0:01
  PortList:
  Ports: FC_20:00:02:00:00:00:b0:01
  PortList:
  Ports: FC_20:00:02:00:00:00:a0:10
  PortList:
  Ports: FC_20:00:02:00:00:00:a0:11
  PortList:
  Ports: FC_20:00:02:00:00:00:b0:12
  ****************************************************

The documents are those of any other host.

  $ orfc-esxcli -t port list | head -5
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  <structure typeName="PortList">
  <field name="Ports">
  <string>FC_20:00:02:00:00:00:a0:01</string></field>

Each port knows its targets: the remote ports that have the role, and the NVMe controllers behind it.

  $ orfc-esxcli -t target listcli
  ****************************************************
  TargetList:
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10
  TargetList:
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:11
  TargetList:
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10
  TargetList:
  Targets: FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:b0:12
  TargetList:
  Targets: FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:c0:20
  ****************************************************

LUNs come in the order of their numbers, with the whole number of LUN 300. A namespace has the number that the
controller gives it: the second one is 7, though its device is `nvme0n2`.

  $ orfc-esxcli -t lun listcli
  ****************************************************
  LunList:
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_0
  LunList:
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_1
  LunList:
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_2
  LunList:
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:11_LUN_1
  LunList:
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:11_LUN_300
  LunList:
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10_NSID_1
  LunList:
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10_NSID_7
  LunList:
  LUNs/Namespaces: FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:b0:12_LUN_0
  LunList:
  LUNs/Namespaces: FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:b0:12_LUN_1
  LunList:
  LUNs/Namespaces: FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:c0:20_NSID_1
  LunList:
  LUNs/Namespaces: FC_20:00:02:00:00:00:b0:01_Target_20:00:02:00:00:00:c0:20_NSID_7
  ****************************************************

A remote port that has the role of an NVMe target is the controller's, once. One that is a SCSI target as well is there
twice, under one name.

  $ cd $sys/class/fc_remote_ports/rport-0:0-1; echo 0x200002000000c010 >port_name
  $ echo NVMe Target, NVMe Discovery >roles; cd - >/dev/null
  $ orfc-esxcli -t target listcli | grep c0:10
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10
  $ orfc-esxcli -t target -v info getcli FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10 |
  >   grep -E 'Port ID|Namespaces|Status'
        Target Port ID: 00:a0:11
        Namespaces: NSID_1, NSID_7
        Status: Online
  $ echo FCP Target, NVMe Target >$sys/class/fc_remote_ports/rport-0:0-1/roles
  $ orfc-esxcli -t target listcli | grep c0:10
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10
  Targets: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10
  $ orfc-esxcli -t lun listcli | grep c0:10
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10_LUN_1
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10_LUN_300
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10_NSID_1
  LUNs/Namespaces: FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10_NSID_7
  $ rm -r $sys/class/nvme; echo NVMe Target >$sys/class/fc_remote_ports/rport-0:0-1/roles
  $ orfc-esxcli -t target -v info getcli FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10 |
  >   grep -E 'Port ID|Product Type|Namespace|Status'
        Target Port ID: 00:a0:11
        Product Type: NVMe Disk
        Namespace Count: 0
        Namespaces: 
        Status: Online

Nothing was left out.

  $ told

Each adapter is the device that owns the ports. These ones have no model and no serial number to show.

  $ orfc-esxcli -t adapter listcli
  ****************************************************
  AdapterList:
  Adapters: Adapter__
  AdapterList:
  Adapters: Adapter__
  AdapterList:
  Adapters: Adapter__
  AdapterList:
  Adapters: Adapter__
  AdapterList:
  Adapters: Adapter__
  ****************************************************

Functions of one PCI device are one adapter with several ports, in order.

  $ "$TESTDIR/../hosts/generate" 4 4 generated
  $ rm -rf tree; mv generated tree; linux
  $ orfc-esxcli -t adapter listcli
  ****************************************************
  AdapterList:
  Adapters: Adapter_SYN-16002_SYN00000
  AdapterList:
  Adapters: Adapter_SYN-32002_SYN00001
  ****************************************************
  $ orfc-esxcli -t adapter -s info getcli Adapter_SYN-16002_SYN00000 | head -12
  ****************************************************
  AdapterInformation:
  Message: Success
  General Parameters: GeneralParametersList:
  Data: Manufacturer: Synthetic
        Model: SYN-16002
        Serial Number: SYN00000
        Vendor ID: 0x1d0c
        Device ID: 0x2261
        Subsystem Device ID: 0x2b8
        Subsystem Vendor ID: 0x1d0c
        PCI Bus ID: 0x1
  $ for port in $(orfc-esxcli -t port listcli | sed -n 's/Ports: //p'); do
  >     orfc-esxcli -t port -s info getcli $port | grep -E 'Model|Port Number|Function|Port Name'
  > done
  Data: Model: SYN-16002
        Port Number: 1
        PCI Function Number: 0x0
        Port Name: 21:00:1d:0c:00:00:00:00
  Data: Model: SYN-16002
        Port Number: 2
        PCI Function Number: 0x1
        Port Name: 21:00:1d:0c:00:00:00:01
  Data: Model: SYN-32002
        Port Number: 1
        PCI Function Number: 0x0
        Port Name: 21:00:1d:0c:00:00:00:02
  Data: Model: SYN-32002
        Port Number: 2
        PCI Function Number: 0x1
        Port Name: 21:00:1d:0c:00:00:00:03
