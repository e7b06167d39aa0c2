--TEST--
The bundled agent counts by aggregation group: statistics, protocols, hosts, pairs of hosts
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

const NONE = [0 => -1, 'status' => -1];

/** Octets of a frame, with its check sequence. */
function octets(string $frame): int
{
    return strlen($frame) + 4;
}

$web = ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.3', 6, tcp(4000, 80, 0x18, str_repeat('w', 10))));
$question = ethernet(mac(2), mac(1), 0x0800, ip4('10.0.0.1', '10.0.0.2', 17, udp(1000, 53, str_repeat('q', 100)), 46));
$answer = ethernet(mac(1), mac(2), 0x0800, ip4('10.0.0.2', '10.0.0.1', 17, udp(53, 1000, str_repeat('a', 200)), 46));
$echo = ethernet(mac(1), mac(3), 0x0800, ip4('10.0.0.3', '10.0.0.1', 1, "\x08\0\0\0\0\1\0\1", 10));
$six = ethernet(mac(1), mac(3), 0x86dd, ip6('fd00::1', 'fd00::2', 17, udp(1000, 53, str_repeat('6', 20)), 46));
$arp = ethernet(str_repeat("\xff", 6), mac(1), 0x0806, arp(1, mac(1), '10.0.0.1', mac(0), '10.0.0.2'));
expect_same(
    [68, 146, 246, 64, 86, 64],
    array_map(octets(...), [$web, $question, $answer, $echo, $six, $arp]),
    'octets',
);
$frames = [];
foreach ([[5, $web], [3, $question], [2, $answer], [4, $echo], [1, $six], [7, $arp]] as [$count, $frame]) {
    array_push($frames, ...array_fill(0, $count, [1.0 + count($frames) / 1000, $frame]));
}
// Frames that end anywhere, within each header as well.
$file = capture_file($frames);
$broken = [];
for ($size = 0; $size <= strlen($six); $size++) {
    $broken[] = [2.0, substr($six, 0, $size), strlen($six)];
}
$broken = capture_file($broken);

$agent = reading_agent([$file, $broken]);
$link = module_link($agent);

// DSCP 0 in group 1, 46 in group 2, all others in group 0.
expect_same(NO_ERROR, dsmon_aggctl_set($link, 9, 'me', 'profile', CREATE_REQUEST), 'createRequest of the profile');
expect_same(NO_ERROR, dsmon_aggprof_set($link, 9, 0, 1), 'DSCP 0');
expect_same(NO_ERROR, dsmon_aggprof_set($link, 9, 46, 2), 'DSCP 46');
$sets = [
    'statistics' => fn(int $i, int $source, int $profile, int $status, int $most) => dsmon_statsctl_set($link, $i, $source, $profile, 'me', $status),
    'protocols' => fn(int $i, int $source, int $profile, int $status, int $most) => dsmon_pdistctl_set($link, $i, $source, $profile, 'me', $status, $most),
    'hosts' => fn(int $i, int $source, int $profile, int $status, int $most) => dsmon_hostctl_set($link, $i, $source, $profile, 'me', $status, $most),
    'pairs' => fn(int $i, int $source, int $profile, int $status, int $most) => dsmon_matrixctl_set($link, $i, $source, $profile, 'me', $status, $most),
];
foreach ($sets as $name => $set) {
    expect_same(BAD_VALUE, $set(4, -1, 9, CREATE_REQUEST, -1), "$name: negative data source");
    expect_same(BAD_VALUE, $set(4, 1, -1, CREATE_REQUEST, -1), "$name: negative profile");
    expect_same(NO_SUCH_NAME, $set(4, 1, 9, VALID, -1), "$name: valid without a row");
    expect_same(NO_ERROR, $set(4, 1, 9, CREATE_REQUEST, -1), "$name: createRequest");
    expect_same(BAD_VALUE, $set(4, 1, 9, VALID, -1), "$name: valid with a profile under creation");
}
foreach (['protocols', 'hosts', 'pairs'] as $name) {
    foreach ([0, -2] as $most) {
        expect_same(BAD_VALUE, $sets[$name](4, 1, 9, UNDER_CREATION, $most), "$name: $most rows");
    }
}
expect_same(NO_ERROR, dsmon_aggctl_set($link, 9, 'me', 'profile', VALID), 'valid of the profile');
foreach ($sets as $name => $set) {
    expect_same(BAD_VALUE, $set(4, 77, 9, VALID, -1), "$name: valid without its data source");
    expect_same(BAD_VALUE, $set(4, 1, 8, VALID, -1), "$name: valid without its profile");
    expect_same(NO_ERROR, $set(4, 1, 9, VALID, -1), "$name: valid");
    expect_same(BAD_VALUE, $set(4, 2, 9, VALID, -1), "$name: another data source while valid");
    expect_same(BAD_VALUE, $set(4, 1, 8, VALID, -1), "$name: another profile while valid");
    expect_same(NO_ERROR, $set(5, 1, 9, CREATE_REQUEST, 2), "$name: a small row");
    expect_same(NO_ERROR, $set(5, 1, 9, VALID, 2), "$name: a small row, valid");
    expect_same(NO_ERROR, $set(6, 2, 9, CREATE_REQUEST, 2), "$name: a row on the other file");
    expect_same(NO_ERROR, $set(6, 2, 9, VALID, 2), "$name: a row on the other file, valid");
}
expect_same(NONE, dsmon_stats_getnext($link, 0, 0), 'nothing is counted without the lock');
expect_same(NO_ERROR, dsmon_aggctl_set_lock($link, 1), 'the lock goes on');
expect_soon(true, fn() => rmon_system_get($link)['sysUpTime'] > 0, 'a time that is not 0');
read_files($agent, 2);

/** The rows of a table by a walk, from an index on; $read takes the last row. */
function walked(callable $read, array $row, string $control, int $of): array
{
    $rows = [];
    while (($row = $read($row))['status'] === 0 && count($rows) < 1000) {
        if ($row[$control] === $of) {
            $rows[] = $row;
        }
    }
    expect_same(NONE, $row, 'the end of the walk');
    return $rows;
}

/** Numbers that arrive as floats, without their names. */
function numbers(array $row, string ...$names): array
{
    return array_map(fn(string $name) => is_float($row[$name]) ? (int) $row[$name] : $row[$name], $names);
}

function address(array|int $octets): string
{
    return is_array($octets) ? inet_ntop(implode('', array_map(chr(...), $octets))) : '';
}

// ---- Statistics: all groups of the profile, also those without traffic.
$read = fn(array $row) => dsmon_stats_getnext(
    $link,
    $row['dsmonStatsControlIndex'] ?? 0,
    $row['dsmonAggGroupIndex'] ?? 0,
);
$rows = array_map(
    fn($row) => numbers(
        $row,
        'dsmonAggGroupIndex',
        'dsmonStatsInHCPkts',
        'dsmonStatsInHCOctets',
        'dsmonStatsOutHCPkts',
        'dsmonStatsOutHCOctets',
    ),
    walked($read, [], 'dsmonStatsControlIndex', 4),
);
expect_same([[0, 4, 4 * 64, 0, 0], [1, 5, 5 * 68, 0, 0], [2, 6, 3 * 146 + 2 * 246 + 86, 0, 0]], $rows, 'statistics');
expect_same(NONE, dsmon_stats_get($link, 4, 3), 'a group that the profile has not');
expect_same(NONE, dsmon_stats_get($link, 4, -1), 'no group');
expect_same(0, dsmon_stats_getnext($link, 4, -1)['dsmonAggGroupIndex'], 'the first group');
$other = numbers(dsmon_stats_get($link, 6, 0), 'dsmonStatsInHCPkts')[0] + numbers(dsmon_stats_get($link, 6, 2), 'dsmonStatsInHCPkts')[0];
expect_same(true, $other > 0 && $other <= strlen($six) + 1, 'frames that were cut');

// ---- Protocols: each frame once.
$read = fn(array $row) => dsmon_pdstats_getnext(
    $link,
    $row['dsmonPdistCtlIndex'] ?? 0,
    0,
    $row['dsmonAggGroupIndex'] ?? 0,
    $row['protocolDirLocalIndex'] ?? 0,
);
$rows = walked($read, [], 'dsmonPdistCtlIndex', 4);
expect_same(
    [[0, 4, 256], [1, 5, 340]],
    array_map(
        fn($row) => numbers($row, 'dsmonAggGroupIndex', 'dsmonPdistStatsHCPkts', 'dsmonPdistStatsHCOctets'),
        array_slice($rows, 0, 2),
    ),
    'protocols of groups 0 and 1',
);
$protocols = $rows;
$domain = array_slice($rows, 2);
usort($domain, fn($one, $other) => $one['dsmonPdistStatsHCPkts'] <=> $other['dsmonPdistStatsHCPkts']);
expect_same(
    [[2, 1, 86], [2, 5, 930]],
    array_map(
        fn($row) => numbers($row, 'dsmonAggGroupIndex', 'dsmonPdistStatsHCPkts', 'dsmonPdistStatsHCOctets'),
        $domain,
    ),
    'protocols of group 2',
);
expect_same(4, count(array_unique(array_column($rows, 'protocolDirLocalIndex'))), 'protocols');
$dns = $domain[1]['protocolDirLocalIndex'];
expect_same([5.0, 930.0], array_slice(array_values(dsmon_pdstats_get($link, 4, 0, 2, $dns)), -2), 'one protocol');
expect_same(NONE, dsmon_pdstats_get($link, 4, 0, 1, $dns), 'a protocol in another group');
expect_same(
    [4, 0],
    numbers(dsmon_pdistctl_get($link, 4), 'dsmonPdistCtlInserts', 'dsmonPdistCtlDeletes'),
    'inserts and deletes',
);

// ---- Hosts, in both directions.
$read = fn(array $row) => dsmon_hoststats_getnext(
    $link,
    $row['dsmonHostCtlIndex'] ?? 0,
    0,
    $row['dsmonAggGroupIndex'] ?? 0,
    $row['protocolDirLocalIndex'] ?? 0,
    $row['dsmonHostAddress'] ?? [],
);
$rows = walked($read, [], 'dsmonHostCtlIndex', 4);
$found = array_map(fn($row) => [
    $row['dsmonAggGroupIndex'], address($row['dsmonHostAddress']),
    ...numbers($row, 'dsmonHostInHCPkts', 'dsmonHostInHCOctets', 'dsmonHostOutHCPkts', 'dsmonHostOutHCOctets'),
], $rows);
expect_same([
    [0, '10.0.0.1', 4, 256, 0, 0],
    [0, '10.0.0.3', 0, 0, 4, 256],
    [1, '10.0.0.1', 0, 0, 5, 340],
    [1, '10.0.0.3', 5, 340, 0, 0],
    [2, '10.0.0.1', 2, 492, 3, 438],
    [2, '10.0.0.2', 3, 438, 2, 492],
    [2, 'fd00::1', 0, 0, 1, 86],
    [2, 'fd00::2', 1, 86, 0, 0],
], $found, 'hosts');
$ip = $rows[0]['protocolDirLocalIndex'];
$ip6 = $rows[6]['protocolDirLocalIndex'];
expect_same([$ip, $ip, $ip, $ip, $ip, $ip, $ip6, $ip6], array_column($rows, 'protocolDirLocalIndex'), 'network layers');
expect_same(2.0, dsmon_hoststats_get($link, 4, 0, 2, $ip, [10, 0, 0, 1])['dsmonHostInHCPkts'], 'one host');
foreach ([[], [10, 0, 0], [10, 0, 0, 1, 0], array_fill(0, 20, 255)] as $none) {
    expect_same(NONE, dsmon_hoststats_get($link, 4, 0, 2, $ip, $none), 'no address: ' . implode('.', $none));
}
expect_same(6, dsmon_hoststats_getnext($link, 5, 0, 255, $ip, [])['dsmonHostCtlIndex'], 'the next control row');

// ---- Pairs, in both orders.
foreach (['dsmon_matrixsdstats_getnext', 'dsmon_matrixdsstats_getnext'] as $function) {
    $read = fn(array $row) => $function(
        $link,
        $row['dsmonMatrixCtlIndex'] ?? 0,
        0,
        $row['dsmonAggGroupIndex'] ?? 0,
        $row['dsmonMatrixNLIndex'] ?? 0,
        $row['dsmonMatrixALIndex'] ?? 0,
        $row['dsmonMatrixSourceAddress'] ?? [],
        $row['dsmonMatrixDestAddress'] ?? [],
    );
    $pairs[] = walked($read, [], 'dsmonMatrixCtlIndex', 4);
}
$show = fn($row) => [
    $row['dsmonAggGroupIndex'], address($row['dsmonMatrixSourceAddress']), address($row['dsmonMatrixDestAddress']),
    ...numbers($row, 'dsmonMatrixSDHCPkts', 'dsmonMatrixSDHCOctets'),
];
expect_same([
    [0, '10.0.0.3', '10.0.0.1', 4, 256],
    [1, '10.0.0.1', '10.0.0.3', 5, 340],
    [2, '10.0.0.1', '10.0.0.2', 3, 438],
    [2, '10.0.0.2', '10.0.0.1', 2, 492],
    [2, 'fd00::1', 'fd00::2', 1, 86],
], array_map($show, $pairs[0]), 'pairs by source');
expect_same([
    [0, '10.0.0.3', '10.0.0.1', 4, 256],
    [1, '10.0.0.1', '10.0.0.3', 5, 340],
    [2, '10.0.0.2', '10.0.0.1', 2, 492],
    [2, '10.0.0.1', '10.0.0.2', 3, 438],
    [2, 'fd00::1', 'fd00::2', 1, 86],
], array_map($show, $pairs[1]), 'pairs by destination');
expect_same([$ip, $dns], numbers($pairs[0][2], 'dsmonMatrixNLIndex', 'dsmonMatrixALIndex'), "a pair's protocols");
expect_same(
    3.0,
    dsmon_matrixsdstats_get($link, 4, 0, 2, $ip, $dns, [10, 0, 0, 1], [10, 0, 0, 2])['dsmonMatrixSDHCPkts'],
    'one pair',
);
expect_same(
    3.0,
    dsmon_matrixdsstats_get($link, 4, 0, 2, $ip, $dns, [10, 0, 0, 1], [10, 0, 0, 2])['dsmonMatrixSDHCPkts'],
    'one pair from the other side',
);
expect_same(NONE, dsmon_matrixsdstats_get($link, 4, 0, 2, $ip, $dns, [10, 0, 0, 1], [10, 0, 0, 9]), 'no such pair');

// ---- Time marks: what changed since.
$now = rmon_system_get($link)['sysUpTime'] + 1000;
expect_same(NONE, dsmon_hoststats_getnext($link, 0, $now, 0, 0, []), 'hosts that changed since a time to come');
expect_same(NONE, dsmon_pdstats_get($link, 4, $now, 2, $dns), 'a protocol that changed since a time to come');
expect_same(
    [4, 1],
    numbers(dsmon_pdstats_getnext($link, 0, 1, 0, 0), 'dsmonPdistCtlIndex', 'dsmonPdistTimeMark'),
    'protocols that changed since the start',
);

// ---- A small table keeps what was used last; what is persistent stays.
expect_same(
    [2, 4, 2],
    [
        count(walked(
            fn(array $row) => dsmon_pdstats_getnext(
                $link,
                $row['dsmonPdistCtlIndex'] ?? 0,
                0,
                $row['dsmonAggGroupIndex'] ?? 0,
                $row['protocolDirLocalIndex'] ?? 0,
            ),
            [],
            'dsmonPdistCtlIndex',
            5,
        )),
        ...numbers(dsmon_pdistctl_get($link, 5), 'dsmonPdistCtlInserts', 'dsmonPdistCtlDeletes'),
    ],
    'a small table',
);
// Read were five, three, two, four frames and one: of hosts the last two pairs are counted, in two rows.
$small = array_map(
    fn($row) => address($row['dsmonHostAddress']),
    walked(
        fn(array $row) => dsmon_hoststats_getnext(
            $link,
            $row['dsmonHostCtlIndex'] ?? 5,
            0,
            $row['dsmonAggGroupIndex'] ?? 0,
            $row['protocolDirLocalIndex'] ?? 0,
            $row['dsmonHostAddress'] ?? [],
        ),
        [],
        'dsmonHostCtlIndex',
        5,
    ),
);
expect_same(['fd00::1', 'fd00::2'], $small, 'a small table of hosts');
expect_same(
    [0, 8, 6],
    numbers(dsmon_hostctl_get($link, 5), 'dsmonHostDroppedFrames', 'dsmonHostCtlInserts', 'dsmonHostCtlDeletes'),
    'its inserts and deletes',
);
$small = array_map(
    $show,
    walked(
        fn(array $row) => dsmon_matrixsdstats_getnext(
            $link,
            $row['dsmonMatrixCtlIndex'] ?? 5,
            0,
            $row['dsmonAggGroupIndex'] ?? 0,
            $row['dsmonMatrixNLIndex'] ?? 0,
            $row['dsmonMatrixALIndex'] ?? 0,
            $row['dsmonMatrixSourceAddress'] ?? [],
            $row['dsmonMatrixDestAddress'] ?? [],
        ),
        [],
        'dsmonMatrixCtlIndex',
        5,
    ),
);
expect_same([[0, '10.0.0.3', '10.0.0.1', 4, 256], [2, 'fd00::1', 'fd00::2', 1, 86]], $small, 'a small table of pairs');
expect_same(
    [0, 5, 3],
    numbers(
        dsmon_matrixctl_get($link, 5),
        'dsmonMatrixDroppedFrames',
        'dsmonMatrixCtlInserts',
        'dsmonMatrixCtlDeletes',
    ),
    'its inserts and deletes',
);
$key = fn(int $group, int $protocol) => i32(5) . u32(0) . u32($group) . i32($protocol) . i32(GET);
$client = client($agent);
[$first, $last] = [$protocols[0]['protocolDirLocalIndex'], $domain[0]['protocolDirLocalIndex']];
expect_same(NO_ERROR, status_of(ask($client, 181, $key(2, $last))), 'persistent');
expect_same(NO_ERROR, status_of(ask($client, 181, $key(2, $last))), 'persistent again');
expect_same(5, status_of(ask($client, 181, $key(0, $first))), 'more than half');
expect_same(NO_ERROR, status_of(ask($client, 182, $key(2, $last))), 'not persistent');
expect_same(NO_ERROR, status_of(ask($client, 181, $key(0, $first))), 'another one persistent');
expect_same(NO_SUCH_NAME, status_of(ask($client, 182, $key(1, $dns))), 'no row to keep');

// ---- The lock goes off, and all of it is forgotten; on again, it begins anew.
expect_same(NO_ERROR, dsmon_aggctl_set_lock($link, 2), 'the lock goes off');
expect_same(NONE, dsmon_stats_getnext($link, 0, 0), 'statistics without the lock');
expect_same(NONE, dsmon_pdstats_getnext($link, 0, 0, 0, 0), 'protocols without the lock');
expect_same(NONE, dsmon_hoststats_getnext($link, 0, 0, 0, 0, []), 'hosts without the lock');
expect_same(NONE, dsmon_matrixsdstats_getnext($link, 0, 0, 0, 0, 0, [], []), 'pairs without the lock');
expect_same(
    [8, 8],
    numbers(dsmon_hostctl_get($link, 4), 'dsmonHostCtlInserts', 'dsmonHostCtlDeletes'),
    'inserts and deletes of hosts',
);
expect_same(NO_ERROR, dsmon_aggctl_set($link, 9, '', '', INVALID), 'the profile goes');
expect_same(NO_ERROR, dsmon_aggctl_set_lock($link, 1), 'the lock goes on again');
expect_same(NONE, dsmon_stats_getnext($link, 0, 0), 'statistics without their profile');
foreach ($sets as $name => $set) {
    expect_same(NO_ERROR, $set(4, 0, 0, INVALID, -1), "$name: invalid");
    expect_same(NO_SUCH_NAME, $set(4, 0, 0, INVALID, -1), "$name: invalid again");
}
expect_same(5, dsmon_statsctl_getnext($link, 0)['dsmonStatsControlIndex'], 'the row that is left');

agent_done($agent);
--EXPECT--
OK
