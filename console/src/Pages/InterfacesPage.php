<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Closure;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Page;
use Rmon\Console\Picture\Spark;
use Rmon\Console\Table\Field;
use Rmon\Console\Table\ListSource;
use Rmon\Console\Visit;
use Rmon\ControlRow;
use Rmon\ControlRows;
use Rmon\Exception\AgentRefused;
use Rmon\Format;
use Rmon\History\Sample;
use Rmon\History\Series;
use Rmon\RowStatus;

/** The interfaces of a probe, and what each carries. */
final class InterfacesPage extends Page
{
    public const PATH = '/probe/{probe}/interfaces';
    public const TITLE = 'Interfaces';
    public const GROUP = 'Probe';

    /** ifType of the loopback. */
    public const LOOPBACK = 24;

    /** The samples that the small charts show: ten minutes. */
    public const SECONDS = 10;
    public const SAMPLES = 60;

    /** ifSpeed of what is faster than it can say. */
    private const FASTEST = 0xffffffff;

    private const UP = 1;

    /** The utilization from which an interface counts as full. */
    public const BUSY = 0.7;

    /** Interfaces that are sampled for their small charts. */
    public const MOST = 32;

    public function blocks(): iterable
    {
        yield 'interfaces' => self::table($this->visit);
    }

    /** @param (Closure(): list<array<string, mixed>>)|null $rows those of rows(), where somebody else needs them too */
    public static function table(Visit $visit, ?Closure $rows = null): DataTable
    {
        return DataTable::from(static function () use ($visit, $rows): ListSource {
            $schema = $visit->probe()->table('ifTable')->schema;
            $fields = [];
            foreach ($schema->columns as $name => $column) {
                $fields[$name] = Field::column($visit, $schema, $column);
            }
            return new ListSource(
                [...self::ours($visit), ...array_values(array_diff_key($fields, ['ifDescr' => 0, 'ifSpeed' => 0]))],
                $rows ?? static fn(): array => self::rows($visit),
                'The agent has no interface.',
                ['ifDescr', 'state', 'now', 'utilization', 'errors', 'ifSpeed', 'ifInOctets', 'ifOutOctets'],
            );
        });
    }

    /** @return list<Field> */
    private static function ours(Visit $visit): array
    {
        $last = static fn(array $row): ?Sample => $row['last'];
        return [
            Field::text('ifDescr', 'Interface', static fn(array $row): string => $row['ifDescr'])->linked(
                static fn(array $row): string => $visit->to(
                    InterfacePage::class,
                    ['interface' => $visit->interfaceSegment($row['ifIndex'])],
                ),
            ),
            Field::text('state', 'State', static fn(array $row): string => match (true) {
                $row['ifOperStatus'] === self::UP => 'up',
                $row['ifAdminStatus'] !== self::UP => 'switched off',
                default => 'down',
            })->marked(static fn(array $row): string => match (true) {
                $row['ifOperStatus'] === self::UP => 'up',
                $row['ifAdminStatus'] !== self::UP => '',
                default => 'down',
            }),
            Field::number(
                'now',
                'Traffic',
                static fn(array $row): ?float => $last($row)?->bitsPerSecond('etherHistoryOctets'),
                Format::bitsPerSecond(...),
                'bit/s in the last interval of ' . self::SECONDS . ' s; the line shows ten minutes',
            )->drawn(static fn(array $row): string => Spark::draw($row['bits'], 'Traffic of the last ten minutes')),
            Field::number(
                'utilization',
                'Utilization',
                self::utilization(...),
                Format::part(...),
            )->bar(self::utilization(...), self::BUSY),
            Field::number(
                'errors',
                'Errors',
                static fn(array $row): int => $row['ifInErrors'] + $row['ifOutErrors'],
                Format::whole(...),
                'frames with errors, in and out',
            )->marked(static fn(array $row): string => $row['ifInErrors'] + $row['ifOutErrors'] > 0 ? 'warn' : ''),
            Field::number('ifSpeed', 'Speed', static fn(array $row): int => $row['ifSpeed'], self::speed(...)),
        ];
    }

    /** "1.0 Gbit/s"; the largest number that the agent can say stands for that or more, and 0 for not known. */
    public static function speed(int|float $bits): string
    {
        return match (true) {
            $bits <= 0 => 'not known',
            $bits >= self::FASTEST => 'over 4.2 Gbit/s',
            default => Format::bitsPerSecond($bits),
        };
    }

    /**
     * The part of its speed that an interface carried in the last interval; null where one of the two is not known.
     *
     * @param array<string, mixed> $row
     */
    public static function utilization(array $row): ?float
    {
        return $row['last'] === null || $row['ifSpeed'] === 0
            ? null
            : $row['last']->row['etherHistoryUtilization'] / 10000;
    }

    /**
     * Rows of ifTable with the "last" sample of each interface and the "bits" of its small chart.
     *
     * @return list<array<string, mixed>>
     */
    public static function rows(Visit $visit): array
    {
        $rows = [];
        foreach ($visit->probe()->table('ifTable') as $row) {
            $rows[] = $row;
        }
        $sampled = self::sampled($visit, array_slice(array_column(array_filter(
            $rows,
            static fn(array $row): bool => $row['ifOperStatus'] === self::UP || $row['ifType'] === self::LOOPBACK,
        ), 'ifIndex'), 0, self::MOST));
        return array_map(static function (array $row) use ($visit, $sampled): array {
            $control = $sampled[$row['ifIndex']] ?? null;
            if ($control === null) {
                return $row + ['last' => null, 'bits' => []];
            }
            $series = Series::read(
                $visit->probe()->table('etherHistoryTable', control: $control),
                self::SECONDS,
                ['etherHistoryOctets', 'etherHistoryUtilization'],
            )->between(-self::SECONDS * self::SAMPLES);
            $points = $series->points([
                'bits' => static fn(Sample $sample): ?float => $sample->bitsPerSecond('etherHistoryOctets'),
            ]);
            $last = $series->samples === [] ? null : $series->samples[count($series->samples) - 1];
            return $row + ['last' => $last, 'bits' => $points['series']['bits']];
        }, $rows);
    }

    /**
     * History rows of interfaces, found in one walk; those that are missing are made.
     *
     * @param list<int> $interfaces
     * @return array<int, int> historyControlIndex by ifIndex
     */
    private static function sampled(Visit $visit, array $interfaces): array
    {
        $found = [];
        $looked = false;
        foreach ($visit->probe()->table('historyControlTable') as $row) {
            $fits = $row['historyControlStatus'] === RowStatus::valid->value
                && $row['historyControlInterval'] === self::SECONDS
                && $row['historyControlBucketsRequested'] === self::SAMPLES;
            if ($fits && in_array($row['historyControlDataSource'], $interfaces, true)) {
                $found[$row['historyControlDataSource']] ??= $row['historyControlIndex'];
            }
        }
        foreach ($interfaces as $interface) {
            if (isset($found[$interface]) && $looked) {
                continue;
            }
            try {
                $made = $visit->needs(static fn(ControlRows $rows): ControlRow => $rows->history(
                    $interface,
                    self::SECONDS,
                    self::SAMPLES,
                ));
                $found[$interface] = $made->index;
                $looked = $looked || $made->made;
            } catch (AgentRefused) {
                // An interface that the agent doesn't measure.
            }
        }
        return $found;
    }
}
