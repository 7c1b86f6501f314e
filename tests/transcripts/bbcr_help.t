# Credit recovery: help and usage

  $ . "$TESTDIR/setup.sh"
  $ host settings
  $ orfc-esxcli -t port -s bbcr help
  \r (esc)
  Following is the list of available commands in the BBCR command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  get         : get Orvane adapter's Buffer-to-Buffer Credit information\r (esc)
  setFile     : set Orvane adapter's Buffer-to-Buffer Credit information in a local cache file\r (esc)
  set         : set Orvane adapter's Buffer-to-Buffer Credit information\r (esc)
  help        : list of available commands\r (esc)
  getcli      : get Orvane adapter's Buffer-to-Buffer Credit information\r (esc)
  setFilecli  : set Orvane adapter's Buffer-to-Buffer Credit information in a local cache file\r (esc)
  setcli      : set Orvane adapter's Buffer-to-Buffer Credit information\r (esc)
  $ for leaf in get setFile set; do for twin in $leaf $leaf'cli'; do orfc-esxcli -t port -s bbcr $twin '?'; done; done
  Usage: get\r (esc)
  Usage: setFile\r (esc)
  Usage: set\r (esc)
