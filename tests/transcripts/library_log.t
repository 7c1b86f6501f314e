# The library's output

The library's output goes to a separate log, and never between the lines of a document.

  $ . "$TESTDIR/setup.sh"
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
  $ head -2 /var/tmp/vexapi-output.log
  FC ESXCLI Debug level = 0
  VEXAPI Debug level = 0
  $ grep -c '^VEXAPI_.*status' /var/tmp/vexapi-output.log
  7

The log grows with each run. The debug level of the library is 31 or 0.

  $ for level in 65535 65534 31 0 -1 nonsense; do ORFC_DEBUG_LEVEL=$level orfc-esxcli nosuch >/dev/null; done
  $ grep 'Debug level' /var/tmp/vexapi-output.log
  FC ESXCLI Debug level = 0
  VEXAPI Debug level = 0
  FC ESXCLI Debug level = 65535
  VEXAPI Debug level = 31
  FC ESXCLI Debug level = 65534
  VEXAPI Debug level = 0
  FC ESXCLI Debug level = 31
  VEXAPI Debug level = 0
  FC ESXCLI Debug level = 0
  VEXAPI Debug level = 0
  FC ESXCLI Debug level = -1
  VEXAPI Debug level = 0
  FC ESXCLI Debug level = 0
  VEXAPI Debug level = 0
  $ rm -f journal

When the log can't be opened at the start there is no command, and no document. The session that never
began is ended nevertheless.

  $ forget_logs; mkdir /var/tmp/vexapi-output.log
  $ orfc-esxcli -t port list
  $ orfc-esxcli help
  $ orfc-esxcli nosuch
  $ orfc-esxcli -t port -s fec get FC_21:00:00:24:ff:10:20:30
  $ calls --all | cut -d ' ' -f 1 | uniq -c
        4 VEXAPI_Uninitialize
  $ code -t port list
  3

Nor does the prompt appear.

  $ orfc-esxcli </dev/null
  $ rmdir /var/tmp/vexapi-output.log

The same on a file system that is mounted read-only.

  $ read_only orfc-esxcli -t port list

A log that can be opened but not written, as on a full disk, costs nothing but its lines.

  $ unset VEXAPI_SIM_JOURNAL
  $ full orfc-esxcli -t port -s fec getcli FC_21:00:00:24:ff:10:20:30
  ****************************************************
  FECInfo:
  Message: Success
  FEC: FECList:
  FEC_Status: true
  Correctable FEC errors: 1200
  Uncorrectable FEC errors: 7
  ****************************************************
  $ full orfc-esxcli -t port list | cmp - <(orfc-esxcli -t port list)
