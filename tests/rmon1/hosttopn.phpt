--TEST--
Top-N reports
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$fields = [
    'status' => 'int',
    'hostTopNReport' => 'int',
    'hostTopNIndex' => 'int',
    'hostTopNAddress' => 'bytes',
    'hostTopNRate' => 'counter',
];
check_indexed_rows_readers(table: 'rmon_hosttopn', procedure: 15, label: 'rmon_hosttopn_getbulk', fields: $fields);

// An empty address is an empty array.
$row = array_replace(sample($fields), ['hostTopNAddress' => [byte_list(''), []]]);
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
