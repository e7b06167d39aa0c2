--TEST--
The bundled agent keeps to --memory: tables share it as they grow, tell of what they get, and give it back
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/rmon2.inc';
require __DIR__ . '/groups.inc';
require __DIR__ . '/flood.inc';

const FRAMES = 100000;
const MIB = 1 << 20;
const BOUND = 16 * MIB;
const PART = BOUND / 8192;   // of each table
const SHARED = BOUND / 2;    // by those that want more

// What the agent takes besides: replies, and memory between what is allocated.
const SLACK_KB = 3072;

foreach (['0', '15M', '16m', 'x', ''] as $size) {
    expect_same(
        [2, '', "rmon-agent: no size of the memory (16M to 65536G): $size (--help lists the options)\n"],
        run(agent_program(), '--memory', $size),
        "--memory $size",
    );
}

$agent = reading_agent([flood_file(FRAMES)], '--memory', '16M');
$link = module_link($agent);
$before = most_memory($agent);

// A capture buffer takes its memory at once, twice its octets, and no more of the shared half than it leaves.
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => rmon_channel_set($link, 1, 1, 1, 2, 0, 0, 0, 1, '', '', $status)),
    'channel',
);
$buffer = fn(int $index, int $octets): int => start_row(
    fn(int $status) => rmon_buffer_ctl_set($link, $index, 1, 2, 0, 0, 0, $octets, '', $status),
);
$granted = fn(int $index): int => rmon_buffer_ctl_get($link, $index)['bufferControlMaxOctetsGranted'];
$remove = fn(int $index): int => rmon_buffer_ctl_set($link, $index, 1, 2, 0, 0, 0, -1, '', INVALID);
foreach ([1, 2, 3] as $index) {
    expect_same(NO_ERROR, $buffer($index, -1), "buffer $index");
}
expect_same(NO_ERROR, $buffer(4, 1000), 'a small buffer');
expect_same(
    [(PART + SHARED / 2) / 2, (PART + SHARED / 4) / 2, (PART + SHARED / 8) / 2, 1000],
    array_map($granted, [1, 2, 3, 4]),
    'octets of buffers',
);
expect_same(NO_ERROR, $remove(1), 'removal of the first one');
expect_same(NO_ERROR, $buffer(1, -1), 'the first one again');
// The second and the third one have 1/4 and 1/8; of the 5/8 that they leave, it takes half.
expect_same((PART + SHARED * 5 / 16) / 2, $granted(1), 'its octets');
foreach ([1, 2, 3, 4] as $index) {
    expect_same(NO_ERROR, $remove($index), "removal of buffer $index");
}

// All groups at once, of which RMON2 asks for a million rows.
foreach (start_groups($link, 1, 1000000) as $group => $status) {
    expect_same(1, $status, "status of $group");
}
$report = fn(): int => rmon_art_ctl_get($link, 1)['artControlGrantedSize'];
expect_same(10000, $report(), 'size of a report before there are rows');
read_files($agent);
expect_same(FRAMES, (int) rmon_etherstats_get($link, 1)['etherStatsPkts'], 'frames');
$memory = most_memory($agent) - $before;
if ($memory > BOUND / 1024 + SLACK_KB) {
    fail("the agent took $memory KB for the frames");
}

/** Rows that a table has, all of which say that one packet came. */
function exact_rows(string $what, array $rows, callable $packets, array $control, string $inserts, string $deletes): int
{
    expect_same([1], array_values(array_unique(array_map($packets, $rows))), "packets of each of the $what");
    expect_same(count($rows), $control[$inserts] - $control[$deletes], "inserts without deletes of the $what");
    return count($rows);
}

/** All rows of a table, by getbulk: at most 10,000 at once. */
function all_rows(callable $after): array
{
    $rows = [];
    do {
        $more = $after($rows ? end($rows) : null);
        array_push($rows, ...$more);
    } while (count($more) === 10000);
    return $rows;
}

// Fewer rows than frames, with what they counted: the last ones that came.
$address = fn(?array $row): array => $row['nlHostAddress'] ?? [];
$hosts = all_rows(function (?array $last) use ($link, $address): array {
    $after = $address($last);
    return rmon_nlhost_getbulk($link, 1, 0, $last['protocolDirLocalIndex'] ?? 0, $after, 10000);
});
$count = exact_rows(
    'hosts',
    $hosts,
    fn(array $row): int => (int) ($row['nlHostInPkts'] + $row['nlHostOutPkts']),
    rmon_hlhost_ctl_get($link, 1),
    'hlHostControlNlInserts',
    'hlHostControlNlDeletes',
);
expect_same(true, $count >= 1000 && $count < FRAMES, "rows of the hosts: $count");
$expected = [];
for ($i = FRAMES - intdiv($count, 2); $i < FRAMES; $i++) {
    array_push($expected, long2ip(0x0a000000 + $i), long2ip(0x0b000000 + $i));
}
$got = array_map(fn(array $row): string => implode('.', $row['nlHostAddress']), $hosts);
expect_same([], array_diff($expected, $got), 'the hosts that were seen last');

$size = $report();
expect_same(true, $size >= 100 && $size < 10000, "size of the report: $size");
[$from, $to] = [[], []];
expect_same($size, count(rmon_art_rpt_getbulk($link, 1, 0, $from, $to, 10000)), 'rows of the report');

// What other rows give back, it could have.
expect_same(NO_ERROR, rmon_hlhost_ctl_set($link, 1, 1, -1, -1, '', INVALID), 'removal of the hosts');
expect_same(NO_ERROR, rmon_hlmatrix_ctl_set($link, 1, 1, -1, -1, '', INVALID), 'removal of the pairs');
expect_same(true, $report() > $size, 'size of the report, now that there is memory');

agent_done($agent);
?>
--EXPECT--
OK
