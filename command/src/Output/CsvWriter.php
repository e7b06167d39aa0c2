<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Output;

/** Comma-separated values with a line of names, as RFC 4180 has them; texts that look like formulas are defused. */
final class CsvWriter implements Writer
{
    private bool $begun = false;

    /** @param list<Field> $fields */
    public function __construct(private readonly array $fields, private readonly Screen $screen)
    {
    }

    public function row(array $row): void
    {
        $this->begin();
        $cells = [];
        foreach ($this->fields as $field) {
            $value = $row[$field->name] ?? null;
            if (!$field->plain || !is_int($value)) {
                $value = ($field->exact)($value);
            }
            $cells[] = match (true) {
                is_int($value) => (string) $value,
                is_string($value) => Text::csv($value),
                is_float($value) => JsonWriter::encode($value),
                is_bool($value) => $value ? 'true' : 'false',
                $value === null => '',
                default => Text::csv(JsonWriter::encode($value)),
            };
        }
        $this->screen->write(implode(',', $cells) . "\r\n");
    }

    public function finish(): void
    {
        $this->begin();
        $this->screen->flush();
    }

    private function begin(): void
    {
        if (!$this->begun) {
            $this->begun = true;
            $names = array_map(static fn(Field $field) => Text::csv($field->name), $this->fields);
            $this->screen->write(implode(',', $names) . "\r\n");
        }
    }
}
