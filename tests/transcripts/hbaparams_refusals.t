# HBA parameters: refusals

A command is all or nothing. The first refusal ends it; the file stays as it was.

  $ . "$TESTDIR/setup.sh"
  $ host settings
  $ port=FC_21:00:00:24:ff:50:00:01
  $ orfc-esxcli -t port -s hbaparams setFile $port -w 31 >/dev/null
  $ cp /tmp/HBAParams_$port before
  $ orfc-esxcli -t port -s hbaparams setFile $port --frame-size 1024 --login-retry-count 256
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="HBAParametersInfo">
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  <field name="HBAParameters">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s hbaparams setFilecli $port --frame-size 1024 --login-retry-count 256
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Invalid parameter
  HBAParameters: ****************************************************
  Usage: setFile\r (esc)
  $ orfc-esxcli -t port -s hbaparams setFilecli $port -x 100 -z 512
  ****************************************************
  HBAParametersInfo:
  Message: Failed, feature not supported
  HBAParameters: ****************************************************
  $ orfc-esxcli -t port -s hbaparams setFilecli $port -c Loop_Only
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Connection Options value Loop_Only not supported for data rate value 16 Gbps and above
  HBAParameters: ****************************************************
  $ orfc-esxcli -t port -s hbaparams setFilecli $port -e 5 -m Interrupt_For_Every_I/O_Completion
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Interrupt Delay Timer value > 0 not supported for Operation Mode value Interrupt_For_Every_I/O_Completion
  HBAParameters: ****************************************************
  $ for words in '-z 4096' '-z 2112' '-l 126' '-d 64_Gbps' '-d 10_Gbps' '-r -1' '-b 1' '-c Loop' '-m 0'; do code -t port -s hbaparams setFile $port $words; done | paste -sd ' '
  6 6 6 6 6 6 6 6 6
  $ cmp before /tmp/HBAParams_$port

A loop needs a data rate below 16 Gbps in the file: it takes two commands.

  $ orfc-esxcli -t port -s hbaparams setFilecli $port -d 8_Gbps -c Loop_Only
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Connection Options value Loop_Only not supported for data rate value 16 Gbps and above
  HBAParameters: ****************************************************
  $ orfc-esxcli -t port -s hbaparams setFile $port -d 8_Gbps >/dev/null
  $ orfc-esxcli -t port -s hbaparams setFilecli $port -c Loop_Only | sed -n '3p;5,6p'
  Message: Success
  Connection Options: Loop_Only
  Data Rate: 8_Gbps
  $ orfc-esxcli -t port -s hbaparams setFilecli $port -d 16_Gbps
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Connection Options value Loop_Only not supported for data rate value 16 Gbps and above
  HBAParameters: ****************************************************
  $ orfc-esxcli -t port -s hbaparams setFilecli $port -d 16_Gbps -c Point_To_Point_Only | sed -n '3p;5,6p'
  Message: Success
  Connection Options: Point_To_Point_Only
  Data Rate: 16_Gbps

Mode 0 stages a timer of 0, and the timer can't be set after it.

  $ orfc-esxcli -t port -s hbaparams setFilecli $port -m interrupt_for_every_i/o_completion | sed -n '3p;7p;12p'
  Message: Success
  Operation Mode: Interrupt_For_Every_I/O_Completion
  Interrupt Delay Timer In 100us: 0
  $ for timer in 0 5 256; do code -t port -s hbaparams setFile $port -e $timer; done | paste -sd ' '
  0 17 6

Values are parsed leniently: what is not a number is 0, and of a large one the low 32 bits count. An option in last
place is none.

  $ orfc-esxcli -t port -s hbaparams setFile $port -l abc -u 4294967297 -y >/dev/null
  $ grep -E '^(Hard|Login|Luns)' /tmp/HBAParams_$port
  Hard_Loop_ID=0
  Login_Retry_Count=1
  Luns_Per_Target=128
  $ rm /tmp/HBAParams_$port

The first `setFile` of a port leaves its file even when it is refused.

  $ code -t port -s hbaparams setFile $port -l 126
  6
  $ cat /tmp/HBAParams_$port
  Connection_Options=1
  Data_Rate=5
  Disable_BIOS=1
  Disable_SCM=0
  Enable_Fabric_Assign_WWN=0
  Enable_Fibre_Channel_Tape_Support=1
  Enable_Hard_Loop_Id=1
  Enable_LR=1
  Enable_Lip_Full_Login=1
  Enable_Receive_Out_Of_Order_Frames=1
  Enable_Target_Reset=0
  Enable_Virtual_Lane=1
  Execution_Throttle=65535
  Frame_Size=2048
  Hard_Loop_ID=17
  Interrupt_Delay_Timer=11
  Link_Down_Timeout=60
  Login_Retry_Count=8
  Loop_Reset_Delay=5
  Luns_Per_Target=128
  Operation_Mode=6
  Port_Down_Retry_Count=30

What adapters refuse: 10 Gbps adapters have a fixed data rate and no hard loop, the 4 Gbps one no LR.

  $ for words in '5 -d Auto' '5 -l 1' '5 -p true' '5 -g true' '4 -m x' '4 -e 0' '4 -k true' '6 -k true' '6 -n true' '6 -q true' '3 -j true' '3 -q false'; do code -t port -s hbaparams setFile FC_21:00:00:24:ff:50:00:0$words; done | paste -sd ' '
  47 35 35 35 35 35 35 35 35 35 35 0
  $ orfc-esxcli -t port -s hbaparams setFilecli FC_21:00:00:24:ff:50:00:05 -d 10_Gbps
  ****************************************************
  HBAParametersInfo:
  Message: Failed, Read-Only parameter
  HBAParameters: ****************************************************
  $ orfc-esxcli -t port -s hbaparams setFilecli FC_21:01:00:24:ff:50:00:01 -z 512
  ****************************************************
  HBAParametersInfo:
  Message: Failed, feature not supported for virtual port
  HBAParameters: ****************************************************
  $ rm -f /tmp/HBAParams_FC_21:0?:00:24:ff:50:00:0?
