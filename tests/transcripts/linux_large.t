# A large Linux host: 256 ports and 4,096 LUNs

  $ . "$TESTDIR/setup.sh"
  $ "$TESTDIR/../hosts/generate" 256 4096 tree; linux
  $ for what in adapter port target lun; do orfc-esxcli -t $what listcli | grep -c _; done
  128
  256
  256
  4096
  $ orfc-esxcli -t lun listcli | tail -2 | head -1
  LUNs/Namespaces: FC_21:00:1d:0c:00:00:00:ff_Target_50:00:1d:0c:00:00:00:ff_LUN_15
  $ orfc-esxcli -t lun -v info getcli $(orfc-esxcli -t lun listcli | sed -n 's/^LUNs.*: //p' | tail -1)
  ****************************************************
  LunInformation:
  Message: Success
  LunInfo: LunInfoList:
  Data: Vendor ID: SYNTHETI
        Product ID: DISK 4095
        Product Revision: 4095
        Lun Number: 15
        Lun Size In MB: 4194304
        Lun Worldwide Unique ID: 60:00:1d:0c:00:00:00:00:00:00:00:00:00:00:0f:ff
  ****************************************************
  $ told
