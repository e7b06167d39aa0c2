--TEST--
Hosts by the order in which they were first seen
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$fields = [
    'status' => 'i32',
    'hostTimeAddress' => 'byte_list',
    'hostTimeCreationOrder' => 'i32',
    'hostTimeIndex' => 'i32',
    'hostTimeInPkts' => 'u64',
    'hostTimeOutPkts' => 'u64',
    'hostTimeInOctets' => 'u64',
    'hostTimeOutOctets' => 'u64',
    'hostTimeOutErrors' => 'u64',
    'hostTimeOutBroadcastPkts' => 'u64',
    'hostTimeOutMulticastPkts' => 'u64',
];
check_rows_readers(
    table: 'rmon_hosttime',
    procedure: 12,
    key: TWO_INDEXES_AND_COUNT,
    row: fn(int $n) => sample($fields, $n),
    label: 'rmon_hosttime_getbulk',
);

// An empty address is an empty array, unlike in the hosts by address.
$row = with(sample($fields), hostTimeAddress: []);
$key = record(index: i32(3), creationOrder: i32(9), getType: i32(2), count: i32(1));
expect_exchange(
    function: 'rmon_hosttime_getnext',
    arguments: [3, 9],
    procedure: 12,
    request: $key,
    step: reply(rows(wire($row))),
    value: shown($row),
);

done();
--EXPECT--
OK
