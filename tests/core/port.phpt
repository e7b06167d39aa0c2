--TEST--
The agent's port: configured, from the environment, from the services database, 9911
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_preloads();
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

/** Whether a connect reaches the listener; a host of its own keeps other agents' ports out of the way. */
function reaches(int $port, array $directives, array $environment, string $before = ''): bool
{
    $listener = stream_socket_server("tcp://127.0.9.11:$port", $error, $text)
        ?: throw new RuntimeException("127.0.9.11:$port: $text");
    [$output] = run_php("$before echo (int)is_resource(rmon_connect('127.0.9.11'));", $directives, $environment);
    return $output === '1' && stream_socket_accept($listener, 5) !== false;
}

putenv('RMONRPC_PORT');
$services = preloading('services');
expect_same(true, reaches(9911, [], []), 'nothing configured');
expect_same(true, reaches(17000, [], ['RMONRPC_PORT' => '17000']), 'the environment');
expect_same(true, reaches(19000, [], $services), 'the services database');
expect_same(true, reaches(17000, [], $services + ['RMONRPC_PORT' => '17000']), 'the environment before the services');
expect_same(true, reaches(18000, ['rmon.default_port' => 18000], $services + ['RMONRPC_PORT' => '17000']),
    'the directive before all');
expect_same(true, reaches(18001, ['rmon.default_port' => 18000], [], "ini_set('rmon.default_port', '18001');"),
    'changed by the script');
expect_same(
    true,
    reaches(
        17002,
        [],
        ['RMONRPC_PORT' => '17002'],
        "ini_set('rmon.default_port', '18002'); ini_restore('rmon.default_port');",
    ),
    'taken back by the script: no value is configured again',
);
expect_same(true, reaches(17001, [], ['RMONRPC_PORT' => '17001 and more']), 'a number with something behind it');

[$output] = run_php("var_dump(rmon_connect('127.0.9.11'));", ['rmon.default_port' => 'none']);
expect_same(true, str_contains($output, "Warning: RMON: RPC connection failed!") && str_contains($output, 'bool(false)'),
    'a port that is no number is 0');
// A port of 0 is the one that the port mapper of the host knows. Its own port, 111, is for the superuser to take.
$mapper = @stream_socket_server('tcp://127.0.9.11:111');
if ($mapper !== false) {
    $agent = stream_socket_server('tcp://127.0.9.11:0');
    foreach ([[port_of($agent), '1'], [0, '0']] as [$port, $printed]) {
        $process = proc_open(
            [...php_command(['rmon.default_port' => 0, 'display_errors' => 0]), '-r', 'echo (int)is_resource(rmon_connect("127.0.9.11"));'],
            [1 => ['pipe', 'w']],
            $pipes,
        );
        $asked = stream_socket_accept($mapper, 60);
        $call = fread($asked, 60);
        // A call of procedure 3, version 2, program 100000, without credentials: for 99999, version 1, over TCP (6).
        expect_same(
            bin2hex(u32(0x80000000 | 56)),
            bin2hex(substr($call, 0, 4)),
            'the mark',
        );
        expect_same(
            bin2hex(u32(0) . u32(2) . u32(100000) . u32(2) . u32(3) . str_repeat(u32(0), 4) . u32(99999) . u32(1) . u32(6) . u32(0)),
            bin2hex(substr($call, 8)),
            'the question',
        );
        fwrite($asked, u32(0x80000000 | 28) . substr($call, 4, 4) . accepted(0, u32($port)));
        expect_same($printed, stream_get_contents($pipes[1]), "mapped to $port");
        proc_close($process);
        if ($port !== 0) {
            expect_same(true, stream_socket_accept($agent, 5) !== false, 'the agent is reached');
        }
    }
}
foreach (['rmon.allow_persistent', 'rmon.max_persistent', 'rmon.max_links'] as $directive) {
    expect_same(false, @ini_set($directive, '5'), "$directive is the system's to set");
}
done();
?>
--EXPECT--
OK
