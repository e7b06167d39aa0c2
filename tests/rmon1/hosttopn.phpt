--TEST--
Top-N reports
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$fields = [
    'status' => 'i32',
    'hostTopNReport' => 'i32',
    'hostTopNIndex' => 'i32',
    'hostTopNAddress' => 'byte_list',
    'hostTopNRate' => 'u64',
];
check_rows_readers(
    table: 'rmon_hosttopn',
    procedure: 15,
    key: TWO_INDEXES_AND_COUNT,
    row: fn(int $n) => sample($fields, $n),
    label: 'rmon_hosttopn_getbulk',
);

// An empty address is an empty array.
$row = with(sample($fields), hostTopNAddress: []);
$key = record(report: i32(3), index: i32(9), getType: i32(2), count: i32(1));
expect_exchange(
    function: 'rmon_hosttopn_getnext',
    arguments: [3, 9],
    procedure: 15,
    request: $key,
    step: reply(rows(wire($row))),
    value: shown($row),
);

done();
--EXPECT--
OK
