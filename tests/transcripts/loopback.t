# Loopback test

The third call fails. Only the last iteration's record is shown; pass or fail is in it and in the counts.

  $ . "$TESTDIR/setup.sh"
  $ host diagnostics
  $ port=FC_21:00:00:24:ff:70:00:01
  $ orfc-esxcli -t port -s loopback run $port 5 4 64 Ignore Internal CRPAT
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="LoopbackTestInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="LoopbackTestResult">
  <list type="structure">
  <structure typeName="LoopbackTestResultList">
  <field name="Test Status">
  <string>Success</string></field>
  <field name="Crc Error">
  <int>0</int></field>
  <field name="Disparity Error">
  <int>0</int></field>
  <field name="Frame Length Error">
  <int>0</int></field>
  <field name="Test Iteration">
  <int>4</int></field>
  <field name="Success Count">
  <int>3</int></field>
  <field name="Failure Count">
  <int>1</int></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_DiagnosticsLoopBackTest
  VEXAPI_DiagnosticsLoopBackTest
  VEXAPI_DiagnosticsLoopBackTest
  VEXAPI_DiagnosticsLoopBackTest

After a stop the count of iterations is the index of the failed one.

  $ orfc-esxcli -t port -s loopback runcli $port 5 10 65535 stop external 01011010
  ****************************************************
  LoopbackTestInfo:
  Message: Success
  LoopbackTestResult: LoopbackTestResultList:
  Test Status: Failed, CRC
  Crc Error: 3
  Disparity Error: 2
  Frame Length Error: 1
  Test Iteration: 2
  Success Count: 2
  Failure Count: 1
  ****************************************************
  $ grep -c LoopBack journal; grep -m1 LoopBack journal | grep -o '"records.*'; rm journal
  3
  "records":{"parameters":{"TestCount":5,"OnError":1,"TestCountCopy":5,"DataPatternType":5,"LoopbackType":2,"DataSize":65535,"CustomData":"01011010","ConnectionMode":2}},"status":0}

Custom data, and data that isn't.

  $ orfc-esxcli -t port -s loopback runcli $port 65535 1 8 loop internal custom -d a-b-c-d-e-f-g-h-and-more | sed -n '3p;9p'
  Message: Success
  Test Iteration: 1
  $ grep LoopBack journal | grep -o '"records.*'; rm journal
  "records":{"parameters":{"TestCount":65535,"OnError":2,"TestCountCopy":65535,"DataPatternType":4,"LoopbackType":4,"DataSize":8,"CustomData":"abcdefgh","ConnectionMode":2}},"status":0}
  $ orfc-esxcli -t port -s loopback runcli $port -1 1 8 other internal nonsense | sed -n 3p
  Message: Success
  $ grep LoopBack journal | grep -o '"records.*'; rm journal
  "records":{"parameters":{"TestCount":4294967295,"OnError":0,"TestCountCopy":4294967295,"DataPatternType":0,"LoopbackType":4,"DataSize":8,"CustomData":"","ConnectionMode":2}},"status":0}
  $ orfc-esxcli -t port -s loopback runcli $port 1 1 8 ignore internal custom --data-pattern abcdefgh
  ****************************************************
  LoopbackTestInfo:
  Message: Failed, Custom Data should be of 8 chars separated by '-' (hifen)
  LoopbackTestResult: ****************************************************

Refusals: no call is made. No usage follows.

  $ refused() { orfc-esxcli -t port -s loopback runcli "$@" | sed -n '3p;5,$p'; }
  $ refused $port 0 1 8 ignore internal random
  Message: Failed, Invalid parameter
  $ refused $port 65536 1 8 ignore internal random
  Message: Failed, Invalid parameter
  $ refused $port 1 65536 8 ignore internal random
  Message: Failed, Invalid parameter
  $ refused $port 1 -1 8 ignore internal random
  Message: Failed, Invalid parameter
  $ refused $port 1 0 8 ignore internal random
  Message: Failed, Invalid parameter
  $ refused $port 1 1 9 ignore internal random
  Message: Failed, Invalid parameter
  $ refused $port 1 1 65536 ignore internal random
  Message: Failed, Invalid parameter
  $ refused $port 1 1 8 ignore internal_10bit random
  Message: Failed, Loopback type not supported for this adapter
  $ refused $port 1 1 8 ignore misspelt random
  Message: Failed, Loopback type not supported for this adapter
  $ refused $port 1 1 8 ignore FCoE_Echo random
  Message: Failed, Loopback type not supported for this adapter
  $ refused $port 1 1 8 ignore internal
  Message: Failed, Invalid parameter
  $ refused FC_21:01:00:24:ff:70:00:01
  Message: Failed, Feature not supported for virtual port
  $ calls | grep -c Loop
  0
  [1]
  $ refused FC_21:00:00:24:ff:70:00:08 1 1 8 ignore misspelt random
  Message: Success
  Test Status: Success
  Crc Error: 0
  Disparity Error: 0
  Frame Length Error: 0
  Test Iteration: 1
  Success Count: 1
  Failure Count: 0
  ****************************************************
  $ refuse_log 2 orfc-esxcli -t port -s loopback runcli $port 1 1 8 ignore internal random
  ****************************************************
  LoopbackTestInfo:
  Message: Failed, File not found
  LoopbackTestResult: ****************************************************
