# orfc: paths of the lab host

  $ . "$TESTDIR/setup.sh"

A LUN with twelve paths. Below its worldwide id, its map and its size, every path has a verdict and the state of each
step: the first one that is down is the reason.

  $ orfc paths mpatha
    VERDICT           PORT                        HOST    TARGET PORT              LUN  H:C:T:L   DEVICE  LINK      REMOTE PORT  DEVICE STATE       ACCESS                IN MAP
  naa.60060e80124a7c0050404a7c00000000  mpatha  dm-0  512G  paths 12  up 8  redundant
    ok                FC_21:00:00:24:ff:92:0f:38  host1   50:06:0e:80:12:4a:7c:40    0  1:0:0:0   sda     Online    Online       running            active/optimized      active
    ok                FC_21:00:00:24:ff:4b:18:7a  host3   50:06:0e:80:12:4a:7c:40    0  3:0:0:0   sdi     Online    Online       running            active/optimized      active
    link down         FC_21:00:00:24:ff:08:65:91  host5   50:06:0e:80:12:4a:7c:48    0  5:0:0:0   sdq     Linkdown  Blocked      transport-offline  active/optimized      failed
    ok                FC_21:00:00:24:ff:7e:2d:94  host9   50:06:0e:80:12:4a:7c:10    0  9:0:0:0   sdy     Online    Online       running            active/optimized      active
    ok                FC_28:24:00:24:ff:00:00:1a  host20  50:06:0e:80:12:4a:7c:10    0  20:0:0:0  sdny    Online    Online       running            active/optimized      active
    ok                FC_21:00:00:24:ff:7e:2d:95  host10  50:06:0e:80:12:4a:7c:20    0  10:0:0:0  sdlu    Online    Online       running            active/optimized      active
    remote port down  FC_21:00:00:24:ff:13:c0:5e  host11  50:06:0e:80:12:4a:7c:10    0  11:0:0:0  sdmc    Online    Not Present  transport-offline  active/optimized      failed
    standby           FC_21:00:00:24:ff:91:0a:d2  host12  50:06:0e:80:12:4a:7c:20    0  12:0:0:0  sdmk    Online    Online       running            standby               active
    ok                FC_21:00:00:24:ff:a6:77:0c  host13  50:06:0e:80:12:4a:7c:20    0  13:0:0:0  sdms    Online    Marginal     running            active/non-optimized  active
    ok                FC_21:00:00:24:ff:0c:48:2e  host15  50:06:0e:80:12:4a:7c:30    0  15:0:1:0  sdna    Online    Online       running            active/optimized      active
    device down       FC_21:00:00:24:ff:0c:48:2f  host16  50:06:0e:80:12:4a:7c:30    0  16:0:0:0  sdni    Online    Online       offline            active/optimized      failed
    remote port down  FC_21:00:00:24:ff:1d:90:06  host17  50:06:0e:80:12:4a:7c:30    0  17:0:0:0  sdnq    Online    Blocked      blocked            active/optimized      failed

What the paths have in common: two adapters and fabrics; a port and its virtual port, which share a link; one fabric;
no path that works; one that is left; one that there is.

  $ orfc paths mpathg mpathh mpathi mpathj mpathk mpathl --columns volume,paths,paths_up,redundancy,verdict,host
  VOLUME                                paths  up  REDUNDANCY  VERDICT           HOST
  naa.60060e80124a7c0050404a7c000003f6      1   1  one path    ok                host1
  naa.60060e80124a7c0050404a7c000003f1      2   2  redundant   ok                host3
  naa.60060e80124a7c0050404a7c000003f1      2   2  redundant   ok                host15
  naa.60060e80124a7c0050404a7c000003f4      1   0  no path     link down         host5
  naa.60060e80124a7c0050404a7c000003f2      2   2  one port    ok                host9
  naa.60060e80124a7c0050404a7c000003f2      2   2  one port    ok                host20
  naa.60060e80124a7c0050404a7c000003f5      2   1  one path    ok                host10
  naa.60060e80124a7c0050404a7c000003f5      2   1  one path    remote port down  host11
  naa.60060e80124a7c0050404a7c000003f3      3   2  one fabric  standby           host12
  naa.60060e80124a7c0050404a7c000003f3      3   2  one fabric  ok                host16
  naa.60060e80124a7c0050404a7c000003f3      3   2  one fabric  remote port down  host17

One port that sees a LUN by two numbers.

  $ orfc paths mpathm
    VERDICT  PORT                        HOST   TARGET PORT              LUN  H:C:T:L    DEVICE  LINK    REMOTE PORT  DEVICE STATE  IN MAP
  naa.6000d310045eac00000000000000022a  mpathm  dm-12  100G  paths 2  up 2  one port
    ok       FC_21:00:00:24:ff:7e:2d:94  host9  50:00:d3:10:04:5e:ac:21  298  9:0:4:298  sdls    Online  Online       running       active
    ok       FC_21:00:00:24:ff:7e:2d:94  host9  50:00:d3:10:04:5e:ac:21  299  9:0:4:299  sdlt    Online  Online       running       active

A path in the map of another LUN, and a map that is suspended.

  $ orfc paths mpathe | grep -A 1 -E '^[^ ]|wrong'
  naa.50060e80124a7c0c  mpathe  dm-4  3.9M  paths 11  up 6  redundant
    ok                FC_21:00:00:24:ff:92:0f:38  host1   50:06:0e:80:12:4a:7c:40   12  1:0:0:12   sde     Online    Online       running            active/optimized  active
  --
  naa.50060e80124a7c0d  mpathe  dm-4  3.9M  paths 1  up 1  one path
    wrong map         FC_21:00:00:24:ff:0c:48:2e  host15  50:06:0e:80:12:4a:7c:30   12  15:0:1:12  sdne    Online    Online       running            active/optimized  active
  $ orfc paths naa.50060e80124a7c0d --columns worldwide_id,verdict,host,map,map_id
  WORLDWIDE ID          VERDICT    HOST    MAP     MAP ID
  naa.50060e80124a7c0d  wrong map  host15  mpathe  mpath-350060e80124a7c0c
  $ orfc paths mpathf | head -n 5
    VERDICT           PORT                        HOST    TARGET PORT              LUN  H:C:T:L     DEVICE  LINK      REMOTE PORT  DEVICE STATE       ACCESS                IN MAP
  t10.HELIODOR-HD5600K21447-VOL000100  mpathf  dm-5  512G  paths 12  up 0  no path
    down in map       FC_21:00:00:24:ff:92:0f:38  host1   50:06:0e:80:12:4a:7c:40  256  1:0:0:256   sdg     Online    Online       running            active/optimized      active
    down in map       FC_21:00:00:24:ff:4b:18:7a  host3   50:06:0e:80:12:4a:7c:40  256  3:0:0:256   sdo     Online    Online       running            active/optimized      active
    link down         FC_21:00:00:24:ff:08:65:91  host5   50:06:0e:80:12:4a:7c:48  256  5:0:0:256   sdw     Linkdown  Blocked      transport-offline  active/optimized      failed

A path that is kept, but that the storage doesn't serve now, works.

  $ orfc paths mpathb --columns verdict,paths_up,host,access_state | grep -v ok
  VERDICT           up  HOST    ACCESS
  link down          9  host5   active/optimized
  remote port down   9  host11  active/optimized
  standby            9  host12  standby
  remote port down   9  host17  active/optimized

Namespaces of NVMe, and a tape drive.

  $ orfc paths nvme0n1
    VERDICT           PORT                        HOST    TARGET PORT              LUN  DEVICE     LINK    REMOTE PORT  DEVICE STATE  ACCESS
  eui.6b1f4f0e9c3a51b7000a0980a1c34001  nvme0n1  2.0T  paths 5  up 3  redundant
    ok                FC_21:00:00:24:ff:7e:2d:94  host9   50:0a:09:81:a1:c3:40:10    1  nvme0c0n1  Online  Online       live          optimized
    ok                FC_21:00:00:24:ff:7e:2d:95  host10  50:0a:09:82:a1:c3:40:10    1  nvme0c1n1  Online  Online       live          non-optimized
    access down       FC_21:00:00:24:ff:a6:77:0c  host13  50:0a:09:82:a1:c3:40:10    1  nvme0c2n1  Online  Marginal     live          inaccessible
    ok                FC_21:00:00:24:ff:0c:48:2e  host15  50:0a:09:83:a1:c3:40:10    1  nvme0c3n1  Online  Online       live          optimized
    remote port down  FC_21:00:00:24:ff:1d:90:06  host17  50:0a:09:83:a1:c3:40:10    1  nvme0c4n1  Online  Blocked      connecting    inaccessible
  $ orfc paths st1
    VERDICT           PORT                        HOST    TARGET PORT              LUN  H:C:T:L   DEVICE  LINK    REMOTE PORT  DEVICE STATE
  naa.500110a0008bc40e  paths 2  up 1  one path
    ok                FC_21:00:00:24:ff:7e:2d:94  host9   50:01:10:a0:00:8b:c4:0f    0  9:0:2:0   st1     Online  Online       running
    remote port down  FC_21:00:00:24:ff:0c:48:2e  host15  50:01:10:a0:00:8b:c4:0f    0  15:0:2:0  st2     Online  Not Present  transport-offline

A port leads to whole LUNs, with the paths that it isn't part of.

  $ orfc paths host0
    VERDICT  PORT                        HOST   TARGET PORT              LUN  H:C:T:L  DEVICE  LINK    REMOTE PORT  DEVICE STATE
  naa.500110a0008bc410  paths 1  up 1  one path
    ok       FC_21:00:00:24:ff:0a:51:c4  host0  50:01:10:a0:00:8b:c4:11    0  0:0:0:0  st0     Online  Online       running

# Without a worldwide id

Nobody knows whether such LUNs are the same, so each path stands for itself.

  $ host boot
  $ orfc paths | head -n 8
    VERDICT           PORT                        TARGET PORT              LUN  LINK    REMOTE PORT
  FC_21:00:00:24:ff:60:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_3  paths 1  up 1  one path
    ok                FC_21:00:00:24:ff:60:00:01  50:06:0e:80:12:4a:7c:10    3  online  online
  FC_21:00:00:24:ff:60:00:01_Target_50:06:0e:80:12:4a:7c:10_LUN_300  paths 1  up 1  one path
    ok                FC_21:00:00:24:ff:60:00:01  50:06:0e:80:12:4a:7c:10  300  online  online
  FC_21:00:00:24:ff:60:00:01_Target_50:0a:09:81:a1:c3:40:10_NSID_1  paths 1  up 0  no path
    remote port down  FC_21:00:00:24:ff:60:00:01  50:0a:09:81:a1:c3:40:10    1  online  offline
  FC_21:00:00:24:ff:60:00:01_Target_50:0a:09:81:a1:c3:40:10_NSID_2  paths 1  up 0  no path
