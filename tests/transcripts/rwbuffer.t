# Read/write buffer test

A row for each port of the last iteration, with the counts of the whole run. A list is released before the next
one, the last after its document.

  $ . "$TESTDIR/setup.sh"
  $ host diagnostics
  $ port=FC_21:00:00:24:ff:70:00:01
  $ orfc-esxcli -t port -s rwbuffer run $port 10 1 128 ignore cspat
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="RWBufferTestInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="RWBufferTestResult">
  <list type="structure">
  <structure typeName="RWBufferTestResultList">
  <field name="Test Status">
  <string>Success</string></field>
  <field name="Port ID">
  <string>01:40:00</string></field>
  <field name="Data Miscompare">
  <int>0</int></field>
  <field name="Link Failure">
  <int>0</int></field>
  <field name="Loss Of Sync">
  <int>0</int></field>
  <field name="Loss Of Signal">
  <int>0</int></field>
  <field name="Invalid CRC">
  <int>0</int></field>
  <field name="Test Iteration">
  <int>1</int></field>
  <field name="Success Count">
  <int>1</int></field>
  <field name="Failure Count">
  <int>0</int></field>
  </structure>
  <structure typeName="RWBufferTestResultList">
  <field name="Test Status">
  <string>Failed</string></field>
  <field name="Port ID">
  <string>01:40:01</string></field>
  <field name="Data Miscompare">
  <int>1</int></field>
  <field name="Link Failure">
  <int>2</int></field>
  <field name="Loss Of Sync">
  <int>3</int></field>
  <field name="Loss Of Signal">
  <int>4</int></field>
  <field name="Invalid CRC">
  <int>5</int></field>
  <field name="Test Iteration">
  <int>1</int></field>
  <field name="Success Count">
  <int>1</int></field>
  <field name="Failure Count">
  <int>0</int></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls --all | grep Buffer
  VEXAPI_DiagnosticsReadWriteBufferTest
  VEXAPI_FreeRWBufferTestResultList
  $ orfc-esxcli -t port -s rwbuffer runcli $port 10 3 8 stop custom -d 1-2-3-4-5-6-7-8
  ****************************************************
  RWBufferTestInfo:
  Message: Success
  RWBufferTestResult: RWBufferTestResultList:
  Test Status: Failed
  Port ID: 01:40:01
  Data Miscompare: 1
  Link Failure: 2
  Loss Of Sync: 3
  Loss Of Signal: 4
  Invalid CRC: 5
  Test Iteration: 1
  Success Count: 1
  Failure Count: 1
  ****************************************************
  $ calls --all | grep Buffer
  VEXAPI_DiagnosticsReadWriteBufferTest
  VEXAPI_FreeRWBufferTestResultList
  VEXAPI_DiagnosticsReadWriteBufferTest
  VEXAPI_FreeRWBufferTestResultList

Refusals.

  $ refused() { orfc-esxcli -t port -s rwbuffer runcli "$@" | sed -n '3p;5,$p'; }
  $ refused $port 10001 1 8 ignore random
  Message: Failed, Invalid parameter
  $ refused $port 1 10001 8 ignore random
  Message: Failed, Invalid parameter
  $ refused $port 1 1 256 ignore random
  Message: Failed, Invalid parameter
  $ refused $port 1 1 8 ignore
  Message: Failed, Invalid parameter
  $ refused $port 1 1 8 ignore custom -d 12345678
  Message: Failed, Custom Data should be of 8 chars separated by '-' (hifen)
  $ VEXAPI_SIM_FAULTS=VEXAPI_DiagnosticsReadWriteBufferTest=null refused $port 1 1 8 ignore random
  Message: Failed, DPortDiag read failed

A log that can't be opened for the release adds a second document.

  $ refuse_log 3 orfc-esxcli -t port -s rwbuffer runcli $port 10000 1 8 ignore random | tail -6
  Failure Count: 0
  ****************************************************
  ****************************************************
  RWBufferTestInfo:
  Message: Failed, File not found
  RWBufferTestResult: ****************************************************
