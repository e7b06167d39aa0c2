<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Picture;

/** SVG of names, numbers and texts. Everything is escaped here; what an element holds is made by this class too. */
final class Svg
{
    /**
     * @param array<string, string|int|float|null> $attributes numbers to a hundredth; null: left out
     * @param string ...$inside elements and text()s
     */
    public static function element(string $name, array $attributes, string ...$inside): string
    {
        $tag = $name;
        foreach ($attributes as $attribute => $value) {
            if ($value !== null) {
                $tag .= " $attribute=\"" . self::text(is_float($value) ? self::number($value) : (string) $value) . '"';
            }
        }
        return $inside === [] ? "<$tag/>" : "<$tag>" . implode('', $inside) . "</$name>";
    }

    public static function text(string $text): string
    {
        // What XML can't hold at all, escaped or not.
        $text = preg_replace('/[\x00-\x08\x0b\x0c\x0e-\x1f]/', "\u{fffd}", $text);
        return htmlspecialchars($text, ENT_QUOTES | ENT_SUBSTITUTE | ENT_XML1, 'UTF-8');
    }

    /** "12.5" */
    public static function number(float $number): string
    {
        $text = rtrim(rtrim(number_format($number, 2, '.', ''), '0'), '.');
        return $text === '-0' ? '0' : $text;
    }
}
