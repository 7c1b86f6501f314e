# Help of the target and LUN commands

  $ . "$TESTDIR/setup.sh"
  $ host targets
  $ orfc-esxcli -t target help
  \r (esc)
  Following is the list of available commands in the FC Target command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  list        : Discover list of Orvane FC Targets\r (esc)
  help        : list of available commands\r (esc)
  listcli     : Discover list of Orvane FC Targets\r (esc)
  info        : use this command to get Orvane FC Target info\r (esc)
  scmstats    : use this command to get Orvane FC Target SCM Statistics\r (esc)
  scmchk      : use this command to get Orvane FC Target SCM Status\r (esc)
  iidma       : use this command to get/set Orvane FC Target's Maximum Link Speed\r (esc)
  stats       : use this command to get Orvane FC Target Link Statistics\r (esc)
  $ orfc-esxcli -t target -v info help
  \r (esc)
  Following is the list of available commands in the FC Target info command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  get         : get Orvane FC Target information\r (esc)
  help        : list of available commands\r (esc)
  getcli      : get Orvane FC Target information\r (esc)
  $ orfc-esxcli -t target -v iidma help
  \r (esc)
  Following is the list of available commands in the FC Target iidma command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  get         : get Orvane FC Target IIDMA Speed\r (esc)
  set         : set Orvane FC Target IIDMA Speed\r (esc)
  help        : list of available commands\r (esc)
  getcli      : get Orvane FC Target IIDMA Speed\r (esc)
  setcli      : set Orvane FC Target IIDMA Speed\r (esc)
  $ orfc-esxcli -t target -v stats help
  \r (esc)
  Following is the list of available commands in the FC Target stats command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  get         : get Orvane FC Target information\r (esc)
  help        : list of available commands\r (esc)
  getcli      : get Orvane FC Target information\r (esc)

Required: the heading of `lun` is that of `target`; parsers depend on it.

  $ orfc-esxcli -t lun help
  \r (esc)
  Following is the list of available commands in the FC Target command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  list        : Discover list of Orvane FC LUNs\r (esc)
  help        : list of available commands\r (esc)
  listcli     : Discover list of Orvane FC LUNs\r (esc)
  info        : use this command to get Orvane FC LUN info\r (esc)
  $ orfc-esxcli -t lun -v info help
  \r (esc)
  Following is the list of available commands in the FC LUN info command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  get         : get Orvane FC LUN information\r (esc)
  help        : list of available commands\r (esc)
  getcli      : get Orvane FC LUN information\r (esc)

A question mark shows the usage of a `cli` leaf, and nothing of a plain one.

  $ orfc-esxcli -t target listcli ?
  Usage: list\r (esc)
  $ orfc-esxcli -t target list ?
  $ orfc-esxcli -t target -v info getcli ?
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t target -v iidma getcli ?
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t target -v iidma setcli ?
  Usage: set [port identifier]\r (esc)
  $ orfc-esxcli -t target -v stats getcli ?
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t lun listcli ?
  Usage: list\r (esc)
  $ orfc-esxcli -t lun -v info getcli ?
  Usage: get [port identifier]\r (esc)
