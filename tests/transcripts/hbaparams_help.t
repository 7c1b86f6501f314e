# HBA parameters: help and usage

  $ . "$TESTDIR/setup.sh"
  $ host settings
  $ orfc-esxcli -t port -s hbaparams help
  \r (esc)
  Following is the list of available commands in the hbaparams command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  get         : get Orvane HBA Parameters information\r (esc)
  setFile     : set Orvane HBA Parameters information in a local cache file\r (esc)
  set         : set Orvane HBA Parameters information\r (esc)
  restoreDefaults: Restore default values of Orvane HBA Parameters\r (esc)
  save        : save Orvane HBA Parameters information in a text file\r (esc)
  help        : list of available commands\r (esc)
  getcli      : get Orvane HBA Parameters information\r (esc)
  setFilecli  : set Orvane HBA Parameters information in a local cache file\r (esc)
  setcli      : set Orvane HBA Parameters information\r (esc)
  restoreDefaultscli: Restore default values of Orvane HBA Parameters\r (esc)
  savecli     : Save Orvane HBA Parameters information in a file\r (esc)

The leaves that esxcli calls have no usage.

  $ for leaf in get setFile set restoreDefaults save; do for twin in $leaf $leaf'cli'; do orfc-esxcli -t port -s hbaparams $twin '?'; done; done
  Usage: get\r (esc)
  Usage: setFile\r (esc)
  Usage: set\r (esc)
  Usage: restoreDefaults\r (esc)
  Usage: save\r (esc)
