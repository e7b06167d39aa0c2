<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Closure;
use Rmon\Address;
use Rmon\Console\Block\Chart;
use Rmon\Console\Block\Choices;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Facts;
use Rmon\Console\Block\Panels;
use Rmon\Console\Block\Waiting;
use Rmon\Console\Links;
use Rmon\Console\Page;
use Rmon\Console\Refusal;
use Rmon\Console\Table\Field;
use Rmon\ControlRows;
use Rmon\Exception\BadArgument;
use Rmon\Format;
use Rmon\NetInterface;
use Rmon\Ranking;
use Rmon\Table;

/** One host: what it sends and receives, by which protocols, with whom, and how quickly it answers. */
final class HostPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/host/{address}';
    public const TITLE = 'Host';

    private const TRAFFIC = 'Traffic since somebody looks';

    /** Rows of a panel that are looked at at most. */
    private const MOST = 500;

    public function title(): string
    {
        return $this->visit->parameters['address'];
    }

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        try {
            $address = Address::parse($this->visit->parameters['address']);
        } catch (BadArgument) {
            throw Refusal::notFound('The address of the page is no network address.');
        }
        yield 'facts' => new Facts(fn(): array => $this->facts($interface, $address));
        yield 'further' => new Choices($this->further(...));
        yield 'traffic' => new Chart(
            self::TRAFFIC,
            'line',
            'bit/s',
            fn(): array => $this->trend($interface, $address),
            true,
        );
        yield 'panels' => new Panels([
            'protocols' => $this->protocols($interface, $address),
            'peers' => $this->peers($interface, $address),
        ]);
        yield 'answers' => new Panels([
            'server' => $this->served($interface, $address),
            'client' => $this->asked($interface, $address),
        ]);
    }

    /**
     * Pages that show more of this host.
     *
     * @return array<string, list<array{string, string, bool}>>
     */
    private function further(): array
    {
        $address = $this->visit->parameters['address'];
        $pages = [
            ['its conversations', ConversationsPage::class, $address],
            ['its response times', ResponseTimesPage::class, $address],
            ['capture its frames', CapturePage::class, "host $address"],
        ];
        $links = [];
        foreach ($pages as [$title, $page, $filter]) {
            $links[] = [$title, $this->visit->to($page, [], ['filter' => $filter]), false];
        }
        return ['Look at' => $links];
    }

    /**
     * The host's row among those by network address; null when it was not seen.
     *
     * @param list<int> $address
     * @return array<string, mixed>|null
     */
    private function row(NetInterface $interface, array $address): ?array
    {
        $control = $this->visit->needs(static fn(ControlRows $rows) => $rows->hosts($interface->index));
        return $this->visit->probe()->table('nlHostTable', control: $control->index)
            ->get(protocolDirLocalIndex: $this->network($address), nlHostAddress: $address);
    }

    /** @param list<int> $address */
    private function network(array $address): int
    {
        return $this->visit->probe()->protocols()->index(count($address) === 16 ? 'ip6' : 'ip');
    }

    /**
     * @param list<int> $address
     * @return array<string, string>
     */
    private function facts(NetInterface $interface, array $address): array
    {
        $row = $this->row($interface, $address);
        if ($row === null) {
            return ['State' => "not seen on $interface->name since counting began there"];
        }
        $amount = static fn(int|float $octets, int|float $packets): string => Format::octets($octets) . ' in '
            . number_format($packets) . ' packets';
        $mac = $this->visit->probe()->table('addressMapTable')
            ->where(protocolDirLocalIndex: $this->network($address), addressMapNetworkAddress: $address)->first();
        return [
            'Seen since' => date('Y-m-d H:i:s', (int) $this->visit->timeOf($row['nlHostCreateTime'])),
            'Sent' => $amount($row['nlHostOutOctets'], $row['nlHostOutPkts']),
            'Received' => $amount($row['nlHostInOctets'], $row['nlHostInPkts']),
            'To groups and all' => number_format($row['nlHostOutMacNonUnicastPkts']) . ' packets',
            'MAC address' => $mac === null ? 'not mapped' : Address::text($mac['addressMapPhysicalAddress']),
        ];
    }

    /**
     * @param list<int> $address
     * @return array{x: list<float>, series: array<string, list<float|null>>}
     */
    private function trend(NetInterface $interface, array $address): array
    {
        $row = $this->row($interface, $address) ?? ['nlHostOutOctets' => 0, 'nlHostInOctets' => 0];
        $link = $this->visit->probe()->link;
        $points = $this->visit->console->trend()->look(
            [$link->host, $link->port, $interface->index, Address::text($address)],
            ['Sends' => 8 * $row['nlHostOutOctets'], 'Receives' => 8 * $row['nlHostInOctets']],
        );
        // One point is no line.
        return count(array_filter($points['series']['Sends'], is_float(...))) > 1
            ? $points
            : throw new Waiting('Measuring: the line begins in a few seconds.', self::TRAFFIC);
    }

    /** @param list<int> $address */
    private function protocols(NetInterface $interface, array $address): DataTable
    {
        $protocols = $this->visit->probe()->protocols();
        $value = static fn(string $name): Closure => static fn(array $row): int|float|null => $row[$name];
        return DataTable::ofRows([
            Field::text('protocol', 'Protocol', static fn(array $row): string =>
                $protocols->path($row['protocolDirLocalIndex2']) ?? (string) $row['protocolDirLocalIndex2']),
            Field::number('rate', 'Now', $value('rate'), Format::bitsPerSecond(...)),
            Field::number('alHostOutOctets', 'Sent', $value('alHostOutOctets'), Format::octets(...)),
            Field::number('alHostInOctets', 'Received', $value('alHostInOctets'), Format::octets(...)),
        ], function () use ($interface, $address): array {
            $control = $this->visit->needs(static fn(ControlRows $rows) => $rows->hosts($interface->index));
            $table = $this->visit->probe()->table('alHostTable', control: $control->index)
                ->where(protocolDirLocalIndex: $this->network($address), nlHostAddress: $address);
            return $this->withRates($table, 'alHostOutOctets', ['alHostOutOctets', 'alHostInOctets']);
        }, 'No protocol above the network layer was counted.')->titled('Protocols')->sortedBy('-rate')->compact(10);
    }

    /** @param list<int> $address */
    private function peers(NetInterface $interface, array $address): DataTable
    {
        $value = static fn(string $name): Closure => static fn(array $row): int|float|null => $row[$name];
        return DataTable::ofRows([
            Field::text('peer', 'Peer', static fn(array $row): string => $row['peer'])->linked(
                fn(array $row): string => Links::host($this->visit, $interface->index, $row['peer']),
            ),
            Field::number('out', 'Sent there', $value('out'), Format::octets(...)),
            Field::number('in', 'Received', $value('in'), Format::octets(...)),
            Field::number('all', 'Both', $value('all'), Format::octets(...)),
        ], function () use ($interface, $address): array {
            $control = $this->visit->needs(static fn(ControlRows $rows) => $rows->conversations($interface->index));
            $probe = $this->visit->probe();
            $network = $this->network($address);
            $peers = [];
            foreach ([['SD', 'Source', 'Dest', 'out'], ['DS', 'Dest', 'Source', 'in']] as [$view, $own, $other, $way]) {
                $table = $probe->table("nlMatrix{$view}Table", control: $control->index)
                    ->where(...['protocolDirLocalIndex' => $network, "nlMatrix$view{$own}Address" => $address]);
                foreach (Ranking::of($table->pages(), "nlMatrix{$view}Octets", true, self::MOST)->rows as $row) {
                    $peer = Address::text($row["nlMatrix$view{$other}Address"]);
                    $peers[$peer] ??= ['peer' => $peer, 'out' => 0, 'in' => 0];
                    $peers[$peer][$way] += $row["nlMatrix{$view}Octets"];
                }
            }
            return array_map(
                static fn(array $row): array => $row + ['all' => $row['out'] + $row['in']],
                array_values($peers),
            );
        }, 'No conversation was counted yet.')->titled('Peers')->sortedBy('-all')->compact(10);
    }

    /** @param list<int> $address */
    private function served(NetInterface $interface, array $address): DataTable
    {
        return $this->times($interface, 'artSummaryTable', 'artSummary', static fn(array $row): bool =>
            $row['artSummaryServerAddress'] === $address, null)->titled('How it answers, as a server');
    }

    /** @param list<int> $address */
    private function asked(NetInterface $interface, array $address): DataTable
    {
        return $this->times($interface, 'artReportTable', 'art', static fn(array $row): bool =>
            $row['artClientAddress'] === $address, 'artServerAddress')->titled('How it is answered, as a client');
    }

    private function times(
        NetInterface $interface,
        string $table,
        string $prefix,
        Closure $keep,
        ?string $server,
    ): DataTable {
        $protocols = $this->visit->probe()->protocols();
        $time = static fn(string $column, string $heading): Field => Field::number(
            $prefix . $column,
            $heading,
            static fn(array $row): int|float => $row[$prefix . $column],
            static fn(int|float $time): string => Format::whole($time) . ' ms',
        );
        $fields = [
            Field::text('protocol', 'Protocol', static fn(array $row): string =>
                $protocols->path($row['protocolDirLocalIndex']) ?? (string) $row['protocolDirLocalIndex']),
            $time('AvgRspTime', 'Average'),
            $time('MaxRspTime', 'Longest'),
            Field::number(
                'answers',
                'Answers',
                static fn(array $row): int => $row["{$prefix}TotalResponses"],
                Format::whole(...),
            ),
            Field::number(
                'lost',
                'No answer',
                static fn(array $row): int => $row["{$prefix}Timeouts"],
                Format::whole(...),
            ),
        ];
        if ($server !== null) {
            array_unshift($fields, Field::text('server', 'Server', static fn(array $row): string =>
                Address::text($row[$server]))->linked(fn(array $row): string =>
                Links::host($this->visit, $interface->index, Address::text($row[$server]))));
        }
        return DataTable::ofRows($fields, function () use ($interface, $table, $prefix, $keep): array {
            $control = $this->visit->needs(static fn(ControlRows $rows) => $rows->responseTimes($interface->index));
            $rows = $this->visit->probe()->table($table, control: $control->index)->pages();
            return Ranking::of($rows, "{$prefix}AvgRspTime", true, self::MOST, $keep, 1.0)->rows;
        }, 'No request and answer was measured.')->sortedBy("-{$prefix}AvgRspTime")->compact(10);
    }

    /**
     * Rows, with how fast two of their counters grow together.
     *
     * @param list<string> $counters of octets
     * @return list<array<string, mixed>>
     */
    private function withRates(Table $table, string $first, array $counters): array
    {
        $measured = $this->visit->console->sampler()->measure($table, $first);
        if ($measured === null) {
            throw new Waiting('Measuring: the first figures are there in a few seconds.');
        }
        $rows = [];
        foreach ($measured->rates as $rate) {
            $sum = 0.0;
            foreach ($counters as $counter) {
                $sum += $rate->bitsPerSecond($counter) ?? 0.0;
            }
            $rows[] = ['rate' => $sum] + $rate->row;
        }
        return $rows;
    }
}
