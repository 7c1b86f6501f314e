# What no open interface offers

Each command shows its own refusal, and touches nothing.

  $ . "$TESTDIR/setup.sh"
  $ linux fcoe
  $ PORT=FC_20:00:02:00:00:00:a0:01 TARGET=FC_20:00:02:00:00:00:a0:01_Target_20:00:02:00:00:00:a0:10
  $ cd $sys/devices/pci0000:00/0000:00:08.0; echo 0x1d0c >vendor; echo 0x2281 >device; cd - >/dev/null
  $ sums() { find tree -type f | sort | xargs -d '\n' md5sum; }; sums >before
  $ port() { printf '%s: ' "$1"; orfc-esxcli -t port -s "${@:1:2}" $PORT "${@:3}" | grep -E 'Message|Result'; }
  $ echo content >file; WWPN=20:00:02:00:00:00:a0:10
  $ port bbcr getcli
  bbcr: Message: Failed, NVRAM read failed
  $ port fec getcli
  fec: Message: Failed, FEC read failed
  $ port fec setcli -f true
  fec: Message: Failed, FEC read failed
  $ port hbaparams getcli
  hbaparams: Message: Failed, NVRAM read failed
  $ port hbaparams restoreDefaultscli
  hbaparams: Message: Failed, NVRAM read failed
  $ port hbaparams savecli file
  hbaparams: Message: Failed, NVRAM read failed
  $ port bootconfig getcli
  bootconfig: Message: Failed, Adapter does not have ROM BIOS
  $ for mode in BIOS UEFI NVME; do port bootconfigext getcli $mode; done
  bootconfigext: Message: Failed, Boot Config read failed
  bootconfigext: Message: Failed, Boot Config read failed
  bootconfigext: Message: Failed, Boot Config read failed
  $ port beacon getcli
  beacon: Message: Failed, Beacon read failed
  $ port beacon setcli ON
  beacon: Message: Failed, Beacon read failed
  $ port dmi getcli
  dmi: Message: Failed, SFP DMI data read failed
  $ port dmi updatecli file WTD
  dmi: Message: Failed, Feature not supported by driver
  $ port fwdump getcli file
  fwdump: Message: Failed, FW Dump read failed
  $ port loopback runcli 10 5 512 Stop Internal CRPAT
  loopback: Message: Success
  LoopbackTestResult: LoopbackTestResultList:
  $ port rwbuffer runcli 10 5 128 Ignore Random
  rwbuffer: Message: Failed, DPortDiag read failed
  RWBufferTestResult: ****************************************************
  $ port fcping runcli $WWPN 4 true
  fcping: FCPingResult:
  Test Result: Failed, Diagnostic test failed
  $ port fcecho runcli $WWPN 4 true
  fcecho: FCEchoResult:
  Message: Failed, Diagnostic test failed
  FCEchoTestResults: FCEchoTestResultList:
  $ port ctdiag runcli CTPing $WWPN 4 true
  ctdiag: CTDiagResult:
  Test Result: Failed, Diagnostic test failed
  $ port dportdiag getcli
  dportdiag: Message: Failed, DPortDiag read failed
  $ port dportdiag setcli enable
  dportdiag: Message: Failed, DPortDiag read failed
  $ port dportdiag runcli
  dportdiag: Message: Failed, DPortDiag read failed
  DPortDiagResult: ****************************************************
  $ port rdp runcli
  rdp: Message: Failed, Diagnostic test failed
  $ port scmprofile getcli
  scmprofile: Message: Failed, NVRAM read failed
  $ orfc-esxcli -t port updatenvramcli $PORT file | grep Message
  Message: Failed, NVRAM update failed
  $ orfc-esxcli -t target -v iidma getcli $TARGET | grep Message
  Message: Failed, IIDMA read failed
  $ orfc-esxcli -t target -v iidma setcli $TARGET 8_Gbps | grep Message
  Message: Failed, Speed not supported for this adapter
  $ sums | cmp - before

# Congestion

The kernel counts what the fabric notifies. The chip must be one that the tool has the reports for.

  $ cd $sys/class/fc_host/host0/statistics
  $ echo 0x11 >cn_sig_alarm; echo 0x12 >cn_sig_warn; echo 0x7 >fpin_cn_credit_stall; echo 0x8 >fpin_dn_timeout
  $ cd - >/dev/null; cd $sys/class/fc_remote_ports/rport-0:0-0/statistics
  $ echo 0x9 >fpin_cn_credit_stall; echo 0xa >fpin_li_failure_unknown
  $ cd - >/dev/null
  $ orfc-esxcli -t port -s scmstats getcli $PORT | grep -Ev ' 0$'
  ****************************************************
  PortFWCMStatistics:
  Message: Success
  Port FWCM Stats: PortFWCMStatsList:
  Data: Node Name: 10:00:02:00:00:00:a0:01
        Port Name: 20:00:02:00:00:00:a0:01
        Port Id: 00:a0:01
        Port State: Online
        -----------------------------------
        Congestion Mitigation
        -----------------------------------
        Congestion Alarm Count: 17
        Congestion Warning Count: 18
        -----------------------------------
        Rx Fabric Performance Impact 
        Notifications
        -----------------------------------
        Delivery Timeout Count: 8
        Congestion Credit Stall Count: 7
  ****************************************************
  $ orfc-esxcli -t target -v scmstats getcli $TARGET | grep -Ev ' 0$'
  ****************************************************
  TargetFWCMStatistics:
  Message: Success
  Target FWCM Stats: TargetFWCMStatsList:
  Data: Node Name: 10:00:02:00:00:00:a0:10
        Port Name: 20:00:02:00:00:00:a0:10
        Port Id: 00:a0:10
        -----------------------------------
        Congestion Mitigation
        -----------------------------------
        -----------------------------------
        Rx Fabric Performance Impact 
        Notifications
        -----------------------------------
        Link Unknown Event Count: 10
        Congestion Credit Stall Count: 9
  ****************************************************
  $ orfc-esxcli -t port -s scmchk getcli $PORT
  ****************************************************
  PortFWCMInformation:
  Message: Success
  Port FWCM Status: PortFWCMStatusList:
  Data: Node Name: 10:00:02:00:00:00:a0:01
        Port Name: 20:00:02:00:00:00:a0:01
        Port Id: 00:a0:01
        Port State: Online
        Congestion Current State: Unknown
        Congestion Severity: None
        Link Integrity Events: No
        Delivery Notification Events: No
        Seconds Since Last Event: 0
        Fabric Connection Flags: RDF Reject
        Virtual Lane: Disabled
        I/O Throttling: None
  ****************************************************
  $ orfc-esxcli -t port -s scmstats clearcli $PORT | grep Message
  Message: Failed, Driver/Firmware does not support this feature

A counter that can't be read is reported.

  $ rm -f /var/tmp/vexapi-output.log; echo many >$sys/class/fc_host/host0/statistics/fpin_dn_timeout
  $ orfc-esxcli -t port -s scmstats getcli $PORT | grep -E 'Timeout|Stall'
        Delivery Timeout Count: 0
        Congestion Credit Stall Count: 7
  $ told
  host0/statistics/fpin_dn_timeout: not understood as a number

Older kernels don't, and have no such reports.

  $ rm $sys/class/fc_host/host0/statistics/fpin_* $sys/class/fc_remote_ports/rport-0:0-0/statistics/fpin_*
  $ orfc-esxcli -t port -s scmstats getcli $PORT | grep Message
  Message: Failed, Driver/Firmware does not support this feature
  $ orfc-esxcli -t target -v stats getcli $TARGET | grep Message
  Message: Failed, Statistics read error
