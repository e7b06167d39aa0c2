<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use Rmon\Exception\UnknownName;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;

/** Names of columns as people write them. */
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
            $short[strtolower($schema->heading($column))] ??= $column;
        }
        if (isset($short[$wanted])) {
            return $short[$wanted];
        }
        $kind = ['protocol' => Type::Protocol, 'interface' => Type::NetInterface][$wanted] ?? null;
        $only = $kind === null ? null : $schema->only($kind);
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

    /**
     * @param list<string> $known
     * @return list<string>
     */
    private static function both(TableSchema $schema, array $known): array
    {
        $short = array_map(static fn(string $column) => $schema->heading($column), $known);
        return array_values(array_unique([...$known, ...$short]));
    }
}
