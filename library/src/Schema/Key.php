<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema;

/**
 * One of the values that name a row; readers take them in the order of the table's keys. A key is a column of the row
 * unless $inRow says otherwise.
 */
final class Key
{
    /**
     * @param string $name      the column
     * @param string|null $of   the table whose rows it names, which the table's own rows come and go with
     * @param int|string|list<int> $start what a walk from the first row on begins with
     * @param bool $mark        whether it is a time mark: a filter, not a part of the row's name
     * @param bool $inRow       false: rows don't show it, and walks need it from the table that it names
     */
    private function __construct(
        public readonly string $name,
        public readonly Type $type,
        public readonly ?string $of = null,
        public readonly int|string|array $start = 0,
        public readonly bool $mark = false,
        public readonly bool $inRow = true,
    ) {
    }

    /** The index of a control row. */
    public static function control(string $name, string $of): self
    {
        return new self($name, Type::Index, $of);
    }

    /** A row of another table, which the table's own rows don't show. */
    public static function parent(string $name, string $of, Type $type = Type::Index): self
    {
        return new self($name, $type, $of, $type->isOctets() ? [] : 0, inRow: false);
    }

    /** A number from 1 on. */
    public static function index(string $name, Type $type = Type::Index): self
    {
        return new self($name, $type);
    }

    /** A number from 0 on: walks begin before it. */
    public static function number(string $name): self
    {
        return new self($name, Type::Index, start: -1);
    }

    public static function protocol(string $name): self
    {
        return new self($name, Type::Protocol);
    }

    public static function address(string $name): self
    {
        return new self($name, Type::Address, start: []);
    }

    public static function mac(string $name): self
    {
        return new self($name, Type::Mac, start: []);
    }

    public static function octets(string $name): self
    {
        return new self($name, Type::Octets, start: []);
    }

    public static function text(string $name): self
    {
        return new self($name, Type::Text, start: '');
    }

    /** Only rows that changed at or after this sysUpTime; 0: all. */
    public static function mark(string $name): self
    {
        return new self($name, Type::Ticks, mark: true);
    }
}
