<?php
/*
 * How fast the bundled agent reads a capture file with all of its groups at
 * work, and whether it counts each frame. Exit code 1 when a target is missed.
 *
 * usage: agent.php rmon-agent make_capture [frames]
 */
declare(strict_types=1);

/** Targets for 1,000,000 frames of 64 octets among 1,000 hosts. */
const LEAST_RATE = 1000000;        // frames a second
const MOST_MEMORY = 256 * 1024;    // KiB

[, $program, $generator] = $argv;
$frames = (int)($argv[3] ?? 1000000);
$file = tempnam(sys_get_temp_dir(), 'rmon-bench');
register_shutdown_function(fn () => @unlink($file));
passthru(escapeshellarg($generator) . " $frames > " . escapeshellarg($file));

$process = proc_open(
    [$program, '--port', '0', '--read', $file, '--hold'],
    [['null'], ['pipe', 'w'], ['pipe', 'w']],
    $pipes
);
preg_match('/:(\d+)\n/', (string)fgets($pipes[1]), $parts);
ini_set('rmon.default_port', $parts[1]);
$link = rmon_connect('127.0.0.1');
$pid = proc_get_status($process)['pid'];

$missed = false;
function check(bool $good, string $what): void
{
    global $missed;
    $missed = $missed || !$good;
    printf("%s  %s\n", $good ? 'ok  ' : 'MISS', $what);
}

/** Makes a control row (createRequest) and sets it to work (valid). */
function make_row(string $group, callable $set): void
{
    $answer = @$set(2) ?: @$set(1);
    check($answer === 0, "$group set to work" . ($answer === 0 ? '' : ': ' . var_export($answer, true)));
}

/* Every group, on interface 1; learned tables of so many rows. */
$most = 10000;
$rows = [
    'history' => fn (int $status) => rmon_history_ctl_set($link, 1, 1, 10, 1, 'bench', $status),
    'hosts' => fn (int $status) => rmon_host_ctl_set($link, 1, 1, 'bench', $status),
    'matrix' => fn (int $status) => rmon_matrix_ctl_set($link, 1, 1, 'bench', $status),
    'host Top-N' => fn (int $status) => rmon_hosttopn_ctl_set($link, 1, 1, 1, 3600, 10, 'bench', $status),
    'channel' => fn (int $status) => rmon_channel_set($link, 1, 1, 1, 1, 0, 0, 0, 1, 'bench', 'bench', $status),
    'filter' => fn (int $status) => rmon_filter_set($link, 1, 1, 0, [2], [255], [0], 0, 0, 0, 'bench', $status, 0, 0),
    'capture' => fn (int $status) => rmon_buffer_ctl_set($link, 1, 1, 2, 128, 128, 0, 1000000, 'bench', $status),
    'protocol distribution' => fn (int $status) => rmon_pdist_ctl_set($link, 1, 1, 'bench', $status),
    'address map' => fn (int $status) => rmon_addrmap_ctl_set($link, 1, 1, 'bench', $status),
    'higher-layer hosts' => fn (int $status) => rmon_hlhost_ctl_set($link, 1, 1, $most, $most, 'bench', $status),
    'higher-layer matrix' => fn (int $status) => rmon_hlmatrix_ctl_set($link, 1, 1, $most, $most, 'bench', $status),
    'aggregation' => fn (int $status) => dsmon_aggctl_set($link, 2, 'bench', 'bench', $status),
    'DSCP statistics' => fn (int $status) => dsmon_statsctl_set($link, 1, 1, 2, 'bench', $status),
    'DSCP distribution' => fn (int $status) => dsmon_pdistctl_set($link, 1, 1, 2, 'bench', $status, $most),
    'DSCP hosts' => fn (int $status) => dsmon_hostctl_set($link, 1, 1, 2, 'bench', $status, $most),
    'DSCP matrix' => fn (int $status) => dsmon_matrixctl_set($link, 1, 1, 2, 'bench', $status, $most),
    'VLANs' => fn (int $status) => rmon_vlan_ctl_set($link, 1, 1, 'bench', $status),
    'priorities' => fn (int $status) => rmon_prio_ctl_set($link, 1, 1, 'bench', $status),
    'response times' => fn (int $status)
        => rmon_art_ctl_set($link, 1, 1, 3600, 10, 20, 50, 100, 200, 500, 1000, 100, 'bench', $status),
];
foreach ($rows as $group => $set) {
    make_row($group, $set);
}

/** Seconds of processor time that the agent used so far: whatever else runs on the machine is not in them. */
function used(int $pid): float
{
    $fields = explode(' ', preg_replace('/^.*\) /', '', file_get_contents("/proc/$pid/stat")));
    return ((int)$fields[11] + (int)$fields[12]) / 100;
}

$before = used($pid);
proc_terminate($process, 10); // SIGUSR1: read
$said = '';
while (!preg_match('/ ended: (\d+) frames in ([\d.]+) s/', $said, $parts)) {
    $line = fgets($pipes[2]);
    if ($line === false) {
        exit("the agent ended: $said\n");
    }
    $said .= $line;
}
$rate = $parts[1] / max(used($pid) - $before, 0.01);
preg_match('/VmHWM:\s+(\d+) kB/', file_get_contents("/proc/$pid/status"), $memory);

check((int)$parts[1] === $frames, "$parts[1] frames read");
check($rate >= LEAST_RATE, sprintf('%.0f frames a second of processor time, at least %d (%s s by the clock)', $rate, LEAST_RATE, $parts[2]));
check((int)$memory[1] <= MOST_MEMORY, sprintf('%d KiB at most in use, at most %d', $memory[1], MOST_MEMORY));
$row = rmon_etherstats_get($link, 1);
check($row['etherStatsPkts'] == $frames && $row['etherStatsPkts64Octets'] == $frames, 'Ethernet statistics count each');
check($row['etherStatsOctets'] == 64 * $frames, 'and its octets');

proc_terminate($process);
exit($missed ? 1 : 0);
