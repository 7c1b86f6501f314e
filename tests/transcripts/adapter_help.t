# Help of the adapter commands

  $ . "$TESTDIR/setup.sh"
  $ host lists
  $ orfc-esxcli -t adapter help
  \r (esc)
  Following is the list of available commands in the Adapter command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  list        : Discover list of Orvane adapters\r (esc)
  update      : Update firmware on the Orvane Adapter\r (esc)
  help        : List of available commands\r (esc)
  listcli     : Discover list of Orvane adapters\r (esc)
  updatecli   : Update firmware on the Orvane Adapter\r (esc)
  info        : use this command to get Orvane Adapter info\r (esc)
  personality : use this command to get/set Orvane Adapter personality\r (esc)
  flashinfo   : use this command to get Orvane Adapter flash information\r (esc)
  $ orfc-esxcli -t adapter help >help.txt
  $ while read -r words; do
  >     orfc-esxcli $words | cmp - help.txt && echo "same: $words"
  > done <<'EOF'
  > -t adapter help ?
  > -t adapter help help
  > -t adapter help x y
  > EOF
  same: -t adapter help ?
  same: -t adapter help help
  same: -t adapter help x y
