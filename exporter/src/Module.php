<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

/** What one scrape reads, and how much of it at most. */
final class Module
{
    /**
     * @param array<string, TableChoice> $tables by name
     * @param int $series   how many series a scrape hands out at most
     * @param int $calls    calls that are looked at for the quality of voice, of each monitor; 0: none
     * @param bool $created whether counters say since when they count
     */
    public function __construct(
        public readonly string $name,
        public readonly string $title,
        public readonly array $tables,
        public readonly int $series,
        public readonly int $calls,
        public readonly bool $created,
    ) {
    }
}
