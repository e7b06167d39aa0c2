<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Exporter;

use RuntimeException;

/**
 * A strict reader of OpenMetrics 1.0, which shares nothing with what writes it: whatever is against the form's rules
 * is an exception.
 */
final class OpenText
{
    private const NAME = '[a-zA-Z_:][a-zA-Z0-9_:]*';
    private const LABELS = '(?:\{((?:[a-zA-Z_][a-zA-Z0-9_]*="(?:[^"\\\\\n]|\\\\["\\\\n])*"(?:,(?=[a-zA-Z_]))?)+)\})?';
    private const NUMBER = '[+-]?(?:\d+(?:\.\d*)?(?:[eE][+-]?\d+)?|Inf)|NaN';

    private const SUFFIXES = [
        'counter' => ['_total', '_created'],
        'gauge' => [''],
        'info' => ['_info'],
        // The form takes "_sum" and "_count" together or not at all, and there is no true sum.
        'histogram' => ['_bucket', '_created'],
    ];

    /** @var array<string, array{type: string, unit: string, help: string}> by the family's name */
    public array $families = [];

    /** @var array<string, float> by name and labels as they are written */
    public array $samples = [];

    /** @var array<string, true> */
    private array $heads = [];

    private string $family = '';

    public function __construct(string $text)
    {
        if (preg_match('//u', $text) !== 1 || str_contains($text, "\r")) {
            throw new RuntimeException('no UTF-8, or lines end otherwise');
        }
        if (!str_ends_with($text, "# EOF\n") || substr_count("\n$text", "\n# EOF\n") !== 1) {
            throw new RuntimeException('no end, or more than one');
        }
        foreach (explode("\n", substr($text, 0, -7)) as $line) {
            if ($line === '' && $text === "# EOF\n") {
                return;
            }
            str_starts_with($line, '#') ? $this->head($line) : $this->sample($line);
        }
        $this->checkHistograms();
    }

    /** @return array<string, float> of one name, by labels */
    public function of(string $name): array
    {
        $found = [];
        foreach ($this->samples as $sample => $value) {
            [$its, $labels] = explode('{', $sample, 2) + [1 => '}'];
            if ($its === $name) {
                $found[substr($labels, 0, -1)] = $value;
            }
        }
        return $found;
    }

    public function value(string $name, string $labels = ''): ?float
    {
        return $this->samples[$labels === '' ? $name : "$name{{$labels}}"] ?? null;
    }

    private function head(string $line): void
    {
        if (!preg_match('/^# (TYPE|UNIT|HELP) (' . self::NAME . ') (.*)$/D', $line, $parts)) {
            throw new RuntimeException("no head: $line");
        }
        [, $what, $name, $text] = $parts;
        if (isset($this->heads["$what $name"])) {
            throw new RuntimeException("again: $line");
        }
        $this->heads["$what $name"] = true;
        if ($this->family !== $name) {
            if (isset($this->families[$name])) {
                throw new RuntimeException("$name stands in two places");
            }
            $this->family = $name;
            $this->families[$name] = ['type' => 'unknown', 'unit' => '', 'help' => ''];
        }
        if ($what === 'TYPE' && !isset(self::SUFFIXES[$text]) || $what === 'UNIT' && !str_ends_with($name, "_$text")) {
            throw new RuntimeException("can't be: $line");
        }
        if ($what === 'HELP' && preg_match('/^(?:[^"\\\\]|\\\\["\\\\n])*$/D', $text) !== 1) {
            throw new RuntimeException("not escaped: $line");
        }
        $this->families[$name][strtolower($what)] = $text;
    }

    private function sample(string $line): void
    {
        $pattern = '/^(' . self::NAME . ')' . self::LABELS . ' (' . self::NUMBER . ')$/D';
        if (!preg_match($pattern, $line, $parts)) {
            throw new RuntimeException("no sample: $line");
        }
        [, $name, $labels, $value] = $parts;
        preg_match_all('/([a-zA-Z_][a-zA-Z0-9_]*)="/', preg_replace('/"(?:[^"\\\\]|\\\\.)*"/', '""', $labels), $names);
        if (count($names[1]) !== count(array_unique($names[1]))) {
            throw new RuntimeException("a label twice: $line");
        }
        $suffixes = self::SUFFIXES[$this->families[$this->family]['type'] ?? ''] ?? [];
        if (!in_array($name, array_map(fn(string $suffix) => $this->family . $suffix, $suffixes), true)) {
            throw new RuntimeException("does not belong to $this->family: $line");
        }
        $key = $labels === '' ? $name : "$name{{$labels}}";
        if (isset($this->samples[$key])) {
            throw new RuntimeException("twice: $line");
        }
        $number = (float) strtr($value, ['+Inf' => '1e999', '-Inf' => '-1e999']);
        if (str_ends_with($name, '_total') && ($number < 0 || $value === 'NaN')) {
            throw new RuntimeException("no count: $line");
        }
        $this->samples[$key] = $value === 'NaN' ? NAN : $number;
    }

    /** Each has its buckets in order, up to the one without a bound, and none has less than the one before. */
    private function checkHistograms(): void
    {
        $last = [];
        foreach ($this->samples as $sample => $count) {
            if (preg_match('/^(\w+)_bucket\{(.*?),?le="([^"]*)"\}$/D', $sample, $parts)) {
                $bound = $parts[3] === '+Inf' ? INF : (float) $parts[3];
                [$before, $less] = $last["$parts[1] $parts[2]"] ?? [-INF, 0];
                if ($bound <= $before || $count < $less) {
                    throw new RuntimeException("out of order: $sample");
                }
                $last["$parts[1] $parts[2]"] = [$bound, $count];
            }
        }
        foreach ($last as $which => [$bound]) {
            if ($bound !== INF) {
                throw new RuntimeException("$which has no end");
            }
        }
    }
}
