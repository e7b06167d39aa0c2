<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use Closure;
use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;
use Rmon\Table;
use Rmon\Values;

/** Which rows of a table somebody wants: COLUMN=VALUE and its like. */
final class Conditions
{
    private const FORM = '/^([A-Za-z_][\w.]*)(!=|<=|>=|=|<|>|~)(.*)$/sD';

    /**
     * @param Table $table                           narrowed to the keys that were given
     * @param list<Closure(array): bool> $tests      what its rows have to pass besides
     */
    private function __construct(public readonly Table $table, private readonly array $tests)
    {
    }

    /** @param list<string> $conditions */
    public static function on(Table $table, array $conditions): self
    {
        $schema = $table->schema;
        $values = $table->probe->values();
        $keys = [];
        $tests = [];
        foreach ($conditions as $condition) {
            [$name, $operator, $value] = self::parts($condition);
            $name = self::column($schema, $name);
            if ($operator === '=' && isset($schema->keys[$name]) && !isset($keys[$name])) {
                $keys[$name] = $value;
            } else {
                $tests[] = self::test($schema->columns[$name], $operator, $value, $values);
            }
        }
        return new self($keys === [] ? $table : $table->where(...$keys), $tests);
    }

    /**
     * Values by the names of columns: COLUMN=VALUE and nothing else.
     *
     * @param list<string> $given
     * @param list<string> $columns the columns that may be given
     * @return array<string, string>
     */
    public static function values(TableSchema $schema, array $given, array $columns): array
    {
        $values = [];
        foreach ($given as $one) {
            [$name, $operator, $value] = self::parts($one);
            if ($operator !== '=') {
                throw new UsageError("\"$one\" doesn't read COLUMN=VALUE.");
            }
            $name = $name === 'control' && $schema->control() !== null
                ? $name
                : Names::resolve($schema, $name, $columns);
            if (isset($values[$name])) {
                throw new UsageError("$name is given twice.");
            }
            $values[$name] = $value;
        }
        return $values;
    }

    /** Whether all rows of the table are wanted. */
    public function isNone(): bool
    {
        return $this->tests === [];
    }

    /** @param array<string, mixed> $row */
    public function hold(array $row): bool
    {
        foreach ($this->tests as $test) {
            if (!$test($row)) {
                return false;
            }
        }
        return true;
    }

    /** @return array{string, string, string} */
    private static function parts(string $condition): array
    {
        if (!preg_match(self::FORM, $condition, $parts)) {
            throw new UsageError(
                "\"$condition\" doesn't read COLUMN=VALUE (or !=, <, <=, >, >=, ~ for a part of a text).",
            );
        }
        return [$parts[1], $parts[2], $parts[3]];
    }

    private static function column(TableSchema $schema, string $name): string
    {
        if ($name === 'control') {
            foreach ($schema->keys as $key) {
                if ($key->of !== null) {
                    return $key->name;
                }
            }
        }
        return Names::resolve($schema, $name, array_keys($schema->columns));
    }

    /** @return Closure(array): bool */
    private static function test(Column $column, string $operator, string $value, Values $values): Closure
    {
        $name = $column->name;
        if ($operator === '~') {
            return static fn(array $row) => stripos($values->text($column, $row[$name] ?? null), $value) !== false;
        }
        if ($operator === '=' || $operator === '!=') {
            $wanted = $values->parse($column, $value);
            $equal = static fn(array $row) => ($row[$name] ?? null) == $wanted;
            return $operator === '=' ? $equal : static fn(array $row) => !$equal($row);
        }
        if (!is_numeric($value)) {
            throw new UsageError("$name $operator \"$value\": only numbers are smaller or larger.");
        }
        $limit = $value + 0;
        $order = match ($operator) {
            '<' => static fn(mixed $cell) => $cell < $limit,
            '<=' => static fn(mixed $cell) => $cell <= $limit,
            '>' => static fn(mixed $cell) => $cell > $limit,
            '>=' => static fn(mixed $cell) => $cell >= $limit,
        };
        return static fn(array $row) => is_numeric($row[$name] ?? null) && $order($row[$name]);
    }
}
