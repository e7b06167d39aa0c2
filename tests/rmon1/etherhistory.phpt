--TEST--
Ethernet history: samples, one and many
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$fields = [
    'status' => 'i32',
    'etherHistoryIndex' => 'i32',
    'etherHistorySampleIndex' => 'i32',
    'etherHistoryIntervalStart' => 'u32',
    'etherHistoryDropEvents' => 'u64',
    'etherHistoryOctets' => 'u64',
    'etherHistoryPkts' => 'u64',
    'etherHistoryBroadcastPkts' => 'u64',
    'etherHistoryMulticastPkts' => 'u64',
    'etherHistoryCRCAlignErrors' => 'u64',
    'etherHistoryUndersizePkts' => 'u64',
    'etherHistoryOversizePkts' => 'u64',
    'etherHistoryFragments' => 'u64',
    'etherHistoryJabbers' => 'u64',
    'etherHistoryCollisions' => 'u64',
    'etherHistoryUtilization' => 'i32',
];
// Scripts see jabbers before fragments.
$keys = [
    'etherHistoryIndex',
    'etherHistorySampleIndex',
    'etherHistoryIntervalStart',
    'etherHistoryDropEvents',
    'etherHistoryOctets',
    'etherHistoryPkts',
    'etherHistoryBroadcastPkts',
    'etherHistoryMulticastPkts',
    'etherHistoryCRCAlignErrors',
    'etherHistoryUndersizePkts',
    'etherHistoryOversizePkts',
    'etherHistoryJabbers',
    'etherHistoryFragments',
    'etherHistoryCollisions',
    'etherHistoryUtilization',
];
check_rows_readers(
    table: 'rmon_etherhistory',
    procedure: 8,
    key: TWO_INDEXES_AND_COUNT,
    row: fn(int $n) => sample($fields, $n),
    label: 'rmon_etherhistory_getbulk',
    keys: $keys,
);

// Counters above the signed range stay positive.
$row = array_replace(sample($fields), [
    'etherHistoryOctets' => ['u64', '0xffffffffffffffff', 'shown' => 1.8446744073709552e19],
    'etherHistoryPkts' => ['u64', '0x8000000000000000', 'shown' => 9.223372036854775808e18],
]);
$key = record(index: i32(3), sampleIndex: i32(9), getType: i32(1), count: i32(1));
expect_exchange(
    function: 'rmon_etherhistory_get',
    arguments: [3, 9],
    procedure: 8,
    request: $key,
    step: reply(rows(wire($row))),
    value: shown($row, $keys),
);

// A failed row isn't a failed call.
expect_exchange(
    function: 'rmon_etherhistory_get',
    arguments: [3, 9],
    procedure: 8,
    request: $key,
    step: reply(rows(wire($row, status: -1))),
    value: shown($row, $keys, status: -1),
);

done();
--EXPECT--
OK
