--TEST--
Ethernet history: samples, one and many
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$fields = [
    'status' => 'int',
    'etherHistoryIndex' => 'int',
    'etherHistorySampleIndex' => 'int',
    'etherHistoryIntervalStart' => 'unsigned',
    'etherHistoryDropEvents' => 'counter',
    'etherHistoryOctets' => 'counter',
    'etherHistoryPkts' => 'counter',
    'etherHistoryBroadcastPkts' => 'counter',
    'etherHistoryMulticastPkts' => 'counter',
    'etherHistoryCRCAlignErrors' => 'counter',
    'etherHistoryUndersizePkts' => 'counter',
    'etherHistoryOversizePkts' => 'counter',
    'etherHistoryFragments' => 'counter',
    'etherHistoryJabbers' => 'counter',
    'etherHistoryCollisions' => 'counter',
    'etherHistoryUtilization' => 'int',
];
// Scripts see jabbers before fragments.
$order = [
    'status',
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
check_indexed_rows_readers(
    table: 'rmon_etherhistory',
    procedure: 8,
    label: 'rmon_etherhistory_getbulk',
    fields: $fields,
    order: $order,
);

// Counters above the signed range stay positive.
$row = array_replace(sample($fields), [
    'etherHistoryOctets' => [u64('0xffffffffffffffff'), 1.8446744073709552e19],
    'etherHistoryPkts' => [u64('0x8000000000000000'), 9.223372036854775808e18],
]);
$key = record(index: i32(3), sampleIndex: i32(9), getType: i32(1), count: i32(1));
expect_exchange(
    function: 'rmon_etherhistory_get',
    arguments: [3, 9],
    procedure: 8,
    request: $key,
    step: reply(rows(wire($row))),
    value: shown($row, $order),
);

// A failed row isn't a failed call.
$row['status'] = [i32(-1), -1];
expect_exchange(
    function: 'rmon_etherhistory_get',
    arguments: [3, 9],
    procedure: 8,
    request: $key,
    step: reply(rows(wire($row))),
    value: shown($row, $order),
);

done();
--EXPECT--
OK
