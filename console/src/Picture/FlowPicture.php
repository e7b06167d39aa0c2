<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Picture;

use Closure;

/**
 * Who sends how much to whom, as streams: sources at the left, destinations at the right, each as high as what it sends
 * or gets. Colours are the style sheet's, by the classes "flow-1" to "flow-8" of the source.
 */
final class FlowPicture
{
    public const COLOURS = 8;

    private const WIDTH = 880;

    /** Room for names at both sides. */
    private const SIDE = 200;

    /** How broad an end is. */
    private const END = 14;

    /** What all amounts together are high. */
    private const HEIGHT = 360;

    /** The least from one end to the next, so that names have room, and what is free between two. */
    private const PITCH = 20;
    private const GAP = 6;

    /**
     * @param string $title                what the picture shows, for who can't see it
     * @param Closure(float): string $text an amount as people read it
     * @param Closure(string): (string|null) $href where the name of an end leads to
     */
    public static function draw(Flows $flows, string $title, Closure $text, Closure $href): string
    {
        $scale = $flows->sum > 0 ? self::HEIGHT / $flows->sum : 0.0;
        $sent = array_map($flows->sent(...), array_keys($flows->sources));
        $received = array_map($flows->received(...), array_keys($flows->destinations));
        [$left, $leftEnd] = self::stacked($sent, $scale);
        [$right, $rightEnd] = self::stacked($received, $scale);
        $height = (int) ceil(max($leftEnd, $rightEnd));
        $link = static fn(int $place, string $name): ?string => $place < $flows->named ? $href($name) : null;
        $parts = self::streams($flows, $scale, $left, $right, $text);
        foreach ($flows->sources as $place => $name) {
            $parts[] = self::end($left[$place], $sent[$place] * $scale, self::SIDE, self::colour($place));
            $parts[] = Label::of($name, "{$text($sent[$place])} sent", $link($place, $name), [
                'class' => 'picture-name picture-end',
                'x' => self::SIDE - 8,
                'y' => $left[$place] + $sent[$place] * $scale / 2,
            ]);
        }
        foreach ($flows->destinations as $place => $name) {
            $x = self::WIDTH - self::SIDE - self::END;
            $parts[] = self::end($right[$place], $received[$place] * $scale, $x, 'flow-end');
            $parts[] = Label::of($name, "{$text($received[$place])} received", $link($place, $name), [
                'class' => 'picture-name',
                'x' => $x + self::END + 8,
                'y' => $right[$place] + $received[$place] * $scale / 2,
            ]);
        }
        return Svg::element('svg', [
            'class' => 'picture flow-picture',
            'viewBox' => '0 0 ' . self::WIDTH . " $height",
            'width' => self::WIDTH,
            'height' => $height,
            'role' => 'group',
            'aria-label' => $title,
        ], ...$parts);
    }

    /**
     * @param list<float> $left  where each source begins
     * @param list<float> $right where each destination begins
     * @return list<string>
     */
    private static function streams(Flows $flows, float $scale, array $left, array $right, Closure $text): array
    {
        $streams = [];
        $x = [self::SIDE + self::END, self::WIDTH / 2, self::WIDTH - self::SIDE - self::END];
        foreach ($flows->amounts as $source => $row) {
            foreach ($row as $destination => $amount) {
                $ends = "{$flows->sources[$source]} \u{2192} {$flows->destinations[$destination]}";
                $high = $amount * $scale;
                $from = $left[$source];
                $to = $right[$destination];
                $left[$source] += $high;
                $right[$destination] += $high;
                $streams[] = Svg::element(
                    'path',
                    [
                        'class' => 'flow-stream ' . self::colour($source),
                        'd' => self::stream($x, $from, $to, $high),
                    ],
                    Label::title($ends, $text($amount)),
                );
            }
        }
        return $streams;
    }

    /** @param array{float, float, float} $x where it begins, bends and ends */
    private static function stream(array $x, float $from, float $to, float $high): string
    {
        [$begin, $bend, $end] = array_map(Svg::number(...), array_map(floatval(...), $x));
        [$upper, $lower] = [Svg::number($from), Svg::number($from + $high)];
        [$far, $farLower] = [Svg::number($to), Svg::number($to + $high)];
        return "M$begin $upper C$bend $upper $bend $far $end $far L$end $farLower"
            . " C$bend $farLower $bend $lower $begin $lower Z";
    }

    private static function end(float $y, float $high, float $x, string $class): string
    {
        // What is next to nothing is still seen.
        return Svg::element('rect', [
            'class' => "flow-node $class",
            'x' => $x,
            'y' => $y,
            'width' => self::END,
            'height' => max(1.0, $high),
        ]);
    }

    /**
     * Where each end begins, one below the other, and where the last one is over.
     *
     * @param list<float> $amounts
     * @return array{list<float>, float}
     */
    private static function stacked(array $amounts, float $scale): array
    {
        $y = self::GAP / 2;
        $places = [];
        foreach ($amounts as $amount) {
            $high = $amount * $scale;
            $room = max(self::PITCH, $high + self::GAP);
            // In the middle of its room.
            $places[] = $y + ($room - $high) / 2;
            $y += $room;
        }
        return [$places, $y + self::GAP / 2];
    }

    private static function colour(int $place): string
    {
        return 'flow-' . min(self::COLOURS, $place + 1);
    }
}
