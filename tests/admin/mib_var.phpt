--TEST--
The value of a MIB variable
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../exchange.inc';

$function = 'rmon_get_mib_var';
$answer = fn(int $status, int|string $value) => reply(record(status: i32($status), value: u64($value)));
$values = [
    [0, 0],
    [7, 7],
    [0x100000007, 7],
    ['0xfedcba9887654321', 0x87654321],
    ['0xffffffffffffffff', 0xffffffff],
    [0x100000000, 0],
];
foreach ($values as [$value, $shown]) {
    expect_exchange(
        function: $function,
        arguments: ['etherStats.1'],
        procedure: 61,
        request: text('etherStats.1'),
        step: $answer(0, $value),
        value: $shown,
    );
}
foreach ([1, -1, 0x7fffffff] as $status) {
    expect_exchange(
        function: $function,
        arguments: ['x'],
        procedure: 61,
        request: text('x'),
        step: $answer($status, 5),
        value: false,
    );
}

// Names of any length.
foreach (['', 'a', str_repeat('n', 255), str_repeat('n', 256), str_repeat('long ', 20000)] as $name) {
    expect_exchange(
        function: $function,
        arguments: [$name],
        procedure: 61,
        request: text($name),
        step: $answer(0, 5),
        value: 5,
    );
}
expect_exchange(
    function: $function,
    arguments: ["ab\0cd"],
    procedure: 61,
    request: text('ab'),
    step: $answer(0, 5),
    value: 5,
);
expect_exchange(
    function: $function,
    arguments: [17],
    procedure: 61,
    request: text('17'),
    step: $answer(0, 5),
    value: 5,
);

expect_failures(function: $function, arguments: ['x'], procedure: 61, request: text('x'), label: null);
expect_exchange(
    function: $function,
    arguments: ['x'],
    procedure: 61,
    request: text('x'),
    step: truncated(record(status: i32(0), value: u64(5)), -4),
    value: false,
);
expect_counts($function, 2, 2);
expect_links_only($function, ['x']);
expect_order($function, ['Link', 'Name'], ['Link', 'Name as text']);
done();
--EXPECT--
OK
