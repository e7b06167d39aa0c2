<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Table;

use Closure;

/**
 * Which rows somebody wants to see: words that all have to be in a row's cells as they are shown, and conditions such
 * as "outOctets>1000" or "protocol=ip.tcp".
 */
final class Filter
{
    private const CONDITION = '/^([A-Za-z]\w*)(!=|<=|>=|=|<|>|~)(.*)$/sD';

    /** Words of a filter that are looked at. */
    private const MOST = 8;

    /** @param list<Closure(array): bool> $tests */
    private function __construct(private readonly array $tests)
    {
    }

    /**
     * @param array<string, Field> $fields all of the table's
     * @param list<string> $shown          names of those in whose cells words are looked for
     */
    public static function of(string $text, array $fields, array $shown): self
    {
        $tests = [];
        $cells = array_intersect_key($fields, array_flip($shown));
        $words = preg_split('/\s+/', $text, -1, PREG_SPLIT_NO_EMPTY);
        foreach (array_slice($words, 0, self::MOST) as $word) {
            $tests[] = self::condition($word, $fields) ?? self::word($word, $cells);
        }
        return new self($tests);
    }

    public function isNone(): bool
    {
        return $this->tests === [];
    }

    /** @param array<string, mixed> $row */
    public function holds(array $row): bool
    {
        foreach ($this->tests as $test) {
            if (!$test($row)) {
                return false;
            }
        }
        return true;
    }

    /**
     * @param array<string, Field> $fields
     * @return (Closure(array): bool)|null
     */
    private static function condition(string $word, array $fields): ?Closure
    {
        if (!preg_match(self::CONDITION, $word, $parts)) {
            return null;
        }
        [, $name, $operator, $wanted] = $parts;
        $field = self::field($name, $fields);
        if ($field === null) {
            return null;
        }
        if ($operator === '~') {
            return static fn(array $row) => stripos(($field->text)($row), $wanted) !== false;
        }
        $exact = $field->exact;
        if ($operator === '=' || $operator === '!=') {
            $text = $field->text;
            $equal = static fn(array $row) => strcasecmp((string) self::scalar($exact($row)), $wanted) === 0
                || strcasecmp($text($row), $wanted) === 0;
            return $operator === '=' ? $equal : static fn(array $row) => !$equal($row);
        }
        $limit = is_numeric($wanted) ? (float) $wanted : NAN;
        return static function (array $row) use ($exact, $operator, $limit): bool {
            $value = $exact($row);
            return is_numeric($value) && match ($operator) {
                '<' => $value < $limit,
                '<=' => $value <= $limit,
                '>' => $value > $limit,
                '>=' => $value >= $limit,
            };
        };
    }

    /** @param array<string, Field> $fields */
    private static function field(string $name, array $fields): ?Field
    {
        foreach ($fields as $field) {
            $heading = str_replace(' ', '', $field->heading);
            if (strcasecmp($field->name, $name) === 0 || strcasecmp($heading, $name) === 0) {
                return $field;
            }
        }
        return null;
    }

    /**
     * @param array<string, Field> $shown
     * @return Closure(array): bool
     */
    private static function word(string $word, array $shown): Closure
    {
        // A number is looked for by a condition; what its cell shows is rounded.
        $words = array_filter($shown, static fn(Field $field) => !$field->number);
        $texts = array_map(static fn(Field $field) => $field->text, $words === [] ? $shown : $words);
        if (count($texts) === 1) {
            $text = reset($texts);
            return static fn(array $row): bool => stripos($text($row), $word) !== false;
        }
        return static function (array $row) use ($texts, $word): bool {
            foreach ($texts as $text) {
                if (stripos($text($row), $word) !== false) {
                    return true;
                }
            }
            return false;
        };
    }

    private static function scalar(mixed $value): int|float|string|bool
    {
        return is_scalar($value) ? $value : '';
    }
}
