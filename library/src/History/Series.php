<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\History;

use Rmon\Exception\BadArgument;
use Rmon\Table;

/**
 * The samples of one history row in time: what follows what, and where something is missing.
 *
 * A sample lasts until the next one begins, as an agent makes it longer when it comes late. Where samples are missing,
 * or none came any more, is a gap. Samples from before an agent's restart have a time on a clock that is gone: when
 * that was isn't known, and they are left out.
 */
final class Series
{
    /** The agent's clock (sysUpTime) goes on from 0 here, in hundredths of a second. */
    private const CLOCK = 2 ** 32;

    /** So many intervals after a sample the next one counts as missing, not as late. */
    private const LATE = 1.5;

    /** A clock that falls back wrapped if not more than so many seconds passed, and started over otherwise. */
    private const LONGEST_SAMPLE = 86400.0;

    private const START = 'etherHistoryIntervalStart';
    private const INDEX = 'etherHistorySampleIndex';

    /**
     * @param list<Sample> $samples     in the order of time
     * @param list<array{float, float}> $gaps from and to, in seconds from the reading on
     * @param float $interval           seconds that a sample should take
     * @param int $forgotten            samples from before a restart
     */
    private function __construct(
        public readonly array $samples,
        public readonly array $gaps,
        public readonly float $interval,
        public readonly int $forgotten = 0,
    ) {
    }

    /**
     * Reads the samples of a history row.
     *
     * @param Table $table     etherHistoryTable, narrowed to one control row
     * @param int $interval    the control row's, in seconds
     * @param list<string> $columns those that are wanted
     */
    public static function read(Table $table, int $interval, array $columns): self
    {
        $kept = array_flip([self::INDEX, self::START, ...$columns]);
        $rows = [];
        foreach ($table as $row) {
            $rows[] = array_intersect_key($row, $kept);
        }
        // Asked after the rows were read: none of them began later.
        return self::of($rows, $interval, $table->probe->uptime());
    }

    /**
     * @param list<array<string, int|float>> $rows of etherHistoryTable, in the order of their samples
     * @param int $interval the control row's, in seconds
     * @param int $now      the agent's clock (sysUpTime)
     */
    public static function of(array $rows, int $interval, int $now): self
    {
        if ($interval < 1) {
            throw new BadArgument('An interval has at least 1 second.');
        }
        $first = self::lastRestart($rows);
        $rows = array_slice($rows, $first);
        $samples = [];
        $gaps = [];
        foreach ($rows as $place => $row) {
            $start = self::before($row[self::START], $now);
            $next = $rows[$place + 1] ?? null;
            $following = $next === null ? 0.0 : self::before($next[self::START], $now);
            $isNext = $next !== null && $next[self::INDEX] === $row[self::INDEX] + 1;
            $end = $isNext ? $following : min($start + $interval, $following);
            $samples[] = new Sample($start, $end, $row);
            if (!$isNext && $following - $end > ($next === null ? self::LATE * $interval : 0)) {
                $gaps[] = [$end, $following];
            }
        }
        return new self($samples, $gaps, $interval, $first);
    }

    /**
     * The part of it within a time, with the samples that reach into it.
     *
     * @param float $from in seconds from the reading on, below 0
     */
    public function between(float $from, float $to = 0.0): self
    {
        return new self(
            array_values(array_filter(
                $this->samples,
                static fn(Sample $sample) => $sample->end > $from && $sample->start < $to,
            )),
            array_values(array_filter($this->gaps, static fn(array $gap) => $gap[1] > $from && $gap[0] < $to)),
            $this->interval,
            $this->forgotten,
        );
    }

    /**
     * The same in at most so many samples, of which each stands for several that follow each other: counts are added
     * up, and the utilization is that of the whole time. No sample spans a gap.
     */
    public function thinned(int $most): self
    {
        $together = (int) ceil(count($this->samples) / max(1, $most));
        if ($together < 2) {
            return $this;
        }
        $runs = [];
        $run = [];
        foreach ($this->samples as $sample) {
            $last = end($run);
            if ($last !== false && (count($run) === $together || abs($last->end - $sample->start) > 0.001)) {
                $runs[] = self::joined($run);
                $run = [];
            }
            $run[] = $sample;
        }
        return new self([...$runs, self::joined($run)], $this->gaps, $this->interval * $together, $this->forgotten);
    }

    /**
     * Points of a chart: times and values, null where there is none. A sample stands at its middle.
     *
     * @param array<string, callable(Sample): (int|float|null)> $lines by name
     * @param float $now what is added to the times: the time of day of the reading
     * @return array{x: list<float>, series: array<string, list<int|float|null>>}
     */
    public function points(array $lines, float $now = 0.0): array
    {
        $marks = [];
        foreach ($this->samples as $sample) {
            $marks[] = [($sample->start + $sample->end) / 2, $sample];
        }
        foreach ($this->gaps as [$from, $to]) {
            $marks[] = [($from + $to) / 2, null];
        }
        usort($marks, static fn(array $one, array $other) => $one[0] <=> $other[0]);
        $points = ['x' => [], 'series' => array_fill_keys(array_keys($lines), [])];
        foreach ($marks as [$time, $sample]) {
            $points['x'][] = $now + $time;
            foreach ($lines as $name => $line) {
                $points['series'][$name][] = $sample === null ? null : $line($sample);
            }
        }
        return $points;
    }

    /** @param non-empty-list<Sample> $run */
    private static function joined(array $run): Sample
    {
        $first = $run[0];
        $last = $run[count($run) - 1];
        $row = $first->row;
        foreach (array_keys($row) as $column) {
            if ($column !== self::INDEX && $column !== self::START) {
                $row[$column] = $column === 'etherHistoryUtilization'
                    ? self::mean($run, $column)
                    : array_sum(array_map(static fn(Sample $sample) => $sample->row[$column], $run));
            }
        }
        return new Sample($first->start, $last->end, $row);
    }

    /** @param non-empty-list<Sample> $run */
    private static function mean(array $run, string $column): float
    {
        $weighted = 0.0;
        $seconds = 0.0;
        foreach ($run as $sample) {
            $weighted += $sample->row[$column] * $sample->seconds();
            $seconds += $sample->seconds();
        }
        return $seconds > 0 ? $weighted / $seconds : 0.0;
    }

    /** How long ago the agent's clock showed this, as seconds below 0. */
    private static function before(int|float $ticks, int $now): float
    {
        return -fmod($now - $ticks + self::CLOCK, self::CLOCK) / 100;
    }

    /**
     * The place of the first sample since the agent's clock started over.
     *
     * @param list<array<string, int|float>> $rows
     */
    private static function lastRestart(array $rows): int
    {
        for ($place = count($rows) - 1; $place > 0; $place--) {
            $grown = $rows[$place][self::START] - $rows[$place - 1][self::START];
            if ($grown < 0 && ($grown + self::CLOCK) / 100 > self::LONGEST_SAMPLE) {
                return $place;
            }
        }
        return 0;
    }
}
