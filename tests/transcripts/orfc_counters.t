# orfc: counters of the lab host

  $ . "$TESTDIR/setup.sh"
  $ orfc counters host15
    COUNTER                            VALUE
  FC_21:00:00:24:ff:0c:48:2e
    dumped_frames                          0
    error_frames                           0
    fcp_input_megabytes                  565
    fcp_input_requests                 61210
    fcp_output_megabytes                  36
    fcp_output_requests                14077
    fpin_cn                                0
    fpin_cn_clear                          0
    fpin_cn_credit_stall                   0
    fpin_cn_device_specific                0
    fpin_cn_lost_credit                    0
    fpin_cn_oversubscription               0
    fpin_dn                                0
    fpin_dn_device_specific                0
    fpin_dn_timeout                        0
    fpin_dn_unable_to_route                0
    fpin_dn_unknown                        0
    fpin_li                                0
    fpin_li_device_specific                0
    fpin_li_failure_unknown                0
    fpin_li_invalid_crc_count              0
    fpin_li_invalid_tx_word_count          0
    fpin_li_link_failure_count             0
    fpin_li_loss_of_signals_count          0
    fpin_li_loss_of_sync_count             0
    fpin_li_prim_seq_err_count             0
    invalid_crc_count                      0
    invalid_tx_word_count                  0
    link_failure_count                     0
    lip_count                              0
    loss_of_signal_count                   0
    loss_of_sync_count                     0
    nos_count                              0
    prim_seq_protocol_err_count            0
    rx_frames                         301422
    rx_words                       148230411
    seconds_since_last_reset          864000
    tx_frames                          88104
    tx_words                         9421870
  $ orfc counters host2 --sort -value | head -n 4
    COUNTER                       VALUE
  FC_21:01:00:24:ff:b2:0f:38
    seconds_since_last_reset     864000
    tx_words                       9024

With an interval, what moved in it.

  $ orfc counters host2 --interval 0.1 --count 3 --columns counter,value,increase
  COUNTER                       VALUE  INCREASE
  dumped_frames                     0         -
  error_frames                      0         -
  invalid_crc_count                 0         -
  invalid_tx_word_count             0         -
  link_failure_count                0         -
  lip_count                         0         -
  loss_of_signal_count              0         -
  loss_of_sync_count                0         -
  nos_count                         0         -
  prim_seq_protocol_err_count       0         -
  rx_frames                       398         -
  rx_words                       8613         -
  seconds_since_last_reset     864000         -
  tx_frames                       412         -
  tx_words                       9024         -
  
  COUNTER                    VALUE  INCREASE
  invalid_crc_count              1         1
  invalid_tx_word_count         12        12
  seconds_since_last_reset  864010        10
  
  COUNTER                    VALUE  INCREASE
  invalid_crc_count              2         1
  invalid_tx_word_count         24        12
  seconds_since_last_reset  864020        10

Answers in JSON are lines then.

  $ orfc counters host2 --interval 0.1 --count 3 -o json >lines
  $ wc -l <lines
  3
  $ tail -n 1 lines | grep -o '"counter":"[a-z_]*","value":[0-9]*,"increase":[0-9]*'
  "counter":"invalid_crc_count","value":2,"increase":1
  "counter":"invalid_tx_word_count","value":24,"increase":12
  "counter":"seconds_since_last_reset","value":864020,"increase":10
