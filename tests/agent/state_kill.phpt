--TEST--
Whatever is set in the bundled agent, a kill at any moment leaves what was answered, and nothing half done
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/rmon2.inc';

$directory = sys_get_temp_dir() . '/rmon-kill-' . getmypid();
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);
$file = capture_file([]);

/** The agent with the directory, and a link under a name of the host that was not used yet. */
function started(int $round): array
{
    global $directory, $file;
    $host = "127.0.1.$round";
    $agent = reading_agent([$file], '--state', $directory, '--listen', $host, '--netflow', '0');
    ini_set('rmon.default_port', (string) $agent->port);
    return [$agent, rmon_connect($host)];
}

$web = protocol_key(1, 0x800, 6, 80);
$device = [10, 0, 0, 5];
/**
 * What can be set, each with a number: set it, with the row status where there is one; read it. The names are those
 * of the parts of the settings file, in their order.
 */
$things = [
    'system' => [fn($link, $n) => rmon_system_set($link, "n$n", 'probe', 'here'), fn($link) => rmon_system_get($link)['sysContact']],
    'etherStats' => [fn($link, $n, $status) => rmon_etherstats_set($link, 9, 1, "n$n", $status), fn($link) => rmon_etherstats_get($link, 9)['etherStatsOwner']],
    'history' => [fn($link, $n, $status) => rmon_history_ctl_set($link, 9, 1, 10, 100, "n$n", $status), fn($link) => rmon_history_ctl_get($link, 9)['historyControlOwner']],
    'host' => [fn($link, $n, $status) => rmon_host_ctl_set($link, 9, 1, "n$n", $status), fn($link) => rmon_host_ctl_get($link, 9)['hostControlOwner']],
    'hostTopN' => [fn($link, $n, $status) => rmon_hosttopn_ctl_set($link, 9, 9, 1, 0, 10, "n$n", $status), fn($link) => rmon_hosttopn_ctl_get($link, 9)['hostTopNOwner']],
    'matrix' => [fn($link, $n, $status) => rmon_matrix_ctl_set($link, 9, 1, "n$n", $status), fn($link) => rmon_matrix_ctl_get($link, 9)['matrixControlOwner']],
    'event' => [fn($link, $n, $status) => rmon_event_set($link, 9, '', 2, '', "n$n", $status), fn($link) => rmon_event_get($link, 9)['eventOwner']],
    'channel' => [fn($link, $n, $status) => rmon_channel_set($link, 9, 1, 2, 1, 0, 0, 9, 1, '', "n$n", $status), fn($link) => rmon_channel_get($link, 9)['channelOwner']],
    'filter' => [fn($link, $n, $status) => rmon_filter_set($link, 9, 9, 0, [1], [2], [3], 0, 0, 0, "n$n", $status, 0, 0), fn($link) => rmon_filter_get($link, 9)['filterOwner']],
    'buffer' => [fn($link, $n, $status) => rmon_buffer_ctl_set($link, 9, 9, 1, 0, 0, 0, 1000, "n$n", $status), fn($link) => rmon_buffer_ctl_get($link, 9)['bufferControlOwner']],
    'alarm' => [fn($link, $n, $status) => rmon_alarm_set($link, 9, 10, 'ifMtu.1', 1, 1, 100000, 1, 9, 9, "n$n", $status), fn($link) => rmon_alarm_get($link, 9)['alarmOwner']],
    'addresses' => [
        fn($link, $n) => @rmon_set_ipconfig(
            $link,
            '10.' . ($n >> 16 & 255) . '.' . ($n >> 8 & 255) . '.' . ($n & 255),
            '255.0.0.0',
            '10.255.255.255',
            '10.0.0.1',
        ),
        fn($link) => 'n' . (ip2long(rmon_get_ipconfig($link)['ipAddress']) & 0xffffff),
    ],
    'hostName' => [fn($link, $n) => @rmon_set_hostname($link, "n$n"), fn() => host_name()],
    'resolvers' => [fn($link, $n) => @rmon_set_resolvers($link, ['10.0.0.1', '10.0.' . ($n >> 8) . '.' . ($n & 255)]), fn($link) => 'n' . (ip2long(rmon_get_resolvers($link)[1]) & 0xffff)],
    'trapDest' => [fn($link, $n, $status) => rmon_trapdest_set($link, 9, 'public', 1, $device, "n$n", $status), fn($link) => rmon_trapdest_get($link, 9)['trapDestOwner']],
    'communities' => [fn($link, $n) => rmon_community_set($link, 'public', 1 + $n % 2), fn($link) => 'n' . (rmon_community_get($link, 'public')['privs'] - 1)],
    'protocols' => [fn($link, $n) => rmon_pdir_set($link, ...[...$web, "n$n", 1, 3, 2, 3, 'me', VALID]), fn($link) => rmon_pdir_get($link, ...$web)['protocolDirDescr']],
    'addressMap' => [fn($link, $n) => rmon_addrmap_scalars_set($link, $n), fn($link) => 'n' . rmon_addrmap_scalars_get($link)['addressMapMaxDesiredEntries']],
    'addressMapControl' => [fn($link, $n, $status) => rmon_addrmap_ctl_set($link, 9, 1, "n$n", $status), fn($link) => rmon_addrmap_ctl_get($link, 9)['addressMapControlOwner']],
    'protocolDist' => [fn($link, $n, $status) => rmon_pdist_ctl_set($link, 9, 1, "n$n", $status), fn($link) => rmon_pdist_ctl_get($link, 9)['protocolDistControlOwner']],
    'hlHost' => [fn($link, $n, $status) => rmon_hlhost_ctl_set($link, 9, 1, 10, -1, "n$n", $status), fn($link) => rmon_hlhost_ctl_get($link, 9)['hlHostControlOwner']],
    'hlMatrix' => [fn($link, $n, $status) => rmon_hlmatrix_ctl_set($link, 9, 1, 10, -1, "n$n", $status), fn($link) => rmon_hlmatrix_ctl_get($link, 9)['hlMatrixControlOwner']],
    'dsmonAggControl' => [fn($link, $n, $status) => dsmon_aggctl_set($link, 9, "n$n", 'gold', $status), fn($link) => dsmon_aggctl_get($link, 9)['dsmonAggControlOwner']],
    'dsmonAggGroup' => [fn($link, $n, $status) => dsmon_aggrp_set($link, 9, 5, "n$n", $status), fn($link) => dsmon_aggrp_get($link, 9, 5)['dsmonAggGroupDescr']],
    'dsmonAggProfile' => [fn($link, $n) => dsmon_aggprof_set($link, 9, 46, 1 + $n % 63), fn($link) => 'n' . dsmon_aggprofs_get($link, 9)[46]],
    'dsmonStatsControl' => [fn($link, $n, $status) => dsmon_statsctl_set($link, 9, 1, 9, "n$n", $status), fn($link) => dsmon_statsctl_get($link, 9)['dsmonStatsControlOwner']],
    'dsmonPdistCtl' => [fn($link, $n, $status) => dsmon_pdistctl_set($link, 9, 1, 9, "n$n", $status, 10), fn($link) => dsmon_pdistctl_get($link, 9)['dsmonPdistCtlOwner']],
    'dsmonHostCtl' => [fn($link, $n, $status) => dsmon_hostctl_set($link, 9, 1, 9, "n$n", $status, 10), fn($link) => dsmon_hostctl_get($link, 9)['dsmonHostCtlOwner']],
    'dsmonMatrixCtl' => [fn($link, $n, $status) => dsmon_matrixctl_set($link, 9, 1, 9, "n$n", $status, 10), fn($link) => dsmon_matrixctl_get($link, 9)['dsmonMatrixCtlOwner']],
    'smonVlanStatsControl' => [fn($link, $n, $status) => rmon_vlan_ctl_set($link, 9, 1, "n$n", $status), fn($link) => rmon_vlan_ctl_get($link, 9)['smonVlanStatsControlOwner']],
    'smonPrioStatsControl' => [fn($link, $n, $status) => rmon_prio_ctl_set($link, 9, 1, "n$n", $status), fn($link) => rmon_prio_ctl_get($link, 9)['smonPrioStatsControlOwner']],
    'artControl' => [fn($link, $n, $status) => rmon_art_ctl_set($link, 9, 1, 0, 1, 2, 3, 4, 5, 6, 7, -1, "n$n", $status), fn($link) => rmon_art_ctl_get($link, 9)['artControlOwner']],
    'ndeDevice' => [fn($link, $n) => rmon_nde_device_set($link, $device, 'public', "n$n"), fn($link) => rmon_nde_device_get($link, $device)['devices'][0]['deviceName']],
    'ndeDatasrc' => [fn($link, $n) => rmon_nde_datasrc_mod($link, $device, 1, "n$n"), fn($link) => rmon_nde_datasrc_get($link, $device, 1)['datasrcs'][0]['datasrcName']],
    'ndeFlowPath' => [fn($link, $n) => rmon_nde_flow_path_set($link, $device, 1, 2, 3), fn($link) => 'n' . count(rmon_nde_flow_path_getbulk($link, [], 0, 0, 0, 10)['flowPaths'])],
    'ndeLearning' => [
        fn($link, $n) => $n % 2 ? rmon_nde_learned_dev_enable($link) : rmon_nde_learned_dev_disable($link),
        fn($link) => 'n' . rmon_nde_learned_dev_status($link)['state'],
    ],
    'sccp' => [fn($link, $n) => sccp_voice_coll_thresholds_set($link, $n, 5), fn($link) => 'n' . sccp_config_params_get($link)['jitter_threshold']],
    'h323' => [fn($link, $n) => h323_voice_coll_thresholds_set($link, $n, 5), fn($link) => 'n' . h323_config_params_get($link)['jitter_threshold']],
    'mgcp' => [fn($link, $n) => [error_clear_last(), @mgcp_voice_coll_thresholds_set($link, $n, 5), error_get_last()] === [null, 0, null] ? 0 : false, fn($link) => 'n' . mgcp_config_params_get($link)['jitter_threshold']],
];
// What has few values: the number as it is read.
$shown = [
    'communities' => fn(int $n) => $n % 2,
    'dsmonAggProfile' => fn(int $n) => 1 + $n % 63,
    'ndeFlowPath' => fn() => 1,
    'ndeLearning' => fn(int $n) => $n % 2,
];
$shown = fn(string $thing, int $n) => 'n' . ($shown[$thing] ?? fn(int $n) => $n)($n);

/** No function of the module asks for it. */
function host_name(): string
{
    global $agent, $round;
    $socket = stream_socket_client("tcp://127.0.1.$round:$agent->port", $code, $reason, PATIENCE);
    stream_set_timeout($socket, PATIENCE);
    $fields = result_of(ask($socket, 64));
    $fields->i32();
    return $fields->text();
}

$n = 0;
$round = 1;
[$agent, $link] = started($round);
expect_same(0, rmon_nde_device_set($link, $device, 'public', 'n0'), 'a device');
expect_same(0, rmon_nde_datasrc_set($link, $device, 'n0'), 'a data source');
foreach ($things as $thing => [$set]) {
    $n++;
    $has_status = (new ReflectionFunction($set))->getNumberOfParameters() === 3;
    expect_same(
        0,
        $has_status ? start_row(fn(int $status) => $set($link, $n, $status)) : $set($link, $n),
        "$thing for the first time",
    );
    $answered[$thing] = $n;
}

// Killed in the middle of sets.
for (; $round <= 10; $round++) {
    [$agent, $link] = $round === 1 ? [$agent, $link] : started($round);
    foreach ($things as $thing => [, $read]) {
        $allowed = [$shown($thing, $answered[$thing])];
        if ($thing === ($unanswered ?? null)) {
            $allowed[] = $shown($thing, $n);
        }
        $got = $read($link);
        if (!in_array($got, $allowed, true)) {
            fail("round $round: $thing has $got, not " . implode(' or ', $allowed));
        }
        $answered[$thing] = $got === $shown($thing, $answered[$thing]) ? $answered[$thing] : $n;
    }
    if ($round === 10) {
        break;
    }
    $delay = 0.05 + 0.03 * $round;
    $killer = proc_open(['sh', '-c', "sleep $delay; kill -9 {$agent->pid()}"], [], $pipes, null, environment());
    for ($unanswered = null, $names = array_keys($things), $at = 0; $unanswered === null; $at++) {
        $thing = $names[$at % count($names)];
        $n++;
        if (@$things[$thing][0]($link, $n, VALID) === 0) {
            $answered[$thing] = $n;
        } else {
            $unanswered = $thing;
        }
    }
    proc_close($killer);
    end_agent($agent, 9);
}

// Each part of the file has a record now; what is read from it is written as it was.
expect_same(0, dsmon_aggctl_set_lock($link, 1), 'lock');
$kept = file_get_contents("$directory/settings");
preg_match_all('/^(\S+) [0-9a-f]+ [0-9a-f]{8}$/m', $kept, $parts);
preg_match_all('/^(\S+) [0-9a-f]{8}$/m', $kept, $names);
expect_same([], array_diff($names[1], $parts[1], ['end']), 'parts without a record');
expect_same([], array_diff($parts[1], array_keys($things), ['dsmonAggControlLocked']), 'parts that are not tested');
end_agent($agent, 9);
[$agent, $link] = started(++$round);
$texts = rmon_system_get($link);
expect_same(0, rmon_system_set($link, 'changed', $texts['sysName'], $texts['sysLocation']), 'a change');
expect_same(false, $kept === file_get_contents("$directory/settings"), 'the file with it');
expect_same(0, rmon_system_set($link, $texts['sysContact'], $texts['sysName'], $texts['sysLocation']), 'and back');
expect_same($kept, file_get_contents("$directory/settings"), 'the file');

expect_same(0, end_agent($agent), 'exit code');
done();
--EXPECT--
OK
