--TEST--
The bundled agent's aggregation, its lock and the rows that count survive a kill
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

$directory = sys_get_temp_dir() . '/rmon-agent-state-' . getmypid();
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);
$frame = ethernet(
    mac(2),
    mac(1),
    0x0800,
    ip4('10.0.0.1', '10.0.0.2', 17, udp(1, 2, str_repeat('x', 100)), 46),
    5 << 13 | 7,
);
$file = capture_file([[1.0, $frame], [1.1, $frame], [1.2, $frame]]);

$agent = reading_agent([$file], '--state', $directory);
$link = module_link($agent);
expect_same(0, dsmon_aggctl_set($link, 3, 'me', 'gold', CREATE_REQUEST), 'profile');
expect_same(0, dsmon_aggctl_set($link, 3, 'me', 'gold', VALID), 'profile, valid');
expect_same(0, dsmon_aggctl_set($link, 4, 'you', 'silver', CREATE_REQUEST), 'profile under creation');
expect_same(0, dsmon_aggrp_set($link, 3, 2, 'voice', CREATE_REQUEST), 'group');
expect_same(0, dsmon_aggrp_set($link, 3, 0, 'rest', CREATE_REQUEST), 'group 0');
expect_same(0, dsmon_aggprof_set($link, 3, 46, 2), 'DSCP 46');
expect_same(0, dsmon_aggprof_set($link, 4, 63, 63), 'DSCP 63');
$sets = [
    'dsmon_statsctl_set' => [7, 1, 3, 'me'], 'dsmon_pdistctl_set' => [7, 1, 3, 'me'],
    'dsmon_hostctl_set' => [7, 1, 3, 'me'], 'dsmon_matrixctl_set' => [7, 1, 3, 'me'],
    'rmon_vlan_ctl_set' => [7, 1, 'me'], 'rmon_prio_ctl_set' => [7, 1, 'me'],
    'rmon_art_ctl_set' => [7, 1, 60, 1, 2, 3, 4, 5, 6, 7, -1, 'me'],
];
foreach ($sets as $set => $arguments) {
    $most = str_starts_with($set, 'dsmon_') && $set !== 'dsmon_statsctl_set' ? [500] : [];
    expect_same(0, $set($link, ...$arguments, ...[CREATE_REQUEST], ...$most), "$set: createRequest");
    expect_same(0, $set($link, ...$arguments, ...[VALID], ...$most), "$set: valid");
    $arguments[0] = 8;
    expect_same(0, $set($link, ...$arguments, ...[CREATE_REQUEST], ...$most), "$set: another row");
}
expect_same(0, dsmon_aggctl_set_lock($link, 1), 'lock');

/** All that should survive. */
function settings(mixed $link): array
{
    $settings = [
        dsmon_aggctl_locked($link), dsmon_aggprofs_get($link, 3), dsmon_aggprofs_get($link, 4),
        dsmon_aggrp_get($link, 3, 0), dsmon_aggrp_get($link, 3, 2),
    ];
    foreach ([
        'dsmon_aggctl' => [3, 4, 5], 'dsmon_statsctl' => [7, 8], 'dsmon_pdistctl' => [7, 8],
        'dsmon_hostctl' => [7, 8], 'dsmon_matrixctl' => [7, 8], 'rmon_vlan_ctl' => [7, 8], 'rmon_prio_ctl' => [7, 8],
        'rmon_art_ctl' => [7, 8],
    ] as $table => $indexes) {
        foreach ($indexes as $index) {
            $row = "{$table}_get"($link, $index);
            $settings[] = array_filter(
                $row,
                fn($name) => !preg_match('/Time$|Remaining$/', (string) $name),
                ARRAY_FILTER_USE_KEY,
            );
        }
    }
    return $settings;
}
$settings = settings($link);
expect_same(500, dsmon_matrixctl_get($link, 7)['dsmonMatrixCtlMaxDesiredEntries'], 'a size');
end_agent($agent, 9);
rmon_close($link);
rmon_close($link); // the second one ends it: the link to the new agent is another one

$agent = reading_agent([$file], '--state', $directory);
$link = module_link($agent);
expect_same($settings, settings($link), 'settings after the kill');
read_files($agent);
expect_same(3.0, dsmon_stats_get($link, 7, 2)['dsmonStatsInHCPkts'], 'statistics count');
expect_same(3.0, rmon_vlan_get($link, 7, 7)['smonVlanIdStatsTotalPkts'], 'VLANs count');
expect_same(3.0, rmon_prio_get($link, 7, 5)['smonPrioStatsPkts'], 'priorities count');

agent_done($agent);
--EXPECT--
OK
