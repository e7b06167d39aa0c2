--TEST--
The bundled agent's Ethernet statistics rows are made, changed and removed by the row-status rules
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$agent = bundled_agent();
$client = client($agent);
$row = fn(int $at) => ether_row($client, $at, GETNEXT);
$lo = if_index('lo');
$sink = sink($address);

/** Data source, owner and status of a row. */
function settings(int $index): array
{
    global $client;
    $row = ether_row($client, $index);
    return [$row['status'], $row['DataSource'], $row['Owner'], $row['Status']];
}

// From the start, one row for each Ethernet-like interface.
$expected = [];
foreach (glob('/sys/class/net/*/type') as $file) {
    if (in_array((int) file_get_contents($file), [1, 772], true)) {
        $index = if_index(basename(dirname($file)));
        $expected[$index] = [$index, 'monitor', VALID];
    }
}
ksort($expected);
$first = walk($row, 'Index');
expect_same(
    $expected,
    array_map(fn($row) => [$row['DataSource'], $row['Owner'], $row['Status']], $first),
    'first rows',
);
expect_same(array_keys($expected), array_keys($first), 'indexes of the first rows');

// A row that isn't there: a row of zeros and a status.
$none = ['status' => NO_SUCH_NAME, 'Index' => 0, 'DataSource' => 0] + array_fill_keys(ETHER_COUNTERS, 0)
    + ['Owner' => '', 'Status' => 0, 'DroppedFrames' => 0, 'CreateTime' => 0];
foreach ([[40000, GET], [0, GET], [-1, GET], [65535, GETNEXT], [1, 0], [1, 9]] as [$index, $mode]) {
    expect_same($none, ether_row($client, $index, $mode), "row $index by mode $mode");
}

// Only createRequest makes a row.
foreach ([VALID, UNDER_CREATION, INVALID] as $status) {
    expect_same(NO_SUCH_NAME, set_ether($client, 40000, $lo, 'me', $status), "status $status for no row");
}
foreach ([0, -1, 5, 0x7fffffff] as $status) {
    expect_same(BAD_VALUE, set_ether($client, 40000, $lo, 'me', $status), "status $status for no row");
    expect_same(BAD_VALUE, set_ether($client, $lo, $lo, 'me', $status), "status $status for a row");
}
expect_same([NO_ERROR, $lo, 'monitor', VALID], settings($lo), 'a row after nonsense');
expect_same(NO_ERROR, set_ether($client, 40000, $lo, 'me', CREATE_REQUEST), 'createRequest');
expect_same([NO_ERROR, $lo, 'me', UNDER_CREATION], settings(40000), 'the new row');
expect_same(BAD_VALUE, set_ether($client, 40000, $lo, 'you', CREATE_REQUEST), 'createRequest again');
expect_same([NO_ERROR, $lo, 'me', UNDER_CREATION], settings(40000), 'the new row after that');
$new = ether_row($client, 40000);
expect_same(array_fill_keys(ETHER_COUNTERS, 0), array_intersect_key($new, array_flip(ETHER_COUNTERS)), 'counters');

// Indexes go from 1 to 65535; negative data sources and owners that can't be printed are refused.
foreach ([0, -1, 65536] as $index) {
    expect_same(BAD_VALUE, set_ether($client, $index, $lo, 'me', CREATE_REQUEST), "index $index");
}
expect_same(BAD_VALUE, set_ether($client, 40001, -1, 'me', CREATE_REQUEST), 'negative data source');
expect_same(BAD_VALUE, set_ether($client, 40001, $lo, "me\n", CREATE_REQUEST), 'owner of two lines');
expect_same(NO_SUCH_NAME, ether_row($client, 40001)['status'], 'the refused row');

// Under creation a row may be changed, and be inconsistent; only a row with a data source can become valid.
expect_same(NO_ERROR, set_ether($client, 40000, 0, 'you', UNDER_CREATION), 'underCreation');
expect_same([NO_ERROR, 0, 'you', UNDER_CREATION], settings(40000), 'the changed row');
expect_same(BAD_VALUE, set_ether($client, 40000, 123456789, 'me', VALID), 'valid without a data source');
expect_same([NO_ERROR, 0, 'you', UNDER_CREATION], settings(40000), 'the row after that');
expect_same(NO_ERROR, set_ether($client, 40000, $lo, str_repeat('o', 255), VALID), 'valid');
expect_same([NO_ERROR, $lo, str_repeat('o', 255), VALID], settings(40000), 'the valid row');
$up_time = system_group($client)['sysUpTime'];
$created = ether_row($client, 40000)['CreateTime'];
if ($created > $up_time || $created < $up_time - 200 || $created < $new['CreateTime']) {
    fail("the row's time of creation is $created, sysUpTime a moment later $up_time");
}

// A valid row counts, goes on when it is set again, and keeps its data source.
send_datagrams($address, 5, 100);
$counted = ether_row($client, 40000);
expect_same(true, $counted['Pkts'] >= 5, 'a valid row counts');
expect_same(NO_ERROR, set_ether($client, 40000, $lo, 'me again', VALID), 'valid again');
$again = ether_row($client, 40000);
expect_same(
    [true, 'me again', $created],
    [$again['Pkts'] >= $counted['Pkts'], $again['Owner'], $again['CreateTime']],
    'the row goes on',
);
expect_same(BAD_VALUE, set_ether($client, 40000, $lo + 1, 'me', VALID), 'another data source while valid');
expect_same(BAD_VALUE, set_ether($client, 40000, $lo, 'you', CREATE_REQUEST), 'createRequest of a valid row');
expect_same([NO_ERROR, $lo, 'me again', VALID], settings(40000), 'the row after that');

// Under creation it stops; valid once more, it begins anew.
expect_same(NO_ERROR, set_ether($client, 40000, $lo, 'me', UNDER_CREATION), 'underCreation of a valid row');
expect_same(0, ether_row($client, 40000)['Pkts'], 'a row under creation counts nothing');
expect_soon(true, fn() => system_group($client)['sysUpTime'] > $created, 'a later time');
expect_same(NO_ERROR, set_ether($client, 40000, $lo, 'me', VALID), 'valid once more');
$anew = ether_row($client, 40000);
expect_same([true, true], [$anew['CreateTime'] > $created, $anew['Pkts'] < $again['Pkts']], 'the row begins anew');

// A walk meets rows in the order of their indexes; invalid removes them.
expect_same(NO_ERROR, set_ether($client, 30000, 0, '', CREATE_REQUEST), 'createRequest of a row before it');
expect_same([...array_keys($first), 30000, 40000], array_keys(walk($row, 'Index')), 'indexes');
expect_same(40000, ether_row($client, 30000, GETNEXT)['Index'], 'the row after 30000');
expect_same(30000, ether_row($client, 29999, GETNEXT)['Index'], 'the row after 29999');
foreach ([30000, 40000, ...array_keys($first)] as $index) {
    expect_same(NO_ERROR, set_ether($client, $index, 0, '', INVALID), "invalid of row $index");
    expect_same(NO_SUCH_NAME, set_ether($client, $index, 0, '', INVALID), "invalid of row $index again");
}
expect_same([], walk($row, 'Index'), 'the table without rows');

// The table has an end.
for ($index = 1; set_ether($client, $index, $lo, 'many', CREATE_REQUEST) === NO_ERROR; $index++) {
    if ($index > 65535) {
        break;
    }
}
expect_same(1001, $index, 'the first row that finds no room');
expect_same(5, set_ether($client, 1001, $lo, 'many', CREATE_REQUEST), 'genErr');
expect_same(NO_ERROR, set_ether($client, 500, 0, '', INVALID), 'making room');
expect_same(NO_ERROR, set_ether($client, 1001, $lo, 'many', CREATE_REQUEST), 'a row in that room');
for ($index = 1; $index < 100; $index++) {
    expect_same(NO_ERROR, set_ether($client, $index, $lo, 'many', VALID), "row $index on the same source");
}

agent_done($agent);
--EXPECT--
OK
