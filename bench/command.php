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
require __DIR__ . '/hosts.inc';

use Rmon\Command\Listing;
use Rmon\Command\Output\Screen;
use Rmon\Command\OutputOptions;
use Symfony\Component\Console\Command\Command;
use Symfony\Component\Console\Input\ArrayInput;

const TARGET = 2.0;

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

$probe = probe_of_hosts($argv[1]);
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
exit((int) $missed);
