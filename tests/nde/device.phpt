--TEST--
NetFlow devices: reads, writes, texts that fill their fields
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/nde.inc';

/** A record with this beginning. */
function device(string $head, string $deviceName = '', string $commString = '', int $flag = 0): string
{
    return record(
        head: $head,
        deviceName: name($deviceName),
        commString: name($commString),
        flag: u32($flag),
    );
}

/** The address of the device in row $i. */
function address(int $i): array
{
    return [10, 1, 200, $i];
}

check_device_readers(
    table: 'rmon_nde_device',
    procedure: 159,
    list: 'devices',
    index: 0,
    request: device(...),
    // What a request needs is of no interest in a reply.
    record: fn(int $i) => device(head(address($i), 91, 92, 93), "router $i", "secret $i", 0x80000000 + $i),
    shown: fn(int $i) => [
        'address' => address($i),
        'addressLength' => 4,
        'deviceName' => "router $i",
        'commString' => "secret $i",
        'flag' => 0x80000000 + $i,
    ],
);

// A length in a reply is a claim: there are sixteen bytes at most.
$bytes = [...range(241, 255), 7];
foreach ([0 => 0, 1 => 1, 15 => 15, 16 => 16, 17 => 16, 80 => 16, 0xffffffff => 16] as $claimed => $shown) {
    expect_exchange(
        function: 'rmon_nde_device_get',
        arguments: [[1]],
        procedure: 159,
        request: device(head([1], 1, 1)),
        step: reply(rows(device(head($bytes, length: $claimed), 'a', 'b', 1))),
        value: ['devices' => [[
            'address' => array_slice($bytes, 0, $shown),
            'addressLength' => $claimed,
            'deviceName' => 'a',
            'commString' => 'b',
            'flag' => 1,
        ]]],
    );
}

// Texts of a reply: up to the first zero byte; without one, the whole field and no more. Bytes are unsigned, and
// only the low one of a unit counts.
$long = str_repeat("\xff\x80z\x01", 20);
$texts = [
    [$long, $long],
    ["\0behind", ''],
    ["half\0rest", 'half'],
    [substr($long, 0, 79), substr($long, 0, 79)],
];
foreach ($texts as [$sent, $shown]) {
    expect_exchange(
        function: 'rmon_nde_device_getnext',
        arguments: [[1]],
        procedure: 159,
        request: device(head([1], 2, 1)),
        step: reply(rows(device(head([1]), $sent, 'next', 1), device(head([2]), 'first', $sent, 0x41424344))),
        value: ['devices' => [
            ['address' => [1], 'addressLength' => 1, 'deviceName' => $shown, 'commString' => 'next', 'flag' => 1],
            [
                'address' => [2],
                'addressLength' => 1,
                'deviceName' => 'first',
                'commString' => $shown,
                'flag' => 0x41424344,
            ],
        ]],
    );
}
$high = u32(0x12345641) . u32(0xffffff42) . str_repeat(u32(0x100), 78);
expect_exchange(
    function: 'rmon_nde_device_get',
    arguments: [[1]],
    procedure: 159,
    request: device(head([1], 1, 1)),
    step: reply(rows(record(head: head([1]), deviceName: $high, commString: name('c'), flag: u32(2)))),
    value: ['devices' => [
        ['address' => [1], 'addressLength' => 1, 'deviceName' => 'AB', 'commString' => 'c', 'flag' => 2],
    ]],
);

// ---- writes: the community stands before the name in a call, behind it in the record

check_device_writer(
    function: 'rmon_nde_device_set',
    others: ['secret', 'router'],
    order: ['Community as text', 'Name as text'],
    procedure: 160,
    operation: 1,
    request: fn(string $head) => device($head, 'router', 'secret'),
    label: 'rmon_nde_device_set',
);
check_device_writer(
    function: 'rmon_nde_device_del',
    others: [],
    order: [],
    procedure: 160,
    operation: 2,
    request: device(...),
    label: 'rmon_nde_device_del',
);

// Eighty bytes fill a field; what is longer is cut, and never reaches the field behind.
$text = implode(range('a', 'z')) . implode(range('A', 'Z')) . implode(range('a', 'z')) . '0123456789ABC';
foreach ([79, 80, 81, 90] as $length) {
    $passed = substr($text, 0, $length);
    $sent = substr($text, 0, min($length, 80));
    foreach ([
        [$passed, 'name', 'name', $sent], ['comm', $passed, $sent, 'comm'], [$passed, $passed, $sent, $sent],
    ] as $case) {
        [$community, $name, $name_sent, $community_sent] = $case;
        expect_exchange(
            function: 'rmon_nde_device_set',
            arguments: [[10, 1, 1, 5], $community, $name],
            procedure: 160,
            request: device(head([10, 1, 1, 5], operation: 1), $name_sent, $community_sent),
            step: reply(i32(0)),
            value: 0,
        );
    }
}
foreach ([
    ['', ''], ["ab\0cd", 'ab'], [17, '17'], [null, ''], [true, '1'], [2.5, '2.5'], ["\xff\x80", "\xff\x80"],
] as [$passed, $sent]) {
    expect_exchange(
        function: 'rmon_nde_device_set',
        arguments: [[1], 'c', $passed],
        procedure: 160,
        request: device(head([1], operation: 1), $sent, 'c'),
        step: reply(i32(0)),
        value: 0,
    );
}

// An address that stands in the call itself is converted as well, and written nowhere.
the_agent()->add(reply(i32(0)), reply(i32(0)));
for ($i = 0; $i < 2; $i++) {
    rmon_nde_device_del(the_link(), ['10', '7']);
    expect_call(the_agent(), count(the_agent()->calls()), 160, device(head([10, 7], operation: 2)));
}

// An object that is no text is refused before anything is sent.
expect_no_call(
    'rmon_nde_device_set',
    [the_link(), [1], new stdClass(), 'name'],
    null,
    ['Object of class stdClass could not be converted to string'],
);
done();
--EXPECT--
OK
