# orfc: the lab host in tables

What each object of the lab host stands for, `simulator/README.md` tells.

  $ . "$TESTDIR/setup.sh"
  $ orfc
    PORT                        HOST    STATE    Gb/s  TRANSCEIVER     TARGETS  LUNS  DOWN
  Adapter_ORV2460_RFC0748T40312  firmware 5.09.00  driver 8.07.21
    FC_21:00:00:24:ff:0a:51:c4  host0   online      2  no diagnostics        1     1     0
  Adapter_ORV2562_RFD1019S27745  firmware 8.08.207  driver 2.1.101.0
    FC_21:00:00:24:ff:92:0f:38  host1   online      8  ok                    1     8     1
    FC_21:01:00:24:ff:b2:0f:38  host2   online      8  bad checksum          0     0     0
  Adapter_ORV2672_RFE1423R61108  firmware 8.08.04  driver 4.1.34.0-1
    FC_21:00:00:24:ff:4b:18:7a  host3   online     16  ok                    2     8     1
    FC_21:00:00:24:ff:4b:18:7b  host4   online      8  ok                    0     0     0
  Adapter_ORV8362_RFE1506P30951  firmware 8.07.16  driver 4.1.34.0-1
    FC_21:00:00:24:ff:08:65:91  host5   offline     -  no diagnostics        1     8     8
    FC_21:00:00:24:ff:08:65:93  host6   offline     -  empty                 0     0     0
  Adapter_ORV8262_RFD1211Q18830  firmware 5.09.07  driver 1.1.39.0
    FC_21:00:00:24:ff:18:a4:e1  host7   online     10  alarm                 0     0     0
  Adapter_ORV8152_RFD0943N05527  firmware 4.04.09  driver 1.1.39.0
    FC_21:00:00:24:ff:0f:72:2d  host8   online     10  ok                    0     0     0
  Adapter_ORV2742_RFH1836M74420  firmware 8.08.231  driver 5.4.82.0-1
    FC_21:00:00:24:ff:7e:2d:94  host9   online     32  no diagnostics        5   313     1
    FC_28:24:00:24:ff:00:00:1a  host20  online     32  empty                 1     8     1
    FC_21:00:00:24:ff:7e:2d:95  host10  online     32  no diagnostics        2    12     2
  Adapter_ORV2690_RFG1617K52096  firmware 8.06.00  driver 5.4.82.0-1
    FC_21:00:00:24:ff:13:c0:5e  host11  online     16  ok                    1     8     8
  Adapter_ORV2764M_RFH1911J66203  firmware 8.08.204  driver 5.4.82.0-1
    FC_21:00:00:24:ff:91:0a:d2  host12  online     32  empty                 1     8     1
  Adapter_ORV2772_RFK2103H83917  firmware 9.08.02  driver 5.4.82.0-1
    FC_21:00:00:24:ff:a6:77:0c  host13  online     32  no thresholds         2    12     6
    FC_21:00:00:24:ff:a6:77:0d  host14  offline     -  empty                 0     0     0
  Adapter_ORV2872_RFL2348G90175  firmware 9.15.06  driver 5.4.82.0-1
    FC_21:00:00:24:ff:0c:48:2e  host15  online     64  ok                    3    13     2
    FC_21:00:00:24:ff:0c:48:2f  host16  online     32  no diagnostics        1     8     2
  Adapter_ORV2872S_RFL2402G90541  firmware 9.15.06  driver 5.4.82.0-1
    FC_21:00:00:24:ff:1d:90:06  host17  online     64  ok                    2    12    12
  Adapter_ORV2670M_RFF1508V22064  firmware 8.08.04  driver 4.1.34.0-1
    FC_21:00:00:24:ff:52:e1:40  host18  online     16  ok                    0     0     0
  Adapter_ORV2670C_RFF1512V22871  firmware 8.08.04  driver 4.1.34.0-1
    FC_21:00:00:24:ff:52:f8:9c  host19  offline     -  empty                 0     0     0

Lists have one line for each object.

  $ orfc adapters
  ADAPTER                         MODEL     SERIAL         TYPE           PORTS  MANUFACTURER
  Adapter_ORV2460_RFC0748T40312   ORV2460   RFC0748T40312  Fibre Channel      1  Orvane Corporation
  Adapter_ORV2562_RFD1019S27745   ORV2562   RFD1019S27745  Fibre Channel      2  Orvane Corporation
  Adapter_ORV2672_RFE1423R61108   ORV2672   RFE1423R61108  Fibre Channel      2  Orvane Corporation
  Adapter_ORV8362_RFE1506P30951   ORV8362   RFE1506P30951  converged          2  Orvane Corporation
  Adapter_ORV8262_RFD1211Q18830   ORV8262   RFD1211Q18830  converged          1  Orvane Corporation
  Adapter_ORV8152_RFD0943N05527   ORV8152   RFD0943N05527  converged          1  Orvane Corporation
  Adapter_ORV2742_RFH1836M74420   ORV2742   RFH1836M74420  Fibre Channel      3  Orvane Corporation
  Adapter_ORV2690_RFG1617K52096   ORV2690   RFG1617K52096  Fibre Channel      1  Orvane Corporation
  Adapter_ORV2764M_RFH1911J66203  ORV2764M  RFH1911J66203  Fibre Channel      1  Orvane Corporation
  Adapter_ORV2772_RFK2103H83917   ORV2772   RFK2103H83917  Fibre Channel      2  Orvane Corporation
  Adapter_ORV2872_RFL2348G90175   ORV2872   RFL2348G90175  Fibre Channel      2  Orvane Corporation
  Adapter_ORV2872S_RFL2402G90541  ORV2872S  RFL2402G90541  Fibre Channel      1  Orvane Corporation
  Adapter_ORV2670M_RFF1508V22064  ORV2670M  RFF1508V22064  Fibre Channel      1  Orvane Corporation
  Adapter_ORV2670C_RFF1512V22871  ORV2670C  RFF1512V22871  Fibre Channel      1  Orvane Corporation
  $ orfc ports
  PORT                        HOST    STATE    Gb/s  PORT ID   FABRIC                   ADAPTER
  FC_21:00:00:24:ff:0a:51:c4  host0   online      2  00:00:ef  -                        Adapter_ORV2460_RFC0748T40312
  FC_21:00:00:24:ff:92:0f:38  host1   online      8  01:0a:00  10:00:88:94:71:0b:3c:00  Adapter_ORV2562_RFD1019S27745
  FC_21:01:00:24:ff:b2:0f:38  host2   online      8  01:0b:00  10:00:88:94:71:0b:3c:00  Adapter_ORV2562_RFD1019S27745
  FC_21:00:00:24:ff:4b:18:7a  host3   online     16  01:10:00  10:00:88:94:71:0b:3c:00  Adapter_ORV2672_RFE1423R61108
  FC_21:00:00:24:ff:4b:18:7b  host4   online      8  01:11:00  10:00:88:94:71:0b:3c:00  Adapter_ORV2672_RFE1423R61108
  FC_21:00:00:24:ff:08:65:91  host5   offline     -  01:20:01  10:00:88:94:71:0b:3c:00  Adapter_ORV8362_RFE1506P30951
  FC_21:00:00:24:ff:08:65:93  host6   offline     -  -         -                        Adapter_ORV8362_RFE1506P30951
  FC_21:00:00:24:ff:18:a4:e1  host7   online     10  01:21:01  10:00:88:94:71:0b:3c:00  Adapter_ORV8262_RFD1211Q18830
  FC_21:00:00:24:ff:0f:72:2d  host8   online     10  01:22:01  10:00:88:94:71:0b:3c:00  Adapter_ORV8152_RFD0943N05527
  FC_21:00:00:24:ff:7e:2d:94  host9   online     32  01:30:00  10:00:88:94:71:0b:3c:00  Adapter_ORV2742_RFH1836M74420
  FC_28:24:00:24:ff:00:00:1a  host20  online     32  01:30:01  10:00:88:94:71:0b:3c:00  Adapter_ORV2742_RFH1836M74420
  FC_21:00:00:24:ff:7e:2d:95  host10  online     32  02:30:00  10:00:88:94:71:2f:90:00  Adapter_ORV2742_RFH1836M74420
  FC_21:00:00:24:ff:13:c0:5e  host11  online     16  01:31:00  10:00:88:94:71:0b:3c:00  Adapter_ORV2690_RFG1617K52096
  FC_21:00:00:24:ff:91:0a:d2  host12  online     32  02:32:00  10:00:88:94:71:2f:90:00  Adapter_ORV2764M_RFH1911J66203
  FC_21:00:00:24:ff:a6:77:0c  host13  online     32  02:33:00  10:00:88:94:71:2f:90:00  Adapter_ORV2772_RFK2103H83917
  FC_21:00:00:24:ff:a6:77:0d  host14  offline     -  -         -                        Adapter_ORV2772_RFK2103H83917
  FC_21:00:00:24:ff:0c:48:2e  host15  online     64  02:50:00  10:00:88:94:71:2f:90:00  Adapter_ORV2872_RFL2348G90175
  FC_21:00:00:24:ff:0c:48:2f  host16  online     32  02:51:00  10:00:88:94:71:2f:90:00  Adapter_ORV2872_RFL2348G90175
  FC_21:00:00:24:ff:1d:90:06  host17  online     64  02:52:00  10:00:88:94:71:2f:90:00  Adapter_ORV2872S_RFL2402G90541
  FC_21:00:00:24:ff:52:e1:40  host18  online     16  01:12:00  10:00:88:94:71:0b:3c:00  Adapter_ORV2670M_RFF1508V22064
  FC_21:00:00:24:ff:52:f8:9c  host19  offline     -  -         -                        Adapter_ORV2670C_RFF1512V22871
  $ orfc targets
  PORT                        TARGET PORT              STATE         PROTOCOL  VENDOR    PRODUCT         LUNS  REMOTE PORT
  FC_21:00:00:24:ff:0a:51:c4  50:01:10:a0:00:8b:c4:11  online        FCP       TAPEWELL  ULTRIUM-4          1  rport-0:0-0
  FC_21:00:00:24:ff:92:0f:38  50:06:0e:80:12:4a:7c:40  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-1:0-0
  FC_21:00:00:24:ff:4b:18:7a  50:06:0e:80:12:4a:7c:40  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-3:0-0
  FC_21:00:00:24:ff:4b:18:7a  50:06:0e:80:12:4a:7c:44  unconfigured  FCP       HELIODOR  COMMAND-DEVICE     0  rport-3:0-1
  FC_21:00:00:24:ff:08:65:91  50:06:0e:80:12:4a:7c:48  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-5:0-0
  FC_21:00:00:24:ff:7e:2d:94  50:06:0e:80:12:4a:7c:10  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-9:0-0
  FC_21:00:00:24:ff:7e:2d:94  50:0a:09:81:a1:c3:40:10  online        NVMe      BASALT    NVME-ARRAY-900     4  rport-9:0-1
  FC_21:00:00:24:ff:7e:2d:94  50:01:10:a0:00:8b:c4:0f  online        FCP       TAPEWELL  ULTRIUM-9          1  rport-9:0-2
  FC_21:00:00:24:ff:7e:2d:94  50:06:0e:80:12:4a:7c:14  unconfigured  FCP       HELIODOR  COMMAND-DEVICE     0  rport-9:0-3
  FC_21:00:00:24:ff:7e:2d:94  50:00:d3:10:04:5e:ac:21  online        FCP       TALOS     SCALEOUT-300     300  rport-9:0-4
  FC_28:24:00:24:ff:00:00:1a  50:06:0e:80:12:4a:7c:10  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-20:0-0
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-10:0-0
  FC_21:00:00:24:ff:7e:2d:95  50:0a:09:82:a1:c3:40:10  online        NVMe      BASALT    NVME-ARRAY-900     4  rport-10:0-1
  FC_21:00:00:24:ff:13:c0:5e  50:06:0e:80:12:4a:7c:10  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-11:0-0
  FC_21:00:00:24:ff:91:0a:d2  50:06:0e:80:12:4a:7c:20  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-12:0-0
  FC_21:00:00:24:ff:a6:77:0c  50:06:0e:80:12:4a:7c:20  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-13:0-0
  FC_21:00:00:24:ff:a6:77:0c  50:0a:09:82:a1:c3:40:10  online        NVMe      BASALT    NVME-ARRAY-900     4  rport-13:0-1
  FC_21:00:00:24:ff:0c:48:2e  50:0a:09:83:a1:c3:40:10  online        NVMe      BASALT    NVME-ARRAY-900     4  rport-15:0-0
  FC_21:00:00:24:ff:0c:48:2e  50:06:0e:80:12:4a:7c:30  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-15:0-1
  FC_21:00:00:24:ff:0c:48:2e  50:01:10:a0:00:8b:c4:0f  offline       FCP       TAPEWELL  ULTRIUM-9          1  rport-15:0-2
  FC_21:00:00:24:ff:0c:48:2f  50:06:0e:80:12:4a:7c:30  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-16:0-0
  FC_21:00:00:24:ff:1d:90:06  50:06:0e:80:12:4a:7c:30  online        FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-17:0-0
  FC_21:00:00:24:ff:1d:90:06  50:0a:09:83:a1:c3:40:10  online        NVMe      BASALT    NVME-ARRAY-900     4  rport-17:0-1
  $ orfc luns host10
  PORT                        TARGET PORT               LUN  DEVICE     SIZE  WORLDWIDE ID                          H:C:T:L      MAP
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20     0  sdlu       512G  naa.60060e80124a7c0050404a7c00000000  10:0:0:0     mpatha
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20     1  sdlv       512G  naa.60060e80124a7c0050404a7c00000001  10:0:0:1     mpathb
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20     2  sdlw       512G  naa.60060e80124a7c0050404a7c00000002  10:0:0:2     mpathc
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20     3  sdlx       512G  naa.60060e80124a7c0050404a7c00000003  10:0:0:3     mpathd
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20    12  sdly       3.9M  naa.50060e80124a7c0c                  10:0:0:12    mpathe
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20    13  sdlz       1.0G  t10.DISK                              10:0:0:13    -
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20   256  sdma       512G  t10.HELIODOR-HD5600K21447-VOL000100   10:0:0:256   mpathf
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20  1023  sdmb       512G  naa.60060e80124a7c0050404a7c000003f5  10:0:0:1023  mpathk
  FC_21:00:00:24:ff:7e:2d:95  50:0a:09:82:a1:c3:40:10     1  nvme0c1n1  2.0T  eui.6b1f4f0e9c3a51b7000a0980a1c34001  -            -
  FC_21:00:00:24:ff:7e:2d:95  50:0a:09:82:a1:c3:40:10     2  nvme0c1n2  2.0T  eui.6b1f4f0e9c3a51b7000a0980a1c34002  -            -
  FC_21:00:00:24:ff:7e:2d:95  50:0a:09:82:a1:c3:40:10     3  nvme0c1n3  2.0T  eui.6b1f4f0e9c3a51b7000a0980a1c34003  -            -
  FC_21:00:00:24:ff:7e:2d:95  50:0a:09:82:a1:c3:40:10     4  nvme0c1n4  2.0T  eui.6b1f4f0e9c3a51b7000a0980a1c34004  -            -

A name stands for what it is of and what it has, in every list.

  $ orfc adapters host9 sdb
  ADAPTER                        MODEL    SERIAL         TYPE           PORTS  MANUFACTURER
  Adapter_ORV2562_RFD1019S27745  ORV2562  RFD1019S27745  Fibre Channel      2  Orvane Corporation
  Adapter_ORV2742_RFH1836M74420  ORV2742  RFH1836M74420  Fibre Channel      3  Orvane Corporation
  $ orfc ports mpathg
  PORT                        HOST    STATE   Gb/s  PORT ID   FABRIC                   ADAPTER
  FC_21:00:00:24:ff:4b:18:7a  host3   online    16  01:10:00  10:00:88:94:71:0b:3c:00  Adapter_ORV2672_RFE1423R61108
  FC_21:00:00:24:ff:0c:48:2e  host15  online    64  02:50:00  10:00:88:94:71:2f:90:00  Adapter_ORV2872_RFL2348G90175
  $ orfc targets FC_21:00:00:24:ff:7e:2d:95
  PORT                        TARGET PORT              STATE   PROTOCOL  VENDOR    PRODUCT         LUNS  REMOTE PORT
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20  online  FCP       HELIODOR  VIRTUAL-VOLUME     8  rport-10:0-0
  FC_21:00:00:24:ff:7e:2d:95  50:0a:09:82:a1:c3:40:10  online  NVMe      BASALT    NVME-ARRAY-900     4  rport-10:0-1
  $ orfc luns 50:06:0e:80:12:4a:7c:48
  PORT                        TARGET PORT               LUN  DEVICE  SIZE  WORLDWIDE ID                          H:C:T:L     MAP
  FC_21:00:00:24:ff:08:65:91  50:06:0e:80:12:4a:7c:48     0  sdq     512G  naa.60060e80124a7c0050404a7c00000000  5:0:0:0     mpatha
  FC_21:00:00:24:ff:08:65:91  50:06:0e:80:12:4a:7c:48     1  sdr     512G  naa.60060e80124a7c0050404a7c00000001  5:0:0:1     mpathb
  FC_21:00:00:24:ff:08:65:91  50:06:0e:80:12:4a:7c:48     2  sds     512G  naa.60060e80124a7c0050404a7c00000002  5:0:0:2     mpathc
  FC_21:00:00:24:ff:08:65:91  50:06:0e:80:12:4a:7c:48     3  sdt     512G  naa.60060e80124a7c0050404a7c00000003  5:0:0:3     mpathd
  FC_21:00:00:24:ff:08:65:91  50:06:0e:80:12:4a:7c:48    12  sdu     3.9M  naa.50060e80124a7c0c                  5:0:0:12    mpathe
  FC_21:00:00:24:ff:08:65:91  50:06:0e:80:12:4a:7c:48    13  sdv     1.0G  t10.DISK                              5:0:0:13    -
  FC_21:00:00:24:ff:08:65:91  50:06:0e:80:12:4a:7c:48   256  sdw     512G  t10.HELIODOR-HD5600K21447-VOL000100   5:0:0:256   mpathf
  FC_21:00:00:24:ff:08:65:91  50:06:0e:80:12:4a:7c:48  1023  sdx     512G  naa.60060e80124a7c0050404a7c000003f4  5:0:0:1023  mpathj

# More and fewer columns

  $ orfc ports host9 host10 -o wide
  PORT                        HOST    STATE   Gb/s  PORT ID   FABRIC                   ADAPTER                        PORT NAME                NODE NAME                NUMBER  INTERFACE  PROTOCOL  PCI      DEVICE        DRIVER  DRIVER VERSION  FIRMWARE  BIOS  LINK    SPEEDS   TYPE  CONNECTION      SWITCH
  FC_21:00:00:24:ff:7e:2d:94  host9   online    32  01:30:00  10:00:88:94:71:0b:3c:00  Adapter_ORV2742_RFH1836M74420  21:00:00:24:ff:7e:2d:94  20:00:00:24:ff:7e:2d:94       1  physical   FC        3b:00.0  0000:3b:00.0  orvfc   5.4.82.0-1      8.08.231  3.62  Online  8 16 32  node  point to point  20:07:88:94:71:0b:3c:00
  FC_21:00:00:24:ff:7e:2d:95  host10  online    32  02:30:00  10:00:88:94:71:2f:90:00  Adapter_ORV2742_RFH1836M74420  21:00:00:24:ff:7e:2d:95  20:00:00:24:ff:7e:2d:95       2  physical   FC        3b:00.1  0000:3b:00.1  orvfc   5.4.82.0-1      8.08.231  3.62  Online  8 16 32  node  point to point  20:03:88:94:71:2f:90:00
  $ orfc luns host10 --columns device,size_bytes,access_state --sort -device
  DEVICE     SIZE  ACCESS
  sdmb       512G  active/optimized
  sdma       512G  active/optimized
  sdlz       1.0G  active/optimized
  sdly       3.9M  active/optimized
  sdlx       512G  active/optimized
  sdlw       512G  active/optimized
  sdlv       512G  active/optimized
  sdlu       512G  active/optimized
  nvme0c1n4  2.0T  non-optimized
  nvme0c1n3  2.0T  non-optimized
  nvme0c1n2  2.0T  non-optimized
  nvme0c1n1  2.0T  non-optimized
  $ orfc ports --columns host,speed_gbps,state --sort speed_gbps --no-headings
  host0    2  online
  host1    8  online
  host2    8  online
  host4    8  online
  host7   10  online
  host8   10  online
  host3   16  online
  host11  16  online
  host18  16  online
  host9   32  online
  host20  32  online
  host10  32  online
  host12  32  online
  host13  32  online
  host16  32  online
  host15  64  online
  host17  64  online
  host5    -  offline
  host6    -  offline
  host14   -  offline
  host19   -  offline

What is unknown comes last in either order.

  $ orfc ports --columns host,speed_gbps --sort -speed_gbps --no-headings | tail -n 4
  host5    -
  host6    -
  host14   -
  host19   -

# Without the optional functions of a library

The maker's library has none. Names of the kernel, devices, maps and states of steps are not there then, and no column
for them.

  $ sed 's/VEXAPI_Ext/VEXAPI_Exx/g' $BUILD/libvexapi_fconly.so >libplain.so
  $ orfc --library ./libplain.so | head -n 5
    PORT                        STATE    Gb/s  TRANSCEIVER     TARGETS  LUNS  DOWN
  Adapter_ORV2460_RFC0748T40312  firmware 5.09.00  driver 8.07.21
    FC_21:00:00:24:ff:0a:51:c4  online      2  no diagnostics        1     1     0
  Adapter_ORV2562_RFD1019S27745  firmware 8.08.207  driver 2.1.101.0
    FC_21:00:00:24:ff:92:0f:38  online      8  ok                    1     8     0
  $ orfc ports FC_21:00:00:24:ff:7e:2d:94 --library ./libplain.so
  PORT                        STATE   Gb/s  PORT ID   FABRIC                   ADAPTER
  FC_21:00:00:24:ff:7e:2d:94  online    32  01:30:00  10:00:88:94:71:0b:3c:00  Adapter_ORV2742_RFH1836M74420
  $ orfc luns FC_21:00:00:24:ff:7e:2d:95 --library ./libplain.so
  PORT                        TARGET PORT               LUN  SIZE  WORLDWIDE ID
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20     0  512G  naa.60060e80124a7c0050404a7c00000000
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20     1  512G  naa.60060e80124a7c0050404a7c00000001
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20     2  512G  naa.60060e80124a7c0050404a7c00000002
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20     3  512G  naa.60060e80124a7c0050404a7c00000003
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20    12  3.9M  naa.50060e80124a7c0c
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20    13  1.0G  t10.DISK
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20   256  512G  t10.HELIODOR-HD5600K21447-VOL000100
  FC_21:00:00:24:ff:7e:2d:95  50:06:0e:80:12:4a:7c:20  1023  512G  -
  FC_21:00:00:24:ff:7e:2d:95  50:0a:09:82:a1:c3:40:10     1  2.0T  -
  FC_21:00:00:24:ff:7e:2d:95  50:0a:09:82:a1:c3:40:10     2  2.0T  -
  FC_21:00:00:24:ff:7e:2d:95  50:0a:09:82:a1:c3:40:10     3  2.0T  -
  FC_21:00:00:24:ff:7e:2d:95  50:0a:09:82:a1:c3:40:10     4  2.0T  -
  $ orfc counters FC_21:00:00:24:ff:7e:2d:95 --library ./libplain.so
    COUNTER                      VALUE
  FC_21:00:00:24:ff:7e:2d:95
    controller_error_count           0
    device_error_count               0
    interrupt_count                  0
    invalid_crc_count                0
    invalid_tx_word_count            0
    io_count                         0
    link_failure_count               0
    lip_count                        0
    loss_of_signal_count             0
    loss_of_sync_count               0
    megabytes_count                  0
    prim_seq_protocol_err_count      0
  $ orfc paths FC_21:00:00:24:ff:08:65:91 --library ./libplain.so | head -n 5
    VERDICT  PORT                        TARGET PORT               LUN  LINK    REMOTE PORT
  naa.60060e80124a7c0050404a7c00000000  512G  paths 12  up 12  redundant
    ok       FC_21:00:00:24:ff:92:0f:38  50:06:0e:80:12:4a:7c:40     0  online  online
    ok       FC_21:00:00:24:ff:4b:18:7a  50:06:0e:80:12:4a:7c:40     0  online  online
    ok       FC_21:00:00:24:ff:08:65:91  50:06:0e:80:12:4a:7c:48     0  online  online
