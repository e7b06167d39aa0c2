--TEST--
Hosts and pairs by DSCP: as many rows as were asked for, also beyond what -1 gives
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/flood.inc';

const PAIRS = 15000; // and twice as many hosts
const DESIRED = [1 => -1, 2 => 20000, 3 => 40000];

$agent = reading_agent([flood_file(PAIRS)]);
$link = module_link($agent);
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => dsmon_aggctl_set($link, 1, 'me', 'all in one group', $status)),
    'profile',
);
foreach (DESIRED as $row => $most) {
    foreach (['dsmon_hostctl_set', 'dsmon_matrixctl_set'] as $set) {
        expect_same(
            NO_ERROR,
            start_row(fn(int $status) => $set($link, $row, 1, 1, 'me', $status, $most)),
            "$set of row $row",
        );
    }
}
expect_same(NO_ERROR, dsmon_aggctl_set_lock($link, 1), 'lock');
read_files($agent);

foreach ([1 => [20000, 5000], 2 => [10000, 0], 3 => [0, 0]] as $row => [$hosts, $pairs]) {
    $read = dsmon_hostctl_get($link, $row);
    expect_same(
        [2 * PAIRS, $hosts],
        [(int) $read['dsmonHostCtlInserts'], (int) $read['dsmonHostCtlDeletes']],
        "hosts of row $row that came and went",
    );
    $read = dsmon_matrixctl_get($link, $row);
    expect_same(
        [PAIRS, $pairs],
        [(int) $read['dsmonMatrixCtlInserts'], (int) $read['dsmonMatrixCtlDeletes']],
        "pairs of row $row that came and went",
    );
    expect_same(DESIRED[$row], $read['dsmonMatrixCtlMaxDesiredEntries'], "what row $row asked for");
}
agent_done($agent);
?>
--EXPECT--
OK
