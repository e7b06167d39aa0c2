--TEST--
Rows: flat for get and getnext, a list for getbulk, counts that lie
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';

$wire = fn (int $i): string => record(
    status: i32($i), hostAddress: byte_list(array_slice([10, 1, 255, $i & 255, 5, 6], 0, $i % 7)), hostCreationOrder: i32(100 + $i),
    hostIndex: i32(-$i), hostInPkts: u64($i), hostOutPkts: u64('0x8000000000000005'), hostInOctets: u64(
        '0xffffffffffffffff',
    ),
    hostOutOctets: u64(1 << 53), hostOutErrors: u64('0x7fffffffffffffff'), hostOutBroadcastPkts: u64(0), hostOutMulticastPkts: u64(12),
);
$row = fn (int $i): array => [
    0 => $i, 'status' => $i, 'hostAddress' => array_slice([10, 1, 255, $i & 255, 5, 6], 0, $i % 7) ?: 0,
    'hostCreationOrder' => 100 + $i, 'hostIndex' => -$i, 'hostInPkts' => (float)$i, 'hostOutPkts' => 9223372036854775808.0,
    'hostInOctets' => 18446744073709551616.0, 'hostOutOctets' => 9007199254740992.0, 'hostOutErrors' => 9223372036854775808.0,
    'hostOutBroadcastPkts' => 0.0, 'hostOutMulticastPkts' => 12.0,
];

foreach ([1, 3, 40, 1000] as $count) {
    $agent = scripted_agent(always(reply(many_rows($count, $wire))));
    $link = rmon_connect('127.0.0.1');
    expect_result(fn () => rmon_host_get($link, 1, []), $row(0));
    expect_result(fn () => rmon_host_getnext($link, 1, []), $row(0));
    expect_result(fn () => rmon_host_getbulk($link, 1, [], $count), array_map($row, range(0, $count - 1)));
    expect_call(
        $agent,
        3,
        11,
        record(hostIndex: i32(1), hostAddress: byte_list([]), count: i32($count), getType: i32(3)),
    );
    rmon_close($link);
    rmon_close($link);
}

// Rows can be changed, extended, iterated and thrown away like any array.
$agent = scripted_agent(always(reply(many_rows(2, $wire))));
$link = rmon_connect('127.0.0.1');
$list = rmon_host_getbulk($link, 1, [], 2);
$copy = $list;
$list[0]['added'] = 1;
$list[0]['status'] = 'changed';
unset($list[0][0], $list[1]);
$list[] = 'appended';
expect_same([$row(0), $row(1)], $copy, 'a copy');
expect_same([0 => ['status' => 'changed'] + array_diff_key($row(0), [0 => 0]) + ['added' => 1], 2 => 'appended'],
    [0 => array_merge(['status' => $list[0]['status']], $list[0])] + $list, 'the changed list');
foreach ($copy[1] as $key => &$value) {
    $value = $key;
}
unset($value);
expect_same(array_combine(array_keys($row(1)), array_keys($row(1))), $copy[1], 'changed by reference');
expect_same(13, count(rmon_host_get($link, 1, []) + ['more' => 1]), 'a union');
$grown = rmon_host_get($link, 1, []);
for ($i = 0; $i < 100; $i++) {
    $grown["key $i"] = $i;
}
expect_same(112, count($grown), 'grown over its first size');
expect_same(-0, ((object)$grown)->hostIndex, 'turned into an object');
rmon_close($link);
rmon_close($link);

// A count is a claim.
foreach ([3, 1000, 0x7fffffff, 0xffffffff] as $claim) {
    $agent = scripted_agent(reply(u32($claim) . $wire(1) . $wire(2)), reply(rows($wire(4))));
    $link = rmon_connect('127.0.0.1');
    expect_result(fn () => rmon_host_getbulk($link, 1, [], 2), false, ["rmon_ifentry_get: RPC: Can't decode result"]);
    expect_result(fn () => rmon_host_getbulk($link, 1, [], 2), [$row(4)]);
    rmon_close($link);
    rmon_close($link);
}
$agent = scripted_agent(reply(u32(1) . $wire(1) . $wire(2)), reply(rows()), reply(rows()), reply(rows()));
$link = rmon_connect('127.0.0.1');
expect_result(fn () => rmon_host_getbulk($link, 1, [], 2), [$row(1)]);
expect_result(fn () => rmon_host_get($link, 1, []), false);
expect_result(fn () => rmon_host_getnext($link, 1, []), false);
expect_result(fn () => rmon_host_getbulk($link, 1, [], 0), false);
expect_call($agent, 4, 11, record(hostIndex: i32(1), hostAddress: byte_list([]), count: i32(0), getType: i32(3)));
done();
?>
--EXPECT--
OK
