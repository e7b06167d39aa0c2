<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

/** Numbers as people read them. */
final class Format
{
    private const THOUSANDS = ['', 'k', 'M', 'G', 'T', 'P', 'E'];

    /** "1234567" for any whole number that a row holds, 64-bit ones included. */
    public static function whole(int|float $value): string
    {
        return is_int($value) ? (string) $value : sprintf('%.0f', $value);
    }

    /** "1.5 MB": octets, in thousands. */
    public static function octets(int|float $octets): string
    {
        return self::scaled($octets, 'B');
    }

    /** "12.3 Mbit/s" */
    public static function bitsPerSecond(int|float $bits): string
    {
        return self::scaled($bits, 'bit/s');
    }

    /** "1.5 k" of anything, with a unit behind it. */
    public static function scaled(int|float $value, string $unit): string
    {
        $step = 0;
        $size = abs($value);
        while ($size >= 999.5 && $step < count(self::THOUSANDS) - 1) {
            $size /= 1000;
            $value /= 1000;
            $step++;
        }
        $digits = $step === 0 && $value == (int) $value ? 0 : ($size >= 99.95 ? 0 : 1);
        return rtrim(number_format($value, $digits, '.', '') . ' ' . self::THOUSANDS[$step] . $unit);
    }

    /** "3 d 04:05:06", hundredths of a second in whole seconds. */
    public static function ticks(int|float $ticks): string
    {
        return self::duration($ticks / 100);
    }

    /** "3 d 04:05:06" */
    public static function duration(int|float $seconds): string
    {
        $seconds = (int) $seconds;
        $days = intdiv($seconds, 86400);
        $time = sprintf('%02d:%02d:%02d', intdiv($seconds, 3600) % 24, intdiv($seconds, 60) % 60, $seconds % 60);
        return $days === 0 ? $time : "$days d $time";
    }

    /** "12 s ago", "3 min ago": how long something is over, in its largest unit. */
    public static function ago(int|float $seconds): string
    {
        foreach (['d' => 86400, 'h' => 3600, 'min' => 60] as $unit => $length) {
            if ($seconds >= $length) {
                return intdiv((int) $seconds, $length) . " $unit ago";
            }
        }
        return max(0, (int) $seconds) . ' s ago';
    }

    /** "12.3 %" of hundredths of a percent. */
    public static function utilization(int|float $hundredths): string
    {
        return number_format($hundredths / 100, 2, '.', '') . ' %';
    }

    /** "12.3 %" of a part of 1. */
    public static function part(float $part): string
    {
        return number_format(100 * $part, 1, '.', '') . ' %';
    }
}
