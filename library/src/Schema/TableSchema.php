<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema;

use Rmon\Exception\UnknownName;

/**
 * What a table is, said once: its name and columns, the keys of its rows, and the module's functions that read and
 * change it. Walks, lookups, sets, lists and references all follow from it.
 */
final class TableSchema
{
    /** @var array<string, Column> by name, in the order of a row */
    public readonly array $columns;

    /** @var array<string, Column> by name; what sets take and rows don't show */
    public readonly array $hidden;

    /** @var array<string, Key> by name, in the order in which readers take them */
    public readonly array $keys;

    /** @var list<string> names of the keys that are part of a row's name, in the order by which rows are sorted */
    public readonly array $order;

    /** @var array<string, mixed> what a new row gets in columns that nothing is said about */
    public readonly array $defaults;

    /** The column with the row status, for tables whose rows are made by a set. */
    public readonly ?string $status;

    /** The column with the owner of a row. */
    public readonly ?string $owner;

    /**
     * @param string $name    the MIB's name of the table
     * @param string $title   what it holds, in some words
     * @param string $group   the group of tables that it belongs to
     * @param string|null $rfc the document with its MIB; null when it is the agent's own
     * @param list<Key> $keys
     * @param list<Column> $columns
     * @param list<string> $order when it is not that of the keys
     * @param array<string, mixed> $defaults
     * @param list<Column> $hidden what sets take and rows don't show
     */
    public function __construct(
        public readonly string $name,
        public readonly string $title,
        public readonly string $group,
        public readonly ?string $rfc,
        array $keys,
        array $columns,
        public readonly Reader $reader,
        public readonly ?Writer $writer = null,
        array $order = [],
        array $defaults = [],
        array $hidden = [],
    ) {
        $byName = [];
        $status = null;
        $owner = null;
        foreach ([...$columns, ...$hidden] as $column) {
            $byName[$column->name] = $rfc === null ? $column->own() : $column;
            if ($column->type === Type::Status) {
                $status = $column->name;
            } elseif ($column->type === Type::Text && str_ends_with($column->name, 'Owner')) {
                $owner = $column->name;
            }
        }
        $shown = array_column($columns, 'name', 'name');
        $this->columns = array_intersect_key($byName, $shown);
        $this->hidden = array_diff_key($byName, $shown);
        $this->status = $status;
        $this->owner = $owner;
        $this->keys = array_column($keys, null, 'name');
        $named = array_filter($keys, static fn(Key $key) => !$key->mark && $key->inRow);
        $this->order = $order === [] ? array_column($named, 'name') : $order;
        $this->defaults = $defaults;
    }

    /** @throws UnknownName */
    public function column(string $name): Column
    {
        return $this->columns[$name]
            ?? throw UnknownName::among("column of $this->name", $name, array_keys($this->columns));
    }

    /** Whether it has any number of rows; otherwise it is a group of single values. */
    public function hasRows(): bool
    {
        return $this->keys !== [] || $this->reader->shape === Shape::Texts;
    }

    /** The table whose rows make this one's come and go; null when it needs none. */
    public function control(): ?string
    {
        foreach ($this->keys as $key) {
            if ($key->of !== null) {
                return $key->of;
            }
        }
        return null;
    }

    /** The column that says since when a row counts; null where rows don't tell. */
    public function createTime(): ?string
    {
        foreach ($this->columns as $column) {
            if ($column->type === Type::Ticks && str_ends_with($column->name, 'CreateTime')) {
                return $column->name;
            }
        }
        return null;
    }

    /** A column's name without the part that says which table it belongs to; a protocol's number shows as its name. */
    public function heading(string $column): string
    {
        $type = ($this->columns[$column] ?? null)?->type;
        if ($type === Type::Protocol && $this->only($type) === $column) {
            return 'Protocol';
        }
        foreach ($this->prefixes() as $prefix) {
            if (
                str_starts_with($column, $prefix) && strlen($column) > strlen($prefix)
                && ctype_upper($column[strlen($prefix)])
            ) {
                return substr($column, strlen($prefix));
            }
        }
        return $column;
    }

    /** The column of a type, where there is only one. */
    public function only(Type $type): ?string
    {
        $names = array_keys(array_filter($this->columns, static fn(Column $column) => $column->type === $type));
        return count($names) === 1 ? $names[0] : null;
    }

    /** @return list<string> the functions of the module that it stands on */
    public function functions(): array
    {
        return [...$this->reader->functions(), ...array_column($this->writer?->setters() ?? [], 'function')];
    }

    /** @return list<string> what columns may begin with, the longest first */
    private function prefixes(): array
    {
        $name = preg_replace('/(Table|Config|Aggregate)$/D', '', $this->name);
        $control = preg_replace('/(Control|Ctl|Stats)$/D', '', $name);
        return [$name, $control];
    }
}
