<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Table;

use Closure;

/** Rows that a page has made itself: not many. */
final class ListSource implements Source
{
    /** @var list<array<string, mixed>>|null */
    private ?array $rows = null;

    /** @var array<string, Field> */
    private readonly array $fields;

    /**
     * @param list<Field> $fields
     * @param Closure(): list<array<string, mixed>> $make
     * @param list<string> $usual fields that are shown when nothing is said; empty: all
     */
    public function __construct(
        array $fields,
        private readonly Closure $make,
        private readonly string $whyNone = 'There is nothing to show.',
        private readonly array $usual = [],
    ) {
        $this->fields = array_column($fields, null, 'name');
    }

    public function fields(): array
    {
        return $this->fields;
    }

    public function usual(): array
    {
        return $this->usual === [] ? array_keys($this->fields) : $this->usual;
    }

    public function pages(): iterable
    {
        return [$this->rows()];
    }

    public function page(int $most, string $behind): array
    {
        return array_slice($this->rows(), (int) $behind, $most);
    }

    public function place(array $row): string
    {
        return (string) (array_search($row, $this->rows(), true) + 1);
    }

    /** @return list<array<string, mixed>> */
    private function rows(): array
    {
        return $this->rows ??= ($this->make)();
    }

    public function whyNone(): string
    {
        return $this->whyNone;
    }
}
