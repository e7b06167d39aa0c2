<?php

// SPDX-License-Identifier: MIT

/*
 * Sets of the bundled agent that keeps its settings: how many it answers a second when eight clients set at once and
 * 10,000 rows are set, and how long a getnext of another client takes meanwhile. Exit code 1 when a target is missed.
 *
 * usage: sets.php rmon-agent
 */

declare(strict_types=1);

require __DIR__ . '/../tests/agent/sets.inc';

const ROWS = 10000;
const CLIENTS = 8;
const SECONDS = 5.0;

/** Targets: sets a second, or what the disk's own rate gives each client where that is less; milliseconds. */
const LEAST_SETS = 2000;
const LONGEST_READ = 2.0;

/** Times of getnexts in milliseconds, each a line, until standard input ends. */
function read_meanwhile(int $port): void
{
    $client = stream_socket_client("tcp://127.0.0.1:$port");
    stream_set_timeout($client, PATIENCE);
    stream_set_blocking(STDIN, false);
    while (!feof(STDIN)) {
        $begun = hrtime(true);
        ether_row($client, 0, GETNEXT);
        echo (hrtime(true) - $begun) / 1e6, "\n";
        fread(STDIN, 1);
        usleep(500);
    }
}

/** How often a second the disk has another piece of a file. */
function syncs_a_second(string $directory): float
{
    $file = fopen("$directory/sync", 'wb');
    $begun = hrtime(true);
    for ($count = 0; hrtime(true) - $begun < 1e9; $count++) {
        fwrite($file, str_repeat('s', 400 * CLIENTS));
        fdatasync($file);
    }
    $rate = $count * 1e9 / (hrtime(true) - $begun);
    unlink("$directory/sync");
    return $rate;
}

/** The call that sets a flow path. */
function path_call(int $number): string
{
    return marked(call(164, nde_head(1) . str_repeat(u32(0), 80) . u32(1) . i32($number) . i32(0) . u32(0)));
}

/** What records of exporting devices begin with: a set of 10.0.0.1's. */
function nde_head(int $operation): string
{
    $address = array_pad([10, 0, 0, 1], 16, 0);
    return i32(0) . i32(0) . i32($operation) . implode(array_map(u32(...), $address)) . u32(4);
}

/** Makes the rows, by many clients at once. */
function fill(BundledAgent $agent): void
{
    $client = client($agent);
    $texts = str_repeat(u32(0), 80);
    expect_same(NO_ERROR, status_of(ask($client, 160, nde_head(1) . $texts . $texts . u32(0))), 'a device');
    expect_same(NO_ERROR, status_of(ask($client, 162, nde_head(1) . $texts . $texts . u32(0) . u32(0))), 'a source');
    $clients = array_map(fn() => client($agent), range(1, 64));
    for ($made = CLIENTS + 2; $made < ROWS;) {
        $sent = [];
        foreach ($clients as $client) {
            if ($made < ROWS) {
                fwrite($client, path_call($made++));
                $sent[] = $client;
            }
        }
        foreach ($sent as $client) {
            expect_same(NO_ERROR, status_of(message_from($client)), 'a flow path');
        }
    }
}

if ($argv[1] === 'read') {
    read_meanwhile((int) $argv[2]);
    exit;
}
putenv("RMON_AGENT=$argv[1]");
$directory = sys_get_temp_dir() . '/rmon-bench-sets-' . getmypid();
mkdir($directory);
register_shutdown_function(fn() => [array_map(unlink(...), glob("$directory/*")), rmdir($directory)]);
$agent = bundled_agent('--no-capture', '--state', $directory);
fill($agent);
make_rows($agent, 1001, CLIENTS);

$clients = eight_clients($agent);
$before = syncs_a_second($directory);
$reader = proc_open(
    [PHP_BINARY, '-n', __FILE__, 'read', (string) $agent->port],
    [['pipe', 'r'], ['file', "$directory/times", 'w']],
    $pipes,
);
$begun = hrtime(true);
$sets = set_at_once($clients, fn() => hrtime(true) - $begun >= SECONDS * 1e9);
$seconds = (hrtime(true) - $begun) / 1e9;
fclose($pipes[0]);
proc_close($reader);
$syncs = min($before, syncs_a_second($directory));

$rate = array_sum(array_column($sets, 0)) / $seconds;
$times = array_map(floatval(...), file("$directory/times"));
sort($times);
$longest = $times[(int) (count($times) * 0.99)];
$wanted = min(LEAST_SETS, $syncs * CLIENTS);
$met = [$rate >= $wanted, $longest <= LONGEST_READ];
printf(
    "%s  sets a second, %d clients, %d rows: %.0f (at least %.0f; the disk's own rate is %.0f)\n"
        . "%s  getnext meanwhile, 99th percentile of %d: %.2f ms (at most %.1f; median %.2f, longest %.2f)\n",
    $met[0] ? 'ok  ' : 'MISS',
    CLIENTS,
    ROWS,
    $rate,
    $wanted,
    $syncs,
    $met[1] ? 'ok  ' : 'MISS',
    count($times),
    $longest,
    LONGEST_READ,
    $times[intdiv(count($times), 2)],
    end($times),
);
end_agent($agent);
exit(in_array(false, $met, true) ? 1 : 0);
