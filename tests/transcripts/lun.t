# LUNs and namespaces

The list names each by its target; a namespace has another word.

  $ . "$TESTDIR/setup.sh"
  $ host targets
  $ orfc-esxcli -t lun list | head -14
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  <structure typeName="LunList">
  <field name="LUNs/Namespaces">
  <string>FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_0</string></field>
  </structure>
  <structure typeName="LunList">
  <field name="LUNs/Namespaces">
  <string>FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_1</string></field>
  </structure>
  <structure typeName="LunList">
  <field name="LUNs/Namespaces">
  <string>FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_1023</string></field>
  </structure>
  $ orfc-esxcli -t lun listcli | sed -n '1,13p;$p'
  ****************************************************
  LunList:
  LUNs/Namespaces: FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_0
  LunList:
  LUNs/Namespaces: FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_1
  LunList:
  LUNs/Namespaces: FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_1023
  LunList:
  LUNs/Namespaces: FC_21:00:00:24:ff:cc:00:01_Target_50:0a:09:81:a1:c3:40:10_NSID_1
  LunList:
  LUNs/Namespaces: FC_21:00:00:24:ff:cc:00:01_Target_50:0a:09:81:a1:c3:40:10_NSID_2
  LunList:
  LUNs/Namespaces: FC_21:00:00:24:ff:cc:00:01_Target_50:00:d3:10:04:5e:ac:21_LUN_0
  ****************************************************

Three disks, two namespaces and the three hundred of one target.

  $ orfc-esxcli -t lun listcli | grep -c '^LUNs/Namespaces: '
  305
  $ orfc-esxcli -t lun -v info get FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_0
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="LunInformation">
  <field name="Message">
  <string>Success</string></field>
  <field name="LunInfo">
  <list type="structure">
  <structure typeName="LunInfoList">
  <field name="Data">
  <string>Vendor ID: HELIODOR
        Product ID: VIRTUAL-VOLUME  
        Product Revision: 8804
        Lun Number: 0
        Lun Size In MB: 1024
        Lun Worldwide Unique ID: 60:06:0e:80:12:4a:7c:00:50:40:4a:7c:00:00:00:0a
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>

Fewer than 1024 blocks have no size.

  $ orfc-esxcli -t lun -v info getcli FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_1
  ****************************************************
  LunInformation:
  Message: Success
  LunInfo: LunInfoList:
  Data: Vendor ID: HELIODOR
        Product ID: VIRTUAL-VOLUME  
        Product Revision: 8804
        Lun Number: 1
        Lun Size In MB: 0
        Lun Worldwide Unique ID: 44:49:53:4b
  ****************************************************
  $ orfc-esxcli -t lun -v info getcli FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_1023 | tail -4
        Lun Number: 1023
        Lun Size In MB: 1024
        Lun Worldwide Unique ID: NA
  ****************************************************

A namespace. 536870912 blocks of 4096 bytes are two terabytes.

  $ orfc-esxcli -t lun -v info getcli FC_21:00:00:24:ff:cc:00:01_Target_50:0a:09:81:a1:c3:40:10_NSID_2
  ****************************************************
  LunInformation:
  Message: Success
  LunInfo: LunInfoList:
  Data: Vendor ID: BASALT  
        Product ID: NVME-ARRAY-900  
        Product Revision: 6.3.1   
        Namespace ID: 2
        Namespace Size In MB: 2097152
  ****************************************************

The word must be that of the target's kind, and written as in the list.

  $ orfc-esxcli -t lun -v info get FC_21:00:00:24:ff:cc:00:01_Target_50:0a:09:81:a1:c3:40:10_LUN_2
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="LunInformation">
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  <field name="LunInfo">
  <list type="structure">
  </list>
  </field>
  </structure>
  </output>
  $ code -t lun -v info get FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10_lun_1
  6
  $ orfc-esxcli -t lun -v info getcli FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10
  ****************************************************
  LunInformation:
  Message: Failed, Invalid parameter
  LunInfo: ****************************************************
  Usage: get [port identifier]\r (esc)

Nothing to list, no host, and a help word.

  $ host lists
  $ orfc-esxcli -t lun list
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <list type="structure">
  </list>
  </output>
  $ host no_list
  $ orfc-esxcli -t lun list
  $ code -t lun listcli
  14
  $ orfc-esxcli -t lun -v info getcli FC_21:00:00:24:ff:cc:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_0 | grep Message
  Message: Failed, Host not found
  $ orfc-esxcli -t lun list /h
  $ orfc-esxcli -t lun listcli /h
  Usage: list\r (esc)

The lab host has LUNs and namespaces of every kind, and every line of the list finds its own.

  $ unset VEXAPI_SIM_HOST
  $ orfc-esxcli -t lun listcli | sed -n 's/^LUNs.Namespaces: //p' >luns
  $ sed -n '1p;$p' luns
  FC_21:00:00:24:ff:0a:51:c4_Target_50:01:10:a0:00:8b:c4:11_LUN_0
  FC_21:00:00:24:ff:1d:90:06_Target_50:0a:09:83:a1:c3:40:10_NSID_4
  $ grep -v -e 5e:ac:21_LUN_ luns | while read -r lun; do
  >   orfc-esxcli -t lun -v info getcli "$lun" | grep -qx ".*\(Lun Number\|Namespace ID\): ${lun##*_}" || echo "$lun"
  > done
  $ orfc-esxcli -t lun -v info getcli FC_21:00:00:24:ff:7e:2d:94_Target_50:00:d3:10:04:5e:ac:21_LUN_299 | tail -4
        Lun Number: 299
        Lun Size In MB: 102400
        Lun Worldwide Unique ID: 60:00:d3:10:04:5e:ac:00:00:00:00:00:00:00:02:2b
  ****************************************************
