--TEST--
Whatever is set in the bundled agent, a kill at any moment leaves what was answered, and nothing half done
--CONFLICTS--
appliance
--SKIPIF--
<?php
require __DIR__ . '/../needs.inc';
needs_agent();
--FILE--
<?php // SPDX-License-Identifier: MIT

declare(strict_types=1);

require __DIR__ . '/client.inc';
require __DIR__ . '/captures.inc';
require __DIR__ . '/rmon2.inc';

$directory = sys_get_temp_dir() . '/rmon-kill-' . getmypid();
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), @rmdir($directory)]);
$file = capture_file([]);

/** The agent with the directory, and a link under a name of the host that was not used yet. */
function started(int $round): array
{
    global $directory, $file;
    $host = "127.0.1.$round";
    $agent = reading_agent([$file], '--state', $directory, '--listen', $host, '--netflow', '0');
    ini_set('rmon.default_port', (string) $agent->port);
    return [$agent, rmon_connect($host)];
}

require __DIR__ . '/settable.inc';
// What has few values: the number as it is read.
$shown = [
    'communities' => fn(int $n) => $n % 2,
    'dsmonAggProfile' => fn(int $n) => 1 + $n % 63,
    'ndeFlowPath' => fn() => 1,
    'ndeLearning' => fn(int $n) => $n % 2,
];
$shown = fn(string $thing, int $n) => 'n' . ($shown[$thing] ?? fn(int $n) => $n)($n);

/** No function of the module asks for it. */
function host_name(): string
{
    global $agent, $round;
    $socket = stream_socket_client("tcp://127.0.1.$round:$agent->port", $code, $reason, PATIENCE);
    stream_set_timeout($socket, PATIENCE);
    $fields = result_of(ask($socket, 64));
    $fields->i32();
    return $fields->text();
}

$n = 0;
$round = 1;
[$agent, $link] = started($round);
expect_same(0, rmon_nde_device_set($link, $device, 'public', 'n0'), 'a device');
expect_same(0, rmon_nde_datasrc_set($link, $device, 'n0'), 'a data source');
foreach ($things as $thing => [$set]) {
    $n++;
    $has_status = (new ReflectionFunction($set))->getNumberOfParameters() === 3;
    expect_same(
        0,
        $has_status ? start_row(fn(int $status) => $set($link, $n, $status)) : $set($link, $n),
        "$thing for the first time",
    );
    $answered[$thing] = $n;
}

// Killed in the middle of sets.
for (; $round <= 10; $round++) {
    [$agent, $link] = $round === 1 ? [$agent, $link] : started($round);
    foreach ($things as $thing => [, $read]) {
        $allowed = [$shown($thing, $answered[$thing])];
        if ($thing === ($unanswered ?? null)) {
            $allowed[] = $shown($thing, $n);
        }
        $got = $read($link);
        if (!in_array($got, $allowed, true)) {
            fail("round $round: $thing has $got, not " . implode(' or ', $allowed));
        }
        $answered[$thing] = $got === $shown($thing, $answered[$thing]) ? $answered[$thing] : $n;
    }
    if ($round === 10) {
        break;
    }
    $delay = 0.05 + 0.03 * $round;
    $killer = proc_open(['sh', '-c', "sleep $delay; kill -9 {$agent->pid()}"], [], $pipes, null, environment());
    for ($unanswered = null, $names = array_keys($things), $at = 0; $unanswered === null; $at++) {
        $thing = $names[$at % count($names)];
        $n++;
        if (@$things[$thing][0]($link, $n, VALID) === 0) {
            $answered[$thing] = $n;
        } else {
            $unanswered = $thing;
        }
    }
    proc_close($killer);
    end_agent($agent, 9);
}

// Each part of the file has a record now; what is read from it is written as it was.
expect_same(0, dsmon_aggctl_set_lock($link, 1), 'lock');
$kept = file_get_contents("$directory/settings");
preg_match_all('/^(\S+) [0-9a-f]+ [0-9a-f]{8}$/m', $kept, $parts);
preg_match_all('/^(\S+) [0-9a-f]{8}$/m', $kept, $names);
expect_same([], array_diff($names[1], $parts[1], ['end']), 'parts without a record');
expect_same([], array_diff($parts[1], array_keys($things), ['dsmonAggControlLocked']), 'parts that are not tested');
end_agent($agent, 9);
[$agent, $link] = started(++$round);
$texts = rmon_system_get($link);
expect_same(0, rmon_system_set($link, 'changed', $texts['sysName'], $texts['sysLocation']), 'a change');
expect_same(false, $kept === file_get_contents("$directory/settings"), 'the file with it');
expect_same(0, rmon_system_set($link, $texts['sysContact'], $texts['sysName'], $texts['sysLocation']), 'and back');
expect_same($kept, file_get_contents("$directory/settings"), 'the file');

expect_same(0, end_agent($agent), 'exit code');
done();
--EXPECT--
OK
