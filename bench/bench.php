<?php

// SPDX-License-Identifier: MIT

/*
 * What reads cost, as ratios within one run: the module against a plain C
 * client that only decodes and frees (raw), against the same client with the
 * engine's add_assoc calls behind it (naive), and against one that only
 * receives the bytes (floor). Each figure is the median of several
 * measurements, each of them made of medians. Exit code 1 when a gate is missed.
 *
 * usage: bench.php BUILD [table...]
 */

declare(strict_types=1);

require __DIR__ . '/contest.inc';

const MEASUREMENTS = 5;
const TURNS = 4;

/**
 * A ratio beside its gate and its goal. What the bytes alone take no client can
 * save: a gate below that counts for nobody.
 */
function verdict(string $what, float $ratio, array $limits, float $floor, array &$missed): string
{
    [$gate, $goal] = [$limits[0], $limits[1] ?? null];
    $text = sprintf('%5.2f (<= %.2f%s)', $ratio, $gate, $goal === null ? '' : sprintf(', goal %.2f', $goal));
    if ($floor > $gate) {
        return "$text -";
    }
    if ($ratio > $gate) {
        $missed[] = sprintf('%s: %.2f, at most %.2f', $what, $ratio, $gate);
    }
    return $text . ($ratio > $gate ? ' !' : '');
}

/**
 * Measures one table with so many rows and prints its line.
 *
 * @param array<string, Contestant> $contestants
 */
function measure(array $contestants, string $table, int $rows, array $limits, array &$missed): void
{
    // As many calls as take some milliseconds.
    $calls = max(5, min(100, intdiv(5000, $rows * ($table === 'aggprofs' || str_ends_with($table, '_rec') ? 10 : 1))));
    $ratios = [];
    for ($i = 0; $i < MEASUREMENTS; $i++) {
        $median = take_turns($contestants, $table, $rows, TURNS, $calls);
        foreach (array_keys($contestants) as $other) {
            $ratios[$other][] = $median['module'] / $median[$other];
        }
        $ratios['floor of raw'][] = $median['floor'] / $median['raw'];
        $ratios['us'][] = $median['module'] / 1000;
    }
    $ratio = array_map(median(...), $ratios);
    $floor = $ratio['floor of raw'];
    $naive = '';
    if (isset($contestants['naive'])) {
        $naive = verdict("$table x $rows of naive", $ratio['naive'], [OF_NAIVE[$rows]], 0, $missed);
    }
    $raw = verdict("$table x $rows of raw", $ratio['raw'], $limits, $floor, $missed);
    printf("%-16s %5d %9.1f  %-30s %5.2f  %s\n", $table, $rows, $ratio['us'], $raw, $floor, $naive);
}

$build = $argv[1];
[$server, $port] = start_server("$build/bench/reply_server");
$contestants = [];
foreach (
    ['module' => 'modules/rmon.so', 'raw' => 'bench/rmon_bench.so', 'floor' => 'bench/rmon_bench.so',
    'naive' => 'bench/rmon_bench.so'] as $name => $extension
) {
    $contestants[$name] = new Contestant($name, "$build/$extension", $port);
}
$without_naive = array_diff_key($contestants, ['naive' => true]);

$missed = [];
echo "! misses its gate; - has a gate that receiving the bytes (floor, of raw) misses by itself\n";
printf("%-16s %5s %9s  %-30s %5s  %s\n", 'table', 'rows', 'us', 'of raw', 'floor', 'of naive');
foreach (array_intersect_key(OF_RAW, array_flip(array_slice($argv, 2)) ?: OF_RAW) as $table => $lines) {
    $converted = in_array($lines, [ADDRESSED, LONG], true);
    $rows = array_key_last($lines) < 100 ? array_key_last($lines) : 10;
    $shown = $contestants['module']->asked($table, $rows, 'show');
    if ($converted) {
        $plain = $contestants['naive']->asked($table, $rows, 'show');
        check($shown === $plain, "the module's rows of $table differ from the plain ones");
    } elseif ($table !== 'pconnect') {
        $plain = $contestants['raw']->asked($table, $rows, 'show');
        check($shown[1] === $plain[1], "the module's rows of $table differ in number");
    }
    foreach ($lines as $rows => $limits) {
        measure($converted ? $contestants : $without_naive, $table, $rows, $limits, $missed);
    }
}

$bytes = (int)$contestants['module']->asked('nlhost', 1000, 'memory')[0] / 1000;
printf("a narrow row takes %.0f bytes of the engine's memory (at most %d)\n", $bytes, MOST_BYTES_A_ROW);
if ($bytes > MOST_BYTES_A_ROW) {
    $missed[] = sprintf('memory: %.0f bytes a narrow row', $bytes);
}

foreach ($missed as $line) {
    echo "missed: $line\n";
}
echo $missed ? '' : "every gate is met\n";
exit($missed ? 1 : 0);
