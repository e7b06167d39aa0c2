--TEST--
rmon_close: what each call gives back, and when the connection ends
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$agent = scripted_agent(always(reply(i32(0))));
$no_id = fn (int $id) => "$id is not a RMON/RPC conn id!";
$closed = 'rmon_close(): supplied resource is not a valid RMON RPC link resource';
$no_resource = 'rmon_close(): supplied argument is not a valid RMON RPC link resource';

expect_result(fn () => rmon_close(), null, ['rmon_close(): no RMON RPC link resource supplied']);
expect_result(fn () => rmon_close(1, 2), null, ['Wrong parameter count for rmon_close()']);
foreach ([null, true, 5, 1.5, 'link', [1], new stdClass] as $value) {
    expect_result(fn () => rmon_close($value), null, [$no_resource]);
}
$file = fopen('php://memory', 'r');
expect_result(fn () => rmon_close($file), null, [$closed]);
fclose($file);
expect_result(fn () => rmon_close($file), null, [$closed]);

// A new link survives one close: the module's own reference goes first.
$link = rmon_connect('127.0.0.1');
$id = get_resource_id($link);
$copy = $link;
expect_result(fn () => rmon_close($link), true);
$agent->wait_open_connections(1);
expect_result(fn () => rmon_etherstats_set($link, 1, 1, '', 1), 0);
expect_result(fn () => rmon_close($link), true);
$agent->wait_open_connections(0);
expect_same([0, 0], link_counts(), 'closed with its second close, copy or not');
expect_result(fn () => rmon_etherstats_set($copy, 1, 1, '', 1), false, [$no_id($id)]);
expect_result(fn () => rmon_close($copy), null, [$closed]);
expect_result(fn () => rmon_close(), null, [$closed]);
expect_same(false, is_resource($link), 'the variable names a closed resource');

// Each connect that returned the link counts.
$first = rmon_connect('127.0.0.1');
$second = rmon_connect('127.0.0.1');
for ($i = 0; $i < 2; $i++) {
    expect_result(fn () => rmon_close($first), true);
    expect_same([1, 0], link_counts(), 'still open');
}
expect_result(fn () => rmon_close($second), true);
expect_same([0, 0], link_counts(), 'the third close ends it');

// Without an argument it is the link opened last; the default link stays where it is.
$a = rmon_connect('127.0.0.1');
$b = rmon_connect('127.1');
expect_result(fn () => rmon_close(), true);
expect_result(fn () => rmon_close(), true);
expect_same([1, 0], link_counts(), 'the second link is closed');
expect_result(fn () => rmon_close(), null, [$closed]);
expect_result(fn () => rmon_etherstats_set($a, 1, 1, '', 1), 0);
rmon_connect('127.0.0.1');
expect_result(fn () => rmon_close(), null, [$closed]);

// A link that no variable names goes with the module's reference.
unset($a);
$agent->wait_open_connections(1);
$id = get_resource_id($again = rmon_connect('127.0.0.1'));
unset($again);
$agent->wait_open_connections(1);
expect_same([1, 0], link_counts(), 'the module still holds it');
$again = rmon_connect('127.0.0.1');
expect_same($id, get_resource_id($again), 'and it is found again');
rmon_close($again);
unset($again);
$agent->wait_open_connections(0);
expect_same([0, 0], link_counts(), 'gone');

$temporary = rmon_connect('127.0.0.1');
$id = get_resource_id($temporary);
unset($temporary);
expect_result(fn () => rmon_close(), true);
expect_same([0, 0], link_counts(), 'the default link, named by nobody');
expect_result(fn () => rmon_close(), null, [$closed]);
expect_result(fn () => rmon_system_get($id), false, [$no_id($id)]);

// The link opened last may be a persistent one, whose connection stays.
$lasting = rmon_pconnect('127.0.0.1');
expect_same([1, 1], link_counts(), 'a persistent link');
expect_result(fn () => rmon_close(), true);
expect_result(fn () => rmon_etherstats_set($lasting, 1, 1, '', 1), 0);
expect_result(fn () => rmon_close(), true);
expect_result(fn () => rmon_close(), null, [$closed]);
expect_same([1, 1], link_counts(), 'its connection');
expect_same(false, is_resource($lasting), 'its resource');

// Closed while only an array holds it.
$held = [rmon_connect('127.0.0.1')];
rmon_close($held[0]);
rmon_close($held[0]);
$fresh = rmon_connect('127.0.0.1');
expect_same(false, get_resource_id($fresh) === get_resource_id($held[0]), 'a closed link is not returned again');
done();
?>
--EXPECT--
OK
