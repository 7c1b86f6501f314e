# orfc: verdicts over the lab host

  $ . "$TESTDIR/setup.sh"

What isn't well of adapters, ports, links and modules, and the sums of all.

  $ orfc health --state state.json --columns verdict,subject,object,reason,rule | grep -vE '^[a-z]+ +(path|LUN|target) '
  VERDICT   SUBJECT      OBJECT                                                              REASON                                                  rule
  critical  link         FC_21:00:00:24:ff:08:65:91                                          the link is down                                        link-down
  critical  transceiver  FC_21:00:00:24:ff:18:a4:e1                                          a reading is past its alarm threshold                   module-alarm
  warning   adapter      Adapter_ORV2672_RFE1423R61108                                       ports of one adapter run at different speeds            speed-differs
  warning   adapter      Adapter_ORV2872_RFL2348G90175                                       ports of one adapter run at different speeds            speed-differs
  warning   link         FC_21:00:00:24:ff:7e:2d:95                                          credit recovery is configured and not in use            credit-recovery-off
  warning   link         FC_21:00:00:24:ff:4b:18:7a                                          forward error correction is off                         fec-off
  warning   transceiver  FC_21:01:00:24:ff:b2:0f:38                                          a checksum of the module is wrong                       module-bad
  $ orfc health --state state.json host13
    SUBJECT  OBJECT                                                             FIGURES                                      HOST
  critical  no path to the LUN works  rule lun-no-path
    LUN      t10.HELIODOR-HD5600K21447-VOL000100                                0 of 12 paths up                             -
  warning  the target is marginal  rule target-marginal
    target   FC_21:00:00:24:ff:a6:77:0c_Target_50:06:0e:80:12:4a:7c:20          Marginal                                     host13
    target   FC_21:00:00:24:ff:a6:77:0c_Target_50:0a:09:82:a1:c3:40:10          Marginal                                     host13
  warning  the path is down  rule path-down
    path     FC_21:00:00:24:ff:a6:77:0c_Target_50:06:0e:80:12:4a:7c:20_LUN_12   access unavailable                           host13
    path     FC_21:00:00:24:ff:a6:77:0c_Target_50:06:0e:80:12:4a:7c:20_LUN_256  in map suspended                             host13
    path     FC_21:00:00:24:ff:a6:77:0c_Target_50:0a:09:82:a1:c3:40:10_NSID_1   access inaccessible                          host13
    path     FC_21:00:00:24:ff:a6:77:0c_Target_50:0a:09:82:a1:c3:40:10_NSID_2   access inaccessible                          host13
    path     FC_21:00:00:24:ff:a6:77:0c_Target_50:0a:09:82:a1:c3:40:10_NSID_3   access inaccessible                          host13
    path     FC_21:00:00:24:ff:a6:77:0c_Target_50:0a:09:82:a1:c3:40:10_NSID_4   access inaccessible                          host13
  warning  one path to the LUN works  rule lun-one-path
    LUN      naa.60060e80124a7c0050404a7c000003f7                               1 of 1 paths up, FC_21:00:00:24:ff:a6:77:0c  -
  
  OBJECTS      OK  WARNING  CRITICAL  UNKNOWN
  adapter       1        0         0        0
  port          1        0         0        0
  link          1        0         0        0
  transceiver   1        0         0        0
  target        0        2         0        0
  path          6        6         0        0
  LUN          10        1         1        0

Counters are compared with those of the run before, or over an interval.

  $ orfc health --state '' host2 host13 --interval 0.1 --columns verdict,object,reason,figures | sed -n '/grow/s/[0-9.]* s$/N s/p'
  warning   FC_21:01:00:24:ff:b2:0f:38                                         error counters grow                          invalid_crc_count +1, invalid_tx_word_count +12 in N s
  $ orfc health --state '' host13 --interval 0.1 --columns verdict,object,rule,figures | sed -n '/congest/s/[0-9.]* s$/N s/p'
  warning   FC_21:00:00:24:ff:a6:77:0c                                         congestion        cn_sig_warn +3, fpin_cn +2, fpin_cn_credit_stall +2 in N s
  warning   FC_21:00:00:24:ff:a6:77:0c_Target_50:06:0e:80:12:4a:7c:20          target-congested  fpin_cn +2, fpin_cn_credit_stall +2 in N s

Every object has a verdict.

  $ orfc health host9 --state '' -o csv --columns verdict,subject,object,figures | grep -vE ',(path|LUN),'
  verdict,subject,object,figures\r (esc)
  ok,adapter,Adapter_ORV2742_RFH1836M74420,\r (esc)
  ok,port,FC_21:00:00:24:ff:7e:2d:94,\r (esc)
  ok,link,FC_21:00:00:24:ff:7e:2d:94,\r (esc)
  ok,transceiver,FC_21:00:00:24:ff:7e:2d:94,\r (esc)
  ok,target,FC_21:00:00:24:ff:7e:2d:94_Target_50:06:0e:80:12:4a:7c:10,\r (esc)
  ok,target,FC_21:00:00:24:ff:7e:2d:94_Target_50:0a:09:81:a1:c3:40:10,\r (esc)
  ok,target,FC_21:00:00:24:ff:7e:2d:94_Target_50:01:10:a0:00:8b:c4:0f,\r (esc)
  ok,target,FC_21:00:00:24:ff:7e:2d:94_Target_50:06:0e:80:12:4a:7c:14,\r (esc)
  ok,target,FC_21:00:00:24:ff:7e:2d:94_Target_50:00:d3:10:04:5e:ac:21,\r (esc)
  $ orfc health --nagios --state '' host9 --library simulator
  ORFC CRITICAL - 1 critical, 301 warning, 0 unknown, 332 ok: t10.HELIODOR-HD5600K21447-VOL000100: no path to the LUN works (0 of 12 paths up); FC_21:00:00:24:ff:7e:2d:94_Target_50:06:0e:80:12:4a:7c:10_LUN_256: the path is down (in map suspended); naa.6000d310045eac000000000000000100: one path to the LUN works (1 of 1 paths up, FC_21:00:00:24:ff:7e:2d:94); naa.6000d310045eac000000000000000101: one path to the LUN works (1 of 1 paths up, FC_21:00:00:24:ff:7e:2d:94); naa.6000d310045eac000000000000000102: one path to the LUN works (1 of 1 paths up, FC_21:00:00:24:ff:7e:2d:94); and 297 more | critical=1 warning=301 unknown=0 ok=332
  [2]
  $ orfc health --explain module-alarm
  module-alarm: a reading is past its alarm threshold
  critical, of each transceiver
  
  The module works beyond what its maker allows, or it gets no light.
  For receive power look at the cable and the far end (--far); else change the module.
  $ orfc health --explain alarm
  orfc: no rule is named alarm; there are speed-differs, firmware-differs, driver-differs, board-hot, board-too-hot, link-down, link-slow, errors-growing, crc-rate, sync-loss-rate, congestion, credit-recovery-off, fec-off, module-bad, module-warning, module-alarm, far-module-warning, far-module-alarm, transmit-power-falling, target-down, target-marginal, target-congested, path-down, path-in-wrong-map, lun-no-path, lun-one-path, lun-one-port, lun-one-fabric
  [2]
