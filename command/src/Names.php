<?php

declare(strict_types=1);

namespace Rmon\Command;

use Rmon\Exception\UnknownName;
use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;

/** Names of columns as people write them, and as headings. */
final class Names
{
    /**
     * The column that a name means: its own, in any case, without what the table's columns all begin with, or a part of
     * it that no other column has. "protocol" and "interface" are the column that tells one, where only one does.
     *
     * @param list<string> $known
     * @throws UnknownName
     */
    public static function resolve(TableSchema $schema, string $name, array $known): string
    {
        $wanted = strtolower($name);
        $short = [];
        foreach ($known as $column) {
            $short[strtolower($column)] = $column;
        }
        foreach ($known as $column) {
            $short[strtolower(self::heading($schema, $column))] ??= $column;
        }
        if (isset($short[$wanted])) {
            return $short[$wanted];
        }
        $kind = ['protocol' => Type::Protocol, 'interface' => Type::NetInterface][$wanted] ?? null;
        $only = $kind === null ? null : self::only($schema, $kind);
        if ($only !== null && in_array($only, $known, true)) {
            return $only;
        }
        foreach ([str_ends_with(...), str_contains(...)] as $matches) {
            $found = array_filter($known, static fn(string $column) => $matches(strtolower($column), $wanted));
            if (count($found) === 1 && $wanted !== '') {
                return reset($found);
            }
            if (count($found) > 1 && $wanted !== '') {
                throw new UsageError("\"$name\" may be " . implode(', ', $found) . " of $schema->name.");
            }
        }
        throw UnknownName::among("column of $schema->name", $name, self::both($schema, $known));
    }

    /** A column's name without the part that says which table it belongs to; a protocol's number shows as its name. */
    public static function heading(TableSchema $schema, string $column): string
    {
        $type = ($schema->columns[$column] ?? null)?->type;
        if ($type === Type::Protocol && self::only($schema, $type) === $column) {
            return 'Protocol';
        }
        foreach (self::prefixes($schema) as $prefix) {
            if (
                str_starts_with($column, $prefix) && strlen($column) > strlen($prefix)
                && ctype_upper($column[strlen($prefix)])
            ) {
                return substr($column, strlen($prefix));
            }
        }
        return $column;
    }

    /** The column of this type, where there is only one. */
    private static function only(TableSchema $schema, Type $type): ?string
    {
        $names = array_keys(array_filter($schema->columns, static fn(Column $column) => $column->type === $type));
        return count($names) === 1 ? $names[0] : null;
    }

    /** @return list<string> what columns of a table may begin with, the longest first */
    private static function prefixes(TableSchema $schema): array
    {
        $name = preg_replace('/(Table|Config|Aggregate)$/D', '', $schema->name);
        $control = preg_replace('/(Control|Ctl|Stats)$/D', '', $name);
        return [$name, $control];
    }

    /**
     * @param list<string> $known
     * @return list<string>
     */
    private static function both(TableSchema $schema, array $known): array
    {
        $short = array_map(static fn(string $column) => self::heading($schema, $column), $known);
        return array_values(array_unique([...$known, ...$short]));
    }
}
