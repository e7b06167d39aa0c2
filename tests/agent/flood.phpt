--TEST--
The bundled agent's memory is bounded: 200,000 addresses and pairs with all groups at work, replies that nobody reads
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

const FRAMES = 200000;
const ROWS = 10000;      // of a learned table of which no size is asked for
const MOST_KB = 262144;

$agent = reading_agent([flood_file(FRAMES)]);
$link = module_link($agent);
foreach (start_groups($link, 1, -1) as $group => $status) {
    expect_same(1, $status, "status of $group");
}
read_files($agent);
expect_same(FRAMES, (int) rmon_etherstats_get($link, 1)['etherStatsPkts'], 'frames');
$memory = most_memory($agent);
if ($memory > MOST_KB) {
    fail("the agent took $memory KB for the frames");
}

// RMON1: as many rows as a table has; the newest ones are there.
$host = rmon_host_ctl_get($link, 1);
expect_same(ROWS, $host['hostControlTableSize'], 'hosts');
expect_same(ROWS, rmon_matrix_ctl_get($link, 1)['matrixControlTableSize'], 'pairs');
$none = [];
expect_same(ROWS, count(rmon_host_getbulk($link, 1, $none, 2 * ROWS)), 'hosts that are read');
$last = array_values(unpack('C*', "\x02\x02" . pack('N', FRAMES - 1)));
$first = array_values(unpack('C*', "\x02\x02" . pack('N', 0)));
expect_same(1, (int) rmon_host_get($link, 1, $last)['hostOutPkts'], 'the last host');
expect_same(false, (rmon_host_get($link, 1, $first)['status'] ?? NO_SUCH_NAME) === NO_ERROR, 'the first host');

// RMON2 and DSMON: rows that came and rows that gave way.
$address = [];
$scalars = rmon_addrmap_scalars_get($link);
expect_same([FRAMES, FRAMES - ROWS], [$scalars['addressMapInserts'], $scalars['addressMapDeletes']], 'address map');
expect_same(ROWS, count(rmon_addrmap_entry_getbulk($link, 0, 0, $address, 0, 2 * ROWS)), 'addresses');
// Above the network layer, a frame counts as udp and as domain.
foreach (['Host' => 2 * FRAMES, 'Matrix' => FRAMES] as $table => $inserts) {
    $row = "rmon_hl{$table}_ctl_get"($link, 1);
    $got = array_map(
        fn(string $name) => $row["hl{$table}Control$name"],
        ['NlInserts', 'NlDeletes', 'NlDroppedFrames', 'AlInserts', 'AlDeletes', 'AlDroppedFrames'],
    );
    expect_same([$inserts, $inserts - ROWS, 0, 2 * $inserts, 2 * $inserts - ROWS, 0], $got, "hl$table");
}
$row = dsmon_pdistctl_get($link, 1);
expect_same(
    [1, 0, 0],
    [$row['dsmonPdistCtlInserts'], $row['dsmonPdistCtlDeletes'], $row['dsmonPdistDroppedFrames']],
    'protocols by DSCP',
);
$row = dsmon_hostctl_get($link, 1);
expect_same(
    [2 * FRAMES, 2 * FRAMES - ROWS, 0],
    [$row['dsmonHostCtlInserts'], $row['dsmonHostCtlDeletes'], $row['dsmonHostDroppedFrames']],
    'hosts by DSCP',
);
$row = dsmon_matrixctl_get($link, 1);
expect_same(
    [FRAMES, FRAMES - ROWS, 0],
    [$row['dsmonMatrixCtlInserts'], $row['dsmonMatrixCtlDeletes'], $row['dsmonMatrixDroppedFrames']],
    'pairs by DSCP',
);
[$from, $to] = [[], []];
expect_same(ROWS, count(rmon_art_rpt_getbulk($link, 1, 0, $from, $to, 2 * ROWS)), 'pairs that wait for answers');

// Clients that ask for whole tables, many times, and read nothing of them.
$key = record(
    hlMatrixControlIndex: i32(1), timeMark: u32(0), protocolDirLocalIndex: i32(0), protocolDirLocalIndex2: i32(0),
    sourceAddress: byte_list(''), destAddress: byte_list(''), getType: i32(3), applicationLayer: i32(1), direction: i32(
        0,
    ),
    count: i32(ROWS),
);
$calls = str_repeat(marked(call(37, $key)), 6);
$asking = client($agent);
fwrite($asking, $calls);
$answer = message_from($asking);
expect_same(answer(ACCEPTED), substr($answer, 0, 24), 'answer of a long read');
if (strlen($answer) < 500000) {
    fail('a long read is ' . strlen($answer) . ' bytes long');
}
$deaf = [];
// Where memory can't be measured, and each reply takes its time, a few will do.
for ($i = $memory > 0 ? 200 : 10; $i > 0; $i--) {
    $deaf[] = $other = client($agent);
    fwrite($other, $calls);
}
expect_same(0, status_of(ask(client($agent), 0)), 'answer to a new client');
$memory = most_memory($agent);
if ($memory > MOST_KB) {
    fail("the agent took $memory KB for replies that nobody reads");
}

agent_done($agent);
?>
--EXPECT--
OK
