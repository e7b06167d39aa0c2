<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Table;

use Rmon\Exception\BadArgument;
use Rmon\Exception\RmonException;
use Rmon\Probe;
use Rmon\RowStatus;
use Rmon\Schema\Column;
use Rmon\Schema\Setter;
use Rmon\Schema\TableSchema;

/** Writes rows of a table, by all the values that the module's function takes. */
final class RowWriter
{
    public function __construct(private readonly Probe $probe, private readonly TableSchema $schema)
    {
    }

    /**
     * Calls a function that sets.
     *
     * @param array<string, mixed> $values by the names of columns; BadArgument when one is missing
     */
    public function write(Setter $setter, array $values): void
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

    /**
     * Makes a row and sets it to work. When the agent refuses, nothing of it is left.
     *
     * @param array<string, mixed> $values by the names of columns
     */
    public function make(Setter $setter, array $values, string $status): void
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

    /** @return array<string, mixed> what a new row has where nothing is said */
    public function fresh(): array
    {
        return $this->schema->defaults + ($this->schema->owner === null ? [] : [$this->schema->owner => '']);
    }

    /** @return array<string, mixed> what a set takes for columns that don't matter, as when a row is removed */
    public function nothing(): array
    {
        return array_map(
            static fn(Column $column) => $column->type->isOctets() ? [] : ($column->type->isText() ? '' : 0),
            $this->schema->columns + $this->schema->hidden,
        );
    }
}
