# orfc: Linux hosts, from their trees of sysfs

A tree that was captured on another machine needs no other option.

  $ . "$TESTDIR/setup.sh"
  $ linux fcoe
  $ unset VEXAPI_SYSFS_ROOT
  $ orfc --root tree
    PORT                        HOST   STATE   Gb/s  TRANSCEIVER  TARGETS  LUNS  DOWN
  Adapter__
    FC_20:00:02:00:00:00:a0:01  host0  online    10  unread             3     7     0
    FC_20:00:02:00:00:00:b0:01  host1  online    10  unread             2     4     0
    FC_20:00:02:00:00:00:a0:10  host2  online    10  unread             0     0     0
    FC_20:00:02:00:00:00:a0:11  host3  online    10  unread             0     0     0
    FC_20:00:02:00:00:00:b0:12  host4  online    10  unread             0     0     0
  $ orfc --root tree adapters
  ADAPTER    TYPE      PORTS
  Adapter__  Ethernet      1
  Adapter__  Ethernet      1
  Adapter__  Ethernet      1
  Adapter__  Ethernet      1
  Adapter__  Ethernet      1
  $ orfc --root tree ports
  PORT                        HOST   STATE   Gb/s  PORT ID   ADAPTER
  FC_20:00:02:00:00:00:a0:01  host0  online    10  00:a0:01  Adapter__
  FC_20:00:02:00:00:00:b0:01  host1  online    10  00:b0:01  Adapter__
  FC_20:00:02:00:00:00:a0:10  host2  online    10  00:a0:10  Adapter__
  FC_20:00:02:00:00:00:a0:11  host3  online    10  00:a0:11  Adapter__
  FC_20:00:02:00:00:00:b0:12  host4  online    10  00:b0:12  Adapter__
  $ orfc --root tree targets
  PORT                        TARGET PORT              STATE   PROTOCOL  VENDOR   PRODUCT       LUNS  REMOTE PORT
  FC_20:00:02:00:00:00:a0:01  20:00:02:00:00:00:a0:10  online  FCP       LIO-ORG  RAMDISK-A        3  rport-0:0-0
  FC_20:00:02:00:00:00:a0:01  20:00:02:00:00:00:a0:11  online  FCP       LIO-ORG  RAMDISK-MCP      2  rport-0:0-1
  FC_20:00:02:00:00:00:a0:01  20:00:02:00:00:00:c0:10  online  NVMe      -        FC TEST NVME     2  nvme0
  FC_20:00:02:00:00:00:b0:01  20:00:02:00:00:00:b0:12  online  FCP       LIO-ORG  RAMDISK-A        2  rport-1:0-0
  FC_20:00:02:00:00:00:b0:01  20:00:02:00:00:00:c0:20  online  NVMe      -        FC TEST NVME     2  nvme1
  $ orfc --root tree luns
  PORT                        TARGET PORT              LUN  DEVICE      SIZE  WORLDWIDE ID                               H:C:T:L
  FC_20:00:02:00:00:00:a0:01  20:00:02:00:00:00:a0:10    0  sda        16.0M  naa.60014050000a00111114000800000000       0:0:0:0
  FC_20:00:02:00:00:00:a0:01  20:00:02:00:00:00:a0:10    1  sde        32.0M  naa.60014050000a00211114000800000000       0:0:0:1
  FC_20:00:02:00:00:00:a0:01  20:00:02:00:00:00:a0:10    2  sdc        32.0M  naa.60014050000a00311114000800000000       0:0:0:2
  FC_20:00:02:00:00:00:a0:01  20:00:02:00:00:00:a0:11    1  sdg        32.0M  naa.60014050000a00211114000800000000       0:0:1:1
  FC_20:00:02:00:00:00:a0:01  20:00:02:00:00:00:a0:11  300  sdf        32.0M  naa.60014050000a00311114000800000000       0:0:1:300
  FC_20:00:02:00:00:00:a0:01  20:00:02:00:00:00:c0:10    1  nvme0c0n1  16.0M  uuid.44444444-0000-4000-8000-000000000001  -
  FC_20:00:02:00:00:00:a0:01  20:00:02:00:00:00:c0:10    7  nvme0c0n2  48.0M  uuid.44444444-0000-4000-8000-000000000007  -
  FC_20:00:02:00:00:00:b0:01  20:00:02:00:00:00:b0:12    0  sdb        16.0M  naa.60014050000a00111114000800000000       1:0:0:0
  FC_20:00:02:00:00:00:b0:01  20:00:02:00:00:00:b0:12    1  sdd        32.0M  naa.60014050000a00211114000800000000       1:0:0:1
  FC_20:00:02:00:00:00:b0:01  20:00:02:00:00:00:c0:20    1  nvme0c1n1  16.0M  uuid.44444444-0000-4000-8000-000000000001  -
  FC_20:00:02:00:00:00:b0:01  20:00:02:00:00:00:c0:20    7  nvme0c1n2  48.0M  uuid.44444444-0000-4000-8000-000000000007  -
  $ orfc --root tree paths
    VERDICT  PORT                        HOST   TARGET PORT              LUN  H:C:T:L    DEVICE     LINK    REMOTE PORT  DEVICE STATE
  naa.60014050000a00111114000800000000  16.0M  paths 2  up 2  redundant
    ok       FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:a0:10    0  0:0:0:0    sda        Online  Online       -
    ok       FC_20:00:02:00:00:00:b0:01  host1  20:00:02:00:00:00:b0:12    0  1:0:0:0    sdb        Online  Online       -
  naa.60014050000a00211114000800000000  32.0M  paths 3  up 3  redundant
    ok       FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:a0:10    1  0:0:0:1    sde        Online  Online       -
    ok       FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:a0:11    1  0:0:1:1    sdg        Online  Online       -
    ok       FC_20:00:02:00:00:00:b0:01  host1  20:00:02:00:00:00:b0:12    1  1:0:0:1    sdd        Online  Online       -
  naa.60014050000a00311114000800000000  32.0M  paths 2  up 2  one port
    ok       FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:a0:10    2  0:0:0:2    sdc        Online  Online       -
    ok       FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:a0:11  300  0:0:1:300  sdf        Online  Online       -
  uuid.44444444-0000-4000-8000-000000000001  16.0M  paths 2  up 2  redundant
    ok       FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:c0:10    1  -          nvme0c0n1  Online  live         live
    ok       FC_20:00:02:00:00:00:b0:01  host1  20:00:02:00:00:00:c0:20    1  -          nvme0c1n1  Online  live         live
  uuid.44444444-0000-4000-8000-000000000007  48.0M  paths 2  up 2  redundant
    ok       FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:c0:10    7  -          nvme0c0n2  Online  live         live
    ok       FC_20:00:02:00:00:00:b0:01  host1  20:00:02:00:00:00:c0:20    7  -          nvme0c1n2  Online  live         live
  $ orfc --root tree transceivers host0
    READING
  FC_20:00:02:00:00:00:a0:01  host0  unread
    none
  $ orfc --root tree counters host0 | head -n 6
    COUNTER                        VALUE
  FC_20:00:02:00:00:00:a0:01
    cn_sig_alarm                       0
    cn_sig_warn                        0
    fcp_control_requests              13
    fcp_input_megabytes                0
  $ orfc --root tree show host0 | sed '/^  COUNTER/,$d'
  Port
    port                         FC_20:00:02:00:00:00:a0:01
    host                         host0
    adapter                      Adapter__
    port_name                    20:00:02:00:00:00:a0:01
    node_name                    10:00:02:00:00:00:a0:01
    port_number                  1
    interface                    physical
    protocol                     FCoE
    pci_address                  00:08.0
    device                       0000:00:08.0
    host_nqn                     nqn.2014-08.org.nvmexpress:uuid:33333333-0000-4000-8000-000000000001
  Link
    state                        online
    speed_gbps                   10
    port_id                      00:a0:01
    link_state                   Online
    port_type                    node
    connection                   point to point
  Counters
    link_failure_count           0
    invalid_tx_word_count        0
    invalid_crc_count            0
  
  Settings
    port                         FC_20:00:02:00:00:00:a0:01
    congestion_management        yes
  
  Module
    port                                        FC_20:00:02:00:00:00:a0:01
    health                                      unread
  
  $ orfc --root tree show rport-0:0-0
  Target
    target                       FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10
    port                         FC_20:00:02:00:00:00:a0:01
    port_name                    20:00:02:00:00:00:a0:10
    state                        online
    protocol                     FCP
    vendor                       LIO-ORG
    product                      RAMDISK-A
    luns                         3
    remote_port                  rport-0:0-0
    remote_port_state            Online
    node_name                    10:00:02:00:00:00:a0:10
    port_id                      00:a0:10
    target_number                0
    roles                        FCP Target, FCP Initiator
    type                         disk
    revision                     4.0
  
    COUNTER                        VALUE
  FC_20:00:02:00:00:00:a0:01  20:00:02:00:00:00:a0:10
    fpin_cn_clear                      0
    fpin_cn_credit_stall               0
    fpin_cn_device_specific            0
    fpin_cn_lost_credit                0
    fpin_cn_oversubscription           0
    fpin_dn_device_specific            0
    fpin_dn_timeout                    0
    fpin_dn_unable_to_route            0
    fpin_dn_unknown                    0
    fpin_li                            0
    fpin_li_device_specific            0
    fpin_li_failure_unknown            0
    fpin_li_invalid_crc_count          0
    fpin_li_invalid_tx_word_count      0
    fpin_li_link_failure_count         0
    fpin_li_loss_of_signals_count      0
    fpin_li_loss_of_sync_count         0
    fpin_li_prim_seq_err_count         0
  $ orfc --root tree show nvme0c0n1
  LUN
    lun               FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:c0:10_NSID_1
    port              FC_20:00:02:00:00:00:a0:01
    target_port_name  20:00:02:00:00:00:c0:10
    lun_number        1
    device            nvme0c0n1
    size_bytes        16777216 (16.0M)
    worldwide_id      uuid.44444444-0000-4000-8000-000000000001
    product           FC TEST NVME
    revision          6.1.0-56
    block_size_bytes  512
    device_state      live
  $ orfc --root tree luns sda -o csv
  lun,port,target_port_name,lun_number,device,size_bytes,worldwide_id,address,map,vendor,product,revision,block_size_bytes,device_state,access_state,map_device,map_path_state,map_state,map_id\r (esc)
  FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_0,FC_20:00:02:00:00:00:a0:01,20:00:02:00:00:00:a0:10,0,sda,16777216,naa.60014050000a00111114000800000000,0:0:0:0,,LIO-ORG,RAMDISK-A,4.0,512,,,,,,\r (esc)
  $ orfc --root tree luns sda -o json | tail -n 2
  {"kind":"lun","lun":"FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_0","port":"FC_20:00:02:00:00:00:a0:01","target_port_name":"20:00:02:00:00:00:a0:10","lun_number":0,"device":"sda","size_bytes":16777216,"worldwide_id":"naa.60014050000a00111114000800000000","address":"0:0:0:0","map":null,"vendor":"LIO-ORG","product":"RAMDISK-A","revision":"4.0","block_size_bytes":512,"device_state":null,"access_state":null,"map_device":null,"map_path_state":null,"map_state":null,"map_id":null}
  ]}
  $ orfc --root tree luns sda -o esxcli | sed -n 3,8p
  <structure typeName="Lun">
  <field name="Lun"><string>FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10_LUN_0</string></field>
  <field name="Port"><string>FC_20:00:02:00:00:00:a0:01</string></field>
  <field name="TargetPortName"><string>20:00:02:00:00:00:a0:10</string></field>
  <field name="LunNumber"><int>0</int></field>
  <field name="Device"><string>sda</string></field>

# After faults

Two links are down, remote ports are blocked. The states of devices aren't in this tree.

  $ linux degraded
  $ unset VEXAPI_SYSFS_ROOT
  $ orfc --root tree
    PORT                        HOST   STATE    Gb/s  TRANSCEIVER  TARGETS  LUNS  DOWN
  Adapter__
    FC_20:00:02:00:00:00:a0:01  host0  online     10  unread             2     5     2
    FC_20:00:02:00:00:00:b0:01  host1  offline     -  unread             1     2     2
    FC_20:00:02:00:00:00:a0:10  host2  online     10  unread             0     0     0
    FC_20:00:02:00:00:00:a0:11  host3  offline     -  unread             0     0     0
    FC_20:00:02:00:00:00:b0:12  host4  online     10  unread             0     0     0
  $ orfc --root tree paths
    VERDICT           PORT                        HOST   TARGET PORT              LUN  H:C:T:L    DEVICE  LINK      REMOTE PORT
  naa.60014050000a00111114000800000000  16.0M  paths 2  up 1  one path
    ok                FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:a0:10    0  0:0:0:0    sda     Online    Online
    link down         FC_20:00:02:00:00:00:b0:01  host1  20:00:02:00:00:00:b0:12    0  1:0:0:0    sdb     Linkdown  Blocked
  naa.60014050000a00211114000800000000  32.0M  paths 3  up 1  one path
    ok                FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:a0:10    1  0:0:0:1    sde     Online    Online
    remote port down  FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:a0:11    1  0:0:1:1    sdg     Online    Blocked
    link down         FC_20:00:02:00:00:00:b0:01  host1  20:00:02:00:00:00:b0:12    1  1:0:0:1    sdd     Linkdown  Blocked
  naa.60014050000a00311114000800000000  32.0M  paths 2  up 1  one path
    ok                FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:a0:10    2  0:0:0:2    sdc     Online    Online
    remote port down  FC_20:00:02:00:00:00:a0:01  host0  20:00:02:00:00:00:a0:11  300  0:0:1:300  sdf     Online    Blocked
  $ for device in 0:0:0:1 0:0:1:300; do echo offline >tree/sys/bus/scsi/devices/$device/state; done
  $ orfc --root tree paths sde sdf --columns verdict,address,link_state,remote_port_state,device_state
  VERDICT           H:C:T:L    LINK      REMOTE PORT  DEVICE STATE
  device down       0:0:0:1    Online    Online       offline
  remote port down  0:0:1:1    Online    Blocked      -
  link down         1:0:0:1    Linkdown  Blocked      -
  ok                0:0:0:2    Online    Online       -
  remote port down  0:0:1:300  Online    Blocked      offline
  $ orfc --root tree ports --columns host,state,link_state,speed_gbps,port_id
  HOST   STATE    LINK      Gb/s  PORT ID
  host0  online   Online      10  00:a0:01
  host1  offline  Linkdown     -  -
  host2  online   Online      10  00:a0:10
  host3  offline  Linkdown     -  -
  host4  online   Online      10  00:b0:12

A file that can't be read.

  $ rm tree/sys/class/fc_host/host0/speed; mkdir tree/sys/class/fc_host/host0/speed
  $ orfc --root tree ports host0
  PORT                        HOST   STATE   PORT ID   ADAPTER
  FC_20:00:02:00:00:00:a0:01  host0  online  00:a0:01  Adapter__
  orfc: host0/speed: Is a directory
  [3]

# A virtual port

  $ linux npiv
  $ unset VEXAPI_SYSFS_ROOT
  $ orfc --root tree ports --columns host,port,interface,port_number,state
  HOST   PORT                        INTERFACE  NUMBER  STATE
  host0  FC_20:00:02:00:00:00:a0:01  physical        1  online
  host5  FC_20:00:02:00:00:00:a0:f1  virtual         1  offline
  host1  FC_20:00:02:00:00:00:b0:01  physical        1  online
  host2  FC_20:00:02:00:00:00:a0:10  physical        1  online
  host3  FC_20:00:02:00:00:00:a0:11  physical        1  online
  host4  FC_20:00:02:00:00:00:b0:12  physical        1  online
  $ orfc --root tree paths 20:00:02:00:00:00:a0:f1
