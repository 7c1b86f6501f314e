# Forward error correction: help

  $ . "$TESTDIR/setup.sh"
  $ host fec
  $ orfc-esxcli -t port -s fec help
  \r (esc)
  Following is the list of available commands in the FEC command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  get         : get Orvane adapter's FEC information\r (esc)
  set         : set Orvane adapter's FEC information\r (esc)
  help        : list of available commands\r (esc)
  getcli      : get Orvane adapter's FEC information\r (esc)
  setcli      : set Orvane adapter's FEC information\r (esc)
  $ orfc-esxcli -t port -s fec help >help.txt
  $ while read -r words; do
  >     orfc-esxcli $words | cmp - help.txt && echo "same: $words"
  > done <<'EOF'
  > -t port -s fec help ?
  > -t port -s fec help help
  > -t port -s fec help x y
  > EOF
  same: -t port -s fec help ?
  same: -t port -s fec help help
  same: -t port -s fec help x y
