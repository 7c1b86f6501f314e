# Transceivers: kinds of modules

The QSFP family has tables of its own, and no diagnostics here. Two of its first lines have no field and so no
label; "Media Type" and "Speed" end in a line end of their own.

  $ . "$TESTDIR/setup.sh"
  $ host transceivers
  $ orfc-esxcli -t port -s dmi getcli FC_21:00:00:24:ff:60:00:03
  ****************************************************
  DMIInformation:
  Message: Success
  Dmi Info: DMIInfoList:
  Dmi Data: 
  ---------------------------------------------------------------------------------
  Media Information
  ---------------------------------------------------------------------------------
                          Vendor: FS              
                       Connector: LC (Lucent Connector)
                      Media Type: 
  
                     Part Number: QSFP28-IR4-100G 
                           Speed: 100 Gbits/Sec
  
                        Revision: A1
                   Serial Number: C1812155461     
                      Identifier: QSFP28
                                : 
                                : 
            Orvane SFP Installed: No
  
  ---------------------------------------------------------------------------------
  
  Optical Transceiver Digital Diagnostic Data:
  
  Address A0
                      Identifier: QSFP28
             Extended Identifier: CDR in Rx, CDR in Tx, Power Class 4
                       Connector: LC (Lucent Connector)
                  Ethernet Speed: 
                      Compliance: 0x00 0x00 0x00 
                  FC Link Length: 0x0
             FC Transmitter Tech: 0x0
           FC Transmission Media: 0x0
                        FC Speed: 0x0
                        Encoding: 64B66B
                     BR, Nominal: 0xff 
               Length (SMF) - km: 0x02 
               Length (OM3 50um): 0x00 
               Length (OM2 50um): 0x00 
             Length (OM1 62.5um): 0x00 
                 Length (Copper): 0x00 
                     Vendor name: FS               
                      Vendor OUI: 0x00 0x02 0xc9 
                       Vendor PN: QSFP28-IR4-100G  
                      Vendor rev: A1 
                      Wavelength: 0x65bf
                         CC_BASE: 0xfb 
         Extended Ethernet Speed: 100 Gbit/Sec or 25 Gbit/Sec
                       Options 1: -Rx Output Amplitude Fixed Programmable Settings: 0x1
                                  -Rx Output Emphasis Fixed Programmable Settings: 0x1
                                  -Tx Input Equalization Fixed Programmable Settings: 0x1
                                  -Tx Input Equalization Auto Adaptive Capable: 0x0
                       Options 2: -Tx Squelch implemented: 0x1
                                  -Tx Squelch Disable implemented: 0x1
                                  -Rx Output Disable capable: 0x1
                                  -Rx Squelch Disable implemented: 0x1
                                  -Rx CDR Loss of Lock Flag implemented: 0x1
                                  -Tx CDR Loss of Lock Flag implemented: 0x1
                                  -Rx CDR On/Off Control implemented: 0x1
                                  -Tx CDR On/Off Control implemented: 0x1
                       Options 3: -Tx Loss of Signal implemented: 0x1
                                  -Tx Squelch implemented: 0x1
                                  -TX_FAULT signal implemented: 0x1
                                  -TX_DISABLE implemented and disables serial o/p: 0x1
                                  -RATE_SELECT implemented: 0x0
                                  -Memory Page 01h provided: 0x1
                                  -Memory Page 02h provided: 0x1
                       Vendor SN: C1812155461      
                       Date code: 190110   
            Diag Monitoring Type: -Transmitter Power Measurement: 0x1
                                  -Received Power Measurement: 0x1
                Enhanced Options: -Application Select Table Declaration: 0x0
                                  -Rate Selection Declaration: 0x0
                                  -Initialization Complete Flag implemented: 0x1
                     BR, Nominal: 0x68 
                          CC_EXT: 0xbc 
                 Vendor Specific: 0x00 0x00 0x00 0x00 0x00 0x00 0x00 0x00 
                                  0x00 0x00 0x00 0x00 0x00 0x00 0x00 0x00 
                                  0x00 0x00 0x00 0x00 0x00 0x00 0x00 0x00 
                                  0x00 0x00 0x00 0x00 0x14 0x32 0x00 0x00 
  ****************************************************

A short-wave module for Fibre Channel; its diagnostics could not be read. All values at 0 are at their alarms.

  $ orfc-esxcli -t port -s dmi getcli FC_21:00:00:24:ff:60:00:02 | sed '/^Optical/,/^[*]/d'
  ****************************************************
  DMIInformation:
  Message: Success
  Dmi Info: DMIInfoList:
  Dmi Data: 
  ---------------------------------------------------------------------------------
  Media Information
  ---------------------------------------------------------------------------------
                          Vendor: FINISAR CORP.   
                       Connector: LC (Lucent Connector)
                      Media Type: 200-M6-SN-I
                     Part Number: FTRJ8519P1BNL   
                           Speed: 100 MBytes/Sec 200 MBytes/Sec 
                        Revision: A   
                   Serial Number: P8J2ZNC         
                      Identifier: SFP/SFP+/SFP28 and later
       Extended Compliance Codes: Unspecified
                 Rate Identifier: Unspecified
            Orvane SFP Installed: No
  
  ---------------------------------------------------------------------------------
  
                   Temperature   Voltage     Tx Bias    Tx Power    Rx Power
  
                       (C)         (V)        (mA)        (mW)        (mW)
  
                --------------   -------     -------    --------    --------
  
          Value       0.00         0.00        0.00      0.0000      0.0000
  
         Status      Fault        Fault       Fault       Fault       Fault
  
     High Alarm       0.00         0.00        0.00      0.0000      0.0000
  
   High Warning       0.00         0.00        0.00      0.0000      0.0000
  
    Low Warning       0.00         0.00        0.00      0.0000      0.0000
  
      Low Alarm       0.00         0.00        0.00      0.0000      0.0000
  

An externally calibrated module. The second byte of a slope is not a fraction of 256 but decimal digits, the offsets
are added unscaled, and the receive power is linear. Required: parsers depend on these figures, not those of SFF-8472.

  $ orfc-esxcli -t port -s dmi getcli FC_21:00:00:24:ff:60:00:04 | sed '/^Optical/,/^[*]/d'
  ****************************************************
  DMIInformation:
  Message: Success
  Dmi Info: DMIInfoList:
  Dmi Data: 
  ---------------------------------------------------------------------------------
  Media Information
  ---------------------------------------------------------------------------------
                          Vendor: HUAWEI          
                       Connector: SC (Subscriber Connector)
                      Media Type: ---
                     Part Number: HPSP2120        
                           Speed: 
                        Revision: 0
                   Serial Number: 030KMF6TB4524820
                      Identifier: SFP/SFP+/SFP28 and later
       Extended Compliance Codes: Unspecified
                 Rate Identifier: Unspecified
            Orvane SFP Installed: No
  
  ---------------------------------------------------------------------------------
  
                   Temperature   Voltage     Tx Bias    Tx Power    Rx Power
  
                       (C)         (V)        (mA)        (mW)        (mW)
  
                --------------   -------     -------    --------    --------
  
          Value   13860.94      -418.67       10.37      1.7782     -0.6971
  
         Status      Fault       Normal       Fault      Normal       Fault
  
     High Alarm -521772.06      -418.37     1969.15      6.5535     -0.6235
  
   High Warning -521772.06      -418.53     1969.15      6.5535     -0.6235
  
    Low Warning -7313977.00      -418.85       78.72      0.0000     -0.6955
  
      Low Alarm -7313977.00      -419.02       78.72      0.0000     -0.6955
  

A copper cable has no diagnostics.

  $ orfc-esxcli -t port -s dmi getcli FC_21:00:00:24:ff:60:00:05 | sed '/^Optical/,/^[*]/d'
  ****************************************************
  DMIInformation:
  Message: Success
  Dmi Info: DMIInfoList:
  Dmi Data: 
  ---------------------------------------------------------------------------------
  Media Information
  ---------------------------------------------------------------------------------
                          Vendor: Amphenol        
                       Connector: Copper Pigtail
                      Media Type: --IR-
                     Part Number: 571540007       
                           Speed: 
                        Revision: M   
                   Serial Number: APF112500749A3  
                      Identifier: SFP/SFP+/SFP28 and later
       Extended Compliance Codes: Unspecified
                 Rate Identifier: Unspecified
            Orvane SFP Installed: No
  
  ---------------------------------------------------------------------------------
  
