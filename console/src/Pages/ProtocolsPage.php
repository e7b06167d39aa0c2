<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Closure;
use Rmon\Console\Block\Chart;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Panels;
use Rmon\Console\Page;
use Rmon\Console\Table\Field;
use Rmon\Console\Traffic;
use Rmon\ControlRows;
use Rmon\Format;
use Rmon\NetInterface;
use Rmon\Table;

/** What the traffic consists of: now, over time, and since counting began as a tree. */
final class ProtocolsPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/protocols';
    public const TITLE = 'Protocols';
    public const GROUP = 'Applications';

    /** Protocols that the pictures name. */
    private const NAMED = 7;

    /** @var list<array{path: string, octets: float, packets: float, own: float, part: float}>|null */
    private ?array $tree = null;

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        yield 'over-time' => new Chart(
            'Traffic by protocol',
            'area',
            'bit/s',
            fn(): array => $this->overTime($interface),
            true,
            'Measuring: the picture begins in a few seconds.',
        );
        yield 'shares' => new Panels([
            'now' => Traffic::protocols($this->visit, $interface)->titled('Now')->compact(8),
            'all' => new Chart(
                'All since counting began',
                'doughnut',
                'B',
                fn(): array => $this->shares($interface),
                false,
                'There was no traffic yet.',
            ),
        ]);
        $number = static fn(string $name): Closure => static fn(array $row): float => $row[$name];
        yield 'tree' => DataTable::ofRows(
            [
                Field::text('protocol', 'Protocol', static fn(array $row): string => $row['path'])->nested(),
                Field::number('octets', 'Octets', $number('octets'), Format::octets(...)),
                Field::number('part', 'Of all', $number('part'), Format::part(...))->bar($number('part')),
                Field::number('own', 'Not of one above it', $number('own'), Format::octets(...)),
                Field::number('packets', 'Packets', $number('packets'), Format::whole(...)),
            ],
            fn(): array => $this->tree($interface),
            'No protocol was seen yet. If the interface carries traffic, the agent may run without the right to '
                . 'capture frames.',
        )->titled('All since counting began, with what each carries')->sortedBy('protocol');
    }

    /** @return list<array{path: string, octets: float, packets: float, own: float, part: float}> */
    private function tree(NetInterface $interface): array
    {
        if ($this->tree !== null) {
            return $this->tree;
        }
        $protocols = $this->visit->probe()->protocols();
        $counted = [];
        foreach ($this->table($interface) as $row) {
            $counted[$row['protocolDirLocalIndex']] = $row;
        }
        $above = [];
        $all = 0.0;
        foreach ($counted as $index => $row) {
            $parent = $protocols->parent($index);
            if ($parent !== null && isset($counted[$parent])) {
                $above[$parent] = ($above[$parent] ?? 0.0) + $row['protocolDistStatsOctets'];
            } else {
                $all += $row['protocolDistStatsOctets'];
            }
        }
        $this->tree = [];
        foreach ($counted as $index => $row) {
            $path = $protocols->path($index) ?? (string) $index;
            $octets = (float) $row['protocolDistStatsOctets'];
            $this->tree[] = [
                'path' => $path,
                'octets' => $octets,
                'packets' => (float) $row['protocolDistStatsPkts'],
                'own' => max(0.0, $octets - ($above[$index] ?? 0.0)),
                'part' => $all > 0 ? $octets / $all : 0.0,
            ];
        }
        return $this->tree;
    }

    private function table(NetInterface $interface): Table
    {
        $row = $this->visit->needs(static fn(ControlRows $rows) => $rows->protocols($interface->index));
        return $this->visit->probe()->table('protocolDistStatsTable', control: $row->index);
    }

    /** @return array<string, float> octets of the largest protocols, and of all others as one */
    private function largest(NetInterface $interface): array
    {
        $own = array_filter(array_column($this->tree($interface), 'own', 'path'));
        arsort($own);
        $largest = array_slice($own, 0, self::NAMED, true);
        $others = array_sum(array_slice($own, self::NAMED, null, true));
        return $others > 0 ? $largest + ['others' => $others] : $largest;
    }

    /** @return array{x: list<string>, series: array<string, list<float>>} */
    private function shares(NetInterface $interface): array
    {
        $largest = $this->largest($interface);
        return ['x' => array_map(strval(...), array_keys($largest)), 'series' => ['octets' => array_values($largest)]];
    }

    /** @return array{x: list<float>, series: array<string, list<float|null>>} */
    private function overTime(NetInterface $interface): array
    {
        $largest = $this->largest($interface);
        ksort($largest);
        $link = $this->visit->probe()->link;
        // With other protocols among the largest ones another picture begins.
        return $this->visit->console->trend()->look(
            [$link->host, $link->port, $interface->index, 'protocols', ...array_keys($largest)],
            array_map(static fn(float $octets): float => 8 * $octets, $largest),
        );
    }
}
