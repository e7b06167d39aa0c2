--TEST--
The bundled agent's rows of history, hosts, reports, matrix, alarms, filters and capture survive a kill
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

$directory = sys_get_temp_dir() . '/rmon-state-' . getmypid();
register_shutdown_function(function () use ($directory) {
    array_map('unlink', glob("$directory/{,.}*[a-z]", GLOB_BRACE));
    @rmdir($directory);
});
$file = capture_file([[1.0, ethernet(mac(2), mac(1), 0x0800, 'x')]]);
$agent = reading_agent([$file], '--state', $directory);
$link = module_link($agent);

foreach ([CREATE_REQUEST, VALID] as $status) {
    expect_same(NO_ERROR, rmon_history_ctl_set($link, 40, 1, 7, 9, 'h', $status), 'history');
    expect_same(NO_ERROR, rmon_host_ctl_set($link, 3, 1, 'hosts', $status), 'hosts');
    expect_same(NO_ERROR, rmon_hosttopn_ctl_set($link, 4, 3, 2, 1000, 20, 'top', $status), 'Top-N');
    expect_same(NO_ERROR, rmon_matrix_ctl_set($link, 5, 1, 'matrix', $status), 'matrix');
    expect_same(NO_ERROR, rmon_event_set($link, 6, 'event', 2, 'public', 'me', $status), 'event');
    expect_same(NO_ERROR, rmon_channel_set($link, 7, 1, 1, 1, 6, 0, 6, 3, 'channel', 'me', $status), 'channel');
    expect_same(NO_ERROR, rmon_filter_set($link, 8, 7, 6, [2, 0], [255], [], 0, 0, 0, 'me', $status, 0, 0), 'filter');
    expect_same(NO_ERROR, rmon_buffer_ctl_set($link, 9, 7, 2, 64, 32, 1, 5000, 'me', $status), 'buffer');
    expect_same(
        NO_ERROR,
        rmon_alarm_set($link, 10, 3600, 'channelMatches.7', 1, 1, 5, 0, 6, 6, 'me', $status),
        'alarm',
    );
}
expect_same(NO_ERROR, rmon_matrix_ctl_set($link, 15, 99, 'later', CREATE_REQUEST), 'a row under creation');
expect_same(NO_ERROR, rmon_history_ctl_set($link, 2, 1, 50, 1800, '', INVALID), 'a row of the start');

/** All control rows, without what a new start begins anew. */
function control_rows(mixed $link): array
{
    $all = [];
    $tables = [
        'history_ctl' => 'historyControlIndex', 'host_ctl' => 'hostControlIndex', 'hosttopn_ctl' => 'hostTopNControlIndex',
        'matrix_ctl' => 'matrixControlIndex', 'event' => 'eventIndex', 'channel' => 'channelIndex', 'filter' => 'filterIndex',
        'buffer_ctl' => 'bufferControlIndex', 'alarm' => 'alarmIndex',
    ];
    $anew = [
        'hostTopNStartTime' => 0,
        'hostTopNTimeRemaining' => 0,
        'channelCreateTime' => 0,
        'bufferControlTurnOnTime' => 0,
    ];
    foreach ($tables as $table => $index) {
        for ($at = 0; ($row = "rmon_{$table}_getnext"($link, $at))['status'] === NO_ERROR; $at = $row[$index]) {
            $all[$table][] = array_diff_key($row, $anew);
        }
    }
    return $all;
}

$before = control_rows($link);
expect_same([1, 40], array_column($before['history_ctl'], 'historyControlIndex'), 'history rows');
end_agent($agent, 9);
rmon_close($link);
rmon_close($link); // the second one ends it: the link to the new agent is another one
$agent = reading_agent([$file], '--state', $directory);
$link = module_link($agent);
expect_same($before, control_rows($link), 'rows after a kill');

// They work.
read_files($agent);
expect_same(
    [2, 2.0],
    [count(rmon_host_getbulk($link, 3, [], 9)), 2.0 * rmon_matrix_sd_getnext($link, 5, [], [])['matrixSDPkts']],
    'what is learned',
);
expect_same(
    [1, 1],
    [rmon_channel_get($link, 7)['channelMatches'], rmon_buffer_ctl_get($link, 9)['bufferControlCapturedPackets']],
    'what is captured',
);
expect_same(true, rmon_hosttopn_ctl_get($link, 4)['hostTopNTimeRemaining'] > 900, 'the interval of the report');

agent_done($agent);
--EXPECT--
OK
