<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Closure;
use Rmon\Address;
use Rmon\Console\Block\Choices;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Picture;
use Rmon\Console\Block\Waiting;
use Rmon\Console\Links;
use Rmon\Console\Page;
use Rmon\Console\Picture\Flow;
use Rmon\Console\Picture\FlowPicture;
use Rmon\Console\Picture\Flows;
use Rmon\Console\Picture\HeatMap;
use Rmon\Console\Table\Field;
use Rmon\ControlRows;
use Rmon\Format;
use Rmon\NetInterface;
use Rmon\Ranking;
use Rmon\Table;

/** Who talks with whom: since counting began or now, by host or by application, as a picture and as a table. */
final class ConversationsPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/conversations';
    public const TITLE = 'Conversations';
    public const GROUP = 'Hosts';

    /** Ends of each side that the picture names. */
    private const ENDS = 10;

    /** Conversations that the picture is made of: the largest ones. */
    private const DRAWN = 500;

    private const SOON = 'Measuring: the first figures are there in a few seconds.';

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        $now = $this->visit->query('since', 'start', ['start', 'now']) === 'now';
        $layer = $this->visit->query('layer', 'hosts', ['hosts', 'applications']);
        $map = $this->visit->query('picture', 'flows', ['flows', 'map']) === 'map';
        $other = fn(string $name, ?string $value): string => $this->visit->address([$name => $value, 'sort' => null]);
        yield 'view' => new Choices(static fn(): array => [
            'Shows' => [
                ['all since counting began', $other('since', null), !$now],
                ['the last seconds', $other('since', 'now'), $now],
            ],
            'By' => [
                ['hosts', $other('layer', null), $layer === 'hosts'],
                ['applications', $other('layer', 'applications'), $layer === 'applications'],
            ],
            'Picture' => [
                ['flows', $other('picture', null), !$map],
                ['map', $other('picture', 'map'), $map],
            ],
        ]);
        yield 'picture' => new Picture(
            'The largest',
            fn(): string => $this->picture($interface, $now, $map),
            '',
            'There is no conversation to draw yet.',
        );
        $prefix = $layer === 'hosts' ? 'nlMatrixSD' : 'alMatrixSD';
        yield 'conversations' => $now ? $this->measured($interface, $prefix) : $this->counted($interface, $prefix);
    }

    private function table(NetInterface $interface, string $prefix): Table
    {
        $row = $this->visit->needs(static fn(ControlRows $rows) => $rows->conversations($interface->index));
        return $this->visit->probe()->table("{$prefix}Table", control: $row->index);
    }

    private function counted(NetInterface $interface, string $prefix): DataTable
    {
        $byApplication = $prefix === 'alMatrixSD';
        return DataTable::of(
            $this->visit,
            fn() => $this->table($interface, $prefix),
            [
                'nlMatrixSDSourceAddress', 'nlMatrixSDDestAddress',
                ...($byApplication ? ['protocolDirLocalIndex2'] : []),
                "{$prefix}Octets", "{$prefix}Pkts", "{$prefix}CreateTime",
            ],
            fn(array $fields): array => [
                'nlMatrixSDSourceAddress' => $fields['nlMatrixSDSourceAddress']->titled('From')
                    ->linked($this->host($interface, 'nlMatrixSDSourceAddress')),
                'nlMatrixSDDestAddress' => $fields['nlMatrixSDDestAddress']->titled('To')
                    ->linked($this->host($interface, 'nlMatrixSDDestAddress')),
                "{$prefix}Octets" => $fields["{$prefix}Octets"]->titled('Octets'),
                "{$prefix}Pkts" => $fields["{$prefix}Pkts"]->titled('Packets'),
                "{$prefix}CreateTime" => $fields["{$prefix}CreateTime"]->titled('First seen'),
            ] + ($byApplication ? [
                'protocolDirLocalIndex2' => $fields['protocolDirLocalIndex2']->titled('Protocol'),
            ] : []),
        )->sortedBy("-{$prefix}Octets")->emptyBecause(static fn(): string => 'No conversation was seen yet. If the '
            . 'interface carries traffic, the agent may run without the right to capture frames.');
    }

    private function measured(NetInterface $interface, string $prefix): DataTable
    {
        $protocols = $this->visit->probe()->protocols();
        $end = static fn(string $name): Closure => static fn(array $row): string => Address::text($row[$name]);
        $fields = [
            Field::text('from', 'From', $end('nlMatrixSDSourceAddress'))
                ->linked($this->host($interface, 'nlMatrixSDSourceAddress')),
            Field::text('to', 'To', $end('nlMatrixSDDestAddress'))
                ->linked($this->host($interface, 'nlMatrixSDDestAddress')),
        ];
        if ($prefix === 'alMatrixSD') {
            $fields[] = Field::text('protocol', 'Protocol', static fn(array $row): string =>
                $protocols->path($row['protocolDirLocalIndex2']) ?? (string) $row['protocolDirLocalIndex2']);
        }
        return DataTable::ofRows(
            [
                ...$fields,
                Field::number('rate', 'Rate', static fn(array $row): float => $row['rate'], Format::bitsPerSecond(...))
                    ->bar(static fn(array $row): float => $row['share']),
                Field::number(
                    'packets',
                    'Packets/s',
                    static fn(array $row): ?float => $row['packets'],
                    static fn(float $packets): string => number_format($packets, $packets < 10 ? 1 : 0),
                ),
            ],
            fn(): array => $this->rates($interface, $prefix),
            'Nobody talked in the last seconds.',
        )->sortedBy('-rate');
    }

    /** @return list<array<string, mixed>> what grew, with "rate", "packets" and "share" */
    private function rates(NetInterface $interface, string $prefix): array
    {
        $table = $this->table($interface, $prefix);
        $measured = $this->visit->console->sampler()->measure($table, "{$prefix}Octets")
            ?? throw new Waiting(self::SOON);
        $rows = [];
        foreach ($measured->rates as $one) {
            $rate = $one->bitsPerSecond("{$prefix}Octets");
            if ($rate > 0) {
                $rows[] = ['rate' => $rate, 'packets' => $one->perSecond("{$prefix}Pkts")] + $one->row;
            }
        }
        $most = $rows === [] ? 0.0 : max(array_column($rows, 'rate'));
        return array_map(static fn(array $row): array => $row + ['share' => $row['rate'] / $most], $rows);
    }

    private function picture(NetInterface $interface, bool $now, bool $map): string
    {
        $rows = $now ? $this->rates($interface, 'nlMatrixSD') : Ranking::of(
            $this->table($interface, 'nlMatrixSD')->pages(),
            'nlMatrixSDOctets',
            true,
            self::DRAWN,
        )->rows;
        $flows = array_map(static fn(array $row): Flow => new Flow(
            Address::text($row['nlMatrixSDSourceAddress']),
            Address::text($row['nlMatrixSDDestAddress']),
            (float) ($now ? $row['rate'] : $row['nlMatrixSDOctets']),
        ), $rows);
        if ($flows === []) {
            return '';
        }
        $known = [];
        foreach ($flows as $flow) {
            $known[$flow->source] = $known[$flow->destination] = true;
        }
        $href = fn(string $name): ?string => isset($known[$name])
            ? Links::host($this->visit, $interface->index, $name) : null;
        $text = $now ? Format::bitsPerSecond(...) : Format::octets(...);
        $largest = Flows::largest($flows, self::ENDS);
        $title = 'Who sends how much to whom; all conversations follow as a table';
        return $map
            ? HeatMap::draw($largest, $title, $text, $href)
            : FlowPicture::draw($largest, $title, $text, $href);
    }

    private function host(NetInterface $interface, string $column): Closure
    {
        return fn(array $row): string => Links::host($this->visit, $interface->index, Address::text($row[$column]));
    }
}
