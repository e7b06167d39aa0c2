<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Output;

use Closure;
use Rmon\Format;
use Rmon\Schema\Column;
use Rmon\Schema\Type;
use Rmon\Values;

/** One field of what is shown: its name for programs, its heading for people, and what its values look like to each. */
final class Field
{
    /**
     * @param string $name            the key in a row, and in JSON and CSV
     * @param string $heading         over the column
     * @param bool $right             whether it stands to the right, as numbers do
     * @param Closure(mixed): string $text  for people
     * @param Closure(mixed): mixed $exact  for programs
     * @param bool $foreign           whether its texts may hold anything
     * @param bool $plain             whether integers are exact as they are
     * @param bool $whole             whether people are shown its numbers by all of their digits
     */
    private function __construct(
        public readonly string $name,
        public readonly string $heading,
        public readonly bool $right,
        public readonly Closure $text,
        public readonly Closure $exact,
        public readonly bool $foreign = false,
        public readonly bool $plain = false,
        public readonly bool $whole = false,
    ) {
    }

    /** A text. */
    public static function text(string $name, ?string $heading = null): self
    {
        $same = static fn(mixed $value) => (string) $value;
        return new self($name, $heading ?? $name, false, $same, static fn(mixed $value) => $value, true);
    }

    /**
     * A number.
     *
     * @param callable(int|float): string|null $text how people read it
     */
    public static function number(string $name, ?callable $text = null, ?string $heading = null): self
    {
        $shown = $text === null ? Format::whole(...) : $text(...);
        return new self(
            $name,
            $heading ?? $name,
            true,
            static fn(mixed $value) => $value === null ? '' : $shown($value),
            static fn(mixed $value) => is_float($value) && !is_finite($value) ? null : $value,
        );
    }

    /**
     * A column of a table.
     *
     * @param bool $exact whether people are told exact numbers, which are scaled and named otherwise
     */
    public static function column(Column $column, string $heading, Values $values, bool $exact = false): self
    {
        $programs = self::exactly($column, $values);
        $people = $exact
            ? static fn(mixed $value) => (string) $programs($value)
            : self::readably($column, $values);
        $foreign = match ($column->type) {
            Type::Text, Type::AddressText, Type::MacText => true,
            default => false,
        };
        $isNumber = $column->type->isNumber();
        $isWhole = match ($column->type) {
            Type::Index, Type::Integer => true,
            Type::Counter32, Type::Counter64, Type::Gauge => !in_array($column->unit, ['octets', 'bit/s'], true),
            default => false,
        };
        return new self($column->name, $heading, $isNumber, $people, $programs, $foreign, $isNumber, $isWhole);
    }

    /** @return Closure(mixed): string */
    private static function readably(Column $column, Values $values): Closure
    {
        $text = static fn(mixed $value) => $values->text($column, $value);
        return match ($column->type) {
            // The same few values in all rows; names are strangers' texts.
            Type::NetInterface, Type::Protocol => self::remembered(
                static fn(mixed $value) => Text::visible($text($value)),
            ),
            Type::Named, Type::Flags, Type::Status,
            Type::Ticks => self::remembered($text),
            Type::Address => static fn(mixed $value) => is_array($value) && count($value) === 4
                ? implode('.', $value)
                : $text($value),
            Type::Counter32, Type::Counter64, Type::Gauge => $column->unit === 'octets' || $column->unit === 'bit/s'
                ? self::octets($column, $text)
                : self::whole($text),
            Type::Index, Type::Integer => self::whole($text),
            default => $text,
        };
    }

    /** @return Closure(mixed): string octets or bits; few of them without asking how they scale */
    private static function octets(Column $column, Closure $text): Closure
    {
        $unit = $column->unit === 'octets' ? ' B' : ' bit/s';
        return static fn(mixed $value) => is_float($value) && $value < 999 && $value == (int) $value && $value >= 0
            ? (int) $value . $unit
            : $text($value);
    }

    /** @return Closure(mixed): string what is the same in all numbers that a float tells exactly */
    private static function whole(Closure $text): Closure
    {
        return static fn(mixed $value) => is_int($value) || is_float($value) && abs($value) < 2 ** 53
            ? (string) (int) $value
            : $text($value);
    }

    /** @return Closure(mixed): mixed */
    private static function exactly(Column $column, Values $values): Closure
    {
        $exact = static fn(mixed $value) => $values->exact($column, $value);
        return match ($column->type) {
            Type::Named, Type::Flags, Type::Status => self::remembered($exact),
            Type::Address => static fn(mixed $value) => is_array($value) && count($value) === 4
                ? implode('.', $value)
                : $exact($value),
            Type::Rows => static fn(mixed $value) => is_array($value) ? self::rows($value) : $value,
            default => static fn(mixed $value) => match (true) {
                is_int($value) => $value,
                is_float($value) && abs($value) < 2 ** 53 && $value == (int) $value => (int) $value,
                default => $exact($value),
            },
        };
    }

    /** @return Closure(mixed): mixed */
    private static function remembered(Closure $of): Closure
    {
        return static function (mixed $value) use ($of): mixed {
            static $known = [];
            if (!is_int($value)) {
                return $of($value);
            }
            if (isset($known[$value])) {
                return $known[$value];
            }
            if (count($known) > 10000) {
                $known = [];
            }
            return $known[$value] = $of($value);
        };
    }

    /**
     * Rows inside a row, without the agent's result codes.
     *
     * @param array<mixed> $rows
     * @return array<mixed>
     */
    private static function rows(array $rows): array
    {
        return array_map(
            static fn(mixed $row) => is_array($row) ? array_diff_key($row, [0 => 0, 'status' => 0]) : $row,
            $rows,
        );
    }
}
