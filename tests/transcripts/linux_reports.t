# Reports of a Linux host

  $ . "$TESTDIR/setup.sh"
  $ linux fcoe
  $ PORT=FC_20:00:02:00:00:00:a0:01

The kernel doesn't provide this port's supported speeds and versions; nothing is made up for them.

  $ orfc-esxcli -t port -s info getcli $PORT
  ****************************************************
  PortInformation:
  Message: Success
  PortInfo: PortInfoList:
  Data: Model: NA
        Port Number: 1
        PCI Bus Number: 0x0
        PCI Device Number: 0x8
        PCI Function Number: 0x0
        PCI Bus Max Width: Unknown
        PCI Bus Negotiated Width: Unknown
        PCI Bus Max Speed: Unknown
        PCI Bus Negotiated Speed: Unknown
        Driver Version: 
        Node Name: 10:00:02:00:00:00:a0:01
        Port Name: 20:00:02:00:00:00:a0:01
        Principal Fabric WWN: 00:00:00:00:00:00:00:00
        Adjacent Fabric WWN: 00:00:00:00:00:00:00:00
        Maximum Speed: Unknown
        Supported Speeds: Gbps
        Port Interface Type: Physical Port
        Protocol Type: FCoE
        Port Type: Node Port
        Port State: Online
        Port Connection Mode: Point to Point
        Port Speed: 10 Gbps
        Port ID: 00:a0:01
        Flash Firmware Version: NA
        Flash BIOS Version: NA
        Flash FCode Version: NA
        Flash EFI Version: NA
        Flash Preload Firmware Area Version: NA
        Flash FC Board Config Version: NA
        Running Firmware Version: NA
  ****************************************************

Counters that the driver doesn't keep read all ones in the kernel and 0 here. Requests and megabytes are sums of those
read, written and, of requests, others.

  $ cd $sys/class/fc_host/host0/statistics
  $ head *put_requests *control_requests loss_of_sync_count | grep -v '^$'
  ==> fcp_input_requests <==
  0xae
  ==> fcp_output_requests <==
  0x0
  ==> fcp_control_requests <==
  0xd
  ==> loss_of_sync_count <==
  0xffffffffffffffff
  $ cd - >/dev/null
  $ orfc-esxcli -t port -s stats getcli $PORT Driver | sed -n 4,10p
  FCStats: FCStatsList:
  Data: Controller Error Count: 0
        Device Error Count: 0
        IO Count: 187
        Mega Bytes Count: 0
        LIP Reset Count: 0
        Interrupt Count: 0
  $ orfc-esxcli -t port -s stats getcli $PORT Firmware | sed -n 4,10p
  FCStats: FCStatsList:
  Data: Link Failure Count: 0
        Loss Of Sync Count: 0
        Loss Of Signal Count: 0
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 0
        Invalid CRC Count: 0

Clearing them is the kernel's business.

  $ orfc-esxcli -t port -s stats resetcli $PORT Firmware
  ****************************************************
  ResetFCStatistics:
  Message: Success
  ****************************************************
  $ cat $sys/class/fc_host/host0/statistics/reset_statistics; echo
  1

A target has the inquiry texts of its first LUN, without their padding.

  $ orfc-esxcli -t target -v info getcli ${PORT}_Target_20:00:02:00:00:00:a0:10
  ****************************************************
  TargetInformation:
  Message: Success
  TargetInfo: TargetInfoList:
  Data: Target Node Name: 10:00:02:00:00:00:a0:10
        Target Port Name: 20:00:02:00:00:00:a0:10
        Target Port ID: 00:a0:10
        Target Number: 0
        Vendor ID: LIO-ORG
        Product ID: RAMDISK-A
        Product Revision: 4.0
        Product Type: FCP Disk
        Serial Number: 
        Lun Count: 3
        Luns: LUN_0, LUN_1, LUN_2
        Remote Type: Unknown
        Session State: NA
        Secure Mode: Disabled
        Congestion Current State: Unknown
        Virtual Lane: NA
        I/O Throttling: None
        Status: Online
  ****************************************************

Its statistics are what the fabric notified of it.

  $ cd $sys/class/fc_remote_ports/rport-0:0-0/statistics
  $ echo 0x5 >fpin_li_link_failure_count; echo 0x1ffffffff >fpin_li_invalid_crc_count
  $ cd - >/dev/null
  $ orfc-esxcli -t target -v stats getcli ${PORT}_Target_20:00:02:00:00:00:a0:10
  ****************************************************
  TargetStatistics:
  Message: Success
  Target Stats: TargetStatsList:
  Data: Node Name: 10:00:02:00:00:00:a0:10
        Port Name: 20:00:02:00:00:00:a0:10
        Port Id: 00:a0:10
        Target Number: 0
        Link Failure Count: 5
        Loss Of Sync Count: 0
        Loss Of Signal Count: 0
        Primitive Sequence Protocol Error Count: 0
        Invalid Transmission Word Count: 0
        Invalid CRC Count: 4294967295
  ****************************************************

An NVMe controller.

  $ orfc-esxcli -t target -v info getcli ${PORT}_Target_20:00:02:00:00:00:c0:10
  ****************************************************
  TargetInformation:
  Message: Success
  TargetInfo: TargetInfoList:
  Data: Target Node Name: 10:00:02:00:00:00:c0:10
        Target Port Name: 20:00:02:00:00:00:c0:10
        Target Port ID: 00:00:00
        Target Number: 65535
        Vendor ID: 
        Product ID: FC TEST NVME
        Product Revision: 6.1.0-56
        Product Type: NVMe Disk
        Serial Number: FCTEST0000000001
        Storage NQN: nqn.2014-08.org.nvmexpress:uuid:22222222-0000-4000-8000-000000000001
        Storage Controller ID: 0x1
        Namespace Count: 2
        Namespaces: NSID_1, NSID_7
        Remote Type: Unknown
        Session State: NA
        Secure Mode: Disabled
        Congestion Current State: Unknown
        Virtual Lane: NA
        I/O Throttling: None
        Status: Online
  ****************************************************

LUNs and namespaces. Sizes are given in units of 512 bytes, whatever the LUN's own blocks are: 65,536 of them are 32 MB.

  $ cat $sys/class/block/sdf/size $sys/class/block/sdf/queue/logical_block_size
  65536
  4096
  $ orfc-esxcli -t lun -v info getcli ${PORT}_Target_20:00:02:00:00:00:a0:11_LUN_300
  ****************************************************
  LunInformation:
  Message: Success
  LunInfo: LunInfoList:
  Data: Vendor ID: LIO-ORG
        Product ID: FILE-4K
        Product Revision: 4.0
        Lun Number: 300
        Lun Size In MB: 32
        Lun Worldwide Unique ID: 60:01:40:50:00:0a:00:31:11:14:00:08:00:00:00:00
  ****************************************************
  $ orfc-esxcli -t lun -v info getcli ${PORT}_Target_20:00:02:00:00:00:c0:10_NSID_7
  ****************************************************
  LunInformation:
  Message: Success
  LunInfo: LunInfoList:
  Data: Vendor ID: 
        Product ID: FC TEST NVME
        Product Revision: 6.1.0-56
        Namespace ID: 7
        Namespace Size In MB: 48
  ****************************************************

The port of an NVMe controller has the identity of the host. (A chip whose report shows it.)

  $ cd $sys/devices/pci0000:00/0000:00:08.0; echo 0x1d0c >vendor; echo 0x2281 >device; cd - >/dev/null
  $ orfc-esxcli -t port -s info getcli $PORT | grep -E 'Host|Lockdown'
        Host NQN: nqn.2014-08.org.nvmexpress:uuid:33333333-0000-4000-8000-000000000001
        Host ID: 33333333000040008000000000000001
        Config Lockdown: Unsupported Driver
        Firmware Update Lockdown: Unsupported Driver
        MPI Lockdown: Unsupported Driver
  $ told
