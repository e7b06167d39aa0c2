<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Alarm\Alarms;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Facts;
use Rmon\Console\Block\Words;
use Rmon\Console\Glance;
use Rmon\Console\Page;
use Rmon\Console\Table\Field;
use Rmon\Console\Text;
use Rmon\Console\Traffic;
use Rmon\Format;
use Rmon\NetInterface;

/** A probe at a glance: is it up, what do its interfaces carry, who fills them, and what went wrong lately. */
final class OverviewPage extends Page
{
    public const PATH = '/probe/{probe}';
    public const TITLE = 'Overview';
    public const GROUP = 'Probe';

    /** Seconds of the log that are shown. */
    private const LATELY = 3600;

    /** @var list<array<string, mixed>>|null the interfaces, read once for all blocks that show them */
    private ?array $interfaces = null;

    /** Alarms and log, likewise. */
    private ?Alarms $alarms = null;

    public function title(): string
    {
        $configured = $this->visit->configured();
        return $configured->title === '' ? $configured->name : $configured->title;
    }

    public function blocks(): iterable
    {
        yield 'answer' => new Words(fn(): array => Glance::sentences(
            $this->interfaces(),
            $this->alarms()->alarms,
            $this->log(),
        ));
        yield 'state' => new Facts($this->state(...));
        yield 'interfaces' => InterfacesPage::table($this->visit, $this->interfaces(...))
            ->titled('Interfaces')
            ->compact(InterfacesPage::MOST);
        $busiest = $this->busiest();
        if ($busiest !== null) {
            yield 'panels' => Traffic::panels($this->visit, $busiest, ' on ' . Text::shown($busiest->name, 20));
        }
        yield 'lately' => $this->lately();
    }

    /** @return list<array<string, mixed>> */
    private function interfaces(): array
    {
        return $this->interfaces ??= InterfacesPage::rows($this->visit);
    }

    private function alarms(): Alarms
    {
        return $this->alarms ??= Alarms::read($this->visit->probe(), 20);
    }

    /** @return list<array{time: float, text: string}> of the last hour, the latest entry first */
    private function log(): array
    {
        $now = microtime(true);
        $log = [];
        foreach ($this->alarms()->log as $entry) {
            if ($entry->ago <= self::LATELY) {
                $log[] = ['time' => $now - $entry->ago, 'text' => $this->alarms()->told($entry)];
            }
        }
        return $log;
    }

    /** @return array<string, string> */
    private function state(): array
    {
        $system = $this->visit->probe()->system();
        $dropped = 0;
        foreach ($this->visit->probe()->table('etherStatsTable') as $row) {
            $dropped += $row['etherStatsDropEvents'];
        }
        return array_filter([
            'State' => 'up for ' . Format::ticks($system['sysUpTime']),
            'Name' => $system['sysName'],
            'Missed frames' => $dropped == 0 ? 'none' : Format::whole($dropped) . ' times without room for a frame',
            'Location' => $system['sysLocation'],
            'Contact' => $system['sysContact'],
        ], static fn(string $text) => $text !== '');
    }

    /** The interface that has carried most, the loopback only where there is no other. */
    private function busiest(): ?NetInterface
    {
        $most = null;
        foreach ($this->visit->probe()->table('ifTable') as $row) {
            $octets = [$row['ifType'] === InterfacesPage::LOOPBACK ? 0 : 1, $row['ifInOctets'] + $row['ifOutOctets']];
            if ($most === null || $octets > $most[0]) {
                $most = [$octets, $row['ifIndex']];
            }
        }
        return $most === null ? null : $this->visit->probe()->interface($most[1]);
    }

    private function lately(): DataTable
    {
        $fields = [
            Field::time('time', 'When', static fn(array $row): float => $row['time']),
            Field::text('text', 'What', static fn(array $row): string => $row['text']),
        ];
        return DataTable::ofRows(
            $fields,
            $this->log(...),
            'No alarm went off and nothing was logged in the last hour.',
        )->titled('The last hour')->compact(10);
    }
}
