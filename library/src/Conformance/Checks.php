<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Conformance;

use Generator;
use Rmon\ErrorStatus;
use Rmon\Exception\AgentRefused;
use Rmon\Exception\BadArgument;
use Rmon\Exception\CallFailed;
use Rmon\Exception\TableBroken;
use Rmon\Probe;
use Rmon\RowStatus;
use Rmon\Schema\Catalog;
use Rmon\Schema\Shape;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;
use Rmon\Table;

/**
 * Whether an agent keeps the protocol: which tables it has, whether walks of them go on and come to an end, whether
 * get, getnext and getbulk agree, and, when it is asked for, whether control rows go by the rules of RFC 2819.
 */
final class Checks
{
    /** Rows of a table that are looked at. */
    private const ROWS = 200;

    /** Rows that are read one by one as well. */
    private const SINGLE = 20;

    /** An index that nobody has. */
    private const NO_INDEX = 0x7fffffff;

    /** Of the words for a call that failed, those of an agent without the procedure. */
    private const LACKS = 'Procedure unavailable';

    public function __construct(private readonly Probe $probe)
    {
    }

    /**
     * @param bool $sets whether control rows are made and removed too
     * @return Generator<Finding>
     */
    public function findings(bool $sets): Generator
    {
        yield $this->clock();
        foreach (Catalog::all() as $schema) {
            yield $this->guarded($schema, fn() => $schema->hasRows() ? $this->rows($schema) : $this->values($schema));
        }
        if ($sets) {
            foreach (Catalog::all() as $schema) {
                if ($this->canBeMade($schema)) {
                    yield $this->guarded($schema, fn() => $this->controlRow($schema));
                }
            }
        }
    }

    /** @param callable(): Finding $check */
    private function guarded(TableSchema $schema, callable $check): Finding
    {
        try {
            return $check();
        } catch (TableBroken $broken) {
            return new Finding(State::Broken, $schema->name, $broken->text);
        } catch (CallFailed $failed) {
            return match (true) {
                str_contains($failed->text, self::LACKS) =>
                    new Finding(State::Lacking, $schema->name, 'the agent doesn\'t have it'),
                $schema->reader->quiet =>
                    new Finding(State::Lacking, $schema->name, 'the call fails, whose function doesn\'t tell why'),
                default => new Finding(State::Broken, $schema->name, $failed->text),
            };
        } catch (AgentRefused $refused) {
            return new Finding(State::Broken, $schema->name, $refused->text);
        }
    }

    private function clock(): Finding
    {
        try {
            $before = $this->probe->uptime();
            $after = $this->probe->uptime();
        } catch (CallFailed $failed) {
            return new Finding(State::Broken, 'clock', $failed->text);
        }
        return $after >= $before
            ? new Finding(State::Kept, 'clock', 'sysUpTime goes on')
            : new Finding(State::Broken, 'clock', "sysUpTime went back from $before to $after");
    }

    /** A group of single values. */
    private function values(TableSchema $schema): Finding
    {
        $row = $this->probe->table($schema->name)->get();
        return $row === null
            ? new Finding(State::Empty, $schema->name, self::unsaid($schema))
            : new Finding(State::Kept, $schema->name, self::counted($row, 'value'));
    }

    private function rows(TableSchema $schema): Finding
    {
        $table = $this->probe->table($schema->name);
        $rows = [];
        // A walk throws when a row isn't behind the one before it.
        foreach ($table as $row) {
            $rows[] = $row;
            if (count($rows) === self::ROWS) {
                break;
            }
        }
        if ($rows === []) {
            return new Finding(State::Empty, $schema->name, self::unsaid($schema));
        }
        $fault = $this->readOneByOne($schema, $table, $rows);
        return $fault === null
            ? new Finding(State::Kept, $schema->name, self::counted($rows, 'row') . ' in order')
            : new Finding(State::Broken, $schema->name, $fault);
    }

    /**
     * What get and getnext say of rows that a walk has found.
     *
     * @param list<array<string, mixed>> $rows
     * @return string|null what is wrong
     */
    private function readOneByOne(TableSchema $schema, Table $table, array $rows): ?string
    {
        $reader = $schema->reader;
        $hidden = array_filter($schema->keys, static fn($key) => !$key->inRow) !== [];
        if ($schema->keys === [] || $hidden || $reader->shape === Shape::Map || $reader->getNext === null) {
            return null;
        }
        $looked = array_slice($rows, 0, self::SINGLE);
        foreach ($looked as $place => $row) {
            $keys = self::named($schema, $row);
            $found = $table->get(...$keys);
            if ($found === null) {
                // It may be gone by now: only one that getnext still gives is missing.
                $found = $this->next($schema, $looked[$place - 1] ?? null);
                if ($found !== null && self::named($schema, $found) === $keys) {
                    return "$reader->get() doesn't find row " . self::shown($keys) . ' of the walk';
                }
            } elseif (self::named($schema, $found) !== $keys) {
                return "$reader->get() gives another row than " . self::shown($keys);
            }
        }
        foreach ($looked as $place => $row) {
            $found = $this->next($schema, $row);
            $expected = $looked[$place + 1] ?? null;
            $both = $found !== null && $expected !== null;
            if ($both && self::order($schema, $found) > self::order($schema, $expected)) {
                return "$reader->getNext() leaves out row " . self::shown(self::named($schema, $expected));
            }
        }
        $named = self::named($schema, $rows[0]);
        $none = array_map(static fn(mixed $value) => is_int($value) ? self::NO_INDEX : $value, $named);
        if (in_array(self::NO_INDEX, $none, true) && $table->get(...$none) !== null) {
            return "$reader->get() finds row " . self::shown($none) . ', which is not there';
        }
        return null;
    }

    /**
     * The row behind another one, by getnext.
     *
     * @param array<string, mixed>|null $row null for the first one
     * @return array<string, mixed>|null
     */
    private function next(TableSchema $schema, ?array $row): ?array
    {
        $cursor = [];
        foreach ($schema->keys as $name => $key) {
            $cursor[] = $key->mark || $row === null ? $key->start : $row[$name];
        }
        $reader = $schema->reader;
        $found = $this->probe->link->read((string) $reader->getNext, $cursor, $reader->quiet);
        if ($reader->shape === Shape::Envelope) {
            return is_array($found) ? $found[$reader->envelope][0] ?? null : null;
        }
        $isRow = is_array($found) && $found !== [] && ($found['status'] ?? 0) === ErrorStatus::noError->value;
        return $isRow ? $found : null;
    }

    /** Tables whose rows need no more than an interface. */
    private function canBeMade(TableSchema $schema): bool
    {
        return $schema->status !== null && count($schema->keys) === 1
            && array_values($schema->keys)[0]->type === Type::Index && $schema->writer?->set !== null;
    }

    /** The life of a control row: made once, under creation, removed once. */
    private function controlRow(TableSchema $schema): Finding
    {
        $what = "$schema->name, sets";
        $table = $this->probe->table($schema->name);
        $key = (string) array_key_first($schema->keys);
        $status = (string) $schema->status;
        $row = [$key => $table->unusedIndex()];
        foreach ($schema->columns as $name => $column) {
            if ($column->type === Type::NetInterface) {
                $row[$name] = array_key_first($this->probe->interfaces()->names());
            }
        }
        if ($schema->owner !== null) {
            $row[$schema->owner] = 'rmon conformance';
        }
        $set = fn(RowStatus $to): int => $this->answer($table, [$status => $to->value] + $row);
        try {
            $answer = $set(RowStatus::createRequest);
        } catch (BadArgument) {
            return new Finding(State::Empty, $what, 'not tried: a row needs more than an interface');
        }
        if ($answer !== 0) {
            $answered = 'the agent makes no row of this alone: it answers ' . self::word($answer);
            return new Finding(State::Empty, $what, $answered);
        }
        try {
            $found = $table->get(...[$key => $row[$key]]);
            $fault = match (true) {
                $found === null => 'a row that was made can\'t be read',
                $found[$status] !== RowStatus::underCreation->value => 'a row that was made is not under creation',
                $set(RowStatus::createRequest) === 0 => 'a row can be made twice',
                default => null,
            };
        } finally {
            $removed = $set(RowStatus::invalid);
        }
        $fault ??= match (true) {
            $removed !== 0 => 'a row can\'t be removed: the agent answers ' . self::word($removed),
            $table->get(...[$key => $row[$key]]) !== null => 'a row that was removed is still there',
            $set(RowStatus::invalid) === 0 => 'a row can be removed twice',
            default => null,
        };
        return $fault === null
            ? new Finding(State::Kept, $what, 'rows are made and removed')
            : new Finding(State::Broken, $what, $fault);
    }

    /** @param array<string, mixed> $values */
    private function answer(Table $table, array $values): int
    {
        try {
            $table->set(...$values);
        } catch (AgentRefused $refused) {
            return $refused->status;
        }
        return 0;
    }

    private static function word(int $answer): string
    {
        return ErrorStatus::tryFrom($answer)?->name ?? (string) $answer;
    }

    /** Why there may be no row. */
    private static function unsaid(TableSchema $schema): string
    {
        return $schema->reader->quiet
            ? 'no row: there is none, or the agent doesn\'t have the table, whose functions don\'t tell'
            : 'no row';
    }

    /**
     * @param array<string, mixed> $row
     * @return array<string, mixed> the keys that name it
     */
    private static function named(TableSchema $schema, array $row): array
    {
        return array_intersect_key($row, array_flip($schema->order));
    }

    /**
     * @param array<string, mixed> $row
     * @return list<mixed> what rows are sorted by
     */
    private static function order(TableSchema $schema, array $row): array
    {
        return array_map(static fn(string $name) => $row[$name], $schema->order);
    }

    /** @param array<string, mixed> $keys */
    private static function shown(array $keys): string
    {
        return (string) json_encode(array_values($keys));
    }

    /** @param array<mixed> $things */
    private static function counted(array $things, string $name): string
    {
        return count($things) . " $name" . (count($things) === 1 ? '' : 's');
    }
}
