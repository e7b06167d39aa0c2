<?php
// SPDX-License-Identifier: MIT

/*
 * How fast the bundled agent reads a capture file with all of its groups at
 * work, and whether it counts each frame, as tcpdump does. Exit code 1 when a
 * target is missed.
 *
 * usage: agent.php rmon-agent make_capture [frames]
 */
declare(strict_types=1);

require __DIR__ . '/../tests/agent/client.inc';
require __DIR__ . '/../tests/agent/groups.inc';
require __DIR__ . '/../tests/agent/rmon2.inc';
require __DIR__ . '/../tests/agent/tcpdump.inc';

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

/* Every group, on interface 1; learned tables of so many rows. */
foreach (start_groups($link, 1, 10000) as $group => $status) {
    check($status === 1, "$group set to work");
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
check(
    $rate >= LEAST_RATE,
    sprintf('%.0f frames a second of processor time, at least %d (%s s by the clock)', $rate, LEAST_RATE, $parts[2]),
);
check((int)$memory[1] <= MOST_MEMORY, sprintf('%d KiB at most in use, at most %d', $memory[1], MOST_MEMORY));
$row = rmon_etherstats_get($link, 1);
check($row['etherStatsPkts'] == $frames && $row['etherStatsPkts64Octets'] == $frames, 'Ethernet statistics count each');
check($row['etherStatsOctets'] == 64 * $frames, 'and its octets');

/* The groups against tcpdump's count of the same file. */
$local = protocol_indexes($link);
$distribution = fn (string $name) => rmon_pdist_stats_get($link, 1, $local[$name])['protocolDistStatsPkts'];
$mac = fn (int $host) => array_values(unpack('C*', pack('nN', 0x0200, $host)));
$host = fn (int $number) => rmon_host_get($link, 1, $mac($number));
$address = address('10.0.1.4');
$pair = [address('10.0.1.4'), address('10.0.1.5')];
$counted = [
    'the host 02:00:00:00:00:07' => ['ether src 02:00:00:00:00:07', $host(7)['hostOutPkts']],
    'what is sent to it' => ['ether dst 02:00:00:00:00:07', $host(7)['hostInPkts']],
    'a pair of hosts' => [
        'ether src 02:00:00:00:00:07 and ether dst 02:00:00:00:00:08',
        rmon_matrix_sd_get($link, 1, $mac(7), $mac(8))['matrixSDPkts']],
    'VLAN 103' => ['vlan 103', rmon_vlan_get($link, 1, 103)['smonVlanIdStatsTotalPkts']],
    'priority 3' => [
        'ether[12:2] = 0x8100 and ether[14] & 0xe0 = 0x60',
        rmon_prio_get($link, 1, 3)['smonPrioStatsPkts'],
    ],
    'IPv4' => [tagged('ip'), $distribution('ip')],
    'TCP' => [tagged('tcp'), $distribution('ip.tcp')],
    'UDP port 53' => [tagged('udp port 53'), $distribution('ip.udp.domain')],
    'TCP port 443' => [tagged('tcp port 443'), $distribution('ip.tcp.https')],
    'DSCP 46' => [tagged('ip and ip[1] & 0xfc = 184'), dsmon_stats_get($link, 1, 46)['dsmonStatsInHCPkts']],
    '10.0.1.4' => [tagged('src host 10.0.1.4'), rmon_nlhost_get($link, 1, 0, $local['ip'], $address)['nlHostOutPkts']],
    '10.0.1.4 to 10.0.1.5' => [
        tagged('src host 10.0.1.4 and dst host 10.0.1.5'),
        rmon_nlmatrix_sd_get($link, 1, 0, $local['ip'], ...$pair)['nlMatrixSDPkts']],
];
foreach ($counted as $what => [$filter, $packets]) {
    $others = tcpdump_count($file, $filter);
    check($others > 0 && $packets == $others, "$what: $packets frames, $others by tcpdump");
}

proc_terminate($process);
exit($missed ? 1 : 0);
