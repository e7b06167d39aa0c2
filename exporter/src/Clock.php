<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

/** The agent's clock, sysUpTime, as time of day. */
final class Clock
{
    private const TICKS = 100;

    /** When the agent began, in whole seconds since 1970: finer, each scrape would say something else. */
    public readonly float $start;

    /**
     * @param int $uptime the agent's, in hundredths of a second
     * @param float $now  the time of day when it said so
     */
    public function __construct(int $uptime, float $now)
    {
        $this->start = round($now - $uptime / self::TICKS);
    }

    /** @param int|float $ticks sysUpTime */
    public function at(int|float $ticks): float
    {
        return round($this->start + $ticks / self::TICKS, 2);
    }
}
