<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use Rmon\Exporter\Text\Number;
use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;

/**
 * A histogram out of the columns that count events by range, whose bounds stand in the control row: one bound less than
 * there are ranges. An event at a bound belongs to the range below it.
 */
final class Buckets
{
    /**
     * @param string $name                   what the family is called behind the table's name
     * @param non-empty-list<Column> $counts of each range
     * @param list<Column> $bounds           of the control row
     */
    private function __construct(
        public readonly string $name,
        public readonly array $counts,
        public readonly array $bounds,
    ) {
    }

    /**
     * @param string $text "NAME COUNTS BOUNDS", the names of columns without the numbers 1, 2, ... behind them
     * @throws ConfigurationError
     */
    public static function of(string $title, TableSchema $schema, TableSchema $control, string $text): self
    {
        [$name, $counts, $bounds] = preg_split('/\s+/', trim($text)) + ['', '', ''];
        $columns = self::numbered($schema, $counts);
        $limits = self::numbered($control, $bounds);
        if (!preg_match('/^[a-z_]+$/D', $name) || count($columns) < 2 || count($limits) !== count($columns) - 1) {
            throw new ConfigurationError("[$title]: histogram is a name, the columns that count, and their bounds.");
        }
        return new self($name, $columns, $limits);
    }

    /**
     * By bound, how many events were no larger.
     *
     * @param array<string, mixed> $row
     * @param array<string, mixed> $control
     * @return array<string, int>|null null when the bounds don't grow, so that it is no histogram
     */
    public function value(array $row, array $control): ?array
    {
        $value = [];
        $sum = 0;
        $before = -INF;
        foreach ($this->counts as $at => $column) {
            $sum += (int) $row[$column->name];
            $bound = isset($this->bounds[$at])
                ? Names::scaled($this->bounds[$at], $control[$this->bounds[$at]->name])
                : INF;
            if ($bound <= $before) {
                return null;
            }
            $before = $bound;
            $value[Number::bound($bound)] = $sum;
        }
        return $value;
    }

    /** @return list<Column> */
    private static function numbered(TableSchema $schema, string $prefix): array
    {
        $columns = [];
        while (isset($schema->columns[$prefix . (count($columns) + 1)])) {
            $columns[] = $schema->columns[$prefix . (count($columns) + 1)];
        }
        return $columns;
    }
}
