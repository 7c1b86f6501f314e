# Vital product data of a Linux host

  $ . "$TESTDIR/setup.sh"
  $ linux fcoe
  $ card=$sys/devices/pci0000:00/0000:00:08.0 PORT=FC_20:00:02:00:00:00:a0:01
  $ image() { python3 -c '
  > import re, sys
  > sys.stdout.buffer.write(bytes.fromhex(re.sub("#.*", "", open(sys.argv[1]).read())))' "$TESTDIR/../data/vpd/$1.hex"; }

These network devices have none.

  $ orfc-esxcli -t port -s vpd getcli $PORT
  ****************************************************
  VPDInformation:
  Message: Failed, VPD failed
  VPD Data: ****************************************************
  $ told
  host0: vital product data: No such file or directory

A card that has some. The transport class tells nothing of these ports' adapter; then the card's own names stand.

  $ image pci-spec-example-widget >$card/vpd
  $ orfc-esxcli -t port -s vpd getcli $PORT
  ****************************************************
  VPDInformation:
  Message: Success
  VPD Data: TagList:
  Tag: Engineering Date Code
  Value: 4950262536
  TagList:
  Tag: Manufacturing Id
  Value: 1037
  TagList:
  Tag: Product Identifier
  Value: ABCD Super-Fast Widget Controller
  TagList:
  Tag: Part Number
  Value: 6181682A
  TagList:
  Tag: Serial Number
  Value: 00000194
  TagList:
  Tag: Efi Driver Version
  Value: 65A01
  ****************************************************
  $ orfc-esxcli -t adapter listcli | grep -v Adapter__
  ****************************************************
  AdapterList:
  Adapters: Adapter_6181682A_00000194
  AdapterList:
  AdapterList:
  AdapterList:
  AdapterList:
  ****************************************************
  $ orfc-esxcli -t port -s info getcli $PORT | grep Model
  Data: Model: 6181682A

What the transport class does tell is not replaced.

  $ echo 'HBA 5000' >$sys/class/fc_host/host0/model; echo S1 >$sys/class/fc_host/host0/serial_number
  $ orfc-esxcli -t adapter listcli | grep -v Adapter__
  ****************************************************
  AdapterList:
  Adapters: Adapter_HBA 5000_S1
  AdapterList:
  AdapterList:
  AdapterList:
  AdapterList:
  ****************************************************

The serial number alone may be missing.

  $ rm $sys/class/fc_host/host0/serial_number
  $ orfc-esxcli -t adapter listcli | grep -v Adapter__ | sed -n 3p
  Adapters: Adapter_HBA 5000_00000194

Of more than 1024 bytes the first ones are shown. Sections that lie about their length, and no section at all.

  $ rm $sys/class/fc_host/host0/*l*; { image pci-spec-example-widget; head -c 4000 /dev/zero; } >$card/vpd
  $ orfc-esxcli -t port -s vpd getcli $PORT | grep -c Tag:
  6
  $ printf '\220\377\377PN\377abc' >$card/vpd
  $ orfc-esxcli -t port -s info getcli $PORT | grep Model
  Data: Model: abc
  $ printf '\220\1\0PN\3abc' >$card/vpd
  $ orfc-esxcli -t port -s info getcli $PORT | grep Model
  Data: Model: NA
  $ printf '\170\220\6\0PN\3abc' >$card/vpd
  $ orfc-esxcli -t port -s info getcli $PORT | grep Model
  Data: Model: NA
  $ printf '' >$card/vpd
  $ orfc-esxcli -t port -s vpd getcli $PORT
  ****************************************************
  VPDInformation:
  Message: Success
  VPD Data: ****************************************************
  $ told

Any port of an adapter may tell what it is.

  $ rm -r tree; "$TESTDIR/../hosts/generate" 2 0 tree; linux; rm $sys/bus/pci/devices/*/vpd $sys/class/fc_host/host0/model
  $ echo '' >$sys/class/fc_host/host1/serial_number
  $ orfc-esxcli -t adapter listcli | grep Adapters:
  Adapters: Adapter_SYN-16002_SYN00000

Unreadable data is reported when needed.

  $ rm $sys/class/fc_host/host1/model; mkdir $sys/devices/pci0000:00/0000:00:00.0/0000:01:00.0/vpd
  $ orfc-esxcli -t adapter listcli | grep Adapters:
  Adapters: Adapter__SYN00000
  $ told
  0000:01:00.0/vpd: Is a directory
