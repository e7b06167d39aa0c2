<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter\Text;

/** The forms in which metrics are written. */
enum TextFormat: string
{
    /** OpenMetrics 1.0, which knows units and when a counter began. */
    case OpenMetrics = 'application/openmetrics-text; version=1.0.0; charset=utf-8';
    /** The older form of Prometheus, which people and older programs read. */
    case Plain = 'text/plain; version=0.0.4; charset=utf-8';

    /** Media ranges that are looked at: who sends more of them wants something else. */
    private const MOST_RANGES = 20;

    /** What goes into the header Content-Type. */
    public function contentType(): string
    {
        return $this->value;
    }

    /**
     * The form that whoever asks likes best. Between equals it is OpenMetrics, but only for those who name it: a
     * browser that takes everything gets what it shows as text.
     *
     * @param string $accept the header Accept; empty where there is none
     */
    public static function wanted(string $accept): self
    {
        $quality = ['open' => 0.0, 'plain' => 0.0];
        $exactness = ['open' => 0, 'plain' => 0];
        foreach (array_slice(explode(',', $accept), 0, self::MOST_RANGES) as $range) {
            $parameters = array_map(trim(...), explode(';', strtolower($range)));
            $type = array_shift($parameters);
            [$version, $weight] = self::parameters($parameters);
            [$form, $exact] = match (true) {
                $type === 'application/openmetrics-text' && in_array($version, [null, '1.0.0'], true) => ['open', 2],
                $type === 'text/plain' && in_array($version, [null, '0.0.4'], true) => ['plain', 3],
                $type === 'text/*' => ['plain', 2],
                $type === '*/*' => ['plain', 1],
                default => [null, 0],
            };
            // Where two ranges fit, the closer one says how much the form is liked; of two equals, the better one.
            if ($form !== null && [$exact, $weight] > [$exactness[$form], $quality[$form]]) {
                $exactness[$form] = $exact;
                $quality[$form] = $weight;
            }
        }
        return $quality['open'] > 0 && $quality['open'] >= $quality['plain'] ? self::OpenMetrics : self::Plain;
    }

    /**
     * @param list<string> $parameters
     * @return array{string|null, float} version and weight
     */
    private static function parameters(array $parameters): array
    {
        $version = null;
        $weight = 1.0;
        foreach ($parameters as $parameter) {
            [$name, $value] = array_map(trim(...), explode('=', $parameter, 2) + [1 => '']);
            if ($name === 'version') {
                $version = trim($value, '"');
            } elseif ($name === 'q') {
                $weight = preg_match('/^(0(\.\d{0,3})?|1(\.0{0,3})?)$/D', $value) ? (float) $value : 0.0;
            }
        }
        return [$version, $weight];
    }
}
