<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Table;

use Rmon\Schema\TableSchema;

/** The order in which a table's rows stand: that of their keys. */
final class KeyOrder
{
    public function __construct(private readonly TableSchema $schema)
    {
    }

    /**
     * How many rows of a page stand in the order of their keys, each behind the one before it.
     *
     * Looks at columns: leading keys are the same in most pages, which the engine compares as a whole.
     *
     * @param list<array<string, mixed>> $rows
     */
    public function orderly(array $rows): int
    {
        $count = count($rows);
        $columns = [];
        foreach ($this->schema->order as $name) {
            $column = array_column($rows, $name);
            if ($this->schema->keys[$name]->type->isText()) {
                $column = array_map(self::sortable(...), $column);
            }
            if ($columns !== [] || $column !== array_fill(0, $count, $column[0])) {
                $columns[] = $column;
            }
        }
        if ($columns === []) {
            return 1;
        }
        [$column] = $columns;
        if (count($columns) > 1) {
            // A list compares as its elements do, one after another.
            $column = array_map(null, ...$columns);
        }
        $before = -INF; // which every number and every list is behind
        foreach ($column as $place => $value) {
            if ($value <= $before) {
                return $place;
            }
            $before = $value;
        }
        return $count;
    }

    /**
     * On which side of another one a row stands, by the keys that both have.
     *
     * @param array<string, mixed> $row
     * @param array<string, mixed> $other a row, or the first of its keys
     */
    public function side(array $row, array $other): int
    {
        foreach ($this->schema->order as $name) {
            if (!isset($other[$name])) {
                return 0;
            }
            $side = self::sortable($row[$name]) <=> self::sortable($other[$name]);
            if ($side !== 0) {
                return $side;
            }
        }
        return 0;
    }

    /** The value before one, of the same length; null for the first one. */
    public static function before(mixed $value): mixed
    {
        if (is_int($value)) {
            return $value - 1;
        }
        if (is_array($value)) {
            for ($at = count($value) - 1; $at >= 0; $at--) {
                if ($value[$at] > 0) {
                    $value[$at]--;
                    return $value;
                }
                $value[$at] = 255;
            }
        }
        return null;
    }

    /**
     * A key's value as PHP compares it rightly: numbers by size, lists of octets by length and then one by one. Texts
     * become such lists; compared as they are, "1e1" would be "10".
     *
     * @return int|list<int>
     */
    private static function sortable(mixed $value): int|array
    {
        return is_string($value) ? ($value === '' ? [] : array_values(unpack('C*', $value))) : $value;
    }
}
