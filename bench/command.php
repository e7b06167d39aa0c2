<?php

// SPDX-License-Identifier: MIT

/*
 * What listing 10,000 rows of nlHostTable with the command costs, held against reading them by the bare function and
 * printing them, within one run; and how much memory ten times the rows take. Fails when a target is missed.
 *
 * usage: command.php AGENT
 */

declare(strict_types=1);

require __DIR__ . '/../command/autoload.php';

use Rmon\Command\Listing;
use Rmon\Command\Output\Screen;
use Rmon\Command\OutputOptions;
use Rmon\Probe;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\ArrayInput;

const HOSTS = 10000;
const TARGET = 2.0;

/** A capture file of a frame from each host. */
function capture(): string
{
    $name = tempnam(sys_get_temp_dir(), 'rmon-bench');
    $file = fopen($name, 'wb');
    fwrite($file, pack('VvvVVVV', 0xa1b2c3d4, 2, 4, 0, 0, 65535, 1));
    for ($host = 1; $host <= HOSTS; $host++) {
        $frame = pack('H*', '0200000000010200000000020800')
            . pack('CCnnnCCnNN', 0x45, 0, 46, 0, 0, 64, 17, 0, 0x0a000000 + $host, 0x0a000001) . str_repeat("\0", 26);
        fwrite($file, pack('VVVV', 1, $host, strlen($frame), strlen($frame)) . $frame);
    }
    fclose($file);
    return $name;
}

/** Processor time of this process in milliseconds. */
function spent(): float
{
    $usage = getrusage();
    return 1e3 * ($usage['ru_utime.tv_sec'] + $usage['ru_stime.tv_sec'])
        + ($usage['ru_utime.tv_usec'] + $usage['ru_stime.tv_usec']) / 1e3;
}

/** The least of some tries. */
function least(callable $work): float
{
    $times = [];
    for ($try = 0; $try < 7; $try++) {
        $begun = spent();
        $work();
        $times[] = spent() - $begun;
    }
    return min($times);
}

/** Reads all rows by the function itself, and prints them as a script does. */
function bare(mixed $link, mixed $out): void
{
    $behind = [0, 0, 0, []];
    while ($rows = rmon_nlhost_getbulk($link, ...[...$behind, 500])) {
        foreach ($rows as $row) {
            fprintf(
                $out,
                "%d %-15s %10.0f %10.0f %12s %12s %8.0f %10d %d %d\n",
                $row['nlHostTimeMark'],
                implode('.', $row['nlHostAddress']),
                $row['nlHostInPkts'],
                $row['nlHostOutPkts'],
                Rmon\Format::octets($row['nlHostInOctets']),
                Rmon\Format::octets($row['nlHostOutOctets']),
                $row['nlHostOutMacNonUnicastPkts'],
                $row['nlHostCreateTime'],
                $row['hlHostControlIndex'],
                $row['protocolDirLocalIndex'],
            );
        }
        $behind = [$row['hlHostControlIndex'], 0, $row['protocolDirLocalIndex'], $row['nlHostAddress']];
    }
}

$file = capture();
$agent = proc_open(
    [$argv[1], '--port', '0', '--read', $file, '--hold'],
    [['null'], ['pipe', 'w'], ['pipe', 'w']],
    $pipes,
);
preg_match('/:(\d+)$/', trim(fgets($pipes[1])), $found);
$probe = Probe::connect('127.0.0.1', (int) $found[1]);
$probe->table('hlHostControlTable')->set(
    hlHostControlIndex: 1,
    hlHostControlDataSource: 1,
    hlHostControlNlMaxDesiredEntries: 2 * HOSTS,
    hlHostControlAlMaxDesiredEntries: 10,
    hlHostControlOwner: 'bench',
);
proc_terminate($agent, SIGUSR1);
while (!str_contains((string) fgets($pipes[2]), ' ended: ')) {
}
$missed = false;
$out = fopen('/dev/null', 'wb');
$link = $probe->link->resource();
$bare = least(static fn() => bare($link, $out));
$command = new Command('bench');
OutputOptions::define($command);
foreach (['' => 'a table', '--json' => '--json', '--csv' => '--csv'] as $form => $name) {
    $input = new ArrayInput($form === '' ? [] : [$form => true], $command->getDefinition());
    $peak = memory_get_peak_usage();
    $took = least(static fn() => (new Listing(OutputOptions::from($input), new Screen($out, $out, false, false)))
        ->show($probe->table('nlHostTable'), [], null));
    $grown = memory_get_peak_usage() - $peak;
    $missed = $missed || $took / $bare > TARGET;
    printf(
        "rmon nlHost, %d rows, %-8s %5.2f times the bare calls and printing (%.1f ms), %d kB more memory\n",
        HOSTS,
        $name,
        $took / $bare,
        $took,
        $grown / 1000,
    );
}
proc_terminate($agent);
unlink($file);
exit((int) $missed);
