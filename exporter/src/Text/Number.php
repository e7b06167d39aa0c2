<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter\Text;

/** Numbers as both forms write them. */
final class Number
{
    /** Up to here each whole number is one of its own as a float. */
    private const WHOLE = 2 ** 53;

    /** The shortest text that stands for the number and no other. */
    public static function text(int|float $value): string
    {
        if (is_int($value)) {
            return (string) $value;
        }
        if ($value === floor($value) && abs($value) <= self::WHOLE) {
            return (string) (int) $value;
        }
        if (is_nan($value)) {
            return 'NaN';
        }
        if (is_infinite($value)) {
            return $value > 0 ? '+Inf' : '-Inf';
        }
        return strtolower(var_export($value, true));
    }

    /** A bound of a bucket: series are told apart by its text, so that whole numbers always have their ".0". */
    public static function bound(float $value): string
    {
        $text = self::text($value);
        return preg_match('/^-?\d+$/D', $text) ? "$text.0" : $text;
    }
}
