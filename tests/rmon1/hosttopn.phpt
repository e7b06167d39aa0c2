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
check_indexed_rows_readers('rmon_hosttopn', 15, 'rmon_hosttopn_getbulk', $fields);

// An empty address is an empty array.
$row = array_replace(sample($fields), ['hostTopNAddress' => [byte_list(''), []]]);
$key = record(report: i32(3), index: i32(9), getType: i32(2), count: i32(1));
expect_exchange('rmon_hosttopn_getnext', [3, 9], 15, $key, reply(rows(wire($row))), shown($row));

done();
--EXPECT--
OK
