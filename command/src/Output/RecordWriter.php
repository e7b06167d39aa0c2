<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Output;

/** A row for people as a list of its fields, one a line; an empty line between rows. */
final class RecordWriter implements Writer
{
    private bool $begun = false;
    private readonly int $width;

    /** @param list<Field> $fields */
    public function __construct(private readonly array $fields, private readonly Screen $screen)
    {
        $this->width = max([0, ...array_map(static fn(Field $field) => Text::width($field->heading), $fields)]);
    }

    public function row(array $row): void
    {
        if ($this->begun) {
            $this->screen->line();
        }
        $this->begun = true;
        foreach ($this->fields as $field) {
            $cell = Text::visible(($field->text)($row[$field->name] ?? null));
            $heading = $this->screen->faint(Text::padRight($field->heading, $this->width));
            $this->screen->line(rtrim("$heading  $cell"));
        }
    }

    public function finish(): void
    {
        $this->screen->flush();
    }
}
