<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\Chart;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Panels;
use Rmon\Console\Page;
use Rmon\ControlRows;
use Rmon\NetInterface;
use Rmon\Table;

/** Traffic by the VLAN and by the priority of its 802.1Q tags. */
final class VlansPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/vlans';
    public const TITLE = 'VLANs and priorities';
    public const GROUP = 'Classes';

    /** What IEEE 802.1Q calls the priorities. */
    private const TRAFFIC = [
        'best effort', 'background', 'excellent effort', 'critical applications', 'video', 'voice',
        'internetwork control', 'network control',
    ];

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        yield 'pictures' => new Panels([
            'over-time' => new Chart(
                'Traffic by VLAN',
                'area',
                'bit/s',
                fn(): array => $this->overTime($interface),
                true,
                'Measuring: the picture begins in a few seconds.',
            ),
            'by-priority' => new Chart(
                'All by priority',
                'doughnut',
                'B',
                fn(): array => $this->byPriority($interface),
                false,
                'No frame with a tag was seen yet.',
            ),
        ]);
        $none = static fn(): string => 'No frame with a tag was seen yet. Frames without one count nowhere: only the '
            . 'switch knows which VLAN their port gives them.';
        yield 'vlans' => DataTable::of(
            $this->visit,
            fn() => $this->vlans($interface),
            [
                'smonVlanIdStatsId', 'smonVlanIdStatsTotalOctets', 'smonVlanIdStatsTotalPkts',
                'smonVlanIdStatsNUcastOctets', 'smonVlanIdStatsNUcastPkts', 'smonVlanIdStatsCreateTime',
            ],
            static fn(array $fields): array => [
                'smonVlanIdStatsId' => $fields['smonVlanIdStatsId']->titled('VLAN'),
                'smonVlanIdStatsTotalOctets' => $fields['smonVlanIdStatsTotalOctets']->titled('Octets'),
                'smonVlanIdStatsTotalPkts' => $fields['smonVlanIdStatsTotalPkts']->titled('Packets'),
                'smonVlanIdStatsNUcastOctets' => $fields['smonVlanIdStatsNUcastOctets']->titled('Octets to groups'),
                'smonVlanIdStatsNUcastPkts' => $fields['smonVlanIdStatsNUcastPkts']->titled('Packets to groups'),
                'smonVlanIdStatsCreateTime' => $fields['smonVlanIdStatsCreateTime']->titled('First seen'),
            ],
        )->titled('VLANs')->sortedBy('-smonVlanIdStatsTotalOctets')->emptyBecause($none);
        yield 'priorities' => DataTable::of(
            $this->visit,
            fn() => $this->priorities($interface),
            ['smonPrioStatsId', 'smonPrioStatsOctets', 'smonPrioStatsPkts'],
            static fn(array $fields): array => [
                'smonPrioStatsId' => $fields['smonPrioStatsId']->titled('Priority'),
                'smonPrioStatsOctets' => $fields['smonPrioStatsOctets']->titled('Octets'),
                'smonPrioStatsPkts' => $fields['smonPrioStatsPkts']->titled('Packets'),
            ],
        )->titled('Priorities')->sortedBy('smonPrioStatsId')->beside('priorities')->emptyBecause($none);
    }

    private function vlans(NetInterface $interface): Table
    {
        $row = $this->visit->needs(static fn(ControlRows $rows) => $rows->vlans($interface->index));
        return $this->visit->probe()->table('smonVlanIdStatsTable', control: $row->index);
    }

    private function priorities(NetInterface $interface): Table
    {
        $row = $this->visit->needs(static fn(ControlRows $rows) => $rows->priorities($interface->index));
        return $this->visit->probe()->table('smonPrioStatsTable', control: $row->index);
    }

    /** @return array{x: list<float>, series: array<string, list<float|null>>} */
    private function overTime(NetInterface $interface): array
    {
        $bits = [];
        foreach ($this->vlans($interface) as $row) {
            $bits["VLAN $row[smonVlanIdStatsId]"] = 8 * $row['smonVlanIdStatsTotalOctets'];
        }
        $link = $this->visit->probe()->link;
        return $bits === [] ? ['x' => [], 'series' => []] : $this->visit->console->trend()->look(
            [$link->host, $link->port, $interface->index, 'vlans', ...array_keys($bits)],
            $bits,
        );
    }

    /** @return array{x: list<string>, series: array<string, list<int|float>>} */
    private function byPriority(NetInterface $interface): array
    {
        $octets = [];
        foreach ($this->priorities($interface) as $row) {
            $priority = $row['smonPrioStatsId'];
            if ($row['smonPrioStatsOctets'] > 0) {
                $octets["$priority, " . (self::TRAFFIC[$priority] ?? 'unknown')] = $row['smonPrioStatsOctets'];
            }
        }
        return ['x' => array_keys($octets), 'series' => ['octets' => array_values($octets)]];
    }
}
