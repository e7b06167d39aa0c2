--TEST--
Hosts by the order in which they were first seen
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$fields = [
    'status' => 'int',
    'hostTimeAddress' => 'bytes',
    'hostTimeCreationOrder' => 'int',
    'hostTimeIndex' => 'int',
    'hostTimeInPkts' => 'counter',
    'hostTimeOutPkts' => 'counter',
    'hostTimeInOctets' => 'counter',
    'hostTimeOutOctets' => 'counter',
    'hostTimeOutErrors' => 'counter',
    'hostTimeOutBroadcastPkts' => 'counter',
    'hostTimeOutMulticastPkts' => 'counter',
];
check_indexed_rows_readers(table: 'rmon_hosttime', procedure: 12, label: 'rmon_hosttime_getbulk', fields: $fields);

// An empty address is an empty array, unlike in the hosts by address.
$row = array_replace(sample($fields), ['hostTimeAddress' => [byte_list(''), []]]);
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
