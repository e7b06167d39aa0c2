<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use Rmon\Exporter\Text\Family;
use Rmon\Exporter\Text\MetricType;
use Rmon\RowStatus;
use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;

/**
 * What the library's description of a table says, in the words of Prometheus: names, base units, types and help. No
 * metric of a table is described anywhere else.
 */
final class Names
{
    private const PREFIX = 'rmon_';

    /** Words of MIBs, in the usual ones; the longest that fits is taken. */
    private const WORDS = [
        'NUcast' => 'Nonunicast', 'Ucast' => 'Unicast', 'HC' => '', 'Pkts' => 'Packets', 'Octets' => 'Bytes',
        'TotalPkts' => 'Packets', 'TotalOctets' => 'Bytes', 'Rsps' => 'Responses', 'Rsp' => 'Response',
        // "summary" is the word for another type of metric.
        'Rpts' => 'Reports', 'artSummary' => 'art',
    ];

    /** Base units, and how many of the column's make one. */
    private const UNITS = [
        'octets' => ['bytes', 1], 's' => ['seconds', 1], 'ms' => ['seconds', 1000],
        'bit/s' => ['bytes_per_second', 8],
    ];

    /** What names of points in time end with, whose unit is the second. */
    private const TIME = 'timestamp_seconds';

    /** Whether a column has numbers that are worth a family. */
    public static function isMeasured(Column $column): bool
    {
        return match ($column->type) {
            Type::Index, Type::NetInterface, Type::Protocol, Type::Flags, Type::Rows => false,
            default => !$column->type->isText() && !$column->type->isOctets(),
        };
    }

    public static function family(TableSchema $schema, Column $column): Family
    {
        $words = $column->type === Type::Status
            ? array_column(RowStatus::cases(), 'name', 'value')
            : $column->values;
        $about = $column->object ?? $column->name;
        if ($words !== []) {
            $meanings = array_map(static fn($value, $word) => "$value $word", array_keys($words), $words);
            $about .= ' (' . implode(', ', $meanings) . ')';
        }
        return self::made($schema, self::object($schema, $column), $column, $about);
    }

    public static function splitFamily(TableSchema $schema, Split $split): Family
    {
        $column = current($split->members);
        $objects = array_map(static fn(Column $member) => $member->object ?? $member->name, $split->members);
        $about = implode(', ', $objects) . " by $split->label";
        return self::made($schema, self::stem($schema) . "_$split->name", $column, $about);
    }

    public static function histogramFamily(TableSchema $schema, Buckets $buckets): Family
    {
        $bound = $buckets->bounds[0];
        $unit = self::unit($bound);
        $about = implode(', ', array_column($buckets->counts, 'name'));
        $name = self::withUnit(self::PREFIX . self::snake(self::stem($schema)) . "_$buckets->name", $unit);
        return new Family($name, MetricType::Histogram, self::help($schema, $about, $unit), $unit);
    }

    public static function infoFamily(TableSchema $schema): Family
    {
        return new Family(
            self::PREFIX . self::snake(self::stem($schema)),
            MetricType::Info,
            self::help($schema, 'Texts of a row', ''),
        );
    }

    /** A row's value in the base unit. */
    public static function scaled(Column $column, int|float $value): int|float
    {
        $parts = match ($column->type) {
            Type::Ticks => 100,
            Type::Utilization => 10000,
            default => self::UNITS[$column->unit][1] ?? 1,
        };
        return $parts === 1 ? $value : $value / $parts;
    }

    /** Whether values are points in time on the agent's clock. */
    public static function isTime(Column $column): bool
    {
        return $column->type === Type::Ticks && $column->name !== 'sysUpTime';
    }

    /** "ifInOctets" as "if_in_bytes". */
    public static function snake(string $name): string
    {
        $parted = preg_replace('/(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])/', '_', strtr($name, self::WORDS));
        return trim(preg_replace('/[^a-z0-9]+/', '_', strtolower($parted)), '_');
    }

    private static function made(TableSchema $schema, string $object, Column $column, string $about): Family
    {
        $type = $column->type->isCounter() ? MetricType::Counter : MetricType::Gauge;
        $unit = self::unit($column);
        $name = preg_replace('/_(total|count|sum)$/D', '', self::PREFIX . self::snake($object));
        $help = self::help($schema, $about, $unit);
        return new Family(self::withUnit($name, $unit), $type, $help, $unit === self::TIME ? 'seconds' : $unit);
    }

    private static function unit(Column $column): string
    {
        return match (true) {
            self::isTime($column) => self::TIME,
            $column->type === Type::Ticks => 'seconds',
            $column->type === Type::Utilization => 'ratio',
            default => self::UNITS[$column->unit][0] ?? '',
        };
    }

    private static function withUnit(string $name, string $unit): string
    {
        return $unit === '' || str_ends_with($name, "_$unit") ? $name : "{$name}_$unit";
    }

    /** The object's name, or where that says nothing of its table, both. */
    private static function object(TableSchema $schema, Column $column): string
    {
        $tells = $column->object !== null || $schema->heading($column->name) !== $column->name;
        return $tells ? $column->object ?? $column->name : self::stem($schema) . ucfirst($column->name);
    }

    private static function stem(TableSchema $schema): string
    {
        return preg_replace('/Table$/D', '', $schema->name);
    }

    private static function help(TableSchema $schema, string $about, string $unit): string
    {
        $in = $unit === '' ? '' : ', in ' . strtr($unit, [self::TIME => 'seconds since 1970', '_' => ' ']);
        $rfc = $schema->rfc === null ? '' : " ($schema->rfc)";
        return "$about$rfc$in. The table: $schema->title.";
    }
}
