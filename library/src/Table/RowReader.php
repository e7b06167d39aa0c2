<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Table;

use Generator;
use Rmon\ErrorStatus;
use Rmon\Exception\AgentRefused;
use Rmon\Exception\TableBroken;
use Rmon\Probe;
use Rmon\Schema\Key;
use Rmon\Schema\Shape;
use Rmon\Schema\TableSchema;
use Rmon\Values;

/**
 * Reads the rows of a table, or of a part of it: by pages where the agent gives them, else by single steps, and by
 * lists where a table can't be walked.
 */
final class RowReader
{
    private readonly KeyOrder $order;

    /** @param array<string, mixed> $where values that keys must have */
    public function __construct(
        private readonly Probe $probe,
        private readonly TableSchema $schema,
        private readonly array $where,
    ) {
        $this->order = new KeyOrder($schema);
    }

    /**
     * All rows, from the first or from behind a row on, so many as a list at a time as are read at a time.
     *
     * @param array<string, mixed>|null $behind a row, or the values of its keys
     * @return Generator<int, non-empty-list<array<string, mixed>>>
     */
    public function pages(?array $behind, int $page): Generator
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
                foreach ($this->within([$parent->name => $row[$column]])->pages($here, $page) as $found) {
                    yield $found;
                }
            }
        }
    }

    /**
     * The row with these keys.
     *
     * @param array<string, mixed> $keys all of them
     * @return array<string, mixed>|null
     */
    public function lookUp(array $keys): ?array
    {
        $reader = $this->schema->reader;
        if ($reader->shape === Shape::Map) {
            return $this->within($keys)->pages(null, 1)->current()[0] ?? null;
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

    /** @param array<string, mixed> $keys more values that keys must have */
    private function within(array $keys): self
    {
        return new self($this->probe, $this->schema, $keys + $this->where);
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
        $row = $this->lookUp($this->where);
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
            $orderly = $last === null || $this->order->side($rows[0], $last) > 0 ? $this->order->orderly($rows) : 0;
            $last = end($rows);
            // Rows between two of the part belong to it, as long as they are in order.
            $inside = $orderly === count($rows)
                && $this->order->side($rows[0], $prefix) === 0
                && $this->order->side($last, $prefix) === 0;
            if ($inside && $filter === [] && $hidden === []) {
                yield $rows;
            } else {
                $found = [];
                $ended = false;
                foreach ($rows as $place => $row) {
                    $side = $inside ? 0 : $this->order->side($row, $prefix);
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
        $before = KeyOrder::before($values[$last]);
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
}
