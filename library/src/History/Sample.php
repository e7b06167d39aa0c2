<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\History;

/** What an interface carried in one interval. */
final class Sample
{
    /**
     * @param float $start   when it began, in seconds from the reading on: below 0
     * @param float $end     when it ended
     * @param array<string, int|float> $row its columns
     */
    public function __construct(
        public readonly float $start,
        public readonly float $end,
        public readonly array $row,
    ) {
    }

    public function seconds(): float
    {
        return $this->end - $this->start;
    }

    /** How much of a column came in each second; null for a sample that took no time. */
    public function perSecond(string $column): ?float
    {
        return $this->end > $this->start ? $this->row[$column] / ($this->end - $this->start) : null;
    }

    /** Bits in each second of a column of octets. */
    public function bitsPerSecond(string $column): ?float
    {
        $octets = $this->perSecond($column);
        return $octets === null ? null : 8 * $octets;
    }
}
