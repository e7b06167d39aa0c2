<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Output;

/** One JSON object a line. All but ASCII is escaped, so that nothing reaches a terminal raw. */
final class JsonWriter implements Writer
{
    /** @param list<Field> $fields */
    public function __construct(private readonly array $fields, private readonly Screen $screen)
    {
    }

    public function row(array $row): void
    {
        $object = [];
        foreach ($this->fields as $field) {
            $name = $field->name;
            $value = $row[$name] ?? null;
            $object[$name] = $field->plain && is_int($value) ? $value : ($field->exact)($value);
        }
        $this->screen->write(self::encode($object) . "\n");
    }

    public function finish(): void
    {
        $this->screen->flush();
    }

    public static function encode(mixed $value): string
    {
        $text = json_encode(
            $value,
            JSON_INVALID_UTF8_SUBSTITUTE | JSON_UNESCAPED_SLASHES | JSON_PRESERVE_ZERO_FRACTION | JSON_THROW_ON_ERROR,
        );
        return str_replace("\x7f", '\u007f', $text);
    }
}
