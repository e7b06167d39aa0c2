--TEST--
A persistent link whose agent is gone closes the request's resources that name it
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$agent = scripted_agent(always(reply(i32(3))));
$first = rmon_pconnect('127.0.0.1');
$second = rmon_pconnect('127.0.0.1');
$normal = rmon_connect('127.0.0.1');
expect_same([2, 1], link_counts(), 'one persistent, one normal');

// The report of the loss runs user code: closing, connecting and using links there must do no harm.
$agent->restart(always(reply(i32(4))));
$nested = [];
set_error_handler(function (int $level, string $message) use (&$nested, $first, $second): bool {
    $nested[] = substr($message, 0, 27);
    $nested[] = @rmon_close($first);
    $nested[] = @rmon_etherstats_set($second, 1, 1, '', 1);
    return true;
});
$third = rmon_pconnect('127.0.0.1');
restore_error_handler();
expect_same(['PHP/RMON link lost (: RPC: ', null, false], $nested, 'in the handler both are closed already');
expect_same(false, is_resource($first) || is_resource($second), 'both are closed');
expect_same(4, rmon_etherstats_set($third, 1, 1, '', 1), 'the new link works');
expect_same([2, 1], link_counts(), 'and is counted once');

// The same, with a handler that connects anew: its connection is taken, not replaced.
$agent->restart(always(reply(i32(5))));
$nested = [];
set_error_handler(function (int $level, string $message) use (&$nested): bool {
    $nested[] = $message;
    $nested[] = rmon_pconnect('127.0.0.1');
    return true;
});
$fourth = rmon_pconnect('127.0.0.1');
restore_error_handler();
expect_same(2, count($nested), 'one report');
expect_same(5, rmon_etherstats_set($fourth, 1, 1, '', 1), 'the outer link works');
expect_same(5, rmon_etherstats_set($nested[1], 1, 1, '', 1), 'the inner link works');
expect_same([2, 1], link_counts(), 'they share one connection');
expect_same(false, is_resource($third), 'the old one is closed');
$agent->wait_open_connections(1);

// The normal link's agent went away too; it stays registered and reports its failure at each use.
[$result, $messages] = warnings(fn () => rmon_etherstats_set($normal, 1, 1, '', 1));
expect_same(false, $result, 'a dead normal link');
expect_same(1, preg_match('/^rmon_etherstats_set: RPC: /', $messages[0][1]), $messages[0][1]);
expect_same(true, is_resource($normal), 'it stays registered');
done();
?>
--EXPECT--
OK
