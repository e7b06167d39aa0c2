--TEST--
The bundled agent's tables with a TimeFilter: a mark shows the rows that changed since
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

const A = '10.0.0.1';
const B = '10.0.0.2';
const C = '10.0.0.3';
const D = '10.0.0.4';

$ip = fn(int $number, string $from, string $to, int $protocol, string $payload) => ethernet(
    mac(9),
    mac($number),
    0x0800,
    ip4($from, $to, $protocol, $payload),
);
$question = $ip(1, A, B, 17, udp(5000, 53, 'what'));
$web = $ip(1, A, C, 6, tcp(5000, 80, 0x18, 'get'));
$echo = $ip(4, D, B, 1, "\x08\0\0\0\0\1\0\1");
// The last frame of the first second, and two seconds later the first ones that are seen of D.
$file = capture_file([[1.0, $question], [1.0, $web], [3.0, $echo], [3.0, $question]]);

/** An agent with all rows at work that has read the file as fast as it was recorded. */
function read_in_time(string $host): array
{
    global $file;
    $agent = reading_agent([$file], '--speed', 'recorded', '--listen', $host);
    ini_set('rmon.default_port', (string) $agent->port);
    $link = rmon_connect($host);
    foreach ([
        fn(int $status) => rmon_addrmap_ctl_set($link, 1, 1, '', $status),
        fn(int $status) => rmon_hlhost_ctl_set($link, 1, 1, -1, -1, '', $status),
        fn(int $status) => rmon_hlmatrix_ctl_set($link, 1, 1, -1, -1, '', $status),
        fn(int $status) => dsmon_aggctl_set($link, 1, '', '', $status),
        fn(int $status) => dsmon_pdistctl_set($link, 1, 1, 1, '', $status, -1),
        fn(int $status) => dsmon_hostctl_set($link, 1, 1, 1, '', $status, -1),
        fn(int $status) => dsmon_matrixctl_set($link, 1, 1, 1, '', $status, -1),
    ] as $set) {
        expect_same(NO_ERROR, start_row($set), 'a control row');
    }
    expect_same(NO_ERROR, dsmon_aggctl_set_lock($link, 1), 'lock');
    read_files($agent);
    return [$agent, $link];
}

/** When a host was first seen. */
function seen(mixed $link, string $host): int
{
    $index = protocol_indexes($link);
    return rmon_nlhost_get($link, 1, 0, $index['ip'], address($host))['nlHostCreateTime'];
}

// If the machine stood still for so long that no time passed between the frames, this shows nothing.
for ($try = 0; $try < 5; $try++) {
    [$agent, $link] = read_in_time('127.0.0.' . (1 + $try));
    [$before, $mark] = [seen($link, C), seen($link, D)];
    if ($mark > $before) {
        break;
    }
    end_agent($agent);
}
expect_same(true, $mark > $before, 'time between the frames');
$protocol = array_flip(protocol_indexes($link));
$index = array_flip($protocol);

/** The rows of a walk: what $show makes of each. $next takes the mark and the row before. */
function changed(int $mark, string $key, callable $next, callable $show): array
{
    $rows = [];
    for ($row = []; ($row = $next($mark, $row)) && ($row['status'] ?? 0) === 0;) {
        expect_same($mark, $row[$key], "$key of a row");
        $rows[] = $show($row);
        if (count($rows) > 100) {
            break;
        }
    }
    sort($rows);
    return $rows;
}

$host = fn(array $row) => address_text($row['nlHostAddress'] ?? $row['dsmonHostAddress']);
$pair = fn(string $from, string $to) => fn(array $row) => address_text($row[$from]) . ' ' . address_text($row[$to]) . rtrim(' ' . ($protocol[$row['protocolDirLocalIndex2'] ?? $row['dsmonMatrixALIndex'] ?? 0] ?? ''));
$tables = [
    'nlHost' => [
        'nlHostTimeMark',
        fn(int $mark, array $row) => rmon_nlhost_getnext(
            $link,
            1,
            $mark,
            $row['protocolDirLocalIndex'] ?? 0,
            $row['nlHostAddress'] ?? [],
        ),
        $host, [A, B, C, D], [A, B, D],
    ],
    'alHost' => [
        'alHostTimeMark',
        fn(int $mark, array $row) => rmon_alhost_getnext(
            $link,
            1,
            $mark,
            $row['protocolDirLocalIndex'] ?? 0,
            $row['nlHostAddress'] ?? [],
            $row['protocolDirLocalIndex2'] ?? 0,
        ),
        fn(array $row) => $host($row) . ' ' . $protocol[$row['protocolDirLocalIndex2']],
        [A . ' ip.tcp', A . ' ip.tcp.www-http', A . ' ip.udp', A . ' ip.udp.domain', B . ' ip.icmp', B . ' ip.udp', B . ' ip.udp.domain', C . ' ip.tcp', C . ' ip.tcp.www-http', D . ' ip.icmp'],
        [A . ' ip.udp', A . ' ip.udp.domain', B . ' ip.icmp', B . ' ip.udp', B . ' ip.udp.domain', D . ' ip.icmp'],
    ],
    'dsmonHost' => [
        'dsmonHostTimeMark',
        fn(int $mark, array $row) => dsmon_hoststats_getnext(
            $link,
            1,
            $mark,
            $row['dsmonAggGroupIndex'] ?? 0,
            $row['protocolDirLocalIndex'] ?? 0,
            $row['dsmonHostAddress'] ?? [],
        ),
        $host, [A, B, C, D], [A, B, D],
    ],
    'dsmonPdist' => [
        'dsmonPdistTimeMark',
        fn(int $mark, array $row) => dsmon_pdstats_getnext(
            $link,
            1,
            $mark,
            $row['dsmonAggGroupIndex'] ?? 0,
            $row['protocolDirLocalIndex'] ?? 0,
        ),
        fn(array $row) => $protocol[$row['protocolDirLocalIndex']],
        ['ip.icmp', 'ip.tcp.www-http', 'ip.udp.domain'], ['ip.icmp', 'ip.udp.domain'],
    ],
    'addressMap' => [
        'addressMapTimeMark',
        fn(int $mark, array $row) => rmon_addrmap_entry_getnext(
            $link,
            $mark,
            $row['protocolDirLocalIndex'] ?? 0,
            $row['addressMapNetworkAddress'] ?? [],
            $row['addressMapSource'] ?? 0,
        ),
        fn(array $row) => address_text($row['addressMapNetworkAddress']), [A, D], [D], // A was at its place before
    ],
];
foreach (['sd' => 'SD', 'ds' => 'DS'] as $view => $name) {
    $tables["nlMatrix$name"] = [
        "nlMatrix{$name}TimeMark",
        fn(int $mark, array $row) => ("rmon_nlmatrix_{$view}_getnext")(
            $link,
            1,
            $mark,
            $row['protocolDirLocalIndex'] ?? 0,
            $row["nlMatrix{$name}SourceAddress"] ?? [],
            $row["nlMatrix{$name}DestAddress"] ?? [],
        ),
        $pair("nlMatrix{$name}SourceAddress", "nlMatrix{$name}DestAddress"),
        [A . ' ' . B, A . ' ' . C, D . ' ' . B], [A . ' ' . B, D . ' ' . B],
    ];
    $tables["alMatrix$name"] = [
        "alMatrix{$name}TimeMark",
        fn(int $mark, array $row) => ("rmon_almatrix_{$view}_getnext")(
            $link,
            1,
            $mark,
            $row['protocolDirLocalIndex'] ?? 0,
            $row["nlMatrix{$name}SourceAddress"] ?? [],
            $row["nlMatrix{$name}DestAddress"] ?? [],
            $row['protocolDirLocalIndex2'] ?? 0,
        ),
        $pair("nlMatrix{$name}SourceAddress", "nlMatrix{$name}DestAddress"),
        [A . ' ' . B . ' ip.udp', A . ' ' . B . ' ip.udp.domain', A . ' ' . C . ' ip.tcp', A . ' ' . C . ' ip.tcp.www-http', D . ' ' . B . ' ip.icmp'],
        [A . ' ' . B . ' ip.udp', A . ' ' . B . ' ip.udp.domain', D . ' ' . B . ' ip.icmp'],
    ];
    $tables["dsmonMatrix$name"] = [
        'dsmonMatrixTimeMark',
        fn(int $mark, array $row) => ("dsmon_matrix{$view}stats_getnext")(
            $link,
            1,
            $mark,
            $row['dsmonAggGroupIndex'] ?? 0,
            $row['dsmonMatrixNLIndex'] ?? 0,
            $row['dsmonMatrixALIndex'] ?? 0,
            $row['dsmonMatrixSourceAddress'] ?? [],
            $row['dsmonMatrixDestAddress'] ?? [],
        ),
        $pair('dsmonMatrixSourceAddress', 'dsmonMatrixDestAddress'),
        [A . ' ' . B . ' ip.udp.domain', A . ' ' . C . ' ip.tcp.www-http', D . ' ' . B . ' ip.icmp'], [A . ' ' . B . ' ip.udp.domain', D . ' ' . B . ' ip.icmp'],
    ];
}
foreach ($tables as $name => [$key, $next, $show, $all, $since]) {
    expect_same($all, changed(0, $key, $next, $show), "$name: all rows");
    expect_same($all, changed($before, $key, $next, $show), "$name: rows that changed since the first frames");
    expect_same($since, changed($mark, $key, $next, $show), "$name: rows that changed since the mark");
    expect_same([], changed(0xffffffff, $key, $next, $show), "$name: rows that changed later");
}

// The other reads have the same filter.
expect_same(false, rmon_nlhost_get($link, 1, $mark, $index['ip'], address(C)), 'get of a host that did not change');
expect_same(
    $mark,
    rmon_nlhost_get($link, 1, $mark, $index['ip'], address(A))['nlHostTimeMark'],
    'get of one that changed',
);
expect_same([A, B, D], array_map($host, rmon_nlhost_getbulk($link, 0, $mark, 0, [], 10)), 'getbulk');
expect_same([A, B], array_map($host, rmon_nlhost_getbulk($link, 0, $mark, 0, [], 2)), 'getbulk of two rows');
expect_same(
    [0 => -1, 'status' => -1],
    dsmon_hoststats_get($link, 1, $mark, 0, $index['ip'], address(C)),
    'get of a host of a group that did not change',
);

agent_done($agent);
--EXPECT--
OK
