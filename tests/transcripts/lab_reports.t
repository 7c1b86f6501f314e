# Reports and actions on the lab host

  $ . "$TESTDIR/setup.sh"
  $ port=FC_21:00:00:24:ff:0c:48:2e
  $ adapter=Adapter_ORV2872_RFL2348G90175
  $ orfc-esxcli -t port -s info getcli $port
  ****************************************************
  PortInformation:
  Message: Success
  PortInfo: PortInfoList:
  Data: Model: ORV2872
        Port Number: 1
        PCI Bus Number: 0x81
        PCI Device Number: 0x0
        PCI Function Number: 0x0
        PCI Bus Max Width: x8
        PCI Bus Negotiated Width: x8
        PCI Bus Max Speed: 16 Gtps
        PCI Bus Negotiated Speed: 16 Gtps
        Driver Version: 5.4.82.0-1
        Host NQN: nqn.2014-08.org.nvmexpress:uuid:4c4c4544-0038-4a10-8056-b8c04f4d5932
        Host ID: 4c4c454400384a108056b8c04f4d5932
        Node Name: 20:00:00:24:ff:0c:48:2e
        Port Name: 21:00:00:24:ff:0c:48:2e
        Principal Fabric WWN: 10:00:88:94:71:2f:90:00
        Adjacent Fabric WWN: 20:03:88:94:71:2f:90:00
        Maximum Speed: 64 Gbps
        Supported Speeds: 16 32 64 Gbps
        Port Interface Type: Physical Port
        Protocol Type: FC
        Port Type: Node Port
        Port State: Online
        Port Connection Mode: Point to Point
        Port Speed: 64 Gbps
        Port ID: 02:50:00
        Temperature In Celsius: 66
        Flash Firmware Version: 9.15.06
        Flash BIOS Version: 3.68
        Flash FCode Version: 4.25
        Flash EFI Version: 8.04
        Flash Preload Firmware Area Version: 9.15.06
        Flash FC Board Config Version: 2.00.08
        Flash MPI Firmware Version: 2.00.14
        Flash PEP Firmware Version: 3.00.02
        Flash PEP Board Config Version: 2.00.04
        Flash PEP SoftROM Version: 3.00.01
        Flash MPI SoftROM Version: 2.00.03
        Flash PCIE Serdes Version: 1.01.07
        Running Firmware Version: 9.15.06
        Running MPI Firmware Version: 2.00.14
        Running PEP Firmware Version: 3.00.02
        Config Lockdown: false
        Firmware Update Lockdown: false
        MPI Lockdown: false
  ****************************************************
  $ calls
  VEXAPI_GetAdapterAsicBoardTemperature
  VEXAPI_GetLockdownStatus
  VEXAPI_GetFlashComponentVersion
  $ orfc-esxcli -t adapter -s info get $adapter
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="AdapterInformation">
  <field name="Message">
  <string>Success</string></field>
  <field name="General Parameters">
  <list type="structure">
  <structure typeName="GeneralParametersList">
  <field name="Data">
  <string>Manufacturer: Orvane Corporation
        Model: ORV2872
        Serial Number: RFL2348G90175
        Vendor ID: 0x1d0c
        Device ID: 0x2281
        Subsystem Device ID: 0x2e2
        Subsystem Vendor ID: 0x1d0c
        PCI Bus ID: 0x81
        Chip Revision: 1
        Type: Fibre Channel Adapter
        Multiboot Version: 2.10.12
        Flash Firmware Version: 9.15.06
        Flash BIOS Version: 3.68
        Flash FCode Version: 4.25
        Flash EFI Version: 8.04
        Flash Preload Firmware Area Version: 9.15.06
        Flash FC Board Config Version: 2.00.08
        Flash MPI Firmware Version: 2.00.14
        Flash PEP Firmware Version: 3.00.02
        Flash PEP Board Config Version: 2.00.04
        Flash PEP SoftROM Version: 3.00.01
        Flash MPI SoftROM Version: 2.00.03
        Flash PCIE Serdes Version: 1.01.07
        Family Firmware Version: 9.15.06
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_GetFlashComponentVersion
  VEXAPI_GetAdapterFlashMemoBlock
  $ orfc-esxcli -t adapter -s flashinfo getcli adapter_orv2872_rfl2348g90175_and_more
  ****************************************************
  AdapterFlashInformation:
  Message: Success
  Flash Info: FlashInfoList:
  Data: MBI Version: 02.10.12
        MBI Build Date: 2024-08-29
        Flash Tool ID: Sorvenna GUI
        Flash Tool Version: 02.06.01.04
        Last Update Time: 2024-10-02 17:12:55
        Family Firmware Version: 09.15.06
  ****************************************************
  $ orfc-esxcli -t adapter -s flashinfo getcli Adapter_ORV2562_RFD1019S27745
  ****************************************************
  AdapterFlashInformation:
  Message: Failed, feature not supported for this adapter
  Flash Info: ****************************************************

An updated flash shows its new version; on the newer chips a multi-boot image runs at once.

  $ printf 'ORFC-IMAGE MBI 2.10.15\nFirmware 9.15.7\nBios 3.69\n' > image
  $ rm -f journal
  $ orfc-esxcli -t adapter updatecli $adapter image mbi
  ****************************************************
  FlashUpdate:
  Reboot Required: false
  Message: Success
  ****************************************************
  $ calls
  VEXAPI_doOptionROMUpdate path=image reserved=0
  $ orfc-esxcli -t adapter -s info getcli $adapter | grep -E 'Multiboot|Flash Firmware|BIOS'
        Multiboot Version: 2.10.15
        Flash Firmware Version: 9.15.7
        Flash BIOS Version: 3.69
  $ orfc-esxcli -t adapter updatecli Adapter_ORV2672_RFE1423R61108 image MBI
  ****************************************************
  FlashUpdate:
  Reboot Required: true
  Message: Success
  ****************************************************
  $ orfc-esxcli -t adapter updatecli $adapter image BrdCfg
  $ tail -5 /var/tmp/vexapi-output.log
  ****************************************************
  FlashUpdate:
  Reboot Required: false
  Message: Failed, Feature not supported for this adapter
  ****************************************************
  $ orfc-esxcli -t adapter updatecli $adapter image Other
  ****************************************************
  FlashUpdate:
  Reboot Required: false
  Message: Failed, Flash Update Error
  ****************************************************
  $ orfc-esxcli -t adapter updatecli $adapter missing PEPCfg
  ****************************************************
  FlashUpdate:
  Reboot Required: false
  Message: Failed, Flash File not found
  ****************************************************
  $ orfc-esxcli -t adapter updatecli $adapter image
  ****************************************************
  FlashUpdate:
  Reboot Required: false
  Message: Failed, Invalid Number of parameters
  ****************************************************
  Usage: [identifier] [flashfile]\r (esc)

A beacon stays as it was set, counters that were reset read zero.

  $ orfc-esxcli -t port -s beacon setcli $port on
  ****************************************************
  BeaconInfo:
  Message: Success
  Beacon State: ON
  ****************************************************
  $ orfc-esxcli -t port -s beacon get $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="BeaconInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="Beacon State">
  <string>ON</string></field>
  </structure>
  </output>
  $ old=FC_21:00:00:24:ff:0a:51:c4
  $ orfc-esxcli -t port -s stats getcli $old firmware
  ****************************************************
  FCStatistics:
  Message: Success
  FCStats: FCStatsList:
  Data: Link Failure Count: 0
        Loss Of Sync Count: 14
        Loss Of Signal Count: 0
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 388
        Invalid CRC Count: 0
  ****************************************************
  $ orfc-esxcli -t port -s stats resetcli $old firmware
  ****************************************************
  ResetFCStatistics:
  Message: Success
  ****************************************************
  $ orfc-esxcli -t port -s stats getcli $old Firmware
  ****************************************************
  FCStatistics:
  Message: Success
  FCStats: FCStatsList:
  Data: Link Failure Count: 0
        Loss Of Sync Count: 0
        Loss Of Signal Count: 0
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 0
        Invalid CRC Count: 0
  ****************************************************
  $ orfc-esxcli -t port -s stats getcli $old Driver
  ****************************************************
  FCStatistics:
  Message: Success
  FCStats: FCStatsList:
  Data: Controller Error Count: 0
        Device Error Count: 0
        IO Count: 58133
        Mega Bytes Count: 91204
        LIP Reset Count: 2
        Interrupt Count: 60112
  ****************************************************
  $ orfc-esxcli -t port -s stats getcli $old other
  ****************************************************
  FCStatistics:
  Message: Failed, Invalid parameter
  FCStats: ****************************************************
  $ orfc-esxcli -t port -s stats resetcli $old Driver
  ****************************************************
  FCStatistics:
  Message: Failed, Invalid parameter
  FCStats: ****************************************************
  Usage: reset [port identifier]\r (esc)

A changed personality stays; adapters that have none show what they are.

  $ orfc-esxcli -t adapter -s personality getcli Adapter_ORV8362_RFE1506P30951
  ****************************************************
  AdapterPersonality:
  Message: Success
  Personality: CNA
  ****************************************************
  $ orfc-esxcli -t adapter -s personality setcli Adapter_ORV8362_RFE1506P30951 nonsense
  ****************************************************
  AdapterPersonality:
  Reboot Required: true
  Message: Success
  Personality: FC
  ****************************************************
  $ orfc-esxcli -t adapter -s personality get Adapter_ORV8362_RFE1506P30951
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="AdapterPersonality">
  <field name="Message">
  <string>Success</string></field>
  <field name="Personality">
  <string>FC</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t adapter -s personality getcli Adapter_ORV8262_RFD1211Q18830
  ****************************************************
  AdapterPersonality:
  Message: Success
  Personality: CNA
  ****************************************************
  $ orfc-esxcli -t adapter -s personality setcli Adapter_ORV2670M_RFF1508V22064 CNA
  ****************************************************
  AdapterPersonality:
  Reboot Required: false
  Message: Failed, Personality change not allowed for user
  Personality: Unknown
  ****************************************************
  $ orfc-esxcli -t adapter -s personality setcli $adapter CNA
  ****************************************************
  AdapterPersonality:
  Reboot Required: false
  Message: Failed, Not supported for this adapter
  Personality: Unknown
  ****************************************************

The firmware dump is written to a file.

  $ orfc-esxcli -t port -s fwdump getcli FC_21:00:00:24:ff:7e:2d:94 dump && wc -c < dump
  ****************************************************
  FwDumpInfo:
  Message: Success
  ****************************************************
  1024
  $ orfc-esxcli -t port -s fwdump get $port dump
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FwDumpInfo">
  <field name="Message">
  <string>Success</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s fwdump getcli FC_21:00:00:24:ff:7e:2d:94
  ****************************************************
  FwDumpInfo:
  Message: Failed, Parameter Error
  ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s fwdump getcli FC_21:00:00:24:ff:7e:2d:94 /nowhere/dump
  ****************************************************
  FwDumpInfo:
  Message: Failed, File not found
  ****************************************************
