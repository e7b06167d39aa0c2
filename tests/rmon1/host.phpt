--TEST--
Hosts by address
--FILE--
<?php

declare(strict_types=1);

require __DIR__ . '/tables.inc';

$fields = [
    'status' => 'int',
    'hostAddress' => 'bytes',
    'hostCreationOrder' => 'int',
    'hostIndex' => 'int',
    'hostInPkts' => 'counter',
    'hostOutPkts' => 'counter',
    'hostInOctets' => 'counter',
    'hostOutOctets' => 'counter',
    'hostOutErrors' => 'counter',
    'hostOutBroadcastPkts' => 'counter',
    'hostOutMulticastPkts' => 'counter',
];

// The count stands before the getType.
$key = fn(array|string $address, int $getType = 1, int $count = 1) => record(
    hostIndex: i32(71),
    hostAddress: byte_list($address),
    count: i32($count),
    getType: i32($getType),
);
check_rows_readers(
    'rmon_host',
    11,
    'rmon_ifentry_get',
    $fields,
    null,
    [71, [10, 0, 255, 7]],
    fn(int $getType, int $count) => $key([10, 0, 255, 7], $getType, $count),
    ['int', 'int', 'address'],
);

$row = sample($fields);
$reply = rows(wire($row));
$sent = fn(mixed $address, array|string $bytes, array $messages = []) =>
    expect_exchange('rmon_host_get', [71, $address], 11, $key($bytes), reply($reply), shown($row), $messages);
check_address_argument($sent, 'rmon_host_get', [71]);

// Here anything but an array is made an integer first, which an object has none of.
$sent(new ArrayObject([1]), '', ['Object of class ArrayObject could not be converted to int']);

// An empty address in a row is the integer 0.
$row['hostAddress'] = [byte_list(''), 0];
expect_exchange('rmon_host_get', [71, [6]], 11, $key([6]), reply(rows(wire($row))), shown($row));

done();
--EXPECT--
OK
