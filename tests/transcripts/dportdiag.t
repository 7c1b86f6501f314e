# Diagnostic port

  $ . "$TESTDIR/setup.sh"
  $ host diagnostics
  $ port=FC_21:00:00:24:ff:70:00:01
  $ orfc-esxcli -t port -s dportdiag get $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="DPortDiagInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="Diagnostics Port Status">
  <bool>false</bool></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s dportdiag runcli $port
  ****************************************************
  DPortDiagInfo:
  Message: Failed, Port not in diagnostics mode
  DPortDiagResult: ****************************************************
  $ orfc-esxcli -t port -s dportdiag set $port TRUE
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="DPortDiagInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="Reboot Required">
  <bool>true</bool></field>
  <field name="Diagnostics Port Status">
  <bool>true</bool></field>
  </structure>
  </output>
  $ calls
  VEXAPI_IsMezzAdapter
  VEXAPI_CheckAdapterDPortOption
  VEXAPI_IsMezzAdapter
  VEXAPI_CheckAdapterDPortOption
  VEXAPI_IsMezzAdapter
  VEXAPI_ConfigureAdapterDPortSettings enable=1 reserved=0
  VEXAPI_CheckAdapterDPortOption
  $ orfc-esxcli -t port -s dportdiag getcli $port
  ****************************************************
  DPortDiagInfo:
  Message: Success
  Diagnostics Port Status: true
  ****************************************************

The report of the second form: 0.1 microwatt is the unit, so 10000 is 1 mW, 0 dBm, and 1000 is -10 dBm. Local
powers of 0 count as 0 dBm, remote ones as nothing at all.

  $ orfc-esxcli -t port -s dportdiag run $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="DPortDiagInfo">
  <field name="Message">
  <string>Success</string></field>
  <field name="DPortDiagResult">
  <list type="structure">
  <structure typeName="DPortDiagResultList">
  <field name="Data">
  <string>Start Time: Mon Mar  3 10:00:00 2025
        Stop Time: Mon Mar  3 10:00:45 2025
        HBA Port Value: 0x11
        HBA Port Status: 1
        HBA Port Result: Passed
        Electrical Loopback Value: 0x2
        Electrical Loopback Status: 2
        Electrical Loopback Result: Skipped
        Optical Loopback Value: 0x3
        Optical Loopback Status: 71
        Optical Loopback Result: Failed
        Link Traffic Value: 0x4
        Link Traffic Status: 115
        Link Traffic Result: Memory Error
        Tx Power: 0x2710
        Rx Power: 0x0
        Mbx1: 0x4000
        Mbx2: 0x0
        Roundtrip Link Latency: 291 ns
        Cable Link Distance: 1000 meters
        Allowable Power Loss: 7.000000
        Egress Power: Tx: 0.000000 dBm, Rx: -inf dBm, Diff: inf dBm
        Ingress Power: Tx: -10.000000 dBm, Rx: 0.000000 dBm, Diff: -10.000000 dBm
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s dportdiag runcli FC_21:00:00:24:ff:70:00:03
  ****************************************************
  DPortDiagInfo:
  Message: Success
  DPortDiagResult: DPortDiagResultList:
  Data: Start Time: S
        Stop Time: T
        HBA Port Value: 0x0
        HBA Port Status: 3
        HBA Port Result: Failed
        Electrical Loopback Value: 0x0
        Electrical Loopback Status: 1
        Electrical Loopback Result: Passed
        Optical Loopback Value: 0x0
        Optical Loopback Status: 1
        Optical Loopback Result: Passed
        Link Traffic Value: 0x0
        Link Traffic Status: 1
        Link Traffic Result: Passed
        Tx Power: 0x10
        Rx Power: 0x11
        Reason: Retry Exceeded
        Roundtrip Link Latency: 5 ns
        Cable Link Distance: 6 meters
        Allowable Power Loss: 0
        Egress Power: Tx: 0.000000 dBm, Rx: 0.000000 dBm, Diff: 0.000000 dBm
        Ingress Power: Tx: -10.000000 dBm, Rx: 0.000000 dBm, Diff: 0.000000 dBm
  ****************************************************

The first form shows the phases alone; the times bring their line ends with them.

  $ orfc-esxcli -t port -s dportdiag runcli FC_21:00:00:24:ff:70:00:02
  ****************************************************
  DPortDiagInfo:
  Message: Success
  DPortDiagResult: DPortDiagResultList:
  Data: Start Time: S      Stop Time: T      HBA Port Value: 0x0
        HBA Port Status: 1
        HBA Port Result: Passed
        Electrical Loopback Value: 0x0
        Electrical Loopback Status: 1
        Electrical Loopback Result: Passed
        Optical Loopback Value: 0x0
        Optical Loopback Status: 1
        Optical Loopback Result: Passed
        Link Traffic Value: 0x0
        Link Traffic Status: 1
        Link Traffic Result: Passed
  ****************************************************
  $ orfc-esxcli -t port -s dportdiag runcli FC_21:00:00:24:ff:70:00:04
  ****************************************************
  DPortDiagInfo:
  Message: Failed, Command not supported with Current Switch
  DPortDiagResult: ****************************************************
  $ rm journal

Refusals: the mode before the link, the link before the speed.

  $ run() { orfc-esxcli -t port -s dportdiag runcli "$@" | sed -n 3p; }
  $ run FC_21:00:00:24:ff:70:00:05
  Message: Failed, Feature requires link up
  $ run FC_21:00:00:24:ff:70:00:06
  Message: Failed, Feature supported for speeds 16 Gbps and above
  $ run FC_21:00:00:24:ff:70:00:07
  Message: Failed, Feature not supported for this port
  $ run FC_21:00:00:24:ff:70:00:08
  Message: Failed, Feature not supported for this port
  $ run FC_21:01:00:24:ff:70:00:01
  Message: Failed, Feature not supported for virtual port
  $ for status in 2 29 38 129 130 131 132 133; do VEXAPI_SIM_FAULTS=VEXAPI_DiagnosticDPortTestV2=$status run $port; done
  Message: Failed, Invalid parameter
  Message: Failed, Feature not supported for virtual port
  Message: Failed, Feature not supported for this port
  Message: Failed, Port not in diagnostics mode
  Message: Failed, Feature requires link up
  Message: Failed, Feature supported for speeds 16 Gbps and above
  Message: Failed, Feature not supported in Boot-From-SAN mode
  Message: Failed, Unknown

For status 132 the document is in the library's log too.

  $ rm /var/tmp/vexapi-output.log
  $ VEXAPI_SIM_FAULTS=VEXAPI_DiagnosticDPortTestV2=132 orfc-esxcli -t port -s dportdiag runcli $port
  ****************************************************
  DPortDiagInfo:
  Message: Failed, Feature not supported in Boot-From-SAN mode
  DPortDiagResult: ****************************************************
  $ grep -c 'Boot-From-SAN' /var/tmp/vexapi-output.log
  1

`set` and `get` have an error document of their own.

  $ orfc-esxcli -t port -s dportdiag setcli $port on
  ****************************************************
  DPortDiagInfo:
  Message: Failed, Invalid parameter
  Reboot Required: false
  Diagnostics Port Status: false
  ****************************************************
  $ orfc-esxcli -t port -s dportdiag setcli $port
  ****************************************************
  DPortDiagInfo:
  Message: Failed, Invalid parameter
  Reboot Required: false
  Diagnostics Port Status: false
  ****************************************************
  $ orfc-esxcli -t port -s dportdiag getcli FC_21:00:00:24:ff:70:00:07
  ****************************************************
  DPortDiagInfo:
  Message: Failed, Feature not supported for this port
  Diagnostics Port Status: false
  ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_ConfigureAdapterDPortSettings=1 orfc-esxcli -t port -s dportdiag setcli $port false
  ****************************************************
  DPortDiagInfo:
  Message: Failed, DPortDiag update failed
  Reboot Required: false
  Diagnostics Port Status: false
  ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsRebootRequired=1 orfc-esxcli -t port -s dportdiag setcli $port false
  ****************************************************
  DPortDiagInfo:
  Message: Success
  Reboot Required: true
  Diagnostics Port Status: false
  ****************************************************
  $ orfc-esxcli -t port -s dportdiag getcli '?'
  Usage: set\r (esc)
  $ orfc-esxcli -t port -s dportdiag setcli '?'
