--TEST--
The address map itself
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/../tables.inc';

/** Row $i: the second has no MAC address, the third no address at all. */
function entry(int $i): array
{
    $network = $i === 2 ? [] : [192, 168, 255, $i];
    $mac = $i === 1 || $i === 2 ? [] : [0, 0x1a, 0x2b, 0x3c, 0xff, $i];
    return [
        'status' => ['i32', 100 + $i],
        'addressMapTimeMark' => ['u32', 0xffffff00 + $i],
        'protocolDirLocalIndex' => ['i32', -300 - $i],
        'addressMapNetworkAddress' => ['byte_list', $network, 'shown' => $network ?: 0],
        'addressMapSource' => ['i32', 500 + $i],
        'addressMapPhysicalAddress' => ['byte_list', $mac, 'shown' => $mac ?: 0],
        'addressMapLastChange' => ['u32', 0x80000000 + $i],
    ];
}

$key = [
    'addressMapTimeMark' => ['u32', 0xfffffffe],
    'protocolDirLocalIndex' => ['i32', 6],
    'addressMapNetworkAddress' => ['byte_list', [192, 168, 0, 7]],
    'addressMapSource' => ['i32', -8],
    'getType' => ['i32', 1],
    'count' => ['i32', 1],
];
$common = [
    'procedure' => 31,
    'row' => entry(...),
    'label' => 'addrmap_entry_get',
    'keys' => [
        'addressMapTimeMark',
        'addressMapNetworkAddress',
        'addressMapSource',
        'addressMapPhysicalAddress',
        'addressMapLastChange',
        'protocolDirLocalIndex',
    ],
    'order' => ['Link'], // looked up before anything but the number of rows is converted
];
check_rows_reader(...$common, function: 'rmon_addrmap_entry_get', key: $key);
check_rows_reader(
    ...$common,
    function: 'rmon_addrmap_entry_getnext',
    key: with($key, getType: 2, addressMapNetworkAddress: range(230, 245)),
);
check_rows_reader(
    ...$common,
    function: 'rmon_addrmap_entry_getbulk',
    key: with($key, getType: 3, addressMapNetworkAddress: range(1, 255)),
);

check_address(
    function: 'rmon_addrmap_entry_getnext',
    procedure: 31,
    sent: with($key, getType: 2),
    address: 'addressMapNetworkAddress',
    reply: rows(),
    value: false,
);

done();
--EXPECT--
OK
