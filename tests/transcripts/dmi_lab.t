# Transceivers of the lab host

One line per port: vendor and part number of the module in it.

  $ . "$TESTDIR/setup.sh"
  $ unset VEXAPI_SIM_HOST
  $ orfc-esxcli -t port listcli | sed -n 's/^Ports: //p' | while read -r port; do
  >     orfc-esxcli -t port -s dmi getcli $port | awk -v port=$port '
  >         /^Message: Failed/ { sub(/^Message: /, ""); text = $0 }
  >         /^ +(Vendor|Part Number): / { sub(/^[^:]*: /, ""); sub(/ *$/, ""); text = text (text == "" ? "" : "; ") $0 }
  >         /^ +Status / { $1 = ""; text = text "; status" $0 }
  >         END { print port " " text }'
  > done
  FC_21:00:00:24:ff:0a:51:c4 FINISAR CORP.; FTRJ8519P1BNL; status Fault Fault Fault Fault Fault
  FC_21:00:00:24:ff:92:0f:38 FINISAR CORP.; FTLX8571D3BCL; status Normal Normal Normal Normal Normal
  FC_21:01:00:24:ff:b2:0f:38 FiberStore d; SFP-10GSR-85; status Fault Fault Fault Fault Fault
  FC_21:00:00:24:ff:4b:18:7a CISCO-FINISAR; FTLX1474D3BCL-CS; status Normal Normal Normal Normal Normal
  FC_21:00:00:24:ff:4b:18:7b FINISAR CORP.; FTLX8571D3BCL; status Normal Normal Normal Normal Normal
  FC_21:00:00:24:ff:08:65:91 Amphenol; 571540007
  FC_21:00:00:24:ff:08:65:93 Failed, Data not available
  FC_21:00:00:24:ff:18:a4:e1 HUAWEI; HPSP2120; status Fault Normal Fault Normal Fault
  FC_21:00:00:24:ff:0f:72:2d FINISAR CORP.; FTLX8571D3BCL; status Normal Normal Normal Normal Normal
  FC_21:00:00:24:ff:7e:2d:94 FINISAR CORP.; FTLF8536P4BCL; status Fault Fault Fault Fault Fault
  FC_28:24:00:24:ff:00:00:1a Failed, Data not available
  FC_21:00:00:24:ff:7e:2d:95 Ubiquiti Inc.; DAC-SFP28-1M
  FC_21:00:00:24:ff:13:c0:5e FINISAR CORP.; FTLX8571D3BCL; status Normal Normal Normal Normal Normal
  FC_21:00:00:24:ff:91:0a:d2 Failed, Data not available
  FC_21:00:00:24:ff:a6:77:0c FS; QSFP28-IR4-100G
  FC_21:00:00:24:ff:a6:77:0d Failed, Data not available
  FC_21:00:00:24:ff:0c:48:2e WTD; RTXM640-501; status Normal Normal Normal Normal Normal
  FC_21:00:00:24:ff:0c:48:2f FINISAR CORP.; FTLF8536P4BCL; status Fault Fault Fault Fault Fault
  FC_21:00:00:24:ff:1d:90:06 CISCO-FINISAR; FTLX1474D3BCL-CS; status Normal Normal Normal Normal Normal
  FC_21:00:00:24:ff:52:e1:40 FINISAR CORP.; FTLX8571D3BCL; status Normal Normal Normal Normal Normal
  FC_21:00:00:24:ff:52:f8:9c Failed, Data not available
