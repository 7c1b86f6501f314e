# FC ping, CT diagnostic and FC echo

  $ . "$TESTDIR/setup.sh"
  $ host diagnostics
  $ port=FC_21:00:00:24:ff:70:00:01
  $ target=50:06:0e:80:12:4a:7c:10
  $ orfc-esxcli -t port -s fcping run $port 50:6:E:80:12:4A:7C:10 65535 TRUE
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FCPingResult">
  <field name="Diagnostic Test">
  <string>FCPing</string></field>
  <field name="Test Result">
  <string>Success</string></field>
  </structure>
  </output>
  $ calls
  VEXAPI_DiagnosticsFCPingTest name=50:06:0e:80:12:4a:7c:10 count=65535 stopOnError=1 size=256
  $ orfc-esxcli -t port -s ctdiag runcli $port ctFCtraceroute $target 1 false
  ****************************************************
  CTDiagResult:
  Diagnostic Test: CTFCTraceRoute
  Test Result: Success
  ****************************************************
  $ calls
  VEXAPI_DiagnosticsCTCommand name=50:06:0e:80:12:4a:7c:10 count=1 stopOnError=0 size=256 testType=2
  $ VEXAPI_SIM_FAULTS=VEXAPI_DiagnosticsFCPingTest=9 orfc-esxcli -t port -s fcping runcli $port $target 1 no
  ****************************************************
  FCPingResult:
  Diagnostic Test: FCPing
  Test Result: Failed, Diagnostic test failed
  ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_DiagnosticsCTCommand=9 orfc-esxcli -t port -s ctdiag runcli $port CTPing $target 1 no
  ****************************************************
  CTDiagResult:
  Diagnostic Test: CTPing
  Test Result: Failed, Diagnostic test failed
  ****************************************************
  $ rm journal

Refusals.

  $ ping() { orfc-esxcli -t port -s fcping runcli "$@" | sed -n '4p;6,$p'; }
  $ ct() { orfc-esxcli -t port -s ctdiag runcli "$@" | sed -n '3,4p;6,$p'; }
  $ ping $port $target 0 true
  Test Result: Failed, Invalid parameter
  $ ping $port $target 65536 true
  Test Result: Failed, Invalid parameter
  $ ping $port $target 1
  Test Result: Failed, Invalid parameter
  $ ping $port 50:06 1 true
  Test Result: Failed, Target not found
  $ ping FC_21:01:00:24:ff:70:00:01 $target 1 true
  Test Result: Failed, Feature not supported for virtual port
  $ ping FC_21:00:00:24:ff:70:00:05
  Test Result: Failed, Feature requires link up
  $ ping FC_21:00:00:24:ff:70:00:08 $target 1 true
  Test Result: Failed, Target not found
  $ ping help
  Test Result: Failed, Unknown
  $ ct help ctping
  Diagnostic Test: CTPing
  Test Result: Failed, Unknown
  $ ct $port
  Diagnostic Test: Unknown
  Test Result: Failed, Invalid parameter
  $ ct nowhere nothing
  Diagnostic Test: Unknown
  Test Result: Failed, Invalid parameter
  $ ct $port CTPing $target 1
  Diagnostic Test: CTPing
  Test Result: Failed, Invalid parameter
  $ calls

The fabric's name is a destination of an echo; the result is that of the last frame.

  $ orfc-esxcli -t port -s fcecho run $port 10:00:88:94:71:0b:3c:00 1 true
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FCEchoResult">
  <field name="Message">
  <string>Success</string></field>
  <field name="FCEchoTestResults">
  <list type="structure">
  <structure typeName="FCEchoTestResultList">
  <field name="Destination WWN">
  <string>10:00:88:94:71:0b:3c:00</string></field>
  <field name="Ping Sequence Number">
  <int>1</int></field>
  <field name="Frame Sent">
  <int>1</int></field>
  <field name="Frame Received">
  <int>1</int></field>
  <field name="Response Length">
  <int>252</int></field>
  <field name="Response Time">
  <string>  7.00 (ms)</string></field>
  <field name="Echo Status">
  <string>Echo accepted</string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_DiagnosticsEchoElsTest name=10:00:88:94:71:0b:3c:00 count=1 stopOnError=1 destinationType=3
  $ orfc-esxcli -t port -s fcecho runcli $port $target 3 false
  ****************************************************
  FCEchoResult:
  Message: Success
  FCEchoTestResults: FCEchoTestResultList:
  Destination WWN: 50:06:0e:80:12:4a:7c:10
  Ping Sequence Number: 1
  Frame Sent: 1
  Frame Received: 1
  Response Length: 252
  Response Time:   7.00 (ms)
  Echo Status: Echo accepted
  FCEchoTestResultList:
  Destination WWN: 50:06:0e:80:12:4a:7c:10
  Ping Sequence Number: 2
  Frame Sent: 1
  Frame Received: 0
  Response Length: 0
  Response Time:   0.00 (ms)
  Echo Status: Echo timed out
  FCEchoTestResultList:
  Destination WWN: 50:06:0e:80:12:4a:7c:10
  Ping Sequence Number: 3
  Frame Sent: 1
  Frame Received: 1
  Response Length: 252
  Response Time:   7.00 (ms)
  Echo Status: Echo accepted
  ****************************************************
  $ orfc-esxcli -t port -s fcecho runcli $port $target 3 true | grep -E 'Message|Sequence|Status'
  Message: Failed, Diagnostic test failed
  Ping Sequence Number: 1
  Echo Status: Echo accepted
  Ping Sequence Number: 2
  Echo Status: Echo timed out
  $ orfc-esxcli -t port -s fcecho runcli $port $target 2 false | grep -E 'Message|Sequence'
  Message: Failed, Diagnostic test failed
  Ping Sequence Number: 1
  Ping Sequence Number: 2
  $ VEXAPI_SIM_FAULTS=VEXAPI_DiagnosticsEchoElsTest@1=5 orfc-esxcli -t port -s fcecho runcli $port $target 1 false | sed -n 3p
  Message: Failed, Diagnostic test failed
  $ orfc-esxcli -t port -s fcecho runcli $port 50:06:0e:80:12:4a:7c:11 1 false
  ****************************************************
  FCEchoResult:
  Message: Failed, Target not found
  FCEchoTestResults: ****************************************************
  $ refuse_log 3 orfc-esxcli -t port -s fcecho runcli $port $target 3 false | grep -E 'Message|Sequence'
  Message: Failed, File not found
  Ping Sequence Number: 1
