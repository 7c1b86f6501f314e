# How words select a command

A family is selected by its option and name, which may stand anywhere; a command by the first word that is
then left. Letter case is ignored.

  $ . "$TESTDIR/setup.sh"
  $ host lists
  $ orfc-esxcli -t adapter listcli
  ****************************************************
  AdapterList:
  Adapters: Adapter_ORV2872_BFK2101S04711
  AdapterList:
  Adapters: Adapter_ORV8362_RFD1402C10050
  AdapterList:
  Adapters: Adapter_ORV2742_AFE1825K03347
  ****************************************************
  $ orfc-esxcli -t port listcli
  ****************************************************
  PortList:
  Ports: FC_21:00:00:24:ff:aa:00:01
  PortList:
  Ports: FC_21:00:00:24:ff:aa:00:02
  PortList:
  Ports: FC_20:00:00:24:ff:aa:00:03
  PortList:
  Ports: FC_21:00:00:24:ff:aa:00:04
  PortList:
  Ports: FC_21:01:00:24:ff:aa:00:04
  ****************************************************
  $ orfc-esxcli -t adapter listcli >adapters.txt
  $ orfc-esxcli -t port listcli >ports.txt
  $ while read -r words; do
  >     orfc-esxcli $words | cmp - adapters.txt && echo "same: $words"
  > done <<'EOF'
  > -T ADAPTER LISTCLI
  > listcli -t adapter
  > ListCli -T Adapter
  > listcli and -t adapter more words
  > -t adapter listcli -t nosuch
  > EOF
  same: -T ADAPTER LISTCLI
  same: listcli -t adapter
  same: ListCli -T Adapter
  same: listcli and -t adapter more words
  same: -t adapter listcli -t nosuch

The root asks its families in order, `adapter` first. A pair that leads nowhere stays taken away, and the
search goes on.

  $ while read -r words; do
  >     orfc-esxcli $words | cmp - ports.txt && echo "same: $words"
  > done <<'EOF'
  > -t port -t adapter listcli
  > -t adapter -t port listcli
  > -t port listcli -t adapter
  > EOF
  same: -t port -t adapter listcli
  same: -t adapter -t port listcli
  same: -t port listcli -t adapter
  $ while read -r words; do
  >     orfc-esxcli $words | cmp - adapters.txt && echo "same: $words"
  > done <<'EOF'
  > listcli -t port -t adapter
  > EOF
  same: listcli -t port -t adapter

An option that is the last word selects nothing; the words before it count.

  $ while read -r words; do
  >     orfc-esxcli $words | cmp - ports.txt && echo "same: $words"
  > done <<'EOF'
  > listcli -t port -t
  > EOF
  same: listcli -t port -t

Whatever doesn't lead to a command is unknown.

  $ orfc-esxcli -t nosuch listcli
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t listcli
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t adapter
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli listcli
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli listcli -t
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t -t adapter listcli
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t nosuch listcli -t port
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t listcli adapter
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -s adapter listcli
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t port -t port listcli
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli x listcli -t adapter
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t adapter nosuch
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t adapter -s nosuch get
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t port -s get
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t adapter -s fec get
  Unknown command or invalid target identifier!\r (esc)

A sub-family has its own option, and the two pairs may come in either order.

  $ host fec
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30 >fec.txt
  $ while read -r words; do
  >     orfc-esxcli $words | cmp - fec.txt && echo "same: $words"
  > done <<'EOF'
  > -s fec -t port getcli FC_21:00:00:24:ff:10:20:30
  > getcli FC_21:00:00:24:ff:10:20:30 -t port -s fec
  > getcli -s fec FC_21:00:00:24:ff:10:20:30 -t port
  > -t port getcli FC_21:00:00:24:ff:10:20:30 -S FEC
  > -t port -s info -s fec getcli FC_21:00:00:24:ff:10:20:30
  > EOF
  same: -s fec -t port getcli FC_21:00:00:24:ff:10:20:30
  same: getcli FC_21:00:00:24:ff:10:20:30 -t port -s fec
  same: getcli -s fec FC_21:00:00:24:ff:10:20:30 -t port
  same: -t port getcli FC_21:00:00:24:ff:10:20:30 -S FEC
  same: -t port -s info -s fec getcli FC_21:00:00:24:ff:10:20:30
  $ orfc-esxcli FC_21:00:00:24:ff:10:20:30 getcli -t port -s fec
  Unknown command or invalid target identifier!\r (esc)
