# orfc: bad input

Each is told in one line that says what and where. A wrong command line ends with 2, a command that fails with 1.

  $ . "$TESTDIR/setup.sh"
  $ orfc prots
  orfc: The following argument was not expected: prots; see orfc --help
  [2]
  $ orfc ports --wide
  orfc: The following argument was not expected: --wide; see orfc --help
  [2]
  $ orfc -o yaml
  orfc: --output: yaml is no format; see orfc --help
  [2]
  $ orfc --color sometimes
  orfc: --color: sometimes not in {auto,always,never}; see orfc --help
  [2]
  $ orfc ports --columns host,sped
  orfc: no column is named sped; there are port, host, state, speed_gbps, port_id, fabric, adapter, port_name, node_name, port_number, interface, protocol, pci_address, device, driver, driver_version, firmware_version, bios_version, link_state, supported_speeds_gbps, port_type, connection, switch, symbolic_name, host_nqn, device_loss_timeout_seconds, link_failure_count, loss_of_sync_count, loss_of_signal_count, prim_seq_protocol_err_count, invalid_tx_word_count, invalid_crc_count, lip_count
  [2]
  $ orfc ports --sort sped
  orfc: no column is named sped; there are port, host, state, speed_gbps, port_id, fabric, adapter, port_name, node_name, port_number, interface, protocol, pci_address, device, driver, driver_version, firmware_version, bios_version, link_state, supported_speeds_gbps, port_type, connection, switch, symbolic_name, host_nqn, device_loss_timeout_seconds, link_failure_count, loss_of_sync_count, loss_of_signal_count, prim_seq_protocol_err_count, invalid_tx_word_count, invalid_crc_count, lip_count
  [2]
  $ orfc ports --columns host -o json
  orfc: --columns: is for tables and CSV; the other formats have every key; see orfc --help
  [2]
  $ orfc show host9 -o esxcli
  orfc: --output: esxcli is for lists; see orfc --help
  [2]
  $ orfc show
  orfc: NAME is required; see orfc --help
  [2]
  $ orfc counters --interval 0
  orfc: --interval: 0 is not from 0.1 to 86400 seconds; see orfc --help
  [2]
  $ orfc counters --interval 5 --count 0
  orfc: --count: 0 is not from 1 to 1000000000; see orfc --help
  [2]
  $ orfc counters --count 5
  orfc: --count requires --interval; see orfc --help
  [2]
  $ orfc ports --interval 5
  orfc: The following argument was not expected: --interval; see orfc --help
  [2]

A library that isn't one, or lacks a function.

  $ orfc --library nothing.so 2>&1 | sed "s|$PWD|.|"
  orfc: library ./nothing.so: cannot open shared object file: No such file or directory
  $ orfc --library /dev/null
  orfc: library /dev/null: file too short
  [1]
  $ sed 's/VEXAPI_GetVpd/VEXAPI_GetVxx/g' $BUILD/libvexapi_fconly.so >lib.so
  $ orfc --library lib.so 2>&1 | sed "s|$PWD|.|"
  orfc: ./lib.so: has no function VEXAPI_GetVpd
  $ echo '{"Adapters": [], "Adaptors": []}' >typo.json
  $ VEXAPI_SIM_HOST=typo.json orfc 2>&1 | sed "s|$BUILD/||"
  orfc: libvexapi_fconly.so: doesn't start, status 0x200000fe: the description is refused: typo.json: /Adaptors: unknown key
  $ host no_list
  $ orfc 2>&1 | sed "s|$BUILD/||"
  orfc: libvexapi_fconly.so: shows no host

A folder that is no captured tree.

  $ orfc --root nothing
  orfc: nothing: no sys/class in it: No such file or directory
  [1]
  $ orfc --root .
  orfc: .: no sys/class in it: No such file or directory
  [1]
  $ orfc --root ''
  orfc: --root names nothing
  [2]
  $ orfc --root / --library simulator
  orfc: the simulator reads no --root
  [2]

What can't be read is told and ends with 3; the rest is complete.

  $ unset VEXAPI_SIM_HOST
  $ VEXAPI_SIM_FAULTS=VEXAPI_GetSFPData@2=5 orfc >ports; echo $?; sed -n 2,6p ports
  orfc: FC_21:00:00:24:ff:92:0f:38: transceiver: failed with status 5
  3
  Adapter_ORV2460_RFC0748T40312  firmware 5.09.00  driver 8.07.21
    FC_21:00:00:24:ff:0a:51:c4  host0   online      2  no diagnostics        1     1     0
  Adapter_ORV2562_RFD1019S27745  firmware 8.08.207  driver 2.1.101.0
    FC_21:00:00:24:ff:92:0f:38  host1   online      8  unread                1     8     1
    FC_21:01:00:24:ff:b2:0f:38  host2   online      8  bad checksum          0     0     0
  $ VEXAPI_SIM_FAULTS=VEXAPI_ExtGetPort@1=5 orfc ports >ports; echo $?; wc -l <ports
  orfc: FC_21:00:00:24:ff:0a:51:c4: kernel's names: failed with status 5
  3
  22

Nothing that a terminal would follow is printed, and no line is endless.

  $ orfc show $'\e]0;title\a\xe2\x80\xae\xff'
  orfc: nothing is named \xef\xbf\xbd]0;title\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd (esc)
  [1]
  $ orfc show "$(printf '%065536d' 0)" 2>&1 | wc -c
  2010

A reader that has seen enough, and a disk that is full.

  $ set -o pipefail
  $ orfc paths | head -n 1 | cut -c 1-20
    VERDICT           
  $ orfc paths >/dev/full
  orfc: standard output: No space left on device
  [1]
  $ orfc schema >/dev/full
  orfc: standard output: No space left on device
  [1]
