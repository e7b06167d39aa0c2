<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Table;

/** Where a table's rows come from. */
interface Source
{
    /** @return array<string, Field> by name */
    public function fields(): array;

    /** @return list<string> names of the fields that are shown when nothing is said */
    public function usual(): array;

    /** @return iterable<list<array<string, mixed>>> all rows, in their own order, some at a time */
    public function pages(): iterable;

    /**
     * Rows from a place on.
     *
     * @param string $behind what place() gave; empty: from the first one on
     * @return list<array<string, mixed>>
     */
    public function page(int $most, string $behind): array;

    /**
     * A row's place, to go on behind it.
     *
     * @param array<string, mixed> $row
     */
    public function place(array $row): string;

    /** Why there are no rows. */
    public function whyNone(): string;
}
