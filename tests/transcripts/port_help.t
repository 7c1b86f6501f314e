# Help of the port commands

  $ . "$TESTDIR/setup.sh"
  $ host lists
  $ orfc-esxcli -t port help
  \r (esc)
  Following is the list of available commands in the Port command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  list        : Discover list of Orvane physical ports\r (esc)
  updatenvram : Update NVRAM of Orvane physical port\r (esc)
  help        : list of available commands\r (esc)
  listcli     : Discover list of Orvane physical ports\r (esc)
  updatenvramcli: Update NVRAM of Orvane physical port\r (esc)
  info        : use this command to get Orvane Fibre Channel Port's info\r (esc)
  stats       : use this command to get Orvane Fibre Chanel Port Statistics\r (esc)
  dmi         : use this command to get Orvane Fibre Channel Port's SFP DMI info\r (esc)
  vpd         : use this command to get Orvane Fibre Channel Port's VPD info\r (esc)
  hbaparams   : use this command to get/set Orvane Fibre Channel Port's HBA parameters\r (esc)
  bbcr        : use this command to get/set Orvane Fibre Channel Port's BBCR info\r (esc)
  fec         : use this command to get/set Orvane Fibre Channel Port's FEC info\r (esc)
  bootconfig  : use this command to get/set Orvane Fibre Channel Port's Boot Config info\r (esc)
  bootconfigext: use this command to get/set Orvane Fibre Channel Port's Boot Config info\r (esc)
  fwdump      : use this command to get Orvane Fibre Channel Port's Firmware Dump info\r (esc)
  beacon      : use this command to get/set Orvane Fibre Channel Port's Beacon info\r (esc)
  scmstats    : use this command to get Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Statistics\r (esc)
  scmchk      : use this command to check Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Status\r (esc)
  scmprofile  : use this command to check Orvane Fibre Channel Port's Fabric Wide Congestion Mitigation (FWCM) Profile\r (esc)
  dportdiag   : use this command to get/set/run Diagnostic Port (DPort) on Orvane Fibre Channel Port\r (esc)
  ctdiag      : use this command to run CT diagnostic through Orvane Fibre Channel Port\r (esc)
  fcping      : use this command to run FC Ping diagnostic through Orvane Fibre Channel Port\r (esc)
  fcecho      : use this command to run FC Echo ELS diagnostic through Orvane Fibre Channel Port\r (esc)
  rdp         : use this command to get Read Diagnostic Parameters ELS info through Orvane Fibre Channel Port\r (esc)
  loopback    : use this command to run loopback diagnostic test through Orvane Fibre Channel Port\r (esc)
  rwbuffer    : use this command to run Read/Write Buffer Diagnostic test through Orvane Fibre Channel Port\r (esc)
  $ orfc-esxcli -t port help >help.txt
  $ while read -r words; do
  >     orfc-esxcli $words | cmp - help.txt && echo "same: $words"
  > done <<'EOF'
  > -t port help ?
  > -t port help help
  > -t port help x y
  > EOF
  same: -t port help ?
  same: -t port help help
  same: -t port help x y
