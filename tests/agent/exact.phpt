--TEST--
The bundled agent's counters of all groups agree with tcpdump's count of the same frames
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
require __DIR__ . '/tcpdump.inc';
require __DIR__ . '/random_capture.inc'; // $frames

/*
 * Where the agent counts otherwise than tcpdump, by RFC 2819 and README:
 * - lengths contain the check sequence, which captures leave out: 4 octets more;
 * - broadcast and multicast packets are good ones, of 64 to 1518 octets;
 * - hosts and pairs (RMON1) are found by good frames; until then their bad ones don't count.
 */
const CHECK_SEQUENCE = 4;

$file = capture_file($frames);

// ---- What tcpdump finds in it ------------------------------------------------------

/** What there is to count of a frame. */
final class Seen
{
    public int $octets;
    public string $from;
    public string $to;
    public ?int $vlan = null;
    public ?int $priority = null;
    public ?string $ip_from = null;
    public ?string $ip_to = null;
    public bool $is_ip = false; // as against ARP
    public int $dscp = 0;
    public string $text;
}

/** @var array<string, Seen> */
$seen = [];
$lengths = tcpdump_lengths($file);
foreach (tcpdump($file, '', '-e', '-v', '-q') as $time => $text) {
    $frame = $seen[$time] = new Seen();
    $frame->text = $text;
    preg_match('/^(\S+) > (\S+), /', $text, $parts) || fail("tcpdump's line", $text);
    [, $frame->from, $frame->to] = $parts;
    $frame->octets = $lengths[$time] + CHECK_SEQUENCE;
    if (preg_match('/vlan (\d+), p (\d+)/', $text, $parts)) {
        [$frame->vlan, $frame->priority] = [(int) $parts[1], (int) $parts[2]];
    }
    if (preg_match('/ IPv4\b[^\n]*?\(tos 0x([0-9a-f]+),.*?\n\s+(\d+\.\d+\.\d+\.\d+)\S* > (\d+\.\d+\.\d+\.\d+)/s', $text, $parts)) {
        [, $tos, $frame->ip_from, $frame->ip_to] = $parts;
    } elseif (preg_match('/ IPv6, [^\n]*?\((?:class 0x([0-9a-f]+), )?.*?\) ([0-9a-f:]+)\S* > ([0-9a-f:]+)/s', $text, $parts)) {
        [, $tos, $frame->ip_from, $frame->ip_to] = $parts;
    } else {
        continue;
    }
    [$frame->is_ip, $frame->dscp] = [true, (int) hexdec($tos) >> 2];
    // A port stands behind an IPv6 address with a dot, which ends the pattern.
    $frame->ip_to = rtrim($frame->ip_to, ':');
}
expect_same(count($frames), count($seen), 'frames that tcpdump tells of');

/** Packets and octets of frames. @param array<string, mixed> $times */
function sum(array $times): array
{
    global $seen;
    return [count($times), array_sum(array_map(fn(Seen $frame) => $frame->octets, array_intersect_key($seen, $times)))];
}

function sum_where(callable $wanted): array
{
    global $seen;
    return sum(array_filter($seen, $wanted));
}

/** Sums of frames by what $key gives of them; null gives none. */
function sums_by(callable $key, ?array $times = null): array
{
    global $seen;
    $groups = [];
    foreach ($times === null ? $seen : array_intersect_key($seen, $times) as $time => $frame) {
        $at = $key($frame);
        if ($at !== null) {
            $groups[$at][$time] = true;
        }
    }
    ksort($groups);
    return array_map(sum(...), $groups);
}

// SNAP and what stands behind it, by its place in the frame.
const SNAP = '(ether[12:2] <= 1500 and ether[14:4] = 0xaaaa0300 and ether[18:2] = 0 and ether[20:2] >= 0x600)';

/** A filter for two ports, of which the lower known one tells the application. */
function port_filter(int $protocol, int $port, string $source, string $destination): string
{
    $lower = array_filter(KNOWN_PORTS[$protocol], fn(int $other) => $other < $port);
    $one = fn(string $mine, string $others) => "$mine = $port"
        . implode('', array_map(fn(int $other) => " and not $others = $other", $lower));
    return "(({$one($source, $destination)}) or ({$one($destination, $source)}))";
}

/** A filter for a protocol that IPv4 carries and, if not 0, its port. Later fragments have no ports. */
function ip4_filter(int $protocol, int $port): string
{
    $rules = function (string $packet, int $at) use ($protocol, $port): string {
        $octet = fn(int $offset, string $more = '') => "{$packet}[" . $at + $offset . "$more]";
        $payload = '(' . $octet(0) . ' & 15) * 4';
        return "{$octet(9)} = $protocol" . ($port === 0 ? '' : " and {$octet(6, ':2')} & 0x1fff = 0 and "
            . port_filter($protocol, $port, "{$packet}[$payload + $at:2]", "{$packet}[$payload + " . $at + 2 . ':2]'));
    };
    return '(' . SNAP . " and ether[20:2] = 0x0800 and {$rules('ether', 22)}) or " . tagged("ip and {$rules('ip', 0)}");
}

/** The same for IPv6, with up to two extension headers of 8 octets. What is behind a later fragment's is only named. */
function ip6_filter(int $protocol, int $port): string
{
    $later = fn(string $next, int $header) => "($next = 44 and not ip6[" . $header + 2 . ':2] & 0xfff8 = 0)';
    $extension = fn(string $next) => "($next = 0 or $next = 43 or $next = 44 or $next = 60)";
    $ports = fn(int $at) => $port === 0 ? '' : ' and ' . port_filter($protocol, $port, "ip6[$at:2]", 'ip6[' . $at + 2 . ':2]');
    $whole = fn(string $later) => $port === 0 ? '' : " and not $later";
    return tagged('ip6 and (' . implode(' or ', [
        "(ip6[6] = $protocol{$ports(40)})",
        "({$extension('ip6[6]')} and ip6[40] = $protocol{$whole($later('ip6[6]', 40))}{$ports(48)})",
        "({$extension('ip6[6]')} and not {$later('ip6[6]', 40)} and {$extension('ip6[40]')} and ip6[48] = $protocol"
            . "{$whole($later('ip6[40]', 48))}{$ports(56)})",
    ]) . ')');
}

/** A filter for a protocol, by the numbers of its identifier's layers; null for applications that the capture lacks. */
function protocol_filter(int ...$layers): ?string
{
    [$base, $type, $protocol, $port] = $layers + [0, 0, 0, 0];
    if ($base === 2) {
        return 'ether[12:2] <= 1500 and not ' . SNAP . ($type ? " and ether[14] = $type" : '');
    }
    if ($port !== 0 && !in_array($port, KNOWN_PORTS[$protocol], true)) {
        return null;
    }
    return match (true) {
        $type === 0 => SNAP . ' or ether[12:2] > 1500',
        $protocol === 0 => '(' . SNAP . " and ether[20:2] = $type) or " . tagged("ether proto $type"),
        $type === 0x0800 => ip4_filter($protocol, $port),
        $type === 0x86dd => ip6_filter($protocol, $port),
    };
}

// ---- The agent -----------------------------------------------------------------------

$agent = reading_agent([$file]);
$link = module_link($agent);
foreach (start_groups($link, 1, -1) as $group => $status) {
    expect_same(1, $status, "status of $group");
}
read_files($agent);

/** Keys of a bulk read's rows without what is the same in all of them. */
function numbers(array $row, string ...$names): array
{
    return array_map(fn(string $name) => (int) $row[$name], $names);
}

function mac_text(array $octets): string
{
    return implode(':', array_map(fn(int $octet) => sprintf('%02x', $octet), $octets));
}

// Ethernet statistics: size classes.
$good = fn(Seen $frame) => $frame->octets >= 64 && $frame->octets <= 1518;
$group = fn(string $mac) => (hexdec(substr($mac, 0, 2)) & 1) === 1;
const EVERYBODY = 'ff:ff:ff:ff:ff:ff';
$row = rmon_etherstats_get($link, 1);
[$packets, $octets] = sum($seen);
$expected = [
    'Octets' => $octets,
    'Pkts' => $packets,
    'BroadcastPkts' => tcpdump_count($file, 'ether broadcast and len >= 60 and len <= 1514'),
    'MulticastPkts' => tcpdump_count($file, 'ether multicast and not ether broadcast and len >= 60 and len <= 1514'),
    'UndersizePkts' => tcpdump_count($file, 'len < 60'),
    'OversizePkts' => tcpdump_count($file, 'len > 1514'),
];
foreach ([
    '64' => [60, 60], '65to127' => [61, 123], '128to255' => [124, 251], '256to511' => [252, 507],
    '512to1023' => [508, 1019], '1024to1518' => [1020, 1514],
] as $name => [$least, $most]) {
    $expected["Pkts{$name}Octets"] = tcpdump_count($file, "len >= $least and len <= $most");
}
foreach ($expected as $name => $count) {
    expect_same(true, $count > 0, "frames for $name");
    expect_same($count, (int) $row["etherStats$name"], "etherStats$name");
}

// History: its intervals together have each frame once.
expect_soon([$packets, $octets, $expected['BroadcastPkts'], $expected['OversizePkts']], function () use ($link): array {
    $sums = [0, 0, 0, 0];
    for ($sample = 0; ($row = rmon_etherhistory_getnext($link, 40, $sample)) && $row['etherHistoryIndex'] === 40; $sample = $row['etherHistorySampleIndex']) {
        foreach (['Pkts', 'Octets', 'BroadcastPkts', 'OversizePkts'] as $i => $name) {
            $sums[$i] += (int) $row["etherHistory$name"];
        }
    }
    return $sums;
}, 'history');

// Hosts and pairs by MAC address: bad frames count from the first good one on.
$hosts = $pairs = [];
foreach ($seen as $frame) {
    $pair = "$frame->from $frame->to";
    if (!$good($frame)) {
        if (isset($hosts[$frame->from])) {
            $hosts[$frame->from] = array_map(
                fn($a, $b) => $a + $b,
                $hosts[$frame->from],
                [0, 1, 0, $frame->octets, 1, 0, 0],
            );
        }
        if (isset($pairs[$pair])) {
            $pairs[$pair] = array_map(fn($a, $b) => $a + $b, $pairs[$pair], [1, $frame->octets, 1]);
        }
        continue;
    }
    $sent = [
        0,
        1,
        0,
        $frame->octets,
        0,
        (int) ($frame->to === EVERYBODY),
        (int) ($group($frame->to) && $frame->to !== EVERYBODY),
    ];
    $hosts[$frame->from] = array_map(fn($a, $b) => $a + $b, $hosts[$frame->from] ?? array_fill(0, 7, 0), $sent);
    $hosts[$frame->to] = array_map(
        fn($a, $b) => $a + $b,
        $hosts[$frame->to] ?? array_fill(0, 7, 0),
        [1, 0, $frame->octets, 0, 0, 0, 0],
    );
    $pairs[$pair] = array_map(fn($a, $b) => $a + $b, $pairs[$pair] ?? [0, 0, 0], [1, $frame->octets, 0]);
}
ksort($hosts);
ksort($pairs);
$from = [];
$got = [];
foreach (rmon_host_getbulk($link, 1, $from, 10000) as $row) {
    $got[mac_text($row['hostAddress'])] = numbers(
        $row, 'hostInPkts', 'hostOutPkts', 'hostInOctets', 'hostOutOctets', 'hostOutErrors', 'hostOutBroadcastPkts', 'hostOutMulticastPkts');
}
expect_same($hosts, $got, 'hosts by MAC address');
foreach (['sd', 'ds'] as $way) {
    [$from, $to] = [[], []];
    $got = [];
    $name = 'matrix' . strtoupper($way);
    foreach ("rmon_matrix_{$way}_getbulk"($link, 1, $from, $to, 10000) as $row) {
        $got[mac_text($row["{$name}SourceAddress"]) . ' ' . mac_text($row["{$name}DestAddress"])] = numbers($row, "{$name}Pkts", "{$name}Octets", "{$name}Errors");
    }
    ksort($got);
    expect_same($pairs, $got, "pairs of MAC addresses, $way");
}

// VLANs and priorities: the outermost tag. VLAN 4095 is none.
$got = $expected = [];
for ($id = -1; ($row = rmon_vlan_getnext($link, 1, $id))['status'] === 0; $id = $row['smonVlanIdStatsId']) {
    $got[$row['smonVlanIdStatsId']] = numbers(
        $row, 'smonVlanIdStatsTotalPkts', 'smonVlanIdStatsTotalOctets', 'smonVlanIdStatsNUcastPkts', 'smonVlanIdStatsNUcastOctets');
}
foreach (array_diff_key(sums_by(fn(Seen $frame) => $frame->vlan), [4095 => 0]) as $id => $total) {
    $expected[$id] = [...$total, ...sum_where(fn(Seen $frame) => $frame->vlan === $id && $group($frame->to))];
}
expect_same([0, 1, 7, 100, 101, 4094], array_keys($expected), 'VLANs of the capture');
expect_same($expected, $got, 'VLANs');
$got = [];
for ($id = -1; ($row = rmon_prio_getnext($link, 1, $id))['status'] === 0; $id = $row['smonPrioStatsId']) {
    $got[$row['smonPrioStatsId']] = numbers($row, 'smonPrioStatsPkts', 'smonPrioStatsOctets');
}
expect_same(sums_by(fn(Seen $frame) => $frame->priority), $got, 'priorities');

// The channel has a filter on the first octet.
expect_same(
    tcpdump_count($file, 'ether[0] = 2'),
    (int) rmon_channel_get($link, 1)['channelMatches'],
    'matches of the channel',
);

// Which frames each protocol has: of those that the agent knows, by filters made of their identifiers.
/** @var array<int, array<string, mixed>> $frames_of by local index, then by time */
$frames_of = [];
$names = [];
$layers_of = [];
foreach (protocols($link) as $name => $row) {
    $index = $row['protocolDirLocalIndex'];
    $names[$index] = $name;
    $layers_of[$index] = array_values(unpack('N*', pack('C*', ...$row['protocolDirID'])));
    $filter = protocol_filter(...$layers_of[$index]);
    $frames_of[$index] = $filter === null ? [] : tcpdump($file, $filter, '-q');
}
$frames_of = array_filter($frames_of);
ksort($frames_of);
foreach ([
    'llc', 'ether2.ip.udp.snmp', 'ether2.ip.tcp.www-http', 'ether2.ip6.tcp.https', 'ether2.ip6.sctp.sip',
    'ether2.ip6.icmp6', 'ether2.lldp',
] as $name) {
    expect_same(true, in_array(array_search($name, $names, true), array_keys($frames_of), true), "frames of $name");
}

// Distribution, and frames of which no protocol above the base layers is known.
$got = [];
foreach (rmon_pdist_stats_getbulk($link, 1, 0, 10000) as $row) {
    $got[$row['protocolDirLocalIndex']] = numbers($row, 'protocolDistStatsPkts', 'protocolDistStatsOctets');
}
$named = fn(array $rows) => array_combine(
    array_map(fn(int $index) => "$index $names[$index]", array_keys($rows)),
    $rows,
);
expect_same($named(array_map(sum(...), $frames_of)), $named($got), 'distribution');
$above_base = array_filter($frames_of, fn(int $index) => count($layers_of[$index]) > 1, ARRAY_FILTER_USE_KEY);
$others = rmon_pdist_stats_getothers($link, 1);
expect_same(sum(array_diff_key($seen, ...array_values($above_base))), numbers($others, 'packets', 'octets'), 'others');

// By DSCP. The capture has no other IP packets than those with whole headers.
$dscp = fn(Seen $frame) => $frame->is_ip ? $frame->dscp : null;
$got = [];
for ($group_index = -1; ($row = dsmon_stats_getnext($link, 1, $group_index))['status'] === 0; $group_index = $row['dsmonAggGroupIndex']) {
    $got[$group_index = $row['dsmonAggGroupIndex']] = numbers($row, 'dsmonStatsInHCPkts', 'dsmonStatsInHCOctets');
    expect_same([0, 0], numbers($row, 'dsmonStatsOutHCPkts', 'dsmonStatsOutHCOctets'), 'sent by the interface');
}
expect_same(sums_by($dscp), $got, 'by DSCP');
foreach ([0, 46, 63] as $value) {
    $filter = tagged(
        '(ip and ip[1] & 0xfc = ' . ($value << 2) . ') or (ip6 and ip6[0:2] & 0x0fc0 = ' . ($value << 6) . ')',
    )
        . ' or (' . SNAP . ' and ether[20:2] = 0x0800 and ether[23] & 0xfc = ' . ($value << 2) . ')';
    expect_same(tcpdump_count($file, $filter), $got[$value][0], "packets of DSCP $value");
}

// The highest protocol of each frame: the last one of its index, since a protocol's index is above that of the layer below.
$highest = [];
foreach ($frames_of as $index => $times) {
    foreach ($times as $time => $text) {
        $highest[$time] = $index;
    }
}

/** The rows of a walk by getnext; $next is given the row before and returns the next one. */
function rows_of(callable $next): array
{
    $rows = [];
    for ($row = null; ($row = $next($row))['status'] === 0;) {
        $rows[] = $row;
    }
    return $rows;
}

/** Sums of IP frames by DSCP and what $key gives of them. */
function sums_by_dscp(callable $key): array
{
    global $seen;
    $groups = [];
    foreach ($seen as $time => $frame) {
        if ($frame->is_ip) {
            $groups["$frame->dscp " . $key($frame, $time)][$time] = true;
        }
    }
    ksort($groups);
    return array_map(sum(...), $groups);
}

function sorted(array $rows): array
{
    ksort($rows);
    return $rows;
}

$got = [];
foreach (rows_of(fn(?array $row) => dsmon_pdstats_getnext(
    $link, 1, 0, $row['dsmonAggGroupIndex'] ?? 0, $row['protocolDirLocalIndex'] ?? 0)) as $row) {
    $got["$row[dsmonAggGroupIndex] $row[protocolDirLocalIndex]"] = numbers(
        $row,
        'dsmonPdistStatsHCPkts',
        'dsmonPdistStatsHCOctets',
    );
}
expect_same(sums_by_dscp(fn(Seen $frame, string $time) => $highest[$time]), sorted($got), 'protocols by DSCP');

$network = fn(string $address) => array_search(str_contains($address, ':') ? 'ether2.ip6' : 'ether2.ip', $names, true);
$got = ['in' => [], 'out' => []];
foreach (rows_of(function (?array $row) use ($link) {
    $address = $row['dsmonHostAddress'] ?? [];
    return dsmon_hoststats_getnext(
        $link,
        1,
        0,
        $row['dsmonAggGroupIndex'] ?? 0,
        $row['protocolDirLocalIndex'] ?? 0,
        $address,
    );
}) as $row) {
    $at = "$row[dsmonAggGroupIndex] $row[protocolDirLocalIndex] " . address_text($row['dsmonHostAddress']);
    $got['in'][$at] = numbers($row, 'dsmonHostInHCPkts', 'dsmonHostInHCOctets');
    $got['out'][$at] = numbers($row, 'dsmonHostOutHCPkts', 'dsmonHostOutHCOctets');
}
$expected = [
    'in' => sums_by_dscp(fn(Seen $frame) => $network($frame->ip_to) . " $frame->ip_to"),
    'out' => sums_by_dscp(fn(Seen $frame) => $network($frame->ip_from) . " $frame->ip_from"),
];
$none = fn(array $sum) => $sum !== [0, 0];
foreach ($expected as $way => $sums) {
    expect_same($sums, sorted(array_filter($got[$way], $none)), "hosts by DSCP, $way");
}

foreach (['sd', 'ds'] as $way) {
    $got = [];
    foreach (rows_of(function (?array $row) use ($link, $way) {
        [$from, $to] = [$row['dsmonMatrixSourceAddress'] ?? [], $row['dsmonMatrixDestAddress'] ?? []];
        return "dsmon_matrix{$way}stats_getnext"(
            $link,
            1,
            0,
            $row['dsmonAggGroupIndex'] ?? 0,
            $row['dsmonMatrixNLIndex'] ?? 0,
            $row['dsmonMatrixALIndex'] ?? 0,
            $from,
            $to,
        );
    }) as $row) {
        $from = address_text($row['dsmonMatrixSourceAddress']);
        $to = address_text($row['dsmonMatrixDestAddress']);
        $got["$row[dsmonAggGroupIndex] $from $to $row[dsmonMatrixALIndex]"] = numbers(
            $row,
            'dsmonMatrixSDHCPkts',
            'dsmonMatrixSDHCOctets',
        );
    }
    expect_same(
        sums_by_dscp(fn(Seen $frame, string $time) => "$frame->ip_from $frame->ip_to $highest[$time]"), sorted($got),
        "pairs of hosts by DSCP, $way",
    );
}

// Higher-layer hosts and pairs: of the network layer, and of each protocol above it.
$layers = [
    'nl' => array_filter(
        $frames_of,
        fn(int $index) => in_array($names[$index], ['ether2.ip', 'ether2.ip6'], true),
        ARRAY_FILTER_USE_KEY,
    ),
];
$layers['al'] = array_filter(
    $frames_of, fn(int $index) => count($layers_of[$index]) > 2 && str_starts_with($names[$index], 'ether2.ip'), ARRAY_FILTER_USE_KEY);
foreach ($layers as $layer => $protocols) {
    $expected = ['in' => [], 'out' => [], 'pairs' => []];
    foreach ($protocols as $index => $times) {
        foreach (sums_by(fn(Seen $frame) => $frame->ip_to, $times) as $address => $sum) {
            $expected['in']["$index $address"] = $sum;
        }
        foreach (sums_by(fn(Seen $frame) => $frame->ip_from, $times) as $address => $sum) {
            $expected['out']["$index $address"] = $sum;
        }
        foreach (sums_by(fn(Seen $frame) => "$frame->ip_from $frame->ip_to", $times) as $pair => $sum) {
            $expected['pairs']["$index $pair"] = $sum;
        }
    }
    $expected = array_map(sorted(...), $expected);

    $address = [];
    $rows = $layer === 'nl'
        ? rmon_nlhost_getbulk($link, 1, 0, 0, $address, 10000)
        : rmon_alhost_getbulk($link, 1, 0, 0, $address, 0, 10000);
    $got = ['in' => [], 'out' => []];
    foreach ($rows as $row) {
        $at = ($row['protocolDirLocalIndex2'] ?? $row['protocolDirLocalIndex']) . ' ' . address_text($row['nlHostAddress']);
        $got['in'][$at] = numbers($row, "{$layer}HostInPkts", "{$layer}HostInOctets");
        $got['out'][$at] = numbers($row, "{$layer}HostOutPkts", "{$layer}HostOutOctets");
        if ($layer === 'nl') {
            $host = address_text($row['nlHostAddress']);
            $group_sent = sum_where(fn(Seen $frame) => $frame->is_ip && $frame->ip_from === $host && $group($frame->to))[0];
            expect_same($group_sent, (int) $row['nlHostOutMacNonUnicastPkts'], "frames of $host to groups");
        }
    }
    foreach ($got as $way => $sums) {
        expect_same($expected[$way], sorted(array_filter($sums, $none)), "{$layer}Host, $way");
    }
    foreach (['sd', 'ds'] as $way) {
        [$from, $to] = [[], []];
        $name = "{$layer}Matrix" . strtoupper($way);
        $rows = $layer === 'nl'
            ? "rmon_nlmatrix_{$way}_getbulk"($link, 1, 0, 0, $from, $to, 10000)
            : "rmon_almatrix_{$way}_getbulk"($link, 1, 0, 0, $from, $to, 0, 10000);
        $got = [];
        foreach ($rows as $row) {
            $at = ($row['protocolDirLocalIndex2'] ?? $row['protocolDirLocalIndex']) . ' '
                . address_text($row["nlMatrix" . strtoupper($way) . "SourceAddress"] ?? $row["{$name}SourceAddress"]) . ' '
                . address_text($row["nlMatrix" . strtoupper($way) . "DestAddress"] ?? $row["{$name}DestAddress"]);
            $got[$at] = numbers($row, "{$name}Pkts", "{$name}Octets");
        }
        expect_same($expected['pairs'], sorted($got), "$name");
    }
}

// The address map: each sender of IP or ARP, with the address that it had last.
$expected = [];
foreach ($seen as $frame) {
    if ($frame->is_ip) {
        $expected[$frame->ip_from] = $frame->from;
    } elseif (preg_match('/Request who-has .* tell ([\d.]+),|Reply ([\d.]+) is-at/', $frame->text, $parts)) {
        $expected[end($parts)] = $frame->from;
    }
}
$address = [];
$got = [];
foreach (rmon_addrmap_entry_getbulk($link, 0, 0, $address, 0, 10000) as $row) {
    $got[address_text($row['addressMapNetworkAddress'])] = mac_text($row['addressMapPhysicalAddress']);
}
expect_same(sorted($expected), sorted($got), 'address map');

// Response times: each request of the exchanges has one answer; all frames of a connection count from its opening on.
$responses = $client_octets = $server_octets = 0;
[$from, $to] = [[], []];
foreach (rmon_art_rpt_getbulk($link, 1, 0, $from, $to, 10000) as $row) {
    $server = address_text($row['artServerAddress']);
    $client = address_text($row['artClientAddress']);
    if (!preg_match('/^10\.0\.0\.2\d$/', $client)) {
        continue; // of frames at random, which are no exchanges
    }
    $port = $layers_of[$row['protocolDirLocalIndex']][3];
    $there = "src host $client and dst host $server and dst port $port";
    $back = "src host $server and dst host $client and src port $port";
    $answers = $port === 53 ? $back : "$back and tcp[13] & 8 != 0";
    $what = "of $server:$port to $client";
    expect_same(tcpdump_count($file, $answers), $row['artTotalResponses'], "responses $what");
    expect_same([0, 0], [$row['artRetries'], $row['artTimeouts']], "retries and timeouts $what");
    expect_same(sum(tcpdump($file, $there, '-q'))[1], (int) $row['artClientOctets'], "octets $what");
    expect_same(sum(tcpdump($file, $back, '-q'))[1], (int) $row['artServerOctets'], "octets back $what");
    $responses += $row['artTotalResponses'];
}
$clients = 'src net 10.0.0.20/30 or src host 10.0.0.24';
expect_same(
    tcpdump_count($file, "($clients) and (udp dst port 53 or (tcp[13] & 8 != 0 and dst port not 53))"), $responses, 'responses');

expect_same(0, end_agent($agent), "the agent's exit code");
done();
--EXPECT--
OK
