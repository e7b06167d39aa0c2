--TEST--
The environment's RMONRPC_TIMEOUT shortens what calls and connecting wait, from call to call
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';

/** @return array{mixed, bool, string} the result; whether it came in time, on a busy machine too; what was reported */
function timed(int $milliseconds, callable $call): array
{
    $reported = '';
    set_error_handler(function (int $level, string $text) use (&$reported): bool {
        $reported .= $text;
        return true;
    });
    $begun = hrtime(true);
    $result = $call();
    $taken = (hrtime(true) - $begun) / 1e6;
    restore_error_handler();
    return [$result, $taken >= $milliseconds && $taken < 20000, $reported];
}

$nonsense = ['0', '-100', '', ' 100', 'x', '99999999999999999999'];
$agent = scripted_agent(
    no_answer(),
    late(1.0, reply(i32(5))),
    reply(i32(6)),
    no_answer(),
    reply(i32(7)),
    ...array_fill(0, count($nonsense), late(0.3, reply(i32(8)))),
);
ini_set('rmon.default_port', (string) $agent->port);
$link = rmon_connect('127.0.0.1');
$set = fn() => rmon_etherstats_set($link, 1, 2, 'x', 1);
putenv('RMONRPC_TIMEOUT=300');
expect_same([false, true, 'rmon_etherstats_set: RPC: Timed out'], timed(300, $set), 'a call');

putenv('RMONRPC_TIMEOUT');
expect_same([5, true, ''], timed(900, $set), 'without it');
putenv('RMONRPC_TIMEOUT=60000');
expect_same([6, true, ''], timed(0, $set), 'a long one');
putenv('RMONRPC_TIMEOUT=200');
expect_same(
    [false, true, 'rmon_capture_save_file: RPC: Timed out'],
    timed(200, fn() => rmon_capture_save_file($link, 'file', 1, 2, 3, 4)),
    'saving packets',
);
putenv('RMONRPC_TIMEOUT');
expect_same([7, true, ''], timed(0, $set), 'the link is as it was');

foreach ($nonsense as $text) {
    putenv("RMONRPC_TIMEOUT=$text");
    expect_same([8, true, ''], timed(200, $set), "\"$text\"");
}

// A listener whose queue of connections is full answers nobody.
$full = stream_socket_server('tcp://127.0.0.1:0', context: stream_context_create(['socket' => ['backlog' => 0]]));
$waiting = [];
for ($i = 0; $i < 8; $i++) {
    $waiting[] = @stream_socket_client(stream_socket_get_name($full, false), flags: STREAM_CLIENT_ASYNC_CONNECT);
}
ini_set('rmon.default_port', (string) port_of($full));
putenv('RMONRPC_TIMEOUT=200');
expect_same([false, true, 'RMON: RPC connection failed!'], timed(200, fn() => rmon_connect('127.1')), 'connecting');
putenv('RMONRPC_TIMEOUT');
done();
?>
--EXPECT--
OK
