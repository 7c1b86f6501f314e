# orfc: a host without ports

  $ . "$TESTDIR/setup.sh"
  $ host empty
  $ orfc
  orfc: no Fibre Channel port; is the driver of the adapter loaded? orfc --library simulator shows a simulated host
  $ for command in adapters ports targets luns transceivers counters paths names; do
  >   echo "$command:"; orfc $command; orfc $command -o wide; orfc $command -o csv; orfc $command -o esxcli
  >   orfc $command -o json | grep -E '^("command"|"records"|\])'
  > done
  adapters:
  adapter,model,serial_number,type,ports,manufacturer,pci_vendor_id,pci_subsystem_vendor_id,pci_subsystem_device_id,flash_multiboot_version,flash_firmware_version,flash_bios_version,flash_fcode_version,flash_efi_version,vpd_part_number,vpd_engineering_change,vpd_serial_number,vpd_manufacturer_id\r (esc)
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  "command":"adapters",
  "records":[
  ]}
  ports:
  port,host,state,speed_gbps,port_id,fabric,adapter,port_name,node_name,port_number,interface,protocol,pci_address,device,driver,driver_version,firmware_version,bios_version,link_state,supported_speeds_gbps,port_type,connection,switch,symbolic_name,host_nqn,device_loss_timeout_seconds,link_failure_count,loss_of_sync_count,loss_of_signal_count,prim_seq_protocol_err_count,invalid_tx_word_count,invalid_crc_count,lip_count\r (esc)
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  "command":"ports",
  "records":[
  ]}
  targets:
  target,port,port_name,state,protocol,vendor,product,luns,remote_port,remote_port_state,node_name,port_id,target_number,roles,type,revision,serial_number,nqn,controller_id,device_loss_timeout_seconds,fast_fail_timeout_seconds\r (esc)
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  "command":"targets",
  "records":[
  ]}
  luns:
  lun,port,target_port_name,lun_number,device,size_bytes,worldwide_id,address,map,vendor,product,revision,block_size_bytes,device_state,access_state,map_device,map_path_state,map_state,map_id\r (esc)
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  "command":"luns",
  "records":[
  ]}
  transceivers:
  port,health,family,identifier,connector,vendor,part_number,revision,serial_number,vendor_oui,date,wavelength_nanometres,signaling_rate_megabaud,length_single_mode_metres,length_om1_metres,length_om2_metres,length_om3_metres,length_om4_metres,length_cable_metres,base_checksum_valid,extended_checksum_valid,diagnostics_checksum_valid,temperature_celsius,temperature_low_alarm_celsius,temperature_low_warning_celsius,temperature_high_warning_celsius,temperature_high_alarm_celsius,temperature_verdict,voltage_volts,voltage_low_alarm_volts,voltage_low_warning_volts,voltage_high_warning_volts,voltage_high_alarm_volts,voltage_verdict,bias_milliamperes,bias_low_alarm_milliamperes,bias_low_warning_milliamperes,bias_high_warning_milliamperes,bias_high_alarm_milliamperes,bias_verdict,transmit_power_milliwatts,transmit_power_low_alarm_milliwatts,transmit_power_low_warning_milliwatts,transmit_power_high_warning_milliwatts,transmit_power_high_alarm_milliwatts,transmit_power_dbm,transmit_power_low_alarm_dbm,transmit_power_low_warning_dbm,transmit_power_high_warning_dbm,transmit_power_high_alarm_dbm,transmit_power_verdict,receive_power_milliwatts,receive_power_low_alarm_milliwatts,receive_power_low_warning_milliwatts,receive_power_high_warning_milliwatts,receive_power_high_alarm_milliwatts,receive_power_dbm,receive_power_low_alarm_dbm,receive_power_low_warning_dbm,receive_power_high_warning_dbm,receive_power_high_alarm_dbm,receive_power_verdict,receive_power_is_average,bias_lane_2_milliamperes,transmit_power_lane_2_milliwatts,transmit_power_lane_2_dbm,receive_power_lane_2_milliwatts,receive_power_lane_2_dbm,bias_lane_3_milliamperes,transmit_power_lane_3_milliwatts,transmit_power_lane_3_dbm,receive_power_lane_3_milliwatts,receive_power_lane_3_dbm,bias_lane_4_milliamperes,transmit_power_lane_4_milliwatts,transmit_power_lane_4_dbm,receive_power_lane_4_milliwatts,receive_power_lane_4_dbm,far_health,far_port_name,far_node_name,far_vendor,far_part_number,far_serial_number,far_speed_gbps,loss_to_far_db,loss_from_far_db,far_temperature_celsius,far_temperature_low_alarm_celsius,far_temperature_low_warning_celsius,far_temperature_high_warning_celsius,far_temperature_high_alarm_celsius,far_temperature_verdict,far_voltage_volts,far_voltage_low_alarm_volts,far_voltage_low_warning_volts,far_voltage_high_warning_volts,far_voltage_high_alarm_volts,far_voltage_verdict,far_bias_milliamperes,far_bias_low_alarm_milliamperes,far_bias_low_warning_milliamperes,far_bias_high_warning_milliamperes,far_bias_high_alarm_milliamperes,far_bias_verdict,far_transmit_power_milliwatts,far_transmit_power_low_alarm_milliwatts,far_transmit_power_low_warning_milliwatts,far_transmit_power_high_warning_milliwatts,far_transmit_power_high_alarm_milliwatts,far_transmit_power_dbm,far_transmit_power_low_alarm_dbm,far_transmit_power_low_warning_dbm,far_transmit_power_high_warning_dbm,far_transmit_power_high_alarm_dbm,far_transmit_power_verdict,far_receive_power_milliwatts,far_receive_power_low_alarm_milliwatts,far_receive_power_low_warning_milliwatts,far_receive_power_high_warning_milliwatts,far_receive_power_high_alarm_milliwatts,far_receive_power_dbm,far_receive_power_low_alarm_dbm,far_receive_power_low_warning_dbm,far_receive_power_high_warning_dbm,far_receive_power_high_alarm_dbm,far_receive_power_verdict,far_link_failure_count,far_loss_of_sync_count,far_loss_of_signal_count,far_prim_seq_protocol_err_count,far_invalid_tx_word_count,far_invalid_crc_count,far_fec_corrected_blocks,far_fec_uncorrectable_blocks,far_buffer_credits,far_attached_buffer_credits\r (esc)
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  "command":"transceivers",
  "records":[
  ]}
  counters:
  port,target,counter,value,increase,increase_per_second\r (esc)
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  "command":"counters",
  "records":[
  ]}
  paths:
  volume,worldwide_id,map,map_device,size_bytes,paths,paths_up,redundancy,verdict,port,host,target_port_name,lun_number,address,device,link_state,remote_port_state,device_state,access_state,map_path_state,map_state,map_id,fabric,switch,remote_port,vendor,product,lun\r (esc)
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  "command":"paths",
  "records":[
  ]}
  names:
  name,object\r (esc)
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  "command":"names",
  "records":[
  ]}
  $ orfc show host0
  orfc: nothing is named host0
  [1]
  $ orfc ping host0
  orfc: nothing is named host0
  [1]

# Adapters without ports

  $ host nulls
  $ orfc
    PORT                        STATE   Gb/s  TRANSCEIVER  TARGETS  LUNS  DOWN
  Adapter_ORV2872_N0005
    FC_21:00:00:24:ff:bb:00:01  online    16  empty              0     0     0
  $ orfc adapters
  ADAPTER                    MODEL        SERIAL  TYPE           PORTS  MANUFACTURER
  Adapter_NOPORTLIST_N0001   NOPORTLIST   N0001   Fibre Channel      0  Orvane Corporation
  Adapter_NOPORT_N0002       NOPORT       N0002   Fibre Channel      0  Orvane Corporation
  Adapter_NOPROTOCOLS_N0003  NOPROTOCOLS  N0003   Fibre Channel      0  Orvane Corporation
  Adapter__                  -            -       Fibre Channel      0  Orvane Corporation
  Adapter_ORV2872_N0005      ORV2872      N0005   Fibre Channel      1  Orvane Corporation

# Lists that are null

  $ host no_list
  $ orfc ports 2>&1 | sed "s|$BUILD/||"
  orfc: libvexapi_fconly.so: shows no host
