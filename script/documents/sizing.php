<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Measures what an agent takes and gives on this machine, for the table of docs/production/index.md.
 *
 * usage: sizing.php
 */

namespace Rmon\Documents;

use BundledAgent;
use Rmon\Probe;

$root = dirname(__DIR__, 2);
require __DIR__ . '/begin.php';

const HOSTS = 65_536;
const CALLS = 20_000;
const PAGE = 500;

/** Memory of the agent's process that is in use, in octets. */
function memory(BundledAgent $agent): int
{
    preg_match('/^VmRSS:\s+(\d+) kB$/m', (string) file_get_contents("/proc/{$agent->pid()}/status"), $found);
    return 1024 * (int) $found[1];
}

/** Frames of so many hosts, each with a peer of its own. */
function frames(): array
{
    $frames = [];
    for ($host = 0; $host < HOSTS / 2; $host++) {
        [$one, $other] = [long2ip(0x0a000000 + $host), long2ip(0x0a800000 + $host)];
        $packet = ip4($one, $other, 6, tcp(40000, 443, 24, 'x'));
        $frames[] = [1.0 + $host / 1e6, ethernet(mac(2), mac(1), 0x0800, $packet)];
    }
    return $frames;
}

function line(string $what, string $value): void
{
    printf("| %s | %s |\n", $what, $value);
}

$agent = reading_agent([capture_file(frames())]);
$probe = Probe::connect('127.0.0.1', $agent->port);
line('memory of the agent at its start', sprintf('%.0f MB', memory($agent) / 1e6));
$probe->table('hlHostControlTable')->create(
    hlHostControlIndex: 1,
    hlHostControlDataSource: 1,
    hlHostControlNlMaxDesiredEntries: HOSTS,
    hlHostControlAlMaxDesiredEntries: 0,
);
$before = memory($agent);
read_files($agent);
line('memory of a host in `nlHostTable`', sprintf('%.0f octets', (memory($agent) - $before) / HOSTS));

$link = $probe->link->resource();
$begun = hrtime(true);
for ($i = 0; $i < CALLS; $i++) {
    rmon_etherstats_getnext($link, 0);
}
line('rows by `rmon_etherstats_getnext`', sprintf('%d a second', CALLS / (hrtime(true) - $begun) * 1e9));
$begun = hrtime(true);
$rows = 0;
[$protocol, $address] = [0, []];
while ($page = rmon_nlhost_getbulk($link, 1, 0, $protocol, $address, PAGE)) {
    $rows += count($page);
    ['protocolDirLocalIndex' => $protocol, 'nlHostAddress' => $address] = end($page);
}
$rate = $rows / (hrtime(true) - $begun) * 1e9;
line('rows by `rmon_nlhost_getbulk`, ' . PAGE . ' a call', sprintf('%d a second', $rate));
line('memory of PHP for a page of ' . PAGE . ' hosts', sprintf('%.1f MB', memory_of_page($link) / 1e6));
exit(end_agent($agent));

function memory_of_page(mixed $link): int
{
    $before = memory_get_usage();
    $page = rmon_nlhost_getbulk($link, 1, 0, 0, [], PAGE);
    $after = memory_get_usage();
    return count($page) === PAGE ? $after - $before : 0;
}
