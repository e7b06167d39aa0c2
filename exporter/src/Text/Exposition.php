<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter\Text;

/** Families as text. */
final class Exposition
{
    /** @param iterable<Family> $families those without samples are left out */
    public static function text(TextFormat $format, iterable $families): string
    {
        $text = '';
        foreach ($families as $family) {
            if ($family->labels !== []) {
                $text .= $format === TextFormat::OpenMetrics ? self::open($family) : self::plain($family);
            }
        }
        return $format === TextFormat::OpenMetrics ? "$text# EOF\n" : $text;
    }

    private static function open(Family $family): string
    {
        $name = $family->name;
        $text = "# TYPE $name {$family->type->value}\n";
        if ($family->unit !== '') {
            $text .= "# UNIT $name $family->unit\n";
        }
        $text .= "# HELP $name " . Labels::escaped($family->help) . "\n";
        return $text . self::samples($family, $name . $family->type->suffix(), true);
    }

    /** The older form has a type for each name that samples have, and times of creation are gauges of their own. */
    private static function plain(Family $family): string
    {
        $name = $family->name . $family->type->suffix();
        $text = self::plainHead($name, $family->type->plain(), $family->help) . self::samples($family, $name, false);
        $created = array_filter($family->created, static fn(?float $time) => $time !== null);
        if ($created !== []) {
            $text .= self::plainHead("{$family->name}_created", 'gauge', "When $name began, in seconds since 1970.");
            foreach ($created as $at => $time) {
                $text .= self::sample("{$family->name}_created", $family->labels[$at], $time);
            }
        }
        return $text;
    }

    private static function plainHead(string $name, string $type, string $help): string
    {
        // Quotes stay as they are there.
        return "# HELP $name " . strtr($help, ['\\' => '\\\\', "\n" => '\\n']) . "\n# TYPE $name $type\n";
    }

    /**
     * Its values. A large table's scrape is mostly this: a number is written without a call more than it takes.
     *
     * @param string $name   what samples that are one number are called
     * @param bool $creation whether each is followed by the time when it began
     */
    private static function samples(Family $family, string $name, bool $creation): string
    {
        $text = '';
        $labels = $family->labels;
        $created = $creation ? $family->created : [];
        foreach ($family->values as $at => $value) {
            $number = is_float($value) ? Number::text($value) : $value;
            $text .= match (true) {
                is_array($number) => self::buckets($name, $labels[$at], $number),
                $labels[$at] === '' => "$name $number\n",
                default => "$name{{$labels[$at]}} $number\n",
            };
            if (isset($created[$at])) {
                $text .= self::sample("{$family->name}_created", $labels[$at], $created[$at]);
            }
        }
        return $text;
    }

    /** @param array<string, int> $counts by bound */
    private static function buckets(string $name, string $labels, array $counts): string
    {
        $text = '';
        foreach ($counts as $bound => $count) {
            $text .= self::sample("{$name}_bucket", Labels::joined($labels, "le=\"$bound\""), $count);
        }
        return $text;
    }

    private static function sample(string $name, string $labels, int|float $value): string
    {
        $number = is_int($value) ? $value : Number::text($value);
        return $labels === '' ? "$name $number\n" : "$name{{$labels}} $number\n";
    }
}
