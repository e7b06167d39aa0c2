<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Output;

/** Texts that strangers wrote, made fit for a terminal. */
final class Text
{
    /**
     * What moves a cursor, changes colours, turns the direction of writing or breaks a line: control characters of
     * ASCII and Latin-1, separators of lines and paragraphs, marks of direction.
     */
    private const CONTROLS = '/[\x00-\x1f\x7f]|\xc2[\x80-\x9f]|\xe2\x80[\x8b-\x8f\xa8-\xae]'
        . '|\xe2\x81[\xa0-\xaf]|\xef\xbb\xbf/';

    /** The text with its control characters and invalid octets written out, as \x1b. */
    public static function visible(string $text): string
    {
        if (!preg_match('/[^\x20-\x7e]/', $text)) {
            return $text;
        }
        if (!preg_match('//u', $text)) {
            $text = self::validated($text);
        }
        return preg_replace_callback(self::CONTROLS, static fn(array $found) => self::written($found[0]), $text);
    }

    /** Columns that a visible text takes on a terminal. */
    public static function width(string $text): int
    {
        return preg_match('/[^\x20-\x7e]/', $text) ? mb_strwidth($text, 'UTF-8') : strlen($text);
    }

    /** A visible text, cut to so many columns of a terminal. */
    public static function cut(string $text, int $width): string
    {
        return self::width($text) > $width ? mb_strimwidth($text, 0, $width, '…', 'UTF-8') : $text;
    }

    public static function padLeft(string $text, int $width): string
    {
        $missing = $width - self::width($text);
        return $missing > 0 ? str_repeat(' ', $missing) . $text : $text;
    }

    public static function padRight(string $text, int $width): string
    {
        $missing = $width - self::width($text);
        return $missing > 0 ? $text . str_repeat(' ', $missing) : $text;
    }

    /** A cell of a CSV file that no spreadsheet takes for a formula, and that shows no control characters. */
    public static function csv(string $text): string
    {
        $text = self::visible($text);
        if ($text !== '' && str_contains("=+-@", $text[0])) {
            $text = "'$text";
        }
        return strpbrk($text, "\",;'") === false && trim($text) === $text
            ? $text
            : '"' . str_replace('"', '""', $text) . '"';
    }

    private static function validated(string $text): string
    {
        // A run of valid characters, or one octet that begins none.
        $character = '[\x00-\x7f]|[\xc2-\xdf][\x80-\xbf]|\xe0[\xa0-\xbf][\x80-\xbf]|[\xe1-\xec\xee\xef][\x80-\xbf]{2}'
            . '|\xed[\x80-\x9f][\x80-\xbf]|\xf0[\x90-\xbf][\x80-\xbf]{2}|[\xf1-\xf3][\x80-\xbf]{3}'
            . '|\xf4[\x80-\x8f][\x80-\xbf]{2}';
        return preg_replace_callback(
            "/($character)|[\\x80-\\xff]/",
            static fn(array $found) => isset($found[1]) ? $found[0] : self::written($found[0]),
            $text,
        );
    }

    private static function written(string $octets): string
    {
        return '\\x' . implode('\\x', str_split(bin2hex($octets), 2));
    }
}
