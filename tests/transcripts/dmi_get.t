# Transceivers: the report of a long-wave module

What the module is, its diagnostics with their thresholds, and every field of its memory.

  $ . "$TESTDIR/setup.sh"
  $ host transceivers
  $ orfc-esxcli -t port -s dmi getcli FC_21:00:00:24:ff:60:00:01
  ****************************************************
  DMIInformation:
  Message: Success
  Dmi Info: DMIInfoList:
  Dmi Data: 
  ---------------------------------------------------------------------------------
  Media Information
  ---------------------------------------------------------------------------------
                          Vendor: CISCO-FINISAR   
                       Connector: LC (Lucent Connector)
                      Media Type: ---
                     Part Number: FTLX1474D3BCL-CS
                           Speed: 
                        Revision: A   
                   Serial Number: FNS16100CQX     
                      Identifier: SFP/SFP+/SFP28 and later
       Extended Compliance Codes: Unspecified
                 Rate Identifier: Unspecified
            Orvane SFP Installed: No
  
  ---------------------------------------------------------------------------------
  
                   Temperature   Voltage     Tx Bias    Tx Power    Rx Power
  
                       (C)         (V)        (mA)        (mW)        (mW)
  
                --------------   -------     -------    --------    --------
  
          Value      27.56         3.35       30.94      0.6233      0.5091
  
         Status     Normal       Normal      Normal      Normal      Normal
  
     High Alarm      75.00         3.70       85.00      2.2372      2.2372
  
   High Warning      70.00         3.60       80.00      1.1208      1.1208
  
    Low Warning       0.00         3.00       20.00      0.1515      0.0363
  
      Low Alarm      -6.00         2.90       15.00      0.0602      0.0144
  
  Optical Transceiver Digital Diagnostic Data:
  
  Address A0
                      Identifier: SFP/SFP+/SFP28 and later
             Extended Identifier: GBIC/SFP defined by serial ID only
                       Connector: LC (Lucent Connector)
                  Ethernet Speed: 10 Gbits/Sec
                      Compliance: 0x00 0x00 0x00 
                  FC Link Length: 0x0
             FC Transmitter Tech: 0x0
           FC Transmission Media: 0x0
                        FC Speed: 0x0
                        Encoding: 64B66B
                     BR, Nominal: 0x67 
                 Rate Identifier: Unspecified
               Length (9um) - km: 0x0a 
                    Length (9um): 0x64 
               Length (50um,OM2): 0x00 
             Length (62.5um,OM1): 0x00 
        Length (50um,OM4,Copper): 0x00 
        Length (50um,OM3,Copper): 0x00 
                     Vendor name: CISCO-FINISAR    
       Extended Compliance Codes: Unspecified
                      Vendor OUI: 0x00 0x90 0x65 
                       Vendor PN: FTLX1474D3BCL-CS 
                      Vendor rev: A    
                      Wavelength: 0x051e
                      FC Speed 2: 0x0
                         CC_BASE: 0xe5 
    Optional Transceiver Signals: -Linear Receiver Output Implemented: 0x0
                                  -Power Level Declaration: 0x0
                                  -Cooled Transceiver Declaration: 0x0
                                  -Retimer or CDR indicator: 0x0
                                  -Paging implemented indicator: 0x0
                                  -High Power Level Declaration by bit 1: 0x0
                                  -High Power Level Declaration by bits 1 and 5: 0x0
                                  -Reserved: 0x0
                                  -Signal Loss, as defined in SFP MSA: 0x1
                                  -Signal Loss, inverted from SFP MSA: 0x0
                                  -TX_FAULT signal implemented: 0x1
                                  -TX_DISABLE implemented and disables serial o/p: 0x1
                                  -RATE_SELECT implemented: 0x0
                                  -Tunable transmitter technology: 0x0
                                  -Receiver decision threshold implemented: 0x0
              Signaling Rate Max: 0x00 
              Signaling Rate Min: 0x00 
                       Vendor SN: FNS16100CQX      
                       Date code: 120305   
            Diag Monitoring Type: -Address change required: 0x0
                                  -Power Measurement: 0x1
                                  -Externally Calibrated: 0x0
                                  -Internally Calibrated: 0x1
                                  -Digital diag monitoring: 0x1
                                  -Legacy diagnostic: 0x0
                Enhanced Options: -Optional Soft Rate Select ctrl per SFF-8431: 0x0
                                  -Optional Application Select ctrl per SFF-8079: 0x0
                                  -Optional Soft RATE_SELECT ctrl and monitoring: 0x0
                                  -Optional Soft RX_LOS monitoring: 0x0
                                  -Optional Soft TX_FAULT monitoring: 0x1
                                  -Optional Soft TX_DISABLE ctrl and monitoring: 0x1
                                  -Optional Alarm/warning flags: 0x1
             SFF-8472 Compliance: Includes functionality described in Rev 10.2 of SFF-8472
                          CC_EXT: 0x3b 
                 Vendor Specific: 0x00 0x00 0x08 0x3f 0x08 0x4c 0x5b 0x62 
                                  0xe7 0xe4 0x42 0x07 0x70 0x04 0x05 0xed 
                                  0x01 0x75 0x8c 0x65 0x8b 0x00 0x00 0x00 
                                  0x00 0x00 0x60 0x07 0xc7 0xf1 0x20 0x7d 
            SFP Firmware Version: 0x00 0x00 
            MCU Firmware Version: 0x00 0x00 
            DSP Firmware Version: 0x00 0x00 0x00 
  
  Address A2
                 Temp High Alarm: 0x4b00
                  Temp Low Alarm: 0xfa00
               Temp High Warning: 0x4600
                Temp Low Warning: 0x0000
              Voltage High Alarm: 0x9088
               Voltage Low Alarm: 0x7148
            Voltage High Warning: 0x8ca0
             Voltage Low Warning: 0x7530
                 Bias High Alarm: 0xa604
                  Bias Low Alarm: 0x1d4c
               Bias High Warning: 0x9c40
                Bias Low Warning: 0x2710
      TX Signal Power High Alarm: 0x5764
       TX Signal Power Low Alarm: 0x025a
    TX Signal Power High Warning: 0x2bc8
     TX Signal Power Low Warning: 0x05eb
      RX Signal Power High Alarm: 0x5764
       RX Signal Power Low Alarm: 0x0090
    RX Signal Power High Warning: 0x2bc8
     RX Signal Power Low Warning: 0x016b
                       Rx_PWR(4): 0x00000000
                       Rx_PWR(3): 0x00000000
                       Rx_PWR(2): 0x00000000
                       Rx_PWR(1): 0x3f800000
                       Rx_PWR(0): 0x00000000
                     Tx_I(Slope): 0x0100
                    Tx_I(Offset): 0x0000
                   Tx_PWR(Slope): 0x0100
                  Tx_PWR(Offset): 0x0000
                        T(Slope): 0x0100
                       T(Offset): 0x0000
                        V(Slope): 0x0100
                       V(Offset): 0x0000
                        Checksum: 0xba 
                 Temperature MSB: 0x1b 
                 Temperature LSB: 0x90 
                         Vcc MSB: 0x82 
                         Vcc LSB: 0xcd 
                     TX Bias MSB: 0x3c 
                     TX Bias LSB: 0x6d 
                    TX Power MSB: 0x18 
                    TX Power LSB: 0x59 
                    RX Power MSB: 0x13 
                    RX Power LSB: 0xe3 
                    Reserved MSB: 0xff 
                    Reserved LSB: 0xff 
                    Reserved MSB: 0xff 
                    Reserved LSB: 0xff 
             Status/Control Bits: -Data_Ready_Bar: 0x0
                                  -LOS: 0x0
                                  -TX Fault: 0x0
                                  -Soft RX Rate Select: 0x0
                                  -RX Rate Select State: 0x0
                                  -Soft TX Disable: 0x0
                                  -TX Disable State: 0x0
                                  -EWRAP Control Bit: 0x1
                                  -EWRAP FORWARD Control Bit: 0x1
                                  -OWRAP Control Bit: 0x1
                                  -OWRAP FORWARD Control Bit: 0x1
                                  -TX Signal Power Low Alarm: 0x0
                                  -TX Signal Power High Alarm: 0x0
                                  -TX Bias Low Alarm: 0x0
                                  -TX Bias High Alarm: 0x0
                                  -Vcc Low Alarm: 0x0
                                  -Vcc High Alarm: 0x0
                                  -Temp Low Alarm: 0x0
                                  -Temp High Alarm: 0x0
                                  -RX Signal Power Low Alarm: 0x0
                                  -RX Signal Power High Alarm: 0x0
                                  -TX Signal Power Low Warning: 0x0
                                  -TX Signal Power High Warning: 0x0
                                  -TX Bias Low Warning: 0x0
                                  -TX Bias High Warning: 0x0
                                  -Vcc Low Warning: 0x0
                                  -Vcc High Warning: 0x0
                                  -Temp Low Warning: 0x0
                                  -Temp High Warning: 0x0
                                  -Reserved Warning: 0x1
                                  -Reserved Warning: 0x1
                                  -Reserved Warning: 0x1
                                  -Reserved Warning: 0x1
                                  -Reserved Warning: 0x1
                                  -Reserved Warning: 0x1
                                  -RX Signal Power Low Warning: 0x0
                                  -RX Signal Power High Warning: 0x0
         Extended Module Control: -Optional Power Level Select: 0x1
                                  -Optional Power Level Operation State: 0x1
                                  -Power Level 4 Enable: 0x1
                                  -Soft RS(1) Select: 0x1
                                  -Adaptive Input EQ Fail Flag: 0x1
                                  -Reserved: 0x1
                                  -Reserved: 0x1
                                  -Reserved: 0x1
           Extended Status Bytes: -Optional Tx CDR Unlocked: 0x1
                                  -64GFC Mode: 0x1
                                  -PAM4 Mode Rx Configured: 0x1
                                  -PAM4 Mode Tx Configured: 0x1
                                  -Reserved: 0x1
                                  -Reserved: 0x1
                                  -Reserved: 0x1
                 Vendor Specific: 0xff 0xff 0xff 0x00 0x00 0x00 0x00 0x01 
        TP1 to TP4 EWRAP Control: -EWRAP Disable: 0x1
                                  -EWRAP Enable: 0x0
        TP3 to TP2 OWRAP Control: -OWRAP Disable: 0x1
                                  -OWRAP Enable: 0x1
   Electrical Output Tx Tap Pre3: 0x20 
   Electrical Output Tx Tap Pre2: 0x26 
   Electrical Output Tx Tap Pre1: 0x2b 
   Electrical Output Tx Tap Main: 0x30 
  Electrical Output Tx Tap Post1: 0x33 
       DSP Status Timing Control: 0x00 
                     DSP Control: 0x00 
             FC 64G Mode Control: 0x00 
                     LSN Control: -Train 64G: 0x1
                                  -Train 32G: 0x1
                                  -Fixed Speed Switch to 64G: 0x0
                                  -Reserved: 0x1
                                  -Reserved: 0x0
                                  -Reserved: 0x1
                                  -Client Rx Adaptation Reset: 0x1
                                  -LSN Mode: 0x0
            CDR Firmware Version: 0x00 0x00 0xff 
                   Laser Version: 0xff 
                     TIA Version: 0xff 
                     CDR Version: 0xff 
                      HW Version: 0x00 
                     MCU Version: 0x00 
                 PLP API Version: 0x00 
               Debug MCU Version: 0x00 
  ****************************************************
  $ calls
  VEXAPI_GetSFPData

The same text for `esxcli`, in one string.

  $ orfc-esxcli -t port -s dmi get FC_21:00:00:24:ff:60:00:01
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="DMIInformation">
  <field name="Message">
  <string>Success</string></field>
  <field name="Dmi Info">
  <list type="structure">
  <structure typeName="DMIInfoList">
  <field name="Dmi Data">
  <string>
  ---------------------------------------------------------------------------------
  Media Information
  ---------------------------------------------------------------------------------
                          Vendor: CISCO-FINISAR   
                       Connector: LC (Lucent Connector)
                      Media Type: ---
                     Part Number: FTLX1474D3BCL-CS
                           Speed: 
                        Revision: A   
                   Serial Number: FNS16100CQX     
                      Identifier: SFP/SFP+/SFP28 and later
       Extended Compliance Codes: Unspecified
                 Rate Identifier: Unspecified
            Orvane SFP Installed: No
  
  ---------------------------------------------------------------------------------
  
                   Temperature   Voltage     Tx Bias    Tx Power    Rx Power
  
                       (C)         (V)        (mA)        (mW)        (mW)
  
                --------------   -------     -------    --------    --------
  
          Value      27.56         3.35       30.94      0.6233      0.5091
  
         Status     Normal       Normal      Normal      Normal      Normal
  
     High Alarm      75.00         3.70       85.00      2.2372      2.2372
  
   High Warning      70.00         3.60       80.00      1.1208      1.1208
  
    Low Warning       0.00         3.00       20.00      0.1515      0.0363
  
      Low Alarm      -6.00         2.90       15.00      0.0602      0.0144
  
  Optical Transceiver Digital Diagnostic Data:
  
  Address A0
                      Identifier: SFP/SFP+/SFP28 and later
             Extended Identifier: GBIC/SFP defined by serial ID only
                       Connector: LC (Lucent Connector)
                  Ethernet Speed: 10 Gbits/Sec
                      Compliance: 0x00 0x00 0x00 
                  FC Link Length: 0x0
             FC Transmitter Tech: 0x0
           FC Transmission Media: 0x0
                        FC Speed: 0x0
                        Encoding: 64B66B
                     BR, Nominal: 0x67 
                 Rate Identifier: Unspecified
               Length (9um) - km: 0x0a 
                    Length (9um): 0x64 
               Length (50um,OM2): 0x00 
             Length (62.5um,OM1): 0x00 
        Length (50um,OM4,Copper): 0x00 
        Length (50um,OM3,Copper): 0x00 
                     Vendor name: CISCO-FINISAR    
       Extended Compliance Codes: Unspecified
                      Vendor OUI: 0x00 0x90 0x65 
                       Vendor PN: FTLX1474D3BCL-CS 
                      Vendor rev: A    
                      Wavelength: 0x051e
                      FC Speed 2: 0x0
                         CC_BASE: 0xe5 
    Optional Transceiver Signals: -Linear Receiver Output Implemented: 0x0
                                  -Power Level Declaration: 0x0
                                  -Cooled Transceiver Declaration: 0x0
                                  -Retimer or CDR indicator: 0x0
                                  -Paging implemented indicator: 0x0
                                  -High Power Level Declaration by bit 1: 0x0
                                  -High Power Level Declaration by bits 1 and 5: 0x0
                                  -Reserved: 0x0
                                  -Signal Loss, as defined in SFP MSA: 0x1
                                  -Signal Loss, inverted from SFP MSA: 0x0
                                  -TX_FAULT signal implemented: 0x1
                                  -TX_DISABLE implemented and disables serial o/p: 0x1
                                  -RATE_SELECT implemented: 0x0
                                  -Tunable transmitter technology: 0x0
                                  -Receiver decision threshold implemented: 0x0
              Signaling Rate Max: 0x00 
              Signaling Rate Min: 0x00 
                       Vendor SN: FNS16100CQX      
                       Date code: 120305   
            Diag Monitoring Type: -Address change required: 0x0
                                  -Power Measurement: 0x1
                                  -Externally Calibrated: 0x0
                                  -Internally Calibrated: 0x1
                                  -Digital diag monitoring: 0x1
                                  -Legacy diagnostic: 0x0
                Enhanced Options: -Optional Soft Rate Select ctrl per SFF-8431: 0x0
                                  -Optional Application Select ctrl per SFF-8079: 0x0
                                  -Optional Soft RATE_SELECT ctrl and monitoring: 0x0
                                  -Optional Soft RX_LOS monitoring: 0x0
                                  -Optional Soft TX_FAULT monitoring: 0x1
                                  -Optional Soft TX_DISABLE ctrl and monitoring: 0x1
                                  -Optional Alarm/warning flags: 0x1
             SFF-8472 Compliance: Includes functionality described in Rev 10.2 of SFF-8472
                          CC_EXT: 0x3b 
                 Vendor Specific: 0x00 0x00 0x08 0x3f 0x08 0x4c 0x5b 0x62 
                                  0xe7 0xe4 0x42 0x07 0x70 0x04 0x05 0xed 
                                  0x01 0x75 0x8c 0x65 0x8b 0x00 0x00 0x00 
                                  0x00 0x00 0x60 0x07 0xc7 0xf1 0x20 0x7d 
            SFP Firmware Version: 0x00 0x00 
            MCU Firmware Version: 0x00 0x00 
            DSP Firmware Version: 0x00 0x00 0x00 
  
  Address A2
                 Temp High Alarm: 0x4b00
                  Temp Low Alarm: 0xfa00
               Temp High Warning: 0x4600
                Temp Low Warning: 0x0000
              Voltage High Alarm: 0x9088
               Voltage Low Alarm: 0x7148
            Voltage High Warning: 0x8ca0
             Voltage Low Warning: 0x7530
                 Bias High Alarm: 0xa604
                  Bias Low Alarm: 0x1d4c
               Bias High Warning: 0x9c40
                Bias Low Warning: 0x2710
      TX Signal Power High Alarm: 0x5764
       TX Signal Power Low Alarm: 0x025a
    TX Signal Power High Warning: 0x2bc8
     TX Signal Power Low Warning: 0x05eb
      RX Signal Power High Alarm: 0x5764
       RX Signal Power Low Alarm: 0x0090
    RX Signal Power High Warning: 0x2bc8
     RX Signal Power Low Warning: 0x016b
                       Rx_PWR(4): 0x00000000
                       Rx_PWR(3): 0x00000000
                       Rx_PWR(2): 0x00000000
                       Rx_PWR(1): 0x3f800000
                       Rx_PWR(0): 0x00000000
                     Tx_I(Slope): 0x0100
                    Tx_I(Offset): 0x0000
                   Tx_PWR(Slope): 0x0100
                  Tx_PWR(Offset): 0x0000
                        T(Slope): 0x0100
                       T(Offset): 0x0000
                        V(Slope): 0x0100
                       V(Offset): 0x0000
                        Checksum: 0xba 
                 Temperature MSB: 0x1b 
                 Temperature LSB: 0x90 
                         Vcc MSB: 0x82 
                         Vcc LSB: 0xcd 
                     TX Bias MSB: 0x3c 
                     TX Bias LSB: 0x6d 
                    TX Power MSB: 0x18 
                    TX Power LSB: 0x59 
                    RX Power MSB: 0x13 
                    RX Power LSB: 0xe3 
                    Reserved MSB: 0xff 
                    Reserved LSB: 0xff 
                    Reserved MSB: 0xff 
                    Reserved LSB: 0xff 
             Status/Control Bits: -Data_Ready_Bar: 0x0
                                  -LOS: 0x0
                                  -TX Fault: 0x0
                                  -Soft RX Rate Select: 0x0
                                  -RX Rate Select State: 0x0
                                  -Soft TX Disable: 0x0
                                  -TX Disable State: 0x0
                                  -EWRAP Control Bit: 0x1
                                  -EWRAP FORWARD Control Bit: 0x1
                                  -OWRAP Control Bit: 0x1
                                  -OWRAP FORWARD Control Bit: 0x1
                                  -TX Signal Power Low Alarm: 0x0
                                  -TX Signal Power High Alarm: 0x0
                                  -TX Bias Low Alarm: 0x0
                                  -TX Bias High Alarm: 0x0
                                  -Vcc Low Alarm: 0x0
                                  -Vcc High Alarm: 0x0
                                  -Temp Low Alarm: 0x0
                                  -Temp High Alarm: 0x0
                                  -RX Signal Power Low Alarm: 0x0
                                  -RX Signal Power High Alarm: 0x0
                                  -TX Signal Power Low Warning: 0x0
                                  -TX Signal Power High Warning: 0x0
                                  -TX Bias Low Warning: 0x0
                                  -TX Bias High Warning: 0x0
                                  -Vcc Low Warning: 0x0
                                  -Vcc High Warning: 0x0
                                  -Temp Low Warning: 0x0
                                  -Temp High Warning: 0x0
                                  -Reserved Warning: 0x1
                                  -Reserved Warning: 0x1
                                  -Reserved Warning: 0x1
                                  -Reserved Warning: 0x1
                                  -Reserved Warning: 0x1
                                  -Reserved Warning: 0x1
                                  -RX Signal Power Low Warning: 0x0
                                  -RX Signal Power High Warning: 0x0
         Extended Module Control: -Optional Power Level Select: 0x1
                                  -Optional Power Level Operation State: 0x1
                                  -Power Level 4 Enable: 0x1
                                  -Soft RS(1) Select: 0x1
                                  -Adaptive Input EQ Fail Flag: 0x1
                                  -Reserved: 0x1
                                  -Reserved: 0x1
                                  -Reserved: 0x1
           Extended Status Bytes: -Optional Tx CDR Unlocked: 0x1
                                  -64GFC Mode: 0x1
                                  -PAM4 Mode Rx Configured: 0x1
                                  -PAM4 Mode Tx Configured: 0x1
                                  -Reserved: 0x1
                                  -Reserved: 0x1
                                  -Reserved: 0x1
                 Vendor Specific: 0xff 0xff 0xff 0x00 0x00 0x00 0x00 0x01 
        TP1 to TP4 EWRAP Control: -EWRAP Disable: 0x1
                                  -EWRAP Enable: 0x0
        TP3 to TP2 OWRAP Control: -OWRAP Disable: 0x1
                                  -OWRAP Enable: 0x1
   Electrical Output Tx Tap Pre3: 0x20 
   Electrical Output Tx Tap Pre2: 0x26 
   Electrical Output Tx Tap Pre1: 0x2b 
   Electrical Output Tx Tap Main: 0x30 
  Electrical Output Tx Tap Post1: 0x33 
       DSP Status Timing Control: 0x00 
                     DSP Control: 0x00 
             FC 64G Mode Control: 0x00 
                     LSN Control: -Train 64G: 0x1
                                  -Train 32G: 0x1
                                  -Fixed Speed Switch to 64G: 0x0
                                  -Reserved: 0x1
                                  -Reserved: 0x0
                                  -Reserved: 0x1
                                  -Client Rx Adaptation Reset: 0x1
                                  -LSN Mode: 0x0
            CDR Firmware Version: 0x00 0x00 0xff 
                   Laser Version: 0xff 
                     TIA Version: 0xff 
                     CDR Version: 0xff 
                      HW Version: 0x00 
                     MCU Version: 0x00 
                 PLP API Version: 0x00 
               Debug MCU Version: 0x00 
  </string></field>
  </structure>
  </list>
  </field>
  </structure>
  </output>

A virtual port has the module of its physical one.

  $ orfc-esxcli -t port -s dmi getcli FC_21:00:00:24:ff:60:00:01 >physical.txt
  $ orfc-esxcli -t port -s dmi getcli FC_21:01:00:24:ff:60:00:01 | cmp - physical.txt && echo same
  same
