<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Setter;
use Rmon\Schema\Shape;
use Rmon\Schema\Writer;

/** Traffic by aggregation group, that is by DSCP (RFC 3287). */
final class Dsmon
{
    private const RFC_3287 = 'RFC 3287';

    private const LOCK = [1 => 'true', 2 => 'false'];

    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [
            self::lock(),
            self::aggregationControl(),
            self::aggregationProfile(),
            self::aggregationGroup(),
            self::statsControl(),
            self::stats(),
            self::control('Pdist', 'protocol', 'dsmon_pdistctl'),
            self::distribution(),
            self::control('Host', 'host', 'dsmon_hostctl'),
            self::host(),
            self::control('Matrix', 'conversation', 'dsmon_matrixctl'),
            self::matrix('SD', 'by source', ['Source', 'Dest']),
            self::matrix('DS', 'by destination', ['Dest', 'Source']),
        ];
    }

    private static function lock(): TableSchema
    {
        return new TableSchema(
            name: 'dsmonAggControlLocked',
            title: 'whether profiles are locked, and traffic is counted by them',
            group: 'dsmonAggregation',
            rfc: self::RFC_3287,
            keys: [],
            columns: [Column::named('dsmonAggControlLocked', self::LOCK)],
            reader: Reader::one('dsmon_aggctl_locked', Shape::Number)->quiet(answersNone: false),
            writer: Writer::set('dsmon_aggctl_set_lock', 'dsmonAggControlLocked'),
        );
    }

    private static function aggregationControl(): TableSchema
    {
        return new TableSchema(
            name: 'dsmonAggControlTable',
            title: 'profiles: which DSCP values make up a group',
            group: 'dsmonAggregation',
            rfc: self::RFC_3287,
            keys: [Key::index('dsmonAggControlIndex')],
            columns: [
                Column::index('dsmonAggControlIndex'),
                Column::text('dsmonAggControlDescr')->atMost(64),
                Column::text('dsmonAggControlOwner'),
                Column::status('dsmonAggControlStatus'),
            ],
            reader: Reader::rows('dsmon_aggctl')->quiet(),
            writer: Writer::set(
                'dsmon_aggctl_set',
                'dsmonAggControlIndex',
                'dsmonAggControlOwner',
                'dsmonAggControlDescr',
                'dsmonAggControlStatus',
            ),
            defaults: ['dsmonAggControlDescr' => ''],
        );
    }

    private static function aggregationProfile(): TableSchema
    {
        return new TableSchema(
            name: 'dsmonAggProfileTable',
            title: 'the group of each DSCP value',
            group: 'dsmonAggregation',
            rfc: self::RFC_3287,
            keys: [
                Key::parent('dsmonAggControlIndex', 'dsmonAggControlTable'),
                Key::number('dsmonAggProfileDSCP'),
            ],
            columns: [
                Column::index('dsmonAggControlIndex'),
                Column::index('dsmonAggProfileDSCP'),
                Column::index('dsmonAggGroupIndex'),
            ],
            reader: Reader::one('dsmon_aggprofs_get', Shape::Map)->quiet(),
            writer: Writer::set(
                'dsmon_aggprof_set',
                'dsmonAggControlIndex',
                'dsmonAggProfileDSCP',
                'dsmonAggGroupIndex',
            ),
        );
    }

    private static function aggregationGroup(): TableSchema
    {
        return new TableSchema(
            name: 'dsmonAggGroupTable',
            title: 'names of groups',
            group: 'dsmonAggregation',
            rfc: self::RFC_3287,
            keys: [
                Key::control('dsmonAggControlIndex', 'dsmonAggControlTable'),
                Key::number('dsmonAggGroupIndex'),
            ],
            columns: [
                Column::index('dsmonAggControlIndex'),
                Column::index('dsmonAggGroupIndex'),
                Column::text('dsmonAggGroupDescr')->atMost(64),
            ],
            reader: Reader::rows('dsmon_aggrp')->quiet(),
            writer: new Writer(new Setter(
                'dsmon_aggrp_set',
                'dsmonAggControlIndex',
                'dsmonAggGroupIndex',
                'dsmonAggGroupDescr',
                'dsmonAggGroupStatus',
            )),
            hidden: [Column::status('dsmonAggGroupStatus')],
        );
    }

    private static function statsControl(): TableSchema
    {
        return new TableSchema(
            name: 'dsmonStatsControlTable',
            title: 'which interfaces traffic is counted on by group',
            group: 'dsmonStats',
            rfc: self::RFC_3287,
            keys: [Key::index('dsmonStatsControlIndex')],
            columns: [
                Column::index('dsmonStatsControlIndex'),
                Column::netInterface('dsmonStatsControlDataSource_ifIndex', 'dsmonStatsControlDataSource'),
                Column::index('dsmonStatsControlAggProfile'),
                ...Column::counters32('packets', 'dsmonStatsControlDroppedFrames'),
                Column::text('dsmonStatsControlOwner'),
                Column::status('dsmonStatsControlStatus'),
            ],
            reader: Reader::rows('dsmon_statsctl')->quiet(),
            writer: Writer::set(
                'dsmon_statsctl_set',
                'dsmonStatsControlIndex',
                'dsmonStatsControlDataSource_ifIndex',
                'dsmonStatsControlAggProfile',
                'dsmonStatsControlOwner',
                'dsmonStatsControlStatus',
            ),
        );
    }

    private static function stats(): TableSchema
    {
        return new TableSchema(
            name: 'dsmonStatsTable',
            title: 'traffic of each group, in and out',
            group: 'dsmonStats',
            rfc: self::RFC_3287,
            keys: [
                Key::control('dsmonStatsControlIndex', 'dsmonStatsControlTable'),
                Key::number('dsmonAggGroupIndex'),
            ],
            columns: [
                Column::index('dsmonStatsControlIndex'),
                Column::index('dsmonAggGroupIndex'),
                ...Column::counters64('packets', 'dsmonStatsInHCPkts'),
                ...Column::counters64('octets', 'dsmonStatsInHCOctets'),
                ...Column::counters64('packets', 'dsmonStatsOutHCPkts'),
                ...Column::counters64('octets', 'dsmonStatsOutHCOctets'),
            ],
            reader: Reader::rows('dsmon_stats')->quiet(),
        );
    }

    private static function control(string $what, string $word, string $functions): TableSchema
    {
        $prefix = "dsmon{$what}Ctl";
        return new TableSchema(
            name: "{$prefix}Table",
            title: "which interfaces traffic is counted on by group and $word",
            group: "dsmon$what",
            rfc: self::RFC_3287,
            keys: [Key::index("{$prefix}Index")],
            columns: [
                Column::index("{$prefix}Index"),
                Column::netInterface("{$prefix}DataSource_ifIndex", "{$prefix}DataSource"),
                Column::index("dsmon{$what}AggProfile")->object("{$prefix}AggProfile"),
                Column::counter32("dsmon{$what}DroppedFrames", 'packets')->object("{$prefix}DroppedFrames"),
                ...Column::counters32('rows', "{$prefix}Inserts", "{$prefix}Deletes"),
                Column::text("{$prefix}Owner"),
                Column::status("{$prefix}Status"),
                Column::integer("{$prefix}MaxDesiredEntries", 'rows')->signed(),
            ],
            reader: Reader::rows($functions)->quiet(),
            writer: Writer::set(
                "{$functions}_set",
                "{$prefix}Index",
                "{$prefix}DataSource_ifIndex",
                "dsmon{$what}AggProfile",
                "{$prefix}Owner",
                "{$prefix}Status",
                "{$prefix}MaxDesiredEntries",
            ),
            defaults: ["{$prefix}MaxDesiredEntries" => -1],
        );
    }

    private static function distribution(): TableSchema
    {
        return new TableSchema(
            name: 'dsmonPdistStatsTable',
            title: 'traffic of each protocol in each group',
            group: 'dsmonPdist',
            rfc: self::RFC_3287,
            keys: [
                Key::control('dsmonPdistCtlIndex', 'dsmonPdistCtlTable'),
                Key::mark('dsmonPdistTimeMark'),
                Key::index('dsmonAggGroupIndex'),
                Key::protocol('protocolDirLocalIndex'),
            ],
            columns: [
                Column::index('dsmonPdistCtlIndex'),
                Column::index('dsmonAggGroupIndex'),
                Column::protocol('protocolDirLocalIndex'),
                Column::ticks('dsmonPdistTimeMark'),
                ...Column::counters64('packets', 'dsmonPdistStatsHCPkts'),
                ...Column::counters64('octets', 'dsmonPdistStatsHCOctets'),
            ],
            reader: Reader::rows('dsmon_pdstats')->quiet(),
        );
    }

    private static function host(): TableSchema
    {
        return new TableSchema(
            name: 'dsmonHostTable',
            title: 'what each host sent and received in each group',
            group: 'dsmonHost',
            rfc: self::RFC_3287,
            keys: [
                Key::control('dsmonHostCtlIndex', 'dsmonHostCtlTable'),
                Key::mark('dsmonHostTimeMark'),
                Key::index('dsmonAggGroupIndex'),
                Key::protocol('protocolDirLocalIndex'),
                Key::address('dsmonHostAddress'),
            ],
            columns: [
                Column::index('dsmonHostCtlIndex'),
                Column::index('dsmonAggGroupIndex'),
                Column::protocol('protocolDirLocalIndex'),
                Column::ticks('dsmonHostTimeMark'),
                ...Column::counters64('packets', 'dsmonHostInHCPkts'),
                ...Column::counters64('octets', 'dsmonHostInHCOctets'),
                ...Column::counters64('packets', 'dsmonHostOutHCPkts'),
                ...Column::counters64('octets', 'dsmonHostOutHCOctets'),
                Column::address('dsmonHostAddress'),
            ],
            reader: Reader::rows('dsmon_hoststats')->quiet(),
        );
    }

    /**
     * Both views have the keys of the one by source.
     *
     * @param list<string> $order which address rows are sorted by first
     */
    private static function matrix(string $view, string $by, array $order): TableSchema
    {
        return new TableSchema(
            name: "dsmonMatrix{$view}Table",
            title: "conversations of hosts in each group, $by",
            group: 'dsmonMatrix',
            rfc: self::RFC_3287,
            keys: [
                Key::control('dsmonMatrixCtlIndex', 'dsmonMatrixCtlTable'),
                Key::mark('dsmonMatrixTimeMark'),
                Key::index('dsmonAggGroupIndex'),
                Key::protocol('dsmonMatrixNLIndex'),
                Key::protocol('dsmonMatrixALIndex'),
                Key::address('dsmonMatrixSourceAddress'),
                Key::address('dsmonMatrixDestAddress'),
            ],
            columns: [
                Column::index('dsmonMatrixCtlIndex'),
                Column::index('dsmonAggGroupIndex'),
                Column::ticks('dsmonMatrixTimeMark'),
                Column::protocol('dsmonMatrixNLIndex'),
                Column::protocol('dsmonMatrixALIndex'),
                Column::counter64('dsmonMatrixSDHCPkts', 'packets')->object("dsmonMatrix{$view}HCPkts"),
                Column::counter64('dsmonMatrixSDHCOctets', 'octets')->object("dsmonMatrix{$view}HCOctets"),
                Column::address('dsmonMatrixSourceAddress'),
                Column::address('dsmonMatrixDestAddress'),
            ],
            reader: Reader::rows('dsmon_matrix' . strtolower($view) . 'stats')->quiet(),
            order: [
                'dsmonMatrixCtlIndex',
                'dsmonAggGroupIndex',
                'dsmonMatrixNLIndex',
                ...array_map(static fn(string $end) => "dsmonMatrix{$end}Address", $order),
                'dsmonMatrixALIndex',
            ],
        );
    }
}
