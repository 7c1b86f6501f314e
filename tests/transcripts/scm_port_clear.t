# Clearing the congestion statistics of a port's targets

The counters of the targets are cleared, those of the port stay.

  $ . "$TESTDIR/setup.sh"
  $ host congestion
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:20_Target_50:06:0e:80:12:4a:7c:10 | grep -c ': 0$'
  0
  [1]
  $ orfc-esxcli -t port -s scmstats clear FC_21:00:00:24:ff:60:20:20
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FWCMStatisticsClear">
  <field name="Message">
  <string>Success</string></field>
  </structure>
  </output>
  $ calls --all | grep -e Reset
  VEXAPI_SANCongMgmtResetStatistics
  $ orfc-esxcli -t target -v scmstats getcli FC_21:00:00:24:ff:60:20:20_Target_50:06:0e:80:12:4a:7c:10 | grep -c ': 0$'
  20
  $ orfc-esxcli -t port -s scmstats getcli FC_21:00:00:24:ff:60:20:20 | grep -c ': 0$'
  0
  [1]
  $ orfc-esxcli -t port -s scmstats clearcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  FWCMStatisticsClear:
  Message: Success
  ****************************************************

The first generation can't be cleared, nor can a port that keeps no statistics.

  $ rm -f journal
  $ orfc-esxcli -t port -s scmstats clear FC_21:00:00:24:ff:60:20:10
  <?xml version="1.0"?><output xmlns:esxcli="orfc">
  <structure typeName="FWCMStatisticsClear">
  <field name="Message">
  <string>Failed, Driver/Firmware does not support this feature</string></field>
  </structure>
  </output>
  $ orfc-esxcli -t port -s scmstats clearcli FC_21:00:00:24:ff:60:20:70
  ****************************************************
  FWCMStatisticsClear:
  Message: Failed, Feature not supported for this adapter
  ****************************************************
  $ orfc-esxcli -t port -s scmstats clearcli FC_21:00:00:24:ff:60:20:71
  ****************************************************
  FWCMStatisticsClear:
  Message: Failed, Driver/Firmware does not support this feature
  ****************************************************
  $ orfc-esxcli -t port -s scmstats clearcli FC_21:00:00:24:ff:60:20:72
  ****************************************************
  FWCMStatisticsClear:
  Message: Failed, feature not supported for virtual port
  ****************************************************
  $ calls
  $ orfc-esxcli -t port -s scmstats clearcli FC_21:00:00:24:ff:60:20:41
  ****************************************************
  FWCMStatisticsClear:
  Message: Failed, Feature disabled on the port
  ****************************************************

Status 118 says that driver or firmware can't do it. Any value but 0 means that the feature is on.

  $ rm -f journal
  $ orfc-esxcli -t port -s scmstats clearcli FC_21:00:00:24:ff:60:20:74
  ****************************************************
  FWCMStatisticsClear:
  Message: Failed, Driver/Firmware does not support this feature
  ****************************************************
  $ calls
  VEXAPI_IsFWCMFeatureEnabled
  VEXAPI_SANCongMgmtResetStatistics -> 118
  $ VEXAPI_SIM_FAULTS=VEXAPI_SANCongMgmtResetStatistics=117 orfc-esxcli -t port -s scmstats clearcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  FWCMStatisticsClear:
  Message: Failed, Unknown
  ****************************************************
  $ VEXAPI_SIM_FAULTS=VEXAPI_IsFWCMFeatureEnabled=1 orfc-esxcli -t port -s scmstats clearcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  FWCMStatisticsClear:
  Message: Failed, FWCM settings read error
  ****************************************************
  $ refuse_log 2 orfc-esxcli -t port -s scmstats clearcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  FWCMStatisticsClear:
  Message: Failed, File not found
  ****************************************************
  $ refuse_log 3 orfc-esxcli -t port -s scmstats clearcli FC_21:00:00:24:ff:60:20:20
  ****************************************************
  FWCMStatisticsClear:
  Message: Failed, File not found
  ****************************************************

`clearcli` has no usage.

  $ orfc-esxcli -t port -s scmstats clearcli
  ****************************************************
  FWCMStatisticsClear:
  Message: Failed, Invalid parameter
  ****************************************************
  $ orfc-esxcli -t port -s scmstats clearcli help
  ****************************************************
  FWCMStatisticsClear:
  Message: Failed, Unknown
  ****************************************************
  $ orfc-esxcli -t port -s scmstats clearcli ?

The codes of these runs.

  $ for port in 20 10 70 72 41 74 99; do code -t port -s scmstats clear FC_21:00:00:24:ff:60:20:$port; done | paste -sd ' '
  0 45 35 51 52 45 6
  $ VEXAPI_SIM_FAULTS=VEXAPI_SANCongMgmtResetStatistics=117 code -t port -s scmstats clear FC_21:00:00:24:ff:60:20:20
  50
