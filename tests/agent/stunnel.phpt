--TEST--
The bundled agent over a network that others listen to: stunnel on both sides, by the samples
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';

$directory = sys_get_temp_dir() . '/rmon-stunnel-' . getmypid();
mkdir($directory, 0o700);
register_shutdown_function(fn() => run('rm', '-r', $directory));

// Addresses that nobody else takes: the samples' ports are free there.
$apart = '127.' . random_int(1, 254) . '.' . random_int(1, 254);
[$here, $far, $stranger] = ["$apart.1", "$apart.2", "$apart.3"];
$agent = bundled_agent();

/** Starts one side by its sample, with these words in the place of the sample's, and waits until it listens there. */
function tunnel(string $sample, string $address, array $words): void
{
    global $directory;
    $text = file_get_contents(__DIR__ . "/../../packaging/stunnel/$sample.conf");
    foreach ($words as $word => $other) {
        expect_same(true, str_contains($text, $word), "the sample $sample has $word");
        $text = str_replace($word, $other, $text);
    }
    $file = "$directory/$sample-" . strtr($address, ':', '-');
    file_put_contents("$file.conf", "foreground = yes\npid =\n$text");
    $log = ['file', "$file.log", 'w'];
    $process = proc_open(['/usr/bin/stunnel4', "$file.conf"], [['null'], $log, $log], $pipes, null, environment());
    register_shutdown_function(fn() => [proc_terminate($process, 9), proc_close($process)]);
    $listens = wait_until(fn() => @stream_socket_client("tcp://$address", $code, $why, PATIENCE) !== false);
    expect_same(true, $listens, "$sample listens: " . file_get_contents("$file.log"));
}

$secret = fn(string $name): string => "$directory/$name";
foreach (['secret', 'wrong'] as $name) {
    file_put_contents($secret($name), 'rmon:' . bin2hex(random_bytes(32)) . "\n");
    chmod($secret($name), 0o600);
}
tunnel('rmon-agent', "$far:9913", [
    '10.1.0.5' => $far,
    '127.0.0.1:9911' => "127.0.0.1:$agent->port",
    '/etc/stunnel/rmon.secret' => $secret('secret'),
]);
tunnel('rmon-client', "$here:9921", [
    '127.0.0.1' => $here,
    '10.1.0.5' => $far,
    '/etc/stunnel/rmon.secret' => $secret('secret'),
]);
tunnel('rmon-client', "$stranger:9921", [
    '127.0.0.1' => $stranger,
    '10.1.0.5' => $far,
    '/etc/stunnel/rmon.secret' => $secret('wrong'),
]);

// Who has the secret reads and sets.
ini_set('rmon.default_port', '9921');
$link = rmon_connect($here);
expect_same(0, rmon_system_set($link, 'c', 'through the tunnel', 'l'), 'a set');
expect_same('through the tunnel', rmon_system_get($link)['sysName'], 'a read');
expect_same('through the tunnel', system_group(client($agent))['sysName'], 'what the agent has');

/** What comes back for a call. */
function answer_from(string $address): string
{
    $client = stream_socket_client("tcp://$address", $code, $why, PATIENCE);
    stream_set_timeout($client, PATIENCE);
    @fwrite($client, marked(call(0)));
    return (string) @stream_get_contents($client, 200);
}

// Who has another one, or none, is answered by nobody.
expect_same('', answer_from("$stranger:9921"), 'a client with another secret');
expect_same(false, str_contains(answer_from("$far:9913"), answer(ACCEPTED, i32(0))), 'a client without TLS');
expect_same('through the tunnel', rmon_system_get($link)['sysName'], 'a read behind them');

rmon_close($link);
agent_done($agent);
--EXPECT--
OK
