--TEST--
The bundled agent measures response times of TCP and DNS exchanges
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

const FIN = 1;
const SYN = 2;
const RST = 4;
const ACK = 16;

/** All frames so far: time, frame. */
$frames = [];

/** A frame at a time in milliseconds; the octets that it counts as. */
function at(float $ms, string $from, string $to, int $protocol, string $payload): int
{
    global $frames;
    $frame = str_contains($from, ':')
        ? ethernet(mac(2), mac(1), 0x86dd, ip6($from, $to, $protocol, $payload))
        : ethernet(mac(2), mac(1), 0x0800, ip4($from, $to, $protocol, $payload));
    $frames[] = [100 + $ms / 1000, $frame];
    return strlen($frame) + 4;
}

$sent = ['client' => 0, 'server' => 0];

/** A segment between a client and the server 10.0.0.2 port 80; its octets are summed up for the client. */
function segment(float $ms, string $client, int $port, bool $asks, int $flags, string $data, int $sequence): void
{
    global $sent;
    $octets = $asks
        ? at($ms, $client, '10.0.0.2', 6, tcp($port, 80, $flags, $data, $sequence))
        : at($ms, '10.0.0.2', $client, 6, tcp(80, $port, $flags, $data, $sequence));
    $sent[$client][$asks ? 'client' : 'server'] = ($sent[$client][$asks ? 'client' : 'server'] ?? 0) + $octets;
}

/** A DNS message; the number and whether it is a response. */
function domain(int $number, bool $response): string
{
    return pack('nCCnnnn', $number, $response ? 0x81 : 0x01, 0, 1, 0, 0, 0) . "\1a\0\0\1\0\1";
}

// 10.0.0.1: a connection from its beginning, with answers after 10, 10.001 and 600 ms.
$one = '10.0.0.1';
segment(0, $one, 40000, true, SYN, '', 1000);
segment(1, $one, 40000, false, SYN | ACK, '', 5000);
segment(2, $one, 40000, true, ACK, '', 1001);
segment(3, $one, 40000, true, ACK, 'GET /', 1001);      // a request in two segments: the last one counts
segment(5, $one, 40000, true, ACK, ' HTTP', 1006);
segment(6, $one, 40000, false, ACK, '', 5001);          // no data, no answer
segment(15, $one, 40000, false, ACK, 'first', 5001);    // 10 ms: range 1
segment(16, $one, 40000, false, ACK, 'more', 5006);     // of the same answer
segment(20, $one, 40000, true, ACK, 'GET', 1011);
segment(30.001, $one, 40000, false, ACK, 'x', 5010);    // 10.001 ms: range 2
segment(40, $one, 40000, true, ACK, 'GET', 1014);
segment(140, $one, 40000, true, ACK, 'GET', 1014);      // sent again: a retry
segment(640, $one, 40000, false, ACK, 'y', 5011);       // 600 ms: range 7
segment(641, $one, 40000, false, ACK, 'y', 5011);       // sent again by the server: nothing
segment(650, $one, 40000, true, FIN | ACK, '', 1017);

// 10.0.0.3: a request whose answer comes too late, one that is never answered; sequence numbers that wrap.
$three = '10.0.0.3';
segment(700, $three, 41000, true, SYN, '', 0xfffffffe);
segment(701, $three, 41000, true, SYN, '', 0xfffffffe);  // opened again: a retry
segment(702, $three, 41000, true, ACK, 'ask', 0xffffffff);
segment(1800, $three, 41000, false, ACK, 'late', 9);     // 1098 ms: a timeout
segment(1900, $three, 41000, true, ACK, 'ask', 2);
segment(1950, $three, 41000, false, ACK, 'now', 13);     // 50 ms: range 3
segment(2000, $three, 41000, true, ACK, 'ask', 5);       // a timeout when its time is over

// 10.0.0.4: a connection that was open before; the lower port is the server's. A reset ends the wait.
$four = '10.0.0.4';
segment(2100, $four, 42000, false, ACK, 'end of an answer', 77);
segment(2110, $four, 42000, true, ACK, 'ask', 500);
segment(2115, $four, 42000, false, ACK, 'answer', 93);   // 5 ms: range 1
segment(2120, $four, 42000, true, ACK, 'ask', 503);
segment(2121, $four, 42000, false, RST, '', 99);
segment(2130, $four, 42000, false, ACK, 'too late', 99);

// A server of IPv6, and DNS.
at(2200, 'fd00::1', 'fd00::2', 6, tcp(40000, 80, SYN, '', 0));
at(2201, 'fd00::1', 'fd00::2', 6, tcp(40000, 80, ACK, 'ask', 1));
at(2351, 'fd00::2', 'fd00::1', 6, tcp(80, 40000, ACK, 'answer', 1));  // 150 ms: range 5
at(2400, '10.0.0.1', '10.0.0.53', 17, udp(5000, 53, domain(7, false)));
at(2401, '10.0.0.1', '10.0.0.53', 17, udp(5000, 53, domain(8, false)));
at(2402, '10.0.0.53', '10.0.0.1', 17, udp(53, 5000, domain(8, true)));   // 1 ms: range 1
at(2403, '10.0.0.53', '10.0.0.1', 17, udp(53, 5000, domain(9, true)));   // nobody asked
at(2415, '10.0.0.1', '10.0.0.53', 17, udp(5000, 53, domain(7, false)));  // a retry
at(2430, '10.0.0.53', '10.0.0.1', 17, udp(53, 5000, domain(7, true)));   // 30 ms: range 3
at(2431, '10.0.0.53', '10.0.0.1', 17, udp(53, 5000, domain(7, true)));   // again: nothing
at(2440, '10.0.0.1', '10.0.0.53', 17, udp(5000, 53, "\0"));              // no DNS message
at(2441, '10.0.0.1', '10.0.0.9', 17, udp(5000, 5001, domain(7, false))); // another protocol
// Frames cut off at every length.
$whole = end($frames)[1];
for ($size = 0; $size < strlen($whole); $size++) {
    $frames[] = [102.5, substr($whole, 0, $size), strlen($whole)];
}
// Time goes on.
at(3600, '10.0.0.8', '10.0.0.9', 17, udp(1, 2, ''));

$agent = reading_agent([capture_file($frames)]);
$link = module_link($agent);

$limits = [10, 20, 50, 100, 200, 500];
/** Sets row 4 of source 1 unless something else is wanted. */
function set(int $status, int $index = 4, int $source = 1, int $interval = 0, ?array $limits = null, int $timeout = 1000, int $size = 100, string $owner = 'me'): int
{
    global $link;
    return rmon_art_ctl_set(
        $link,
        $index,
        $source,
        $interval,
        ...($limits ?? $GLOBALS['limits']),
        ...[$timeout, $size, $owner, $status],
    );
}

// The life of a row.
expect_same(NO_SUCH_NAME, rmon_art_ctl_getnext($link, 0)['status'], 'no row');
expect_same(NO_SUCH_NAME, set(VALID), 'valid without a row');
expect_same(BAD_VALUE, set(CREATE_REQUEST, index: 0), 'index 0');
expect_same(BAD_VALUE, set(CREATE_REQUEST, source: -1), 'negative data source');
expect_same(BAD_VALUE, set(CREATE_REQUEST, interval: -1), 'negative interval');
expect_same(BAD_VALUE, set(CREATE_REQUEST, limits: [10, 20, -50, 100, 200, 500]), 'negative limit');
expect_same(BAD_VALUE, set(CREATE_REQUEST, timeout: -1), 'negative timeout');
expect_same(BAD_VALUE, set(CREATE_REQUEST, size: -2), 'negative size');
expect_same(BAD_VALUE, set(CREATE_REQUEST, owner: "\x7f"), 'unprintable owner');
expect_same(NO_ERROR, set(CREATE_REQUEST, limits: [0, 0, 0, 0, 0, 0], timeout: 0, size: 0), 'createRequest');
expect_same(BAD_VALUE, set(VALID, limits: [0, 0, 0, 0, 0, 0]), 'limits that do not rise');
expect_same(BAD_VALUE, set(VALID, limits: [10, 20, 50, 50, 200, 500]), 'limits that are the same');
expect_same(BAD_VALUE, set(VALID, timeout: 500), 'no time for the last range');
expect_same(BAD_VALUE, set(VALID, size: 0), 'a report without rows');
expect_same(BAD_VALUE, set(VALID, source: 9), 'no such interface');
expect_same(NO_ERROR, set(VALID), 'valid');
expect_same(BAD_VALUE, set(VALID, timeout: 2000), 'another timeout while valid');
expect_same(BAD_VALUE, set(VALID, limits: [1, 2, 3, 4, 5, 6]), 'other limits while valid');
expect_same(NO_ERROR, set(VALID, owner: 'you'), 'another owner while valid');
$row = rmon_art_ctl_get($link, 4);
$expected = [
    0 => 0,
    'status' => 0,
    'artControlIndex' => 4,
    'artControlDataSource' => 1,
    'artControlTimeRemaining' => 0,
    'artControlDuration' => 0,
];
foreach ($limits as $i => $limit) {
    $expected['artControlRspTime' . ($i + 1)] = $limit;
}
$expected += [
    'artControlRspTimeout' => 1000, 'artControlRptStartTime' => $row['artControlRptStartTime'],
    'artControlRequestedSize' => 100, 'artControlGrantedSize' => 100, 'artControlGeneratedRpts' => 0,
    'artControlDroppedFrames' => 0, 'artControlOwner' => 'you', 'artControlStatus' => VALID,
];
expect_same($expected, $row, 'the valid row');
expect_same(NO_ERROR, set(CREATE_REQUEST, index: 6, size: 1), 'a report of one row');
expect_same(NO_ERROR, set(VALID, index: 6, size: 1), 'a report of one row, valid');
expect_same(NO_ERROR, set(CREATE_REQUEST, index: 7, interval: 1, size: -1), 'a report of a second');
expect_same(NO_ERROR, set(VALID, index: 7, interval: 1, size: -1), 'a report of a second, valid');
expect_same(10000, rmon_art_ctl_get($link, 7)['artControlGrantedSize'], 'size of the report');
expect_same([], rmon_art_rpt_getbulk($link, 0, 0, [], [], 100), 'no report yet');
read_files($agent);

// ---- Reports
$quad = fn(string $address) => array_values(unpack('C*', inet_pton($address)));

/** A report row's numbers. */
function numbers(array $row, string $prefix = 'art'): array
{
    $ranges = [];
    for ($i = 1; $i <= 7; $i++) {
        $ranges[] = $row["{$prefix}Rsps$i"];
    }
    return [
        'times' => [$row["{$prefix}AvgRspTime"], $row["{$prefix}MinRspTime"], $row["{$prefix}MaxRspTime"]],
        'responses' => $row["{$prefix}TotalResponses"], 'ranges' => $ranges,
        'octets' => [(int) $row["{$prefix}ClientOctets"], (int) $row["{$prefix}ServerOctets"]],
        'retries' => $row["{$prefix}Retries"], 'timeouts' => $row["{$prefix}Timeouts"],
    ];
}

$rows = rmon_art_rpt_getbulk($link, 4, 0, [], [], 5);
expect_same(5, count($rows), 'rows');
[$http, $six, $dns] = [null, null, null];
foreach ($rows as $at => $row) {
    $key = inet_ntop(implode('', array_map(chr(...), $row['artServerAddress']))) . ' ' . inet_ntop(implode('', array_map(chr(...), $row['artClientAddress'])));
    $found[$key] = numbers($row);
    $protocols[$key] = $row['protocolDirLocalIndex'];
    expect_same([NO_ERROR, 4], [$row['status'], $row['artControlIndex']], "row $at");
}
$http = $protocols['10.0.0.2 10.0.0.1'];
$dns = $protocols['10.0.0.53 10.0.0.1'];
$octets = fn(string $client) => [$sent[$client]['client'], $sent[$client]['server']];
ksort($found);
$expected = [
    '10.0.0.2 10.0.0.1' => ['times' => [207, 10, 600], 'responses' => 3, 'ranges' => [1, 1, 0, 0, 0, 0, 1], 'octets' => $octets($one), 'retries' => 1, 'timeouts' => 0],
    '10.0.0.2 10.0.0.3' => ['times' => [50, 50, 50], 'responses' => 1, 'ranges' => [0, 0, 1, 0, 0, 0, 0], 'octets' => $octets($three), 'retries' => 1, 'timeouts' => 2],
    '10.0.0.2 10.0.0.4' => ['times' => [5, 5, 5], 'responses' => 1, 'ranges' => [1, 0, 0, 0, 0, 0, 0], 'octets' => $octets($four), 'retries' => 0, 'timeouts' => 0],
    // 61 octets of question; 14 of Ethernet, 20 of IP, 8 of UDP, 4 of check sequence around 19 of DNS.
    '10.0.0.53 10.0.0.1' => ['times' => [16, 1, 30], 'responses' => 2, 'ranges' => [1, 0, 1, 0, 0, 0, 0], 'octets' => [3 * 65, 3 * 65], 'retries' => 1, 'timeouts' => 0],
    'fd00::2 fd00::1' => ['times' => [150, 150, 150], 'responses' => 1, 'ranges' => [0, 0, 0, 0, 1, 0, 0], 'octets' => [78 + 81, 84], 'retries' => 0, 'timeouts' => 0],
];
expect_same($expected, $found, 'reports');

// The order: protocol, then server, then client; shorter addresses first. Walks and bulk reads agree.
$walked = [];
for ($at = [0, 0, [], []]; ($row = rmon_art_rpt_getnext($link, ...$at)) !== [] && $row['artControlIndex'] === 4;) {
    $walked[] = $row;
    $at = [$row['artControlIndex'], $row['protocolDirLocalIndex'], $row['artServerAddress'], $row['artClientAddress']];
}
expect_same($rows, $walked, 'the walk');
$order = array_map(
    fn($row) => [
        $row['protocolDirLocalIndex'],
        count($row['artServerAddress']),
        $row['artServerAddress'],
        $row['artClientAddress'],
    ],
    $rows,
);
$sorted = $order;
sort($sorted);
expect_same($sorted, $order, 'the order');
expect_same(
    array_slice($rows, 1, 2),
    rmon_art_rpt_getbulk(
        $link,
        4,
        $rows[0]['protocolDirLocalIndex'],
        $rows[0]['artServerAddress'],
        $rows[0]['artClientAddress'],
        2,
    ),
    'two rows',
);
foreach ([0, -1, PHP_INT_MIN] as $count) {
    expect_same([], rmon_art_rpt_getbulk($link, 4, 0, [], [], $count), "$count rows");
}
expect_same(6, count(rmon_art_rpt_getbulk($link, 0, 0, [], [], 0x7fffffff)), 'all rows of all reports');
expect_same(3, rmon_art_rpt_get($link, 4, $http, $quad('10.0.0.2'), $quad('10.0.0.1'))['artTotalResponses'], 'one row');
foreach ([
    [4, $http, [], []], [4, $http, $quad('10.0.0.2'), []], [4, $dns, $quad('10.0.0.2'), $quad('10.0.0.1')],
    [5, $http, $quad('10.0.0.2'), $quad('10.0.0.1')], [4, $http, array_fill(0, 255, 9), array_fill(0, 255, 9)],
] as $none) {
    expect_same([], rmon_art_rpt_get($link, ...$none), 'no row');
}
expect_same(
    [],
    rmon_art_rpt_getnext($link, 6, 0x7fffffff, array_fill(0, 255, 255), array_fill(0, 255, 255)),
    'after the last row',
);

// ---- Summaries
$sums = rmon_art_sum_getbulk($link, 4, 0, [], 3);
foreach ($sums as $row) {
    $summed[inet_ntop(implode('', array_map(chr(...), $row['artSummaryServerAddress'])))] = [
        $row['artSummaryClients'],
        numbers($row, 'artSummary'),
    ];
}
ksort($summed);
$total = fn(string $end) => $sent[$one][$end] + $sent[$three][$end] + $sent[$four][$end];
expect_same([
    '10.0.0.2' => [3, ['times' => [135, 5, 600], 'responses' => 5, 'ranges' => [2, 1, 1, 0, 0, 0, 1], 'octets' => [$total('client'), $total('server')], 'retries' => 2, 'timeouts' => 2]],
    '10.0.0.53' => [1, $expected['10.0.0.53 10.0.0.1']],
    'fd00::2' => [1, $expected['fd00::2 fd00::1']],
], $summed, 'summaries');
expect_same($sums[0], rmon_art_sum_getnext($link, 0, 0, []), 'the first summary');
expect_same(
    $sums[1],
    rmon_art_sum_getnext($link, 4, $sums[0]['protocolDirLocalIndex'], $sums[0]['artSummaryServerAddress']),
    'the second summary',
);
expect_same(
    $sums[2],
    rmon_art_sum_get($link, 4, $sums[2]['protocolDirLocalIndex'], $sums[2]['artSummaryServerAddress']),
    'the third summary',
);
expect_same([], rmon_art_sum_get($link, 4, $http, $quad('10.0.0.3')), 'no such server');
expect_same([], rmon_art_sum_getnext($link, 6, 0x7fffffff, []), 'after the last summary');

// A report of one row has the pair that spoke last.
expect_same(
    [$quad('10.0.0.53')],
    array_column(rmon_art_rpt_getbulk($link, 6, 0, [], [], 9), 'artServerAddress'),
    'a report of one row',
);

// A report with an interval can be read when it is over.
expect_soon(5, function () use ($link, &$report) {
    return count($report = rmon_art_rpt_getbulk($link, 7, 0, [], [], 9));
}, 'rows of the report of a second');
expect_same(true, rmon_art_ctl_get($link, 7)['artControlGeneratedRpts'] >= 1, 'reports');
expect_same(
    $rows,
    array_map(fn($row) => array_replace($row, ['artControlIndex' => 4]), $report),
    'the report of a second',
);
$ctl = rmon_art_ctl_get($link, 7);
expect_same([true, 1], [$ctl['artControlTimeRemaining'] <= 1, $ctl['artControlDuration']], 'the interval');

// Setting a row begins its report anew; invalid ends it.
expect_same(NO_ERROR, set(VALID), 'valid again');
expect_same(
    [],
    array_filter(rmon_art_rpt_getbulk($link, 4, 0, [], [], 9), fn($row) => $row['artControlIndex'] === 4),
    'a report that began anew',
);
foreach ([4, 6, 7] as $index) {
    expect_same(NO_ERROR, set(INVALID, index: $index), "invalid of row $index");
}
expect_same([], rmon_art_rpt_getbulk($link, 0, 0, [], [], 9), 'no report');

agent_done($agent);
--EXPECT--
OK
