--TEST--
Ethernet statistics: rows and their control
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$row = sample([
    'status' => 'i32',
    'etherStatsIndex' => 'i32',
    'etherStatsDataSource' => 'i32',
    'etherStatsDropEvents' => 'u64',
    'etherStatsOctets' => 'u64',
    'etherStatsPkts' => 'u64',
    'etherStatsBroadcastPkts' => 'u64',
    'etherStatsMulticastPkts' => 'u64',
    'etherStatsCRCAlignErrors' => 'u64',
    'etherStatsUndersizePkts' => 'u64',
    'etherStatsOversizePkts' => 'u64',
    'etherStatsFragments' => 'u64',
    'etherStatsJabbers' => 'u64',
    'etherStatsCollisions' => 'u64',
    'etherStatsPkts64Octets' => 'u64',
    'etherStatsPkts65to127Octets' => 'u64',
    'etherStatsPkts128to255Octets' => 'u64',
    'etherStatsPkts256to511Octets' => 'u64',
    'etherStatsPkts512to1023Octets' => 'u64',
    'etherStatsPkts1024to1518Octets' => 'u64',
    'etherStatsOwner' => 'text',
    'etherStatsStatus' => 'i32',
    'etherStatsDroppedFrames' => 'u64',
    'etherStatsCreateTime' => 'u32',
]);
check_row_readers(table: 'rmon_etherstats', procedure: 4, row: $row, label: 'rmon_ifentry_get');

// Counters are floats that are never negative.
$values = [
    '0x0' => 0.0,
    '0x1' => 1.0,
    '0x20000000000001' => 9007199254740992.0, // 2^53 + 1 has no float of its own
    '0x7fffffffffffffff' => 9223372036854775808.0,
    '0x8000000000000000' => 9223372036854775808.0,
    '0x8000000000000005' => 9223372036854775808.0,
    '0x8000000000000401' => 9223372036854777856.0, // just over half way to the next float
    '0xffffffffffffffff' => 18446744073709551616.0,
];
foreach ($values as $bits => $float) {
    expect_exchange(
        function: 'rmon_etherstats_get',
        arguments: [1],
        procedure: 4,
        request: record(index: i32(1), getType: i32(1)),
        step: reply(wire($row, etherStatsOctets: $bits)),
        value: shown($row, etherStatsOctets: $float),
    );
}

// Set: counters and the time of creation are the agent's.
check_writer(
    function: 'rmon_etherstats_set',
    procedure: 5,
    sent: [
        'status' => ['i32', 0],
        'etherStatsIndex' => ['i32', 21],
        'etherStatsDataSource' => ['i32', 22],
        'etherStatsDropEvents' => ['u64', 0],
        'etherStatsOctets' => ['u64', 0],
        'etherStatsPkts' => ['u64', 0],
        'etherStatsBroadcastPkts' => ['u64', 0],
        'etherStatsMulticastPkts' => ['u64', 0],
        'etherStatsCRCAlignErrors' => ['u64', 0],
        'etherStatsUndersizePkts' => ['u64', 0],
        'etherStatsOversizePkts' => ['u64', 0],
        'etherStatsFragments' => ['u64', 0],
        'etherStatsJabbers' => ['u64', 0],
        'etherStatsCollisions' => ['u64', 0],
        'etherStatsPkts64Octets' => ['u64', 0],
        'etherStatsPkts65to127Octets' => ['u64', 0],
        'etherStatsPkts128to255Octets' => ['u64', 0],
        'etherStatsPkts256to511Octets' => ['u64', 0],
        'etherStatsPkts512to1023Octets' => ['u64', 0],
        'etherStatsPkts1024to1518Octets' => ['u64', 0],
        'etherStatsOwner' => ['text', 'an owner'],
        'etherStatsStatus' => ['i32', 24],
        'etherStatsDroppedFrames' => ['u64', 0],
        'etherStatsCreateTime' => ['u32', 0],
    ],
    names: ['etherStatsIndex', 'etherStatsDataSource', 'etherStatsOwner', 'etherStatsStatus'],
    label: 'rmon_etherstats_set',
);

done();
--EXPECT--
OK
