<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema\Tables;

use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Reader;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Writer;

/** Hosts and conversations by network address and protocol (RFC 2021). */
final class HigherLayer
{
    private const RFC_2021 = 'RFC 2021';

    /** @return list<TableSchema> */
    public static function tables(): array
    {
        return [
            self::control('hlHostControl', 'rmon_hlhost_ctl', 'nlHost', 'hosts'),
            self::networkHost(),
            self::applicationHost(),
            self::control('hlMatrixControl', 'rmon_hlmatrix_ctl', 'nlMatrix', 'conversations'),
            self::networkMatrix('SD', 'by source', ['Source', 'Dest']),
            self::networkMatrix('DS', 'by destination', ['Dest', 'Source']),
            self::applicationMatrix('SD', 'by source', ['Source', 'Dest']),
            self::applicationMatrix('DS', 'by destination', ['Dest', 'Source']),
        ];
    }

    private static function control(string $prefix, string $functions, string $group, string $what): TableSchema
    {
        $columns = [Column::index("{$prefix}Index"), Column::netInterface("{$prefix}DataSource")];
        foreach (["{$prefix}Nl", "{$prefix}Al"] as $layer) {
            $columns = [
                ...$columns,
                ...Column::counters32('packets', "{$layer}DroppedFrames"),
                ...Column::counters32('rows', "{$layer}Inserts", "{$layer}Deletes"),
                Column::integer("{$layer}MaxDesiredEntries", 'rows')->signed(),
            ];
        }
        return new TableSchema(
            name: "{$prefix}Table",
            title: "which interfaces $what are counted on by network address",
            group: $group,
            rfc: self::RFC_2021,
            keys: [Key::index("{$prefix}Index")],
            columns: [...$columns, Column::text("{$prefix}Owner"), Column::status("{$prefix}Status")],
            reader: Reader::rows($functions),
            writer: Writer::set(
                "{$functions}_set",
                "{$prefix}Index",
                "{$prefix}DataSource",
                "{$prefix}NlMaxDesiredEntries",
                "{$prefix}AlMaxDesiredEntries",
                "{$prefix}Owner",
                "{$prefix}Status",
            ),
            defaults: ["{$prefix}NlMaxDesiredEntries" => -1, "{$prefix}AlMaxDesiredEntries" => -1],
        );
    }

    private static function networkHost(): TableSchema
    {
        return new TableSchema(
            name: 'nlHostTable',
            title: 'what each host sent and received, by network address',
            group: 'nlHost',
            rfc: self::RFC_2021,
            keys: [
                Key::control('hlHostControlIndex', 'hlHostControlTable'),
                Key::mark('nlHostTimeMark'),
                Key::protocol('protocolDirLocalIndex'),
                Key::address('nlHostAddress'),
            ],
            columns: [
                Column::ticks('nlHostTimeMark'),
                Column::address('nlHostAddress'),
                ...Column::counters64('packets', 'nlHostInPkts', 'nlHostOutPkts'),
                ...Column::counters64('octets', 'nlHostInOctets', 'nlHostOutOctets'),
                ...Column::counters64('packets', 'nlHostOutMacNonUnicastPkts'),
                Column::ticks('nlHostCreateTime'),
                Column::index('hlHostControlIndex'),
                Column::protocol('protocolDirLocalIndex'),
            ],
            reader: Reader::pages('rmon_nlhost'),
        );
    }

    private static function applicationHost(): TableSchema
    {
        return new TableSchema(
            name: 'alHostTable',
            title: 'what each host sent and received, by protocol',
            group: 'alHost',
            rfc: self::RFC_2021,
            keys: [
                Key::control('hlHostControlIndex', 'hlHostControlTable'),
                Key::mark('alHostTimeMark'),
                Key::protocol('protocolDirLocalIndex'),
                Key::address('nlHostAddress'),
                Key::protocol('protocolDirLocalIndex2'),
            ],
            columns: [
                Column::ticks('alHostTimeMark'),
                Column::address('nlHostAddress'),
                ...Column::counters64('packets', 'alHostInPkts', 'alHostOutPkts'),
                ...Column::counters64('octets', 'alHostInOctets', 'alHostOutOctets'),
                Column::ticks('alHostCreateTime'),
                Column::index('hlHostControlIndex'),
                Column::protocol('protocolDirLocalIndex'),
                Column::protocol('protocolDirLocalIndex2')->object('protocolDirLocalIndex'),
            ],
            reader: Reader::pages('rmon_alhost'),
        );
    }

    /** @param list<string> $order which address rows are sorted by first */
    private static function networkMatrix(string $view, string $by, array $order): TableSchema
    {
        return self::matrix("nlMatrix$view", "nlMatrix$view", "conversations of hosts, $by", $order);
    }

    /** @param list<string> $order which address rows are sorted by first */
    private static function applicationMatrix(string $view, string $by, array $order): TableSchema
    {
        return self::matrix("alMatrix$view", "nlMatrix$view", "conversations of hosts by protocol, $by", $order);
    }

    /** @param list<string> $order */
    private static function matrix(string $prefix, string $ends, string $title, array $order): TableSchema
    {
        $addresses = array_map(static fn(string $end) => "$ends{$end}Address", $order);
        $application = $prefix !== $ends;
        return new TableSchema(
            name: "{$prefix}Table",
            title: $title,
            group: $application ? 'alMatrix' : 'nlMatrix',
            rfc: self::RFC_2021,
            keys: [
                Key::control('hlMatrixControlIndex', 'hlMatrixControlTable'),
                Key::mark("{$prefix}TimeMark"),
                Key::protocol('protocolDirLocalIndex'),
                Key::address("{$ends}SourceAddress"),
                Key::address("{$ends}DestAddress"),
                ...($application ? [Key::protocol('protocolDirLocalIndex2')] : []),
            ],
            columns: [
                Column::ticks("{$prefix}TimeMark"),
                Column::address("{$ends}SourceAddress"),
                Column::address("{$ends}DestAddress"),
                ...Column::counters64('packets', "{$prefix}Pkts"),
                ...Column::counters64('octets', "{$prefix}Octets"),
                Column::ticks("{$prefix}CreateTime"),
                Column::index('hlMatrixControlIndex'),
                Column::protocol('protocolDirLocalIndex'),
                ...($application
                    ? [Column::protocol('protocolDirLocalIndex2')->object('protocolDirLocalIndex')]
                    : []),
            ],
            reader: Reader::pages('rmon_' . strtolower(substr($prefix, 0, -2) . '_' . substr($prefix, -2))),
            order: [
                'hlMatrixControlIndex',
                'protocolDirLocalIndex',
                ...$addresses,
                ...($application ? ['protocolDirLocalIndex2'] : []),
            ],
        );
    }
}
