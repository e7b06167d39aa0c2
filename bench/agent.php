<?php
// SPDX-License-Identifier: MIT

/*
 * How fast the bundled agent reads capture files with all of its groups at
 * work, beside a flow meter (softflowd) on the same files; with its Ethernet
 * statistics alone, beside tcpdump; and whether it counts each frame, as tcpdump
 * does. Exit code 1 when a target is missed.
 *
 * All is in processor time: what else runs on the machine is not in it.
 *
 * usage: agent.php rmon-agent make_capture [frames]
 */
declare(strict_types=1);

require __DIR__ . '/../tests/agent/client.inc';
require __DIR__ . '/../tests/agent/groups.inc';
require __DIR__ . '/../tests/agent/rmon2.inc';
require __DIR__ . '/../tests/agent/tcpdump.inc';

const MOST_MEMORY = 256 * 1024;    // KiB

/** Rates as multiples of the other program's on the same file: gates and goals. */
const LEAST_RATES = [
    'turns 1000' => [1.0, 1.5],
    'zipf 1000' => [1.0, 1.5],
    'zipf 20000' => [1.0, 1.5],
    'zipf 100000' => [1.0, 1.5],
    // Frames of which no two are alike.
    'uniform 10000' => [0.36, 0.6],
    'uniform 100000' => [0.34, 0.55],
];
const LEAST_RATE_OF_STATISTICS = [2.0, 3.0];

/** Measurements of each, one program after the other; the median counts. */
const ROUNDS = 3;

[, $program, $generator] = $argv;
$frames = (int)($argv[3] ?? 1000000);

$missed = false;
function check(bool $good, string $what): void
{
    global $missed;
    $missed = $missed || !$good;
    printf("%s  %s\n", $good ? 'ok  ' : 'MISS', $what);
}

/** An agent that is about to read a file. */
final class Reading
{
    /** @var resource */
    private $process;
    /** @var array<int, resource> */
    private array $pipes = [];
    public mixed $link;
    public int $pid;
    public float $seconds = 0;
    public int $frames = 0;

    public function __construct(string $program, string $file, string ...$options)
    {
        $this->process = proc_open(
            [$program, '--port', '0', '--read', $file, '--hold', ...$options],
            [['null'], ['pipe', 'w'], ['pipe', 'w']],
            $this->pipes
        );
        preg_match('/:(\d+)\n/', (string)fgets($this->pipes[1]), $parts);
        ini_set('rmon.default_port', $parts[1]);
        $this->link = rmon_connect('127.0.0.1');
        $this->pid = proc_get_status($this->process)['pid'];
    }

    /** Seconds of processor time that the agent used so far. */
    private function used(): float
    {
        return (int)explode(' ', file_get_contents("/proc/$this->pid/schedstat"))[0] / 1e9;
    }

    /** Reads the file; the tables have all of it at the end. */
    public function read(): void
    {
        $before = $this->used();
        proc_terminate($this->process, 10); // SIGUSR1
        $said = '';
        while (!preg_match('/ ended: (\d+) frames in ([\d.]+) s/', $said, $parts)) {
            $line = fgets($this->pipes[2]);
            if ($line === false) {
                exit("the agent ended: $said\n");
            }
            $said .= $line;
        }
        $this->seconds = $this->used() - $before;
        $this->frames = (int)$parts[1];
    }

    public function memory(): int
    {
        preg_match('/VmHWM:\s+(\d+) kB/', file_get_contents("/proc/$this->pid/status"), $memory);
        return (int)$memory[1];
    }

    public function end(): void
    {
        rmon_close($this->link);
        proc_terminate($this->process);
        proc_close($this->process);
    }
}

/** Seconds of processor time of a program that runs to its end. */
function seconds_of(string ...$command): float
{
    $sum = fn(array $usage) => $usage['ru_utime.tv_sec'] + $usage['ru_stime.tv_sec']
        + ($usage['ru_utime.tv_usec'] + $usage['ru_stime.tv_usec']) / 1e6;
    $before = $sum(getrusage(1));
    proc_close(proc_open($command, [['null'], ['file', '/dev/null', 'w'], ['file', '/dev/null', 'w']], $pipes));
    return $sum(getrusage(1)) - $before;
}

function median(array $numbers): float
{
    sort($numbers);
    return $numbers[intdiv(count($numbers), 2)];
}

function make_file(string $generator, int $frames, string $kind, int $hosts): string
{
    $file = tempnam(sys_get_temp_dir(), 'rmon-bench');
    register_shutdown_function(fn () => @unlink($file));
    passthru(implode(' ', array_map(escapeshellarg(...), [$generator, (string)$frames, $kind, (string)$hosts]))
        . ' > ' . escapeshellarg($file));
    return $file;
}

/** How many times as fast the agent reads a file as another program does: both medians, and their ratio. */
function compare(callable $agent, callable $other): array
{
    $times = [[], []];
    for ($i = 0; $i < ROUNDS; $i++) {
        $times[0][] = $agent();
        $times[1][] = $other();
    }
    $own = max(median($times[0]), 0.001);
    return [$own, median($times[1]), median($times[1]) / $own];
}

$meter = trim((string)shell_exec('PATH=$PATH:/usr/sbin:/usr/local/sbin command -v softflowd'));
if (!$meter) {
    echo "softflowd: not here\n";
}
$said = "%-14s %5.2f million frames a second, %4.2f of %s's, at least %4.2f, goal %4.2f";
foreach (LEAST_RATES as $capture => [$least, $goal]) {
    [$kind, $hosts] = explode(' ', $capture);
    $file = make_file($generator, $frames, $kind, (int)$hosts);
    $read = function (bool $all) use ($program, $file): float {
        // A scenario in place of calls that are measured: without rows nobody else looks into frames then.
        $reading = new Reading($program, $file, ...$all ? [] : ['--voice', '/dev/null']);
        if ($all) {
            start_groups($reading->link, 1, 10000);
        }
        $reading->read();
        $seconds = $reading->seconds;
        $reading->end();
        return $seconds;
    };
    if ($meter) {
        [$own, , $ratio] = compare(fn() => $read(true), fn() => seconds_of($meter, '-d', '-r', $file));
        check($ratio >= $least, sprintf(
            $said,
            $capture,
            $frames / $own / 1e6,
            $ratio,
            'softflowd',
            $least,
            $goal
        ));
    } else {
        printf("      %-14s %5.2f million frames a second\n", $capture, $frames / $read(true) / 1e6);
    }
    if ($capture === 'turns 1000') {
        [$own, , $ratio] = compare(
            fn() => $read(false),
            fn() => seconds_of('tcpdump', '-r', $file, '-w', '/dev/null')
        );
        check($ratio >= LEAST_RATE_OF_STATISTICS[0], sprintf(
            $said,
            'statistics',
            $frames / $own / 1e6,
            $ratio,
            'tcpdump',
            ...LEAST_RATE_OF_STATISTICS
        ));
    }
    @unlink($file);
}

$file = make_file($generator, $frames, 'turns', 1000);
$reading = new Reading($program, $file);
$link = $reading->link;

/* Every group, on interface 1; learned tables of so many rows. */
foreach (start_groups($link, 1, 10000) as $group => $status) {
    check($status === 1, "$group set to work");
}

$reading->read();
check($reading->frames === $frames, "$reading->frames frames read");
check($reading->memory() <= MOST_MEMORY, sprintf('%d KiB at most in use, at most %d', $reading->memory(), MOST_MEMORY));
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

$reading->end();
exit($missed ? 1 : 0);
