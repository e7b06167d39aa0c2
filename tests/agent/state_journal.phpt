--TEST--
Whatever is set in the bundled agent, in any order, the journal has it: files with it read as the file that the agent writes at its end
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/sets.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/rmon2.inc';

$seed = random_int(0, PHP_INT_MAX);
mt_srand($seed);
$directory = sys_get_temp_dir() . '/rmon-journal-' . getmypid();
$copy = "$directory-copy";
foreach ([$directory, $copy] as $made) {
    register_shutdown_function(fn() => [array_map(unlink(...), glob("$made/*")), @rmdir($made)]);
}
$file = capture_file([]);

/** An agent with the directory, and a link under a name of the host that was not used yet. */
function started(string $directory): array
{
    global $file;
    static $round = 0;
    $host = '127.0.2.' . ++$round;
    $agent = reading_agent([$file], '--state', $directory, '--listen', $host, '--netflow', '0');
    ini_set('rmon.default_port', (string) $agent->port);
    return [$agent, rmon_connect($host), $host];
}

require __DIR__ . '/settable.inc';
unset($things['hostName'], $things['mgcp']); // as the others of their kind
$statuses = fn(callable $set) => (new ReflectionFunction($set))->getNumberOfParameters() === 3;

// What else changes many rows, or takes them away.
$others = [
    fn($link) => rmon_nde_device_del($link, $device),
    fn($link) => rmon_nde_datasrc_del($link, $device, mt_rand(1, 3)),
    fn($link, $n) => rmon_nde_datasrc_set($link, $device, "n$n"),
    fn($link) => rmon_nde_flow_path_set($link, $device, mt_rand(1, 3), mt_rand(1, 3), 1),
    fn($link) => rmon_nde_flow_path_del($link, $device, mt_rand(1, 3), mt_rand(1, 3), 1),
    fn($link) => rmon_community_set($link, 'c' . mt_rand(1, 3), mt_rand(0, 2)),
    fn($link) => rmon_hosttopn_ctl_set($link, 9, 9, 1, mt_rand(0, 1000), 10, 'again', VALID),
    fn($link) => dsmon_aggprof_set($link, 9, mt_rand(0, 63), mt_rand(0, 3)),
    fn($link) => dsmon_aggrp_set($link, 9, mt_rand(0, 3), 'group', mt_rand(2, 4)),
    fn($link) => dsmon_aggctl_set_lock($link, mt_rand(1, 2)),
    fn($link) => rmon_pdir_set($link, ...[...protocol_key(1, 0x800, 6, 60000), 'mine', 1, 3, 3, 3, 'me', mt_rand(1, 4)]),
    fn($link) => rmon_pdir_set($link, ...[...protocol_key(1, 0x800, 132, 3868), '', 1, 3, 3, 1, '', mt_rand(1, 4)]),
    fn($link) => rmon_pdir_set($link, ...[...protocol_key(1, 0x800, 132), '', 1, 2, 2, 1, '', mt_rand(1, 4)]),
];

[$agent, $link, $host] = started($directory);
$socket = fn() => stream_socket_client("tcp://$host:$agent->port", $code, $reason, PATIENCE);
$client = $socket();
for ($i = 0; $i < ROWS_OF_A_JOURNAL; $i++) {
    expect_same(NO_ERROR, set_ether($client, 2000 + $i, 0, str_repeat('o', 255), CREATE_REQUEST), 'a row');
}
for ($round = 1; $round <= 3; $round++) {
    if ($round > 1) {
        [$agent, $link] = started($directory);
    }
    $took = 0;
    for ($n = 1000 * $round; $n < 1000 * $round + 250; $n++) {
        if (mt_rand(0, 3) === 0) {
            $took += @$others[array_rand($others)]($link, $n) === 0;
            continue;
        }
        $thing = $things[array_rand($things)][0];
        if (!$statuses($thing)) {
            $took += @$thing($link, $n) === 0;
        } elseif (mt_rand(0, 3) === 0) {
            $took += @$thing($link, $n, mt_rand(0, 1) ? INVALID : UNDER_CREATION) === 0;
        } else {
            $took += @$thing($link, $n, CREATE_REQUEST) === 0;
            $took += @$thing($link, $n, VALID) === 0;
        }
    }
    expect_same(true, $took > 100, "sets that are not refused: $took");
    expect_same(true, is_file("$directory/settings.journal"), 'there is a journal');
    @mkdir($copy);
    foreach (['settings', 'settings.journal'] as $name) {
        copy("$directory/$name", "$copy/$name");
    }
    $texts = rmon_system_get($link);
    $again = fn($link) => rmon_system_set($link, $texts['sysContact'], $texts['sysName'], $texts['sysLocation']);
    expect_same(0, end_agent($agent), 'exit code');
    // A start may change rows: what they refer to is gone. So both are started once more.
    foreach ([$directory, $copy] as $made) {
        [$agent, $link] = started($made);
        expect_same(0, $again($link), 'the same set');
        expect_same(0, end_agent($agent), 'exit code');
    }
    expect_same(['settings'], array_values(array_diff(scandir($copy), ['.', '..'])), 'files');
    if (file_get_contents("$copy/settings") !== file_get_contents("$directory/settings")) {
        $lines = fn(string $made) => file("$made/settings", FILE_IGNORE_NEW_LINES);
        fail("round $round with seed $seed", ...array_map(
            fn($line) => substr($line, 0, 200),
            [...array_diff($lines($directory), $lines($copy)), '---', ...array_diff($lines($copy), $lines($directory))],
        ));
        exit;
    }
}
done();
--EXPECT--
OK
