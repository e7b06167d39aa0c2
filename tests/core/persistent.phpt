--TEST--
Persistent links: kept between requests, tested before they are used again
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

$agent = scripted_agent(always(reply(i32(5))));
$server = new OneProcessServer(<<<'PHP'
    if ($do === 'nothing opened') {
        echo json_encode([rmon_close(), error_get_last()['message']]);
        exit;
    }
    if ($do === 'normal') {
        $link = rmon_connect('127.0.0.1');
    } else {
        $link = rmon_pconnect('127.0.0.1');
        $second = $do === 'twice' ? rmon_pconnect('127.0.0.1') : null;
    }
    echo rmon_etherstats_set($link, 1, 2, 'me', 1);
    if ($do === 'close') {
        echo ' ', json_encode([rmon_close($link), rmon_close($link), @rmon_close($link)]);
        echo ' ', json_encode(@rmon_etherstats_set($link, 1, 2, 'me', 1));
    }
    ob_start();
    (new ReflectionExtension('rmon'))->info();
    preg_match_all('~Links </td><td class="v">(\d+) ~', ob_get_clean(), $found);
    echo vsprintf(' persistent %s links %s', $found[1]);
    PHP, ['rmon.default_port' => $agent->port]);
$set = [5, record(
    status: i32(0), etherStatsIndex: i32(1), etherStatsDataSource: i32(2), counters: str_repeat(u64(0), 17),
    etherStatsOwner: text('me'), etherStatsStatus: i32(1), etherStatsDroppedFrames: u64(0), etherStatsCreateTime: u32(
        0,
    ),
)];
$alive = [0, ''];

expect_same('5 persistent 1 links 1', $server->request(), 'first request');
expect_calls($agent, [$set]);
expect_same('5 persistent 1 links 1', $server->request(), 'second request');
expect_calls($agent, [$set, $alive, $set]);
expect_same('5 persistent 1 links 1', $server->request('twice'), 'two resources over one handle');
expect_calls($agent, [$set, $alive, $set, $alive, $alive, $set]);
expect_same(1, $agent->connections(), 'one connection for all');
expect_same('5 persistent 1 links 2', $server->request('normal'), 'a normal link beside it');
$agent->wait_open_connections(1);
expect_same(
    '5 [true,true,null] false persistent 1 links 1',
    $server->request('close'),
    'closing ends the resource only',
);
expect_same('5 persistent 1 links 1', $server->request(), 'the connection is still there');
$output = $server->request('nothing opened');
expect_same(true, str_ends_with($output, '[null,"rmon_close(): no RMON RPC link resource supplied"]'),
    "no request finds the link that an earlier one opened last: $output");
expect_same(2, $agent->connections(), 'the persistent one and the normal one');

$agent->stop();
$agent->restart(always(reply(i32(6))));
$output = $server->request();
expect_same(1, preg_match('/^\nWarning: PHP\/RMON link lost \(: RPC: [^()]+\) in .*\n6 persistent 1 links 1$/s', $output),
    "after a restart of the agent: $output");
expect_same('6 persistent 1 links 1', $server->request(), 'and once more');

$agent->stop();
$output = $server->request();
expect_same(2, preg_match_all('/Warning: (PHP\/RMON link lost \(: RPC: .*\)|. is not a RMON\/RPC conn id!|0 is not a RMON\/RPC conn id!) in/', $output),
    "no agent: the loss, then the refusal of FALSE as a link: $output");
expect_same(true, str_ends_with($output, ' persistent 0 links 0'), $output);
expect_same(true, $server->is_running(), 'the server lives');
$agent->restart(always(reply(i32(8))));
expect_same('8 persistent 1 links 1', $server->request(), 'the agent is back');
done();
?>
--EXPECT--
OK
