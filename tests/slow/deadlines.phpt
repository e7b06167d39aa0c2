--TEST--
A call times out after 25 seconds, saving captured packets after 60; a late reply is not taken for the next call's
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

// Each case in a process of its own, so that this test waits once. $call is made on $link, and timed.
const BEGIN = <<<'PHP'
    $link = rmon_connect('127.0.0.1');
    $set = fn(string $text = 'x') => rmon_etherstats_set($link, 1, 2, $text, 1);
    $save = fn() => rmon_capture_save_file($link, 'file', 1, 2, 3, 4)['totalPktsSaved'] ?? false;
    $timed = function (callable $call): void {
        $started = hrtime(true);
        $result = $call();
        $seconds = (hrtime(true) - $started) / 1e9;
        // The bound above is for a machine that is busy with other things.
        foreach ([
            'at once' => [0, 20], '25 seconds' => [25, 40], '60 seconds' => [60, 90],
        ] as $what => [$least, $most]) {
            if ($seconds >= $least && $seconds < $most) {
                $seconds = $what;
            }
        }
        echo var_export($result, true), " after $seconds\n";
    };

    PHP;

/** The processes that were started, with what they should print. */
$processes = [];

/** Warnings are shown in a short form. */
$start = function (string $what, int $port, string $code, string ...$lines) use (&$processes): void {
    $command = php_command(['rmon.default_port' => $port, 'memory_limit' => '512M', 'error_log' => '/dev/null']);
    $shown = 'set_error_handler(fn(int $level, string $text) => print("$text\n"));';
    $process = proc_open([...$command, '-r', $shown . BEGIN . $code], [1 => ['pipe', 'w']], $pipes);
    $processes[$what] = [$process, $pipes[1], implode("\n", $lines) . "\n"];
};
$saved = fn(int $packets): string => record(lastPktIndex: u32(17), totalPktsSaved: u32($packets));
$late = 'rmon_etherstats_set: RPC: Timed out';

$agent = scripted_agent(no_answer(), reply(i32(6)), reply(i32(7)));
$start('silent once', $agent->port, '$timed($set); $timed($set); $timed($set);',
    $late, 'false after 25 seconds', '6 after at once', '7 after at once');

$agent = scripted_agent(late(27.0, reply(i32(5))), reply(i32(6)));
$start('late', $agent->port, '$timed($set); $timed($set);', $late, 'false after 25 seconds', '6 after at once');

$agent = scripted_agent(fragmented(i32(5), [3, 10, 4, 9], 9.0), reply(i32(6)));
$start('late in part', $agent->port, '$timed($set); $timed($set);', $late, 'false after 25 seconds', '6 after at once');

$agent = scripted_agent(no_answer(), reply($saved(6)));
$start('saving, silent', $agent->port, '$timed($save); $timed($save);',
    'rmon_capture_save_file: RPC: Timed out', 'false after 60 seconds', '6 after at once');

$agent = scripted_agent(late(50.0, reply($saved(5))));
$start('saving takes a while', $agent->port, 'var_dump($save());', 'int(5)');

$agent = scripted_agent(no_answer(), reply(i32(6)));
$start('a persistent link to a silent agent', $agent->port,
    '$timed(fn() => get_resource_type(rmon_pconnect("127.1"))); $timed(fn() => get_resource_type(rmon_pconnect("127.1"))); $timed($set);',
    "'RMON RPC link' after at once", 'PHP/RMON link lost (: RPC: Timed out)', "'RMON RPC link' after 25 seconds", '6 after at once');

$agent = scripted_agent(fragmented(i32(5), 1, 1.5));
$start('drips', $agent->port, '$timed($set);', $late, 'false after 25 seconds');

$agent = scripted_agent(sequence(...array_fill(0, 20, late(2.0, wrong_xid(i32(5))))));
$start('replies to others', $agent->port, '$timed($set);', $late, 'false after 25 seconds');

$deaf = stream_socket_server('tcp://127.0.0.1:0');
$start('nobody reads', port_of($deaf), '$timed(fn() => rmon_get_mib_var($link, str_repeat("x", 64 << 20))); $timed($set);',
    'false after 25 seconds', // this function reports no failed call
    'rmon_etherstats_set: RPC: Unable to send; errno = Broken pipe', 'false after at once');

// A listener whose queue of connections is full answers nobody.
$full = stream_socket_server('tcp://127.0.0.1:0', context: stream_context_create(['socket' => ['backlog' => 0]]));
$waiting = [];
for ($i = 0; $i < 8; $i++) {
    $waiting[] = @stream_socket_client(stream_socket_get_name($full, false), flags: STREAM_CLIENT_ASYNC_CONNECT);
}
$start('nobody lets in', port_of($full), '$timed(fn() => rmon_connect("127.1")); $timed(fn() => rmon_pconnect("127.1"));',
    'RMON: RPC connection failed!', // the one that all cases begin with
    'RMON: RPC connection failed!', 'false after 25 seconds', 'false after 25 seconds');

foreach ($processes as $what => [$process, $output, $expected]) {
    expect_same($expected, stream_get_contents($output), $what);
    expect_same(0, proc_close($process), $what);
}
done();
?>
--EXPECT--
OK
