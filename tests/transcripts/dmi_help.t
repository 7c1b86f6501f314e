# Transceivers: help

  $ . "$TESTDIR/setup.sh"
  $ host transceivers
  $ orfc-esxcli -t port -s dmi help
  \r (esc)
  Following is the list of available commands in the port dmi command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  get         : Get Orvane Physical Port SFP DMI information\r (esc)
  getraw      : Get Orvane Physical Port SFP DMI information as raw hex data\r (esc)
  update      : Update Orvane Physical Port SFP DMI Firmware\r (esc)
  help        : List of available commands\r (esc)
  getcli      : Get Orvane Physical Port SFP DMI information\r (esc)
  getrawcli   : Get Orvane Physical Port SFP DMI information as raw hex data\r (esc)
  updatecli   : Update Orvane Physical Port SFP DMI Firmware\r (esc)
  $ orfc-esxcli -t port -s dmi getcli ?
  Usage: get [port identifier]\r (esc)
  $ orfc-esxcli -t port -s dmi getrawcli ?
  Usage: getraw [port identifier]\r (esc)
  $ orfc-esxcli -t port -s dmi updatecli ?
  Usage: update [port identifier]\r (esc)
  $ orfc-esxcli -t port -s dmi get ?
  $ orfc-esxcli -t port -s dmi getraw ?
  $ orfc-esxcli -t port -s dmi update ?
