<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\Chart;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Page;
use Rmon\Console\Table\Field;
use Rmon\ControlRows;
use Rmon\Format;
use Rmon\Rates;
use Rmon\Reading;
use Rmon\Table;

/** An interface's frames by kind and size, and its errors. */
final class EthernetPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/ethernet';
    public const TITLE = 'Ethernet statistics';
    public const GROUP = 'Interface';

    private const SIZES = [
        '64' => 'etherStatsPkts64Octets',
        '65 to 127' => 'etherStatsPkts65to127Octets',
        '128 to 255' => 'etherStatsPkts128to255Octets',
        '256 to 511' => 'etherStatsPkts256to511Octets',
        '512 to 1023' => 'etherStatsPkts512to1023Octets',
        '1024 to 1518' => 'etherStatsPkts1024to1518Octets',
    ];

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        $row = $this->visit->needs(static fn(ControlRows $rows) => $rows->etherStats($interface->index));
        $table = $this->visit->probe()->table('etherStatsTable', etherStatsIndex: $row->index);
        yield 'sizes' => new Chart('Frames by size in octets', 'bar', 'packets', static function () use ($table) {
            $stats = $table->get();
            $counts = array_map(static fn(string $column) => $stats[$column] ?? null, array_values(self::SIZES));
            return ['x' => array_map(strval(...), array_keys(self::SIZES)), 'series' => ['Frames' => $counts]];
        });
        yield 'counters' => DataTable::ofRows([
            Field::text('counter', 'What', static fn(array $row): string => $row['heading']),
            Field::number('rate', 'Now', static fn(array $row): ?float => $row['rate'], Format::whole(...))
                ->reading(static fn(array $row): string => $row['shown']),
            Field::number(
                'total',
                'Since counting began',
                static fn(array $row): int|float => $row['total'],
                static fn(int|float $count): string => number_format($count),
            ),
        ], fn(): array => $this->counters($table))->titled('Counters');
    }

    /** @return list<array{heading: string, rate: float|null, shown: string, total: int|float}> */
    private function counters(Table $table): array
    {
        $stats = $table->get() ?? [];
        $measured = $this->visit->console->sampler()->measure($table, 'etherStatsOctets');
        $rate = $measured?->rates[Reading::key($table->schema, $stats)] ?? null;
        $rows = [];
        foreach (array_keys(Rates::counters($table->schema)) as $name) {
            $octets = $table->schema->columns[$name]->unit === 'octets';
            $now = $octets ? $rate?->bitsPerSecond($name) : $rate?->perSecond($name);
            $rows[] = [
                'heading' => Field::words($table->schema->heading($name)),
                'rate' => $now,
                'shown' => match (true) {
                    $now === null => '',
                    $octets => Format::bitsPerSecond($now),
                    default => Format::scaled($now, '/s'),
                },
                'total' => $stats[$name],
            ];
        }
        return $rows;
    }
}
