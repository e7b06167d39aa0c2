--TEST--
Trap destinations
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../exchange.inc';

function trapdest(
    int $status,
    int $index,
    string $community,
    int $protocol,
    string $address,
    string $owner,
    int $row_status,
): string {
    return record(
        status: i32($status),
        trapDestIndex: i32($index),
        trapDestCommunity: text($community),
        trapDestProtocol: i32($protocol),
        trapDestAddress: byte_list($address),
        trapDestOwner: text($owner),
        trapDestStatus: i32($row_status),
    );
}

$key = fn(int $index, int $getType) => record(index: i32($index), getType: i32($getType));
$rows = [
    [
        trapdest(0, 21, 'public', 22, "\x0a\xc8\x00\xff", 'owner', 1),
        [
            0 => 0,
            'status' => 0,
            'trapDestIndex' => 21,
            'trapDestCommunity' => 'public',
            'trapDestProtocol' => 22,
            'trapDestAddress' => [10, 200, 0, 255],
            'trapDestOwner' => 'owner',
            'trapDestStatus' => 1,
        ],
    ],
    [
        trapdest(-31, -32, str_repeat('c', 255), -33, '', '', -34),
        [
            0 => -31,
            'status' => -31,
            'trapDestIndex' => -32,
            'trapDestCommunity' => str_repeat('c', 255),
            'trapDestProtocol' => -33,
            'trapDestAddress' => 0,
            'trapDestOwner' => '',
            'trapDestStatus' => -34,
        ],
    ],
    [
        trapdest(4, 5, "a\0b", 6, str_repeat("\x81", 300), str_repeat('o', 255), 7),
        [
            0 => 4,
            'status' => 4,
            'trapDestIndex' => 5,
            'trapDestCommunity' => 'a',
            'trapDestProtocol' => 6,
            'trapDestAddress' => array_fill(0, 300, 0x81),
            'trapDestOwner' => str_repeat('o', 255),
            'trapDestStatus' => 7,
        ],
    ],
];
foreach (['rmon_trapdest_get' => 1, 'rmon_trapdest_getnext' => 2] as $function => $getType) {
    foreach ($rows as [$bytes, $row]) {
        expect_exchange(
            function: $function,
            arguments: [7],
            procedure: 68,
            request: $key(7, $getType),
            step: reply($bytes),
            value: $row,
        );
        expect_exchange(
            function: $function,
            arguments: ['-8'],
            procedure: 68,
            request: $key(-8, $getType),
            step: fragmented($bytes, 30),
            value: $row,
        );
    }
    expect_exchange(
        function: $function,
        arguments: [0x100000009],
        procedure: 68,
        request: $key(9, $getType),
        step: reply($rows[0][0]),
        value: $rows[0][1],
    );
    $broken = ['trapdest_get: RPC: Can\'t decode result'];
    $long = trapdest(0, 1, str_repeat('c', 256), 2, '', '', 3);
    expect_exchange(
        function: $function,
        arguments: [7],
        procedure: 68,
        request: $key(7, $getType),
        step: reply($long),
        value: false,
        messages: $broken,
    );
    expect_exchange(
        function: $function,
        arguments: [7],
        procedure: 68,
        request: $key(7, $getType),
        step: truncated($rows[0][0], -4),
        value: false,
        messages: $broken,
    );
    expect_failures(
        function: $function,
        arguments: [7],
        procedure: 68,
        request: $key(7, $getType),
        label: 'trapdest_get',
    );
    expect_counts($function, 2, 2);
    expect_links_only($function, [7]);
    expect_order($function, ['Link', 'Index'], ['Link', 'Index']);
}

$function = 'rmon_trapdest_set';
$arguments = [41, 'public', 42, [10, 1, 2, 3], 'owner', 43];
expect_answers(
    function: $function,
    arguments: $arguments,
    procedure: 69,
    request: trapdest(0, 41, 'public', 42, "\x0a\1\2\3", 'owner', 43),
    label: $function,
);
expect_exchange(
    function: $function,
    arguments: ['-1', 17, 4294967295, [], null, '2'],
    procedure: 69,
    request: trapdest(0, -1, '17', -1, '', '', 2),
    step: reply(i32(0)),
    value: 0,
);
expect_counts($function, 7, 7);

// The link comes first: where it is none, nothing else is looked at.
expect_links_only($function, [observed('Index'), observed('Community'), observed('Protocol'), ['4'], 'x', 1]);
$address = ['4', '5'];
expect_result(fn() => rmon_trapdest_set(NO_LINK, 1, 'c', 2, $address, 'o', 3), false, [
    NO_LINK . ' is not a RMON/RPC conn id!',
]);
expect_same(['4', '5'], $address);

$conversion = fn(string $class) => "Object of class $class could not be converted to int";
expect_exchange(
    function: $function,
    arguments: [
        observed('Index'),
        observed('Community'),
        observed('Protocol'),
        [observed('Byte')],
        observed('Owner'),
        observed('State'),
    ],
    procedure: 69,
    request: trapdest(0, 1, 'Community', 1, "\1", 'Owner', 1),
    step: reply(i32(0)),
    value: 0,
    messages: [
        $conversion('Index'),
        [E_USER_NOTICE, 'Community as text'],
        $conversion('Protocol'),
        $conversion('Byte'),
        [E_USER_NOTICE, 'Owner as text'],
        $conversion('State'),
    ],
);

// Elements become integers in the caller's array.
$address = ['10', 1.9, 'k' => 511, null];
the_agent()->add(reply(i32(0)));
expect_result(function () use (&$address) {
    return rmon_trapdest_set(the_link(), 1, 'c', 2, $address, 'o', 3);
}, 0);
expect_call(the_agent(), count(the_agent()->calls()), 69, trapdest(0, 1, 'c', 2, "\x0a\1\xff\0", 'o', 3));
expect_same([10, 1, 'k' => 511, 0], $address);

foreach ([1, 4] as $text) {
    expect_too_long($function, array_replace($arguments, [$text => str_repeat('x', 256)]), $function);
}

// 255 of them are sent, more are refused before any is converted, and before what stands behind is looked at.
$most = array_fill(0, 255, 9);
$bytes = trapdest(0, 1, 'c', 2, str_repeat("\x09", 255), 'o', 3);
expect_exchange(
    function: $function,
    arguments: [1, 'c', 2, $most, 'o', 3],
    procedure: 69,
    request: $bytes,
    step: reply(i32(0)),
    value: 0,
);
$address = array_fill(0, 256, '9');
expect_result(function () use (&$address) {
    return rmon_trapdest_set(the_link(), 1, 'c', 2, $address, observed('Owner'), 3);
}, false, ['too many (256) elements in addr!']);
expect_same(array_fill(0, 256, '9'), $address);

// Anything but an array is an empty address, after its conversion to an integer.
foreach (['10.1.2.3', 7, null, 1.5] as $no_array) {
    expect_exchange(
        function: $function,
        arguments: [1, 'c', 2, $no_array, 'o', 3],
        procedure: 69,
        request: trapdest(0, 1, 'c', 2, '', 'o', 3),
        step: reply(i32(0)),
        value: 0,
    );
}
expect_exchange(
    function: $function,
    arguments: [1, 'c', 2, observed('Address'), 'o', 3],
    procedure: 69,
    request: trapdest(0, 1, 'c', 2, '', 'o', 3),
    step: reply(i32(0)),
    value: 0,
    messages: [$conversion('Address')],
);
done();
--EXPECT--
OK
