--TEST--
The appliance's host name
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/appliance.inc';

put_plain_settings();
$function = 'rmon_set_hostname';
$request = fn(string $hostname) => record(status: i32(0), hostname: text($hostname));

expect_answers(
    function: $function,
    arguments: ['probe-1'],
    procedure: 65,
    request: $request('probe-1'),
    label: $function,
);
foreach ([
    ['', ''], ["ab\0cd", 'ab'], [17, '17'], [null, ''], [str_repeat('h', 255), str_repeat('h', 255)],
] as [$name, $sent]) {
    expect_exchange(
        function: $function,
        arguments: [$name],
        procedure: 65,
        request: $request($sent),
        step: reply(i32(0)),
        value: 0,
    );
}
expect_counts($function, 2, 2);
// The link is looked up before the name is converted.
expect_links_only($function, [observed('Name')]);
expect_order($function, ['Link', 'Name'], ['Link']);
$messages = [[E_USER_NOTICE, 'Name as text']];
expect_exchange(
    function: $function,
    arguments: [observed('Name')],
    procedure: 65,
    request: $request('Name'),
    step: reply(i32(0)),
    value: 0,
    messages: $messages,
);

expect_too_long($function, [str_repeat('h', 256)], $function);
expect_exchange(
    function: $function,
    arguments: ['h'],
    procedure: 65,
    request: $request('h'),
    step: reply(i32(0)),
    value: 0,
);
clear_appliance();
done();
--EXPECT--
OK
