<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Rmon\Exception\BadArgument;
use Rmon\Schema\Column;
use Rmon\Schema\Type;

/**
 * The values of columns: for people as texts, for programs exactly, and back from what people write. Protocols and
 * interfaces have their names only where a probe is there to ask.
 */
final class Values
{
    public function __construct(private readonly ?Probe $probe = null)
    {
    }

    /** What people read in a cell, units included where they scale: "1.5 MB", "up", "ip.tcp.https". */
    public function text(Column $column, mixed $value): string
    {
        if ($value === null) {
            return '';
        }
        return match ($column->type) {
            Type::Ticks => Format::ticks($value),
            Type::Utilization => Format::utilization($value),
            Type::NetInterface => $this->interfaceName($value),
            Type::Protocol => $this->protocolPath($value),
            Type::Gauge, Type::Counter32, Type::Counter64 => match ($column->unit) {
                'octets' => Format::octets($value),
                'bit/s' => Format::bitsPerSecond($value),
                default => Format::whole($value),
            },
            default => (string) $this->scalar($column, $value),
        };
    }

    /**
     * What programs read: numbers as numbers, addresses and words as texts, nothing rounded or scaled.
     *
     * @return int|float|string|list<array<string, mixed>>|null
     */
    public function exact(Column $column, mixed $value): int|float|string|array|null
    {
        if ($value === null || $column->type === Type::Rows) {
            return $value;
        }
        if (is_float($value) && abs($value) < 2 ** 53) {
            return (int) $value;
        }
        return match ($column->type) {
            Type::NetInterface, Type::Protocol => $value,
            default => $this->scalar($column, $value),
        };
    }

    /**
     * What a row holds for what a caller or a person gave: names of interfaces and paths of protocols, words of
     * enumerations, texts of addresses, or the thing itself.
     *
     * @throws BadArgument
     */
    public function parse(Column $column, mixed $given): int|string|array
    {
        return match ($column->type) {
            Type::Text, Type::AddressText, Type::MacText => $this->parseText($column, $given),
            Type::Mac, Type::Address, Type::Octets => $this->parseOctets($column, $given),
            Type::Rows => throw new BadArgument("$column->name can't be given."),
            default => $this->parseNumber($column, $given),
        };
    }

    private function scalar(Column $column, mixed $value): int|float|string
    {
        return match ($column->type) {
            Type::Address => Address::text($value),
            Type::Mac, Type::Octets => Address::hexadecimal($value),
            Type::MacText => strtolower($value),
            Type::Named => $column->values[$value] ?? $value,
            Type::Status => RowStatus::nameOf($value),
            Type::Flags => self::flags($column, $value),
            Type::Rows => count($value),
            default => is_float($value) ? Format::whole($value) : $value,
        };
    }

    private static function flags(Column $column, int $value): string
    {
        $words = [];
        foreach ($column->values as $bit => $word) {
            if ($value & $bit) {
                $words[] = $word;
                $value &= ~$bit;
            }
        }
        if ($value !== 0) {
            $words[] = (string) $value;
        }
        return implode(' ', $words);
    }

    private function interfaceName(int $index): string
    {
        return $this->probe?->interfaces()->name($index) ?? (string) $index;
    }

    private function protocolPath(int $index): string
    {
        return $this->probe?->protocols()->path($index) ?? (string) $index;
    }

    private function parseText(Column $column, mixed $given): string
    {
        if (!is_string($given) && !is_int($given)) {
            throw new BadArgument("$column->name is a text.");
        }
        $text = (string) $given;
        if (strlen($text) > $column->longest) {
            throw new BadArgument("$column->name has at most $column->longest octets.");
        }
        if (str_contains($text, "\0")) {
            throw new BadArgument("$column->name can't have a zero octet.");
        }
        return $text;
    }

    /** @return list<int> */
    private function parseOctets(Column $column, mixed $given): array
    {
        if ($given === 0) {
            return [];
        }
        if (is_string($given)) {
            return match (true) {
                $given === '' => [],
                $column->type === Type::Mac => Address::parseMac($given),
                $column->type === Type::Address => Address::parse($given),
                default => Address::parseHexadecimal($given),
            };
        }
        if (!is_array($given) || !array_is_list($given) || count($given) > 255 && $column->type !== Type::Octets) {
            throw new BadArgument("$column->name is a list of octets or the text of an address.");
        }
        foreach ($given as $octet) {
            if (!is_int($octet) || $octet < 0 || $octet > 255) {
                throw new BadArgument("$column->name is a list of octets: integers from 0 to 255.");
            }
        }
        return $given;
    }

    private function parseNumber(Column $column, mixed $given): int
    {
        if ($given instanceof RowStatus) {
            return $given->value;
        }
        if (is_bool($given) || is_array($given) && $column->type !== Type::Flags) {
            throw new BadArgument("$column->name is a number.");
        }
        if (is_array($given)) {
            return array_sum(array_map(fn(mixed $word) => $this->parseNumber($column, $word), $given));
        }
        if (is_string($given) && !preg_match('/^-?\d{1,10}$/D', $given)) {
            $given = $this->word($column, $given);
        }
        if (is_float($given) && $given == (int) $given) {
            $given = (int) $given;
        }
        if (!is_int($given) && !is_string($given)) {
            throw new BadArgument("$column->name is a whole number.");
        }
        $number = (int) $given;
        [$least, $most] = $column->signed ? [-0x80000000, 0x7fffffff] : [0, 0xffffffff];
        if ($number < $least || $number > $most) {
            throw new BadArgument("$column->name is a number from $least to $most.");
        }
        return $number;
    }

    private function word(Column $column, string $word): int
    {
        if ($column->type === Type::NetInterface && $this->probe !== null) {
            return $this->probe->interfaces()->index($word);
        }
        if ($column->type === Type::Protocol && $this->probe !== null) {
            return $this->probe->protocols()->index($word);
        }
        if ($column->type === Type::Flags && str_contains(trim($word), ' ')) {
            return $this->parseNumber($column, preg_split('/\s+/', trim($word)));
        }
        $values = $column->type === Type::Status
            ? array_column(RowStatus::cases(), 'name', 'value')
            : $column->values;
        $found = array_search(strtolower($word), array_map(strtolower(...), $values), true);
        if ($found === false) {
            $words = $values === [] ? 'a number' : 'one of ' . implode(', ', $values);
            throw new BadArgument("$column->name is $words, not \"$word\".");
        }
        return $found;
    }
}
