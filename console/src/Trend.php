<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/**
 * How counters grew while somebody looked: agents keep no history of a single host. Each look adds a point to a file,
 * from which a chart is drawn for whoever looks next.
 */
final class Trend
{
    /** Points that are kept: ten minutes of looks every five seconds. */
    private const MOST = 120;

    /** Two looks that are nearer are one. */
    private const LEAST = 2.0;

    /** After so many seconds without a look, what was before is told apart by a gap. */
    private const GAP = 30.0;

    /** Seconds after which what was seen is of no use any more. */
    private const FRESH = 900.0;

    public function __construct(private readonly string $directory)
    {
    }

    /**
     * Adds what counters show now, and gives how much they grew in each second.
     *
     * @param list<string|int> $name         of what is counted
     * @param array<string, int|float> $counters by name; always the same ones
     * @return array{x: list<float>, series: array<string, list<float|null>>} times of day; null is a gap
     */
    public function look(array $name, array $counters): array
    {
        $file = "$this->directory/trend-" . hash('sha256', (string) json_encode($name));
        $now = microtime(true);
        $bytes = @file_get_contents($file);
        $points = $bytes === false ? [] : json_decode($bytes, true);
        $points = is_array($points) ? array_filter(
            $points,
            static fn(array $point): bool => $point[0] < $now && $now - $point[0] < self::FRESH,
        ) : [];
        $points = array_values($points);
        $last = end($points);
        if ($last === false || $now - $last[0] >= self::LEAST) {
            $points[] = [$now, array_values($counters)];
            $points = array_slice($points, -self::MOST);
            State::replace($file, json_encode($points, JSON_THROW_ON_ERROR));
        }
        return self::rates($points, array_keys($counters));
    }

    /**
     * @param list<array{float, list<int|float>}> $points
     * @param list<string> $names
     * @return array{x: list<float>, series: array<string, list<float|null>>}
     */
    private static function rates(array $points, array $names): array
    {
        $x = [];
        $series = array_fill_keys($names, []);
        for ($at = 1; $at < count($points); $at++) {
            [$before, $old] = $points[$at - 1];
            [$time, $new] = $points[$at];
            $x[] = $time;
            foreach ($names as $place => $name) {
                $grown = $new[$place] - $old[$place];
                // A row that began anew, or nobody looked: nothing can be said.
                $known = $grown >= 0 && $time - $before <= self::GAP;
                $series[$name][] = $known ? $grown / ($time - $before) : null;
            }
        }
        return ['x' => $x, 'series' => $series];
    }
}
