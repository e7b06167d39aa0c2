--TEST--
Every function: its place in the list, its parameters, its page, and that it refuses wrong counts
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/agent.inc';

/** All functions in their order, family by family, with the number of their parameters (optional ones: least-most). */
const FUNCTIONS = <<<'LIST'
    rmon_connect(1) rmon_pconnect(1) rmon_close(0-1)

    rmon_system_get(1) rmon_system_set(4) rmon_ifentry_get(2) rmon_ifentry_getnext(2)

    rmon_etherstats_get(2) rmon_etherstats_getnext(2) rmon_etherstats_set(5)

    rmon_history_ctl_get(2) rmon_history_ctl_getnext(2) rmon_history_ctl_set(7)
    rmon_etherhistory_get(3) rmon_etherhistory_getnext(3) rmon_etherhistory_getbulk(4)

    rmon_host_ctl_get(2) rmon_host_ctl_getnext(2) rmon_host_ctl_set(5)
    rmon_host_get(3) rmon_host_getnext(3) rmon_host_getbulk(4)
    rmon_hosttime_get(3) rmon_hosttime_getnext(3) rmon_hosttime_getbulk(4)

    rmon_hosttopn_ctl_get(2) rmon_hosttopn_ctl_getnext(2) rmon_hosttopn_ctl_set(8)
    rmon_hosttopn_get(3) rmon_hosttopn_getnext(3) rmon_hosttopn_getbulk(4)

    rmon_matrix_ctl_get(2) rmon_matrix_ctl_getnext(2) rmon_matrix_ctl_set(5)
    rmon_matrix_sd_get(4) rmon_matrix_sd_getnext(4) rmon_matrix_sd_getbulk(5)
    rmon_matrix_ds_get(4) rmon_matrix_ds_getnext(4) rmon_matrix_ds_getbulk(5)

    rmon_pdir_lastchange_get(1)
    rmon_pdir_get(3) rmon_pdir_getnext(3) rmon_pdir_getbulk(4) rmon_pdir_set(10)
    rmon_pdir_byidx_get(2) rmon_pdir_byidx_getnext(2)

    rmon_pdist_ctl_get(2) rmon_pdist_ctl_getnext(2) rmon_pdist_ctl_set(5)
    rmon_pdist_stats_get(3) rmon_pdist_stats_getnext(3) rmon_pdist_stats_getbulk(4) rmon_pdist_stats_getothers(2)

    rmon_addrmap_scalars_get(1) rmon_addrmap_scalars_set(2)
    rmon_addrmap_ctl_get(2) rmon_addrmap_ctl_getnext(2) rmon_addrmap_ctl_set(5)
    rmon_addrmap_entry_get(5) rmon_addrmap_entry_getnext(5) rmon_addrmap_entry_getbulk(6)

    rmon_hlhost_ctl_get(2) rmon_hlhost_ctl_getnext(2) rmon_hlhost_ctl_set(7)
    rmon_nlhost_get(5) rmon_nlhost_getnext(5) rmon_nlhost_getbulk(6)
    rmon_alhost_get(6) rmon_alhost_getnext(6) rmon_alhost_getbulk(7)

    rmon_hlmatrix_ctl_get(2) rmon_hlmatrix_ctl_getnext(2) rmon_hlmatrix_ctl_set(7)
    rmon_nlmatrix_sd_get(6) rmon_nlmatrix_sd_getnext(6) rmon_nlmatrix_sd_getbulk(7)
    rmon_nlmatrix_ds_get(6) rmon_nlmatrix_ds_getnext(6) rmon_nlmatrix_ds_getbulk(7)
    rmon_almatrix_sd_get(7) rmon_almatrix_sd_getnext(7) rmon_almatrix_sd_getbulk(8)
    rmon_almatrix_ds_get(7) rmon_almatrix_ds_getnext(7) rmon_almatrix_ds_getbulk(8)

    rmon_alarm_get(2) rmon_alarm_getnext(2) rmon_alarm_set(12)
    rmon_event_get(2) rmon_event_getnext(2) rmon_event_set(7)
    rmon_log_get(3) rmon_log_getnext(3)

    rmon_trapdest_get(2) rmon_trapdest_getnext(2) rmon_trapdest_set(7) rmon_get_mib_var(2)

    rmon_gethostname(0)

    rmon_getprotdesc(1)

    rmon_get_ipconfig(1) rmon_set_ipconfig(5-6) rmon_get_hostname(0) rmon_set_hostname(2)
    rmon_get_resolvers(1) rmon_set_resolvers(2)

    dsmon_stats_get(3) dsmon_stats_getnext(3)
    dsmon_statsctl_get(2) dsmon_statsctl_getnext(2) dsmon_statsctl_set(6)

    dsmon_aggctl_get(2) dsmon_aggctl_getnext(2) dsmon_aggctl_set(5)
    dsmon_aggrp_get(3) dsmon_aggrp_getnext(3) dsmon_aggrp_set(5)
    dsmon_aggprofs_get(2) dsmon_aggprof_set(4) dsmon_aggctl_locked(1) dsmon_aggctl_set_lock(2)

    dsmon_pdistctl_get(2) dsmon_pdistctl_getnext(2) dsmon_pdistctl_set(7)
    dsmon_hostctl_get(2) dsmon_hostctl_getnext(2) dsmon_hostctl_set(7)
    dsmon_pdstats_get(5) dsmon_pdstats_getnext(5)
    dsmon_hoststats_get(6) dsmon_hoststats_getnext(6)

    dsmon_matrixctl_get(2) dsmon_matrixctl_getnext(2) dsmon_matrixctl_set(7)
    dsmon_matrixsdstats_get(8) dsmon_matrixsdstats_getnext(8)
    dsmon_matrixdsstats_get(8) dsmon_matrixdsstats_getnext(8)

    rmon_vlan_ctl_get(2) rmon_vlan_ctl_getnext(2) rmon_vlan_ctl_set(5) rmon_vlan_get(3) rmon_vlan_getnext(3)
    rmon_prio_ctl_get(2) rmon_prio_ctl_getnext(2) rmon_prio_ctl_set(5) rmon_prio_get(3) rmon_prio_getnext(3)

    rmon_filter_get(2) rmon_filter_getnext(2) rmon_filter_set(14)
    rmon_channel_get(2) rmon_channel_getnext(2) rmon_channel_set(12)

    rmon_buffer_ctl_get(2) rmon_buffer_ctl_getnext(2) rmon_buffer_ctl_set(10)
    rmon_capture_buf_get(3) rmon_capture_buf_getnext(3) rmon_capture_save_file(6)

    rmon_art_ctl_get(2) rmon_art_ctl_getnext(2) rmon_art_ctl_set(14)
    rmon_art_rpt_get(5) rmon_art_rpt_getnext(5) rmon_art_rpt_getbulk(6)
    rmon_art_sum_get(4) rmon_art_sum_getnext(4) rmon_art_sum_getbulk(5)

    confirm_rmon_compiled(1)

    sccp_config_params_get(1) sccp_aggregate_data_get(1)
    sccp_voice_coll_table_sizes_set(5) sccp_voice_coll_thresholds_set(3)
    sccp_voice_coll_enable(1) sccp_voice_coll_disable(1)
    sccp_voice_jitter_alarm_enable(1) sccp_voice_jitter_alarm_disable(1)
    sccp_voice_pkt_lost_alarm_enable(1) sccp_voice_pkt_lost_alarm_disable(1)
    sccp_voice_latency_alarm_enable(1) sccp_voice_latency_alarm_disable(1)
    sccp_voice_phone_table_clear(1) sccp_voice_call_table_clear(1)
    sccp_voice_top_jitter_table_clear(1) sccp_voice_top_pkt_lost_table_clear(1) sccp_voice_top_latency_table_clear(1)
    sccp_phone_rec_get(2) sccp_phone_rec_getnext(2) sccp_phone_rec_getbulk(3)
    sccp_call_rec_get(2) sccp_call_rec_getnext(2) sccp_call_rec_getbulk(3)
    sccp_top_jitter_rec_get(2) sccp_top_jitter_rec_getnext(2) sccp_top_jitter_rec_getbulk(3)
    sccp_top_pkt_lost_rec_get(2) sccp_top_pkt_lost_rec_getnext(2) sccp_top_pkt_lost_rec_getbulk(3)
    sccp_top_latency_rec_get(2) sccp_top_latency_rec_getnext(2) sccp_top_latency_rec_getbulk(3)

    h323_config_params_get(1) h323_aggregate_data_get(1)
    h323_voice_coll_table_sizes_set(5) h323_voice_coll_thresholds_set(3)
    h323_voice_coll_enable(1) h323_voice_coll_disable(1)
    h323_voice_jitter_alarm_enable(1) h323_voice_jitter_alarm_disable(1)
    h323_voice_pkt_lost_alarm_enable(1) h323_voice_pkt_lost_alarm_disable(1)
    h323_voice_phone_table_clear(1) h323_voice_call_table_clear(1)
    h323_voice_top_jitter_table_clear(1) h323_voice_top_pkt_lost_table_clear(1)
    h323_phone_rec_get(2) h323_phone_rec_getnext(2) h323_phone_rec_getbulk(3)
    h323_call_rec_get(2) h323_call_rec_getnext(2) h323_call_rec_getbulk(3)
    h323_top_jitter_rec_get(2) h323_top_jitter_rec_getnext(2) h323_top_jitter_rec_getbulk(3)
    h323_top_pkt_lost_rec_get(2) h323_top_pkt_lost_rec_getnext(2) h323_top_pkt_lost_rec_getbulk(3)

    mgcp_config_params_get(1) mgcp_aggregate_data_get(1)
    mgcp_voice_coll_table_sizes_set(5) mgcp_voice_coll_thresholds_set(3)
    mgcp_voice_coll_enable(1) mgcp_voice_coll_disable(1)
    mgcp_voice_jitter_alarm_enable(1) mgcp_voice_jitter_alarm_disable(1)
    mgcp_voice_pkt_lost_alarm_enable(1) mgcp_voice_pkt_lost_alarm_disable(1)
    mgcp_voice_latency_alarm_enable(1) mgcp_voice_latency_alarm_disable(1)
    mgcp_voice_phone_table_clear(1) mgcp_voice_call_table_clear(1)
    mgcp_voice_top_jitter_table_clear(1) mgcp_voice_top_pkt_lost_table_clear(1) mgcp_voice_top_latency_table_clear(1)
    mgcp_phone_rec_get(2) mgcp_phone_rec_getnext(2) mgcp_phone_rec_getbulk(3)
    mgcp_call_rec_get(2) mgcp_call_rec_getnext(2) mgcp_call_rec_getbulk(3)
    mgcp_top_jitter_rec_get(2) mgcp_top_jitter_rec_getnext(2) mgcp_top_jitter_rec_getbulk(3)
    mgcp_top_pkt_lost_rec_get(2) mgcp_top_pkt_lost_rec_getnext(2) mgcp_top_pkt_lost_rec_getbulk(3)
    mgcp_top_latency_rec_get(2) mgcp_top_latency_rec_getnext(2) mgcp_top_latency_rec_getbulk(3)

    rmon_community_get(2) rmon_community_getnext(2) rmon_community_getbulk(3)
    rmon_community_set(3) rmon_community_delete(2)

    rmon_nde_device_get(2) rmon_nde_device_getnext(2) rmon_nde_device_getbulk(3)
    rmon_nde_device_set(4) rmon_nde_device_del(2)
    rmon_nde_datasrc_get(3) rmon_nde_datasrc_getnext(3) rmon_nde_datasrc_getbulk(4)
    rmon_nde_datasrc_set(3) rmon_nde_datasrc_mod(4) rmon_nde_datasrc_del(3)
    rmon_nde_flow_path_get(5) rmon_nde_flow_path_getnext(5) rmon_nde_flow_path_getbulk(6)
    rmon_nde_flow_path_set(5) rmon_nde_flow_path_del(5)

    rmon_nde_learned_dev_get(2) rmon_nde_learned_dev_getnext(2) rmon_nde_learned_dev_getbulk(3)
    rmon_nde_learned_dev_enable(1) rmon_nde_learned_dev_disable(1) rmon_nde_learned_dev_status(1)
    rmon_nde_learned_dev_intf_get(3) rmon_nde_learned_dev_intf_getnext(3) rmon_nde_learned_dev_intf_getbulk(4)

    rmon_inet_pton(2) rmon_inet_ntop(2) norv_target_id(0) norv_prod_descr(0) norv_prod_no(0)
    LIST;

/** Functions that look at no argument and count none. */
const INDIFFERENT = ['rmon_gethostname', 'rmon_get_hostname', 'norv_target_id', 'norv_prod_descr', 'norv_prod_no'];

preg_match_all('/(\w+)\((\d+)(?:-(\d+))?\)/', FUNCTIONS, $found, PREG_SET_ORDER);
$counts = [];
foreach ($found as $entry) {
    $counts[$entry[1]] = [(int) $entry[2], (int) ($entry[3] ?? $entry[2])];
}
expect_same([295, 295], [count($found), count($counts)]);
expect_same(array_keys($counts), get_extension_funcs('rmon'), 'list of functions');

// ---- parameters: as many as the list says, with names, and none that must be passed by reference

$parameters = [];
foreach (get_extension_funcs('rmon') as $name) {
    $function = new ReflectionFunction($name);
    $seen = [$function->getNumberOfRequiredParameters(), $function->getNumberOfParameters()];
    expect_same($counts[$name] ?? null, $seen, "number of parameters of $name");
    $parameters[$name] = array_map(fn(ReflectionParameter $each) => $each->getName(), $function->getParameters());
    expect_same(array_unique($parameters[$name]), $parameters[$name], "parameters of $name");
    foreach ($function->getParameters() as $parameter) {
        expect_same(true, $parameter->canBePassedByValue(), "$name takes {$parameter->getName()} by value");
    }
}

// ---- counts: all smaller ones and two larger ones are refused, before anything is looked at

foreach (get_extension_funcs('rmon') as $name) {
    [$least, $most] = $counts[$name] ?? [0, 0];
    $wrong = in_array($name, INDIFFERENT, true) ? [] : [...array_keys(array_fill(0, $least, 0)), $most + 1, $most + 2];
    foreach ($wrong as $count) {
        $arguments = array_fill(0, $count, "no argument of $name");
        $outcome = warnings(fn() => $name(...$arguments));
        expect_same(
            [null, [[E_WARNING, "Wrong parameter count for $name()"]]],
            $outcome,
            "$name with $count arguments",
        );
    }
}
foreach (INDIFFERENT as $name) {
    foreach ([[], [1], [1, [], 'x']] as $arguments) {
        [$value, $messages] = warnings(fn() => $name(...$arguments));
        expect_same(true, is_string($value) || is_int($value), "$name");
        // The settings file may be missing here, which other tests are about.
        expect_same([], preg_grep('/count/', array_column($messages, 1)), "$name");
    }
}

// ---- pages: what a function does, a line for each of its parameters, what it returns

$stub = file_get_contents(dirname(__DIR__) . '/rmon/rmon.stub.php');
preg_match_all(
    '~(?:^/\*\*\n((?: \*[^\n]*\n)+?) \*/\n)?^function (\w+)\(([^)]*)\)\s*\{\s*\}$~m',
    $stub,
    $pages,
    PREG_SET_ORDER,
);
expect_same(array_keys($counts), array_column($pages, 2), 'list of pages');
expect_same(substr_count($stub, "\nfunction "), count($pages));
foreach ($pages as [, $page, $name, $declared]) {
    $page = preg_replace('/^ \* ?/m', '', $page);
    $tags = preg_split('/^(?=@)/m', $page);
    expect_same(1, preg_match('/^[A-Z][^@]*?\.(\s|$)/', array_shift($tags)), "first sentence about $name");

    preg_match_all('/\$(\w+)( = UNKNOWN)?/', $declared, $variables);
    expect_same($parameters[$name] ?? null, $variables[1], "parameters in the page of $name");
    $described = [];
    $returns = 0;
    foreach ($tags as $tag) {
        if (preg_match('/^@param\s+[^\s$]\S*\s+\$(\w+)/', $tag, $variable)) {
            $described[] = $variable[1];
        } elseif (preg_match('/^@return\s+\S/', $tag)) {
            $returns++;
        } elseif (!preg_match('/^@prefer-ref \$(\w+)$/D', trim($tag), $variable) || !in_array($variable[1], $described, true)) {
            fail("the page of $name has an odd line", $tag);
        }
    }
    expect_same($variables[1], $described, "descriptions of the parameters of $name");
    expect_same(1, $returns, "descriptions of the result of $name");
}
done();
--EXPECT--
OK
