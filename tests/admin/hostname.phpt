--TEST--
The appliance's host name
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_test_root();
--FILE--
<?php
require __DIR__ . '/appliance.inc';

put_plain_settings();
$function = 'rmon_set_hostname';
$request = fn(string $hostname) => record(status: i32(0), hostname: text($hostname));

expect_answers($function, ['probe-1'], 65, $request('probe-1'), $function);
foreach ([['', ''], ["ab\0cd", 'ab'], [17, '17'], [null, ''], [str_repeat('h', 255), str_repeat('h', 255)]] as [$name, $sent]) {
    expect_exchange($function, [$name], 65, $request($sent), reply(i32(0)), 0);
}
expect_counts($function, 2, 2);
// The link is looked up before the name is converted.
expect_links_only($function, [observed('Name')]);
expect_order($function, ['Link', 'Name'], ['Link']);
$messages = [[E_USER_NOTICE, 'Name as text']];
expect_exchange($function, [observed('Name')], 65, $request('Name'), reply(i32(0)), 0, $messages);

expect_too_long($function, [str_repeat('h', 256)], $function);
expect_exchange($function, ['h'], 65, $request('h'), reply(i32(0)), 0);
clear_appliance();
done();
--EXPECT--
OK
