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
    table: 'rmon_host',
    procedure: 11,
    label: 'rmon_ifentry_get',
    fields: $fields,
    order: null,
    index: [71, [10, 0, 255, 7]],
    key: fn(int $getType, int $count) => $key([10, 0, 255, 7], $getType, $count),
    kinds: ['int', 'int', 'address'],
);

$row = sample($fields);
$reply = rows(wire($row));
$sent = fn(mixed $address, array|string $bytes, array $messages = []) =>
    expect_exchange(
        function: 'rmon_host_get',
        arguments: [71, $address],
        procedure: 11,
        request: $key($bytes),
        step: reply($reply),
        value: shown($row),
        messages: $messages,
    );
check_address_argument($sent, 'rmon_host_get', [71]);

// Here anything but an array is made an integer first, which an object has none of.
$sent(new ArrayObject([1]), '', ['Object of class ArrayObject could not be converted to int']);

// An empty address in a row is the integer 0.
$row['hostAddress'] = [byte_list(''), 0];
expect_exchange(
    function: 'rmon_host_get',
    arguments: [71, [6]],
    procedure: 11,
    request: $key([6]),
    step: reply(rows(wire($row))),
    value: shown($row),
);

done();
--EXPECT--
OK
