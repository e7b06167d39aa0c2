<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Table;

use Rmon\Format;

/** Lines of CSV (RFC 4180) that no program for tables takes for formulas. */
final class Csv
{
    /** @param iterable<int|float|string|null> $cells */
    public static function line(iterable $cells): string
    {
        $line = [];
        foreach ($cells as $cell) {
            $line[] = self::cell($cell);
        }
        return implode(',', $line) . "\r\n";
    }

    private static function cell(int|float|string|null $cell): string
    {
        if (!is_string($cell)) {
            return match (true) {
                $cell === null => '',
                is_float($cell) && floor($cell) === $cell => Format::whole($cell),
                default => (string) json_encode($cell),
            };
        }
        // A text that begins like a formula is set behind an apostrophe, as those programs themselves do.
        if (preg_match('/^[\s\x00]*[=+\-@|%]|^[\t\r\n]/', $cell) && !is_numeric($cell)) {
            $cell = "'$cell";
        }
        return preg_match('/[",\r\n\t\']/', $cell) ? '"' . str_replace('"', '""', $cell) . '"' : $cell;
    }
}
