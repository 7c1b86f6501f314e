# Transceivers: updating their firmware

  $ . "$TESTDIR/setup.sh"
  $ host transceivers
  $ printf 'ORFC-IMAGE SFP B7\n' >sfp.img
  $ orfc-esxcli -t port -s dmi getcli FC_21:00:00:24:ff:60:00:07 | grep 'Vendor rev'
                      Vendor rev: A    
  $ orfc-esxcli -t port -s dmi update FC_21:00:00:24:ff:60:00:07 sfp.img WTD
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="SFPFirmwareUpdate">
  <field name="Message">
  <string>Success</string></field>
  </structure>
  </output>
  $ calls
  VEXAPI_GetSFPData
  VEXAPI_SfpModuleFirmwareUpdate path=sfp.img option=2
  $ orfc-esxcli -t port -s dmi getcli FC_21:00:00:24:ff:60:00:07 | grep 'Vendor rev'
                      Vendor rev: B7   

The vendor in any letter case; a word too many is ignored.

  $ orfc-esxcli -t port -s dmi updatecli FC_21:00:00:24:ff:60:00:07 sfp.img wtD more
  ****************************************************
  SFPFirmwareUpdate:
  Message: Success
  ****************************************************

The checks, in their order: three words, the file, the vendor, the adapter, the driver.

  $ orfc-esxcli -t port -s dmi updatecli FC_21:00:00:24:ff:60:00:09 missing.img
  ****************************************************
  SFPFirmwareUpdate:
  Message: Failed, Invalid parameter
  ****************************************************
  Usage: update [port identifier]\r (esc)
  $ orfc-esxcli -t port -s dmi update FC_21:00:00:24:ff:60:00:09
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="SFPFirmwareUpdate">
  <field name="Message">
  <string>Failed, Invalid parameter</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s dmi update FC_21:00:00:24:ff:60:00:09 missing.img other
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="SFPFirmwareUpdate">
  <field name="Message">
  <string>Failed, File not found</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s dmi update FC_21:00:00:24:ff:60:00:09 sfp.img other
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="SFPFirmwareUpdate">
  <field name="Message">
  <string>Failed, SFP FW update not supported for this SFP vendor</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s dmi update FC_21:00:00:24:ff:60:00:09 sfp.img "WTD "
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="SFPFirmwareUpdate">
  <field name="Message">
  <string>Failed, SFP FW update not supported for this SFP vendor</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s dmi update FC_21:00:00:24:ff:60:00:09 sfp.img WTD
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="SFPFirmwareUpdate">
  <field name="Message">
  <string>Failed, Feature not supported for adapter</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s dmi update FC_21:00:00:24:ff:60:00:08 sfp.img WTD
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="SFPFirmwareUpdate">
  <field name="Message">
  <string>Failed, Feature not supported by driver</string></field>
  </structure>
  </output>

None of them called the library: these are the earlier calls.

  $ calls
  VEXAPI_GetSFPData
  VEXAPI_SfpModuleFirmwareUpdate path=sfp.img option=2

What the library makes of it: an empty bay, a module of another vendor, an image for another vendor.

  $ orfc-esxcli -t port -s dmi update FC_21:00:00:24:ff:60:00:06 sfp.img WTD
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="SFPFirmwareUpdate">
  <field name="Message">
  <string>Failed, SFP FW update failed</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s dmi update FC_21:00:00:24:ff:60:00:01 sfp.img WTD
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="SFPFirmwareUpdate">
  <field name="Message">
  <string>Failed, SFP FW update not supported for this SFP vendor</string></field>
  </structure>
  </output>
  $ printf 'ORFC-IMAGE SFP B8\nVendor ACME\n' >acme.img
  $ orfc-esxcli -t port -s dmi update FC_21:00:00:24:ff:60:00:07 acme.img WTD
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="SFPFirmwareUpdate">
  <field name="Message">
  <string>Failed, SFP Vendor mismatched</string></field>
  </structure>
  </output>

All of its statuses.

  $ while read -r status; do
  >     message=$(VEXAPI_SIM_FAULTS=VEXAPI_SfpModuleFirmwareUpdate=$status \
  >         orfc-esxcli -t port -s dmi updatecli FC_21:00:00:24:ff:60:00:07 sfp.img WTD | sed -n 's/^Message: //p')
  >     code=$(VEXAPI_SIM_FAULTS=VEXAPI_SfpModuleFirmwareUpdate=$status \
  >         code -t port -s dmi updatecli FC_21:00:00:24:ff:60:00:07 sfp.img WTD)
  >     echo "$status: $code, $message"
  > done <<'EOF'
  > 101
  > 107
  > 113
  > 114
  > 115
  > 118
  > 144
  > 145
  > 146
  > EOF
  101: 22, Failed, File open error
  107: 30, Failed, Checksum error
  113: 35, Failed, Feature not supported for adapter
  114: 21, Failed, Adapter not found
  115: 50, Failed, Unknown
  118: 45, Failed, Feature not supported by driver
  144: 59, Failed, SFP FW update failed
  145: 58, Failed, SFP Vendor mismatched
  146: 57, Failed, SFP FW update not supported for this SFP vendor
  $ refuse_log 2 orfc-esxcli -t port -s dmi updatecli FC_21:00:00:24:ff:60:00:07 sfp.img WTD
  ****************************************************
  SFPFirmwareUpdate:
  Message: Failed, File not found
  ****************************************************
  $ orfc-esxcli -t port -s dmi updatecli help
  ****************************************************
  SFPFirmwareUpdate:
  Message: Failed, Unknown
  ****************************************************
  Usage: update [port identifier]\r (esc)
