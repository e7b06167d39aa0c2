<?php
/*
 * What a bulk read costs, as ratios within one run: the module against a plain
 * C client that only decodes and frees (raw), against the same client with the
 * engine's add_assoc calls behind it (naive), and against one that only receives
 * the bytes (floor). The contestants take turns, so that whatever else the
 * machine does falls on all of them; each figure is the median of its turns.
 * Exit code 1 when a target is missed.
 */
declare(strict_types=1);

/** What the narrow rows of one reply may cost of the engine's memory, bytes a row. */
const MOST_BYTES_A_ROW = 1000;

/** rows => [most of raw, most of naive] */
const NARROW = [1 => [1.05, 1.00], 10 => [1.00, 0.85], 100 => [0.80, 0.45], 1000 => [0.60, 0.25]];
const WIDE = [1 => [0.33], 10 => [0.16], 100 => [0.17]];

/** Starts the program that answers; [process, port]. */
function start_server(string $program): array
{
    $process = proc_open([$program], [['pipe', 'r'], ['pipe', 'w'], STDERR], $pipes);
    $port = (int)fgets($pipes[1]);
    return [[$process, $pipes], $port];
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

/** The same rows from the module and from the plain conversion, or the figures mean nothing. */
function check(bool $same, string $what): void
{
    if (!$same) {
        fwrite(STDERR, "bench: $what\n");
        exit(2);
    }
}

function verdict(string $what, float $ratio, float $most, array &$missed): string
{
    if ($ratio > $most) {
        $missed[] = sprintf('%s: %.2f, at most %.2f', $what, $ratio, $most);
    }
    return sprintf('%5.2f (<= %.2f)%s', $ratio, $most, $ratio > $most ? '!' : ' ');
}

[$server, $port] = start_server($argv[1]);
ini_set('rmon.default_port', (string)$port);
$link = rmon_connect('127.0.0.1');
check($link && rmon_bench_open($port), 'no connection to the server');

$narrow = fn (int $rows) => rmon_nlhost_getbulk($link, 1, 0, 1, [], $rows);
$wide = fn (int $rows) => h323_phone_rec_getbulk($link, 0, $rows);
check($narrow(10) === rmon_bench_naive(10), 'the narrow rows differ');
check(count($wide(10)['phone_rec']) === rmon_bench_raw(true, 10), 'the wide rows differ');

$missed = [];
printf("%-8s %6s  %10s  %-18s %-18s %8s\n", 'rows', 'number', 'us', 'of raw', 'of naive', 'of floor');
foreach (NARROW as $rows => [$raw, $naive]) {
    $median = take_turns([
        'module' => fn () => $narrow($rows),
        'raw' => fn () => rmon_bench_raw(false, $rows),
        'naive' => fn () => rmon_bench_naive($rows),
        'floor' => fn () => rmon_bench_floor(false, $rows),
    ], $rows >= 1000 ? 600 : 4000);
    printf("%-8s %6d  %10.1f  %-18s %-18s %8.2f\n", 'narrow', $rows, $median['module'] / 1000,
        verdict("narrow x $rows of raw", $median['module'] / $median['raw'], $raw, $missed),
        verdict("narrow x $rows of naive", $median['module'] / $median['naive'], $naive, $missed),
        $median['module'] / $median['floor']);
}
foreach (WIDE as $rows => [$raw]) {
    $median = take_turns([
        'module' => fn () => $wide($rows),
        'raw' => fn () => rmon_bench_raw(true, $rows),
        'floor' => fn () => rmon_bench_floor(true, $rows),
    ], $rows >= 100 ? 100 : 1000);
    printf("%-8s %6d  %10.1f  %-18s %-18s %8.2f\n", 'wide', $rows, $median['module'] / 1000,
        verdict("wide x $rows of raw", $median['module'] / $median['raw'], $raw, $missed), '',
        $median['module'] / $median['floor']);
}

$before = memory_get_usage();
$kept = $narrow(1000);
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
