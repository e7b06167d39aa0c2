--TEST--
The bundled agent as a service: configuration file, clients' networks, what it gives up, what managers and journals hear
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/sets.inc';

const HANG_UP = 1;
const CAP_NET_RAW = 1 << 13;

$directory = sys_get_temp_dir() . '/rmon-service-' . getmypid();
mkdir($directory);
register_shutdown_function(fn() => run('rm', '-r', $directory));
$config = "$directory/agent.conf";

expect_same([0, ''], [($ran = run(agent_program(), '--version'))[0], $ran[2]], 'version');
$header = file_get_contents(__DIR__ . '/../../rmon/version.h');
preg_match('/RMON_VERSION "([^"]+)"/', $header, $version);
expect_same("rmon-agent $version[1]\n", $ran[1], 'version');

// ---- The configuration file ------------------------------------------------------

$wrong = [
    ["$config line 2: unknown option portt", "# a remark\nportt = 1"],
    ["$config line 1: unknown option config", 'config = x'],
    ["$config line 1: unknown option --port", '--port = 1'],
    ["$config line 1: port needs a value", 'port'],
    ["$config line 1: loop takes no value", 'loop = yes'],
    ["$config line 3: no port number: 99x", "\n\n  port\t=  99x  "],
    ["$config line 1: no network: 10.1.2.3/8", 'allow = 10.1.2.3/8'],
    ["$config line 1: no directory: state", 'state ='],
    ['--interface and --read exclude each other', "interface = lo\nread = x"],
];
foreach ($wrong as [$message, $text]) {
    file_put_contents($config, $text);
    expect_same(
        [2, '', "rmon-agent: $message (--help lists the options)\n"],
        run(agent_program(), "--config=$config"),
        $message,
    );
}
expect_same(
    [2, '', "rmon-agent: cannot read $directory/none (--help lists the options)\n"],
    run(agent_program(), '--config', "$directory/none"),
    'no such file',
);

// What the words give wins; of the rest, the file's holds.
file_put_contents($config, "# of this test\nlisten = 127.0.0.3\r\nport = 1\nno-capture\n\nallow = 10.0.0.0/8\nallow = 127.0.0.0/30\n");
$agent = bundled_agent('--config', $config);
expect_same(true, str_contains($agent->said(), 'Ethernet statistics come from the kernel\'s counters'), 'no-capture');

// ---- Whose clients are taken ------------------------------------------------------

/** Whether a client of this address is answered. */
function is_answered(BundledAgent $agent, string $from): bool
{
    $context = stream_context_create(['socket' => ['bindto' => "$from:0"]]);
    $client = stream_socket_client("tcp://127.0.0.3:$agent->port", $code, $why, PATIENCE, STREAM_CLIENT_CONNECT, $context);
    stream_set_timeout($client, PATIENCE);
    fwrite($client, marked(call(0)));
    return (string) @fread($client, 100) !== '';
}

expect_same(true, is_answered($agent, '127.0.0.1'), 'an allowed client');
expect_same(false, is_answered($agent, '127.0.0.4'), 'a client of elsewhere');
$refused = "rmon-agent: refused a client of 127.0.0.4: not among the networks of --allow\n";
expect_same(1, substr_count($agent->said(), $refused), $agent->said());

$context = stream_context_create(['socket' => ['bindto' => '127.0.0.1:0']]);
$client = stream_socket_client("tcp://127.0.0.3:$agent->port", $code, $why, PATIENCE, STREAM_CLIENT_CONNECT, $context);
fwrite($client, marked(call(0)));
expect_same(answer(ACCEPTED, i32(0)), message_from($client), 'before the change');
expect_same(NO_ERROR, status_of(set_system($client, 'c', 'kept', 'l')), 'set');

// Read again: who is not allowed any more is sent away, and nothing else changes.
file_put_contents($config, "listen = 127.0.0.3\nport = 1\nno-capture\nallow = 127.0.0.4\n");
proc_terminate($agent->process, HANG_UP);
expect_soon(true, fn() => str_ends_with($agent->said(), "rmon-agent: SIGHUP: read $config again\n"), 'read again');
expect_same(true, hung_up($client), 'who is not allowed any more');
expect_same(false, is_answered($agent, '127.0.0.1'), 'not allowed any more');
expect_same(true, is_answered($agent, '127.0.0.4'), 'allowed now');

file_put_contents($config, "port = 1\nallow = 127.0.0.1\n");
proc_terminate($agent->process, HANG_UP);
$rest = 'what changed beside the networks of clients needs a restart';
expect_soon(true, fn() => str_contains($agent->said(), "SIGHUP: read $config again; $rest\n"), 'what needs a restart');
$client = stream_socket_client("tcp://127.0.0.3:$agent->port", $code, $why, PATIENCE, STREAM_CLIENT_CONNECT, $context);
expect_same('kept', system_group($client)['sysName'], 'what was set');

file_put_contents($config, 'allow = everybody');
proc_terminate($agent->process, HANG_UP);
$mistake = "rmon-agent: SIGHUP: the settings stay as they are: $config line 1: no network: everybody\n";
expect_soon(true, fn() => str_contains($agent->said(), $mistake), 'a mistake in the file');
expect_same('kept', system_group($client)['sysName'], 'the client after a mistake');
expect_same(0, end_agent($agent), 'exit code');

// ---- What it gives up ------------------------------------------------------

/** A line of what the kernel tells of the process. */
function status_line(BundledAgent $agent, string $name): string
{
    preg_match("/^$name:\s*(.*)$/m", file_get_contents("/proc/{$agent->pid()}/status"), $found);
    return $found[1];
}

$may_capture = (hexdec(status_line($agent = bundled_agent(), 'CapEff')) & CAP_NET_RAW) !== 0;
$sanitized = preg_match('/lib.?asan/', file_get_contents("/proc/{$agent->pid()}/maps")) === 1;
$kept = $may_capture ? CAP_NET_RAW : 0;
$user = trim(run('id', '-un')[1]);
foreach (['CapEff', 'CapPrm'] as $set) {
    expect_same($kept, hexdec(status_line($agent, $set)), $set);
}
expect_same('1', status_line($agent, 'NoNewPrivs'), 'no new privileges');
expect_same($sanitized ? '0' : '2', status_line($agent, 'Seccomp'), 'a filter of system calls');
$right = $may_capture ? 'with the right to capture alone' : 'without any capability';
$calls = $sanitized ? 'all system calls (built with sanitizers, which call more)' : 'only the system calls that it needs';
$said = "rmon-agent: runs as $user, $right, no new privileges and $calls\n";
expect_same(true, str_contains($agent->said(), $said), $agent->said());
end_agent($agent);

[$code, , $errors] = run(agent_program(), '--port=0', '--user=nosuchuser');
expect_same([1, 1], [$code, preg_match('/^rmon-agent: there is no user nosuchuser\n/m', $errors)], $errors);

// Root becomes somebody else, and the settings are his.
if (trim(run('id', '-u')[1]) === '0') {
    chmod($directory, 0o711);
    mkdir("$directory/state");
    chown("$directory/state", 'nobody');
    $agent = bundled_agent('--user=nobody', "--state=$directory/state");
    $nobody = trim(run('id', '-u', 'nobody')[1]);
    expect_same(["$nobody"], array_values(array_unique(explode("\t", status_line($agent, 'Uid')))), 'user');
    expect_same($kept, hexdec(status_line($agent, 'CapEff')), 'CapEff of another user');
    expect_same(NO_ERROR, status_of(set_system(client($agent), 'c', 'nobody was here', 'l')), 'set');
    expect_same((int) $nobody, fileowner("$directory/state/settings"), 'whose the settings are');
    expect_same(0, end_agent($agent), 'exit code');
}

// The thread that writes settings begins later, and may no more than the rest; it writes them all the same, by each of
// its ways: a short file, a journal, a file in the journal's place, and one at the end.
mkdir("$directory/kept", 0o700);
$agent = bundled_agent("--state=$directory/kept");
make_rows($agent, 1001, ROWS_OF_A_JOURNAL);
expect_same(['settings', 'settings.journal'], array_slice(scandir("$directory/kept"), 2), 'files');
$threads = glob("/proc/{$agent->pid()}/task/*/status");
expect_same(2, count($threads), 'threads');
foreach ($threads as $thread) {
    preg_match_all('/^(?:CapEff|CapPrm|NoNewPrivs|Seccomp):\s*(.*)$/m', file_get_contents($thread), $found);
    $held = sprintf('%016x', $kept);
    expect_same([$held, $held, '1', $sanitized ? '0' : '2'], $found[1], $thread);
}
$inode = fileinode("$directory/kept/settings");
$client = client($agent);
for ($round = 0; $inode === fileinode("$directory/kept/settings") && $round < 100; $round++) {
    for ($index = 1001; $index <= 1000 + ROWS_OF_A_JOURNAL; $index++) {
        fwrite($client, ether_call($index, str_repeat(chr(ord('a') + $round % 26), 255), UNDER_CREATION));
    }
    for ($index = 1001; $index <= 1000 + ROWS_OF_A_JOURNAL; $index++) {
        expect_same(NO_ERROR, status_of(message_from($client)), 'a set');
    }
    clearstatcache();
}
expect_same(true, $round > 1 && $round < 100, "a file in the place of a long journal, after $round rounds");
expect_same(NO_ERROR, set_ether($client, 1001, 0, 'the last', UNDER_CREATION), 'a set');
end_agent($agent, 9);
$agent = bundled_agent("--state=$directory/kept");
expect_same('the last', ether_row($client = client($agent), 1001)['Owner'], 'a row after a kill');
expect_same(NO_ERROR, set_ether($client, 1001, 0, 'one more', UNDER_CREATION), 'a set');
expect_same(0, end_agent($agent), 'exit code');
$agent = bundled_agent("--state=$directory/kept");
expect_same('one more', ether_row(client($agent), 1001)['Owner'], 'a row after an end');
expect_same(false, str_contains($agent->said(), 'cannot keep'), $agent->said());
end_agent($agent);

// ---- What the service manager and the journal hear ------------------------------------------------------

/** Starts the agent with these variables in its environment. */
function started_by(array $environment, string ...$options): BundledAgent
{
    foreach ($environment as $name => $value) {
        putenv("$name=$value");
    }
    $agent = bundled_agent(...$options);
    foreach ($environment as $name => $value) {
        putenv($name);
    }
    return $agent;
}

$manager = stream_socket_server("udg://$directory/notify", $code, $why, STREAM_SERVER_BIND);
stream_set_timeout($manager, PATIENCE);
file_put_contents($config, '');
$agent = started_by(['NOTIFY_SOCKET' => "$directory/notify", 'WATCHDOG_USEC' => '30000000'], "--config=$config");
expect_same('READY=1', fread($manager, 100), 'ready');
expect_same('WATCHDOG=1', fread($manager, 100), 'a sign of life');
proc_terminate($agent->process, HANG_UP);
do {
    $heard = fread($manager, 100);
} while ($heard === 'WATCHDOG=1');
expect_same(['RELOADING=1', 'READY=1'], [$heard, fread($manager, 100)], 'reads its configuration again');
expect_same(0, end_agent($agent), 'exit code');
do {
    $heard = fread($manager, 100);
} while ($heard === 'WATCHDOG=1');
expect_same('STOPPING=1', $heard, 'ends');

// A manager that can't be reached is told of once, and keeps the agent from nothing.
$agent = started_by(['NOTIFY_SOCKET' => "$directory/none"]);
$missed = "rmon-agent: cannot tell the service manager anything: No such file or directory\n";
expect_soon(1, fn() => substr_count($agent->said(), $missed), 'a manager that is not there');
expect_same(gethostname(), system_group(client($agent))['sysName'], 'a call without a manager');
end_agent($agent);

// The journal has levels, and names the program itself; a file that is not the journal's does not.
$journal = "$directory/journal";
$shell = 'export JOURNAL_STREAM=$(stat -L -c %d:%i /dev/stderr); exec "$0" --port=70000';
$errors = fopen($journal, 'w+');
proc_close(proc_open(['sh', '-c', $shell, agent_program()], [['null'], ['null'], $errors], $pipes, null, environment()));
expect_same("<3>no port number: 70000 (--help lists the options)\n", file_get_contents($journal), 'a line of the journal');
[, , $errors] = run('env', 'JOURNAL_STREAM=1:2', agent_program(), '--port=70000');
expect_same("rmon-agent: no port number: 70000 (--help lists the options)\n", $errors, 'a line of another file');

agent_done(bundled_agent());
--EXPECT--
OK
