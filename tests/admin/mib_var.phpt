--TEST--
The value of a MIB variable
--FILE--
<?php
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
    expect_exchange($function, ['etherStats.1'], 61, text('etherStats.1'), $answer(0, $value), $shown);
}
foreach ([1, -1, 0x7fffffff] as $status) {
    expect_exchange($function, ['x'], 61, text('x'), $answer($status, 5), false);
}

// Names of any length.
foreach (['', 'a', str_repeat('n', 255), str_repeat('n', 256), str_repeat('long ', 20000)] as $name) {
    expect_exchange($function, [$name], 61, text($name), $answer(0, 5), 5);
}
expect_exchange($function, ["ab\0cd"], 61, text('ab'), $answer(0, 5), 5);
expect_exchange($function, [17], 61, text('17'), $answer(0, 5), 5);

expect_failures($function, ['x'], 61, text('x'), null);
expect_exchange($function, ['x'], 61, text('x'), truncated(record(status: i32(0), value: u64(5)), -4), false);
expect_counts($function, 2, 2);
expect_links_only($function, ['x']);
expect_order($function, ['Link', 'Name'], ['Link', 'Name as text']);
done();
--EXPECT--
OK
