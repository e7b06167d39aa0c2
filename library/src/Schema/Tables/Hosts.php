<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Writer;

/** Hosts, Top-N reports and the matrix, by MAC address (RFC 2819). */
final class Hosts
{
    private const RFC_2819 = 'RFC 2819';

    private const RATE_BASES = [
        1 => 'hostTopNInPkts', 2 => 'hostTopNOutPkts', 3 => 'hostTopNInOctets', 4 => 'hostTopNOutOctets',
        5 => 'hostTopNOutErrors', 6 => 'hostTopNOutBroadcastPkts', 7 => 'hostTopNOutMulticastPkts',
    ];

    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [
            self::hostControl(),
            self::host(),
            self::hostTime(),
            self::hostTopNControl(),
            self::hostTopN(),
            self::matrixControl(),
            self::matrix('SD', 'conversations by MAC address, by source', ['Source', 'Dest']),
            self::matrix('DS', 'conversations by MAC address, by destination', ['Dest', 'Source']),
        ];
    }

    private static function hostControl(): TableSchema
    {
        return new TableSchema(
            name: 'hostControlTable',
            title: 'which interfaces hosts are counted on by MAC address',
            group: 'hosts',
            rfc: self::RFC_2819,
            keys: [Key::index('hostControlIndex')],
            columns: [
                Column::index('hostControlIndex'),
                Column::netInterface('hostControlDataSource'),
                ...Column::gauges('rows', 'hostControlTableSize'),
                Column::ticks('hostControlLastDeleteTime'),
                Column::text('hostControlOwner'),
                Column::status('hostControlStatus'),
            ],
            reader: Reader::rows('rmon_host_ctl'),
            writer: Writer::set(
                'rmon_host_ctl_set',
                'hostControlIndex',
                'hostControlDataSource',
                'hostControlOwner',
                'hostControlStatus',
            ),
        );
    }

    private static function host(): TableSchema
    {
        return new TableSchema(
            name: 'hostTable',
            title: 'what each host sent and received, by MAC address',
            group: 'hosts',
            rfc: self::RFC_2819,
            keys: [Key::control('hostIndex', 'hostControlTable'), Key::mac('hostAddress')],
            columns: [
                Column::mac('hostAddress'),
                Column::index('hostCreationOrder'),
                Column::index('hostIndex'),
                ...Column::counters64('packets', 'hostInPkts', 'hostOutPkts'),
                ...Column::counters64('octets', 'hostInOctets', 'hostOutOctets'),
                ...Column::counters64('packets', 'hostOutErrors', 'hostOutBroadcastPkts', 'hostOutMulticastPkts'),
            ],
            reader: Reader::pages('rmon_host'),
        );
    }

    private static function hostTime(): TableSchema
    {
        return new TableSchema(
            name: 'hostTimeTable',
            title: 'what each host sent and received, in the order in which they were seen',
            group: 'hosts',
            rfc: self::RFC_2819,
            keys: [Key::control('hostTimeIndex', 'hostControlTable'), Key::index('hostTimeCreationOrder')],
            columns: [
                Column::mac('hostTimeAddress'),
                Column::index('hostTimeCreationOrder'),
                Column::index('hostTimeIndex'),
                ...Column::counters64('packets', 'hostTimeInPkts', 'hostTimeOutPkts'),
                ...Column::counters64('octets', 'hostTimeInOctets', 'hostTimeOutOctets'),
                ...Column::counters64('packets', 'hostTimeOutErrors', 'hostTimeOutBroadcastPkts'),
                ...Column::counters64('packets', 'hostTimeOutMulticastPkts'),
            ],
            reader: Reader::pages('rmon_hosttime'),
        );
    }

    private static function hostTopNControl(): TableSchema
    {
        return new TableSchema(
            name: 'hostTopNControlTable',
            title: 'reports of the hosts that have most of something',
            group: 'hostTopN',
            rfc: self::RFC_2819,
            keys: [Key::index('hostTopNControlIndex')],
            columns: [
                Column::index('hostTopNControlIndex'),
                Column::index('hostTopNHostIndex'),
                Column::named('hostTopNRateBase', self::RATE_BASES),
                ...Column::gauges('s', 'hostTopNTimeRemaining', 'hostTopNDuration'),
                ...Column::integers('rows', 'hostTopNRequestedSize', 'hostTopNGrantedSize'),
                Column::ticks('hostTopNStartTime'),
                Column::text('hostTopNOwner'),
                Column::status('hostTopNStatus'),
            ],
            reader: Reader::rows('rmon_hosttopn_ctl'),
            writer: Writer::set(
                'rmon_hosttopn_ctl_set',
                'hostTopNControlIndex',
                'hostTopNHostIndex',
                'hostTopNRateBase',
                'hostTopNTimeRemaining',
                'hostTopNRequestedSize',
                'hostTopNOwner',
                'hostTopNStatus',
            ),
            defaults: ['hostTopNTimeRemaining' => 0, 'hostTopNRequestedSize' => 10],
        );
    }

    private static function hostTopN(): TableSchema
    {
        return new TableSchema(
            name: 'hostTopNTable',
            title: 'the places of a report, the first one first',
            group: 'hostTopN',
            rfc: self::RFC_2819,
            keys: [Key::control('hostTopNReport', 'hostTopNControlTable'), Key::index('hostTopNIndex')],
            columns: [
                Column::index('hostTopNReport'),
                Column::index('hostTopNIndex'),
                Column::mac('hostTopNAddress'),
                ...Column::gauges('', 'hostTopNRate'),
            ],
            reader: Reader::pages('rmon_hosttopn'),
        );
    }

    private static function matrixControl(): TableSchema
    {
        return new TableSchema(
            name: 'matrixControlTable',
            title: 'which interfaces conversations are counted on by MAC address',
            group: 'matrix',
            rfc: self::RFC_2819,
            keys: [Key::index('matrixControlIndex')],
            columns: [
                Column::index('matrixControlIndex'),
                Column::netInterface('matrixControlDataSource'),
                ...Column::gauges('rows', 'matrixControlTableSize'),
                Column::ticks('matrixControlLastDeleteTime'),
                Column::text('matrixControlOwner'),
                Column::status('matrixControlStatus'),
            ],
            reader: Reader::rows('rmon_matrix_ctl'),
            writer: Writer::set(
                'rmon_matrix_ctl_set',
                'matrixControlIndex',
                'matrixControlDataSource',
                'matrixControlOwner',
                'matrixControlStatus',
            ),
        );
    }

    /** @param list<string> $order which address rows are sorted by first */
    private static function matrix(string $view, string $title, array $order): TableSchema
    {
        $prefix = "matrix$view";
        return new TableSchema(
            name: "{$prefix}Table",
            title: $title,
            group: 'matrix',
            rfc: self::RFC_2819,
            keys: [
                Key::control("{$prefix}Index", 'matrixControlTable'),
                Key::mac("{$prefix}SourceAddress"),
                Key::mac("{$prefix}DestAddress"),
            ],
            columns: [
                Column::mac("{$prefix}SourceAddress"),
                Column::mac("{$prefix}DestAddress"),
                Column::index("{$prefix}Index"),
                ...Column::counters64('packets', "{$prefix}Pkts"),
                ...Column::counters64('octets', "{$prefix}Octets"),
                ...Column::counters64('packets', "{$prefix}Errors"),
            ],
            reader: Reader::pages('rmon_matrix_' . strtolower($view)),
            order: ["{$prefix}Index", ...array_map(static fn(string $end) => "$prefix{$end}Address", $order)],
        );
    }
}
