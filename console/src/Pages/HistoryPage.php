<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Closure;
use Rmon\Console\Block\Chart;
use Rmon\Console\Block\Choices;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Facts;
use Rmon\Console\Block\Panels;
use Rmon\Console\Page;
use Rmon\Console\Table\Field;
use Rmon\Console\Visit;
use Rmon\ControlRows;
use Rmon\Format;
use Rmon\History\Sample;
use Rmon\History\Series;
use Rmon\RowStatus;

/**
 * What an interface carried, from the agent's own samples. "every=30" in the address says which of its history rows,
 * "from" and "to", or "last", in seconds, what part of it.
 */
final class HistoryPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/history';
    public const TITLE = 'History';
    public const GROUP = 'Interface';

    /** Points that a chart has at most: as many as can be told apart. */
    private const POINTS = 400;

    /** The least that can be zoomed to, in intervals. */
    private const LEAST = 8;

    private const COLUMNS = [
        'etherHistoryOctets', 'etherHistoryPkts', 'etherHistoryBroadcastPkts', 'etherHistoryMulticastPkts',
        'etherHistoryDropEvents', 'etherHistoryCRCAlignErrors', 'etherHistoryUndersizePkts',
        'etherHistoryOversizePkts', 'etherHistoryFragments', 'etherHistoryJabbers', 'etherHistoryCollisions',
        'etherHistoryUtilization',
    ];

    private const ERRORS = [
        'CRC and alignment' => 'etherHistoryCRCAlignErrors',
        'Undersize' => 'etherHistoryUndersizePkts',
        'Oversize' => 'etherHistoryOversizePkts',
        'Fragments' => 'etherHistoryFragments',
        'Jabbers' => 'etherHistoryJabbers',
        'Collisions' => 'etherHistoryCollisions',
        'Drop events' => 'etherHistoryDropEvents',
    ];

    /** @var array<int, array<string, mixed>>|null rows of historyControlTable by interval */
    private ?array $controls = null;

    private ?bool $hasSpeed = null;

    /** @var array{Series, float}|null all samples, and the time of day at which they were read */
    private ?array $read = null;

    public function blocks(): iterable
    {
        yield 'views' => new Choices(fn(): array => $this->views());
        yield 'about' => new Facts(fn(): array => $this->about());
        yield 'traffic' => $this->lines('Traffic', 'area', 'bit/s', [
            'Traffic' => static fn(Sample $sample) => $sample->bitsPerSecond('etherHistoryOctets'),
        ]);
        yield 'more' => new Panels([
            'packets' => $this->lines('Packets', 'line', 'packets/s', [
                'All' => static fn(Sample $sample) => $sample->perSecond('etherHistoryPkts'),
                'Broadcast' => static fn(Sample $sample) => $sample->perSecond('etherHistoryBroadcastPkts'),
                'Multicast' => static fn(Sample $sample) => $sample->perSecond('etherHistoryMulticastPkts'),
            ]),
            'utilization' => $this->lines(
                'Utilization',
                'area',
                '%',
                ['Utilization' => static fn(Sample $sample) => $sample->row['etherHistoryUtilization'] / 100],
                fn(): string => $this->hasSpeed()
                    ? '' : 'Of how much is not known: the interface tells no speed.',
            ),
            'errors' => $this->lines(
                'Errors and drops',
                'line',
                'in a sample',
                array_map(
                    static fn(string $column) => static fn(Sample $sample) => $sample->row[$column],
                    self::ERRORS,
                ),
                fn(): string => $this->wereErrors() ? '' : 'No error and no drop was counted in this time.',
                onlyCounted: true,
            ),
        ]);
        yield 'samples' => $this->samples();
    }

    /** A chart of what the page's interface carried, of so many samples of so many seconds. */
    public static function chart(Visit $visit, int $seconds, int $samples): Chart
    {
        $data = static function () use ($visit, $seconds, $samples): array {
            $interface = $visit->interface()->index;
            $row = $visit->needs(static fn(ControlRows $rows) => $rows->history($interface, $seconds, $samples));
            $table = $visit->probe()->table('etherHistoryTable', control: $row->index);
            $series = Series::read($table, $seconds, ['etherHistoryOctets']);
            return $series->points([
                'Traffic' => static fn(Sample $sample) => $sample->bitsPerSecond('etherHistoryOctets'),
            ], microtime(true));
        };
        $empty = "Sampling has begun: the first sample is there after $seconds seconds.";
        return new Chart('Traffic', 'area', 'bit/s', $data, true, $empty);
    }

    /**
     * @param array<string, Closure(Sample): (int|float|null)> $lines
     * @param (Closure(): string)|null $whyNot why there is nothing to draw; empty when there is
     * @param bool $onlyCounted without the lines that are 0 all the time
     */
    private function lines(
        string $title,
        string $kind,
        string $unit,
        array $lines,
        ?Closure $whyNot = null,
        bool $onlyCounted = false,
    ): Chart {
        $data = function () use ($lines, $onlyCounted): array {
            [$series, $now] = $this->read();
            [$from, $to] = $this->range();
            $part = $series->between($from, $to)->thinned(self::POINTS);
            $points = $part->points($lines, $now);
            if ($onlyCounted) {
                $points['series'] = array_filter($points['series'], static fn(array $values) => array_sum($values) > 0);
            }
            if ($part->samples !== [] && $this->isPart()) {
                // What was asked for is seen as a whole, also where nothing was sampled.
                $points['x'] = [$now + $from, ...$points['x'], $now + $to];
                $points['series'] = array_map(
                    static fn(array $values) => [null, ...$values, null],
                    $points['series'],
                );
            }
            return $points;
        };
        $empty = $this->isPart() ? 'No sample was taken in this time.' : 'No sample has been taken yet.';
        return (new Chart($title, $kind, $unit, $data, true, $empty))->unless($whyNot)->zoomable();
    }

    private function samples(): DataTable
    {
        $number = static fn(string $name, string $heading, Closure $value, Closure $format, string $unit) =>
            Field::number($name, $heading, static fn(array $row) => $value($row['sample']), $format, $unit);
        $whole = static fn(int|float $value) => number_format($value);
        $count = static fn(string $column, string $heading, string $unit = 'packets') => $number(
            $column,
            $heading,
            static fn(Sample $sample) => $sample->row[$column],
            $whole,
            "$column: $unit",
        );
        return DataTable::ofRows([
            Field::time('start', 'Began', static fn(array $row) => $row['start']),
            $number('seconds', 'Took', static fn(Sample $one) => round($one->seconds(), 2), self::seconds(...), 's'),
            $number(
                'rate',
                'Traffic',
                static fn(Sample $sample) => $sample->bitsPerSecond('etherHistoryOctets'),
                Format::bitsPerSecond(...),
                'bit/s',
            ),
            $number(
                'etherHistoryUtilization',
                'Utilization',
                fn(Sample $sample) => $this->hasSpeed() ? $sample->row['etherHistoryUtilization'] : null,
                Format::utilization(...),
                'etherHistoryUtilization: hundredths of a percent',
            )->bar(fn(array $row) => $this->hasSpeed()
                ? min(1.0, $row['sample']->row['etherHistoryUtilization'] / 10000)
                : null),
            $number(
                'etherHistoryOctets',
                'Octets',
                static fn(Sample $sample) => $sample->row['etherHistoryOctets'],
                Format::octets(...),
                'etherHistoryOctets: octets',
            ),
            $count('etherHistoryPkts', 'Packets'),
            $count('etherHistoryBroadcastPkts', 'Broadcast'),
            $count('etherHistoryMulticastPkts', 'Multicast'),
            $number('errors', 'Errors', self::errors(...), $whole, 'packets with an error, and collisions'),
            $count('etherHistoryDropEvents', 'Drop events', 'events'),
        ], function (): array {
            [$series, $now] = $this->read();
            $rows = [];
            foreach (array_reverse($series->between(...$this->range())->samples) as $sample) {
                $rows[] = ['start' => $now + $sample->start, 'sample' => $sample];
            }
            return $rows;
        }, 'No sample was taken in this time.')->titled('Samples');
    }

    /** Whether the interface tells a speed, without which there is no utilization. */
    private function hasSpeed(): bool
    {
        return $this->hasSpeed ??= $this->visit->interface()->row()['ifSpeed'] !== 0;
    }

    private function wereErrors(): bool
    {
        [$series] = $this->read();
        foreach ($series->between(...$this->range())->samples as $sample) {
            if (array_sum(array_intersect_key($sample->row, array_flip(self::ERRORS))) > 0) {
                return true;
            }
        }
        return false;
    }

    private static function errors(Sample $sample): int|float
    {
        $errors = array_diff_key(self::ERRORS, ['Drop events' => 0]);
        return array_sum(array_map(static fn(string $column) => $sample->row[$column], $errors));
    }

    private static function seconds(int|float $seconds): string
    {
        return rtrim(rtrim(number_format($seconds, 2, '.', ''), '0'), '.') . ' s';
    }

    /** @return array<string, list<array{string, string, bool}>> */
    private function views(): array
    {
        $controls = $this->controls();
        $here = $this->control()['historyControlInterval'];
        $every = [];
        foreach ($controls as $interval => $control) {
            $address = $this->visit->address(['every' => $interval, 'from' => null, 'to' => null, 'last' => null]);
            $back = self::short($interval * $control['historyControlBucketsGranted']);
            $every[] = [self::short($interval) . " for $back", $address, $interval === $here];
        }
        [$series] = $this->read();
        $all = $series->samples === [] ? 0.0 : -$series->samples[0]->start;
        $last = [];
        foreach ([300, 900, 3600, 21600, 86400, 604800] as $seconds) {
            if ($seconds < $all && $seconds >= self::LEAST * $here) {
                $last[] = [
                    'last ' . self::short($seconds),
                    $this->visit->address(['last' => $seconds, 'from' => null, 'to' => null]),
                    $this->visit->query('last') === (string) $seconds,
                ];
            }
        }
        $last[] = ['all', $this->visit->address(['last' => null, 'from' => null, 'to' => null]), !$this->isPart()];
        return ['A sample every' => $every, 'Show' => $last, 'Move' => $this->steps($all, $here)];
    }

    /** @return list<array{string, string, bool}> */
    private function steps(float $all, int $interval): array
    {
        [, $now] = $this->read();
        [$from, $to] = $this->range();
        $long = $to - $from;
        $middle = ($from + $to) / 2;
        $steps = [];
        $to = static fn(float $from, float $to) => [max(-$all, $from), min(0.0, $to)];
        if ($long / 2 >= self::LEAST * $interval) {
            $steps['zoom in'] = $to($middle - $long / 4, $middle + $long / 4);
        }
        if ($this->isPart()) {
            $steps['zoom out'] = $to($middle - $long, $middle + $long);
            $steps['earlier'] = $from <= -$all ? null : $to($from - $long / 2, $from + $long / 2);
            $steps['later'] = $middle + $long / 2 >= -$interval ? null : $to($middle, $middle + $long);
        }
        $links = [];
        foreach (array_filter($steps) as $text => [$begin, $end]) {
            $range = ['from' => (int) round($now + $begin), 'to' => (int) round($now + $end), 'last' => null];
            $links[] = [$text, $this->visit->address($range), false];
        }
        return $links;
    }

    /** @return array<string, string> */
    private function about(): array
    {
        [$series, $now] = $this->read();
        $part = $series->between(...$this->range());
        $control = $this->control();
        $facts = [
            'Samples' => count($part->samples) === count($series->samples)
                ? count($part->samples) . ' of ' . $control['historyControlBucketsGranted']
                : count($part->samples) . ' of ' . count($series->samples) . ' that there are',
            'Row' => "historyControlTable {$control['historyControlIndex']}, of "
                . ($control['historyControlOwner'] === '' ? 'nobody' : $control['historyControlOwner']),
        ];
        if ($part->samples !== []) {
            $first = $part->samples[0]->start;
            $last = $part->samples[array_key_last($part->samples)]->end;
            $octets = array_sum(array_map(static fn(Sample $one) => $one->row['etherHistoryOctets'], $part->samples));
            $seconds = array_sum(array_map(static fn(Sample $one) => $one->seconds(), $part->samples));
            $most = max(array_map(static fn(Sample $one) => $one->bitsPerSecond('etherHistoryOctets'), $part->samples));
            $facts = [
                'From' => date('Y-m-d H:i:s', (int) ($now + $first)),
                'To' => date('Y-m-d H:i:s', (int) ($now + $last)),
                'On average' => Format::bitsPerSecond($seconds > 0 ? 8 * $octets / $seconds : 0),
                'At most' => Format::bitsPerSecond((float) $most),
                'Carried' => Format::octets($octets),
            ] + $facts;
        }
        if ($part->gaps !== []) {
            $missing = array_sum(array_map(static fn(array $gap) => $gap[1] - $gap[0], $part->gaps));
            $facts['Missing'] = Format::duration($missing) . ' in ' . count($part->gaps) . ' gaps';
        }
        if ($series->forgotten > 0) {
            $facts['Left out'] = "$series->forgotten samples from before the agent's restart";
        }
        return $facts;
    }

    /** "30 s", "30 min", "1 h" */
    private static function short(int $seconds): string
    {
        return match (true) {
            $seconds % 86400 === 0 => intdiv($seconds, 86400) . ' d',
            $seconds % 3600 === 0 => intdiv($seconds, 3600) . ' h',
            $seconds % 60 === 0 => intdiv($seconds, 60) . ' min',
            default => "$seconds s",
        };
    }

    private function isPart(): bool
    {
        return (int) $this->visit->query('last') > 0
            || $this->visit->query('from') !== '' || $this->visit->query('to') !== '';
    }

    /** @return array{float, float} in seconds from the reading on */
    private function range(): array
    {
        [$series, $now] = $this->read();
        $first = $series->samples === [] ? 0.0 : $series->samples[0]->start;
        $last = (int) $this->visit->query('last');
        if ($last > 0) {
            return [(float) -$last, 0.0];
        }
        $from = $this->visit->query('from');
        $to = $this->visit->query('to');
        $from = is_numeric($from) ? max($first - 86400, $from - $now) : $first;
        $to = is_numeric($to) ? min(0.0, $to - $now) : 0.0;
        return $from < $to ? [$from, $to] : [$first, 0.0];
    }

    /** @return array{Series, float} */
    private function read(): array
    {
        if ($this->read === null) {
            $control = $this->control();
            $table = $this->visit->probe()
                ->table('etherHistoryTable', control: $control['historyControlIndex']);
            $series = Series::read($table, $control['historyControlInterval'], self::COLUMNS);
            $this->read = [$series, microtime(true)];
        }
        return $this->read;
    }

    /** @return array<string, mixed> the history row that is shown */
    private function control(): array
    {
        $controls = $this->controls();
        return $controls[(int) $this->visit->query('every')] ?? reset($controls);
    }

    /** @return non-empty-array<int, array<string, mixed>> the interface's history rows, by interval */
    private function controls(): array
    {
        if ($this->controls === null) {
            $interface = $this->visit->interface()->index;
            $controls = [];
            do {
                foreach ($this->visit->probe()->table('historyControlTable') as $row) {
                    if (
                        $row['historyControlDataSource'] === $interface && $row['historyControlInterval'] > 0
                        && $row['historyControlStatus'] === RowStatus::valid->value
                        && ($controls[$row['historyControlInterval']]['historyControlBucketsGranted'] ?? 0)
                            < $row['historyControlBucketsGranted']
                    ) {
                        $controls[$row['historyControlInterval']] = $row;
                    }
                }
                // An agent without any gets one.
            } while (
                $controls === []
                && $this->visit->needs(static fn(ControlRows $rows) => $rows->history($interface, 30, 120))->index > 0
            );
            ksort($controls);
            $this->controls = $controls;
        }
        return $this->controls;
    }
}
