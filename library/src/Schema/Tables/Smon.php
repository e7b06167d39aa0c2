<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Writer;

/** Traffic by VLAN and by user priority (RFC 2613). */
final class Smon
{
    private const RFC_2613 = 'RFC 2613';

    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [
            self::control('smonVlanStatsControl', 'rmon_vlan_ctl', 'smonVlan', 'VLANs'),
            self::vlan(),
            self::control('smonPrioStatsControl', 'rmon_prio_ctl', 'smonPrio', 'priorities'),
            self::priority(),
        ];
    }

    private static function control(string $prefix, string $functions, string $group, string $what): TableSchema
    {
        return new TableSchema(
            name: "{$prefix}Table",
            title: "which interfaces $what are counted on",
            group: $group,
            rfc: self::RFC_2613,
            keys: [Key::index("{$prefix}Index")],
            columns: [
                Column::index("{$prefix}Index"),
                Column::netInterface("{$prefix}DataSource"),
                Column::ticks("{$prefix}CreateTime"),
                Column::text("{$prefix}Owner"),
                Column::status("{$prefix}Status"),
            ],
            reader: Reader::rows($functions),
            writer: Writer::set(
                "{$functions}_set",
                "{$prefix}Index",
                "{$prefix}DataSource",
                "{$prefix}Owner",
                "{$prefix}Status",
            ),
        );
    }

    private static function vlan(): TableSchema
    {
        return new TableSchema(
            name: 'smonVlanIdStatsTable',
            title: 'traffic of each VLAN',
            group: 'smonVlan',
            rfc: self::RFC_2613,
            keys: [
                Key::control('smonVlanStatsControlIndex', 'smonVlanStatsControlTable'),
                Key::number('smonVlanIdStatsId'),
            ],
            columns: [
                Column::index('smonVlanIdStatsId'),
                ...Column::counters64('packets', 'smonVlanIdStatsTotalPkts'),
                ...Column::counters64('octets', 'smonVlanIdStatsTotalOctets'),
                ...Column::counters64('packets', 'smonVlanIdStatsNUcastPkts'),
                ...Column::counters64('octets', 'smonVlanIdStatsNUcastOctets'),
                Column::ticks('smonVlanIdStatsCreateTime'),
                Column::index('smonVlanStatsControlIndex'),
            ],
            reader: Reader::rows('rmon_vlan'),
        );
    }

    private static function priority(): TableSchema
    {
        return new TableSchema(
            name: 'smonPrioStatsTable',
            title: 'traffic of each user priority',
            group: 'smonPrio',
            rfc: self::RFC_2613,
            keys: [
                Key::control('smonPrioStatsControlIndex', 'smonPrioStatsControlTable'),
                Key::number('smonPrioStatsId'),
            ],
            columns: [
                Column::index('smonPrioStatsId'),
                ...Column::counters64('packets', 'smonPrioStatsPkts'),
                ...Column::counters64('octets', 'smonPrioStatsOctets'),
                Column::index('smonPrioStatsControlIndex'),
            ],
            reader: Reader::rows('rmon_prio'),
        );
    }
}
