--TEST--
Hosts by address
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

$fields = [
    'status' => 'i32',
    'hostAddress' => 'byte_list',
    'hostCreationOrder' => 'i32',
    'hostIndex' => 'i32',
    'hostInPkts' => 'u64',
    'hostOutPkts' => 'u64',
    'hostInOctets' => 'u64',
    'hostOutOctets' => 'u64',
    'hostOutErrors' => 'u64',
    'hostOutBroadcastPkts' => 'u64',
    'hostOutMulticastPkts' => 'u64',
];

// The count stands before the getType.
$key = [
    'hostIndex' => ['i32', 71],
    'hostAddress' => ['byte_list', [10, 0, 255, 7]],
    'count' => ['i32', 1],
    'getType' => ['i32', 1],
];
check_rows_readers(
    table: 'rmon_host',
    procedure: 11,
    key: $key,
    row: fn(int $n) => sample($fields, $n),
    label: 'rmon_ifentry_get',
);

// An object in the place of the address is made an integer, which it has none of, though the address stays empty.
check_address(
    function: 'rmon_host_get',
    procedure: 11,
    sent: $key,
    address: 'hostAddress',
    reply: rows(wire(sample($fields))),
    value: shown(sample($fields)),
    asksObject: true,
);

// An empty address in a row is the integer 0.
$row = array_replace(sample($fields), ['hostAddress' => ['byte_list', [], 'shown' => 0]]);
expect_exchange(
    function: 'rmon_host_get',
    arguments: [71, [6]],
    procedure: 11,
    request: wire($key, hostAddress: [6]),
    step: reply(rows(wire($row))),
    value: shown($row),
);

done();
--EXPECT--
OK
