<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Picture;

/** A line as small as a word, beside the number that it is about. */
final class Spark
{
    private const WIDTH = 120;
    private const HEIGHT = 24;

    /** @param list<int|float|null> $values null is a gap */
    public static function draw(array $values, string $label): string
    {
        $numbers = array_filter($values, static fn(int|float|null $value) => $value !== null);
        if (count($numbers) < 2) {
            return '';
        }
        $most = max(max($numbers), 1);
        $step = self::WIDTH / (count($values) - 1);
        $line = '';
        $pen = 'M';
        foreach ($values as $place => $value) {
            if ($value === null) {
                $pen = 'M';
                continue;
            }
            $height = self::HEIGHT - 1 - $value / $most * (self::HEIGHT - 2);
            $line .= $pen . Svg::number($place * $step) . ' ' . Svg::number($height);
            $pen = 'L';
        }
        return Svg::element(
            'svg',
            [
                'class' => 'spark',
                'viewBox' => '0 0 ' . self::WIDTH . ' ' . self::HEIGHT,
                'preserveAspectRatio' => 'none',
                'role' => 'img',
                'aria-label' => $label,
            ],
            Svg::element('path', ['d' => $line]),
        );
    }
}
