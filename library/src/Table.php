<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Generator;
use IteratorAggregate;
use Rmon\Exception\AgentRefused;
use Rmon\Exception\BadArgument;
use Rmon\Exception\RmonException;
use Rmon\Exception\UnknownName;
use Rmon\Schema\Key;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;
use Rmon\Table\RowReader;
use Rmon\Table\RowWriter;

/**
 * A table of a probe, or a part of it: iterate over it for its rows, which are read page by page while the loop goes.
 *
 * A row is the array that the module made of it: columns by name, and the agent's result code under 0 and "status".
 *
 * @implements IteratorAggregate<int, array<string, mixed>>
 */
final class Table implements IteratorAggregate
{
    /** Rows of a page, where the agent gives pages. */
    public const PAGE = 500;

    /** Rows of a page for who looks at all of them. */
    private const LARGE_PAGE = 1000;

    /** @var array<string, mixed> the values of keys that rows must have */
    public readonly array $where;

    private readonly RowReader $reader;

    private readonly RowWriter $writer;

    /** @param array<int|string, mixed> $keys */
    public function __construct(
        public readonly Probe $probe,
        public readonly TableSchema $schema,
        array $keys = [],
    ) {
        $this->where = $this->keys($keys);
        $this->reader = new RowReader($probe, $schema, $this->where);
        $this->writer = new RowWriter($probe, $schema);
    }

    /** The part of the table with these keys, on top of those that it has already. */
    public function where(mixed ...$keys): self
    {
        return new self($this->probe, $this->schema, $keys + $this->where);
    }

    /**
     * Its rows, in the order of their keys, each once.
     *
     * @return Generator<int, array<string, mixed>>
     * @throws RmonException
     */
    public function getIterator(): Generator
    {
        return $this->rows();
    }

    /**
     * The same rows, as many at a time as are read at a time: for who looks at all of a large table.
     *
     * @return Generator<int, non-empty-list<array<string, mixed>>>
     * @throws RmonException
     */
    public function pages(): Generator
    {
        return $this->reader->pages(null, self::LARGE_PAGE);
    }

    /**
     * So many rows, from the first or from behind a row on.
     *
     * @param array<string, mixed>|null $behind a row, or the values of its keys
     * @return list<array<string, mixed>> fewer than $most only at the end of the table
     */
    public function page(int $most, ?array $behind = null): array
    {
        foreach ($behind === null ? [] : $this->schema->keys as $name => $key) {
            if (!isset($behind[$name]) && !$key->mark) {
                throw new BadArgument("{$this->schema->name} needs $name to go on behind a row.");
            }
        }
        $page = [];
        if ($most > 0) {
            foreach ($this->rows($behind, $most) as $row) {
                $page[] = $row;
                if (count($page) >= $most) {
                    break;
                }
            }
        }
        return $page;
    }

    /** @return array<string, mixed>|null the first row; null when there is none */
    public function first(): ?array
    {
        return $this->page(1)[0] ?? null;
    }

    /**
     * The row with these keys; of a group of single values, which has no keys, the group itself.
     *
     * @return array<string, mixed>|null null when the agent has no such row
     * @throws RmonException
     */
    public function get(mixed ...$keys): ?array
    {
        $all = $this->keys($keys) + $this->where;
        foreach ($this->schema->keys as $name => $key) {
            if (!isset($all[$name]) && !$key->mark) {
                throw new BadArgument("{$this->schema->name} needs $name to find a row.");
            }
        }
        return $this->reader->lookUp($all);
    }

    /**
     * The values of a row's keys, to go on behind it or to look it up again.
     *
     * @param array<string, mixed> $row
     * @return array<string, mixed>
     */
    public function keysOf(array $row): array
    {
        return array_intersect_key($row, $this->schema->keys);
    }

    /**
     * Makes or changes a row: "set this row to that". What isn't given stays as it is, or is what the table's
     * description says for a new row. A new row of a control table is made to work at once, unless its status is
     * given.
     *
     * @param mixed ...$values by the names of columns, keys included
     * @throws RmonException AgentRefused, when the agent doesn't take it: nothing is changed, and no row is left over
     */
    public function set(mixed ...$values): void
    {
        $given = $this->columns($values) + $this->where;
        $writer = $this->schema->writer ?? throw new BadArgument("{$this->schema->name} can't be set.");
        $row = $this->existing($given);
        if ($writer->set === null) {
            $setter = $row === null ? $writer->add : $writer->change;
            if ($setter === null) {
                throw new BadArgument("Rows of {$this->schema->name} can't be changed.");
            }
            $this->writer->write($setter, $given);
            return;
        }
        $status = $this->schema->status;
        $all = $given + ($row ?? $this->writer->fresh());
        if ($status === null || isset($given[$status])) {
            $this->writer->write($writer->set, $all);
        } elseif ($row === null) {
            $this->writer->make($writer->set, $all, $status);
        } else {
            $this->writer->write($writer->set, [$status => $row[$status] ?? RowStatus::valid->value] + $all);
        }
    }

    /**
     * Makes a row of a control table and sets it to work. Never touches a row that is there already.
     *
     * @param mixed ...$values by the names of columns, keys included; see set()
     * @throws RmonException AgentRefused, also when there is such a row
     */
    public function create(mixed ...$values): void
    {
        $status = $this->schema->status;
        $setter = $this->schema->writer?->set;
        if ($status === null || $setter === null) {
            throw new BadArgument("Rows of {$this->schema->name} are not made by a status.");
        }
        $this->writer->make($setter, $this->columns($values) + $this->where + $this->writer->fresh(), $status);
    }

    /**
     * Makes a row of a control table anew with other values, as rows that work refuse most changes. What isn't given
     * stays. When the agent refuses, the row is made again as it was.
     *
     * @param mixed ...$values by the names of columns, keys included
     * @throws RmonException AgentRefused, when the agent doesn't take it; BadArgument, when there is no such row
     */
    public function replace(mixed ...$values): void
    {
        $given = $this->columns($values) + $this->where;
        $row = $this->existing($given) ?? throw new BadArgument("{$this->schema->name} has no such row.");
        $settable = array_flip($this->schema->writer?->set?->columns ?? []);
        $before = array_diff_key(array_intersect_key($row, $settable), [(string) $this->schema->status => true]);
        $keys = array_intersect_key($before, $this->schema->keys);
        $this->delete(...$keys);
        try {
            $this->create(...$given + $before);
        } catch (AgentRefused $refused) {
            $this->create(...$before);
            throw $refused;
        }
    }

    /** The lowest index that no row has, of a table with such a key alone. */
    public function unusedIndex(): int
    {
        $key = array_key_first($this->schema->keys);
        if (count($this->schema->keys) !== 1 || $this->schema->keys[$key]->type !== Type::Index) {
            throw new BadArgument("Rows of {$this->schema->name} aren't told by a number alone.");
        }
        $index = 1;
        foreach ($this->rows() as $row) {
            if ($row[$key] > $index) {
                break;
            }
            $index = $row[$key] + 1;
        }
        return $index;
    }

    /**
     * Removes the row with these keys.
     *
     * @throws RmonException AgentRefused with noSuchName, when there is none
     */
    public function delete(mixed ...$keys): void
    {
        $given = $this->keys($keys) + $this->where;
        $writer = $this->schema->writer ?? throw new BadArgument("{$this->schema->name} can't be set.");
        if ($writer->remove !== null) {
            $this->writer->write($writer->remove, $given);
            return;
        }
        $status = $this->schema->status ?? throw new BadArgument("Rows of {$this->schema->name} can't be removed.");
        $row = $this->existing($given) ?? [];
        $this->writer->write(
            $writer->set,
            [$status => RowStatus::invalid->value] + $given + $row + $this->schema->defaults + $this->writer->nothing(),
        );
    }

    /**
     * A row's cells as people read them, by column.
     *
     * @param array<string, mixed> $row
     * @return array<string, string>
     */
    public function readable(array $row): array
    {
        $values = $this->probe->values();
        $cells = [];
        foreach ($this->schema->columns as $name => $column) {
            $cells[$name] = $values->text($column, $row[$name] ?? null);
        }
        return $cells;
    }

    /**
     * @param array<string, mixed>|null $behind
     * @return Generator<int, array<string, mixed>>
     */
    private function rows(?array $behind = null, int $page = self::PAGE): Generator
    {
        foreach ($this->reader->pages($behind, $page) as $rows) {
            foreach ($rows as $row) {
                yield $row;
            }
        }
    }

    /** @param array<string, mixed> $given */
    private function existing(array $given): ?array
    {
        $keys = array_intersect_key($given, $this->schema->keys);
        $named = array_filter($this->schema->keys, static fn(Key $key) => !$key->mark);
        return count(array_intersect_key($named, $keys)) === count($named) ? $this->reader->lookUp($keys) : null;
    }

    /**
     * @param array<int|string, mixed> $given
     * @return array<string, mixed> values by the names of keys
     */
    private function keys(array $given): array
    {
        $keys = [];
        foreach ($given as $name => $value) {
            $name = $this->keyName($name);
            $keys[$name] = $this->probe->values()->parse($this->schema->columns[$name], $value);
        }
        return $keys;
    }

    private function keyName(int|string $name): string
    {
        if (isset($this->schema->keys[$name])) {
            return (string) $name;
        }
        foreach ($this->schema->keys as $key) {
            if ($name === 'control' && $key->of !== null) {
                return $key->name;
            }
        }
        $known = array_keys($this->schema->keys);
        throw UnknownName::among("key of {$this->schema->name}", (string) $name, $known);
    }

    /**
     * @param array<int|string, mixed> $given
     * @return array<string, mixed> values by the names of columns
     */
    private function columns(array $given): array
    {
        $columns = [];
        $settable = array_merge([], ...array_column($this->schema->writer?->setters() ?? [], 'columns'));
        foreach ($given as $name => $value) {
            $name = $name === 'control' ? $this->keyName($name) : (string) $name;
            if (!in_array($name, $settable, true)) {
                throw UnknownName::among("column to set in {$this->schema->name}", $name, $settable);
            }
            $column = $this->schema->columns[$name] ?? $this->schema->hidden[$name];
            $columns[$name] = $this->probe->values()->parse($column, $value);
        }
        return $columns;
    }
}
