# Words that nobody expects

Thousands of words.

  $ . "$TESTDIR/setup.sh"
  $ host fec
  $ orfc-esxcli $(seq 5000)
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t port listcli $(seq 5000) | tail -2
  Ports: FC_20:00:00:24:ff:10:20:80
  ****************************************************
  $ orfc-esxcli $(seq 5000) -t port -s fec
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 $(seq 5000) -f false
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: true
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 $(yes -- -f | head -3001)
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: set\r (esc)

Words of 100 kB.

  $ long=$(printf '%0100000d' 0)
  $ orfc-esxcli "$long"
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t "$long" list
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t port -s fec getcli "$long"
  ****************************************************
  FECInfo:
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s fec getcli "FC_$long"
  ****************************************************
  FECInfo:
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s fec getcli "FC_21:00:00:24:ff:10:20:30$long"
  ****************************************************
  FECInfo:
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f "$long"
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 "$long" true
  ****************************************************
  FECInfo:
  Message: Success
  Reboot Required: false
  FEC: FECList:
  FEC_Status: false
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ orfc-esxcli -t port updatenvramcli FC_21:00:00:24:ff:10:20:30 "$long"
  ****************************************************
  UpdateNVRAM:
  Reboot Required: false
  Message: Failed, File not found
  ****************************************************
  $ orfc-esxcli log "$long" | cut -c 1-30
  Failed to create file 00000000
  $ for level in 1 4 65535; do ORFC_DEBUG_LEVEL=$level orfc-esxcli -t port -s fec getcli "FC_$long" | grep Message; done
  Message: Failed, Invalid parameter
  Message: Failed, Invalid parameter
  Message: Failed, Invalid parameter

Bytes above 127, signs of a format, and empty words.

  $ orfc-esxcli $'\xff\xfe' $'\x80'
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t port -s fec getcli $'FC_\xff\xfe'
  ****************************************************
  FECInfo:
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 -f $'tru\xc5'
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: set\r (esc)
  $ orfc-esxcli -t $'p\xd6rt' list
  Unknown command or invalid target identifier!\r (esc)
  $ for level in 0 4 5; do ORFC_DEBUG_LEVEL=$level orfc-esxcli -t port -s fec getcli '%s%n%99999d' | grep Message; done
  Message: Failed, Invalid parameter
  Message: Failed, Invalid parameter
  Message: Failed, Invalid parameter
  $ orfc-esxcli '' '' ''
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t port '' list
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli '' -t port list
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t port -s fec getcli '' FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: get\r (esc)
  $ orfc-esxcli -t port -s fec setcli FC_21:00:00:24:ff:10:20:30 '' '' -r ''
  ****************************************************
  FECInfo:
  Reboot Required: false
  Message: Failed, Invalid parameter
  FEC: ****************************************************
  Usage: set\r (esc)
