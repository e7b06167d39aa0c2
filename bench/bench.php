<?php
/*
 * What reads cost, as ratios within one run: the module against a plain C
 * client that only decodes and frees (raw), against the same client with the
 * engine's add_assoc calls behind it (naive), and against one that only
 * receives the bytes (floor). The contestants take turns, so that whatever else
 * the machine does falls on all of them; each figure is the median of its
 * turns. A line that misses a target is measured again. Exit code 1 when a
 * target is missed.
 *
 * usage: bench.php reply_server [table...]
 */
declare(strict_types=1);

/** What the narrow rows of one reply may cost of the engine's memory, bytes a row. */
const MOST_BYTES_A_ROW = 1000;

/** A target is missed when so many measurements in a row miss it: other load on the machine comes and goes. */
const TRIES = 3;

/* rows => [most of raw, most of naive] */
const NARROW = [1 => [1.05, 1.00], 10 => [1.00, 0.85], 100 => [0.80, 0.45], 1000 => [0.60, 0.25]];
const WIDE = [1 => [0.33, null], 10 => [0.16, null], 100 => [0.17, null]];

/** Starts the program that answers; [what must stay, port]. */
function start_server(string $program): array
{
    $process = proc_open([$program], [['pipe', 'r'], ['pipe', 'w'], STDERR], $pipes);
    return [[$process, $pipes], (int)fgets($pipes[1])];
}

/** Median nanoseconds of each contestant's calls. */
function take_turns(array $contestants, int $turns): array
{
    $times = array_fill_keys(array_keys($contestants), []);
    for ($turn = -max(3, intdiv($turns, 10)); $turn < $turns; $turn++) {
        foreach ($contestants as $name => $call) {
            $start = hrtime(true);
            $call();
            $time = hrtime(true) - $start;
            if ($turn >= 0) {
                $times[$name][] = $time;
            }
        }
    }
    return array_map(function (array $sample): float {
        sort($sample);
        return $sample[intdiv(count($sample), 2)];
    }, $times);
}

/** The contestants do the same work, or the figures mean nothing. */
function check(bool $same, string $what): void
{
    if (!$same) {
        fwrite(STDERR, "bench: $what\n");
        exit(2);
    }
}

/** A ratio beside its target. What the bytes alone take no client can save: a target below that counts for nobody. */
function verdict(string $what, float $ratio, float $most, float $floor, array &$missed): string
{
    if ($floor > $most) {
        return sprintf('%5.2f (floor %.2f)', $ratio, $floor);
    }
    if ($ratio > $most) {
        $missed[] = sprintf('%s: %.2f, at most %.2f', $what, $ratio, $most);
    }
    return sprintf('%5.2f (<= %.2f)%s', $ratio, $most, $ratio > $most ? '!' : ' ');
}

/** Measures one table with so many rows and prints its line; again, when a target is missed. */
function measure(string $table, int $rows, callable $module, array $most, int $turns, array &$missed): void
{
    $contestants = [
        'module' => $module,
        'raw' => fn () => rmon_bench_raw($table, $rows),
        'floor' => fn () => rmon_bench_floor($table, $rows),
    ];
    if (isset($most[1])) {
        $contestants['naive'] = fn () => rmon_bench_naive($table, $rows);
    }
    for ($tries = 1; $tries <= TRIES; $tries++) {
        $median = take_turns($contestants, $turns);
        $misses = [];
        $beside = function (string $other, ?float $most) use ($median, $table, $rows, &$misses): string {
            return $most === null ? '' : verdict("$table x $rows of $other", $median['module'] / $median[$other],
                $most, $median['floor'] / $median[$other], $misses);
        };
        printf("%-16s %6d  %9.1f  %-20s %-20s %8.2f\n", $table, $rows, $median['module'] / 1000,
            $beside('raw', $most[0]), $beside('naive', $most[1]), $median['module'] / $median['floor']);
        if (!$misses) {
            return;
        }
    }
    array_push($missed, ...$misses);
}

[$server, $port] = start_server($argv[1]);
ini_set('rmon.default_port', (string)$port);
$link = rmon_connect('127.0.0.1');
check($link && rmon_bench_open($port), 'no connection to the server');

$narrow = [
    'nlhost' => fn (int $rows) => rmon_nlhost_getbulk($link, 1, 0, 1, [], $rows),
    'etherhistory' => fn (int $rows) => rmon_etherhistory_getbulk($link, 1, 0, $rows),
    'host' => fn (int $rows) => rmon_host_getbulk($link, 1, [], $rows),
    'matrix_sd' => fn (int $rows) => rmon_matrix_sd_getbulk($link, 1, [], [], $rows),
    'almatrix_sd' => fn (int $rows) => rmon_almatrix_sd_getbulk($link, 1, 0, 1, [], [], 2, $rows),
    'art_rpt' => fn (int $rows) => rmon_art_rpt_getbulk($link, 1, 2, [], [], $rows),
];
$wide = [
    'h323_phone_rec' => fn (int $rows) => h323_phone_rec_getbulk($link, 0, $rows)['phone_rec'],
    'sccp_phone_rec' => fn (int $rows) => sccp_phone_rec_getbulk($link, 0, $rows)['phone_rec'],
    'mgcp_call_rec' => fn (int $rows) => mgcp_call_rec_getbulk($link, 0, $rows)['call_rec'],
];
if ($chosen = array_flip(array_slice($argv, 2))) {
    $narrow = array_intersect_key($narrow, $chosen);
    $wide = array_intersect_key($wide, $chosen);
}

$missed = [];
printf("%-16s %6s  %9s  %-20s %-20s %8s\n", 'table', 'rows', 'us', 'of raw', 'of naive', 'of floor');
foreach ($narrow as $table => $module) {
    check($module(10) === rmon_bench_naive($table, 10), "the module's rows of $table differ from the plain ones");
    foreach (NARROW as $rows => $most) {
        measure($table, $rows, fn () => $module($rows), $most, $rows >= 1000 ? 500 : 3000, $missed);
    }
}
foreach ($wide as $table => $module) {
    check(count($module(10)) === rmon_bench_raw($table, 10), "the module's rows of $table differ in number");
    check(count($module(1)[0]['history'] ?? range(1, 5)) === 5, "a row of $table is not whole");
    foreach (WIDE as $rows => $most) {
        measure($table, $rows, fn () => $module($rows), $most, $rows >= 100 ? 100 : 1000, $missed);
    }
}
if (!$chosen || isset($chosen['aggprofs'])) {
    check(count(dsmon_aggprofs_get($link, 1)) === 64 && rmon_bench_raw('aggprofs', 0) === 64, 'a profile is not whole');
    measure('aggprofs', 64, fn () => dsmon_aggprofs_get($link, 1), [NARROW[1][0], null], 200, $missed);
}

$before = memory_get_usage();
$kept = rmon_nlhost_getbulk($link, 1, 0, 1, [], 1000);
$bytes = (memory_get_usage() - $before) / 1000;
printf("a narrow row takes %.0f bytes of the engine's memory (at most %d)\n", $bytes, MOST_BYTES_A_ROW);
if ($bytes > MOST_BYTES_A_ROW) {
    $missed[] = sprintf('memory: %.0f bytes a narrow row', $bytes);
}

foreach ($missed as $line) {
    echo "missed: $line\n";
}
echo $missed ? '' : "every target is met\n";
exit($missed ? 1 : 0);
