--TEST--
Addresses as texts and as bytes
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../exchange.inc';

// ---- rmon_inet_pton

$bytes = [
    [AF_INET, '10.0.0.255', [10, 0, 0, 255]],
    [AF_INET, '1.2.3.4', [1, 2, 3, 4]],
    ['2', "1.2.3.4\0.5", [1, 2, 3, 4]],
    [2.9, '255.254.253.252', [255, 254, 253, 252]],
    [AF_INET6, '::', array_fill(0, 16, 0)],
    [AF_INET6, '2001:db8:1:203:405::ff', [32, 1, 13, 184, 0, 1, 2, 3, 4, 5, 0, 0, 0, 0, 0, 255]],
    [AF_INET6, '::ffff:10.1.2.3', [0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 255, 255, 10, 1, 2, 3]],
];
foreach ($bytes as [$family, $text, $expected]) {
    expect_no_call('rmon_inet_pton', [$family, $text], $expected);
}
foreach (['', '10.1', '10.0.0.256', '1.2.3.4 ', '::1', 'name', '1.2.3.4.5'] as $text) {
    $messages = ["rmon_inet_pton: inet_pton(AF_INET, $text) failed!"];
    expect_no_call('rmon_inet_pton', [AF_INET, $text], false, $messages);
}
foreach (['', '10.1.2.3', ':::', 'fe80::1%lo', '1:2:3:4:5:6:7:8:9'] as $text) {
    $messages = ["rmon_inet_pton: inet_pton(AF_INET6, $text) failed!"];
    expect_no_call('rmon_inet_pton', [AF_INET6, $text], false, $messages);
}
$long = str_repeat('9', 5000);
expect_no_call('rmon_inet_pton', [2, $long], false, ["rmon_inet_pton: inet_pton(AF_INET, $long) failed!"]);
expect_no_call('rmon_inet_pton', [2, "a\0b"], false, ['rmon_inet_pton: inet_pton(AF_INET, a) failed!']);
expect_no_call('rmon_inet_pton', [2, 167772161], false, ['rmon_inet_pton: inet_pton(AF_INET, 167772161) failed!']);

$unsupported = ['rmon_inet_pton: unsupported address family!'];
foreach ([0, 1, 3, 11, -2, 'AF_INET', null] as $family) {
    expect_no_call('rmon_inet_pton', [$family, '10.1.2.3'], false, $unsupported);
}
expect_counts('rmon_inet_pton', 2, 2);
expect_no_call('rmon_inet_pton', [observed('Family'), observed('Text')], false, [
    'Object of class Family could not be converted to int',
    [E_USER_NOTICE, 'Text as text'],
    ...$unsupported,
]);

// ---- rmon_inet_ntop

$full = [32, 1, 13, 184, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11];
$reference = 7;
$texts = [
    [AF_INET, [192, 168, 1, 1], '192.168.1.1'],
    [AF_INET, [192, 168, 1, 256], '192.168.1.0'],
    [AF_INET, [-1, 511, 300, 65536], '255.255.44.0'],
    [AF_INET, [3 => 1, 0 => 2, 'x' => 3, 1 => 4], '1.2.3.4'],
    [AF_INET, [1, &$reference, 3, 4], '1.7.3.4'],
    ['2', [10], '10.0.0.0'],
    [2.5, [], '0.0.0.0'],
    [AF_INET, [255, 255, 255, 255, 1, 2, 3], '255.255.255.255'],
    [AF_INET, $full, '32.1.13.184'],
    [AF_INET6, $full, '2001:db8:1:203:405:607:809:a0b'],
    [AF_INET6, array_fill(0, 16, 255), 'ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff'],
    [AF_INET6, [], '::'],
    [AF_INET6, [254, 128], 'fe80::'],
    [AF_INET6, [10, 1, 2, 3], 'a01:203::'],
];
// An earlier address leaves nothing behind.
rmon_inet_ntop(AF_INET6, array_fill(0, 16, 255));
foreach ($texts as [$family, $array, $expected]) {
    expect_no_call('rmon_inet_ntop', [$family, $array], $expected);
}
foreach (['10.1.2.3', 7, null, 1.5, true, new ArrayObject([1])] as $no_array) {
    expect_no_call('rmon_inet_ntop', [AF_INET, $no_array], null, ['rmon_inet_pton: addr is not array!']);
}
foreach ([17, 300] as $count) {
    $many = array_fill(0, $count, 1);
    expect_no_call('rmon_inet_ntop', [AF_INET, $many], null, ['rmon_inet_pton: too many elements in array!']);
}
foreach (['1', 1.0, null, true, [1], new stdClass()] as $element) {
    $array = [1, 2, $element];
    expect_no_call('rmon_inet_ntop', [AF_INET6, $array], null, ['rmon_inet_pton: arr el not LONG!']);
    expect_same([1, 2, $element], $array);
}
// The array is looked at before the family.
expect_no_call('rmon_inet_ntop', [0, '10.1.2.3'], null, ['rmon_inet_pton: addr is not array!']);
expect_no_call('rmon_inet_ntop', [0, ['x']], null, ['rmon_inet_pton: arr el not LONG!']);
foreach ([0, 3, 'x', -1] as $family) {
    expect_no_call('rmon_inet_ntop', [$family, [1, 2, 3, 4]], false, $unsupported);
}
expect_counts('rmon_inet_ntop', 2, 2);
expect_no_call('rmon_inet_ntop', [observed('Family'), [observed('Byte')]], null, [
    'Object of class Family could not be converted to int',
    'rmon_inet_pton: arr el not LONG!',
]);
done();
--EXPECT--
OK
