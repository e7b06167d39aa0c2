--TEST--
The bundled agent starts, reports errors in one line, and ends when it is told to
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$program = agent_program();

[$code, $help, $errors] = run($program, '--help');
expect_same([0, ''], [$code, $errors], 'help');
foreach ([
    '--listen', '--port', '--no-capture', '--read', '--speed', '--loop', '--hold', '--state', '--netflow', '--voice',
    '--interface', '--help', '9911', '127.0.0.1',
] as $word) {
    expect_same(true, str_contains($help, $word), "help names $word");
}

$wrong = [
    ['unknown option --portt', '--portt', '1'],
    ['unknown option -x', '-x'],
    ['unknown option 9911', '9911'],
    ['unknown option --help=1', '--help=1'],
    ['--port needs a value', '--port'],
    ['--listen needs a value', '--listen'],
    ['no port number: 65536', '--port', '65536'],
    ['no port number: -1', '--port', '-1'],
    ['no port number: ', '--port='],
    ['no port number: 99x', '--port=99x'],
];
foreach ($wrong as $case) {
    $message = array_shift($case);
    expect_same(
        [2, '', "rmon-agent: $message (--help lists the options)\n"],
        run($program, ...$case),
        implode(' ', $case),
    );
}

// A port in use, and an address that is not this machine's.
$agent = bundled_agent();
$message = "rmon-agent: cannot listen on 127.0.0.1 port $agent->port: Address already in use\n";
expect_same([1, '', $message], run($program, '--port', (string) $agent->port), 'a port in use');
$message = "rmon-agent: cannot listen on 192.0.2.77 port 0: Cannot assign requested address\n";
expect_same([1, '', $message], run($program, '--listen', '192.0.2.77', '--port', '0'), 'a foreign address');
[$code, $output, $errors] = run($program, '--listen', 'no such host', '--port', '0');
expect_same([1, ''], [$code, $output], 'no address');
expect_same(1, substr_count($errors, "\n"), 'lines about no address');

// Only the loopback is listened on, unless another address is asked for.
expect_same(
    true,
    @stream_socket_client("tcp://127.0.0.2:$agent->port", $code, $reason, 2) === false,
    'another address',
);

// One line says where the statistics come from, one what it may.
$said = '/^rmon-agent: .*Ethernet statistics come from .*\nrmon-agent: runs as \S+, with.*\n$/D';
expect_same(1, preg_match($said, $agent->said()), 'what it says');

// Signals end it with exit code 0, also while clients are connected and calls unfinished.
foreach ([15, 2] as $signal) {
    $agent = bundled_agent('--listen=127.0.0.2');
    $client = stream_socket_client("tcp://127.0.0.2:$agent->port");
    fwrite($client, marked(call(0)) . "\x80");
    expect_same(answer(ACCEPTED, i32(0)), message_from($client), 'an answer on another address');
    expect_same(0, end_agent($agent, $signal), "exit code after signal $signal");
    expect_same(true, hung_up($client), 'the connection is closed');
    // The port is free at once.
    $again = bundled_agent('--listen=127.0.0.2');
    expect_same(0, end_agent($again), 'exit code of the next one');
}

// A terminal that closes does not end the agent, and no setting changes.
$agent = bundled_agent();
$client = client($agent);
expect_same(NO_ERROR, status_of(set_system($client, 'c', 'n', 'l')), 'set');
proc_terminate($agent->process, 1);
expect_soon(
    1,
    fn() => substr_count($agent->said(), "rmon-agent: SIGHUP: the settings stay as they are\n"),
    'said of SIGHUP',
);
expect_same('n', system_group($client)['sysName'], 'sysName after SIGHUP');
expect_same(0, end_agent($agent), 'exit code after SIGHUP');

// Its counters, its table and its texts begin anew with each start.
$agent = bundled_agent();
expect_same(NO_ERROR, status_of(set_system(client($agent), 'c', 'n', 'l')), 'set');
end_agent($agent);
$agent = bundled_agent();
expect_same(gethostname(), system_group(client($agent))['sysName'], 'sysName after a start');

agent_done($agent);
--EXPECT--
OK
