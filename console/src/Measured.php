<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Rmon\RowRate;

/** How fast a table's rows grew between two looks at it. */
final class Measured
{
    /**
     * @param array<string, RowRate> $rates by the rows' keys
     * @param float $seconds between the two looks
     * @param int $rows      how many rows the table has
     * @param bool $all      whether all of them were looked at; otherwise those that have counted most
     */
    public function __construct(
        public readonly array $rates,
        public readonly float $seconds,
        public readonly int $rows,
        public readonly bool $all,
    ) {
    }

    /** "over the last 12 s", and of which rows where it wasn't all. */
    public function covers(): string
    {
        $time = 'over the last ' . round($this->seconds) . ' s';
        return $this->all ? $time : "$time, among the " . number_format(count($this->rates)) . ' rows of '
            . number_format($this->rows) . ' that have counted most';
    }
}
