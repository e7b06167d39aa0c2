--TEST--
The bundled agent's hosts, conversations and busiest hosts, from known frames
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

/** A frame of so many octets, check sequence included. */
function sized(string $to, string $from, int $size): string
{
    return str_pad($to . $from . "\x08\0", $size - 4, "\0");
}

$all = str_repeat("\xff", 6);
$group = "\x01\0\x5e\0\0\1";
$kinds = [
    // how many, to, from, octets
    [3, mac(2), mac(1), 64],
    [2, mac(1), mac(2), 1518],
    [4, $all, mac(3), 100],
    [5, $group, mac(1), 200],
    [1, mac(2), mac(3), 500],
    // Too short, too long: they count as their sender's errors and add no host.
    [6, mac(2), mac(1), 63],
    [1, mac(2), mac(3), 1519],
    [7, mac(9), mac(8), 2000],
];
$frames = [];
foreach ($kinds as [$count, $to, $from, $size]) {
    array_push($frames, ...array_fill(0, $count, [1.0, sized($to, $from, $size)]));
}
for ($size = 0; $size < 12; $size++) { // cut within the addresses
    $frames[] = [2.0, substr(sized(mac(7), mac(6), 64), 0, $size), 60];
}

$agent = reading_agent([capture_file($frames)]);
$link = module_link($agent);

// The life of the control rows.
foreach (['host', 'matrix'] as $name) {
    $set = "rmon_{$name}_ctl_set";
    $get = "rmon_{$name}_ctl_get";
    $row = fn(int $index, int $source, string $owner, int $status) => [
        0 => $status ? NO_ERROR : NO_SUCH_NAME, 'status' => $status ? NO_ERROR : NO_SUCH_NAME,
        "{$name}ControlIndex" => $index, "{$name}ControlDataSource" => $source, "{$name}ControlTableSize" => 0,
        "{$name}ControlLastDeleteTime" => 0, "{$name}ControlOwner" => $owner, "{$name}ControlStatus" => $status,
    ];
    expect_same($row(0, 0, '', 0), $get($link, 5), "$name: no row");
    expect_same(NO_SUCH_NAME, $set($link, 5, 1, 'me', VALID), "$name: valid without a row");
    expect_same(BAD_VALUE, $set($link, 0, 1, 'me', CREATE_REQUEST), "$name: index 0");
    expect_same(BAD_VALUE, $set($link, 65536, 1, 'me', CREATE_REQUEST), "$name: index 65536");
    expect_same(BAD_VALUE, $set($link, 5, -1, 'me', CREATE_REQUEST), "$name: no data source");
    expect_same(BAD_VALUE, $set($link, 5, 1, "\n", CREATE_REQUEST), "$name: no owner");
    expect_same(NO_ERROR, $set($link, 5, 1, 'me', CREATE_REQUEST), "$name: createRequest");
    expect_same(BAD_VALUE, $set($link, 5, 1, 'me', CREATE_REQUEST), "$name: createRequest again");
    expect_same($row(5, 1, 'me', UNDER_CREATION), $get($link, 5), "$name: the new row");
    expect_same(BAD_VALUE, $set($link, 5, 99, 'me', VALID), "$name: valid without its interface");
    expect_same(NO_ERROR, $set($link, 5, 1, 'you', VALID), "$name: valid");
    expect_same($row(5, 1, 'you', VALID), $get($link, 5), "$name: the valid row");
    expect_same(BAD_VALUE, $set($link, 5, 2, 'you', VALID), "$name: another data source while valid");
    expect_same(NO_ERROR, $set($link, 9, 1, 'late', CREATE_REQUEST), "$name: a row under creation");
    expect_same(NO_ERROR, $set($link, 12, 1, 'second', CREATE_REQUEST), "$name: a second row");
    expect_same(NO_ERROR, $set($link, 12, 1, 'second', VALID), "$name: a second row, valid");
    expect_same(NO_SUCH_NAME, "rmon_{$name}_ctl_getnext"($link, 12)['status'], "$name: behind the last row");
    expect_same(9, "rmon_{$name}_ctl_getnext"($link, 5)["{$name}ControlIndex"], "$name: the row after 5");
}
expect_same(false, rmon_host_getnext($link, 0, []), 'no host yet');

// Reports: the busiest senders by octets, and by errors; rows whose hosts are not there don't start.
$topn = fn(int $index, int $status, int $base = 4, int $time = 5, int $size = 2, int $host = 5) =>
    rmon_hosttopn_ctl_set($link, $index, $host, $base, $time, $size, 'me', $status);
expect_same(BAD_VALUE, $topn(1, CREATE_REQUEST, base: 0), 'rate base 0');
expect_same(BAD_VALUE, $topn(1, CREATE_REQUEST, base: 8), 'rate base 8');
expect_same(BAD_VALUE, $topn(1, CREATE_REQUEST, time: -1), 'negative time');
expect_same(BAD_VALUE, $topn(1, CREATE_REQUEST, size: 0), 'no rows');
expect_same(NO_ERROR, $topn(1, CREATE_REQUEST), 'createRequest');
expect_same(BAD_VALUE, $topn(1, VALID, host: 9), 'valid on a host row under creation');
expect_same(BAD_VALUE, $topn(1, VALID, host: 99), 'valid on no host row');
expect_same(NO_ERROR, $topn(1, VALID), 'valid');
expect_same(BAD_VALUE, $topn(1, VALID, base: 5), 'another rate base while valid');
expect_same(NO_ERROR, $topn(3, CREATE_REQUEST, base: 5, size: 70000), 'createRequest');
expect_same(NO_ERROR, $topn(3, VALID, base: 5, size: 70000), 'valid');
expect_same(NO_ERROR, $topn(4, CREATE_REQUEST, time: 0), 'createRequest');
expect_same(NO_ERROR, $topn(4, VALID, time: 0), 'valid without an interval');

read_files($agent);

// Hosts by address: in, out, their octets, errors, to all, to groups; each with the order of its discovery.
$hosts = [
    [mac(1), 2, 2, 3 + 5 + 6, 2 * 1518, 3 * 64 + 5 * 200 + 6 * 63, 6, 0, 5],
    [mac(2), 1, 3 + 1, 2, 3 * 64 + 500, 2 * 1518, 0, 0, 0],
    [mac(3), 3, 0, 4 + 1 + 1, 0, 400 + 500 + 1519, 1, 4, 0],
    [$group, 5, 5, 0, 1000, 0, 0, 0, 0],
    [$all, 4, 4, 0, 400, 0, 0, 0, 0],
];
// A frame's sender is discovered before its receiver.
$hosts[0][1] = 1;
$hosts[1][1] = 2;
usort($hosts, fn($a, $b) => strcmp($a[0], $b[0]));
$expected = [];
foreach ([5, 12] as $control) {
    foreach ($hosts as $host) {
        $expected[] = [$control, ...$host];
    }
}
function host_values(array $row, string $prefix): array
{
    $names = ['InPkts', 'OutPkts', 'InOctets', 'OutOctets', 'OutErrors', 'OutBroadcastPkts', 'OutMulticastPkts'];
    return [
        $row["{$prefix}Index"], pack('C*', ...$row["{$prefix}Address"]), $row["{$prefix}CreationOrder"],
        ...array_map(fn(string $name) => (int) $row[$prefix . $name], $names),
    ];
}
/** What a walk meets. */
function met(callable $getnext): array
{
    for ($rows = []; ($row = $getnext(end($rows) ?: null)) && count($rows) < 1000;) {
        $rows[] = $row;
    }
    return $rows;
}
$walked = met(fn(?array $last) => rmon_host_getnext($link, $last['hostIndex'] ?? 0, $last['hostAddress'] ?? []));
expect_same($expected, array_map(fn(array $row) => host_values($row, 'host'), $walked), 'hosts');
expect_same($walked, rmon_host_getbulk($link, 0, [], 1000), 'hosts by getbulk');
expect_same(array_slice($walked, 2, 4), rmon_host_getbulk($link, 5, $walked[1]['hostAddress'], 4), 'four of them');
expect_same($walked[3], rmon_host_get($link, 5, $walked[3]['hostAddress']), 'one of them');
expect_same(false, rmon_host_get($link, 9, $walked[3]['hostAddress']), 'a host of a row under creation');
expect_same(false, rmon_host_get($link, 5, [2, 0, 0, 0, 0, 8]), 'a host that sent no good frame');
expect_same(false, rmon_host_get($link, 5, [2, 0, 0, 0, 0]), 'a short address');
// A shorter address stands before, a longer one behind all.
expect_same($walked[0], rmon_host_getnext($link, 5, [255, 255, 255, 255, 255]), 'behind a short address');
expect_same($walked[5], rmon_host_getnext($link, 5, [0, 0, 0, 0, 0, 0, 0]), 'behind a long address');
expect_same(false, rmon_host_getnext($link, 12, [255, 255, 255, 255, 255, 255]), 'behind the last');
foreach ([0, -1] as $count) {
    expect_same(false, rmon_host_getbulk($link, 0, [], $count), "getbulk of $count rows");
}
expect_same(5, rmon_host_ctl_get($link, 5)['hostControlTableSize'], 'hostControlTableSize');

// The same by creation order.
$ordered = met(fn(?array $last) => rmon_hosttime_getnext(
    $link,
    $last['hostTimeIndex'] ?? 0,
    $last['hostTimeCreationOrder'] ?? 0,
));
usort($expected, fn($a, $b) => [$a[0], $a[2]] <=> [$b[0], $b[2]]);
expect_same($expected, array_map(fn(array $row) => host_values($row, 'hostTime'), $ordered), 'hosts in order');
expect_same($ordered, rmon_hosttime_getbulk($link, 0, 0, 1000), 'hosts in order by getbulk');
expect_same($ordered[7], rmon_hosttime_get($link, 12, 3), 'the third of them');
foreach ([[5, 0], [5, -1], [5, 6], [9, 1], [6, 1], [5, PHP_INT_MAX]] as [$control, $order]) {
    expect_same(false, rmon_hosttime_get($link, $control, $order), "host $order of row $control");
}

// Conversations, in both orders.
$pairs = [
    [mac(1), mac(2), 3 + 6, 3 * 64 + 6 * 63, 6],
    [mac(2), mac(1), 2, 2 * 1518, 0],
    [mac(3), $all, 4, 400, 0],
    [mac(1), $group, 5, 1000, 0],
    [mac(3), mac(2), 1 + 1, 500 + 1519, 1],
];
foreach (['sd' => [0, 1], 'ds' => [1, 0]] as $view => [$major, $minor]) {
    $prefix = 'matrix' . strtoupper($view);
    usort($pairs, fn($a, $b) => [$a[$major], $a[$minor]] <=> [$b[$major], $b[$minor]]);
    $expected = [];
    foreach ([5, 12] as $control) {
        foreach ($pairs as $pair) {
            $expected[] = [$control, ...$pair];
        }
    }
    $getnext = "rmon_matrix_{$view}_getnext";
    $walked = met(fn(?array $last) => $getnext(
        $link,
        $last["{$prefix}Index"] ?? 0,
        $last["{$prefix}SourceAddress"] ?? [],
        $last["{$prefix}DestAddress"] ?? [],
    ));
    $values = fn(array $row) => [
        $row["{$prefix}Index"], pack('C*', ...$row["{$prefix}SourceAddress"]), pack(
            'C*',
            ...$row["{$prefix}DestAddress"],
        ),
        (int) $row["{$prefix}Pkts"], (int) $row["{$prefix}Octets"], (int) $row["{$prefix}Errors"],
    ];
    expect_same($expected, array_map($values, $walked), "conversations $view");
    expect_same($walked, "rmon_matrix_{$view}_getbulk"($link, 0, [], [], 1000), "conversations $view by getbulk");
    $one = $walked[6];
    $get = "rmon_matrix_{$view}_get";
    expect_same($one, $get($link, 12, $one["{$prefix}SourceAddress"], $one["{$prefix}DestAddress"]), "one of $view");
    expect_same(
        false,
        $get($link, 9, $one["{$prefix}SourceAddress"], $one["{$prefix}DestAddress"]),
        'of a row under creation',
    );
    expect_same(false, $get($link, 12, $one["{$prefix}SourceAddress"], []), 'without the other address');
}
expect_same(5, rmon_matrix_ctl_get($link, 5)['matrixControlTableSize'], 'matrixControlTableSize');

// The reports come when their seconds are over: so many that the frames were read within them, however slowly.
expect_soon(0, fn() => rmon_hosttopn_ctl_get($link, 3)['hostTopNTimeRemaining'], 'the end of the interval');
expect_soon(0, fn() => rmon_hosttopn_ctl_get($link, 1)['hostTopNTimeRemaining'], 'the end of the interval');
$report = fn(array $rows) => array_map(fn($row) => [
    $row['hostTopNReport'], $row['hostTopNIndex'], pack('C*', ...$row['hostTopNAddress']), (int) $row['hostTopNRate'],
], $rows);
$walked = met(fn(?array $last) => rmon_hosttopn_getnext(
    $link,
    $last['hostTopNReport'] ?? 0,
    $last['hostTopNIndex'] ?? 0,
));
expect_same([
    [1, 1, mac(2), 3036], [1, 2, mac(3), 2419],
    [3, 1, mac(1), 6], [3, 2, mac(3), 1],
], $report($walked), 'reports');
expect_same($walked, rmon_hosttopn_getbulk($link, 0, 0, 1000), 'reports by getbulk');
expect_same($walked[2], rmon_hosttopn_get($link, 3, 1), 'one of them');
foreach ([[1, 0], [1, 3], [4, 1], [2, 1]] as [$control, $rank]) {
    expect_same(false, rmon_hosttopn_get($link, $control, $rank), "rank $rank of report $control");
}
$control = rmon_hosttopn_ctl_get($link, 3);
expect_same([5, 5, 0, 5, 70000, 1000], array_values(array_intersect_key($control, array_flip([
    'hostTopNHostIndex', 'hostTopNRateBase', 'hostTopNTimeRemaining', 'hostTopNDuration', 'hostTopNRequestedSize', 'hostTopNGrantedSize',
]))), 'the control row');
// Another interval: the old report goes at once, the new one has nobody, as nothing more was sent.
expect_same(NO_ERROR, $topn(1, VALID, time: 1), 'another interval');
expect_same(false, rmon_hosttopn_get($link, 1, 1), 'the old report');
expect_same(1, rmon_hosttopn_ctl_get($link, 1)['hostTopNTimeRemaining'], 'its time');
expect_soon(0, fn() => rmon_hosttopn_ctl_get($link, 1)['hostTopNTimeRemaining'], 'the end of the interval');
expect_same(false, rmon_hosttopn_get($link, 1, 1), 'the new report');

// Rows that are removed take what they learned along.
expect_same(NO_ERROR, rmon_host_ctl_set($link, 5, 1, '', INVALID), 'invalid');
expect_same(12, rmon_host_getnext($link, 0, [])['hostIndex'], 'hosts that are left');
expect_same(NO_ERROR, rmon_host_ctl_set($link, 12, 1, '', UNDER_CREATION), 'underCreation');
expect_same(false, rmon_host_getnext($link, 0, []), 'hosts that are left');

agent_done($agent);
--EXPECT--
OK
