<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Picture;

use Closure;

/**
 * Who sends how much to whom: a line for each source, a column for each destination, a cell for each flow, the darker
 * the more. Colours are the style sheet's, by the classes "heat-1" to "heat-8"; each step stands for half of the next.
 */
final class HeatMap
{
    public const STEPS = 8;

    private const CELL_WIDTH = 34;
    private const CELL_HEIGHT = 24;

    /** Between cells. */
    private const GAP = 2;

    /** Room for the names of sources at the left, of destinations above and, as they lean, at the right. */
    private const LEFT = 190;
    private const ABOVE = 130;
    private const RIGHT = 100;

    /**
     * @param string $title                what the picture shows, for who can't see it
     * @param Closure(float): string $text an amount as people read it
     * @param Closure(string): (string|null) $href where the name of an end leads to
     */
    public static function draw(Flows $flows, string $title, Closure $text, Closure $href): string
    {
        $width = self::LEFT + count($flows->destinations) * self::CELL_WIDTH + self::RIGHT;
        $height = self::ABOVE + count($flows->sources) * self::CELL_HEIGHT;
        $link = static fn(int $place, string $name): ?string => $place < $flows->named ? $href($name) : null;
        $parts = [];
        foreach ($flows->destinations as $place => $name) {
            $x = self::LEFT + ($place + 0.5) * self::CELL_WIDTH;
            $y = self::ABOVE - 8;
            $parts[] = Label::of($name, "{$text($flows->received($place))} received", $link($place, $name), [
                'class' => 'picture-name',
                'x' => $x,
                'y' => $y,
                'transform' => 'rotate(-45 ' . Svg::number($x) . " $y)",
            ]);
        }
        $most = $flows->most();
        foreach ($flows->sources as $source => $name) {
            $y = self::ABOVE + $source * self::CELL_HEIGHT;
            $parts[] = Label::of($name, "{$text($flows->sent($source))} sent", $link($source, $name), [
                'class' => 'picture-name picture-end',
                'x' => self::LEFT - 8,
                'y' => $y + self::CELL_HEIGHT / 2,
            ]);
            foreach ($flows->destinations as $destination => $other) {
                $amount = $flows->amounts[$source][$destination] ?? 0.0;
                $cell = [
                    'class' => 'heat-' . self::step($amount, $most),
                    'x' => self::LEFT + $destination * self::CELL_WIDTH,
                    'y' => $y,
                    'width' => self::CELL_WIDTH - self::GAP,
                    'height' => self::CELL_HEIGHT - self::GAP,
                ];
                $parts[] = $amount > 0
                    ? Svg::element('rect', $cell, Label::title("$name \u{2192} $other", $text($amount)))
                    : Svg::element('rect', $cell);
            }
        }
        return Svg::element('svg', [
            'class' => 'picture heat-map',
            'viewBox' => "0 0 $width $height",
            'width' => $width,
            'height' => $height,
            'role' => 'group',
            'aria-label' => $title,
        ], ...$parts);
    }

    /** 0 for nothing, 8 for more than half of the most, 7 for more than half of that, and so on, at least 1. */
    public static function step(float $amount, float $most): int
    {
        if ($amount <= 0) {
            return 0;
        }
        return max(1, self::STEPS - (int) floor(log($most / $amount, 2)));
    }
}
