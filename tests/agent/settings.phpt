--TEST--
The bundled agent keeps addresses, host name, resolvers, communities and trap destinations, over a restart too
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
needs_test_root();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$directory = sys_get_temp_dir() . '/rmon-settings-' . getmypid();
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);
$agent = bundled_agent('--state', $directory);
ini_set('rmon.default_port', (string) $agent->port);
$link = rmon_connect('127.0.0.1');
$lo = if_index('lo');

/** What a set answers, without the warning of a machine that is no appliance. */
function told(callable $set, mixed ...$arguments): mixed
{
    global $link;
    return @$set($link, ...$arguments);
}

// What was not set is the machine's.
$config = rmon_get_ipconfig($link);
expect_same([0, 0], [$config['status'], $config['ipInterface']], 'the main interface');
$fields = result_of(ask($client = client($agent), 62, i32($lo)));
expect_same(
    [0, ip2long('127.0.0.1'), ip2long('255.0.0.0')],
    [$fields->i32(), swapped($fields->u32()), swapped($fields->u32())],
    'the loopback',
);
expect_same(2, result_of(ask($client, 62, i32(123456)))->i32(), 'no interface');
expect_same(2, result_of(ask($client, 62, i32(-1)))->i32(), 'no interface either');
$fields = result_of(ask($client, 64));
expect_same([0, gethostname()], [$fields->i32(), $fields->text()], 'the host name');
preg_match_all('/^\s*nameserver\s+(\S+)/m', (string) @file_get_contents('/etc/resolv.conf'), $servers);
expect_same($servers[1], rmon_get_resolvers($link), 'the resolvers');

function swapped(int $word): int
{
    return unpack('N', pack('V', $word))[1];
}

// Addresses.
expect_same(0, told(rmon_set_ipconfig(...), '10.1.2.3', '255.255.255.0', '10.1.2.255', '10.1.2.1'), 'addresses');
expect_same(
    0,
    told(rmon_set_ipconfig(...), '10.9.2.3', '255.255.255.255', '0.0.0.0', '0.0.0.0', $lo),
    "an interface's addresses",
);
$nonsense = [
    ['0.0.0.0', '255.255.255.0', '10.1.2.255', '10.1.2.1'], ['224.0.0.1', '255.255.255.0', '10.1.2.255', '10.1.2.1'],
    ['255.255.255.255', '0.0.0.0', '0.0.0.0', '0.0.0.0'], ['10.1.2.3', '255.0.255.0', '10.1.2.255', '10.1.2.1'],
    ['10.1.2.3', '0.0.0.255', '10.1.2.255', '10.1.2.1'], ['10.1.2.3', '255.255.255.0', '10.1.2.255', '239.1.2.1'],
];
foreach ($nonsense as $words) {
    expect_same(BAD_VALUE, told(rmon_set_ipconfig(...), ...$words), implode(' ', $words));
}
expect_same(
    NO_SUCH_NAME,
    told(rmon_set_ipconfig(...), '10.1.2.3', '255.255.255.0', '10.1.2.255', '10.1.2.1', 99999),
    'no interface',
);
$config = rmon_get_ipconfig($link);
unset($config[0]);
$expected = [
    'status' => 0,
    'ipAddress' => '10.1.2.3',
    'ipNetmask' => '255.255.255.0',
    'ipBroadcast' => '10.1.2.255',
    'ipGateway' => '10.1.2.1',
    'ipInterface' => 0,
];
expect_same($expected, $config, 'the addresses');

// Host name and resolvers.
foreach ([
    '', '-a', 'a-', 'a..b', '.a', 'a.', 'a b', "a\n", 'ä', str_repeat('a', 64), implode('.', array_fill(0, 85, 'ab')),
] as $name) {
    expect_same(BAD_VALUE, told(rmon_set_hostname(...), $name), "host name '$name'");
}
foreach (['a', '1', 'a-b.c1.example', str_repeat('a', 63), 'probe.example'] as $name) {
    expect_same(0, told(rmon_set_hostname(...), $name), "host name '$name'");
}
foreach ([['10.0.0.1', 'x'], [''], ['10.0.0.256'], array_fill(0, 33, '10.0.0.1')] as $list) {
    expect_same(BAD_VALUE, told(rmon_set_resolvers(...), $list), 'resolvers');
}
expect_same(0, told(rmon_set_resolvers(...), []), 'no resolvers');
expect_same([], rmon_get_resolvers($link), 'no resolvers');
expect_same(0, told(rmon_set_resolvers(...), ['10.0.0.1', '2001:db8::53']), 'resolvers');

// Communities: the shorter name first.
expect_same(false, rmon_community_getbulk($link, '', 10), 'no communities');
foreach (['public' => 1, 'b' => 2, 'private' => 2, 'aa' => 1] as $name => $rights) {
    expect_same(0, rmon_community_set($link, $name, $rights), "community $name");
}
expect_same(0, rmon_community_set($link, 'aa', 2), 'other rights');
expect_same(BAD_VALUE, rmon_community_set($link, '', 1), 'an empty community');
expect_same(BAD_VALUE, rmon_community_set($link, "a\tb", 1), 'a community that can not be printed');
expect_same(BAD_VALUE, status_of(ask($client, 71, i32(0) . text('x') . i32(3))), 'unknown rights');
expect_same(NO_SUCH_NAME, rmon_community_delete($link, 'c'), 'removing what is not there');
$list = fn() => array_column(rmon_community_getbulk($link, '', 10), 'privs', 'communityString');
expect_same(['b' => 2, 'aa' => 2, 'public' => 1, 'private' => 2], $list(), 'communities');
expect_same(['aa', 'public'], array_column(rmon_community_getbulk($link, 'b', 2), 'communityString'), 'two after b');
expect_same('public', rmon_community_get($link, 'public')['communityString'], 'get');
expect_same('aa', rmon_community_getnext($link, 'b')['communityString'], 'getnext');
expect_same([false, false], [rmon_community_get($link, 'c'), rmon_community_getnext($link, 'private')], 'none');
expect_same(0, rmon_community_delete($link, 'b'), 'delete');
for ($i = 0; rmon_community_set($link, "n$i", 1) === 0 && $i < 2000; $i++) {
}
expect_same([997, 5], [$i, rmon_community_set($link, 'one more', 1)], 'the full table');
expect_same(0, rmon_community_set($link, 'aa', 1), 'a change in the full table');
expect_same(0, rmon_community_delete($link, 'n0'), 'delete');
expect_same(0, rmon_community_set($link, 'one more', 1), 'room again');

// Trap destinations.
$set = fn(int $index, string $community, int $protocol, array $address, string $owner, int $status)
    => rmon_trapdest_set($link, $index, $community, $protocol, $address, $owner, $status);
expect_same(2, rmon_trapdest_get($link, 1)['status'], 'no destination');
expect_same(0, $set(7, 'public', 1, [], 'me', CREATE_REQUEST), 'createRequest');
expect_same(BAD_VALUE, $set(7, 'public', 1, [], 'me', VALID), 'valid without an address');
expect_same(0, $set(7, 'public', 1, [10, 0, 0, 5, 0, 162], 'me', VALID), 'valid');
expect_same(0, $set(3, 'other', 2, range(1, 200), 'you', CREATE_REQUEST), 'another');
expect_same(BAD_VALUE, $set(4, 'other', -1, [], 'you', CREATE_REQUEST), 'a negative protocol');
expect_same(BAD_VALUE, $set(65536, 'other', 1, [], 'you', CREATE_REQUEST), 'index');
$rows = walk(fn($at) => rmon_trapdest_getnext($link, $at), 'trapDestIndex');
foreach ([0, 5, 6, -1] as $status) {
    expect_same(BAD_VALUE, $set(7, 'public', 1, [10, 0, 0, 5, 0, 162], 'me', $status), "status $status");
}
expect_same(
    BAD_VALUE,
    $set(7, 'public', 1, [10, 0, 0, 5, 0, 162], 'me', CREATE_REQUEST),
    'createRequest for a row that is there',
);
expect_same(0, start_row(fn(int $status) => $set(9, 'public', 1, [10, 0, 0, 6, 0, 162], 'me', $status)), 'a third');
expect_same(0, $set(9, '', 0, [], '', INVALID), 'invalid');
expect_same(NO_SUCH_NAME, $set(9, '', 0, [], '', INVALID), 'invalid again');
$rows = walk(fn($at) => rmon_trapdest_getnext($link, $at), 'trapDestIndex');
expect_same(UNDER_CREATION, $rows[3]['trapDestStatus'], 'the status of one that waits');
expect_same([3, 7], array_keys($rows), 'destinations');
expect_same(
    [[10, 0, 0, 5, 0, 162], 'public', 1, 'me', VALID],
    [
        $rows[7]['trapDestAddress'],
        $rows[7]['trapDestCommunity'],
        $rows[7]['trapDestProtocol'],
        $rows[7]['trapDestOwner'],
        $rows[7]['trapDestStatus'],
    ],
    'a destination',
);

// Variables.
expect_same(1, rmon_get_mib_var($link, "etherStatsIndex.1") ?: 1, 'a variable');
expect_same($lo, rmon_get_mib_var($link, "ifIndex.$lo"), 'a variable by name');
expect_same(24, rmon_get_mib_var($link, "1.3.6.1.2.1.2.2.1.3.$lo"), 'a variable by identifier');
expect_same(24, rmon_get_mib_var($link, ".1.3.6.1.2.1.2.2.1.3.$lo"), 'a variable by absolute identifier');
expect_same(true, rmon_get_mib_var($link, 'sysUpTime.0') >= 0, 'a scalar');
$pkts = rmon_get_mib_var($link, "etherStatsPkts.$lo");
expect_same(true, $pkts > 0 && rmon_get_mib_var($link, "etherStatsPkts.$lo") > $pkts, 'a counter');
foreach ([
    '', '.', 'sysUpTime', 'sysUpTime.1', 'sysUpTime.', 'sysUpTime.-1', 'ifIndex.99999', 'ifIndex', "ifIndex.$lo.1",
    'ifindex.1', "ifIndex. $lo", '1.3.6.1', '1.3.6.1.2.1.2.2.1.3', str_repeat('1.', 5000), 'ifIndex.4294967297',
] as $name) {
    expect_same(false, rmon_get_mib_var($link, $name), "variable '$name'");
}

// All of it is there after a kill.
$before = [rmon_get_ipconfig($link), rmon_get_resolvers($link), rmon_community_getbulk($link, '', 2000), $rows];
end_agent($agent, 9);
rmon_close($link);
$agent = bundled_agent('--state', $directory);
ini_set('rmon.default_port', (string) $agent->port);
$link = rmon_connect('127.0.1');
$rows = walk(fn($at) => rmon_trapdest_getnext($link, $at), 'trapDestIndex');
expect_same(
    $before,
    [rmon_get_ipconfig($link), rmon_get_resolvers($link), rmon_community_getbulk($link, '', 2000), $rows],
    'all after a kill',
);
$fields = result_of(ask(client($agent), 64));
expect_same([0, 'probe.example'], [$fields->i32(), $fields->text()], 'the host name after a kill');
expect_same(
    ip2long('10.9.2.3'),
    swapped(unpack('N2', (string) substr(ask(client($agent), 62, i32($lo)), 24))[2]),
    "the interface's address after a kill",
);

// The other machines of an appliance: none is here. What was set is kept, unless the directory is gone.
$rest = fn() => array_map(
    fn(int $procedure) => status_of(ask(client($agent), $procedure, $procedure === 158 ? key2($lo, GET) : '')),
    [158, 183, 203, 204],
);
expect_same([NO_SUCH_NAME, 0, 5, 5], $rest(), 'data port, data sync, new address, time');
array_map(unlink(...), glob("$directory/*"));
rmdir($directory);
expect_same(0, told(rmon_set_hostname(...), 'lost'), 'a host name that is not kept');
expect_same([NO_SUCH_NAME, 5, 5, 5], $rest(), 'data sync without the directory');

agent_done($agent);
--EXPECT--
OK
