<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Closure;
use Rmon\Address;
use Rmon\Console\Block\Chart;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Facts;
use Rmon\Console\Block\Panels;
use Rmon\Console\Block\Words;
use Rmon\Console\Links;
use Rmon\Console\Page;
use Rmon\Console\Table\Field;
use Rmon\ControlRows;
use Rmon\Exception\BadArgument;
use Rmon\Format;
use Rmon\RowStatus;

/** How long servers take to answer, and how often in which time. */
final class ResponseTimesPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/response-times';
    public const TITLE = 'Response times';
    public const GROUP = 'Applications';

    /** Ranges that the agent counts responses in. */
    private const RANGES = 7;

    /** Servers that make the answer and the picture, those with most responses. */
    private const SERVERS = 7;

    /** Responses from which on an average counts for something. */
    private const OFTEN = 5;

    /** @var array<string, mixed>|null the report's row of artControlTable */
    private ?array $control = null;

    /** @var array<string, mixed>|null see sums() */
    private ?array $sums = null;

    public function blocks(): iterable
    {
        yield 'answer' => new Words(fn(): array => $this->answer());
        yield 'pictures' => new Panels([
            'histogram' => new Chart(
                'Responses by their time in ms',
                'stacked',
                'responses',
                fn(): array => $this->histogram(),
                false,
                'No response was seen yet.',
            ),
            'report' => new Facts(fn(): array => $this->report(), 'The report'),
        ]);
        yield 'servers' => DataTable::of(
            $this->visit,
            fn() => $this->visit->probe()->table('artSummaryTable', control: $this->control()['artControlIndex']),
            [
                'artSummaryServerAddress', 'protocolDirLocalIndex', 'artSummaryAvgRspTime', 'artSummaryMaxRspTime',
                'artSummaryTotalResponses', 'slow', 'artSummaryTimeouts', 'artSummaryRetries', 'artSummaryClients',
            ],
            $this->fields('artSummary', ['artSummaryServerAddress' => 'Server']),
        )->titled('Servers')->sortedBy('-artSummaryAvgRspTime');
        yield 'pairs' => DataTable::of(
            $this->visit,
            fn() => $this->visit->probe()->table('artReportTable', control: $this->control()['artControlIndex']),
            [
                'artServerAddress', 'artClientAddress', 'protocolDirLocalIndex', 'artAvgRspTime', 'artMinRspTime',
                'artMaxRspTime', 'artTotalResponses', 'slow', 'artTimeouts', 'artRetries',
            ],
            $this->fields('art', ['artServerAddress' => 'Server', 'artClientAddress' => 'Client']),
        )->titled('Servers and their clients')->sortedBy('-artAvgRspTime')->beside('pairs');
    }

    /** @return list<array{string, string}> */
    private function answer(): array
    {
        $sums = $this->sums();
        if ($sums['slowest'] === null) {
            return [['No response was seen on this interface yet. Measured are TCP exchanges of protocols that are '
                . 'known by their port, and DNS.', 'answer']];
        }
        $slowest = $sums['slowest'];
        $clients = number_format($slowest['artSummaryClients'])
            . ($slowest['artSummaryClients'] === 1 ? ' client' : ' clients');
        $sentences = [[
            "The slowest is {$this->name($slowest)}: it answers $clients in "
                . self::milliseconds($slowest['artSummaryAvgRspTime']) . ' on average. All '
                . number_format($sums['responses']) . ' responses took '
                . self::milliseconds($sums['time'] / $sums['responses']) . ' on average.',
            'answer',
        ]];
        if ($sums['timeouts'] > 0) {
            $requests = $sums['timeouts'] === 1 ? '1 request was' : number_format($sums['timeouts']) . ' requests were';
            $timeout = self::milliseconds($this->control()['artControlRspTimeout']);
            $sentences[] = ["$requests not answered within $timeout.", 'warning'];
        }
        return $sentences;
    }

    /** @return array{x: list<string>, series: array<string, list<int>>} */
    private function histogram(): array
    {
        $sums = $this->sums();
        $series = [];
        $others = $sums['ranges'];
        foreach ($sums['busiest'] as $row) {
            foreach (array_keys($others) as $range) {
                $responses = $row['artSummaryRsps' . $range + 1];
                $series[$this->name($row)][$range] = $responses;
                $others[$range] -= $responses;
            }
        }
        if (array_sum($others) > 0) {
            $series['others'] = $others;
        }
        return ['x' => $series === [] ? [] : $this->ranges(), 'series' => $series];
    }

    /** @return list<string> "to 10", "10 to 20", ..., "over 500", in milliseconds */
    private function ranges(): array
    {
        $control = $this->control();
        $ranges = ["to {$control['artControlRspTime1']}"];
        for ($range = 2; $range < self::RANGES; $range++) {
            $ranges[] = $control['artControlRspTime' . $range - 1] . " to {$control["artControlRspTime$range"]}";
        }
        return [...$ranges, 'over ' . $control['artControlRspTime' . self::RANGES - 1]];
    }

    /** @return array<string, string> */
    private function report(): array
    {
        $control = $this->control();
        return [
            'Began' => date('Y-m-d H:i:s', (int) $this->visit->timeOf($control['artControlRptStartTime'])),
            'Covers' => $control['artControlTimeRemaining'] === 0
                ? Format::duration($control['artControlDuration']) . ', and goes on'
                : Format::duration($control['artControlDuration']),
            'Counts as timed out' => 'after ' . self::milliseconds($control['artControlRspTimeout']),
            'Frames dropped' => number_format($control['artControlDroppedFrames']),
            'Servers and protocols' => number_format($this->sums()['servers']),
            'Row' => "artControlTable {$control['artControlIndex']}, of {$control['artControlOwner']}",
        ];
    }

    /**
     * @param array<string, string> $headings
     * @return Closure(array<string, Field>): array<string, Field>
     */
    private function fields(string $prefix, array $headings): Closure
    {
        return function (array $fields) use ($prefix, $headings): array {
            $changed = [];
            foreach ($headings as $name => $heading) {
                $changed[$name] = $fields[$name]->titled($heading)->linked(fn(array $row): string => Links::host(
                    $this->visit,
                    $this->visit->interface()->index,
                    Address::text($row[$name]),
                ));
            }
            $changed["{$prefix}AvgRspTime"] = $this->time("{$prefix}AvgRspTime", 'Average', $prefix);
            $changed["{$prefix}MinRspTime"] = $this->time("{$prefix}MinRspTime", 'Shortest', $prefix);
            $changed["{$prefix}MaxRspTime"] = $this->time("{$prefix}MaxRspTime", 'Longest', $prefix);
            $changed["{$prefix}TotalResponses"] = $fields["{$prefix}TotalResponses"]->titled('Responses');
            $changed["{$prefix}Timeouts"] = $fields["{$prefix}Timeouts"]->titled('Timeouts');
            $changed["{$prefix}Retries"] = $fields["{$prefix}Retries"]->titled('Retries');
            $ranges = null;
            for ($range = 1; $range <= self::RANGES; $range++) {
                $name = "{$prefix}Rsps$range";
                $ranges ??= $this->ranges();
                $changed[$name] = $fields[$name]->titled(ucfirst($ranges[$range - 1]) . ' ms');
            }
            $limit = $this->control()['artControlRspTime5'];
            $slow = static fn(array $row) => $row["{$prefix}TotalResponses"] === 0 ? null
                : ($row["{$prefix}Rsps6"] + $row["{$prefix}Rsps7"]) / $row["{$prefix}TotalResponses"];
            $changed['slow'] = Field::number('slow', "Over $limit ms", $slow, Format::part(...), 'part of all')
                ->bar($slow);
            return $changed;
        };
    }

    /** A column of milliseconds, empty where nothing was answered. */
    private function time(string $name, string $heading, string $prefix): Field
    {
        return Field::number(
            $name,
            $heading,
            static fn(array $row) => $row["{$prefix}TotalResponses"] === 0 ? null : $row[$name],
            self::milliseconds(...),
            "$name: ms",
        );
    }

    private static function milliseconds(int|float $time): string
    {
        return $time >= 10000 ? number_format($time / 1000, 1) . ' s' : number_format($time) . ' ms';
    }

    /** @param array<string, mixed> $row of artSummaryTable */
    private function name(array $row): string
    {
        $path = (string) $this->visit->probe()->protocols()->path($row['protocolDirLocalIndex']);
        // The application says enough of what is below it.
        $protocol = substr((string) strrchr(".$path", '.'), 1);
        return Address::text($row['artSummaryServerAddress']) . ($protocol === '' ? '' : " ($protocol)");
    }

    /**
     * What all servers together did, read once and without keeping more rows than are told of.
     *
     * @return array{servers: int, responses: int, time: int, timeouts: int, ranges: list<int>,
     *     slowest: array<string, mixed>|null, busiest: list<array<string, mixed>>}
     */
    private function sums(): array
    {
        if ($this->sums !== null) {
            return $this->sums;
        }
        $sums = ['servers' => 0, 'responses' => 0, 'time' => 0, 'timeouts' => 0,
            'ranges' => array_fill(0, self::RANGES, 0), 'slowest' => null, 'busiest' => []];
        // One slow answer says little of a server, unless there are no others.
        $slowness = static fn(array $row) => [
            $row['artSummaryTotalResponses'] >= self::OFTEN, $row['artSummaryAvgRspTime'],
        ];
        $table = $this->visit->probe()->table('artSummaryTable', control: $this->control()['artControlIndex']);
        foreach ($table as $row) {
            $sums['servers']++;
            $sums['timeouts'] += $row['artSummaryTimeouts'];
            if ($row['artSummaryTotalResponses'] === 0) {
                continue;
            }
            $sums['responses'] += $row['artSummaryTotalResponses'];
            $sums['time'] += $row['artSummaryAvgRspTime'] * $row['artSummaryTotalResponses'];
            foreach (array_keys($sums['ranges']) as $range) {
                $sums['ranges'][$range] += $row['artSummaryRsps' . $range + 1];
            }
            if ($sums['slowest'] === null || $slowness($row) > $slowness($sums['slowest'])) {
                $sums['slowest'] = $row;
            }
            $sums['busiest'][] = $row;
            if (count($sums['busiest']) >= 10 * self::SERVERS) {
                $sums['busiest'] = self::busiest($sums['busiest']);
            }
        }
        $sums['busiest'] = self::busiest($sums['busiest']);
        return $this->sums = $sums;
    }

    /**
     * @param list<array<string, mixed>> $rows
     * @return list<array<string, mixed>>
     */
    private static function busiest(array $rows): array
    {
        usort($rows, static fn(array $one, array $other) =>
            $other['artSummaryTotalResponses'] <=> $one['artSummaryTotalResponses']);
        return array_slice($rows, 0, self::SERVERS);
    }

    /**
     * The report that is shown: of those that go on, the one that has gone on for longest. It is only read; an agent
     * without any gets one.
     *
     * @return array<string, mixed> a row of artControlTable
     */
    private function control(): array
    {
        if ($this->control === null) {
            $interface = $this->visit->interface()->index;
            $table = $this->visit->probe()->table('artControlTable');
            foreach ($table as $row) {
                if (
                    $row['artControlDataSource'] === $interface && $row['artControlTimeRemaining'] === 0
                    && $row['artControlStatus'] === RowStatus::valid->value
                    && $row['artControlDuration'] >= ($this->control['artControlDuration'] ?? 0)
                ) {
                    $this->control = $row;
                }
            }
            $this->control ??= $table->get(artControlIndex: $this->visit->needs(
                static fn(ControlRows $rows) => $rows->responseTimes($interface),
            )->index) ?? throw new BadArgument('The report has gone meanwhile. Load the page again.');
        }
        return $this->control;
    }
}
