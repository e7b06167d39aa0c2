<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema;

/** What a column's values are, and what a row holds for each of them. */
enum Type: string
{
    /** A number that names something: int. */
    case Index = 'index';
    /** A number: int. */
    case Integer = 'integer';
    /** A number that goes up and down: int or float. */
    case Gauge = 'gauge';
    /** A number that only grows, modulo 2^32: int. */
    case Counter32 = 'counter32';
    /** A number that only grows, modulo 2^64: float, exact up to 2^53. */
    case Counter64 = 'counter64';
    /** Hundredths of a second on the agent's clock (sysUpTime): int or float. */
    case Ticks = 'ticks';
    /** Hundredths of a percent: int. */
    case Utilization = 'utilization';
    /** ifIndex: int. */
    case NetInterface = 'interface';
    /** protocolDirLocalIndex: int. */
    case Protocol = 'protocol';
    /** A number that stands for a word: int. */
    case Named = 'named';
    /** A sum of bits that stand for words: int. */
    case Flags = 'flags';
    /** The state of a control row (RowStatus): int. */
    case Status = 'status';
    case Text = 'text';
    /** An IPv4 address, or another one, that the module has made a text of. */
    case AddressText = 'address text';
    /** A MAC address that the module has made a text of. */
    case MacText = 'mac text';
    /** Octets of a MAC address: list of int, or 0 for none. */
    case Mac = 'mac';
    /** Octets of a network address: list of int, or 0 for none. */
    case Address = 'address';
    /** Octets: list of int. */
    case Octets = 'octets';
    /** Rows inside a row: list of arrays. */
    case Rows = 'rows';

    public function isCounter(): bool
    {
        return $this === self::Counter32 || $this === self::Counter64;
    }

    /** Whether values are lists of octets. */
    public function isOctets(): bool
    {
        return $this === self::Mac || $this === self::Address || $this === self::Octets;
    }

    /** Whether values are texts. */
    public function isText(): bool
    {
        return $this === self::Text || $this === self::AddressText || $this === self::MacText;
    }

    /** Whether values are numbers to count or to measure with, which stand to the right. */
    public function isNumber(): bool
    {
        return match ($this) {
            self::Index, self::Integer, self::Gauge, self::Counter32, self::Counter64, self::Ticks,
            self::Utilization => true,
            default => false,
        };
    }
}
