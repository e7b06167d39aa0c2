<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter\Text;

/** Labels of a sample. */
final class Labels
{
    /** Octets of the longest value: agents say what they like, and each value is kept for months. */
    public const LONGEST = 200;

    /** Texts that stay as they are: short ones of printable ASCII, without a quote and a backslash. */
    private const SIMPLE = '/^[ !#-[\]-~]{0,200}$/D';

    /** Control characters, and what turns the direction of the text behind it or shows as nothing. */
    private const UNSEEN = '/[\x00-\x1f\x{7f}-\x{9f}\x{200b}-\x{200f}\x{202a}-\x{202e}\x{2060}-\x{2069}\x{feff}]/u';

    /**
     * What stands between the braces.
     *
     * @param array<string, string|int> $values by name
     */
    public static function text(array $values): string
    {
        $text = '';
        foreach ($values as $name => $value) {
            if (preg_match(self::SIMPLE, (string) $value) !== 1) {
                $value = self::escaped(self::clean((string) $value));
            }
            $text .= $text === '' ? "$name=\"$value\"" : ",$name=\"$value\"";
        }
        return $text;
    }

    /** Two parts of what stands between the braces. */
    public static function joined(string $first, string $second): string
    {
        return $first === '' || $second === '' ? $first . $second : "$first,$second";
    }

    public static function isName(string $name): bool
    {
        return preg_match('/^[a-zA-Z_][a-zA-Z0-9_]*$/D', $name) === 1 && !str_starts_with($name, '__');
    }

    /** A value between its quotes, in both forms. */
    public static function escaped(string $value): string
    {
        return strpbrk($value, "\\\"\n") === false
            ? $value
            : strtr($value, ['\\' => '\\\\', '"' => '\\"', "\n" => '\\n']);
    }

    /** A text of an agent as valid UTF-8 without what can't be seen, and no longer than it may be. */
    public static function clean(string $text): string
    {
        if (strlen($text) <= self::LONGEST && preg_match('/^[\x20-\x7e]*$/D', $text)) {
            return $text;
        }
        if (strlen($text) > self::LONGEST) {
            // The last character goes as a whole, where it has several octets: it may have been cut through.
            $text = preg_replace('/[\xc0-\xff][\x80-\xbf]*$/D', '', substr($text, 0, self::LONGEST));
        }
        if (preg_match('//u', $text) !== 1) {
            $text = preg_replace('/[\x80-\xff]+/', "\u{fffd}", $text);
        }
        return preg_replace(self::UNSEEN, "\u{fffd}", $text);
    }
}
