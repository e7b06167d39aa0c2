--TEST--
Ethernet statistics: rows and their control
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$fields = [
    'status' => 'int',
    'etherStatsIndex' => 'int',
    'etherStatsDataSource' => 'int',
    'etherStatsDropEvents' => 'counter',
    'etherStatsOctets' => 'counter',
    'etherStatsPkts' => 'counter',
    'etherStatsBroadcastPkts' => 'counter',
    'etherStatsMulticastPkts' => 'counter',
    'etherStatsCRCAlignErrors' => 'counter',
    'etherStatsUndersizePkts' => 'counter',
    'etherStatsOversizePkts' => 'counter',
    'etherStatsFragments' => 'counter',
    'etherStatsJabbers' => 'counter',
    'etherStatsCollisions' => 'counter',
    'etherStatsPkts64Octets' => 'counter',
    'etherStatsPkts65to127Octets' => 'counter',
    'etherStatsPkts128to255Octets' => 'counter',
    'etherStatsPkts256to511Octets' => 'counter',
    'etherStatsPkts512to1023Octets' => 'counter',
    'etherStatsPkts1024to1518Octets' => 'counter',
    'etherStatsOwner' => 'text',
    'etherStatsStatus' => 'int',
    'etherStatsDroppedFrames' => 'counter',
    'etherStatsCreateTime' => 'unsigned',
];
check_row_readers(table: 'rmon_etherstats', procedure: 4, label: 'rmon_ifentry_get', fields: $fields);

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
    $row = array_replace(sample($fields), ['etherStatsOctets' => [u64($bits), $float]]);
    expect_exchange(
        function: 'rmon_etherstats_get',
        arguments: [1],
        procedure: 4,
        request: key_of(1, 1),
        step: reply(wire($row)),
        value: shown($row),
    );
}

// Set: counters and the time of creation are the agent's.
$request = fn(int $index, int $source, string $owner, int $status) => record(
    status: i32(0),
    etherStatsIndex: i32($index),
    etherStatsDataSource: i32($source),
    etherStatsDropEvents: u64(0),
    etherStatsOctets: u64(0),
    etherStatsPkts: u64(0),
    etherStatsBroadcastPkts: u64(0),
    etherStatsMulticastPkts: u64(0),
    etherStatsCRCAlignErrors: u64(0),
    etherStatsUndersizePkts: u64(0),
    etherStatsOversizePkts: u64(0),
    etherStatsFragments: u64(0),
    etherStatsJabbers: u64(0),
    etherStatsCollisions: u64(0),
    etherStatsPkts64Octets: u64(0),
    etherStatsPkts65to127Octets: u64(0),
    etherStatsPkts128to255Octets: u64(0),
    etherStatsPkts256to511Octets: u64(0),
    etherStatsPkts512to1023Octets: u64(0),
    etherStatsPkts1024to1518Octets: u64(0),
    etherStatsOwner: text($owner),
    etherStatsStatus: i32($status),
    etherStatsDroppedFrames: u64(0),
    etherStatsCreateTime: u32(0),
);
check_writer(
    function: 'rmon_etherstats_set',
    procedure: 5,
    label: 'rmon_etherstats_set',
    arguments: [21, 22, 'an owner', 24],
    request: $request,
    linkedFirst: false,
);

done();
--EXPECT--
OK
