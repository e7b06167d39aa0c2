--TEST--
The bundled agent counts by VLAN and by priority, as the tags of the frames have them
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

/** A tag: priority, drop eligible, VLAN. */
function tag(int $priority, int $vlan, bool $eligible = false): int
{
    return $priority << 13 | ($eligible ? 1 << 12 : 0) | $vlan;
}

function tagged(string $to, int ...$tags): string
{
    return ethernet($to, mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 17, udp(1, 2, str_repeat('x', 100))), ...$tags);
}

// 142 octets, 4 for each tag, 4 of check sequence.
$all = str_repeat("\xff", 6);
$group = "\x01\0\x5e\1\2\3";
$kinds = [
    [3, tagged(mac(2), tag(5, 100))],
    [2, tagged($all, tag(5, 100, true))],
    [4, tagged($group, tag(0, 100))],
    [1, tagged(mac(2), tag(7, 4094))],
    [6, tagged(mac(2), tag(3, 0))],
    [2, tagged(mac(2), tag(1, 7), tag(2, 8))],
    [1, tagged(mac(2), tag(6, 4095))],
    [9, tagged(mac(2))],
];
$frames = [];
foreach ($kinds as [$count, $frame]) {
    array_push($frames, ...array_fill(0, $count, [1.0, $frame]));
}
// A frame that ends within its tag has none.
for ($size = 0; $size < 16; $size++) {
    $frames[] = [2.0, substr(tagged(mac(2), tag(2, 9)), 0, $size), 146];
}

$agent = reading_agent([capture_file($frames)]);
$link = module_link($agent);

foreach (['vlan' => 'Vlan', 'prio' => 'Prio'] as $name => $Name) {
    $set = "rmon_{$name}_ctl_set";
    $get = "rmon_{$name}_ctl_get";
    $show = fn(int $index) => array_diff_key($get($link, $index), [0 => 0, "smon{$Name}StatsControlCreateTime" => 0]);
    $row = fn(int $index, int $source, string $owner, int $status) => [
        'status' => $status ? NO_ERROR : NO_SUCH_NAME, "smon{$Name}StatsControlIndex" => $index,
        "smon{$Name}StatsControlDataSource" => $source, "smon{$Name}StatsControlOwner" => $owner,
        "smon{$Name}StatsControlStatus" => $status,
    ];
    expect_same($row(0, 0, '', 0), $show(5), "$name: no row");
    expect_same(NO_SUCH_NAME, $set($link, 5, 1, 'me', VALID), "$name: valid without a row");
    expect_same(BAD_VALUE, $set($link, 0, 1, 'me', CREATE_REQUEST), "$name: index 0");
    expect_same(BAD_VALUE, $set($link, 5, -1, 'me', CREATE_REQUEST), "$name: no data source");
    expect_same(BAD_VALUE, $set($link, 5, 1, "\n", CREATE_REQUEST), "$name: no owner");
    expect_same(NO_ERROR, $set($link, 5, 1, 'me', CREATE_REQUEST), "$name: createRequest");
    expect_same(BAD_VALUE, $set($link, 5, 1, 'me', CREATE_REQUEST), "$name: createRequest again");
    expect_same($row(5, 1, 'me', UNDER_CREATION), $show(5), "$name: the new row");
    expect_same(BAD_VALUE, $set($link, 5, 99, 'me', VALID), "$name: valid without its interface");
    expect_same(NO_ERROR, $set($link, 5, 1, 'you', VALID), "$name: valid");
    expect_same($row(5, 1, 'you', VALID), $show(5), "$name: the valid row");
    expect_same(BAD_VALUE, $set($link, 5, 2, 'you', VALID), "$name: another data source while valid");
    expect_same(NO_ERROR, $set($link, 9, 1, 'late', CREATE_REQUEST), "$name: a row under creation");
    expect_same(NO_ERROR, $set($link, 12, 1, 'second', CREATE_REQUEST), "$name: a second row");
    expect_same(NO_ERROR, $set($link, 12, 1, 'second', VALID), "$name: a second row, valid");
}
expect_same(NO_SUCH_NAME, rmon_vlan_getnext($link, 0, 0)['status'], 'no VLAN yet');
expect_soon(true, fn() => rmon_system_get($link)['sysUpTime'] > 0, 'a time that is not 0');
$before = rmon_system_get($link)['sysUpTime'];
read_files($agent);
$after = rmon_system_get($link)['sysUpTime'];

/** What a walk meets: control index, number, counters. */
function met(callable $getnext, string $control, string $number, string ...$counters): array
{
    $met = [];
    for ([$at, $of] = [0, 0]; ($row = $getnext($at, $of))['status'] === NO_ERROR && count($met) < 1000;) {
        [$at, $of] = [$row[$control], $row[$number]];
        $met[] = [$at, $of, ...array_map(fn(string $name) => (int) $row[$name], $counters)];
    }
    expect_same(NO_SUCH_NAME, $row['status'], 'status at the end');
    return $met;
}

// A VLAN's frames, those to several receivers, and when the first one came. Number 4095 is reserved.
$vlans = [[0, 6, 6 * 150, 0, 0], [7, 2, 2 * 154, 0, 0], [100, 9, 9 * 150, 6, 6 * 150], [4094, 1, 150, 0, 0]];
$expected = [];
foreach ([5, 12] as $control) {
    foreach ($vlans as $vlan) {
        $expected[] = [$control, ...$vlan];
    }
}
expect_same(
    $expected,
    met(
        fn(int $at, int $of) => rmon_vlan_getnext($link, $at, $of),
        'smonVlanStatsControlIndex',
        'smonVlanIdStatsId',
        'smonVlanIdStatsTotalPkts',
        'smonVlanIdStatsTotalOctets',
        'smonVlanIdStatsNUcastPkts',
        'smonVlanIdStatsNUcastOctets',
    ),
    'VLANs',
);
$created = rmon_vlan_get($link, 5, 100)['smonVlanIdStatsCreateTime'];
expect_same(true, $created >= $before && $created <= $after, "time of the first frame: $created of $before to $after");
foreach ([[5, 1], [5, -1], [5, 4095], [5, 70000], [9, 100], [6, 100]] as [$control, $vlan]) {
    expect_same(NO_SUCH_NAME, rmon_vlan_get($link, $control, $vlan)['status'], "VLAN $vlan of row $control");
}
expect_same(12, rmon_vlan_getnext($link, 5, 4094)['smonVlanStatsControlIndex'], 'the row after the last VLAN');

// Priorities, of reserved VLANs as well.
$priorities = [[0, 4, 600], [1, 2, 308], [3, 6, 900], [5, 5, 750], [6, 1, 150], [7, 1, 150]];
$expected = [];
foreach ([5, 12] as $control) {
    foreach ($priorities as $priority) {
        $expected[] = [$control, ...$priority];
    }
}
expect_same(
    $expected,
    met(
        fn(int $at, int $of) => rmon_prio_getnext($link, $at, $of),
        'smonPrioStatsControlIndex',
        'smonPrioStatsId',
        'smonPrioStatsPkts',
        'smonPrioStatsOctets',
    ),
    'priorities',
);
foreach ([[5, 2], [5, -1], [5, 8], [9, 5]] as [$control, $priority]) {
    expect_same(
        NO_SUCH_NAME,
        rmon_prio_get($link, $control, $priority)['status'],
        "priority $priority of row $control",
    );
}

// A row that begins anew has counted nothing; one that is removed is gone.
expect_same(NO_ERROR, rmon_vlan_ctl_set($link, 5, 1, 'me', UNDER_CREATION), 'underCreation');
expect_same(NO_ERROR, rmon_vlan_ctl_set($link, 5, 1, 'me', VALID), 'valid once more');
expect_same(
    [12, 0],
    [rmon_vlan_getnext($link, 0, 0)['smonVlanStatsControlIndex'], rmon_vlan_getnext($link, 0, 0)['smonVlanIdStatsId']],
    'the first VLAN',
);
expect_same(NO_ERROR, rmon_prio_ctl_set($link, 12, 1, '', INVALID), 'invalid');
expect_same(NO_SUCH_NAME, rmon_prio_get($link, 12, 5)['status'], 'a priority of a removed row');

agent_done($agent);
--EXPECT--
OK
