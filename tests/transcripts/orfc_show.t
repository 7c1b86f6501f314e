# orfc: everything that is known of an object

  $ . "$TESTDIR/setup.sh"
  $ orfc show RFH1836M74420
  Adapter
    adapter                  Adapter_ORV2742_RFH1836M74420
    model                    ORV2742
    serial_number            RFH1836M74420
    type                     Fibre Channel
    ports                    3
    manufacturer             Orvane Corporation
    pci_vendor_id            0x1d0c
    pci_subsystem_vendor_id  0x1d0c
    pci_subsystem_device_id  0x0299
  Flash
    flash_multiboot_version  1.90.68
    flash_firmware_version   8.08.231
    flash_bios_version       3.62
    flash_fcode_version      4.18
    flash_efi_version        7.21
  Vital product data
    vpd_part_number          OR2742410-02
    vpd_engineering_change   E781127
    vpd_serial_number        RFH1836M74420
    vpd_manufacturer_id      1D0C
  $ orfc show host9 | sed '/^  COUNTER/,$d'
  Port
    port                         FC_21:00:00:24:ff:7e:2d:94
    host                         host9
    adapter                      Adapter_ORV2742_RFH1836M74420
    port_name                    21:00:00:24:ff:7e:2d:94
    node_name                    20:00:00:24:ff:7e:2d:94
    port_number                  1
    interface                    physical
    protocol                     FC
    pci_address                  3b:00.0
    device                       0000:3b:00.0
    driver                       orvfc
    driver_version               5.4.82.0-1
    firmware_version             8.08.231
    bios_version                 3.62
    symbolic_name                ORV2742 FW:8.08.231 DVR:5.4.82.0-1
    host_nqn                     nqn.2014-08.org.nvmexpress:uuid:4c4c4544-0038-4a10-8056-b8c04f4d5932
    device_loss_timeout_seconds  30
  Link
    state                        online
    speed_gbps                   32
    port_id                      01:30:00
    fabric                       10:00:88:94:71:0b:3c:00
    link_state                   Online
    supported_speeds_gbps        8 16 32
    port_type                    node
    connection                   point to point
    switch                       20:07:88:94:71:0b:3c:00
  Counters
    link_failure_count           1
    loss_of_sync_count           3
    loss_of_signal_count         1
    prim_seq_protocol_err_count  0
    invalid_tx_word_count        27
    invalid_crc_count            0
    lip_count                    0
  
  Settings
    port                         FC_21:00:00:24:ff:7e:2d:94
    temperature_celsius          54
    beacon                       no
    fec                          yes
    credit_recovery              yes
    congestion_management        yes
  NVRAM
    nvram_data_rate              2
    nvram_connection_options     2
    nvram_operation_mode         0
    nvram_frame_size             2048
    nvram_execution_throttle     65535
    nvram_luns_per_target        128
    nvram_login_retry_count      8
    nvram_port_down_retry_count  30
    nvram_link_down_timeout      30
    nvram_loop_reset_delay       5
    nvram_interrupt_delay_timer  0
  Counters
    fec_corrected_errors         118
    fec_uncorrected_errors       0
  
  Module
    port                                        FC_21:00:00:24:ff:7e:2d:94
    health                                      no diagnostics
    family                                      SFP
    identifier                                  SFP/SFP+/SFP28
    connector                                   LC
    vendor                                      FINISAR CORP.
    part_number                                 FTLF8536P4BCL
    revision                                    A
    serial_number                               UWB04VY
    vendor_oui                                  00:90:65
    date                                        2016-12-25
    wavelength_nanometres                       850.00
    signaling_rate_megabaud                     28000
    length_om2_metres                           20
    length_om3_metres                           70
    length_om4_metres                           100
    base_checksum_valid                         yes
    extended_checksum_valid                     yes
  

Counters are a table.

  $ orfc show host2 | sed -n '/^  COUNTER/,$p' | head -n 5
    COUNTER                       VALUE
  FC_21:01:00:24:ff:b2:0f:38
    dumped_frames                     0
    error_frames                      0
    invalid_crc_count                 0
  $ orfc show rport-9:0-1
  Target
    target                       FC_21:00:00:24:ff:7e:2d:94_Target_50:0a:09:81:a1:c3:40:10
    port                         FC_21:00:00:24:ff:7e:2d:94
    port_name                    50:0a:09:81:a1:c3:40:10
    state                        online
    protocol                     NVMe
    vendor                       BASALT
    product                      NVME-ARRAY-900
    luns                         4
    remote_port                  rport-9:0-1
    remote_port_state            Online
    node_name                    50:0a:09:80:a1:c3:40:10
    port_id                      01:41:00
    target_number                1
    roles                        NVMe Target, NVMe Discovery
    type                         disk
    revision                     6.3.1
    serial_number                BA9K2307C0114
    nqn                          nqn.2010-06.com.basalt-storage:array.ba9k2307c0114:subsystem.esx-prod
    controller_id                65
    device_loss_timeout_seconds  30
    fast_fail_timeout_seconds    5
  $ orfc show sdb
  LUN
    lun               FC_21:00:00:24:ff:92:0f:38_Target_50:06:0e:80:12:4a:7c:40_LUN_1
    port              FC_21:00:00:24:ff:92:0f:38
    target_port_name  50:06:0e:80:12:4a:7c:40
    lun_number        1
    device            sdb
    size_bytes        549755813888 (512G)
    worldwide_id      naa.60060e80124a7c0050404a7c00000001
    address           1:0:0:1
    vendor            HELIODOR
    product           VIRTUAL-VOLUME
    revision          8804
    block_size_bytes  512
    device_state      running
    access_state      active/optimized
  Map
    map               mpathb
    map_device        dm-1
    map_path_state    active
    map_state         active
    map_id            mpath-360060e80124a7c0050404a7c00000001
  $ orfc show nvme0c0n1
  LUN
    lun               FC_21:00:00:24:ff:7e:2d:94_Target_50:0a:09:81:a1:c3:40:10_NSID_1
    port              FC_21:00:00:24:ff:7e:2d:94
    target_port_name  50:0a:09:81:a1:c3:40:10
    lun_number        1
    device            nvme0c0n1
    size_bytes        2199023255552 (2.0T)
    worldwide_id      eui.6b1f4f0e9c3a51b7000a0980a1c34001
    vendor            BASALT
    product           NVME-ARRAY-900
    revision          6.3.1
    block_size_bytes  4096
    device_state      live
    access_state      optimized
  Map
    map_device        nvme0n1

Several objects, in the order of the host.

  $ orfc show sda RFC0748T40312 --columns adapter,model,lun,size_bytes
  Adapter
    adapter  Adapter_ORV2460_RFC0748T40312
    model    ORV2460
  
  LUN
    lun         FC_21:00:00:24:ff:92:0f:38_Target_50:06:0e:80:12:4a:7c:40_LUN_0
    size_bytes  549755813888 (512G)
