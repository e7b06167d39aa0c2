<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Arguments of examples by function, those behind the link, where they don't follow from a table's first row.
 */

$sizes = [100, 200, 20, 20];

return [
    'rmon_connect' => ['127.0.0.1'],
    'rmon_pconnect' => ['127.0.0.1'],
    'rmon_close' => [],
    'rmon_get_mib_var' => ['etherStatsPkts.1'],
    'rmon_getprotdesc' => ['ip'],
    'rmon_set_hostname' => ['probe'],
    'rmon_set_resolvers' => [['10.0.30.53']],
    'rmon_set_ipconfig' => ['10.0.30.2', '255.255.255.0', '10.0.30.255', '10.0.30.1'],
    'rmon_capture_save_file' => ['names.pcap', 1, 0, 0, 0],
    'rmon_community_delete' => ['public'],
    'dsmon_aggctl_set_lock' => [2],
    'dsmon_aggrp_set' => [1, 0, 'usual', 1],
    'sccp_voice_coll_table_sizes_set' => $sizes,
    'h323_voice_coll_table_sizes_set' => $sizes,
    'mgcp_voice_coll_table_sizes_set' => $sizes,
    'sccp_voice_coll_thresholds_set' => [30, 5],
    'h323_voice_coll_thresholds_set' => [30, 5],
    'mgcp_voice_coll_thresholds_set' => [30, 5],
    'mgcp_top_latency_rec_get' => [1],
    'confirm_rmon_compiled' => ['rmon'],
    'norv_target_id' => [],
    'norv_prod_descr' => [],
    'norv_prod_no' => [],
];
