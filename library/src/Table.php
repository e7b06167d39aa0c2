<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Generator;
use IteratorAggregate;
use Rmon\Exception\AgentRefused;
use Rmon\Exception\BadArgument;
use Rmon\Exception\RmonException;
use Rmon\Exception\TableBroken;
use Rmon\Exception\UnknownName;
use Rmon\Schema\Column;
use Rmon\Schema\Key;
use Rmon\Schema\Setter;
use Rmon\Schema\Shape;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;

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

    /** @param array<int|string, mixed> $keys */
    public function __construct(
        public readonly Probe $probe,
        public readonly TableSchema $schema,
        array $keys = [],
    ) {
        $this->where = $this->keys($keys);
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
        return $this->read(null, self::LARGE_PAGE);
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
        return $this->lookUp($all);
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
            $this->write($setter ?? throw new BadArgument("Rows of {$this->schema->name} can't be changed."), $given);
            return;
        }
        $status = $this->schema->status;
        $all = $given + ($row ?? $this->fresh());
        if ($status === null || isset($given[$status])) {
            $this->write($writer->set, $all);
        } elseif ($row === null) {
            $this->make($writer->set, $all, $status);
        } else {
            $this->write($writer->set, [$status => $row[$status] ?? RowStatus::valid->value] + $all);
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
        $this->make($setter, $this->columns($values) + $this->where + $this->fresh(), $status);
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
            $this->write($writer->remove, $given);
            return;
        }
        $status = $this->schema->status ?? throw new BadArgument("Rows of {$this->schema->name} can't be removed.");
        $row = $this->existing($given) ?? [];
        $this->write(
            $writer->set,
            [$status => RowStatus::invalid->value] + $given + $row + $this->schema->defaults + $this->nothing(),
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
        foreach ($this->read($behind, $page) as $rows) {
            foreach ($rows as $row) {
                yield $row;
            }
        }
    }

    /**
     * @param array<string, mixed>|null $behind
     * @return Generator<int, non-empty-list<array<string, mixed>>>
     */
    private function read(?array $behind, int $page): Generator
    {
        $schema = $this->schema;
        if ($schema->keys === []) {
            $rows = $this->single();
            if ($rows !== []) {
                yield $rows;
            }
            return;
        }
        $parent = $this->openParent();
        if ($parent === null) {
            yield from $this->walk($behind, $page);
            return;
        }
        $column = array_key_first($this->probe->table($parent->of)->schema->keys);
        foreach ($this->probe->table($parent->of) as $row) {
            if ($behind === null || ($row[$column] <=> $behind[$parent->name]) >= 0) {
                $here = $behind !== null && $row[$column] === $behind[$parent->name] ? $behind : null;
                foreach ($this->where(...[$parent->name => $row[$column]])->read($here, $page) as $found) {
                    yield $found;
                }
            }
        }
    }

    /** The key that rows don't show and that wasn't given: its values are another table's rows. */
    private function openParent(): ?Key
    {
        foreach ($this->schema->keys as $name => $key) {
            if (!$key->inRow && !isset($this->where[$name])) {
                return $key;
            }
        }
        return null;
    }

    /** @return list<array<string, mixed>> */
    private function single(): array
    {
        $reader = $this->schema->reader;
        if ($reader->shape === Shape::Texts) {
            $column = array_key_first($this->schema->columns);
            $texts = $this->probe->link->read($reader->get, []);
            return array_map(static fn(string $text): array => [$column => $text], $texts);
        }
        $row = $this->get();
        return $row === null ? [] : [$row];
    }

    /**
     * @param array<string, mixed>|null $behind
     * @return Generator<int, non-empty-list<array<string, mixed>>>
     */
    private function walk(?array $behind, int $page): Generator
    {
        $schema = $this->schema;
        $hidden = array_filter(
            $this->where,
            static fn(string $name) => !$schema->keys[$name]->inRow,
            ARRAY_FILTER_USE_KEY,
        );
        if ($schema->reader->getNext === null) {
            $listed = array_map(static fn(array $row): array => $hidden + $row, $this->listed($behind));
            if ($listed !== []) {
                yield $listed;
            }
            return;
        }
        [$prefix, $filter] = $this->split();
        $cursor = $behind === null ? $this->start(array_values($prefix)) : $this->cursor($behind);
        $last = $behind;
        while (($rows = $this->fetch($cursor, $page)) !== []) {
            $orderly = $last === null || $this->side($rows[0], $last) > 0 ? $this->orderly($rows) : 0;
            $last = end($rows);
            // Rows between two of the part belong to it, as long as they are in order.
            $inside = $orderly === count($rows)
                && $this->side($rows[0], $prefix) === 0
                && $this->side($last, $prefix) === 0;
            if ($inside && $filter === [] && $hidden === []) {
                yield $rows;
            } else {
                $found = [];
                $ended = false;
                foreach ($rows as $place => $row) {
                    $side = $inside ? 0 : $this->side($row, $prefix);
                    $ended = $place === $orderly || $side > 0;
                    if ($ended) {
                        break;
                    }
                    if ($side === 0 && self::has($row, $filter)) {
                        $found[] = $hidden + $row;
                    }
                }
                if ($found !== []) {
                    yield $found;
                }
                if ($ended && $place === $orderly) {
                    throw $this->broken($row);
                }
                if ($ended) {
                    return;
                }
            }
            $cursor = $this->cursor($last);
        }
    }

    /**
     * @param array<string, mixed> $row
     * @param array<string, mixed> $values
     */
    private static function has(array $row, array $values): bool
    {
        foreach ($values as $name => $value) {
            if ($row[$name] !== $value) {
                return false;
            }
        }
        return true;
    }

    /**
     * How many rows of a page stand in the order of their keys, each behind the one before it.
     *
     * Looks at columns: leading keys are the same in most pages, which the engine compares as a whole.
     *
     * @param list<array<string, mixed>> $rows
     */
    private function orderly(array $rows): int
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
    private function side(array $row, array $other): int
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

    /** @param array<string, mixed> $row */
    private function broken(array $row): TableBroken
    {
        $link = $this->probe->link;
        $place = [];
        foreach ($this->schema->order as $name) {
            $place[] = "$name " . (new Values())->exact($this->schema->columns[$name], $row[$name]);
        }
        return new TableBroken(
            "The agent's {$this->schema->name} doesn't go on behind " . implode(', ', $place) . '.',
            $link->host,
            $link->port,
            $this->schema->reader->getBulk ?? $this->schema->reader->getNext,
        );
    }

    /**
     * Of the keys that rows must have, those that stand first in the order, where the walk can begin and end, and the
     * others.
     *
     * @return array{array<string, mixed>, array<string, mixed>} by the names of keys
     */
    private function split(): array
    {
        $prefix = [];
        $filter = array_filter(
            $this->where,
            fn(string $name) => $this->schema->keys[$name]->inRow && !$this->schema->keys[$name]->mark,
            ARRAY_FILTER_USE_KEY,
        );
        foreach ($this->schema->order as $name) {
            if (!isset($filter[$name])) {
                break;
            }
            $prefix[$name] = $filter[$name];
        }
        return [$prefix, array_diff_key($filter, $prefix)];
    }

    /**
     * Keys close before the first row that begins with $prefix, in the order in which readers take them.
     *
     * An address at the end of the prefix is stepped back, and what follows it made as large as it can be: with an
     * empty one beside it, agents that have one length for both ends of a conversation would begin elsewhere.
     *
     * @param list<mixed> $prefix
     * @return list<mixed>
     */
    private function start(array $prefix): array
    {
        $order = $this->schema->order;
        $depth = count($prefix);
        $values = array_combine(array_slice($order, 0, $depth), $prefix);
        if ($depth === 0) {
            return $this->cursor([]);
        }
        $last = $order[$depth - 1];
        $before = $this->before($values[$last]);
        if ($depth < count($order) && is_int($values[$last])) {
            return $this->cursor($values);
        }
        if ($before === null) {
            unset($values[$last]);
            return $this->cursor($values);
        }
        $values[$last] = $before;
        foreach (array_slice($order, $depth) as $name) {
            $values[$name] = is_array($before) && $this->schema->keys[$name]->type->isOctets()
                ? array_fill(0, count($before), 255)
                : 0x7fffffff;
        }
        return $this->cursor($values);
    }

    /** The value before one, of the same length; null for the first one. */
    private function before(mixed $value): mixed
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
     * A row's keys in the order in which readers take them; what isn't there is where a walk begins.
     *
     * @param array<string, mixed> $row
     * @return list<mixed>
     */
    private function cursor(array $row): array
    {
        $cursor = [];
        foreach ($this->schema->keys as $name => $key) {
            $cursor[] = $key->mark || !$key->inRow
                ? $this->where[$name] ?? $key->start
                : $row[$name] ?? $key->start;
        }
        return $cursor;
    }

    /**
     * Rows behind a place, at most so many; none at the end of the table.
     *
     * @param list<mixed> $cursor
     * @return list<array<string, mixed>>
     */
    private function fetch(array $cursor, int $most): array
    {
        $reader = $this->schema->reader;
        $link = $this->probe->link;
        if ($reader->getBulk === null) {
            $row = $this->unwrap($reader->getNext, $link->read($reader->getNext, $cursor, $reader->quiet));
            return $row === null ? [] : [$row];
        }
        $rows = $link->read($reader->getBulk, [...$cursor, $most], $reader->quiet);
        if ($rows === false) {
            return $reader->answersNone ? [] : throw $this->probe->link->unanswered($reader->getBulk);
        }
        return $reader->shape === Shape::Envelope ? $rows[$reader->envelope] : $rows;
    }

    /**
     * Rows of a table that can't be walked: what get finds.
     *
     * @param array<string, mixed>|null $behind
     * @return list<array<string, mixed>>
     */
    private function listed(?array $behind): array
    {
        $reader = $this->schema->reader;
        $parents = array_values(array_intersect_key($this->where, $this->schema->keys));
        if ($reader->shape !== Shape::Map) {
            $row = $behind === null ? $this->lookUp($this->where) : null;
            return $row === null ? [] : [$row];
        }
        $key = array_key_last($this->schema->keys);
        $value = array_key_last($this->schema->columns);
        $rows = [];
        foreach ($this->probe->link->read($reader->get, array_slice($parents, 0, 1)) as $number => $mapped) {
            $wanted = $this->where[$key] ?? $number;
            if ($number === $wanted && ($behind === null || $number > $behind[$key])) {
                $rows[] = [$key => $number, $value => $mapped];
            }
        }
        return $rows;
    }

    /**
     * @param array<string, mixed> $keys all of them
     * @return array<string, mixed>|null
     */
    private function lookUp(array $keys): ?array
    {
        $reader = $this->schema->reader;
        if ($reader->shape === Shape::Map) {
            return $this->where(...$keys)->page(1)[0] ?? null;
        }
        $arguments = [];
        $shown = [];
        foreach ($this->schema->keys as $name => $key) {
            $arguments[] = $keys[$name] ?? $key->start;
            if (!$key->inRow) {
                $shown[$name] = $keys[$name];
            }
        }
        $row = $this->unwrap($reader->get, $this->probe->link->read($reader->get, $arguments, $reader->quiet));
        return $row === null || $shown === [] ? $row : $shown + $row;
    }

    /** What get and getnext hand back, as a row; null for none. */
    private function unwrap(string $function, mixed $result): ?array
    {
        $reader = $this->schema->reader;
        if ($result === false || $result === null) {
            return $reader->answersNone ? null : throw $this->probe->link->unanswered($function);
        }
        if ($reader->shape === Shape::Number) {
            return [array_key_first($this->schema->columns) => $result];
        }
        if ($reader->shape === Shape::Envelope) {
            return $result[$reader->envelope][0] ?? null;
        }
        if ($result === []) {
            return null;
        }
        $status = $result['status'] ?? 0;
        return match ($status) {
            ErrorStatus::noError->value => $result,
            // -1: the module's own word for no row.
            ErrorStatus::noSuchName->value, -1 => null,
            default => throw AgentRefused::with($status, $this->probe->link->host, $this->probe->link->port, $function),
        };
    }

    /** @param array<string, mixed> $given */
    private function existing(array $given): ?array
    {
        $keys = array_intersect_key($given, $this->schema->keys);
        $named = array_filter($this->schema->keys, static fn(Key $key) => !$key->mark);
        return count(array_intersect_key($named, $keys)) === count($named) ? $this->lookUp($keys) : null;
    }

    /** @return array<string, mixed> what a new row has where nothing is said */
    private function fresh(): array
    {
        return $this->schema->defaults + ($this->schema->owner === null ? [] : [$this->schema->owner => '']);
    }

    /** @param array<string, mixed> $values */
    private function make(Setter $setter, array $values, string $status): void
    {
        $this->write($setter, [$status => RowStatus::createRequest->value] + $values);
        try {
            $this->write($setter, [$status => RowStatus::valid->value] + $values);
        } catch (RmonException $refused) {
            try {
                $this->write($setter, [$status => RowStatus::invalid->value] + $values);
            } catch (RmonException) {
                // The first refusal is what the caller is to hear of.
            }
            throw $refused;
        }
    }

    /** @param array<string, mixed> $values */
    private function write(Setter $setter, array $values): void
    {
        $arguments = [];
        $missing = [];
        foreach ($setter->columns as $name) {
            $arguments[] = $values[$name] ?? null;
            if (!isset($values[$name])) {
                $missing[] = $name;
            }
        }
        if ($missing !== []) {
            throw new BadArgument("{$this->schema->name} needs " . implode(', ', $missing) . '.');
        }
        $this->probe->link->set($setter->function, $arguments);
    }

    /** @return array<string, mixed> what a set takes for columns that don't matter, as when a row is removed */
    private function nothing(): array
    {
        return array_map(
            static fn(Column $column) => $column->type->isOctets() ? [] : ($column->type->isText() ? '' : 0),
            $this->schema->columns + $this->schema->hidden,
        );
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
