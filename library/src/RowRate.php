<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

/** How fast a row's counters grew between two readings. */
final class RowRate
{
    /**
     * @param array<string, mixed> $row                 as it was read last
     * @param Change $change                            what became of it
     * @param float $seconds                            the time in which it grew
     * @param array<string, int|float|null> $grown      by counter; null where nothing can be said
     */
    public function __construct(
        public readonly array $row,
        public readonly Change $change,
        public readonly float $seconds,
        public readonly array $grown,
    ) {
    }

    /** How much a counter grew in each second; null where nothing can be said. */
    public function perSecond(string $counter): ?float
    {
        $grown = $this->grown[$counter] ?? null;
        return $grown === null || $this->seconds <= 0 ? null : $grown / $this->seconds;
    }

    /** Bits in each second of a counter of octets; null where nothing can be said. */
    public function bitsPerSecond(string $counter): ?float
    {
        $octets = $this->perSecond($counter);
        return $octets === null ? null : 8 * $octets;
    }
}
