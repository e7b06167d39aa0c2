<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Address;
use Rmon\Console\Block\Choices;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Waiting;
use Rmon\Console\Page;
use Rmon\Console\Table\Field;
use Rmon\ControlRow;
use Rmon\ControlRows;
use Rmon\Format;
use Rmon\NetInterface;

/**
 * The agent's own reports of the hosts by MAC address that have most of something. A report that is done is shown while
 * the next one is measured.
 */
final class TopHostsPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/top';
    public const TITLE = 'Top-N reports';
    public const GROUP = 'Hosts';

    private const SIZE = 25;

    /** What a report can be about: the agent's word for it, and whether it counts octets. */
    private const KINDS = [
        'out-octets' => ['octets sent', 'hostTopNOutOctets', true],
        'in-octets' => ['octets received', 'hostTopNInOctets', true],
        'out-packets' => ['packets sent', 'hostTopNOutPkts', false],
        'in-packets' => ['packets received', 'hostTopNInPkts', false],
        'broadcasts' => ['broadcasts', 'hostTopNOutBroadcastPkts', false],
        'multicasts' => ['multicasts', 'hostTopNOutMulticastPkts', false],
        'errors' => ['errors', 'hostTopNOutErrors', false],
    ];

    private const SECONDS = ['10' => '10 s', '60' => '1 min', '600' => '10 min'];

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        $of = $this->visit->query('of', 'out-octets', array_keys(self::KINDS));
        $seconds = (int) $this->visit->query('last', '10', array_map(strval(...), array_keys(self::SECONDS)));
        yield 'view' => new Choices(fn(): array => $this->choices($of, $seconds));
        [$title, $base, $octets] = self::KINDS[$of];
        $rate = static fn(array $row): float => ($octets ? 8 : 1) * $row['hostTopNRate'] / $seconds;
        yield 'report' => DataTable::ofRows([
            Field::number('place', 'Place', static fn(array $row): int => $row['hostTopNIndex'], Format::whole(...)),
            Field::text('host', 'Host', static fn(array $row): string => Address::text($row['hostTopNAddress'])),
            Field::number('rate', 'Rate', $rate, $octets
                ? Format::bitsPerSecond(...)
                : static fn(float $rate): string => Format::scaled($rate, '/s'))
                ->bar(static fn(array $row): ?float => $row['part']),
            Field::number('amount', ucfirst($title), static fn(array $row): int|float => $row['hostTopNRate'], $octets
                ? Format::octets(...)
                : Format::whole(...)),
            Field::time('from', 'Measured from', static fn(array $row): float => $row['from']),
        ], fn(): array => $this->report($interface, $base, $seconds), 'No host had any of this meanwhile.')
            ->titled("Most $title in " . self::SECONDS[$seconds]);
    }

    /** @return array<string, list<array{string, string, bool}>> */
    private function choices(string $of, int $seconds): array
    {
        $kinds = [];
        foreach (self::KINDS as $name => [$title]) {
            $kinds[] = [$title, $this->visit->to(self::class, [], ['of' => $name, 'last' => $seconds]), $name === $of];
        }
        $times = [];
        foreach (self::SECONDS as $time => $title) {
            $to = $this->visit->to(self::class, [], ['of' => $of, 'last' => $time]);
            $times[] = [$title, $to, $time === $seconds];
        }
        return ['Most' => $kinds, 'In' => $times];
    }

    /** @return list<array<string, mixed>> */
    private function report(NetInterface $interface, string $base, int $seconds): array
    {
        $probe = $this->visit->probe();
        $control = $this->visit->needs(static fn(ControlRows $rows): ControlRow => $rows->macTopHosts(
            $interface->index,
            $base,
            $seconds,
            self::SIZE,
        ));
        $controls = $probe->table('hostTopNControlTable');
        $state = $controls->get(hostTopNControlIndex: $control->index);
        $left = $state['hostTopNTimeRemaining'] ?? $seconds;
        $kept = [$probe->link->host, $probe->link->port, $interface->index, $base, $seconds];
        $store = 'top-' . substr(hash('sha256', (string) json_encode($kept)), 0, 32);
        if ($left > 0) {
            $rows = $this->visit->console->state->read($store);
            return $rows !== [] ? $rows : throw new Waiting("The agent measures: the report is there in $left s.");
        }
        $rows = [];
        $from = $this->visit->timeOf($state['hostTopNStartTime']);
        foreach ($probe->table('hostTopNTable', control: $control->index) as $row) {
            $rows[] = array_intersect_key($row, ['hostTopNIndex' => 0, 'hostTopNAddress' => 0, 'hostTopNRate' => 0])
                + ['from' => $from];
        }
        $most = max([0, ...array_column($rows, 'hostTopNRate')]);
        foreach ($rows as &$row) {
            $row['part'] = $most > 0 ? $row['hostTopNRate'] / $most : null;
        }
        unset($row);
        $this->visit->console->state->change($store, static fn(): array => [$rows, null]);
        // The next one.
        $controls->set(hostTopNControlIndex: $control->index, hostTopNTimeRemaining: $seconds);
        return $rows;
    }
}
