# The diagnostic parameters of a link partner

  $ . "$TESTDIR/setup.sh"
  $ port=FC_21:00:00:24:ff:7e:2d:94
  $ orfc-esxcli -t port -s rdp get $port
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="RDPInformation">
  <field name="Message">
  <string>Success</string></field>
  <field name="Read Diagnostics Parameters Data">
  <list type="structure">
  <structure typeName="RDPDataList">
  <field name="RDPInfo">
  <string>
  ---------------------------------
  Diagnostics Parameters Information
  ---------------------------------
  Descriptor Tag: Link Service Request Information
  Descriptor Len: 4 Bytes
  Descriptor Value: 0x18000000
  
  ---------------------------------
  SFP Diagnostics Param Information
  ---------------------------------
  Temperature: 42 (C)
  Vcc: 3.299999952 V
  Tx Bias: 7.400000572 mA
  Tx Power: 0.669900060 mW
  Rx Power: 0.587500036 mW
  SFP Flag: 0x8051
  \tPort Tx Type: Short Wave Laser (esc)
  \tConnector Type: SFP+ (esc)
  \tOptical Port: On (esc)
  \tSFP Diagnostics Parameters not valid: Off (esc)
  \tFEC Active Port: On (esc)
  
  ---------------------------------
  Port Speed Information
  ---------------------------------
  Port Speed Capabilities: 32 16 8 Gbps
  Port Operating Speed: 32 Gbps
  
  ---------------------------------
  Link Error Status Block Information
  ---------------------------------
  Link Failure Count: 3
  Loss Of Sync Count: 1
  Loss Of Signal Count: 2
  Primary Sequence Error Count: 0
  Invalid Transmit Word Count: 17
  Invalid CRC Count: 4
  PN Port Physical Type: 0x40000000
  \tThe sending VN_Port uses an FC-FS-3 PN_Port or PF Port (esc)
  
  ---------------------------------
  Port Name Information
  ---------------------------------
  Node WWN: 10:00:88:94:71:0b:3c:00
  Port WWN: 20:07:88:94:71:0b:3c:00
  
  ---------------------------------
  FEC Status Information
  ---------------------------------
  Correctable Blocks: 118
  UnCorreatable Blocks: 0
  
  ---------------------------------
  Buffer Credits Status Information
  ---------------------------------
  FC Port Buffer To Buffer Credits: 32
  Attached FC Port Buffer To Buffer Credits: 64
  Nominal FC Port RTT: 412 ns
  
  ---------------------------------
  Optical Element Data Information
  ---------------------------------
  Temperature High Alarm: 9344.00
  Temperature Low Alarm: 0.00
  Temperature High Warning: 0.00
  Temperature Low Warning: 0.00
  
  ---------------------------------
  Optical Element Data Information
  ---------------------------------
  Voltage High Alarm: 3.599999905
  Voltage Low Alarm: 3.000000000
  Voltage High Warning: 3.460000038
  Voltage Low Warning: 3.134900093
  
  ---------------------------------
  Optical Element Data Information
  ---------------------------------
  Tx Bias High Alarm: 15.000000954
  Tx Bias Low Alarm: 1.000000000
  Tx Bias High Warning: 13.000000954
  Tx Bias Low Warning: 2.000000000
  
  ---------------------------------
  Optical Element Data Information
  ---------------------------------
  Tx Power High Alarm: 1.000000000
  Tx Power Low Alarm: 0.100000001
  Tx Power High Warning: 0.794300020
  Tx Power Low Warning: 0.125900000
  
  ---------------------------------
  Optical Element Data Information
  ---------------------------------
  Rx Power High Alarm: 1.000000000
  Rx Power Low Alarm: 0.010000001
  Rx Power High Warning: 0.794300020
  Rx Power Low Warning: 0.025100002
  
  ---------------------------------
  Optical Product Data Information
  ---------------------------------
  Vendor Name: VESPERA         
  Part Number: VSW-32G-SW      
  Serial Number: VS2107K00318    
  Revision: C   
  Date: 210716  
  
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>
  $ calls
  VEXAPI_DiagnosticsRDPTest size=508

`runcli` is the text form, and shows no usage.

  $ orfc-esxcli -t port -s rdp runcli $port | sed -n 1,12p
  ****************************************************
  RDPInformation:
  Message: Success
  Read Diagnostics Parameters Data: RDPDataList:
  RDPInfo: 
  ---------------------------------
  Diagnostics Parameters Information
  ---------------------------------
  Descriptor Tag: Link Service Request Information
  Descriptor Len: 4 Bytes
  Descriptor Value: 0x18000000
  
  $ orfc-esxcli -t port -s rdp runcli nowhere
  ****************************************************
  RDPInformation:
  Message: Failed, Invalid parameter
  Read Diagnostics Parameters Data: ****************************************************
  $ orfc-esxcli -t port -s rdp runcli '?'
  $ orfc-esxcli -t port -s rdp getcli $port
  Unknown command or invalid target identifier!\r (esc)
  $ VEXAPI_SIM_FAULTS=VEXAPI_DiagnosticsRDPTest=7 orfc-esxcli -t port -s rdp runcli $port
  ****************************************************
  RDPInformation:
  Message: Failed, Diagnostic test failed
  Read Diagnostics Parameters Data: ****************************************************
  $ refuse_log 2 orfc-esxcli -t port -s rdp runcli $port | sed -n 3p
  Message: Failed, File not found
  $ rm journal

A link that is down, and a virtual port whose link is down, are refused without a call.

  $ host diagnostics
  $ orfc-esxcli -t port -s rdp get FC_21:00:00:24:ff:70:00:05
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="RDPInformation">
  <field name="Message">
  <string>Failed, Feature requires link up</string></field>
  <field name="Read Diagnostics Parameters Data">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s rdp runcli FC_21:01:00:24:ff:70:00:01 | sed -n 3p
  Message: Failed, Feature not supported for virtual port
  $ calls
  $ orfc-esxcli -t port -s rdp runcli FC_21:00:00:24:ff:70:00:01 | sed -n 3p
  Message: Failed, Diagnostic test failed
  $ orfc-esxcli -t port -s rdp help
  \r (esc)
  Following is the list of available commands in the RDP command mode.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  get         : Read Diagnostic Parameters on Orvane adapter port\r (esc)
  help        : list of available commands\r (esc)
  runcli      : Read Diagnostic Parameters on Orvane adapter port\r (esc)
