<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/** Prints a value as the reference shows it: one key a line, octets in one line. */
function show(mixed $value): void
{
    echo lines_of($value, ''), "\n";
}

function lines_of(mixed $value, string $indent): string
{
    if (!is_array($value) || array_is_list_of_numbers($value)) {
        return shown($value);
    }
    $text = '[';
    foreach ($value as $key => $each) {
        $text .= "\n$indent    " . shown($key) . ' => ' . lines_of($each, "$indent    ");
    }
    return "$text\n$indent]";
}

function array_is_list_of_numbers(array $value): bool
{
    return array_is_list($value) && $value === array_filter($value, is_int(...));
}

/** A value in one line, as it would be written in PHP. */
function shown(mixed $value): string
{
    return match (true) {
        is_array($value) => '[' . implode(', ', array_map(shown(...), $value)) . ']',
        is_resource($value) => 'resource of the type ' . get_resource_type($value),
        is_null($value) => 'NULL',
        is_bool($value) => $value ? 'TRUE' : 'FALSE',
        is_string($value) => "'" . addcslashes($value, "\0..\37\177..\377'\\") . "'",
        is_float($value) => var_export($value, true),
        default => (string) $value,
    };
}
