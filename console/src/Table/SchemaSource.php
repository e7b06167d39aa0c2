<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Table;

use Rmon\Console\Refusal;
use Rmon\Console\Visit;
use Rmon\Schema\Type;
use Rmon\Table;

/** Rows of one of the library's tables, read page by page. */
final class SchemaSource implements Source
{
    /** @var array<string, Field> */
    private readonly array $fields;

    private readonly bool $keysAreSecret;

    /**
     * @param list<string> $usual        fields that are shown when nothing is said; empty: those that matter to people
     * @param array<string, Field> $also further fields, or others in the place of columns
     */
    public function __construct(
        Visit $visit,
        private readonly Table $table,
        private readonly array $usual = [],
        array $also = [],
    ) {
        $fields = [];
        foreach ($table->schema->columns as $name => $column) {
            $fields[$name] = Field::column($visit, $table->schema, $column);
        }
        $this->fields = array_replace($fields, $also);
        $keys = array_intersect_key($table->schema->columns, $table->schema->keys);
        $this->keysAreSecret = !$visit->mayChange() && array_filter($keys, static fn($key) => $key->secret) !== [];
    }

    public function fields(): array
    {
        return $this->fields;
    }

    public function usual(): array
    {
        if ($this->usual !== []) {
            return $this->usual;
        }
        $names = [];
        foreach ($this->table->schema->columns as $name => $column) {
            $fixed = isset($this->table->where[$name]) || $column->type === Type::Rows;
            $mark = ($this->table->schema->keys[$name] ?? null)?->mark ?? false;
            if (!$fixed && !$mark) {
                $names[] = $name;
            }
        }
        return $names;
    }

    public function pages(): iterable
    {
        return $this->table->pages();
    }

    public function page(int $most, string $behind): array
    {
        // A place tells the keys: where they are not to be seen, the first rows are all there is.
        if ($this->keysAreSecret) {
            return $behind === '' ? array_slice($this->table->page($most), 0, $most - 1) : [];
        }
        return $this->table->page($most, $behind === '' ? null : $this->keys($behind));
    }

    public function place(array $row): string
    {
        $json = json_encode(array_values($this->table->keysOf($row)), JSON_INVALID_UTF8_SUBSTITUTE);
        return rtrim(strtr(base64_encode((string) $json), '+/', '-_'), '=');
    }

    public function whyNone(): string
    {
        $control = $this->table->schema->control();
        if ($control === null) {
            return 'The agent has no rows here.';
        }
        return $this->table->probe->table($control)->first() === null
            ? "There is no row of $control, which says what is counted."
            : 'Nothing was counted yet.';
    }

    /** @return array<string, mixed> */
    private function keys(string $place): array
    {
        $values = json_decode((string) base64_decode(strtr($place, '-_', '+/'), true), true);
        $names = array_values(array_filter(
            array_keys($this->table->schema->columns),
            fn(string $name) => isset($this->table->schema->keys[$name]),
        ));
        if (!is_array($values) || count($values) !== count($names)) {
            throw Refusal::notFound('The address names no place in this table.');
        }
        $keys = [];
        foreach (array_combine($names, array_values($values)) as $name => $value) {
            $keys[$name] = $this->table->probe->values()->parse($this->table->schema->columns[$name], $value);
        }
        return $keys;
    }
}
