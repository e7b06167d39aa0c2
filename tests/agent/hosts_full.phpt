--TEST--
The bundled agent keeps 10000 hosts and conversations, and 1000 entries of an event's log; then the oldest are dropped
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

// Host 0 speaks to 10050 others, and before each hundredth of them to host 1.
$frames = [];
for ($i = 1; $i <= 10050; $i++) {
    if ($i % 100 === 0) {
        $frames[] = [1.0, ethernet(mac(1), mac(0), 0x0800, '')];
    }
    $frames[] = [1.0, ethernet(mac($i), mac(0), 0x0800, '')];
}
$agent = reading_agent([capture_file($frames)]);
$link = module_link($agent);
foreach (['host', 'matrix'] as $name) {
    expect_same(NO_ERROR, "rmon_{$name}_ctl_set"($link, 1, 1, '', CREATE_REQUEST), 'createRequest');
    expect_same(NO_ERROR, "rmon_{$name}_ctl_set"($link, 1, 1, '', VALID), 'valid');
}
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => rmon_event_set($link, 7, 'frame', 2, '', '', $status)),
    'an event that logs',
);
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => rmon_channel_set($link, 1, 1, 2, 1, 0, 0, 7, 3, '', '', $status)),
    'a channel that has it with each frame',
);
// A deletion at the time 0 would say that nothing was ever deleted.
expect_soon(true, fn() => rmon_system_get($link)['sysUpTime'] > 0, 'a time that is not 0');
read_files($agent);

// Hosts 2 to 52 are gone: 10051 were there.
$control = rmon_host_ctl_get($link, 1);
expect_same(10000, $control['hostControlTableSize'], 'hostControlTableSize');
expect_same(true, $control['hostControlLastDeleteTime'] > 0, 'hostControlLastDeleteTime');
$rows = rmon_host_getbulk($link, 1, [], 100000);
expect_same(10000, count($rows), 'rows of a reply');
$number = fn(array $address) => unpack('N', pack('C*', ...array_slice($address, 2)))[1];
expect_same(
    [0, 1, ...range(53, 10050)],
    array_map(fn($row) => $number($row['hostAddress']), $rows),
    'hosts that are left',
);
expect_same(
    [1, 2, 3, 10000],
    array_map(fn(int $i) => $rows[$i]['hostCreationOrder'], [0, 1, 2, 9999]),
    'creation orders',
);
expect_same([10150.0, 101.0, 1.0], [$rows[0]['hostOutPkts'], $rows[1]['hostInPkts'], $rows[2]['hostInPkts']], 'counts');
expect_same($rows[9999]['hostAddress'], rmon_hosttime_get($link, 1, 10000)['hostTimeAddress'], 'the last one found');
expect_same(10000, count(rmon_hosttime_getbulk($link, 0, 0, PHP_INT_MAX & 0x7fffffff)), 'rows by creation order');

// Of the conversations, one less: host 0 is in all of them.
$control = rmon_matrix_ctl_get($link, 1);
expect_same(10000, $control['matrixControlTableSize'], 'matrixControlTableSize');
expect_same(true, $control['matrixControlLastDeleteTime'] > 0, 'matrixControlLastDeleteTime');
$rows = rmon_matrix_sd_getbulk($link, 1, [], [], 100000);
expect_same(
    [1, ...range(52, 10050)],
    array_map(fn($row) => $number($row['matrixSDDestAddress']), $rows),
    'conversations that are left',
);

// The log has the last 1000 of 10050 and 100 frames.
expect_same(10150, rmon_channel_get($link, 1)['channelMatches'], 'frames');
expect_same(9151, rmon_log_getnext($link, 0, 0)['logIndex'], 'the first row of the log');
$logged = fn(int $index) => rmon_log_get($link, 7, $index)['status'];
expect_same(
    [NO_SUCH_NAME, NO_ERROR, NO_ERROR, NO_SUCH_NAME],
    array_map($logged, [9150, 9151, 10150, 10151]),
    'rows of the log',
);

// A walk of a full table ends, and meets the same rows.
for ($walked = 0, $at = []; $row = rmon_host_getnext($link, 1, $at); $at = $row['hostAddress']) {
    $walked++;
}
expect_same(10000, $walked, 'rows of a walk');

agent_done($agent);
--EXPECT--
OK
