<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command;

use Generator;
use Rmon\Command\Output\Field;
use Rmon\Command\Output\Screen;
use Rmon\Probe;
use Rmon\RowStatus;
use Rmon\Schema\Catalog;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;
use Rmon\Table;

/** Shows a table's rows. */
final class Listing
{
    public function __construct(private readonly OutputOptions $options, private readonly Screen $screen)
    {
    }

    /** @param list<string> $conditions */
    public function show(Table $table, array $conditions, ?string $interface): void
    {
        $schema = $table->schema;
        $chosen = Conditions::on($table, $conditions);
        $count = $this->rows(
            $this->filtered($interface === null ? $chosen->table : self::on($chosen->table, $interface), $chosen),
            $table,
            !$schema->hasRows(),
        );
        if ($count === 0 && $this->options->limit !== 0) {
            $this->screen->remark(self::whyNone($table->probe, $schema));
        }
    }

    /**
     * @param iterable<array<string, mixed>> $rows
     * @return int how many there were
     */
    public function rows(iterable $rows, Table $table, bool $asRecord): int
    {
        $schema = $table->schema;
        return $this->options->show(
            $rows,
            self::fields($table->probe, $schema, $this->options->exact),
            self::resolver($schema),
            $this->screen,
            $asRecord,
        );
    }

    /** @return list<Field> */
    public static function fields(Probe $probe, TableSchema $schema, bool $exact): array
    {
        $values = $probe->values();
        $fields = [];
        foreach ($schema->columns as $name => $column) {
            // An interface's own row has its name beside its number.
            $own = $column->type === Type::NetInterface && count($schema->keys) === 1 && isset($schema->keys[$name]);
            $fields[] = Field::column($column, $schema->heading($name), $values, $exact || $own);
        }
        return $fields;
    }

    public static function resolver(TableSchema $schema): callable
    {
        $names = array_keys($schema->columns);
        return static fn(string $name) => Names::resolve($schema, $name, $names);
    }

    /**
     * Rows that belong to an interface: by a column of theirs, or by that of their control row.
     *
     * @return iterable<array<string, mixed>>
     */
    public static function on(Table $table, string $interface): iterable
    {
        $schema = $table->schema;
        $index = self::interfaceIndex($table->probe, $interface);
        $column = self::interfaceColumn($schema);
        if ($column !== null) {
            return self::withValue($table, $column, $index);
        }
        $control = $schema->control();
        $source = $control === null ? null : self::interfaceColumn(Catalog::find($control));
        if ($source === null) {
            throw new UsageError("Rows of $schema->name don't belong to an interface: leave --on out.");
        }
        return self::underControlRows($table, $control, $source, $index);
    }

    /** An interface's number, given that or its name. */
    public static function interfaceIndex(Probe $probe, string $interface): int
    {
        return ctype_digit($interface) ? (int) $interface : $probe->interfaces()->index($interface);
    }

    public static function interfaceColumn(TableSchema $schema): ?string
    {
        foreach ($schema->columns as $name => $column) {
            if ($column->type === Type::NetInterface) {
                return $name;
            }
        }
        return null;
    }

    /**
     * @param iterable<array<string, mixed>> $rows
     * @return iterable<array<string, mixed>>
     */
    private function filtered(iterable $rows, Conditions $conditions): iterable
    {
        return $conditions->isNone() ? $rows : $this->thatHold($rows, $conditions);
    }

    /**
     * @param iterable<array<string, mixed>> $rows
     * @return Generator<array<string, mixed>>
     */
    private function thatHold(iterable $rows, Conditions $conditions): Generator
    {
        foreach ($rows as $row) {
            if ($conditions->hold($row)) {
                yield $row;
            }
        }
    }

    /** @return Generator<array<string, mixed>> */
    private static function withValue(Table $table, string $column, int $value): Generator
    {
        foreach ($table as $row) {
            if ($row[$column] === $value) {
                yield $row;
            }
        }
    }

    /** @return Generator<array<string, mixed>> */
    private static function underControlRows(Table $table, string $control, string $source, int $index): Generator
    {
        $rows = $table->probe->table($control);
        $key = array_key_first($rows->schema->keys);
        foreach ($rows as $row) {
            if ($row[$source] === $index) {
                yield from $table->where(control: $row[$key]);
            }
        }
    }

    /** What people should know about a table in which there is nothing. */
    private static function whyNone(Probe $probe, TableSchema $schema): string
    {
        $control = $schema->control();
        if ($control === null) {
            return 'No rows.';
        }
        $schemaOfControl = Catalog::find($control);
        foreach ($probe->table($control) as $row) {
            if ($schemaOfControl->status === null || $row[$schemaOfControl->status] === RowStatus::valid->value) {
                return "No rows: nothing was counted yet for the rows of $control.";
            }
        }
        return "No rows: $control, which says what is counted, has no row that works. See: rmon describe $control";
    }
}
