# Log functions that the program exports to the closed libraries

  $ . "$TESTDIR/setup.sh"
  $ host fec
  $ closed() { LD_PRELOAD=$BUILD/tests/transcripts/libclosed_library.so orfc-esxcli -t port -s fec getcli nosuch; }

Without traces nothing reaches the debug log.

  $ closed | tail -2 | tr -d '\r'
  
  Warning: core 9
  $ logs
  /var/tmp/vexapi-output.log
  $ cat /tmp/APILog.txt
  Debug:"ORDM_DebugPrint: source : text
  " 
  Debug:"call" 
  $ rm /tmp/APILog.txt

  $ ORFC_DEBUG_LEVEL=4 closed >/dev/null
  $ sed -nE 's/^[0-9/]+ [0-9:.]+ (CIM Provider ([A-Z]+ *)?)[0-9]+/\1PID/p' /var/tmp/viplugin.log | tail -8
  CIM Provider PID: without a level 1\r (esc)
  CIM Provider DEBUG       PID: with a level 2\r (esc)
  CIM Provider PID: wide 3\r (esc)
  CIM Provider DEBUG       PID: wide with a level 4\r (esc)
  CIM Provider PID: update 5\r (esc)
  CIM Provider DEBUG       PID: plain 6\r (esc)
  CIM Provider PID closed_library.cpp (42) : at a line 7\r (esc)
  CIM Provider DEBUG       PID closed_library.cpp (42) : at a line with a level 8\r (esc)
  $ rm /var/tmp/viplugin.log /tmp/APILog.txt

Another user's link at the place of the API log is not followed.

  $ ln -s /tmp/elsewhere /tmp/APILog.txt
  $ closed >/dev/null
  $ ls /tmp/elsewhere
  ls: cannot access '/tmp/elsewhere': No such file or directory
  [2]
  $ rm /tmp/APILog.txt
