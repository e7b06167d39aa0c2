<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Closure;
use Rmon\Address;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Panels;
use Rmon\Console\Block\Waiting;
use Rmon\Console\Table\Field;
use Rmon\ControlRows;
use Rmon\Format;
use Rmon\NetInterface;
use Rmon\ProtocolShare;
use Rmon\Ranking;

/** Who fills an interface just now: tables that several pages show. */
final class Traffic
{
    private const SOON = 'Measuring: the first figures are there in a few seconds.';

    /**
     * The three questions about an interface that is slow, side by side.
     *
     * @param string $on what stands behind each heading
     */
    public static function panels(Visit $visit, NetInterface $interface, string $on = ''): Panels
    {
        return new Panels([
            'talkers' => self::talkers($visit, $interface)->titled("Top talkers$on")->compact(),
            'protocols' => self::protocols($visit, $interface)->titled("Protocols$on")->compact(),
            'servers' => self::servers($visit, $interface)->titled("Slowest servers$on")->compact(),
        ]);
    }

    /** Hosts by what they send and receive now. */
    public static function talkers(Visit $visit, NetInterface $interface): DataTable
    {
        $address = static fn(array $row): string => Address::text($row['nlHostAddress']);
        $rate = static fn(string $name): Closure => static fn(array $row): ?float => $row[$name];
        return DataTable::ofRows(
            [
                Field::text('host', 'Host', $address)->linked(
                    static fn(array $row): string => Links::host($visit, $interface->index, $address($row)),
                ),
                Field::number('out', 'Sends', $rate('out'), Format::bitsPerSecond(...))
                    ->bar(static fn(array $row): ?float => $row['share']),
                Field::number('in', 'Receives', $rate('in'), Format::bitsPerSecond(...)),
            ],
            static function () use ($visit, $interface): array {
                $row = $visit->needs(static fn(ControlRows $rows) => $rows->hosts($interface->index));
                $table = $visit->probe()->table('nlHostTable', control: $row->index);
                $measured = $visit->console->sampler()->measure($table, 'nlHostOutOctets')
                    ?? throw new Waiting(self::SOON);
                $rows = [];
                foreach ($measured->rates as $one) {
                    $out = $one->bitsPerSecond('nlHostOutOctets');
                    $in = $one->bitsPerSecond('nlHostInOctets');
                    if ($out > 0 || $in > 0) {
                        $rows[] = ['out' => $out, 'in' => $in] + $one->row;
                    }
                }
                $sum = array_sum(array_column($rows, 'out'));
                foreach ($rows as &$each) {
                    $each['share'] = $sum > 0 ? $each['out'] / $sum : null;
                }
                return $rows;
            },
            'No host sent anything in the last seconds.',
        )->sortedBy('-out');
    }

    /** What the traffic consists of now. */
    public static function protocols(Visit $visit, NetInterface $interface): DataTable
    {
        $bits = Format::bitsPerSecond(...);
        return DataTable::ofRows(
            [
                Field::text('protocol', 'Protocol', static fn(array $row): string => $row['share']->path),
                Field::number('rate', 'Rate', static fn(array $row): float => $row['share']->rate, $bits),
                Field::number('own', 'Share', static fn(array $row): float => $row['share']->own, Format::part(...))
                    ->bar(static fn(array $row): float => $row['share']->own),
            ],
            static function () use ($visit, $interface): array {
                $row = $visit->needs(static fn(ControlRows $rows) => $rows->protocols($interface->index));
                $table = $visit->probe()->table('protocolDistStatsTable', control: $row->index);
                $measured = $visit->console->sampler()->measure($table, 'protocolDistStatsOctets')
                    ?? throw new Waiting(self::SOON);
                // A protocol that only carries others is no answer to what the traffic is.
                return array_map(
                    static fn(ProtocolShare $share): array => ['share' => $share],
                    array_values(array_filter(
                        $interface->shares($measured->rates),
                        static fn(ProtocolShare $share): bool => $share->own > 0,
                    )),
                );
            },
            'There was no traffic in the last seconds.',
        )->sortedBy('-own');
    }

    /** Servers by how long they took to answer, since the report began. */
    public static function servers(Visit $visit, NetInterface $interface): DataTable
    {
        $protocols = $visit->probe()->protocols();
        $number = static fn(string $name, string $heading, Closure $format): Field => Field::number(
            $name,
            $heading,
            static fn(array $row): int|float => $row[$name],
            $format,
        );
        $milliseconds = static fn(int|float $time): string => Format::whole($time) . ' ms';
        $server = static fn(array $row): string => Address::text($row['artSummaryServerAddress']);
        $protocol = static fn(array $row): string =>
            $protocols->path($row['protocolDirLocalIndex']) ?? (string) $row['protocolDirLocalIndex'];
        return DataTable::ofRows(
            [
                Field::text('server', 'Server', $server)->linked(
                    static fn(array $row): string => Links::host($visit, $interface->index, $server($row)),
                ),
                Field::text('protocol', 'Protocol', $protocol)->nested(),
                $number('artSummaryAvgRspTime', 'Average', $milliseconds),
                $number('artSummaryMaxRspTime', 'Longest', $milliseconds),
                $number('artSummaryTotalResponses', 'Answers', Format::whole(...)),
            ],
            static function () use ($visit, $interface): array {
                $row = $visit->needs(static fn(ControlRows $rows) => $rows->responseTimes($interface->index));
                $table = $visit->probe()->table('artSummaryTable', control: $row->index);
                $ranking = Ranking::of(
                    $table->pages(),
                    'artSummaryAvgRspTime',
                    true,
                    100,
                    static fn(array $row): bool => $row['artSummaryTotalResponses'] > 0,
                );
                return $ranking->rows;
            },
            'No request was answered since the measurement began.',
            ['server', 'artSummaryAvgRspTime', 'protocol'],
        )->sortedBy('-artSummaryAvgRspTime');
    }
}
