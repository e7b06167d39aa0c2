<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/** Texts from agents, which may hold anything. Escaping is the templates' work. */
final class Text
{
    /** Characters that a cell has room for. */
    private const LONGEST = 200;

    /** Characters that turn the direction of what follows them, or show as nothing. */
    private const UNSEEN = '/[\x{7f}-\x{9f}\x{200b}-\x{200f}\x{202a}-\x{202e}\x{2060}-\x{2069}\x{feff}]/u';

    /** What a page shows of a text: valid UTF-8, control characters as pictures, no longer than can be read. */
    public static function shown(string $text, int $longest = self::LONGEST): string
    {
        // Cut in octets first: nothing beyond is looked at.
        $cut = strlen($text) > 4 * $longest ? substr($text, 0, 4 * $longest) : $text;
        $valid = mb_scrub($cut, 'UTF-8');
        $valid = preg_replace_callback(
            '/[\x00-\x1f]/',
            static fn(array $match) => mb_chr(0x2400 + ord($match[0]), 'UTF-8'),
            $valid,
        );
        $valid = preg_replace(self::UNSEEN, "\u{fffd}", $valid);
        $short = mb_substr($valid, 0, $longest, 'UTF-8');
        return strlen($short) < strlen($valid) || strlen($cut) < strlen($text) ? "$short\u{2026}" : $short;
    }
}
