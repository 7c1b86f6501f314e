# orfc: formats

  $ . "$TESTDIR/setup.sh"
  $ json() { orfc "$@" -o json | sed -E "s|$BUILD/||g; s|(\"version\":)\"[0-9.]+\"|\1\"N\"|"; }

# JSON

Every key of a record is there; what is unknown is null.

  $ json adapters host0
  {"json_format_version":[1,1],
  "tool":{"name":"orfc","version":"N","arguments":["orfc","adapters","host0","-o","json"],"library":"libvexapi_fconly.so"},
  "command":"adapters",
  "ok":true,
  "messages":[],
  "records":[
  {"kind":"adapter","adapter":"Adapter_ORV2460_RFC0748T40312","model":"ORV2460","serial_number":"RFC0748T40312","type":"Fibre Channel","ports":1,"manufacturer":"Orvane Corporation","pci_vendor_id":"0x1d0c","pci_subsystem_vendor_id":"0x1d0c","pci_subsystem_device_id":"0x0137","flash_multiboot_version":"3.00.20","flash_firmware_version":"5.09.00","flash_bios_version":"2.17","flash_fcode_version":"2.12","flash_efi_version":null,"vpd_part_number":"OR2460401-03","vpd_engineering_change":"E740612","vpd_serial_number":"RFC0748T40312","vpd_manufacturer_id":"1D0C"}
  ]}
  $ json ports host6
  {"json_format_version":[1,1],
  "tool":{"name":"orfc","version":"N","arguments":["orfc","ports","host6","-o","json"],"library":"libvexapi_fconly.so"},
  "command":"ports",
  "ok":true,
  "messages":[],
  "records":[
  {"kind":"port","port":"FC_21:00:00:24:ff:08:65:93","host":"host6","state":"offline","speed_gbps":null,"port_id":null,"fabric":null,"adapter":"Adapter_ORV8362_RFE1506P30951","port_name":"21:00:00:24:ff:08:65:93","node_name":"20:00:00:24:ff:08:65:92","port_number":2,"interface":"physical","protocol":"FCoE","pci_address":"0d:00.7","device":"0000:0d:00.7","driver":"orvfc","driver_version":"4.1.34.0-1","firmware_version":"8.07.16","bios_version":"3.38","link_state":"Linkdown","supported_speeds_gbps":"10","port_type":"node","connection":"point to point","switch":null,"symbolic_name":"ORV8362 FW:8.07.16 DVR:4.1.34.0-1","host_nqn":null,"device_loss_timeout_seconds":30,"link_failure_count":0,"loss_of_sync_count":0,"loss_of_signal_count":0,"prim_seq_protocol_err_count":0,"invalid_tx_word_count":0,"invalid_crc_count":0,"lip_count":0}
  ]}
  $ json targets host0
  {"json_format_version":[1,1],
  "tool":{"name":"orfc","version":"N","arguments":["orfc","targets","host0","-o","json"],"library":"libvexapi_fconly.so"},
  "command":"targets",
  "ok":true,
  "messages":[],
  "records":[
  {"kind":"target","target":"FC_21:00:00:24:ff:0a:51:c4_Target_50:01:10:a0:00:8b:c4:11","port":"FC_21:00:00:24:ff:0a:51:c4","port_name":"50:01:10:a0:00:8b:c4:11","state":"online","protocol":"FCP","vendor":"TAPEWELL","product":"ULTRIUM-4","luns":1,"remote_port":"rport-0:0-0","remote_port_state":"Online","node_name":"50:01:10:a0:00:8b:c4:10","port_id":"00:00:e8","target_number":0,"roles":"FCP Target","type":"tape","revision":"A23D","serial_number":"TW4L0A1763","nqn":null,"controller_id":null,"device_loss_timeout_seconds":30,"fast_fail_timeout_seconds":5}
  ]}
  $ json luns host0
  {"json_format_version":[1,1],
  "tool":{"name":"orfc","version":"N","arguments":["orfc","luns","host0","-o","json"],"library":"libvexapi_fconly.so"},
  "command":"luns",
  "ok":true,
  "messages":[],
  "records":[
  {"kind":"lun","lun":"FC_21:00:00:24:ff:0a:51:c4_Target_50:01:10:a0:00:8b:c4:11_LUN_0","port":"FC_21:00:00:24:ff:0a:51:c4","target_port_name":"50:01:10:a0:00:8b:c4:11","lun_number":0,"device":"st0","size_bytes":null,"worldwide_id":"naa.500110a0008bc410","address":"0:0:0:0","map":null,"vendor":"TAPEWELL","product":"ULTRIUM-4","revision":"A23D","block_size_bytes":512,"device_state":"running","access_state":null,"map_device":null,"map_path_state":null,"map_state":null,"map_id":null}
  ]}
  $ json paths sdb | tail -n 3
  {"kind":"path","volume":"naa.60060e80124a7c0050404a7c00000001","worldwide_id":"naa.60060e80124a7c0050404a7c00000001","map":"mpathb","map_device":"dm-1","size_bytes":549755813888,"paths":12,"paths_up":9,"redundancy":"redundant","verdict":"ok","port":"FC_21:00:00:24:ff:0c:48:2f","host":"host16","target_port_name":"50:06:0e:80:12:4a:7c:30","lun_number":1,"address":"16:0:0:1","device":"sdnj","link_state":"Online","remote_port_state":"Online","device_state":"running","access_state":"active/optimized","map_path_state":"active","map_state":"active","map_id":"mpath-360060e80124a7c0050404a7c00000001","fabric":"10:00:88:94:71:2f:90:00","switch":"20:03:88:94:71:2f:90:00","remote_port":"rport-16:0-0","vendor":"HELIODOR","product":"VIRTUAL-VOLUME","lun":"FC_21:00:00:24:ff:0c:48:2f_Target_50:06:0e:80:12:4a:7c:30_LUN_1"},
  {"kind":"path","volume":"naa.60060e80124a7c0050404a7c00000001","worldwide_id":"naa.60060e80124a7c0050404a7c00000001","map":"mpathb","map_device":"dm-1","size_bytes":549755813888,"paths":12,"paths_up":9,"redundancy":"redundant","verdict":"remote port down","port":"FC_21:00:00:24:ff:1d:90:06","host":"host17","target_port_name":"50:06:0e:80:12:4a:7c:30","lun_number":1,"address":"17:0:0:1","device":"sdnr","link_state":"Online","remote_port_state":"Blocked","device_state":"blocked","access_state":"active/optimized","map_path_state":"failed","map_state":"active","map_id":"mpath-360060e80124a7c0050404a7c00000001","fabric":"10:00:88:94:71:2f:90:00","switch":"20:03:88:94:71:2f:90:00","remote_port":"rport-17:0-0","vendor":"HELIODOR","product":"VIRTUAL-VOLUME","lun":"FC_21:00:00:24:ff:1d:90:06_Target_50:06:0e:80:12:4a:7c:30_LUN_1"}
  ]}
  $ json counters host15 | tail -n 2
  {"kind":"counter","port":"FC_21:00:00:24:ff:0c:48:2e","target":null,"counter":"tx_words","value":9421870,"increase":null,"increase_per_second":null}
  ]}
  $ json transceivers host9 | tail -n 2
  {"kind":"transceiver","port":"FC_21:00:00:24:ff:7e:2d:94","health":"no diagnostics","family":"SFP","identifier":"SFP/SFP+/SFP28","connector":"LC","vendor":"FINISAR CORP.","part_number":"FTLF8536P4BCL","revision":"A","serial_number":"UWB04VY","vendor_oui":"00:90:65","date":"2016-12-25","wavelength_nanometres":850.0,"signaling_rate_megabaud":28000,"length_single_mode_metres":null,"length_om1_metres":null,"length_om2_metres":20,"length_om3_metres":70,"length_om4_metres":100,"length_cable_metres":null,"base_checksum_valid":true,"extended_checksum_valid":true,"diagnostics_checksum_valid":null,"temperature_celsius":null,"temperature_low_alarm_celsius":null,"temperature_low_warning_celsius":null,"temperature_high_warning_celsius":null,"temperature_high_alarm_celsius":null,"temperature_verdict":null,"voltage_volts":null,"voltage_low_alarm_volts":null,"voltage_low_warning_volts":null,"voltage_high_warning_volts":null,"voltage_high_alarm_volts":null,"voltage_verdict":null,"bias_milliamperes":null,"bias_low_alarm_milliamperes":null,"bias_low_warning_milliamperes":null,"bias_high_warning_milliamperes":null,"bias_high_alarm_milliamperes":null,"bias_verdict":null,"transmit_power_milliwatts":null,"transmit_power_low_alarm_milliwatts":null,"transmit_power_low_warning_milliwatts":null,"transmit_power_high_warning_milliwatts":null,"transmit_power_high_alarm_milliwatts":null,"transmit_power_dbm":null,"transmit_power_low_alarm_dbm":null,"transmit_power_low_warning_dbm":null,"transmit_power_high_warning_dbm":null,"transmit_power_high_alarm_dbm":null,"transmit_power_verdict":null,"receive_power_milliwatts":null,"receive_power_low_alarm_milliwatts":null,"receive_power_low_warning_milliwatts":null,"receive_power_high_warning_milliwatts":null,"receive_power_high_alarm_milliwatts":null,"receive_power_dbm":null,"receive_power_low_alarm_dbm":null,"receive_power_low_warning_dbm":null,"receive_power_high_warning_dbm":null,"receive_power_high_alarm_dbm":null,"receive_power_verdict":null,"receive_power_is_average":null,"bias_lane_2_milliamperes":null,"transmit_power_lane_2_milliwatts":null,"transmit_power_lane_2_dbm":null,"receive_power_lane_2_milliwatts":null,"receive_power_lane_2_dbm":null,"bias_lane_3_milliamperes":null,"transmit_power_lane_3_milliwatts":null,"transmit_power_lane_3_dbm":null,"receive_power_lane_3_milliwatts":null,"receive_power_lane_3_dbm":null,"bias_lane_4_milliamperes":null,"transmit_power_lane_4_milliwatts":null,"transmit_power_lane_4_dbm":null,"receive_power_lane_4_milliwatts":null,"receive_power_lane_4_dbm":null,"far_health":null,"far_port_name":null,"far_node_name":null,"far_vendor":null,"far_part_number":null,"far_serial_number":null,"far_speed_gbps":null,"loss_to_far_db":null,"loss_from_far_db":null,"far_temperature_celsius":null,"far_temperature_low_alarm_celsius":null,"far_temperature_low_warning_celsius":null,"far_temperature_high_warning_celsius":null,"far_temperature_high_alarm_celsius":null,"far_temperature_verdict":null,"far_voltage_volts":null,"far_voltage_low_alarm_volts":null,"far_voltage_low_warning_volts":null,"far_voltage_high_warning_volts":null,"far_voltage_high_alarm_volts":null,"far_voltage_verdict":null,"far_bias_milliamperes":null,"far_bias_low_alarm_milliamperes":null,"far_bias_low_warning_milliamperes":null,"far_bias_high_warning_milliamperes":null,"far_bias_high_alarm_milliamperes":null,"far_bias_verdict":null,"far_transmit_power_milliwatts":null,"far_transmit_power_low_alarm_milliwatts":null,"far_transmit_power_low_warning_milliwatts":null,"far_transmit_power_high_warning_milliwatts":null,"far_transmit_power_high_alarm_milliwatts":null,"far_transmit_power_dbm":null,"far_transmit_power_low_alarm_dbm":null,"far_transmit_power_low_warning_dbm":null,"far_transmit_power_high_warning_dbm":null,"far_transmit_power_high_alarm_dbm":null,"far_transmit_power_verdict":null,"far_receive_power_milliwatts":null,"far_receive_power_low_alarm_milliwatts":null,"far_receive_power_low_warning_milliwatts":null,"far_receive_power_high_warning_milliwatts":null,"far_receive_power_high_alarm_milliwatts":null,"far_receive_power_dbm":null,"far_receive_power_low_alarm_dbm":null,"far_receive_power_low_warning_dbm":null,"far_receive_power_high_warning_dbm":null,"far_receive_power_high_alarm_dbm":null,"far_receive_power_verdict":null,"far_link_failure_count":null,"far_loss_of_sync_count":null,"far_loss_of_signal_count":null,"far_prim_seq_protocol_err_count":null,"far_invalid_tx_word_count":null,"far_invalid_crc_count":null,"far_fec_corrected_blocks":null,"far_fec_uncorrectable_blocks":null,"far_buffer_credits":null,"far_attached_buffer_credits":null}
  ]}
  $ json | sed -n 6,7p
  "records":[
  {"kind":"overview","adapter":"Adapter_ORV2460_RFC0748T40312","firmware_version":"5.09.00","driver_version":"8.07.21","port":"FC_21:00:00:24:ff:0a:51:c4","host":"host0","state":"online","speed_gbps":2,"transceiver_health":"no diagnostics","targets":1,"luns":1,"paths_down":0},
  $ json ports host99
  orfc: nothing is named host99; did you mean host9 or host19 or host0?
  {"json_format_version":[1,1],
  "tool":{"name":"orfc","version":"N","arguments":["orfc","ports","host99","-o","json"],"library":"libvexapi_fconly.so"},
  "command":"ports",
  "ok":false,
  "messages":["nothing is named host99; did you mean host9 or host19 or host0?"],
  "records":[
  ]}

A text that is no UTF-8 is there as its bytes too.

  $ json transceivers host2 | grep -oE '"serial_number[^,]*,'
  "serial_number":"\ufffd%\n\ufffd@\ufffd\ufffd\ufffdG\ufffd\ufffd\ufffd\u0010\ufffd$3",
  "serial_number_hex":"df250abd40f6c6ce478effff10d82433",

# CSV

  $ orfc adapters host0 -o csv
  adapter,model,serial_number,type,ports,manufacturer,pci_vendor_id,pci_subsystem_vendor_id,pci_subsystem_device_id,flash_multiboot_version,flash_firmware_version,flash_bios_version,flash_fcode_version,flash_efi_version,vpd_part_number,vpd_engineering_change,vpd_serial_number,vpd_manufacturer_id\r (esc)
  Adapter_ORV2460_RFC0748T40312,ORV2460,RFC0748T40312,Fibre Channel,1,Orvane Corporation,0x1d0c,0x1d0c,0x0137,3.00.20,5.09.00,2.17,2.12,,OR2460401-03,E740612,RFC0748T40312,1D0C\r (esc)
  $ orfc ports host6 -o csv
  port,host,state,speed_gbps,port_id,fabric,adapter,port_name,node_name,port_number,interface,protocol,pci_address,device,driver,driver_version,firmware_version,bios_version,link_state,supported_speeds_gbps,port_type,connection,switch,symbolic_name,host_nqn,device_loss_timeout_seconds,link_failure_count,loss_of_sync_count,loss_of_signal_count,prim_seq_protocol_err_count,invalid_tx_word_count,invalid_crc_count,lip_count\r (esc)
  FC_21:00:00:24:ff:08:65:93,host6,offline,,,,Adapter_ORV8362_RFE1506P30951,21:00:00:24:ff:08:65:93,20:00:00:24:ff:08:65:92,2,physical,FCoE,0d:00.7,0000:0d:00.7,orvfc,4.1.34.0-1,8.07.16,3.38,Linkdown,10,node,point to point,,ORV8362 FW:8.07.16 DVR:4.1.34.0-1,,30,0,0,0,0,0,0,0\r (esc)
  $ orfc targets host0 -o csv
  target,port,port_name,state,protocol,vendor,product,luns,remote_port,remote_port_state,node_name,port_id,target_number,roles,type,revision,serial_number,nqn,controller_id,device_loss_timeout_seconds,fast_fail_timeout_seconds\r (esc)
  FC_21:00:00:24:ff:0a:51:c4_Target_50:01:10:a0:00:8b:c4:11,FC_21:00:00:24:ff:0a:51:c4,50:01:10:a0:00:8b:c4:11,online,FCP,TAPEWELL,ULTRIUM-4,1,rport-0:0-0,Online,50:01:10:a0:00:8b:c4:10,00:00:e8,0,FCP Target,tape,A23D,TW4L0A1763,,,30,5\r (esc)
  $ orfc luns host0 -o csv
  lun,port,target_port_name,lun_number,device,size_bytes,worldwide_id,address,map,vendor,product,revision,block_size_bytes,device_state,access_state,map_device,map_path_state,map_state,map_id\r (esc)
  FC_21:00:00:24:ff:0a:51:c4_Target_50:01:10:a0:00:8b:c4:11_LUN_0,FC_21:00:00:24:ff:0a:51:c4,50:01:10:a0:00:8b:c4:11,0,st0,,naa.500110a0008bc410,0:0:0:0,,TAPEWELL,ULTRIUM-4,A23D,512,running,,,,,\r (esc)
  $ orfc paths sdb -o csv --columns volume,verdict,port --no-headings | head -n 2
  naa.60060e80124a7c0050404a7c00000001,ok,FC_21:00:00:24:ff:92:0f:38\r (esc)
  naa.60060e80124a7c0050404a7c00000001,ok,FC_21:00:00:24:ff:4b:18:7a\r (esc)
  $ orfc counters host2 -o csv | head -n 3
  port,target,counter,value,increase,increase_per_second\r (esc)
  FC_21:01:00:24:ff:b2:0f:38,,dumped_frames,0,,\r (esc)
  FC_21:01:00:24:ff:b2:0f:38,,error_frames,0,,\r (esc)
  $ orfc show host0 -o csv --columns port,speed_gbps
  port,speed_gbps\r (esc)
  FC_21:00:00:24:ff:0a:51:c4,2\r (esc)
  \r (esc)
  port\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  \r (esc)
  port\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  \r (esc)
  port\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)
  FC_21:00:00:24:ff:0a:51:c4\r (esc)

# Documents for esxcli

  $ orfc adapters host0 -o esxcli
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  <structure typeName="Adapter">
  <field name="Adapter"><string>Adapter_ORV2460_RFC0748T40312</string></field>
  <field name="Model"><string>ORV2460</string></field>
  <field name="SerialNumber"><string>RFC0748T40312</string></field>
  <field name="Type"><string>Fibre Channel</string></field>
  <field name="Ports"><int>1</int></field>
  <field name="Manufacturer"><string>Orvane Corporation</string></field>
  <field name="PciVendorId"><string>0x1d0c</string></field>
  <field name="PciSubsystemVendorId"><string>0x1d0c</string></field>
  <field name="PciSubsystemDeviceId"><string>0x0137</string></field>
  <field name="FlashMultibootVersion"><string>3.00.20</string></field>
  <field name="FlashFirmwareVersion"><string>5.09.00</string></field>
  <field name="FlashBiosVersion"><string>2.17</string></field>
  <field name="FlashFcodeVersion"><string>2.12</string></field>
  <field name="FlashEfiVersion"><string></string></field>
  <field name="VpdPartNumber"><string>OR2460401-03</string></field>
  <field name="VpdEngineeringChange"><string>E740612</string></field>
  <field name="VpdSerialNumber"><string>RFC0748T40312</string></field>
  <field name="VpdManufacturerId"><string>1D0C</string></field>
  </structure>
  </list>
  </output>
  $ orfc ports host6 -o esxcli
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  <structure typeName="Port">
  <field name="Port"><string>FC_21:00:00:24:ff:08:65:93</string></field>
  <field name="Host"><string>host6</string></field>
  <field name="State"><string>offline</string></field>
  <field name="SpeedGbps"><int>-1</int></field>
  <field name="PortId"><string></string></field>
  <field name="Fabric"><string></string></field>
  <field name="Adapter"><string>Adapter_ORV8362_RFE1506P30951</string></field>
  <field name="PortName"><string>21:00:00:24:ff:08:65:93</string></field>
  <field name="NodeName"><string>20:00:00:24:ff:08:65:92</string></field>
  <field name="PortNumber"><int>2</int></field>
  <field name="Interface"><string>physical</string></field>
  <field name="Protocol"><string>FCoE</string></field>
  <field name="PciAddress"><string>0d:00.7</string></field>
  <field name="Device"><string>0000:0d:00.7</string></field>
  <field name="Driver"><string>orvfc</string></field>
  <field name="DriverVersion"><string>4.1.34.0-1</string></field>
  <field name="FirmwareVersion"><string>8.07.16</string></field>
  <field name="BiosVersion"><string>3.38</string></field>
  <field name="LinkState"><string>Linkdown</string></field>
  <field name="SupportedSpeedsGbps"><string>10</string></field>
  <field name="PortType"><string>node</string></field>
  <field name="Connection"><string>point to point</string></field>
  <field name="Switch"><string></string></field>
  <field name="SymbolicName"><string>ORV8362 FW:8.07.16 DVR:4.1.34.0-1</string></field>
  <field name="HostNqn"><string></string></field>
  <field name="DeviceLossTimeoutSeconds"><int>30</int></field>
  <field name="LinkFailureCount"><int>0</int></field>
  <field name="LossOfSyncCount"><int>0</int></field>
  <field name="LossOfSignalCount"><int>0</int></field>
  <field name="PrimSeqProtocolErrCount"><int>0</int></field>
  <field name="InvalidTxWordCount"><int>0</int></field>
  <field name="InvalidCrcCount"><int>0</int></field>
  <field name="LipCount"><int>0</int></field>
  </structure>
  </list>
  </output>
  $ orfc targets host0 -o esxcli
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  <structure typeName="Target">
  <field name="Target"><string>FC_21:00:00:24:ff:0a:51:c4_Target_50:01:10:a0:00:8b:c4:11</string></field>
  <field name="Port"><string>FC_21:00:00:24:ff:0a:51:c4</string></field>
  <field name="PortName"><string>50:01:10:a0:00:8b:c4:11</string></field>
  <field name="State"><string>online</string></field>
  <field name="Protocol"><string>FCP</string></field>
  <field name="Vendor"><string>TAPEWELL</string></field>
  <field name="Product"><string>ULTRIUM-4</string></field>
  <field name="Luns"><int>1</int></field>
  <field name="RemotePort"><string>rport-0:0-0</string></field>
  <field name="RemotePortState"><string>Online</string></field>
  <field name="NodeName"><string>50:01:10:a0:00:8b:c4:10</string></field>
  <field name="PortId"><string>00:00:e8</string></field>
  <field name="TargetNumber"><int>0</int></field>
  <field name="Roles"><string>FCP Target</string></field>
  <field name="Type"><string>tape</string></field>
  <field name="Revision"><string>A23D</string></field>
  <field name="SerialNumber"><string>TW4L0A1763</string></field>
  <field name="Nqn"><string></string></field>
  <field name="ControllerId"><int>-1</int></field>
  <field name="DeviceLossTimeoutSeconds"><int>30</int></field>
  <field name="FastFailTimeoutSeconds"><int>5</int></field>
  </structure>
  </list>
  </output>
  $ orfc luns host0 -o esxcli
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  <structure typeName="Lun">
  <field name="Lun"><string>FC_21:00:00:24:ff:0a:51:c4_Target_50:01:10:a0:00:8b:c4:11_LUN_0</string></field>
  <field name="Port"><string>FC_21:00:00:24:ff:0a:51:c4</string></field>
  <field name="TargetPortName"><string>50:01:10:a0:00:8b:c4:11</string></field>
  <field name="LunNumber"><int>0</int></field>
  <field name="Device"><string>st0</string></field>
  <field name="SizeBytes"><int>-1</int></field>
  <field name="WorldwideId"><string>naa.500110a0008bc410</string></field>
  <field name="Address"><string>0:0:0:0</string></field>
  <field name="Map"><string></string></field>
  <field name="Vendor"><string>TAPEWELL</string></field>
  <field name="Product"><string>ULTRIUM-4</string></field>
  <field name="Revision"><string>A23D</string></field>
  <field name="BlockSizeBytes"><int>512</int></field>
  <field name="DeviceState"><string>running</string></field>
  <field name="AccessState"><string></string></field>
  <field name="MapDevice"><string></string></field>
  <field name="MapPathState"><string></string></field>
  <field name="MapState"><string></string></field>
  <field name="MapId"><string></string></field>
  </structure>
  </list>
  </output>
  $ orfc counters host2 -o esxcli | head -n 10
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  <structure typeName="Counter">
  <field name="Port"><string>FC_21:01:00:24:ff:b2:0f:38</string></field>
  <field name="Target"><string></string></field>
  <field name="Counter"><string>dumped_frames</string></field>
  <field name="Value"><int>0</int></field>
  <field name="Increase"><int>-1</int></field>
  <field name="IncreasePerSecond"><string></string></field>
  </structure>
  $ orfc paths st1 -o esxcli | grep -c '<structure '
  2
  $ orfc -o esxcli | sed -n 3,6p
  <structure typeName="Overview">
  <field name="Adapter"><string>Adapter_ORV2460_RFC0748T40312</string></field>
  <field name="FirmwareVersion"><string>5.09.00</string></field>
  <field name="DriverVersion"><string>8.07.21</string></field>

# The schema

  $ orfc schema | head -n 8
  {
   "$schema": "http://json-schema.org/draft-07/schema#",
   "title": "What orfc writes with -o json",
   "description": "Every key is in every record, null where the value is unknown. A text that is no UTF-8 has its bytes in KEY_hex too, an integer above 2^53 its digits in KEY_text.",
   "type": "object",
   "properties": {
    "json_format_version": {
     "description": "The first number moves when a reader must, the second when keys are added",
