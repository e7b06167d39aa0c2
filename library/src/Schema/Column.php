<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema;

/** One column of a table. */
final class Column
{
    /**
     * @param string $name               its key in a row
     * @param string $unit               such as "octets"; empty where there is none
     * @param string|null $object        its object in the table's MIB; null when it is the agent's own
     * @param array<int, string> $values the words of a named number, or of each bit
     * @param bool $optional             whether rows can be without it
     * @param bool $signed               whether the number can be below 0
     * @param int $longest               octets of the longest text that can be set
     * @param bool $secret               whether who knows the value may do more than before: an SNMP community
     */
    private function __construct(
        public readonly string $name,
        public readonly Type $type,
        public readonly string $unit = '',
        public readonly ?string $object = null,
        public readonly array $values = [],
        public readonly bool $optional = false,
        public readonly bool $signed = false,
        public readonly int $longest = 255,
        public readonly bool $secret = false,
    ) {
    }

    public static function of(Type $type, string $name, string $unit = '', bool $signed = false): self
    {
        return new self($name, $type, $unit, $name, signed: $signed);
    }

    public static function index(string $name): self
    {
        return new self($name, Type::Index, object: $name);
    }

    /** The index of a row in another table, which the description of the table names. */
    public static function netInterface(string $name, ?string $object = null): self
    {
        return new self($name, Type::NetInterface, object: $object ?? $name);
    }

    public static function protocol(string $name): self
    {
        return new self($name, Type::Protocol, object: $name);
    }

    public static function text(string $name): self
    {
        return new self($name, Type::Text, object: $name);
    }

    /** What SNMP asks for as a password, in the open. */
    public static function community(string $name): self
    {
        return new self($name, Type::Text, object: $name, secret: true);
    }

    public static function addressText(string $name): self
    {
        return new self($name, Type::AddressText, object: $name);
    }

    public static function macText(string $name): self
    {
        return new self($name, Type::MacText, object: $name);
    }

    public static function mac(string $name): self
    {
        return new self($name, Type::Mac, object: $name);
    }

    public static function address(string $name): self
    {
        return new self($name, Type::Address, object: $name);
    }

    public static function octets(string $name): self
    {
        return new self($name, Type::Octets, object: $name);
    }

    public static function rows(string $name): self
    {
        return new self($name, Type::Rows, object: $name);
    }

    public static function status(string $name): self
    {
        return new self($name, Type::Status, object: $name);
    }

    public static function ticks(string $name): self
    {
        return new self($name, Type::Ticks, object: $name);
    }

    /** @param array<int, string> $values */
    public static function named(string $name, array $values): self
    {
        return new self($name, Type::Named, object: $name, values: $values, signed: true);
    }

    /** @param array<int, string> $bits */
    public static function flags(string $name, array $bits): self
    {
        return new self($name, Type::Flags, object: $name, values: $bits);
    }

    public static function integer(string $name, string $unit = ''): self
    {
        return new self($name, Type::Integer, $unit, $name);
    }

    public static function gauge(string $name, string $unit = ''): self
    {
        return new self($name, Type::Gauge, $unit, $name);
    }

    public static function counter32(string $name, string $unit): self
    {
        return new self($name, Type::Counter32, $unit, $name);
    }

    public static function counter64(string $name, string $unit): self
    {
        return new self($name, Type::Counter64, $unit, $name);
    }

    /** @return list<self> */
    public static function integers(string $unit, string ...$names): array
    {
        return self::several(Type::Integer, $unit, $names);
    }

    /** @return list<self> */
    public static function gauges(string $unit, string ...$names): array
    {
        return self::several(Type::Gauge, $unit, $names);
    }

    /** @return list<self> */
    public static function counters32(string $unit, string ...$names): array
    {
        return self::several(Type::Counter32, $unit, $names);
    }

    /** @return list<self> */
    public static function counters64(string $unit, string ...$names): array
    {
        return self::several(Type::Counter64, $unit, $names);
    }

    /** @return list<self> */
    public static function texts(string ...$names): array
    {
        return self::several(Type::Text, '', $names);
    }

    /** The same column, under another name in its MIB. */
    public function object(string $object): self
    {
        return $this->with(object: $object);
    }

    /** The same column as one of the agent's own. */
    public function own(): self
    {
        return $this->with(object: null);
    }

    /** The same column, which rows can be without. */
    public function optional(): self
    {
        return $this->with(optional: true);
    }

    /** The same column, with numbers below 0. */
    public function signed(): self
    {
        return $this->with(signed: true);
    }

    /** The same column, with texts of at most so many octets. */
    public function atMost(int $octets): self
    {
        return $this->with(longest: $octets);
    }

    private function with(
        string|null|false $object = false,
        ?bool $optional = null,
        ?bool $signed = null,
        ?int $longest = null,
    ): self {
        return new self(
            $this->name,
            $this->type,
            $this->unit,
            $object === false ? $this->object : $object,
            $this->values,
            $optional ?? $this->optional,
            $signed ?? $this->signed,
            $longest ?? $this->longest,
            $this->secret,
        );
    }

    /**
     * @param array<string> $names
     * @return list<self>
     */
    private static function several(Type $type, string $unit, array $names): array
    {
        return array_values(array_map(static fn(string $name) => new self($name, $type, $unit, $name), $names));
    }
}
