--TEST--
The bundled agent says in one line what keeps it from starting, and where it has no right to capture
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';

$directory = sys_get_temp_dir() . '/rmon-start-' . getmypid();
mkdir($directory);
register_shutdown_function(fn() => run('rm', '-r', $directory));
mkdir("$directory/kept");
mkdir("$directory/kept/settings");
file_put_contents("$directory/text", 'no directory');
file_put_contents("$directory/voice", "; calls\n[sccp call]\ncaller = nobody\n");
file_put_contents("$directory/parties", "[sccp call]\nafter = 1\n");
$taken = stream_socket_server('udp://127.0.0.1:0', $code, $reason, STREAM_SERVER_BIND);
$port = (string) port_of($taken);

/** @var list<array{int, string, 2: string}> exit code, what is said (% for what the library says), options */
$wrong = [
    [1, 'cannot read a capture: %', '--read', $directory],
    [1, "$directory/voice line 3: there is no phone nobody before", '--voice', "$directory/voice"],
    [1, "$directory/parties: a call needs a caller and a callee", '--voice', "$directory/parties"],
    [1, "cannot make $directory/none/kept: No such file or directory", '--state', "$directory/none/kept"],
    [1, "cannot open $directory/text: Not a directory", '--state', "$directory/text"],
    [1, "cannot read $directory/kept/settings: Is a directory", '--state', "$directory/kept"],
    [1, "cannot make $directory/none/kept: No such file or directory", '--captures', "$directory/none/kept"],
    [1, "cannot open $directory/text: Not a directory", '--captures', "$directory/text"],
    [1, "cannot listen for NetFlow on 127.0.0.1 port $port: Address already in use", '--netflow', $port],
    [2, 'no speed: fast (--help lists the options)', '--speed', 'fast'],
    [2, 'no port number: 70000 (--help lists the options)', '--netflow', '70000'],
    [2, 'no directory: --state (--help lists the options)', '--state='],
    [2, 'no directory: --captures (--help lists the options)', '--captures', ''],
    [2, 'no file: --voice (--help lists the options)', '--voice', ''],
    [2, '--read needs a value (--help lists the options)', '--read'],
];
foreach ($wrong as $case) {
    [$expected, $message] = $case;
    $options = array_slice($case, 2);
    [$code, $output, $errors] = run(agent_program(), '--port', '0', ...$options);
    $what = implode(' ', $options);
    expect_same([$expected, ''], [$code, $output], "exit code and output of $what");
    // A line about where the statistics come from may stand before.
    $lines = preg_grep(
        '/^rmon-agent: (?!(no right to capture|Ethernet statistics come from))/',
        explode("\n", $errors),
    );
    $pattern = '/^rmon-agent: ' . str_replace('%', '.+', preg_quote($message, '/')) . '$/D';
    if (count($lines) !== 1 || !preg_match($pattern, end($lines)) || substr_count($errors, "\n") > 2) {
        fail("said of $what, not \"$message\":", $errors);
    }
}

// Every option is described, and stands in the README's table.
[, $help] = run(agent_program(), '--help');
preg_match_all('/"(--[a-z-]+)"/', file_get_contents(__DIR__ . '/../../agent/options.cpp'), $options);
expect_same(true, count(array_unique($options[1])) > 10, 'options that the agent looks for');
preg_match_all('/^\| .*`/m', file_get_contents(__DIR__ . '/../../agent/README.md'), $rows);
foreach (array_unique($options[1]) as $option) {
    expect_same(1, preg_match("/^  $option /m", $help), "help on $option");
    expect_same(1, count(preg_grep("/`{$option}[ `,]/", $rows[0])), "the README's row on $option");
}

// A capture file needs no right to capture; without both, the kernel's counters are used.
$start = fn(string ...$options) => [
    'setpriv',
    '--bounding-set=-net_raw',
    '--inh-caps=-net_raw',
    agent_program(),
    '--port',
    '0',
    ...$options,
];
foreach ([
    'no right to capture (CAP_NET_RAW): Ethernet statistics come from the kernel\'s counters' => [],
    'Ethernet statistics come from the kernel\'s counters' => ['--no-capture'],
    'Ethernet statistics come from capture files' => ['--read', capture_file([])],
] as $message => $options) {
    $errors = tmpfile();
    $process = proc_open($start(...$options), [['null'], ['pipe', 'w'], $errors], $pipes, null, environment());
    expect_same(1, preg_match('/^rmon-agent: listening on \S+\n$/D', (string) fgets($pipes[1])), "start: $message");
    proc_terminate($process);
    expect_same(0, proc_close($process), "exit code: $message");
    rewind($errors);
    expect_same("rmon-agent: $message", explode("\n", stream_get_contents($errors))[0], 'where statistics come from');
}
done();
?>
--EXPECT--
OK
