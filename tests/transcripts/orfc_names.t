# orfc: names in any spelling

  $ . "$TESTDIR/setup.sh"
  $ for name in FC_21:00:00:24:ff:7e:2d:94 21:00:00:24:FF:7E:2D:94 21000024ff7e2d94 0x21000024FF7E2D94 \
  >   pn-21:00:00:24:ff:7e:2d:94 nn-0x20000024ff7e2d94:pn-0x21000024ff7e2d94 host9 HOST9; do
  >   orfc ports "$name" --no-headings --columns port
  > done | uniq -c
        8 FC_21:00:00:24:ff:7e:2d:94
  $ for name in naa.60060e80124a7c0050404a7c00000001 60060E80124A7C0050404A7C00000001 wwn-0x60060e80124a7c0050404a7c00000001 \
  >   /dev/disk/by-id/wwn-0x60060e80124a7c0050404a7c00000001 mpathb /dev/mapper/mpathb dm-1 \
  >   mpath-360060e80124a7c0050404a7c00000001; do
  >   orfc luns "$name" --no-headings --columns device | tr '\n' ' '; echo
  > done | uniq -c
        8 sdb sdj sdr sdz sdnz sdlv sdmd sdml sdmt sdnb sdnj sdnr 
  $ for name in sdb /dev/sdb 1:0:0:1 FC_21:00:00:24:ff:92:0f:38_Target_50:06:0e:80:12:4a:7c:40_LUN_1; do
  >   orfc luns "$name" --no-headings --columns device
  > done | uniq -c
        4 sdb
  $ orfc luns nvme0n1 --no-headings --columns device
  nvme0c0n1
  nvme0c1n1
  nvme0c2n1
  nvme0c3n1
  nvme0c4n1

A virtual port has the node name of its physical one.

  $ orfc ports 20:00:00:24:ff:7e:2d:94 --no-headings --columns port
  FC_21:00:00:24:ff:7e:2d:94
  FC_28:24:00:24:ff:00:00:1a
  $ orfc targets 50060e80124a7c30 --no-headings --columns remote_port
  rport-15:0-1
  rport-16:0-0
  rport-17:0-0

Beginnings that mean one thing.

  $ orfc adapters RFH18 --no-headings --columns adapter
  Adapter_ORV2742_RFH1836M74420
  $ orfc ports 21:00:00:24:ff:0c:48:2f --no-headings --columns host
  host16
  $ orfc ports 21000024ff0f --no-headings --columns host
  host8
  $ orfc ports FC_28 --no-headings --columns host
  host20

Those that mean several, and names that nothing has.

  $ orfc ports 21:00:00:24:ff:7e
  orfc: 21:00:00:24:ff:7e is ambiguous: 21:00:00:24:ff:7e:2d:94, 21:00:00:24:ff:7e:2d:95
  [1]
  $ orfc show host
  orfc: host is ambiguous: host0, host1, host10 and 18 more
  [1]
  $ orfc show hots9
  orfc: nothing is named hots9; did you mean host9 or host19?
  [1]
  $ orfc show sdzz
  orfc: nothing is named sdzz; did you mean sdz or sdaz or sdbz?
  [1]
  $ orfc show 21:00:00:24:ff:7e:2d:49
  orfc: nothing is named 21:00:00:24:ff:7e:2d:49; did you mean 21:00:00:24:ff:7e:2d:94 or 21:00:00:24:ff:7e:2d:95 or 20:00:00:24:ff:7e:2d:94?
  [1]
  $ orfc show 9:0:0:7
  orfc: nothing is named 9:0:0:7; did you mean 9:0:0:0 or 9:0:0:1 or 9:0:0:2?
  [1]
  $ orfc show nothing-like-it
  orfc: nothing is named nothing-like-it
  [1]

All of them.

  $ orfc names | head -n 4
  NAME                                                                OBJECT
  Adapter_ORV2460_RFC0748T40312                                       adapter
  RFC0748T40312                                                       adapter
  Adapter_ORV2562_RFD1019S27745                                       adapter
  $ orfc names --columns name --no-headings | grep -c .
  1775
