<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Block;

use Closure;
use Rmon\Console\Text;
use Rmon\Console\Visit;

/**
 * A picture of numbers, drawn by Chart.js from what the page holds, with the same numbers as a table for who has no
 * script or can't see it.
 *
 * The data is ['x' => [...], 'series' => [name => [numbers or null for a gap]]]: x are texts, or with $time seconds of
 * the day's clock.
 */
final class Chart implements Block
{
    /** Series that can be told apart; the rest is summed up as one. */
    public const MOST_SERIES = 8;

    /** @var (Closure(): string)|null */
    private ?Closure $reason = null;

    private bool $zoom = false;

    /**
     * @param string $kind "line", "area" (stacked), "bar", "stacked" bars or "doughnut"
     * @param string $unit of the numbers: "bit/s", "B", "%", "packets/s", ...
     * @param Closure(): array{x: list<string|float>, series: array<string, list<int|float|null>>} $data
     * @param bool $time   whether x are times
     */
    public function __construct(
        private readonly string $title,
        private readonly string $kind,
        private readonly string $unit,
        private readonly Closure $data,
        private readonly bool $time = false,
        private readonly string $empty = 'There is nothing to draw yet.',
    ) {
    }

    /** The same, in which a time can be drawn over to see only that: the page takes "from" and "to" in its address. */
    public function zoomable(): self
    {
        $same = clone $this;
        $same->zoom = true;
        return $same;
    }

    /**
     * The same, which is not drawn where there is a reason against it.
     *
     * @param (Closure(): string)|null $reason empty: there is none
     */
    public function unless(?Closure $reason): self
    {
        $same = clone $this;
        $same->reason = $reason;
        return $same;
    }

    public function template(): string
    {
        return 'chart';
    }

    public function shown(Visit $visit, string $id): array
    {
        $reason = $this->reason === null ? '' : ($this->reason)();
        $data = $reason === '' ? ($this->data)() : ['x' => [], 'series' => []];
        if ($this->time && array_filter(array_merge(...array_values($data['series'])), is_numeric(...)) === []) {
            // Axes around gaps alone say less than why there is nothing.
            $data = ['x' => [], 'series' => []];
        }
        $series = self::fewest($data['series']);
        $named = [];
        foreach ($series as $name => $values) {
            $named[] = ['name' => Text::shown((string) $name, 60), 'values' => array_values($values)];
        }
        $x = array_map(static fn(string|int|float $x) => is_string($x) ? Text::shown($x, 60) : $x, $data['x']);
        return [
            'title' => $this->title,
            'unit' => $this->unit,
            'empty' => $x === [] ? ($reason === '' ? $this->empty : $reason) : '',
            'time' => $this->time,
            'zoom' => $this->zoom,
            'rows' => $this->time ? self::clock($x) : $x,
            'series' => $named,
            'json' => json_encode([
                'kind' => $this->kind,
                'unit' => $this->unit,
                'time' => $this->time,
                // One line that the title tells of needs no name besides.
                'legend' => count($named) > 1
                    || $named !== [] && !str_contains($this->title, (string) array_key_first($series)),
                'x' => $x,
                'series' => $named,
            ], JSON_THROW_ON_ERROR | JSON_INVALID_UTF8_SUBSTITUTE | JSON_HEX_TAG),
        ];
    }

    public function isLive(): bool
    {
        return true;
    }

    /**
     * Times of day, with the day where there are several.
     *
     * @param list<float> $times
     * @return list<string>
     */
    private static function clock(array $times): array
    {
        $long = $times !== [] && max($times) - min($times) >= 86400;
        return array_map(static fn(float $at) => date($long ? 'Y-m-d H:i:s' : 'H:i:s', (int) $at), $times);
    }

    /**
     * At most as many series as can be told apart: the largest ones, and the sum of the others.
     *
     * @param array<string, list<int|float|null>> $series
     * @return array<string, list<int|float|null>>
     */
    public static function fewest(array $series): array
    {
        if (count($series) <= self::MOST_SERIES) {
            return $series;
        }
        $sums = array_map(array_sum(...), $series);
        arsort($sums);
        $kept = array_slice(array_keys($sums), 0, self::MOST_SERIES - 1);
        $others = [];
        foreach (array_diff_key($series, array_flip($kept)) as $values) {
            foreach ($values as $place => $value) {
                $others[$place] = $value === null ? $others[$place] ?? null : ($others[$place] ?? 0) + $value;
            }
        }
        ksort($others);
        $largest = array_intersect_key($series, array_flip($kept));
        return array_replace(array_flip($kept), $largest) + ['others' => array_values($others)];
    }
}
