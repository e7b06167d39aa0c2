<?php

// SPDX-License-Identifier: MIT

/*
 * The highest rate of frames of 64 octets that the agent takes in live without
 * losing one, for Ethernet statistics alone and with all groups at work, beside
 * softflowd and tcpdump: on a pair of interfaces, in a network namespace that
 * script/bench made. Each has 8 MiB in which frames wait, and the last core; the
 * sender has the first one, and what it can send is the most that can be shown.
 *
 * usage: live.php rmon-agent make_capture send_frames
 */

declare(strict_types=1);

require __DIR__ . '/../tests/agent/client.inc';
require __DIR__ . '/../tests/agent/groups.inc';

const SENDING = 'rmonlive0';
const MEASURED = 'rmonlive1';
const RING_KIB = 8192;
const ROUND = 0.6;        // seconds of sending
const QUIET = 2.0;        // seconds for which frames that were sent are waited for
const PRECISION = 1.05;   // a search ends where what is lost and what is not are this close
const SEARCHES = 3;
const SIGINT_NUMBER = 2;  // where PHP has no pcntl

[, $program, $generator, $sender] = $argv;
$file = tempnam(sys_get_temp_dir(), 'rmon-bench');
register_shutdown_function(fn() => @unlink($file));
passthru(escapeshellarg($generator) . ' 100000 > ' . escapeshellarg($file));

foreach (
    [
        'link set lo up',
        'link add ' . SENDING . ' type veth peer name ' . MEASURED,
        // Without addresses of their own, nobody else sends.
        'link set ' . SENDING . ' addrgenmode none up',
        'link set ' . MEASURED . ' addrgenmode none up',
    ] as $command
) {
    [$code, , $errors] = run('ip', ...explode(' ', $command));
    if ($code !== 0) {
        exit('live: no pair of interfaces can be made here: ' . trim($errors) . "\n");
    }
}

/** Words that have a program run on a core. */
function on_core(int $core, string ...$command): array
{
    return ['taskset', '-c', (string) $core, ...$command];
}

$last_core = (int) shell_exec('nproc --all') - 1;

/** Sends for a round. @return array{int, float} frames, and how many in a second; 0: as many as it can */
function send(float $rate): array
{
    global $sender, $file;
    [$code, $said, $errors] = run(...on_core(0, $sender, SENDING, $file, (string) $rate, (string) ROUND));
    if ($code !== 0) {
        exit("live: $errors");
    }
    [$sent, $seconds] = explode(' ', $said);
    return [(int) $sent, $sent / $seconds];
}

/** Waits until a program has seen so many more frames than before, or has lost some. True when it has all of them. */
function has_all(callable $counts, array $before, int $sent): bool
{
    $end = microtime(true) + QUIET;
    do {
        [$seen, $lost] = $counts();
        if ($lost > $before[1]) {
            return false;
        }
        if ($seen - $before[0] >= $sent) {
            return true;
        }
        usleep(10000);
    } while (microtime(true) < $end);
    return false;
}

/** The highest rate, up to that of the sender, at which one of two rounds has each frame. */
function highest_rate(callable $round): float
{
    $passes = fn(float $rate): float => $round($rate) ?: $round($rate);
    if ($rate = $passes(0)) {
        return $rate;
    }
    [$good, $bad] = [0.0, send(0)[1]];
    while ($bad > max($good, 1000.0) * PRECISION) {
        $rate = ($good + $bad) / 2;
        if ($passes($rate)) {
            $good = $rate;
        } else {
            $bad = $rate;
        }
    }
    return $good;
}

function show(string $what, callable $round): void
{
    $rates = [];
    for ($i = 0; $i < SEARCHES; $i++) {
        $rates[] = highest_rate($round);
    }
    sort($rates);
    [$least, $median, $most] = [$rates[0], $rates[intdiv(SEARCHES, 2)], end($rates)];
    printf("  %-32s %10.0f  (%.0f to %.0f)\n", $what, $median, $least, $most);
}

/** A round with a program whose counts(): [frames, lost ones] can be asked for; the rate, 0 when some were lost. */
function counted_round(callable $counts): callable
{
    return function (float $rate) use ($counts): float {
        $before = $counts();
        [$sent, $reached] = send($rate);
        return has_all($counts, $before, $sent) ? $reached : 0.0;
    };
}

function show_agent(string $what, bool $all): void
{
    global $program, $last_core;
    $options = ['--port', '0', '--interface', MEASURED, '--ring', (string) (RING_KIB / 1024)];
    $command = on_core($last_core, $program, ...$options);
    $process = proc_open($command, [['null'], ['pipe', 'w'], ['file', '/dev/null', 'w']], $pipes);
    if (!preg_match('/:(\d+)\n/', (string) fgets($pipes[1]), $parts)) {
        exit("live: the agent does not start\n");
    }
    ini_set('rmon.default_port', $parts[1]);
    $link = rmon_connect('127.0.0.1');
    $own = rmon_etherstats_getnext($link, 0);
    $source = $own['etherStatsDataSource'];
    if ($all) {
        foreach (start_groups($link, $source, 10000) as $group => $status) {
            $status === 1 || exit("live: $group does not work\n");
        }
    }
    show($what, counted_round(function () use ($link, $own): array {
        $row = rmon_etherstats_get($link, $own['etherStatsIndex']);
        return [$row['etherStatsPkts'], $row['etherStatsDropEvents']];
    }));
    rmon_close($link);
    proc_terminate($process);
    proc_close($process);
}

/** One process for each round: what it lost is said at its end. */
function tcpdump_round(float $rate): float
{
    global $last_core;
    $command = ['tcpdump', '-Z', 'root', '-n', '-i', MEASURED, '-B', (string) RING_KIB, '-w', '/dev/null'];
    $process = proc_open(on_core($last_core, ...$command), [['null'], ['null'], ['pipe', 'w']], $pipes);
    fgets($pipes[2]); // it listens
    [$sent, $reached] = send($rate);
    usleep(100000); // its last frames are handed over by a timer
    proc_terminate($process, SIGINT_NUMBER);
    $said = stream_get_contents($pipes[2]);
    proc_close($process);
    $has = fn(string $what): int => preg_match("/(\d+) packets? $what/", $said, $number) ? (int) $number[1] : -1;
    return $has('received by filter') >= $sent && $has('dropped by kernel') === 0 ? $reached : 0.0;
}

function show_softflowd(): void
{
    global $last_core;
    $control = tempnam(sys_get_temp_dir(), 'rmon-bench');
    unlink($control);
    $command = ['softflowd', '-d', '-i', MEASURED, '-c', $control, '-p', "$control.pid"];
    array_push($command, '-B', (string) (1024 * RING_KIB));
    $process = proc_open(
        on_core($last_core, ...$command),
        [['null'], ['file', '/dev/null', 'w'], ['file', '/dev/null', 'w']],
        $pipes,
    );
    $counts = function () use ($control): array {
        $said = run('softflowctl', '-c', $control, 'statistics')[1];
        preg_match('/received by libpcap: (\d+)/', $said, $seen);
        preg_match('/dropped by libpcap: (\d+)/', $said, $lost);
        return [(int) ($seen[1] ?? 0) - (int) ($lost[1] ?? 0), (int) ($lost[1] ?? 0)];
    };
    wait_until(fn(): bool => file_exists($control));
    show('softflowd', counted_round($counts));
    proc_terminate($process);
    proc_close($process);
}

printf("live, frames of 64 octets a second without a drop, median of %d (least to most):\n", SEARCHES);
$most = max(array_map(fn(): float => send(0)[1], range(1, SEARCHES)));
printf("  %-32s %10.0f\n", 'the sender', $most);
show_agent('agent, Ethernet statistics', false);
show_agent('agent, all groups', true);
$others = [
    'softflowd' => show_softflowd(...),
    'tcpdump' => fn() => show('tcpdump -w /dev/null', tcpdump_round(...)),
];
foreach ($others as $name => $show) {
    if (run('sh', '-c', "command -v $name")[0] === 0) {
        $show();
    } else {
        printf("  %-32s is not here\n", $name);
    }
}
