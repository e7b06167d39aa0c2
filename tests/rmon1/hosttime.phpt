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
check_indexed_rows_readers('rmon_hosttime', 12, 'rmon_hosttime_getbulk', $fields);

// An empty address is an empty array, unlike in the hosts by address.
$row = array_replace(sample($fields), ['hostTimeAddress' => [byte_list(''), []]]);
$key = record(index: i32(3), creationOrder: i32(9), getType: i32(2), count: i32(1));
expect_exchange('rmon_hosttime_getnext', [3, 9], 12, $key, reply(rows(wire($row))), shown($row));

done();
--EXPECT--
OK
