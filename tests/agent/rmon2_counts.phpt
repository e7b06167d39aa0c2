--TEST--
The bundled agent's counts by protocol, address, host and pair of hosts are exact for known frames
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
const C = '10.0.1.3';
const GROUP = '224.0.0.251';
const A6 = 'fe80::1';
const B6 = 'fe80::2';

$query = fn(int $size) => udp(40000, 53, str_repeat('q', $size));
$advertisement = fn(string $target, string $mac) => "\x88\0\0\0\x60\0\0\0" . inet_pton($target) . "\2\1" . $mac;
$long = ip4(A, B, 17, udp(53, 40000, str_repeat('r', 1000)));
$later = substr_replace($long, pack('n', 100), 6, 2); // a later fragment: no ports

// The frames, how many of each; lengths with the check sequence stand beside them.
$frames = [
    [10, ethernet(mac(2), mac(1), 0x0800, ip4(A, B, 17, $query(58)))],                  // 104, domain, from A to B
    [7, ethernet(mac(1), mac(2), 0x0800, ip4(B, A, 17, udp(53, 40000, str_repeat('r', 158))))], // 204, domain, back
    [5, ethernet(mac(2), mac(1), 0x0800, ip4(A, B, 17, udp(1000, 1001)))],             // 64, udp
    [4, ethernet(mac(2), mac(1), 0x0800, ip4(A, B, 6, tcp(50000, 80, 2)))],            // 64, www-http
    [3, ethernet(mac(9), mac(8), 0x0800, ip4(C, A, 6, tcp(22, 80, 2)))],               // 64, ssh: the lower port
    [6, ethernet("\x01\0\x5e\0\0\xfb", mac(1), 0x0800, ip4(A, GROUP, 17, udp(5353, 5353)))], // 64, mdns
    [2, ethernet(mac(2), mac(1), 0x0800, ip4(A, B, 1, 'echo'))],                       // 64, icmp
    [8, ethernet(mac(2), mac(1), 0x0800, ip4(A, B, 99, 'what'))],                      // 64, ip only
    [1, ethernet(mac(2), mac(1), 0x0800, $later)],                                     // 1046, udp
    [9, ethernet(mac(2), mac(1), 0x86dd, ip6(A6, B6, 17, udp(546, 547, str_repeat('s', 38))))], // 104, dhcp6-client
    [2, ethernet(mac(1), mac(2), 0x86dd, ip6(B6, A6, 58, $advertisement('fe80::77', mac(77))))], // 90: icmp6
    [3, ethernet("\xff\xff\xff\xff\xff\xff", mac(3), 0x0806, arp(1, mac(3), '10.0.0.3', mac(0), A))], // 64, arp
    [4, ethernet(mac(2), mac(1), 0x0800, ip4(A, B, 17, $query(18)), 5)],               // 68, domain in a VLAN
    [2, ethernet(mac(2), mac(1), 0x9999, 'unknown')],                                  // 64, none above ether2
    [1, ethernet(mac(2), mac(1), 38, "\x42\x42\x03")],                                 // 64, llc.bpdu
    [3, ethernet(mac(2), mac(1), 38, "\x06\x06\x03")],                                 // 64, none above llc
    [2, substr(ethernet(mac(2), mac(1), 38, ''), 0, 8)],                               // 12: no header at all
];
$list = [];
foreach ($frames as [$count, $frame]) {
    $list = [...$list, ...array_fill(0, $count, [1.0, $frame])];
}
$agent = reading_agent([capture_file($list)]);
$link = module_link($agent);
$client = client($agent);
$index = protocol_indexes($link);
$name = array_flip($index);

expect_same(NO_ERROR, start_row(fn(int $status) => rmon_pdist_ctl_set($link, 5, 1, 'me', $status)), 'distribution');
expect_same(NO_ERROR, start_row(fn(int $status) => rmon_addrmap_ctl_set($link, 5, 1, 'me', $status)), 'address map');
expect_same(NO_ERROR, start_row(fn(int $status) => rmon_hlhost_ctl_set($link, 5, 1, -1, -1, 'me', $status)), 'hosts');
expect_same(
    NO_ERROR,
    start_row(fn(int $status) => rmon_hlmatrix_ctl_set($link, 5, 1, -1, -1, 'me', $status)),
    'matrix',
);
foreach ([
    rmon_pdist_stats_getnext($link, 0, 0), rmon_addrmap_entry_getnext($link, 0, 0, [], 0),
    rmon_nlhost_getnext($link, 0, 0, 0, []), rmon_alhost_getnext($link, 0, 0, 0, [], 0),
    rmon_nlmatrix_sd_getnext($link, 0, 0, 0, [], []), rmon_almatrix_ds_getnext($link, 0, 0, 0, [], [], 0),
] as $table => $row) {
    expect_same(false, $row, "table $table before the frames");
}
read_files($agent);

// ---- Distribution: each protocol with all that stands above it -----------------------------

$domain = [10 + 7 + 4, 10 * 104 + 7 * 204 + 4 * 68];
$udp = [$domain[0] + 5 + 6 + 1, $domain[1] + 5 * 64 + 6 * 64 + 1046];
$ip = [$udp[0] + 4 + 3 + 2 + 8, $udp[1] + 17 * 64];
$ip6 = [9 + 2, 9 * 104 + 2 * 90];
$expected = [
    'ether2' => [$ip[0] + $ip6[0] + 3 + 2, $ip[1] + $ip6[1] + 5 * 64], 'llc' => [4, 4 * 64], 'ip' => $ip,
    'ip.icmp' => [2, 128], 'ip.tcp' => [7, 448], 'ip.tcp.ssh' => [3, 192], 'ip.tcp.www-http' => [4, 256], 'ip.udp' => $udp,
    'ip.udp.domain' => $domain, 'ip.udp.mdns' => [6, 384], 'arp' => [3, 192], 'ip6' => $ip6,
    'ip6.udp' => [9, 936], 'ip6.udp.dhcp6-client' => [9, 936], 'ip6.icmp6' => [2, 180], 'llc.bpdu' => [1, 64],
];
$rows = rmon_pdist_stats_getbulk($link, 0, 0, 1000);
$got = [];
foreach ($rows as $row) {
    $got[$name[$row['protocolDirLocalIndex']]] = [
        (int) $row['protocolDistStatsPkts'],
        (int) $row['protocolDistStatsOctets'],
    ];
    expect_same(rmon_pdir_byidx_get($link, $row['protocolDirLocalIndex'])['flags'], $row['pd_flags'], 'flags');
    expect_same($row, rmon_pdist_stats_get($link, 5, $row['protocolDirLocalIndex']), 'get');
}
ksort($expected);
$order = array_column($rows, 'protocolDirLocalIndex');
$sorted = $order;
sort($sorted);
expect_same($sorted, $order, 'the order of the distribution');
ksort($got);
expect_same($expected, $got, 'the distribution');
for ($walked = [], $at = [0, 0]; $row = rmon_pdist_stats_getnext($link, ...$at);) {
    $walked[] = $row;
    $at = [$row['protocolDistControlIndex'], $row['protocolDirLocalIndex']];
}
expect_same($rows, $walked, 'walk of the distribution');
expect_same(array_slice($rows, 2, 3), rmon_pdist_stats_getbulk($link, 5, $order[1], 3), 'three rows');
expect_same(false, rmon_pdist_stats_get($link, 5, $index['ip.tcp.telnet']), 'a protocol without traffic');
expect_same(false, rmon_pdist_stats_get($link, 6, $index['ip']), 'a row of no control row');

// Of no known protocol: an unknown type, an unknown access point, and frames without a header.
expect_same(
    [0 => 0, 'status' => 0, 'packets' => 7.0, 'octets' => 5.0 * 64 + 2 * 12],
    rmon_pdist_stats_getothers($link, 5),
    'others',
);

// A row that is made persistent is shown without traffic, for as long as it is persistent.
$persistent = fn(int $procedure, string $which) => status_of(ask(
    $client,
    $procedure,
    i32(5) . i32($index[$which] ?? 0x7fffffff) . i32(1) . i32(1),
));
expect_same(NO_SUCH_NAME, $persistent(176, 'ip.tcp.telnet'), 'not persistent yet');
expect_same(NO_ERROR, $persistent(175, 'ip.tcp.telnet'), 'make persistent');
expect_same(
    0.0,
    rmon_pdist_stats_get($link, 5, $index['ip.tcp.telnet'])['protocolDistStatsPkts'],
    'a row without traffic',
);
expect_same(NO_ERROR, $persistent(176, 'ip.tcp.telnet'), 'make nonpersistent');
expect_same(false, rmon_pdist_stats_get($link, 5, $index['ip.tcp.telnet']), 'the row is gone');
expect_same(NO_SUCH_NAME, $persistent(175, 'no protocol'), 'make no protocol persistent');

// ---- Address map -------------------------------------------------------------------------------

$expected = [
    [A, 'ip', mac(1)], [B, 'ip', mac(2)], ['10.0.0.3', 'ip', mac(3)], [C, 'ip', mac(8)],
    [A6, 'ip6', mac(1)], [B6, 'ip6', mac(2)], ['fe80::77', 'ip6', mac(77)],
];
$rows = rmon_addrmap_entry_getbulk($link, 0, 0, [], 0, 1000);
$got = array_map(
    fn($row) => [
        address_text($row['addressMapNetworkAddress']),
        $name[$row['protocolDirLocalIndex']],
        pack('C*', ...$row['addressMapPhysicalAddress']),
    ],
    $rows,
);
expect_same($expected, $got, 'address map');
$up_time = rmon_system_get($link)['sysUpTime'];
for ($walked = [], $at = [0, [], 0]; $row = rmon_addrmap_entry_getnext($link, 0, ...$at);) {
    $walked[] = $row;
    $at = [$row['protocolDirLocalIndex'], $row['addressMapNetworkAddress'], $row['addressMapSource']];
    expect_same($row, rmon_addrmap_entry_get($link, 0, ...$at), 'get');
    expect_same(
        [1, true],
        [$row['addressMapSource'], $row['addressMapLastChange'] <= $up_time],
        'source and last change',
    );
}
expect_same($rows, $walked, 'walk of the address map');
expect_same(
    false,
    rmon_addrmap_entry_get($link, 0, $index['ip'], address(GROUP), 1),
    'a group has no physical address',
);
expect_same(
    ['status' => 0, 'addressMapInserts' => 7, 'addressMapDeletes' => 0, 'addressMapMaxDesiredEntries' => -1],
    array_slice(rmon_addrmap_scalars_get($link), 1),
    'scalars',
);

// ---- Hosts ---------------------------------------------------------------------------------------

/** Counts of the rows by their names: in packets, out packets, in octets, out octets, out to groups. */
function host_counts(array $rows, string $layer): array
{
    global $name, $up_time;
    $got = [];
    foreach ($rows as $row) {
        $key = address_text($row['nlHostAddress']) . ' ' . $name[$row['protocolDirLocalIndex2'] ?? $row['protocolDirLocalIndex']];
        $got[$key] = array_map(
            fn($counter) => (int) $row[$layer . $counter],
            ['HostInPkts', 'HostOutPkts', 'HostInOctets', 'HostOutOctets'],
        );
        if ($layer === 'nl') {
            $got[$key][] = (int) $row['nlHostOutMacNonUnicastPkts'];
        }
        expect_same(
            [0, true],
            [$row[$layer . 'HostTimeMark'], $row[$layer . 'HostCreateTime'] <= $up_time],
            "times of $key",
        );
    }
    return $got;
}

$out = 10 + 5 + 4 + 6 + 2 + 8 + 1 + 4;
$outOctets = 10 * 104 + 25 * 64 + 1046 + 4 * 68;
$expected = [
    A . ' ip' => [7 + 3, $out, 7 * 204 + 3 * 64, $outOctets, 6],
    B . ' ip' => [$out - 6, 7, $outOctets - 6 * 64, 7 * 204, 0],
    C . ' ip' => [0, 3, 0, 192, 0],
    GROUP . ' ip' => [6, 0, 384, 0, 0],
    A6 . ' ip6' => [2, 9, 180, 936, 0],
    B6 . ' ip6' => [9, 2, 936, 180, 0],
];
$rows = rmon_nlhost_getbulk($link, 0, 0, 0, [], 1000);
expect_same($expected, host_counts($rows, 'nl'), 'hosts of the network layer');
for ($walked = [], $at = [0, 0, 0, []]; $row = rmon_nlhost_getnext($link, ...$at);) {
    $walked[] = $row;
    $at = [$row['hlHostControlIndex'], 0, $row['protocolDirLocalIndex'], $row['nlHostAddress']];
    expect_same($row, rmon_nlhost_get($link, ...$at), 'get');
}
expect_same($rows, $walked, 'walk of the hosts');

$expected = [
    A . ' ip.icmp' => [0, 2, 0, 128], A . ' ip.tcp' => [3, 4, 192, 256], A . ' ip.tcp.ssh' => [3, 0, 192, 0],
    A . ' ip.tcp.www-http' => [0, 4, 0, 256],
    A . ' ip.udp' => [7, 26, 1428, 10 * 104 + 4 * 68 + 11 * 64 + 1046],
    A . ' ip.udp.domain' => [7, 14, 1428, 10 * 104 + 4 * 68], A . ' ip.udp.mdns' => [0, 6, 0, 384],
    B . ' ip.icmp' => [2, 0, 128, 0], B . ' ip.tcp' => [4, 0, 256, 0], B . ' ip.tcp.www-http' => [4, 0, 256, 0],
    B . ' ip.udp' => [20, 7, 10 * 104 + 4 * 68 + 5 * 64 + 1046, 1428],
    B . ' ip.udp.domain' => [14, 7, 10 * 104 + 4 * 68, 1428],
    C . ' ip.tcp' => [0, 3, 0, 192], C . ' ip.tcp.ssh' => [0, 3, 0, 192],
    GROUP . ' ip.udp' => [6, 0, 384, 0], GROUP . ' ip.udp.mdns' => [6, 0, 384, 0],
    A6 . ' ip6.udp' => [0, 9, 0, 936], A6 . ' ip6.udp.dhcp6-client' => [0, 9, 0, 936], A6 . ' ip6.icmp6' => [2, 0, 180, 0],
    B6 . ' ip6.udp' => [9, 0, 936, 0], B6 . ' ip6.udp.dhcp6-client' => [9, 0, 936, 0], B6 . ' ip6.icmp6' => [0, 2, 0, 180],
];
$rows = rmon_alhost_getbulk($link, 0, 0, 0, [], 0, 1000);
expect_same($expected, host_counts($rows, 'al'), 'hosts of the application layer');
for ($walked = [], $at = [0, 0, 0, [], 0]; $row = rmon_alhost_getnext($link, ...$at);) {
    $walked[] = $row;
    $at = [
        $row['hlHostControlIndex'],
        0,
        $row['protocolDirLocalIndex'],
        $row['nlHostAddress'],
        $row['protocolDirLocalIndex2'],
    ];
    expect_same($row, rmon_alhost_get($link, ...$at), 'get');
}
expect_same($rows, $walked, 'walk of the hosts by application');
$control = rmon_hlhost_ctl_get($link, 5);
expect_same(
    [0, 6, 0, 0, 22, 0],
    array_map(
        fn($field) => $control["hlHostControl$field"],
        ['NlDroppedFrames', 'NlInserts', 'NlDeletes', 'AlDroppedFrames', 'AlInserts', 'AlDeletes'],
    ),
    'counts of the hosts',
);

// ---- Matrix --------------------------------------------------------------------------------------

/** The pairs of rows with their counts, in the order of the rows. */
function pair_counts(array $rows, string $layer, string $view): array
{
    global $name;
    $got = [];
    foreach ($rows as $row) {
        $protocol = $name[$row['protocolDirLocalIndex2'] ?? $row['protocolDirLocalIndex']];
        $pair = address_text($row["nlMatrix{$view}SourceAddress"]) . ' ' . address_text($row["nlMatrix{$view}DestAddress"]);
        $got["$pair $protocol"] = [(int) $row["{$layer}Matrix{$view}Pkts"], (int) $row["{$layer}Matrix{$view}Octets"]];
    }
    return $got;
}

/** The rows that a walk of a view meets; $next takes what identifies a row. */
function walk_pairs(string $function, string $view, bool $applications): array
{
    global $link;
    $walked = [];
    for ($at = [0, 0, 0, [], [], ...($applications ? [0] : [])]; $row = ("{$function}_getnext")($link, ...$at);) {
        $walked[] = $row;
        $at = [
            $row['hlMatrixControlIndex'],
            0,
            $row['protocolDirLocalIndex'],
            $row["nlMatrix{$view}SourceAddress"],
            $row["nlMatrix{$view}DestAddress"],
        ];
        if ($applications) {
            $at[] = $row['protocolDirLocalIndex2'];
        }
        expect_same($row, ("{$function}_get")($link, ...$at), "$function get");
    }
    return $walked;
}

$pairs = [
    A . ' ' . B . ' ip' => [$out - 6, $outOctets - 384], A . ' ' . GROUP . ' ip' => [6, 384], B . ' ' . A . ' ip' => [7, 1428],
    C . ' ' . A . ' ip' => [3, 192], A6 . ' ' . B6 . ' ip6' => [9, 936], B6 . ' ' . A6 . ' ip6' => [2, 180],
];
$rows = rmon_nlmatrix_sd_getbulk($link, 0, 0, 0, [], [], 1000);
expect_same($pairs, pair_counts($rows, 'nl', 'SD'), 'pairs by source');
expect_same($rows, walk_pairs('rmon_nlmatrix_sd', 'SD', false), 'walk by source');
$rows = rmon_nlmatrix_ds_getbulk($link, 0, 0, 0, [], [], 1000);
$by_destination = [B . ' ' . A, C . ' ' . A, A . ' ' . B, A . ' ' . GROUP];
$expected = [];
foreach ($by_destination as $pair) {
    $expected["$pair ip"] = $pairs["$pair ip"];
}
$expected += [B6 . ' ' . A6 . ' ip6' => [2, 180], A6 . ' ' . B6 . ' ip6' => [9, 936]];
expect_same($expected, pair_counts($rows, 'nl', 'DS'), 'pairs by destination');
expect_same($rows, walk_pairs('rmon_nlmatrix_ds', 'DS', false), 'walk by destination');

$ab = A . ' ' . B;
$expected = [
    "$ab ip.icmp" => [2, 128], "$ab ip.tcp" => [4, 256], "$ab ip.tcp.www-http" => [4, 256],
    "$ab ip.udp" => [20, 10 * 104 + 4 * 68 + 5 * 64 + 1046], "$ab ip.udp.domain" => [14, 10 * 104 + 4 * 68],
    A . ' ' . GROUP . ' ip.udp' => [6, 384], A . ' ' . GROUP . ' ip.udp.mdns' => [6, 384],
    B . ' ' . A . ' ip.udp' => [7, 1428], B . ' ' . A . ' ip.udp.domain' => [7, 1428],
    C . ' ' . A . ' ip.tcp' => [3, 192], C . ' ' . A . ' ip.tcp.ssh' => [3, 192],
    A6 . ' ' . B6 . ' ip6.udp' => [9, 936], A6 . ' ' . B6 . ' ip6.udp.dhcp6-client' => [9, 936],
    B6 . ' ' . A6 . ' ip6.icmp6' => [2, 180],
];
$rows = rmon_almatrix_sd_getbulk($link, 0, 0, 0, [], [], 0, 1000);
expect_same($expected, pair_counts($rows, 'al', 'SD'), 'pairs by application');
expect_same($rows, walk_pairs('rmon_almatrix_sd', 'SD', true), 'walk by application and source');
$rows = rmon_almatrix_ds_getbulk($link, 0, 0, 0, [], [], 0, 1000);
$got = pair_counts($rows, 'al', 'DS');
expect_same(B . ' ' . A . ' ip.udp', array_key_first($got), 'the first by destination');
ksort($expected);
ksort($got);
expect_same($expected, $got, 'pairs by application and destination');
expect_same($rows, walk_pairs('rmon_almatrix_ds', 'DS', true), 'walk by application and destination');

// An index need not be one of a row: the shorter address stands first, then the smaller one.
expect_same(
    A,
    address_text(rmon_nlhost_getnext($link, 5, 0, $index['ip'], [255, 255, 255])['nlHostAddress']),
    'behind a shorter address',
);
expect_same(
    C,
    address_text(rmon_nlhost_getnext($link, 5, 0, $index['ip'], [10, 0, 0, 255])['nlHostAddress']),
    'between addresses',
);
expect_same(
    A6,
    address_text(rmon_nlhost_getnext($link, 5, 0, $index['ip'], array_fill(0, 255, 0))['nlHostAddress']),
    'behind all addresses of a protocol',
);
expect_same(false, rmon_nlhost_getnext($link, 5, 0, 0x7fffffff, []), 'behind all protocols');
expect_same(false, rmon_nlhost_get($link, 5, 0, $index['ip'], [...address(A), 0]), 'an address that is longer');

// Time marks: rows that changed at or after them.
$later = rmon_system_get($link)['sysUpTime'] + 1;
expect_same(6, count(rmon_nlhost_getbulk($link, 0, 0, 0, [], 1000)), 'rows of any time');
expect_same(false, rmon_nlhost_getbulk($link, 0, $later, 0, [], 1000), 'rows that changed later');
expect_same(
    false,
    rmon_almatrix_ds_get($link, 5, $later, $index['ip'], address(A), address(B), $index['ip.tcp']),
    'a row that changed later',
);
expect_same(false, rmon_addrmap_entry_getnext($link, $later, 0, [], 0), 'addresses that changed later');
$created = rmon_nlhost_getnext($link, 0, 0, 0, [])['nlHostCreateTime'];
$row = rmon_nlhost_getnext($link, 0, $created, 0, []);
expect_same([$created, A], [$row['nlHostTimeMark'], address_text($row['nlHostAddress'])], 'rows that changed since');

// A protocol that is not counted any more loses its rows; one that is removed counts as the one below.
$off = fn(int $host, int $matrix, int $status) => rmon_pdir_set(
    $link,
    ...[...protocol_key(1, 0x800, 17, 53), 'dns', 1, $host, $matrix, 3, '', $status],
);
expect_same(NO_ERROR, $off(2, 3, VALID), 'hosts of domain off');
expect_same(20, count(rmon_alhost_getbulk($link, 0, 0, 0, [], 0, 1000)), 'hosts without domain');
expect_same(14, count(rmon_almatrix_sd_getbulk($link, 0, 0, 0, [], [], 0, 1000)), 'the matrix is as it was');
expect_same(2, rmon_hlhost_ctl_get($link, 5)['hlHostControlAlDeletes'], 'deletes');
expect_same(NO_ERROR, $off(2, 2, INVALID), 'domain goes');
expect_same(12, count(rmon_almatrix_sd_getbulk($link, 0, 0, 0, [], [], 0, 1000)), 'the matrix without domain');
expect_same(false, rmon_pdist_stats_get($link, 5, $index['ip.udp.domain']), 'the distribution without domain');
expect_same(
    (float) $udp[0],
    rmon_pdist_stats_get($link, 5, $index['ip.udp'])['protocolDistStatsPkts'],
    'packets of udp',
);

rmon_close($link);
agent_done($agent);
--EXPECT--
OK
