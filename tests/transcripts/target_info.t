# Information on a target

A SCSI target with three LUNs, after a Larch. Port and target have authenticated each other.

  $ . "$TESTDIR/setup.sh"
  $ host targets
  $ orfc-esxcli -t target -v info get FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetInformation">
  <field name="Message">
  <string>Success</string></field>
  <field name="TargetInfo">
  <list type="structure">
  <structure typeName="TargetInfoList">
  <field name="Data">
  <string>Target Node Name: 50:06:0e:80:12:4a:7c:00
        Target Port Name: 50:06:0e:80:12:4a:7c:10
        Target Port ID: 01:40:0a
        Target Number: 0
        Vendor ID: HELIODOR
        Product ID: VIRTUAL-VOLUME  
        Product Revision: 8804
        Product Type: FCP Disk
        Serial Number: HD5600K21447
        Lun Count: 3
        Luns: LUN_0, LUN_1, LUN_1023
        Remote Type: Initiator-Target
        Session State: Auth Complete
        Secure Mode: Enabled
        Congestion Current State: Healthy
        Virtual Lane: NA
        I/O Throttling: None
        Status: Online
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>

Everything is in the adapter list: the library is asked for nothing else.

  $ calls --all
  VEXAPI_ExtSetScope
  VEXAPI_Initialize debugLevel=0 reserved=0
  VEXAPI_SetToolID toolId=11
  VEXAPI_SetToolVersion major=1 minor=3 sub=6 build=0
  VEXAPI_GetAdapterList
  VEXAPI_Uninitialize

An NVMe target has namespaces.

  $ orfc-esxcli -t target -v info getcli FC_21:00:00:24:ff:cc:00:01_Target_50:0a:09:81:a1:c3:40:10
  ****************************************************
  TargetInformation:
  Message: Success
  TargetInfo: TargetInfoList:
  Data: Target Node Name: 50:0a:09:80:a1:c3:40:10
        Target Port Name: 50:0a:09:81:a1:c3:40:10
        Target Port ID: 01:41:00
        Target Number: 1
        Vendor ID: BASALT  
        Product ID: NVME-ARRAY-900  
        Product Revision: 6.3.1   
        Product Type: NVMe Disk
        Serial Number: BA9K2307C0114
        Storage NQN: nqn.2010-06.com.basalt-storage:array.ba9k2307c0114
        Storage Controller ID: 0x41
        Namespace Count: 2
        Namespaces: NSID_1, NSID_2
        Remote Type: Unknown
        Session State: NA
        Secure Mode: Disabled
        Congestion Current State: Healthy
        Virtual Lane: NA
        I/O Throttling: None
        Status: Online
  ****************************************************

A RAID controller without LUNs keeps the label of the list, with a blank after it.

  $ orfc-esxcli -t target -v info getcli FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:14 | sed -n '/Product Type/,$p'
        Product Type: RAID
        Serial Number: 
        Lun Count: 0
        Luns: 
        Remote Type: Unknown
        Session State: NA
        Secure Mode: Disabled
        Congestion Current State: Healthy
        Virtual Lane: NA
        I/O Throttling: None
        Status: Unconfigured
  ****************************************************

Three hundred LUNs fill the report: what follows them has no room.

  $ orfc-esxcli -t target -v info getcli FC_21:00:00:24:ff:cc:00:01_Target_50:00:d3:10:04:5e:ac:21 >report
  $ sed -E 's/(LUN_2), .*, (LUN_298)/\1 ... \2/' report | sed -n '/Lun Count/,$p'
        Lun Count: 300
        Luns: LUN_0, LUN_1, LUN_2 ... LUN_298, LUN_299
  ****************************************************

A Birch with congestion and the second kind of authentication, which is checked first.

  $ orfc-esxcli -t target -v info getcli FC_21:00:00:24:ff:cc:00:03_Target_50:06:0e:80:12:4a:7c:10 | sed -n '/Remote/,$p'
        Remote Type: Initiator
        Session State: Auth Complete
        Secure Mode: Enabled
        Congestion Current State: Congested
        Virtual Lane: Fast
        I/O Throttling: Active
        Status: Online
  ****************************************************

What is not an identifier, or finds nothing.

  $ orfc-esxcli -t target -v info get
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="TargetInformation">
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  <field name="TargetInfo">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ orfc-esxcli -t target -v info getcli FC_21:00:00:24:FF:CC:00:01_Target_50:06:0E:80:12:4A:7C:10
  ****************************************************
  TargetInformation:
  Message: Failed, Invalid parameter
  TargetInfo: ****************************************************
  Usage: get [port identifier]\r (esc)
  $ code -t target -v info get fc_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10
  6
  $ code -t target -v info get FC_21:00:00:24:ff:cc:00:01
  6
  $ orfc-esxcli -t target -v info getcli help
  ****************************************************
  TargetInformation:
  Message: Failed, Unknown
  TargetInfo: ****************************************************
  Usage: get [port identifier]\r (esc)
  $ host no_list
  $ orfc-esxcli -t target -v info getcli FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  TargetInformation:
  Message: Failed, Host not found
  TargetInfo: ****************************************************
