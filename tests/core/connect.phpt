--TEST--
rmon_connect: one link for each host text, limits, hosts that don't resolve
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$agent = scripted_agent();
expect_same([0, 0], link_counts(), 'no links yet');

$link = rmon_connect('127.0.0.1');
expect_same('RMON RPC link', get_resource_type($link), 'type');
expect_same([1, 0], link_counts(), 'one link');
$again = rmon_connect('127.0.0.1');
expect_same(get_resource_id($link), get_resource_id($again), 'the same host text, the same link');
expect_same([1, 0], link_counts(), 'counted once');
expect_same(1, $agent->connections(), 'one TCP connection');

$other = rmon_connect('127.1');
expect_same(false, get_resource_id($link) === get_resource_id($other), 'the same address by another text');
expect_same([2, 0], link_counts(), 'another link');
$cut = rmon_connect("127.1\0.2.3");
expect_same(get_resource_id($other), get_resource_id($cut), 'a host ends at its first zero byte');

$host = 127.1;
$converted = rmon_connect($host);
expect_same(get_resource_id($other), get_resource_id($converted), 'a host is converted to a string');
expect_same(127.1, $host, "the caller's variable is not");
$object = new class {
    public function __toString(): string
    {
        return '127.1';
    }
};
expect_same(get_resource_id($other), get_resource_id(rmon_connect($object)), 'an object that is a string');

expect_same(2, $agent->connections(), 'two connections by now');

expect_result(fn () => rmon_connect(), null, ['Wrong parameter count for rmon_connect()']);
expect_result(fn () => rmon_connect('a', 'b'), null, ['Wrong parameter count for rmon_connect()']);
expect_result(fn () => rmon_pconnect(), null, ['Wrong parameter count for rmon_pconnect()']);
expect_result(fn () => rmon_pconnect('a', 'b'), null, ['Wrong parameter count for rmon_pconnect()']);
expect_result(fn () => rmon_connect(new stdClass), null, ['Object of class stdClass could not be converted to string']);
expect_result(
    fn () => rmon_connect('no such host'),
    false,
    ['RMON/RPC unable to resolv host no such host', 'RMON: RPC connection failed!'],
);
expect_result(fn () => rmon_pconnect('no such host'), false, ['RMON/RPC unable to resolv host no such host']);
expect_result(
    fn () => rmon_connect([]),
    false,
    ['Array to string conversion', 'RMON/RPC unable to resolv host Array', 'RMON: RPC connection failed!'],
);

$port = $agent->port;
ini_set('rmon.default_port', (string)dead_port());
expect_result(fn () => rmon_connect('127.0.0.3'), false, ['RMON: RPC connection failed!']);
expect_result(fn () => rmon_pconnect('127.0.0.3'), false, []);
expect_same(get_resource_id($link), get_resource_id(rmon_connect('127.0.0.1')), 'a link in use needs no port');
expect_same([2, 0], link_counts(), 'failures count nothing');
ini_set('rmon.default_port', (string)$port);
done();
?>
--EXPECT--
OK
