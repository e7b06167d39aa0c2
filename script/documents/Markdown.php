<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

/** Pieces of pages. */
final class Markdown
{
    /** What pages that are made have below their title: nobody changes them by hand. */
    public const MADE = '<!-- Made by script/docs reference: change what it is made from. -->';

    public static function title(string $title): string
    {
        return "# $title\n\n" . self::MADE . "\n";
    }

    /** The first two lines of a table. */
    public static function head(string ...$columns): string
    {
        return self::row(...$columns) . self::row(...array_fill(0, count($columns), '---'));
    }

    public static function row(string ...$cells): string
    {
        return '|' . implode('|', array_map(static fn(string $cell) => $cell === '' ? ' ' : " $cell ", $cells)) . "|\n";
    }

    /** A text in a table. */
    public static function cell(string $text): string
    {
        return str_replace('|', '\\|', $text);
    }
}
