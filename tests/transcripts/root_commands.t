# The prompt's commands on a command line

`version` and `q` belong to the prompt. On a command line either word, anywhere and in any letter case, ends
the run silently, even as the value of another command.

  $ . "$TESTDIR/setup.sh"
  $ host lists
  $ orfc-esxcli version
  $ orfc-esxcli VERSION
  $ orfc-esxcli q
  $ orfc-esxcli Q
  $ orfc-esxcli version ?
  $ orfc-esxcli q x
  $ orfc-esxcli -t port list version
  $ orfc-esxcli -t port -s fec get q
  $ orfc-esxcli nosuch Version
  $ orfc-esxcli help q
  $ orfc-esxcli -eng version
  $ code version
  0

`log` opens its file and has nothing more to write into it. The file's mode lets nobody read it.

  $ orfc-esxcli log commands.log
  $ stat -c '%a %s' commands.log
  200 0
  $ orfc-esxcli log
  $ orfc-esxcli log ?
  Usage: log [<filename>]\r (esc)
      filename    : The file to log all the output to. \r (esc)
                      If no filename is supplied, the currently open log \r (esc)
                      file will be closed.\r (esc)
  $ orfc-esxcli log nosuch/commands.log
  Failed to create file nosuch/commands.log
  $ code log nosuch/commands.log
  0

Any other word is unknown. So is a family's name without its option.

  $ orfc-esxcli nosuch
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli ''
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli ' '
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli adapter
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli port list
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -s
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t ''
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli listcli
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -h
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -?
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli --help
  Unknown command or invalid target identifier!\r (esc)
  $ code nosuch
  7

The status of the program is 0 nevertheless, as it is for every command: the document tells what came of
it.

  $ orfc-esxcli nosuch; echo $?
  Unknown command or invalid target identifier!\r (esc)
  0
  $ orfc-esxcli -t port -s fec get nosuch >/dev/null; echo $?
  0
