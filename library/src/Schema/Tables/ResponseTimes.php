<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Writer;

/** Response times of applications. */
final class ResponseTimes
{
    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [self::control(), self::report(), self::summary()];
    }

    private static function control(): TableSchema
    {
        $ranges = array_map(static fn(int $range) => "artControlRspTime$range", range(1, 6));
        return new TableSchema(
            name: 'artControlTable',
            title: 'which interfaces response times are measured on, and the ranges in which they count',
            group: 'art',
            rfc: null,
            keys: [Key::index('artControlIndex')],
            columns: [
                Column::index('artControlIndex'),
                Column::netInterface('artControlDataSource'),
                ...Column::gauges('s', 'artControlTimeRemaining', 'artControlDuration'),
                ...Column::gauges('ms', ...$ranges),
                ...Column::gauges('ms', 'artControlRspTimeout'),
                Column::ticks('artControlRptStartTime'),
                Column::integer('artControlRequestedSize', 'rows')->signed(),
                Column::integer('artControlGrantedSize', 'rows')->signed(),
                ...Column::counters32('reports', 'artControlGeneratedRpts'),
                ...Column::counters32('packets', 'artControlDroppedFrames'),
                Column::text('artControlOwner'),
                Column::status('artControlStatus'),
            ],
            reader: Reader::rows('rmon_art_ctl'),
            writer: Writer::set(
                'rmon_art_ctl_set',
                'artControlIndex',
                'artControlDataSource',
                'artControlTimeRemaining',
                ...[...$ranges, 'artControlRspTimeout', 'artControlRequestedSize'],
                ...['artControlOwner', 'artControlStatus'],
            ),
            defaults: [
                'artControlTimeRemaining' => 0,
                ...array_combine($ranges, [10, 20, 50, 100, 200, 500]),
                'artControlRspTimeout' => 1000,
                'artControlRequestedSize' => -1,
            ],
        );
    }

    private static function report(): TableSchema
    {
        return new TableSchema(
            name: 'artReportTable',
            title: 'response times of each server to each client, by protocol',
            group: 'art',
            rfc: null,
            keys: [
                Key::control('artControlIndex', 'artControlTable'),
                Key::protocol('protocolDirLocalIndex'),
                Key::address('artServerAddress'),
                Key::address('artClientAddress'),
            ],
            columns: [
                Column::address('artServerAddress'),
                Column::address('artClientAddress'),
                ...self::times('art'),
                Column::index('artControlIndex'),
                Column::protocol('protocolDirLocalIndex'),
            ],
            reader: Reader::pages('rmon_art_rpt'),
        );
    }

    private static function summary(): TableSchema
    {
        return new TableSchema(
            name: 'artSummaryTable',
            title: 'response times of each server, by protocol',
            group: 'art',
            rfc: null,
            keys: [
                Key::control('artControlIndex', 'artControlTable'),
                Key::protocol('protocolDirLocalIndex'),
                Key::address('artSummaryServerAddress'),
            ],
            columns: [
                Column::address('artSummaryServerAddress'),
                ...Column::gauges('clients', 'artSummaryClients'),
                ...self::times('artSummary'),
                Column::index('artControlIndex'),
                Column::protocol('protocolDirLocalIndex'),
            ],
            reader: Reader::pages('rmon_art_sum'),
        );
    }

    /** @return list<Column> */
    private static function times(string $prefix): array
    {
        return [
            ...Column::gauges('ms', "{$prefix}AvgRspTime", "{$prefix}MinRspTime", "{$prefix}MaxRspTime"),
            ...Column::counters32('responses', "{$prefix}TotalResponses"),
            ...Column::counters32(
                'responses',
                ...array_map(static fn(int $range) => "{$prefix}Rsps$range", range(1, 7)),
            ),
            ...Column::counters64('octets', "{$prefix}ClientOctets", "{$prefix}ServerOctets"),
            ...Column::counters32('requests', "{$prefix}Retries", "{$prefix}Timeouts"),
        ];
    }
}
