<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Picture;

use Rmon\Console\Text;

/** The name of an end in a picture. */
final class Label
{
    /** Characters that there is room for. */
    public const LONGEST = 24;

    /**
     * As a link where there is something to see, and with more for who points at it.
     *
     * @param array<string, string|int|float|null> $attributes of its text element
     */
    public static function of(string $name, string $more, ?string $href, array $attributes): string
    {
        $short = Svg::text(Text::shown($name, self::LONGEST));
        $text = Svg::element('text', $attributes, self::title($name, $more), $short);
        return $href === null ? $text : Svg::element('a', ['href' => $href], $text);
    }

    /** What is said of something when one points at it. */
    public static function title(string $name, string $more): string
    {
        return Svg::element('title', [], Svg::text(Text::shown($name) . ": $more"));
    }
}
