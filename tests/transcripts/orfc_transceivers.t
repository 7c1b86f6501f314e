# orfc: modules of the lab host

A value with its four thresholds and a verdict each; power in mW and in dBm. By the standards' arithmetic, which the
reports of `orfc-esxcli` don't follow everywhere.

  $ . "$TESTDIR/setup.sh"
  $ orfc transceivers
    READING               VALUE    dBm  VERDICT    LOW ALARM  LOW WARNING  HIGH WARNING  HIGH ALARM
  FC_21:00:00:24:ff:0a:51:c4  host0  FINISAR CORP.  FTRJ8519P1BNL  P8J2ZNC  no diagnostics
    none                      -      -  -                  -            -             -           -
  FC_21:00:00:24:ff:92:0f:38  host1  FINISAR CORP.  FTLX8571D3BCL  AUJ0RCJ  ok
    temperature C          20.0      -  ok             -13.0         -8.0          73.0        78.0
    supply V              3.320      -  ok             2.900        3.000         3.600       3.700
    bias mA               6.836      -  ok             4.000        5.000        12.600      13.200
    transmit mW          0.6053  -2.18  ok            0.2512       0.3162        0.7943      1.0000
    receive mW           0.5511  -2.59  ok            0.0100       0.0158        0.7943      1.0000
  FC_21:01:00:24:ff:b2:0f:38  host2  FiberStore d  SFP-10GSR-85  \xef\xbf\xbd%\xef\xbf\xbd\xef\xbf\xbd@\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbdG\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd$3  bad checksum (esc)
    none                      -      -  -                  -            -             -           -
  FC_21:00:00:24:ff:4b:18:7a  host3  CISCO-FINISAR  FTLX1474D3BCL-CS  FNS16100CQX  ok
    temperature C          27.6      -  ok              -6.0          0.0          70.0        75.0
    supply V              3.349      -  ok             2.900        3.000         3.600       3.700
    bias mA              30.938      -  ok            15.000       20.000        80.000      85.000
    transmit mW          0.6233  -2.05  ok            0.0602       0.1515        1.1208      2.2372
    receive mW           0.5091  -2.93  ok            0.0144       0.0363        1.1208      2.2372
  FC_21:00:00:24:ff:4b:18:7b  host4  FINISAR CORP.  FTLX8571D3BCL  AUJ0RCJ  ok
    temperature C          20.0      -  ok             -13.0         -8.0          73.0        78.0
    supply V              3.320      -  ok             2.900        3.000         3.600       3.700
    bias mA               6.836      -  ok             4.000        5.000        12.600      13.200
    transmit mW          0.6053  -2.18  ok            0.2512       0.3162        0.7943      1.0000
    receive mW           0.5511  -2.59  ok            0.0100       0.0158        0.7943      1.0000
  FC_21:00:00:24:ff:08:65:91  host5  Amphenol  571540007  APF112500749A3  no diagnostics
    none                      -      -  -                  -            -             -           -
  FC_21:00:00:24:ff:08:65:93  host6  empty
    none                      -      -  -                  -            -             -           -
  FC_21:00:00:24:ff:18:a4:e1  host7  HUAWEI  HPSP2120  030KMF6TB4524820  alarm
    temperature C          37.5      -  ok              -0.4         -0.4          95.3        95.3
    supply V              3.324      -  ok             2.969        3.135         3.460       3.626
    bias mA               0.526      -  low alarm      3.998        3.998        99.996      99.996
    transmit mW          1.7782   2.50  ok            0.0000       0.0000        6.5535      6.5535
    receive mW          -0.0001      -  low alarm     0.0016       0.0016        0.1259      0.1259
  FC_21:00:00:24:ff:0f:72:2d  host8  FINISAR CORP.  FTLX8571D3BCL  AUJ0RCJ  ok
    temperature C          20.0      -  ok             -13.0         -8.0          73.0        78.0
    supply V              3.320      -  ok             2.900        3.000         3.600       3.700
    bias mA               6.836      -  ok             4.000        5.000        12.600      13.200
    transmit mW          0.6053  -2.18  ok            0.2512       0.3162        0.7943      1.0000
    receive mW           0.5511  -2.59  ok            0.0100       0.0158        0.7943      1.0000
  FC_21:00:00:24:ff:7e:2d:94  host9  FINISAR CORP.  FTLF8536P4BCL  UWB04VY  no diagnostics
    none                      -      -  -                  -            -             -           -
  FC_28:24:00:24:ff:00:00:1a  host20  empty
    none                      -      -  -                  -            -             -           -
  FC_21:00:00:24:ff:7e:2d:95  host10  Ubiquiti Inc.  DAC-SFP28-1M  AH22091000096  no diagnostics
    none                      -      -  -                  -            -             -           -
  FC_21:00:00:24:ff:13:c0:5e  host11  FINISAR CORP.  FTLX8571D3BCL  AUJ0RCJ  ok
    temperature C          20.0      -  ok             -13.0         -8.0          73.0        78.0
    supply V              3.320      -  ok             2.900        3.000         3.600       3.700
    bias mA               6.836      -  ok             4.000        5.000        12.600      13.200
    transmit mW          0.6053  -2.18  ok            0.2512       0.3162        0.7943      1.0000
    receive mW           0.5511  -2.59  ok            0.0100       0.0158        0.7943      1.0000
  FC_21:00:00:24:ff:91:0a:d2  host12  empty
    none                      -      -  -                  -            -             -           -
  FC_21:00:00:24:ff:a6:77:0c  host13  FS  QSFP28-IR4-100G  C1812155461  no thresholds
    temperature C          28.6      -  -                  -            -             -           -
    supply V              3.321      -  -                  -            -             -           -
    bias mA lane 1       34.432      -  -                  -            -             -           -
    transmit mW lane 1   1.1468   0.59  -                  -            -             -           -
    receive mW lane 1    1.7258   2.37  -                  -            -             -           -
    bias mA lane 2       33.408      -  -                  -            -             -           -
    transmit mW lane 2   1.1665   0.67  -                  -            -             -           -
    receive mW lane 2    1.2744   1.05  -                  -            -             -           -
    bias mA lane 3       36.736      -  -                  -            -             -           -
    transmit mW lane 3   1.2332   0.91  -                  -            -             -           -
    receive mW lane 3    1.1138   0.47  -                  -            -             -           -
    bias mA lane 4       35.456      -  -                  -            -             -           -
    transmit mW lane 4   1.2189   0.86  -                  -            -             -           -
    receive mW lane 4    1.1990   0.79  -                  -            -             -           -
  FC_21:00:00:24:ff:a6:77:0d  host14  empty
    none                      -      -  -                  -            -             -           -
  FC_21:00:00:24:ff:0c:48:2e  host15  WTD  RTXM640-501  NA2403117C0082  ok
    temperature C          20.0      -  ok             -13.0         -8.0          73.0        78.0
    supply V              3.320      -  ok             2.900        3.000         3.600       3.700
    bias mA               6.836      -  ok             4.000        5.000        12.600      13.200
    transmit mW          0.6053  -2.18  ok            0.2512       0.3162        0.7943      1.0000
    receive mW           0.5511  -2.59  ok            0.0100       0.0158        0.7943      1.0000
  FC_21:00:00:24:ff:0c:48:2f  host16  FINISAR CORP.  FTLF8536P4BCL  UWB04VY  no diagnostics
    none                      -      -  -                  -            -             -           -
  FC_21:00:00:24:ff:1d:90:06  host17  CISCO-FINISAR  FTLX1474D3BCL-CS  FNS16100CQX  ok
    temperature C          27.6      -  ok              -6.0          0.0          70.0        75.0
    supply V              3.349      -  ok             2.900        3.000         3.600       3.700
    bias mA              30.938      -  ok            15.000       20.000        80.000      85.000
    transmit mW          0.6233  -2.05  ok            0.0602       0.1515        1.1208      2.2372
    receive mW           0.5091  -2.93  ok            0.0144       0.0363        1.1208      2.2372
  FC_21:00:00:24:ff:52:e1:40  host18  FINISAR CORP.  FTLX8571D3BCL  AUJ0RCJ  ok
    temperature C          20.0      -  ok             -13.0         -8.0          73.0        78.0
    supply V              3.320      -  ok             2.900        3.000         3.600       3.700
    bias mA               6.836      -  ok             4.000        5.000        12.600      13.200
    transmit mW          0.6053  -2.18  ok            0.2512       0.3162        0.7943      1.0000
    receive mW           0.5511  -2.59  ok            0.0100       0.0158        0.7943      1.0000
  FC_21:00:00:24:ff:52:f8:9c  host19  empty
    none                      -      -  -                  -            -             -           -

Machines read one record for each module.

  $ orfc transceivers --sort -receive_power_dbm -o csv | cut -d, -f 1,2,6,7 | head -n 5
  port,health,vendor,part_number
  FC_21:00:00:24:ff:a6:77:0c,no thresholds,FS,QSFP28-IR4-100G
  FC_21:00:00:24:ff:92:0f:38,ok,FINISAR CORP.,FTLX8571D3BCL
  FC_21:00:00:24:ff:4b:18:7b,ok,FINISAR CORP.,FTLX8571D3BCL
  FC_21:00:00:24:ff:0f:72:2d,ok,FINISAR CORP.,FTLX8571D3BCL
